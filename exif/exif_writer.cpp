#include "exif_writer.h"

#include <cstdio>
#include <algorithm>
#include <cstring>
#include <new>

#include "exif_reader.h"
#include "platform/platform.h"
#include "jpeg/file_rewrite.h"
#include "platform/text.h"

namespace exif {
namespace {

constexpr char16_t kErrorPrefix[] = u"ERROR: ";
constexpr char16_t kHasExifCheck[] = u"ERROR: The file already contains EXIF data!";
constexpr char16_t kHasExifError[] = u"The file already contains EXIF data.";
constexpr char16_t kEmptyError[] = u"Empty/bad EXIF data!";
constexpr char16_t kRatingError[] = u"The rating must be a whole number from 0 to 5.";
constexpr char16_t kTooLargeError[] = u"The EXIF data is too large for a JPEG segment.";

// The rewrite's failures, worded as this writer words its own.
const vv::RewriteMessages& Messages() {
    static const vv::RewriteMessages messages = [] {
        vv::RewriteMessages m = vv::WriterMessages(u"ERROR: Can't write EXIF data. ", u"The file", u"ERROR: ");
        m.open = u"ERROR: Can't read file data.";
        return m;
    }();
    return messages;
}

constexpr uint32_t kIfd0Offset = 8;
constexpr size_t kEntrySize = 12;
constexpr size_t kInlineBytes = 4;     // values up to this size live in the entry itself
constexpr size_t kMinBlockLength = 5;  // anything shorter holds no usable entry
constexpr size_t kHeaderLength = 16;   // "Exif\0\0", TIFF header, IFD0 entry count
constexpr uint32_t kMaxSegmentLength = 0xFFFF;

// The block is written little-endian.
using platform::PutU16Le;
using platform::PutU32Le;
void SetU32(std::vector<uint8_t>& out, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) out[at + i] = static_cast<uint8_t>(v >> (8 * i));
}

bool HasValue(const TagRecord& row) { return row.value[0] != '\0'; }
uint8_t DirectoryOf(const TagRecord& row) { return static_cast<uint8_t>(row.name[0]); }
bool IsPointer(const TagRecord& row) { return row.tag == 34665 && row.type == 4; }

// One entry's bytes and its count as written.
struct EntryData {
    std::vector<uint8_t> bytes;
    uint32_t count = 0;
    uint32_t inlineValue = 0;  // for SHORT and LONG rows
    bool isInline = false;
};

bool ParseRating(const char* text, uint16_t& rating) {
    std::string_view t(text);
    while (!t.empty() && t.front() == ' ') t.remove_prefix(1);
    while (!t.empty() && t.back() == ' ') t.remove_suffix(1);
    if (t.size() != 1 || t[0] < '0' || t[0] > '0' + kCreatorMaxRating) return false;
    rating = static_cast<uint16_t>(t[0] - '0');
    return true;
}

bool MakeEntryData(const TagRecord& row, EntryData& data, std::u16string& errorText) {
    switch (row.type) {
        case 1: {  // text for the Windows fields, which decode it as UTF-16LE
            const std::u16string wide = platform::Utf8ToUtf16(row.value);
            for (char16_t c : wide) PutU16Le(data.bytes, c);
            PutU16Le(data.bytes, 0);
            data.count = static_cast<uint32_t>(data.bytes.size());
            return true;
        }
        case 2: {
            const size_t n = std::strlen(row.value);
            data.bytes.assign(row.value, row.value + n);
            data.bytes.push_back(0);
            data.count = static_cast<uint32_t>(data.bytes.size());
            return true;
        }
        case 3: {
            uint16_t rating = 0;
            if (!ParseRating(row.value, rating)) {
                errorText += kRatingError;
                return false;
            }
            data.count = 1;
            data.inlineValue = rating;
            data.isInline = true;
            return true;
        }
        default:
            errorText += kEmptyError;
            return false;
    }
}

// Writes one directory at block offset `start` (the TIFF offset is start +
// kIfd0Offset + 2 for IFD0, whose count sits in the segment header); the
// pointer entry's value is patched by the caller.
bool WriteDirectory(const TagRecord* rows, const std::vector<uint32_t>& order, std::vector<uint8_t>& block,
                    uint32_t tiffStart, bool withCount, size_t& pointerAt, std::u16string& errorText) {
    const size_t base = block.size();
    if (withCount) PutU16Le(block, static_cast<uint32_t>(order.size()));
    const size_t entriesAt = block.size();
    block.resize(entriesAt + kEntrySize * order.size() + 4, 0);  // entries and a next-IFD word of 0
    for (size_t i = 0; i < order.size(); ++i) {
        const TagRecord& row = rows[order[i]];
        const size_t at = entriesAt + kEntrySize * i;
        block[at] = static_cast<uint8_t>(row.tag);
        block[at + 1] = static_cast<uint8_t>(row.tag >> 8);
        block[at + 2] = static_cast<uint8_t>(row.type);
        block[at + 3] = static_cast<uint8_t>(row.type >> 8);
        if (IsPointer(row)) {
            SetU32(block, at + 4, 1);
            pointerAt = at + 8;
            continue;
        }
        EntryData data;
        if (!MakeEntryData(row, data, errorText)) return false;
        SetU32(block, at + 4, data.count);
        if (data.isInline) {
            SetU32(block, at + 8, data.inlineValue);
        } else if (data.bytes.size() <= kInlineBytes) {
            std::memcpy(&block[at + 8], data.bytes.data(), data.bytes.size());
        } else {
            SetU32(block, at + 8, tiffStart + static_cast<uint32_t>(block.size() - base));
            block.insert(block.end(), data.bytes.begin(), data.bytes.end());
        }
    }
    return true;
}

}  // namespace

