// The Olympus focus-info directory (tag 2050): focus steps and distance,
// the AF point, the external and internal flash, stabilisation.
#include <cstdint>

#include "olympus_makernote.h"

namespace makernotes {
namespace olympus {
namespace {

// The AF point of the three-point cameras; others number their points
// otherwise, and show the number.
constexpr ValueText kAfPointTexts[] = {
    {0, "Left (or n/a)"}, {1, "Center (horizontal)"}, {2, "Right"}, {3, "Center (vertical)"}, {255, "None"},
};
constexpr Enumeration kAfPoint = Enum(kAfPointTexts, Sign::kUnsigned, "%d");
void AfPoint(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) != 1) return;
    if (e.note.threePointAf) return FormatEnumeratedElement(kAfPoint, v, e.row());
    SetValuef(e.row(), "%lld", static_cast<long long>(v));
}

// A RATIONAL whose numerator alone is the distance in millimetres (the
// denominator varies from camera to camera); all ones means infinity.
void FocusDistance(const MakerEntry& e) {
    uint32_t num = 0, den = 0;
    if (e.entry().type != kRationalType ||
        !tiff::ReadRational(e.context.input, e.context.base, e.entry().valueField, num, den))
        return;
    if (num == UINT32_MAX) return exif::SetRowValue(e.row(), "inf");
    SetValuef(e.row(), "%g m", num / 1000.0);
}

// A block whose first four bytes are zero when stabilisation was off;
// otherwise bit 0 of byte 44 tells the two modes apart.
constexpr size_t kStabilisationModeByte = 44;
void StabilisationBlock(const MakerEntry& e) {
    uint8_t b[kStabilisationModeByte + 1] = {};
    const size_t got = exif::ReadRawBlock(e.context, b, sizeof b);
    if (got >= 4 && !(b[0] | b[1] | b[2] | b[3])) return exif::SetRowValue(e.row(), "Off");
    if (got == sizeof b) exif::SetRowValue(e.row(), b[kStabilisationModeByte] & 1 ? "On, Mode 1" : "On, Mode 2");
}

// The sensor temperature: degrees Celsius as stored on the cameras that
// store degrees (and wherever the entry holds more than one number), else a
// sensor reading that falls as the temperature rises (0 and -32768: none).
void SensorTemperature(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1, /*signed16=*/true) != 1) return;
    if (e.note.degreesStored || e.entry().count != 1) return SetValuef(e.row(), "%lld C", static_cast<long long>(v));
    if (v != 0 && v != INT16_MIN) SetValuef(e.row(), "%.1f C", 84 - 3 * static_cast<double>(v) / 26);
}

// Two SHORTs: whether the flash was set by hand, and its strength as the
// denominator of a fraction of full power.
void ManualFlash(const MakerEntry& e) {
    int64_t v[2] = {};
    if (ReadElements(e, v, 2) != 2) return;
    if (v[0] == 0) return exif::SetRowValue(e.row(), "Off");
    if (v[1] == 1) return exif::SetRowValue(e.row(), "On (Full strength)");
    SetValuef(e.row(), "On (1/%lld strength)", static_cast<long long>(v[1]));
}

constexpr ValueText kBounceTexts[] = {{0, "Bounce or Off"}, {1, "Direct"}};
constexpr Enumeration kBounce = Enum(kBounceTexts, Sign::kUnsigned, "%d");

constexpr MakerTag kFocusInfoTags[] = {
    {0x0000, "Focus Info Version", FormatGenericValue},
    {0x0210, "Scene Detect", FormatGenericValue},
    {0x0300, "Zoom Step Count", FormatGenericValue},
    {0x0301, "Focus Step Count", FormatGenericValue},
    {0x0303, "Focus Step Infinity", FormatGenericValue},
    {0x0304, "Focus Step Near", FormatGenericValue},
    {0x0305, "Focus Distance", FocusDistance},
    {0x0308, "AF Point", AfPoint},
    {0x1201, "External Flash", Enumerated<kOffOn>},
    {0x1204, "External Flash Bounce", Enumerated<kBounce>},
    {0x1205, "External Flash Zoom", Quotient<kPlain>},
    {0x1208, "Internal Flash", Enumerated<kOffOn>},
    {0x1209, "Manual Flash", ManualFlash},
    {0x120a, "Macro LED", Enumerated<kOffOn>},
    {0x1500, "Sensor Temperature", SensorTemperature},
    {0x1600, "Image Stabilization", StabilisationBlock},
};

static_assert(TagsAscend(kFocusInfoTags) && TagsNamed(kFocusInfoTags) && ValuesUnique(kAfPointTexts),
              "tag order, each value once");

}  // namespace

constexpr MakerTable kFocusInfo = Table(kFocusInfoTags, ValueRule::kLeadingShort);

}  // namespace olympus
}  // namespace makernotes
