#include "exif_reader.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "classic_tiff.h"
#include "container.h"
#include "exif_limits.h"
#include "gps.h"
#include "jpeg/marker_walk.h"
#include "tag_table.h"
#include "platform/input.h"
#include "platform/text.h"

namespace exif {
namespace {

using tiff::At;
using platform::GetU16;
using platform::GetU32;

constexpr uint8_t kApp1Marker = 225;
constexpr uint16_t kTagEmbeddedJpeg = 46;
constexpr uint16_t kTagImageDescription = 270;
constexpr uint16_t kTagMake = 271;
constexpr uint16_t kTagModel = 272;
constexpr uint16_t kTagUserComment = 37510;
constexpr uint16_t kTagMakerNote = 37500;
constexpr uint16_t kTagDngPrivateData = 50740;
using tiff::kEntrySize;
using tiff::kValueFieldSize;
constexpr size_t kTiffHeaderSize = 8;      // "II" or "MM", 42, the offset of IFD0
constexpr size_t kCharacterCodeSize = 8;  // UserComment's "ASCII\0\0\0", "UNICODE\0", ...
// The value buffer is cleaned within its first 256 bytes, the long value within all of it.
constexpr size_t kValueCleanLimit = 256;

// Directories whose offsets the walker follows, by the entry that holds them.
constexpr struct {
    uint16_t tag;
    uint32_t IfdPointers::*pointer;
} kPointerTags[] = {
    {34665, &IfdPointers::exifIfd},
    {34853, &IfdPointers::gpsIfd},
    {37500, &IfdPointers::makerNote},
    {40965, &IfdPointers::interoperability},
    {33723, &IfdPointers::iptc},
};

bool IsTiffByteOrder(const uint8_t* two) {
    return (two[0] == 'I' && two[1] == 'I') || (two[0] == 'M' && two[1] == 'M');
}

bool ContainsBytes(const char* haystack, size_t size, const char* needle) {
    const size_t n = std::strlen(needle);
    for (size_t i = 0; n <= size && i <= size - n; ++i)
        if (std::memcmp(haystack + i, needle, n) == 0) return true;
    return false;
}

void TrimTrailingSpaces(char* text) {
    size_t n = std::strlen(text);
    while (n > 0 && text[n - 1] == ' ') text[--n] = '\0';
}

// A text that starts with NUL bytes (padding before the words, or a blank
// character-code header) would read as empty: its NULs become spaces and the
// leading spaces go.
void SpaceOutLeadingNuls(char* text, size_t length, size_t limit) {
    if (length == 0 || text[0] != '\0') return;
    const size_t n = std::min(length, limit);
    for (size_t i = 0; i < n; ++i)
        if (text[i] == '\0') text[i] = ' ';
    size_t skip = 0;
    while (text[skip] == ' ') ++skip;
    std::memmove(text, text + skip, std::strlen(text + skip) + 1);
}

// valueLength / longLength: bytes that were read into each buffer.
void CleanText(TagRecord& row, size_t valueLength, size_t longLength) {
    if (row.longValue) {
        TrimTrailingSpaces(row.longValue);
        SpaceOutLeadingNuls(row.longValue, longLength, kLongValueSize);
    }
    TrimTrailingSpaces(row.value);
    SpaceOutLeadingNuls(row.value, valueLength, kValueCleanLimit);
    if (row.longValue) {
        const size_t n = strnlen(row.longValue, kValueTextLimit);
        std::memcpy(row.value, row.longValue, n);
        row.value[n] = '\0';
    }
}

// A UTF-16 text stored under an ASCII header shows as every other byte NUL:
// with two NULs more than ASCII bytes (the terminator's pair), drop the NULs.
size_t SqueezeUtf16Nuls(char* text, size_t length) {
    size_t nuls = 0, ascii = 0;
    for (size_t i = 0; i < length; ++i) {
        const auto b = static_cast<unsigned char>(text[i]);
        if (b == 0) ++nuls;
        else if (b < 128) ++ascii;
    }
    if (nuls != ascii + 2) return length;
    size_t out = 0;
    for (size_t i = 0; i < length; ++i)
        if (text[i] != '\0') text[out++] = text[i];
    std::memset(text + out, 0, length - out);
    return out;
}

std::string Utf16ToUtf8Until(const uint8_t* bytes, size_t size, int bigEndian, size_t maxBytes) {
    std::u16string wide;
    for (size_t i = 0; i + 1 < size; i += 2) {
        const char16_t unit = GetU16(bytes + i, bigEndian);
        if (unit == 0) break;
        wide.push_back(unit);
    }
    return CutUtf8(platform::Utf16ToUtf8(wide), maxBytes);
}

// ------------------------------------------------------------ the walk

// Where IFD0 sits, found by the JPEG scan, the TIFF signature or a container.
bool LocateTiffHeader(platform::File& file, uint32_t startOffset, uint32_t& base, ContainerPointers& container) {
    uint32_t length = 0, markerOffset = 0;
    uint8_t firstTwo[2] = {0, 0};
    if (FindJpegSegmentAt(file, length, markerOffset, kApp1Marker, firstTwo, startOffset)) {
        // The segment found begins "Exif\0\0" behind the marker and the
        // length field; a segment too short to hold "Exif" and a byte is none.
        if (length < 7) return false;
        base = markerOffset + 10;
        return true;
    }
    if (IsTiffByteOrder(firstTwo)) {
        base = 0;
        return true;
    }
    base = LocateTiffHeaderInFile(file, container);
    return base != 0;
}

// A directory: from its entry count on, in its byte order, and the base its
// offsets count from.
struct Directory {
    platform::Cursor in;
    uint32_t base;
};

// Finds directories. Normally the pointer counts from the TIFF base; with
// separate headers (CR3) it is the absolute position of a TIFF header of its
// own, which gives the directory's base and byte order (and the order of the
// directories after it). A directory past the end reads as empty.
class DirectoryWalk {
public:
    DirectoryWalk(const platform::Cursor& input, uint32_t base, bool separateHeaders)
        : input_(input), base_(base), separate_(separateHeaders) {}

