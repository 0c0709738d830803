// Minolta maker notes: a headerless directory whose offsets count from the
// TIFF header. Its plain tags are LONGs; most of what the camera records
// sits in the camera-settings array (tag 0003, in older cameras 0001): an
// UNDEFINED block of big-endian LONGs, one setting per element, big-endian
// whatever the EXIF block's order. The array gives one row per setting.
#include <cmath>
#include <string>

#include "makernote_array.h"
#include "makernote_decoders.h"
#include "makernote_texts.h"

namespace makernotes {
namespace {

enum : uint16_t { kUndefinedType = 7 };

// ------------------------------------------------------------ plain tags

constexpr ValueText kSceneModeTexts[] = {
    {0, "Standard"}, {1, "Portrait"}, {2, "Text"},           {3, "Night Scene"}, {4, "Sunset"},
    {5, "Sports"},   {6, "Landscape"}, {7, "Night Portrait"}, {8, "Macro"},       {9, "Super Macro"},
    {16, "Auto"},    {17, "Night View/Portrait"},
};
constexpr ValueText kColorModeTexts[] = {
    {0, "Natural color"}, {1, "Black & White"}, {2, "Vivid color"}, {3, "Solarization"},
    {4, "Adobe RGB"},     {5, "Sepia"},         {9, "Natural"},     {12, "Portrait"},
    {13, "Natural sRGB"}, {14, "Natural+ sRGB"}, {15, "Landscape"}, {16, "Evening"},
    {17, "Night Scene"},  {18, "Night Portrait"}, {132, "Embedded Adobe RGB"},
};
// The same numbers serve the quality tag and the quality setting.
constexpr ValueText kQualityTexts[] = {
    {0, "RAW"}, {1, "Super Fine"}, {2, "Fine"}, {3, "Standard"}, {4, "Economy"}, {5, "Extra Fine"},
};

constexpr Enumeration kSceneMode = Enum(kSceneModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kColorMode = Enum(kColorModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kQuality = Enum(kQualityTexts, Sign::kUnsigned, "%u");

// The Minolta and Sony A-mount lenses by the number the body records.
constexpr ValueText kLensTexts[] = {
    {0, "Minolta AF 28-85mm F3.5-4.5 New"},     {1, "Minolta AF 80-200mm F2.8 HS-APO G"},
    {2, "Minolta AF 28-70mm F2.8 G"},           {3, "Minolta AF 28-80mm F4-5.6"},
    {4, "Minolta AF 85mm F1.4G"},               {5, "Minolta AF 35-70mm F3.5-4.5 [II]"},
    {6, "Minolta AF 24-85mm F3.5-4.5 [New]"},   {8, "Minolta AF 70-210mm F4.5-5.6 [II]"},
    {9, "Minolta AF 50mm F3.5 Macro"},          {10, "Minolta AF 28-105mm F3.5-4.5 [New]"},
    {11, "Minolta AF 300mm F4 HS-APO G"},       {12, "Minolta AF 100mm F2.8 Soft Focus"},
    {14, "Minolta AF 100-400mm F4.5-6.7 APO"},  {15, "Minolta AF 400mm F4.5 HS-APO G"},
    {16, "Minolta AF 17-35mm F3.5 G"},          {17, "Minolta AF 20-35mm F3.5-4.5"},
    {18, "Minolta AF 28-80mm F3.5-5.6 II"},     {19, "Minolta AF 35mm F1.4 G"},
    {20, "Minolta/Sony 135mm F2.8 [T4.5] STF"}, {22, "Minolta AF 35-80mm F4-5.6 II"},
    {23, "Minolta AF 200mm F4 Macro APO G"},    {27, "Minolta AF 85mm F1.4 G (D)"},
    {29, "Minolta/Sony AF 75-300mm F4.5-5.6 (D)"}, {33, "Minolta/Sony AF 70-200mm F2.8 G"},
    {35, "Minolta AF 85mm F1.4 G (D) Limited"}, {36, "Minolta AF 28-100mm F3.5-5.6 (D)"},
    {38, "Minolta AF 17-35mm F2.8-4 (D)"},      {39, "Minolta AF 28-75mm F2.8 (D)"},
    {40, "Minolta/Sony AF DT 18-70mm F3.5-5.6 (D)"}, {42, "Minolta/Sony AF DT 18-200mm F3.5-6.3 (D)"},
    {43, "Sony 35mm F1.4 G (SAL35F14G)"},       {44, "Sony 50mm F1.4 (SAL50F14)"},
    {45, "Carl Zeiss Planar T* 85mm F1.4 ZA (SAL85F14Z)"},
    {46, "Carl Zeiss Vario-Sonnar T* DT 16-80mm F3.5-4.5 ZA (SAL1680Z)"},
    {47, "Carl Zeiss Sonnar T* 135mm F1.8 ZA (SAL135F18Z)"},
    {49, "Sony DT 55-200mm F4-5.6 (SAL55200)"}, {50, "Sony DT 18-250mm F3.5-6.3 (SAL18250)"},
    {51, "Sony DT 16-105mm F3.5-5.6 (SAL16105)"}, {53, "Sony 70-400mm F4-5.6 G SSM (SAL70400G)"},
    {56, "Sony DT 55-200mm F4-5.6 SAM (SAL55200-2)"}, {58, "Sony DT 30mm F2.8 Macro SAM (SAL30M28)"},
    {59, "Sony 28-75mm F2.8 SAM (SAL2875)"},    {60, "Carl Zeiss Distagon T* 24mm F2 ZA SSM (SAL24F20Z)"},
    {61, "Sony 85mm F2.8 SAM (SAL85F28)"},      {62, "Sony DT 35mm F1.8 SAM (SAL35F18)"},
    {63, "Sony DT 16-50mm F2.8 SSM (SAL1650)"},
};
static_assert(ValuesUnique(kLensTexts), "one name per lens number");
constexpr Enumeration kLens = Enum(kLensTexts, Sign::kUnsigned, "%u");

constexpr Enumeration kTeleconverter = Enum(kTeleconverterTexts, Sign::kUnsigned, "%u");
constexpr ValueText kStabilizationTexts[] = {{1, "Off"}, {5, "On"}};
constexpr Enumeration kStabilization = Enum(kStabilizationTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%u");
constexpr ValueText kZoneMatchingTexts[] = {{0, "ISO Setting Used"}, {1, "High Key"}, {2, "Low Key"}};
constexpr Enumeration kZoneMatching = Enum(kZoneMatchingTexts, Sign::kUnsigned, "%u");
constexpr ValueText kWhiteBalancePlainTexts[] = {
    {0x00, "Auto"}, {0x01, "Color Temperature/Color Filter"}, {0x10, "Daylight"}, {0x20, "Cloudy"},
    {0x30, "Shade"}, {0x40, "Tungsten"}, {0x50, "Flash"}, {0x60, "Fluorescent"}, {0x70, "Custom"},
};
constexpr Enumeration kWhiteBalancePlain = Enum(kWhiteBalancePlainTexts, Sign::kUnsigned, "%u");

void UnsignedLong(const MakerEntry& e) { SetValuef(e.row(), "%u", e.entry().valueField); }
void SignedLong(const MakerEntry& e) { SetValuef(e.row(), "%d", static_cast<int32_t>(e.entry().valueField)); }

// One signed rational after the entries, as a plain number.
void SignedRational(const MakerEntry& e) {
    uint8_t b[8] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) < sizeof b) return;
    const int32_t num = static_cast<int32_t>(platform::GetU32(b, e.context.bigEndian()));
    const int32_t den = static_cast<int32_t>(platform::GetU32(b + 4, e.context.bigEndian()));
    if (den == 0) return SetValuef(e.row(), "%d", num);
    SetValuef(e.row(), "%.15g", static_cast<double>(num) / den);
}

// A block written only while stabilisation is on (the DiMAGE A1 and A2).
void PresentMeansOn(const MakerEntry& e) { exif::SetRowValue(e.row(), "On"); }

constexpr MakerTag kMinoltaTags[] = {
    {0, "Version", FormatGenericValue},
    {24, "Image Stabilization", PresentMeansOn},            // 0018
    {64, "Compressed Image Size", UnsignedLong},            // 0040
    {137, "Preview Image Length", UnsignedLong},            // 0089
    {256, "Scene Mode", kSceneMode},                        // 0100
    {257, "Color Mode", kColorMode},                        // 0101
    {258, "Image Quality", kQuality},                       // 0102
    {260, "Flash Exposure Compensation", SignedRational},   // 0104
    {261, "Teleconverter", kTeleconverter},                 // 0105
    {263, "Image Stabilization", kStabilization},           // 0107
    {265, "Raw and JPEG Recording", kOffOn},           // 0109
    {266, "Zone Matching", kZoneMatching},                  // 010A
    {267, "Color Temperature", UnsignedLong},               // 010B
    {268, "Lens Type", kLens},                              // 010C
    {273, "Color Compensation Filter", SignedLong},         // 0111
    {274, "White Balance Fine Tune", SignedLong},           // 0112
    {277, "White Balance", kWhiteBalancePlain},             // 0115
};
static_assert(TagsAscend(kMinoltaTags) && TagsNamed(kMinoltaTags), "Minolta tags ascend");
// The plain tags are LONGs: the field read as one word holds the value in
// either byte order, and the enumerations need only its low half.
constexpr MakerTable kMinolta = Table(kMinoltaTags, ValueRule::kLowHalfOfWord);

// ------------------------------------------------------------ camera settings

constexpr ValueText kExposureModeTexts[] = {
    {0, "Program"}, {1, "Aperture Priority"}, {2, "Shutter Priority"}, {3, "Manual"},
};
constexpr ValueText kFlashModeTexts[] = {
    {0, "Fill flash"}, {1, "Red-eye reduction"}, {2, "Rear flash sync"}, {3, "Wireless"}, {4, "Off"},
};
constexpr ValueText kImageSizeTexts[] = {
    {0, "Full"},      {1, "1600x1200"}, {2, "1280x960"},  {3, "640x480"},
    {6, "2080x1560"}, {7, "2560x1920"}, {8, "3264x2176"},
};
constexpr ValueText kDriveModeTexts[] = {
    {0, "Single"},   {1, "Continuous"}, {2, "Self-timer"},   {4, "Bracketing"},
    {5, "Interval"}, {6, "UHS continuous"}, {7, "HS continuous"},
};
constexpr ValueText kMeteringTexts[] = {
    {0, "Multi-segment"}, {1, "Center-weighted average"}, {2, "Spot"},
};
constexpr ValueText kDigitalZoomTexts[] = {{0, "Off"}, {1, "Electronic magnification"}, {2, "2x"}};
constexpr ValueText kSharpnessTexts[] = {{0, "Hard"}, {1, "Normal"}, {2, "Soft"}};
constexpr ValueText kIsoSettingTexts[] = {
    {0, "100"}, {1, "200"}, {2, "400"}, {3, "800"}, {4, "Auto"}, {5, "64"},
};
constexpr ValueText kFocusModeTexts[] = {{0, "AF"}, {1, "MF"}};
constexpr ValueText kFocusAreaTexts[] = {{0, "Wide Focus (normal)"}, {1, "Spot Focus"}};

constexpr Enumeration kExposureMode = Enum(kExposureModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kImageSize = Enum(kImageSizeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kDriveMode = Enum(kDriveModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kMetering = Enum(kMeteringTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kDigitalZoom = Enum(kDigitalZoomTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kSharpness = Enum(kSharpnessTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kIsoSetting = Enum(kIsoSettingTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFocusArea = Enum(kFocusAreaTexts, Sign::kUnsigned, "%u");

// The older cameras number the white balance 0 to 12; the A2 puts a preset
// in the top byte with 0x800000 added, and moves it by steps of 0x10000 for
// its fine tuning of up to three steps either way.
constexpr ValueText kWhiteBalanceTexts[] = {
    {0, "Auto"},          {1, "Daylight"},      {2, "Cloudy"},        {3, "Tungsten"},
    {5, "Custom"},        {7, "Fluorescent"},   {8, "Fluorescent 2"}, {11, "Custom 2"},
    {12, "Custom 3"},     {0x0800000, "Auto"},  {0x1800000, "Daylight"}, {0x2800000, "Cloudy"},
    {0x3800000, "Tungsten"}, {0x4800000, "Flash"}, {0x5800000, "Fluorescent"}, {0x6800000, "Shade"},
    {0x7800000, "Custom 1"}, {0x8800000, "Custom 2"}, {0x9800000, "Custom 3"},
};

constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "%u");

void WhiteBalance(const ArrayElements& a, exif::TagRecord& row) {
    const int64_t v = a.At(3);
    if (const char* text = EnumerationText(kWhiteBalance, v)) return exif::SetRowValue(row, text);
    const int64_t preset = (v & 0xFF000000) + 0x800000;
    const char* text = v > 0xFFFF ? EnumerationText(kWhiteBalance, preset) : nullptr;
    if (!text) return SetValuef(row, "%lld", static_cast<long long>(v));
    SetValuef(row, "%s %+lld", text, static_cast<long long>((v - preset) / 0x10000));
}

// The camera stores speeds, times and apertures in eighths of a stop.
double Stops(int64_t eighths, int64_t zero) { return std::exp2(static_cast<double>(eighths - zero) / 8.0); }

void Iso(const ArrayElements& a, exif::TagRecord& row) { SetValuef(row, "%.0f", 100.0 * Stops(a.At(8), 48)); }

void ExposureTime(const ArrayElements& a, exif::TagRecord& row) {
    const double seconds = 1.0 / Stops(a.At(9), 48);
    if (seconds < 1.0) return SetValuef(row, "1/%.0f", 1.0 / seconds);
    SetValuef(row, "%.1f", seconds);
}

// Half the stops of a speed: f-numbers go by the square root of two.
double Aperture(int64_t v) { return std::sqrt(Stops(v, 8)); }

void FNumber(const ArrayElements& a, exif::TagRecord& row) { SetValuef(row, "F %.1f", Aperture(a.At(10))); }

// Thirds of a stop, 6 meaning none.
void ExposureCompensation(const ArrayElements& a, exif::TagRecord& row) {
    const int64_t thirds = a.At(13) - 6;
    if (thirds == 0) return exif::SetRowValue(row, "0 EV");
    SetValuef(row, "%+.1f EV", static_cast<double>(thirds) / 3.0);
}

// 1/256 mm.
void FocalLength(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%.1f mm", static_cast<double>(a.At(18)) / 256.0);
}

// Millimetres; 0 is infinity.
void FocusDistance(const ArrayElements& a, exif::TagRecord& row) {
    const int64_t mm = a.At(19);
    if (mm == 0) return exif::SetRowValue(row, "Infinity");
    SetValuef(row, "%.2f m", static_cast<double>(mm) / 1000.0);
}

// Date and time pack year (or hour) in the top half, then one byte each.
void Date(const ArrayElements& a, exif::TagRecord& row) {
    const int64_t v = a.At(21);
    SetValuef(row, "%04d:%02d:%02d", static_cast<int>(v >> 16), static_cast<int>((v >> 8) & 0xFF),
              static_cast<int>(v & 0xFF));
}

void Time(const ArrayElements& a, exif::TagRecord& row) {
    const int64_t v = a.At(22);
    SetValuef(row, "%02d:%02d:%02d", static_cast<int>(v >> 16), static_cast<int>((v >> 8) & 0xFF),
              static_cast<int>(v & 0xFF));
}

void MaxAperture(const ArrayElements& a, exif::TagRecord& row) { SetValuef(row, "F %.1f", Aperture(a.At(23))); }

constexpr ValueText kBracketStepTexts[] = {{0, "1/3 EV"}, {1, "2/3 EV"}, {2, "1 EV"}};
constexpr ValueText kSubjectProgramTexts[] = {
    {0, "None"}, {1, "Portrait"}, {2, "Text"}, {3, "Night portrait"}, {4, "Sunset"}, {5, "Sports action"},
};
constexpr ValueText kModelTexts[] = {
    {0, "DiMAGE 7, X1, X21 or X31"}, {1, "DiMAGE 5"},  {2, "DiMAGE S304"}, {3, "DiMAGE S404"},
    {4, "DiMAGE 7i"},                {5, "DiMAGE 7Hi"}, {6, "DiMAGE A1"},  {7, "DiMAGE A2 or S414"},
};
constexpr ValueText kIntervalModeTexts[] = {{0, "Still Image"}, {1, "Time-lapse Movie"}};
constexpr ValueText kFolderNameTexts[] = {{0, "Standard Form"}, {1, "Data Form"}};
constexpr ValueText kInternalFlashTexts[] = {{0, "No"}, {1, "Fired"}};
constexpr ValueText kWideFocusZoneTexts[] = {
    {0, "No zone"}, {1, "Center zone (horizontal orientation)"}, {2, "Center zone (vertical orientation)"},
    {3, "Left zone"}, {4, "Right zone"},
};
constexpr ValueText kDecPositionTexts[] = {{0, "Exposure"}, {1, "Contrast"}, {2, "Saturation"}, {3, "Filter"}};
constexpr ValueText kFlashMeteringTexts[] = {
    {0, "ADI (Advanced Distance Integration)"}, {1, "Pre-flash TTL"}, {2, "Manual flash control"},
};
constexpr Enumeration kBracketStep = Enum(kBracketStepTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kSubjectProgram = Enum(kSubjectProgramTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kModel = Enum(kModelTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kIntervalMode = Enum(kIntervalModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFolderName = Enum(kFolderNameTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kInternalFlash = Enum(kInternalFlashTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kWideFocusZone = Enum(kWideFocusZoneTexts, Sign::kUnsigned, "Unknown (%u)");
constexpr Enumeration kDecPosition = Enum(kDecPositionTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFlashMetering = Enum(kFlashMeteringTexts, Sign::kUnsigned, "%u");

// Perl-like number text.
void SetNumber(exif::TagRecord& row, double v) { SetValuef(row, "%.15g", v); }

template <size_t Index>
void Per256(const ArrayElements& a, exif::TagRecord& row) { SetNumber(row, static_cast<double>(a.At(Index)) / 256.0); }

// A setting stepped from a middle value: 0 is "Normal", above it with a sign.
void SetParameter(exif::TagRecord& row, int64_t v) {
    if (v == 0) return exif::SetRowValue(row, "Normal");
    SetValuef(row, v > 0 ? "+%lld" : "%lld", static_cast<long long>(v));
}
// The DiMAGE A2 (model 7, which it shares with the S414) counts these from 5, the others from 3.
int64_t MiddleOf(const ArrayElements& a) { return a.Has(37) && a.At(37) == 7 ? 5 : 3; }
template <size_t Index>
void Parameter(const ArrayElements& a, exif::TagRecord& row) { SetParameter(row, a.At(Index) - MiddleOf(a)); }
void ColorFilter(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%lld", static_cast<long long>(a.At(41) - MiddleOf(a)));
}

// Thirds of a stop as a fraction: 0, +1, -2/3...
void SetThirds(exif::TagRecord& row, int64_t thirds) {
    if (thirds == 0) return exif::SetRowValue(row, "0");
    if (thirds % 3 == 0) return SetValuef(row, "%+lld", static_cast<long long>(thirds / 3));
    SetValuef(row, "%+lld/3", static_cast<long long>(thirds));
}
void FlashExposureComp(const ArrayElements& a, exif::TagRecord& row) { SetThirds(row, a.At(35) - 6); }
void Brightness(const ArrayElements& a, exif::TagRecord& row) { SetNumber(row, static_cast<double>(a.At(44)) / 8.0 - 6.0); }

constexpr ArrayRow kCameraSettings[] = {
    {1, "Exposure Mode", EnumElement<kExposureMode, 1>},
    {2, "Flash Mode", EnumElement<kFlashMode, 2>},
    {3, "White Balance", WhiteBalance},
    {4, "Image Size", EnumElement<kImageSize, 4>},
    {5, "Quality", EnumElement<kQuality, 5>},
    {6, "Drive Mode", EnumElement<kDriveMode, 6>},
    {7, "Metering Mode", EnumElement<kMetering, 7>},
    {8, "ISO", Iso},
    {9, "Exposure Time", ExposureTime},
    {10, "F Number", FNumber},
    {11, "Macro Mode", EnumElement<kOffOn, 11>},
    {12, "Digital Zoom", EnumElement<kDigitalZoom, 12>},
    {13, "Exposure Compensation", ExposureCompensation},
    {14, "Bracket Step", EnumElement<kBracketStep, 14>},
    {16, "Interval Length", NumberElement<16>},
    {17, "Interval Number", NumberElement<17>},
    {18, "Focal Length", FocalLength},
    {19, "Focus Distance", FocusDistance},
    {20, "Flash Fired", EnumElement<kNoYes, 20>},
    {21, "Date", Date},
    {22, "Time", Time},
    {23, "Max Aperture", MaxAperture},
    {26, "File Number Memory", EnumElement<kOffOn, 26>},
    {27, "Last File Number", NumberElement<27>},
    {28, "Color Balance Red", Per256<28>},
    {29, "Color Balance Green", Per256<29>},
    {30, "Color Balance Blue", Per256<30>},
    {31, "Saturation", Parameter<31>},
    {32, "Contrast", Parameter<32>},
    {33, "Sharpness", EnumElement<kSharpness, 33>},
    {34, "Subject Program", EnumElement<kSubjectProgram, 34>},
    {35, "Flash Exposure Compensation", FlashExposureComp},
    {36, "ISO Setting", EnumElement<kIsoSetting, 36>},
    {37, "Model", EnumElement<kModel, 37>},
    {38, "Interval Mode", EnumElement<kIntervalMode, 38>},
    {39, "Folder Name", EnumElement<kFolderName, 39>},
    {40, "Color Mode", EnumElement<kColorMode, 40>},
    {41, "Color Filter", ColorFilter},
    {42, "BW Filter", NumberElement<42>},
    {43, "Internal Flash", EnumElement<kInternalFlash, 43>},
    {44, "Brightness", Brightness},
    {45, "Spot Focus Point X", NumberElement<45>},
    {46, "Spot Focus Point Y", NumberElement<46>},
    {47, "Wide Focus Zone", EnumElement<kWideFocusZone, 47>},
    {48, "Focus Mode", EnumElement<kFocusMode, 48>},
    {49, "Focus Area", EnumElement<kFocusArea, 49>},
    {50, "DEC Position", EnumElement<kDecPosition, 50>},
    {63, "Flash Metering", EnumElement<kFlashMetering, 63>},
};

// ------------------------------------------------------------ Dynax 7D and 5D
//
// Big-endian SHORTs, one setting each: the 7D's under tag 0004, the 5D's
// under tag 0114 (the Sony-made A100 uses that tag otherwise, but its notes
// carry Sony's make and never reach this decoder).

constexpr ValueText kDslrExposureModeTexts[] = {
    {0, "Program"}, {1, "Aperture Priority"}, {2, "Shutter Priority"}, {3, "Manual"},
    {4, "Auto"},    {5, "Program-shift A"},   {6, "Program-shift S"},
};
constexpr ValueText kDslrImageSizeTexts[] = {{0, "Large"}, {1, "Medium"}, {2, "Small"}};
constexpr ValueText kDslrQualityTexts[] = {
    {0, "RAW"}, {16, "Fine"}, {32, "Normal"}, {34, "RAW+JPEG"}, {48, "Economy"},
};
constexpr ValueText k7dWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Daylight"}, {2, "Shade"}, {3, "Cloudy"}, {4, "Tungsten"}, {5, "Fluorescent"},
    {0x100, "Kelvin"}, {0x200, "Manual"},
};
constexpr ValueText k5dWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Daylight"}, {2, "Cloudy"}, {3, "Shade"}, {4, "Tungsten"}, {5, "Fluorescent"},
    {6, "Flash"}, {0x100, "Kelvin"}, {0x200, "Manual"},
};
constexpr ValueText kDslrFocusModeTexts[] = {{0, "AF-S"}, {1, "AF-C"}, {3, "Manual"}, {4, "AF-A"}};
constexpr ValueText kDslrFlashModeTexts[] = {{0, "Normal"}, {1, "Red-eye reduction"}, {2, "Rear flash sync"}};
constexpr ValueText kDslrIsoTexts[] = {
    {0, "Auto"}, {1, "100"}, {3, "200"}, {4, "400"}, {5, "800"}, {6, "1600"}, {7, "3200"},
    {8, "200 (Zone Matching High)"}, {10, "80 (Zone Matching Low)"},
};
constexpr ValueText k7dColorSpaceTexts[] = {{0, "Natural sRGB"}, {1, "Natural+ sRGB"}, {4, "Adobe RGB"}};
constexpr ValueText k5dColorSpaceTexts[] = {
    {0, "Natural sRGB"}, {1, "Natural+ sRGB"}, {2, "Monochrome"}, {4, "Adobe RGB (ICC)"}, {5, "Adobe RGB"},
};
constexpr ValueText kFiredTexts[] = {{0, "Did not fire"}, {1, "Fired"}};
constexpr Enumeration kDslrExposureMode = Enum(kDslrExposureModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kDslrImageSize = Enum(kDslrImageSizeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kDslrQuality = Enum(kDslrQualityTexts, Sign::kUnsigned, "%u");
constexpr Enumeration k7dWhiteBalance = Enum(k7dWhiteBalanceTexts, Sign::kUnsigned, "%u");
constexpr Enumeration k5dWhiteBalance = Enum(k5dWhiteBalanceTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kDslrFocusMode = Enum(kDslrFocusModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kDslrFlashMode = Enum(kDslrFlashModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kDslrIso = Enum(kDslrIsoTexts, Sign::kUnsigned, "%u");
constexpr Enumeration k7dColorSpace = Enum(k7dColorSpaceTexts, Sign::kUnsigned, "%u");
constexpr Enumeration k5dColorSpace = Enum(k5dColorSpaceTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFired = Enum(kFiredTexts, Sign::kUnsigned, "%u");

// Sharpness, contrast and saturation count from 10.
template <size_t Index>
void From10(const ArrayElements& a, exif::TagRecord& row) { SetNumber(row, static_cast<double>(a.At(Index) - 10)); }

constexpr ValueText kAfPointBits[] = {
    {0, "Center"}, {1, "Top"}, {2, "Top-right"}, {3, "Right"}, {4, "Bottom-right"},
    {5, "Bottom"}, {6, "Bottom-left"}, {7, "Left"}, {8, "Top-left"},
};
void AfPoints(const ArrayElements& a, exif::TagRecord& row) {
    const uint32_t mask = static_cast<uint32_t>(a.At(0x10));
    if (mask == 0) return exif::SetRowValue(row, "(none)");
    std::string out;
    for (uint32_t bit = 0; bit < 16; ++bit) {
        if (!(mask >> bit & 1)) continue;
        if (!out.empty()) out += ", ";
        out += bit < 9 ? kAfPointBits[bit].text : "[" + std::to_string(bit) + "]";
    }
    exif::SetRowValue(row, out);
}

// Twenty-fourths of a stop, signed.
void Compensation7d(const ArrayElements& a, exif::TagRecord& row) {
    const double ev = static_cast<int16_t>(a.At(0x1e)) / 24.0 * 1.00001;
    if (std::fabs(ev) < 1e-9) return exif::SetRowValue(row, "0");
    for (int steps : {1, 2, 3}) {
        const double scaled = ev * steps;
        const double whole = std::trunc(scaled);
        if (whole != 0 && whole / scaled > 0.999) {
            return steps == 1 ? SetValuef(row, "%+d", static_cast<int>(whole))
                              : SetValuef(row, "%+d/%d", static_cast<int>(whole), steps);
        }
    }
    SetValuef(row, "%+.3g", ev);
}
// Hundreds of kelvin, signed; 0 when not set.
void Temperature7d(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%d", static_cast<int16_t>(a.At(0x3f)) * 100);
}

constexpr ArrayRow kSettings7d[] = {
    {0x00, "Exposure Mode", EnumElement<kDslrExposureMode, 0x00>},
    {0x02, "Image Size", EnumElement<kDslrImageSize, 0x02>},
    {0x03, "Quality", EnumElement<kDslrQuality, 0x03>},
    {0x04, "White Balance", EnumElement<k7dWhiteBalance, 0x04>},
    {0x0e, "Focus Mode", EnumElement<kDslrFocusMode, 0x0e>},
    {0x10, "AF Points", AfPoints},
    {0x15, "Flash", EnumElement<kOffOn, 0x15>},
    {0x16, "Flash Mode", EnumElement<kDslrFlashMode, 0x16>},
    {0x1c, "ISO Setting", EnumElement<kDslrIso, 0x1c>},
    {0x1e, "Exposure Compensation", Compensation7d},
    {0x25, "Color Space", EnumElement<k7dColorSpace, 0x25>},
    {0x26, "Sharpness", From10<0x26>},
    {0x27, "Contrast", From10<0x27>},
    {0x28, "Saturation", From10<0x28>},
    {0x3f, "Color Temperature", Temperature7d},
};

// Speeds and apertures in eighths of a stop.
void ExposureTime5d(const ArrayElements& a, exif::TagRecord& row) {
    const double seconds = std::exp2((48.0 - static_cast<double>(a.At(0x35))) / 8.0);
    if (seconds > 0 && seconds < 0.25001) return SetValuef(row, "1/%.0f", std::floor(0.5 + 1.0 / seconds));
    SetValuef(row, "%.15g", std::round(seconds * 10) / 10);
}
void FNumber5d(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%.1f", std::exp2((static_cast<double>(a.At(0x36)) - 8.0) / 16.0));
}

constexpr ArrayRow kSettings5d[] = {
    {0x0a, "Exposure Mode", EnumElement<kDslrExposureMode, 0x0a>},
    {0x0c, "Image Size", EnumElement<kDslrImageSize, 0x0c>},
    {0x0d, "Quality", EnumElement<kDslrQuality, 0x0d>},
    {0x0e, "White Balance", EnumElement<k5dWhiteBalance, 0x0e>},
    {0x1f, "Flash", EnumElement<kFired, 0x1f>},
    {0x20, "Flash Mode", EnumElement<kDslrFlashMode, 0x20>},
    {0x25, "Metering Mode", EnumElement<kMetering, 0x25>},
    {0x26, "ISO Setting", EnumElement<kDslrIso, 0x26>},
    {0x2f, "Color Space", EnumElement<k5dColorSpace, 0x2f>},
    {0x30, "Sharpness", From10<0x30>},
    {0x31, "Contrast", From10<0x31>},
    {0x32, "Saturation", From10<0x32>},
    {0x35, "Exposure Time", ExposureTime5d},
    {0x36, "F Number", FNumber5d},
};

constexpr ArrayLayout kBigEndianLongs = {kUndefinedType, 4, Sign::kUnsigned, ElementOrder::kBigEndian};
constexpr ArrayLayout kBigEndianShorts = {kUndefinedType, 2, Sign::kUnsigned, ElementOrder::kBigEndian};
constexpr ArrayTag kArrayTags[] = {
    Array(1, kBigEndianLongs, kCameraSettings),  // older cameras
    Array(3, kBigEndianLongs, kCameraSettings),
    Array(4, kBigEndianShorts, kSettings7d),
    Array(0x114, kBigEndianShorts, kSettings5d),
};
constexpr ArrayTags kMinoltaArrays = Arrays(kArrayTags);

}  // namespace

void DecodeMinoltaMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount) {
    const uint32_t rowsBefore = *rowCount;
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kMinolta);
    DecodeArrayTags(directory, offsetBase, table, rowsBefore, rowCount, kMinoltaArrays);
}

}  // namespace makernotes
