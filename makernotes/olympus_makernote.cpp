// Olympus and OM System maker notes, in three header forms. The main
// directory holds the older settings (mode, quality, macro, zoom, camera
// type and ID); newer cameras add sub-directories, of which the equipment
// (0x2010) and camera settings (0x2020) ones are read in a second pass over
// the main directory, one level deep.
#include <cstdio>
#include <cstring>
#include <string>

#include "makernote_decoders.h"
#include "makernote_limits.h"

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

// ------------------------------------------------------------ main directory

constexpr ValueText kMacroTexts[] = {{0, "Off"}, {1, "On"}, {2, "Super macro"}};
constexpr Enumeration kMacro = Enum(kMacroTexts, Sign::kUnsigned, "%d");

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

// Up to N numbers of the entry, in the note's byte order, when its type
// stores them in `size` bytes each (2: SHORT, 4: LONG); 0 otherwise.
template <size_t N>
size_t ReadNumbers(const MakerEntry& e, uint32_t (&out)[N], size_t size) {
    if (tiff::TypeSize(e.entry().type) != size) return 0;
    uint8_t bytes[N * 4] = {};
    const size_t got = exif::ReadRawBlock(e.context, bytes, N * size) / size;
    for (size_t i = 0; i < got; ++i)
        out[i] = size == 2 ? tiff::GetU16(bytes + 2 * i, e.context.bigEndian) : tiff::GetU32(bytes + 4 * i, e.context.bigEndian);
    return got;
}

constexpr ValueText kShootingModeTexts[] = {{0, "Normal"}, {2, "Fast"}, {3, "Panorama"}};
constexpr ValueText kPanoramaTexts[] = {
    {1, "left to right"}, {2, "right to left"}, {3, "bottom to top"}, {4, "top to bottom"},
};

template <size_t N>
const char* TextOf(const ValueText (&texts)[N], uint32_t value) {
    for (const ValueText& t : texts)
        if (static_cast<uint32_t>(t.value) == value) return t.text;
    return nullptr;
}

// Three LONGs: the shooting mode, the frame's number in a sequence, and the
// direction of a panorama.
void SpecialMode(const MakerEntry& e) {
    uint32_t v[3] = {};
    if (ReadNumbers(e, v, 4) < 3) return;
    std::string text;
    const char* mode = TextOf(kShootingModeTexts, v[0]);
    text = mode ? mode : std::to_string(v[0]);
    text += ", sequence " + std::to_string(v[1]);
    if (v[2] != 0) {
        const char* direction = TextOf(kPanoramaTexts, v[2]);
        text += ", panorama " + (direction ? std::string(direction) : std::to_string(v[2]));
    }
    exif::SetRowValue(e.row(), text);
}

// A RATIONAL; 0 when the camera did not zoom. Shown as the plain quotient.
void DigitalZoom(const MakerEntry& e) {
    uint32_t num = 0, den = 0;
    if (e.entry().type != kRationalType ||
        !tiff::ReadRational(e.context.file, e.context.base, e.entry().valueField, e.context.bigEndian, num, den) ||
        den == 0)
        return;
    SetValuef(e.row(), "%g", static_cast<double>(num) / den);
}

// A firmware version as a LONG, whose hexadecimal digits read as the
// version: 0x1300 is 1.300. Older notes store the version as text instead.
void FirmwareVersion(const MakerEntry& e) {
    if (e.entry().type == kAsciiType) return FormatGenericValue(e);
    const uint32_t v = e.entry().valueField;
    SetValuef(e.row(), "%x.%03x", v >> 12, v & 0xFFF);
}

// 0207 was once taken for the firmware version; its codes ("SR951",
// "D4040") name the camera type, and the text is shown as stored.
constexpr MakerTag kOlympusTags[] = {
    {0x0104, "Body Firmware Version", FirmwareVersion},
    {0x0200, "Special Mode", SpecialMode},
    {0x0201, "Quality", Quality},
    {0x0202, "Macro", kMacro},
    {0x0204, "Digital Zoom", DigitalZoom},
    {0x0207, "Camera Type", FormatGenericValue},
    {0x0209, "Camera ID", FormatGenericValue},
};
constexpr MakerTable kOlympus = Table(kOlympusTags, ValueRule::kLeadingShort);

// ------------------------------------------------------------ equipment

// Six bytes: make, unknown, model, sub-model, two unknown. The first, third
// and fourth identify the lens; shown as their code ("0 05 00"), since the
// name, where the camera knows it, has a row of its own (lens model).
void LensType(const MakerEntry& e) {
    uint8_t b[6] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) < 4) return;
    SetValuef(e.row(), "%x %02x %02x", b[0], b[2], b[3]);
}

