// Olympus / OM System notes in the header forms and byte orders the corpus
// files lack, with the equipment and camera-settings sub-directories and
// what hostile sub-directory entries do; Fujifilm's little-endian note in a
// big-endian file.
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "note_harness.h"

namespace {

using namespace notetest;

constexpr uint16_t kIfd = 13;

const std::string kOldForm("OLYMP\0\x01\0", 8);
const std::string kFullNameII("OLYMPUS\0II\x03\0", 12);
const std::string kFullNameMM("OLYMPUS\0MM\x03\0", 12);
const std::string kOmSystemII("OM SYSTEM\0\0\0II\x04\0", 16);

Bytes Words(ByteOrder o, size_t size, std::initializer_list<uint32_t> values) {
    Bytes out;
    for (uint32_t v : values) size == 2 ? fixture::PutU16(out, static_cast<uint16_t>(v), o) : fixture::PutU32(out, v, o);
    return out;
}

using Fill = std::function<void(MakerNoteBuilder&)>;

void MainEntries(MakerNoteBuilder& n) {
    const ByteOrder o = n.order();
    Bytes id = fixture::ToBytes("OLYMPUS DIGITAL CAMERA");
    id.resize(32, 0);
    n.OutOfLine(0x0200, fixture::kLong, 3, Words(o, 4, {3, 5, 2}));
    n.Short(0x0201, 2).Short(0x0202, 2);
    n.OutOfLine(0x0204, fixture::kRational, 1, Words(o, 4, {150, 100}));
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
    n.Field(0x0301, fixture::kShort, 2, Words(o, 2, {2, 0x24}));
    n.Short(0x0500, 18);
    n.OutOfLine(0x0529, fixture::kShort, 4, Words(o, 2, {2, 0, 0, 0}));
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
        n.Field(i == 0 ? 0x2010 : 0x2020, subType, count, Words(o, 4, {static_cast<uint32_t>(origin + kAt[i])}));
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
        n.Header(kOldForm).Short(0x0202, 0).Ascii(0x0208, "x").Field(0x2010, c.type, c.count, Words(kLE, 4, {c.offset}));
        Bytes note = n.Build(fixture::kNoteOffset);
        note.resize(kSound - fixture::kNoteOffset, 0);
        fixture::Append(note, {1, 0, 0x01, 0x01, 2, 0, 3, 0, 0, 0, 'a', 'b', 0, 0, 0, 0, 0, 0});
        fixture::Append(note, {0xFF, 0xFF, 0x01, 0x01, 2, 0});
        EXPECT_EQ(Olympus(kLE, note), c.rows) << c.what;
    }
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
    n.OutOfLine(0x100a, fixture::kSLong, 2, Words(kLE, 4, {40, static_cast<uint32_t>(-20)}));
    n.OutOfLine(0x1011, fixture::kSRational, 1, Words(kLE, 4, {static_cast<uint32_t>(-3), 3}));
    n.Field(0x1023, fixture::kShort, 2, {12, 0, 34, 0});
    n.Long(0x1040, 0xFFFFFFF0).OutOfLine(0x1404, fixture::kRational, 1, Words(kLE, 4, {1800, 100}));
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
