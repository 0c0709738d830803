// Casio maker notes, in their two forms: the older headerless directory and
// the newer one behind a 6-byte "QVC" header, offsets from the TIFF header.
// The settings of both forms' first tags are taken from the entry's own
// value field; only the texts, the preview and the multi-value settings
// added later follow an offset.
#include <algorithm>
#include <string>

#include "makernote_array.h"
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

// The later tags are read where a SHORT is stored, the field's first two
// bytes, in either byte order: the low-half rule above stays with the tags it
// was written for.
template <const Enumeration& E>
void StoredShort(const MakerEntry& e) {
    FormatEnumeratedElement(E, platform::GetU16(e.entry().fieldBytes, e.context.bigEndian()), e.row());
}

constexpr ValueText kEnhancementTexts[] = {
    {1, "Off"}, {2, "Red"}, {3, "Green"}, {4, "Blue"}, {5, "Flesh Tones"},
};
constexpr ValueText kColorFilterTexts[] = {
    {1, "Off"}, {2, "Black & White"}, {3, "Sepia"}, {4, "Red"}, {5, "Green"}, {6, "Blue"}, {7, "Yellow"},
    {8, "Pink"}, {9, "Purple"},
};
constexpr ValueText kAfPointTexts[] = {
    {1, "Center"}, {2, "Upper Left"}, {3, "Upper Right"}, {4, "Near Left/Right of Center"},
    {5, "Far Left/Right of Center"}, {6, "Far Left/Right of Center/Bottom"}, {7, "Top Near-left"},
    {8, "Near Upper/Left"}, {9, "Top Near-right"}, {10, "Top Left"}, {11, "Top Center"}, {12, "Top Right"},
    {13, "Center Left"}, {14, "Center Right"}, {15, "Bottom Left"}, {16, "Bottom Center"}, {17, "Bottom Right"},
};
constexpr ValueText kFlashIntensity2Texts[] = {{1, "Normal"}, {2, "Weak"}, {3, "Strong"}};
constexpr Enumeration kEnhancement = Enum(kEnhancementTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kColorFilter = Enum(kColorFilterTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kAfPoint = Enum(kAfPointTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kFlashIntensity2 = Enum(kFlashIntensity2Texts, Sign::kUnsigned, "%d");

// The firmware's date as the digits YYMMDDHHMM, stored in pairs of four
// with zero bytes between them: 2003:02:28 09:45.
void FirmwareDate(const MakerEntry& e) {
    uint8_t bytes[32] = {};
    const size_t got = exif::ReadRawBlock(e.context, bytes, sizeof bytes);
    std::string digits;
    for (size_t i = 0; i < got; ++i)
        if (bytes[i]) digits += static_cast<char>(bytes[i]);
    bool dated = digits.size() == 10;
    for (char c : digits) dated = dated && c >= '0' && c <= '9';
    if (!dated) return exif::SetRowValue(e.row(), digits);
    SetValuef(e.row(), "20%.2s:%.2s:%.2s %.2s:%.2s", digits.c_str(), digits.c_str() + 2, digits.c_str() + 4,
              digits.c_str() + 6, digits.c_str() + 8);
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
    {21, "Firmware Date", FirmwareDate},
    {22, "Enhancement", StoredShort<kEnhancement>},
    {23, "Color Filter", StoredShort<kColorFilter>},
    {24, "AF Point", StoredShort<kAfPoint>},
    {25, "Flash Intensity", StoredShort<kFlashIntensity2>},
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

// ------------------------------------------------------------ "QVC" form, further settings

constexpr ValueText kImageSizeTexts[] = {
    {0, "640x480"}, {4, "1600x1200"}, {5, "2048x1536"}, {20, "2288x1712"}, {21, "2592x1944"}, {22, "2304x1728"},
    {36, "3008x2008"},
};
constexpr ValueText kLowNormalHighTexts[] = {{0, "Low"}, {1, "Normal"}, {2, "High"}};
constexpr ValueText kSoftNormalHardTexts[] = {{0, "Soft"}, {1, "Normal"}, {2, "Hard"}};
constexpr ValueText kRecordModeTexts[] = {
    {2, "Program AE"}, {3, "Shutter Priority"}, {4, "Aperture Priority"}, {5, "Manual"}, {6, "Best Shot"},
    {17, "Movie"}, {19, "Movie (19)"}, {20, "YouTube Movie"},
};
constexpr ValueText kReleaseModeTexts[] = {
    {1, "Normal"}, {3, "AE Bracketing"}, {11, "WB Bracketing"}, {13, "Contrast Bracketing"},
    {19, "High Speed Burst"},
};
constexpr ValueText kAutoIsoTexts[] = {
    {1, "On"}, {2, "Off"}, {7, "On (high sensitivity)"}, {8, "On (anti-shake)"}, {10, "High Speed"},
};
constexpr ValueText kAfModeTexts[] = {
    {0, "Off"}, {1, "Spot"}, {2, "Multi"}, {3, "Face Detection"}, {4, "Tracking"}, {5, "Intelligent"},
};
constexpr ValueText kArtModeTexts[] = {
    {0, "Normal"}, {8, "Silent Movie"}, {39, "HDR"}, {45, "Premium Auto"}, {47, "Painting"},
    {49, "Crayon Drawing"}, {51, "Panorama"}, {52, "Art HDR"}, {62, "High Speed Night Shot"}, {64, "Monochrome"},
    {67, "Toy Camera"}, {68, "Pop Art"}, {69, "Light Tone"},
};
constexpr ValueText kLightingModeTexts[] = {
    {0, "Off"}, {1, "High Dynamic Range"}, {5, "Shadow Enhance Low"}, {6, "Shadow Enhance High"},
};
constexpr ValueText kPortraitRefinerTexts[] = {{0, "Off"}, {1, "+1"}, {2, "+2"}};
// Also the first byte of the three-byte special effect mode.
constexpr ValueText kSpecialEffectTexts[] = {
    {0, "Off"}, {1, "Makeup"}, {2, "Mist Removal"}, {3, "Vivid Landscape"}, {16, "Art Shot"},
};
constexpr ValueText kDriveModeTexts[] = {
    {0, "Single Shot"}, {1, "Continuous Shooting"}, {2, "Continuous (2 fps)"}, {3, "Continuous (3 fps)"},
    {4, "Continuous (4 fps)"}, {5, "Continuous (5 fps)"}, {6, "Continuous (6 fps)"}, {7, "Continuous (7 fps)"},
    {10, "Continuous (10 fps)"}, {12, "Continuous (12 fps)"}, {15, "Continuous (15 fps)"},
    {20, "Continuous (20 fps)"}, {30, "Continuous (30 fps)"}, {40, "Continuous (40 fps)"},
    {60, "Continuous (60 fps)"}, {240, "Auto-N"},
};
constexpr ValueText kVideoQualityTexts[] = {{1, "Standard"}, {3, "HD (720p)"}, {4, "Full HD (1080p)"}, {5, "Low"}};
// One SHORT on the older bodies; two on the later ones (the kind of
// stabilisation, then how it was applied).
constexpr ValueText kStabilizationTexts[] = {{0, "Off"}, {1, "On"}, {2, "Best Shot"}, {3, "Movie Anti-Shake"}};
constexpr ValueText kStabilizationPairTexts[] = {
    {0x0000, "Off"}, {0x0001, "Off (1)"}, {0x0003, "CCD Shift"}, {0x0201, "High Sensitivity"},
    {0x0203, "CCD Shift + High Sensitivity"}, {0x1000, "Slow Shutter"}, {0x1200, "Anti-Shake"},
    {0x1400, "High Sensitivity"},
};
static_assert(ValuesUnique(kDriveModeTexts) && ValuesUnique(kArtModeTexts) && ValuesUnique(kStabilizationPairTexts),
              "each value once");

constexpr Enumeration kImageSize = Enum(kImageSizeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kLowNormalHigh = Enum(kLowNormalHighTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kSoftNormalHard = Enum(kSoftNormalHardTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kRecordMode = Enum(kRecordModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kReleaseMode = Enum(kReleaseModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kAutoIso = Enum(kAutoIsoTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kAfMode = Enum(kAfModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kArtMode = Enum(kArtModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kLightingMode = Enum(kLightingModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kPortraitRefiner = Enum(kPortraitRefinerTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kSpecialEffect = Enum(kSpecialEffectTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kDriveMode = Enum(kDriveModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kVideoQuality = Enum(kVideoQualityTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kStabilization = Enum(kStabilizationTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kStabilizationPair = Enum(kStabilizationPairTexts, Sign::kUnsigned, "");
constexpr Enumeration kSignedNumber = Number(Sign::kSigned, "%d");

// Up to `count` SHORTs of the value (inline or at the offset) in the note's order.
size_t ReadShorts(const MakerEntry& e, uint16_t* out, size_t count) {
    uint8_t bytes[16] = {};
    const size_t got = exif::ReadRawBlock(e.context, bytes, std::min(sizeof bytes, count * 2)) / 2;
    for (size_t i = 0; i < got; ++i) out[i] = platform::GetU16(bytes + 2 * i, e.context.bigEndian());
    return got;
}

void UnsignedLong(const MakerEntry& e) { SetValuef(e.row(), "%u", e.entry().valueField); }

// Width and height: 320x240.
void ImageSize(const MakerEntry& e) {
    uint16_t size[2] = {};
    if (ReadShorts(e, size, 2) == 2) SetValuef(e.row(), "%ux%u", size[0], size[1]);
}

// Where the preview lies in the file: its offset from the TIFF header made absolute.
void PreviewImageStart(const MakerEntry& e) {
    SetValuef(e.row(), "%llu", static_cast<unsigned long long>(tiff::At(e.context.base, e.entry().valueField)));
}

void ByteCount(const MakerEntry& e) { SetValuef(e.row(), "%u bytes", e.entry().count); }

// The SHORTs of the value as numbers, spaced.
void Shorts(const MakerEntry& e) {
    uint16_t values[8] = {};
    const size_t n = ReadShorts(e, values, std::min<size_t>(e.entry().count, 8));
    std::string out;
    for (size_t i = 0; i < n; ++i) out += (i ? " " : "") + std::to_string(values[i]);
    exif::SetRowValue(e.row(), out);
}

// x in a frame this wide, y in a frame this high: each as a fraction.
void AfPointPosition(const MakerEntry& e) {
    uint16_t v[4] = {};
    if (ReadShorts(e, v, 4) != 4 || v[1] == 0 || v[3] == 0) return Shorts(e);
    SetValuef(e.row(), "%.6g %.6g", static_cast<double>(v[0]) / v[1], static_cast<double>(v[2]) / v[3]);
}

// Millimetres, shown in metres.
void ObjectDistance(const MakerEntry& e) { SetValuef(e.row(), "%.6g m", e.entry().valueField / 1000.0); }

void FocalLength(const MakerEntry& e) {
    uint32_t numerator = 0, denominator = 0;
    if (tiff::ReadRational(e.context.input, e.context.base, e.entry().valueField, numerator, denominator) &&
        denominator)
        SetValuef(e.row(), "%.1f mm", static_cast<double>(numerator) / denominator);
}

// Three bytes; the first names the effect, the others are zero.
void SpecialEffectMode(const MakerEntry& e) {
    const uint8_t* b = e.entry().fieldBytes;
    const char* text = b[1] == 0 && b[2] == 0 && b[0] <= 3 ? EnumerationText(kSpecialEffect, b[0]) : nullptr;
    if (text) return exif::SetRowValue(e.row(), text);
    SetValuef(e.row(), "%u %u %u", b[0], b[1], b[2]);
}

void ByteNumber(const MakerEntry& e) { SetValuef(e.row(), "%u", e.entry().fieldBytes[0]); }

void ImageStabilization(const MakerEntry& e) {
    uint16_t v[2] = {};
    if (e.entry().count < 2) return FormatEnumeratedElement(kStabilization, e.Unsigned16(), e.row());
    if (ReadShorts(e, v, 2) != 2) return;
    if (v[0] <= 0xFF && v[1] <= 0xFF)
        if (const char* text = EnumerationText(kStabilizationPair, v[0] << 8 | v[1])) return exif::SetRowValue(e.row(), text);
    SetValuef(e.row(), "%u %u", v[0], v[1]);
}

// White Balance, Quality and Focus Mode each appear twice, under two tags.
constexpr MakerTag kCasioQvcTags[] = {
    {0x0002, "Preview Image Size", ImageSize},
    {0x0003, "Preview Image Length", UnsignedLong},
    {0x0004, "Preview Image Start", PreviewImageStart},
    {0x0008, "Quality", kQvcQuality},
    {0x0009, "Image Size", kImageSize},
    {0x000D, "Focus Mode", kQvcFocusMode},
    {0x0014, "ISO", kQvcIso},
    {0x0019, "White Balance", kQvcWhiteBalance},
    {0x001D, "Focal Length", FocalLength},
    {0x001F, "Saturation", kLowNormalHigh},
    {0x0020, "Contrast", kLowNormalHigh},
    {0x0021, "Sharpness", kSoftNormalHard},
    {0x2000, "Preview Image", ByteCount},
    {0x2001, "Firmware Date", FirmwareDate},
    {0x2011, "White Balance Bias", Shorts},
    {0x2012, "White Balance", kQvcWhiteBalance2},
    {0x2021, "AF Point Position", AfPointPosition},
    {0x2022, "Object Distance", ObjectDistance},
    {0x2034, "Flash Distance", kQvcNumber},
    {0x2076, "Special Effect Mode", SpecialEffectMode},
    {0x211C, "Faces Detected", ByteNumber},
    {0x3000, "Record Mode", kRecordMode},
    {0x3001, "Release Mode", kReleaseMode},
    {0x3002, "Quality", kQvcQuality2},
    {0x3003, "Focus Mode", kQvcFocusMode2},
    {0x3006, "Hometown City", FormatGenericValue},
    {0x3007, "Best Shot Mode", kQvcOffOn},
    {0x3008, "Auto ISO", kAutoIso},
    {0x3009, "AF Mode", kAfMode},
    {0x3011, "Sharpness", kSignedNumber},
    {0x3012, "Contrast", kSignedNumber},
    {0x3013, "Saturation", kSignedNumber},
    {0x3014, "CCD ISO Sensitivity", kQvcNumber},
    {0x3015, "Color Mode", kQvcOff},
    {0x3016, "Enhancement", kQvcOff},
    {0x3017, "Filter", kQvcOff},
    {0x301B, "Art Mode", kArtMode},
    {0x301C, "Sequence Number", kQvcNumber},
    {0x301D, "Bracket Sequence", Shorts},
    {0x3020, "Image Stabilization", ImageStabilization},
    {0x302A, "Lighting Mode", kLightingMode},
    {0x302B, "Portrait Refiner", kPortraitRefiner},
    {0x3030, "Special Effect Level", kQvcNumber},
    {0x3031, "Special Effect Setting", kSpecialEffect},
    {0x3103, "Drive Mode", kDriveMode},
    {0x4001, "Capture Frame Rate", kQvcNumber},
    {0x4003, "Video Quality", kVideoQuality},
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
