// Nikon maker notes. The older form ("Nikon" and an 8-byte header, values
// from the TIFF header) and the main form (an embedded TIFF header, or no
// header at all) each have their tags here; the main form also has its byte
// structures (AF info, colour balance, lens data, flash info).
#include <cctype>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "lens_tables.h"
#include "makernote_array.h"
#include "makernote_decoders.h"
#include "makernote_texts.h"
#include "makernote_limits.h"
#include "nikon_tables.h"

namespace makernotes {
namespace {

// ------------------------------------------------------------ older form

// Bytes of the 8-byte "Nikon\0\1\0" header after the five the dispatch read.
constexpr int64_t kType1HeaderRest = 3;

constexpr ValueText kQualityTexts[] = {
    {1, "VGA Basic"},  {2, "VGA Normal"},  {3, "VGA Fine"},
    {4, "SXGA Basic"}, {5, "SXGA Normal"}, {6, "SXGA Fine"},
    {10, "Basic"},     {11, "Normal"},     {12, "Fine"},
};
constexpr Enumeration kQuality = Enum(kQualityTexts, Sign::kSigned, "%d");

constexpr ValueText kColorModeTexts[] = {
    {1, "Color"}, {2, "Monochrome"},
};
constexpr Enumeration kColorMode = Enum(kColorModeTexts, Sign::kSigned, "%d");

constexpr ValueText kImageAdjustmentTexts[] = {
    {0, "Normal"}, {1, "Bright+"}, {2, "Bright-"}, {3, "Contrast+"}, {4, "Contrast-"},
};
constexpr Enumeration kImageAdjustment = Enum(kImageAdjustmentTexts, Sign::kSigned, "%d");

// The camera's own order: 80, 160, 320, then 100 for 5.
constexpr ValueText kCcdSensitivityTexts[] = {
    {0, "ISO 80"}, {2, "ISO 160"}, {4, "ISO 320"}, {5, "ISO 100"},
};
constexpr Enumeration kCcdSensitivity = Enum(kCcdSensitivityTexts, Sign::kSigned, "%d");

constexpr ValueText kWhiteBalanceTexts[] = {
    {0, "Auto"},         {1, "Preset"}, {2, "Daylight"},   {3, "Incandescense"},
    {4, "Fluorescence"}, {5, "Cloudy"}, {6, "SpeedLight"},
};
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kSigned, "%d");

constexpr ValueText kConverterTexts[] = {
    {0, "Fisheye Off"}, {1, "Fisheye On"},
};
constexpr Enumeration kConverter = Enum(kConverterTexts, Sign::kSigned, "%d");

void WholeField(const MakerEntry& e) { SetValuef(e.row(), "%ld", static_cast<long>(static_cast<int32_t>(e.entry().valueField))); }

// Three tags share the name "Unknown"; each makes its own row.
constexpr MakerTag kNikonType1Tags[] = {
    {1, "Data version", FormatGenericValue},
    {2, "Unknown", FormatGenericValue},
    {3, "Quality", kQuality},
    {4, "Color Mode", kColorMode},
    {5, "Image Adjustment", kImageAdjustment},
    {6, "CCD Sensitivity (ISO speed)", kCcdSensitivity},
    {7, "White Balance", kWhiteBalance},
    {8, "Focus", FormatRational},
    {9, "Unknown", FormatGenericValue},
    {10, "Digital Zoom", FormatRational},
    {11, "Converter", kConverter},
    {3840, "Unknown", WholeField},  // 0F00
};
// Type-1 notes read each value as the low half of the whole 32-bit field,
// as the headerless Casio notes do.
constexpr MakerTable kNikonType1 = Table(kNikonType1Tags, ValueRule::kLowHalfOfWord);

// ------------------------------------------------------------ main form

enum : uint16_t { kUndefinedType = 7, kIfdType = 13 };

// Up to four characters of a version, '?' for a byte that is not printable.
std::string VersionChars(const uint8_t* b, size_t size) {
    std::string v;
    for (size_t i = 0; i < 4 && i < size; ++i) v += b[i] >= ' ' && b[i] <= '~' ? static_cast<char>(b[i]) : '?';
    return v;
}

// The version is four characters ("0210"), except that some cameras store
// the digits as the bytes 0 to 9 themselves.
void Version(const MakerEntry& e) {
    uint8_t digits[4];
    for (int i = 0; i < 4; ++i) {
        const uint8_t b = e.entry().fieldBytes[i];
        digits[i] = static_cast<uint8_t>(b < 10 ? '0' + b : b);
    }
    exif::SetRowValue(e.row(), VersionChars(digits, sizeof digits));
}

// A structure's version: its first four characters, wherever they are stored.
void StructureVersion(const MakerEntry& e) {
    uint8_t b[4] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) == sizeof b) exif::SetRowValue(e.row(), VersionChars(b, sizeof b));
}

// Two SHORTs inline: a flag, then the speed the photographer set.
void IsoSpeed(const MakerEntry& e) {
    SetValuef(e.row(), "%u", platform::GetU16(e.entry().fieldBytes + 2, e.context.bigEndian()));
}

// An EV amount as photographers write it: whole steps, halves or thirds as
// a signed fraction ("+1", "-5/3"), anything else to three figures.
std::string EvFraction(double v) {
    v *= 1.00001;  // so that 1/3 steps stored as decimals come out whole
    char text[32];
    if (v == 0) return "0";
    // No camera brackets by a million stops: a value beyond any int is only
    // printed, never counted in steps.
    if (!(std::fabs(v) < 1e6)) {
        std::snprintf(text, sizeof text, "%+.3g", v);
        return text;
    }
    if (static_cast<int>(v) / v > 0.999) std::snprintf(text, sizeof text, "%+d", static_cast<int>(v));
    else if (static_cast<int>(v * 2) / (v * 2) > 0.999) std::snprintf(text, sizeof text, "%+d/2", static_cast<int>(v * 2));
    else if (static_cast<int>(v * 3) / (v * 3) > 0.999) std::snprintf(text, sizeof text, "%+d/3", static_cast<int>(v * 3));
    else std::snprintf(text, sizeof text, "%+.3g", v);
    return text;
}

// Exposure steps in three signed bytes: a count, a step numerator and its
// denominator (a * b / c EV; 0 when c is 0).
double ExposureSteps(const MakerEntry& e) {
    const uint8_t* b = e.entry().fieldBytes;
    const int c = static_cast<int8_t>(b[2]);
    return c ? static_cast<int8_t>(b[0]) * (static_cast<int8_t>(b[1]) / static_cast<double>(c)) : 0.0;
}
void StepsAsFraction(const MakerEntry& e) { exif::SetRowValue(e.row(), EvFraction(ExposureSteps(e))); }
void StepsSigned(const MakerEntry& e) {
    const double v = ExposureSteps(e);
    if (v == 0) return exif::SetRowValue(e.row(), "0");
    SetValuef(e.row(), "%+.1f", v);
}
void StepsOneDecimal(const MakerEntry& e) { SetValuef(e.row(), "%.1f", ExposureSteps(e)); }
void StepsTwoDecimals(const MakerEntry& e) { SetValuef(e.row(), "%.2f", ExposureSteps(e)); }

