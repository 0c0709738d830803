// The enciphered blocks of Sony's later bodies: tags 2010, 9050 and the 94xx
// tags. Each byte b below 249 is stored as b^3 mod 249 (the bytes from 249
// on stand for themselves); deciphering is a lookup in the inverse table,
// and every field is then read from the deciphered copy like any block.
//
// Where the fields lie changes from body to body. A block is decoded only
// for the bodies whose layout is known: each layout names its bodies by
// model ID or by kind, or (where the bodies are not listed) by the first
// bytes of the deciphered block, and a body not among them gets no rows
// from the block.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "makernote_texts.h"
#include "sony_makernote.h"

namespace makernotes {
namespace sony {
namespace {

// ------------------------------------------------------------ the cipher

struct Decipher {
    uint8_t plain[256];
    constexpr Decipher() : plain() {
        for (unsigned b = 0; b < 256; ++b) plain[b] = static_cast<uint8_t>(b);
        for (unsigned b = 0; b < 249; ++b) plain[b * b % 249 * b % 249] = static_cast<uint8_t>(b);
    }
};
constexpr Decipher kDecipher;
static_assert(kDecipher.plain[8] == 2 && kDecipher.plain[27] == 3 && kDecipher.plain[250] == 250,
              "the inverse of cubing mod 249");

// ------------------------------------------------------------ bodies

// Model IDs (tag B001) of the bodies a layout is for, ascending.
using Models = List<uint16_t>;
bool Among(const Models& models, const SonyFacts& f) {
    return f.haveModel && std::binary_search(models.items, models.items + models.size, f.modelId);
}
template <size_t N>
constexpr bool Ascending(const uint16_t (&ids)[N]) {
    for (size_t i = 1; i < N; ++i)
        if (ids[i - 1] >= ids[i]) return false;
    return true;
}

// ILCE-6100/6300/6400/6500/6600/7C/7M3/7RM2/7RM3/7RM4/7SM2/9/9M2, ILCA-99M2.
constexpr uint16_t k9050bModels[] = {347, 350, 354, 357, 358, 360, 362, 363, 371, 375, 376, 378, 379, 381};
// ILCE-1/7SM3, ILME-FX3.
constexpr uint16_t k9050cModels[] = {383, 384, 385};
// NEX-3N, ILCE-3000/3500, SLT-A58, DSC-RX100M2.
constexpr uint16_t k9400bModels[] = {302, 303, 305, 308};
// The compacts from the RX100M3 and RX10 on, the ILCE bodies from the ILCE-7
// and the ILCA bodies.
constexpr uint16_t k9400cModels[] = {306, 309, 311, 312, 313, 317, 318, 319, 339, 340, 341, 342, 344, 346, 347,
                                     350, 353, 354, 355, 356, 357, 358, 360, 362, 363, 364, 365, 366, 367, 369,
                                     371, 374, 375, 376, 378, 379, 381, 383, 384};
// The same without the ILCE-1/7C/7SM3, ILCE-6100/6400/6600, ILCE-9M2,
// ILCE-7RM4, DSC-RX100M6/M7 and RX0 II...: the bodies of the older layout.
constexpr uint16_t k9405bModels[] = {306, 309, 311, 312, 313, 317, 318, 319, 339, 340, 341, 342, 346, 347, 350,
                                     353, 354, 355, 356, 357, 358, 360, 362, 363, 364, 365, 366, 367, 369, 371,
                                     374, 375, 376, 378, 379};
// ILCE-1/7M4/7RM5/7SM3, ILME-FX3.
constexpr uint16_t k9416Models[] = {383, 384, 385, 388, 390};
// SLT-A58/A99, ILCE-3000/3500, NEX-3N/5R/5T/6/VG30E/VG900, DSC-RX100, RX1, RX1R.
constexpr uint16_t k2010eModels[] = {294, 295, 296, 297, 298, 299, 300, 302, 303, 305, 307, 310};
// ILCE-6100/6400/6600/7C/7M3/7RM3/7RM4/9/9M2, DSC-RX0M2/RX10M4/RX100M6/RX100M5A/RX100M7/HX99.
constexpr uint16_t k2010iModels[] = {358, 362, 363, 365, 366, 367, 369, 371, 372, 374, 375, 376, 378, 379, 381};
static_assert(Ascending(k9050bModels) && Ascending(k9050cModels) && Ascending(k9400bModels) &&
                  Ascending(k9400cModels) && Ascending(k9405bModels) && Ascending(k9416Models) &&
                  Ascending(k2010eModels) && Ascending(k2010iModels),
              "model lists ascend");

// The layout of tag 9050 that the bodies not listed for the later two use:
// the SLT bodies and the interchangeable-lens bodies before them.
bool Is9050a(const SonyFacts& f) {
    if (Among(ListOf(k9050bModels), f) || Among(ListOf(k9050cModels), f)) return false;
    return f.body == SonyBody::kSlt || f.body == SonyBody::kIlca || f.body == SonyBody::kEmount;
}

// ------------------------------------------------------------ texts

constexpr ValueText kReleaseMode2Texts[] = {
    {0, "Normal"},
    {1, "Continuous"},
    {2, "Continuous - Exposure Bracketing"},
    {3, "DRO or White Balance Bracketing"},
    {5, "Continuous - Burst"},
    {6, "Single Frame - Capture During Movie"},
    {7, "Continuous - Sweep Panorama"},
    {8, "Continuous - Anti-Motion Blur, Hand-held Twilight"},
    {9, "Continuous - HDR"},
    {10, "Continuous - Background defocus"},
    {13, "Continuous - 3D Sweep Panorama"},
    {15, "Continuous - High Resolution Sweep Panorama"},
    {16, "Continuous - 3D Image"},
    {17, "Continuous - Burst 2"},
    {18, "Normal - iAuto+"},
    {19, "Continuous - Speed/Advance Priority"},
    {20, "Continuous - Multi Frame NR"},
    {23, "Single-frame - Exposure Bracketing"},
    {26, "Continuous Low"},
    {27, "Continuous - High Sensitivity"},
    {28, "Smile Shutter"},
    {29, "Continuous - Tele-zoom Advance Priority"},
    {146, "Single Frame - Movie Capture"},
};
constexpr Enumeration kReleaseMode2 = Enum(kReleaseMode2Texts, Sign::kUnsigned, "");

constexpr ValueText kReleaseMode3Texts[] = {
    {0, "Normal"}, {1, "Continuous"}, {2, "Bracketing"}, {4, "Continuous - Burst"},
    {5, "Continuous - Speed/Advance Priority"}, {6, "Normal - Self-timer"}, {9, "Single Burst Shooting"},
};
constexpr Enumeration kReleaseMode3 = Enum(kReleaseMode3Texts, Sign::kUnsigned, "");

constexpr ValueText kExposureProgramTexts[] = {
    {0, "Program AE"},    {1, "Aperture-priority AE"}, {2, "Shutter speed priority AE"}, {3, "Manual"},
    {4, "Auto"},          {5, "iAuto"},             {6, "Superior Auto"},      {7, "iAuto+"},
    {8, "Portrait"},      {9, "Landscape"},         {10, "Twilight"},          {11, "Twilight Portrait"},
    {12, "Sunset"},       {14, "Action (High speed)"}, {16, "Sports"},         {17, "Handheld Night Shot"},
    {18, "Anti Motion Blur"}, {19, "High Sensitivity"}, {21, "Beach"},         {22, "Snow"},
    {23, "Fireworks"},    {26, "Underwater"},       {27, "Gourmet"},           {28, "Pet"},
    {29, "Macro"},        {30, "Backlight Correction HDR"}, {33, "Sweep Panorama"}, {36, "Background Defocus"},
    {37, "Soft Skin"},    {42, "3D Image"},         {43, "Cont. Priority AE"}, {45, "Document"},
    {46, "Party"},
};
constexpr Enumeration kExposureProgram = Enum(kExposureProgramTexts, Sign::kUnsigned, "");

constexpr ValueText kPictureProfileTexts[] = {
    {0, "Gamma Still - Standard/Neutral (PP2)"}, {1, "Gamma Still - Portrait"},
    {3, "Gamma Still - Night View/Portrait"},    {4, "Gamma Still - B&W/Sepia"},
    {5, "Gamma Still - Clear"},                  {6, "Gamma Still - Deep"},
    {7, "Gamma Still - Light"},                  {8, "Gamma Still - Vivid"},
    {9, "Gamma Still - Real"},                   {10, "Gamma Movie (PP1)"},
    {22, "Gamma ITU709 (PP3 or PP4)"},           {24, "Gamma Cine1 (PP5)"},
    {25, "Gamma Cine2 (PP6)"},                   {26, "Gamma Cine3"},
    {27, "Gamma Cine4"},                         {28, "Gamma S-Log2 (PP7)"},
    {29, "Gamma ITU709 (800%)"},                 {31, "Gamma S-Log3 (PP8 or PP9)"},
    {33, "Gamma HLG2 (PP10)"},                   {34, "Gamma HLG3"},
    {37, "FL"}, {38, "VV2"}, {39, "IN"}, {40, "SH"},
};
constexpr Enumeration kPictureProfile = Enum(kPictureProfileTexts, Sign::kUnsigned, "");

constexpr ValueText kPictureEffect2Texts[] = {
    {0, "Off"},  {1, "Toy Camera"},  {2, "Pop Color"},  {3, "Posterization"}, {4, "Retro Photo"},
    {5, "Soft High Key"}, {6, "Partial Color"}, {7, "High Contrast Monochrome"}, {8, "Soft Focus"},
    {9, "HDR Painting"}, {10, "Rich-tone Monochrome"}, {11, "Miniature"}, {12, "Water Color"},
    {13, "Illustration"},
};
constexpr Enumeration kPictureEffect2 = Enum(kPictureEffect2Texts, Sign::kUnsigned, "");

constexpr ValueText kDroTexts[] = {
    {0, "Off"}, {1, "Auto"}, {3, "Lv1"}, {4, "Lv2"}, {5, "Lv3"}, {6, "Lv4"}, {7, "Lv5"}, {8, "n/a"},
};
constexpr Enumeration kDro = Enum(kDroTexts, Sign::kUnsigned, "");
constexpr ValueText kHdrSettingTexts[] = {
    {0, "Off"}, {1, "HDR Auto"}, {3, "HDR 1 EV"}, {5, "HDR 2 EV"}, {7, "HDR 3 EV"},
    {9, "HDR 4 EV"}, {11, "HDR 5 EV"}, {13, "HDR 6 EV"},
};
constexpr Enumeration kHdrSetting = Enum(kHdrSettingTexts, Sign::kUnsigned, "");
constexpr ValueText kSelfTimerTexts[] = {{0, "Off"}, {1, "Self-timer 10 s"}, {2, "Self-timer 2 s"}};
constexpr Enumeration kSelfTimer = Enum(kSelfTimerTexts, Sign::kUnsigned, "");
// The later bodies' 10-second timer is a 5- or 10-second one.
constexpr ValueText kLaterSelfTimerTexts[] = {{0, "Off"}, {1, "Self-timer 5 or 10 s"}, {2, "Self-timer 2 s"}};
constexpr Enumeration kLaterSelfTimer = Enum(kLaterSelfTimerTexts, Sign::kUnsigned, "");
constexpr ValueText kFlashModeTexts[] = {
    {0, "Autoflash"}, {1, "Fill-flash"}, {2, "Flash Off"}, {3, "Slow Sync"}, {4, "Rear Sync"}, {6, "Wireless"},
};
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kUnsigned, "");
constexpr ValueText kQuality2Texts[] = {{0, "JPEG"}, {1, "RAW"}, {2, "RAW + JPEG"}, {3, "JPEG + MPO"}};
constexpr Enumeration kQuality2 = Enum(kQuality2Texts, Sign::kUnsigned, "");
// The bodies that write HEIF count from 1.
constexpr ValueText kHeifQuality2Texts[] = {{1, "JPEG"}, {2, "RAW"}, {3, "RAW + JPEG"}, {4, "HEIF"}, {6, "RAW + HEIF"}};
constexpr Enumeration kHeifQuality2 = Enum(kHeifQuality2Texts, Sign::kUnsigned, "");
constexpr ValueText kMeteringModeTexts[] = {
    {0, "Multi-segment"}, {2, "Center-weighted average"}, {3, "Spot"}, {4, "Average"}, {5, "Highlight"},
};
constexpr Enumeration kMeteringMode = Enum(kMeteringModeTexts, Sign::kUnsigned, "");
constexpr ValueText kOrientationTexts[] = {
    {1, "Horizontal (normal)"}, {3, "Rotate 180"}, {6, "Rotate 90 CW"}, {8, "Rotate 270 CW"},
};
constexpr Enumeration kOrientation = Enum(kOrientationTexts, Sign::kUnsigned, "");
constexpr ValueText kShotsTexts[] = {
    {0, "Continuous"}, {1, "1 shot"}, {2, "2 shots"}, {3, "3 shots"}, {4, "4 shots"}, {5, "5 shots"},
    {6, "6 shots"},    {7, "7 shots"}, {9, "9 shots"}, {10, "10 shots"}, {12, "12 shots"}, {16, "16 shots"},
    {100, "Continuous - iSweep Panorama"}, {200, "Continuous - Sweep Panorama"},
};
constexpr Enumeration kShots = Enum(kShotsTexts, Sign::kUnsigned, "");
constexpr ValueText kFilesTexts[] = {
    {0, "Continuous"}, {1, "1 file"}, {2, "2 files"}, {3, "3 files"}, {5, "5 files"}, {7, "7 files"},
    {9, "9 files"},    {10, "10 files"},
};
constexpr Enumeration kFiles = Enum(kFilesTexts, Sign::kUnsigned, "");
constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kUnsigned, "");
constexpr ValueText kFlashStatusTexts[] = {
    {0, "No Flash present"}, {2, "Flash Inhibited"}, {64, "Built-in Flash present"}, {65, "Built-in Flash Fired"},
    {66, "Built-in Flash Inhibited"}, {128, "External Flash present"}, {129, "External Flash Fired"},
};
constexpr Enumeration kFlashStatus = Enum(kFlashStatusTexts, Sign::kUnsigned, "");
constexpr ValueText kLensMountTexts[] = {{0, "Unknown"}, {1, "A-mount"}, {2, "E-mount"}};
constexpr Enumeration kLensMount = Enum(kLensMountTexts, Sign::kUnsigned, "");
constexpr ValueText kLensMount2Texts[] = {{0, "Unknown"}, {1, "A-mount (1)"}, {4, "E-mount"}, {5, "A-mount (5)"}};
constexpr Enumeration kLensMount2 = Enum(kLensMount2Texts, Sign::kUnsigned, "");
constexpr ValueText kLensFormatTexts[] = {{0, "Unknown"}, {1, "APS-C"}, {2, "Full-frame"}};
constexpr Enumeration kLensFormat = Enum(kLensFormatTexts, Sign::kUnsigned, "");
constexpr ValueText kFocusModeTexts[] = {{0, "Manual"}, {2, "AF-S"}, {3, "AF-C"}, {4, "AF-A"}, {6, "DMF"}};
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kUnsigned, "");
constexpr ValueText kAfAreaModeTexts[] = {
    {0, "Multi"}, {1, "Center"}, {2, "Spot"}, {3, "Flexible Spot"}, {10, "Selective (for Miniature effect)"},
    {11, "Zone"}, {12, "Expanded Flexible Spot"}, {14, "Tracking"}, {15, "Face Tracking"},
    {20, "Animal Eye Tracking"}, {255, "Manual"},
};
constexpr Enumeration kAfAreaMode = Enum(kAfAreaModeTexts, Sign::kUnsigned, "");

