// The Pentax blocks: the second pass over the directory that reads them, and
// the camera (tag 0215), battery (0216), AF (021F), settings (0205), faces
// (0060) and colour (0222) blocks; the shot's blocks are in
// pentax_shot_blocks.cpp.
#include <cstring>
#include <string>

#include "pentax_makernote.h"

namespace makernotes {
namespace pentax {
namespace {

// Elements of a block as bytes (or LONGs), each an array element.
constexpr size_t kBlockBytesLimit = 32;

// Camera: five LONGs in the note's order.
void CameraModel(const ArrayElements& a, exif::TagRecord& row) { SetModel(row, static_cast<uint32_t>(a.At(0))); }
// Written as the decimal digits yyyymmdd (early bodies: ymmdd of the 2000s).
void ManufactureDate(const ArrayElements& a, exif::TagRecord& row) {
    const int64_t v = a.At(1);
    if (v >= 10000000 && v <= 99999999) return SetValuef(row, "%04d:%02d:%02d", int(v / 10000), int(v / 100 % 100), int(v % 100));
    if (v >= 10000 && v <= 99999) return SetValuef(row, "200%d:%02d:%02d", int(v / 10000), int(v / 100 % 100), int(v % 100));
    SetValuef(row, "Unknown (%lld)", static_cast<long long>(v));
}
void ProductionCode(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%lld.%lld%s", static_cast<long long>(a.At(2)), static_cast<long long>(a.At(3)),
              a.At(2) == 8 ? " (camera has been serviced)" : "");
}
constexpr ArrayRow kCameraRows[] = {
    {0, "Pentax Model ID", CameraModel},
    {1, "Manufacture Date", ManufactureDate},
    {3, "Production Code", ProductionCode},
    {4, "Internal Serial Number", NumberElement<4>},
};

// Auto focus, big-endian.
void AfPredictor(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%d", static_cast<int16_t>(Byte<4>(a) << 8 | Byte<5>(a)));
}
void AfIntegrationTime(const ArrayElements& a, exif::TagRecord& row) { SetValuef(row, "%u ms", Byte<7>(a) * 2); }
constexpr ValueText kAfPointsTexts[] = {
    {0, "None"},                {1, "Lower-left, Bottom"},  {2, "Bottom"},              {3, "Lower-right, Bottom"},
    {4, "Mid-left, Center"},    {5, "Center (horizontal)"}, {6, "Mid-right, Center"},   {7, "Upper-left, Top"},
    {8, "Top"},                 {9, "Upper-right, Top"},    {10, "Right"},              {11, "Lower-left, Mid-left"},
    {12, "Upper-left, Mid-left"}, {13, "Bottom, Center"},   {14, "Top, Center"},        {15, "Lower-right, Mid-right"},
    {16, "Upper-right, Mid-right"}, {17, "Left"},           {18, "Mid-left"},           {19, "Center (vertical)"},
    {20, "Mid-right"},
};
constexpr Enumeration kAfPoints = Enum(kAfPointsTexts, Sign::kUnsigned, "%u");
constexpr ArrayRow kAfRows[] = {
    {5, "AF Predictor", AfPredictor},
    {6, "AF Defocus", NumberElement<6>},
    {7, "AF Integration Time", AfIntegrationTime},
    {11, "AF Points In Focus", EnumElement<kAfPoints, 11>},
};
// The cameras with more AF points number them otherwise (K-1, K-3 and their successors).
constexpr ArrayRow kAfRowsWithoutPoints[] = {
    {5, "AF Predictor", AfPredictor},
    {6, "AF Defocus", NumberElement<6>},
    {7, "AF Integration Time", AfIntegrationTime},
};

// Battery, big-endian: the source, then the body and grip states (their
// scale depends on the camera).
constexpr ValueText kPowerSourceTexts[] = {
    {1, "Camera Battery"}, {2, "Body Battery"}, {3, "Grip Battery"}, {4, "External Power Supply"},
};
constexpr ValueText kFourStepTexts[] = {{1, "Empty or Missing"}, {2, "Almost Empty"}, {3, "Running Low"}, {4, "Full"}};
constexpr ValueText kFiveStepTexts[] = {
    {1, "Empty or Missing"}, {2, "Almost Empty"}, {3, "Running Low"}, {4, "Close to Full"}, {5, "Full"},
};
constexpr Enumeration kPowerSource = Enum(kPowerSourceTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFourStep = Enum(kFourStepTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFiveStep = Enum(kFiveStepTexts, Sign::kUnsigned, "%u");
void PowerSource(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kPowerSource, Byte<0>(a) & 0x0F, row); }
void BodyFourStep(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kFourStep, Byte<1>(a) >> 4, row); }
void BodyFiveStep(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kFiveStep, Byte<1>(a) >> 4, row); }
void GripFourStep(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kFourStep, Byte<1>(a) & 0x0F, row); }
// Body A/D readings, roughly calibrated for the K10D's battery.
void BatteryAd(exif::TagRecord& row, uint32_t v, double empty, double span) {
    SetValuef(row, "%u (%.1fV, %d%%)", v, v * 8.18 / 186, static_cast<int>((v - empty) * 100 / span));
}
void BodyNoLoad(const ArrayElements& a, exif::TagRecord& row) { BatteryAd(row, Byte<2>(a), 155, 35); }
void BodyLoad(const ArrayElements& a, exif::TagRecord& row) { BatteryAd(row, Byte<3>(a), 152, 34); }
// K10D and K20D: a grip, and readings with a scale.
constexpr ArrayRow kBatteryWithGripRows[] = {
    {0, "Power Source", PowerSource},
    {1, "Body Battery State", BodyFourStep},
    {1, "Grip Battery State", GripFourStep},
    {2, "Body Battery A/D No Load", BodyNoLoad},
    {3, "Body Battery A/D Load", BodyLoad},
};
// The *ist D, K100D and K200D: a four-step body state.
constexpr ArrayRow kBatteryFourStepRows[] = {
    {0, "Power Source", PowerSource},
    {1, "Body Battery State", BodyFourStep},
};
constexpr ArrayRow kBatteryFiveStepRows[] = {
    {0, "Power Source", PowerSource},
    {1, "Body Battery State", BodyFiveStep},
};
constexpr ArrayRow kBatteryRows[] = {
    {0, "Power Source", PowerSource},
};

