// The value formats that the Pentax main directory and blocks share.
#include <string>

#include "pentax_makernote.h"

namespace makernotes {
namespace pentax {
namespace {

constexpr ValueText kModelTexts[] = {
    {0x12994, "*ist D"},  {0x12aa2, "*ist DS"}, {0x12b1a, "*ist DL"}, {0x12b60, "*ist DS2"},
    {0x12b7e, "*ist DL2"}, {0x12b9c, "K100D"},  {0x12b9d, "K110D"},   {0x12ba2, "K100D Super"},
    {0x12c1e, "K10D"},    {0x12cd2, "K20D"},    {0x12cfa, "K200D"},   {0x12d72, "K2000"},
    {0x12d73, "K-m"},     {0x12db8, "K-7"},     {0x12dfe, "K-x"},     {0x12e08, "645D"},
    {0x12e6c, "K-r"},     {0x12e76, "K-5"},     {0x12ef8, "K-01"},    {0x12f52, "K-30"},
    {0x12f70, "K-5 II"},  {0x12f71, "K-5 II s"}, {0x12fb6, "K-50"},   {0x12fc0, "K-3"},
    {0x12fca, "K-500"},   {0x13010, "645Z"},    {0x1301a, "K-S1"},    {0x13024, "K-S2"},
    {0x13092, "K-1"},     {0x1309c, "K-3 II"},  {0x1320e, "GR III"},  {0x13222, "K-70"},
    {0x1322c, "KP"},      {0x13240, "K-1 Mark II"}, {0x13254, "K-3 Mark III"},
};
constexpr Enumeration kModel = Enum(kModelTexts, Sign::kUnsigned, "%u");

}  // namespace

void SetNumber(exif::TagRecord& row, double v) { SetValuef(row, "%.15g", v); }

void SetExposureTime(exif::TagRecord& row, double seconds) { SetExposureSeconds(row, seconds); }

void SetSignedEv(exif::TagRecord& row, double ev) {
    if (ev == 0) return exif::SetRowValue(row, "0");
    SetValuef(row, "%+.1f", ev);
}

void SetModel(exif::TagRecord& row, uint32_t id) {
    const char* text = EnumerationText(kModel, id);
    text ? exif::SetRowValue(row, text) : SetValuef(row, "%u", id);
}

void SetBits(exif::TagRecord& row, uint32_t mask, const ValueText* bits, size_t size) {
    std::string out;
    for (uint32_t bit = 0; bit < 32; ++bit) {
        if (!(mask >> bit & 1)) continue;
        if (!out.empty()) out += ", ";
        const char* name = nullptr;
        for (size_t i = 0; i < size; ++i)
            if (bits[i].value == static_cast<int32_t>(bit)) name = bits[i].text;
        out += name ? name : "[" + std::to_string(bit) + "]";
    }
    exif::SetRowValue(row, out);
}

}  // namespace pentax
}  // namespace makernotes