// ------------------------------------------------------------ field formats

bool Plus1(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 4)) return false;
    out = Printf("%llu", static_cast<unsigned long long>(b.U32(f.at)) + 1);
    return true;
}
bool Count32(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 4)) return false;
    out = Printf("%u", b.U32(f.at));
    return true;
}
bool ExposureCode(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    out = ExposureTimeText(b.U16(f.at));
    return true;
}
bool ApertureCode(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    out = FNumberText(b.U16(f.at));
    return true;
}
bool IsoCode(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    out = IsoText(b.U16(f.at));
    return true;
}
// Stops above the sensor's base sensitivity: 16 - code/256.
bool StopsCode(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    const double stops = 16.0 - b.U16(f.at) / 256.0;
    out = stops == 0 ? "0" : Printf("%.1f", stops);
    return true;
}
bool BrightnessCode(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    out = Number(b.U16(f.at) / 256.0 - 56.6);
    return true;
}
// Compensation in 256ths of a stop, stored with the sign turned.
bool CompensationCode(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    const double ev = -static_cast<int16_t>(b.U16(f.at)) / 256.0;
    out = ev == 0 ? "0" : Printf("%+.1f", ev);
    return true;
}
bool ZoomRatio(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 1)) return false;
    out = Number(b.U8(f.at) / 16.0);
    return true;
}
// Year (16 bits), month, day, hour, minute, second.
bool DateTime(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 7)) return false;
    out = Printf("%04u:%02u:%02u %02u:%02u:%02u", b.U16(f.at), b.U8(f.at + 2), b.U8(f.at + 3), b.U8(f.at + 4),
                 b.U8(f.at + 5), b.U8(f.at + 6));
    return true;
}
// Tenths of a millimetre; none where the lens gives no second focal length.
bool FocalLength(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2) || b.U16(f.at) == 0) return false;
    out = Printf("%.1f mm", b.U16(f.at) / 10.0);
    return true;
}
bool WbLevels(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 6)) return false;
    out = Printf("%u %u %u", b.U16(f.at), b.U16(f.at + 2), b.U16(f.at + 4));
    return true;
}
// Three SHORTs that time the shutter; all zero for the electronic shutter.
bool Shutter(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 6)) return false;
    const uint32_t t[3] = {b.U16(f.at), b.U16(f.at + 2), b.U16(f.at + 4)};
    const bool silent = t[0] == 0 && t[1] == 0 && t[2] == 0;
    out = Printf("%s (%u %u %u)", silent ? "Silent / Electronic" : "Mechanical", t[0], t[1], t[2]);
    return true;
}
// Fahrenheit in the battery's block, shown in Celsius.
bool BatteryTemperature(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 1)) return false;
    out = Printf("%.1f C", (b.U8(f.at) - 32.0) / 1.8);
    return true;
}
bool Percent(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 1)) return false;
    out = Printf("%u%%", b.U8(f.at));
    return true;
}
// A grip's battery: none without the grip (0, or 255 on some bodies).
bool GripPercent(const Block& b, const Field& f, std::string& out) {
    return b.Has(f.at, 1) && b.U8(f.at) != 0 && b.U8(f.at) != 255 && Percent(b, f, out);
}
// The air around the camera, valid where the block marks it so.
bool AmbientTemperature(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(2, 1) || b.U8(2) != 0xFF || !b.Has(f.at, 1)) return false;
    out = Printf("%d C", static_cast<int8_t>(b.U8(f.at)));
    return true;
}
bool MaskedFocusMode(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 1)) return false;
    const char* text = EnumerationText(kFocusMode, b.U8(f.at) & 0x7F);
    out = text ? text : Printf("%u", b.U8(f.at) & 0x7F);
    return true;
}
// The focus position, only where the lens is interchangeable.
bool LensFocusPosition(const Block& b, const Field& f, std::string& out) {
    if (b.facts.body == SonyBody::kCompact || b.facts.body == SonyBody::kUnknown) return false;
    return ByteField(b, f, out);
}
// Versions as major.minor, the minor in two hex digits ("1.80").
bool Version(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    out = Printf("%x.%02x", b.U16(f.at) >> 8, b.U16(f.at) & 0xFF);
    return true;
}
bool LensFirmware(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    out = Printf("Ver.%02x.%03u", b.U16(f.at) >> 8, b.U16(f.at) & 0xFF);
    return true;
}
std::string LensText(const SonyLens* lens, uint32_t type, const SonyFacts& facts) {
    return lens ? NamedLensText(*lens, facts) : Printf("%u", type);
}
bool EmountLens(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    out = LensText(FindEmountLens(b.U16(f.at)), b.U16(f.at), b.facts);
    return true;
}
// The A-mount lens, where the mount byte (at `at` - 4 in every layout that
// has one) says an A-mount lens is on.
bool AmountLens(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2) || f.at < 4 || b.U8(f.at - 4) != 1) return false;
    out = LensText(FindAmountLens(b.U16(f.at)), b.U16(f.at), b.facts);
    return true;
}
// The E-mount lens, where the mount byte before it (`Gap` bytes before)
// says one is on.
template <uint16_t Gap>
bool MountedEmountLens(const Block& b, const Field& f, std::string& out) {
    if (f.at < Gap || !b.Has(f.at - Gap, 1) || b.U8(f.at - Gap) != 2) return false;
    return EmountLens(b, f, out);
}
// The lens's mount and format, where the lens is interchangeable.
bool LensByte(const Block& b, const Field& f, std::string& out) {
    if (b.facts.body == SonyBody::kCompact || b.facts.body == SonyBody::kUnknown) return false;
    return ByteField(b, f, out);
}
bool Height8(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 2)) return false;
    out = Printf("%u", b.U16(f.at) * 8);
    return true;
}
bool ReleaseYear(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 1)) return false;
    out = Printf("%u", 2000 + b.U8(f.at));
    return true;
}
// The quality as the bodies that write HEIF number it, or as the others do.
bool Quality2(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 1)) return false;
    const Enumeration& e = Among(ListOf(k9050cModels), b.facts) ? kHeifQuality2 : kQuality2;
    const char* text = EnumerationText(e, b.U8(f.at));
    out = text ? text : Printf("%u", b.U8(f.at));
    return true;
}
// One of the exposure's rationals: two SHORTs.
bool ShortRational(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 4) || b.U16(f.at + 2) == 0) return false;
    out = SecondsText(static_cast<double>(b.U16(f.at)) / b.U16(f.at + 2));
    return true;
}

