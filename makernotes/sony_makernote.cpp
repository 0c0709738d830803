// Sony maker notes: a directory at the note's start or behind the 12-byte
// "SONY DSC" header, offsets from the TIFF header.
#include "makernote_decoders.h"
#include "makernote_texts.h"

namespace makernotes {
namespace {

// Sony's tables compare some values unsigned, but a value none of them lists
// always prints as the signed number (a Lens Type of 0xFFFF reads "-1").

// Every value from 0 to 8 has a name.
constexpr ValueText kQualityTexts[] = {
    {0, "RAW"},        {1, "Super Fine"}, {2, "Fine"},           {3, "Standard"},
    {4, "Economy"},    {5, "Extra Fine"}, {6, "RAW + JPEG"},     {7, "Compressed RAW"},
    {8, "Compressed RAW + JPEG"},
};
constexpr Enumeration kQuality = PrintedSigned(Enum(kQualityTexts, Sign::kUnsigned, "%d"));

constexpr Enumeration kMoreInfos = Number(Sign::kSigned, "%d");

constexpr ValueText kHighIsoNoiseReductionTexts[] = {
    {0, "Off"}, {1, "Low"}, {2, "Normal"}, {3, "High"}, {256, "Auto"},
};
constexpr Enumeration kHighIsoNoiseReduction = Enum(kHighIsoNoiseReductionTexts, Sign::kSigned, "%d");

constexpr ValueText kModelIdTexts[] = {
    {2, "DSC-R1"}, {256, "DSLR-A100"}, {312, "ILCE-6000"}, {319, "ILCA-77M2"}, {362, "ILCE-7RM3"},
};
constexpr Enumeration kModelId = Enum(kModelIdTexts, Sign::kSigned, "%d");

constexpr ValueText kDynamicRangeOptimizerTexts[] = {
    {0, "Off"},           {1, "Standard"},      {2, "Advanced Auto"}, {3, "Auto"},
    {8, "Advanced Lv1"},  {9, "Advanced Lv2"},  {10, "Advanced Lv3"}, {11, "Advanced Lv4"},
    {12, "Advanced Lv5"}, {16, "Lv1"},          {17, "Lv2"},          {18, "Lv3"},
    {19, "Lv4"},          {20, "Lv5"},
};
constexpr Enumeration kDynamicRangeOptimizer = PrintedSigned(Enum(kDynamicRangeOptimizerTexts, Sign::kUnsigned, "%d"));

constexpr Enumeration kImageStabilization = Enum(kOffOnTexts, Sign::kSigned, "%d");

constexpr ValueText kLensTypeTexts[] = {
    {46, "Carl Zeiss Vario-Sonnar T* DT 16-80mm F3.5-4.5 ZA"},
    {53, "Sony 70-400mm F4-5.6 G SSM"},
    {68, "Sony DT 55-300mm F4.5-5.6 SAM"},
};
constexpr Enumeration kLensType = PrintedSigned(Enum(kLensTypeTexts, Sign::kUnsigned, "%d"));

// The numbers from 100 repeat the small ones, except that "Light" and
// "Sepia" have no counterpart there and 102 has no name.
constexpr ValueText kColorModeTexts[] = {
    {0, "Standard"},   {1, "Vivid"},   {2, "Portrait"}, {3, "Landscape"},
    {4, "Sunset"},     {5, "Night Portrait"},           {6, "B&W"},
    {7, "Adobe RGB"},  {12, "Neutral"}, {13, "Clear"},  {14, "Deep"},
    {15, "Light"},     {16, "Autumn Leaves"},           {17, "Sepia"},
    {100, "Neutral"},  {101, "Clear"}, {103, "Deep"},   {104, "Night View"},
    {105, "Autumn Leaves"},
};
constexpr Enumeration kColorMode = Enum(kColorModeTexts, Sign::kSigned, "%d");

// 45096 (B028) lies among these and is dropped like every tag not listed.
constexpr MakerTag kSonyTags[] = {
    {258, "Quality", kQuality},                             // 0102
    {513, "More infos", kMoreInfos},                        // 0201
    {8201, "High ISO NoiseReduction", kHighIsoNoiseReduction},  // 2009
    {45057, "Sony Model ID", kModelId},                     // B001
    {45088, "Creative Style", FormatGenericValue},          // B020, stored as text
    {45093, "Dynamic Range Optimizer", kDynamicRangeOptimizer},  // B025
    {45094, "Image Stabilization", kImageStabilization},    // B026
    {45095, "Lens Type", kLensType},                        // B027
    {45097, "Color Mode", kColorMode},                      // B029
};
static_assert(TagsAscend(kSonyTags) && TagsNamed(kSonyTags), "tags ascend, each named");
// Sony reads each value where a SHORT is stored: the field's first two bytes.
constexpr MakerTable kSony = Table(kSonyTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

}  // namespace

void DecodeSonyMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                         uint32_t* rowCount) {
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kSony);
}

}  // namespace makernotes
