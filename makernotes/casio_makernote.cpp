// Casio maker notes, in their two forms: the older headerless directory and
// the newer one behind a 6-byte "QVC" header. Every value is taken from the
// entry's own value field; no offset is followed.
#include "makernote_decoders.h"
#include "makernote_texts.h"

namespace makernotes {
namespace {

// ------------------------------------------------------------ older form

constexpr ValueText kRecordingModeTexts[] = {
    {1, "Single Shutter"}, {7, "Panorama"}, {10, "Night Scene"}, {15, "Portrait"}, {16, "Landscape"},
};
constexpr Enumeration kRecordingMode = Enum(kRecordingModeTexts, Sign::kSigned, "%d");

// 0 and 3 both read "Fine".
constexpr ValueText kQualityTexts[] = {
    {0, "Fine"}, {1, "Economy"}, {2, "Normal"}, {3, "Fine"},
};
constexpr Enumeration kQuality = Enum(kQualityTexts, Sign::kSigned, "%d");

constexpr ValueText kFocusingModeTexts[] = {
    {2, "Macro"}, {3, "Auto"}, {4, "Manual"}, {5, "Infinity"},
};
constexpr Enumeration kFocusingMode = Enum(kFocusingModeTexts, Sign::kSigned, "%d");

constexpr ValueText kFlashModeTexts[] = {
    {1, "Auto"}, {2, "On"}, {4, "Off"}, {5, "Red Eye Reduction"},
};
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kSigned, "%d");

constexpr ValueText kFlashIntensityTexts[] = {
    {11, "Weak"}, {13, "Normal"}, {15, "Strong"},
};
constexpr Enumeration kFlashIntensity = Enum(kFlashIntensityTexts, Sign::kSigned, "%d");

constexpr Enumeration kObjectDistance = Number(Sign::kSigned, "%d mm");

constexpr ValueText kWhiteBalanceTexts[] = {
    {1, "Auto"}, {2, "Tungsten"}, {3, "Daylight"}, {4, "Fluorescent"}, {5, "Shade"}, {129, "Manual"},
};
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kSigned, "%d");

// Sharpness uses its own words; contrast and saturation share theirs.
constexpr ValueText kSharpnessTexts[] = {
    {0, "Normal"}, {1, "Soft"}, {2, "Hard"},
};
constexpr Enumeration kSharpness = Enum(kSharpnessTexts, Sign::kSigned, "%d");

constexpr ValueText kLowHighTexts[] = {
    {0, "Normal"}, {1, "Low"}, {2, "High"},
};
constexpr Enumeration kLowHigh = Enum(kLowHighTexts, Sign::kSigned, "%d");

constexpr Enumeration kCcdSensitivity = Number(Sign::kSigned, "%d");

// The zoom is stored as a 16.16 factor whose "off" is exactly 1.0; anything
// else is shown as twice the low half.
void DigitalZoom(const MakerEntry& e) {
    if (e.entry().valueField == 0x10000) return exif::SetRowValue(e.row(), "Off");
    SetValuef(e.row(), "%d x", 2 * static_cast<int>(e.Unsigned16()));
}

// Tags 8, 9 and 14 to 19 are dropped.
constexpr MakerTag kCasioTags[] = {
    {1, "Recording Mode", kRecordingMode},
    {2, "Quality", kQuality},
    {3, "Focusing Mode", kFocusingMode},
    {4, "Flash Mode", kFlashMode},
    {5, "Flash Intensity", kFlashIntensity},
    {6, "Object distance", kObjectDistance},
    {7, "White Balance", kWhiteBalance},
    {10, "Digital Zoom", DigitalZoom},
    {11, "Sharpness", kSharpness},
    {12, "Contrast", kLowHigh},
    {13, "Saturation", kLowHigh},
    {20, "CCD Sensitivity", kCcdSensitivity},
};
static_assert(TagsAscend(kCasioTags) && TagsNamed(kCasioTags), "tags ascend, each named");
// Older Casio notes read each value as the low half of the whole 32-bit field.
constexpr MakerTable kCasio = Table(kCasioTags, ValueRule::kLowHalfOfWord);