// Rational i of the value; false when it cannot be read.
bool RationalAt(const MakerEntry& e, uint32_t i, int64_t& num, int64_t& den) {
    const uint64_t offset = uint64_t{e.entry().valueField} + 8u * i;
    uint32_t n = 0, d = 0;
    if (offset > UINT32_MAX ||
        !tiff::ReadRational(e.context.input, e.context.base, static_cast<uint32_t>(offset), n, d))
        return false;
    const bool isSigned = e.entry().type == tiff::kSRational;
    num = isSigned ? int64_t{static_cast<int32_t>(n)} : int64_t{n};
    den = isSigned ? int64_t{static_cast<int32_t>(d)} : int64_t{d};
    return true;
}

// A bracketing step, as a signed rational of EV.
void BracketValue(const MakerEntry& e) {
    int64_t num = 0, den = 0;
    if (!RationalAt(e, 0, num, den)) return;
    exif::SetRowValue(e.row(), den ? EvFraction(static_cast<double>(num) / den) : std::string("n/a"));
}

// A plain rational; "n/a" when its denominator is 0.
void RationalNumber(const MakerEntry& e) {
    int64_t num = 0, den = 0;
    if (!RationalAt(e, 0, num, den)) return;
    if (!den) return exif::SetRowValue(e.row(), "n/a");
    SetValuef(e.row(), "%.10g", static_cast<double>(num) / den);
}

// Two rationals: the width and height of a pixel in micrometres.
void PixelSize(const MakerEntry& e) {
    int64_t w = 0, wd = 0, h = 0, hd = 0;
    if (!RationalAt(e, 0, w, wd) || !RationalAt(e, 1, h, hd) || !wd || !hd) return;
    SetValuef(e.row(), "%.10g x %.10g um", static_cast<double>(w) / wd, static_cast<double>(h) / hd);
}

// The lens: shortest and longest focal length, then the widest aperture at
// each, as four rationals ("18-70mm f/3.5-4.5"; one number where they agree).
void LensRange(const MakerEntry& e) {
    double v[4] = {};
    for (uint32_t i = 0; i < 4; ++i) {
        int64_t num = 0, den = 0;
        if (!RationalAt(e, i, num, den) || den == 0) return;
        v[i] = static_cast<double>(num) / den;
    }
    char focal[64], aperture[64];
    if (v[0] == v[1]) std::snprintf(focal, sizeof focal, "%gmm", v[0]);
    else std::snprintf(focal, sizeof focal, "%g-%gmm", v[0], v[1]);
    if (v[2] == v[3]) std::snprintf(aperture, sizeof aperture, "f/%g", v[2]);
    else std::snprintf(aperture, sizeof aperture, "f/%g-%g", v[2], v[3]);
    SetValuef(e.row(), "%s %s", focal, aperture);
}

// Bit names of a flag byte or word, joined by `separator`.
struct BitName {
    int bit;
    const char* name;
};

template <size_t N>
std::string BitNames(uint32_t value, const BitName (&names)[N], const char* separator) {
    std::string out;
    for (const BitName& b : names) {
        if (!(value & (1u << b.bit))) continue;
        if (!out.empty()) out += separator;
        out += b.name;
    }
    return out;
}

constexpr BitName kLensTypeBits[] = {
    {0, "MF"}, {1, "D"}, {2, "G"}, {3, "VR"}, {4, "1"}, {5, "FT-1"}, {6, "E"}, {7, "AF-P"},
};

// A flag byte. A G lens reports D too and is called just "G"; an E lens is
// named by its E first, in place of the G.
void LensType(const MakerEntry& e) {
    const uint8_t v = e.entry().fieldBytes[0];
    if (v == 0) return exif::SetRowValue(e.row(), "AF");
    const uint8_t shown = static_cast<uint8_t>(((v & 0x06) == 0x06 ? v & ~0x02 : v) & ~0x40);
    std::string text = BitNames(shown, kLensTypeBits, " ");
    if (v & 0x40) {
        if (text.rfind("G", 0) == 0) text.erase(0, text.size() > 1 ? 2 : 1);
        text = text.empty() ? "E" : "E " + text;
    }
    exif::SetRowValue(e.row(), text);
}

// A BYTE stands in the field's first byte whatever the byte order.
template <const Enumeration& E>
void ByteEnumeration(const MakerEntry& e) {
    FormatEnumeratedElement(E, e.entry().fieldBytes[0], e.row());
}

constexpr ValueText kFlashModeTexts[] = {
    {0, "Did Not Fire"}, {1, "Fired, Manual"}, {3, "Not Ready"}, {7, "Fired, External"},
    {8, "Fired, Commander Mode"}, {9, "Fired, TTL Mode"}, {18, "LED Light"},
};
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "%d");

constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%d");

constexpr ValueText kColorSpaceTexts[] = {{1, "sRGB"}, {2, "Adobe RGB"}};
constexpr Enumeration kColorSpace = Enum(kColorSpaceTexts, Sign::kUnsigned, "%d");

constexpr ValueText kActiveDLightingTexts[] = {
    {0, "Off"},           {1, "Low"},           {3, "Normal"},        {5, "High"},
    {7, "Extra High"},    {8, "Extra High 1"},  {9, "Extra High 2"},  {10, "Extra High 3"},
    {11, "Extra High 4"}, {0xFFFF, "Auto"},
};
constexpr Enumeration kActiveDLighting = Enum(kActiveDLightingTexts, Sign::kUnsigned, "%d");

constexpr ValueText kVignetteControlTexts[] = {{0, "Off"}, {1, "Low"}, {3, "Normal"}, {5, "High"}};
constexpr Enumeration kVignetteControl = Enum(kVignetteControlTexts, Sign::kUnsigned, "%d");

constexpr ValueText kNefCompressionTexts[] = {
    {1, "Lossy (type 1)"},
    {2, "Uncompressed"},
    {3, "Lossless"},
    {4, "Lossy (type 2)"},
    {5, "Striped packed 12 bits"},
    {6, "Uncompressed (reduced to 12 bit)"},
    {7, "Unpacked 12 bits"},
    {8, "Small"},
    {9, "Packed 12 bits"},
    {10, "Packed 14 bits"},
    {13, "High Efficiency"},
    {14, "High Efficiency*"},
};
constexpr Enumeration kNefCompression = Enum(kNefCompressionTexts, Sign::kUnsigned, "%d");

constexpr ValueText kHighIsoNoiseReductionTexts[] = {
    {0, "Off"}, {1, "Minimal"}, {2, "Low"}, {3, "Medium Low"}, {4, "Normal"}, {5, "Medium High"}, {6, "High"},
};
constexpr Enumeration kHighIsoNoiseReduction = Enum(kHighIsoNoiseReductionTexts, Sign::kUnsigned, "%d");