// ------------------------------------------------------------ the layouts

constexpr Field k9050aFields[] = {
    {32, "Shutter", Shutter},
    {49, "Flash Status", ByteField, &kFlashStatus},
    {50, "Shutter Count", Count32},
    {58, "Exposure Time", ExposureCode},
    {60, "F Number", ApertureCode},
    {63, "Release Mode 2", ByteField, &kReleaseMode2},
    {261, "Lens Mount", ByteField, &kLensMount},
    {262, "Lens Format", ByteField, &kLensFormat},
    {263, "Lens Type 2", MountedEmountLens<2>},
    {265, "Lens Type", AmountLens},
};
// The ILCE-7M3 generation and the ILCE-1 generation keep the counters at the
// same place.
constexpr Field k9050bcFields[] = {
    {38, "Shutter", Shutter},
    {57, "Flash Status", ByteField, &kFlashStatus},
    {58, "Shutter Count", Count32},
    {70, "Exposure Time", ExposureCode},
    {72, "F Number", ApertureCode},
    {75, "Release Mode 2", ByteField, &kReleaseMode2},
};

constexpr Field k9400bFields[] = {
    {8, "Sequence Image Number", Plus1},
    {12, "Sequence File Number", Plus1},
    {16, "Release Mode 2", ByteField, &kReleaseMode2},
    {18, "Digital Zoom", ByteField, &kNoYes},
    {22, "Shot Number Since Power Up", Count32},
    {30, "Sequence Length", ByteField, &kShots},
    {36, "Camera Orientation", ByteField, &kOrientation},
    {37, "Quality 2", Quality2},
    {63, "Image Height", Height8},
    {70, "Model Release Year", ReleaseYear},
};
constexpr Field k9400cFields[] = {
    {9, "Release Mode 2", ByteField, &kReleaseMode2},
    {18, "Sequence Image Number", Plus1},
    {22, "Sequence Length", ByteField, &kShots},
    {26, "Sequence File Number", Plus1},
    {30, "Sequence Length", ByteField, &kFiles},
    {41, "Camera Orientation", ByteField, &kOrientation},
    {42, "Quality 2", Quality2},
};

