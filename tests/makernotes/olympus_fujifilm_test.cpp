// Olympus / OM System notes in their three header forms, with the equipment
// and camera-settings sub-directories and what hostile sub-directory
// offsets do to them; Fujifilm's little-endian note in either EXIF order.
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

// An Olympus note: the main entries, then (when given) the equipment and
// camera-settings directories appended after the note, their entries of
// type subType pointing at them. origin: the note's offset from the base
// its offsets count from (the TIFF header, or the note itself).
Bytes OlympusNote(ByteOrder o, const std::string& header, int64_t origin, const Fill& main,
                  uint16_t subType = kIfd, const Fill& equipment = nullptr, const Fill& settings = nullptr) {
    std::vector<Bytes> subs;
    std::vector<uint32_t> at;
    auto build = [&] {
        MakerNoteBuilder n(o);
        n.Header(header);
        main(n);
        for (size_t i = 0; i < at.size(); ++i) {
            const uint32_t count = subType == fixture::kUndefined ? static_cast<uint32_t>(subs[i].size()) : 1;
            n.Field(i == 0 ? 0x2010 : 0x2020, subType, count, Words(o, 4, {at[i]}));
        }
        return n.Build(origin);
    };
    for (const Fill& fill : {equipment, settings}) {
        if (!fill) break;
        subs.emplace_back();
        at.push_back(0);
    }
    size_t end = build().size();
    for (size_t i = 0; i < subs.size(); ++i) {
        at[i] = static_cast<uint32_t>(origin + static_cast<int64_t>(end));
        MakerNoteBuilder sub(o);
        (i == 0 ? equipment : settings)(sub);
        subs[i] = sub.Build(at[i]);
        end += subs[i].size();
    }
    Bytes note = build();
    for (const Bytes& s : subs) fixture::Append(note, s);
    return note;
}

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
    "Serial Number=143008611", "Body Firmware Version=1.300", "Lens Type=0 05 10",
    "Lens Serial Number=050105886", "Lens Model=OLYMPUS M.12-40mm F2.8",
    "Focus Mode=Continuous AF; C-AF, Face detect", "White Balance=5300K (fine weather)", "Art Filter=Pop art",
};

Texts Olympus(ByteOrder fileOrder, const Bytes& note, uint32_t filler = 0) {
    return RowTexts(DispatchNote(fileOrder, "", note, filler));
}

TEST(OlympusNote, OlderFormOffsetsFromTheExifHeaderInEitherOrder) {
    // Sub-directories as UNDEFINED blocks, as the E-1 writes them.
    for (ByteOrder o : {kLE, kBE})
        EXPECT_EQ(Olympus(o, OlympusNote(o, kOldForm, fixture::kNoteOffset, MainEntries, fixture::kUndefined,
                                         EquipmentEntries, SettingsEntries)),
                  kAllRows);
}

TEST(OlympusNote, NewerFormsOffsetFromTheNoteAndTheirIiMarkSwitchesToLittleEndian) {
    for (const std::string& header : {kFullNameII, kOmSystemII}) {
        const Bytes note = OlympusNote(kLE, header, 0, MainEntries, kIfd, EquipmentEntries, SettingsEntries);
        EXPECT_EQ(Olympus(kBE, note), kAllRows) << header;
        EXPECT_EQ(Olympus(kLE, note), kAllRows) << header;
    }
    // "MM" never switches: the note is read in the EXIF order, either one.
    EXPECT_EQ(Olympus(kLE, OlympusNote(kLE, kFullNameMM, 0, MainEntries, fixture::kLong, EquipmentEntries)),
              Texts(kAllRows.begin(), kAllRows.begin() + 11));
    EXPECT_EQ(Olympus(kBE, OlympusNote(kBE, kFullNameMM, 0, MainEntries)), Texts(kAllRows.begin(), kAllRows.begin() + 6));
}

