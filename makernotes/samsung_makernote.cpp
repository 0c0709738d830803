// Samsung maker notes, in their two forms.
//
// The older "STMN" record (phones and compacts of the 2000s), in the EXIF
// byte order:
//
//   +0 version text (8, "STMN100\0")   +8 preview start (4, from the note's
//   start)   +12 preview length (4)   ... +44 a directory no tag of which is known
//
// The directory form of the later compacts, NX cameras and phones: a plain
// directory at the note's start. Its first entry is always the version
// (tag 0001, UNDEFINED, 4 bytes "0100"), and that entry tells the note's
// byte order. Its offsets count from the TIFF header in some models and
// from the note's start in others; the decoder tells which from where the
// values lie.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "makernote_array.h"
#include "makernote_decoders.h"
#include "makernote_numbers.h"
#include "makernote_texts.h"

namespace makernotes {
namespace {

// ------------------------------------------------------------ "STMN" record

// Its rows carry the 4-byte word index of their field as the tag (the
// version is word 0, the preview start word 2, its length word 3).
constexpr size_t kStmnVersionSize = 8;
constexpr uint16_t kStmnPreviewAt = 8;

// ------------------------------------------------------------ directory form

constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kNumber = Number(Sign::kUnsigned, "%u");

constexpr ValueText kDeviceTypeTexts[] = {
    {0x1000, "Compact Digital Camera"}, {0x2000, "High-end NX Camera"}, {0x3000, "HXM Video Camera"},
    {0x12000, "Cell Phone"},            {0x300000, "SMX Video Camera"},
};
constexpr Enumeration kDeviceType = Enum(kDeviceTypeTexts, Sign::kUnsigned, "%u");

constexpr ValueText kModelTexts[] = {
    {0x100101c, "NX10"},
    {0x1001226, "HMX-S15BP"},
    {0x1001233, "HMX-Q10"},
    {0x1001234, "HMX-H304"},
    {0x100130c, "NX100"},
    {0x1001327, "NX11"},
    {0x170104b, "ES65, ES67 / VLUU ES65, ES67 / SL50"},
    {0x170104e, "ES70, ES71 / VLUU ES70, ES71 / SL600"},
    {0x1701052, "ES73 / VLUU ES73 / SL605"},
    {0x1701055, "ES25, ES27 / VLUU ES25, ES27 / SL45"},
    {0x1701300, "ES28 / VLUU ES28"},
    {0x1701303, "ES74,ES75,ES78 / VLUU ES75,ES78"},
    {0x2001046, "PL150 / VLUU PL150 / TL210 / PL151"},
    {0x2001048, "PL100 / TL205 / VLUU PL100 / PL101"},
    {0x2001311, "PL120,PL121 / VLUU PL120,PL121"},
    {0x2001315, "PL170,PL171 / VLUUPL170,PL171"},
    {0x200131e, "PL210, PL211 / VLUU PL210, PL211"},
    {0x2701317, "PL20,PL21 / VLUU PL20,PL21"},
    {0x2a0001b, "WP10 / VLUU WP10 / AQ100"},
    {0x3000000, "Various Models (0x3000000)"},
    {0x3a00018, "Various Models (0x3a00018)"},
    {0x400101f, "ST1000 / ST1100 / VLUU ST1000 / CL65"},
    {0x4001022, "ST550 / VLUU ST550 / TL225"},
    {0x4001025, "Various Models (0x4001025)"},
    {0x400103e, "VLUU ST5500, ST5500, CL80"},
    {0x4001041, "VLUU ST5000, ST5000, TL240"},
    {0x4001043, "ST70 / VLUU ST70 / ST71"},
    {0x400130a, "Various Models (0x400130a)"},
    {0x400130e, "ST90,ST91 / VLUU ST90,ST91"},
    {0x4001313, "VLUU ST95, ST95"},
    {0x4a00015, "VLUU ST60"},
    {0x4a0135b, "ST30, ST65 / VLUU ST65 / ST67"},
    {0x5000000, "Various Models (0x5000000)"},
    {0x5001038, "Various Models (0x5001038)"},
    {0x500103a, "WB650 / VLUU WB650 / WB660"},
    {0x500103c, "WB600 / VLUU WB600 / WB610"},
    {0x500133e, "WB150 / WB150F / WB152 / WB152F / WB151"},
    {0x5a0000f, "WB5000 / HZ25W"},
    {0x5a0001e, "WB5500 / VLUU WB5500 / HZ50W"},
    {0x6001036, "EX1"},
    {0x700131c, "VLUU SH100, SH100"},
    {0x27127002, "SMX-C20N"},
};
constexpr Enumeration kModel = Enum(kModelTexts, Sign::kUnsigned, "%u");

// The colour the camera's smart album filed the picture under, and a
// second number; 0 0 when there is none.
constexpr ValueText kAlbumColorTexts[] = {
    {0, "Red"}, {1, "Yellow"}, {2, "Green"}, {3, "Blue"}, {4, "Magenta"}, {5, "Black"}, {6, "White"}, {7, "Various"},
};
void SmartAlbumColor(const MakerEntry& e) {
    int64_t v[2];
    if (ReadIntegers(e, v, 2) != 2) return;
    if (v[0] == 0 && v[1] == 0) return exif::SetRowValue(e.row(), "n/a");
    const char* color = EnumerationText(Enum(kAlbumColorTexts, Sign::kUnsigned, ""), v[0]);
    if (color) SetValuef(e.row(), "%s; %lld", color, static_cast<long long>(v[1]));
    else SetValuef(e.row(), "%lld; %lld", static_cast<long long>(v[0]), static_cast<long long>(v[1]));
}

constexpr ValueText kRawByteOrderTexts[] = {{0, "Little-endian (Intel, II)"}, {1, "Big-endian (Motorola, MM)"}};
constexpr Enumeration kRawByteOrder = Enum(kRawByteOrderTexts, Sign::kUnsigned, "%u");

constexpr Enumeration kAutoManual = Enum(kAutoManualTexts, Sign::kUnsigned, "%u");

constexpr ValueText kColorSpaceTexts[] = {{0, "sRGB"}, {1, "Adobe RGB"}};
constexpr Enumeration kColorSpace = Enum(kColorSpaceTexts, Sign::kUnsigned, "%u");

constexpr ValueText kLensTypeTexts[] = {
    {0, "Built-in or Manual Lens"},
    {1, "Samsung NX 30mm F2 Pancake"},
    {2, "Samsung NX 18-55mm F3.5-5.6 OIS"},
    {3, "Samsung NX 50-200mm F4-5.6 ED OIS"},
    {4, "Samsung NX 20-50mm F3.5-5.6 ED"},
    {5, "Samsung NX 20mm F2.8 Pancake"},
    {6, "Samsung NX 18-200mm F3.5-6.3 ED OIS"},
    {7, "Samsung NX 60mm F2.8 Macro ED OIS SSA"},
    {8, "Samsung NX 16mm F2.4 Pancake"},
    {9, "Samsung NX 85mm F1.4 ED SSA"},
    {10, "Samsung NX 45mm F1.8"},
    {11, "Samsung NX 45mm F1.8 2D/3D"},
    {12, "Samsung NX 12-24mm F4-5.6 ED"},
    {13, "Samsung NX 16-50mm F2-2.8 S ED OIS"},
    {14, "Samsung NX 10mm F3.5 Fisheye"},
    {15, "Samsung NX 16-50mm F3.5-5.6 Power Zoom ED OIS"},
    {20, "Samsung NX 50-150mm F2.8 S ED OIS"},
    {21, "Samsung NX 300mm F2.8 ED OIS"},
};
constexpr Enumeration kLensType = Enum(kLensTypeTexts, Sign::kUnsigned, "%u");

static_assert(ValuesUnique(kDeviceTypeTexts) && ValuesUnique(kModelTexts) && ValuesUnique(kAlbumColorTexts) &&
                  ValuesUnique(kLensTypeTexts),
              "values listed once");

// Degrees Celsius.
void CameraTemperature(const MakerEntry& e) {
    double v = 0;
    if (ReadQuotients(e, &v, 1) == 1) SetValuef(e.row(), "%g C", v);
}

// Short times as a fraction of a second, longer ones to a tenth.
void ExposureTime(const MakerEntry& e) {
    double v = 0;
    if (ReadQuotients(e, &v, 1) != 1) return;
    if (v > 0 && v < 0.25001) return SetValuef(e.row(), "1/%.0f", std::floor(1 / v + 0.5));
    std::string text;
    AppendShortest(text, std::round(v * 10) / 10);
    exif::SetRowValue(e.row(), text);
}

void FNumber(const MakerEntry& e) {
    double v = 0;
    if (ReadQuotients(e, &v, 1) == 1) SetValuef(e.row(), "%.1f", v);
}

// Stored in tenths of a millimetre.
void FocalLength35(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadIntegers(e, &v, 1) == 1) SetValuef(e.row(), "%g mm", static_cast<double>(v) / 10);
}

// Tag 0021 (the picture wizard) is read in the second pass.
constexpr MakerTag kSamsungTags[] = {
    {0x0001, "Maker Note Version", FormatGenericValue},
    {0x0002, "Device Type", FirstInteger<kDeviceType>},
    {0x0003, "Samsung Model ID", FirstInteger<kModel>},
    {0x0020, "Smart Album Color", SmartAlbumColor},
    {0x0030, "Local Location Name", FormatGenericValue},
    {0x0031, "Location Name", FormatGenericValue},
    {0x0040, "Raw Data Byte Order", FirstInteger<kRawByteOrder>},
    {0x0041, "White Balance Setup", FirstInteger<kAutoManual>},
    {0x0043, "Camera Temperature", CameraTemperature},
    {0x0100, "Face Detect", FirstInteger<kOffOn>},
    {0x0120, "Face Recognition", FirstInteger<kOffOn>},
    {0x0123, "Face Name", FormatGenericValue},
    {0xa001, "Firmware Name", FormatGenericValue},
    {0xa002, "Serial Number", FormatGenericValue},
    {0xa003, "Lens Type", FirstInteger<kLensType>},
    {0xa004, "Lens Firmware", FormatGenericValue},
    {0xa005, "Internal Lens Serial Number", FormatGenericValue},
    {0xa010, "Sensor Areas", FormatGenericValue},
    {0xa011, "Color Space", FirstInteger<kColorSpace>},
    {0xa012, "Smart Range", FirstInteger<kOffOn>},
    {0xa013, "Exposure Compensation", FormatQuotients},
    {0xa014, "ISO", FirstInteger<kNumber>},
    {0xa018, "Exposure Time", ExposureTime},
    {0xa019, "F Number", FNumber},
    {0xa01a, "Focal Length In 35mm Format", FocalLength35},
};
static_assert(TagsAscend(kSamsungTags) && TagsNamed(kSamsungTags), "tags ascend, each named");
constexpr MakerTable kSamsung = Table(kSamsungTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// The picture wizard: five SHORTs, the mode, the colour, and saturation,
// sharpness and contrast stored 4 above their setting.
constexpr ValueText kWizardModeTexts[] = {
    {0, "Standard"}, {1, "Vivid"},   {2, "Portrait"}, {3, "Landscape"}, {4, "Forest"},   {5, "Retro"},
    {6, "Cool"},     {7, "Calm"},    {8, "Classic"},  {9, "Custom1"},   {10, "Custom2"}, {11, "Custom3"},
    {255, "n/a"},
};
constexpr Enumeration kWizardMode = Enum(kWizardModeTexts, Sign::kUnsigned, "%u");
static_assert(ValuesUnique(kWizardModeTexts), "values listed once");

template <size_t Index>
void StoredAboveSetting(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%lld", static_cast<long long>(a.At(Index) - 4));
}

constexpr ArrayRow kWizardRows[] = {
    {0, "Picture Wizard Mode", EnumElement<kWizardMode, 0>},
    {1, "Picture Wizard Color", NumberElement<1>},
    {2, "Picture Wizard Saturation", StoredAboveSetting<2>},
    {3, "Picture Wizard Sharpness", StoredAboveSetting<3>},
    {4, "Picture Wizard Contrast", StoredAboveSetting<4>},
};
constexpr ArrayTag kSamsungArrays[] = {
    Array(0x0021, ArrayLayout{tiff::kShort, 2, Sign::kUnsigned, ElementOrder::kNote}, kWizardRows),
};

// What the directory's offsets count from: the TIFF header unless, counted
// from there, the first value stored out of line would lie before the end
// of the directory itself while, counted from the note, it lies after it.
uint32_t DirectoryBase(const platform::Cursor& directory, uint32_t offsetBase) {
    platform::Cursor in = directory;
    const uint32_t count = in.U16();
    if (!in.ok() || count >= kMakerNoteRowLimit || directory.position() > UINT32_MAX) return offsetBase;
    const uint64_t noteStart = directory.position();
    const uint64_t end = noteStart + 2 + uint64_t{tiff::kEntrySize} * count;
    uint64_t first = UINT64_MAX;
    for (uint32_t i = 0; i < count; ++i) {
        tiff::Entry entry;
        if (!tiff::ReadEntry(in, entry)) break;
        if (uint64_t{tiff::TypeSize(entry.type)} * entry.count > tiff::kValueFieldSize)
            first = std::min<uint64_t>(first, entry.valueField);
    }
    if (first == UINT64_MAX) return offsetBase;
    const bool beforeEnd = offsetBase + first < end;
    return beforeEnd && noteStart + first >= end ? static_cast<uint32_t>(noteStart) : offsetBase;
}

}  // namespace

void DecodeSamsungStmnMakerNote(const platform::Cursor& directory, uint32_t, exif::TagRecordTable& table,
                                uint32_t* rowCount) {
    platform::Cursor in = directory;
    char version[kStmnVersionSize + 1] = {};
    if (!in.Bytes(version, kStmnVersionSize)) return;
    tiff::Entry entry;
    entry.type = tiff::kUndefined;
    entry.count = kStmnVersionSize;
    if (exif::TagRecord* row = AppendEntryRow(table, rowCount, entry, "Maker Note Version"))
        exif::SetRowValue(*row, version);
    // A preview at 0 means the note has none.
    const uint32_t start = in.U32(), length = in.U32();
    if (!in.ok() || start == 0) return;
    entry.type = tiff::kLong;
    entry.count = 1;
    entry.tag = kStmnPreviewAt / 4;
    if (exif::TagRecord* row = AppendEntryRow(table, rowCount, entry, "Preview Image Start")) SetValuef(*row, "%u", start);
    entry.tag = kStmnPreviewAt / 4 + 1;
    if (exif::TagRecord* row = AppendEntryRow(table, rowCount, entry, "Preview Image Length"))
        SetValuef(*row, "%u", length);
}

bool CheckSamsungDirectory(platform::Cursor& at) {
    // Count (2), then the version entry: tag 1, UNDEFINED, count 4, "0100".
    static constexpr uint8_t kLittle[] = {1, 0, 7, 0, 4, 0, 0, 0, '0', '1', '0', '0'};
    static constexpr uint8_t kBig[] = {0, 1, 0, 7, 0, 0, 0, 4, '0', '1', '0', '0'};
    uint8_t bytes[2 + sizeof kLittle] = {};
    platform::Cursor in = at;
    if (!in.Bytes(bytes, sizeof bytes)) return false;
    if (std::memcmp(bytes + 2, kLittle, sizeof kLittle) == 0) at.SetOrder(platform::ByteOrder::kLittle);
    else if (std::memcmp(bytes + 2, kBig, sizeof kBig) == 0) at.SetOrder(platform::ByteOrder::kBig);
    else return false;
    return true;
}

void DecodeSamsungMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount) {
    const uint32_t base = DirectoryBase(directory, offsetBase);
    platform::Cursor in = directory;
    const uint32_t rowsBefore = *rowCount;
    DecodeMakerDirectory(in, base, table, rowCount, kSamsung);
    DecodeArrayTags(directory, base, table, rowsBefore, rowCount, Arrays(kSamsungArrays));
}

}  // namespace makernotes