constexpr ValueText kCropTexts[] = {
    {0, "Off"},              {1, "1.3x Crop"},        {2, "DX Crop"},         {3, "5:4 Crop"},
    {4, "3:2 Crop"},         {6, "16:9 Crop"},        {8, "2.7x Crop"},       {9, "DX Movie Crop"},
    {10, "1.3x Movie Crop"}, {11, "FX Uncropped"},    {12, "DX Uncropped"},   {13, "2.8x Movie Crop"},
    {14, "1.4x Movie Crop"}, {15, "1.5x Movie Crop"}, {17, "1:1 Crop"},
};
constexpr Enumeration kCrop = Enum(kCropTexts, Sign::kUnsigned, "%d");

// Seven SHORTs: the crop, the sensor's width and height, the image's width
// and height, and where the image's corner lies.
void CropHiSpeed(const MakerEntry& e) {
    uint8_t b[14] = {};
    if (e.entry().type != tiff::kShort || e.entry().count != 7 || exif::ReadRawBlock(e.context, b, sizeof b) != sizeof b)
        return;
    unsigned v[7];
    for (int i = 0; i < 7; ++i) v[i] = platform::GetU16(b + 2 * i, e.context.bigEndian());
    const char* crop = EnumerationText(kCrop, v[0]);
    const std::string name = crop ? crop : "Unknown (" + std::to_string(v[0]) + ")";
    SetValuef(e.row(), "%s (%ux%u cropped to %ux%u at pixel %u,%u)", name.c_str(), v[1], v[2], v[3], v[4], v[5], v[6]);
}

// When the camera was last switched on: the year as a SHORT, then month,
// day, hour, minute and second as bytes.
void PowerUpTime(const MakerEntry& e) {
    uint8_t b[7] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) != sizeof b) return;
    SetValuef(e.row(), "%04u:%02u:%02u %02u:%02u:%02u", platform::GetU16(b, e.context.bigEndian()), b[2], b[3], b[4], b[5],
              b[6]);
}

constexpr BitName kShootingModeBits[] = {
    {0, "Continuous"},          {1, "Delay"},     {2, "PC Control"},
    {3, "Self-timer"},          {4, "Exposure Bracketing"},
    {5, "Auto ISO"},            {6, "White-Balance Bracketing"},
    {7, "IR Control"},          {8, "D-Lighting Bracketing"},
};
// The release modes (continuous, delay, PC, IR) exclude single frames; the
// other flags combine with any of them.
constexpr uint32_t kReleaseModeBits = 0x87;

void ShootingMode(const MakerEntry& e) {
    const uint32_t v = e.Unsigned16();
    std::string text = BitNames(v, kShootingModeBits, ", ");
    if (!(v & kReleaseModeBits)) text = text.empty() ? "Single-Frame" : "Single-Frame, " + text;
    exif::SetRowValue(e.row(), text);
}

