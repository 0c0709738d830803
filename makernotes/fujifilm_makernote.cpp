// Fujifilm maker notes: a little-endian directory, whatever the EXIF block's
// byte order, whose offsets count from the note's start. Most settings are
// single SHORTs with a text per value.
#include "makernote_decoders.h"

namespace makernotes {
namespace {

// Note layout; the dispatch has read the first 5 bytes:
//
//   +0   "FUJIFILM"                 8 bytes
//   +8   directory offset (LE)      4 bytes, not followed: the count comes next
//   +12  entry count (LE), entries
constexpr int64_t kSignatureRest = 3;
constexpr int64_t kDirectoryOffsetSize = 4;

// Hexadecimal values are the camera's own steps (0x80 a half step).
constexpr ValueText kSharpnessTexts[] = {
    {0x00, "-4 (softest)"}, {0x01, "-3 (very soft)"}, {0x02, "-2 (soft)"}, {0x03, "Normal"},
    {0x04, "+2 (hard)"}, {0x05, "+3 (very hard)"}, {0x06, "+4 (hardest)"}, {0x82, "-1 (medium soft)"},
    {0x84, "+1 (medium hard)"}, {0x8000, "Film simulation"}, {0xFFFF, "n/a"},
};
constexpr ValueText kWhiteBalanceTexts[] = {
    {0x000, "Auto"}, {0x001, "Auto (white priority)"}, {0x002, "Auto (ambience priority)"},
    {0x100, "Daylight"}, {0x200, "Cloudy"}, {0x300, "Daylight fluorescent"}, {0x301, "Day white fluorescent"},
    {0x302, "White fluorescent"}, {0x303, "Warm white fluorescent"}, {0x304, "Living room warm white fluorescent"},
    {0x400, "Incandescent"}, {0x500, "Flash"}, {0x600, "Underwater"}, {0xF00, "Custom"}, {0xF01, "Custom 2"},
    {0xF02, "Custom 3"}, {0xF03, "Custom 4"}, {0xF04, "Custom 5"}, {0xFF0, "Kelvin"},
};
constexpr ValueText kSaturationTexts[] = {
    {0x000, "Normal"}, {0x080, "+1 (medium high)"}, {0x100, "+2 (high)"}, {0x0C0, "+3 (very high)"},
    {0x0E0, "+4 (highest)"}, {0x180, "-1 (medium low)"}, {0x200, "Low"}, {0x300, "None (B&W)"},
    {0x301, "B&W red filter"}, {0x302, "B&W yellow filter"}, {0x303, "B&W green filter"}, {0x310, "B&W sepia"},
    {0x400, "-2 (low)"}, {0x4C0, "-3 (very low)"}, {0x4E0, "-4 (lowest)"}, {0x500, "Acros"},
    {0x501, "Acros red filter"}, {0x502, "Acros yellow filter"}, {0x503, "Acros green filter"},
    {0x8000, "Film simulation"},
};
constexpr ValueText kToneTexts[] = {
    {0x000, "Normal"}, {0x080, "Medium high"}, {0x100, "High"}, {0x180, "Medium low"}, {0x200, "Low"},
    {0x8000, "Film simulation"},
};
constexpr ValueText kFlashModeTexts[] = {
    {0, "Auto"}, {1, "On"}, {2, "Off"}, {3, "Red-eye reduction"}, {4, "External"}, {16, "Commander"},
    {0x8000, "Not attached"}, {0x8120, "TTL"}, {0x8320, "TTL auto, did not fire"}, {0x9840, "Manual"},
    {0x9860, "Flash commander"}, {0x9880, "Multi-flash"}, {0xA920, "1st curtain (front)"},
    {0xC920, "2nd curtain (rear)"}, {0xE920, "High speed sync (HSS)"},
};
constexpr ValueText kOffOnTexts[] = {{0, "Off"}, {1, "On"}};
constexpr ValueText kFocusModeTexts[] = {{0, "Auto"}, {1, "Manual"}, {0xFFFF, "Movie"}};
constexpr ValueText kPictureModeTexts[] = {
    {0x00, "Auto"}, {0x01, "Portrait"}, {0x02, "Landscape"}, {0x03, "Macro"}, {0x04, "Sports"},
    {0x05, "Night scene"}, {0x06, "Program AE"}, {0x07, "Natural light"}, {0x08, "Anti-blur"},
    {0x09, "Beach & snow"}, {0x0A, "Sunset"}, {0x0B, "Museum"}, {0x0C, "Party"}, {0x0D, "Flower"},
    {0x0E, "Text"}, {0x0F, "Natural light & flash"}, {0x10, "Beach"}, {0x11, "Snow"}, {0x12, "Fireworks"},
    {0x13, "Underwater"}, {0x14, "Portrait with skin correction"}, {0x16, "Panorama"},
    {0x17, "Night (tripod)"}, {0x18, "Pro low-light"}, {0x19, "Pro focus"}, {0x1A, "Portrait 2"},
    {0x1B, "Dog face detection"}, {0x1C, "Cat face detection"}, {0x30, "HDR"}, {0x40, "Advanced filter"},
    {0x100, "Aperture priority AE"}, {0x200, "Shutter speed priority AE"}, {0x300, "Manual"},
};
constexpr ValueText kBlurWarningTexts[] = {{0, "None"}, {1, "Blur warning"}};
constexpr ValueText kFocusWarningTexts[] = {{0, "Good"}, {1, "Out of focus"}};
constexpr ValueText kExposureWarningTexts[] = {{0, "Good"}, {1, "Bad exposure"}};
constexpr ValueText kDynamicRangeTexts[] = {{1, "Standard"}, {3, "Wide"}};
constexpr ValueText kFilmModeTexts[] = {
    {0x000, "F0/Standard (Provia)"}, {0x100, "F1/Studio portrait"},
    {0x110, "F1a/Studio portrait, more saturation"}, {0x120, "F1b/Studio portrait, smooth skin (Astia)"},
    {0x130, "F1c/Studio portrait, more sharpness"}, {0x200, "F2/Fujichrome (Velvia)"},
    {0x300, "F3/Studio portrait Ex"}, {0x400, "F4/Velvia"}, {0x500, "Pro Neg. Std"}, {0x501, "Pro Neg. Hi"},
    {0x600, "Classic Chrome"}, {0x700, "Eterna"}, {0x800, "Classic Negative"}, {0x900, "Bleach Bypass"},
    {0xA00, "Nostalgic Neg"},
};
constexpr ValueText kDynamicRangeSettingTexts[] = {
    {0x000, "Auto"}, {0x001, "Manual"}, {0x100, "Standard (100%)"}, {0x200, "Wide 1 (230%)"},
    {0x201, "Wide 2 (400%)"}, {0x8000, "Film simulation"},
};

constexpr Enumeration kSharpness = Enum(kSharpnessTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kSaturation = Enum(kSaturationTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kTone = Enum(kToneTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kPictureMode = Enum(kPictureModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kBlurWarning = Enum(kBlurWarningTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kFocusWarning = Enum(kFocusWarningTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kExposureWarning = Enum(kExposureWarningTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kDynamicRange = Enum(kDynamicRangeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kFilmMode = Enum(kFilmModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kDynamicRangeSetting = Enum(kDynamicRangeSettingTexts, Sign::kUnsigned, "%d");

// The texts (version, serial, quality) read the same in either byte order.
// Numbers are never handed to the shared readers, which would take the
// EXIF block's order for this little-endian note.
constexpr MakerTag kFujifilmTags[] = {
    {0x0000, "Version", FormatGenericValue},
    {0x0010, "Serial Number", FormatGenericValue},
    {0x1000, "Quality", FormatGenericValue},
    {0x1001, "Sharpness", kSharpness},
    {0x1002, "White Balance", kWhiteBalance},
    {0x1003, "Color Saturation", kSaturation},
    {0x1004, "Tone", kTone},
    {0x1010, "Flash Mode", kFlashMode},
    {0x1020, "Macro", kOffOn},
    {0x1021, "Focus Mode", kFocusMode},
    {0x1030, "Slow Sync", kOffOn},
    {0x1031, "Picture Mode", kPictureMode},
    {0x1300, "Blur Warning", kBlurWarning},
    {0x1301, "Focus Warning", kFocusWarning},
    {0x1302, "Exposure Warning", kExposureWarning},
    {0x1400, "Dynamic Range", kDynamicRange},
    {0x1401, "Film Mode", kFilmMode},
    {0x1402, "Dynamic Range Setting", kDynamicRangeSetting},
};
// The entries are read little-endian, so the low half of the value word is
// the SHORT stored in the field's first two bytes.
constexpr MakerTable kFujifilm = Table(kFujifilmTags, ValueRule::kLowHalfOfWord);



static_assert(TagsAscend(kFujifilmTags), "tag order");
static_assert(ValuesUnique(kSharpnessTexts) && ValuesUnique(kWhiteBalanceTexts) && ValuesUnique(kSaturationTexts) &&
                  ValuesUnique(kToneTexts) && ValuesUnique(kFlashModeTexts) && ValuesUnique(kOffOnTexts) &&
                  ValuesUnique(kFocusModeTexts) && ValuesUnique(kPictureModeTexts) && ValuesUnique(kBlurWarningTexts) &&
                  ValuesUnique(kFocusWarningTexts) && ValuesUnique(kExposureWarningTexts) &&
                  ValuesUnique(kDynamicRangeTexts) && ValuesUnique(kFilmModeTexts) &&
                  ValuesUnique(kDynamicRangeSettingTexts),
              "enumeration values");

}  // namespace

void DecodeFujifilmMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                             uint32_t* rowCount, int bigEndian) {
    file.Seek(kSignatureRest + kDirectoryOffsetSize, platform::SeekFrom::kCurrent);
    // The values that shared readers fetch keep the EXIF order.
    DecodeMakerDirectory(file, offsetBase, table, rowCount, DirectoryOrder{/*entries=*/0, /*values=*/bigEndian},
                         kFujifilm);
}

}  // namespace makernotes
