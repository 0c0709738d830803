// The DSLR-A100's second directory: Sony's first body kept Minolta's maker
// note whole and points at it from tag B028. Its plain tags are LONGs (and
// a rational); three of its tags hold blocks, read in a second pass over
// this directory: the camera's AF info (tag 0010, in the file's byte order),
// its white-balance and exposure info (tag 0020) and its settings (tag
// 0114), both big-endian whatever the file's order, as Minolta wrote them.
#include <cmath>

#include "makernote_texts.h"
#include "sony_makernote.h"

namespace makernotes {
namespace sony {
namespace {

// ------------------------------------------------------------ plain tags

// The A100 names its colour modes as the later bodies do.
constexpr ValueText kColorModeTexts[] = {
    {0, "Standard"},   {1, "Vivid"},     {2, "Portrait"},      {3, "Landscape"},     {4, "Sunset"},
    {5, "Night View/Portrait"},          {6, "B&W"},           {7, "Adobe RGB"},     {12, "Neutral"},
    {13, "Clear"},     {14, "Deep"},     {15, "Light"},        {16, "Autumn Leaves"}, {17, "Sepia"},
};
constexpr Enumeration kColorMode = Enum(kColorModeTexts, Sign::kUnsigned, "");
constexpr ValueText kQualityTexts[] = {
    {0, "RAW"}, {1, "Super Fine"}, {2, "Fine"}, {3, "Standard"}, {4, "Economy"}, {5, "Extra Fine"},
};
constexpr Enumeration kQuality = Enum(kQualityTexts, Sign::kUnsigned, "");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "");

void LensType(const MakerEntry& e) {
    const uint32_t type = StoredValue(e);
    if (const SonyLens* lens = FindAmountLens(type)) return exif::SetRowValue(e.row(), NamedLensText(*lens, {}));
    SetValuef(e.row(), "%u", type);
}

constexpr MakerTag kA100Tags[] = {
    {0x0000, "Version", FormatGenericValue},
    {0x0040, "Compressed Image Size", UnsignedNumber},
    {0x0089, "Preview Image Length", UnsignedNumber},
    {0x0100, "Scene Mode", Enumerated<kSceneMode>},
    {0x0101, "Color Mode", Enumerated<kColorMode>},
    {0x0102, "Image Quality", Enumerated<kQuality>},
    {0x0104, "Flash Exposure Compensation", RationalNumber},
    {0x0105, "Teleconverter", Enumerated<kTeleconverter>},
    {0x0109, "RAW and JPEG Recording", Enumerated<kOffOn>},
    {0x010A, "Zone Matching", Enumerated<kZoneMatching>},
    {0x010B, "Color Temperature", SignedNumber},
    {0x010C, "Lens Type", LensType},
    {0x0111, "Color Compensation Filter", SignedNumber},
    {0x0112, "White Balance Fine Tune", SignedNumber},
    {0x0113, "Image Stabilization", Enumerated<kOffOn>},
    {0x0115, "White Balance", Enumerated<kWhiteBalance>},
};
static_assert(TagsAscend(kA100Tags) && TagsNamed(kA100Tags), "tags ascend, each named");
constexpr MakerTable kA100 = Table(kA100Tags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// ------------------------------------------------------------ value formats

// Minolta's exposure codes: times and apertures in eighths of a stop.
std::string TimeCode(uint32_t v) { return SecondsText(std::exp2((48.0 - v) / 8.0)); }
std::string ApertureCode(uint32_t v) { return Printf("%.1f", std::exp2((v / 8.0 - 1.0) / 2.0)); }
// Light values in eighths, from -13.25.
std::string LightValue(uint32_t v) { return Number(v / 8.0 - 13.25); }

bool TimeShort(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 2) && (out = TimeCode(b.U16(f.at)), true);
}
bool ApertureShort(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 2) && (out = ApertureCode(b.U16(f.at)), true);
}
bool TimeByte(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 1) && (out = TimeCode(b.U8(f.at)), true);
}
bool ApertureByte(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 1) && (out = ApertureCode(b.U8(f.at)), true);
}
bool LightShort(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 2) && (out = LightValue(b.U16(f.at)), true);
}
bool LightByte(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 1) && (out = LightValue(b.U8(f.at)), true);
}
// Compensation settings in hundredths of a stop from -3.
bool CompensationSetting(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 2) && (out = Number(b.U16(f.at) / 100.0 - 3.0), true);
}
// Sharpness, contrast and saturation count from 10.
bool From10(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    const int32_t v = static_cast<int32_t>(b.U16(f.at)) - 10;
    out = v == 0 ? "Normal" : Printf("%+d", v);
    return true;
}
// Hundreds of kelvin.
bool Kelvin100(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 2) && (out = Printf("%u", b.U16(f.at) * 100), true);
}
bool Seconds(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 2) && (out = Printf("%u s", b.U16(f.at)), true);
}
bool IsoByte(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 1) && (out = Printf("%.0f", 100.0 * std::exp2((b.U8(f.at) - 48.0) / 8.0)), true);
}
// Metres by eighths... of a sixteenth: 2^((v - 126) / 16); 255 is infinity.
bool FocusDistance(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 1)) return false;
    out = b.U8(f.at) == 255 ? "inf" : Printf("%.2f m", std::exp2((b.U8(f.at) - 126.0) / 16.0));
    return true;
}
// The lens type stored little-endian in the big-endian block.
bool LensTypeLittle(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    const uint32_t type = b.bytes[f.at] | b.bytes[f.at + 1] << 8;
    const SonyLens* lens = FindAmountLens(type);
    out = lens ? NamedLensText(*lens, {}) : Printf("%u", type);
    return true;
}
bool WbLevels(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 6) && (out = Printf("%u %u %u", b.U16(f.at), b.U16(f.at + 2), b.U16(f.at + 4)), true);
}
bool SerialText(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 12)) return false;
    out.assign(reinterpret_cast<const char*>(b.bytes + f.at), 12);
    out.resize(out.find('\0') == std::string::npos ? out.size() : out.find('\0'));
    return true;
}