// The tags that make one row each. AF info, colour balance, lens data and
// flash info make several rows in a pass of their own (below).
constexpr MakerTag kNikonTags[] = {
    {1, "Version", Version},
    {2, "ISO", IsoSpeed},
    {3, "Color Mode", FormatGenericValue},
    {4, "Quality", FormatGenericValue},
    {5, "White Balance", FormatGenericValue},
    {6, "Sharpening", FormatGenericValue},
    {7, "Focus Mode", FormatGenericValue},
    {8, "Flash Setting", FormatGenericValue},
    {9, "Flash Type", FormatGenericValue},
    {11, "White Balance Fine Tune", FormatGenericValue},           // 000B
    {13, "Program Shift", StepsAsFraction},                        // 000D
    {14, "Exposure Difference", StepsSigned},                      // 000E
    {15, "ISO Selection", FormatGenericValue},                     // 000F
    {18, "Flash Exposure Comp", StepsAsFraction},                  // 0012
    {19, "ISO Setting", IsoSpeed},                                 // 0013
    {22, "Image Boundary", FormatGenericValue},                    // 0016
    {23, "External Flash Exposure Comp", StepsAsFraction},         // 0017
    {24, "Flash Exposure Bracket Value", StepsOneDecimal},         // 0018
    {25, "Exposure Bracket Value", BracketValue},                  // 0019
    {26, "Image Processing", FormatGenericValue},                  // 001A
    {27, "Crop Hi Speed", CropHiSpeed},                            // 001B
    {28, "Exposure Tuning", StepsAsFraction},                      // 001C
    {29, "Serial Number", FormatGenericValue},                     // 001D
    {30, "Color Space", kColorSpace},                              // 001E
    {32, "Image Authentication", ByteEnumeration<kOffOn>},         // 0020
    {34, "Active D-Lighting", kActiveDLighting},                   // 0022
    {42, "Vignette Control", kVignetteControl},                    // 002A
    {128, "Image Adjustment", FormatGenericValue},                 // 0080
    {129, "Tone Comp", FormatGenericValue},                        // 0081
    {130, "Auxiliary Lens", FormatGenericValue},                   // 0082
    {131, "Lens Type", LensType},                                  // 0083
    {132, "Lens", LensRange},                                      // 0084
    {133, "Manual Focus Distance", RationalNumber},                // 0085
    {134, "Digital Zoom", RationalNumber},                         // 0086
    {135, "Flash Mode", ByteEnumeration<kFlashMode>},              // 0087
    {137, "Shooting Mode", ShootingMode},                          // 0089
    {139, "Lens F-Stops", StepsTwoDecimals},                       // 008B
    {141, "Color Hue", FormatGenericValue},                        // 008D
    {143, "Scene Mode", FormatGenericValue},                       // 008F
    {144, "Light Source", FormatGenericValue},                     // 0090
    {145, "Shot Info Version", StructureVersion},                 // 0091
    {146, "Hue Adjustment", FormatGenericValue},                   // 0092
    {147, "NEF Compression", kNefCompression},                     // 0093
    {148, "Saturation Adj", FormatGenericValue},                   // 0094
    {149, "Noise Reduction", FormatGenericValue},                  // 0095
    {153, "Raw Image Center", FormatGenericValue},                 // 0099
    {154, "Sensor Pixel Size", PixelSize},                         // 009A
    {160, "Serial Number", FormatGenericValue},                    // 00A0
    {162, "Image Data Size", FormatGenericValue},                  // 00A2
    {165, "Image Count", FormatGenericValue},                      // 00A5
    {166, "Deleted Image Count", FormatGenericValue},              // 00A6
    {167, "Shutter Count", FormatGenericValue},                    // 00A7
    {169, "Image Optimization", FormatGenericValue},               // 00A9
    {170, "Saturation", FormatGenericValue},                       // 00AA
    {171, "Vari Program", FormatGenericValue},                     // 00AB
    {172, "Image Stabilization", FormatGenericValue},              // 00AC
    {173, "AF Response", FormatGenericValue},                      // 00AD
    {177, "High ISO Noise Reduction", kHighIsoNoiseReduction},     // 00B1
    {182, "Power Up Time", PowerUpTime},                           // 00B6
};
static_assert(TagsAscend(kNikonTags), "tags ascend");
constexpr MakerTable kNikon = Table(kNikonTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// ------------------------------------------------------------ structures
//
// AF info, colour balance, lens data, flash info and the later bodies'
// settings are byte structures in one UNDEFINED entry each, and the preview
// is a directory of its own; they are read in a second pass over the
// directory, and each field a photographer reads becomes a row carrying the
// entry's tag. From version 0201 on, lens data and colour balance are
// enciphered: a stream of bytes XORed onto the data, keyed by the serial
// number (tag 001D) and the shutter count (tag 00A7).

constexpr uint16_t kSerialNumberTag = 0x1D;
constexpr uint16_t kLensTypeTag = 0x83;
constexpr uint16_t kShutterCountTag = 0xA7;
constexpr uint16_t kModelTag = 272;

// Bytes of a structure that are read: past the colour balance's enciphered
// white-balance levels (at most byte 308), more than any other field needs.
constexpr size_t kStructureReadLimit = 320;
// Digits of a serial number that are read to key the cipher.
constexpr size_t kSerialReadLimit = 32;

// What the second pass needs from elsewhere in the directory and the table.
struct NikonFacts {
    uint8_t lensType = 0;
    bool afBigEndian = false;  // the SLRs ("NIKON D...") store AF info big-endian
    bool earlyZ = false;       // the first Z bodies name their VR modes otherwise
    bool fileInfoLittleEndian = false;
    bool haveSerial = false, haveCount = false;
    uint32_t serial = 0;  // its low byte keys the cipher
    uint32_t count = 0;
};

// A structure as read, and where its rows go.
struct Structure {
    uint8_t bytes[kStructureReadLimit];
    size_t size;
    int bigEndian;
    const tiff::Entry& entry;
    exif::TagRecordTable& table;
    uint32_t* rowCount;

    bool Has(size_t offset, size_t length = 1) const { return offset + length <= size; }
    // Appends a row with this name and value; none at the row limit.
    void Row(const char* name, const std::string& value) const {
        if (*rowCount >= kMakerNoteRowLimit) return;
        exif::TagRecord& row = exif::TakeRow(table, *rowCount);
        exif::BeginRow(row, entry.tag, entry);
        exif::SetRowName(row, name);
        exif::SetRowValue(row, value);
        ++*rowCount;
    }
    void Rowf(const char* name, const char* format, ...) const
#if defined(__GNUC__)
        __attribute__((format(printf, 3, 4)))
#endif
    {
        char text[exif::kTagValueSize];
        va_list args;
        va_start(args, format);
        std::vsnprintf(text, sizeof text, format, args);
        va_end(args);
        Row(name, text);
    }
    // The 4-character version at the start.
    std::string VersionText() const { return VersionChars(bytes, size); }
    bool VersionIs(const char* v) const { return Has(0, 4) && std::memcmp(bytes, v, 4) == 0; }
};

// Deciphers bytes [start, size) in place: the key stream starts at `start`.
bool Decipher(Structure& s, size_t start, const NikonFacts& keys) {
    if (!keys.haveSerial || !keys.haveCount) return false;
    uint8_t countKey = 0;
    for (int i = 0; i < 4; ++i) countKey ^= static_cast<uint8_t>(keys.count >> (8 * i));
    const uint8_t ci = NikonCipherBySerial[keys.serial & 0xFF];
    uint8_t cj = NikonCipherByCount[countKey];
    uint8_t ck = 0x60;
    for (size_t i = start; i < s.size; ++i) {
        cj = static_cast<uint8_t>(cj + ci * ck);
        ++ck;
        s.bytes[i] ^= cj;
    }
    return true;
}

// ---- AF info (tag 0088): area mode, the selected point, the points in focus.

constexpr ValueText kAfAreaModeTexts[] = {
    {0, "Single Area"},    {1, "Dynamic Area"},       {2, "Dynamic Area (closest subject)"},
    {3, "Group Dynamic"},  {4, "Single Area (wide)"}, {5, "Dynamic Area (wide)"},
};
constexpr Enumeration kAfAreaMode = Enum(kAfAreaModeTexts, Sign::kUnsigned, "%d");

// The eleven points of the older bodies, by number and by bit.
constexpr const char* kAfPointNames[] = {
    "Center",    "Top",         "Bottom",     "Mid-left", "Mid-right", "Upper-left",
    "Upper-right", "Lower-left", "Lower-right", "Far Left", "Far Right",
};
constexpr size_t kAfPoints = sizeof kAfPointNames / sizeof kAfPointNames[0];
constexpr uint32_t kAllAfPoints = (1u << kAfPoints) - 1;

std::string EnumText(const Enumeration& e, int64_t value) {
    if (const char* text = EnumerationText(e, value)) return text;
    return std::to_string(value);
}

void AfInfo(Structure& s, const NikonFacts& keys) {
    const int afBigEndian = keys.afBigEndian;
    if (!s.Has(0, 4)) return;
    s.Row("AF Area Mode", EnumText(kAfAreaMode, s.bytes[0]));
    s.Row("AF Point", s.bytes[1] < kAfPoints ? kAfPointNames[s.bytes[1]] : std::to_string(s.bytes[1]));
    const uint32_t inFocus = platform::GetU16(s.bytes + 2, afBigEndian);
    std::string points;
    for (size_t i = 0; i < 16; ++i) {
        if (!(inFocus & (1u << i))) continue;
        if (!points.empty()) points += ", ";
        points += i < kAfPoints ? kAfPointNames[i] : "[" + std::to_string(i) + "]";
    }
    if (inFocus == 0) points = "(none)";
    else if (inFocus == kAllAfPoints) points = "All 11 Points";
    s.Row("AF Points In Focus", points);
}

// ---- colour balance (tag 0097): the white-balance levels, four SHORTs
// whose channel order and place depend on the version.

struct ColorBalanceForm {
    char version[5];     // "02" matches every version 0200 to 0210 not listed before it
    bool enciphered;     // from cipherStart on
    size_t cipherStart;
    size_t levelsAt;
    const char* name;
};
constexpr ColorBalanceForm kColorBalanceForms[] = {
    {"0100", false, 0, 72, "WB RBGG Levels"},
    {"0102", false, 0, 10, "WB RGGB Levels"},
    {"0103", false, 0, 20, "WB RGBG Levels"},
    {"0205", true, 4, 18, "WB RGGB Levels"},
    {"0209", true, 284, 294, "WB GRBG Levels"},
    {"0212", true, 284, 294, "WB GRBG Levels"},
    {"0214", true, 284, 294, "WB GRBG Levels"},
    {"0211", true, 284, 300, "WB GRBG Levels"},
    {"0213", true, 284, 294, "WB RGGB Levels"},
    {"0215", true, 284, 288, "WB GRBG Levels"},
    {"0216", true, 284, 288, "WB GRBG Levels"},
    {"0217", true, 284, 288, "WB GRBG Levels"},
    {"02", true, 284, 290, "WB RGGB Levels"},
};

void ColorBalance(Structure& s, const NikonFacts& keys) {
    const ColorBalanceForm* form = nullptr;
    for (const ColorBalanceForm& f : kColorBalanceForms) {
        const size_t n = std::strlen(f.version);
        if (s.Has(0, 4) && std::memcmp(s.bytes, f.version, n) == 0) {
            // "02" stands for the versions below 0211 only.
            if (n == 2 && !(s.bytes[2] == '0' || (s.bytes[2] == '1' && s.bytes[3] == '0'))) break;
            form = &f;
            break;
        }
    }
    if (!form || !s.Has(form->levelsAt, 8)) return;
    if (form->enciphered && !Decipher(s, form->cipherStart, keys)) return;
    const uint8_t* b = s.bytes + form->levelsAt;
    s.Rowf(form->name, "%u %u %u %u", platform::GetU16(b, s.bigEndian), platform::GetU16(b + 2, s.bigEndian),
           platform::GetU16(b + 4, s.bigEndian), platform::GetU16(b + 6, s.bigEndian));
}

// ---- lens data (tag 0098)

// Where each field stands in one form of the lens data; -1: not there.
struct LensDataForm {
    char version[5];
    bool enciphered;  // from byte 4 on
    int exitPupil, afAperture, focusPosition, focusDistance, focalLength;
    int id;  // the 7 bytes of the lens key start here: ID number, f-stops,
             // shortest and longest focal length, widest aperture at each,
             // MCU version
    int effectiveMaxAperture;
};
constexpr LensDataForm kLensDataForms[] = {
    {"0100", false, -1, -1, -1, -1, -1, 6, -1},
    {"0101", false, 4, 5, 8, 9, 10, 11, 18},
    {"0201", true, 4, 5, 8, 9, 10, 11, 18},
    {"0202", true, 4, 5, 8, 9, 10, 11, 18},
    {"0203", true, 4, 5, 8, 9, 10, 11, 18},
    {"0204", true, 4, 5, 8, 10, 11, 12, 19},
};
constexpr size_t kLensKeyDataBytes = 7;

// The lens data's units: focal lengths are 5 mm x 2^(v/24), apertures
// 2^(v/24), the exit pupil 2048/v mm, the focus distance 10^(v/40) cm.
double FocalLength(uint8_t v) { return 5.0 * std::pow(2.0, v / 24.0); }
double Aperture(uint8_t v) { return std::pow(2.0, v / 24.0); }

void LensName(const Structure& s, const uint8_t* id, const NikonFacts& keys) {
    uint8_t key[8];
    std::memcpy(key, id, kLensKeyDataBytes);
    key[7] = keys.lensType;
    char name[128] = "";
    if (LookupNikonLens(key, name, sizeof name) || LookupNikonMoreLens(key, name, sizeof name))
        return s.Row("Lens Name", name);
    s.Rowf("Lens Name", "unknown (%02X %02X %02X %02X %02X %02X %02X %02X)", key[0], key[1], key[2], key[3], key[4],
           key[5], key[6], key[7]);
}

void LensData(Structure& s, const NikonFacts& keys) {
    if (!s.Has(0, 4)) return;
    s.Row("Lens Data Version", s.VersionText());
    const LensDataForm* form = nullptr;
    for (const LensDataForm& f : kLensDataForms)
        if (s.VersionIs(f.version)) form = &f;
    if (!form || !s.Has(static_cast<size_t>(form->id), kLensKeyDataBytes)) return;
    if (form->enciphered && !Decipher(s, 4, keys)) return;
    const uint8_t* b = s.bytes;
    const auto at = [&](int offset) { return offset >= 0 && s.Has(static_cast<size_t>(offset)); };
    if (at(form->exitPupil)) {
        const uint8_t v = b[form->exitPupil];
        s.Rowf("Exit Pupil Position", "%.1f mm", v ? 2048.0 / v : 0.0);
    }
    if (at(form->afAperture)) s.Rowf("AF Aperture", "%.1f", Aperture(b[form->afAperture]));
    if (at(form->focusPosition)) s.Rowf("Focus Position", "0x%02x", b[form->focusPosition]);
    if (at(form->focusDistance)) {
        const uint8_t v = b[form->focusDistance];
        if (v) s.Rowf("Focus Distance", "%.2f m", 0.01 * std::pow(10.0, v / 40.0));
        else s.Row("Focus Distance", "inf");
    }
    if (at(form->focalLength)) s.Rowf("Focal Length", "%.1f mm", FocalLength(b[form->focalLength]));
    const uint8_t* id = b + form->id;
    s.Rowf("Lens ID Number", "%u", id[0]);
    s.Rowf("Lens F-Stops", "%.2f", id[1] / 12.0);
    s.Rowf("Min Focal Length", "%.1f mm", FocalLength(id[2]));
    s.Rowf("Max Focal Length", "%.1f mm", FocalLength(id[3]));
    s.Rowf("Max Aperture At Min Focal", "%.1f", Aperture(id[4]));
    s.Rowf("Max Aperture At Max Focal", "%.1f", Aperture(id[5]));
    s.Rowf("MCU Version", "%u", id[6]);
    if (at(form->effectiveMaxAperture))
        s.Rowf("Effective Max Aperture", "%.1f", Aperture(b[form->effectiveMaxAperture]));
    LensName(s, id, keys);
}

// ---- flash info (tag 00A8), versions 0100 and 0101

constexpr ValueText kFlashSourceTexts[] = {{0, "None"}, {1, "External"}, {2, "Internal"}};
constexpr Enumeration kFlashSource = Enum(kFlashSourceTexts, Sign::kUnsigned, "%d");

constexpr ValueText kFlashControlModeTexts[] = {
    {0, "Off"},       {1, "iTTL-BL"}, {2, "iTTL"},   {3, "Auto Aperture"},
    {4, "Automatic"}, {5, "GN (distance priority)"}, {6, "Manual"}, {7, "Repeating Flash"},
};
constexpr Enumeration kFlashControlMode = Enum(kFlashControlModeTexts, Sign::kUnsigned, "%d");
// From this control mode on, a group's byte is its output, not a compensation.
constexpr uint8_t kFirstOutputMode = 6;

constexpr BitName kExternalFlashBits[] = {
    {0, "Fired"}, {2, "Bounce Flash"}, {4, "Wide Flash Adapter"}, {5, "Dome Diffuser"},
};

// Guide-number distances in tenths of a metre, by code (0: none, 255: n/a).
constexpr uint16_t kGnDistanceTenths[] = {
    0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 13, 14, 16, 18, 20, 22, 25,
    28, 32, 36, 40, 45, 50, 56, 63, 71, 80, 90, 100, 110, 130, 140, 160, 180, 200,
};

// Output as a share of full power: 2^(-v/6).
std::string FlashOutput(uint8_t v) {
    const double share = std::pow(2.0, -v / 6.0);
    if (share > 0.99) return "Full";
    char text[16];
    std::snprintf(text, sizeof text, "%.0f%%", share * 100);
    return text;
}

void FlashInfo(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 4)) return;
    s.Row("Flash Info Version", s.VersionText());
    if (!(s.VersionIs("0100") || s.VersionIs("0101")) || !s.Has(0, 19)) return;
    const uint8_t* b = s.bytes;
    s.Row("Flash Source", EnumText(kFlashSource, b[4]));
    if (b[6] == 0 && b[7] == 0) s.Row("External Flash Firmware", "n/a");
    else s.Rowf("External Flash Firmware", "%u.%.2u", b[6], b[7]);
    s.Row("External Flash Flags", b[8] ? BitNames(b[8], kExternalFlashBits, ", ") : std::string("(none)"));
    s.Row("Flash Commander Mode", b[9] & 0x80 ? "On" : "Off");
    const uint8_t mode = b[9] & 0x7F;
    s.Row("Flash Control Mode", EnumText(kFlashControlMode, mode));
    if (mode >= kFirstOutputMode) s.Row("Flash Output", FlashOutput(b[10]));
    else s.Row("Flash Compensation", EvFraction(-static_cast<int8_t>(b[10]) / 6.0));
    if (b[11]) s.Rowf("Flash Focal Length", "%u mm", b[11]);
    if (b[12]) s.Rowf("Repeating Flash Rate", "%u Hz", b[12]);
    if (b[13]) s.Rowf("Repeating Flash Count", "%u", b[13]);
    const uint8_t gn = b[14];
    if (gn == 0) s.Row("Flash GN Distance", "0");
    else if (gn < sizeof kGnDistanceTenths / sizeof kGnDistanceTenths[0])
        s.Rowf("Flash GN Distance", "%u.%u m", kGnDistanceTenths[gn] / 10u, kGnDistanceTenths[gn] % 10u);
    else if (gn == 255) s.Row("Flash GN Distance", "n/a");
    else s.Rowf("Flash GN Distance", "%u", gn);
    const uint8_t modeA = b[15] & 0x0F, modeB = b[16] & 0x0F;
    s.Row("Flash Group A Control Mode", EnumText(kFlashControlMode, modeA));
    s.Row("Flash Group B Control Mode", EnumText(kFlashControlMode, modeB));
    const auto group = [&](const char* output, const char* compensation, uint8_t groupMode, uint8_t v) {
        if (groupMode >= kFirstOutputMode) return s.Row(output, FlashOutput(v));
        const double ev = -static_cast<int8_t>(v) / 6.0;
        if (ev == 0) s.Row(compensation, "0");
        else s.Rowf(compensation, "%+.1f", ev);
    };
    group("Flash Group A Output", "Flash Group A Compensation", modeA, b[17]);
    group("Flash Group B Output", "Flash Group B Compensation", modeB, b[18]);
}

