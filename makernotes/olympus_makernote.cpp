// Olympus and OM System maker notes, in three header forms. The main
// directory holds the older settings (mode, quality, macro, zoom, camera
// type and ID); newer cameras add sub-directories (equipment, camera
// settings, raw development, image processing, focus info), read in a
// second pass over the main directory, one level deep.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "makernote_array.h"
#include "makernote_decoders.h"
#include "makernote_texts.h"
#include "makernote_limits.h"
#include "olympus_tables.h"

namespace makernotes {
namespace {

// The dispatch has read the first 5 bytes ("OLYMP" or "OM SY"); the next
// three tell the forms apart:
//
//   "OLYMP\0" ver(2)                           count at +8, EXIF byte order
//   "OLYMPUS\0" mark(2) ver(2)                 count at +12
//   "OM SYSTEM\0\0\0" mark(2) ver(2)           count at +16
//
// In the two newer forms a mark of "II" makes the note little-endian; any
// other mark keeps the EXIF order (a big-endian mark never switches).
constexpr size_t kFormBytes = 3;
constexpr int64_t kOmSystemPadding = 4;

constexpr size_t kEntrySize = 12;
constexpr size_t kDirectoryCountSize = 2;
enum : uint16_t { kAsciiType = 2, kLongType = 4, kRationalType = 5, kUndefinedType = 7, kIfdType = 13 };

// ------------------------------------------------------------ value formats

// Elements of a value read per element; more would not fit a row's text.
constexpr size_t kElementsLimit = 64;

// Up to `max` elements of the entry in the note's byte order, each widened
// with its type's sign (or as signed 16-bit numbers when `signed16` is set,
// for the tables whose SHORTs hold negative numbers). BYTE and UNDEFINED
// read as bytes. Returns how many were read.
size_t ReadElements(const MakerEntry& e, int64_t* out, size_t max, bool signed16 = false) {
    const uint16_t type = e.entry().type;
    const size_t size = type == kUndefinedType ? 1 : tiff::TypeSize(type);
    if (size != 1 && size != 2 && size != 4) return 0;
    if (max > kElementsLimit) max = kElementsLimit;
    uint8_t bytes[kElementsLimit * 4] = {};
    const uint64_t want = std::min<uint64_t>(uint64_t{e.entry().count}, max) * size;
    const size_t got = exif::ReadRawBlock(e.context, bytes, static_cast<size_t>(want)) / size;
    for (size_t i = 0; i < got; ++i) {
        const uint8_t* b = bytes + i * size;
        if (size == 1) out[i] = type == tiff::kSByte ? int64_t{static_cast<int8_t>(b[0])} : int64_t{b[0]};
        else if (size == 2) {
            const uint16_t v = platform::GetU16(b, e.context.bigEndian());
            out[i] = type == tiff::kSShort || signed16 ? int64_t{static_cast<int16_t>(v)} : int64_t{v};
        } else {
            const uint32_t v = platform::GetU32(b, e.context.bigEndian());
            out[i] = type == tiff::kSLong ? int64_t{static_cast<int32_t>(v)} : int64_t{v};
        }
    }
    return got;
}

// The first element through an enumeration.
template <const Enumeration& E>
void Enumerated(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) FormatEnumeratedElement(E, v, e.row());
}

// Every element as a signed number, separated by spaces.
void SignedNumbers(const MakerEntry& e) {
    int64_t v[kElementsLimit];
    const size_t n = ReadElements(e, v, kElementsLimit, /*signed16=*/true);
    std::string text;
    for (size_t i = 0; i < n; ++i) text += (i ? " " : "") + std::to_string(v[i]);
    exif::SetRowValue(e.row(), text);
}

// One RATIONAL or SRATIONAL as its quotient; false when there is none.
bool ReadQuotient(const MakerEntry& e, double& out) {
    uint32_t num = 0, den = 0;
    const bool sign = e.entry().type == tiff::kSRational;
    if ((e.entry().type != kRationalType && !sign) ||
        !tiff::ReadRational(e.context.input, e.context.base, e.entry().valueField, num, den) ||
        den == 0)
        return false;
    out = sign ? static_cast<double>(static_cast<int32_t>(num)) / static_cast<int32_t>(den)
               : static_cast<double>(num) / den;
    return true;
}

template <const char* Format>
void Quotient(const MakerEntry& e) {
    double v = 0;
    if (ReadQuotient(e, v)) SetValuef(e.row(), Format, v);
}
constexpr char kPlain[] = "%g";
constexpr char kMillimetres[] = "%g mm";

// A set of flags: the names of the bits set, or `none`.
struct BitName {
    int bit;
    const char* name;
};
struct BitSet {
    const BitName* names;
    size_t size;
    const char* none;
};
std::string FlagNames(const BitSet& set, uint32_t value) {
    std::string text;
    for (size_t i = 0; i < set.size; ++i) {
        if (!(value & (1u << set.names[i].bit))) continue;
        if (!text.empty()) text += ", ";
        text += set.names[i].name;
    }
    return text.empty() ? set.none : text;
}
template <const BitSet& B>
void Flags(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) exif::SetRowValue(e.row(), FlagNames(B, static_cast<uint32_t>(v)));
}