// ------------------------------------------------------------ the AF info (tag 0010)

constexpr ValueText kAfSensorTexts[] = {
    {0, "Top-right"}, {1, "Bottom-right"}, {2, "Bottom"}, {3, "Middle Horizontal"},
    {4, "Center Vertical"}, {5, "Top"}, {6, "Top-left"}, {7, "Bottom-left"},
};
constexpr ValueText kFocusLockedTexts[] = {{0, "Manual Focus"}, {4, "No"}, {16, "Continuous Focus"}, {64, "Yes"}};
constexpr ValueText kAfPointTexts[] = {
    {0, "Auto"}, {1, "Center"}, {2, "Top"}, {3, "Top-right"}, {4, "Right"}, {5, "Bottom-right"},
    {6, "Bottom"}, {7, "Bottom-left"}, {8, "Left"}, {9, "Top-left"},
};
constexpr ValueText kAfModeTexts[] = {{0, "DMF"}, {1, "AF-S"}, {2, "AF-C"}, {3, "AF-A"}};
constexpr ValueText kAfAreaTexts[] = {{0, "Wide"}, {1, "Local"}, {2, "Spot"}};
constexpr Enumeration kAfSensor = Enum(kAfSensorTexts, Sign::kUnsigned, "");
constexpr Enumeration kFocusLocked = Enum(kFocusLockedTexts, Sign::kUnsigned, "");
constexpr Enumeration kAfPoint = Enum(kAfPointTexts, Sign::kUnsigned, "");
constexpr Enumeration kAfMode = Enum(kAfModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kAfArea = Enum(kAfAreaTexts, Sign::kUnsigned, "");

constexpr Field kAfInfoFields[] = {
    {1, "AF Sensor Active", ByteField, &kAfSensor},
    {2, "AF Status Active Sensor", AfStatus},
    {4, "AF Status Top-right", AfStatus},
    {6, "AF Status Bottom-right", AfStatus},
    {8, "AF Status Bottom", AfStatus},
    {10, "AF Status Middle Horizontal", AfStatus},
    {12, "AF Status Center Vertical", AfStatus},
    {14, "AF Status Top", AfStatus},
    {16, "AF Status Top-left", AfStatus},
    {18, "AF Status Bottom-left", AfStatus},
    {20, "Focus Locked", ByteField, &kFocusLocked},
    {21, "AF Point", ByteField, &kAfPoint},
    {22, "AF Mode", ByteField, &kAfMode},
    {45, "AF Status Left", AfStatus},
    {47, "AF Status Center Horizontal", AfStatus},
    {49, "AF Status Right", AfStatus},
    {51, "AF Area Mode", ByteField, &kAfArea},
};

// ------------------------------------------------------------ white balance and exposure (tag 0020)

constexpr ValueText kDriveModeTexts[] = {
    {0, "Self-timer 10 sec"}, {1, "Continuous"}, {2, "Single-frame Exposure Bracketing"},
    {3, "Continuous Exposure Bracketing"}, {4, "Self-Timer 2 sec"}, {5, "Single Frame"},
    {8, "White Balance Bracketing Low"}, {9, "White Balance Bracketing High"},
};
constexpr ValueText kRotationTexts[] = {{0, "Horizontal (normal)"}, {1, "Rotate 270 CW"}, {2, "Rotate 90 CW"}};
constexpr ValueText kDroModeTexts[] = {{0, "Off"}, {1, "Standard"}, {2, "Advanced"}};
constexpr ValueText kCompensationModeTexts[] = {{0, "Ambient and Flash"}, {1, "Ambient Only"}};
constexpr ValueText kWbBracketingTexts[] = {{0, "Off"}, {1, "Low"}, {2, "High"}};
constexpr ValueText kFlashFunctionTexts[] = {
    {0, "No flash"}, {768, "Built-in flash"}, {4613, "Manual"}, {4622, "Strobe"},
    {4750, "Fill flash, Pre-flash TTL"}, {4782, "Bounce flash"}, {5134, "Rear sync, ADI"},
    {5262, "Fill flash, ADI"}, {5504, "Wireless"}, {6030, "HSS"},
};
constexpr ValueText kExposureModeTexts[] = {
    {0, "Program"}, {1, "Aperture Priority"}, {2, "Shutter Priority"}, {3, "Manual"}, {4, "Auto"},
    {5, "Program Shift A"}, {6, "Program Shift S"}, {4115, "Portrait"}, {4131, "Sports"}, {4147, "Sunset"},
    {4163, "Night View/Portrait"}, {4179, "Landscape"}, {4227, "Macro"},
};
constexpr ValueText kShotColorModeTexts[] = {
    {0, "Standard"}, {1, "Vivid"}, {2, "Portrait"}, {3, "Landscape"}, {4, "Sunset"}, {5, "Night View"},
    {7, "B&W"}, {8, "Adobe RGB"},
};
constexpr Enumeration kDriveMode = Enum(kDriveModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kRotation = Enum(kRotationTexts, Sign::kUnsigned, "");
constexpr Enumeration kDroMode = Enum(kDroModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kCompensationMode = Enum(kCompensationModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kWbBracketing = Enum(kWbBracketingTexts, Sign::kUnsigned, "");
constexpr Enumeration kFlashFunction = Enum(kFlashFunctionTexts, Sign::kUnsigned, "");
constexpr Enumeration kExposureMode = Enum(kExposureModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kShotColorMode = Enum(kShotColorModeTexts, Sign::kUnsigned, "");

constexpr Field kShotInfoFields[] = {
    {14, "Drive Mode", ByteField, &kDriveMode},
    {16, "Rotation", ByteField, &kRotation},
    {20, "Image Stabilization Setting", ByteField, &kOffOn},
    {21, "Dynamic Range Optimizer Mode", ByteField, &kDroMode},
    {42, "Exposure Compensation Mode", ByteField, &kCompensationMode},
    {43, "WB Bracket Shot Number", ByteField},
    {44, "White Balance Bracketing", ByteField, &kWbBracketing},
    {45, "Exposure Bracket Shot Number", ByteField},
    {49, "Flash Function", ShortField, &kFlashFunction},
    {52, "Exposure Mode", ShortField, &kExposureMode},
    {54, "Color Mode", ShortField, &kShotColorMode},
    {56, "Average LV", LightShort},
    {60, "Frame Number", ByteField},
    {150, "WB RGB Levels", WbLevels},
    {18872, "Exposure Time", TimeByte},
    {18874, "ISO", IsoByte},
    {18875, "Focus Distance", FocusDistance},
    {18877, "Lens Type", LensTypeLittle},
    {18880, "Exposure Compensation", SignedByteField},
    {18881, "Flash Exposure Compensation", SignedByteField},
    {18882, "Image Stabilization", ByteField, &kOffOn},
    {18883, "Brightness Value", LightByte},
    {18885, "Max Aperture", ApertureByte},
    {18887, "F Number", ApertureByte},
    {18908, "Internal Serial Number", SerialText},
};
static_assert(FieldsExtent(ListOf(kShotInfoFields)) <= kSonyA100BlockReadLimit, "the read covers every field");

// ------------------------------------------------------------ camera settings (tag 0114)
//
// Big-endian SHORTs, one setting each; a field's place is twice its index.

constexpr ValueText kDriveMode2Texts[] = {
    {0, "Self-timer 10 sec"}, {1, "Continuous"}, {4, "Self-timer 2 sec"}, {5, "Single Frame"},
    {8, "White Balance Bracketing Low"}, {9, "White Balance Bracketing High"},
    {770, "Single-frame Bracketing Low"}, {771, "Continous Bracketing Low"},
    {1794, "Single-frame Bracketing High"}, {1795, "Continuous Bracketing High"},
};
constexpr ValueText kWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Daylight"}, {2, "Cloudy"}, {3, "Shade"}, {4, "Tungsten"}, {5, "Fluorescent"},
    {6, "Flash"}, {256, "Kelvin"}, {512, "Manual"},
};
constexpr ValueText kFocusModeTexts[] = {{0, "AF-S"}, {1, "AF-C"}, {4, "AF-A"}, {5, "Manual"}, {6, "DMF"}};
constexpr ValueText kAfPointSelectedTexts[] = {
    {1, "Center"}, {2, "Top"}, {3, "Top-right"}, {4, "Right"}, {5, "Bottom-right"}, {6, "Bottom"},
    {7, "Bottom-left"}, {8, "Left"}, {9, "Top-left"},
};
constexpr ValueText kFlashModeTexts[] = {{0, "Auto"}, {2, "Rear Sync"}, {3, "Wireless"}, {4, "Fill Flash"}};
constexpr ValueText kMeteringModeTexts[] = {{0, "Multi-segment"}, {1, "Center-weighted average"}, {2, "Spot"}};
constexpr ValueText kIsoSettingTexts[] = {
    {0, "Auto"}, {48, "100"}, {56, "200"}, {64, "400"}, {72, "800"}, {80, "1600"},
    {174, "80 (Zone Matching Low)"}, {184, "200 (Zone Matching High)"},
};
constexpr ValueText kZoneMatchingModeTexts[] = {{0, "Off"}, {1, "Standard"}, {2, "Advanced"}};
constexpr ValueText kSettingColorModeTexts[] = {
    {0, "Standard"}, {1, "Vivid"}, {2, "Portrait"}, {3, "Landscape"}, {4, "Sunset"}, {5, "Night Scene"},
    {7, "B&W"}, {8, "Adobe RGB"},
};
constexpr ValueText kColorSpaceTexts[] = {{0, "sRGB"}, {2, "B&W"}, {5, "Adobe RGB"}};
constexpr ValueText kFlashMeteringTexts[] = {{0, "ADI (Advanced Distance Integration)"}, {1, "Pre-flash TTL"}};
constexpr ValueText kPriorityTexts[] = {{0, "AF"}, {1, "Release"}};
constexpr ValueText kDriveTexts[] = {
    {0, "Single Frame"}, {1, "Continuous"}, {2, "Self-timer"}, {3, "Continuous Bracketing"},
    {4, "Single-Frame Bracketing"}, {5, "White Balance Bracketing"},
};
constexpr ValueText kSelfTimerTexts[] = {{0, "10 s"}, {4, "2 s"}};
constexpr ValueText kContinuousBracketingTexts[] = {{771, "Low"}, {1795, "High"}};
constexpr ValueText kSingleBracketingTexts[] = {{770, "Low"}, {1794, "High"}};
constexpr ValueText kWbBracketingStepTexts[] = {{8, "Low"}, {9, "High"}};
constexpr ValueText kWbSettingTexts[] = {
    {0, "Auto"}, {1, "Preset"}, {2, "Custom"}, {3, "Color Temperature/Color Filter"},
    {32769, "Preset"}, {32770, "Custom"}, {32771, "Color Temperature/Color Filter"},
};
constexpr ValueText kPresetWbTexts[] = {
    {1, "Daylight"}, {2, "Cloudy"}, {3, "Shade"}, {4, "Tungsten"}, {5, "Fluorescent"}, {6, "Flash"},
};
constexpr ValueText kTemperatureSettingTexts[] = {{0, "Temperature"}, {2, "Color Filter"}};
constexpr ValueText kCustomWbSettingTexts[] = {{0, "Setup"}, {1, "Recall"}};
constexpr ValueText kCustomWbErrorTexts[] = {{0, "OK"}, {1, "Error"}};
constexpr ValueText kImageSizeTexts[] = {{0, "Standard"}, {1, "Medium"}, {2, "Small"}};
constexpr ValueText kSonyQualityTexts[] = {{0, "RAW"}, {32, "Fine"}, {34, "RAW + JPEG"}, {48, "Standard"}};
constexpr ValueText kPlaybackSetupTexts[] = {
    {0, "Image and Information"}, {1, "Image Only"}, {3, "Image and Histogram"},
};
constexpr ValueText kOnOffTexts[] = {{0, "On"}, {1, "Off"}};  // the lock and assist settings count on from 0
constexpr ValueText kFlashDefaultTexts[] = {{0, "Auto"}, {1, "Fill Flash"}};
constexpr ValueText kBracketOrderTexts[] = {{0, "0 - +"}, {1, "- 0 +"}};
constexpr ValueText kFocusHoldTexts[] = {{0, "Focus Hold"}, {1, "DOF Preview"}};
constexpr ValueText kAelButtonTexts[] = {{0, "Hold"}, {1, "Toggle"}, {2, "Spot Hold"}, {3, "Spot Toggle"}};
constexpr ValueText kControlDialTexts[] = {{0, "Shutter Speed"}, {1, "Aperture"}};
constexpr ValueText kIlluminationTexts[] = {{0, "0.3 s"}, {1, "0.6 s"}, {2, "Off"}};
constexpr ValueText kMonitorOffTexts[] = {{0, "Automatic"}, {1, "Manual"}};
constexpr ValueText kRecordDisplayTexts[] = {{0, "Auto Rotate"}, {1, "Horizontal"}};
constexpr ValueText kPlayDisplayTexts[] = {{0, "Auto Rotate"}, {1, "Manual Rotate"}};
// The exposure scale in the finder: thirds and halves of a stop around 128.
constexpr ValueText kIndicatorTexts[] = {
    {0, "Not Indicated"}, {1, "Under Scale"}, {119, "Bottom of Scale"}, {120, "-2.0"}, {121, "-1.7"},
    {122, "-1.5"}, {123, "-1.3"}, {124, "-1.0"}, {125, "-0.7"}, {126, "-0.5"}, {127, "-0.3"}, {128, "0"},
    {129, "+0.3"}, {130, "+0.5"}, {131, "+0.7"}, {132, "+1.0"}, {133, "+1.3"}, {134, "+1.5"},
    {135, "+1.7"}, {136, "+2.0"}, {253, "Top of Scale"}, {254, "Over Scale"},
};
constexpr ValueText kOffScaleTexts[] = {{0, "Within Range"}, {1, "Under/Over Range"}, {255, "Out of Range"}};
constexpr ValueText kFocusSwitchTexts[] = {{0, "AF"}, {1, "MF"}};
constexpr ValueText kFlashTypeTexts[] = {{0, "Off"}, {1, "Built-in"}, {2, "External"}};
constexpr ValueText kSettingRotationTexts[] = {{0, "Horizontal (Normal)"}, {1, "Rotate 270 CW"}, {2, "Rotate 90 CW"}};
constexpr ValueText kBatteryTexts[] = {
    {3, "Very Low"}, {4, "Low"}, {5, "Half Full"}, {6, "Sufficient Power Remaining"},
};

constexpr Enumeration kDriveMode2 = Enum(kDriveMode2Texts, Sign::kUnsigned, "");
constexpr Enumeration kSettingWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "");
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kAfPointSelected = Enum(kAfPointSelectedTexts, Sign::kUnsigned, "");
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kMeteringMode = Enum(kMeteringModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kIsoSetting = Enum(kIsoSettingTexts, Sign::kUnsigned, "");
constexpr Enumeration kZoneMatchingMode = Enum(kZoneMatchingModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kSettingColorMode = Enum(kSettingColorModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kColorSpace = Enum(kColorSpaceTexts, Sign::kUnsigned, "");
constexpr Enumeration kFlashMetering = Enum(kFlashMeteringTexts, Sign::kUnsigned, "");
constexpr Enumeration kPriority = Enum(kPriorityTexts, Sign::kUnsigned, "");
constexpr Enumeration kDrive = Enum(kDriveTexts, Sign::kUnsigned, "");
constexpr Enumeration kSelfTimer = Enum(kSelfTimerTexts, Sign::kUnsigned, "");
constexpr Enumeration kContinuousBracketing = Enum(kContinuousBracketingTexts, Sign::kUnsigned, "");
constexpr Enumeration kSingleBracketing = Enum(kSingleBracketingTexts, Sign::kUnsigned, "");
constexpr Enumeration kWbBracketingStep = Enum(kWbBracketingStepTexts, Sign::kUnsigned, "");
constexpr Enumeration kWbSetting = Enum(kWbSettingTexts, Sign::kUnsigned, "");
constexpr Enumeration kPresetWb = Enum(kPresetWbTexts, Sign::kUnsigned, "");
constexpr Enumeration kTemperatureSetting = Enum(kTemperatureSettingTexts, Sign::kUnsigned, "");
constexpr Enumeration kCustomWbSetting = Enum(kCustomWbSettingTexts, Sign::kUnsigned, "");
constexpr Enumeration kCustomWbError = Enum(kCustomWbErrorTexts, Sign::kUnsigned, "");
constexpr Enumeration kImageSize = Enum(kImageSizeTexts, Sign::kUnsigned, "");
constexpr Enumeration kSonyQuality = Enum(kSonyQualityTexts, Sign::kUnsigned, "");
constexpr Enumeration kPlaybackSetup = Enum(kPlaybackSetupTexts, Sign::kUnsigned, "");
constexpr Enumeration kOnOff = Enum(kOnOffTexts, Sign::kUnsigned, "");
constexpr Enumeration kFlashDefault = Enum(kFlashDefaultTexts, Sign::kUnsigned, "");
constexpr Enumeration kBracketOrder = Enum(kBracketOrderTexts, Sign::kUnsigned, "");
constexpr Enumeration kFocusHold = Enum(kFocusHoldTexts, Sign::kUnsigned, "");
constexpr Enumeration kAelButton = Enum(kAelButtonTexts, Sign::kUnsigned, "");
constexpr Enumeration kControlDial = Enum(kControlDialTexts, Sign::kUnsigned, "");
constexpr Enumeration kIllumination = Enum(kIlluminationTexts, Sign::kUnsigned, "");
constexpr Enumeration kMonitorOff = Enum(kMonitorOffTexts, Sign::kUnsigned, "");
constexpr Enumeration kRecordDisplay = Enum(kRecordDisplayTexts, Sign::kUnsigned, "");
constexpr Enumeration kPlayDisplay = Enum(kPlayDisplayTexts, Sign::kUnsigned, "");
constexpr Enumeration kIndicator = Enum(kIndicatorTexts, Sign::kUnsigned, "");
constexpr Enumeration kOffScale = Enum(kOffScaleTexts, Sign::kUnsigned, "");
constexpr Enumeration kFocusSwitch = Enum(kFocusSwitchTexts, Sign::kUnsigned, "");
constexpr Enumeration kFlashType = Enum(kFlashTypeTexts, Sign::kUnsigned, "");
constexpr Enumeration kSettingRotation = Enum(kSettingRotationTexts, Sign::kUnsigned, "");
constexpr Enumeration kBattery = Enum(kBatteryTexts, Sign::kUnsigned, "");

constexpr uint16_t Index(uint16_t i) { return static_cast<uint16_t>(2 * i); }

constexpr Field kSettingsFields[] = {
    {Index(0), "Exposure Mode", ShortField, &kExposureMode},
    {Index(1), "Exposure Compensation Setting", CompensationSetting},
    {Index(5), "High Speed Sync", ShortField, &kOffOn},
    {Index(6), "Shutter Speed Setting", TimeShort},
    {Index(7), "Aperture Setting", ApertureShort},
    {Index(8), "Exposure Time", TimeShort},
    {Index(9), "F Number", ApertureShort},
    {Index(10), "Drive Mode 2", ShortField, &kDriveMode2},
    {Index(11), "White Balance", ShortField, &kSettingWhiteBalance},
    {Index(12), "Focus Mode", ShortField, &kFocusMode},
    {Index(13), "AF Point Selected", ShortField, &kAfPointSelected},
    {Index(14), "AF Area Mode", ShortField, &kAfArea},
    {Index(15), "Flash Mode", ShortField, &kFlashMode},
    {Index(16), "Flash Exposure Comp. Setting", CompensationSetting},
    {Index(18), "Metering Mode", ShortField, &kMeteringMode},
    {Index(19), "ISO Setting", ShortField, &kIsoSetting},
    {Index(20), "Zone Matching Mode", ShortField, &kZoneMatchingMode},
    {Index(21), "Dynamic Range Optimizer", ShortField, &kDroMode},
    {Index(22), "Color Mode", ShortField, &kSettingColorMode},
    {Index(23), "Color Space", ShortField, &kColorSpace},
    {Index(24), "Sharpness", From10},
    {Index(25), "Contrast", From10},
    {Index(26), "Saturation", From10},
    {Index(28), "Flash Metering", ShortField, &kFlashMetering},
    {Index(29), "Priority Setup Shutter Release", ShortField, &kPriority},
    {Index(30), "Drive Mode", ShortField, &kDrive},
    {Index(31), "Self Timer Time", ShortField, &kSelfTimer},
    {Index(32), "Continuous Bracketing", ShortField, &kContinuousBracketing},
    {Index(33), "Single Frame Bracketing", ShortField, &kSingleBracketing},
    {Index(34), "White Balance Bracketing", ShortField, &kWbBracketingStep},
    {Index(35), "White Balance Setting", ShortField, &kWbSetting},
    {Index(36), "Preset White Balance", ShortField, &kPresetWb},
    {Index(37), "Color Temperature Setting", ShortField, &kTemperatureSetting},
    {Index(38), "Custom WB Setting", ShortField, &kCustomWbSetting},
    {Index(39), "Dynamic Range Optimizer Setting", ShortField, &kDroMode},
    {Index(50), "Free Memory Card Images", ShortField},
    {Index(52), "Custom WB Red Level", ShortField},
    {Index(53), "Custom WB Green Level", ShortField},
    {Index(54), "Custom WB Blue Level", ShortField},
    {Index(55), "Custom WB Error", ShortField, &kCustomWbError},
    {Index(56), "White Balance Fine Tune", SignedShortField},
    {Index(57), "Color Temperature", Kelvin100},
    {Index(58), "Color Compensation Filter", SignedShortField},
    {Index(59), "Sony Image Size", ShortField, &kImageSize},
    {Index(60), "Sony Quality", ShortField, &kSonyQuality},
    {Index(61), "Instant Playback Time", Seconds},
    {Index(62), "Instant Playback Setup", ShortField, &kPlaybackSetup},
    {Index(63), "Noise Reduction", ShortField, &kOffOn},
    {Index(64), "Eye Start AF", ShortField, &kOnOff},
    {Index(65), "Red Eye Reduction", ShortField, &kOffOn},
    {Index(66), "Flash Default", ShortField, &kFlashDefault},
    {Index(67), "Auto Bracket Order", ShortField, &kBracketOrder},
    {Index(68), "Focus Hold Button", ShortField, &kFocusHold},
    {Index(69), "AEL Button", ShortField, &kAelButton},
    {Index(70), "Control Dial Set", ShortField, &kControlDial},
    {Index(71), "Exposure Compensation Mode", ShortField, &kCompensationMode},
    {Index(72), "AF Assist", ShortField, &kOnOff},
    {Index(73), "Card Shutter Lock", ShortField, &kOnOff},
    {Index(74), "Lens Shutter Lock", ShortField, &kOnOff},
    {Index(75), "AF Area Illumination", ShortField, &kIllumination},
    {Index(76), "Monitor Display Off", ShortField, &kMonitorOff},
    {Index(77), "Record Display", ShortField, &kRecordDisplay},
    {Index(78), "Play Display", ShortField, &kPlayDisplay},
    {Index(80), "Exposure Indicator", ShortField, &kIndicator},
    {Index(81), "AEL Exposure Indicator", ShortField, &kIndicator},
    {Index(82), "Exposure Bracketing Indicator Last", ShortField, &kIndicator},
    {Index(83), "Metering Off Scale Indicator", ShortField, &kOffScale},
    {Index(84), "Flash Exposure Indicator", ShortField, &kIndicator},
    {Index(85), "Flash Exposure Indicator Next", ShortField, &kIndicator},
    {Index(86), "Flash Exposure Indicator Last", ShortField, &kIndicator},
    {Index(87), "Image Stabilization", ShortField, &kOffOn},
    {Index(88), "Focus Mode Switch", ShortField, &kFocusSwitch},
    {Index(89), "Flash Type", ShortField, &kFlashType},
    {Index(90), "Rotation", ShortField, &kSettingRotation},
    {Index(91), "AE Lock", ShortField, &kOffOn},
    {Index(94), "Color Temperature", Kelvin100},
    {Index(95), "Color Compensation Filter", SignedShortField},
    {Index(96), "Battery State", ShortField, &kBattery},
};

struct A100Block {
    uint16_t tag;
    bool bigEndian;  // else the file's order
    Fields fields;
};
constexpr A100Block kA100Blocks[] = {
    {0x0010, false, ListOf(kAfInfoFields)},
    {0x0020, true, ListOf(kShotInfoFields)},
    {0x0114, true, ListOf(kSettingsFields)},
};

}  // namespace

void DecodeA100Directory(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                         uint32_t* rowCount) {
    const uint32_t rowsBefore = *rowCount;
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kA100);
    const platform::Cursor input = directory.Whole();
    const SonyFacts none;
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        for (const A100Block& block : kA100Blocks) {
            if (block.tag != entry.tag || entry.type != tiff::kUndefined) continue;
            uint8_t bytes[kSonyA100BlockReadLimit];
            // The reader wants a row for its context; it writes none.
            const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
            const size_t size = exif::ReadRawBlock(context, bytes, std::min(sizeof bytes, FieldsExtent(block.fields)));
            const int order = block.bigEndian ? 1 : input.bigEndian();
            DecodeFields(Block{bytes, size, order, entry, table, rowCount, none}, block.fields);
        }
    });
}

}  // namespace sony
}  // namespace makernotes