// Settings of the DSLRs (big-endian; the K-01 and later write a longer
// block laid out otherwise): exposure program, flash, metering and focus
// settings, drive and bracketing.
constexpr ValueText kPictureMode2Texts[] = {
    {0, "Scene Mode"},   {1, "Auto PICT"},        {2, "Program AE"},        {3, "Green Mode"},
    {4, "Shutter Speed Priority"},                {5, "Aperture Priority"}, {6, "Program Tv Shift"},
    {7, "Program Av Shift"}, {8, "Manual"},       {9, "Bulb"},
    {10, "Aperture Priority, Off-Auto-Aperture"}, {11, "Manual, Off-Auto-Aperture"},
    {12, "Bulb, Off-Auto-Aperture"},              {13, "Shutter & Aperture Priority AE"},
    {15, "Sensitivity Priority AE"},              {16, "Flash X-Sync Speed AE"},
};
constexpr ValueText kProgramLineTexts[] = {{0, "Normal"}, {1, "Hi Speed"}, {2, "Depth"}, {3, "MTF"}};
constexpr ValueText kEvStepsTexts[] = {{0, "1/2 EV Steps"}, {1, "1/3 EV Steps"}};
constexpr ValueText kFlashOptionsTexts[] = {
    {0, "Normal"},    {1, "Red-eye reduction"}, {2, "Auto"},      {3, "Auto, Red-eye reduction"},
    {5, "Wireless (Master)"}, {6, "Wireless (Control)"}, {8, "Slow-sync"},
    {9, "Slow-sync, Red-eye reduction"},         {10, "Trailing-curtain Sync"},
};
constexpr ValueText kFocusMode2Texts[] = {{0, "Manual"}, {1, "AF-S"}, {2, "AF-C"}, {3, "AF-A"}};
constexpr ValueText kBracketStepTexts[] = {
    {3, "0.3"}, {4, "0.5"}, {5, "0.7"}, {8, "1.0"}, {11, "1.3"}, {12, "1.5"}, {13, "1.7"}, {16, "2.0"},
};
constexpr Enumeration kPictureMode2 = Enum(kPictureMode2Texts, Sign::kUnsigned, "%u");
constexpr Enumeration kProgramLine = Enum(kProgramLineTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kEvSteps = Enum(kEvStepsTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFlashOptions = Enum(kFlashOptionsTexts, Sign::kUnsigned, "%u");
constexpr Enumeration kFocusMode2 = Enum(kFocusMode2Texts, Sign::kUnsigned, "%u");
constexpr Enumeration kBracketStep = Enum(kBracketStepTexts, Sign::kUnsigned, "%u");

// A bit mask by its bit names, with its own text for no bit set.
template <size_t N>
void SetMask(exif::TagRecord& row, uint32_t mask, const char* none, const ValueText (&bits)[N]) {
    if (mask == 0) return exif::SetRowValue(row, none);
    SetBits(row, mask, bits, N);
}
constexpr ValueText kMetering2Bits[] = {{0, "Center-weighted average"}, {1, "Spot"}};
constexpr ValueText kAfPointModeBits[] = {{0, "Select"}, {1, "Fixed Center"}};
constexpr ValueText kElevenPointBits[] = {
    {0, "Upper-left"}, {1, "Top"},       {2, "Upper-right"}, {3, "Left"},   {4, "Mid-left"},  {5, "Center"},
    {6, "Mid-right"},  {7, "Right"},     {8, "Lower-left"},  {9, "Bottom"}, {10, "Lower-right"},
};
constexpr ValueText kDrive2Bits[] = {
    {0, "Continuous"},        {1, "Continuous (Lo)"}, {2, "Self-timer (12 s)"}, {3, "Self-timer (2 s)"},
    {4, "Remote Control (3 s delay)"},                {5, "Remote Control"},    {6, "Exposure Bracket"},
    {7, "Multiple Exposure"},
};
void ProgramLine(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kProgramLine, Byte<1>(a) & 3, row); }
void EvSteps(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kEvSteps, Byte<1>(a) >> 5 & 1, row); }
void FlashOptions(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kFlashOptions, Byte<2>(a) >> 4, row); }
void Metering2(const ArrayElements& a, exif::TagRecord& row) { SetMask(row, Byte<2>(a) & 15, "Multi-segment", kMetering2Bits); }
void AfPointMode(const ArrayElements& a, exif::TagRecord& row) { SetMask(row, Byte<3>(a) >> 4, "Auto", kAfPointModeBits); }
void FocusMode2(const ArrayElements& a, exif::TagRecord& row) { FormatEnumeratedElement(kFocusMode2, Byte<3>(a) & 15, row); }
void AfPointSelected2(const ArrayElements& a, exif::TagRecord& row) {
    SetMask(row, Byte<4>(a) << 8 | Byte<5>(a), "Auto", kElevenPointBits);
}
void DriveMode2(const ArrayElements& a, exif::TagRecord& row) { SetMask(row, Byte<7>(a), "Single-frame", kDrive2Bits); }
constexpr ArrayRow kSettingsRows[] = {
    {0, "Picture Mode 2", EnumElement<kPictureMode2, 0>},
    {1, "Program Line", ProgramLine},
    {1, "EV Steps", EvSteps},
    {2, "Flash Options", FlashOptions},
    {2, "Metering Mode 2", Metering2},
    {3, "AF Point Mode", AfPointMode},
    {3, "Focus Mode 2", FocusMode2},
    {5, "AF Point Selected 2", AfPointSelected2},
    {7, "Drive Mode 2", DriveMode2},
    {8, "Exposure Bracket Step Size", EnumElement<kBracketStep, 8>},
};