constexpr Field k9402Fields[] = {
    {4, "Ambient Temperature", AmbientTemperature},
    {22, "Focus Mode", MaskedFocusMode},
    {23, "AF Area Mode", ByteField, &kAfAreaMode},
    {45, "Focus Position", LensFocusPosition},
};

constexpr Field k9405bFields[] = {
    {4, "ISO", IsoCode},
    {10, "Stops Above Base ISO", StopsCode},
    {14, "Exposure Time", ExposureCode},
    {22, "Max Aperture Value", ApertureCode},
    {52, "Release Mode 2", ByteField, &kReleaseMode2},
    {72, "Exposure Program", ByteField, &kExposureProgram},
    {93, "Lens Format", LensByte, &kLensFormat},
    {94, "Lens Mount", LensByte, &kLensMount},
    {96, "Lens Type 2", MountedEmountLens<2>},
};
constexpr Field k9405aFields[] = {
    {1539, "Lens Format", ByteField, &kLensFormat},
    {1540, "Lens Mount", ByteField, &kLensMount},
    {1541, "Lens Type 2", MountedEmountLens<1>},
    {1544, "Lens Type", AmountLens},
};

constexpr Field k9406Fields[] = {
    {5, "Battery Temperature", BatteryTemperature},
    {6, "Battery Level Grip 1", GripPercent},
    {7, "Battery Level", Percent},
    {8, "Battery Level Grip 2", GripPercent},
};