    // Nothing when a header of its own cannot be read.
    std::optional<Directory> Find(uint32_t pointer) {
        if (!separate_) return Directory{input_.ChildAt(At(base_, pointer), input_.end()), base_};
        platform::Cursor header = input_.ChildAt(pointer, kTiffHeaderSize);
        uint8_t mark[2];
        header.Bytes(mark, sizeof mark);
        header.SetOrder(platform::OrderOf(mark[0] == 'M' && mark[1] == 'M'));
        header.Skip(2);
        const uint32_t ifd = header.U32();
        if (!header.ok()) return std::nullopt;
        input_.SetOrder(header.order());
        return Directory{input_.ChildAt(At(pointer, ifd), input_.end()), pointer};
    }

private:
    platform::Cursor input_;
    uint32_t base_;
    bool separate_;
};

// An entry's value length in bytes, cut to 32 bits; 0 for an unknown type.
uint32_t ValueLength(const tiff::Entry& entry) {
    const uint64_t length = uint64_t{entry.count} * tiff::TypeSize(entry.type);
    return length > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(length);
}

// The value of the tag 46 row as a start offset; 0 when it is not a number.
uint32_t EmbeddedJpegOffset(const TagRecordTable& table, uint32_t rowCount) {
    char text[kTagValueSize];
    if (!CopyTagValue(table, rowCount, kTagEmbeddedJpeg, text, sizeof text)) return 0;
    uint64_t value = 0;
    for (const char* p = text; *p >= '0' && *p <= '9'; ++p) {
        value = value * 10 + static_cast<uint64_t>(*p - '0');
        if (value > UINT32_MAX) return 0;
    }
    return static_cast<uint32_t>(value);
}

}  // namespace

// ------------------------------------------------------------ words and rows

std::string CutUtf8(std::string text, size_t maxBytes) {
    text.resize(platform::Utf8CutLength(text, maxBytes));
    return text;
}

void BeginRow(TagRecord& row, uint32_t tag, const tiff::Entry& entry) {
    std::free(row.longValue);
    row.longValue = nullptr;
    row.tag = tag;
    row.type = entry.type;
    row.count = entry.count;
    row.valueField = entry.valueField;
    std::memset(row.name, 0, sizeof row.name);
    std::memset(row.value, 0, sizeof row.value);
}

void SetRowName(TagRecord& row, std::string_view name) {
    const size_t n = std::min(name.size(), kTagNameSize - 1);
    std::memcpy(row.name, name.data(), n);
    row.name[n] = '\0';
}

void SetRowValue(TagRecord& row, std::string_view value) {
    const size_t n = std::min(value.size(), kValueTextLimit);
    std::memcpy(row.value, value.data(), n);
    row.value[n] = '\0';
}

void AppendSeparatorRow(TagRecordTable& table, uint32_t* rowCount) {
    if (*rowCount >= kTagTableRows) return;
    TagRecord& row = TakeRow(table, *rowCount);
    std::free(row.longValue);
    std::memset(&row, 0, sizeof row);
    ++*rowCount;
}

void AppendHeadingRow(TagRecordTable& table, uint32_t* rowCount, const char* heading) {
    if (*rowCount >= kTagTableRows) return;
    TagRecord& row = TakeRow(table, *rowCount);
    AppendSeparatorRow(table, rowCount);
    SetRowName(row, heading);
}

// ------------------------------------------------------------ entries and values

void ReadTextValue(const EntryContext& c, bool characterCodeHeader) {
    const tiff::Entry& e = c.entry;
    TagRecord& row = c.row;
    if (e.count <= kValueFieldSize) {
        size_t n = 0;
        while (n < e.count && e.fieldBytes[n]) {
            row.value[n] = static_cast<char>(e.fieldBytes[n]);
            ++n;
        }
        row.value[n] = '\0';
        CleanText(row, n, 0);
        return;
    }

    platform::Cursor text = c.input.ChildAt(At(c.base, e.valueField), c.input.end());
    enum class Code { kNone, kAscii, kUnicode, kOther } code = Code::kNone;
    uint32_t textBytes = e.count;
    if (characterCodeHeader) {
        char header[kCharacterCodeSize] = {};
        text.Some(header, sizeof header);
        for (char& ch : header)
            if (ch >= 'a' && ch <= 'z') ch = static_cast<char>(ch - 'a' + 'A');
        if (ContainsBytes(header, sizeof header, "ASCII")) code = Code::kAscii;
        else if (ContainsBytes(header, sizeof header, "UNICODE")) code = Code::kUnicode;
        else code = Code::kOther;
        if (code == Code::kOther) {
            // An unknown code (JIS, or all zeros for "undefined"): the header
            // bytes are read as the start of the text.
            text.Seek(text.begin());
        } else {
            textBytes = e.count >= kCharacterCodeSize ? e.count - static_cast<uint32_t>(kCharacterCodeSize) : 0;
        }
    }

    const bool makeLong = (e.tag == kTagImageDescription || e.tag == kTagUserComment) &&
                          e.count >= kLongValueMinCount;
    char* dest = row.value;
    size_t capacity = kValueTextLimit;
    if (makeLong) {
        if (char* longValue = MakeLongValue(row)) {
            dest = longValue;
            capacity = kLongValueTextLimit;
        }
    }
    uint8_t bytes[kLongValueTextLimit];
    const size_t want = std::min<size_t>(textBytes, capacity);
    const size_t got = text.Some(bytes, want);

    size_t length = 0;
    if (code == Code::kUnicode) {
        const std::string utf8 = Utf16ToUtf8Until(bytes, got, c.bigEndian(), capacity);
        std::memcpy(dest, utf8.data(), utf8.size());
        length = utf8.size();
    } else {
        std::memcpy(dest, bytes, got);
        length = got;
        if (code == Code::kAscii) length = SqueezeUtf16Nuls(dest, length);
    }
    dest[length] = '\0';

    // Make and Model stored out of line are kept byte for byte (the maker-note
    // dispatch compares them as written).
    if (e.tag == kTagMake || e.tag == kTagModel) return;
    if (dest == row.value) CleanText(row, length, 0);
    else CleanText(row, 0, length);
}

void ReadUtf16LeTextValue(const EntryContext& c) {
    uint8_t bytes[kValueTextLimit] = {};
    const size_t want = std::min<size_t>(c.entry.count, kValueTextLimit);
    size_t got = 0;
    if (c.entry.count <= kValueFieldSize) {
        std::memcpy(bytes, c.entry.fieldBytes, want);
        got = want;
    } else {
        got = c.input.ChildAt(At(c.base, c.entry.valueField), want).Some(bytes, want);
    }
    SetRowValue(c.row, Utf16ToUtf8Until(bytes, got, /*bigEndian=*/0, kValueTextLimit));
    TrimTrailingSpaces(c.row.value);
}

size_t ReadRawBlock(const EntryContext& c, uint8_t* out, size_t maxBytes) {
    return tiff::ReadValueBytes(c.input, c.base, c.entry, out, maxBytes);
}

// ------------------------------------------------------------ directories

void ProcessDirectoryEntries(platform::Cursor& entries, uint32_t base, TagRecordTable& table, uint32_t* rowCount,
                             uint32_t entryCount, const DirectoryTags& tags, IfdPointers* pointers) {
    const platform::Cursor input = entries.Whole();
    for (uint32_t i = 0; i < entryCount; ++i) {
        if (*rowCount >= kTagTableRows) return;
        tiff::Entry entry;
        if (!tiff::ReadEntry(entries, entry)) return;
        // The row is written before the tag is known: an unknown tag leaves
        // the count where it was, and the next entry takes the same row.
        TagRecord& row = TakeRow(table, *rowCount);
        BeginRow(row, tags.rowTagBase + entry.tag, entry);
        // DNG private data gives no row, but may hold the maker note.
        if (pointers && entry.tag == kTagDngPrivateData && ValueLength(entry) > kValueFieldSize) {
            pointers->dngPrivateData = entry.valueField;
            pointers->dngPrivateDataSize = ValueLength(entry);
        }
        const TagInfo* info = tags.find(entry.tag);
        if (!info) continue;
        SetRowName(row, info->name);
        info->format(EntryContext{input, base, entry, row});
        if (pointers) {
            for (const auto& p : kPointerTags)
                if (p.tag == entry.tag) pointers->*p.pointer = entry.valueField;
            if (entry.tag == kTagMakerNote) pointers->makerNoteSize = ValueLength(entry);
        }
        ++*rowCount;
    }
}

bool FindJpegSegmentAt(platform::File& file, uint32_t& length, uint32_t& markerOffset, uint8_t marker,
                       uint8_t firstTwo[2], uint32_t startOffset) {
    length = 0;
    markerOffset = 0;
    const platform::Cursor whole(file, platform::ByteOrder::kBig);
    uint8_t two[2] = {0, 0};
    const size_t gotTwo = whole.ChildAt(startOffset, sizeof two).Some(two, sizeof two);
    if (firstTwo) {
        firstTwo[0] = two[0];
        firstTwo[1] = two[1];
    }
    if (gotTwo == 2 && IsTiffByteOrder(two)) return false;

    // Only an APP1 that begins "Exif" will do; an XMP APP1 is passed over.
    jpeg::MarkerWalk walk(file, uint64_t{startOffset} + 2, jpeg::WalkRules{});
    jpeg::Segment segment;
    const bool found = jpeg::FindSegment(walk, marker, segment, [&](const jpeg::Segment& candidate) {
        return marker != kApp1Marker || jpeg::PayloadStartsWith(file, candidate, "Exif", 4);
    });
    if (!found || segment.offset > 0xFFFFFFFF || !file.Seek(static_cast<int64_t>(segment.offset) + 2)) return false;
    length = segment.length;
    markerOffset = static_cast<uint32_t>(segment.offset);
    return true;
}

std::unique_ptr<uint8_t[]> FindJpegSegment(std::u16string_view path, uint32_t& length, uint32_t& markerOffset,
                                           uint8_t marker, uint8_t firstTwo[2], uint32_t startOffset) {
    length = 0;
    markerOffset = 0;
    if (firstTwo) firstTwo[0] = firstTwo[1] = 0;
    auto file = platform::Input::Open(path);
    if (!file || !FindJpegSegmentAt(*file, length, markerOffset, marker, firstTwo, startOffset)) return nullptr;
    // 256 zero bytes beyond the segment let callers look a little past its end.
    std::unique_ptr<uint8_t[]> copy(new (std::nothrow) uint8_t[length + 256]());
    if (!copy) {
        length = markerOffset = 0;
        return nullptr;
    }
    const platform::Cursor whole(*file, platform::ByteOrder::kBig);
    whole.ChildAt(uint64_t{markerOffset} + 2, length).Some(copy.get(), length);
    return copy;
}

int ReadExifTags(std::u16string_view path, TagRecordTable& table, uint32_t* rowCount, int* bigEndian,
                 const MakerNoteRules& makerNotes, uint32_t startOffset) {
    if (!rowCount) return 0;
    // The one open of the call: the locators, the walker, the maker decoders
    // and the embedded JPEG all read through it.
    auto input = platform::Input::Open(path);
    return input ? ReadExifTags(*input, table, rowCount, bigEndian, makerNotes, startOffset) : 0;
}

int ReadExifTags(platform::File& input, TagRecordTable& table, uint32_t* rowCount, int* bigEndian,
                 const MakerNoteRules& makerNotes, uint32_t startOffset) {
    if (!rowCount) return 0;
    // A BigTIFF, or a PNG's EXIF kept as text: read as the classic TIFF it renders to.
    if (startOffset == 0)
        if (const std::unique_ptr<platform::File> classic = OpenClassicTiff(input))
            return ReadExifTags(*classic, table, rowCount, bigEndian, makerNotes);
    ContainerPointers container;
    uint32_t base = 0;
    if (!LocateTiffHeader(input, startOffset, base, container)) return 0;

    // A header cut by the end of the file keeps the bytes it has.
    uint8_t header[kTiffHeaderSize] = {};
    platform::Cursor whole(input, platform::ByteOrder::kLittle);
    whole.ChildAt(base, sizeof header).Some(header, sizeof header);
    const int order = header[0] == 'M' && header[1] == 'M';
    whole.SetOrder(platform::OrderOf(order));
    const uint32_t ifd0 = GetU32(header + 4, order);
    const bool separate = container.separateHeaders;
    DirectoryWalk walk(whole, base, separate);

    IfdPointers pointers;
    pointers.exifIfd = container.exifIfd;
    pointers.gpsIfd = container.gpsIfd;
    pointers.makerNote = container.makerNote;
    uint32_t ifd1 = container.ifd1;

    // IFD0: a directory too large for the table is passed over whole.
    if (ifd0 != 0) {
        platform::Cursor in = whole.ChildAt(At(base, ifd0), whole.end());
        const uint32_t n = in.U16();
        if (*rowCount + n >= kDirectoryRowLimit)
            in.Skip(uint64_t{n} * kEntrySize);
        else
            ProcessDirectoryEntries(in, base, table, rowCount, n, kStandardDirectory, &pointers);
        // After a short read (an entry cut by the end of the file) there is
        // no next-directory offset.
        if (!separate) ifd1 = in.ok() ? in.U32() : 0;
    }

    // Exif IFD, then the JPEG that a raw file embeds (tag 46): its EXIF
    // stands in for the rest of the raw file's directories.
    if (pointers.exifIfd != 0) {
        if (auto d = walk.Find(pointers.exifIfd)) {
            const uint32_t n = d->in.U16();
            if (*rowCount + n < kDirectoryRowLimit)
                ProcessDirectoryEntries(d->in, d->base, table, rowCount, n, kStandardDirectory, &pointers);
        }
        if (startOffset == 0) {
            if (const uint32_t jpeg = EmbeddedJpegOffset(table, *rowCount)) {
                int embeddedOrder = 0;
                ReadExifTags(input, table, rowCount, &embeddedOrder, makerNotes, jpeg);
                if (bigEndian) *bigEndian = order;
                return 1;
            }
        }
    }

    if (pointers.gpsIfd != 0) {
        if (auto d = walk.Find(pointers.gpsIfd)) {
            const uint32_t n = d->in.U16();
            AppendSeparatorRow(table, rowCount);
            AppendHeadingRow(table, rowCount, "GPS information:");
            if (*rowCount + n < kDirectoryRowLimit)
                ProcessDirectoryEntries(d->in, d->base, table, rowCount, n, kGpsDirectory);
        }
    }

    MakerNotePlace privateNote;
    if (pointers.makerNote != 0 && walk.Find(pointers.makerNote)) {
        AppendSeparatorRow(table, rowCount);
        AppendHeadingRow(table, rowCount, "Maker Note (Vendor):");
        DispatchMakerNote(input, base, table, rowCount, order, pointers.makerNote, separate, makerNotes,
                          pointers.makerNoteSize);
    } else if (pointers.dngPrivateData != 0 && !separate &&
               FindDngPrivateNote(input, base, order, pointers.dngPrivateData, pointers.dngPrivateDataSize,
                                  privateNote)) {
        // A DNG keeps the note of the camera's own file in its private data.
        AppendSeparatorRow(table, rowCount);
        AppendHeadingRow(table, rowCount, "Maker Note (Vendor):");
        DispatchMakerNoteAt(input, privateNote, table, rowCount, makerNotes);
    }

    if (ifd1 != 0) {
        if (auto d = walk.Find(ifd1)) {
            const uint32_t n = d->in.U16();
            AppendSeparatorRow(table, rowCount);
            AppendHeadingRow(table, rowCount, "Thumbnail:");
            if (*rowCount + n < kDirectoryRowLimit)
                ProcessDirectoryEntries(d->in, d->base, table, rowCount, n, kStandardDirectory);
        }
    }

    if (bigEndian) *bigEndian = order;
    return 1;
}

}  // namespace exif
