// Sanyo maker notes (and the notes of the cameras Sanyo made for others):
// an 8-byte "SANYO\0" header and a directory in the EXIF byte order whose
// offsets count from the TIFF header.
#include "makernote_decoders.h"
#include "makernote_numbers.h"
#include "makernote_texts.h"

namespace makernotes {
namespace {

constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%d");
constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kUnsigned, "%d");

// The high byte is the compression, the low byte the picture size.
constexpr ValueText kCompressionTexts[] = {{0, "Normal"}, {1, "Fine"}, {2, "Super Fine"}};
constexpr ValueText kSizeTexts[] = {
    {0, "Very Low"}, {1, "Low"}, {2, "Medium Low"}, {3, "Medium"},
    {4, "Medium High"}, {5, "High"}, {6, "Very High"}, {7, "Super High"},
};
static_assert(ValuesUnique(kCompressionTexts) && ValuesUnique(kSizeTexts), "values listed once");

void Quality(const MakerEntry& e) {
    const uint16_t v = e.Unsigned16();
    const Enumeration compression = Enum(kCompressionTexts, Sign::kUnsigned, "");
    const Enumeration size = Enum(kSizeTexts, Sign::kUnsigned, "");
    const char* first = EnumerationText(compression, v >> 8);
    const char* second = EnumerationText(size, v & 0xFF);
    if (first && second) SetValuef(e.row(), "%s/%s", first, second);
    else SetValuef(e.row(), "%u", v);
}

constexpr ValueText kMacroTexts[] = {{0, "Normal"}, {1, "Macro"}, {2, "View"}, {3, "Manual"}};
constexpr Enumeration kMacro = Enum(kMacroTexts, Sign::kUnsigned, "%d");

constexpr ValueText kSequentialShotTexts[] = {{0, "None"}, {1, "Standard"}, {2, "Best"}, {3, "Adjust Exposure"}};
constexpr Enumeration kSequentialShot = Enum(kSequentialShotTexts, Sign::kUnsigned, "%d");

constexpr ValueText kShutterReleaseTexts[] = {{0, "Record while down"}, {1, "Press start, press stop"}};
constexpr Enumeration kShutterRelease = Enum(kShutterReleaseTexts, Sign::kUnsigned, "%d");

constexpr ValueText kSceneSelectTexts[] = {
    {0, "Off"}, {1, "Sport"}, {2, "TV"}, {3, "Night"}, {4, "User 1"}, {5, "User 2"}, {6, "Lamp"},
};
constexpr Enumeration kSceneSelect = Enum(kSceneSelectTexts, Sign::kUnsigned, "%d");

constexpr ValueText kShotIntervalTexts[] = {
    {0, "5 frames/s"}, {1, "10 frames/s"}, {2, "15 frames/s"}, {3, "20 frames/s"},
};
constexpr Enumeration kShotInterval = Enum(kShotIntervalTexts, Sign::kUnsigned, "%d");

constexpr ValueText kFlashModeTexts[] = {{0, "Auto"}, {1, "Force"}, {2, "Disabled"}, {3, "Red eye"}};
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "%d");

static_assert(ValuesUnique(kMacroTexts) && ValuesUnique(kSequentialShotTexts) && ValuesUnique(kSceneSelectTexts) &&
                  ValuesUnique(kShotIntervalTexts) && ValuesUnique(kFlashModeTexts),
              "values listed once");

constexpr MakerTag kSanyoTags[] = {
    {0x00ff, "Maker Note Offset", FormatGenericValue},  // where the camera wrote the note
    {0x0200, "Special Mode", FormatGenericValue},
    {0x0201, "Sanyo Quality", Quality},
    {0x0202, "Macro", kMacro},
    {0x0204, "Digital Zoom", FormatQuotients},
    {0x0207, "Software Version", FormatGenericValue},
    {0x0208, "Pict Info", FormatGenericValue},
    {0x0209, "Camera ID", FormatGenericValue},
    {0x020e, "Sequential Shot", kSequentialShot},
    {0x020f, "Wide Range", kOffOn},
    {0x0210, "Color Adjustment Mode", kOffOn},
    {0x0213, "Quick Shot", kOffOn},
    {0x0214, "Self Timer", kOffOn},
    {0x0216, "Voice Memo", kOffOn},
    {0x0217, "Record Shutter Release", kShutterRelease},
    {0x0218, "Flicker Reduce", kOffOn},
    {0x0219, "Optical Zoom On", kOffOn},
    {0x021b, "Digital Zoom On", kOffOn},
    {0x021d, "Light Source Special", kOffOn},
    {0x021e, "Resaved", kNoYes},
    {0x021f, "Scene Select", kSceneSelect},
    {0x0223, "Manual Focus Distance", FormatQuotients},
    {0x0224, "Sequence Shot Interval", kShotInterval},
    {0x0225, "Flash Mode", kFlashMode},
};
static_assert(TagsAscend(kSanyoTags) && TagsNamed(kSanyoTags), "tags ascend, each named");
// The settings are SHORTs, read where TIFF stores one.
constexpr MakerTable kSanyo = Table(kSanyoTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

}  // namespace

void DecodeSanyoMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kSanyo);
}

}  // namespace makernotes