constexpr Field k940cFields[] = {
    {8, "Lens Mount 2", ByteField, &kLensMount2},
    {9, "Lens Type 3", EmountLens},
    {11, "Camera E-mount Version", Version},
    {13, "Lens E-mount Version", Version},
    {20, "Lens Firmware Version", LensFirmware},
};

constexpr Field k9416Fields[] = {
    {4, "ISO", IsoCode},
    {6, "Stops Above Base ISO", StopsCode},
    {10, "Exposure Time", ExposureCode},
    {12, "Exposure Time 2", ShortRational},
    {16, "F Number", ApertureCode},
    {18, "Max Aperture Value", ApertureCode},
    {29, "Sequence Image Number", Plus1},
    {53, "Exposure Program", ByteField, &kExposureProgram},
    {72, "Lens Mount", ByteField, &kLensMount},
    {73, "Lens Format", ByteField, &kLensFormat},
    {75, "Lens Type 2", MountedEmountLens<1>},
    {112, "Picture Profile", ByteField, &kPictureProfile},
    {113, "Focal Length", FocalLength},
    {115, "Min Focal Length", FocalLength},
    {117, "Max Focal Length", FocalLength},
};

constexpr Field k2010eFields[] = {
    {0, "Sequence Image Number", Plus1},
    {4, "Sequence File Number", Plus1},
    {8, "Release Mode 2", ByteField, &kReleaseMode2},
    {540, "Digital Zoom Ratio", ZoomRatio},
    {556, "Sony Date Time", DateTime},
    {808, "Dynamic Range Optimizer 3", ByteField, &kDro},
    {4444, "Release Mode 3", ByteField, &kReleaseMode3},
    {4456, "Self Timer", ByteField, &kSelfTimer},
    {4460, "Flash Mode", ByteField, &kFlashMode},
    {4466, "Stops Above Base ISO", StopsCode},
    {4468, "Brightness Value", BrightnessCode},
    {4476, "HDR Setting", ByteField, &kHdrSetting},
    {4480, "Exposure Compensation", CompensationCode},
    {4502, "Picture Profile", ByteField, &kPictureProfile},
    {4507, "Picture Effect 2", ByteField, &kPictureEffect2},
    {4520, "Quality 2", ByteField, &kQuality2},
    {4524, "Metering Mode 2", ByteField, &kMeteringMode},
    {4525, "Exposure Program", ByteField, &kExposureProgram},
    {4532, "WB RGB Levels", WbLevels},
    {4728, "Focal Length", FocalLength},
    {4730, "Min Focal Length", FocalLength},
    {4732, "Max Focal Length", FocalLength},
    {4736, "ISO", IsoCode},
    {6289, "Lens Format", LensByte, &kLensFormat},
    {6290, "Lens Mount", LensByte, &kLensMount},
};
constexpr Field k2010iFields[] = {
    {4, "Release Mode 2", ByteField, &kReleaseMode2},
    {78, "Dynamic Range Optimizer 3", ByteField, &kDro},
    {516, "Release Mode 3", ByteField, &kReleaseMode3},
    {528, "Self Timer", ByteField, &kLaterSelfTimer},
    {529, "Flash Mode", ByteField, &kFlashMode},
    {535, "Stops Above Base ISO", StopsCode},
    {537, "Brightness Value", BrightnessCode},
    {543, "HDR Setting", ByteField, &kHdrSetting},
    {547, "Exposure Compensation", CompensationCode},
    {567, "Picture Profile", ByteField, &kPictureProfile},
    {572, "Picture Effect 2", ByteField, &kPictureEffect2},
    {583, "Quality 2", ByteField, &kQuality2},
    {587, "Metering Mode 2", ByteField, &kMeteringMode},
    {588, "Exposure Program", ByteField, &kExposureProgram},
    {594, "WB RGB Levels", WbLevels},
    {778, "Focal Length", FocalLength},
    {780, "Min Focal Length", FocalLength},
    {782, "Max Focal Length", FocalLength},
    {800, "ISO", IsoCode},
};