// Faces: how many, and the centre of the main one in percent of the frame.
void FacePosition(const ArrayElements& a, exif::TagRecord& row) { SetValuef(row, "%u %u", Byte<2>(a), Byte<3>(a)); }
constexpr ArrayRow kFaceRows[] = {
    {0, "Faces Detected", NumberElement<0>},
    {3, "Face Position", FacePosition},
};

// Colour: the white-balance fine tuning, signed steps.
void WbShiftAb(const ArrayElements& a, exif::TagRecord& row) { SetValuef(row, "%d", SignedByte<16>(a)); }
void WbShiftGm(const ArrayElements& a, exif::TagRecord& row) { SetValuef(row, "%d", SignedByte<17>(a)); }
constexpr ArrayRow kColorRows[] = {
    {16, "WB Shift AB", WbShiftAb},
    {17, "WB Shift GM", WbShiftGm},
};

// The camera, as far as the blocks tell their layouts apart by it.
constexpr uint32_t kFourStepBatteryModels[] = {0x12994, 0x12aa2, 0x12b1a, 0x12b60, 0x12b7e,
                                               0x12b9c, 0x12ba2, 0x12cfa};
constexpr uint32_t kGripModels[] = {0x12c1e, 0x12cd2};
constexpr uint32_t kUnknownBatteryModels[] = {0x12b9d, 0x12d72, 0x12d73};
// The *ist and K100D generation lay their lens block out otherwise.
constexpr uint32_t kOlderLensModels[] = {0x12994, 0x12aa2, 0x12b1a, 0x12b60, 0x12b7e, 0x12b9c, 0x12b9d, 0x12ba2};
constexpr uint32_t kManyAfPointModels[] = {0x12fc0, 0x13092, 0x1309c, 0x13240, 0x13254};

