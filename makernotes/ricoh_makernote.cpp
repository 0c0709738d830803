// Ricoh's own maker notes, as the Caplio, GR Digital and GXR cameras write
// them (the Ricoh-made Pentax bodies write Pentax notes instead):
//
// The directory form: "Ricoh" or "RICOH", 3 bytes whose last two are zero,
// then a directory in the EXIF byte order whose offsets count from the TIFF
// header. Tag 1001 holds the image-information record, tag 2001 a
// sub-directory behind a "[Ricoh Camera Info]" header; both are read in a
// second pass.
//
// The text form of the oldest cameras: pairs of a key and its value, each
// ended by ';' ("Rv0103;Rg1C;Bg1A;Gg20;"). The value texts are shown as
// stored; a firmware version "0103" reads 1.03.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "makernote_array.h"
#include "makernote_decoders.h"
#include "makernote_numbers.h"
#include "makernote_texts.h"
#include "platform/text.h"

namespace makernotes {
namespace {

using tiff::kLong;
using tiff::kRational;
using tiff::kShort;
using tiff::kSRational;

constexpr size_t kRicohHeaderSize = 8;
constexpr char kCameraInfoHeader[] = "[Ricoh Camera Info]";
constexpr size_t kCameraInfoHeaderSize = 20;  // the text and one byte

// A firmware version as four digits after "Rev" or "Rv": "0104" is 1.04.
// False when the text is not such a version.
bool VersionFromDigits(const char* digits, size_t n, std::string& out) {
    if (n == 0 || n > 8) return false;
    unsigned v = 0;
    for (size_t i = 0; i < n; ++i) {
        if (digits[i] < '0' || digits[i] > '9') return false;
        v = v * 10 + static_cast<unsigned>(digits[i] - '0');
    }
    char text[24];
    std::snprintf(text, sizeof text, "%u.%02u", v / 100, v % 100);
    out = text;
    return true;
}

// ------------------------------------------------------------ main directory

void FirmwareVersion(const MakerEntry& e) {
    FormatGenericValue(e);
    const char* text = e.row().value;
    std::string version;
    if (std::strncmp(text, "Rev", 3) == 0 && VersionFromDigits(text + 3, std::strlen(text + 3), version))
        exif::SetRowValue(e.row(), version);
}

// Sixteen bytes. When every byte is printable, a text whose last 8
// characters are the digits stamped on the camera (after two letters for the
// model), shown apart: "(GRD2SERI)AL000001". Otherwise the camera's
// internal number, as the digits of the bytes in hexadecimal.
void SerialNumber(const MakerEntry& e) {
    uint8_t bytes[16] = {};
    const size_t n = exif::ReadRawBlock(e.context, bytes, sizeof bytes);
    const bool printable = n > 0 && std::all_of(bytes, bytes + n, [](uint8_t b) { return b >= 0x20 && b < 0x7F; });
    if (printable) {
        const std::string text(reinterpret_cast<const char*>(bytes), n);
        constexpr size_t kStamped = 8;
        return exif::SetRowValue(e.row(), n > kStamped ? "(" + text.substr(0, n - kStamped) + ")" +
                                                             text.substr(n - kStamped)
                                                       : text);
    }
    exif::SetRowName(e.row(), "Internal Serial Number");
    std::string hex;
    for (size_t i = 0; i < n; ++i) {
        char two[3];
        std::snprintf(two, sizeof two, "%02X", bytes[i]);
        hex += two;
    }
    exif::SetRowValue(e.row(), hex);
}

constexpr ValueText kSharpnessTexts[] = {{0, "Sharp"}, {1, "Normal"}, {2, "Soft"}};
constexpr Enumeration kSharpness = Enum(kSharpnessTexts, Sign::kUnsigned, "%d");

constexpr ValueText kWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Multi-P Auto"}, {2, "Daylight"}, {3, "Cloudy"}, {4, "Incandescent 1"},
    {5, "Incandescent 2"}, {6, "Daylight Fluorescent"}, {7, "Neutral White Fluorescent"},
    {8, "Cool White Fluorescent"}, {9, "Warm White Fluorescent"}, {10, "Manual"}, {11, "Kelvin"}, {12, "Shade"},
};
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "%d");

