// Sony maker notes: a directory at the note's start or behind the 12-byte
// "SONY DSC" header, offsets from the TIFF header. The plain tags are here;
// the blocks some tags hold follow in a second pass (sony_blocks.cpp).
#include <cstring>

#include "makernote_texts.h"
#include "sony_makernote.h"

namespace makernotes {
namespace {

using namespace tiff;  // field types
using namespace sony;  // the value formats Sony's files share

// ------------------------------------------------------------ the first tags
//
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

// ------------------------------------------------------------ the later tags
//
// These read each value by its own type: a BYTE from the field's first
// byte, a SHORT from its first two, a LONG as the whole field. A value an
// enumeration does not list prints as its number.

// The same, with no row where the camera left the setting unrecorded
// (0xFFFF).
template <const Enumeration& E>
void Recorded(const MakerEntry& e) {
    if (StoredValue(e) == 0xFFFF) return e.Omit();
    Enumerated<E>(e);
}

void Setting(const MakerEntry& e) { exif::SetRowValue(e.row(), sony::SignedSetting(SignedValue(e))); }

// The value's bytes (at most `size`); the number read.
size_t ValueBytes(const MakerEntry& e, uint8_t* out, size_t size) { return exif::ReadRawBlock(e.context, out, size); }
uint32_t U16At(const MakerEntry& e, const uint8_t* b) { return platform::GetU16(b, e.context.bigEndian()); }
uint32_t U32At(const MakerEntry& e, const uint8_t* b) { return platform::GetU32(b, e.context.bigEndian()); }

void RationalStops(const MakerEntry& e) {
    double v;
    if (!SignedRationalValue(e, v)) return;
    if (v == 0) return exif::SetRowValue(e.row(), "0");
    SetValuef(e.row(), "%+.1f", v);
}

constexpr ValueText kLongExposureNoiseReductionTexts[] = {
    {0, "Off"}, {1, "On (unused)"}, {0x10001, "On (dark subtracted)"},
    {U32(0xFFFF0000), "Off (65535)"}, {U32(0xFFFF0001), "On (65535)"}, {U32(0xFFFFFFFF), "n/a"},
};
constexpr Enumeration kLongExposureNoiseReduction = Enum(kLongExposureNoiseReductionTexts, Sign::kUnsigned, "");

// HDR: the level in the low half, what became of the image in the high.
constexpr ValueText kHdrLevelTexts[] = {
    {0x00, "Off"},    {0x01, "Auto"},   {0x10, "1.0 EV"}, {0x11, "1.5 EV"}, {0x12, "2.0 EV"},
    {0x13, "2.5 EV"}, {0x14, "3.0 EV"}, {0x15, "3.5 EV"}, {0x16, "4.0 EV"}, {0x17, "4.5 EV"},
    {0x18, "5.0 EV"}, {0x19, "5.5 EV"}, {0x1a, "6.0 EV"},
};
constexpr ValueText kHdrImageTexts[] = {
    {0, "Uncorrected image"}, {1, "HDR image (good)"}, {2, "HDR image (fail 1)"}, {3, "HDR image (fail 2)"},
};
constexpr Enumeration kHdrLevel = Enum(kHdrLevelTexts, Sign::kUnsigned, "");
constexpr Enumeration kHdrImage = Enum(kHdrImageTexts, Sign::kUnsigned, "");
void Hdr(const MakerEntry& e) {
    const uint32_t v = StoredValue(e);
    std::string parts[2];
    const Enumeration* lists[2] = {&kHdrLevel, &kHdrImage};
    for (int i = 0; i < 2; ++i) {
        const uint32_t half = i == 0 ? v & 0xFFFF : v >> 16;
        const char* text = EnumerationText(*lists[i], half);
        parts[i] = text ? text : std::to_string(half);
    }
    exif::SetRowValue(e.row(), parts[0] + "; " + parts[1]);
}

constexpr ValueText kMultiFrameNoiseReductionTexts[] = {{0, "Off"}, {1, "On"}, {255, "n/a"}};
constexpr Enumeration kMultiFrameNoiseReduction = Enum(kMultiFrameNoiseReductionTexts, Sign::kUnsigned, "");

constexpr ValueText kPictureEffectTexts[] = {
    {0, "Off"},
    {1, "Toy Camera"},
    {2, "Pop Color"},
    {3, "Posterization"},
    {4, "Posterization B/W"},
    {5, "Retro Photo"},
    {6, "Soft High Key"},
    {7, "Partial Color (red)"},
    {8, "Partial Color (green)"},
    {9, "Partial Color (blue)"},
    {10, "Partial Color (yellow)"},
    {13, "High Contrast Monochrome"},
    {16, "Toy Camera (normal)"},
    {17, "Toy Camera (cool)"},
    {18, "Toy Camera (warm)"},
    {19, "Toy Camera (green)"},
    {20, "Toy Camera (magenta)"},
    {32, "Soft Focus (low)"},
    {33, "Soft Focus"},
    {34, "Soft Focus (high)"},
    {48, "Miniature (auto)"},
    {49, "Miniature (top)"},
    {50, "Miniature (middle horizontal)"},
    {51, "Miniature (bottom)"},
    {52, "Miniature (left)"},
    {53, "Miniature (middle vertical)"},
    {54, "Miniature (right)"},
    {64, "HDR Painting (low)"},
    {65, "HDR Painting"},
    {66, "HDR Painting (high)"},
    {80, "Rich-tone Monochrome"},
    {97, "Water Color"},
    {98, "Water Color 2"},
    {112, "Illustration (low)"},
    {113, "Illustration"},
    {114, "Illustration (high)"},
};
constexpr Enumeration kPictureEffect = Enum(kPictureEffectTexts, Sign::kUnsigned, "");

constexpr ValueText kSoftSkinTexts[] = {{0, "Off"}, {1, "Low"}, {2, "Mid"}, {3, "High"}, {U32(0xFFFFFFFF), "n/a"}};
constexpr Enumeration kSoftSkin = Enum(kSoftSkinTexts, Sign::kUnsigned, "");
constexpr ValueText kCorrectionTexts[] = {{0, "Off"}, {2, "Auto"}, {U32(0xFFFFFFFF), "n/a"}};
constexpr Enumeration kCorrection = Enum(kCorrectionTexts, Sign::kUnsigned, "");
constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kUnsigned, "");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kUnsigned, "");

