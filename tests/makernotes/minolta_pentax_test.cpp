// Minolta notes (plain tags, the big-endian camera-settings array and the
// Dynax 7D and 5D settings, big-endian SHORTs in files of either order) and
// Pentax / Ricoh notes (both header forms, in the EXIF byte order, and their
// setting blocks, read in the note's order or fixed big-endian where the
// camera writes them so) beyond the corpus files: little-endian files, the
// other header form, layouts no corpus file carries, the rarer branches of
// the value texts, and what hostile arrays, absurd entry counts and a full
// table do.
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "note_harness.h"

namespace {

using namespace notetest;

// ------------------------------------------------------------ Pentax

const std::string kAocMM("AOC\0MM", 6);

TEST(PentaxNote, BothHeaderFormsInBothOrdersReadInTheExifOrder) {
    // The mark in the header is ignored: a note written in the EXIF order
    // reads the same whichever mark it carries.
    const auto entries = [](MakerNoteBuilder& n) {
        n.Short(17, 0).Short(8, 1).Field(12, fixture::kShort, 2, Shorts(n.order(), {1, 63}));
        n.Field(51, fixture::kByte, 3, {5, 0, 1});
    };
    for (ByteOrder order : {kLE, kBE}) {
        for (const std::string& header : {kAocMM, std::string("AOC\0II", 6), std::string("PENTAX \0MM", 10),
                                          std::string("PENTAX \0II", 10)}) {
            SCOPED_TRACE(header.substr(0, 3) + (order == kBE ? " in BE" : " in LE"));
            EXPECT_EQ(RowTexts(Note(order, "PENTAX Corporation", header, entries)),
                      (Texts{"Quality=Better", "Flash Mode=Off, not fired; internal",
                             "Picture Mode=Aperture Priority, 1/3 EV steps"}));
        }
    }
}

TEST(PentaxNote, IsoIndexRangesPairedSizesUnlistedValuesAndLensKeys) {
    const Decoded d = Note(kBE, "PENTAX", kAocMM, [](MakerNoteBuilder& n) {
        for (uint16_t iso : {3, 45, 46, 258, 286, 287, 65535}) n.Short(20, iso);
        n.Field(9, fixture::kShort, 2, {0, 0x21, 0, 2}).Field(9, fixture::kShort, 2, {0, 0x21, 0, 7});
        n.Short(9, 999).Short(12, 2).Field(51, fixture::kByte, 2, {0x30, 0x01, 0, 0});
        // A lens number of 0 is asked for as 32; (8, 242) lies beyond the rows a lookup scans.
        n.Field(63, fixture::kByte, 4, {0x03, 0x11, 0, 0}).Field(63, fixture::kByte, 4, {0x03, 0x00, 0, 0});
        n.Field(63, fixture::kByte, 4, {0x08, 0xF2, 0, 0});
    });
    EXPECT_EQ(RowTexts(d), (Texts{"ISO=50", "ISO=819200", "ISO=46", "ISO=50", "ISO=819200", "ISO=287", "ISO=Auto",
                                  "Image Size=1152x768", "Image Size=33 7", "Image Size=999",
                                  "Flash Mode=On, not fired", "Picture Mode=48 1",
                                  "Lens Type=smc PENTAX-FA SOFT 85mm F2.8", "Lens Type=smc PENTAX-F 50mm F1.4",
                                  "Lens Type=unknown (8, 242; 32, 0)"}));
    // Little-endian, the lens bytes stand low in the word: (32, 32) fails, then (3, 17).
    EXPECT_EQ(RowTexts(Note(kLE, "PENTAX", kAocMM, [](MakerNoteBuilder& n) {
                  n.Field(63, fixture::kByte, 4, {0x03, 0x11, 0, 0}).Field(63, fixture::kByte, 4, {0x08, 0xF2, 0, 0});
              })),
              (Texts{"Lens Type=smc PENTAX-FA SOFT 85mm F2.8", "Lens Type=unknown (32, 32; 242, 8)"}));
}

TEST(PentaxNote, AbsurdCountsGiveNoRows) {
    // (Ricoh's own note forms have a decoder of their own: sanyo_ricoh_test.cpp.)
    EXPECT_EQ(RowTexts(Note(kBE, "PENTAX", kAocMM, [](MakerNoteBuilder& n) { n.Count(0xFFFF).Short(8, 1); })),
              Texts{});
}

// A K-5 note with one block of each kind (and two that are not read).
void PentaxBlocks(MakerNoteBuilder& n) {
    n.Long(5, 0x12e76);
    n.Field(6, fixture::kUndefined, 4, {0x07, 0xD8, 0x03, 0x02}).Field(7, fixture::kUndefined, 3, {12, 1, 23, 0});
    n.Short(0x50, 0).Short(0x50, 53190 - 5200);                           // none recorded, then 5200 K
    n.Field(0x5c, fixture::kByte, 2, {1, 1, 0, 0});                       // the two-byte form: not read
    n.Field(0x5d, fixture::kUndefined, 4, {0xF4, 0x26, 0xED, 0x8D});      // scrambled with date and time
    n.Field(0x60, fixture::kUndefined, 4, {2, 0, 40, 60}).Field(0x76, fixture::kByte, 2, {10, 2, 0, 0});
    n.OutOfLine(0x206, fixture::kUndefined, 24, Bytes(24, 0x40));         // a longer layout: not read
    n.OutOfLine(0x215, fixture::kLong, 5, Longs(n.order(), {0x12e76, 20101231, 8, 1, 4242}));
    n.Field(0x216, fixture::kUndefined, 4, {0x02, 0x54, 0, 0});
    n.OutOfLine(0x21f, fixture::kUndefined, 12, {0, 0, 0, 0, 0xFF, 0xFE, 9, 3, 0, 0, 0, 19});
}

TEST(PentaxBlocks, ReadInTheNotesOrderOrBigEndianAsTheCameraWritesThem) {
    const Texts want{"Pentax Model ID=K-5",
                     "Date=2008:03:02",
                     "Time=12:01:23",
                     "Face Detect=On (10 faces max); 2 faces detected",
                     "Color Temperature=5200",
                     "Shutter Count=1648",
                     "Faces Detected=2",
                     "Face Position=40 60",
                     "Pentax Model ID=K-5",
                     "Manufacture Date=2010:12:31",
                     "Production Code=8.1 (camera has been serviced)",
                     "Internal Serial Number=4242",
                     "Power Source=Body Battery",
                     "Body Battery State=Full",
                     "AF Predictor=-2",
                     "AF Defocus=9",
                     "AF Integration Time=6 ms",
                     "AF Points In Focus=Center (vertical)"};
    for (ByteOrder order : {kLE, kBE}) {
        SCOPED_TRACE(order == kBE ? "BE" : "LE");
        EXPECT_EQ(RowTexts(Note(order, "PENTAX", kAocMM, PentaxBlocks)), want);
    }
    // 241 filler + Make + 13 entries stays below 256; the blocks stop at 256.
    const Decoded d = Note(kBE, "PENTAX", kAocMM, PentaxBlocks, 241);
    ASSERT_EQ(d.count, 256u);
    EXPECT_EQ(RowTexts(d).back(), "Body Battery State=Full");
}

TEST(PentaxBlocks, AnIsoCodeFarBeyondAnyCamerasNoLongerOverflows) {
    // Found by fuzzing: the speed of the highest code overflowed an int.
    Bytes ae(16, 64);
    ae[2] = 255;
    const auto note = [&](MakerNoteBuilder& n) { n.OutOfLine(0x206, fixture::kUndefined, 16, ae); };
    EXPECT_EQ(RowTexts(Note(kLE, "PENTAX", kAocMM, note)).at(2), "AE ISO=24615639849");
}

// ------------------------------------------------------------ Minolta

// The camera settings as the camera writes them: big-endian LONGs.
fixture::Bytes Settings(size_t elements) {
    std::vector<uint32_t> v(elements, 0);
    const std::pair<size_t, uint32_t> set[] = {
        {1, 3},   {2, 1},     {3, 0x1810000}, {4, 3},  {5, 2},  {6, 1},  {7, 2},
        {8, 48},  {9, 40},    {10, 48},       {11, 1}, {12, 2}, {13, 9}, {18, 10590},
        {19, 2000}, {20, 1},  {21, 0x07D20601}, {22, 0x000C251B}, {23, 36}, {33, 1},
        {36, 4},  {40, 2},    {48, 1},        {49, 1},     {28, 384}, {31, 5}, {35, 4},
        {37, 4},  {44, 52},   {47, 9},        {63, 1},
    };
    for (const auto& s : set)
        if (s.first < elements) v[s.first] = s.second;
    fixture::Bytes out;
    for (uint32_t x : v) fixture::PutU32(out, x, kBE);
    return out;
}

// The plain rows, then the setting rows; elements 0 to 11 give the first 11,
// and only an array of 64 elements reaches the last.
const Texts kMinoltaRows{"Version=MLT0", "Scene Mode=Portrait", "Color Mode=Natural", "Image Quality=Fine",
                         "Exposure Mode=Manual", "Flash Mode=Red-eye reduction", "White Balance=Daylight +1",
                         "Image Size=640x480", "Quality=Fine", "Drive Mode=Continuous", "Metering Mode=Spot",
                         "ISO=100", "Exposure Time=2.0", "F Number=F 5.7", "Macro Mode=On", "Digital Zoom=2x",
                         "Exposure Compensation=+1.0 EV", "Bracket Step=1/3 EV", "Interval Length=0",
                         "Interval Number=0", "Focal Length=41.4 mm", "Focus Distance=2.00 m", "Flash Fired=Yes",
                         "Date=2002:06:01", "Time=12:37:27", "Max Aperture=F 3.4", "File Number Memory=Off",
                         "Last File Number=0", "Color Balance Red=1.5", "Color Balance Green=0",
                         "Color Balance Blue=0", "Saturation=+2", "Contrast=-3", "Sharpness=Normal",
                         "Subject Program=None", "Flash Exposure Compensation=-2/3", "ISO Setting=Auto",
                         "Model=DiMAGE 7i", "Interval Mode=Still Image", "Folder Name=Standard Form",
                         "Color Mode=Vivid color", "Color Filter=-3", "BW Filter=0", "Internal Flash=No",
                         "Brightness=0.5", "Spot Focus Point X=0", "Spot Focus Point Y=0",
                         "Wide Focus Zone=Unknown (9)", "Focus Mode=MF", "Focus Area=Spot Focus",
                         "DEC Position=Exposure", "Flash Metering=Pre-flash TTL"};
const Texts kMinoltaRowsOf56(kMinoltaRows.begin(), kMinoltaRows.end() - 1);

Decoded Minolta(ByteOrder order, const fixture::Bytes& settings, uint16_t tag = 3, uint32_t filler = 0) {
    return Note(order, "Minolta Co., Ltd.", "", [&](MakerNoteBuilder& n) {
        n.Field(0, fixture::kUndefined, 4, fixture::ToBytes("MLT0"));
        n.OutOfLine(tag, fixture::kUndefined, static_cast<uint32_t>(settings.size()), settings);
        n.Long(0x100, 1).Long(0x101, 9).Long(0x102, 2).Long(0x50, 1234);  // 0050 is never named
    }, filler);
}

TEST(MinoltaNote, SettingsAreBigEndianWhateverTheExifOrderAndMayBeShortOrLong) {
    EXPECT_EQ(RowTexts(Minolta(kLE, Settings(56))), kMinoltaRowsOf56);
    EXPECT_EQ(RowTexts(Minolta(kBE, Settings(56), 1)), kMinoltaRowsOf56);  // the older cameras' tag
    // Elements 0 to 11 only; 300 elements, more than are read (64).
    EXPECT_EQ(RowTexts(Minolta(kLE, Settings(12))), Texts(kMinoltaRows.begin(), kMinoltaRows.begin() + 15));
    EXPECT_EQ(RowTexts(Minolta(kBE, Settings(300))), kMinoltaRows);
}

TEST(MinoltaNote, WhiteBalancePresetsAndTheirFineTuning) {
    Texts seen;
    for (uint32_t wb : {0x1800000u - 0x20000u, 0x6830000u, 0x123u, 0xA800000u}) {
        fixture::Bytes s = Settings(4);
        s[12] = static_cast<uint8_t>(wb >> 24), s[13] = static_cast<uint8_t>(wb >> 16);
        s[14] = static_cast<uint8_t>(wb >> 8), s[15] = static_cast<uint8_t>(wb);
        seen.push_back(RowTexts(Minolta(kBE, s)).at(6));
    }
    EXPECT_EQ(seen, (Texts{"White Balance=Daylight -2", "White Balance=Shade +3", "White Balance=291",
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
    ASSERT_EQ(d.count, 256u);
    EXPECT_EQ(RowTexts(d).back(), "Metering Mode=Spot");
    // 250 + 6 reaches 256: neither pass adds anything.
    EXPECT_EQ(RowTexts(Minolta(kBE, Settings(56), 3, 249)), Texts{});
}

// Big-endian SHORTs, `size` of them, with the given ones set.
Bytes Shorts(size_t size, std::initializer_list<std::pair<size_t, uint16_t>> set) {
    Bytes out(size * 2, 0);
    for (const auto& [index, value] : set) {
        out[2 * index] = static_cast<uint8_t>(value >> 8);
        out[2 * index + 1] = static_cast<uint8_t>(value);
    }
    return out;
}

Decoded DslrNote(ByteOrder order, uint16_t tag, const Bytes& settings) {
    MakerNoteBuilder note(order);
    note.OutOfLine(tag, fixture::kUndefined, static_cast<uint32_t>(settings.size()), settings);
    return DispatchNote(order, "KONICA MINOLTA", note.Build(fixture::kNoteOffset));
}

TEST(MinoltaDslrSettings, The7dAnd5dLayoutsAreBigEndianInFilesOfEitherOrder) {
    const Bytes settings7d = Shorts(0x1f, {{0x00, 1}, {0x03, 34}, {0x04, 0x100}, {0x0e, 4}, {0x10, 0x11},
                                          {0x15, 1}, {0x16, 2}, {0x1c, 6}, {0x1e, static_cast<uint16_t>(-16)}});
    const Bytes settings5d = Shorts(0x37, {{0x0a, 3}, {0x0c, 2}, {0x0d, 16}, {0x0e, 6}, {0x1f, 1}, {0x25, 2},
                                          {0x26, 8}, {0x2f, 5}, {0x30, 12}, {0x31, 8}, {0x35, 40}, {0x36, 40}});
    for (ByteOrder order : {kLE, kBE}) {
        SCOPED_TRACE(order == kBE ? "BE" : "LE");
        EXPECT_EQ(RowTexts(DslrNote(order, 4, settings7d)),
                  (Texts{"Exposure Mode=Aperture Priority", "Image Size=Large", "Quality=RAW+JPEG",
                         "White Balance=Kelvin", "Focus Mode=AF-A", "AF Points=Center, Bottom-right", "Flash=On",
                         "Flash Mode=Rear flash sync", "ISO Setting=1600", "Exposure Compensation=-2/3"}));
        EXPECT_EQ(RowTexts(DslrNote(order, 0x114, settings5d)),
                  (Texts{"Exposure Mode=Manual", "Image Size=Small", "Quality=Fine", "White Balance=Flash",
                         "Flash=Fired", "Flash Mode=Normal", "Metering Mode=Spot",
                         "ISO Setting=200 (Zone Matching High)", "Color Space=Adobe RGB", "Sharpness=2",
                         "Contrast=-2", "Saturation=-10", "Exposure Time=2", "F Number=4.0"}));
    }
    // Found by fuzzing: a speed code far above any camera's overflowed an int.
    EXPECT_EQ(RowTexts(DslrNote(kBE, 0x114, Shorts(0x36, {{0x35, 304}}))).back(), "Exposure Time=1/4294967296");
}

}  // namespace
