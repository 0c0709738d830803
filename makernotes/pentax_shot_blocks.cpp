// The Pentax blocks that tell how a shot was taken: shake reduction (tag
// 005C), auto exposure (0206), the lens (0207) and the flash (0208).
#include <cmath>
#include <string>

#include "lens_tables.h"
#include "pentax_makernote.h"

namespace makernotes {
namespace pentax {
namespace {

// Shake reduction: result flags, mode, half-press time, focal length.
constexpr ValueText kSrResultBits[] = {{0, "Stabilized"}, {6, "Not ready"}};
void SrResult(const ArrayElements& a, exif::TagRecord& row) {
    if (Byte<0>(a) == 0) return exif::SetRowValue(row, "Not stabilized");
    SetBits(row, Byte<0>(a), kSrResultBits, sizeof kSrResultBits / sizeof *kSrResultBits);
}
constexpr ValueText kShakeReductionTexts[] = {
    {0, "Off"},     {1, "On"},          {4, "Off (4)"},        {5, "On but Disabled"}, {6, "On (Video)"},
    {7, "On (7)"},  {15, "On (15)"},    {39, "On (mode 2)"},   {135, "On (135)"},      {167, "On (mode 1)"},
};
constexpr Enumeration kShakeReduction = Enum(kShakeReductionTexts, Sign::kUnsigned, "%u");
// Sixtieths of a second; the byte's top means that long or longer.
void SrHalfPressTime(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%.2f s%s", Byte<2>(a) / 60.0, Byte<2>(a) > 254 ? " or longer" : "");
}
// Half millimetres; an odd value counts in steps of 4 mm instead.
void SrFocalLength(const ArrayElements& a, exif::TagRecord& row) {
    const uint32_t v = Byte<3>(a);
    SetValuef(row, "%g mm", v & 1 ? v * 4.0 : v / 2.0);
}
constexpr ArrayRow kShakeReductionRows[] = {
    {0, "SR Result", SrResult},
    {1, "Shake Reduction", EnumElement<kShakeReduction, 1>},
    {2, "SR Half Press Time", SrHalfPressTime},
    {3, "SR Focal Length", SrFocalLength},
};

// Auto exposure, in the camera's logarithmic steps.
double ExposureSeconds(uint32_t v) { return 24.0 * std::exp2(-(static_cast<double>(v) - 32.0) / 8.0); }
double ApertureValue(uint32_t v) { return std::exp2((static_cast<double>(v) - 68.0) / 16.0); }

template <size_t Index>
void AeTime(const ArrayElements& a, exif::TagRecord& row) { SetExposureTime(row, ExposureSeconds(Byte<Index>(a))); }
template <size_t Index>
void AeAperture(const ArrayElements& a, exif::TagRecord& row) { SetValuef(row, "%.1f", ApertureValue(Byte<Index>(a))); }
void AeIso(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%.0f", std::floor(100.0 * std::exp2((Byte<2>(a) - 32.0) / 8.0) + 0.5));
}
void AeXv(const ArrayElements& a, exif::TagRecord& row) { SetNumber(row, (Byte<3>(a) - 64.0) / 8.0); }
void AeBxv(const ArrayElements& a, exif::TagRecord& row) { SetNumber(row, SignedByte<4>(a) / 8.0); }
constexpr ValueText kAeProgramTexts[] = {
    {0, "M, P or TAv"},       {1, "Av, B or X"},          {2, "Tv"},                {3, "Sv or Green Mode"},
    {8, "Hi-speed Program"},  {11, "Hi-speed Program (P-Shift)"}, {16, "DOF Program"},
    {19, "DOF Program (P-Shift)"}, {24, "MTF Program"},   {27, "MTF Program (P-Shift)"},
    {35, "Standard"},         {43, "Portrait"},           {51, "Landscape"},        {59, "Macro"},
    {67, "Sport"},            {75, "Night Scene Portrait"}, {83, "No Flash"},       {91, "Night Scene"},
    {99, "Surf & Snow"},      {104, "Night Snap"},        {107, "Text"},            {115, "Sunset"},
    {123, "Kids"},            {131, "Pet"},               {139, "Candlelight"},     {144, "SCN"},
    {147, "Museum"},          {160, "Program"},           {184, "Shallow DOF Program"}, {216, "HDR"},
};
constexpr Enumeration kAeProgram = Enum(kAeProgramTexts, Sign::kUnsigned, "%u");
void AeApertureSteps(const ArrayElements& a, exif::TagRecord& row) {
    Byte<8>(a) == 255 ? exif::SetRowValue(row, "n/a") : SetValuef(row, "%u", Byte<8>(a));
}
void AeMinAperture(const ArrayElements& a, exif::TagRecord& row) { SetValuef(row, "%.0f", ApertureValue(Byte<11>(a))); }
constexpr ValueText kAeMeteringBits[] = {{4, "Center-weighted average"}, {5, "Spot"}};
void AeMetering(const ArrayElements& a, exif::TagRecord& row) {
    if (Byte<12>(a) == 0) return exif::SetRowValue(row, "Multi-segment");
    SetBits(row, Byte<12>(a), kAeMeteringBits, sizeof kAeMeteringBits / sizeof *kAeMeteringBits);
}
// Eighths of a stop, where 3 and 5 eighths stand for one and two thirds.
void FlashCompSet(const ArrayElements& a, exif::TagRecord& row) {
    double v = SignedByte<14>(a);
    if (static_cast<int>(v) & 1) {
        const double sign = v < 0 ? -1 : 1;
        const int frac = static_cast<int>(v * sign) & 7;
        if (frac == 3) v += sign * (8.0 / 3 - frac);
        else if (frac == 5) v += sign * (16.0 / 3 - frac);
    }
    SetSignedEv(row, v / 8);
}
// The layout of up to 20 bytes; longer ones move the fields after byte 7.
constexpr ArrayRow kAeRows[] = {
    {0, "AE Exposure Time", AeTime<0>},
    {1, "AE Aperture", AeAperture<1>},
    {2, "AE ISO", AeIso},
    {3, "AE Xv", AeXv},
    {4, "AE Bracket Xv", AeBxv},
    {5, "AE Min Exposure Time", AeTime<5>},
    {6, "AE Program Mode", EnumElement<kAeProgram, 6>},
    {8, "AE Aperture Steps", AeApertureSteps},
    {9, "AE Max Aperture", AeAperture<9>},
    {10, "AE Max Aperture 2", AeAperture<10>},
    {11, "AE Min Aperture", AeMinAperture},
    {12, "AE Metering Mode", AeMetering},
    {14, "Flash Exposure Comp Set", FlashCompSet},
};

// Lens: the lens's series and number as the body read them, then its data
// block (from byte 4): aperture coupling, focus distances, focal length,
// nominal and effective apertures.
void LensInfoType(const ArrayElements& a, exif::TagRecord& row) {
    const uint32_t series = Byte<0>(a) & 0x0F, number = Byte<2>(a) * 256 + Byte<3>(a);
    if (!LookupPentaxLens(series, number, row.value, sizeof row.value)) SetValuef(row, "Unknown (%u %u)", series, number);
}
void AutoAperture(const ArrayElements& a, exif::TagRecord& row) {
    exif::SetRowValue(row, Byte<4>(a) & 1 ? "Off" : "On");
}
void LensMinAperture(const ArrayElements& a, exif::TagRecord& row) {
    constexpr unsigned kStops[] = {22, 32, 45, 16};
    SetValuef(row, "%u", kStops[(Byte<4>(a) >> 1) & 3]);
}
void LensFStops(const ArrayElements& a, exif::TagRecord& row) {
    SetNumber(row, 5 + (((Byte<4>(a) >> 4) & 7) ^ 7) / 2.0);
}
constexpr ValueText kMinFocusTexts[] = {
    {0, "0.13-0.19 m"}, {1, "0.20-0.24 m"}, {2, "0.25-0.28 m"}, {3, "0.28-0.30 m"}, {4, "0.35-0.38 m"},
    {5, "0.40-0.45 m"}, {6, "0.49-0.50 m"}, {7, "0.6 m"},       {8, "0.7 m"},       {9, "0.8-0.9 m"},
    {10, "1.0 m"},      {11, "1.1-1.2 m"},  {12, "1.4-1.5 m"},  {13, "1.5 m"},      {14, "2.0 m"},
    {15, "2.0-2.1 m"},  {16, "2.1 m"},      {17, "2.2-2.9 m"},  {18, "3.0 m"},      {19, "4-5 m"},
    {20, "5.6 m"},
};
constexpr Enumeration kMinFocus = Enum(kMinFocusTexts, Sign::kUnsigned, "%u");
void MinFocusDistance(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kMinFocus, Byte<7>(a) >> 3, row); }
// The eight ranges from very close (7) to very far (3), in the lens's own order.
constexpr ValueText kFocusRangeTexts[] = {
    {7, "0 (very close)"}, {6, "1 (close)"}, {4, "2"}, {5, "3"}, {1, "4"}, {0, "5"}, {2, "6 (far)"}, {3, "7 (very far)"},
};
constexpr Enumeration kFocusRange = Enum(kFocusRangeTexts, Sign::kUnsigned, "%u");
void FocusRangeIndex(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kFocusRange, Byte<7>(a) & 7, row); }
// Tenths of a millimetre times 4 to the power of the low two bits, less two.
void LensFocalLength(const ArrayElements& a, exif::TagRecord& row) {
    const uint32_t v = Byte<13>(a);
    SetValuef(row, "%.1f mm", 10.0 * (v >> 2) * std::pow(4.0, static_cast<int>(v & 3) - 2));
}
void NominalMaxAperture(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%.1f", std::exp2((Byte<14>(a) >> 4) / 4.0));
}
void NominalMinAperture(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%.0f", std::exp2(((Byte<14>(a) & 0x0F) + 10) / 4.0));
}
// 1/32 stops above 1; 0 and 1 mean not known (shown as the bare number).
void LensMaxAperture(const ArrayElements& a, exif::TagRecord& row) {
    const uint32_t v = Byte<18>(a) & 0x7F;
    if (v <= 1) return SetValuef(row, "%u", v);
    SetValuef(row, "%.1f", std::exp2((v - 1) / 32.0));
}
constexpr ArrayRow kLensRows[] = {
    {3, "Lens Type", LensInfoType},
    {4, "Auto Aperture", AutoAperture},
    {4, "Min Aperture", LensMinAperture},
    {4, "Lens F Stops", LensFStops},
    {7, "Min Focus Distance", MinFocusDistance},
    {7, "Focus Range Index", FocusRangeIndex},
    {13, "Lens Focal Length", LensFocalLength},
    {14, "Nominal Max Aperture", NominalMaxAperture},
    {14, "Nominal Min Aperture", NominalMinAperture},
    {18, "Max Aperture", LensMaxAperture},
};

// Flash (the 27-byte form of the K10D generation).
constexpr ValueText kFlashStatusTexts[] = {
    {0x00, "Off"}, {0x01, "Off (1)"}, {0x02, "External, Did not fire"}, {0x06, "External, Fired"},
    {0x08, "Internal, Did not fire (0x08)"}, {0x09, "Internal, Did not fire"}, {0x0d, "Internal, Fired"},
};
constexpr ValueText kInternalFlashTexts[] = {
    {0x00, "n/a - Off-Auto-Aperture"},     {0x86, "Fired, Wireless (Control)"}, {0x95, "Fired, Wireless (Master)"},
    {0xc0, "Fired"},                       {0xc1, "Fired, Red-eye reduction"},  {0xc2, "Fired, Auto"},
    {0xc3, "Fired, Auto, Red-eye reduction"},
    {0xc6, "Fired, Wireless (Control), Fired normally not as control"},
    {0xc8, "Fired, Slow-sync"},            {0xc9, "Fired, Slow-sync, Red-eye reduction"},
    {0xca, "Fired, Trailing-curtain Sync"}, {0xf0, "Did not fire, Normal"},
    {0xf1, "Did not fire, Red-eye reduction"}, {0xf2, "Did not fire, Auto"},
    {0xf3, "Did not fire, Auto, Red-eye reduction"}, {0xf4, "Did not fire, (Unknown 0xf4)"},
    {0xf5, "Did not fire, Wireless (Master)"}, {0xf6, "Did not fire, Wireless (Control)"},
    {0xf8, "Did not fire, Slow-sync"},     {0xf9, "Did not fire, Slow-sync, Red-eye reduction"},
    {0xfa, "Did not fire, Trailing-curtain Sync"},
};
constexpr ValueText kExternalFlashTexts[] = {
    {0x00, "n/a - Off-Auto-Aperture"}, {0x3f, "Off"},              {0x40, "On, Auto"},
    {0xbf, "On, Flash Problem"},       {0xc0, "On, Manual"},       {0xc4, "On, P-TTL Auto"},
    {0xc5, "On, Contrast-control Sync"}, {0xc6, "On, High-speed Sync"}, {0xcc, "On, Wireless"},
    {0xcd, "On, Wireless, High-speed Sync"}, {0xf0, "Not Connected"},
};
constexpr Enumeration kFlashStatus = Enum(kFlashStatusTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kInternalFlash = Enum(kInternalFlashTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kExternalFlash = Enum(kExternalFlashTexts, Sign::kUnsigned, "%u");
constexpr ArrayRow kFlashRows[] = {
    {0, "Flash Status", EnumElement<kFlashStatus, 0>},
    {1, "Internal Flash Mode", EnumElement<kInternalFlash, 1>},
    {2, "External Flash Mode", EnumElement<kExternalFlash, 2>},
    {3, "Internal Flash Strength", NumberElement<3>},
};

}  // namespace

constexpr Rows kShakeReductionBlock = ListOf(kShakeReductionRows);
constexpr Rows kAeBlock = ListOf(kAeRows);
constexpr Rows kLensBlock = ListOf(kLensRows);
constexpr Rows kFlashBlock = ListOf(kFlashRows);

}  // namespace pentax
}  // namespace makernotes
