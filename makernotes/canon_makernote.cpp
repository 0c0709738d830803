// Canon maker notes: a headerless directory whose offsets count from the
// TIFF header (in a CR3 file, from the embedded TIFF header that holds the
// note). The plain tags are named in the entry loop; most of what a Canon
// camera records sits in records of numbers (camera settings, shot info, file
// info, AF info, processing...), one setting per element, and those are read
// in a second pass over the directory, one row per setting. A setting the
// camera marks as unused (a sentinel value) gives no row.
#include <algorithm>
#include <cstdio>
#include <string>

#include "canon_makernote.h"
#include "canon_tables.h"
#include "exif/exif_limits.h"
#include "exif/exif_reader.h"

namespace makernotes {
namespace {

using namespace canon;

// ------------------------------------------------------------ plain tags

void FileNumber(const MakerEntry& e) {
    // The camera counts folder and frame: 1181861 is folder 118, frame 1861.
    const uint32_t v = e.entry().valueField;
    SetValuef(e.row(), "%u-%04u", v / 10000, v % 10000);
}

void ModelName(const MakerEntry& e) {
    const uint32_t id = e.entry().valueField;
    if (const char* name = CanonModelName(id)) return exif::SetRowValue(e.row(), name);
    SetValuef(e.row(), "%u", id);
}

void SerialNumberFormat(const MakerEntry& e) {
    switch (e.entry().valueField) {
        case 0x90000000: return exif::SetRowValue(e.row(), "Format 1");
        case 0xA0000000: return exif::SetRowValue(e.row(), "Format 2");
        default: SetValuef(e.row(), "0x%08x", e.entry().valueField);
    }
}

void ByteCount(const MakerEntry& e) { SetValuef(e.row(), "%u bytes", e.entry().count); }

constexpr ValueText kColorSpaceTexts[] = {{1, "sRGB"}, {2, "Adobe RGB"}, {65535, "n/a"}};
constexpr Enumeration kColorSpace = Enum(kColorSpaceTexts, Sign::kUnsigned, "%d");

constexpr MakerTag kCanonTags[] = {
    {0x0006, "Image Type", FormatGenericValue},
    {0x0007, "Firmware Version", FormatGenericValue},
    {0x0008, "File Number", FileNumber},
    {0x0009, "Owner Name", FormatGenericValue},
    {0x0010, "Camera Model ID", ModelName},
    {0x0015, "Serial Number Format", SerialNumberFormat},
    {0x0095, "Lens Model", FormatGenericValue},
    {0x0096, "Internal Serial Number", FormatGenericValue},
    {0x0097, "Dust Removal Data", ByteCount},
    {0x00AE, "Color Temperature", FormatGenericValue},
    {0x00B4, "Color Space", kColorSpace},
};
static_assert(TagsAscend(kCanonTags) && TagsNamed(kCanonTags), "tags ascend");
constexpr MakerTable kCanon = Table(kCanonTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// ------------------------------------------------------------ the second pass

enum : uint16_t { kShortType = 3, kLongType = 4, kSLongType = 9, kUndefinedType = 7 };

// Hands out the rows of one entry, each carrying the entry's tag; none at or
// beyond the row limit.
class RowWriter {
public:
    RowWriter(exif::TagRecordTable& table, uint32_t* rowCount, const tiff::Entry& entry)
        : table_(table), rowCount_(rowCount), entry_(entry) {}

    bool Full() const { return *rowCount_ >= kMakerNoteRowLimit; }
    // A cleared row named `name`, or null when the table is full.
    exif::TagRecord* Begin(const char* name) {
        if (Full()) return nullptr;
        exif::TagRecord& row = exif::TakeRow(table_, *rowCount_);
        exif::BeginRow(row, entry_.tag, entry_);
        exif::SetRowName(row, name);
        return &row;
    }
    void Keep() { ++*rowCount_; }
    // A row with a ready text.
    void Add(const char* name, const std::string& text) {
        if (exif::TagRecord* row = Begin(name)) {
            exif::SetRowValue(*row, text);
            Keep();
        }
    }

private:
    exif::TagRecordTable& table_;
    uint32_t* rowCount_;
    const tiff::Entry& entry_;
};

// An entry's value bytes (at most `limit`) as elements of `elementSize`
// bytes in the note's order, widened with their sign. Returns the count.
size_t ReadElements(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                    exif::TagRecordTable& table, uint32_t rowCount, uint32_t elementSize, bool isSigned,
                    int64_t* out, size_t limit) {
    uint8_t bytes[kCanonRecordElementsLimit * 4];
    const uint32_t typeSize = tiff::TypeSize(entry.type);
    if (typeSize == 0 || (elementSize != 2 && elementSize != 4)) return 0;
    const uint64_t declared = uint64_t{entry.count} * typeSize;
    const size_t want = static_cast<size_t>(std::min<uint64_t>(declared, uint64_t{limit} * elementSize));
    // The reader wants a row for its context; it writes none.
    const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, rowCount)};
    const size_t got = exif::ReadRawBlock(context, bytes, want);
    const size_t n = got / elementSize;
    const int bigEndian = input.bigEndian();
    for (size_t i = 0; i < n; ++i) {
        const uint8_t* b = bytes + i * elementSize;
        if (elementSize == 2) {
            const uint16_t v = platform::GetU16(b, bigEndian);
            out[i] = isSigned ? int64_t{static_cast<int16_t>(v)} : int64_t{v};
        } else {
            const uint32_t v = platform::GetU32(b, bigEndian);
            out[i] = isSigned ? int64_t{static_cast<int32_t>(v)} : int64_t{v};
        }
    }
    return n;
}

// The record with this tag; null when the tag holds none.
const RecordTag* FindRecord(uint16_t tag) {
    for (const RecordTags* list : {&kSettingsRecords, &kImageRecords})
        for (size_t i = 0; i < list->size; ++i)
            if (list->items[i].tag == tag) return &list->items[i];
    return nullptr;
}

void DecodeFields(const Record& r, const RecordTag& record, RowWriter& rows) {
    for (size_t f = 0; f < record.size; ++f) {
        const Field& field = record.fields[f];
        if (field.index >= r.size) continue;
        exif::TagRecord* row = rows.Begin(field.name);
        if (!row) return;
        if (field.format(r, field.index, *row)) rows.Keep();
    }
}

// ---- AF records: sequences whose later parts are as long as the AF point count

// The elements [from, from + n) as numbers, or nothing when they do not all
// lie in the record or would not fit the row's text.
bool NumberList(const Record& r, size_t from, size_t n, std::string& text) {
    if (n == 0 || from + n > r.size) return false;
    text.clear();
    for (size_t i = 0; i < n; ++i) {
        if (i) text += ' ';
        text += std::to_string(static_cast<int16_t>(r.U16(from + i)));
    }
    return text.size() <= exif::kValueTextLimit;
}

// The AF points a bit mask marks, numbered from 0 across 16-bit words.
bool PointList(const Record& r, size_t from, size_t words, std::string& text) {
    if (words == 0 || from + words > r.size) return false;
    text.clear();
    for (size_t w = 0; w < words; ++w)
        for (int bit = 0; bit < 16; ++bit) {
            if (!(r.U16(from + w) & (1u << bit))) continue;
            if (!text.empty()) text += ',';
            text += std::to_string(w * 16 + bit);
        }
    if (text.empty()) text = "(none)";
    return text.size() <= exif::kValueTextLimit;
}

constexpr ValueText kAfAreaModeTexts[] = {
    {0, "Off (Manual Focus)"}, {1, "AF Point Expansion (surround)"}, {2, "Single-point AF"}, {4, "Auto"},
    {5, "Face Detect AF"}, {6, "Face + Tracking"}, {7, "Zone AF"}, {8, "AF Point Expansion (4 point)"},
    {9, "Spot AF"}, {10, "AF Point Expansion (8 point)"}, {11, "Flexizone Multi (49 point)"},
    {12, "Flexizone Multi (9 point)"}, {13, "Flexizone Single"}, {14, "Large Zone AF"},
};
constexpr Enumeration kAfAreaMode = Enum(kAfAreaModeTexts, Sign::kUnsigned, "%d");

// The older AF record (tag 0x0012): the point count first, one area size for
// all points. The newer (tag 0x0026): its size and the area mode first, an
// area size per point, and the points selected after those in focus.
void DecodeAfInfo(const Record& r, bool newer, RowWriter& rows) {
    const size_t head = newer ? 2 : 0;
    const size_t points = r.U16(head);
    std::string text;
    if (newer && r.size > 1) {
        const char* mode = EnumerationText(kAfAreaMode, r.U16(1));
        rows.Add("AF Area Mode", mode ? mode : std::to_string(r.U16(1)));
    }
    static const char* const kHead[] = {"Number of AF Points", "Valid AF Points",  "Canon Image Width",
                                        "Canon Image Height",  "AF Image Width",   "AF Image Height"};
    for (size_t i = 0; i < 6 && head + i < r.size; ++i) rows.Add(kHead[i], std::to_string(r.U16(head + i)));
    size_t at = head + 6;
    if (!newer) {
        if (r.size > at) rows.Add("AF Area Width", std::to_string(r.U16(at)));
        if (r.size > at + 1) rows.Add("AF Area Height", std::to_string(r.U16(at + 1)));
        at += 2;
    }
    static const char* const kPerPoint[] = {"AF Area Widths", "AF Area Heights", "AF Area X Positions",
                                            "AF Area Y Positions"};
    for (size_t k = newer ? 0 : 2; k < 4; ++k, at += points)
        if (NumberList(r, at, points, text)) rows.Add(kPerPoint[k], text);
    const size_t words = (points + 15) / 16;
    if (PointList(r, at, words, text)) rows.Add("AF Points In Focus", text);
    if (newer && r.note.ModelHas("EOS") && PointList(r, at + words, words, text)) rows.Add("AF Points Selected", text);
}

// ---- camera info (tag 0x000D): a block of bytes laid out per body

enum class InfoKind { kOrientation, kLensBigEndian, kCountPlusOne, kCountMinusOne };

struct InfoField {
    uint16_t offset;
    InfoKind kind;
    const char* name;
};

struct BodyInfo {
    const char* modelEnd;  // the Model text ends so
    const InfoField* fields;
    size_t size;
};

constexpr InfoField k1DMark3Info[] = {
    {0x030, InfoKind::kOrientation, "Camera Orientation"},
    {0x111, InfoKind::kLensBigEndian, "Lens Type"},
    {0x172, InfoKind::kCountPlusOne, "File Index"},
    {0x176, InfoKind::kCountPlusOne, "Shutter Count"},
    {0x17E, InfoKind::kCountMinusOne, "Directory Index"},
};

constexpr BodyInfo kBodyInfos[] = {
    {"1D Mark III", k1DMark3Info, sizeof k1DMark3Info / sizeof k1DMark3Info[0]},
    {"1Ds Mark III", k1DMark3Info, sizeof k1DMark3Info / sizeof k1DMark3Info[0]},
};

constexpr ValueText kOrientationTexts[] = {{0, "Horizontal (normal)"}, {1, "Rotate 90 CW"}, {2, "Rotate 270 CW"}};
constexpr Enumeration kOrientation = Enum(kOrientationTexts, Sign::kUnsigned, "%d");

void DecodeCameraInfo(const uint8_t* bytes, size_t got, const CanonNote& note, RowWriter& rows) {
    for (const BodyInfo& body : kBodyInfos) {
        if (!note.ModelEnds(body.modelEnd)) continue;
        for (size_t f = 0; f < body.size; ++f) {
            const InfoField& field = body.fields[f];
            const uint8_t* at = bytes + field.offset;
            const uint32_t size =
                field.kind == InfoKind::kOrientation ? 1 : field.kind == InfoKind::kLensBigEndian ? 2 : 4;
            if (field.offset + size > got) continue;
            switch (field.kind) {
                case InfoKind::kOrientation: {
                    const char* text = EnumerationText(kOrientation, at[0]);
                    rows.Add(field.name, text ? text : std::to_string(at[0]));
                    break;
                }
                case InfoKind::kLensBigEndian: {
                    // Big-endian whatever the note's order.
                    const uint16_t lens = platform::GetU16(at, 1);
                    const char* name = CanonLensName(lens);
                    if (lens) rows.Add(field.name, name ? name : std::to_string(lens));
                    break;
                }
                case InfoKind::kCountPlusOne:
                    rows.Add(field.name, std::to_string(uint64_t{platform::GetU32(at, note.bigEndian)} + 1));
                    break;
                case InfoKind::kCountMinusOne:
                    rows.Add(field.name, std::to_string(int64_t{platform::GetU32(at, note.bigEndian)} - 1));
                    break;
            }
        }
        return;
    }
}

// ---- tags read whole

// The serial number, shown as the body shows it: six digits on the EOS-1D
// bodies, ten on the others.
void SerialNumber(const tiff::Entry& entry, const CanonNote& note, RowWriter& rows) {
    char text[16];
    std::snprintf(text, sizeof text, note.ModelHas("EOS-1D") ? "%06u" : "%010u", entry.valueField);
    rows.Add("Serial Number", text);
}

// Sixteen bytes as hexadecimal; none when all are zero.
void ImageUniqueId(const uint8_t* bytes, size_t got, RowWriter& rows) {
    std::string text;
    bool any = false;
    for (size_t i = 0; i < got; ++i) {
        char hex[3];
        std::snprintf(hex, sizeof hex, "%02x", bytes[i]);
        text += hex;
        any = any || bytes[i] != 0;
    }
    if (any) rows.Add("Image Unique ID", text);
}

// A 76-byte record whose text starts at byte 4.
void BatteryType(const uint8_t* bytes, size_t got, RowWriter& rows) {
    if (got != 76) return;
    std::string text;
    for (size_t i = 4; i < got && bytes[i] != 0; ++i) text += static_cast<char>(bytes[i]);
    if (!text.empty()) rows.Add("Battery Type", text);
}

std::string ModelText(const exif::TagRecordTable& table, uint32_t rowCount) {
    std::string model;
    for (uint32_t i = 0; i < rowCount && i < kMakerNoteRowLimit; ++i)
        if (table.rows[i].tag == 272) model = table.rows[i].value;
    return model;
}

void DecodeSecondPass(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                      uint32_t rowsBefore, uint32_t* rowCount) {
    CanonNote note;
    note.model = ModelText(table, rowsBefore);
    note.bigEndian = directory.bigEndian();
    int64_t values[kCanonRecordElementsLimit];
    const platform::Cursor input = directory.Whole();
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        RowWriter rows(table, rowCount, entry);
        if (entry.tag == 0x000C && entry.type == kLongType) return SerialNumber(entry, note, rows);
        if (entry.tag == 0x0028 || entry.tag == 0x0038) {
            uint8_t bytes[76] = {};
            const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
            const size_t want = std::min<uint32_t>(entry.count, entry.tag == 0x0028 ? 16 : 76);
            if (tiff::TypeSize(entry.type) != 1) return;
            const size_t got = exif::ReadRawBlock(context, bytes, want);
            if (entry.tag == 0x0028) return ImageUniqueId(bytes, got, rows);
            return BatteryType(bytes, entry.count == 76 ? got : 0, rows);
        }
        if (entry.tag == 0x000D) {
            if (tiff::TypeSize(entry.type) != 1) return;
            uint8_t bytes[kCanonCameraInfoReadLimit] = {};
            const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
            const size_t got = exif::ReadRawBlock(context, bytes, std::min<size_t>(entry.count, sizeof bytes));
            return DecodeCameraInfo(bytes, got, note, rows);
        }
        if (entry.tag == 0x0012 || entry.tag == 0x0026) {
            if (entry.type != kShortType) return;
            const size_t n = ReadElements(input, offsetBase, entry, table, *rowCount, 2, false, values,
                                          kCanonRecordElementsLimit);
            return DecodeAfInfo(Record{values, n, note}, entry.tag == 0x0026, rows);
        }
        if (const RecordTag* record = FindRecord(entry.tag)) {
            const uint32_t typeSize = tiff::TypeSize(entry.type);
            if (typeSize != record->elementSize && entry.type != kUndefinedType) return;
            const size_t n = ReadElements(input, offsetBase, entry, table, *rowCount, record->elementSize,
                                          record->isSigned, values, kCanonRecordElementsLimit);
            const Record r{values, n, note};
            // The focal lengths count in the units the settings give; 0 means 1.
            if (entry.tag == 0x0001 && n > 25 && r.At(25) > 0) note.focalUnits = r.At(25);
            note.focusDistanceUpper = 0;
            return DecodeFields(r, *record, rows);
        }
    });
}

}  // namespace

void DecodeCanonMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    const uint32_t rowsBefore = *rowCount;
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kCanon);
    DecodeSecondPass(directory, offsetBase, table, rowsBefore, rowCount);
}

}  // namespace makernotes