constexpr MakerTag kEquipmentTags[] = {
    {0x0101, "Serial Number", FormatGenericValue},
    {0x0104, "Body Firmware Version", FirmwareVersion},
    {0x0201, "Lens Type", LensType},
    {0x0202, "Lens Serial Number", FormatGenericValue},
    {0x0203, "Lens Model", FormatGenericValue},
};
constexpr MakerTable kEquipment = Table(kEquipmentTags, ValueRule::kLeadingShort);

// ------------------------------------------------------------ camera settings

constexpr ValueText kFocusModeTexts[] = {
    {0, "Single AF"}, {1, "Sequential shooting AF"}, {2, "Continuous AF"}, {3, "Multi AF"},
    {4, "Face detect"}, {10, "MF"},
};

struct BitName {
    int bit;
    const char* name;
};
constexpr BitName kFocusModeBits[] = {
    {0, "S-AF"}, {2, "C-AF"}, {4, "MF"}, {5, "Face detect"}, {6, "Imager AF"},
    {7, "Live view magnification frame"}, {8, "AF sensor"}, {9, "Starry sky AF"},
};

// One or two SHORTs: the mode, and on newer cameras the flags of what the
// camera used, after a semicolon.
void FocusMode(const MakerEntry& e) {
    uint32_t v[2] = {};
    const size_t n = ReadNumbers(e, v, 2);
    if (n == 0) return;
    const char* mode = TextOf(kFocusModeTexts, v[0]);
    std::string text = mode ? mode : std::to_string(v[0]);
    if (n > 1) {
        std::string flags;
        for (const BitName& b : kFocusModeBits) {
            if (!(v[1] & (1u << b.bit))) continue;
            if (!flags.empty()) flags += ", ";
            flags += b.name;
        }
        text += "; " + (flags.empty() ? std::string("none") : flags);
    }
    exif::SetRowValue(e.row(), text);
}

constexpr ValueText kWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Auto (keep warm color off)"}, {16, "7500K (shade)"}, {17, "6000K (cloudy)"},
    {18, "5300K (fine weather)"}, {20, "3000K (tungsten)"}, {21, "3600K (tungsten-like)"}, {22, "Auto setup"},
    {23, "5500K (flash)"}, {33, "6600K (daylight fluorescent)"}, {34, "4500K (neutral white fluorescent)"},
    {35, "4000K (cool white fluorescent)"}, {36, "White fluorescent"}, {48, "3600K (tungsten-like)"},
    {67, "Underwater"}, {256, "One touch WB 1"}, {257, "One touch WB 2"}, {258, "One touch WB 3"},
    {259, "One touch WB 4"}, {512, "Custom WB 1"}, {513, "Custom WB 2"}, {514, "Custom WB 3"},
    {515, "Custom WB 4"},
};
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "%d");

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
void ArtFilter(const MakerEntry& e) {
    uint32_t v[4] = {};
    if (ReadNumbers(e, v, 2) == 0) return;
    const char* name = TextOf(kArtFilterTexts, v[0]);
    if (name) return exif::SetRowValue(e.row(), name);
    SetValuef(e.row(), "%u", v[0]);
}

constexpr MakerTag kCameraSettingsTags[] = {
    {0x0301, "Focus Mode", FocusMode},
    {0x0500, "White Balance", kWhiteBalance},
    {0x0529, "Art Filter", ArtFilter},
};
constexpr MakerTable kCameraSettings = Table(kCameraSettingsTags, ValueRule::kLeadingShort);

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
};

// The main directory's bytes: a sub-directory that points into them would
// read the main entries again under the wrong names.
struct Span {
    int64_t begin, end;
};

// Where a sub-directory starts, or -1 when its entry cannot hold one: a
// wrong type, an offset outside the file or into the main directory, or
// entries that run past the file (or past an UNDEFINED block's own size).
int64_t SubDirectoryStart(platform::File& file, uint32_t offsetBase, int bigEndian, const tiff::Entry& entry,
                          const Span& main) {
    const bool block = entry.type == kUndefinedType;
    if (!(entry.type == kIfdType || entry.type == kLongType || (block && entry.count > 4))) return -1;
    const int64_t size = file.Size();
    const int64_t start = int64_t{offsetBase} + entry.valueField;
    if (size < 0 || start > size || size - start < static_cast<int64_t>(kDirectoryCountSize)) return -1;
    if (start >= main.begin && start < main.end) return -1;
    const int64_t back = file.Tell();
    uint8_t countBytes[kDirectoryCountSize] = {};
    const bool read = file.Seek(start) && file.ReadExact(countBytes, sizeof countBytes);
    file.Seek(back);
    if (!read) return -1;
    const int64_t bytes = kDirectoryCountSize + int64_t{kEntrySize} * tiff::GetU16(countBytes, bigEndian);
    if (bytes > size - start || (block && bytes > entry.count)) return -1;
    return start;
}