// ------------------------------------------------------------ the AF info of the SLT bodies (tag 940E)

constexpr ValueText kAfTypeTexts[] = {{1, "15-point"}, {2, "19-point"}, {3, "79-point"}};
constexpr Enumeration kAfType = Enum(kAfTypeTexts, Sign::kUnsigned, "");
constexpr ValueText k15PointTexts[] = {
    {0, "Upper-left"},  {1, "Left"},         {2, "Lower-left"},          {3, "Far Left"},
    {4, "Top (horizontal)"}, {5, "Near Right"}, {6, "Center (horizontal)"}, {7, "Near Left"},
    {8, "Bottom (horizontal)"}, {9, "Top (vertical)"}, {10, "Center (vertical)"}, {11, "Bottom (vertical)"},
    {12, "Far Right"},  {13, "Upper-right"}, {14, "Right"},              {15, "Lower-right"},
    {16, "Upper-middle"}, {17, "Lower-middle"}, {30, "(out of focus)"},   {255, "(none)"},
};
constexpr ValueText k19PointTexts[] = {
    {0, "Upper Far Left"},          {1, "Upper-left (horizontal)"},  {2, "Far Left (horizontal)"},
    {3, "Left (horizontal)"},       {4, "Lower Far Left"},           {5, "Lower-left (horizontal)"},
    {6, "Upper-left (vertical)"},   {7, "Left (vertical)"},          {8, "Lower-left (vertical)"},
    {9, "Far Left (vertical)"},     {10, "Top (horizontal)"},        {11, "Near Right"},
    {12, "Center (horizontal)"},    {13, "Near Left"},               {14, "Bottom (horizontal)"},
    {15, "Top (vertical)"},         {16, "Upper-middle"},            {17, "Center (vertical)"},
    {18, "Lower-middle"},           {19, "Bottom (vertical)"},       {20, "Upper Far Right"},
    {21, "Upper-right (horizontal)"}, {22, "Far Right (horizontal)"}, {23, "Right (horizontal)"},
    {24, "Lower Far Right"},        {25, "Lower-right (horizontal)"}, {26, "Far Right (vertical)"},
    {27, "Upper-right (vertical)"}, {28, "Right (vertical)"},        {29, "Lower-right (vertical)"},
    {30, "(out of focus)"},         {255, "(none)"},
};
constexpr Enumeration k15Point = Enum(k15PointTexts, Sign::kUnsigned, "");
constexpr Enumeration k19Point = Enum(k19PointTexts, Sign::kUnsigned, "");
constexpr ValueText kSltAfAreaTexts[] = {{0, "Wide"}, {1, "Spot"}, {2, "Local"}, {3, "Zone"}};
constexpr Enumeration kSltAfArea = Enum(kSltAfAreaTexts, Sign::kUnsigned, "");
constexpr ValueText kSltFocusModeTexts[] = {
    {0, "Manual"}, {2, "AF-S"}, {3, "AF-C"}, {4, "AF-A"}, {6, "DMF"}, {7, "AF-D"},
};
constexpr Enumeration kSltFocusMode = Enum(kSltFocusModeTexts, Sign::kUnsigned, "");