template <size_t N>
const char* TextOf(const ValueText (&texts)[N], int64_t value) {
    for (const ValueText& t : texts)
        if (t.value == value) return t.text;
    return nullptr;
}

// A firmware version as a LONG, whose hexadecimal digits read as the
// version: 0x1300 is 1.300 (the last three digits are the minor part).
// Older notes store the version as text instead.
void FirmwareVersion(const MakerEntry& e) {
    if (e.entry().type == kAsciiType) return FormatGenericValue(e);
    int64_t v = 0;
    if (ReadElements(e, &v, 1) != 1) return;
    if (v < 0x1000) return SetValuef(e.row(), "%x", static_cast<unsigned>(v));
    SetValuef(e.row(), "%x.%03x", static_cast<unsigned>(v >> 12), static_cast<unsigned>(v & 0xFFF));
}

// A camera type code, shown as the model it stands for when known.
void CameraType(const MakerEntry& e) {
    char code[8] = {};
    exif::ReadRawBlock(e.context, reinterpret_cast<uint8_t*>(code), sizeof code - 1);
    if (const char* model = OlympusCameraName(code)) return exif::SetRowValue(e.row(), model);
    FormatGenericValue(e);
}

// A setting with its range: three signed SHORTs, the value, its minimum
// and its maximum.
void SettingWithRange(const MakerEntry& e) {
    int64_t v[3] = {};
    if (ReadElements(e, v, 3, /*signed16=*/true) < 3) return SignedNumbers(e);
    SetValuef(e.row(), "%lld (min %lld, max %lld)", static_cast<long long>(v[0]), static_cast<long long>(v[1]),
              static_cast<long long>(v[2]));
}

// ------------------------------------------------------------ main directory

constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%d");
constexpr ValueText kMacroTexts[] = {{0, "Off"}, {1, "On"}, {2, "Super macro"}};
constexpr Enumeration kMacro = Enum(kMacroTexts, Sign::kUnsigned, "%d");
constexpr ValueText kBlackAndWhiteTexts[] = {{0, "Off"}, {1, "On"}, {6, "(none)"}};
constexpr Enumeration kBlackAndWhite = Enum(kBlackAndWhiteTexts, Sign::kUnsigned, "%d");

