// Nikon's main maker-note form: an embedded TIFF header (offsets from that
// header), or no header at all (offsets from the EXIF block's). The plain
// tags of the directory are named here; the byte structures some tags hold
// are read in a second pass (nikon_structures.cpp).
#include <cmath>
#include <cstdio>
#include <string>

#include "makernote_array.h"
#include "makernote_texts.h"
#include "nikon_makernote.h"

namespace makernotes {
namespace {

using namespace nikon;

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
static_assert(TagsAscend(kNikonTags) && TagsNamed(kNikonTags), "tags ascend");
constexpr MakerTable kNikon = Table(kNikonTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

}  // namespace

void DecodeNikonMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    const uint32_t rowsBefore = *rowCount;
    const NikonFacts facts = FindFacts(directory, offsetBase, table, *rowCount);
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kNikon);
    DecodeNikonStructures(directory, offsetBase, table, rowsBefore, rowCount, facts);
}

}  // namespace makernotes
