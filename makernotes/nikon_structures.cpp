// Nikon's byte structures (AF info, colour balance, lens data, flash info)
// and the second pass over the main-form directory that reads them, the
// later bodies' settings (nikon_body_settings.cpp) and the preview's
// directory.
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "lens_tables.h"
#include "nikon_makernote.h"
#include "nikon_tables.h"

namespace makernotes {
namespace nikon {

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

}  // namespace nikon

namespace {

using namespace nikon;

// The tags the pass looks up before it reads any structure, and the Model row.
constexpr uint16_t kSerialNumberTag = 0x1D;
constexpr uint16_t kLensTypeTag = 0x83;
constexpr uint16_t kShutterCountTag = 0xA7;
constexpr uint16_t kModelTag = 272;

// Digits of a serial number that are read to key the cipher.
constexpr size_t kSerialReadLimit = 32;

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
static_assert(TagsAscend(kNikonPreviewTags) && TagsNamed(kNikonPreviewTags), "tags ascend");
constexpr MakerTable kNikonPreview = Table(kNikonPreviewTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// ---- the pass: what the structures depend on, and which structure a tag holds

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

// The bodies whose file info is little-endian where its numbers make sense
// in both orders.
constexpr const char* kFileInfoLittleEndianModels[] = {
    "NIKON D4S", "NIKON D750", "NIKON D810", "NIKON D3300", "NIKON D5200", "NIKON D5300", "NIKON D5500", "NIKON D7100",
};

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

}  // namespace

namespace nikon {

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

void DecodeNikonStructures(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                           uint32_t rowsBefore, uint32_t* rowCount, const NikonFacts& facts) {
    const platform::Cursor input = directory.Whole();
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        if (entry.tag == 0x11 && (entry.type == tiff::kLong || entry.type == tiff::kIfd)) {
            platform::Cursor preview = input.ChildAt(tiff::At(offsetBase, entry.valueField), input.end());
            DecodeMakerDirectory(preview, offsetBase, table, rowCount, kNikonPreview);
            return;
        }
        const NikonStructure* structure = nullptr;
        for (const NikonStructure& candidate : kNikonStructures)
            if (candidate.tag == entry.tag) structure = &candidate;
        if (!structure || !(entry.type == tiff::kUndefined || entry.type == structure->alsoType)) return;
        Structure s{{}, 0, input.bigEndian(), entry, table, rowCount};
        const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
        s.size = exif::ReadRawBlock(context, s.bytes, sizeof s.bytes);
        structure->decode(s, facts);
    });
}

}  // namespace nikon
}  // namespace makernotes