// Quality counts SQ, HQ, SHQ in a row, from 0 on the SX camera types (but
// SX151) and the D4322, from 1 on all others. The camera type comes later in
// the directory than the quality; the decoder finds it first.
constexpr ValueText kQualityFromZeroTexts[] = {
    {0, "SQ (low)"}, {1, "HQ (normal)"}, {2, "SHQ (fine)"}, {6, "RAW"},
};
constexpr ValueText kQualityFromOneTexts[] = {
    {1, "SQ (low)"}, {2, "HQ (normal)"}, {3, "SHQ (fine)"}, {4, "RAW"},
    {5, "Medium fine"}, {6, "Small fine"}, {33, "Uncompressed"},
};
constexpr Enumeration kQualityFromZero = Enum(kQualityFromZeroTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kQualityFromOne = Enum(kQualityFromOneTexts, Sign::kUnsigned, "%d");

void Quality(const MakerEntry& e) {
    const Enumeration& en = e.note.qualityFromZero ? kQualityFromZero : kQualityFromOne;
    const int32_t v = e.Unsigned16();
    for (size_t i = 0; i < en.size; ++i)
        if (en.texts[i].value == v) return exif::SetRowValue(e.row(), en.texts[i].text);
    SetValuef(e.row(), en.otherwise, v);
}

constexpr ValueText kShootingModeTexts[] = {{0, "Normal"}, {2, "Fast"}, {3, "Panorama"}};
constexpr ValueText kPanoramaTexts[] = {
    {1, "left to right"}, {2, "right to left"}, {3, "bottom to top"}, {4, "top to bottom"},
};

// Three LONGs: the shooting mode, the frame's number in a sequence, and the
// direction of a panorama.
void SpecialMode(const MakerEntry& e) {
    int64_t v[3] = {};
    if (e.entry().type != kLongType || ReadElements(e, v, 3) < 3) return;
    const char* mode = TextOf(kShootingModeTexts, v[0]);
    std::string text = mode ? mode : std::to_string(v[0]);
    text += ", sequence " + std::to_string(v[1]);
    if (v[2] != 0) {
        const char* direction = TextOf(kPanoramaTexts, v[2]);
        text += ", panorama " + (direction ? std::string(direction) : std::to_string(v[2]));
    }
    exif::SetRowValue(e.row(), text);
}

constexpr ValueText kOldFlashModeTexts[] = {{2, "On"}, {3, "Off"}};
constexpr Enumeration kOldFlashMode = Enum(kOldFlashModeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kFlashDeviceTexts[] = {{0, "None"}, {1, "Internal"}, {4, "External"}, {5, "Internal + External"}};
constexpr Enumeration kFlashDevice = Enum(kFlashDeviceTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kAutoManual = Enum(kAutoManualTexts, Sign::kUnsigned, "%d");
constexpr ValueText kOldSharpnessTexts[] = {{0, "Normal"}, {1, "Hard"}, {2, "Soft"}};
constexpr Enumeration kOldSharpness = Enum(kOldSharpnessTexts, Sign::kUnsigned, "%d");
constexpr ValueText kOldContrastTexts[] = {{0, "High"}, {1, "Normal"}, {2, "Low"}};
constexpr Enumeration kOldContrast = Enum(kOldContrastTexts, Sign::kUnsigned, "%d");

// A colour's white-balance multiplier: the first SHORT over 256.
void Balance(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) SetValuef(e.row(), "%.10g", static_cast<double>(v) / 256);
}

constexpr ValueText kOneTouchWbTexts[] = {{0, "Off"}, {1, "On"}, {2, "On (Preset)"}};
constexpr Enumeration kOneTouchWb = Enum(kOneTouchWbTexts, Sign::kUnsigned, "%d");
constexpr ValueText kMainSceneModeTexts[] = {
    {0, "Normal"}, {1, "Standard"}, {2, "Auto"}, {3, "Intelligent Auto"}, {4, "Portrait"},
    {5, "Landscape+Portrait"}, {6, "Landscape"}, {7, "Night Scene"}, {8, "Night+Portrait"}, {9, "Sport"},
    {10, "Self Portrait"}, {11, "Indoor"}, {12, "Beach & Snow"}, {13, "Beach"}, {14, "Snow"}, {16, "Sunset"},
    {17, "Cuisine"}, {18, "Documents"}, {19, "Candle"}, {20, "Fireworks"}, {21, "Available Light"}, {22, "Vivid"},
    {25, "Museum"}, {26, "Behind Glass"}, {27, "Auction"}, {32, "Face Portrait"}, {33, "Pet"}, {34, "Smile Shot"},
    {35, "Quick Shutter"}, {100, "Panorama"}, {101, "Magic Filter"}, {103, "HDR"},
};
constexpr Enumeration kMainSceneMode = Enum(kMainSceneModeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kFocusRangeTexts[] = {{0, "Normal"}, {1, "Macro"}};
constexpr Enumeration kFocusRange = Enum(kFocusRangeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kScanModeTexts[] = {{0, "Interlaced"}, {1, "Progressive"}};
constexpr Enumeration kScanMode = Enum(kScanModeTexts, Sign::kUnsigned, "%d");

// One or two SHORTs: the white-balance kind (1 auto, 2 a preset
// temperature, 3 one-touch) and its setting.
constexpr ValueText kWbModeTexts[] = {
    {0x0100, "Auto"}, {0x0102, "Auto (2)"}, {0x0104, "Auto (4)"}, {0x0202, "3000 Kelvin"}, {0x0203, "3700 Kelvin"},
    {0x0204, "4000 Kelvin"}, {0x0205, "4500 Kelvin"}, {0x0206, "5500 Kelvin"}, {0x0207, "6500 Kelvin"},
    {0x0208, "7500 Kelvin"}, {0x0300, "One-touch"},
};
void WbMode(const MakerEntry& e) {
    int64_t v[2] = {};
    const size_t n = ReadElements(e, v, 2);
    if (n == 0 || v[0] < 0 || v[1] < 0 || v[0] > 0xFF || v[1] > 0xFF) return SignedNumbers(e);
    if (const char* text = TextOf(kWbModeTexts, v[0] << 8 | v[1])) return exif::SetRowValue(e.row(), text);
    SignedNumbers(e);
}

constexpr MakerTag kOlympusTags[] = {
    {0x0104, "Body Firmware Version", FirmwareVersion},
    {0x0200, "Special Mode", SpecialMode},
    {0x0201, "Quality", Quality},
    {0x0202, "Macro", kMacro},
    {0x0203, "Black & White Mode", kBlackAndWhite},
    {0x0204, "Digital Zoom", Quotient<kPlain>},
    {0x0205, "Focal Plane Diagonal", Quotient<kMillimetres>},
    {0x0206, "Lens Distortion Parameters", SignedNumbers},
    {0x0207, "Camera Type", CameraType},
    {0x0209, "Camera ID", FormatGenericValue},
    {0x0300, "Pre-Capture Frames", FormatGenericValue},
    {0x0302, "One Touch WB", Enumerated<kOneTouchWb>},
    {0x0403, "Scene Mode", Enumerated<kMainSceneMode>},
    {0x0404, "Serial Number", FormatGenericValue},
    {0x0405, "Firmware", FormatGenericValue},
    {0x1004, "Flash Mode", Enumerated<kOldFlashMode>},
    {0x1005, "Flash Device", Enumerated<kFlashDevice>},
    {0x1006, "Exposure Compensation", Quotient<kPlain>},
    {0x100a, "Focus Range", Enumerated<kFocusRange>},
    {0x100b, "Focus Mode", Enumerated<kAutoManual>},
    {0x100d, "Zoom Step Count", FormatGenericValue},
    {0x100e, "Focus Step Count", FormatGenericValue},
    {0x100f, "Sharpness", Enumerated<kOldSharpness>},
    {0x1011, "Color Matrix", SignedNumbers},
    {0x1012, "Black Level", FormatGenericValue},
    {0x1015, "White Balance Mode", WbMode},
    {0x1017, "Red Balance", Balance},
    {0x1018, "Blue Balance", Balance},
    {0x1023, "Flash Exposure Compensation", Quotient<kPlain>},
    {0x1029, "Contrast", Enumerated<kOldContrast>},
    {0x102a, "Sharpness Factor", FormatGenericValue},
    {0x102b, "Color Control", FormatGenericValue},
    {0x102c, "Valid Bits", FormatGenericValue},
    {0x102d, "Coring Filter", FormatGenericValue},
    {0x102e, "Image Width", FormatGenericValue},
    {0x102f, "Image Height", FormatGenericValue},
    {0x1035, "Preview Image Valid", Enumerated<kNoYes>},
    {0x1037, "Preview Image Length", FormatGenericValue},
    {0x1039, "CCD Scan Mode", Enumerated<kScanMode>},
    {0x103a, "Noise Reduction", Enumerated<kOffOn>},
    {0x103b, "Focus Step Infinity", FormatGenericValue},
    {0x103c, "Focus Step Near", FormatGenericValue},
};
constexpr MakerTable kOlympus = Table(kOlympusTags, ValueRule::kLeadingShort);

// ------------------------------------------------------------ equipment

// Six bytes: make, unknown, model, sub-model, two unknown. The make, model
// and sub-model name the lens; an unknown lens shows as its code ("0 05 00").
void LensType(const MakerEntry& e) {
    uint8_t b[6] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) < 4) return;
    if (const char* name = OlympusLensName(b[0], b[2], b[3])) return exif::SetRowValue(e.row(), name);
    SetValuef(e.row(), "%x %02x %02x", b[0], b[2], b[3]);
}

// Six bytes, of which the first and third name the extender.
void Extender(const MakerEntry& e) {
    uint8_t b[6] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) < 3) return;
    if (const char* name = OlympusExtenderName(b[0], b[2])) return exif::SetRowValue(e.row(), name);
    SetValuef(e.row(), "%x %02x", b[0], b[2]);
}

