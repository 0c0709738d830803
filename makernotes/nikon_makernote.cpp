// Nikon maker notes. The older form ("Nikon" and an 8-byte header, values
// from the TIFF header) and the main form (an embedded TIFF header, or no
// header at all) each have their tags here.
#include <cstdio>
#include <cstring>
#include <string>

#include "lens_tables.h"
#include "makernote_decoders.h"
#include "makernote_limits.h"

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

enum : uint16_t { kUndefinedType = 7 };

// The version is four characters ("0210"), except that some cameras store
// the digits as the bytes 0 to 9 themselves.
void Version(const MakerEntry& e) {
    const uint8_t* b = e.entry().fieldBytes;
    char text[5] = {};
    for (int i = 0; i < 4; ++i) text[i] = static_cast<char>(b[i] < 10 ? '0' + b[i] : b[i]);
    for (int i = 0; i < 4; ++i)
        if (text[i] < ' ' || text[i] > '~') text[i] = '?';
    exif::SetRowValue(e.row(), text);
}

// Two SHORTs inline: a flag, then the speed the photographer set.
void IsoSpeed(const MakerEntry& e) {
    SetValuef(e.row(), "%u", tiff::GetU16(e.entry().fieldBytes + 2, e.context.bigEndian));
}

// The lens: shortest and longest focal length, then the widest aperture at
// each, as four rationals ("18-70mm f/3.5-4.5"; one number where they agree).
void LensRange(const MakerEntry& e) {
    double v[4] = {};
    for (int i = 0; i < 4; ++i) {
        const uint64_t offset = uint64_t{e.entry().valueField} + 8u * i;
        uint32_t num = 0, den = 0;
        if (offset > UINT32_MAX ||
            !tiff::ReadRational(e.context.file, e.context.base, static_cast<uint32_t>(offset), e.context.bigEndian,
                                num, den) ||
            den == 0)
            return;
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

constexpr ValueText kFlashModeTexts[] = {
    {0, "Did Not Fire"}, {1, "Fired, Manual"}, {3, "Not Ready"}, {7, "Fired, External"},
    {8, "Fired, Commander Mode"}, {9, "Fired, TTL Mode"}, {18, "LED Light"},
};

// A BYTE stands in the field's first byte whatever the byte order.
void FlashMode(const MakerEntry& e) {
    const int v = e.entry().fieldBytes[0];
    for (const ValueText& t : kFlashModeTexts)
        if (t.value == v) return exif::SetRowValue(e.row(), t.text);
    SetValuef(e.row(), "%d", v);
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

// Lens data: a 4-character version, then the lens's 7 identifying bytes
// (ID number, f-stops, shortest and longest focal length, widest aperture at
// each, MCU version), stored in the clear by versions 0100 and 0101 at their
// own places; from 0201 on the data is enciphered with the serial number and
// shutter count. The name's key is those 7 bytes and the lens-type flags of
// tag 0083.
struct LensDataForm {
    char version[5];
    size_t keyStart;
};
constexpr LensDataForm kLensDataForms[] = {
    {"0100", 6},
    {"0101", 11},
};
constexpr size_t kLensDataKeyBytes = 7;
constexpr size_t kLensDataReadBytes = 18;  // the longest form's key end

void LensName(const MakerEntry& e);

constexpr MakerTag kNikonTags[] = {
    {1, "Version", Version},
    {2, "ISO Setting", IsoSpeed},
    {3, "Color Mode", FormatGenericValue},
    {4, "Quality", FormatGenericValue},
    {5, "White Balance", FormatGenericValue},
    {6, "Sharpening", FormatGenericValue},
    {7, "Focus Mode", FormatGenericValue},
    {8, "Flash Setting", FormatGenericValue},
    {15, "ISO Selection", FormatGenericValue},   // 000F
    {29, "Serial Number", FormatGenericValue},   // 001D
    {131, "Lens Type", LensType},                // 0083
    {132, "Lens", LensRange},                    // 0084
    {135, "Flash Mode", FlashMode},              // 0087
    {137, "Shooting Mode", ShootingMode},        // 0089
    {152, "Lens Name", LensName},                // 0098
    {160, "Serial Number", FormatGenericValue},  // 00A0
    {167, "Shutter Count", FormatGenericValue},  // 00A7
};
constexpr MakerTable kNikon = Table(kNikonTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// The lens-type flags live in tag 0083, which the directory may list before
// or after the lens data; the decoder finds it before the entry loop and
// hands it to LensName in the note's context.

void LensName(const MakerEntry& e) {
    uint8_t data[kLensDataReadBytes] = {};
    if (e.entry().type != kUndefinedType) return;
    const size_t got = exif::ReadRawBlock(e.context, data, sizeof data);
    if (got < 4) return;
    const LensDataForm* form = nullptr;
    for (const LensDataForm& f : kLensDataForms)
        if (std::memcmp(data, f.version, 4) == 0) form = &f;
    if (!form || got < form->keyStart + kLensDataKeyBytes) {
        char version[5] = {};
        for (int i = 0; i < 4; ++i) version[i] = data[i] >= ' ' && data[i] <= '~' ? static_cast<char>(data[i]) : '?';
        return SetValuef(e.row(), "unknown (lens data %s)", version);
    }
    uint8_t key[8];
    std::memcpy(key, data + form->keyStart, kLensDataKeyBytes);
    key[7] = e.note.lensType;
    char name[128] = "";
    if (!LookupNikonLens(key, name, sizeof name))
        return SetValuef(e.row(), "unknown (%02X %02X %02X %02X %02X %02X %02X %02X)", key[0], key[1], key[2],
                         key[3], key[4], key[5], key[6], key[7]);
    exif::SetRowValue(e.row(), name);
}

// Tag 0083's byte, from the directory at the file position (which is kept).
uint8_t FindLensType(platform::File& file, int bigEndian) {
    tiff::Entry entry;
    return FindDirectoryEntry(file, bigEndian, 0x83, entry) ? entry.fieldBytes[0] : 0;
}

}  // namespace


const MakerTable& NikonType1Tags() { return kNikonType1; }

void DecodeNikonType1MakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                               uint32_t* rowCount, int bigEndian) {
    file.Seek(kType1HeaderRest, platform::SeekFrom::kCurrent);
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kNikonType1);
}

void DecodeNikonMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount, int bigEndian) {
    NoteContext note;
    note.lensType = FindLensType(file, bigEndian);
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kNikon, note);
}

}  // namespace makernotes
