// Panasonic maker notes: a directory behind the 12-byte "Panasonic" header,
// offsets from the TIFF header.
#include <algorithm>
#include <cstring>

#include "makernote_decoders.h"
#include "makernote_limits.h"

namespace makernotes {
namespace {

constexpr ValueText kImageQualityTexts[] = {
    {2, "High"}, {3, "Normal"}, {6, "Very High"}, {7, "Raw"}, {9, "Motion Picture"},
};
constexpr Enumeration kImageQuality = Enum(kImageQualityTexts, Sign::kUnsigned, "%d");

// An unnamed focus mode leaves the value empty.
constexpr ValueText kFocusModeTexts[] = {
    {1, "Auto"}, {2, "Manual"}, {4, "Auto, Focus button"}, {5, "Auto, Continuous"},
};
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "");

// The AF mode is two bytes: the low and the high byte of the 16-bit value.
struct AfModeText {
    uint8_t low, high;
    const char* text;
};
constexpr AfModeText kAfModeTexts[] = {
    {0, 1, "9 area"},          {0, 16, "3 area (high speed)"}, {1, 0, "Spot Focusing"},
    {1, 1, "5 area"},          {16, 0, "1 area"},              {16, 16, "1 area (high speed)"},
    {32, 0, "Auto or Face Detect"},                            {64, 0, "Face Detect"},
};

void AfMode(const MakerEntry& e) {
    const uint16_t value = e.Unsigned16();
    const auto low = static_cast<uint8_t>(value & 0xFF), high = static_cast<uint8_t>(value >> 8);
    for (const AfModeText& t : kAfModeTexts)
        if (t.low == low && t.high == high) return exif::SetRowValue(e.row(), t.text);
}

constexpr ValueText kMacroModeTexts[] = {
    {1, "On"}, {2, "Off"}, {257, "Tele-Macro"}, {513, "Macro Zoom"},
};
constexpr Enumeration kMacroMode = Enum(kMacroModeTexts, Sign::kSigned, "%d");

// Every named value lies between 1 and 64.
constexpr ValueText kShootingModeTexts[] = {
    {1, "Normal"},            {2, "Portrait"},          {3, "Scenery"},
    {4, "Sports"},            {5, "Night Portrait"},    {6, "Program"},
    {7, "Aperture Priority"}, {8, "Shutter Priority"},  {9, "Macro"},
    {11, "Manual"},           {34, "Intelligent ISO"},  {37, "Intelligent Auto"},
    {51, "HDR"},              {60, "Intelligent Auto Plus"},
    {62, "Panorama"},         {64, "HDR"},
};
constexpr Enumeration kShootingMode = Enum(kShootingModeTexts, Sign::kUnsigned, "%d");

// An unnamed colour mode leaves the value empty.
constexpr ValueText kColorModeTexts[] = {
    {0, "Normal"}, {1, "Natural"}, {2, "Vivid"},
};
constexpr Enumeration kColorMode = Enum(kColorModeTexts, Sign::kUnsigned, "");

constexpr Enumeration kNumber = Number(Sign::kUnsigned, "%d");

// The face record lies at the offset in the value field whatever its size;
// its text is bytes 4 to 23, cut at the first zero byte.
void FaceInfo(const MakerEntry& e) {
    uint8_t record[kFaceInfoReadLimit + 1] = {};
    const uint32_t want = std::min(e.entry().count, kFaceInfoReadLimit);
    e.context.input.ChildAt(tiff::At(e.context.base, e.entry().valueField), want).Some(record, want);
    const char* text = reinterpret_cast<const char*>(record + kFaceInfoTextStart);
    exif::SetRowValue(e.row(), std::string_view(text, strnlen(text, kFaceInfoTextBytes)));
}

// Tags 0 and above 128 are never named. "County" (128) is not "Country" (105).
constexpr MakerTag kPanasonicTags[] = {
    {1, "Image Quality", kImageQuality},      // 01
    {7, "Focus Mode", kFocusMode},            // 07
    {15, "AF Mode", AfMode},                  // 0F
    {28, "Macro Mode", kMacroMode},           // 1C
    {31, "Shooting Mode", kShootingMode},     // 1F
    {50, "Color Mode", kColorMode},           // 32
    {63, "Faces Detected", kNumber},          // 3F
    {97, "Face Info", FaceInfo},              // 61
    {98, "Flash warning", kNumber},           // 62
    {101, "Title", FormatGenericValue},       // 65
    {105, "Country", FormatGenericValue},     // 69
    {107, "Region", FormatGenericValue},      // 6B
    {109, "City", FormatGenericValue},        // 6D
    {111, "Landmark", FormatGenericValue},    // 6F
    {128, "County", FormatGenericValue},      // 80
};
static_assert(TagsAscend(kPanasonicTags) && TagsNamed(kPanasonicTags), "tags ascend, each named");
// Panasonic reads each value where a SHORT is stored: the field's first two bytes.
constexpr MakerTable kPanasonic = Table(kPanasonicTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

}  // namespace

void DecodePanasonicMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                              uint32_t* rowCount) {
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kPanasonic);
}

}  // namespace makernotes