// A point by the AF type at byte 2: 15 or 19 points.
bool AfPoint(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 1)) return false;
    const Enumeration& points = b.U8(2) == 2 ? k19Point : k15Point;
    const char* text = EnumerationText(points, b.U8(f.at));
    out = text ? text : Printf("%u", b.U8(f.at));
    return true;
}

constexpr const char* kSltAfPoints[] = {
    "Center",          "Top",         "Upper-right",     "Right",          "Lower-right",
    "Bottom",          "Lower-left",  "Left",            "Upper-left",     "Far Right",
    "Far Left",        "Upper-middle", "Near Right",     "Lower-middle",   "Near Left",
    "Upper Far Right", "Lower Far Right", "Lower Far Left", "Upper Far Left",
};
bool SltAfPointsUsed(const Block& b, const Field& f, std::string& out) {
    if (!b.Has(f.at, 4)) return false;
    uint8_t bits[4];
    for (int i = 0; i < 4; ++i) bits[i] = static_cast<uint8_t>(b.U32(f.at) >> (8 * i));
    out = BitNames(bits, sizeof bits, kSltAfPoints, sizeof kSltAfPoints / sizeof *kSltAfPoints);
    return true;
}

// The status of each point of the 15-point and 19-point modules, from byte 17.
constexpr Field kAfStatus15Fields[] = {
    {17 + 0, "AF Status Upper-left", AfStatus},       {17 + 2, "AF Status Left", AfStatus},
    {17 + 4, "AF Status Lower-left", AfStatus},       {17 + 6, "AF Status Far Left", AfStatus},
    {17 + 8, "AF Status Top Horizontal", AfStatus},   {17 + 10, "AF Status Near Right", AfStatus},
    {17 + 12, "AF Status Center Horizontal", AfStatus}, {17 + 14, "AF Status Near Left", AfStatus},
    {17 + 16, "AF Status Bottom Horizontal", AfStatus}, {17 + 18, "AF Status Top Vertical", AfStatus},
    {17 + 20, "AF Status Center Vertical", AfStatus}, {17 + 22, "AF Status Bottom Vertical", AfStatus},
    {17 + 24, "AF Status Far Right", AfStatus},       {17 + 26, "AF Status Upper-right", AfStatus},
    {17 + 28, "AF Status Right", AfStatus},           {17 + 30, "AF Status Lower-right", AfStatus},
    {17 + 32, "AF Status Upper-middle", AfStatus},    {17 + 34, "AF Status Lower-middle", AfStatus},
};
constexpr Field kAfStatus19Fields[] = {
    {17 + 0, "AF Status Upper Far Left", AfStatus},
    {17 + 2, "AF Status Upper-left Horizontal", AfStatus},
    {17 + 4, "AF Status Far Left Horizontal", AfStatus},
    {17 + 6, "AF Status Left Horizontal", AfStatus},
    {17 + 8, "AF Status Lower Far Left", AfStatus},
    {17 + 10, "AF Status Lower-left Horizontal", AfStatus},
    {17 + 12, "AF Status Upper-left Vertical", AfStatus},
    {17 + 14, "AF Status Left Vertical", AfStatus},
    {17 + 16, "AF Status Lower-left Vertical", AfStatus},
    {17 + 18, "AF Status Far Left Vertical", AfStatus},
    {17 + 20, "AF Status Top Horizontal", AfStatus},
    {17 + 22, "AF Status Near Right", AfStatus},
    {17 + 24, "AF Status Center Horizontal", AfStatus},
    {17 + 26, "AF Status Near Left", AfStatus},
    {17 + 28, "AF Status Bottom Horizontal", AfStatus},
    {17 + 30, "AF Status Top Vertical", AfStatus},
    {17 + 32, "AF Status Upper-middle", AfStatus},
    {17 + 34, "AF Status Center Vertical", AfStatus},
    {17 + 36, "AF Status Lower-middle", AfStatus},
    {17 + 38, "AF Status Bottom Vertical", AfStatus},
    {17 + 40, "AF Status Upper Far Right", AfStatus},
    {17 + 42, "AF Status Upper-right Horizontal", AfStatus},
    {17 + 44, "AF Status Far Right Horizontal", AfStatus},
    {17 + 46, "AF Status Right Horizontal", AfStatus},
    {17 + 48, "AF Status Lower Far Right", AfStatus},
    {17 + 50, "AF Status Lower-right Horizontal", AfStatus},
    {17 + 52, "AF Status Far Right Vertical", AfStatus},
    {17 + 54, "AF Status Upper-right Vertical", AfStatus},
    {17 + 56, "AF Status Right Vertical", AfStatus},
    {17 + 58, "AF Status Lower-right Vertical", AfStatus},
};
constexpr Field kAfInfoFields[] = {
    {2, "AF Type", ByteField, &kAfType},
    {4, "AF Status Active Sensor", AfStatus},
    {7, "AF Point", AfPoint},
    {8, "AF Point In Focus", AfPoint},
    {9, "AF Point At Shutter Release", AfPoint},
    {10, "AF Area Mode", ByteField, &kSltAfArea},
    {11, "Focus Mode", ByteField, &kSltFocusMode},
};
constexpr Field kAfInfoEndFields[] = {
    {366, "AF Points Used", SltAfPointsUsed},
    {381, "AF Micro Adjustment", SignedByteField},
    {382, "Exposure Program", ByteField, &kExposureProgram},
};

// ------------------------------------------------------------ which layout