// ---- settings of the later bodies, one small structure each

// VR info (tag 001F).
constexpr ValueText kVibrationReductionTexts[] = {{0, "n/a"}, {1, "On"}, {2, "Off"}};
constexpr Enumeration kVibrationReduction = Enum(kVibrationReductionTexts, Sign::kUnsigned, "%d");
constexpr ValueText kVrModeTexts[] = {{0, "Normal"}, {1, "On (1)"}, {2, "Active"}, {3, "Sport"}};
constexpr Enumeration kVrMode = Enum(kVrModeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kEarlyZVrModeTexts[] = {{0, "Off"}, {1, "Normal"}, {3, "Sport"}};
constexpr Enumeration kEarlyZVrMode = Enum(kEarlyZVrModeTexts, Sign::kUnsigned, "%d");

void VrInfo(Structure& s, const NikonFacts& keys) {
    if (!s.Has(0, 4)) return;
    s.Row("VR Info Version", s.VersionText());
    if (s.Has(4)) s.Row("Vibration Reduction", EnumText(kVibrationReduction, s.bytes[4]));
    if (s.Has(6)) s.Row("VR Mode", EnumText(keys.earlyZ ? kEarlyZVrMode : kVrMode, s.bytes[6]));
}

// Picture control (tag 0023), version 01xx: the name the photographer gave
// it and the control it was made from, 20 characters each.
std::string FixedText(const Structure& s, size_t at, size_t length) {
    std::string text;
    for (size_t i = at; i < at + length && s.Has(i) && s.bytes[i]; ++i) text += static_cast<char>(s.bytes[i]);
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

void PictureControl(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 4)) return;
    s.Row("Picture Control Version", s.VersionText());
    if (!(s.bytes[0] == '0' && s.bytes[1] == '1') || !s.Has(4, 40)) return;
    s.Row("Picture Control Name", FixedText(s, 4, 20));
    s.Row("Picture Control Base", FixedText(s, 24, 20));
}

