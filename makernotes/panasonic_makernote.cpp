// Panasonic maker notes: a directory behind the 12-byte "Panasonic" header,
// offsets from the TIFF header.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "makernote_array.h"
#include "makernote_decoders.h"
#include "makernote_limits.h"
#include "makernote_texts.h"

namespace makernotes {
namespace {

constexpr ValueText kImageQualityTexts[] = {
    {2, "High"}, {3, "Normal"}, {6, "Very High"}, {7, "Raw"}, {9, "Motion Picture"},
};
constexpr Enumeration kImageQuality = Enum(kImageQualityTexts, Sign::kUnsigned, "%d");

// An unnamed focus mode leaves the value empty.
constexpr ValueText kFocusModeTexts[] = {
    {1, "Auto"}, {2, "Manual"}, {4, "Auto, Focus button"}, {5, "Auto, Continuous"},
};
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "");

// The AF mode is two bytes: the low and the high byte of the 16-bit value.
struct AfModeText {
    uint8_t low, high;
    const char* text;
};
constexpr AfModeText kAfModeTexts[] = {
    {0, 1, "9 area"},          {0, 16, "3 area (high speed)"}, {1, 0, "Spot Focusing"},
    {1, 1, "5 area"},          {16, 0, "1 area"},              {16, 16, "1 area (high speed)"},
    {32, 0, "Auto or Face Detect"},                            {64, 0, "Face Detect"},
};

void AfMode(const MakerEntry& e) {
    const uint16_t value = e.Unsigned16();
    const auto low = static_cast<uint8_t>(value & 0xFF), high = static_cast<uint8_t>(value >> 8);
    for (const AfModeText& t : kAfModeTexts)
        if (t.low == low && t.high == high) return exif::SetRowValue(e.row(), t.text);
}

constexpr ValueText kMacroModeTexts[] = {
    {1, "On"}, {2, "Off"}, {257, "Tele-Macro"}, {513, "Macro Zoom"},
};
constexpr Enumeration kMacroMode = Enum(kMacroModeTexts, Sign::kSigned, "%d");

// Every named value lies between 1 and 64.
constexpr ValueText kShootingModeTexts[] = {
    {1, "Normal"},            {2, "Portrait"},          {3, "Scenery"},
    {4, "Sports"},            {5, "Night Portrait"},    {6, "Program"},
    {7, "Aperture Priority"}, {8, "Shutter Priority"},  {9, "Macro"},
    {11, "Manual"},           {34, "Intelligent ISO"},  {37, "Intelligent Auto"},
    {51, "HDR"},              {60, "Intelligent Auto Plus"},
    {62, "Panorama"},         {64, "HDR"},
};
constexpr Enumeration kShootingMode = Enum(kShootingModeTexts, Sign::kUnsigned, "%d");

// An unnamed colour mode leaves the value empty.
constexpr ValueText kColorModeTexts[] = {
    {0, "Normal"}, {1, "Natural"}, {2, "Vivid"},
};
constexpr Enumeration kColorMode = Enum(kColorModeTexts, Sign::kUnsigned, "");

constexpr Enumeration kNumber = Number(Sign::kUnsigned, "%d");
constexpr Enumeration kSignedNumber = Number(Sign::kSigned, "%d");

// The face record lies at the offset in the value field whatever its size;
// its text is bytes 4 to 23, cut at the first zero byte.
void FaceInfo(const MakerEntry& e) {
    uint8_t record[kFaceInfoReadLimit + 1] = {};
    const uint32_t want = std::min(e.entry().count, kFaceInfoReadLimit);
    e.context.input.ChildAt(tiff::At(e.context.base, e.entry().valueField), want).Some(record, want);
    const char* text = reinterpret_cast<const char*>(record + kFaceInfoTextStart);
    exif::SetRowValue(e.row(), std::string_view(text, strnlen(text, kFaceInfoTextBytes)));
}

// ------------------------------------------------------------ further settings

constexpr ValueText kWhiteBalanceTexts[] = {
    {1, "Auto"}, {2, "Daylight"}, {3, "Cloudy"}, {4, "Incandescent"}, {5, "Manual"}, {8, "Flash"},
    {10, "Black & White"}, {11, "Manual 2"}, {12, "Shade"}, {13, "Kelvin"}, {14, "Manual 3"}, {15, "Manual 4"},
    {19, "Auto (cool)"},
};
constexpr ValueText kImageStabilizationTexts[] = {
    {2, "On, Optical"}, {3, "Off"}, {4, "On, Mode 2"}, {5, "On, Optical Panning"}, {6, "On, Body-only"},
    {7, "On, Body-only Panning"}, {9, "Dual IS"}, {10, "Dual IS Panning"}, {11, "Dual2 IS"},
    {12, "Dual2 IS Panning"},
};
constexpr ValueText kAudioTexts[] = {{1, "Yes"}, {2, "No"}, {3, "Stereo"}};
constexpr ValueText kNotApplicableTexts[] = {{0, "n/a"}};
constexpr ValueText kColorEffectTexts[] = {
    {1, "Off"}, {2, "Warm"}, {3, "Cool"}, {4, "Black & White"}, {5, "Sepia"}, {6, "Happy"}, {8, "Vivid"},
};
constexpr ValueText kBurstModeTexts[] = {
    {0, "Off"}, {1, "On"}, {2, "Auto Exposure Bracketing (AEB)"}, {3, "Focus Bracketing"}, {4, "Unlimited"},
    {8, "White Balance Bracketing"}, {17, "On (with flash)"}, {18, "Aperture Bracketing"},
};
constexpr ValueText kContrastModeTexts[] = {
    {0, "Normal"}, {1, "Low"}, {2, "High"}, {5, "Normal 2"}, {6, "Medium Low"}, {7, "Medium High"},
    {13, "High Dynamic"}, {24, "Dynamic Range (film-like)"}, {46, "Match Filter Effects Toy"},
    {55, "Match Photo Style L. Monochrome"}, {256, "Low"}, {272, "Normal"}, {288, "High"},
};
// Read signed: the weaker settings are stored below zero.
constexpr ValueText kNoiseReductionTexts[] = {
    {0, "Standard"}, {1, "Low (-1)"}, {2, "High (+1)"}, {3, "Lowest (-2)"}, {4, "Highest (+2)"}, {5, "+5"},
    {6, "+6"}, {-5, "-5"}, {-4, "-4"}, {-3, "-3"}, {-2, "-2"}, {-1, "-1"},
};
constexpr ValueText kSelfTimerTexts[] = {
    {0, "Off (0)"}, {1, "Off"}, {2, "10 s"}, {3, "2 s"}, {4, "10 s / 3 pictures"},
    {258, "2 s after shutter pressed"}, {266, "10 s after shutter pressed"}, {778, "3 photos after 10 s"},
};
constexpr ValueText kRotationTexts[] = {
    {1, "Horizontal (normal)"}, {3, "Rotate 180"}, {6, "Rotate 90 CW"}, {8, "Rotate 270 CW"},
};
constexpr ValueText kAfAssistLampTexts[] = {
    {1, "Fired"}, {2, "Enabled but Not Used"}, {3, "Disabled but Required"}, {4, "Disabled and Not Required"},
};
constexpr ValueText kOpticalZoomModeTexts[] = {{1, "Standard"}, {2, "Extended"}};
constexpr ValueText kConversionLensTexts[] = {{1, "Off"}, {2, "Wide"}, {3, "Telephoto"}, {4, "Macro"}};
constexpr ValueText kTravelDayTexts[] = {{65535, "n/a"}};
constexpr ValueText kBatteryLevelTexts[] = {
    {1, "Full"}, {2, "Medium"}, {3, "Low"}, {4, "Near Empty"}, {7, "Near Full"}, {8, "Medium Low"}, {256, "n/a"},
};
constexpr ValueText kNormalTexts[] = {{0, "Normal"}};
constexpr ValueText kWorldTimeLocationTexts[] = {{1, "Home"}, {2, "Destination"}};
// Text stamps, the long exposure noise reduction: 1 off, 2 on.
constexpr ValueText kOffOnFromOneTexts[] = {{1, "Off"}, {2, "On"}};
constexpr ValueText kProgramIsoTexts[] = {{65534, "Intelligent ISO"}, {65535, "n/a"}};
constexpr ValueText kFilmModeTexts[] = {
    {0, "n/a"}, {1, "Standard (color)"}, {2, "Dynamic (color)"}, {3, "Nature (color)"}, {4, "Smooth (color)"},
    {5, "Standard (B&W)"}, {6, "Dynamic (B&W)"}, {7, "Smooth (B&W)"}, {10, "Nostalgic"}, {11, "Vibrant"},
};
constexpr ValueText kJpegQualityTexts[] = {
    {0, "n/a (Movie)"}, {2, "High"}, {3, "Standard"}, {6, "Very High"}, {255, "n/a (RAW only)"},
};
constexpr ValueText kBracketSettingsTexts[] = {
    {0, "No Bracket"}, {1, "3 Images, Sequence 0/-/+"}, {2, "3 Images, Sequence -/0/+"},
    {3, "5 Images, Sequence 0/-/+"}, {4, "5 Images, Sequence -/0/+"}, {5, "7 Images, Sequence 0/-/+"},
    {6, "7 Images, Sequence -/0/+"},
};
constexpr ValueText kFlashCurtainTexts[] = {{0, "n/a"}, {1, "1st"}, {2, "2nd"}};
// Intelligent exposure, intelligent D-range, monochrome grain.
constexpr ValueText kLevelTexts[] = {{0, "Off"}, {1, "Low"}, {2, "Standard"}, {3, "High"}};
constexpr ValueText kIntelligentResolutionTexts[] = {
    {0, "Off"}, {1, "Low"}, {2, "Standard"}, {3, "High"}, {4, "Extended"},
};
constexpr ValueText kHdrShotTexts[] = {{0, "Off"}, {3, "On"}};
constexpr ValueText kPhotoStyleTexts[] = {
    {0, "Auto"}, {1, "Standard or Custom"}, {2, "Vivid"}, {3, "Natural"}, {4, "Monochrome"}, {5, "Scenery"},
    {6, "Portrait"}, {8, "Cinelike D"}, {9, "Cinelike V"}, {11, "L. Monochrome"}, {12, "Like709"},
    {15, "L. Monochrome D"}, {17, "V-Log"}, {18, "Cinelike D2"},
};
constexpr ValueText kCameraOrientationTexts[] = {
    {0, "Normal"}, {1, "Rotate CW"}, {2, "Rotate 180"}, {3, "Rotate CCW"}, {4, "Tilt Upwards"},
    {5, "Tilt Downwards"},
};
constexpr ValueText kSweepPanoramaDirectionTexts[] = {
    {0, "Off"}, {1, "Left to Right"}, {2, "Right to Left"}, {3, "Top to Bottom"}, {4, "Bottom to Top"},
};
constexpr ValueText kTimerRecordingTexts[] = {
    {0, "Off"}, {1, "Time Lapse"}, {2, "Stop-motion Animation"}, {3, "Focus Bracketing"},
};
constexpr ValueText kHdrTexts[] = {
    {0, "Off"}, {100, "1 EV"}, {200, "2 EV"}, {300, "3 EV"}, {32868, "1 EV (Auto)"}, {32968, "2 EV (Auto)"},
    {33068, "3 EV (Auto)"},
};
constexpr ValueText kShutterTypeTexts[] = {{0, "Mechanical"}, {1, "Electronic"}, {2, "Hybrid"}};
constexpr ValueText kMonochromeFilterTexts[] = {{0, "Off"}, {1, "Yellow"}, {2, "Orange"}, {3, "Red"}, {4, "Green"}};
constexpr ValueText kMultiExposureTexts[] = {{0, "n/a"}, {1, "Off"}, {2, "On"}};
constexpr ValueText kDiffractionCorrectionTexts[] = {{0, "Off"}, {1, "Auto"}};
constexpr ValueText kSensorTypeTexts[] = {{0, "Multi-aspect"}, {1, "Standard"}};
constexpr ValueText kHighlightWarningTexts[] = {{0, "Disabled"}, {1, "No"}, {2, "Yes"}};
constexpr ValueText kNoYesFromOneTexts[] = {{1, "No"}, {2, "Yes"}};
// The scene the camera chose, 0 when none.
constexpr ValueText kSceneModeTexts[] = {
    {0, "Off"}, {1, "Normal"}, {2, "Portrait"}, {3, "Scenery"}, {4, "Sports"}, {5, "Night Portrait"},
    {6, "Program"}, {7, "Aperture Priority"}, {8, "Shutter Priority"}, {9, "Macro"}, {10, "Spot"}, {11, "Manual"},
    {12, "Movie Preview"}, {13, "Panning"}, {14, "Simple"}, {15, "Color Effects"}, {16, "Self Portrait"},
    {17, "Economy"}, {18, "Fireworks"}, {19, "Party"}, {20, "Snow"}, {21, "Night Scenery"}, {22, "Food"},
    {23, "Baby"}, {24, "Soft Skin"}, {25, "Candlelight"}, {26, "Starry Night"}, {27, "High Sensitivity"},
    {28, "Panorama Assist"}, {29, "Underwater"}, {30, "Beach"}, {31, "Aerial Photo"}, {32, "Sunset"}, {33, "Pet"},
    {34, "Intelligent ISO"}, {35, "Clipboard"}, {36, "High Speed Continuous Shooting"}, {37, "Intelligent Auto"},
    {39, "Multi-aspect"}, {41, "Transform"}, {42, "Flash Burst"}, {43, "Pin Hole"}, {44, "Film Grain"},
    {45, "My Color"}, {46, "Photo Frame"}, {48, "Movie"}, {51, "HDR"}, {52, "Peripheral Defocus"},
    {55, "Handheld Night Shot"}, {57, "3D"}, {59, "Creative Control"}, {60, "Intelligent Auto Plus"},
    {62, "Panorama"}, {63, "Glass Through"}, {64, "HDR"}, {66, "Digital Filter"}, {67, "Clear Portrait"},
    {68, "Silky Skin"}, {69, "Backlit Softness"}, {70, "Clear in Backlight"}, {71, "Relaxing Tone"},
    {72, "Sweet Child's Face"}, {73, "Distinct Scenery"}, {74, "Bright Blue Sky"}, {75, "Romantic Sunset Glow"},
    {76, "Vivid Sunset Glow"}, {77, "Glistening Water"}, {78, "Clear Nightscape"}, {79, "Cool Night Sky"},
    {80, "Warm Glowing Nightscape"}, {81, "Artistic Nightscape"}, {82, "Glittering Illuminations"},
    {83, "Clear Night Portrait"}, {84, "Soft Image of a Flower"}, {85, "Appetizing Food"}, {86, "Cute Dessert"},
    {87, "Freeze Animal Motion"}, {88, "Clear Sports Shot"}, {89, "Monochrome"}, {90, "Creative Control"},
    {92, "Handheld Night Shot"},
};
static_assert(ValuesUnique(kSceneModeTexts) && ValuesUnique(kWhiteBalanceTexts) &&
                  ValuesUnique(kNoiseReductionTexts) && ValuesUnique(kContrastModeTexts),
              "each value once");

constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kImageStabilization = Enum(kImageStabilizationTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kAudio = Enum(kAudioTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kNotApplicable = Enum(kNotApplicableTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kColorEffect = Enum(kColorEffectTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kBurstMode = Enum(kBurstModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kContrastMode = Enum(kContrastModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kNoiseReduction = Enum(kNoiseReductionTexts, Sign::kSigned, "%d");
constexpr Enumeration kSelfTimer = Enum(kSelfTimerTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kRotation = Enum(kRotationTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kAfAssistLamp = Enum(kAfAssistLampTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kOpticalZoomMode = Enum(kOpticalZoomModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kConversionLens = Enum(kConversionLensTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kTravelDay = Enum(kTravelDayTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kBatteryLevel = Enum(kBatteryLevelTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kNormalOrStep = Enum(kNormalTexts, Sign::kSigned, "%d");
constexpr Enumeration kWorldTimeLocation = Enum(kWorldTimeLocationTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kOffOnFromOne = Enum(kOffOnFromOneTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kProgramIso = Enum(kProgramIsoTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kFilmMode = Enum(kFilmModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kJpegQuality = Enum(kJpegQualityTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kBracketSettings = Enum(kBracketSettingsTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kFlashCurtain = Enum(kFlashCurtainTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kLevel = Enum(kLevelTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kIntelligentResolution = Enum(kIntelligentResolutionTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kHdrShot = Enum(kHdrShotTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kPhotoStyle = Enum(kPhotoStyleTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kCameraOrientation = Enum(kCameraOrientationTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kSweepPanoramaDirection = Enum(kSweepPanoramaDirectionTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kTimerRecording = Enum(kTimerRecordingTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kHdr = Enum(kHdrTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kShutterType = Enum(kShutterTypeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kMonochromeFilter = Enum(kMonochromeFilterTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kMultiExposure = Enum(kMultiExposureTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kDiffractionCorrection = Enum(kDiffractionCorrectionTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kSensorType = Enum(kSensorTypeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kHighlightWarning = Enum(kHighlightWarningTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kNoYesFromOne = Enum(kNoYesFromOneTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kSceneMode = Enum(kSceneModeTexts, Sign::kUnsigned, "%d");

// A setting stored as one BYTE: the field's first byte.
template <const Enumeration& E>
void ByteSetting(const MakerEntry& e) {
    FormatEnumeratedElement(E, e.entry().fieldBytes[0], e.row());
}

// A LONG.
void UnsignedLong(const MakerEntry& e) { SetValuef(e.row(), "%u", e.entry().valueField); }

// Up to `size` value bytes (in file order, inline or at the offset); returns how many.
size_t ValueBytes(const MakerEntry& e, uint8_t* out, size_t size) { return exif::ReadRawBlock(e.context, out, size); }

// The value bytes as text up to the first zero byte.
std::string TextOf(const MakerEntry& e, size_t limit) {
    char text[64] = {};
    const size_t got = ValueBytes(e, reinterpret_cast<uint8_t*>(text), std::min(limit, sizeof text - 1));
    return std::string(text, strnlen(text, got));
}

// Four bytes, each a number: 0.1.0.8.
void ByteVersion(const MakerEntry& e) {
    uint8_t bytes[4] = {};
    const size_t got = ValueBytes(e, bytes, sizeof bytes);
    std::string out;
    for (size_t i = 0; i < got; ++i) out += (i ? "." : "") + std::to_string(bytes[i]);
    exif::SetRowValue(e.row(), out);
}

// Thirds of a step: 0, +1, -2/3, +4/3.
void Thirds(const MakerEntry& e) {
    const int32_t thirds = e.Signed16();
    if (thirds == 0) return exif::SetRowValue(e.row(), "0");
    if (thirds % 3 == 0) return SetValuef(e.row(), "%+d", thirds / 3);
    SetValuef(e.row(), "%+d/3", thirds);
}

// Maker's line and date of manufacture, then the unit: "F650912220134" is
// line F65, 22 December 2009, unit 0134.
void InternalSerialNumber(const MakerEntry& e) {
    const std::string text = TextOf(e, 16);
    bool dated = text.size() >= 13;
    for (size_t i = 3; dated && i < 13; ++i) dated = text[i] >= '0' && text[i] <= '9';
    if (!dated) return exif::SetRowValue(e.row(), text);
    SetValuef(e.row(), "(%.3s) 20%.2s:%.2s:%.2s no. %.4s", text.c_str(), text.c_str() + 3, text.c_str() + 5,
              text.c_str() + 7, text.c_str() + 9);
}

// Hundredths of a second since the camera was switched on.
void TimeSincePowerOn(const MakerEntry& e) {
    const uint32_t hundredths = e.entry().valueField, seconds = hundredths / 100;
    const uint32_t days = seconds / 86400;
    const char* prefix = days ? " days " : "";
    char dayText[16] = "";
    if (days) std::snprintf(dayText, sizeof dayText, "%u", days);
    SetValuef(e.row(), "%s%s%02u:%02u:%02u.%02u", dayText, prefix, seconds / 3600 % 24, seconds / 60 % 60,
              seconds % 60, hundredths % 100);
}

// A birth date, or the camera's mark for none.
void BabyAge(const MakerEntry& e) {
    const std::string text = TextOf(e, 32);
    exif::SetRowValue(e.row(), text == "9999:99:99 00:00:00" ? std::string("(not set)") : text);
}

// Two rationals: where the AF point lies, as fractions of the width and the height.
void RationalPair(const MakerEntry& e) {
    std::string out;
    for (uint32_t i = 0; i < 2 && i < e.entry().count; ++i) {
        uint32_t numerator = 0, denominator = 0;
        if (!tiff::ReadRational(e.context.input, e.context.base, e.entry().valueField + 8 * i, numerator, denominator))
            break;
        char text[32];
        std::snprintf(text, sizeof text, "%.6g", denominator ? static_cast<double>(numerator) / denominator : 0.0);
        out += (i ? " " : "") + std::string(text);
    }
    exif::SetRowValue(e.row(), out);
}

// Two signed SHORTs: slimming (negative) or stretching, and its strength.
void Transform(const MakerEntry& e) {
    uint8_t bytes[4] = {};
    ValueBytes(e, bytes, sizeof bytes);
    const int order = e.context.bigEndian();
    const auto a = static_cast<int16_t>(platform::GetU16(bytes, order));
    const auto b = static_cast<int16_t>(platform::GetU16(bytes + 2, order));
    struct Kind {
        int16_t a, b;
        const char* text;
    };
    static constexpr Kind kKinds[] = {
        {0, 0, "Off"}, {-1, 1, "Slim Low"}, {-3, 2, "Slim High"}, {1, 1, "Stretch Low"}, {3, 2, "Stretch High"},
    };
    for (const Kind& k : kKinds)
        if (k.a == a && k.b == b) return exif::SetRowValue(e.row(), k.text);
    SetValuef(e.row(), "%d %d", a, b);
}

// The number of faces whose positions the record keeps: its first SHORT.
void FacePositions(const MakerEntry& e) {
    uint8_t bytes[2] = {};
    if (ValueBytes(e, bytes, sizeof bytes) == sizeof bytes)
        SetValuef(e.row(), "%u", platform::GetU16(bytes, e.context.bigEndian()));
}

// Tenths of a degree; the pitch is stored upwards negative.
void RollAngle(const MakerEntry& e) { SetValuef(e.row(), "%.6g", e.Signed16() / 10.0); }
void PitchAngle(const MakerEntry& e) { SetValuef(e.row(), "%.6g", -e.Signed16() / 10.0); }

// "County" (128) is not "Country" (105).
constexpr MakerTag kPanasonicTags[] = {
    {0x0001, "Image Quality", kImageQuality},
    {0x0002, "Firmware Version", ByteVersion},
    {0x0003, "White Balance", kWhiteBalance},
    {0x0007, "Focus Mode", kFocusMode},
    {0x000F, "AF Mode", AfMode},
    {0x001A, "Image Stabilization", kImageStabilization},
    {0x001C, "Macro Mode", kMacroMode},
    {0x001F, "Shooting Mode", kShootingMode},
    {0x0020, "Audio", kAudio},
    {0x0023, "White Balance Bias", Thirds},
    {0x0024, "Flash Bias", Thirds},
    {0x0025, "Internal Serial Number", InternalSerialNumber},
    {0x0026, "Panasonic Exif Version", FormatGenericValue},
    {0x0027, "Video Frame Rate", kNotApplicable},
    {0x0028, "Color Effect", kColorEffect},
    {0x0029, "Time Since Power On", TimeSincePowerOn},
    {0x002A, "Burst Mode", kBurstMode},
    {0x002B, "Sequence Number", UnsignedLong},
    {0x002C, "Contrast Mode", kContrastMode},
    {0x002D, "Noise Reduction", kNoiseReduction},
    {0x002E, "Self Timer", kSelfTimer},
    {0x0030, "Rotation", kRotation},
    {0x0031, "AF Assist Lamp", kAfAssistLamp},
    {0x0032, "Color Mode", kColorMode},
    {0x0033, "Baby Age", BabyAge},
    {0x0034, "Optical Zoom Mode", kOpticalZoomMode},
    {0x0035, "Conversion Lens", kConversionLens},
    {0x0036, "Travel Day", kTravelDay},
    {0x0038, "Battery Level", kBatteryLevel},
    {0x0039, "Contrast", kNormalOrStep},
    {0x003A, "World Time Location", kWorldTimeLocation},
    {0x003B, "Text Stamp", kOffOnFromOne},
    {0x003C, "Program ISO", kProgramIso},
    {0x003D, "Advanced Scene Type", kNumber},
    {0x003E, "Text Stamp", kOffOnFromOne},
    {0x003F, "Faces Detected", kNumber},
    {0x0040, "Saturation", kNormalOrStep},
    {0x0041, "Sharpness", kNormalOrStep},
    {0x0042, "Film Mode", kFilmMode},
    {0x0043, "JPEG Quality", kJpegQuality},
    {0x0044, "Color Temp Kelvin", kNumber},
    {0x0045, "Bracket Settings", kBracketSettings},
    {0x0046, "WB Shift AB", kSignedNumber},
    {0x0047, "WB Shift GM", kSignedNumber},
    {0x0048, "Flash Curtain", kFlashCurtain},
    {0x0049, "Long Exposure Noise Reduction", kOffOnFromOne},
    {0x004B, "Image Width", UnsignedLong},
    {0x004C, "Image Height", UnsignedLong},
    {0x004D, "AF Point Position", RationalPair},
    {0x004E, "Face Positions", FacePositions},
    {0x0051, "Lens Type", FormatGenericValue},
    {0x0052, "Lens Serial Number", FormatGenericValue},
    {0x0053, "Accessory Type", FormatGenericValue},
    {0x0054, "Accessory Serial Number", FormatGenericValue},
    {0x0059, "Transform", Transform},
    {0x005D, "Intelligent Exposure", kLevel},
    {0x0060, "Lens Firmware Version", ByteVersion},
    {0x0061, "Face Info", FaceInfo},
    {0x0062, "Flash warning", kNumber},
    {0x0065, "Title", FormatGenericValue},
    {0x0066, "Baby Name", FormatGenericValue},
    {0x0067, "Location", FormatGenericValue},
    {0x0069, "Country", FormatGenericValue},
    {0x006B, "Region", FormatGenericValue},
    {0x006D, "City", FormatGenericValue},
    {0x006F, "Landmark", FormatGenericValue},
    {0x0070, "Intelligent Resolution", ByteSetting<kIntelligentResolution>},
    {0x0076, "HDR Shot", kHdrShot},
    {0x0077, "Burst Speed", kNumber},
    {0x0079, "Intelligent D-Range", kLevel},
    {0x007C, "Clear Retouch", kOffOn},
    {0x0080, "County", FormatGenericValue},
    {0x0089, "Photo Style", kPhotoStyle},
    {0x008A, "Shading Compensation", kOffOn},
    {0x008F, "Camera Orientation", ByteSetting<kCameraOrientation>},
    {0x0090, "Roll Angle", RollAngle},
    {0x0091, "Pitch Angle", PitchAngle},
    {0x0093, "Sweep Panorama Direction", ByteSetting<kSweepPanoramaDirection>},
    {0x0096, "Timer Recording", ByteSetting<kTimerRecording>},
    {0x009E, "HDR", kHdr},
    {0x009F, "Shutter Type", kShutterType},
    {0x00AB, "Touch AE", kOffOn},
    {0x00AC, "Monochrome Filter Effect", kMonochromeFilter},
    {0x00B4, "Multi Exposure", kMultiExposure},
    {0x00B9, "Red Eye Removal", kOffOn},
    {0x00BC, "Diffraction Correction", kDiffractionCorrection},
    {0x00BE, "Long Exposure NR Used", kNoYes},
    {0x00CA, "Sensor Type", kSensorType},
    {0x00D1, "ISO", UnsignedLong},
    {0x00D2, "Monochrome Grain Effect", kLevel},
    {0x00E8, "Minimum ISO", UnsignedLong},
    {0x00EE, "Dynamic Range Boost", kOffOn},
    {0x8000, "Maker Note Version", FormatGenericValue},
    {0x8001, "Scene Mode", kSceneMode},
    {0x8002, "Highlight Warning", kHighlightWarning},
    {0x8003, "Dark Focus Environment", kNoYesFromOne},
    {0x8004, "WB Red Level", kNumber},
    {0x8005, "WB Green Level", kNumber},
    {0x8006, "WB Blue Level", kNumber},
    {0x8008, "Text Stamp", kOffOnFromOne},
    {0x8009, "Text Stamp", kOffOnFromOne},
    {0x8010, "Baby Age", BabyAge},
    {0x8012, "Transform", Transform},
};
static_assert(TagsAscend(kPanasonicTags) && TagsNamed(kPanasonicTags), "tags ascend, each named");
// Panasonic reads each value where a SHORT is stored: the field's first two bytes.
constexpr MakerTable kPanasonic = Table(kPanasonicTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

}  // namespace

void DecodePanasonicMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                              uint32_t* rowCount) {
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kPanasonic);
}

}  // namespace makernotes
