// Kodak maker notes. Kodak's compacts write no directory but a record of
// settings at fixed places, each row named after its place in the record:
//
//   "KDK" form (most EasyShare and DX/CX/LS bodies):
//     +0   "KDK INFO" (or "KDK" and other bytes)   8 bytes
//     +8   the record: model name at +0, year at +0x10 ...
//   DC200 series: the record from the note's first byte, the picture's
//   original file name (8.3) at +0x20.
//
// The "KDK" record's byte order is not marked; it is the one in which the
// year reads as a year.
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>

#include "exif/exif_reader.h"
#include "makernote_array.h"
#include "makernote_decoders.h"
#include "makernote_limits.h"
#include "makernote_texts.h"

namespace makernotes {
namespace {

// One setting of a record: where it lies, how many bytes it takes, its name
// and its format (given its bytes and the record's byte order).
using FieldFormat = void (*)(const uint8_t* field, int bigEndian, exif::TagRecord& row);
struct Field {
    uint16_t offset;
    uint16_t size;
    const char* name;
    FieldFormat format;
};

// The record's rows, one per field the record is long enough for; none when
// the fields would take the table to the row limit.
void DecodeRecord(const uint8_t* record, size_t got, int bigEndian, const Field* fields, size_t count,
                  exif::TagRecordTable& table, uint32_t* rowCount) {
    if (*rowCount >= kMakerNoteRowLimit || count >= kMakerNoteRowLimit - *rowCount) return;
    for (size_t i = 0; i < count; ++i) {
        const Field& f = fields[i];
        if (f.offset > got || f.size > got - f.offset) continue;
        tiff::Entry entry;
        entry.tag = f.offset;
        entry.type = tiff::kUndefined;
        entry.count = f.size;
        exif::TagRecord& row = exif::TakeRow(table, *rowCount);
        exif::BeginRow(row, entry.tag, entry);
        exif::SetRowName(row, f.name);
        f.format(record + f.offset, bigEndian, row);
        ++*rowCount;
    }
}

// ------------------------------------------------------------ field formats

template <size_t Size>
void Text(const uint8_t* field, int, exif::TagRecord& row) {
    std::string text(reinterpret_cast<const char*>(field), strnlen(reinterpret_cast<const char*>(field), Size));
    while (!text.empty() && text.back() == ' ') text.pop_back();
    exif::SetRowValue(row, text);
}

template <const Enumeration& E>
void ByteSetting(const uint8_t* field, int, exif::TagRecord& row) {
    FormatEnumeratedElement(E, field[0], row);
}
template <const Enumeration& E>
void ShortSetting(const uint8_t* field, int bigEndian, exif::TagRecord& row) {
    FormatEnumeratedElement(E, platform::GetU16(field, bigEndian), row);
}

void ByteNumber(const uint8_t* field, int, exif::TagRecord& row) { SetValuef(row, "%u", field[0]); }
void ShortNumber(const uint8_t* field, int bigEndian, exif::TagRecord& row) {
    SetValuef(row, "%u", platform::GetU16(field, bigEndian));
}
// F-number and zoom: hundredths.
void Hundredths(const uint8_t* field, int bigEndian, exif::TagRecord& row) {
    SetValuef(row, "%.6g", platform::GetU16(field, bigEndian) / 100.0);
}

void MonthDay(const uint8_t* field, int, exif::TagRecord& row) { SetValuef(row, "%02u:%02u", field[0], field[1]); }
// Hours, minutes, seconds and hundredths.
void Time(const uint8_t* field, int, exif::TagRecord& row) {
    SetValuef(row, "%02u:%02u:%02u.%02u", field[0], field[1], field[2], field[3]);
}

// Units of 10 microseconds.
void ExposureTime(const uint8_t* field, int bigEndian, exif::TagRecord& row) {
    SetExposureSeconds(row, platform::GetU32(field, bigEndian) / 100000.0);
}

// Thousandths of a step, signed.
void ExposureCompensation(const uint8_t* field, int bigEndian, exif::TagRecord& row) {
    const auto thousandths = static_cast<int16_t>(platform::GetU16(field, bigEndian));
    if (thousandths == 0) return exif::SetRowValue(row, "0");
    SetValuef(row, "%+.6g", thousandths / 1000.0);
}

// 0 when the camera chose the sensitivity itself.
void IsoSetting(const uint8_t* field, int bigEndian, exif::TagRecord& row) {
    const uint16_t iso = platform::GetU16(field, bigEndian);
    if (iso == 0) return exif::SetRowValue(row, "Auto");
    SetValuef(row, "%u", iso);
}

// Signed steps around "Normal".
void Sharpness(const uint8_t* field, int, exif::TagRecord& row) {
    const auto step = static_cast<int8_t>(field[0]);
    if (step == 0) return exif::SetRowValue(row, "Normal");
    SetValuef(row, "%+d", step);
}

// ------------------------------------------------------------ the "KDK" record

constexpr ValueText kQualityTexts[] = {{1, "Fine"}, {2, "Normal"}};
constexpr ValueText kShutterModeTexts[] = {{0, "Auto"}, {8, "Aperture Priority"}, {32, "Manual"}};
constexpr ValueText kMeteringModeTexts[] = {{0, "Multi-segment"}, {1, "Center-weighted average"}, {2, "Spot"}};
constexpr ValueText kFocusModeTexts[] = {{0, "Normal"}, {2, "Macro"}};
constexpr ValueText kWhiteBalanceTexts[] = {{0, "Auto"}, {1, "Flash"}, {2, "Tungsten"}, {3, "Daylight"}};
// The later bodies keep the older values' meaning in single bits.
constexpr ValueText kFlashModeTexts[] = {
    {0, "Auto"}, {1, "Fill Flash"}, {2, "Off"}, {3, "Red-Eye"}, {16, "Fill Flash"}, {32, "Off"}, {64, "Red-Eye"},
};
constexpr ValueText kDateTimeStampTexts[] = {{0, "Off"}};
constexpr ValueText kColorModeTexts[] = {
    {1, "B&W"}, {2, "Sepia"}, {3, "B&W Yellow Filter"}, {4, "B&W Red Filter"}, {32, "Saturated Color"},
    {64, "Neutral Color"}, {256, "Saturated Color"}, {512, "Neutral Color"}, {8192, "B&W"}, {16384, "Sepia"},
};
static_assert(ValuesUnique(kFlashModeTexts) && ValuesUnique(kColorModeTexts), "each value once");

constexpr Enumeration kQuality = Enum(kQualityTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kShutterMode = Enum(kShutterModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kMeteringMode = Enum(kMeteringModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kDateTimeStamp = Enum(kDateTimeStampTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kColorMode = Enum(kColorModeTexts, Sign::kUnsigned, "%d");

constexpr Field kKdkFields[] = {
    {0x00, 8, "Kodak Model", Text<8>},
    {0x09, 1, "Quality", ByteSetting<kQuality>},
    {0x0A, 1, "Burst Mode", ByteSetting<kOffOn>},
    {0x0C, 2, "Image Width", ShortNumber},
    {0x0E, 2, "Image Height", ShortNumber},
    {0x10, 2, "Year Created", ShortNumber},
    {0x12, 2, "Month Day Created", MonthDay},
    {0x14, 4, "Time Created", Time},
    {0x1B, 1, "Shutter Mode", ByteSetting<kShutterMode>},
    {0x1C, 1, "Metering Mode", ByteSetting<kMeteringMode>},
    {0x1D, 1, "Sequence Number", ByteNumber},
    {0x1E, 2, "F Number", Hundredths},
    {0x20, 4, "Exposure Time", ExposureTime},
    {0x24, 2, "Exposure Compensation", ExposureCompensation},
    {0x38, 1, "Focus Mode", ByteSetting<kFocusMode>},
    {0x40, 1, "White Balance", ByteSetting<kWhiteBalance>},
    {0x5C, 1, "Flash Mode", ByteSetting<kFlashMode>},
    {0x5D, 1, "Flash Fired", ByteSetting<kNoYes>},
    {0x5E, 2, "ISO Setting", IsoSetting},
    {0x60, 2, "ISO", ShortNumber},
    {0x62, 2, "Total Zoom", Hundredths},
    {0x64, 2, "Date Time Stamp", ShortSetting<kDateTimeStamp>},
    {0x66, 2, "Color Mode", ShortSetting<kColorMode>},
    {0x68, 2, "Digital Zoom", Hundredths},
    {0x6B, 1, "Sharpness", Sharpness},
};
// Bytes of the record that are read: every field named lies below.
constexpr size_t kKdkRecordSize = 0x6C;

constexpr bool FieldsFit(const Field* fields, size_t count, size_t size) {
    for (size_t i = 0; i < count; ++i)
        if (fields[i].offset + fields[i].size > size || (i > 0 && fields[i - 1].offset >= fields[i].offset))
            return false;
    return true;
}
static_assert(FieldsFit(kKdkFields, sizeof kKdkFields / sizeof kKdkFields[0], kKdkRecordSize),
              "fields ascend and lie inside the record");

constexpr size_t kYearOffset = 0x10;
bool IsYear(uint16_t year) { return year >= 1990 && year <= 2099; }

// ------------------------------------------------------------ the DC200 series

constexpr size_t kFileNameOffset = 0x20;
constexpr size_t kFileNameSize = 12;  // 8.3
constexpr Field kFileNameFields[] = {
    {kFileNameOffset, kFileNameSize, "Original File Name", Text<kFileNameSize>},
};

// Eight letters or digits, a dot and three more.
bool IsShortFileName(const uint8_t* name) {
    for (size_t i = 0; i < kFileNameSize; ++i) {
        const bool dot = i == 8;
        if (dot ? name[i] != '.' : !std::isalnum(name[i]) && name[i] != '_') return false;
    }
    return true;
}

}  // namespace

void DecodeKodakMakerNote(const platform::Cursor& directory, uint32_t, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    uint8_t record[kKdkRecordSize] = {};
    platform::Cursor in = directory;
    const size_t got = in.Some(record, sizeof record);
    int bigEndian = directory.bigEndian();
    if (got >= kYearOffset + 2 && !IsYear(platform::GetU16(record + kYearOffset, bigEndian)) &&
        IsYear(platform::GetU16(record + kYearOffset, !bigEndian)))
        bigEndian = !bigEndian;
    DecodeRecord(record, got, bigEndian, kKdkFields, sizeof kKdkFields / sizeof kKdkFields[0], table, rowCount);
}

bool CheckKodakFileNameRecord(platform::Cursor& at) {
    uint8_t record[kFileNameOffset + kFileNameSize] = {};
    platform::Cursor in = at;
    return in.Bytes(record, sizeof record) && IsShortFileName(record + kFileNameOffset);
}

void DecodeKodakFileNameMakerNote(const platform::Cursor& directory, uint32_t, exif::TagRecordTable& table,
                                  uint32_t* rowCount) {
    uint8_t record[kFileNameOffset + kFileNameSize] = {};
    platform::Cursor in = directory;
    const size_t got = in.Some(record, sizeof record);
    DecodeRecord(record, got, directory.bigEndian(), kFileNameFields, 1, table, rowCount);
}

}  // namespace makernotes