// Tag 1003: the older cameras' sharpness as a LONG, the GR's white balance as a SHORT.
void SharpnessOrWhiteBalance(const MakerEntry& e) {
    if (e.entry().type != tiff::kShort) return FormatFirstInteger(e, kSharpness);
    exif::SetRowName(e.row(), "White Balance");
    FormatFirstInteger(e, kWhiteBalance);
}

constexpr ValueText kRecordingFormatTexts[] = {{2, "JPEG"}, {3, "DNG"}};
constexpr Enumeration kRecordingFormat = Enum(kRecordingFormatTexts, Sign::kUnsigned, "%d");

constexpr ValueText kDriveModeTexts[] = {{0, "Single-frame"}, {1, "Continuous"}, {8, "AF-priority Continuous"}};
constexpr Enumeration kDriveMode = Enum(kDriveModeTexts, Sign::kUnsigned, "%d");

constexpr ValueText kFocusModeTexts[] = {
    {1, "Manual"}, {2, "Multi AF"}, {3, "Spot AF"}, {4, "Snap"}, {5, "Infinity"},
    {7, "Face Detect"}, {8, "Subject Tracking"}, {9, "Pinpoint AF"}, {10, "Movie"},
};
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "%d");

constexpr ValueText kAutoBracketingTexts[] = {
    {0, "Off"}, {9, "AE"}, {11, "WB"}, {16, "DR"}, {17, "Contrast"}, {18, "WB2"}, {19, "Effect"},
};
constexpr Enumeration kAutoBracketing = Enum(kAutoBracketingTexts, Sign::kUnsigned, "%d");

constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%d");

constexpr ValueText kFlashModeTexts[] = {
    {0, "Off"}, {1, "Auto, Fired"}, {2, "On"}, {3, "Auto, Fired, Red-eye reduction"}, {4, "Slow Sync"},
    {5, "Manual"}, {6, "On, Red-eye reduction"}, {7, "Synchro, Red-eye reduction"}, {8, "Auto, Did not fire"},
};
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "%d");

constexpr ValueText kStrengthTexts[] = {{0, "Off"}, {1, "Weak"}, {2, "Medium"}, {3, "Strong"}};
constexpr Enumeration kNoiseReduction = Enum(kStrengthTexts, Sign::kUnsigned, "%d");

constexpr ValueText kDynamicRangeTexts[] = {{0, "Off"}, {3, "Weak"}, {4, "Medium"}, {5, "Strong"}};
constexpr Enumeration kDynamicRange = Enum(kDynamicRangeTexts, Sign::kUnsigned, "%d");

constexpr ValueText kImageEffectsTexts[] = {
    {0, "Standard"}, {1, "Vivid"}, {3, "Black & White"}, {5, "B&W Toning Effect"}, {6, "Setting 1"},
    {7, "Setting 2"}, {9, "High-contrast B&W"}, {10, "Cross Process"}, {11, "Positive Film"},
    {12, "Bleach Bypass"}, {13, "Retro"}, {15, "Miniature"}, {17, "High Key"},
};
constexpr Enumeration kImageEffects = Enum(kImageEffectsTexts, Sign::kUnsigned, "%d");

constexpr ValueText kVignettingTexts[] = {{0, "Off"}, {1, "Low"}, {2, "Medium"}, {3, "High"}};
constexpr Enumeration kVignetting = Enum(kVignettingTexts, Sign::kUnsigned, "%d");

constexpr ValueText kToningEffectTexts[] = {
    {0, "Off"}, {1, "Sepia"}, {2, "Red"}, {3, "Green"}, {4, "Blue"}, {5, "Purple"}, {6, "B&W"}, {7, "Color"},
};
constexpr Enumeration kToningEffect = Enum(kToningEffectTexts, Sign::kUnsigned, "%d");

constexpr ValueText kWideAdapterTexts[] = {{0, "Not Attached"}, {2, "Attached"}};
constexpr Enumeration kWideAdapter = Enum(kWideAdapterTexts, Sign::kUnsigned, "%d");

constexpr ValueText kCropModeTexts[] = {{0, "Off"}, {1, "On (35mm)"}, {2, "On (47mm)"}};
constexpr Enumeration kCropMode = Enum(kCropModeTexts, Sign::kUnsigned, "%d");

constexpr ValueText kAfStatusTexts[] = {{0, "Out of Focus"}, {1, "In Focus"}};
constexpr Enumeration kAfStatus = Enum(kAfStatusTexts, Sign::kUnsigned, "%d");

