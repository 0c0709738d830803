// Nikon's older maker notes: "Nikon" and an 8-byte header, values from the
// TIFF header.
#include <cstdint>

#include "makernote_decoders.h"

namespace makernotes {
namespace {

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
static_assert(TagsAscend(kNikonType1Tags) && TagsNamed(kNikonType1Tags), "tags ascend, each named");
// Type-1 notes read each value as the low half of the whole 32-bit field,
// as the headerless Casio notes do.
constexpr MakerTable kNikonType1 = Table(kNikonType1Tags, ValueRule::kLowHalfOfWord);

}  // namespace

void DecodeNikonType1MakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                               uint32_t* rowCount) {
    platform::Cursor in = directory;
    in.Skip(kType1HeaderRest);
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kNikonType1);
}

}  // namespace makernotes