// An aperture stored as 256 times its APEX value, shown as the f-number.
void Aperture(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) SetValuef(e.row(), "%.1f", std::pow(2.0, static_cast<double>(v) / 512.0));
}

void Hexadecimal(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) SetValuef(e.row(), "0x%llx", static_cast<unsigned long long>(v));
}

constexpr ValueText kFlashTypeTexts[] = {{0, "None"}, {2, "Simple E-System"}, {3, "E-System"}, {4, "E-System (body powered)"}};
constexpr Enumeration kFlashType = Enum(kFlashTypeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kFlashModelTexts[] = {
    {0, "None"}, {1, "FL-20"}, {2, "FL-50"}, {3, "RF-11"}, {4, "TF-22"}, {5, "FL-36"}, {6, "FL-50R"},
    {7, "FL-36R"}, {9, "FL-14"}, {11, "FL-600R"}, {13, "FL-LM3"}, {15, "FL-900R"},
};
constexpr Enumeration kFlashModel = Enum(kFlashModelTexts, Sign::kUnsigned, "%d");

constexpr MakerTag kEquipmentTags[] = {
    {0x0000, "Equipment Version", FormatGenericValue},
    {0x0100, "Camera Type", CameraType},
    {0x0101, "Serial Number", FormatGenericValue},
    {0x0102, "Internal Serial Number", FormatGenericValue},
    {0x0103, "Focal Plane Diagonal", Quotient<kMillimetres>},
    {0x0104, "Body Firmware Version", FirmwareVersion},
    {0x0201, "Lens Type", LensType},
    {0x0202, "Lens Serial Number", FormatGenericValue},
    {0x0203, "Lens Model", FormatGenericValue},
    {0x0204, "Lens Firmware Version", FirmwareVersion},
    {0x0205, "Max Aperture At Min Focal", Aperture},
    {0x0206, "Max Aperture At Max Focal", Aperture},
    {0x0207, "Min Focal Length", FormatGenericValue},
    {0x0208, "Max Focal Length", FormatGenericValue},
    {0x020a, "Max Aperture", Aperture},
    {0x020b, "Lens Properties", Hexadecimal},
    {0x0301, "Extender", Extender},
    {0x0302, "Extender Serial Number", FormatGenericValue},
    {0x0303, "Extender Model", FormatGenericValue},
    {0x0304, "Extender Firmware Version", FirmwareVersion},
    {0x0403, "Conversion Lens", FormatGenericValue},
    {0x1000, "Flash Type", Enumerated<kFlashType>},
    {0x1001, "Flash Model", Enumerated<kFlashModel>},
    {0x1002, "Flash Firmware Version", FirmwareVersion},
    {0x1003, "Flash Serial Number", FormatGenericValue},
};
constexpr MakerTable kEquipment = Table(kEquipmentTags, ValueRule::kLeadingShort);

// ------------------------------------------------------------ camera settings

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
constexpr Enumeration kColorSpace = Enum(kColorSpaceTexts, Sign::kUnsigned, "%d");
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
constexpr BitSet kNoiseReductionBits = {kNoiseReductionBitNames,
                                        sizeof kNoiseReductionBitNames / sizeof kNoiseReductionBitNames[0], "(none)"};

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
constexpr Enumeration kPictureMode = Enum(kPictureModeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kBwFilterTexts[] = {{0, "n/a"}, {1, "Neutral"}, {2, "Yellow"}, {3, "Orange"}, {4, "Red"}, {5, "Green"}};
constexpr Enumeration kBwFilter = Enum(kBwFilterTexts, Sign::kSigned, "%d");
constexpr ValueText kPictureToneTexts[] = {{0, "n/a"}, {1, "Neutral"}, {2, "Sepia"}, {3, "Blue"}, {4, "Purple"}, {5, "Green"}};
constexpr Enumeration kPictureTone = Enum(kPictureToneTexts, Sign::kSigned, "%d");

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
// Four SHORTs; the first names the filter, the others tune it.
constexpr Enumeration kArtFilter = Enum(kArtFilterTexts, Sign::kUnsigned, "%d");

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
constexpr MakerTable kCameraSettings = Table(kCameraSettingsTags, ValueRule::kLeadingShort);

// ------------------------------------------------------------ raw development

constexpr ValueText kRawEngineTexts[] = {
    {0, "High Speed"}, {1, "High Function"}, {2, "Advanced High Speed"}, {3, "Advanced High Function"},
};
constexpr Enumeration kRawEngine = Enum(kRawEngineTexts, Sign::kUnsigned, "%d");
constexpr ValueText kEditStatusTexts[] = {
    {0, "Original"}, {1, "Edited (Landscape)"}, {6, "Edited (Portrait)"}, {8, "Edited (Portrait)"},
};
constexpr Enumeration kEditStatus = Enum(kEditStatusTexts, Sign::kUnsigned, "%d");
constexpr BitName kRawSettingsBitNames[] = {
    {0, "WB Color Temp"}, {1, "WB Gray Point"}, {2, "Saturation"}, {3, "Contrast"}, {4, "Sharpness"},
    {5, "Color Space"}, {6, "High Function"}, {7, "Noise Reduction"},
};
constexpr BitSet kRawSettingsBits = {kRawSettingsBitNames, sizeof kRawSettingsBitNames / sizeof kRawSettingsBitNames[0],
                                     "(none)"};

constexpr MakerTag kRawDevelopmentTags[] = {
    {0x0000, "Raw Development Version", FormatGenericValue},
    {0x0100, "Raw Exposure Bias", Quotient<kPlain>},
    {0x0101, "Raw White Balance Value", FormatGenericValue},
    {0x0102, "Raw WB Fine Adjustment", SignedNumbers},
    {0x0103, "Raw Gray Point", FormatGenericValue},
    {0x0104, "Raw Saturation Emphasis", SignedNumbers},
    {0x0105, "Raw Memory Color Emphasis", FormatGenericValue},
    {0x0106, "Raw Contrast Value", SignedNumbers},
    {0x0107, "Raw Sharpness Value", SignedNumbers},
    {0x0108, "Raw Color Space", Enumerated<kColorSpace>},
    {0x0109, "Raw Engine", Enumerated<kRawEngine>},
    {0x010a, "Raw Noise Reduction", Flags<kNoiseReductionBits>},
    {0x010b, "Raw Edit Status", Enumerated<kEditStatus>},
    {0x010c, "Raw Settings", Flags<kRawSettingsBits>},
};
constexpr MakerTable kRawDevelopment = Table(kRawDevelopmentTags, ValueRule::kLeadingShort);

// The later layout moves the tags about.
constexpr ValueText kRawWhiteBalanceTexts[] = {{1, "Color Temperature"}, {2, "Gray Point"}};
constexpr Enumeration kRawWhiteBalance = Enum(kRawWhiteBalanceTexts, Sign::kUnsigned, "%d");
constexpr MakerTag kRawDevelopment2Tags[] = {
    {0x0000, "Raw Development Version", FormatGenericValue},
    {0x0100, "Raw Exposure Bias", Quotient<kPlain>},
    {0x0101, "Raw White Balance", Enumerated<kRawWhiteBalance>},
    {0x0102, "Raw White Balance Value", FormatGenericValue},
    {0x0103, "Raw WB Fine Adjustment", SignedNumbers},
    {0x0104, "Raw Gray Point", FormatGenericValue},
    {0x0105, "Raw Contrast Value", SignedNumbers},
    {0x0106, "Raw Sharpness Value", SignedNumbers},
    {0x0107, "Raw Saturation Emphasis", SignedNumbers},
    {0x0108, "Raw Memory Color Emphasis", FormatGenericValue},
    {0x0109, "Raw Color Space", Enumerated<kColorSpace>},
    {0x010a, "Raw Noise Reduction", Flags<kNoiseReductionBits>},
    {0x010b, "Raw Engine", Enumerated<kRawEngine>},
    {0x010c, "Raw Picture Mode", Enumerated<kPictureMode>},
    {0x0121, "Raw Art Filter", Enumerated<kArtFilter>},
};
constexpr MakerTable kRawDevelopment2 = Table(kRawDevelopment2Tags, ValueRule::kLeadingShort);

// ------------------------------------------------------------ image processing

// Two bytes: the aspect ratio of the image and of the frame it was cut from.
struct AspectPair {
    uint8_t image, frame;
    const char* text;
};
constexpr AspectPair kAspectRatios[] = {
    {1, 1, "4:3"}, {1, 4, "1:1"}, {2, 1, "3:2 (RAW)"}, {2, 2, "3:2"}, {3, 1, "16:9 (RAW)"}, {3, 3, "16:9"},
    {4, 1, "1:1 (RAW)"}, {4, 4, "6:6"}, {5, 5, "5:4"}, {6, 6, "7:6"}, {7, 7, "6:5"}, {8, 8, "7:5"},
    {9, 1, "3:4 (RAW)"}, {9, 9, "3:4"},
};
void AspectRatio(const MakerEntry& e) {
    uint8_t b[2] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) < 2) return;
    for (const AspectPair& a : kAspectRatios)
        if (a.image == b[0] && a.frame == b[1]) return exif::SetRowValue(e.row(), a.text);
    SetValuef(e.row(), "%u %u", b[0], b[1]);
}
constexpr ValueText kKeystoneDirectionTexts[] = {{0, "Vertical"}, {1, "Horizontal"}};
constexpr Enumeration kKeystoneDirection = Enum(kKeystoneDirectionTexts, Sign::kUnsigned, "%d");
// Two bytes, of which the second says whether the correction was applied.
void Keystone(const MakerEntry& e) {
    uint8_t b[2] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) == 2) FormatEnumeratedElement(kOffOn, b[1], e.row());
}

