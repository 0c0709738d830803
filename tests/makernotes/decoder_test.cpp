// Each maker's decoder over notes written in both byte orders. The makers
// read a stored SHORT differently on purpose: Casio's headerless notes and
// Nikon's type-1 notes take the low half of the whole 32-bit field (so a
// big-endian SHORT reads as 0), while "QVC", Sony and Panasonic notes read
// the field's first two bytes in the file's order.
#include <string>
#include <vector>

#include "makernotes/makernote_decoders.h"
#include "note_harness.h"

namespace {

using namespace notetest;

// The same note in either byte order, decoded as a camera with this Make.
template <typename Fill>
Texts Decode(ByteOrder order, const std::string& make, const std::string& header, Fill fill) {
    MakerNoteBuilder note(order);
    note.Header(header);
    fill(note);
    return RowTexts(DispatchNote(order, make, note.Build(fixture::kNoteOffset)));
}

// ------------------------------------------------------------ Casio

void CasioEntries(MakerNoteBuilder& n) {
    n.Short(1, 7).Short(2, 0).Short(2, 3).Short(4, 3).Long(6, 2500).Short(7, 129);
    n.Long(10, 0x10000).Long(10, 0x20000).Long(10, 0x10001);
    n.Short(8, 1).Short(14, 1).Short(19, 1).Short(21, 1).Short(0, 1);  // never named
    n.Short(20, 0xFFFF);
}

TEST(CasioNote, HeaderlessFormReadsTheLowHalfOfTheWholeField) {
    EXPECT_EQ(Decode(kLE, "CASIO", "", CasioEntries),
              (Texts{"Recording Mode=Panorama", "Quality=Fine", "Quality=Fine", "Flash Mode=3",
                     "Object distance=2500 mm", "White Balance=Manual", "Digital Zoom=Off", "Digital Zoom=0 x",
                     "Digital Zoom=2 x", "CCD Sensitivity=-1"}));
    // Big-endian: every SHORT stands in the field's first two bytes and reads as 0.
    EXPECT_EQ(Decode(kBE, "CASIO", "", CasioEntries),
              (Texts{"Recording Mode=0", "Quality=Fine", "Quality=Fine", "Flash Mode=0", "Object distance=2500 mm",
                     "White Balance=0", "Digital Zoom=Off", "Digital Zoom=0 x", "Digital Zoom=2 x",
                     "CCD Sensitivity=0"}));
    // A directory holding only tags outside both tables adds no rows.
    EXPECT_EQ(Decode(kLE, "CASIO", "", [](MakerNoteBuilder& n) { n.Short(8, 1).Short(15, 2).Short(300, 3); }), Texts{});
}

void CasioQvcEntries(MakerNoteBuilder& n) {
    n.Short(20, 1).Short(20, 3).Short(12291, 2).Short(25, 0xFFFF).Short(8210, 12).Short(12295, 1);
    n.Short(12290, 0).Short(12308, 400).Short(12311, 0);
    n.Short(1, 1).Short(9, 1).Short(12312, 1);  // never named
}

TEST(CasioNote, QvcFormReadsTheStoredShortInEitherOrder) {
    const Texts expected{"ISO=1",           "ISO=50",           "Focus Mode=Unknown (2)", "White Balance=Unknown (65535)",
                         "White Balance=Flash", "Best Shot Mode=On", "Quality=Economy", "CCD ISO Sensitivity=400",
                         "Filter=Off"};
    const std::string qvc("QVC\0\0\0", 6);
    EXPECT_EQ(Decode(kLE, "CASIO COMPUTER CO.,LTD", qvc, CasioQvcEntries), expected);
    EXPECT_EQ(Decode(kBE, "CASIO COMPUTER CO.,LTD", qvc, CasioQvcEntries), expected);
}

// ------------------------------------------------------------ Sony

void SonyEntries(MakerNoteBuilder& n) {
    n.Short(8201, 256).Short(8201, 4).Short(8201, 257).Short(45097, 102).Short(45097, 105);
    n.Short(45093, 21).Short(45093, 10).Short(45094, 0xFFFF).Short(258, 0xFFFF).Short(258, 5);
    n.Short(45096, 1);  // inside the range, never named
    n.Ascii(45088, "Standard").Short(45095, 53).Short(513, 0xFFFE).Short(45057, 312);
}

TEST(SonyNote, ValuesReadTheStoredShortSignedOrUnsignedPerTag) {
    const Texts expected{"High ISO NoiseReduction=Auto", "High ISO NoiseReduction=4",
                         "High ISO NoiseReduction=257", "Color Mode=102", "Color Mode=Autumn Leaves",
                         "Dynamic Range Optimizer=21", "Dynamic Range Optimizer=Advanced Lv3",
                         "Image Stabilization=-1", "Quality=65535", "Quality=Extra Fine",
                         "Creative Style=Standard", "Lens Type=Sony 70-400mm F4-5.6 G SSM", "More infos=-2",
                         "Sony Model ID=ILCE-6000"};
    const std::string header("SONY DSC \0\0\0", 12);
    EXPECT_EQ(Decode(kLE, "SONY", header, SonyEntries), expected);
    EXPECT_EQ(Decode(kBE, "SONY", header, SonyEntries), expected);
    EXPECT_EQ(Decode(kLE, "SONY", "", SonyEntries), expected);  // no header: read from the note's start
}

// ------------------------------------------------------------ Panasonic

void PanasonicEntries(MakerNoteBuilder& n) {
    n.Short(15, 0x0100).Short(15, 0x0001).Short(15, 0x1010).Short(15, 0x0202);
    n.Short(28, 3).Short(28, 513).Short(31, 10).Short(31, 65).Short(31, 64);
    n.Short(7, 3).Short(7, 5).Short(50, 1).Short(63, 2).Short(1, 6).Short(1, 8);
    n.OutOfLine(97, fixture::kUndefined, 30, fixture::ToBytes("hdr:ABCDEFGHIJKLMNOPQRSTUVWXYZ"));
    n.OutOfLine(97, fixture::kUndefined, 10, fixture::ToBytes("hdr:ABCDEFGHIJ"));  // count cuts the record
    n.Ascii(101, "Trip").Ascii(128, "Kent").Ascii(105, "UK");
    n.Short(0, 1).Short(129, 1);  // never named
}

TEST(PanasonicNote, ValuesReadTheStoredShortAndSomeLeaveTheValueEmpty) {
    const Texts expected{"AF Mode=9 area", "AF Mode=Spot Focusing", "AF Mode=1 area (high speed)", "AF Mode=",
                         "Macro Mode=3", "Macro Mode=Macro Zoom", "Shooting Mode=10", "Shooting Mode=65",
                         "Shooting Mode=HDR", "Focus Mode=", "Focus Mode=Auto, Continuous",
                         "Color Mode=Natural", "Faces Detected=2", "Image Quality=Very High", "Image Quality=8",
                         "Face Info=ABCDEFGHIJKLMNOPQRST", "Face Info=ABCDEF", "Title=Trip", "County=Kent",
                         "Country=UK"};
    const std::string header("Panasonic\0\0\0", 12);
    EXPECT_EQ(Decode(kLE, "Panasonic", header, PanasonicEntries), expected);
    EXPECT_EQ(Decode(kBE, "Panasonic", header, PanasonicEntries), expected);
}

// ------------------------------------------------------------ Nikon type 1

void NikonType1Entries(MakerNoteBuilder& n) {
    n.Short(3, 12).Short(3, 8).Short(6, 1).Short(6, 5).Short(5, 3).Short(7, 3);
    n.Field(3840, fixture::kByte, 4, {1, 2, 3, 4});
    fixture::Bytes focus, zoom;
    fixture::PutU32(focus, 35, n.order()), fixture::PutU32(focus, 10, n.order());
    fixture::PutU32(zoom, 2, n.order()), fixture::PutU32(zoom, 1, n.order());
    n.OutOfLine(8, fixture::kRational, 1, focus).OutOfLine(10, fixture::kRational, 1, zoom);
    n.Field(1, fixture::kUndefined, 4, fixture::ToBytes("0100")).Short(12, 1);
}

TEST(NikonType1Note, ReadsTheLowHalfOfTheWholeFieldAsHeaderlessCasioDoes) {
    const std::string header("Nikon\0\x01\0", 8);
    EXPECT_EQ(Decode(kLE, "", header, NikonType1Entries),
              (Texts{"Quality=Fine", "Quality=8", "CCD Sensitivity (ISO speed)=1",
                     "CCD Sensitivity (ISO speed)=ISO 100", "Image Adjustment=Contrast+",
                     "White Balance=Incandescense", "Unknown=67305985", "Focus=3.50", "Digital Zoom=2",
                     "Data version=0100"}));
    // Big-endian: the SHORTs read as 0, the whole field as the bytes in file order.
    EXPECT_EQ(Decode(kBE, "", header, NikonType1Entries),
              (Texts{"Quality=0", "Quality=0", "CCD Sensitivity (ISO speed)=ISO 80",
                     "CCD Sensitivity (ISO speed)=ISO 80", "Image Adjustment=Normal", "White Balance=Auto",
                     "Unknown=16909060", "Focus=3.50", "Digital Zoom=2", "Data version=0100"}));
}

// ------------------------------------------------------------ Pentax lens type

TEST(PentaxNote, LensTypeTriesTheTopBytesThenTheLowBytes) {
    const struct {
        ByteOrder order;
        fixture::Bytes field;
        const char* lens;
    } cases[] = {
        {kBE, {0x03, 0x11, 0, 0}, "smc PENTAX-FA SOFT 85mm F2.8"},
        {kLE, {0x03, 0x11, 0, 0}, "smc PENTAX-FA SOFT 85mm F2.8"},  // (32, 32) fails, then (3, 17)
        {kBE, {0x03, 0x00, 0, 0}, "smc PENTAX-F 50mm F1.4"},        // a number of 0 is asked for as 32
        // (8, 242) lies beyond the rows a lookup scans.
        {kBE, {0x08, 0xF2, 0, 0}, "unknown (8, 242; 32, 0)"},
        {kLE, {0x08, 0xF2, 0, 0}, "unknown (32, 32; 242, 8)"},
    };
    for (const auto& c : cases) {
        const auto lensOnly = [&](MakerNoteBuilder& n) { n.Short(1, 1).Field(63, fixture::kByte, 4, c.field); };
        EXPECT_EQ(Decode(c.order, "PENTAX Corporation", std::string("AOC\0MM", 6), lensOnly),
                  Texts{std::string("Lens Type=") + c.lens});
    }
}

// ------------------------------------------------------------ the tables themselves

TEST(MakerTables, TagsAscendOnceEachAndEveryRowHasAName) {
    for (const makernotes::MakerTable* t :
         {&makernotes::CasioTags(), &makernotes::CasioQvcTags(), &makernotes::SonyTags(),
          &makernotes::PanasonicTags(), &makernotes::NikonType1Tags(), &makernotes::PentaxTags()}) {
        for (size_t i = 0; i < t->size; ++i) {
            EXPECT_NE(std::string(t->tags[i].name), "");
            if (i > 0) {
                EXPECT_LT(t->tags[i - 1].tag, t->tags[i].tag) << t->tags[i].name;
            }
        }
    }
}

}  // namespace