constexpr ValueText kFlashActionTexts[] = {
    {0, "Did not fire"}, {1, "Flash Fired"}, {2, "External Flash Fired"}, {3, "Wireless Controlled Flash Fired"},
};
constexpr Enumeration kFlashAction = Enum(kFlashActionTexts, Sign::kUnsigned, "");

constexpr ValueText kFocusModeTexts[] = {
    {0, "Manual"}, {2, "AF-S"}, {3, "AF-C"}, {4, "AF-A"}, {6, "DMF"}, {7, "AF-D"},
};
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "");

// The AF area the photographer set, in the words of each kind of body.
constexpr ValueText kSltAfAreaTexts[] = {{0, "Wide"}, {4, "Local"}, {8, "Zone"}, {9, "Spot"}};
constexpr ValueText kIlcaAfAreaTexts[] = {
    {0, "Wide"}, {4, "Flexible Spot"}, {8, "Zone"}, {9, "Center"}, {12, "Expanded Flexible Spot"},
};
constexpr ValueText kEmountAfAreaTexts[] = {
    {0, "Wide"}, {1, "Center"}, {3, "Flexible Spot"}, {4, "Flexible Spot (LA-EA4)"}, {9, "Center (LA-EA4)"},
    {11, "Zone"}, {12, "Expanded Flexible Spot"},
};
constexpr Enumeration kSltAfArea = Enum(kSltAfAreaTexts, Sign::kUnsigned, "");
constexpr Enumeration kIlcaAfArea = Enum(kIlcaAfAreaTexts, Sign::kUnsigned, "");
constexpr Enumeration kEmountAfArea = Enum(kEmountAfAreaTexts, Sign::kUnsigned, "");

