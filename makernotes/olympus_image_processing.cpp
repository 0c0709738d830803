// The Olympus image-processing directory (tag 2040): levels, matrices,
// crop, aspect and keystone correction.
#include <cstdint>

#include "olympus_makernote.h"

namespace makernotes {
namespace olympus {
namespace {

// Two bytes: the aspect ratio of the image and of the frame it was cut from.
struct AspectPair {
    uint8_t image, frame;
    const char* text;
};
constexpr AspectPair kAspectRatios[] = {
    {1, 1, "4:3"}, {1, 4, "1:1"}, {2, 1, "3:2 (RAW)"}, {2, 2, "3:2"}, {3, 1, "16:9 (RAW)"}, {3, 3, "16:9"},
    {4, 1, "1:1 (RAW)"}, {4, 4, "6:6"}, {5, 5, "5:4"}, {6, 6, "7:6"}, {7, 7, "6:5"}, {8, 8, "7:5"},
    {9, 1, "3:4 (RAW)"}, {9, 9, "3:4"},
};
void AspectRatio(const MakerEntry& e) {
    uint8_t b[2] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) < 2) return;
    for (const AspectPair& a : kAspectRatios)
        if (a.image == b[0] && a.frame == b[1]) return exif::SetRowValue(e.row(), a.text);
    SetValuef(e.row(), "%u %u", b[0], b[1]);
}
constexpr ValueText kKeystoneDirectionTexts[] = {{0, "Vertical"}, {1, "Horizontal"}};
constexpr Enumeration kKeystoneDirection = Enum(kKeystoneDirectionTexts, Sign::kUnsigned, "%d");
// Two bytes, of which the second says whether the correction was applied.
void Keystone(const MakerEntry& e) {
    uint8_t b[2] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) == 2) FormatEnumeratedElement(kOffOn, b[1], e.row());
}

constexpr MakerTag kImageProcessingTags[] = {
    {0x0000, "Image Processing Version", FormatGenericValue},
    {0x0100, "WB RB Levels", FormatGenericValue},
    {0x011f, "WB G Level", FormatGenericValue},
    {0x0200, "Color Matrix", SignedNumbers},
    {0x0300, "Enhancer", FormatGenericValue},
    {0x0310, "Coring Filter", FormatGenericValue},
    {0x0600, "Black Level", FormatGenericValue},
    {0x0610, "Gain Base", FormatGenericValue},
    {0x0611, "Valid Bits", FormatGenericValue},
    {0x0612, "Crop Left", FormatGenericValue},
    {0x0613, "Crop Top", FormatGenericValue},
    {0x0614, "Crop Width", FormatGenericValue},
    {0x0615, "Crop Height", FormatGenericValue},
    {0x0805, "Sensor Calibration", SignedNumbers},
    {0x1010, "Noise Reduction", Flags<kNoiseReductionBits>},
    {0x1011, "Distortion Correction", Enumerated<kOffOn>},
    {0x1012, "Shading Compensation", Enumerated<kOffOn>},
    {0x1112, "Aspect Ratio", AspectRatio},
    {0x1200, "Faces Detected", FormatGenericValue},
    {0x1900, "Keystone Compensation", Keystone},
    {0x1901, "Keystone Direction", Enumerated<kKeystoneDirection>},
};

static_assert(TagsAscend(kImageProcessingTags) && TagsNamed(kImageProcessingTags), "tag order");

}  // namespace

constexpr MakerTable kImageProcessing = Table(kImageProcessingTags, ValueRule::kLeadingShort);

}  // namespace olympus
}  // namespace makernotes