struct Layout {
    uint16_t tag;
    bool (*applies)(const SonyFacts&, const uint8_t* bytes, size_t size);
    Fields fields;
};

template <const uint16_t* Ids, size_t N>
bool ForModels(const SonyFacts& f, const uint8_t*, size_t) {
    return Among(Models{Ids, N}, f);
}
#define SONY_MODELS(list) ForModels<list, sizeof list / sizeof *list>

bool For9050a(const SonyFacts& f, const uint8_t*, size_t) { return Is9050a(f); }
bool For9050bc(const SonyFacts& f, const uint8_t* b, size_t s) {
    return SONY_MODELS(k9050bModels)(f, b, s) || SONY_MODELS(k9050cModels)(f, b, s);
}
bool For9405a(const SonyFacts& f, const uint8_t*, size_t) {
    return (f.body == SonyBody::kSlt || f.body == SonyBody::kEmount) && !Among(ListOf(k9405bModels), f) &&
           !Among(ListOf(k9416Models), f) && !Among(ListOf(k9050bModels), f) && !Among(ListOf(k9050cModels), f);
}
// The battery block's first byte tells its layout; 2 and 3 are known.
bool For9406(const SonyFacts&, const uint8_t* b, size_t size) { return size > 0 && (b[0] == 2 || b[0] == 3); }
bool ForEmount(const SonyFacts& f, const uint8_t*, size_t) { return f.body == SonyBody::kEmount; }

static_assert(FieldsExtent(ListOf(k2010eFields)) <= kSonyBlockReadLimit, "the read covers every field");

constexpr Layout kLayouts[] = {
    {0x2010, SONY_MODELS(k2010eModels), ListOf(k2010eFields)},
    {0x2010, SONY_MODELS(k2010iModels), ListOf(k2010iFields)},
    {0x9050, For9050a, ListOf(k9050aFields)},
    {0x9050, For9050bc, ListOf(k9050bcFields)},
    {0x9400, SONY_MODELS(k9400bModels), ListOf(k9400bFields)},
    {0x9400, SONY_MODELS(k9400cModels), ListOf(k9400cFields)},
    {0x9402, SONY_MODELS(k9400cModels), ListOf(k9402Fields)},
    {0x9405, For9405a, ListOf(k9405aFields)},
    {0x9405, SONY_MODELS(k9405bModels), ListOf(k9405bFields)},
    {0x9406, For9406, ListOf(k9406Fields)},
    {0x940C, ForEmount, ListOf(k940cFields)},
    {0x9416, SONY_MODELS(k9416Models), ListOf(k9416Fields)},
};

// Reads and deciphers up to `want` bytes of the entry's value.
size_t ReadDeciphered(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                      exif::TagRecordTable& table, uint32_t rowCount, uint8_t* out, size_t want) {
    // The reader wants a row for its context; it writes none.
    const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, rowCount)};
    const size_t got = exif::ReadRawBlock(context, out, want);
    for (size_t i = 0; i < got; ++i) out[i] = kDecipher.plain[out[i]];
    return got;
}

void DecodeAfInfo(const Block& block) {
    DecodeFields(block, ListOf(kAfInfoFields));
    if (block.Has(2, 1) && block.U8(2) == 2) DecodeFields(block, ListOf(kAfStatus19Fields));
    else if (block.Has(2, 1) && block.U8(2) == 1) DecodeFields(block, ListOf(kAfStatus15Fields));
    DecodeFields(block, ListOf(kAfInfoEndFields));
}

}  // namespace

bool DecodeEncipheredBlock(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                           exif::TagRecordTable& table, uint32_t* rowCount, const SonyFacts& facts) {
    const bool afInfo = entry.tag == 0x940E;
    // The bytes to read: as far as the furthest field of the tag's layouts.
    size_t want = afInfo ? FieldsExtent(ListOf(kAfInfoEndFields)) : 0;
    for (const Layout& l : kLayouts)
        if (l.tag == entry.tag) want = std::max(want, FieldsExtent(l.fields));
    if (want == 0) return false;
    if (entry.type != tiff::kUndefined && entry.type != tiff::kByte) return true;
    uint8_t bytes[kSonyBlockReadLimit];
    const size_t size =
        ReadDeciphered(input, offsetBase, entry, table, *rowCount, bytes, std::min(want, sizeof bytes));
    const Block block{bytes, size, input.bigEndian(), entry, table, rowCount, facts};
    if (afInfo) {
        if (facts.body == SonyBody::kSlt) DecodeAfInfo(block);
        return true;
    }
    for (const Layout& l : kLayouts) {
        if (l.tag != entry.tag || !l.applies(facts, bytes, size)) continue;
        DecodeFields(block, l.fields);
        break;
    }
    return true;
}

bool FindEmountLensType(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                        uint32_t rowCount, SonyFacts& facts) {
    tiff::Entry entry;
    if (facts.body != SonyBody::kEmount || rowCount >= kMakerNoteRowLimit ||
        !FindDirectoryEntry(directory, 0x940C, entry))
        return false;
    uint8_t bytes[16];
    const size_t size = ReadDeciphered(directory.Whole(), offsetBase, entry, table, rowCount, bytes, sizeof bytes);
    // Byte 8 names the mount of the lens on the body: 4 for an E-mount lens.
    if (size < 11 || bytes[8] != 4) return false;
    facts.haveEmountType = true;
    facts.emountType = static_cast<uint16_t>(platform::GetU16(bytes + 9, directory.bigEndian()));
    return true;
}

}  // namespace sony
}  // namespace makernotes