// The second pass: the main directory again, for the sub-directory tags
// only, each read once.
void DecodeSubDirectories(platform::File& file, int64_t directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t rowsBefore, uint32_t* rowCount, int bigEndian) {
    bool done[sizeof kSubDirectories / sizeof kSubDirectories[0]] = {};
    RevisitDirectory(file, directory, bigEndian, rowsBefore, rowCount, [&](const tiff::Entry& entry,
                                                                            uint32_t entryCount) {
        const Span main{directory, directory + static_cast<int64_t>(kDirectoryCountSize + kEntrySize * entryCount)};
        for (size_t k = 0; k < sizeof kSubDirectories / sizeof kSubDirectories[0]; ++k) {
            if (kSubDirectories[k].tag != entry.tag || done[k]) continue;
            done[k] = true;
            const int64_t start = SubDirectoryStart(file, offsetBase, bigEndian, entry, main);
            if (start >= 0 && file.Seek(start))
                DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, *kSubDirectories[k].table);
        }
    });
}

// Whether the camera type (0207) of the directory at the file position
// counts quality from 0; the position is kept.
bool QualityCountsFromZero(platform::File& file, uint32_t offsetBase, int bigEndian) {
    char type[8] = {};
    tiff::Entry entry;
    if (FindDirectoryEntry(file, bigEndian, 0x0207, entry)) {
        const int64_t start = file.Tell();
        exif::TagRecord scratch = {};
        const exif::EntryContext context{file, offsetBase, bigEndian, entry, scratch};
        exif::ReadRawBlock(context, reinterpret_cast<uint8_t*>(type), sizeof type - 1);
        file.Seek(start);
    }
    // "SX151" alone of the SX types counts from 1.
    const bool sx = std::strncmp(type, "SX", 2) == 0 &&
                    !(std::strncmp(type, "SX151", 5) == 0 && (type[5] == '\0' || type[5] == ' '));
    return sx || std::strncmp(type, "D4322", 5) == 0;
}

bool EqualsIgnoringCase(const char* a, const char* b) {
    for (; *a && *b; ++a, ++b) {
        const char x = (*a >= 'a' && *a <= 'z') ? static_cast<char>(*a - 'a' + 'A') : *a;
        if (x != *b) return false;
    }
    return *a == *b;
}



static_assert(TagsAscend(kOlympusTags) && TagsAscend(kEquipmentTags) && TagsAscend(kCameraSettingsTags), "tag order");
static_assert(ValuesUnique(kMacroTexts) && ValuesUnique(kQualityFromZeroTexts) && ValuesUnique(kQualityFromOneTexts) &&
                  ValuesUnique(kShootingModeTexts) && ValuesUnique(kPanoramaTexts) && ValuesUnique(kFocusModeTexts) &&
                  ValuesUnique(kWhiteBalanceTexts) && ValuesUnique(kArtFilterTexts),
              "enumeration values");

}  // namespace

void DecodeOlympusMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount, int bigEndian) {
    const int64_t noteStart = file.Tell() - static_cast<int64_t>(kMakerNotePrefixSize);
    char form[kFormBytes + 1] = {};
    file.Read(form, kFormBytes);
    const bool fullName = EqualsIgnoringCase(form, "US");
    const bool omSystem = EqualsIgnoringCase(form, "STE");
    if (fullName || omSystem) {
        if (omSystem) file.Seek(kOmSystemPadding, platform::SeekFrom::kCurrent);
        uint8_t markAndVersion[4] = {};
        file.Read(markAndVersion, sizeof markAndVersion);
        if (markAndVersion[0] == 'I' && markAndVersion[1] == 'I') bigEndian = 0;
        // The newer forms are self-contained: their offsets (values and
        // sub-directories alike) count from the note's first byte, not from
        // the TIFF header the older form uses. Cameras write them so, and
        // the note keeps working when a program moves it within the file.
        if (noteStart >= 0 && noteStart <= UINT32_MAX) offsetBase = static_cast<uint32_t>(noteStart);
    }
    const int64_t directory = file.Tell();
    const uint32_t rowsBefore = *rowCount;
    NoteContext note;
    note.qualityFromZero = QualityCountsFromZero(file, offsetBase, bigEndian);
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kOlympus, note);
    if (directory >= 0) DecodeSubDirectories(file, directory, offsetBase, table, rowsBefore, rowCount, bigEndian);
}

}  // namespace makernotes