template <size_t N>
bool Among(const uint32_t (&models)[N], uint32_t model) {
    for (uint32_t m : models)
        if (m == model) return true;
    return false;
}

Rows BatteryRows(uint32_t model) {
    if (Among(kGripModels, model)) return ListOf(kBatteryWithGripRows);
    if (Among(kFourStepBatteryModels, model)) return ListOf(kBatteryFourStepRows);
    if (Among(kUnknownBatteryModels, model) || model == 0) return ListOf(kBatteryRows);
    return ListOf(kBatteryFiveStepRows);
}

// What the second pass keeps of the plain tags it has passed.
struct PassState {
    uint32_t model = 0;
    uint8_t date[4] = {}, time[4] = {};
    bool hasDate = false, hasTime = false;
};

struct BlockLayout {
    uint32_t elementSize;  // 1, or 4 for LONGs
    ElementOrder order;
};
constexpr BlockLayout kBytes = {1, ElementOrder::kNote};
constexpr BlockLayout kNoteLongs = {4, ElementOrder::kNote};

// The rows of a block tag, by its count and the camera; none for a layout
// that is not read.
Rows BlockRows(const tiff::Entry& entry, const PassState& state, BlockLayout& layout) {
    layout = kBytes;
    switch (entry.tag) {
        case 0x005c: return entry.count == 4 ? kShakeReductionBlock : Rows{};
        case 0x0060: return ListOf(kFaceRows);
        case 0x0205: return entry.count < 25 ? ListOf(kSettingsRows) : Rows{};
        case 0x0206: return entry.count <= 20 ? kAeBlock : Rows{};
        case 0x0207: {
            // Other lengths are the layouts of the 645D, K-r, K-5 and later bodies.
            const bool otherLayout = entry.count == 80 || entry.count == 90 || entry.count == 91 ||
                                     entry.count == 128 || entry.count == 168;
            return otherLayout || Among(kOlderLensModels, state.model) ? Rows{} : kLensBlock;
        }
        case 0x0208: return entry.count == 27 ? kFlashBlock : Rows{};
        case 0x0215: layout = kNoteLongs; return ListOf(kCameraRows);
        case 0x0216: return BatteryRows(state.model);
        case 0x021f: return Among(kManyAfPointModels, state.model) ? ListOf(kAfRowsWithoutPoints) : ListOf(kAfRows);
        case 0x0222: return ListOf(kColorRows);
        default: return Rows{};
    }
}

