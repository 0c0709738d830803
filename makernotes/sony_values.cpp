// The value formats Sony's files share: numbers, Sony's exposure codes, the
// lens spec and the lens's name, and the reading of blocks field by field.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "makernote_texts.h"
#include "sony_makernote.h"

namespace makernotes {
namespace sony {
namespace {

// Two binary-coded decimal digits.
uint32_t Bcd(uint8_t b) { return (b >> 4) * 10u + (b & 0x0F); }

// A lens spec's focal lengths and apertures.
struct SpecNumbers {
    uint32_t shortFocal, longFocal;  // mm; longFocal 0 for a prime
    double wideAperture, teleAperture;  // teleAperture 0 when constant
};
SpecNumbers ReadSpec(const uint8_t s[8]) {
    return {Bcd(s[1]) * 100 + Bcd(s[2]), Bcd(s[3]) * 100 + Bcd(s[4]), Bcd(s[5]) / 10.0, Bcd(s[6]) / 10.0};
}

// The words a lens spec's flag bits stand for: before the focal length
// (the mount, then power zoom) and after the aperture, in this order.
const char* MountWord(uint8_t flags) {
    switch (flags & 0x03) {
        case 1: return "DT";
        case 2: return "FE";
        case 3: return "E";
    }
    return nullptr;
}
const char* KindWord(uint8_t flags) {
    switch (flags & 0xE0) {
        case 0x20: return "STF";
        case 0x40: return "Reflex";
        case 0x60: return "Macro";
        case 0x80: return "Fisheye";
    }
    return nullptr;
}
const char* LineWord(uint8_t flags) {
    switch (flags & 0x0C) {
        case 0x04: return "ZA";
        case 0x08: return "G";
    }
    return nullptr;
}
const char* MotorWord(uint8_t flags) {
    switch (flags & 0x03) {
        case 1: return "SSM";
        case 2: return "SAM";
    }
    return nullptr;
}

void AddWord(std::string& out, const char* word) {
    if (!word) return;
    if (!out.empty()) out += ' ';
    out += word;
}

// The focal lengths and the wide aperture that a lens's name spells
// ("... 24-70mm F2.8 ..."); false when the name spells none.
bool NameNumbers(const char* name, SpecNumbers& n) {
    const char* mm = std::strstr(name, "mm ");
    if (!mm) return false;
    const char* start = mm;
    while (start > name && (std::isdigit(static_cast<unsigned char>(start[-1])) || start[-1] == '-' ||
                            start[-1] == '.'))
        --start;
    const std::string focal(start, mm);
    const char* f = std::strstr(mm, " F");
    if (focal.empty() || !f) return false;
    n = {};
    const size_t dash = focal.find('-');
    n.shortFocal = static_cast<uint32_t>(std::atof(focal.c_str()));
    if (dash != std::string::npos) n.longFocal = static_cast<uint32_t>(std::atof(focal.c_str() + dash + 1));
    n.wideAperture = std::atof(f + 2);
    return n.shortFocal > 0 && n.wideAperture > 0;
}

// True when the lens spec gives the focal lengths and wide aperture that
// the name spells: the lens spec confirms a lens its type shares with others.
bool SpecConfirms(const uint8_t spec[8], const char* name) {
    SpecNumbers fromName;
    if (!NameNumbers(name, fromName)) return false;
    const SpecNumbers fromSpec = ReadSpec(spec);
    return fromSpec.shortFocal == fromName.shortFocal && fromSpec.longFocal == fromName.longFocal &&
           std::fabs(fromSpec.wideAperture - fromName.wideAperture) < 0.05;
}

}  // namespace

std::string Printf(const char* format, ...) {
    char text[exif::kTagValueSize];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    return text;
}

std::string NamedLensText(const SonyLens& lens, const SonyFacts& facts) {
    if (!lens.shared) return lens.name;
    std::string spec;
    if (facts.haveLensSpec && LensSpecText(facts.lensSpec, spec))
        return SpecConfirms(facts.lensSpec, lens.name) ? lens.name : spec;
    return std::string(lens.name) + " or other lens";
}

std::string Number(double v) { return Printf("%.15g", v); }

std::string SignedSetting(int64_t v) { return v == 0 ? "0" : Printf("%+lld", static_cast<long long>(v)); }

std::string SecondsText(double seconds) {
    // The denominator as a whole double: the shortest codes give times far
    // beyond an int's reach.
    if (seconds > 0 && seconds < 0.25001) return Printf("1/%.0f", std::floor(0.5 + 1.0 / seconds));
    std::string text = Printf("%.1f", seconds);
    if (text.size() > 2 && text.compare(text.size() - 2, 2, ".0") == 0) text.resize(text.size() - 2);
    return text;
}

std::string ExposureTimeText(uint32_t code) {
    if (code == 0) return "0";
    return SecondsText(std::exp2(16.0 - code / 256.0));
}

std::string FNumberText(uint32_t code) { return Printf("%.1f", std::exp2((code / 256.0 - 16.0) / 2.0)); }

std::string IsoText(uint32_t code) {
    if (code == 0) return "0";
    return Printf("%.0f", 100.0 * std::exp2(16.0 - code / 256.0));
}

bool LensSpecText(const uint8_t spec[8], std::string& out) {
    const SpecNumbers n = ReadSpec(spec);
    if (n.shortFocal == 0 || n.wideAperture == 0) return false;
    out.clear();
    AddWord(out, MountWord(spec[0]));
    AddWord(out, spec[0] & 0x40 ? "PZ" : nullptr);
    std::string focal = n.longFocal ? Printf("%u-%umm", n.shortFocal, n.longFocal) : Printf("%umm", n.shortFocal);
    std::string aperture = "F" + Number(n.wideAperture);
    if (n.teleAperture > 0) aperture += "-" + Number(n.teleAperture);
    AddWord(out, (focal + " " + aperture).c_str());
    AddWord(out, KindWord(spec[7]));
    AddWord(out, LineWord(spec[7]));
    AddWord(out, MotorWord(spec[7]));
    AddWord(out, spec[0] & 0x80 ? "OSS" : nullptr);
    AddWord(out, spec[0] & 0x20 ? "LE" : nullptr);
    AddWord(out, spec[0] & 0x08 ? "II" : nullptr);
    return true;
}

std::string LensSpecNumbers(const uint8_t spec[8]) {
    const SpecNumbers n = ReadSpec(spec);
    return Printf("%02x %u %u %s %s %02x", spec[0], n.shortFocal, n.longFocal, Number(n.wideAperture).c_str(),
                  Number(n.teleAperture).c_str(), spec[7]);
}

std::string ComposeLensName(const SonyFacts& facts) {
    // 65535: no A-mount lens (an E-mount lens, or none).
    if (facts.haveLensType && facts.lensType != 0xFFFF)
        if (const SonyLens* lens = FindAmountLens(facts.lensType)) return NamedLensText(*lens, facts);
    if (facts.haveEmountType)
        if (const SonyLens* lens = FindEmountLens(facts.emountType)) return NamedLensText(*lens, facts);
    std::string spec;
    if (facts.haveLensSpec && LensSpecText(facts.lensSpec, spec)) return spec;
    return {};
}

std::string BitNames(const uint8_t* bytes, size_t size, const char* const* names, size_t count) {
    std::string out;
    for (size_t bit = 0; bit < size * 8; ++bit) {
        if (!(bytes[bit / 8] >> (bit % 8) & 1) || bit >= count || !names[bit]) continue;
        if (!out.empty()) out += ", ";
        out += names[bit];
    }
    return out.empty() ? "(none)" : out;
}

// ------------------------------------------------------------ directory values

using namespace tiff;  // field types

uint32_t StoredValue(const MakerEntry& e) {
    switch (e.entry().type) {
        case kByte:
        case kSByte:
        case kUndefined: return e.entry().fieldBytes[0];
        case kShort:
        case kSShort: return e.Unsigned16();
        default: return e.entry().valueField;
    }
}
int32_t SignedValue(const MakerEntry& e) {
    const uint32_t v = StoredValue(e);
    switch (e.entry().type) {
        case kSByte: return static_cast<int8_t>(v);
        case kSShort: return static_cast<int16_t>(v);
        default: return static_cast<int32_t>(v);
    }
}

void SetEnumerated(const MakerEntry& e, const Enumeration& en, uint32_t v) {
    if (const char* text = EnumerationText(en, static_cast<int32_t>(v))) return exif::SetRowValue(e.row(), text);
    if (en.sign == Sign::kSigned) return SetValuef(e.row(), "%d", static_cast<int32_t>(v));
    SetValuef(e.row(), "%u", v);
}

void UnsignedNumber(const MakerEntry& e) { SetValuef(e.row(), "%u", StoredValue(e)); }
void SignedNumber(const MakerEntry& e) { SetValuef(e.row(), "%d", SignedValue(e)); }

bool SignedRationalValue(const MakerEntry& e, double& v) {
    uint8_t b[8];
    if (e.entry().type != kSRational || exif::ReadRawBlock(e.context, b, sizeof b) < sizeof b) return false;
    const int order = e.context.bigEndian();
    const int32_t num = static_cast<int32_t>(platform::GetU32(b, order));
    const int32_t den = static_cast<int32_t>(platform::GetU32(b + 4, order));
    v = den == 0 ? num : static_cast<double>(num) / den;
    return true;
}
void RationalNumber(const MakerEntry& e) {
    double v;
    if (SignedRationalValue(e, v)) exif::SetRowValue(e.row(), Number(v));
}

namespace {

constexpr ValueText kWhiteBalanceTexts[] = {
    {0x00, "Auto"},    {0x01, "Color Temperature/Color Filter"}, {0x10, "Daylight"},
    {0x20, "Cloudy"},  {0x30, "Shade"},  {0x40, "Tungsten"},     {0x50, "Flash"},
    {0x60, "Fluorescent"}, {0x70, "Custom"}, {0x80, "Underwater"},
};
constexpr ValueText kSceneModeTexts[] = {
    {0, "Standard"},       {1, "Portrait"},          {2, "Text"},                {3, "Night Scene"},
    {4, "Sunset"},         {5, "Sports"},            {6, "Landscape"},           {7, "Night Portrait"},
    {8, "Macro"},          {9, "Super Macro"},       {16, "Auto"},               {17, "Night View/Portrait"},
    {18, "Sweep Panorama"}, {19, "Handheld Night Shot"}, {20, "Anti Motion Blur"}, {21, "Cont. Priority AE"},
    {22, "Auto+"},         {23, "3D Sweep Panorama"}, {24, "Superior Auto"},     {25, "High Sensitivity"},
    {26, "Fireworks"},     {27, "Food"},             {28, "Pet"},                {33, "HDR"},
    {65535, "n/a"},
};
constexpr ValueText kZoneMatchingTexts[] = {
    {0, "ISO Setting Used"}, {1, "High Key"}, {2, "Low Key"}, {U32(0xFFFFFFFF), "n/a"},
};

}  // namespace

const Enumeration kTeleconverter = Enum(kTeleconverterTexts, Sign::kUnsigned, "");
const Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "");
const Enumeration kSceneMode = Enum(kSceneModeTexts, Sign::kUnsigned, "");
const Enumeration kZoneMatching = Enum(kZoneMatchingTexts, Sign::kUnsigned, "");

// ------------------------------------------------------------ blocks

uint32_t Block::U16(size_t at) const { return platform::GetU16(bytes + at, bigEndian); }
uint32_t Block::U32(size_t at) const { return platform::GetU32(bytes + at, bigEndian); }

void Block::Row(const char* name, const std::string& value) const {
    AppendMakerRow(table, rowCount, entry, name, value);
}

void DecodeFields(const Block& block, const Fields& fields) {
    for (size_t i = 0; i < fields.size; ++i) {
        const Field& f = fields.items[i];
        std::string text;
        if (f.format(block, f, text)) block.Row(f.name, text);
    }
}

namespace {

bool Enumerated(const Field& f, int64_t value, std::string& out) {
    if (f.values) {
        if (const char* text = EnumerationText(*f.values, value)) {
            out = text;
            return true;
        }
    }
    out = Printf("%lld", static_cast<long long>(value));
    return true;
}

}  // namespace

bool ByteField(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 1) && Enumerated(f, b.U8(f.at), out);
}
bool SignedByteField(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 1) && Enumerated(f, static_cast<int8_t>(b.U8(f.at)), out);
}
bool ShortField(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 2) && Enumerated(f, b.U16(f.at), out);
}
bool SignedShortField(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 2) && Enumerated(f, static_cast<int16_t>(b.U16(f.at)), out);
}
bool LongField(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 4) && Enumerated(f, b.U32(f.at), out);
}

bool AfStatus(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    const int32_t v = static_cast<int16_t>(b.U16(f.at));
    if (v == -32768) out = "Out of Focus";
    else if (v == 0) out = "In Focus";
    else out = Printf("%s (%+d)", v < 0 ? "Front Focus" : "Back Focus", v);
    return true;
}

}  // namespace sony
}  // namespace makernotes