SonyBody BodyOf(const MakerEntry& e) { return e.note.sony ? e.note.sony->body : SonyBody::kUnknown; }
bool AmountBody(SonyBody b) { return b == SonyBody::kDslr || b == SonyBody::kSlt || b == SonyBody::kIlca; }

void AfAreaSetting(const MakerEntry& e) {
    switch (BodyOf(e)) {
        case SonyBody::kSlt: return SetEnumerated(e, kSltAfArea, StoredValue(e));
        case SonyBody::kIlca: return SetEnumerated(e, kIlcaAfArea, StoredValue(e));
        default: return SetEnumerated(e, kEmountAfArea, StoredValue(e));
    }
}

// The spot's position in a 640 x 480 frame: only where the spot can move.
void FlexibleSpotPosition(const MakerEntry& e) {
    if (AmountBody(BodyOf(e))) return e.Omit();
    FormatGenericValue(e);
}

// The 19 AF points of the SLT bodies (and of the E-mount bodies with the
// A-mount adapters' AF), by the bit each has in the points used.
constexpr const char* kSltAfPoints[] = {
    "Center",          "Top",         "Upper-right",     "Right",          "Lower-right",
    "Bottom",          "Lower-left",  "Left",            "Upper-left",     "Far Right",
    "Far Left",        "Upper-middle", "Near Right",     "Lower-middle",   "Near Left",
    "Upper Far Right", "Lower Far Right", "Lower Far Left", "Upper Far Left",
};
constexpr ValueText kSltAfPointTexts[] = {
    {0, "Auto"},          {1, "Center"},           {2, "Top"},             {3, "Upper-right"},
    {4, "Right"},         {5, "Lower-right"},      {6, "Bottom"},          {7, "Lower-left"},
    {8, "Left"},          {9, "Upper-left"},       {10, "Far Right"},      {11, "Far Left"},
    {12, "Upper-middle"}, {13, "Near Right"},      {14, "Lower-middle"},   {15, "Near Left"},
    {16, "Upper Far Right"}, {17, "Lower Far Right"}, {18, "Lower Far Left"}, {19, "Upper Far Left"},
};
// The E-mount bodies name the zone chosen.
constexpr ValueText kZoneTexts[] = {
    {0, "n/a"},         {1, "Center Zone"},       {2, "Top Zone"},         {3, "Right Zone"},
    {4, "Left Zone"},   {5, "Bottom Zone"},       {6, "Bottom Right Zone"}, {7, "Bottom Left Zone"},
    {8, "Top Left Zone"}, {9, "Top Right Zone"},
};
constexpr Enumeration kSltAfPoint = Enum(kSltAfPointTexts, Sign::kUnsigned, "");
constexpr Enumeration kZone = Enum(kZoneTexts, Sign::kUnsigned, "");

// The compacts record no AF point; the ILCA bodies' 79 points print as numbers.
void AfPointSelected(const MakerEntry& e) {
    switch (BodyOf(e)) {
        case SonyBody::kCompact:
        case SonyBody::kUnknown: return e.Omit();
        case SonyBody::kEmount: return SetEnumerated(e, kZone, StoredValue(e));
        case SonyBody::kIlca: return UnsignedNumber(e);
        default: return SetEnumerated(e, kSltAfPoint, StoredValue(e));
    }
}

void AfPointsUsed(const MakerEntry& e) {
    const SonyBody body = BodyOf(e);
    if (body == SonyBody::kCompact || body == SonyBody::kUnknown || body == SonyBody::kIlca) return e.Omit();
    uint8_t bits[10] = {};
    const size_t got = ValueBytes(e, bits, sizeof bits);
    exif::SetRowValue(e.row(), sony::BitNames(bits, got, kSltAfPoints, sizeof kSltAfPoints / sizeof *kSltAfPoints));
}

constexpr ValueText kAfTrackingTexts[] = {{0, "Off"}, {1, "Face tracking"}, {2, "Lock On AF"}};
constexpr Enumeration kAfTracking = Enum(kAfTrackingTexts, Sign::kUnsigned, "");
constexpr ValueText kNrEffectTexts[] = {{0, "Normal"}, {1, "High"}};
constexpr Enumeration kNrEffect = Enum(kNrEffectTexts, Sign::kUnsigned, "");