// World time (tag 0024): the time zone in minutes, daylight saving, the
// date order.
constexpr Enumeration kDaylightSavings = Enum(kNoYesTexts, Sign::kUnsigned, "%d");
constexpr ValueText kDateDisplayFormatTexts[] = {{0, "Y/M/D"}, {1, "M/D/Y"}, {2, "D/M/Y"}};
constexpr Enumeration kDateDisplayFormat = Enum(kDateDisplayFormatTexts, Sign::kUnsigned, "%d");

void WorldTime(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 4)) return;
    const int minutes = static_cast<int16_t>(platform::GetU16(s.bytes, s.bigEndian));
    const int magnitude = minutes < 0 ? -minutes : minutes;
    s.Rowf("Time Zone", "%c%02d:%02d", minutes < 0 ? '-' : '+', magnitude / 60, magnitude % 60);
    s.Row("Daylight Savings", EnumText(kDaylightSavings, s.bytes[2]));
    s.Row("Date Display Format", EnumText(kDateDisplayFormat, s.bytes[3]));
}

// ISO info (tag 0025), big-endian in every body: the speed as 100 x
// 2^(v/12 - 5), and the Hi/Lo extension past the normal range, in steps of
// 0.3, 0.5, 0.7 and 1.0 EV per whole stop.
constexpr const char* kIsoExpansionKinds[] = {nullptr, "Hi", "Lo"};

void IsoInfo(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 6)) return;
    s.Rowf("ISO", "%d", static_cast<int>(100.0 * std::pow(2.0, s.bytes[0] / 12.0 - 5.0) + 0.5));
    const uint16_t expansion = platform::GetU16(s.bytes + 4, /*bigEndian=*/1);
    const unsigned kind = expansion >> 8, step = expansion & 0xFF;
    constexpr double kFractions[] = {0.3, 0.5, 0.7, 1.0};
    if (expansion == 0) s.Row("ISO Expansion", "Off");
    else if (kind >= 1 && kind <= 2 && step >= 1 && step <= 20)
        s.Rowf("ISO Expansion", "%s %.1f", kIsoExpansionKinds[kind], (step - 1) / 4 + kFractions[(step - 1) % 4]);
    else s.Rowf("ISO Expansion", "0x%x", expansion);
}

// AF fine tune (tag 00B9).
constexpr ValueText kAfFineTuneTexts[] = {{0, "Off"}, {1, "On (1)"}, {2, "On (2)"}, {3, "On (Zoom)"}};
constexpr Enumeration kAfFineTune = Enum(kAfFineTuneTexts, Sign::kUnsigned, "%d");

