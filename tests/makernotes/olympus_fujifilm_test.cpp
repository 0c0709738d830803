// Olympus / OM System notes in the header forms and byte orders the corpus
// files lack, with the equipment and camera-settings sub-directories, the
// values the corpus files hold only little-endian or not at all (signed
// tables, AF areas, lens and aperture codes, the focus distance) read in a
// big-endian note, and what hostile sub-directory entries do; Fujifilm's
// little-endian note in a big-endian file.
#include <string>

#include "note_harness.h"

namespace {

using namespace notetest;

constexpr uint16_t kIfd = 13;

const std::string kOldForm("OLYMP\0\x01\0", 8);
const std::string kFullNameII("OLYMPUS\0II\x03\0", 12);
const std::string kFullNameMM("OLYMPUS\0MM\x03\0", 12);
const std::string kOmSystemII("OM SYSTEM\0\0\0II\x04\0", 16);

void MainEntries(MakerNoteBuilder& n) {
    const ByteOrder o = n.order();
    Bytes id = fixture::ToBytes("OLYMPUS DIGITAL CAMERA");
    id.resize(32, 0);
    n.OutOfLine(0x0200, fixture::kLong, 3, Longs(o, {3, 5, 2}));
    n.Short(0x0201, 2).Short(0x0202, 2);
    n.OutOfLine(0x0204, fixture::kRational, 1, Longs(o, {150, 100}));
    n.Ascii(0x0207, "SX558").OutOfLine(0x0209, fixture::kUndefined, 32, id);
    n.Short(0x0F00, 7);  // never named
}

void EquipmentEntries(MakerNoteBuilder& n) {
    n.Ascii(0x0101, "143008611      ").Long(0x0104, 0x1300);
    n.OutOfLine(0x0201, fixture::kByte, 6, {0, 0, 0x05, 0x10, 0, 0});
    n.Ascii(0x0202, "050105886").Ascii(0x0203, "OLYMPUS M.12-40mm F2.8");
}

void SettingsEntries(MakerNoteBuilder& n) {
    const ByteOrder o = n.order();
    n.Field(0x0301, fixture::kShort, 2, Shorts(o, {2, 0x24}));
    n.Short(0x0500, 18);
    n.OutOfLine(0x0529, fixture::kShort, 4, Shorts(o, {2, 0, 0, 0}));
}

const Texts kAllRows{
    "Special Mode=Panorama, sequence 5, panorama right to left", "Quality=SHQ (fine)", "Macro=Super macro",
    "Digital Zoom=1.5", "Camera Type=SX558", "Camera ID=OLYMPUS DIGITAL CAMERA",
    "Serial Number=143008611", "Body Firmware Version=1.300", "Lens Type=Olympus M.Zuiko Digital ED 14-42mm F3.5-5.6 L",
    "Lens Serial Number=050105886", "Lens Model=OLYMPUS M.12-40mm F2.8",
    "Focus Mode=Continuous AF; C-AF, Face detect", "White Balance=5300K (fine weather)", "Art Filter=Pop art",
};

// An Olympus note: the main entries, then the first `subs` of the equipment
// and camera-settings directories at note + 256 and + 384, their entries of
// type subType pointing there. origin: the note's offset from the base its
// offsets count from (the TIFF header, or the note itself).
Bytes OlympusNote(ByteOrder o, const std::string& header, int64_t origin, const Fill& main, int subs = 0,
                  uint16_t subType = kIfd) {
    constexpr uint32_t kAt[] = {256, 384};
    MakerNoteBuilder n(o);
    n.Header(header);
    main(n);
    Bytes blocks[2];
    for (int i = 0; i < subs; ++i) {
        MakerNoteBuilder sub(o);
        (i == 0 ? EquipmentEntries : SettingsEntries)(sub);
        blocks[i] = sub.Build(origin + kAt[i]);
        const auto count = static_cast<uint32_t>(subType == fixture::kUndefined ? blocks[i].size() : 1);
        n.Field(i == 0 ? 0x2010 : 0x2020, subType, count, Longs(o, {origin + kAt[i]}));
    }
    Bytes note = n.Build(origin);
    for (int i = 0; i < subs; ++i) {
        note.resize(kAt[i], 0);
        fixture::Append(note, blocks[i]);
    }
    return note;
}

Texts Olympus(ByteOrder fileOrder, const Bytes& note) { return RowTexts(DispatchNote(fileOrder, "", note)); }

TEST(OlympusNote, NewerFormsOffsetFromTheNoteAndTheirIiMarkSwitchesToLittleEndian) {
    for (const std::string& header : {kFullNameII, kOmSystemII}) {
        const Bytes note = OlympusNote(kLE, header, 0, MainEntries, 2);
        EXPECT_EQ(Olympus(kBE, note), kAllRows) << header;
        EXPECT_EQ(Olympus(kLE, note), kAllRows) << header;
    }
    // "MM" never switches: the note is read in the EXIF order, either one.
    // Sub-directories may also be LONG offsets or UNDEFINED blocks.
    EXPECT_EQ(Olympus(kLE, OlympusNote(kLE, kFullNameMM, 0, MainEntries, 1, fixture::kLong)),
              Texts(kAllRows.begin(), kAllRows.begin() + 11));
    EXPECT_EQ(Olympus(kBE, OlympusNote(kBE, kFullNameMM, 0, MainEntries, 2, fixture::kUndefined)), kAllRows);
}

TEST(OlympusNote, QualityCountsFromZeroOnlyForSxTypesOtherThanSx151AndForD4322) {
    const auto quality = [](const char* type) {
        const Texts rows = Olympus(kLE, OlympusNote(kLE, kOldForm, fixture::kNoteOffset, [&](MakerNoteBuilder& n) {
                                       n.Short(0x0201, 1);
                                       if (type) n.Ascii(0x0207, type);
                                   }));
        return rows.empty() ? "<no rows>" : rows.front();
    };
    EXPECT_EQ(quality("SX558"), "Quality=HQ (normal)");
    EXPECT_EQ(quality("SX151"), "Quality=SQ (low)");
    EXPECT_EQ(quality("D4322"), "Quality=HQ (normal)");
    EXPECT_EQ(quality(nullptr), "Quality=SQ (low)");
}

// A fuzz finding: a negative white-balance kind was shifted to look it up.
TEST(OlympusNote, NegativeWhiteBalanceModeShowsItsNumbers) {
    const Texts rows = Olympus(kLE, OlympusNote(kLE, kOldForm, fixture::kNoteOffset, [](MakerNoteBuilder& n) {
                                   n.Field(0x1015, fixture::kSShort, 2, {0xFF, 0xFF, 0x02, 0x00});
                               }));
    EXPECT_EQ(rows, Texts{"White Balance Mode=-1 2"});
}

TEST(OlympusNote, HostileSubDirectoryEntriesGiveNoRows) {
    // The note (older form) covers file offsets 8 to 58, its directory 16 to
    // 54. At 60 stands a sound one-entry directory, at 78 one whose entry
    // count runs past the end of the file.
    constexpr uint32_t kDirectory = fixture::kNoteOffset + 8, kSound = 60, kOverlong = 78;
    const struct {
        const char* what;
        uint16_t type;
        uint32_t count, offset;
        Texts rows;
    } cases[] = {
        {"sound", kIfd, 1, kSound, {"Macro=Off", "Serial Number=ab"}},
        {"past the end", kIfd, 1, 0x7FFFFFF0, {"Macro=Off"}},
        {"past 4 GB from the base", kIfd, 1, 0xFFFFFFF0, {"Macro=Off"}},
        {"at its own directory", kIfd, 1, kDirectory, {"Macro=Off"}},
        {"into its own entries", fixture::kLong, 1, kDirectory + 14, {"Macro=Off"}},
        {"an UNDEFINED block too small for an offset", fixture::kUndefined, 4, kSound, {"Macro=Off"}},
        {"an UNDEFINED block smaller than its directory", fixture::kUndefined, 10, kSound, {"Macro=Off"}},
        {"a SHORT", fixture::kShort, 1, kSound, {"Macro=Off"}},
        {"an entry count running past the file", kIfd, 1, kOverlong, {"Macro=Off"}},
    };
    for (const auto& c : cases) {
        MakerNoteBuilder n(kLE);
        n.Header(kOldForm).Short(0x0202, 0).Ascii(0x0208, "x").Field(0x2010, c.type, c.count, Longs(kLE, {c.offset}));
        Bytes note = n.Build(fixture::kNoteOffset);
        note.resize(kSound - fixture::kNoteOffset, 0);
        fixture::Append(note, {1, 0, 0x01, 0x01, 2, 0, 3, 0, 0, 0, 'a', 'b', 0, 0, 0, 0, 0, 0});
        fixture::Append(note, {0xFF, 0xFF, 0x01, 0x01, 2, 0});
        EXPECT_EQ(Olympus(kLE, note), c.rows) << c.what;
    }
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
    settings.Short(0x0400, 0x15).OutOfLine(0x0503, fixture::kShort, 3, Shorts(kBE, {-1, -2, 2}));
    settings.OutOfLine(0x050f, fixture::kShort, 4, Shorts(kBE, {1, -1, 1, 1})).Field(0x0600, fixture::kShort, 2, Shorts(kBE, {2, 3}));
    settings.OutOfLine(0x0901, fixture::kSLong, 2, Longs(kBE, {-10, -32}));
    EXPECT_EQ(note(0x2020, settings),
              (Texts{"Camera Type=E-1", "AF Areas=Center (121,121)-(133,133), (16,32)-(48,64)",
                     "AF Point Selected=(50%,25%) (75%,-50%)",                     "Flash Mode=On, Red-eye, Forced On", "Custom Saturation=-1 (min -2, max 2)",
                     "Gradation=High Key; Auto-Override", "Drive Mode=Exposure Bracketing, Shot 3",
                     "Manometer Reading=-1 m, -3.2 ft"}));

    MakerNoteBuilder processing(kBE);
    processing.OutOfLine(0x0200, fixture::kShort, 3, Shorts(kBE, {348, -54, -42})).Field(0x1112, fixture::kByte, 2, {3, 3, 0, 0});
    EXPECT_EQ(note(0x2040, processing), (Texts{"Camera Type=E-1", "Color Matrix=348 -54 -42", "Aspect Ratio=16:9"}));

    // The focus distance is the numerator in millimetres, whatever the
    // denominator; the three-point AF names come from the camera type.
    MakerNoteBuilder focus(kBE);
    focus.OutOfLine(0x0305, fixture::kRational, 1, Longs(kBE, {705, 10})).Short(0x0308, 3);
    focus.Field(0x1209, fixture::kShort, 2, Shorts(kBE, {1, 4})).Short(0x1500, -10);
    EXPECT_EQ(note(0x2050, focus), (Texts{"Camera Type=E-1", "Focus Distance=0.705 m", "AF Point=Center (vertical)",
                                          "Manual Flash=On (1/4 strength)", "Sensor Temperature=-10 C"}));
}

// ------------------------------------------------------------ Fujifilm

TEST(FujifilmNote, LittleEndianDirectoryInABigEndianFileOffsetsFromTheNote) {
    // The corpus's Fujifilm files are little-endian throughout.
    MakerNoteBuilder n(kLE);
    n.Header(std::string("FUJIFILM\x0C\0\0\0", 12));
    n.Field(0x0000, fixture::kUndefined, 4, fixture::ToBytes("0130")).Ascii(0x0010, "FPX20582698 592D3131");
    n.Short(0x1001, 0x84).Short(0x1002, 0x301).Short(0x1010, 0x8120).Short(0x1031, 0x200);
    n.Short(0x1234, 1).Short(0x1002, 0x777);  // an unnamed tag; an unlisted value
    // The longer values, signed and unsigned.
    n.OutOfLine(0x100a, fixture::kSLong, 2, Longs(kLE, {40, -20}));
    n.OutOfLine(0x1011, fixture::kSRational, 1, Longs(kLE, {-3, 3}));
    n.Field(0x1023, fixture::kShort, 2, {12, 0, 34, 0});
    n.Long(0x1040, 0xFFFFFFF0).OutOfLine(0x1404, fixture::kRational, 1, Longs(kLE, {1800, 100}));
    n.OutOfLine(0x1422, fixture::kShort, 3, {2, 1, 2, 0, 0, 0}).Short(0x1438, 0x8123);
    EXPECT_EQ(RowTexts(DispatchNote(kBE, "FUJIFILM", n.Build(0))),
              (Texts{"Version=0130", "Serial Number=FPX20582698 592D3131", "Sharpness=+1 (medium hard)",
                     "White Balance=Day white fluorescent", "Flash Mode=TTL",
                     "Picture Mode=Shutter speed priority AE", "White Balance=1911",
                     "White Balance Fine Tune=Red +40, Blue -20", "Flash Exposure Compensation=-1",
                     "Focus Pixel=12 34", "Shadow Tone=+1 (medium hard)", "Min Focal Length=18",
                     "Image Stabilization=IBIS/OIS + DIS; On (mode 2, shooting only); 0", "Image Count=291"}));
}

}  // namespace