// ------------------------------------------------------------ "QVC" form

constexpr ValueText kQvcQualityTexts[] = {
    {0, "Economy"}, {1, "Normal"}, {2, "Fine"},
};
constexpr Enumeration kQvcQuality = Enum(kQvcQualityTexts, Sign::kUnsigned, "%d");

constexpr ValueText kQvcFocusModeTexts[] = {
    {0, "Normal"}, {1, "Macro"},
};
constexpr Enumeration kQvcFocusMode = Enum(kQvcFocusModeTexts, Sign::kUnsigned, "%d");

constexpr ValueText kQvcIsoTexts[] = {
    {3, "50"}, {4, "64"}, {6, "100"}, {9, "200"},
};
constexpr Enumeration kQvcIso = Enum(kQvcIsoTexts, Sign::kUnsigned, "%d");

constexpr ValueText kQvcWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Daylight"}, {2, "Shade"}, {3, "Tungsten"}, {4, "Fluorescent"}, {5, "Manual"},
};
constexpr Enumeration kQvcWhiteBalance = Enum(kQvcWhiteBalanceTexts, Sign::kUnsigned, "Unknown (%d)");

constexpr ValueText kQvcWhiteBalance2Texts[] = {
    {0, "Manual"}, {1, "Auto"}, {4, "Flash"}, {12, "Flash"},
};
constexpr Enumeration kQvcWhiteBalance2 = Enum(kQvcWhiteBalance2Texts, Sign::kUnsigned, "Unknown (%d)");

constexpr ValueText kQvcQuality2Texts[] = {
    {0, "Economy"}, {1, "Economy"}, {2, "Normal"}, {3, "Fine"},
};
constexpr Enumeration kQvcQuality2 = Enum(kQvcQuality2Texts, Sign::kUnsigned, "%d");

constexpr ValueText kQvcFocusMode2Texts[] = {
    {0, "Manual"}, {1, "Fixed"}, {3, "Single-Area Auto Focus"}, {6, "Multi-Area Auto Focus"},
};
constexpr Enumeration kQvcFocusMode2 = Enum(kQvcFocusMode2Texts, Sign::kUnsigned, "Unknown (%d)");

constexpr Enumeration kQvcOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "Unknown (%d)");

constexpr ValueText kOffTexts[] = {
    {0, "Off"},
};
constexpr Enumeration kQvcOff = Enum(kOffTexts, Sign::kUnsigned, "Unknown (%d)");

constexpr Enumeration kQvcNumber = Number(Sign::kUnsigned, "%d");

// White Balance, Quality and Focus Mode each appear twice, under two tags.
constexpr MakerTag kCasioQvcTags[] = {
    {8, "Quality", kQvcQuality},
    {13, "Focus Mode", kQvcFocusMode},
    {20, "ISO", kQvcIso},
    {25, "White Balance", kQvcWhiteBalance},
    {8210, "White Balance", kQvcWhiteBalance2},
    {12290, "Quality", kQvcQuality2},
    {12291, "Focus Mode", kQvcFocusMode2},
    {12295, "Best Shot Mode", kQvcOffOn},
    {12308, "CCD ISO Sensitivity", kQvcNumber},
    {12309, "Color Mode", kQvcOff},
    {12310, "Enhancement", kQvcOff},
    {12311, "Filter", kQvcOff},
};
static_assert(TagsAscend(kCasioQvcTags) && TagsNamed(kCasioQvcTags), "tags ascend, each named");
// "QVC" notes read each value where a SHORT is stored: the field's first two bytes.
constexpr MakerTable kCasioQvc = Table(kCasioQvcTags, ValueRule::kLeadingShort);

}  // namespace

void DecodeCasioMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kCasio);
}

void DecodeCasioQvcMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                             uint32_t* rowCount) {
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kCasioQvc);
}

}  // namespace makernotes