void AppendRow(exif::TagRecordTable& table, uint32_t* rowCount, const tiff::Entry& entry, const char* name,
               const ArrayElements* elements, const ArrayRow* format) {
    exif::TagRecord& row = exif::TakeRow(table, *rowCount);
    exif::BeginRow(row, entry.tag, entry);
    exif::SetRowName(row, name);
    if (format) format->format(*elements, row);
    ++*rowCount;
}

void DecodeBlock(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                 const PassState& state, exif::TagRecordTable& table, uint32_t* rowCount) {
    BlockLayout layout;
    const Rows rows = BlockRows(entry, state, layout);
    if (!rows.size || entry.count > 0xFFFF) return;
    uint8_t bytes[kBlockBytesLimit] = {};
    const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
    const size_t got = exif::ReadRawBlock(context, bytes, sizeof bytes);
    const int order = layout.order == ElementOrder::kBigEndian ? 1 : input.bigEndian();
    int64_t values[kBlockBytesLimit] = {};
    const size_t size = got / layout.elementSize;
    for (size_t i = 0; i < size; ++i)
        values[i] = layout.elementSize == 4 ? int64_t{platform::GetU32(bytes + 4 * i, order)} : bytes[i];
    const ArrayElements elements{values, size};
    for (size_t i = 0; i < rows.size && *rowCount < kMakerNoteRowLimit; ++i)
        if (elements.Has(rows.items[i].needs)) AppendRow(table, rowCount, entry, rows.items[i].name, &elements, &rows.items[i]);
}

// The count is stored scrambled with the note's date and time (when both
// are there, it reads back by the same exclusive or).
void ShutterCount(const tiff::Entry& entry, const PassState& state, exif::TagRecordTable& table, uint32_t* rowCount) {
    if (entry.count != 4 || !state.hasDate || !state.hasTime) return;
    const uint32_t date = platform::GetU32(state.date, 1), time = platform::GetU32(state.time, 1);
    const uint32_t count = platform::GetU32(entry.fieldBytes, 1) ^ date ^ ~time;
    AppendRow(table, rowCount, entry, "Shutter Count", nullptr, nullptr);
    SetValuef(table.rows[*rowCount - 1], "%u", count);
}

// Stored as 53190 minus the temperature; 0 when not recorded.
void ColorTemperature(const tiff::Entry& entry, int bigEndian, exif::TagRecordTable& table, uint32_t* rowCount) {
    const uint16_t v = platform::GetU16(entry.fieldBytes, bigEndian);
    if (entry.type != tiff::kShort || v == 0) return;
    AppendRow(table, rowCount, entry, "Color Temperature", nullptr, nullptr);
    SetValuef(table.rows[*rowCount - 1], "%d", 53190 - v);
}

}  // namespace

void DecodeBlocks(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                  uint32_t rowsBefore, uint32_t* rowCount) {
    PassState state;
    const platform::Cursor input = directory.Whole();
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        switch (entry.tag) {
            case 0x0005: state.model = entry.valueField; return;
            case 0x0006:
                state.hasDate = entry.count == 4;
                std::memcpy(state.date, entry.fieldBytes, 4);
                return;
            case 0x0007:
                state.hasTime = entry.count >= 3;
                std::memcpy(state.time, entry.fieldBytes, 3);
                return;
            case 0x0050: return ColorTemperature(entry, input.bigEndian(), table, rowCount);
            case 0x005d: return ShutterCount(entry, state, table, rowCount);
            default: return DecodeBlock(input, offsetBase, entry, state, table, rowCount);
        }
    });
}

}  // namespace pentax
}  // namespace makernotes
