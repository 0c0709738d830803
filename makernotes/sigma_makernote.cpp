// Sigma and Foveon maker notes: a directory behind an 8-byte maker name and
// a 2-byte version, offsets from the TIFF header. The early bodies store
// nearly every setting as text, the adjustments with a short label
// ("Expo:+0.8"); the later ones store numbers in the same tags.
#include <cstdio>
#include <cstring>
#include <string>

#include "makernote_array.h"
#include "makernote_decoders.h"

namespace makernotes {
namespace {

// The value as text (ASCII or UNDEFINED, inline or at the offset), without
// the zero bytes and spaces that pad it.
std::string Text(const MakerEntry& e) {
    char text[exif::kTagValueSize] = {};
    const size_t got = exif::ReadRawBlock(e.context, reinterpret_cast<uint8_t*>(text), sizeof text - 1);
    std::string out(text, strnlen(text, got));
    while (!out.empty() && out.back() == ' ') out.pop_back();
    return out;
}

// A setting the camera stores as a word or a letter; the letters are named.
struct Letter {
    const char* stored;
    const char* text;
};
constexpr Letter kExposureModes[] = {
    {"P", "Program AE"}, {"A", "Aperture-priority AE"}, {"S", "Shutter speed priority AE"}, {"M", "Manual"},
};
constexpr Letter kMeteringModes[] = {{"8", "Multi-segment"}, {"A", "Average"}, {"C", "Center-weighted average"}};

template <const Letter* Letters, size_t N>
void Lettered(const MakerEntry& e) {
    const std::string text = Text(e);
    for (size_t i = 0; i < N; ++i)
        if (text == Letters[i].stored) return exif::SetRowValue(e.row(), Letters[i].text);
    exif::SetRowValue(e.row(), text);
}

void PlainText(const MakerEntry& e) { exif::SetRowValue(e.row(), Text(e)); }

// One signed rational at the offset, as a number.
std::string Rational(const MakerEntry& e, uint32_t index, const char* format) {
    uint32_t numerator = 0, denominator = 0;
    if (!tiff::ReadRational(e.context.input, e.context.base, e.entry().valueField + 8 * index, numerator,
                            denominator) ||
        denominator == 0)
        return {};
    const double value = e.entry().type == tiff::kSRational
                             ? static_cast<int32_t>(numerator) / static_cast<double>(static_cast<int32_t>(denominator))
                             : numerator / static_cast<double>(denominator);
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// An adjustment: text with its label ("Satu:+0.4" shows +0.4), or on the
// later bodies a signed rational.
void Adjustment(const MakerEntry& e) {
    if (e.entry().type == tiff::kRational || e.entry().type == tiff::kSRational)
        return exif::SetRowValue(e.row(), Rational(e, 0, "%+.1f"));
    const std::string text = Text(e);
    const size_t colon = text.find(':');
    exif::SetRowValue(e.row(), colon == std::string::npos ? text : text.substr(colon + 1));
}

// The colour adjustment: "CC:0" on the early bodies, three rationals later.
void ColorAdjustment(const MakerEntry& e) {
    if (e.entry().type != tiff::kRational && e.entry().type != tiff::kSRational) return Adjustment(e);
    std::string out;
    for (uint32_t i = 0; i < 3 && i < e.entry().count; ++i) out += (i ? " " : "") + Rational(e, i, "%.6g");
    exif::SetRowValue(e.row(), out);
}

void FNumber(const MakerEntry& e) { exif::SetRowValue(e.row(), Rational(e, 0, "%.1f")); }

void ExposureTime(const MakerEntry& e) {
    uint32_t numerator = 0, denominator = 0;
    if (!tiff::ReadRational(e.context.input, e.context.base, e.entry().valueField, numerator, denominator) ||
        numerator == 0 || denominator == 0)
        return;
    SetExposureSeconds(e.row(), numerator / static_cast<double>(denominator));
}

constexpr ValueText kColorModeTexts[] = {
    {0, "n/a"}, {1, "Sepia"}, {2, "B&W"}, {3, "Standard"}, {4, "Vivid"}, {5, "Neutral"}, {6, "Portrait"},
    {7, "Landscape"}, {8, "FOV Classic Blue"},
};
constexpr Enumeration kColorMode = Enum(kColorModeTexts, Sign::kUnsigned, "%d");

void ColorMode(const MakerEntry& e) {
    if (e.entry().type != tiff::kLong) return FormatGenericValue(e);
    FormatEnumeratedElement(kColorMode, e.entry().valueField, e.row());
}

constexpr MakerTag kSigmaTags[] = {
    {0x0002, "Serial Number", PlainText},
    {0x0003, "Drive Mode", PlainText},
    {0x0004, "Resolution Mode", PlainText},
    {0x0005, "AF Mode", PlainText},
    {0x0006, "Focus Setting", PlainText},
    {0x0007, "White Balance", PlainText},
    {0x0008, "Exposure Mode", Lettered<kExposureModes, sizeof kExposureModes / sizeof kExposureModes[0]>},
    {0x0009, "Metering Mode", Lettered<kMeteringModes, sizeof kMeteringModes / sizeof kMeteringModes[0]>},
    {0x000A, "Lens Focal Range", PlainText},
    {0x000B, "Color Space", PlainText},
    {0x000C, "Exposure Compensation", Adjustment},
    {0x000D, "Contrast", Adjustment},
    {0x000E, "Shadow", Adjustment},
    {0x000F, "Highlight", Adjustment},
    {0x0010, "Saturation", Adjustment},
    {0x0011, "Sharpness", Adjustment},
    {0x0012, "X3 Fill Light", Adjustment},
    {0x0014, "Color Adjustment", ColorAdjustment},
    {0x0015, "Adjustment Mode", PlainText},
    {0x0016, "Quality", Adjustment},
    {0x0017, "Firmware", PlainText},
    {0x0018, "Software", PlainText},
    {0x0019, "Auto Bracket", PlainText},
    {0x002C, "Color Mode", ColorMode},
    {0x0031, "F Number", FNumber},
    {0x0032, "Exposure Time", ExposureTime},
    {0x0035, "Exposure Compensation", Adjustment},
};
static_assert(TagsAscend(kSigmaTags) && TagsNamed(kSigmaTags), "tags ascend, each named");
constexpr MakerTable kSigma = Table(kSigmaTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

}  // namespace

void DecodeSigmaMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kSigma);
}

}  // namespace makernotes