constexpr MakerTag kImageProcessingTags[] = {
    {0x0000, "Image Processing Version", FormatGenericValue},
    {0x0100, "WB RB Levels", FormatGenericValue},
    {0x011f, "WB G Level", FormatGenericValue},
    {0x0200, "Color Matrix", SignedNumbers},
    {0x0300, "Enhancer", FormatGenericValue},
    {0x0310, "Coring Filter", FormatGenericValue},
    {0x0600, "Black Level", FormatGenericValue},
    {0x0610, "Gain Base", FormatGenericValue},
    {0x0611, "Valid Bits", FormatGenericValue},
    {0x0612, "Crop Left", FormatGenericValue},
    {0x0613, "Crop Top", FormatGenericValue},
    {0x0614, "Crop Width", FormatGenericValue},
    {0x0615, "Crop Height", FormatGenericValue},
    {0x0805, "Sensor Calibration", SignedNumbers},
    {0x1010, "Noise Reduction", Flags<kNoiseReductionBits>},
    {0x1011, "Distortion Correction", Enumerated<kOffOn>},
    {0x1012, "Shading Compensation", Enumerated<kOffOn>},
    {0x1112, "Aspect Ratio", AspectRatio},
    {0x1200, "Faces Detected", FormatGenericValue},
    {0x1900, "Keystone Compensation", Keystone},
    {0x1901, "Keystone Direction", Enumerated<kKeystoneDirection>},
};
constexpr MakerTable kImageProcessing = Table(kImageProcessingTags, ValueRule::kLeadingShort);

