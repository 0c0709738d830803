// Sanyo notes beyond the corpus's little-endian one, and Ricoh's own notes
// beyond the corpus's two Caplio notes: the GR Digital's tags (SHORTs where
// the Caplios store LONGs of other meaning), the longer image-information
// block, hostile camera-information blocks, the text form of the oldest
// cameras, and the Pentax notes of Ricoh-made bodies, which stay Pentax's.
// The expected texts are exiftool's for the same bytes.
#include <cstdint>
#include <string>

#include "note_harness.h"

namespace {

using namespace notetest;

const std::string kSanyoHeader("SANYO\0\x01\0", 8);
const std::string kRicohHeader("Ricoh\0\0\0", 8);

TEST(SanyoNote, BigEndianShortsAndValuesNoTableNames) {
    const Decoded d = Note(kBE, "SANYO Electric Co.,Ltd.", kSanyoHeader, [](MakerNoteBuilder& n) {
        n.Short(0x0201, 0x0205).Short(0x0201, 0x0308).Short(0x0202, 3).Short(0x020e, 9).Short(0x021e, 1);
        n.Short(0x021f, 6).Short(0x0224, 3).Short(0x0225, 1).Short(0x0203, 1);
        n.OutOfLine(0x0204, fixture::kRational, 1, Longs(n.order(), {150, 100}));
    });
    EXPECT_EQ(RowTexts(d), (Texts{"Sanyo Quality=Super Fine/High", "Sanyo Quality=776", "Macro=Manual",
                                  "Sequential Shot=9", "Resaved=Yes", "Scene Select=Lamp",
                                  "Sequence Shot Interval=20 frames/s", "Flash Mode=Force", "Digital Zoom=1.5"}));
}

// ------------------------------------------------------------ Ricoh directory

void GrEntries(MakerNoteBuilder& n) {
    const ByteOrder o = n.order();
    n.Ascii(1, "Rdc").Ascii(2, "Rev0207").OutOfLine(5, fixture::kUndefined, 16, fixture::ToBytes("GRD2SERIAL000001"));
    n.Short(0x1000, 3).Short(0x1001, 3).Short(0x1002, 8).Short(0x1003, 12).Long(0x1004, 5).Short(0x1006, 9);
    n.Short(0x100a, 7).OutOfLine(0x100b, fixture::kSRational, 1, Longs(o, {-1, 3})).Short(0x100e, 4);
    n.Short(0x1010, 15).Short(0x1018, 2).Short(0x1200, 1).Long(0x1201, 320).Short(0x1205, 2).Long(0x1308, 5200);
    n.OutOfLine(0x1500, fixture::kRational, 1, Longs(o, {183, 10})).Long(0x1601, 4928);
}

TEST(RicohNote, GrDigitalTagsInEitherOrderAndTheCaplioLongsTheyAreNot) {
    for (ByteOrder order : {kLE, kBE}) {
        SCOPED_TRACE(order == kBE ? "BE" : "LE");
        EXPECT_EQ(RowTexts(Note(order, "RICOH", kRicohHeader, GrEntries, 0, "GR DIGITAL 2")),
                  (Texts{"Maker Note Type=Rdc", "Firmware Version=2.07", "Serial Number=(GRD2SERI)AL000001",
                         "Recording Format=DNG", "Drive Mode=AF-priority Continuous", "White Balance=Shade",
                         "Focus Mode=Pinpoint AF", "Flash Mode=Synchro, Red-eye reduction", "Flash Exposure Comp=-0.3",
                         "Dynamic Range Expansion=Medium", "Image Effects=Miniature", "Crop Mode=On (47mm)",
                         "AF Status=In Focus", "AF Area X Position 1=320", "AF Area Mode=Manual",
                         "Color Temperature=5200", "Focal Length=18.3 mm", "Sensor Width=4928",
                         "Exposure Program=Aperture-priority AE"}));
    }
    // The Caplio RR1's LONGs under 1002 and 1004, and its sharpness as a LONG.
    EXPECT_EQ(RowTexts(Note(kBE, "RICOH", kRicohHeader,
                            [](MakerNoteBuilder& n) { n.Long(0x1002, 0).Long(0x1003, 2).Long(0x1004, 0); })),
              Texts{"Sharpness=Soft"});
    // A number that is not all printable is the internal serial number.
    EXPECT_EQ(RowTexts(Note(kBE, "RICOH", kRicohHeader, [](MakerNoteBuilder& n) {
                  n.OutOfLine(5, fixture::kUndefined, 16, fixture::ToBytes(std::string("AB\0\x01" "123456789012", 16)));
                  n.OutOfLine(0x100b, fixture::kSRational, 1, Longs(n.order(), {2, 3}));
              })),
              (Texts{"Internal Serial Number=41420001313233343536373839303132", "Flash Exposure Comp=+0.7"}));
}

TEST(RicohNote, TheLongerImageInformationBlockInEitherOrder) {
    for (ByteOrder order : {kLE, kBE}) {
        SCOPED_TRACE(order == kBE ? "BE" : "LE");
        Bytes info = Shorts(order, {3264, 2448, 0});
        fixture::Append(info, {0x20, 0x09, 0x12, 0x31, 0x23, 0x59, 0x58});
        info.resize(28, 0);
        fixture::Append(info, Shorts(order, {1234, 5678}));
        fixture::Append(info, {2, 1, 2, 0, 0, 0, 9, 11, 10, 0});
        EXPECT_EQ(RowTexts(Note(order, "RICOH", kRicohHeader, [&](MakerNoteBuilder& n) {
                      n.OutOfLine(0x1001, fixture::kUndefined, static_cast<uint32_t>(info.size()), info);
                  })),
                  (Texts{"Ricoh Image Width=3264", "Ricoh Image Height=2448", "Ricoh Date=2009:12:31 23:59:58",
                         "Preview Image Start=1234", "Preview Image Length=5678", "Flash Mode=On", "Macro=On",
                         "Sharpness=Soft", "White Balance=Multi-pattern Auto", "ISO Setting=100 (Low)",
                         "Saturation=Natural"}));
    }
}

TEST(RicohNote, CameraInformationWithoutItsHeaderOrOutsideTheFileGivesNoRows) {
    // (Blocks whose offsets count from the block and from the TIFF header
    // are the corpus's Ricoh.jpg and Ricoh2.jpg.)
    Bytes block = fixture::ToBytes(std::string("[Ricoh Camera Info]\0", 20));
    MakerNoteBuilder sub(kBE);
    sub.Ascii(4, "2005:06:06");
    fixture::Append(block, sub.Build(0));
    Bytes headerless = block;
    headerless[1] = 'X';
    for (const Bytes& b : {headerless, Bytes(block.begin(), block.begin() + 20)}) {
        EXPECT_EQ(RowTexts(Note(kBE, "RICOH", kRicohHeader, [&](MakerNoteBuilder& n) {
                      n.OutOfLine(0x2001, fixture::kUndefined, static_cast<uint32_t>(b.size()), b);
                  })),
                  Texts{});
    }
    EXPECT_EQ(RowTexts(Note(kBE, "RICOH", kRicohHeader, [](MakerNoteBuilder& n) {
                  n.Field(0x2001, fixture::kUndefined, 400, Longs(kBE, {0xFFFFFFF0}));
              })),
              Texts{});
}

// ------------------------------------------------------------ Ricoh text form

TEST(RicohNote, TextNotesUntilTheFirstPairThatIsNotOne) {
    const struct {
        const char* text;
        Texts rows;
    } cases[] = {
        {"Rv0103;Rg1C;Bg1A;Gg20;", {"Firmware Version=1.03", "Red Gain=1C", "Blue Gain=1A", "Green Gain=20"}},
        {"Rev0206;Xy99;Rg7F;", {"Firmware Version=2.06", "Red Gain=7F"}},
        {"Rv0103;Rg1C;Bg1A", {"Firmware Version=1.03", "Red Gain=1C"}},
        {"Rv0103;rg1C;Bg1A;", {"Firmware Version=1.03"}},
        {"Rv0103;Rg;Bg1A;", {"Firmware Version=1.03"}},
    };
    for (const auto& c : cases) {
        const Decoded d = DispatchNote(kLE, "RICOH", fixture::ToBytes(c.text));
        EXPECT_EQ(RowTexts(d), c.rows) << c.text;
        // A row's tag is its key's first two letters: "Rv" 5276, "Re" 5265.
        EXPECT_EQ(d.rows()[0].tag, c.text[1] == 'e' ? 0x5265u : 0x5276u) << c.text;
    }
    // The text form needs a Ricoh Make; another maker's note of the same
    // bytes goes where its Make sends it.
    EXPECT_EQ(RowTexts(DispatchNote(kLE, "PENTAX", fixture::ToBytes("Rv0103;Rg1C;"))), Texts{});
}

TEST(RicohNote, PentaxNotesOfRicohMadeBodiesStayPentax) {
    // "RICOH\0II" names the maker as the directory form does, but is a
    // Pentax note (one the Pentax decoder finds no entries in): Ricoh's
    // table would name its tag 1.
    const auto entries = [](MakerNoteBuilder& n) { n.Ascii(1, "Rdc").Short(8, 1); };
    EXPECT_EQ(RowTexts(Note(kLE, "RICOH IMAGING COMPANY, LTD.", std::string("RICOH\0II", 8), entries)), Texts{});
    EXPECT_EQ(RowTexts(Note(kLE, "RICOH IMAGING COMPANY, LTD.", std::string("AOC\0II", 6), entries)),
              (Texts{"Pentax Model Type=25682", "Quality=Better"}));
}

}  // namespace