// Two shifts in thousandths.
void PreciseShift(const MakerEntry& e) {
    uint8_t b[8];
    if (ValueBytes(e, b, sizeof b) < sizeof b) return;
    SetValuef(e.row(), "%.2f %.2f", static_cast<int32_t>(U32At(e, b)) / 1000.0,
              static_cast<int32_t>(U32At(e, b + 4)) / 1000.0);
}

// Two SHORTs read as one pair of numbers.
struct PairText {
    uint16_t first, second;
    const char* text;
};
template <size_t N>
void SetPair(const MakerEntry& e, const PairText (&texts)[N]) {
    uint8_t b[4];
    if (ValueBytes(e, b, sizeof b) < sizeof b) return;
    const uint32_t first = U16At(e, b), second = U16At(e, b + 2);
    for (const PairText& t : texts)
        if (t.first == first && t.second == second) return exif::SetRowValue(e.row(), t.text);
    SetValuef(e.row(), "%u %u", first, second);
}
constexpr PairText kLowPassFilterTexts[] = {
    {0, 0, "n/a"}, {1, 0, "Off"}, {1, 1, "Standard"}, {1, 2, "High"}, {65535, 65535, "n/a"},
};
void LowPassFilter(const MakerEntry& e) { SetPair(e, kLowPassFilterTexts); }
constexpr PairText kQuality2Texts[] = {
    {0, 0, "n/a"}, {0, 1, "Standard"}, {0, 2, "Fine"}, {0, 3, "Extra Fine"}, {0, 4, "Light"},
    {1, 0, "RAW"}, {1, 1, "RAW + Standard"}, {1, 2, "RAW + Fine"}, {1, 3, "RAW + Extra Fine"}, {1, 4, "RAW + Light"},
};
void Quality2(const MakerEntry& e) { SetPair(e, kQuality2Texts); }

constexpr ValueText kRawFileTypeTexts[] = {
    {0, "Compressed RAW"}, {1, "Uncompressed RAW"}, {2, "Lossless Compressed RAW"}, {65535, "n/a"},
};
constexpr Enumeration kRawFileType = Enum(kRawFileTypeTexts, Sign::kUnsigned, "");
constexpr ValueText kAwbPriorityTexts[] = {{0, "Standard"}, {1, "Ambience"}, {2, "White"}};
constexpr Enumeration kAwbPriority = Enum(kAwbPriorityTexts, Sign::kUnsigned, "");
constexpr ValueText kMeteringModeTexts[] = {
    {0x100, "Multi-segment"}, {0x200, "Center-weighted average"}, {0x301, "Spot (Standard)"},
    {0x302, "Spot (Large)"},  {0x400, "Average"},                 {0x500, "Highlight"},
};
constexpr Enumeration kMeteringMode = Enum(kMeteringModeTexts, Sign::kUnsigned, "");

// Nothing recorded reads "n/a"; what a pixel-shift group records is not named.
void PixelShiftInfo(const MakerEntry& e) {
    uint8_t b[16] = {};
    const size_t got = ValueBytes(e, b, sizeof b);
    for (size_t i = 0; i < got; ++i)
        if (b[i]) return e.Omit();
    exif::SetRowValue(e.row(), "n/a");
}

// Width and height of the focus frame; "n/a" when the third number is 0.
void FocusFrameSize(const MakerEntry& e) {
    uint8_t b[6];
    if (ValueBytes(e, b, sizeof b) < sizeof b) return;
    if (U16At(e, b + 4) == 0) return exif::SetRowValue(e.row(), "n/a");
    SetValuef(e.row(), "%ux%u", U16At(e, b), U16At(e, b + 2));
}

constexpr ValueText kJpegHeifTexts[] = {{0, "JPEG"}, {1, "HEIF"}, {65535, "n/a"}};
constexpr Enumeration kJpegHeif = Enum(kJpegHeifTexts, Sign::kUnsigned, "");