void AfTune(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 3)) return;
    s.Row("AF Fine Tune", EnumText(kAfFineTune, s.bytes[0]));
    if (s.bytes[1] == 255) s.Row("AF Fine Tune Index", "n/a");
    else s.Rowf("AF Fine Tune Index", "%u", s.bytes[1]);
    // A positive adjustment shows its sign, zero none.
    const auto adjust = [&](const char* name, uint8_t b) {
        const int v = static_cast<int8_t>(b);
        s.Rowf(name, v > 0 ? "+%d" : "%d", v);
    };
    adjust("AF Fine Tune Adj", s.bytes[2]);
    if (s.Has(3)) adjust("AF Fine Tune Adj Tele", s.bytes[3]);
}

// AF info 2 (tag 00B7) of the bodies with live view: whether contrast
// detection and phase detection were used, and the area mode, whose values
// mean other things under contrast detection. The Z 9's version 04xx lays
// its bytes out otherwise.
constexpr ValueText kContrastDetectAfTexts[] = {{0, "Off"}, {1, "On"}, {2, "On (2)"}};
constexpr Enumeration kContrastDetectAf = Enum(kContrastDetectAfTexts, Sign::kUnsigned, "%d");

// Area modes by the focus method; the modes of the mirrorless and Nikon 1
// bodies (from 128) are shared, and follow the method's own.
constexpr ValueText kPhaseDetectAreaTexts[] = {
    {0, "Single Area"},
    {1, "Dynamic Area"},
    {2, "Dynamic Area (closest subject)"},
    {3, "Group Dynamic"},
    {4, "Dynamic Area (9 points)"},
    {5, "Dynamic Area (21 points)"},
    {6, "Dynamic Area (51 points)"},
    {7, "Dynamic Area (51 points, 3D-tracking)"},
    {8, "Auto-area"},
    {9, "Dynamic Area (3D-tracking)"},
    {10, "Single Area (wide)"},
    {11, "Dynamic Area (wide)"},
    {12, "Dynamic Area (wide, 3D-tracking)"},
    {13, "Group Area"},
    {14, "Dynamic Area (25 points)"},
    {15, "Dynamic Area (72 points)"},
    {16, "Group Area (HL)"},
    {17, "Group Area (VL)"},
    {18, "Dynamic Area (49 points)"},
};
constexpr Enumeration kPhaseDetectArea = Enum(kPhaseDetectAreaTexts, Sign::kUnsigned, "%d");

constexpr ValueText kContrastDetectAreaTexts[] = {
    {0, "Contrast-detect"},
    {1, "Contrast-detect (normal area)"},
    {2, "Contrast-detect (wide area)"},
    {3, "Contrast-detect (face priority)"},
    {4, "Contrast-detect (subject tracking)"},
    {194, "Dynamic"},
    {198, "Auto (People)"},
    {199, "Auto (Animal)"},
    {200, "Normal-area AF"},
    {201, "Wide-area AF"},
    {202, "Face-priority AF"},
    {203, "Subject-tracking AF"},
    {204, "Dynamic Area (S)"},
    {205, "Dynamic Area (M)"},
    {206, "Dynamic Area (L)"},
    {207, "3D-tracking"},
};
constexpr Enumeration kContrastDetectArea = Enum(kContrastDetectAreaTexts, Sign::kUnsigned, "%d");

constexpr ValueText kEitherMethodAreaTexts[] = {
    {128, "Single"},   {129, "Auto (41 points)"}, {130, "Subject Tracking (41 points)"},
    {131, "Face Priority (41 points)"}, {192, "Pinpoint"}, {193, "Single"},
    {195, "Wide (S)"}, {196, "Wide (L)"},         {197, "Auto"},
};
constexpr Enumeration kEitherMethodArea = Enum(kEitherMethodAreaTexts, Sign::kUnsigned, "%d");

constexpr ValueText kPhaseDetectAfTexts[] = {
    {0, "Off"},
    {1, "On (51-point)"},
    {2, "On (11-point)"},
    {3, "On (39-point)"},
    {4, "On (73-point)"},
    {5, "On (5)"},
    {6, "On (105-point)"},
    {7, "On (153-point)"},
    {8, "On (81-point)"},
    {9, "On (105-point)"},
};
constexpr Enumeration kPhaseDetectAf = Enum(kPhaseDetectAfTexts, Sign::kUnsigned, "%d");

void AfInfo2(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 4)) return;
    s.Row("AF Info 2 Version", s.VersionText());
    if ((s.bytes[0] == '0' && s.bytes[1] == '4') || !s.Has(4, 3)) return;
    const uint8_t contrast = s.bytes[4];
    s.Row("Contrast Detect AF", EnumText(kContrastDetectAf, contrast));
    const char* area = EnumerationText(contrast ? kContrastDetectArea : kPhaseDetectArea, s.bytes[5]);
    s.Row("AF Area Mode", area ? area : EnumText(kEitherMethodArea, s.bytes[5]));
    s.Row("Phase Detect AF", EnumText(kPhaseDetectAf, s.bytes[6]));
}

// File info (tag 00B8): the card slot, folder and file numbers, as SHORTs
// whose byte order is not the note's on every body: the order in which the
// folder (100 to 999) and file number (up to 9999) make sense, else
// little-endian for a few bodies and big-endian for the rest.
constexpr const char* kFileInfoLittleEndianModels[] = {
    "NIKON D4S", "NIKON D750", "NIKON D810", "NIKON D3300", "NIKON D5200", "NIKON D5300", "NIKON D5500", "NIKON D7100",
};

bool FileNumbersMakeSense(const uint8_t* b, int bigEndian) {
    const unsigned folder = platform::GetU16(b, bigEndian), file = platform::GetU16(b + 2, bigEndian);
    return folder >= 100 && folder <= 999 && file <= 9999;
}

void FileInfo(Structure& s, const NikonFacts& keys) {
    if (!s.Has(0, 10)) return;
    const bool little = FileNumbersMakeSense(s.bytes + 6, 0), big = FileNumbersMakeSense(s.bytes + 6, 1);
    const int order = little != big ? big : !keys.fileInfoLittleEndian;
    s.Row("File Info Version", s.VersionText());
    s.Rowf("Memory Card Number", "%u", platform::GetU16(s.bytes + 4, order));
    s.Rowf("Directory Number", "%03u", platform::GetU16(s.bytes + 6, order));
    s.Rowf("File Number", "%04u", platform::GetU16(s.bytes + 8, order));
}

// ---- the preview's directory (tag 0011): a small TIFF directory of its own

constexpr ValueText kCompressionTexts[] = {{1, "Uncompressed"}, {6, "JPEG (old-style)"}, {7, "JPEG"}};
constexpr Enumeration kCompression = Enum(kCompressionTexts, Sign::kUnsigned, "%d");
constexpr ValueText kResolutionUnitTexts[] = {{1, "None"}, {2, "inches"}, {3, "cm"}};
constexpr Enumeration kResolutionUnit = Enum(kResolutionUnitTexts, Sign::kUnsigned, "%d");
constexpr ValueText kYCbCrPositioningTexts[] = {{1, "Centered"}, {2, "Co-sited"}};
constexpr Enumeration kYCbCrPositioning = Enum(kYCbCrPositioningTexts, Sign::kUnsigned, "%d");

