// Minolta notes (plain tags and the big-endian camera-settings array) and
// Pentax / Ricoh notes (both header forms, in the EXIF byte order), with
// what hostile arrays, absurd entry counts and a full table do to them.
#include <cstdint>
#include <string>
#include <vector>

#include "makernotes/makernote_decoders.h"
#include "note_harness.h"

namespace {

using namespace notetest;

template <typename Fill>
Decoded Note(ByteOrder order, const std::string& make, const std::string& header, Fill fill, uint32_t filler = 0) {
    MakerNoteBuilder note(order);
    note.Header(header);
    fill(note);
    return DispatchNote(order, make, note.Build(fixture::kNoteOffset), filler);
}

// ------------------------------------------------------------ Pentax

void PentaxEntries(MakerNoteBuilder& n) {
    const ByteOrder o = n.order();
    fixture::Bytes twoShorts;
    fixture::PutU16(twoShorts, 1, o);
    fixture::PutU16(twoShorts, 63, o);
    n.Short(1, 0);  // never named
    n.Short(8, 1).Short(9, 4).Short(11, 9).Field(12, fixture::kShort, 2, twoShorts).Short(13, 16).Short(14, 6);
    n.Short(20, 6).Short(25, 10).Short(31, 3).Short(32, 4).Short(33, 0).Short(34, 1).Short(35, 11);
    n.Short(36, 12).Field(51, fixture::kByte, 3, {5, 0, 1}).Field(63, fixture::kByte, 4, {0x03, 0x11, 0, 0});
}

const Texts kPentaxRows{"Quality=Better", "Image Size=1600x1200", "Picture Mode=Night Scene",
                        "Flash Mode=Off, not fired; internal", "Focus Mode=AF-S (focus priority)",
                        "AF Point=Center", "ISO=100", "White Balance=Cloudy", "Saturation=Medium Low",
                        "Contrast=Medium High", "Sharpness=Soft", "World Time Location=Destination",
                        "Home Town City=Toronto", "Destination City=New York",
                        "Picture Mode=Aperture Priority, 1/3 EV steps", "Lens Type=smc PENTAX-FA SOFT 85mm F2.8"};

TEST(PentaxNote, BothHeaderFormsInBothOrdersReadInTheExifOrder) {
    // The mark in the header is ignored: a note written in the EXIF order
    // reads the same whichever mark it carries.
    for (ByteOrder order : {kLE, kBE}) {
        for (const std::string& header : {std::string("AOC\0MM", 6), std::string("AOC\0II", 6),
                                          std::string("PENTAX \0MM", 10), std::string("PENTAX \0II", 10)}) {
            SCOPED_TRACE(header.substr(0, 3) + (order == kBE ? " in BE" : " in LE"));
            EXPECT_EQ(RowTexts(Note(order, "PENTAX Corporation", header, PentaxEntries)), kPentaxRows);
        }
    }
}

TEST(PentaxNote, IsoIndexRangesPairedSizesAndUnlistedValues) {
    const Decoded d = Note(kBE, "PENTAX", std::string("AOC\0MM", 6), [](MakerNoteBuilder& n) {
        for (uint16_t iso : {3, 45, 46, 258, 286, 287, 3200, 65535}) n.Short(20, iso);
        n.Field(9, fixture::kShort, 2, {0, 0x21, 0, 2}).Field(9, fixture::kShort, 2, {0, 0x21, 0, 7});
        n.Short(9, 999).Short(12, 2).Short(35, 75).Field(51, fixture::kByte, 2, {0x30, 0x01, 0, 0});
    });
    EXPECT_EQ(RowTexts(d), (Texts{"ISO=50", "ISO=819200", "ISO=46", "ISO=50", "ISO=819200", "ISO=287",
                                  "ISO=3200", "ISO=Auto", "Image Size=1152x768", "Image Size=33 7",
                                  "Image Size=999", "Flash Mode=On, not fired", "Home Town City=75",
                                  "Picture Mode=48 1"}));
}

TEST(PentaxNote, RicohFormsAndAbsurdCountsGiveNoRows) {
    const auto ricohIfd = [](const std::string& header) {
        MakerNoteBuilder note(kBE);
        note.Header(header).Short(8, 1).Short(20, 6);  // Pentax tags in a Ricoh directory at note + 8
        return RowTexts(DispatchNote(kBE, "RICOH", note.Build(fixture::kNoteOffset)));
    };
    EXPECT_EQ(ricohIfd(std::string("RICOH\0\0\0", 8)), Texts{});
    EXPECT_EQ(ricohIfd(std::string("Ricoh\xCF\0\0", 8)), Texts{});
    // The oldest Ricoh notes are text; read as a count it is 8224 or more.
    EXPECT_EQ(RowTexts(DispatchNote(kLE, "RICOH", fixture::ToBytes("Rv0103;Rg1C;Bg1A;"))), Texts{});
    EXPECT_EQ(RowTexts(Note(kBE, "PENTAX", std::string("AOC\0MM", 6),
                            [](MakerNoteBuilder& n) { n.Count(0xFFFF).Short(8, 1); })),
              Texts{});
}

TEST(PentaxNote, DirectoryThatWouldReachTheRowLimitIsSkipped) {
    // 16 named entries + 1 unnamed = 17; filler + Make = 239 reaches 256, 238 does not.
    EXPECT_EQ(RowTexts(Note(kLE, "PENTAX", std::string("AOC\0II", 6), PentaxEntries, 238)), Texts{});
    EXPECT_EQ(RowTexts(Note(kLE, "PENTAX", std::string("AOC\0II", 6), PentaxEntries, 237)), kPentaxRows);
}

// ------------------------------------------------------------ Minolta

// The camera settings as the camera writes them: big-endian LONGs.
fixture::Bytes Settings(size_t elements) {
    std::vector<uint32_t> v(elements, 0);
    const std::pair<size_t, uint32_t> set[] = {
        {1, 3},   {2, 1},     {3, 0x1810000}, {4, 3},  {5, 2},  {6, 1},  {7, 2},
        {8, 48},  {9, 56},    {10, 48},       {11, 1}, {12, 2}, {13, 9}, {18, 10590},
        {19, 2000}, {20, 1},  {21, 0x07D20601}, {22, 0x000C251B}, {23, 36}, {33, 1},
        {36, 4},  {40, 2},    {48, 1},        {49, 1},
    };
    for (const auto& s : set)
        if (s.first < elements) v[s.first] = s.second;
    fixture::Bytes out;
    for (uint32_t x : v) fixture::PutU32(out, x, kBE);
    return out;
}

const Texts kSettingRows{"Exposure Mode=Manual", "Flash Mode=Red-eye reduction", "White Balance=Daylight +1",
                         "Image Size=640x480", "Quality=Fine", "Drive Mode=Continuous", "Metering Mode=Spot",
                         "ISO=100", "Exposure Time=1/2", "F Number=F 5.7", "Macro Mode=On", "Digital Zoom=2x",
                         "Exposure Compensation=+1.0 EV", "Focal Length=41.4 mm", "Focus Distance=2.00 m",
                         "Flash Fired=Yes", "Date=2002:06:01", "Time=12:37:27", "Max Aperture=F 3.4",
                         "Sharpness=Normal", "ISO Setting=Auto", "Color Mode=Vivid color", "Focus Mode=MF",
                         "Focus Area=Spot focus"};

Decoded Minolta(ByteOrder order, const fixture::Bytes& settings, uint16_t tag = 3, uint32_t filler = 0) {
    return Note(order, "Minolta Co., Ltd.", "", [&](MakerNoteBuilder& n) {
        n.Field(0, fixture::kUndefined, 4, fixture::ToBytes("MLT0"));
        n.OutOfLine(tag, fixture::kUndefined, static_cast<uint32_t>(settings.size()), settings);
        n.Long(0x100, 1).Long(0x101, 9).Long(0x102, 2).Long(0x40, 1234);  // 0040 is never named
    }, filler);
}

TEST(MinoltaNote, PlainTagsThenSettingsBigEndianWhateverTheExifOrder) {
    Texts expected{"Version=MLT0", "Scene Mode=Portrait", "Color Mode=Natural", "Image Quality=Fine"};
    expected.insert(expected.end(), kSettingRows.begin(), kSettingRows.end());
    EXPECT_EQ(RowTexts(Minolta(kBE, Settings(56))), expected);
    EXPECT_EQ(RowTexts(Minolta(kLE, Settings(56))), expected);
    EXPECT_EQ(RowTexts(Minolta(kBE, Settings(56), 1)), expected);  // the older cameras' tag
}

TEST(MinoltaNote, ShortArrayGivesTheSettingsItHoldsAndALongOneAllOfThem) {
    const Texts shortRows = RowTexts(Minolta(kLE, Settings(12)));  // elements 0 to 11
    const Texts expected{"Version=MLT0", "Scene Mode=Portrait", "Color Mode=Natural", "Image Quality=Fine",
                         "Exposure Mode=Manual", "Flash Mode=Red-eye reduction", "White Balance=Daylight +1",
                         "Image Size=640x480", "Quality=Fine", "Drive Mode=Continuous", "Metering Mode=Spot",
                         "ISO=100", "Exposure Time=1/2", "F Number=F 5.7", "Macro Mode=On"};
    EXPECT_EQ(shortRows, expected);
    // 300 elements: more than are read, and every setting is among those read.
    const Texts longRows = RowTexts(Minolta(kBE, Settings(300)));
    ASSERT_EQ(longRows.size(), 4 + kSettingRows.size());
    EXPECT_EQ(Texts(longRows.begin() + 4, longRows.end()), kSettingRows);
}

TEST(MinoltaNote, WhiteBalancePresetsAndTheirFineTuning) {
    Texts seen;
    for (uint32_t wb : {0u, 7u, 0x800000u, 0x1800000u - 0x20000u, 0x6830000u, 0x123u, 0xA800000u}) {
        fixture::Bytes s = Settings(4);
        s[12] = static_cast<uint8_t>(wb >> 24), s[13] = static_cast<uint8_t>(wb >> 16);
        s[14] = static_cast<uint8_t>(wb >> 8), s[15] = static_cast<uint8_t>(wb);
        seen.push_back(RowTexts(Minolta(kBE, s))[6]);
    }
    EXPECT_EQ(seen, (Texts{"White Balance=Auto", "White Balance=Fluorescent", "White Balance=Auto",
                           "White Balance=Daylight -2", "White Balance=Shade +3", "White Balance=291",
                           "White Balance=176160768"}));
}

TEST(MinoltaNote, HostileArraysGiveNoSettingRows) {
    const Decoded d = Note(kBE, "MINOLTA", "", [](MakerNoteBuilder& n) {
        n.Field(3, fixture::kUndefined, 224, {0x00, 0x01, 0x00, 0x00});   // past the end of the file
        n.Field(3, fixture::kUndefined, 224, {0xFF, 0xFF, 0xFF, 0xF0});   // wraps past 4 GB
        n.Field(3, fixture::kLong, 56, {0x00, 0x00, 0x00, 0x08});         // not UNDEFINED
        n.Field(3, fixture::kUndefined, 4, {0, 0, 0, 3});                 // element 0 only
        n.Long(0x102, 4);
    });
    EXPECT_EQ(RowTexts(d), Texts{"Image Quality=Economy"});
}

TEST(MinoltaNote, SettingRowsStopAtTheRowLimit) {
    // 244 filler + Make = 245 rows, + 6 entries stays below 256: 4 plain rows,
    // then 7 of the settings.
    const Decoded d = Minolta(kBE, Settings(56), 3, 244);
    EXPECT_EQ(d.count, 256u);
    EXPECT_EQ(RowTexts(d).back(), "Metering Mode=Spot");
    // 250 + 6 reaches 256: neither pass adds anything.
    EXPECT_EQ(RowTexts(Minolta(kBE, Settings(56), 3, 249)), Texts{});
}

TEST(MinoltaNote, TagsAscendOnceEach) {
    const makernotes::MakerTable& t = makernotes::MinoltaTags();
    for (size_t i = 1; i < t.size; ++i) EXPECT_LT(t.tags[i - 1].tag, t.tags[i].tag) << t.tags[i].name;
}

}  // namespace
