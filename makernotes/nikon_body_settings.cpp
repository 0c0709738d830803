// The settings of the later Nikon bodies, one small structure each (VR,
// picture control, world time, ISO, AF info 2, file info, AF fine tune),
// read in the second pass over the main-form directory.
#include <cmath>
#include <string>

#include "makernote_texts.h"
#include "nikon_makernote.h"

namespace makernotes {
namespace nikon {

// VR info (tag 001F).
constexpr ValueText kVibrationReductionTexts[] = {{0, "n/a"}, {1, "On"}, {2, "Off"}};
constexpr Enumeration kVibrationReduction = Enum(kVibrationReductionTexts, Sign::kUnsigned, "%d");
constexpr ValueText kVrModeTexts[] = {{0, "Normal"}, {1, "On (1)"}, {2, "Active"}, {3, "Sport"}};
constexpr Enumeration kVrMode = Enum(kVrModeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kEarlyZVrModeTexts[] = {{0, "Off"}, {1, "Normal"}, {3, "Sport"}};
constexpr Enumeration kEarlyZVrMode = Enum(kEarlyZVrModeTexts, Sign::kUnsigned, "%d");

void VrInfo(Structure& s, const NikonFacts& keys) {
    if (!s.Has(0, 4)) return;
    s.Row("VR Info Version", s.VersionText());
    if (s.Has(4)) s.Row("Vibration Reduction", EnumText(kVibrationReduction, s.bytes[4]));
    if (s.Has(6)) s.Row("VR Mode", EnumText(keys.earlyZ ? kEarlyZVrMode : kVrMode, s.bytes[6]));
}

// Picture control (tag 0023), version 01xx: the name the photographer gave
// it and the control it was made from, 20 characters each.
namespace {
std::string FixedText(const Structure& s, size_t at, size_t length) {
    std::string text;
    for (size_t i = at; i < at + length && s.Has(i) && s.bytes[i]; ++i) text += static_cast<char>(s.bytes[i]);
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}
}  // namespace

void PictureControl(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 4)) return;
    s.Row("Picture Control Version", s.VersionText());
    if (!(s.bytes[0] == '0' && s.bytes[1] == '1') || !s.Has(4, 40)) return;
    s.Row("Picture Control Name", FixedText(s, 4, 20));
    s.Row("Picture Control Base", FixedText(s, 24, 20));
}

// World time (tag 0024): the time zone in minutes, daylight saving, the
// date order.
constexpr Enumeration kDaylightSavings = Enum(kNoYesTexts, Sign::kUnsigned, "%d");
constexpr ValueText kDateDisplayFormatTexts[] = {{0, "Y/M/D"}, {1, "M/D/Y"}, {2, "D/M/Y"}};
constexpr Enumeration kDateDisplayFormat = Enum(kDateDisplayFormatTexts, Sign::kUnsigned, "%d");

void WorldTime(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 4)) return;
    const int minutes = static_cast<int16_t>(platform::GetU16(s.bytes, s.bigEndian));
    const int magnitude = minutes < 0 ? -minutes : minutes;
    s.Rowf("Time Zone", "%c%02d:%02d", minutes < 0 ? '-' : '+', magnitude / 60, magnitude % 60);
    s.Row("Daylight Savings", EnumText(kDaylightSavings, s.bytes[2]));
    s.Row("Date Display Format", EnumText(kDateDisplayFormat, s.bytes[3]));
}

// ISO info (tag 0025), big-endian in every body: the speed as 100 x
// 2^(v/12 - 5), and the Hi/Lo extension past the normal range, in steps of
// 0.3, 0.5, 0.7 and 1.0 EV per whole stop.
constexpr const char* kIsoExpansionKinds[] = {nullptr, "Hi", "Lo"};

void IsoInfo(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 6)) return;
    s.Rowf("ISO", "%d", static_cast<int>(100.0 * std::pow(2.0, s.bytes[0] / 12.0 - 5.0) + 0.5));
    const uint16_t expansion = platform::GetU16(s.bytes + 4, /*bigEndian=*/1);
    const unsigned kind = expansion >> 8, step = expansion & 0xFF;
    constexpr double kFractions[] = {0.3, 0.5, 0.7, 1.0};
    if (expansion == 0) s.Row("ISO Expansion", "Off");
    else if (kind >= 1 && kind <= 2 && step >= 1 && step <= 20)
        s.Rowf("ISO Expansion", "%s %.1f", kIsoExpansionKinds[kind], (step - 1) / 4 + kFractions[(step - 1) % 4]);
    else s.Rowf("ISO Expansion", "0x%x", expansion);
}

// AF fine tune (tag 00B9).
constexpr ValueText kAfFineTuneTexts[] = {{0, "Off"}, {1, "On (1)"}, {2, "On (2)"}, {3, "On (Zoom)"}};
constexpr Enumeration kAfFineTune = Enum(kAfFineTuneTexts, Sign::kUnsigned, "%d");

void AfTune(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 3)) return;
    s.Row("AF Fine Tune", EnumText(kAfFineTune, s.bytes[0]));
    if (s.bytes[1] == 255) s.Row("AF Fine Tune Index", "n/a");
    else s.Rowf("AF Fine Tune Index", "%u", s.bytes[1]);
    // A positive adjustment shows its sign, zero none.
    const auto adjust = [&](const char* name, uint8_t b) {
        const int v = static_cast<int8_t>(b);
        s.Rowf(name, v > 0 ? "+%d" : "%d", v);
    };
    adjust("AF Fine Tune Adj", s.bytes[2]);
    if (s.Has(3)) adjust("AF Fine Tune Adj Tele", s.bytes[3]);
}