// ------------------------------------------------------------ focus info

// The AF point of the three-point cameras; others number their points
// otherwise, and show the number.
constexpr ValueText kAfPointTexts[] = {
    {0, "Left (or n/a)"}, {1, "Center (horizontal)"}, {2, "Right"}, {3, "Center (vertical)"}, {255, "None"},
};
constexpr Enumeration kAfPoint = Enum(kAfPointTexts, Sign::kUnsigned, "%d");
void AfPoint(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) != 1) return;
    if (e.note.threePointAf) return FormatEnumeratedElement(kAfPoint, v, e.row());
    SetValuef(e.row(), "%lld", static_cast<long long>(v));
}

// A RATIONAL whose numerator alone is the distance in millimetres (the
// denominator varies from camera to camera); all ones means infinity.
void FocusDistance(const MakerEntry& e) {
    uint32_t num = 0, den = 0;
    if (e.entry().type != kRationalType ||
        !tiff::ReadRational(e.context.input, e.context.base, e.entry().valueField, num, den))
        return;
    if (num == UINT32_MAX) return exif::SetRowValue(e.row(), "inf");
    SetValuef(e.row(), "%g m", num / 1000.0);
}

// A block whose first four bytes are zero when stabilisation was off;
// otherwise bit 0 of byte 44 tells the two modes apart.
constexpr size_t kStabilisationModeByte = 44;
void StabilisationBlock(const MakerEntry& e) {
    uint8_t b[kStabilisationModeByte + 1] = {};
    const size_t got = exif::ReadRawBlock(e.context, b, sizeof b);
    if (got >= 4 && !(b[0] | b[1] | b[2] | b[3])) return exif::SetRowValue(e.row(), "Off");
    if (got == sizeof b) exif::SetRowValue(e.row(), b[kStabilisationModeByte] & 1 ? "On, Mode 1" : "On, Mode 2");
}

