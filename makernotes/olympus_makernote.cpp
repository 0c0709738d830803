// Olympus and OM System maker notes, in three header forms. The main
// directory holds the older settings (mode, quality, macro, zoom, camera
// type and ID); newer cameras add sub-directories (equipment, camera
// settings, raw development, image processing, focus info: a file each),
// read in a second pass over the main directory, one level deep.
#include <cstdint>
#include <cstring>
#include <string>

#include "makernote_limits.h"
#include "makernote_texts.h"
#include "olympus_makernote.h"

namespace makernotes {
namespace olympus {
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

// ------------------------------------------------------------ main directory

constexpr ValueText kMacroTexts[] = {{0, "Off"}, {1, "On"}, {2, "Super macro"}};
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

static_assert(TagsAscend(kOlympusTags) && TagsNamed(kOlympusTags), "tag order");
static_assert(ValuesUnique(kMacroTexts) && ValuesUnique(kQualityFromZeroTexts) && ValuesUnique(kQualityFromOneTexts) &&
                  ValuesUnique(kShootingModeTexts) && ValuesUnique(kPanoramaTexts) && ValuesUnique(kMainSceneModeTexts) &&
                  ValuesUnique(kWbModeTexts),
              "enumeration values");

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

}  // namespace

constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kMacro = Enum(kMacroTexts, Sign::kUnsigned, "%d");

}  // namespace olympus

using namespace olympus;

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