// The Olympus raw-development directories: the first layout (tag 2030) and
// the later one (tag 2031), which moves the tags about.
#include "olympus_makernote.h"

namespace makernotes {
namespace olympus {
namespace {

constexpr ValueText kRawEngineTexts[] = {
    {0, "High Speed"}, {1, "High Function"}, {2, "Advanced High Speed"}, {3, "Advanced High Function"},
};
constexpr Enumeration kRawEngine = Enum(kRawEngineTexts, Sign::kUnsigned, "%d");
constexpr ValueText kEditStatusTexts[] = {
    {0, "Original"}, {1, "Edited (Landscape)"}, {6, "Edited (Portrait)"}, {8, "Edited (Portrait)"},
};
constexpr Enumeration kEditStatus = Enum(kEditStatusTexts, Sign::kUnsigned, "%d");
constexpr BitName kRawSettingsBitNames[] = {
    {0, "WB Color Temp"}, {1, "WB Gray Point"}, {2, "Saturation"}, {3, "Contrast"}, {4, "Sharpness"},
    {5, "Color Space"}, {6, "High Function"}, {7, "Noise Reduction"},
};
constexpr BitSet kRawSettingsBits = {kRawSettingsBitNames, sizeof kRawSettingsBitNames / sizeof kRawSettingsBitNames[0],
                                     "(none)"};

constexpr MakerTag kRawDevelopmentTags[] = {
    {0x0000, "Raw Development Version", FormatGenericValue},
    {0x0100, "Raw Exposure Bias", Quotient<kPlain>},
    {0x0101, "Raw White Balance Value", FormatGenericValue},
    {0x0102, "Raw WB Fine Adjustment", SignedNumbers},
    {0x0103, "Raw Gray Point", FormatGenericValue},
    {0x0104, "Raw Saturation Emphasis", SignedNumbers},
    {0x0105, "Raw Memory Color Emphasis", FormatGenericValue},
    {0x0106, "Raw Contrast Value", SignedNumbers},
    {0x0107, "Raw Sharpness Value", SignedNumbers},
    {0x0108, "Raw Color Space", Enumerated<kColorSpace>},
    {0x0109, "Raw Engine", Enumerated<kRawEngine>},
    {0x010a, "Raw Noise Reduction", Flags<kNoiseReductionBits>},
    {0x010b, "Raw Edit Status", Enumerated<kEditStatus>},
    {0x010c, "Raw Settings", Flags<kRawSettingsBits>},
};

// The later layout moves the tags about.
constexpr ValueText kRawWhiteBalanceTexts[] = {{1, "Color Temperature"}, {2, "Gray Point"}};
constexpr Enumeration kRawWhiteBalance = Enum(kRawWhiteBalanceTexts, Sign::kUnsigned, "%d");
constexpr MakerTag kRawDevelopment2Tags[] = {
    {0x0000, "Raw Development Version", FormatGenericValue},
    {0x0100, "Raw Exposure Bias", Quotient<kPlain>},
    {0x0101, "Raw White Balance", Enumerated<kRawWhiteBalance>},
    {0x0102, "Raw White Balance Value", FormatGenericValue},
    {0x0103, "Raw WB Fine Adjustment", SignedNumbers},
    {0x0104, "Raw Gray Point", FormatGenericValue},
    {0x0105, "Raw Contrast Value", SignedNumbers},
    {0x0106, "Raw Sharpness Value", SignedNumbers},
    {0x0107, "Raw Saturation Emphasis", SignedNumbers},
    {0x0108, "Raw Memory Color Emphasis", FormatGenericValue},
    {0x0109, "Raw Color Space", Enumerated<kColorSpace>},
    {0x010a, "Raw Noise Reduction", Flags<kNoiseReductionBits>},
    {0x010b, "Raw Engine", Enumerated<kRawEngine>},
    {0x010c, "Raw Picture Mode", Enumerated<kPictureMode>},
    {0x0121, "Raw Art Filter", Enumerated<kArtFilter>},
};

static_assert(TagsAscend(kRawDevelopmentTags) && TagsNamed(kRawDevelopmentTags) && TagsAscend(kRawDevelopment2Tags) &&
                  TagsNamed(kRawDevelopment2Tags) && ValuesUnique(kEditStatusTexts),
              "tag order, each value once");

}  // namespace

constexpr MakerTable kRawDevelopment = Table(kRawDevelopmentTags, ValueRule::kLeadingShort);
constexpr MakerTable kRawDevelopment2 = Table(kRawDevelopment2Tags, ValueRule::kLeadingShort);

}  // namespace olympus
}  // namespace makernotes