TEST(OlympusNote, QualityCountsFromZeroOnlyForSxTypesOtherThanSx151AndForD4322) {
    const struct {
        const char* type;
        const char* quality;
    } cases[] = {{"SX558", "HQ (normal)"}, {"SX151", "SQ (low)"}, {"D4322", "HQ (normal)"},
                 {"C2000Z", "SQ (low)"}, {nullptr, "SQ (low)"}};
    for (const auto& c : cases) {
        const Bytes note = OlympusNote(kLE, kOldForm, fixture::kNoteOffset, [&](MakerNoteBuilder& n) {
            n.Short(0x0201, 1);
            if (c.type) n.Ascii(0x0207, c.type);
        });
        EXPECT_EQ(Olympus(kLE, note).front(), std::string("Quality=") + c.quality) << (c.type ? c.type : "no type");
    }
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
        n.Header(kOldForm).Short(0x0202, 0).Ascii(0x0203, "x").Field(0x2010, c.type, c.count, Words(kLE, 4, {c.offset}));
        Bytes note = n.Build(fixture::kNoteOffset);
        note.resize(kSound - fixture::kNoteOffset, 0);
        fixture::Append(note, {1, 0, 0x01, 0x01, 2, 0, 3, 0, 0, 0, 'a', 'b', 0, 0, 0, 0, 0, 0});
        fixture::Append(note, {0xFF, 0xFF, 0x01, 0x01, 2, 0});
        EXPECT_EQ(Olympus(kLE, note), c.rows) << c.what;
    }
}

TEST(OlympusNote, SubDirectoryThatWouldReachTheRowLimitIsSkipped) {
    // Main: 2 entries, 1 named; equipment: 5 entries. With 249 rows before,
    // 250 + 5 stays below 256; with 250, it reaches it; with 254 the main
    // directory is skipped too.
    const Bytes note = OlympusNote(kLE, kOldForm, fixture::kNoteOffset, [](MakerNoteBuilder& n) { n.Short(0x0202, 0); },
                                   kIfd, EquipmentEntries);
    EXPECT_EQ(Olympus(kLE, note, 249).size(), 6u);
    EXPECT_EQ(Olympus(kLE, note, 250), Texts{"Macro=Off"});
    EXPECT_EQ(Olympus(kLE, note, 254), Texts{});
}

// ------------------------------------------------------------ Fujifilm

TEST(FujifilmNote, LittleEndianDirectoryInEitherExifOrderOffsetsFromTheNote) {
    MakerNoteBuilder n(kLE);
    n.Header(std::string("FUJIFILM\x0C\0\0\0", 12));
    n.Field(0x0000, fixture::kUndefined, 4, fixture::ToBytes("0130")).Ascii(0x0010, "FPX20582698 592D3131");
    n.Ascii(0x1000, "FINE   ").Short(0x1001, 0x84).Short(0x1002, 0x301).Short(0x1003, 0x300).Short(0x1004, 0x180);
    n.Short(0x1010, 0x8120).Short(0x1020, 1).Short(0x1021, 1).Short(0x1030, 1).Short(0x1031, 0x200);
    n.Short(0x1300, 1).Short(0x1301, 1).Short(0x1302, 1).Short(0x1400, 3).Short(0x1401, 0x120).Short(0x1402, 0x201);
    n.Short(0x1234, 1).Short(0x1002, 0x777);  // an unnamed tag; an unlisted value
    const Texts expected{
        "Version=0130", "Serial Number=FPX20582698 592D3131", "Quality=FINE", "Sharpness=+1 (medium hard)",
        "White Balance=Day white fluorescent", "Color Saturation=None (B&W)", "Tone=Medium low", "Flash Mode=TTL",
        "Macro=On", "Focus Mode=Manual", "Slow Sync=On", "Picture Mode=Shutter speed priority AE",
        "Blur Warning=Blur warning", "Focus Warning=Out of focus", "Exposure Warning=Bad exposure",
        "Dynamic Range=Wide", "Film Mode=F1b/Studio portrait, smooth skin (Astia)",
        "Dynamic Range Setting=Wide 2 (400%)", "White Balance=1911",
    };
    const Bytes note = n.Build(0);
    EXPECT_EQ(RowTexts(DispatchNote(kBE, "FUJIFILM", note)), expected);
    EXPECT_EQ(RowTexts(DispatchNote(kLE, "FUJIFILM", note)), expected);
}

}  // namespace
