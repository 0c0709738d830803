// Fujifilm maker notes: a little-endian directory, whatever the EXIF block's
// byte order, whose offsets count from the note's start. Most settings are
// single SHORTs with a text per value.
#include <algorithm>
#include <string>

#include "makernote_array.h"
#include "makernote_decoders.h"
#include "makernote_texts.h"

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
    {0x00, "-4 (softest)"}, {0x01, "-3 (very soft)"}, {0x02, "-2 (soft)"}, {0x03, "0 (normal)"},
    {0x04, "+2 (hard)"}, {0x05, "+3 (very hard)"}, {0x06, "+4 (hardest)"}, {0x82, "-1 (medium soft)"},
    {0x84, "+1 (medium hard)"}, {0x8000, "Film simulation"}, {0xFFFF, "n/a"},
};
constexpr ValueText kWhiteBalanceTexts[] = {
    {0x000, "Auto"}, {0x001, "Auto (white priority)"}, {0x002, "Auto (ambiance priority)"},
    {0x100, "Daylight"}, {0x200, "Cloudy"}, {0x300, "Daylight fluorescent"}, {0x301, "Day white fluorescent"},
    {0x302, "White fluorescent"}, {0x303, "Warm white fluorescent"}, {0x304, "Living room warm white fluorescent"},
    {0x400, "Incandescent"}, {0x500, "Flash"}, {0x600, "Underwater"}, {0xF00, "Custom"}, {0xF01, "Custom2"},
    {0xF02, "Custom3"}, {0xF03, "Custom4"}, {0xF04, "Custom5"}, {0xFF0, "Kelvin"},
};
constexpr ValueText kSaturationTexts[] = {
    {0x000, "0 (normal)"}, {0x080, "+1 (medium high)"}, {0x100, "+2 (high)"}, {0x0C0, "+3 (very high)"},
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
    {0x8000, "Not attached"}, {0x8120, "TTL"}, {0x8320, "TTL auto - did not fire"}, {0x9840, "Manual"},
    {0x9860, "Flash commander"}, {0x9880, "Multi-flash"}, {0xA920, "1st curtain (front)"},
    {0xAA20, "TTL slow - 1st curtain (front)"}, {0xAB20, "TTL auto - 1st curtain (front)"},
    {0xAD20, "TTL - red-eye flash - 1st curtain (front)"}, {0xAE20, "TTL slow - red-eye flash - 1st curtain (front)"},
    {0xAF20, "TTL auto - red-eye flash - 1st curtain (front)"}, {0xC920, "2nd curtain (rear)"},
    {0xCA20, "TTL slow - 2nd curtain (rear)"}, {0xCB20, "TTL auto - 2nd curtain (rear)"},
    {0xCD20, "TTL - red-eye flash - 2nd curtain (rear)"}, {0xCE20, "TTL slow - red-eye flash - 2nd curtain (rear)"},
    {0xCF20, "TTL auto - red-eye flash - 2nd curtain (rear)"}, {0xE920, "High speed sync (HSS)"},
};
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
    {0x110, "F1a/Studio portrait enhanced saturation"}, {0x120, "F1b/Studio portrait smooth skin tone (Astia)"},
    {0x130, "F1c/Studio portrait increased sharpness"}, {0x200, "F2/Fujichrome (Velvia)"},
    {0x300, "F3/Studio portrait Ex"}, {0x400, "F4/Velvia"}, {0x500, "Pro Neg. Std"}, {0x501, "Pro Neg. Hi"},
    {0x600, "Classic Chrome"}, {0x700, "Eterna"}, {0x800, "Classic Negative"}, {0x900, "Bleach Bypass"},
    {0xA00, "Nostalgic Neg"},
};
constexpr ValueText kDynamicRangeSettingTexts[] = {
    {0x000, "Auto"}, {0x001, "Manual"}, {0x100, "Standard (100%)"}, {0x200, "Wide1 (230%)"},
    {0x201, "Wide2 (400%)"}, {0x8000, "Film simulation"},
};