constexpr ValueText kAfAreaModeTexts[] = {{0, "Auto"}, {2, "Manual"}};
constexpr Enumeration kAfAreaMode = Enum(kAfAreaModeTexts, Sign::kUnsigned, "%d");

constexpr Enumeration kNumber = Number(Sign::kUnsigned, "%u");

static_assert(ValuesUnique(kWhiteBalanceTexts) && ValuesUnique(kFocusModeTexts) &&
                  ValuesUnique(kAutoBracketingTexts) && ValuesUnique(kFlashModeTexts) &&
                  ValuesUnique(kImageEffectsTexts) && ValuesUnique(kToningEffectTexts),
              "values listed once");

// In EV, to a tenth with its sign.
void FlashExposureComp(const MakerEntry& e) {
    double v = 0;
    if (ReadQuotients(e, &v, 1) != 1) return;
    if (v == 0) return exif::SetRowValue(e.row(), "0");
    SetValuef(e.row(), "%+.1f", v);
}

// The focal length in millimetres, "%.1f mm".
void FocalLength(const MakerEntry& e) {
    double v = 0;
    if (ReadQuotients(e, &v, 1) == 1) SetValuef(e.row(), "%.1f mm", v);
}

// The tags from 1000 on that name a type are the GR Digital's and later
// cameras'; the Caplio cameras use some of the same numbers for LONGs of
// their own, which are not these tags. Tag 1001 (the image information, or
// the GR's exposure program) is read in the second pass; 0E00 (print
// matching) and the unnamed tags are dropped.
constexpr MakerTag kRicohTags[] = {
    {0x0001, "Maker Note Type", FormatGenericValue},
    {0x0002, "Firmware Version", FirmwareVersion},
    {0x0005, "Serial Number", SerialNumber},
    {0x1000, "Recording Format", FirstInteger<kRecordingFormat>, {}, kShort},
    {0x1002, "Drive Mode", FirstInteger<kDriveMode>, {}, kShort},
    {0x1003, "Sharpness", SharpnessOrWhiteBalance},
    {0x1004, "White Balance Fine Tune", FormatGenericValue, {}, kShort},
    {0x1006, "Focus Mode", FirstInteger<kFocusMode>, {}, kShort},
    {0x1007, "Auto Bracketing", FirstInteger<kAutoBracketing>, {}, kShort},
    {0x1009, "Macro Mode", FirstInteger<kOffOn>, {}, kShort},
    {0x100a, "Flash Mode", FirstInteger<kFlashMode>, {}, kShort},
    {0x100b, "Flash Exposure Comp", FlashExposureComp, {}, kSRational},
    {0x100d, "Full Press Snap", FirstInteger<kOffOn>, {}, kShort},
    {0x100e, "Dynamic Range Expansion", FirstInteger<kDynamicRange>, {}, kShort},
    {0x100f, "Noise Reduction", FirstInteger<kNoiseReduction>, {}, kShort},
    {0x1010, "Image Effects", FirstInteger<kImageEffects>, {}, kShort},
    {0x1011, "Vignetting", FirstInteger<kVignetting>, {}, kShort},
    {0x1015, "Toning Effect", FirstInteger<kToningEffect>, {}, kShort},
    {0x1017, "Wide Adapter", FirstInteger<kWideAdapter>, {}, kShort},
    {0x1018, "Crop Mode", FirstInteger<kCropMode>, {}, kShort},
    {0x1019, "ND Filter", FirstInteger<kOffOn>, {}, kShort},
    {0x101a, "WB Bracket Shot Number", FirstInteger<kNumber>, {}, kShort},
    {0x1200, "AF Status", FirstInteger<kAfStatus>, {}, kShort},
    {0x1201, "AF Area X Position 1", FirstInteger<kNumber>, {}, kLong},
    {0x1202, "AF Area Y Position 1", FirstInteger<kNumber>, {}, kLong},
    {0x1203, "AF Area X Position", FirstInteger<kNumber>, {}, kLong},
    {0x1204, "AF Area Y Position", FirstInteger<kNumber>, {}, kLong},
    {0x1205, "AF Area Mode", FirstInteger<kAfAreaMode>, {}, kShort},
    {0x1307, "Color Temp Kelvin", FirstInteger<kNumber>, {}, kLong},
    {0x1308, "Color Temperature", FirstInteger<kNumber>, {}, kLong},
    {0x1500, "Focal Length", FocalLength, {}, kRational},
    {0x1601, "Sensor Width", FirstInteger<kNumber>, {}, kLong},
    {0x1602, "Sensor Height", FirstInteger<kNumber>, {}, kLong},
    {0x1603, "Cropped Image Width", FirstInteger<kNumber>, {}, kLong},
    {0x1604, "Cropped Image Height", FirstInteger<kNumber>, {}, kLong},
};
static_assert(TagsAscend(kRicohTags) && TagsNamed(kRicohTags), "tags ascend, each named");
constexpr MakerTable kRicoh = Table(kRicohTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// ------------------------------------------------------------ image information (tag 1001)

// A block of fields at fixed places; the 16-bit ones in the note's order:
//
//   +0 width (2)   +2 height (2)   +6 date and time (7, BCD: 20 06 05 26 11 48 48)
//   +28 preview start (2)   +30 preview length (2)   +32 flash mode (1)
//   +33 macro (1)   +34 sharpness (1)   +38 white balance (1)   +39 ISO (1)
//   +40 saturation (1)
// A field the block is too short for gives no row.
constexpr size_t kImageInfoReadLimit = 48;  // the last field named ends at byte 41

struct InfoField {
    size_t at, size;
    const char* name;
    void (*format)(const uint8_t* field, int bigEndian, exif::TagRecord& row);
};

void InfoWord(const uint8_t* field, int bigEndian, exif::TagRecord& row) {
    SetValuef(row, "%u", platform::GetU16(field, bigEndian));
}

void InfoDate(const uint8_t* b, int, exif::TagRecord& row) {
    SetValuef(row, "%02x%02x:%02x:%02x %02x:%02x:%02x", b[0], b[1], b[2], b[3], b[4], b[5], b[6]);
}

template <const Enumeration& E>
void InfoByte(const uint8_t* field, int, exif::TagRecord& row) {
    FormatEnumeratedElement(E, field[0], row);
}

constexpr ValueText kInfoFlashModeTexts[] = {{0, "Off"}, {1, "Auto"}, {2, "On"}};
constexpr Enumeration kInfoFlashMode = Enum(kInfoFlashModeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kInfoWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Daylight"}, {2, "Cloudy"}, {3, "Tungsten"}, {4, "Fluorescent"}, {5, "Manual"},
    {7, "Detail"}, {9, "Multi-pattern Auto"},
};
constexpr Enumeration kInfoWhiteBalance = Enum(kInfoWhiteBalanceTexts, Sign::kUnsigned, "%d");
constexpr ValueText kInfoIsoTexts[] = {
    {0, "Auto"}, {1, "64"}, {2, "100"}, {4, "200"}, {6, "400"}, {7, "800"},
    {8, "1600"}, {9, "Auto"}, {10, "3200"}, {11, "100 (Low)"},
};
constexpr Enumeration kInfoIso = Enum(kInfoIsoTexts, Sign::kUnsigned, "%d");
constexpr ValueText kInfoSaturationTexts[] = {
    {0, "High"}, {1, "Normal"}, {2, "Low"}, {3, "B&W"}, {6, "Toning Effect"}, {9, "Vivid"}, {10, "Natural"},
};
constexpr Enumeration kInfoSaturation = Enum(kInfoSaturationTexts, Sign::kUnsigned, "%d");
static_assert(ValuesUnique(kInfoWhiteBalanceTexts) && ValuesUnique(kInfoIsoTexts) &&
                  ValuesUnique(kInfoSaturationTexts),
              "values listed once");

constexpr InfoField kImageInfoFields[] = {
    {0, 2, "Ricoh Image Width", InfoWord},
    {2, 2, "Ricoh Image Height", InfoWord},
    {6, 7, "Ricoh Date", InfoDate},
    {28, 2, "Preview Image Start", InfoWord},
    {30, 2, "Preview Image Length", InfoWord},
    {32, 1, "Flash Mode", InfoByte<kInfoFlashMode>},
    {33, 1, "Macro", InfoByte<kOffOn>},
    {34, 1, "Sharpness", InfoByte<kSharpness>},
    {38, 1, "White Balance", InfoByte<kInfoWhiteBalance>},
    {39, 1, "ISO Setting", InfoByte<kInfoIso>},
    {40, 1, "Saturation", InfoByte<kInfoSaturation>},
};

void DecodeImageInfo(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                     exif::TagRecordTable& table, uint32_t* rowCount) {
    uint8_t bytes[kImageInfoReadLimit] = {};
    exif::TagRecord scratch = {};
    const size_t size = exif::ReadRawBlock(exif::EntryContext{input, offsetBase, entry, scratch}, bytes, sizeof bytes);
    for (const InfoField& field : kImageInfoFields) {
        if (field.at + field.size > size) continue;
        if (exif::TagRecord* row = AppendEntryRow(table, rowCount, entry, field.name))
            field.format(bytes + field.at, input.bigEndian(), *row);
    }
}

// ------------------------------------------------------------ camera information (tag 2001)

constexpr ValueText kSubNoiseReductionTexts[] = {{0, "Off"}, {1, "Weak"}, {2, "Strong"}, {3, "Max"}};
constexpr Enumeration kSubNoiseReduction = Enum(kSubNoiseReductionTexts, Sign::kUnsigned, "%d");

constexpr MakerTag kCameraInfoTags[] = {
    {0x0004, "Manufacture Date 1", FormatGenericValue},
    {0x0005, "Manufacture Date 2", FormatGenericValue},
    {0x002a, "Noise Reduction", FirstInteger<kSubNoiseReduction>},
};
static_assert(TagsAscend(kCameraInfoTags) && TagsNamed(kCameraInfoTags), "tags ascend, each named");
constexpr MakerTable kCameraInfo = Table(kCameraInfoTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// What the sub-directory's offsets count from. Most cameras count from the
// TIFF header like the main directory; some (the Caplio RR1) from the
// sub-directory's own first byte. The first value stored out of line tells:
// where it falls inside the block when counted from the block, the block is
// the base.
uint32_t CameraInfoBase(platform::Cursor entries, uint32_t count, uint32_t blockStart, uint32_t blockSize,
                        uint32_t offsetBase) {
    for (uint32_t i = 0; i < count && i < kMakerNoteRowLimit; ++i) {
        tiff::Entry entry;
        if (!tiff::ReadEntry(entries, entry)) break;
        const uint64_t bytes = uint64_t{tiff::TypeSize(entry.type)} * entry.count;
        if (bytes <= tiff::kValueFieldSize) continue;
        const bool inside = entry.valueField >= kCameraInfoHeaderSize && bytes <= blockSize &&
                            entry.valueField <= blockSize - bytes;
        return inside ? blockStart : offsetBase;
    }
    return offsetBase;
}

void DecodeCameraInfo(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                      exif::TagRecordTable& table, uint32_t* rowCount) {
    char header[kCameraInfoHeaderSize] = {};
    const uint64_t start = tiff::At(offsetBase, entry.valueField);
    platform::Cursor in = input.ChildAt(start, input.end());
    if (entry.type != tiff::kUndefined || entry.count <= kCameraInfoHeaderSize || start > UINT32_MAX ||
        !in.Bytes(header, sizeof header) || std::memcmp(header, kCameraInfoHeader, sizeof kCameraInfoHeader - 1) != 0)
        return;
    platform::Cursor count = in;
    const uint32_t entries = count.U16();
    const uint32_t base = CameraInfoBase(count, entries, static_cast<uint32_t>(start), entry.count, offsetBase);
    DecodeMakerDirectory(in, base, table, rowCount, kCameraInfo);
}

// ------------------------------------------------------------ the second pass

constexpr ValueText kExposureProgramTexts[] = {
    {1, "Auto"}, {2, "Program AE"}, {3, "Aperture-priority AE"}, {4, "Shutter speed priority AE"},
    {5, "Shutter/aperture priority AE"}, {6, "Manual"}, {7, "Movie"},
};
constexpr Enumeration kExposureProgram = Enum(kExposureProgramTexts, Sign::kUnsigned, "%d");

// Tag 1001 as a block (the image information) or as a SHORT (the GR's
// exposure program), and the camera information (tag 2001).
void DecodeRecords(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                   uint32_t rowsBefore, uint32_t* rowCount) {
    const platform::Cursor input = directory.Whole();
    bool cameraInfoDone = false;
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        if (entry.tag == 0x1001 && entry.type == tiff::kUndefined) {
            DecodeImageInfo(input, offsetBase, entry, table, rowCount);
        } else if (entry.tag == 0x1001 && entry.type == tiff::kShort) {
            if (exif::TagRecord* row = AppendEntryRow(table, rowCount, entry, "Exposure Program"))
                FormatEnumeratedElement(kExposureProgram, platform::GetU16(entry.fieldBytes, input.bigEndian()), *row);
        } else if (entry.tag == 0x2001 && !cameraInfoDone) {
            cameraInfoDone = true;
            DecodeCameraInfo(input, offsetBase, entry, table, rowCount);
        }
    });
}

