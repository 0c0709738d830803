// The values the corpus files hold only little-endian or not at all: Olympus
// sub-directory values read in a big-endian note (signed tables, AF areas,
// lens and aperture codes, the focus distance).
#include <initializer_list>
#include <string>

#include "note_harness.h"

namespace {

using namespace notetest;

Bytes Shorts(std::initializer_list<int> values) {
    Bytes out;
    for (int v : values) fixture::PutU16(out, static_cast<uint16_t>(v), kBE);
    return out;
}
Bytes Longs(ByteOrder o, std::initializer_list<int64_t> values) {
    Bytes out;
    for (int64_t v : values) fixture::PutU32(out, static_cast<uint32_t>(v), o);
    return out;
}

TEST(OlympusNote, SubDirectoryValuesOfABigEndianNote) {
    // "OLYMPUS\0MM": offsets from the note; one sub-directory after the main one.
    const auto note = [](uint16_t tag, MakerNoteBuilder sub) {
        MakerNoteBuilder n(kBE);
        n.Header(std::string("OLYMPUS\0MM\x03\0", 12)).Ascii(0x0207, "D4040");
        n.Field(tag, 13, 1, Longs(kBE, {0}));
        const auto at = static_cast<uint32_t>(n.Build(0).size());
        MakerNoteBuilder main(kBE);
        main.Header(std::string("OLYMPUS\0MM\x03\0", 12)).Ascii(0x0207, "D4040").Field(tag, 13, 1, Longs(kBE, {at}));
        Bytes out = main.Build(0);
        fixture::Append(out, sub.Build(at));
        return RowTexts(DispatchNote(kBE, "", out));
    };
    MakerNoteBuilder equipment(kBE);
    equipment.OutOfLine(0x0201, fixture::kByte, 6, {0, 0, 0x19, 0x10, 0, 0}).Long(0x0204, 0x1100);
    equipment.Short(0x020a, 0x2f3).Long(0x0304, 0);
    EXPECT_EQ(note(0x2010, equipment),
              (Texts{"Camera Type=E-1", "Lens Type=Olympus M.Zuiko Digital ED 12-40mm F2.8 Pro",
                     "Lens Firmware Version=1.100", "Max Aperture=2.8", "Extender Firmware Version=0"}));

    MakerNoteBuilder settings(kBE);
    settings.OutOfLine(0x0304, fixture::kLong, 3, Longs(kBE, {0x79798585, 0x10203040, 0}));
    settings.OutOfLine(0x0305, fixture::kSRational, 5, Longs(kBE, {0, 0, 1, 2, 1, 4, 3, 4, -1, 2}));
    settings.Short(0x0400, 0x15).OutOfLine(0x0503, fixture::kShort, 3, Shorts({-1, -2, 2}));
    settings.OutOfLine(0x050f, fixture::kShort, 4, Shorts({1, -1, 1, 1})).Field(0x0600, fixture::kShort, 2, Shorts({2, 3}));
    settings.OutOfLine(0x0901, fixture::kSLong, 2, Longs(kBE, {-10, -32}));
    EXPECT_EQ(note(0x2020, settings),
              (Texts{"Camera Type=E-1", "AF Areas=Center (121,121)-(133,133), (16,32)-(48,64)",
                     "AF Point Selected=(50%,25%) (75%,-50%)",                     "Flash Mode=On, Red-eye, Forced On", "Custom Saturation=-1 (min -2, max 2)",
                     "Gradation=High Key; Auto-Override", "Drive Mode=Exposure Bracketing, Shot 3",
                     "Manometer Reading=-1 m, -3.2 ft"}));

    MakerNoteBuilder processing(kBE);
    processing.OutOfLine(0x0200, fixture::kShort, 3, Shorts({348, -54, -42})).Field(0x1112, fixture::kByte, 2, {3, 3, 0, 0});
    EXPECT_EQ(note(0x2040, processing), (Texts{"Camera Type=E-1", "Color Matrix=348 -54 -42", "Aspect Ratio=16:9"}));

    // The focus distance is the numerator in millimetres, whatever the
    // denominator; the three-point AF names come from the camera type.
    MakerNoteBuilder focus(kBE);
    focus.OutOfLine(0x0305, fixture::kRational, 1, Longs(kBE, {705, 10})).Short(0x0308, 3);
    focus.Field(0x1209, fixture::kShort, 2, Shorts({1, 4})).Short(0x1500, -10);
    EXPECT_EQ(note(0x2050, focus), (Texts{"Camera Type=E-1", "Focus Distance=0.705 m", "AF Point=Center (vertical)",
                                          "Manual Flash=On (1/4 strength)", "Sensor Temperature=-10 C"}));
}

}  // namespace
