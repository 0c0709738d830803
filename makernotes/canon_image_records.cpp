// The Canon records of the file info (tag 0093), the processing (00A0), the
// sensor, crop, aspect, colour, picture styles and AF micro-adjustment, and
// the time (0035).
#include <string>

#include "canon_makernote.h"
#include "makernote_texts.h"

namespace makernotes {
namespace canon {
namespace {

// ---- file info (tag 0x0093)

// The folder and frame number, packed differently by two families of bodies.
bool PackedFileNumber(const Record& r, size_t, exif::TagRecord& row) {
    const CanonNote& n = r.note;
    // Elements 1 and 2 as one 32-bit number in the note's order.
    const uint32_t first = r.U16(1), second = r.U16(2);
    const uint32_t v = n.bigEndian ? first << 16 | second : second << 16 | first;
    uint32_t folder, frame;
    if (n.CountsLike350D()) {
        folder = (v & 0xFFC0) >> 6;
        frame = ((v >> 16) & 0xFF) + ((v & 0x3F) << 8);
    } else if (n.ModelHas("30D") || n.ModelHas("400D") || n.ModelHas("REBEL XTi") || n.ModelHas("Kiss Digital X")) {
        folder = (v & 0xFFC00) >> 10;
        while (folder < 100) folder += 0x40;  // the top bits are not recorded
        frame = ((v & 0x3FF) << 4) + ((v >> 20) & 0x0F);
    } else {
        return false;
    }
    SetValuef(row, "%u-%04u", folder + frame / 10000, frame % 10000);
    return true;
}

constexpr ValueText kBracketModeTexts[] = {{0, "Off"}, {1, "AEB"}, {2, "FEB"}, {3, "ISO"}, {4, "WB"}};
constexpr ValueText kNoiseReductionTexts[] = {{0, "Off"}, {1, "On (1D)"}, {3, "On"}, {4, "Auto"}};
constexpr ValueText kWbBracketTexts[] = {{0, "Off"}, {1, "On (shift AB)"}, {2, "On (shift GM)"}};
constexpr ValueText kFilterTexts[] = {{0, "None"}, {1, "Yellow"}, {2, "Orange"}, {3, "Red"}, {4, "Green"}};
constexpr ValueText kToningTexts[] = {{0, "None"}, {1, "Sepia"}, {2, "Blue"}, {3, "Purple"}, {4, "Green"}};
constexpr ValueText kShutterModeTexts[] = {{0, "Mechanical"}, {1, "Electronic First Curtain"}, {2, "Electronic"}};

constexpr Enumeration kBracketMode = Enum(kBracketModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kNoiseReduction = Enum(kNoiseReductionTexts, Sign::kSigned, "%d");
constexpr Enumeration kWbBracket = Enum(kWbBracketTexts, Sign::kSigned, "%d");
constexpr Enumeration kFilter = Enum(kFilterTexts, Sign::kSigned, "%d");
constexpr Enumeration kToning = Enum(kToningTexts, Sign::kSigned, "%d");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kSigned, "%d");
constexpr Enumeration kShutterMode = Enum(kShutterModeTexts, Sign::kSigned, "%d");

bool RawJpgQuality(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) > 0 && Enumerated<kQuality>(r, i, row); }
bool RawJpgSize(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) >= 0 && Enumerated<kImageSize>(r, i, row); }
bool NoiseReduction(const Record& r, size_t i, exif::TagRecord& row) {
    return r.At(i) >= 0 && Enumerated<kNoiseReduction>(r, i, row);
}

constexpr Field kFileInfo[] = {
    {2, "File Number", PackedFileNumber},
    {3, "Bracket Mode", Enumerated<kBracketMode>},
    {4, "Bracket Value", Plain},
    {5, "Bracket Shot Number", Plain},
    {6, "Raw JPEG Quality", RawJpgQuality},
    {7, "Raw JPEG Size", RawJpgSize},
    {8, "Long Exposure Noise Reduction", NoiseReduction},
    {9, "WB Bracket Mode", Enumerated<kWbBracket>},
    {12, "WB Bracket Value AB", Plain},
    {13, "WB Bracket Value GM", Plain},
    {14, "Filter Effect", Enumerated<kFilter, -1>},
    {15, "Toning Effect", Enumerated<kToning, -1>},
    {19, "Live View Shooting", Enumerated<kOffOn>},
    {20, "Focus Distance Upper", DistanceUpper},
    {21, "Focus Distance Lower", DistanceLower},
    {23, "Shutter Mode", Enumerated<kShutterMode>},
    {25, "Flash Exposure Lock", Enumerated<kOffOn>},
};

// ---- processing (tag 0x00A0)

constexpr ValueText kToneCurveTexts[] = {{0, "Standard"}, {1, "Manual"}, {2, "Custom"}};
constexpr ValueText kSharpnessFrequencyTexts[] = {
    {0, "n/a"}, {1, "Lowest"}, {2, "Low"}, {3, "Standard"}, {4, "High"}, {5, "Highest"},
};
constexpr ValueText kPictureStyleTexts[] = {
    {0x00, "None"}, {0x01, "Standard"}, {0x02, "Portrait"}, {0x03, "High Saturation"},
    {0x04, "Adobe RGB"}, {0x05, "Low Saturation"}, {0x06, "CM Set 1"}, {0x07, "CM Set 2"},
    {0x21, "User Def. 1"}, {0x22, "User Def. 2"}, {0x23, "User Def. 3"},
    {0x41, "PC 1"}, {0x42, "PC 2"}, {0x43, "PC 3"},
    {0x81, "Standard"}, {0x82, "Portrait"}, {0x83, "Landscape"}, {0x84, "Neutral"},
    {0x85, "Faithful"}, {0x86, "Monochrome"}, {0x87, "Auto"}, {0x88, "Fine Detail"},
    {0xFF, "n/a"}, {0xFFFF, "n/a"},
};
static_assert(ValuesUnique(kPictureStyleTexts), "each value once");
constexpr Enumeration kToneCurve = Enum(kToneCurveTexts, Sign::kSigned, "%d");
constexpr Enumeration kSharpnessFrequency = Enum(kSharpnessFrequencyTexts, Sign::kSigned, "%d");
constexpr Enumeration kPictureStyle = Enum(kPictureStyleTexts, Sign::kUnsigned, "%d");

bool ProcessingSharpness(const Record& r, size_t i, exif::TagRecord& row) {
    // Not what these bodies record here.
    const CanonNote& n = r.note;
    if (n.CountsLike350D()) return false;
    return Plain(r, i, row);
}

bool PictureStyle(const Record& r, size_t i, exif::TagRecord& row) {
    if (const char* text = EnumerationText(kPictureStyle, r.U16(i))) return Text(row, text);
    SetValuef(row, "0x%x", r.U16(i));
    return true;
}

bool NonNegativeWhiteBalance(const Record& r, size_t i, exif::TagRecord& row) {
    return r.At(i) >= 0 && Enumerated<kWhiteBalance>(r, i, row);
}

constexpr Field kProcessing[] = {
    {1, "Tone Curve", Enumerated<kToneCurve>},
    {2, "Sharpness", ProcessingSharpness},
    {3, "Sharpness Frequency", Enumerated<kSharpnessFrequency>},
    {4, "Sensor Red Level", Plain},
    {5, "Sensor Blue Level", Plain},
    {6, "White Balance Red", Plain},
    {7, "White Balance Blue", Plain},
    {8, "White Balance", NonNegativeWhiteBalance},
    {9, "Color Temperature", Plain},
    {10, "Picture Style", PictureStyle},
    {11, "Digital Gain", Tenths},
    {12, "WB Shift AB", Plain},
    {13, "WB Shift GM", Plain},
};

// ---- smaller records

constexpr Field kSensorInfo[] = {
    {1, "Sensor Width", Plain},
    {2, "Sensor Height", Plain},
    {5, "Sensor Left Border", Plain},
    {6, "Sensor Top Border", Plain},
    {7, "Sensor Right Border", Plain},
    {8, "Sensor Bottom Border", Plain},
    {9, "Black Mask Left Border", Plain},
    {10, "Black Mask Top Border", Plain},
    {11, "Black Mask Right Border", Plain},
    {12, "Black Mask Bottom Border", Plain},
};

constexpr Field kCropInfo[] = {
    {0, "Crop Left Margin", Plain},
    {1, "Crop Right Margin", Plain},
    {2, "Crop Top Margin", Plain},
    {3, "Crop Bottom Margin", Plain},
};

constexpr ValueText kAspectTexts[] = {
    {0, "3:2"}, {1, "1:1"}, {2, "4:3"}, {7, "16:9"}, {8, "4:5"}, {12, "3:2 (APS-H crop)"},
    {13, "3:2 (APS-C crop)"}, {258, "4:3 crop"},
};
constexpr Enumeration kAspect = Enum(kAspectTexts, Sign::kUnsigned, "%d");

constexpr Field kAspectInfo[] = {
    {0, "Aspect Ratio", Enumerated<kAspect>},
    {1, "Cropped Image Width", Plain},
    {2, "Cropped Image Height", Plain},
    {3, "Cropped Image Left", Plain},
    {4, "Cropped Image Top", Plain},
};

bool Rggb(const Record& r, size_t i, exif::TagRecord& row) {
    SetValuef(row, "%u %u %u %u", r.U16(i), r.U16(i + 1), r.U16(i + 2), r.U16(i + 3));
    return true;
}

constexpr Field kMeasuredColor[] = {{1, "Measured RGGB", Rggb}};

// Three picture styles in one entry, each named.
bool PictureStyles(const Record& r, size_t, exif::TagRecord& row) {
    std::string text;
    for (size_t i = 0; i < 3; ++i) {
        exif::TagRecord one{};
        PictureStyle(r, i, one);
        if (i) text += "; ";
        text += one.value;
    }
    return Text(row, text.c_str());
}

constexpr Field kUserDefStyles[] = {{2, "Picture Style User Def", PictureStyles}};
constexpr Field kPcStyles[] = {{2, "Picture Style PC", PictureStyles}};

constexpr ValueText kMicroAdjTexts[] = {{0, "Disable"}, {1, "Adjust all by the same amount"}, {2, "Adjust by lens"}};
constexpr Enumeration kMicroAdj = Enum(kMicroAdjTexts, Sign::kSigned, "%d");

bool MicroAdjValue(const Record& r, size_t i, exif::TagRecord& row) {
    // A signed rational in elements 2 and 3.
    const int64_t denominator = r.At(i + 1);
    if (denominator == 0) return Plain(r, i, row);
    return Number(row, static_cast<double>(r.At(i)) / static_cast<double>(denominator));
}

constexpr Field kAfMicroAdj[] = {
    {1, "AF Micro Adjustment Mode", Enumerated<kMicroAdj>},
    {2, "AF Micro Adjustment Value", MicroAdjValue},
};

// ---- time (tag 0x0035)

bool TimeZone(const Record& r, size_t i, exif::TagRecord& row) {
    const int64_t minutes = r.At(i) < 0 ? -r.At(i) : r.At(i);
    SetValuef(row, "%c%02lld:%02lld", r.At(i) < 0 ? '-' : '+', static_cast<long long>(minutes / 60),
              static_cast<long long>(minutes % 60));
    return true;
}

// The home city the body is set to, by its number in the camera's list.
constexpr ValueText kCityTexts[] = {
    {0, "n/a"}, {1, "Chatham Islands"}, {2, "Wellington"}, {3, "Solomon Islands"}, {4, "Sydney"},
    {5, "Adelaide"}, {6, "Tokyo"}, {7, "Hong Kong"}, {8, "Bangkok"}, {9, "Yangon"}, {10, "Dhaka"},
    {11, "Kathmandu"}, {12, "Delhi"}, {13, "Karachi"}, {14, "Kabul"}, {15, "Dubai"}, {16, "Tehran"},
    {17, "Moscow"}, {18, "Cairo"}, {19, "Paris"}, {20, "London"}, {21, "Azores"},
    {22, "Fernando de Noronha"}, {23, "Sao Paulo"}, {24, "Newfoundland"}, {25, "Santiago"},
    {26, "Caracas"}, {27, "New York"}, {28, "Chicago"}, {29, "Denver"}, {30, "Los Angeles"},
    {31, "Anchorage"}, {32, "Honolulu"}, {33, "Samoa"}, {32766, "(not set)"},
};
constexpr ValueText kDaylightTexts[] = {{0, "Off"}, {60, "On"}};
static_assert(ValuesUnique(kCityTexts), "each value once");
constexpr Enumeration kCity = Enum(kCityTexts, Sign::kSigned, "%d");
constexpr Enumeration kDaylight = Enum(kDaylightTexts, Sign::kSigned, "%d");

constexpr Field kTimeInfo[] = {
    {1, "Time Zone", TimeZone},
    {2, "Time Zone City", Enumerated<kCity>},
    {3, "Daylight Savings", Enumerated<kDaylight>},
};

constexpr RecordTag kImageRecordList[] = {
    Fields(0x0035, 4, true, kTimeInfo),
    Fields(0x0093, 2, true, kFileInfo),
    Fields(0x0098, 2, false, kCropInfo),
    Fields(0x009A, 4, false, kAspectInfo),
    Fields(0x00A0, 2, true, kProcessing),
    Fields(0x00AA, 2, false, kMeasuredColor),
    Fields(0x00E0, 2, true, kSensorInfo),
    Fields(0x4008, 2, false, kUserDefStyles),
    Fields(0x4009, 2, false, kPcStyles),
    Fields(0x4013, 4, true, kAfMicroAdj),
};

}  // namespace

constexpr RecordTags kImageRecords = ListOf(kImageRecordList);

}  // namespace canon
}  // namespace makernotes
