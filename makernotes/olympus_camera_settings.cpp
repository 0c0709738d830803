// The Olympus camera-settings directory (tag 2020): exposure, focus, flash,
// white balance, picture mode and drive.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

#include "olympus_makernote.h"

namespace makernotes {
namespace olympus {
namespace {

constexpr ValueText kFocusModeTexts[] = {
    {0, "Single AF"}, {1, "Sequential shooting AF"}, {2, "Continuous AF"}, {3, "Multi AF"},
    {4, "Face detect"}, {10, "MF"},
};
constexpr BitName kFocusModeBitNames[] = {
    {0, "S-AF"}, {2, "C-AF"}, {4, "MF"}, {5, "Face detect"}, {6, "Imager AF"},
    {7, "Live view magnification frame"}, {8, "AF sensor"}, {9, "Starry sky AF"},
};
constexpr BitSet kFocusModeBits = {kFocusModeBitNames, sizeof kFocusModeBitNames / sizeof kFocusModeBitNames[0], "none"};

// One or two SHORTs: the mode, and on newer cameras the flags of what the
// camera used, after a semicolon.
void FocusMode(const MakerEntry& e) {
    int64_t v[2] = {};
    const size_t n = ReadElements(e, v, 2);
    if (n == 0) return;
    const char* mode = TextOf(kFocusModeTexts, v[0]);
    std::string text = mode ? mode : std::to_string(v[0]);
    if (n > 1) text += "; " + FlagNames(kFocusModeBits, static_cast<uint32_t>(v[1]));
    exif::SetRowValue(e.row(), text);
}

constexpr ValueText kExposureModeTexts[] = {
    {1, "Manual"}, {2, "Program"}, {3, "Aperture-priority AE"}, {4, "Shutter speed priority AE"}, {5, "Program-shift"},
};
constexpr Enumeration kExposureMode = Enum(kExposureModeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kMeteringModeTexts[] = {
    {2, "Center-weighted average"}, {3, "Spot"}, {5, "ESP"}, {261, "Pattern+AF"}, {515, "Spot+Highlight control"},
    {1027, "Spot+Shadow control"},
};
constexpr Enumeration kMeteringMode = Enum(kMeteringModeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kFocusProcessTexts[] = {{0, "AF not used"}, {1, "AF used"}};
constexpr Enumeration kFocusProcess = Enum(kFocusProcessTexts, Sign::kUnsigned, "%d");
constexpr ValueText kAfSearchTexts[] = {{0, "Not ready"}, {1, "Ready"}};
constexpr Enumeration kAfSearch = Enum(kAfSearchTexts, Sign::kUnsigned, "%d");

// Each AF area a LONG whose bytes, most significant first, are the corners
// (x1, y1, x2, y2) on a 255-step grid; unused areas are 0.
struct AreaName {
    uint32_t area;
    const char* name;
};
constexpr AreaName kAfAreaNames[] = {{0x79798585, "Center"}};
void AfAreas(const MakerEntry& e) {
    int64_t v[kElementsLimit];
    const size_t n = e.entry().type == kLongType ? ReadElements(e, v, kElementsLimit) : 0;
    std::string text;
    for (size_t i = 0; i < n; ++i) {
        if (v[i] == 0) continue;
        const uint32_t a = static_cast<uint32_t>(v[i]);
        char corners[40];
        std::snprintf(corners, sizeof corners, "(%u,%u)-(%u,%u)", a >> 24, a >> 16 & 0xFF, a >> 8 & 0xFF, a & 0xFF);
        if (!text.empty()) text += ", ";
        for (const AreaName& named : kAfAreaNames)
            if (named.area == a) text += std::string(named.name) + " ";
        text += corners;
    }
    exif::SetRowValue(e.row(), text.empty() ? "none" : text);
}

// Five SRATIONALs: an unused one, then the corners of the selected AF
// area as fractions of the frame, shown in percent; "n/a" when unset.
constexpr size_t kAfPointRationals = 5;
void AfPointSelected(const MakerEntry& e) {
    uint8_t b[kAfPointRationals * 8] = {};
    if (e.entry().type != tiff::kSRational || exif::ReadRawBlock(e.context, b, sizeof b) != sizeof b) return;
    double corner[4] = {};
    for (size_t i = 1; i < kAfPointRationals; ++i) {
        const auto num = static_cast<int32_t>(platform::GetU32(b + 8 * i, e.context.bigEndian()));
        const auto den = static_cast<int32_t>(platform::GetU32(b + 8 * i + 4, e.context.bigEndian()));
        if (den == 0) return exif::SetRowValue(e.row(), "n/a");
        corner[i - 1] = std::trunc(100.0 * num / den) + 0.0;  // whole percent, never "-0"
    }
    SetValuef(e.row(), "(%.0f%%,%.0f%%) (%.0f%%,%.0f%%)", corner[0], corner[1], corner[2], corner[3]);
}

constexpr BitName kFlashModeBitNames[] = {
    {0, "On"}, {1, "Fill-in"}, {2, "Red-eye"}, {3, "Slow-sync"}, {4, "Forced On"}, {5, "2nd Curtain"},
};
constexpr BitSet kFlashModeBits = {kFlashModeBitNames, sizeof kFlashModeBitNames / sizeof kFlashModeBitNames[0], "Off"};
constexpr ValueText kFlashRemoteTexts[] = {
    {0, "Off"}, {1, "Channel 1, Low"}, {2, "Channel 2, Low"}, {3, "Channel 3, Low"}, {4, "Channel 4, Low"},
    {9, "Channel 1, Mid"}, {10, "Channel 2, Mid"}, {11, "Channel 3, Mid"}, {12, "Channel 4, Mid"},
    {17, "Channel 1, High"}, {18, "Channel 2, High"}, {19, "Channel 3, High"}, {20, "Channel 4, High"},
};
constexpr Enumeration kFlashRemote = Enum(kFlashRemoteTexts, Sign::kUnsigned, "%d");
constexpr ValueText kFlashControlTexts[] = {{0, "Off"}, {3, "TTL"}, {4, "Auto"}, {5, "Manual"}};
constexpr Enumeration kFlashControl = Enum(kFlashControlTexts, Sign::kUnsigned, "%d");

constexpr ValueText kWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Auto (keep warm color off)"}, {16, "7500K (fine weather with shade)"}, {17, "6000K (cloudy)"},
    {18, "5300K (fine weather)"}, {20, "3000K (tungsten light)"}, {21, "3600K (tungsten light-like)"},
    {22, "Auto setup"}, {23, "5500K (flash)"}, {33, "6600K (daylight fluorescent)"},
    {34, "4500K (neutral white fluorescent)"}, {35, "4000K (cool white fluorescent)"}, {36, "White fluorescent"},
    {48, "3600K (tungsten light-like)"}, {67, "Underwater"}, {256, "One touch WB 1"}, {257, "One touch WB 2"},
    {258, "One touch WB 3"}, {259, "One touch WB 4"}, {512, "Custom WB 1"}, {513, "Custom WB 2"},
    {514, "Custom WB 3"}, {515, "Custom WB 4"},
};
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "%d");
constexpr ValueText kTemperatureTexts[] = {{0, "Auto"}};
constexpr Enumeration kTemperature = Enum(kTemperatureTexts, Sign::kUnsigned, "%d");
constexpr ValueText kModifiedSaturationTexts[] = {
    {0, "Off"}, {1, "CM1 (red enhance)"}, {2, "CM2 (green enhance)"}, {3, "CM3 (blue enhance)"}, {4, "CM4 (skin tones)"},
};
constexpr Enumeration kModifiedSaturation = Enum(kModifiedSaturationTexts, Sign::kUnsigned, "%d");
constexpr ValueText kColorSpaceTexts[] = {{0, "sRGB"}, {1, "Adobe RGB"}, {2, "Pro Photo RGB"}};
constexpr ValueText kSceneModeTexts[] = {
    {0, "Standard"}, {6, "Auto"}, {7, "Sport"}, {8, "Portrait"}, {9, "Landscape+Portrait"}, {10, "Landscape"},
    {11, "Night Scene"}, {12, "Self Portrait"}, {13, "Panorama"}, {14, "2 in 1"}, {15, "Movie"},
    {16, "Landscape+Portrait"}, {17, "Night+Portrait"}, {18, "Indoor"}, {19, "Fireworks"}, {20, "Sunset"},
    {21, "Beauty Skin"}, {22, "Macro"}, {23, "Super Macro"}, {24, "Food"}, {25, "Documents"}, {26, "Museum"},
    {27, "Shoot & Select"}, {28, "Beach & Snow"}, {30, "Candle"}, {31, "Available Light"}, {32, "Behind Glass"},
    {33, "My Mode"}, {34, "Pet"}, {35, "Underwater Wide1"}, {36, "Underwater Macro"}, {39, "High Key"},
    {40, "Digital Image Stabilization"}, {41, "Auction"}, {42, "Beach"}, {43, "Snow"}, {44, "Underwater Wide2"},
    {45, "Low Key"}, {46, "Children"}, {47, "Vivid"}, {48, "Nature Macro"}, {49, "Underwater Snapshot"},
    {50, "Shooting Guide"}, {54, "Face Portrait"}, {57, "Bulb"}, {59, "Smile Shot"}, {60, "Quick Shutter"},
    {63, "Slow Shutter"}, {64, "Bird Watching"}, {65, "Multiple Exposure"},
};
constexpr Enumeration kSceneMode = Enum(kSceneModeTexts, Sign::kUnsigned, "%d");
constexpr BitName kNoiseReductionBitNames[] = {
    {0, "Noise Reduction"}, {1, "Noise Filter"}, {2, "Noise Filter (ISO Boost)"}, {3, "Auto"},
};

// Three signed SHORTs naming the tone curve; a fourth says whether the
// user chose it.
struct Gradation3 {
    int16_t a, b, c;
    const char* text;
};
constexpr Gradation3 kGradations[] = {
    {-1, -1, 1, "Low Key"}, {0, -1, 1, "Normal"}, {0, 0, 0, "n/a"}, {1, -1, 1, "High Key"},
};
void Gradation(const MakerEntry& e) {
    int64_t v[4] = {};
    const size_t n = ReadElements(e, v, 4, /*signed16=*/true);
    if (n < 3) return SignedNumbers(e);
    const char* text = nullptr;
    for (const Gradation3& g : kGradations)
        if (g.a == v[0] && g.b == v[1] && g.c == v[2]) text = g.text;
    if (!text) return SignedNumbers(e);
    std::string out = text;
    if (n > 3) out += v[3] == 0 ? "; User-Selected" : v[3] == 1 ? "; Auto-Override" : "; " + std::to_string(v[3]);
    exif::SetRowValue(e.row(), out);
}

constexpr ValueText kPictureModeTexts[] = {
    {1, "Vivid"}, {2, "Natural"}, {3, "Muted"}, {4, "Portrait"}, {5, "i-Enhance"}, {6, "e-Portrait"},
    {7, "Color Creator"}, {9, "Color Profile 1"}, {10, "Color Profile 2"}, {11, "Color Profile 3"},
    {12, "Monochrome Profile 1"}, {13, "Monochrome Profile 2"}, {14, "Monochrome Profile 3"},
    {256, "Monotone"}, {512, "Sepia"},
};
constexpr ValueText kBwFilterTexts[] = {{0, "n/a"}, {1, "Neutral"}, {2, "Yellow"}, {3, "Orange"}, {4, "Red"}, {5, "Green"}};
constexpr Enumeration kBwFilter = Enum(kBwFilterTexts, Sign::kSigned, "%d");
constexpr ValueText kPictureToneTexts[] = {{0, "n/a"}, {1, "Neutral"}, {2, "Sepia"}, {3, "Blue"}, {4, "Purple"}, {5, "Green"}};
constexpr Enumeration kPictureTone = Enum(kPictureToneTexts, Sign::kSigned, "%d");

// The art filter: four SHORTs; the first names the filter, the others tune it.
constexpr ValueText kArtFilterTexts[] = {
    {0, "Off"}, {1, "Soft focus"}, {2, "Pop art"}, {3, "Pale & light color"}, {4, "Light tone"},
    {5, "Pin hole"}, {6, "Grainy film"}, {9, "Diorama"}, {10, "Cross process"}, {12, "Fish eye"},
    {13, "Drawing"}, {14, "Gentle sepia"}, {15, "Pale & light color II"}, {16, "Pop art II"},
    {17, "Pin hole II"}, {18, "Pin hole III"}, {19, "Grainy film II"}, {20, "Dramatic tone"},
    {21, "Punk"}, {22, "Soft focus 2"}, {23, "Sparkle"}, {24, "Watercolor"}, {25, "Key line"},
    {26, "Key line II"}, {27, "Miniature"}, {28, "Reflection"}, {29, "Fragmented"},
    {31, "Cross process II"}, {32, "Dramatic tone II"}, {33, "Watercolor I"}, {34, "Watercolor II"},
    {35, "Diorama II"}, {36, "Vintage"}, {37, "Vintage II"}, {38, "Vintage III"}, {39, "Partial color"},
    {40, "Partial color II"}, {41, "Partial color III"},
};

// Up to five SHORTs: the drive (0 a single shot) and the shot's number.
constexpr ValueText kDriveTexts[] = {
    {1, "Continuous Shooting"}, {2, "Exposure Bracketing"}, {3, "White Balance Bracketing"},
    {4, "Exposure+WB Bracketing"},
};
void DriveMode(const MakerEntry& e) {
    int64_t v[2] = {};
    const size_t n = ReadElements(e, v, 2);
    if (n == 0) return;
    if (v[0] == 0) return exif::SetRowValue(e.row(), "Single Shot");
    const char* drive = TextOf(kDriveTexts, v[0]);
    std::string text = drive ? drive : std::to_string(v[0]);
    if (n > 1 && v[1] != 0) text += ", Shot " + std::to_string(v[1]);
    exif::SetRowValue(e.row(), text);
}

// Two SHORTs: the direction (0 no panorama) and the shot's number.
constexpr ValueText kPanoramaModeTexts[] = {
    {1, "Left to Right"}, {2, "Right to Left"}, {3, "Bottom to Top"}, {4, "Top to Bottom"},
};
void PanoramaMode(const MakerEntry& e) {
    int64_t v[2] = {};
    const size_t n = ReadElements(e, v, 2);
    if (n == 0) return;
    if (v[0] == 0) return exif::SetRowValue(e.row(), "Off");
    const char* direction = TextOf(kPanoramaModeTexts, v[0]);
    std::string text = direction ? direction : std::to_string(v[0]);
    if (n > 1) text += ", Shot " + std::to_string(v[1]);
    exif::SetRowValue(e.row(), text);
}

constexpr ValueText kImageQualityTexts[] = {{1, "SQ"}, {2, "HQ"}, {3, "SHQ"}, {4, "RAW"}, {5, "SQ (5)"}};
constexpr Enumeration kImageQuality = Enum(kImageQualityTexts, Sign::kUnsigned, "%d");
constexpr ValueText kStabilisationTexts[] = {
    {0, "Off"}, {1, "On, Mode 1"}, {2, "On, Mode 2"}, {3, "On, Mode 3"}, {4, "On, Mode 4"},
};
constexpr Enumeration kStabilisation = Enum(kStabilisationTexts, Sign::kUnsigned, "%d");

// Tenths of a kilopascal.
void Pressure(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) SetValuef(e.row(), "%g kPa", static_cast<double>(v) / 10);
}
// Two signed LONGs: tenths of a metre and of a foot.
void ManometerReading(const MakerEntry& e) {
    int64_t v[2] = {};
    if (ReadElements(e, v, 2) == 2)
        SetValuef(e.row(), "%g m, %g ft", static_cast<double>(v[0]) / 10, static_cast<double>(v[1]) / 10);
}

constexpr MakerTag kCameraSettingsTags[] = {
    {0x0000, "Camera Settings Version", FormatGenericValue},
    {0x0100, "Preview Image Valid", Enumerated<kNoYes>},
    {0x0102, "Preview Image Length", FormatGenericValue},
    {0x0200, "Exposure Mode", Enumerated<kExposureMode>},
    {0x0201, "AE Lock", Enumerated<kOffOn>},
    {0x0202, "Metering Mode", Enumerated<kMeteringMode>},
    {0x0203, "Exposure Shift", Quotient<kPlain>},
    {0x0300, "Macro Mode", Enumerated<kMacro>},
    {0x0301, "Focus Mode", FocusMode},
    {0x0302, "Focus Process", Enumerated<kFocusProcess>},
    {0x0303, "AF Search", Enumerated<kAfSearch>},
    {0x0304, "AF Areas", AfAreas},
    {0x0305, "AF Point Selected", AfPointSelected},
    {0x0306, "AF Fine Tune", Enumerated<kOffOn>},
    {0x0307, "AF Fine Tune Adjustment", SignedNumbers},
    {0x0400, "Flash Mode", Flags<kFlashModeBits>},
    {0x0401, "Flash Exposure Compensation", Quotient<kPlain>},
    {0x0403, "Flash Remote Control", Enumerated<kFlashRemote>},
    {0x0404, "Flash Control Mode", Enumerated<kFlashControl>},
    {0x0500, "White Balance", Enumerated<kWhiteBalance>},
    {0x0501, "White Balance Temperature", Enumerated<kTemperature>},
    {0x0502, "White Balance Bracket", SignedNumbers},
    {0x0503, "Custom Saturation", SettingWithRange},
    {0x0504, "Modified Saturation", Enumerated<kModifiedSaturation>},
    {0x0505, "Contrast Setting", SettingWithRange},
    {0x0506, "Sharpness Setting", SettingWithRange},
    {0x0507, "Color Space", Enumerated<kColorSpace>},
    {0x0509, "Scene Mode", Enumerated<kSceneMode>},
    {0x050a, "Noise Reduction", Flags<kNoiseReductionBits>},
    {0x050b, "Distortion Correction", Enumerated<kOffOn>},
    {0x050c, "Shading Compensation", Enumerated<kOffOn>},
    {0x050d, "Compression Factor", Quotient<kPlain>},
    {0x050f, "Gradation", Gradation},
    {0x0520, "Picture Mode", Enumerated<kPictureMode>},
    {0x0521, "Picture Mode Saturation", SettingWithRange},
    {0x0523, "Picture Mode Contrast", SettingWithRange},
    {0x0524, "Picture Mode Sharpness", SettingWithRange},
    {0x0525, "Picture Mode B&W Filter", Enumerated<kBwFilter>},
    {0x0526, "Picture Mode Tone", Enumerated<kPictureTone>},
    {0x0529, "Art Filter", Enumerated<kArtFilter>},
    {0x0600, "Drive Mode", DriveMode},
    {0x0601, "Panorama Mode", PanoramaMode},
    {0x0603, "Image Quality 2", Enumerated<kImageQuality>},
    {0x0604, "Image Stabilization", Enumerated<kStabilisation>},
    {0x0900, "Manometer Pressure", Pressure},
    {0x0901, "Manometer Reading", ManometerReading},
};

static_assert(TagsAscend(kCameraSettingsTags) && TagsNamed(kCameraSettingsTags), "tag order");
static_assert(ValuesUnique(kFocusModeTexts) && ValuesUnique(kWhiteBalanceTexts) && ValuesUnique(kArtFilterTexts) &&
                  ValuesUnique(kSceneModeTexts) && ValuesUnique(kFlashRemoteTexts) && ValuesUnique(kPictureModeTexts) &&
                  ValuesUnique(kMeteringModeTexts),
              "enumeration values");

}  // namespace

constexpr Enumeration kColorSpace = Enum(kColorSpaceTexts, Sign::kUnsigned, "%d");
constexpr BitSet kNoiseReductionBits = {kNoiseReductionBitNames,
                                        sizeof kNoiseReductionBitNames / sizeof kNoiseReductionBitNames[0], "(none)"};
constexpr Enumeration kPictureMode = Enum(kPictureModeTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kArtFilter = Enum(kArtFilterTexts, Sign::kUnsigned, "%d");
constexpr MakerTable kCameraSettings = Table(kCameraSettingsTags, ValueRule::kLeadingShort);

}  // namespace olympus
}  // namespace makernotes