// The file format as four version bytes.
struct FileFormatText {
    uint8_t bytes[4];
    const char* text;
};
constexpr FileFormatText kFileFormats[] = {
    {{0, 0, 0, 2}, "JPEG"},     {{1, 0, 0, 0}, "SR2"},       {{2, 0, 0, 0}, "ARW 1.0"},
    {{3, 0, 0, 0}, "ARW 2.0"},  {{3, 1, 0, 0}, "ARW 2.1"},   {{3, 2, 0, 0}, "ARW 2.2"},
    {{3, 3, 0, 0}, "ARW 2.3"},  {{3, 3, 1, 0}, "ARW 2.3.1"}, {{3, 3, 2, 0}, "ARW 2.3.2"},
    {{3, 3, 3, 0}, "ARW 2.3.3"}, {{3, 3, 5, 0}, "ARW 2.3.5"}, {{4, 0, 0, 0}, "ARW 4.0"},
};
void FileFormat(const MakerEntry& e) {
    uint8_t b[4];
    if (ValueBytes(e, b, sizeof b) < sizeof b) return;
    for (const FileFormatText& f : kFileFormats)
        if (std::memcmp(f.bytes, b, sizeof b) == 0) return exif::SetRowValue(e.row(), f.text);
    SetValuef(e.row(), "%u %u %u %u", b[0], b[1], b[2], b[3]);
}

// The body's name, beside the number of the Sony Model ID row.
void ModelName(const MakerEntry& e) {
    const char* name = SonyModelName(e.Unsigned16());
    if (!name) return e.Omit();
    exif::SetRowValue(e.row(), name);
}

// The lens's name, beside the number of the Lens Type row.
void LensName(const MakerEntry& e) {
    if (!e.note.sony || e.note.sony->lensName.empty()) return e.Omit();
    exif::SetRowValue(e.row(), e.note.sony->lensName);
}

void ColorTemperature(const MakerEntry& e) {
    const uint32_t v = StoredValue(e);
    if (v == 0) return exif::SetRowValue(e.row(), "Auto");
    if (v == 0xFFFFFFFF) return exif::SetRowValue(e.row(), "n/a");
    SetValuef(e.row(), "%u", v);
}

void LensSpec(const MakerEntry& e) {
    uint8_t spec[8];
    if (ValueBytes(e, spec, sizeof spec) < sizeof spec) return;
    std::string text;
    if (sony::LensSpecText(spec, text)) return exif::SetRowValue(e.row(), text);
    exif::SetRowValue(e.row(), "Unknown (" + sony::LensSpecNumbers(spec) + ")");
}

// Height then width as stored; shown width x height.
void ImageSize(const MakerEntry& e) {
    uint8_t b[8];
    if (ValueBytes(e, b, sizeof b) < sizeof b) return;
    SetValuef(e.row(), "%ux%u", U32At(e, b + 4), U32At(e, b));
}