// AF info 2 (tag 00B7) of the bodies with live view: whether contrast
// detection and phase detection were used, and the area mode, whose values
// mean other things under contrast detection. The Z 9's version 04xx lays
// its bytes out otherwise.
constexpr ValueText kContrastDetectAfTexts[] = {{0, "Off"}, {1, "On"}, {2, "On (2)"}};
constexpr Enumeration kContrastDetectAf = Enum(kContrastDetectAfTexts, Sign::kUnsigned, "%d");

// Area modes by the focus method; the modes of the mirrorless and Nikon 1
// bodies (from 128) are shared, and follow the method's own.
constexpr ValueText kPhaseDetectAreaTexts[] = {
    {0, "Single Area"},
    {1, "Dynamic Area"},
    {2, "Dynamic Area (closest subject)"},
    {3, "Group Dynamic"},
    {4, "Dynamic Area (9 points)"},
    {5, "Dynamic Area (21 points)"},
    {6, "Dynamic Area (51 points)"},
    {7, "Dynamic Area (51 points, 3D-tracking)"},
    {8, "Auto-area"},
    {9, "Dynamic Area (3D-tracking)"},
    {10, "Single Area (wide)"},
    {11, "Dynamic Area (wide)"},
    {12, "Dynamic Area (wide, 3D-tracking)"},
    {13, "Group Area"},
    {14, "Dynamic Area (25 points)"},
    {15, "Dynamic Area (72 points)"},
    {16, "Group Area (HL)"},
    {17, "Group Area (VL)"},
    {18, "Dynamic Area (49 points)"},
};
constexpr Enumeration kPhaseDetectArea = Enum(kPhaseDetectAreaTexts, Sign::kUnsigned, "%d");

constexpr ValueText kContrastDetectAreaTexts[] = {
    {0, "Contrast-detect"},
    {1, "Contrast-detect (normal area)"},
    {2, "Contrast-detect (wide area)"},
    {3, "Contrast-detect (face priority)"},
    {4, "Contrast-detect (subject tracking)"},
    {194, "Dynamic"},
    {198, "Auto (People)"},
    {199, "Auto (Animal)"},
    {200, "Normal-area AF"},
    {201, "Wide-area AF"},
    {202, "Face-priority AF"},
    {203, "Subject-tracking AF"},
    {204, "Dynamic Area (S)"},
    {205, "Dynamic Area (M)"},
    {206, "Dynamic Area (L)"},
    {207, "3D-tracking"},
};
constexpr Enumeration kContrastDetectArea = Enum(kContrastDetectAreaTexts, Sign::kUnsigned, "%d");

constexpr ValueText kEitherMethodAreaTexts[] = {
    {128, "Single"},   {129, "Auto (41 points)"}, {130, "Subject Tracking (41 points)"},
    {131, "Face Priority (41 points)"}, {192, "Pinpoint"}, {193, "Single"},
    {195, "Wide (S)"}, {196, "Wide (L)"},         {197, "Auto"},
};
constexpr Enumeration kEitherMethodArea = Enum(kEitherMethodAreaTexts, Sign::kUnsigned, "%d");

constexpr ValueText kPhaseDetectAfTexts[] = {
    {0, "Off"},
    {1, "On (51-point)"},
    {2, "On (11-point)"},
    {3, "On (39-point)"},
    {4, "On (73-point)"},
    {5, "On (5)"},
    {6, "On (105-point)"},
    {7, "On (153-point)"},
    {8, "On (81-point)"},
    {9, "On (105-point)"},
};
constexpr Enumeration kPhaseDetectAf = Enum(kPhaseDetectAfTexts, Sign::kUnsigned, "%d");

void AfInfo2(Structure& s, const NikonFacts&) {
    if (!s.Has(0, 4)) return;
    s.Row("AF Info 2 Version", s.VersionText());
    if ((s.bytes[0] == '0' && s.bytes[1] == '4') || !s.Has(4, 3)) return;
    const uint8_t contrast = s.bytes[4];
    s.Row("Contrast Detect AF", EnumText(kContrastDetectAf, contrast));
    const char* area = EnumerationText(contrast ? kContrastDetectArea : kPhaseDetectArea, s.bytes[5]);
    s.Row("AF Area Mode", area ? area : EnumText(kEitherMethodArea, s.bytes[5]));
    s.Row("Phase Detect AF", EnumText(kPhaseDetectAf, s.bytes[6]));
}

// File info (tag 00B8): the card slot, folder and file numbers, as SHORTs
// whose byte order is not the note's on every body: the order in which the
// folder (100 to 999) and file number (up to 9999) make sense, else
// little-endian for a few bodies and big-endian for the rest.
namespace {
bool FileNumbersMakeSense(const uint8_t* b, int bigEndian) {
    const unsigned folder = platform::GetU16(b, bigEndian), file = platform::GetU16(b + 2, bigEndian);
    return folder >= 100 && folder <= 999 && file <= 9999;
}
}  // namespace

void FileInfo(Structure& s, const NikonFacts& keys) {
    if (!s.Has(0, 10)) return;
    const bool little = FileNumbersMakeSense(s.bytes + 6, 0), big = FileNumbersMakeSense(s.bytes + 6, 1);
    const int order = little != big ? big : !keys.fileInfoLittleEndian;
    s.Row("File Info Version", s.VersionText());
    s.Rowf("Memory Card Number", "%u", platform::GetU16(s.bytes + 4, order));
    s.Rowf("Directory Number", "%03u", platform::GetU16(s.bytes + 6, order));
    s.Rowf("File Number", "%04u", platform::GetU16(s.bytes + 8, order));
}

}  // namespace nikon
}  // namespace makernotes
