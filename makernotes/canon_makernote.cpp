// Canon maker notes: a headerless directory whose offsets count from the
// TIFF header (in a CR3 file, from the embedded TIFF header that holds the
// note). Most of what a Canon camera records sits in SHORT arrays (camera
// settings, shot info), one setting per element; those arrays are read in a
// second pass over the directory and give one row per setting.
#include <cmath>

#include "makernote_array.h"
#include "makernote_decoders.h"

namespace makernotes {
namespace {

enum : uint16_t { kShortType = 3 };

// ------------------------------------------------------------ plain tags

void FileNumber(const MakerEntry& e) {
    // The camera counts folder and frame: 1181861 is folder 118, frame 1861.
    const uint32_t v = e.entry().valueField;
    SetValuef(e.row(), "%u-%04u", v / 10000, v % 10000);
}

void WholeNumber(const MakerEntry& e) { SetValuef(e.row(), "%u", e.entry().valueField); }

constexpr MakerTag kCanonTags[] = {
    {6, "Image Type", FormatGenericValue},
    {7, "Firmware Version", FormatGenericValue},
    {8, "File Number", FileNumber},
    {9, "Owner Name", FormatGenericValue},
    {12, "Serial Number", WholeNumber},
    {16, "Camera Model ID", WholeNumber},
    {149, "Lens Model", FormatGenericValue},  // 0095
};
constexpr MakerTable kCanon = Table(kCanonTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// ------------------------------------------------------------ arrays

constexpr ValueText kMacroModeTexts[] = {{1, "Macro"}, {2, "Normal"}};
constexpr ValueText kQualityTexts[] = {
    {-1, "n/a"}, {1, "Economy"}, {2, "Normal"}, {3, "Fine"}, {4, "RAW"}, {5, "Superfine"},
    {7, "CRAW"}, {130, "Light (RAW)"}, {131, "Standard (RAW)"},
};
constexpr ValueText kFlashModeTexts[] = {
    {-1, "n/a"}, {0, "Off"}, {1, "Auto"}, {2, "On"}, {3, "Red-eye reduction"}, {4, "Slow-sync"},
    {5, "Red-eye reduction (Auto)"}, {6, "Red-eye reduction (On)"}, {16, "External flash"},
};
constexpr ValueText kDriveModeTexts[] = {
    {0, "Single"}, {1, "Continuous"}, {2, "Movie"}, {3, "Continuous, Speed Priority"},
    {4, "Continuous, Low"}, {5, "Continuous, High"}, {6, "Silent Single"}, {8, "Continuous, High+"},
    {9, "Single, Silent"}, {10, "Continuous, Silent"},
};
constexpr ValueText kFocusModeTexts[] = {
    {0, "One-shot AF"}, {1, "AI Servo AF"}, {2, "AI Focus AF"}, {3, "Manual Focus (3)"},
    {4, "Single"}, {5, "Continuous"}, {6, "Manual Focus (6)"}, {16, "Pan Focus"},
    {256, "AF + MF"}, {257, "Live View"},
    {512, "Movie Snap Focus"}, {519, "Movie Servo AF"},
};
constexpr ValueText kMeteringTexts[] = {
    {0, "Default"}, {1, "Spot"}, {2, "Average"}, {3, "Evaluative"}, {4, "Partial"},
    {5, "Center-weighted average"},
};
constexpr ValueText kExposureModeTexts[] = {
    {0, "Easy"}, {1, "Program AE"}, {2, "Shutter speed priority AE"}, {3, "Aperture-priority AE"},
    {4, "Manual"}, {5, "Depth-of-field AE"}, {6, "M-Dep"}, {7, "Bulb"}, {8, "Flexible-priority AE"},
};
constexpr ValueText kWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Daylight"}, {2, "Cloudy"}, {3, "Tungsten"}, {4, "Fluorescent"}, {5, "Flash"},
    {6, "Custom"}, {7, "Black & White"}, {8, "Shade"}, {9, "Manual Temperature (Kelvin)"},
    {10, "PC Set1"}, {11, "PC Set2"}, {12, "PC Set3"}, {14, "Daylight Fluorescent"},
    {15, "Custom 1"}, {16, "Custom 2"}, {17, "Underwater"}, {18, "Custom 3"}, {19, "Custom 4"},
    {20, "PC Set4"}, {21, "PC Set5"}, {23, "Auto (ambience priority)"},
};

void SelfTimer(const ArrayElements& a, exif::TagRecord& row) {
    const int v = static_cast<int>(a.At(2));
    if (v <= 0) return exif::SetRowValue(row, "Off");
    // Tenths of a second in the low 12 bits; bit 14 marks the custom delay.
    SetValuef(row, "%.1f s%s", (v & 0xFFF) / 10.0, (v & 0x4000) ? ", Custom" : "");
}

void FocalRange(const ArrayElements& a, exif::TagRecord& row) {
    // Focal lengths count in units per millimetre; 0 units means 1.
    const int64_t units = a.At(25) > 0 ? a.At(25) : 1;
    const double longest = static_cast<uint16_t>(a.At(23)) / static_cast<double>(units);
    const double shortest = static_cast<uint16_t>(a.At(24)) / static_cast<double>(units);
    if (shortest == longest) return SetValuef(row, "%g mm", shortest);
    SetValuef(row, "%g - %g mm", shortest, longest);
}

void BaseIso(const ArrayElements& a, exif::TagRecord& row) {
    // An APEX-like speed: 32 steps per stop, 100 x 2^(v/32) / 32.
    const int64_t v = a.At(2);
    if (v == 0) return;
    SetValuef(row, "%.0f", 100.0 * std::exp2(v / 32.0) / 32.0);
}

constexpr Enumeration kMacroMode = Enum(kMacroModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kQuality = Enum(kQualityTexts, Sign::kSigned, "%d");
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kDriveMode = Enum(kDriveModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kMetering = Enum(kMeteringTexts, Sign::kSigned, "%d");
constexpr Enumeration kExposureMode = Enum(kExposureModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kSigned, "%d");

constexpr ArrayRow kCameraSettings[] = {
    {1, "Macro Mode", EnumElement<kMacroMode, 1>},
    {2, "Self Timer", SelfTimer},
    {3, "Quality", EnumElement<kQuality, 3>},
    {4, "Flash Mode", EnumElement<kFlashMode, 4>},
    {5, "Drive Mode", EnumElement<kDriveMode, 5>},
    {7, "Focus Mode", EnumElement<kFocusMode, 7>},
    {17, "Metering Mode", EnumElement<kMetering, 17>},
    {20, "Exposure Mode", EnumElement<kExposureMode, 20>},
    {25, "Lens Focal Range", FocalRange},
};

constexpr ArrayRow kShotInfo[] = {
    {2, "Base ISO", BaseIso},
    {7, "White Balance", EnumElement<kWhiteBalance, 7>},
    {9, "Sequence Number", NumberElement<9>},
};

// Both arrays: signed SHORTs in the note's byte order.
constexpr ArrayLayout kShorts = {kShortType, 2, Sign::kSigned, ElementOrder::kNote};
constexpr ArrayTag kArrayTags[] = {
    Array(1, kShorts, kCameraSettings),
    Array(4, kShorts, kShotInfo),
};
constexpr ArrayTags kArrays = Arrays(kArrayTags);

}  // namespace

void DecodeCanonMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount, int bigEndian) {
    const int64_t directory = file.Tell();
    const uint32_t rowsBefore = *rowCount;
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kCanon);
    DecodeArrayTags(file, directory, offsetBase, table, rowsBefore, rowCount, bigEndian, kArrays);
}

}  // namespace makernotes