// The settings the earlier bodies record (tags B040 to B054).
constexpr ValueText kMacroTexts[] = {{0, "Off"}, {1, "On"}, {2, "Close Focus"}};
constexpr ValueText kExposureModeTexts[] = {
    {0, "Program AE"},        {1, "Portrait"},         {2, "Beach"},               {3, "Sports"},
    {4, "Snow"},              {5, "Landscape"},        {6, "Auto"},                {7, "Aperture-priority AE"},
    {8, "Shutter speed priority AE"}, {9, "Night Scene / Twilight"}, {10, "Hi-Speed Shutter"},
    {11, "Twilight Portrait"}, {12, "Soft Snap/Portrait"}, {13, "Fireworks"},      {14, "Smile Shutter"},
    {15, "Manual"},           {18, "High Sensitivity"}, {19, "Macro"},             {20, "Advanced Sports Shooting"},
    {29, "Underwater"},       {33, "Food"},            {34, "Sweep Panorama"},     {35, "Handheld Night Shot"},
    {36, "Anti Motion Blur"}, {37, "Pet"},             {38, "Backlight Correction HDR"}, {39, "Superior Auto"},
    {40, "Background Defocus"}, {41, "Soft Skin"},     {42, "3D Image"},
};
constexpr ValueText kEarlyFocusModeTexts[] = {{1, "AF-S"}, {2, "AF-C"}, {4, "Permanent-AF"}};
constexpr ValueText kAfIlluminatorTexts[] = {{0, "Off"}, {1, "Auto"}};
constexpr ValueText kJpegQualityTexts[] = {{0, "Standard"}, {1, "Fine"}, {2, "Extra Fine"}};
constexpr ValueText kFlashLevelTexts[] = {
    {-32768, "Low"}, {-9, "-9/3"}, {-6, "-6/3"}, {-5, "-5/3"}, {-4, "-4/3"}, {-3, "-3/3"}, {-2, "-2/3"},
    {-1, "-1/3"},    {0, "Normal"}, {1, "+1/3"}, {2, "+2/3"},  {3, "+3/3"},  {4, "+4/3"},  {5, "+5/3"},
    {6, "+6/3"},     {9, "+9/3"},  {128, "n/a"}, {32767, "High"},
};
constexpr ValueText kReleaseModeTexts[] = {
    {0, "Normal"}, {2, "Continuous"}, {5, "Exposure Bracketing"}, {6, "White Balance Bracketing"},
    {8, "DRO Bracketing"},
};
constexpr ValueText kSequenceNumberTexts[] = {{0, "Single"}};
constexpr ValueText kAntiBlurTexts[] = {{0, "Off"}, {1, "On (Continuous)"}, {2, "On (Shooting)"}};
constexpr ValueText kLaterFocusModeTexts[] = {
    {0, "Manual"}, {2, "AF-S"}, {3, "AF-C"}, {5, "Semi-manual"}, {6, "DMF"},
};
constexpr ValueText kDro2Texts[] = {{0, "Off"}, {1, "Standard"}, {2, "Plus"}};
constexpr ValueText kHighIsoNr2Texts[] = {{0, "Normal"}, {1, "High"}, {2, "Low"}, {3, "Off"}};
constexpr ValueText kIntelligentAutoTexts[] = {{0, "Off"}, {1, "On"}, {2, "Advanced"}};
constexpr ValueText kWhiteBalance2Texts[] = {
    {0, "Auto"},  {4, "Custom"}, {5, "Daylight"}, {6, "Cloudy"}, {7, "Cool White Fluorescent"},
    {8, "Day White Fluorescent"}, {9, "Daylight Fluorescent"}, {10, "Incandescent2"},
    {11, "Warm White Fluorescent"}, {14, "Incandescent"}, {15, "Flash"}, {17, "Underwater 1 (Blue Water)"},
    {18, "Underwater 2 (Green Water)"}, {19, "Underwater Auto"},
};
constexpr Enumeration kMacro = Enum(kMacroTexts, Sign::kUnsigned, "");
constexpr Enumeration kExposureMode = Enum(kExposureModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kEarlyFocusMode = Enum(kEarlyFocusModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kAfIlluminator = Enum(kAfIlluminatorTexts, Sign::kUnsigned, "");
constexpr Enumeration kJpegQuality = Enum(kJpegQualityTexts, Sign::kUnsigned, "");
constexpr Enumeration kFlashLevel = Enum(kFlashLevelTexts, Sign::kSigned, "");
constexpr Enumeration kReleaseMode = Enum(kReleaseModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kSequenceNumber = Enum(kSequenceNumberTexts, Sign::kUnsigned, "");
constexpr Enumeration kAntiBlur = Enum(kAntiBlurTexts, Sign::kUnsigned, "");
constexpr Enumeration kLaterFocusMode = Enum(kLaterFocusModeTexts, Sign::kUnsigned, "");
constexpr Enumeration kDro2 = Enum(kDro2Texts, Sign::kUnsigned, "");
constexpr Enumeration kHighIsoNr2 = Enum(kHighIsoNr2Texts, Sign::kUnsigned, "");
constexpr Enumeration kIntelligentAuto = Enum(kIntelligentAutoTexts, Sign::kUnsigned, "");
constexpr Enumeration kWhiteBalance2 = Enum(kWhiteBalance2Texts, Sign::kUnsigned, "");

// The DSLR-A100 fills the flash level with 0xFFFF (unrecorded) like the
// rest of these; on other bodies that is -1/3.
void FlashLevel(const MakerEntry& e) {
    if (BodyOf(e) == SonyBody::kDslr) return e.Omit();
    SetEnumerated(e, kFlashLevel, static_cast<uint32_t>(static_cast<int16_t>(StoredValue(e))));
}

// ------------------------------------------------------------ the directory

constexpr MakerTag kSonyTags[] = {
    {0x0102, "Quality", kQuality},
    {0x0104, "Flash Exposure Compensation", RationalNumber},
    {0x0105, "Teleconverter", Enumerated<kTeleconverter>},
    {0x0112, "White Balance Fine Tune", SignedNumber},
    {0x0115, "White Balance", Enumerated<kWhiteBalance>},
    {0x0201, "More infos", kMoreInfos},
    {0x2002, "Rating", UnsignedNumber},
    {0x2004, "Contrast", Setting},
    {0x2005, "Saturation", Setting},
    {0x2006, "Sharpness", Setting},
    {0x2007, "Brightness", Setting},
    {0x2008, "Long Exposure Noise Reduction", Enumerated<kLongExposureNoiseReduction>},
    {0x2009, "High ISO NoiseReduction", kHighIsoNoiseReduction},
    {0x200A, "HDR", Hdr},
    {0x200B, "Multi Frame Noise Reduction", Enumerated<kMultiFrameNoiseReduction>},
    {0x200E, "Picture Effect", Enumerated<kPictureEffect>},
    {0x200F, "Soft Skin Effect", Enumerated<kSoftSkin>},
    {0x2011, "Vignetting Correction", Enumerated<kCorrection>},
    {0x2012, "Lateral Chromatic Aberration", Enumerated<kCorrection>},
    {0x2013, "Distortion Correction", Enumerated<kCorrection>},
    {0x2014, "WB Shift AB/GM", FormatGenericValue},
    {0x2016, "Auto Portrait Framed", Enumerated<kNoYes>},
    {0x2017, "Flash Action", Enumerated<kFlashAction>},
    {0x201A, "Electronic Front Curtain Shutter", Enumerated<kOffOn>},
    {0x201B, "Focus Mode", Enumerated<kFocusMode>},
    {0x201C, "AF Area Mode", AfAreaSetting},
    {0x201D, "Flexible Spot Position", FlexibleSpotPosition},
    {0x201E, "AF Point Selected", AfPointSelected},
    {0x2020, "AF Points Used", AfPointsUsed},
    {0x2021, "AF Tracking", Enumerated<kAfTracking>},
    {0x2023, "Multi Frame NR Effect", Enumerated<kNrEffect>},
    {0x2026, "WB Shift AB/GM Precise", PreciseShift},
    {0x2027, "Focus Location", FormatGenericValue},
    {0x2028, "Variable Low Pass Filter", LowPassFilter},
    {0x2029, "RAW File Type", Enumerated<kRawFileType>},
    {0x202B, "Priority Set in AWB", Enumerated<kAwbPriority>},
    {0x202C, "Metering Mode", Enumerated<kMeteringMode>},
    {0x202D, "Exposure Standard Adjustment", RationalStops},
    {0x202E, "Quality 2", Quality2},
    {0x202F, "Pixel Shift Info", PixelShiftInfo},
    {0x2031, "Serial Number", FormatGenericValue},
    {0x2032, "Shadows", Setting},
    {0x2033, "Highlights", Setting},
    {0x2034, "Fade", Setting},
    {0x2035, "Sharpness Range", Setting},
    {0x2036, "Clarity", Setting},
    {0x2037, "Focus Frame Size", FocusFrameSize},
    {0x2039, "JPEG/HEIF Switch", Enumerated<kJpegHeif>},
    {0xB000, "File Format", FileFormat},
    {0xB001, "Sony Model ID", kModelId, {"Sony Model", ModelName}},
    {0xB020, "Creative Style", FormatGenericValue},  // stored as text
    {0xB021, "Color Temperature", ColorTemperature},
    {0xB022, "Color Compensation Filter", SignedNumber},
    {0xB023, "Scene Mode", Enumerated<kSceneMode>},
    {0xB024, "Zone Matching", Enumerated<kZoneMatching>},
    {0xB025, "Dynamic Range Optimizer", kDynamicRangeOptimizer},
    {0xB026, "Image Stabilization", kImageStabilization},
    {0xB027, "Lens Type", kLensType, {"Lens Name", LensName}},
    {0xB029, "Color Mode", kColorMode},
    {0xB02A, "Lens Spec", LensSpec},
    {0xB02B, "Full Image Size", ImageSize},
    {0xB02C, "Preview Image Size", ImageSize},
    {0xB040, "Macro", Recorded<kMacro>},
    {0xB041, "Exposure Mode", Recorded<kExposureMode>},
    {0xB042, "Focus Mode", Recorded<kEarlyFocusMode>},
    {0xB044, "AF Illuminator", Recorded<kAfIlluminator>},
    {0xB047, "JPEG Quality", Recorded<kJpegQuality>},
    {0xB048, "Flash Level", FlashLevel},
    {0xB049, "Release Mode", Recorded<kReleaseMode>},
    {0xB04A, "Sequence Number", Recorded<kSequenceNumber>},
    {0xB04B, "Anti-Blur", Recorded<kAntiBlur>},
    {0xB04E, "Focus Mode", Recorded<kLaterFocusMode>},
    {0xB04F, "Dynamic Range Optimizer 2", Recorded<kDro2>},
    {0xB050, "High ISO Noise Reduction 2", Recorded<kHighIsoNr2>},
    {0xB052, "Intelligent Auto", Recorded<kIntelligentAuto>},
    {0xB054, "White Balance 2", Recorded<kWhiteBalance2>},
};
// B028 (the DSLR-A100's Minolta-form directory) gives no row of its own.
static_assert(TagsAscend(kSonyTags) && TagsNamed(kSonyTags), "tags ascend, each named");
// Sony reads each value where a SHORT is stored: the field's first two bytes.
constexpr MakerTable kSony = Table(kSonyTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// The model, the lens type and the lens spec, from the directory (at its
// count), and the E-mount lens type from the lens records.
SonyFacts FindFacts(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                    uint32_t rowCount) {
    SonyFacts facts;
    if (rowCount >= kMakerNoteRowLimit) return facts;
    tiff::Entry entry;
    const int order = directory.bigEndian();
    if (FindDirectoryEntry(directory, 0xB001, entry)) {
        facts.haveModel = true;
        facts.modelId = static_cast<uint16_t>(platform::GetU16(entry.fieldBytes, order));
        facts.body = SonyBodyOf(facts.modelId);
    }
    if (FindDirectoryEntry(directory, 0xB027, entry)) {
        facts.haveLensType = true;
        facts.lensType = entry.type == kShort ? platform::GetU16(entry.fieldBytes, order) : entry.valueField;
    }
    if (FindDirectoryEntry(directory, 0xB02A, entry) && entry.count == 8) {
        // The reader wants a row for its context; it writes none.
        const exif::EntryContext context{directory.Whole(), offsetBase, entry, exif::TakeRow(table, rowCount)};
        facts.haveLensSpec = exif::ReadRawBlock(context, facts.lensSpec, sizeof facts.lensSpec) == 8;
    }
    sony::FindEmountLensType(directory, offsetBase, table, rowCount, facts);
    facts.lensName = sony::ComposeLensName(facts);
    return facts;
}

}  // namespace

void DecodeSonyMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                         uint32_t* rowCount) {
    const uint32_t rowsBefore = *rowCount;
    const SonyFacts facts = FindFacts(directory, offsetBase, table, *rowCount);
    NoteContext note;
    note.sony = &facts;
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kSony, note);
    sony::DecodeSonyBlocks(directory, offsetBase, table, rowsBefore, rowCount, facts);
}

}  // namespace makernotes
