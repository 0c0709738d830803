// The makers with one plain directory, over what the corpus files do not
// show. The makers read a stored SHORT differently on purpose: Casio's
// headerless notes and Nikon's type-1 notes take the low half of the whole
// 32-bit field (so a big-endian SHORT reads as 0), while "QVC", Sony and
// Panasonic notes read the field's first two bytes in the file's order.
// And the Nikon lens lookup. (The tag and lens tables' order and names are
// static_asserts beside the tables.)
#include <cstring>
#include <string>

#include "makernotes/lens_tables.h"
#include "makernotes/makernote_decoders.h"
#include "note_harness.h"

namespace {

using namespace notetest;

// The same note in either byte order, decoded as a camera with this Make.
Texts Decode(ByteOrder order, const std::string& make, const std::string& header, const Fill& fill) {
    return RowTexts(Note(order, make, header, fill));
}

TEST(CasioNote, ZoomFactorAndSignedSensitivityOfALittleEndianNote) {
    // The big-endian form is the corpus's Casio.jpg.
    EXPECT_EQ(Decode(kLE, "CASIO", "", [](MakerNoteBuilder& n) {
                  n.Long(10, 0x10000).Long(10, 0x20000).Long(10, 0x10001).Short(8, 1).Short(20, 0xFFFF);
              }),
              (Texts{"Digital Zoom=Off", "Digital Zoom=0 x", "Digital Zoom=2 x", "CCD Sensitivity=-1"}));
}

TEST(SonyNote, ValuesReadTheStoredShortAndUnlistedOnesPrintSigned) {
    const auto entries = [](MakerNoteBuilder& n) {
        n.Short(8201, 256).Short(8201, 257).Short(45094, 0xFFFF).Short(258, 0xFFFF).Short(45096, 1);
        n.Ascii(45088, "Standard").Short(513, 0xFFFE).Short(45057, 312).Short(45095, 0xFFFF).Short(45093, 21);
    };
    const Texts expected{"High ISO NoiseReduction=Auto", "High ISO NoiseReduction=257", "Image Stabilization=-1",
                         "Quality=-1", "Creative Style=Standard", "More infos=-2", "Sony Model ID=ILCE-6000",
                         "Lens Type=-1", "Dynamic Range Optimizer=21"};
    const std::string header("SONY DSC \0\0\0", 12);
    EXPECT_EQ(Decode(kLE, "SONY", header, entries), expected);
    EXPECT_EQ(Decode(kBE, "SONY", header, entries), expected);
}

TEST(PanasonicNote, AfModeBytesEmptyValuesAndFaceRecordsInEitherOrder) {
    const auto entries = [](MakerNoteBuilder& n) {
        n.Short(15, 0x0100).Short(15, 0x0202).Short(7, 3).Short(28, 3);
        n.OutOfLine(97, fixture::kUndefined, 30, fixture::ToBytes("hdr:ABCDEFGHIJKLMNOPQRSTUVWXYZ"));
        n.OutOfLine(97, fixture::kUndefined, 10, fixture::ToBytes("hdr:ABCDEFGHIJ"));  // count cuts the record
        n.Field(97, fixture::kUndefined, 30, {0xF0, 0xFF, 0xFF, 0xFF});                 // past the end
    };
    const Texts expected{"AF Mode=9 area", "AF Mode=", "Focus Mode=", "Macro Mode=3", "Face Info=ABCDEFGHIJKLMNOPQRST",
                         "Face Info=ABCDEF", "Face Info="};
    const std::string header("Panasonic\0\0\0", 12);
    EXPECT_EQ(Decode(kLE, "Panasonic", header, entries), expected);
    EXPECT_EQ(Decode(kBE, "Panasonic", header, entries), expected);
}

TEST(NikonType1Note, ReadsTheLowHalfOfTheWholeFieldAsHeaderlessCasioDoes) {
    const auto entries = [](MakerNoteBuilder& n) {
        n.Short(3, 12).Short(6, 5).Field(3840, fixture::kByte, 4, {1, 2, 3, 4});
        n.OutOfLine(8, fixture::kRational, 1, Longs(n.order(), {35, 10}));
        n.OutOfLine(10, fixture::kRational, 1, Longs(n.order(), {2, 1}));
        n.Field(1, fixture::kUndefined, 4, fixture::ToBytes("0100"));
    };
    const std::string header("Nikon\0\x01\0", 8);
    EXPECT_EQ(Decode(kLE, "", header, entries),
              (Texts{"Quality=Fine", "CCD Sensitivity (ISO speed)=ISO 100", "Unknown=67305985", "Focus=3.50",
                     "Digital Zoom=2", "Data version=0100"}));
    // Big-endian: the SHORTs read as 0, the whole field as the bytes in file order.
    EXPECT_EQ(Decode(kBE, "", header, entries),
              (Texts{"Quality=0", "CCD Sensitivity (ISO speed)=ISO 80", "Unknown=16909060", "Focus=3.50",
                     "Digital Zoom=2", "Data version=0100"}));
}

TEST(LensTables, ANikonKeyOneBitOffAnyRowsFindsNone) {
    for (const makernotes::NikonLens& row : makernotes::NikonLensTable) {
        for (size_t b = 0; b < sizeof row.key; ++b) {
            uint8_t key[8];
            std::memcpy(key, row.key, sizeof key);
            key[b] ^= 0x01;
            char other[128] = "untouched";
            EXPECT_FALSE(makernotes::LookupNikonLens(key, other, sizeof other)) << row.name << " byte " << b;
            EXPECT_STREQ(other, "untouched");
        }
    }
    char cut[8];  // a name is cut to the output size
    ASSERT_TRUE(makernotes::LookupNikonLens(makernotes::NikonLensTable[0].key, cut, sizeof cut));
    EXPECT_STREQ(cut, "AF-S DX");
}

}  // namespace