void InitCreatorRows(TagRecord (&rows)[kCreatorRowCount]) {
    std::memset(rows, 0, sizeof(rows));
    for (uint32_t i = 0; i < kCreatorRowCount; ++i) {
        rows[i].tag = kCreatorFields[i].tag;
        rows[i].type = kCreatorFields[i].type;
        rows[i].name[0] = static_cast<char>(kCreatorFields[i].directory);
    }
    rows[kCreatorPointerRow].count = 1;
}

std::string DefaultDateTaken() {
    const platform::LocalTime t = platform::GetLocalTime();
    char text[64];
    std::snprintf(text, sizeof text, "%.4d:%.2d:%.2d %.2d:%.2d:%.2d", t.year, t.month, t.day, t.hour, t.minute,
                  t.second);
    return text;
}

void SetCreatorValue(TagRecord& row, std::string_view text) {
    const size_t n = platform::Utf8CutLength(text, kTagValueSize - 4);
    std::memcpy(row.value, text.data(), n);
    row.value[n] = '\0';
}

bool BuildExifBlock(const TagRecord* rows, uint32_t rowCount, std::vector<uint8_t>& block, uint16_t& ifd0Entries,
                    std::u16string& errorText) {
    std::vector<uint32_t> ifd0, exifIfd;
    int pointerRow = -1;
    for (uint32_t i = 0; i < rowCount; ++i) {
        if (IsPointer(rows[i])) {
            if (DirectoryOf(rows[i]) == kCreatorIfd0 && pointerRow < 0) pointerRow = static_cast<int>(i);
            continue;
        }
        if (!HasValue(rows[i])) continue;
        (DirectoryOf(rows[i]) == kCreatorExifIfd ? exifIfd : ifd0).push_back(i);
    }
    if (!exifIfd.empty() && pointerRow >= 0) {
        // The pointer keeps its place in row order among the IFD0 entries.
        ifd0.push_back(static_cast<uint32_t>(pointerRow));
        std::sort(ifd0.begin(), ifd0.end());
    }
    if (ifd0.empty()) {
        errorText += kEmptyError;
        return false;
    }
    block.clear();
    size_t pointerAt = 0;
    if (!WriteDirectory(rows, ifd0, block, kIfd0Offset + 2, false, pointerAt, errorText)) return false;
    if (pointerAt != 0) {
        const uint32_t exifOffset = kIfd0Offset + 2 + static_cast<uint32_t>(block.size());
        SetU32(block, pointerAt, exifOffset);
        size_t unused = 0;
        if (!WriteDirectory(rows, exifIfd, block, exifOffset, true, unused, errorText)) return false;
    }
    if (block.size() < kMinBlockLength) {
        errorText += kEmptyError;
        return false;
    }
    ifd0Entries = static_cast<uint16_t>(ifd0.size());
    return true;
}

int WriteExifToJpeg(std::u16string_view path, const TagRecord* rows, uint32_t rowCount, int keepDate,
                    std::u16string& errorText) {
    errorText = kErrorPrefix;
    try {
        if (vv::RefusedUnread(path, Messages(), errorText)) return 0;
        uint32_t length = 0, markerOffset = 0;
        uint8_t firstTwo[2] = {0, 0};
        if (FindJpegSegment(path, length, markerOffset, 225, firstTwo, 0)) {
            // The check's own message, then the writer's: shown together as they always were.
            errorText = kHasExifCheck;
            errorText += kHasExifError;
            return 0;
        }
        std::vector<uint8_t> block;
        uint16_t ifd0Entries = 0;
        if (!BuildExifBlock(rows, rowCount, block, ifd0Entries, errorText)) return 0;

        uint32_t segmentLength = static_cast<uint32_t>(block.size()) + 2 + kHeaderLength;
        const bool pad = segmentLength % 2 != 0;
        if (pad) ++segmentLength;
        if (block.size() > kMaxSegmentLength || segmentLength > kMaxSegmentLength) {
            errorText += kTooLargeError;
            return 0;
        }
        static constexpr uint8_t kSignature[] = {'E', 'x', 'i', 'f', 0, 0, 'I', 'I'};
        std::vector<uint8_t> segment;
        segment.reserve(4 + kHeaderLength + block.size() + 1);
        segment.push_back(0xFF);
        segment.push_back(0xE1);
        segment.push_back(static_cast<uint8_t>(segmentLength >> 8));
        segment.push_back(static_cast<uint8_t>(segmentLength));
        segment.insert(segment.end(), std::begin(kSignature), std::end(kSignature));
        PutU16Le(segment, 42);
        PutU32Le(segment, kIfd0Offset);
        PutU16Le(segment, ifd0Entries);
        segment.insert(segment.end(), block.begin(), block.end());
        if (pad) segment.push_back(0);
        return vv::ReplaceJpegSegment(path, 0, 0, segment, keepDate != 0, Messages(), errorText);
    } catch (const std::bad_alloc&) {
        errorText = Messages().memory;
        return 0;
    }
}

}  // namespace exif