// ------------------------------------------------------------ text form

// "Rv" or "Rev" and a digit: the start of a text note.
bool StartsTextNote(const char* text) {
    const size_t key = std::strncmp(text, "Rev", 3) == 0 ? 3 : std::strncmp(text, "Rv", 2) == 0 ? 2 : 0;
    return key && text[key] >= '0' && text[key] <= '9';
}

// Each key's row carries the key's first two letters as its tag number
// ("Rv" is 5276), so that the rows can be told apart and hidden like others.
struct TextKey {
    const char* key;
    const char* name;
};
constexpr TextKey kTextKeys[] = {
    {"Rv", "Firmware Version"}, {"Rev", "Firmware Version"},
    {"Rg", "Red Gain"},         {"Gg", "Green Gain"},
    {"Bg", "Blue Gain"},
};

const char* TextKeyName(const std::string& key) {
    for (const TextKey& k : kTextKeys)
        if (key == k.key) return k.name;
    return nullptr;
}

}  // namespace

bool CheckRicohDirectory(platform::Cursor& at) {
    char header[kRicohHeaderSize] = {};
    platform::Cursor in = at;
    if (!in.Bytes(header, sizeof header)) return false;
    header[5] = '\0';
    // "RICOH\0II" and "RICOH\0MM" are Pentax notes of Ricoh-made bodies.
    if (!platform::EqualsIgnoringAsciiCase(header, "RICOH") || header[6] != 0 || header[7] != 0) return false;
    at = in.ChildAt(in.position(), in.end());
    return true;
}

void DecodeRicohMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    platform::Cursor in = directory;
    const uint32_t rowsBefore = *rowCount;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kRicoh);
    DecodeRecords(directory, offsetBase, table, rowsBefore, rowCount);
}

bool CheckRicohText(platform::Cursor& at) {
    char start[5] = {};
    platform::Cursor in = at;
    in.Some(start, sizeof start - 1);
    return StartsTextNote(start);
}

void DecodeRicohTextMakerNote(const platform::Cursor& directory, uint32_t, exif::TagRecordTable& table,
                              uint32_t* rowCount) {
    char text[kRicohTextReadLimit + 1] = {};
    platform::Cursor in = directory;
    const size_t size = in.Some(text, kRicohTextReadLimit);
    // Each pair: a capital, one or two small letters, then digits or
    // hexadecimal capitals up to ';'. Anything else ends the note.
    size_t at = 0;
    while (at < size && *rowCount < kMakerNoteRowLimit) {
        size_t keyEnd = at + 1;
        if (text[at] < 'A' || text[at] > 'Z') break;
        while (keyEnd < size && keyEnd - at < 3 && text[keyEnd] >= 'a' && text[keyEnd] <= 'z') ++keyEnd;
        size_t valueEnd = keyEnd;
        while (valueEnd < size && ((text[valueEnd] >= '0' && text[valueEnd] <= '9') ||
                                   (text[valueEnd] >= 'A' && text[valueEnd] <= 'F')))
            ++valueEnd;
        if (keyEnd - at < 2 || valueEnd == keyEnd || valueEnd >= size || text[valueEnd] != ';') break;
        const std::string key(text + at, keyEnd - at), value(text + keyEnd, valueEnd - keyEnd);
        at = valueEnd + 1;
        const char* name = TextKeyName(key);
        if (!name) continue;
        std::string shown = value;
        if (std::strcmp(name, "Firmware Version") == 0) VersionFromDigits(value.data(), value.size(), shown);
        tiff::Entry entry;
        entry.tag = static_cast<uint16_t>(static_cast<uint8_t>(key[0]) << 8 | static_cast<uint8_t>(key[1]));
        entry.type = tiff::kAscii;
        entry.count = static_cast<uint32_t>(value.size());
        if (exif::TagRecord* row = AppendEntryRow(table, rowCount, entry, name)) exif::SetRowValue(*row, shown);
    }
}

}  // namespace makernotes