// The image's offset counts from the note's offset base; shown as a file position.
void PreviewStart(const MakerEntry& e) {
    SetValuef(e.row(), "%llu", static_cast<unsigned long long>(uint64_t{e.context.base} + e.entry().valueField));
}

constexpr MakerTag kNikonPreviewTags[] = {
    {259, "Preview Compression", kCompression},             // 0103
    {282, "Preview X Resolution", FormatRational},          // 011A
    {283, "Preview Y Resolution", FormatRational},          // 011B
    {296, "Preview Resolution Unit", kResolutionUnit},      // 0128
    {513, "Preview Image Start", PreviewStart},             // 0201
    {514, "Preview Image Length", FormatGenericValue},      // 0202
    {531, "Preview YCbCr Positioning", kYCbCrPositioning},  // 0213
};
static_assert(TagsAscend(kNikonPreviewTags), "tags ascend");
constexpr MakerTable kNikonPreview = Table(kNikonPreviewTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// ---- the pass

// The Model row's text; empty when there is none.
const char* ModelText(const exif::TagRecordTable& table, uint32_t rows) {
    const char* model = "";
    for (uint32_t i = 0; i < rows && i < exif::kTagTableRows; ++i)
        if (table.rows[i].tag == kModelTag) model = table.rows[i].value;
    return model;
}

// Whether the model text starts with `prefix` (in capitals; the model in any
// case), and with wholeWord, ends there or goes on with no letter, digit or
// underscore.
bool ModelStartsWith(const char* model, const char* prefix, bool wholeWord) {
    size_t i = 0;  // stops at the model's end, where no letter matches
    for (; prefix[i]; ++i)
        if (std::toupper(static_cast<unsigned char>(model[i])) != prefix[i]) return false;
    const unsigned char next = static_cast<unsigned char>(model[i]);
    return !wholeWord || !(std::isalnum(next) || next == '_');
}

bool ModelIs(const char* model, const char* name) {
    return ModelStartsWith(model, name, /*wholeWord=*/false) && model[std::strlen(name)] == '\0';
}

// The Z bodies made up to the end of 2021.
constexpr const char* kEarlyZModels[] = {
    "NIKON Z 5", "NIKON Z 50", "NIKON Z 6", "NIKON Z 6_2", "NIKON Z 7", "NIKON Z 7_2", "NIKON Z FC", "NIKON Z 9",
};

// The serial number's digits as a number; a serial with other characters
// keys the cipher with 0x22 on the D50 and 0x60 on other bodies.
uint32_t SerialKey(const char* text, size_t size, const char* model) {
    uint32_t value = 0;
    bool digits = size > 0;
    for (size_t i = 0; i < size && text[i]; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            digits = false;
            break;
        }
        value = value * 10 + static_cast<uint32_t>(text[i] - '0');
    }
    if (digits && text[0]) return value;
    const size_t n = std::strlen(model);
    return n >= 3 && std::strcmp(model + n - 3, "D50") == 0 ? 0x22 : 0x60;
}

// Reads, from the Model row and from the directory (at its count), what the
// structures depend on: the body, the lens-type flags and the cipher's keys.
NikonFacts FindFacts(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                     uint32_t rowCount) {
    NikonFacts facts;
    if (rowCount >= kMakerNoteRowLimit) return facts;
    const char* model = ModelText(table, rowCount);
    facts.afBigEndian = ModelStartsWith(model, "NIKON D", /*wholeWord=*/false);
    for (const char* z : kEarlyZModels) facts.earlyZ = facts.earlyZ || ModelStartsWith(model, z, /*wholeWord=*/true);
    for (const char* m : kFileInfoLittleEndianModels)
        facts.fileInfoLittleEndian = facts.fileInfoLittleEndian || ModelIs(model, m);
    tiff::Entry entry;
    if (FindDirectoryEntry(directory, kLensTypeTag, entry)) facts.lensType = entry.fieldBytes[0];
    if (FindDirectoryEntry(directory, kShutterCountTag, entry)) {
        facts.haveCount = true;
        facts.count = entry.valueField;
    }
    if (FindDirectoryEntry(directory, kSerialNumberTag, entry)) {
        uint8_t text[kSerialReadLimit + 1] = {};
        // The reader wants a row for its context; it writes none.
        const exif::EntryContext context{directory.Whole(), offsetBase, entry, exif::TakeRow(table, rowCount)};
        const size_t got = exif::ReadRawBlock(context, text, kSerialReadLimit);
        facts.haveSerial = true;
        facts.serial = SerialKey(reinterpret_cast<const char*>(text), got, model);
    }
    return facts;
}

struct NikonStructure {
    uint16_t tag;
    void (*decode)(Structure&, const NikonFacts&);
    uint16_t alsoType;  // a type read besides UNDEFINED (0: none)
};
constexpr NikonStructure kNikonStructures[] = {
    {0x1F, VrInfo, 0},
    {0x23, PictureControl, 0},
    {0x24, WorldTime, 0},
    {0x25, IsoInfo, 0},
    {0x88, AfInfo, tiff::kLong},  // some bodies store the four AF bytes as one LONG
    {0x97, ColorBalance, 0},
    {0x98, LensData, 0},
    {0xA8, FlashInfo, 0},
    {0xB7, AfInfo2, 0},
    {0xB8, FileInfo, 0},
    {0xB9, AfTune, 0},
};

void DecodeNikonStructures(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                           uint32_t rowsBefore, uint32_t* rowCount, const NikonFacts& facts) {
    const platform::Cursor input = directory.Whole();
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        if (entry.tag == 0x11 && (entry.type == tiff::kLong || entry.type == kIfdType)) {
            platform::Cursor preview = input.ChildAt(tiff::At(offsetBase, entry.valueField), input.end());
            DecodeMakerDirectory(preview, offsetBase, table, rowCount, kNikonPreview);
            return;
        }
        const NikonStructure* structure = nullptr;
        for (const NikonStructure& candidate : kNikonStructures)
            if (candidate.tag == entry.tag) structure = &candidate;
        if (!structure || !(entry.type == kUndefinedType || entry.type == structure->alsoType)) return;
        Structure s{{}, 0, input.bigEndian(), entry, table, rowCount};
        const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
        s.size = exif::ReadRawBlock(context, s.bytes, sizeof s.bytes);
        structure->decode(s, facts);
    });
}

}  // namespace


const MakerTable& NikonType1Tags() { return kNikonType1; }

void DecodeNikonType1MakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                               uint32_t* rowCount) {
    platform::Cursor in = directory;
    in.Skip(kType1HeaderRest);
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kNikonType1);
}

void DecodeNikonMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    const uint32_t rowsBefore = *rowCount;
    const NikonFacts facts = FindFacts(directory, offsetBase, table, *rowCount);
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kNikon);
    DecodeNikonStructures(directory, offsetBase, table, rowsBefore, rowCount, facts);
}

}  // namespace makernotes
