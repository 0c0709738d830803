// Minolta maker notes: a headerless directory whose offsets count from the
// TIFF header. Its plain tags are LONGs; most of what the camera records
// sits in the camera-settings array (tag 0003, in older cameras 0001): an
// UNDEFINED block of big-endian LONGs, one setting per element, big-endian
// whatever the EXIF block's order. The array gives one row per setting.
#include <cmath>

#include "makernote_array.h"
#include "makernote_decoders.h"

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

constexpr MakerTag kMinoltaTags[] = {
    {0, "Version", FormatGenericValue},
    {256, "Scene Mode", kSceneMode},     // 0100
    {257, "Color Mode", kColorMode},     // 0101
    {258, "Image Quality", kQuality},    // 0102
};
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
constexpr ValueText kOffOnTexts[] = {{0, "Off"}, {1, "On"}};
constexpr ValueText kDigitalZoomTexts[] = {{0, "Off"}, {1, "Electronic magnification"}, {2, "2x"}};
constexpr ValueText kNoYesTexts[] = {{0, "No"}, {1, "Yes"}};
constexpr ValueText kSharpnessTexts[] = {{0, "Hard"}, {1, "Normal"}, {2, "Soft"}};
constexpr ValueText kIsoSettingTexts[] = {
    {0, "100"}, {1, "200"}, {2, "400"}, {3, "800"}, {4, "Auto"}, {5, "64"},
};
constexpr ValueText kFocusModeTexts[] = {{0, "AF"}, {1, "MF"}};
constexpr ValueText kFocusAreaTexts[] = {{0, "Wide focus"}, {1, "Spot focus"}};

constexpr Enumeration kExposureMode = Enum(kExposureModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kImageSize = Enum(kImageSizeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kDriveMode = Enum(kDriveModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kMetering = Enum(kMeteringTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%u");
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
    {18, "Focal Length", FocalLength},
    {19, "Focus Distance", FocusDistance},
    {20, "Flash Fired", EnumElement<kNoYes, 20>},
    {21, "Date", Date},
    {22, "Time", Time},
    {23, "Max Aperture", MaxAperture},
    {33, "Sharpness", EnumElement<kSharpness, 33>},
    {36, "ISO Setting", EnumElement<kIsoSetting, 36>},
    {40, "Color Mode", EnumElement<kColorMode, 40>},
    {48, "Focus Mode", EnumElement<kFocusMode, 48>},
    {49, "Focus Area", EnumElement<kFocusArea, 49>},
};

constexpr ArrayLayout kBigEndianLongs = {kUndefinedType, 4, Sign::kUnsigned, ElementOrder::kBigEndian};
constexpr ArrayTag kArrayTags[] = {
    Array(1, kBigEndianLongs, kCameraSettings),  // older cameras
    Array(3, kBigEndianLongs, kCameraSettings),
};
constexpr ArrayTags kMinoltaArrays = Arrays(kArrayTags);

}  // namespace

const MakerTable& MinoltaTags() { return kMinolta; }

void DecodeMinoltaMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount, int bigEndian) {
    const int64_t directory = file.Tell();
    const uint32_t rowsBefore = *rowCount;
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kMinolta);
    DecodeArrayTags(file, directory, offsetBase, table, rowsBefore, rowCount, bigEndian, kMinoltaArrays);
}

}  // namespace makernotes
