// Pentax and Ricoh maker notes, behind a 6-byte "AOC\0" + byte-order header
// or an 8-byte "PENTAX \0" + byte-order header; offsets from the TIFF header.
// The plain tags are mostly SHORTs, LONGs or a few bytes held in the value
// field, read in the EXIF block's byte order like everything else in the
// note; a second pass reads the blocks of settings some tags hold (shake
// reduction, camera settings, exposure, lens, flash, camera, battery, AF,
// colour) and the values that need other tags first (the shutter count).
//
// Ricoh's own note forms ("RICOH\0" or "Ricoh\0" and a directory at note + 8,
// or the "Rv..." text of the oldest cameras) reach this decoder too, as their
// Make says RICOH. Read at note + 6 they give an entry count of 0 (the two
// zero bytes after the name) or, from text, one of 8224 or more, which the
// row limit refuses: either way no rows.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "lens_tables.h"
#include "makernote_texts.h"
#include "pentax_makernote.h"

namespace makernotes {
namespace {

using namespace pentax;

// ------------------------------------------------------------ enumerations

constexpr ValueText kQualityTexts[] = {
    {0, "Good"}, {1, "Better"}, {2, "Best"}, {3, "TIFF"}, {4, "RAW"}, {5, "Premium"},
    {7, "RAW (pixel shift)"}, {8, "Dynamic pixel shift"}, {65535, "n/a"},
};

// The older compact cameras' scene modes.
constexpr ValueText kPictureModeTexts[] = {
    {0, "Program"},           {1, "Shutter Speed Priority"}, {2, "Program AE"},      {3, "Manual"},
    {5, "Portrait"},          {6, "Landscape"},             {8, "Sport"},           {9, "Night Scene"},
    {11, "Soft"},             {12, "Surf & Snow"},          {13, "Candlelight"},    {14, "Autumn"},
    {15, "Macro"},            {17, "Fireworks"},            {18, "Text"},           {19, "Panorama"},
    {20, "3-D"},              {21, "Black & White"},        {22, "Sepia"},          {23, "Red"},
    {24, "Pink"},             {25, "Purple"},               {26, "Blue"},           {27, "Green"},
    {28, "Yellow"},           {30, "Self Portrait"},        {31, "Illustrations"},  {33, "Digital Filter"},
    {35, "Night Scene Portrait"}, {37, "Museum"},           {38, "Food"},           {39, "Underwater"},
    {40, "Green Mode"},       {49, "Light Pet"},            {50, "Dark Pet"},       {51, "Medium Pet"},
    {53, "Underwater"},       {54, "Candlelight"},          {55, "Natural Skin Tone"},
    {56, "Synchro Sound Record"}, {58, "Frame Composite"},  {59, "Report"},         {60, "Kids"},
    {61, "Blur Reduction"},   {63, "Panorama 2"},           {65, "Half-length Portrait"},
    {66, "Portrait 2"},       {74, "Digital Microscope"},   {75, "Blue Sky"},       {80, "Miniature"},
    {81, "HDR"},              {83, "Fisheye"},              {85, "Digital Filter 4"}, {221, "P"},
    {255, "PICT"},
};

constexpr ValueText kFocusModeTexts[] = {
    {0, "Normal"},          {1, "Macro"},           {2, "Infinity"},         {3, "Manual"},
    {4, "Super Macro"},     {5, "Pan Focus"},       {16, "AF-S (focus priority)"},
    {17, "AF-C (focus priority)"},                  {18, "AF-A (focus priority)"},
    {32, "Contrast detect (focus priority)"},       {33, "Tracking contrast detect (focus priority)"},
    {272, "AF-S (release priority)"},               {273, "AF-C (release priority)"},
    {274, "AF-A (release priority)"},               {288, "Contrast detect (release priority)"},
};

// The eleven points of the K10D generation; cameras with more AF points
// number theirs otherwise and are not told apart here.
constexpr ValueText kAfPointTexts[] = {
    {0, "None"},       {1, "Upper-left"},     {2, "Top"},         {3, "Upper-right"},
    {4, "Left"},       {5, "Mid-left"},       {6, "Center"},      {7, "Mid-right"},
    {8, "Right"},      {9, "Lower-left"},     {10, "Bottom"},     {11, "Lower-right"},
    {65531, "AF Select"}, {65532, "Face Detect AF"}, {65533, "Automatic Tracking AF"},
    {65534, "Fixed Center"}, {65535, "Auto"},
};

constexpr ValueText kWhiteBalanceTexts[] = {
    {0, "Auto"},            {1, "Daylight"},       {2, "Shade"},         {3, "Fluorescent"},
    {4, "Tungsten"},        {5, "Manual"},         {6, "Daylight Fluorescent"},
    {7, "Day White Fluorescent"},                  {8, "White Fluorescent"}, {9, "Flash"},
    {10, "Cloudy"},         {11, "Warm White Fluorescent"},              {14, "Multi Auto"},
    {15, "Color Temperature Enhancement"},         {17, "Kelvin"},       {65534, "Unknown"},
    {65535, "User Selected"},
};

// Saturation and contrast: 0 to 8 step away from normal in both directions.
constexpr ValueText kLevelTexts[] = {
    {0, "Low"},  {1, "Normal"},   {2, "High"},     {3, "Medium Low"}, {4, "Medium High"},
    {5, "Very Low"}, {6, "Very High"}, {7, "Minimum"}, {8, "Maximum"}, {65535, "n/a"},
};
constexpr ValueText kSharpnessTexts[] = {
    {0, "Soft"},  {1, "Normal"},   {2, "Hard"},     {3, "Medium Soft"}, {4, "Medium Hard"},
    {5, "Very Soft"}, {6, "Very Hard"}, {7, "Minimum"}, {8, "Maximum"},
};

constexpr ValueText kWorldTimeTexts[] = {{0, "Hometown"}, {1, "Destination"}};

// The world-time cities, numbered in the camera's order (by time zone).
constexpr ValueText kCityTexts[] = {
    {0, "Pago Pago"},     {1, "Honolulu"},       {2, "Anchorage"},      {3, "Vancouver"},
    {4, "San Francisco"}, {5, "Los Angeles"},    {6, "Calgary"},        {7, "Denver"},
    {8, "Mexico City"},   {9, "Chicago"},        {10, "Miami"},         {11, "Toronto"},
    {12, "New York"},     {13, "Santiago"},      {14, "Caracas"},       {15, "Halifax"},
    {16, "Buenos Aires"}, {17, "Sao Paulo"},     {18, "Rio de Janeiro"}, {19, "Madrid"},
    {20, "London"},       {21, "Paris"},         {22, "Milan"},         {23, "Rome"},
    {24, "Berlin"},       {25, "Johannesburg"},  {26, "Istanbul"},      {27, "Cairo"},
    {28, "Jerusalem"},    {29, "Moscow"},        {30, "Jeddah"},        {31, "Tehran"},
    {32, "Dubai"},        {33, "Karachi"},       {34, "Kabul"},         {35, "Male"},
    {36, "Delhi"},        {37, "Colombo"},       {38, "Kathmandu"},     {39, "Dhaka"},
    {40, "Yangon"},       {41, "Bangkok"},       {42, "Kuala Lumpur"},  {43, "Vientiane"},
    {44, "Singapore"},    {45, "Phnom Penh"},    {46, "Ho Chi Minh"},   {47, "Jakarta"},
    {48, "Hong Kong"},    {49, "Perth"},         {50, "Beijing"},       {51, "Shanghai"},
    {52, "Manila"},       {53, "Taipei"},        {54, "Seoul"},         {55, "Adelaide"},
    {56, "Tokyo"},        {57, "Guam"},          {58, "Sydney"},        {59, "Noumea"},
    {60, "Wellington"},   {61, "Auckland"},      {62, "Lima"},          {63, "Dakar"},
    {64, "Algiers"},      {65, "Helsinki"},      {66, "Athens"},        {67, "Nairobi"},
    {68, "Amsterdam"},    {69, "Stockholm"},     {70, "Lisbon"},        {71, "Copenhagen"},
    {72, "Warsaw"},       {73, "Prague"},        {74, "Budapest"},
};

constexpr Enumeration kQuality = Enum(kQualityTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kPictureMode = Enum(kPictureModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kAfPoint = Enum(kAfPointTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kLevel = Enum(kLevelTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kSharpness = Enum(kSharpnessTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kWorldTime = Enum(kWorldTimeTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kCity = Enum(kCityTexts, Sign::kUnsigned, "%u");

// The second SHORT of the value field, in the note's byte order.
uint16_t SecondShort(const MakerEntry& e) { return platform::GetU16(e.entry().fieldBytes + 2, e.context.bigEndian()); }

// ------------------------------------------------------------ formatters

// One SHORT names a size; the two-SHORT form of some compacts pairs a size
// with an aspect and numbers its sizes otherwise.
constexpr ValueText kImageSizeTexts[] = {
    {0, "640x480"},    {1, "Full"},       {2, "1024x768"},   {3, "1280x960"},
    {4, "1600x1200"},  {5, "2048x1536"},  {8, "2560x1920 or 2304x1728"},
    {9, "3072x2304"},  {10, "3264x2448"}, {19, "320x240"},   {20, "2288x1712"},
    {21, "2592x1944"}, {22, "2304x1728 or 2592x1944"},       {23, "3056x2296"},
    {25, "2816x2212 or 2816x2112"},       {27, "3648x2736"}, {29, "4000x3000"},
    {30, "4288x3216"}, {31, "4608x3456"}, {129, "1920x1080"}, {135, "4608x2592"},
    {257, "3216x3216"},
};
constexpr Enumeration kImageSize = Enum(kImageSizeTexts, Sign::kUnsigned, "");
// Keyed size * 65536 + aspect.
constexpr ValueText kImageSizePairTexts[] = {
    {0x000000, "2304x1728"}, {0x040000, "1600x1200"}, {0x050000, "2048x1536"}, {0x080000, "2560x1920"},
    {0x200002, "960x640"},   {0x210002, "1152x768"},  {0x220002, "1536x1024"}, {0x230001, "2400x1600"},
    {0x240000, "3008x2008 or 3040x2024"},             {0x250000, "3008x2000"},
};
constexpr Enumeration kImageSizePair = Enum(kImageSizePairTexts, Sign::kUnsigned, "");

void ImageSize(const MakerEntry& e) {
    const uint16_t size = e.Unsigned16();
    if (e.entry().count < 2) {
        const char* text = EnumerationText(kImageSize, size);
        return text ? exif::SetRowValue(e.row(), text) : SetValuef(e.row(), "%u", size);
    }
    const uint16_t aspect = SecondShort(e);
    if (const char* text = EnumerationText(kImageSizePair, int64_t{size} * 65536 + aspect))
        return exif::SetRowValue(e.row(), text);
    SetValuef(e.row(), "%u %u", size, aspect);
}

// The mode as set; the DSLRs add a second SHORT for the flash that fired.
constexpr ValueText kFlashModeTexts[] = {
    {0, "Auto, not fired"},  {1, "Off, not fired"},    {2, "On, not fired"},
    {3, "Auto, not fired, red-eye reduction"},         {5, "On, not fired, wireless master"},
    {256, "Auto, fired"},    {258, "On, fired"},        {259, "Auto, fired, red-eye reduction"},
    {260, "On, red-eye reduction"},                    {261, "On, wireless master"},
    {262, "On, wireless control"},                     {264, "On, soft"},
    {265, "On, slow sync"},  {266, "On, slow sync, red-eye reduction"},
    {267, "On, trailing-curtain sync"},
};
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "");
constexpr ValueText kFlashUnitTexts[] = {
    {0, "off-auto-aperture"},  {63, "internal"},        {256, "external, auto"},
    {575, "external, flash problem"},                   {768, "external, manual"},
    {772, "external, P-TTL"},  {773, "external, contrast-control sync"},
    {774, "external, high-speed sync"},                 {780, "external, wireless"},
    {781, "external, wireless, high-speed sync"},
};
constexpr Enumeration kFlashUnit = Enum(kFlashUnitTexts, Sign::kUnsigned, "");

void FlashMode(const MakerEntry& e) {
    const uint16_t mode = e.Unsigned16();
    const char* text = EnumerationText(kFlashMode, mode);
    std::string out = text ? text : std::to_string(mode);
    if (e.entry().count >= 2) {
        const uint16_t unit = SecondShort(e);
        const char* unitText = EnumerationText(kFlashUnit, unit);
        out += "; ";
        out += unitText ? unitText : std::to_string(unit);
    }
    exif::SetRowValue(e.row(), out);
}

// ISO by index: 3 to 45 in third stops from 50, 258 to 286 in half stops
// from 50; some cameras store the speed itself.
constexpr uint32_t kThirdStopIso[] = {
    50,    64,    80,    100,   125,    160,    200,    250,    320,    400,    500,
    640,   800,   1000,  1250,  1600,   2000,   2500,   3200,   4000,   5000,   6400,
    8000,  10000, 12800, 16000, 20000,  25600,  32000,  40000,  51200,  64000,  80000,
    102400, 128000, 160000, 204800, 256000, 320000, 409600, 512000, 640000, 819200,
};
constexpr uint32_t kHalfStopIso[] = {
    50,    70,    100,   140,   200,    280,    400,    560,    800,    1100,
    1600,  2200,  3200,  4500,  6400,   9000,   12800,  18000,  25600,  36000,
    51200, 72000, 102400, 144000, 204800, 288000, 409600, 576000, 819200,
};
constexpr uint32_t kThirdStopFirst = 3;
constexpr uint32_t kHalfStopFirst = 258;

template <size_t N>
const uint32_t* SpeedAt(const uint32_t (&speeds)[N], uint32_t first, uint32_t index) {
    return index >= first && index - first < N ? &speeds[index - first] : nullptr;
}

void Iso(const MakerEntry& e) {
    const uint32_t v = e.Unsigned16();
    const uint32_t* speed = SpeedAt(kThirdStopIso, kThirdStopFirst, v);
    if (!speed) speed = SpeedAt(kHalfStopIso, kHalfStopFirst, v);
    if (speed) return SetValuef(e.row(), "%u", *speed);
    if (v == 65534 || v == 65535) return exif::SetRowValue(e.row(), "Auto");
    SetValuef(e.row(), "%u", v);
}

// The DSLRs' picture mode, three bytes: the exposure mode, its scene or
// program variant (keyed mode * 256 + variant), and the exposure steps.
constexpr ValueText kPictureModePairTexts[] = {
    {0x0000, "Program"},            {0x0001, "Hi-speed Program"},   {0x0002, "DOF Program"},
    {0x0003, "MTF Program"},        {0x0004, "Standard"},           {0x0005, "Portrait"},
    {0x0006, "Landscape"},          {0x0007, "Macro"},              {0x0008, "Sport"},
    {0x0009, "Night Scene Portrait"}, {0x000A, "No Flash"},         {0x000B, "Night Scene"},
    {0x000C, "Surf & Snow"},        {0x000D, "Text"},               {0x000E, "Sunset"},
    {0x000F, "Kids"},               {0x0010, "Pet"},                {0x0011, "Candlelight"},
    {0x0012, "Museum"},             {0x0013, "Food"},               {0x0014, "Stage Lighting"},
    {0x0015, "Night Snap"},         {0x0017, "Blue Sky"},           {0x0018, "Sunset"},
    {0x001A, "Night Scene HDR"},    {0x001B, "HDR"},                {0x001C, "Quick Macro"},
    {0x001D, "Forest"},             {0x001E, "Backlight Silhouette"},
    {0x0104, "Auto PICT (Standard)"}, {0x0105, "Auto PICT (Portrait)"}, {0x0106, "Auto PICT (Landscape)"},
    {0x0107, "Auto PICT (Macro)"},  {0x0108, "Auto PICT (Sport)"},
    {0x0200, "Program (HyP)"},      {0x0201, "Hi-speed Program (HyP)"}, {0x0202, "DOF Program (HyP)"},
    {0x0203, "MTF Program (HyP)"},  {0x0216, "Shallow DOF (HyP)"},
    {0x0300, "Green Mode"},         {0x0400, "Shutter Speed Priority"}, {0x0500, "Aperture Priority"},
    {0x0600, "Program Tv Shift"},   {0x0700, "Program Av Shift"},   {0x0800, "Manual"},
    {0x0900, "Bulb"},               {0x0A00, "Aperture Priority, off-auto-aperture"},
    {0x0B00, "Manual, off-auto-aperture"},                          {0x0C00, "Bulb, off-auto-aperture"},
    {0x0D00, "Shutter & Aperture Priority AE"},                     {0x0F00, "Sensitivity Priority AE"},
    {0x1000, "Flash X-Sync Speed AE"},                              {0x1200, "Auto Program (Normal)"},
    {0x1201, "Auto Program (Hi-speed)"}, {0x1202, "Auto Program (DOF)"}, {0x1203, "Auto Program (MTF)"},
    {0x1216, "Auto Program (Shallow DOF)"}, {0x1300, "Astrotracer"}, {0x1416, "Blur Control"},
    {0xF900, "Movie (TAv)"},        {0xFA00, "Movie (TAv, auto aperture)"}, {0xFB00, "Movie (Manual)"},
    {0xFC00, "Movie (Manual, auto aperture)"}, {0xFD00, "Movie (Av)"}, {0xFE00, "Movie (Av, auto aperture)"},
    {0xFF00, "Movie (P, auto aperture)"}, {0xFF04, "Video"},
};
constexpr Enumeration kPictureModePair = Enum(kPictureModePairTexts, Sign::kUnsigned, "");
constexpr ValueText kEvStepTexts[] = {{0, "1/2 EV steps"}, {1, "1/3 EV steps"}};
constexpr Enumeration kEvStep = Enum(kEvStepTexts, Sign::kUnsigned, "");

void PictureMode(const MakerEntry& e) {
    const uint8_t* b = e.entry().fieldBytes;
    if (e.entry().count < 2) return SetValuef(e.row(), "%u", b[0]);
    const char* text = EnumerationText(kPictureModePair, b[0] * 256 + b[1]);
    std::string out = text ? text : std::to_string(b[0]) + " " + std::to_string(b[1]);
    if (e.entry().count >= 3) {
        const char* steps = EnumerationText(kEvStep, b[2]);
        out += ", ";
        out += steps ? steps : std::to_string(b[2]);
    }
    exif::SetRowValue(e.row(), out);
}

// A lens number of 0 is asked for as 32.
uint32_t NonZeroOr32(uint32_t key) { return key == 0 ? 32 : key; }

// The lens is stored as two bytes (series, number) at the start of the
// field. The word is taken in the file's order and searched first as its top
// two bytes, where a big-endian file puts them, then as its low two bytes,
// where a little-endian file does.
void LensType(const MakerEntry& e) {
    const uint32_t v = e.entry().valueField;
    const uint32_t b3 = v >> 24, b2 = (v >> 16) & 0xFF, b1 = (v >> 8) & 0xFF, b0 = v & 0xFF;
    exif::TagRecord& row = e.row();
    const uint32_t series = NonZeroOr32(b3), number = NonZeroOr32(b2);
    LookupPentaxLens(series, number, row.value, sizeof row.value);
    if (row.value[0] == '\0') LookupPentaxLens(b0, NonZeroOr32(b1), row.value, sizeof row.value);
    if (row.value[0] == '\0')
        SetValuef(row, "unknown (%d, %d; %d, %d)", static_cast<int>(series), static_cast<int>(number),
                  static_cast<int>(NonZeroOr32(b1)), static_cast<int>(b0));
}

// ------------------------------------------------------------ more plain tags

// The byte at index i of a value held in the field (count 4 or less).
uint8_t FieldByte(const MakerEntry& e, size_t i) { return i < e.entry().count ? e.entry().fieldBytes[i] : 0; }

void Version(const MakerEntry& e) {
    std::string out;
    for (size_t i = 0; i < 4 && i < e.entry().count; ++i) {
        if (i) out += '.';
        out += std::to_string(FieldByte(e, i));
    }
    exif::SetRowValue(e.row(), out);
}

// Two SHORTs in the field: width and height.
void SizePair(const MakerEntry& e) { SetValuef(e.row(), "%ux%u", e.Unsigned16(), SecondShort(e)); }

void UnsignedLong(const MakerEntry& e) { SetValuef(e.row(), "%u", e.entry().valueField); }

void ModelId(const MakerEntry& e) { SetModel(e.row(), e.entry().valueField); }

// Year (16 bits, big-endian whatever the note's order), month, day.
void Date(const MakerEntry& e) {
    SetValuef(e.row(), "%04u:%02u:%02u", FieldByte(e, 0) * 256u + FieldByte(e, 1), FieldByte(e, 2), FieldByte(e, 3));
}
void Time(const MakerEntry& e) { SetValuef(e.row(), "%02u:%02u:%02u", FieldByte(e, 0), FieldByte(e, 1), FieldByte(e, 2)); }

// Hundred-thousandths of a second; all ones in Bulb.
void ExposureTime(const MakerEntry& e) {
    const double seconds = e.entry().valueField * 1e-5;
    if (seconds > 42949) return exif::SetRowValue(e.row(), "Unknown (Bulb)");
    SetExposureTime(e.row(), seconds);
}

void FNumber(const MakerEntry& e) { SetValuef(e.row(), "%.1f", e.Unsigned16() / 10.0); }

// Tenths of a stop with 50 meaning none.
void TenthsFrom50(const MakerEntry& e) { SetSignedEv(e.row(), (e.Unsigned16() - 50) / 10.0); }

constexpr ValueText kMeteringTexts[] = {{0, "Multi-segment"}, {1, "Center-weighted average"}, {2, "Spot"}};
constexpr Enumeration kMetering = Enum(kMeteringTexts, Sign::kUnsigned, "%u");

// The step in thirds (1..9) or as 10 + halves, or flagged as a count of
// halves (0x1000) or thirds (0x2000); then the extended bracket, if any.
constexpr ValueText kExtendedBracketTexts[] = {
    {1, "WB-BA"}, {2, "WB-GM"}, {3, "Saturation"}, {4, "Sharpness"}, {5, "Contrast"}, {6, "Hue"}, {7, "HighLowKey"},
};
constexpr Enumeration kExtendedBracket = Enum(kExtendedBracketTexts, Sign::kUnsigned, "");

void AutoBracketing(const MakerEntry& e) {
    const uint16_t step = e.Unsigned16();
    std::string out;
    if (step == 0) out = "0";
    else if (step & 0x1000 && step >= 20) out = std::to_string(step - 0x1000) + "/2";
    else if (step & 0x2000 && step >= 20) out = std::to_string(step - 0x2000) + "/3";
    else if (step < 20) {
        char text[16];
        std::snprintf(text, sizeof text, "%.1f", step < 10 ? step / 3.0 : step - 9.5);
        out = text;
    } else out = std::to_string(step);
    if (e.entry().count >= 2) {
        const uint16_t extended = SecondShort(e);
        out += " EV, ";
        if (extended == 0) {
            out += "No Extended Bracket";
        } else {
            const char* name = EnumerationText(kExtendedBracket, extended >> 8);
            out += name ? name : "Unknown(" + std::to_string(extended >> 8) + ")";
            out += "+" + std::to_string(extended & 0xFF);
        }
    }
    exif::SetRowValue(e.row(), out);
}

constexpr ValueText kWhiteBalanceModeTexts[] = {
    {1, "Auto (Daylight)"},   {2, "Auto (Shade)"},    {3, "Auto (Flash)"}, {4, "Auto (Tungsten)"},
    {6, "Auto (Daylight Fluorescent)"},               {7, "Auto (Day White Fluorescent)"},
    {8, "Auto (White Fluorescent)"},                  {10, "Auto (Cloudy)"},
    {65534, "Unknown"},       {65535, "User-Selected"},
};
constexpr Enumeration kWhiteBalanceMode = Enum(kWhiteBalanceModeTexts, Sign::kUnsigned, "%u");

void Per256(const MakerEntry& e) { SetNumber(e.row(), e.Unsigned16() / 256.0); }
void Per100(const MakerEntry& e) { SetNumber(e.row(), e.Unsigned16() / 100.0); }
void FocalLength(const MakerEntry& e) { SetValuef(e.row(), "%.1f mm", e.entry().valueField / 100.0); }

constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "%u");

// Each byte stored with all its bits flipped: major, minor and two more.
void Firmware(const MakerEntry& e) {
    if (e.entry().count != 4) return FormatGenericValue(e);
    const auto b = [&](size_t i) { return static_cast<unsigned>(FieldByte(e, i) ^ 0xFF); };
    SetValuef(e.row(), "%u.%02u.%02u.%02u", b(0), b(1), b(2), b(3));
}

void Unsigned(const MakerEntry& e) { SetValuef(e.row(), "%u", e.Unsigned16()); }
void Signed(const MakerEntry& e) { SetValuef(e.row(), "%d", e.Signed16()); }

// A light value in 1/1024 steps, signed, in a SHORT or a LONG.
void EffectiveLv(const MakerEntry& e) {
    const double lv = e.entry().type == tiff::kLong ? static_cast<int32_t>(e.entry().valueField) : e.Signed16();
    SetValuef(e.row(), "%.1f", lv / 1024.0);
}

// Four bytes, read as one key (first byte highest); shorter values pad with zeros.
constexpr ValueText kImageEditingTexts[] = {
    {0x00000000, "None"},             {0x00000004, "Digital Filter"},   {0x01000000, "Resized"},
    {0x02000000, "Cropped"},          {0x04000000, "Digital Filter 4"}, {0x06000000, "Digital Filter 6"},
    {0x08000000, "Red-eye Correction"}, {0x10000000, "Frame Synthesis?"},
};
constexpr Enumeration kImageEditing = Enum(kImageEditingTexts, Sign::kUnsigned, "");

void ImageEditing(const MakerEntry& e) {
    const int64_t key = (int64_t{FieldByte(e, 0)} << 24) | (FieldByte(e, 1) << 16) | (FieldByte(e, 2) << 8) | FieldByte(e, 3);
    if (const char* text = EnumerationText(kImageEditing, key)) return exif::SetRowValue(e.row(), text);
    FormatGenericValue(e);
}

// Four bytes: frames, timer, trigger, exposure kind; each its own table.
constexpr ValueText kDriveFrameTexts[] = {
    {0, "Single-frame"}, {1, "Continuous"}, {2, "Continuous (Lo)"}, {3, "Burst"}, {4, "Continuous (Medium)"},
    {255, "Video"},
};
constexpr ValueText kDriveTimerTexts[] = {
    {0, "No Timer"}, {1, "Self-timer (12 s)"}, {2, "Self-timer (2 s)"}, {15, "Video"}, {16, "Mirror Lock-up"},
    {255, "n/a"},
};
constexpr ValueText kDriveTriggerTexts[] = {
    {0, "Shutter Button"}, {1, "Remote Control (3 s delay)"}, {2, "Remote Control"}, {4, "Remote Continuous Shooting"},
};
constexpr ValueText kDriveExposureTexts[] = {
    {0x00, "Single Exposure"},     {0x01, "Multiple Exposure"},        {0x02, "Composite Average"},
    {0x03, "Composite Additive"},  {0x04, "Composite Bright"},         {0x08, "Interval Shooting"},
    {0x0a, "Interval Composite Average"}, {0x0b, "Interval Composite Additive"},
    {0x0c, "Interval Composite Bright"},  {0x0f, "Interval Movie"},    {0x10, "HDR"},
    {0x20, "HDR Strong 1"},        {0x30, "HDR Strong 2"},             {0x40, "HDR Strong 3"},
    {0x50, "HDR Manual"},          {0xe0, "HDR Auto"},                 {0xff, "Video"},
};
constexpr Enumeration kDriveParts[] = {
    Enum(kDriveFrameTexts, Sign::kUnsigned, "%u"), Enum(kDriveTimerTexts, Sign::kUnsigned, "%u"),
    Enum(kDriveTriggerTexts, Sign::kUnsigned, "%u"), Enum(kDriveExposureTexts, Sign::kUnsigned, "%u"),
};

void DriveMode(const MakerEntry& e) {
    std::string out;
    for (size_t i = 0; i < 4 && i < e.entry().count; ++i) {
        const uint8_t v = FieldByte(e, i);
        const char* text = EnumerationText(kDriveParts[i], v);
        if (i) out += "; ";
        out += text ? text : std::to_string(v);
    }
    exif::SetRowValue(e.row(), out);
}

// Width and height including the masked pixels, in 1/500 mm.
void SensorSize(const MakerEntry& e) {
    SetValuef(e.row(), "%.3f x %.3f mm", e.Unsigned16() / 500.0, SecondShort(e) / 500.0);
}

constexpr ValueText kColorSpaceTexts[] = {{0, "sRGB"}, {1, "Adobe RGB"}};
constexpr Enumeration kColorSpace = Enum(kColorSpaceTexts, Sign::kUnsigned, "%u");

void Temperature(const MakerEntry& e) { SetValuef(e.row(), "%d C", static_cast<int8_t>(FieldByte(e, 0))); }

// One SLONG in 1/256 EV, or (newer cameras) two signed bytes in 1/6 EV.
void FlashExposureComp(const MakerEntry& e) {
    if (e.entry().count >= 2) return SetSignedEv(e.row(), static_cast<int8_t>(FieldByte(e, 0)) / 6.0);
    SetSignedEv(e.row(), static_cast<int32_t>(e.entry().valueField) / 256.0);
}

constexpr ValueText kImageToneTexts[] = {
    {0, "Natural"},       {1, "Bright"},   {2, "Portrait"},      {3, "Landscape"},
    {4, "Vibrant"},       {5, "Monochrome"}, {6, "Muted"},       {7, "Reversal Film"},
    {8, "Bleach Bypass"}, {9, "Radiant"},  {10, "Cross Processing"}, {11, "Flat"},
};
constexpr Enumeration kImageTone = Enum(kImageToneTexts, Sign::kUnsigned, "%u");

// The older compacts' points in focus (the K-3 writes a LONG bit mask here).
constexpr ValueText kAfPointsInFocusTexts[] = {
    {0, "Fixed Center or Multiple"}, {1, "Top-left"},    {2, "Top-center"},    {3, "Top-right"},
    {4, "Left"},                     {5, "Center"},      {6, "Right"},         {7, "Bottom-left"},
    {8, "Bottom-center"},            {9, "Bottom-right"}, {65535, "None"},
};
constexpr Enumeration kAfPointsInFocus = Enum(kAfPointsInFocusTexts, Sign::kUnsigned, "%u");

void AfPointsInFocus(const MakerEntry& e) {
    if (e.entry().type != tiff::kShort) return FormatGenericValue(e);
    const char* text = EnumerationText(kAfPointsInFocus, e.Unsigned16());
    text ? exif::SetRowValue(e.row(), text) : SetValuef(e.row(), "%u", e.Unsigned16());
}

// The most faces the camera looks for, then how many it found.
void FaceDetect(const MakerEntry& e) {
    const uint8_t most = FieldByte(e, 0);
    std::string out = most ? "On (" + std::to_string(most) + " faces max)" : "Off";
    if (e.entry().count >= 2) out += "; " + std::to_string(FieldByte(e, 1)) + " faces detected";
    exif::SetRowValue(e.row(), out);
}

constexpr MakerTag kPentaxTags[] = {
    {0, "Pentax Version", Version},
    {1, "Pentax Model Type", Unsigned},
    {2, "Preview Image Size", SizePair},
    {3, "Preview Image Length", UnsignedLong},
    {5, "Pentax Model ID", ModelId},
    {6, "Date", Date},
    {7, "Time", Time},
    {8, "Quality", kQuality},
    {9, "Image Size", ImageSize},
    {11, "Picture Mode", kPictureMode},            // 000B
    {12, "Flash Mode", FlashMode},                 // 000C
    {13, "Focus Mode", kFocusMode},                // 000D
    {14, "AF Point", kAfPoint},                    // 000E
    {15, "AF Points In Focus", AfPointsInFocus},   // 000F
    {16, "Focus Position", Unsigned},              // 0010
    {18, "Exposure Time", ExposureTime},           // 0012
    {19, "F Number", FNumber},                     // 0013
    {20, "ISO", Iso},                              // 0014
    {21, "Light Reading", Signed},                 // 0015
    {22, "Exposure Compensation", TenthsFrom50},   // 0016
    {23, "Metering Mode", kMetering},              // 0017
    {24, "Auto Bracketing", AutoBracketing},       // 0018
    {25, "White Balance", kWhiteBalance},          // 0019
    {26, "White Balance Mode", kWhiteBalanceMode}, // 001A
    {27, "Blue Balance", Per256},                  // 001B
    {28, "Red Balance", Per256},                   // 001C
    {29, "Focal Length", FocalLength},             // 001D
    {30, "Digital Zoom", Per100},                  // 001E
    {31, "Saturation", kLevel},                    // 001F
    {32, "Contrast", kLevel},                      // 0020
    {33, "Sharpness", kSharpness},                 // 0021
    {34, "World Time Location", kWorldTime},       // 0022
    {35, "Home Town City", kCity},                 // 0023
    {36, "Destination City", kCity},               // 0024
    {37, "Home Town DST", kNoYes},                 // 0025
    {38, "Destination DST", kNoYes},               // 0026
    {39, "DSP Firmware Version", Firmware},        // 0027
    {40, "CPU Firmware Version", Firmware},        // 0028
    {41, "Frame Number", UnsignedLong},            // 0029
    {45, "Effective LV", EffectiveLv},             // 002D
    {50, "Image Editing", ImageEditing},           // 0032
    {51, "Picture Mode", PictureMode},             // 0033
    {52, "Drive Mode", DriveMode},                 // 0034
    {53, "Sensor Size", SensorSize},               // 0035
    {55, "Color Space", kColorSpace},              // 0037
    {56, "Image Area Offset", FormatGenericValue}, // 0038
    {57, "Raw Image Size", SizePair},              // 0039
    {62, "Preview Image Borders", FormatGenericValue},  // 003E
    {63, "Lens Type", LensType},                   // 003F
    {64, "Sensitivity Adjust", TenthsFrom50},      // 0040
    {65, "Image Edit Count", Unsigned},            // 0041
    {71, "Camera Temperature", Temperature},       // 0047
    {72, "AE Lock", kOffOn},                       // 0048
    {73, "Noise Reduction", kOffOn},               // 0049
    {77, "Flash Exposure Compensation", FlashExposureComp},  // 004D
    {79, "Image Tone", kImageTone},                // 004F
    {118, "Face Detect", FaceDetect},              // 0076
};
static_assert(TagsAscend(kPentaxTags) && TagsNamed(kPentaxTags), "Pentax tags ascend");
// A SHORT is the field's first two bytes, in the note's (the EXIF) order.
constexpr MakerTable kPentax = Table(kPentaxTags, ValueRule::kLeadingShort);

bool IsByteOrderMark(uint16_t word) { return word == 0x4949 || word == 0x4D4D; }

}  // namespace

// Two header forms, told apart by where the byte-order mark stands; the mark
// does not change the byte order, which stays the EXIF block's:
//
//   "AOC\0" mark(2) count(2) entries...        count at note + 6
//   "PENTAX \0" mark(2) count(2) entries...    count at note + 10
void DecodePentaxMakerNote(const platform::Cursor& start, uint32_t offsetBase, exif::TagRecordTable& table,
                           uint32_t* rowCount) {
    platform::Cursor head = start;
    const int bigEndian = start.bigEndian();
    uint8_t words[4] = {};
    head.Some(words, sizeof words);
    // Without the mark the count is four bytes back from where the read
    // stopped: the note's start, or before it for a note cut short.
    uint64_t at = head.position();
    if (!IsByteOrderMark(platform::GetU16(words + 2, bigEndian)) && at >= sizeof words) at -= sizeof words;
    const platform::Cursor input = head.Whole();
    const platform::Cursor directory = input.ChildAt(at, input.end());
    const uint32_t rowsBefore = *rowCount;
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kPentax);
    DecodeBlocks(directory, offsetBase, table, rowsBefore, rowCount);
}

}  // namespace makernotes