// The sensor temperature: degrees Celsius as stored on the cameras that
// store degrees (and wherever the entry holds more than one number), else a
// sensor reading that falls as the temperature rises (0 and -32768: none).
void SensorTemperature(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1, /*signed16=*/true) != 1) return;
    if (e.note.degreesStored || e.entry().count != 1) return SetValuef(e.row(), "%lld C", static_cast<long long>(v));
    if (v != 0 && v != INT16_MIN) SetValuef(e.row(), "%.1f C", 84 - 3 * static_cast<double>(v) / 26);
}

// Two SHORTs: whether the flash was set by hand, and its strength as the
// denominator of a fraction of full power.
void ManualFlash(const MakerEntry& e) {
    int64_t v[2] = {};
    if (ReadElements(e, v, 2) != 2) return;
    if (v[0] == 0) return exif::SetRowValue(e.row(), "Off");
    if (v[1] == 1) return exif::SetRowValue(e.row(), "On (Full strength)");
    SetValuef(e.row(), "On (1/%lld strength)", static_cast<long long>(v[1]));
}

constexpr ValueText kBounceTexts[] = {{0, "Bounce or Off"}, {1, "Direct"}};
constexpr Enumeration kBounce = Enum(kBounceTexts, Sign::kUnsigned, "%d");

constexpr MakerTag kFocusInfoTags[] = {
    {0x0000, "Focus Info Version", FormatGenericValue},
    {0x0210, "Scene Detect", FormatGenericValue},
    {0x0300, "Zoom Step Count", FormatGenericValue},
    {0x0301, "Focus Step Count", FormatGenericValue},
    {0x0303, "Focus Step Infinity", FormatGenericValue},
    {0x0304, "Focus Step Near", FormatGenericValue},
    {0x0305, "Focus Distance", FocusDistance},
    {0x0308, "AF Point", AfPoint},
    {0x1201, "External Flash", Enumerated<kOffOn>},
    {0x1204, "External Flash Bounce", Enumerated<kBounce>},
    {0x1205, "External Flash Zoom", Quotient<kPlain>},
    {0x1208, "Internal Flash", Enumerated<kOffOn>},
    {0x1209, "Manual Flash", ManualFlash},
    {0x120a, "Macro LED", Enumerated<kOffOn>},
    {0x1500, "Sensor Temperature", SensorTemperature},
    {0x1600, "Image Stabilization", StabilisationBlock},
};
constexpr MakerTable kFocusInfo = Table(kFocusInfoTags, ValueRule::kLeadingShort);

// ------------------------------------------------------------ sub-directories

// A sub-directory entry holds the directory's offset (from the same base as
// every value of the note) as an IFD or LONG, or is an UNDEFINED block whose
// bytes are the directory.
struct SubDirectory {
    uint16_t tag;
    const MakerTable* table;
};
constexpr SubDirectory kSubDirectories[] = {
    {0x2010, &kEquipment},
    {0x2020, &kCameraSettings},
    {0x2030, &kRawDevelopment},
    {0x2031, &kRawDevelopment2},
    {0x2040, &kImageProcessing},
    {0x2050, &kFocusInfo},
};

// The main directory's bytes: a sub-directory that points into them would
// read the main entries again under the wrong names.
struct Span {
    uint64_t begin, end;
};

// Where a sub-directory starts, or -1 when its entry cannot hold one: a
// wrong type, an offset outside the file or into the main directory, or
// entries that run past the file (or past an UNDEFINED block's own size).
int64_t SubDirectoryStart(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                          const Span& main) {
    const bool block = entry.type == kUndefinedType;
    if (!(entry.type == kIfdType || entry.type == kLongType || (block && entry.count > 4))) return -1;
    const uint64_t start = tiff::At(offsetBase, entry.valueField);
    if (start >= main.begin && start < main.end) return -1;
    platform::Cursor in = input.ChildAt(start, input.end());
    const uint64_t bytes = kDirectoryCountSize + uint64_t{kEntrySize} * in.U16();
    if (!in.ok() || bytes > in.end() - start || (block && bytes > entry.count)) return -1;
    return static_cast<int64_t>(start);
}