constexpr ValueText kContrast2Texts[] = {{0x000, "Normal"}, {0x100, "High"}, {0x300, "Low"}};
constexpr ValueText kNoiseReductionTexts[] = {{0x40, "Low"}, {0x80, "Normal"}, {0x100, "n/a"}};
constexpr ValueText kHighIsoNoiseReductionTexts[] = {
    {0x000, "0 (normal)"}, {0x100, "+2 (strong)"}, {0x180, "+1 (medium strong)"}, {0x1C0, "+3 (very strong)"},
    {0x1E0, "+4 (strongest)"}, {0x200, "-2 (weak)"}, {0x280, "-1 (medium weak)"}, {0x2C0, "-3 (very weak)"},
    {0x2E0, "-4 (weakest)"},
};
constexpr ValueText kAfModeTexts[] = {{0, "No"}, {1, "Single Point"}, {0x100, "Zone"}, {0x200, "Wide/Tracking"}};
constexpr ValueText kExrModeTexts[] = {
    {0x100, "HR (High Resolution)"}, {0x200, "SN (Signal to Noise priority)"}, {0x300, "DR (Dynamic Range priority)"},
};
// Signed steps of 16, the negative ones harder.
constexpr ValueText kToneTexts2[] = {
    {-64, "+4 (hardest)"}, {-48, "+3 (very hard)"}, {-32, "+2 (hard)"}, {-16, "+1 (medium hard)"},
    {0, "0 (normal)"}, {16, "-1 (medium soft)"}, {32, "-2 (soft)"},
};
constexpr ValueText kShutterTypeTexts[] = {
    {0, "Mechanical"}, {1, "Electronic"}, {2, "Electronic (long shutter speed)"}, {3, "Electronic Front Curtain"},
};
constexpr ValueText kSceneRecognitionTexts[] = {
    {0x000, "Unrecognized"}, {0x100, "Portrait Image"}, {0x103, "Night Portrait"}, {0x105, "Backlit Portrait"},
    {0x200, "Landscape Image"}, {0x300, "Night Scene"}, {0x400, "Macro"},
};
constexpr ValueText kImageGenerationTexts[] = {{0, "Original Image"}, {1, "Re-developed from RAW"}};

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
constexpr Enumeration kContrast2 = Enum(kContrast2Texts, Sign::kUnsigned, "%d");
constexpr Enumeration kNoiseReduction = Enum(kNoiseReductionTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kHighIsoNoiseReduction = Enum(kHighIsoNoiseReductionTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kAfMode = Enum(kAfModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kAutoManual = Enum(kAutoManualTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kExrMode = Enum(kExrModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kShadowHighlight = Enum(kToneTexts2, Sign::kSigned, "%d");
constexpr Enumeration kShutterType = Enum(kShutterTypeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kSceneRecognition = Enum(kSceneRecognitionTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kImageGeneration = Enum(kImageGenerationTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kNumber = Number(Sign::kUnsigned, "%u");
constexpr Enumeration kPercent = Number(Sign::kUnsigned, "%u%%");

// ------------------------------------------------------------ values out of line
//
// The note is little-endian throughout; its longer values are read here
// from their bytes rather than through the shared readers.

// Up to `max` elements of 2 or 4 bytes (by the entry's type), little-endian,
// signed for the signed types. Returns how many were read.
constexpr size_t kElementsLimit = 8;
size_t ReadLittleEndian(const MakerEntry& e, int64_t* out, size_t max) {
    const uint16_t type = e.entry().type;
    const size_t size = tiff::TypeSize(type);
    if ((size != 2 && size != 4) || max > kElementsLimit) return 0;
    uint8_t bytes[kElementsLimit * 4] = {};
    const uint64_t want = std::min<uint64_t>(e.entry().count, max) * size;
    const size_t got = exif::ReadRawBlock(e.context, bytes, static_cast<size_t>(want)) / size;
    for (size_t i = 0; i < got; ++i) {
        const uint8_t* b = bytes + i * size;
        const uint32_t v = size == 2 ? platform::GetU16(b, 0) : platform::GetU32(b, 0);
        if (type == tiff::kSShort) out[i] = static_cast<int16_t>(v);
        else if (type == tiff::kSLong) out[i] = static_cast<int32_t>(v);
        else out[i] = v;
    }
    return got;
}

// Every element, separated by spaces.
void Numbers(const MakerEntry& e) {
    int64_t v[kElementsLimit];
    const size_t n = ReadLittleEndian(e, v, kElementsLimit);
    std::string text;
    for (size_t i = 0; i < n; ++i) text += (i ? " " : "") + std::to_string(v[i]);
    exif::SetRowValue(e.row(), text);
}

// One RATIONAL or SRATIONAL, little-endian, as its plain quotient.
void Quotient(const MakerEntry& e) {
    const uint16_t type = e.entry().type;
    uint8_t b[8] = {};
    if ((type != tiff::kRational && type != tiff::kSRational) || exif::ReadRawBlock(e.context, b, sizeof b) != sizeof b)
        return;
    const uint32_t num = platform::GetU32(b, 0), den = platform::GetU32(b + 4, 0);
    if (den == 0) return;
    const double q = type == tiff::kSRational ? static_cast<double>(static_cast<int32_t>(num)) / static_cast<int32_t>(den)
                                              : static_cast<double>(num) / den;
    SetValuef(e.row(), "%g", q);
}

// Two signed LONGs: the red and blue shifts.
void WhiteBalanceFineTune(const MakerEntry& e) {
    int64_t v[2] = {};
    if (ReadLittleEndian(e, v, 2) == 2)
        SetValuef(e.row(), "Red %+lld, Blue %+lld", static_cast<long long>(v[0]), static_cast<long long>(v[1]));
}

// Three SHORTs: what stabilises, how, and a third setting shown as its number.
constexpr ValueText kStabiliserTexts[] = {
    {0, "None"}, {1, "Optical"}, {2, "Sensor-shift"}, {3, "OIS Lens"}, {0x102, "IBIS/OIS + DIS"}, {0x200, "Digital"},
};
constexpr ValueText kStabiliserModeTexts[] = {
    {0, "Off"}, {1, "On (mode 1, continuous)"}, {2, "On (mode 2, shooting only)"},
};
void ImageStabilization(const MakerEntry& e) {
    int64_t v[3] = {};
    if (ReadLittleEndian(e, v, 3) < 3) return;
    const char* kind = EnumerationText(Enum(kStabiliserTexts, Sign::kUnsigned, "%d"), v[0]);
    const char* mode = EnumerationText(Enum(kStabiliserModeTexts, Sign::kUnsigned, "%d"), v[1]);
    const std::string text = (kind ? std::string(kind) : std::to_string(v[0])) + "; " +
                             (mode ? std::string(mode) : std::to_string(v[1])) + "; " + std::to_string(v[2]);
    exif::SetRowValue(e.row(), text);
}

// The count of images the camera has taken; the top bit is a flag.
void ImageCount(const MakerEntry& e) { SetValuef(e.row(), "%u", e.Unsigned16() & 0x7FFFu); }

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
    {0x1005, "Color Temperature", kNumber},
    {0x1006, "Contrast", kContrast2},
    {0x100a, "White Balance Fine Tune", WhiteBalanceFineTune},
    {0x100b, "Noise Reduction", kNoiseReduction},
    {0x100e, "High ISO Noise Reduction", kHighIsoNoiseReduction},
    {0x1010, "Flash Mode", kFlashMode},
    {0x1011, "Flash Exposure Compensation", Quotient},
    {0x1020, "Macro", kOffOn},
    {0x1021, "Focus Mode", kFocusMode},
    {0x1022, "AF Mode", kAfMode},
    {0x1023, "Focus Pixel", Numbers},
    {0x1030, "Slow Sync", kOffOn},
    {0x1031, "Picture Mode", kPictureMode},
    {0x1032, "Exposure Count", kNumber},
    {0x1033, "EXR Auto", kAutoManual},
    {0x1034, "EXR Mode", kExrMode},
    {0x1040, "Shadow Tone", kShadowHighlight},
    {0x1041, "Highlight Tone", kShadowHighlight},
    {0x1045, "Lens Modulation Optimizer", kOffOn},
    {0x1050, "Shutter Type", kShutterType},
    {0x1100, "Auto Bracketing", kOffOn},
    {0x1101, "Sequence Number", kNumber},
    {0x1300, "Blur Warning", kBlurWarning},
    {0x1301, "Focus Warning", kFocusWarning},
    {0x1302, "Exposure Warning", kExposureWarning},
    {0x1400, "Dynamic Range", kDynamicRange},
    {0x1401, "Film Mode", kFilmMode},
    {0x1402, "Dynamic Range Setting", kDynamicRangeSetting},
    {0x1403, "Development Dynamic Range", kNumber},
    {0x1404, "Min Focal Length", Quotient},
    {0x1405, "Max Focal Length", Quotient},
    {0x1406, "Max Aperture At Min Focal", Quotient},
    {0x1407, "Max Aperture At Max Focal", Quotient},
    {0x140b, "Auto Dynamic Range", kPercent},
    {0x1422, "Image Stabilization", ImageStabilization},
    {0x1425, "Scene Recognition", kSceneRecognition},
    {0x1431, "Rating", kNumber},
    {0x1436, "Image Generation", kImageGeneration},
    {0x1438, "Image Count", ImageCount},
    {0x4100, "Faces Detected", kNumber},
};
// The entries are read little-endian, so the low half of the value word is
// the SHORT stored in the field's first two bytes.
constexpr MakerTable kFujifilm = Table(kFujifilmTags, ValueRule::kLowHalfOfWord);



static_assert(TagsAscend(kFujifilmTags) && TagsNamed(kFujifilmTags), "tag order");
static_assert(ValuesUnique(kSharpnessTexts) && ValuesUnique(kWhiteBalanceTexts) && ValuesUnique(kSaturationTexts) &&
                  ValuesUnique(kToneTexts) && ValuesUnique(kFlashModeTexts) &&
                  ValuesUnique(kFocusModeTexts) && ValuesUnique(kPictureModeTexts) && ValuesUnique(kBlurWarningTexts) &&
                  ValuesUnique(kFocusWarningTexts) && ValuesUnique(kExposureWarningTexts) &&
                  ValuesUnique(kDynamicRangeTexts) && ValuesUnique(kFilmModeTexts) &&
                  ValuesUnique(kDynamicRangeSettingTexts) && ValuesUnique(kHighIsoNoiseReductionTexts) &&
                  ValuesUnique(kToneTexts2) && ValuesUnique(kSceneRecognitionTexts) && ValuesUnique(kStabiliserTexts),
              "enumeration values");

}  // namespace

void DecodeFujifilmMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                             uint32_t* rowCount) {
    platform::Cursor in = directory;
    in.SetOrder(platform::ByteOrder::kLittle);
    in.Skip(kSignatureRest + kDirectoryOffsetSize);
    // The values that shared readers fetch keep the EXIF order.
    DecodeMakerDirectory(in, directory.order(), offsetBase, table, rowCount, kFujifilm);
}

}  // namespace makernotes
