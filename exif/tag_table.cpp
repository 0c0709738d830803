#include "tag_table.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "exif_limits.h"

namespace exif {
namespace {

// ------------------------------------------------------------ enumerations

// Texts that several tags share.
constexpr char kAuto[] = "Auto";
constexpr char kManual[] = "Manual";
constexpr char kNormal[] = "Normal";
constexpr char kSoft[] = "Soft";
constexpr char kHard[] = "Hard";

struct Enumeration {
    const EnumText* texts;
    size_t size;
    const char* otherwise;  // printf format for a value not listed; gets the value
    bool numberFirst;       // the value ("%u") stands before its text
};

template <size_t N>
constexpr Enumeration Enum(const EnumText (&texts)[N], const char* otherwise, bool numberFirst = false) {
    return {texts, N, otherwise, numberFirst};
}

constexpr EnumText kCompressionTexts[] = {
    {1, " (None)"}, {2, " (Huffman RLE)"}, {3, " (Group 3 fax encoding)"}, {4, " (Group 4 fax encoding)"},
    {5, " (LZW)"},  {6, " (JPG)"},         {7, " (JPG)"},
};
constexpr Enumeration kCompression = Enum(kCompressionTexts, "%u (Unknown)", /*numberFirst=*/true);

constexpr EnumText kOrientationTexts[] = {
    {1, "Top left"},  {2, "Top right"}, {3, "Bottom right"}, {4, "Bottom left"},
    {5, "Left top"},  {6, "Right top"}, {7, "Right bottom"}, {8, "Left bottom"},
};
constexpr Enumeration kOrientation = Enum(kOrientationTexts, "%u");

constexpr EnumText kResolutionUnitTexts[] = {
    {1, "None"}, {2, "Inches"}, {3, "Centimeters"},
};
constexpr Enumeration kResolutionUnit = Enum(kResolutionUnitTexts, "%u");

constexpr EnumText kExposureProgramTexts[] = {
    {1, "Manual control"},   {2, "Normal program"}, {3, "Aperture priority"}, {4, "Shutter priority"},
    {5, "Creative program"}, {6, "Action program"}, {7, "Portrait mode"},     {8, "Landscape mode"},
};
constexpr Enumeration kExposureProgram = Enum(kExposureProgramTexts, "Not defined");

constexpr EnumText kMeteringModeTexts[] = {
    {0, "Unknown"},    {1, "Average"},       {2, "Center weighted average"}, {3, "Spot"},
    {4, "Multi-spot"}, {5, "Multi-segment"}, {6, "Partial"},
};
constexpr Enumeration kMeteringMode = Enum(kMeteringModeTexts, "%u");

constexpr EnumText kLightSourceTexts[] = {
    {0, kAuto},
    {1, "Daylight"},
    {2, "Fluorescent"},
    {3, "Tungsten"},
    {4, "Flash"},
    {9, "Fine weather"},
    {10, "Cloudy weather"},
    {11, "Shade"},
    {12, "Daylight fluorescent"},
    {13, "Day white fluorescent"},
    {14, "Cool white fluorescent"},
    {15, "White fluorescent"},
    {17, "Standard light A"},
    {18, "Standard light B"},
    {19, "Standard light C"},
    {24, "ISO studio tungsten"},
};
constexpr Enumeration kLightSource = Enum(kLightSourceTexts, "%u");

// Bit 0 fired, bits 1-2 return light, bits 3-4 mode (1 compulsory firing,
// 2 compulsory suppression, 3 auto), bit 5 no flash unit, bit 6 red-eye.
constexpr EnumText kFlashTexts[] = {
    {0, "Not fired"},
    {1, "Fired"},
    {5, "Fired, return light not detected"},
    {7, "Fired, return light detected"},
    {8, "Not fired, compulsory flash mode"},
    {9, "Fired, compulsory flash mode"},
    {13, "Fired, compulsory flash mode, return light not detected"},
    {15, "Fired, compulsory flash mode, return light detected"},
    {16, "Not fired, flash suppressed"},
    {20, "Not fired, flash suppressed, return light not detected"},
    {24, "Not fired, auto mode"},
    {25, "Fired, auto mode"},
    {29, "Fired, auto mode, return light not detected"},
    {31, "Fired, auto mode, return light detected"},
    {32, "No flash function"},
    {48, "No flash function, flash suppressed"},
    {65, "Fired, red-eye reduction"},
    {69, "Fired, red-eye reduction, return light not detected"},
    {71, "Fired, red-eye reduction, return light detected"},
    {73, "Fired, compulsory flash mode, red-eye reduction"},
    {77, "Fired, compulsory flash mode, red-eye reduction, return light not detected"},
    {79, "Fired, compulsory flash mode, red-eye reduction, return light detected"},
    {80, "Not fired, flash suppressed, red-eye reduction"},
    {88, "Not fired, auto mode, red-eye reduction"},
    {89, "Fired, auto mode, red-eye reduction"},
    {93, "Fired, auto mode, red-eye reduction, return light not detected"},
    {95, "Fired, auto mode, red-eye reduction, return light detected"},
};
constexpr Enumeration kFlash = Enum(kFlashTexts, "%u");

constexpr EnumText kColorSpaceTexts[] = {
    {1, "sRGB"}, {2, "Adobe RGB"},
};
constexpr Enumeration kColorSpace = Enum(kColorSpaceTexts, "Uncalibrated/Unknown (%u)");

constexpr EnumText kSensingMethodTexts[] = {
    {1, "Not defined"},
    {2, "One-chip color area sensor"},
    {3, "Two-chip color area sensor"},
    {4, "Three-chip color area sensor"},
    {5, "Color sequential area sensor"},
    {7, "Trilinear sensor"},
    {8, "Color sequential linear sensor"},
};
constexpr Enumeration kSensingMethod = Enum(kSensingMethodTexts, "%u");

constexpr EnumText kFileSourceTexts[] = {
    {1, "Transparent scanner"}, {2, "Reflective scanner"}, {3, "Digital still camera"},
};
constexpr Enumeration kFileSource = Enum(kFileSourceTexts, "%u");

constexpr EnumText kSceneTypeTexts[] = {
    {1, "Directly photographed"},
};
constexpr Enumeration kSceneType = Enum(kSceneTypeTexts, "%u");

constexpr EnumText kCustomRenderedTexts[] = {
    {0, "Normal process"}, {1, "Custom process"},
};
constexpr Enumeration kCustomRendered = Enum(kCustomRenderedTexts, "%u");

constexpr EnumText kExposureModeTexts[] = {
    {0, kAuto}, {1, kManual}, {2, "Auto bracket"},
};
constexpr Enumeration kExposureMode = Enum(kExposureModeTexts, "%u");

constexpr EnumText kWhiteBalanceTexts[] = {
    {0, kAuto}, {1, kManual},
};
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, "%u");

constexpr EnumText kSceneCaptureTypeTexts[] = {
    {0, "Standard"}, {1, "Landscape"}, {2, "Portrait"}, {3, "Night scene"},
};
constexpr Enumeration kSceneCaptureType = Enum(kSceneCaptureTypeTexts, "%u");

constexpr EnumText kGainControlTexts[] = {
    {0, "None"}, {1, "Low gain up"}, {2, "High gain up"}, {3, "Low gain down"}, {4, "High gain down"},
};
constexpr Enumeration kGainControl = Enum(kGainControlTexts, "%u");

// Contrast, Saturation and Sharpness.
constexpr EnumText kSoftHardTexts[] = {
    {0, kNormal}, {1, kSoft}, {2, kHard},
};
constexpr Enumeration kSoftHard = Enum(kSoftHardTexts, "%u");

constexpr EnumText kSubjectDistanceRangeTexts[] = {
    {0, "Unknown"}, {1, "Macro"}, {2, "Close view"}, {3, "Distant view"},
};
constexpr Enumeration kSubjectDistanceRange = Enum(kSubjectDistanceRangeTexts, "%u (other)");

// ------------------------------------------------------------ formatters

void Printf(TagRecord& row, const char* format, ...) {
    va_list args;
    va_start(args, format);
    char text[kValueTextLimit + 1];
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    SetRowValue(row, text);
}

bool IsRational(uint16_t type) { return type == 5 || type == 10; }

// The first value of an enumerated tag: the first byte of a BYTE or
// UNDEFINED field, the inline SHORT, or the whole word.
uint32_t FirstValue(const tiff::Entry& e) {
    switch (e.type) {
        case 1: case 2: case 6: case 7: return e.fieldBytes[0];
        case 3: case 8: return e.inlineShort;
        default: return e.valueField;
    }
}

template <const Enumeration& E>
void Enumerated(const EntryContext& c) {
    const uint32_t value = FirstValue(c.entry);
    const EnumText* end = E.texts + E.size;
    const EnumText* hit = std::find_if(E.texts, end, [&](const EnumText& t) { return t.value == value; });
    if (hit == end) Printf(c.row, E.otherwise, value);
    else if (E.numberFirst) Printf(c.row, "%u%s", value, hit->text);
    else SetRowValue(c.row, hit->text);
}

void Text(const EntryContext& c) { ReadTextValue(c, /*characterCodeHeader=*/false); }

void CharacterCodedText(const EntryContext& c) { ReadTextValue(c, /*characterCodeHeader=*/true); }

void Utf16Text(const EntryContext& c) { ReadUtf16LeTextValue(c); }

// Offsets to other blocks, and the offset of the JPEG in a raw file (46).
void Offset(const EntryContext& c) { Printf(c.row, "%u", c.entry.valueField); }

// Blocks whose bytes mean nothing as text (profiles, tables).
void ByteCount(const EntryContext& c) { Printf(c.row, "%u bytes", c.entry.count); }

void SingleRationals(const EntryContext& c, uint32_t limit) {
    std::string out;
    const uint32_t n = std::min(c.entry.count, limit);
    for (uint32_t i = 0; i < n && out.size() < kValueTextLimit; ++i) {
        const uint64_t offset = static_cast<uint64_t>(c.entry.valueField) + 8ull * i;
        if (offset > UINT32_MAX) break;
        const std::string one = tiff::FormatSingleRational(c.input, c.base, static_cast<uint32_t>(offset),
                                                     c.entry.type == 10);
        if (one.empty()) break;
        if (i > 0) out += ' ';
        out += one;
    }
    SetRowValue(c.row, out);
}

// Numbers of any type, separated by spaces: counts, sizes, offsets, and the
// values of tags whose type is not the one expected.
void Numbers(const EntryContext& c) {
    const uint16_t type = c.entry.type;
    if (type == 2) return Text(c);
    if (IsRational(type)) return SingleRationals(c, kListedNumbersLimit);
    const uint32_t size = tiff::TypeSize(type);
    if (size == 0 || size == 8) return Offset(c);
    uint8_t bytes[kListedNumbersLimit * 4];
    const size_t got = ReadRawBlock(
        c, bytes, static_cast<size_t>(std::min<uint64_t>(sizeof bytes, uint64_t{c.entry.count} * size)));
    std::string out;
    for (size_t i = 0; i + size <= got && out.size() < kValueTextLimit; i += size) {
        char text[16];
        const uint8_t* b = bytes + i;
        switch (type) {
            case 6: std::snprintf(text, sizeof text, "%d", static_cast<int8_t>(b[0])); break;
            case 8: std::snprintf(text, sizeof text, "%d", static_cast<int16_t>(platform::GetU16(b, c.bigEndian()))); break;
            case 9: std::snprintf(text, sizeof text, "%d", static_cast<int32_t>(platform::GetU32(b, c.bigEndian()))); break;
            case 3: std::snprintf(text, sizeof text, "%u", platform::GetU16(b, c.bigEndian())); break;
            case 4: case 11: case 13: std::snprintf(text, sizeof text, "%u", platform::GetU32(b, c.bigEndian())); break;
            default: std::snprintf(text, sizeof text, "%u", b[0]); break;
        }
        if (i > 0) out += ' ';
        out += text;
    }
    SetRowValue(c.row, out);
}

void Rational(const EntryContext& c) {
    if (!IsRational(c.entry.type)) return Numbers(c);
    SetRowValue(c.row, tiff::FormatSingleRational(c.input, c.base, c.entry.valueField, c.entry.type == 10));
}

void Chromaticities(const EntryContext& c) {
    if (!IsRational(c.entry.type)) return Numbers(c);
    SetRowValue(c.row, tiff::FormatMultiRational(c.input, c.base, c.entry.valueField,
                                           std::min(c.entry.count, kChromaticityRationalsLimit),
                                           tiff::RationalDecimals::kTrimmedSix));
}

void LensInfo(const EntryContext& c) {
    if (!IsRational(c.entry.type)) return Numbers(c);
    SetRowValue(c.row, tiff::FormatMultiRational(c.input, c.base, c.entry.valueField,
                                           std::min(c.entry.count, kLensInfoRationalsLimit),
                                           tiff::RationalDecimals::kTwo));
}

void FNumber(const EntryContext& c) {
    uint32_t numerator = 0, denominator = 0;
    if (!tiff::ReadRational(c.input, c.base, c.entry.valueField, numerator, denominator) || denominator == 0)
        return;
    Printf(c.row, "F %.2f", static_cast<double>(numerator) / denominator);
}

// Below a second as "1/n", from a second on in whole seconds.
void WriteSeconds(TagRecord& row, double seconds) {
    if (!std::isfinite(seconds) || seconds <= 0 || seconds > 1e9) return;
    if (seconds < 1) Printf(row, "1/%.0f", 1 / seconds);
    else Printf(row, "%.0f", seconds);
}

void ExposureTime(const EntryContext& c) {
    uint32_t numerator = 0, denominator = 0;
    if (!tiff::ReadRational(c.input, c.base, c.entry.valueField, numerator, denominator) || denominator == 0)
        return;
    if (numerator == 0) return SetRowValue(c.row, "0");
    WriteSeconds(c.row, static_cast<double>(numerator) / denominator);
}

// The APEX time value Tv: the exposure lasts 2^-Tv seconds.
void ShutterSpeed(const EntryContext& c) {
    uint32_t numerator = 0, denominator = 0;
    if (!tiff::ReadRational(c.input, c.base, c.entry.valueField, numerator, denominator) || denominator == 0)
        return;
    const double tv = c.entry.type == 10
                          ? static_cast<double>(static_cast<int32_t>(numerator)) / static_cast<int32_t>(denominator)
                          : static_cast<double>(numerator) / denominator;
    WriteSeconds(c.row, std::exp2(-tv));
}

// ------------------------------------------------------------ the table

// Sorted by tag; each tag once.
constexpr TagInfo kStandardTags[] = {
    {46, "Panasonic JPG offset", Offset},
    {256, "ImageWidth", Numbers},
    {257, "ImageLength", Numbers},
    {258, "BitsPerSample", Numbers},
    {259, "Compression", Enumerated<kCompression>},
    {262, "PhotometricInterpretation", Numbers},
    {270, "ImageDescription", Text},
    {271, "Make", Text},
    {272, "Model", Text},
    {273, "StripOffset", Numbers},
    {274, "Orientation", Enumerated<kOrientation>},
    {277, "SamplesPerPixel", Numbers},
    {278, "RowsPerStrip", Numbers},
    {279, "StripByteCount", Numbers},
    {282, "XResolution", Rational},
    {283, "YResolution", Rational},
    {284, "PlanarConfiguration", Numbers},
    {296, "ResolutionUnit", Enumerated<kResolutionUnit>},
    {305, "Software", Text},
    {306, "DateTime", Text},
    {315, "Artist", Text},
    {318, "WhitePoint", Chromaticities},
    {319, "PrimaryChromaticities", Chromaticities},
    {513, "JpegIFOffset", Numbers},
    {514, "JpegIFByteCount", Numbers},
    {529, "YCbCrCoefficients", Chromaticities},
    {530, "YCbCrSubSampling", Numbers},
    {531, "YCbCrPositioning", Numbers},
    {532, "ReferenceBlackWhite", Chromaticities},
    {18246, "Rating", Numbers},
    {18249, "RatingPercent", Numbers},
    {33421, "CFARepeatPatternDim", Numbers},
    {33422, "CFAPattern", Numbers},
    {33423, "BatteryLevel", Rational},
    {33432, "Copyright", Text},
    {33434, "ExposureTime", ExposureTime},
    {33437, "FNumber", FNumber},
    {33723, "IPTC/NAA", Offset},
    {34665, "Exif-IFD-Offset", Offset},
    {34675, "InterColorProfile", ByteCount},
    {34850, "ExposureProgram", Enumerated<kExposureProgram>},
    {34852, "SpectralSensitivity", Text},
    {34853, "GPS-IFD-Offset", Offset},
    {34855, "ISOSpeedRatings", Numbers},
    {34856, "OECF", ByteCount},
    {34864, "Sensitivity Type", Numbers},
    {34865, "Standard Output Sensitivity", Numbers},
    {34866, "Recommended Exposure Index", Numbers},
    {34867, "ISO Speed", Numbers},
    {36864, "ExifVersion", Text},
    {36867, "DateTimeOriginal", Text},
    {36868, "DateTimeDigitized", Text},
    {36880, "OffsetTime", Text},
    {36881, "OffsetTimeOriginal", Text},
    {36882, "OffsetTimeDigitized", Text},
    {37121, "ComponentsConfig", Numbers},
    {37122, "CompressedBitsPerPixel", Rational},
    {37377, "ShutterSpeedValue", ShutterSpeed},
    {37378, "ApertureValue", Rational},
    {37379, "BrightnessValue", Rational},
    {37380, "ExposureBiasValue", Rational},
    {37381, "MaxApertureValue", Rational},
    {37382, "SubjectDistance", Rational},
    {37383, "MeteringMode", Enumerated<kMeteringMode>},
    {37384, "LightSource", Enumerated<kLightSource>},
    {37385, "Flash", Enumerated<kFlash>},
    {37386, "FocalLength", Rational},
    {37500, "MakerNote-IFD-Offset", Offset},
    {37510, "UserComment", CharacterCodedText},
    {37520, "SubsecTime", Text},
    {37521, "SubsecTimeOriginal", Text},
    {37522, "SubsecTimeDigitized", Text},
    {37888, "Ambient Temperature", Rational},
    {37889, "Humidity", Rational},
    {37890, "Pressure", Rational},
    {37891, "Water Depth", Rational},
    {37892, "Acceleration", Rational},
    {40091, "XPTitle", Utf16Text},
    {40092, "XPComment", Utf16Text},
    {40093, "XPAuthor", Utf16Text},
    {40094, "XPKeywords", Utf16Text},
    {40095, "XPSubject", Utf16Text},
    {40960, "FlashPixVersion", Text},
    {40961, "ColorSpace", Enumerated<kColorSpace>},
    {40962, "ExifImageWidth", Numbers},
    {40963, "ExifImageHeight", Numbers},
    {40965, "InteroperabilityOffset", Offset},
    {41483, "FlashEnergy", Rational},
    {41484, "SpatialFrequencyResponse", ByteCount},
    {41486, "FocalPlaneXResolution", Rational},
    {41487, "FocalPlaneYResolution", Rational},
    {41488, "FocalPlaneResolutionUnit", Enumerated<kResolutionUnit>},
    {41492, "SubjectLocation", Numbers},
    {41493, "ExposureIndex", Rational},
    {41495, "SensingMethod", Enumerated<kSensingMethod>},
    {41728, "FileSource", Enumerated<kFileSource>},
    {41729, "SceneType", Enumerated<kSceneType>},
    {41985, "CustomRendered", Enumerated<kCustomRendered>},
    {41986, "ExposureMode", Enumerated<kExposureMode>},
    {41987, "White Balance", Enumerated<kWhiteBalance>},
    {41988, "DigitalZoomRatio", Rational},
    {41989, "FocalLengthIn35mmFilm", Numbers},
    {41990, "SceneCaptureType", Enumerated<kSceneCaptureType>},
    {41991, "GainControl", Enumerated<kGainControl>},
    {41992, "Contrast", Enumerated<kSoftHard>},
    {41993, "Saturation", Enumerated<kSoftHard>},
    {41994, "Sharpness", Enumerated<kSoftHard>},
    {41995, "DeviceSettingDescription", ByteCount},
    {41996, "SubjectDistanceRange", Enumerated<kSubjectDistanceRange>},
    {42032, "Owner Name", Text},
    {42033, "Serial Number", Text},
    {42034, "Lens Info", LensInfo},
    {42035, "Lens Make", Text},
    {42036, "Lens Model", Text},
    {42037, "Lens Serial Number", Text},
};
static_assert(SortedAndNamed(kStandardTags), "sorted, each tag once, each named");

}  // namespace

const TagInfo* FindStandardTag(uint16_t tag) {
    const TagInfo* end = std::end(kStandardTags);
    const TagInfo* hit =
        std::lower_bound(std::begin(kStandardTags), end, tag, [](const TagInfo& t, uint16_t v) { return t.tag < v; });
    return hit != end && hit->tag == tag ? hit : nullptr;
}

const DirectoryTags kStandardDirectory = {FindStandardTag, 0};

}  // namespace exif