// The second pass: the main directory again, for the sub-directory tags
// only, each read once.
void DecodeSubDirectories(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t rowsBefore, uint32_t* rowCount, const NoteContext& note) {
    bool done[sizeof kSubDirectories / sizeof kSubDirectories[0]] = {};
    const platform::Cursor input = directory.Whole();
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t entryCount) {
        const Span main{directory.position(), directory.position() + kDirectoryCountSize + kEntrySize * entryCount};
        for (size_t k = 0; k < sizeof kSubDirectories / sizeof kSubDirectories[0]; ++k) {
            if (kSubDirectories[k].tag != entry.tag || done[k]) continue;
            done[k] = true;
            const int64_t start = SubDirectoryStart(input, offsetBase, entry, main);
            if (start < 0) continue;
            platform::Cursor sub = input.ChildAt(static_cast<uint64_t>(start), input.end());
            DecodeMakerDirectory(sub, offsetBase, table, rowCount, *kSubDirectories[k].table, note);
        }
    });
}

// What the camera type (0207) of the directory (at its count) says about the
// values: whether quality counts from 0, and whether the camera has the
// three AF points of the early bodies (every type but the "S0" codes of the
// later interchangeable-lens bodies), and how it stores the sensor
// temperature.
void ReadCameraType(const platform::Cursor& directory, uint32_t offsetBase, NoteContext& note) {
    char type[8] = {};
    tiff::Entry entry;
    if (!FindDirectoryEntry(directory, 0x0207, entry)) return;
    exif::TagRecord scratch = {};
    const exif::EntryContext context{directory.Whole(), offsetBase, entry, scratch};
    exif::ReadRawBlock(context, reinterpret_cast<uint8_t*>(type), sizeof type - 1);
    // "SX151" alone of the SX types counts from 1.
    const bool sx = std::strncmp(type, "SX", 2) == 0 &&
                    !(std::strncmp(type, "SX151", 5) == 0 && (type[5] == '\0' || type[5] == ' '));
    note.qualityFromZero = sx || std::strncmp(type, "D4322", 5) == 0;
    note.threePointAf = type[0] != '\0' && std::strncmp(type, "S0", 2) != 0;
    // The E-1 and the E-M5.
    note.degreesStored = std::strncmp(type, "D4040", 5) == 0 || std::strncmp(type, "S0036", 5) == 0;
}

bool EqualsIgnoringCase(const char* a, const char* b) {
    for (; *a && *b; ++a, ++b) {
        const char x = (*a >= 'a' && *a <= 'z') ? static_cast<char>(*a - 'a' + 'A') : *a;
        if (x != *b) return false;
    }
    return *a == *b;
}



static_assert(TagsAscend(kOlympusTags) && TagsAscend(kEquipmentTags) && TagsAscend(kCameraSettingsTags) &&
                  TagsAscend(kRawDevelopmentTags) && TagsAscend(kRawDevelopment2Tags) &&
                  TagsAscend(kImageProcessingTags) && TagsAscend(kFocusInfoTags),
              "tag order");
static_assert(ValuesUnique(kMacroTexts) && ValuesUnique(kQualityFromZeroTexts) && ValuesUnique(kQualityFromOneTexts) &&
                  ValuesUnique(kShootingModeTexts) && ValuesUnique(kPanoramaTexts) && ValuesUnique(kFocusModeTexts) &&
                  ValuesUnique(kWhiteBalanceTexts) && ValuesUnique(kArtFilterTexts) && ValuesUnique(kSceneModeTexts) &&
                  ValuesUnique(kFlashRemoteTexts) && ValuesUnique(kFlashModelTexts) && ValuesUnique(kPictureModeTexts) &&
                  ValuesUnique(kMeteringModeTexts) && ValuesUnique(kEditStatusTexts) && ValuesUnique(kAfPointTexts) &&
                  ValuesUnique(kMainSceneModeTexts) && ValuesUnique(kWbModeTexts),
              "enumeration values");

}  // namespace

void DecodeOlympusMakerNote(const platform::Cursor& start, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount) {
    platform::Cursor in = start;
    const int64_t noteStart = static_cast<int64_t>(in.begin()) - static_cast<int64_t>(kMakerNotePrefixSize);
    char form[kFormBytes + 1] = {};
    in.Some(form, kFormBytes);
    const bool fullName = EqualsIgnoringCase(form, "US");
    const bool omSystem = EqualsIgnoringCase(form, "STE");
    if (fullName || omSystem) {
        if (omSystem) in.Skip(kOmSystemPadding);
        uint8_t markAndVersion[4] = {};
        in.Some(markAndVersion, sizeof markAndVersion);
        if (markAndVersion[0] == 'I' && markAndVersion[1] == 'I') in.SetOrder(platform::ByteOrder::kLittle);
        // The newer forms are self-contained: their offsets (values and
        // sub-directories alike) count from the note's first byte, not from
        // the TIFF header the older form uses. Cameras write them so, and
        // the note keeps working when a program moves it within the file.
        if (noteStart >= 0 && noteStart <= UINT32_MAX) offsetBase = static_cast<uint32_t>(noteStart);
    }
    const platform::Cursor directory = in;
    const uint32_t rowsBefore = *rowCount;
    NoteContext note;
    ReadCameraType(directory, offsetBase, note);
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kOlympus, note);
    DecodeSubDirectories(directory, offsetBase, table, rowsBefore, rowCount, note);
}

}  // namespace makernotes
