// Pentax and Ricoh maker notes, behind a 6-byte "AOC\0" + byte-order header
// or an 8-byte "PENTAX \0" + byte-order header; offsets from the TIFF header.
// The tags named here are SHORTs (or a few bytes) held in the value field,
// read in the EXIF block's byte order like everything else in the note.
//
// Ricoh's own note forms ("RICOH\0" or "Ricoh\0" and a directory at note + 8,
// or the "Rv..." text of the oldest cameras) reach this decoder too, as their
// Make says RICOH. Read at note + 6 they give an entry count of 0 (the two
// zero bytes after the name) or, from text, one of 8224 or more, which the
// row limit refuses: either way no rows.
#include <string>

#include "lens_tables.h"
#include "makernote_decoders.h"

namespace makernotes {
namespace {

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
uint16_t SecondShort(const MakerEntry& e) { return tiff::GetU16(e.entry().fieldBytes + 2, e.context.bigEndian); }

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

constexpr MakerTag kPentaxTags[] = {
    {8, "Quality", kQuality},
    {9, "Image Size", ImageSize},
    {11, "Picture Mode", kPictureMode},       // 000B
    {12, "Flash Mode", FlashMode},            // 000C
    {13, "Focus Mode", kFocusMode},           // 000D
    {14, "AF Point", kAfPoint},               // 000E
    {20, "ISO", Iso},                         // 0014
    {25, "White Balance", kWhiteBalance},     // 0019
    {31, "Saturation", kLevel},               // 001F
    {32, "Contrast", kLevel},                 // 0020
    {33, "Sharpness", kSharpness},            // 0021
    {34, "World Time Location", kWorldTime},  // 0022
    {35, "Home Town City", kCity},            // 0023
    {36, "Destination City", kCity},          // 0024
    {51, "Picture Mode", PictureMode},        // 0033
    {63, "Lens Type", LensType},              // 003F
};
// A SHORT is the field's first two bytes, in the note's (the EXIF) order.
constexpr MakerTable kPentax = Table(kPentaxTags, ValueRule::kLeadingShort);

bool IsByteOrderMark(uint16_t word) { return word == 0x4949 || word == 0x4D4D; }

}  // namespace

const MakerTable& PentaxTags() { return kPentax; }

// Two header forms, told apart by where the byte-order mark stands; the mark
// does not change the byte order, which stays the EXIF block's:
//
//   "AOC\0" mark(2) count(2) entries...        count at note + 6
//   "PENTAX \0" mark(2) count(2) entries...    count at note + 10
void DecodePentaxMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                           uint32_t* rowCount, int bigEndian) {
    uint8_t words[4] = {};
    file.Read(words, sizeof words);
    if (!IsByteOrderMark(tiff::GetU16(words + 2, bigEndian))) file.Seek(-4, platform::SeekFrom::kCurrent);
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kPentax);
}

}  // namespace makernotes
