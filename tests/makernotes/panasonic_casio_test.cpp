// Panasonic and Casio notes beyond the corpus files: every Panasonic corpus
// file is little-endian, so the settings stored as bytes, pairs and records
// are read here in both orders; the rarer value texts; Casio's headerless
// note, whose later tags read the stored SHORT while the first twenty keep
// the low half of the word; the QVC form's multi-value settings.
#include <string>

#include "note_harness.h"

namespace {

using namespace notetest;

const std::string kPanasonicHeader("Panasonic\0\0\0", 12);

TEST(PanasonicNote, BytesPairsRecordsAndLongsReadTheSameInEitherOrder) {
    const auto entries = [](MakerNoteBuilder& n) {
        const ByteOrder o = n.order();
        n.Field(0x02, fixture::kUndefined, 4, {0, 1, 2, 13});
        n.Short(0x23, 0xFFFE).Short(0x24, 3).Short(0x23, 4);
        n.OutOfLine(0x25, fixture::kUndefined, 16, fixture::ToBytes(std::string("F650912220134\0^\0", 16)));
        n.OutOfLine(0x25, fixture::kUndefined, 16, fixture::ToBytes(std::string("XK-10\0\0\0\0\0\0\0\0\0\0\0", 16)));
        n.Long(0x29, 100 * (86400 + 3661) + 5).Short(0x2D, 0xFFFF).Short(0x36, 3);
        n.OutOfLine(0x33, fixture::kAscii, 20, fixture::ToBytes(std::string("2011:05:04 00:00:00\0", 20)));
        n.OutOfLine(0x4D, fixture::kRational, 2, Longs(o, {128, 256, 64, 256}));
        Bytes faces = Shorts(o, {2, 10, 20, 30, 40});
        faces.resize(42);
        n.OutOfLine(0x4E, fixture::kUndefined, 42, faces);
        n.Field(0x59, fixture::kUndefined, 4, Shorts(o, {-1, 1})).Field(0x59, fixture::kUndefined, 4, Shorts(o, {5, 9}));
        n.Field(0x70, fixture::kByte, 1, {3, 0, 0, 0}).Field(0x8F, fixture::kByte, 1, {9, 0, 0, 0});
        n.Short(0x90, 0xFFE7).Short(0x91, 30).Long(0xD1, 102400).Short(0x8001, 84).Short(0x8001, 91);
        n.Ascii(0x51, "LUMIX G VARIO 14-42/F3.5-5.6");
    };
    const Texts expected{"Firmware Version=0.1.2.13",
                         "White Balance Bias=-2/3",
                         "Flash Bias=+1",
                         "White Balance Bias=+4/3",
                         "Internal Serial Number=(F65) 2009:12:22 no. 0134",
                         "Internal Serial Number=XK-10",
                         "Time Since Power On=1 days 01:01:01.05",
                         "Noise Reduction=-1",
                         "Travel Day=3",
                         "Baby Age=2011:05:04 00:00:00",
                         "AF Point Position=0.5 0.25",
                         "Face Positions=2",
                         "Transform=Slim Low",
                         "Transform=5 9",
                         "Intelligent Resolution=High",
                         "Camera Orientation=9",
                         "Roll Angle=-2.5",
                         "Pitch Angle=-3",
                         "ISO=102400",
                         "Scene Mode=Soft Image of a Flower",
                         "Scene Mode=91",
                         "Lens Type=LUMIX G VARIO 14-42/F3.5-5.6"};
    for (ByteOrder order : {kLE, kBE}) {
        SCOPED_TRACE(order == kBE ? "big-endian" : "little-endian");
        EXPECT_EQ(RowTexts(Note(order, "Panasonic", kPanasonicHeader, entries)), expected);
    }
}

TEST(PanasonicNote, RecordsAndRationalsPastTheEndGiveEmptyValues) {
    const Decoded d = Note(kLE, "Panasonic", kPanasonicHeader, [](MakerNoteBuilder& n) {
        n.Field(0x4D, fixture::kRational, 2, {0xF0, 0xFF, 0xFF, 0xFF}).Field(0x4E, fixture::kUndefined, 42, {0xF0, 0xFF, 0xFF, 0xFF});
        n.Field(0x25, fixture::kUndefined, 16, {0xF0, 0xFF, 0xFF, 0xFF});
    });
    EXPECT_EQ(RowTexts(d), (Texts{"AF Point Position=", "Face Positions=", "Internal Serial Number="}));
}

TEST(CasioNote, HeaderlessLaterTagsReadTheStoredShortInBothOrders) {
    const auto entries = [](MakerNoteBuilder& n) {
        n.Short(1, 1).Short(22, 2).Short(23, 9).Short(24, 13).Short(25, 3).Short(25, 7);
        n.OutOfLine(21, fixture::kAscii, 18, fixture::ToBytes(std::string("0302\0\0" "2809\0\0" "45\0\0\0\0\0\0", 18)));
        n.OutOfLine(21, fixture::kAscii, 18, fixture::ToBytes(std::string("V1.01\0\0\0\0\0\0\0\0\0\0\0\0\0", 18)));
    };
    const Texts later{"Enhancement=Red",           "Color Filter=Purple",           "AF Point=Center Left",
                      "Flash Intensity=Strong",    "Flash Intensity=7",             "Firmware Date=2003:02:28 09:45",
                      "Firmware Date=V1.01"};
    Texts little{"Recording Mode=Single Shutter"}, big{"Recording Mode=0"};
    little.insert(little.end(), later.begin(), later.end());
    big.insert(big.end(), later.begin(), later.end());
    EXPECT_EQ(RowTexts(Note(kLE, "CASIO", "", entries)), little);
    EXPECT_EQ(RowTexts(Note(kBE, "CASIO", "", entries)), big);
}

TEST(CasioNote, QvcMultiValueSettingsAndFallbacks) {
    const auto entries = [](MakerNoteBuilder& n) {
        const ByteOrder o = n.order();
        n.Field(0x2076, fixture::kByte, 3, {2, 0, 0, 0}).Field(0x2076, fixture::kByte, 3, {5, 0, 1, 0});
        n.Short(0x3020, 3).Field(0x3020, fixture::kShort, 2, Shorts(o, {2, 3}));
        n.Field(0x3020, fixture::kShort, 2, Shorts(o, {1, 1}));
        n.OutOfLine(0x1D, fixture::kRational, 1, Longs(o, {62, 10}));
        n.OutOfLine(0x2021, fixture::kShort, 4, Shorts(o, {5, 0, 6, 7}));
        n.OutOfLine(0x2021, fixture::kShort, 4, Shorts(o, {100, 400, 30, 120}));
        n.Field(0x0002, fixture::kShort, 2, Shorts(o, {640, 480})).Long(0x2022, 2500);
        n.Short(0x3000, 6).Short(0x3103, 240).Short(0x3011, 0xFFFF).Field(0x211C, fixture::kByte, 1, {4, 0, 0, 0});
    };
    const Texts expected{"Special Effect Mode=Mist Removal", "Special Effect Mode=5 0 1",
                         "Image Stabilization=Movie Anti-Shake", "Image Stabilization=CCD Shift + High Sensitivity",
                         "Image Stabilization=1 1", "Focal Length=6.2 mm", "AF Point Position=5 0 6 7",
                         "AF Point Position=0.25 0.25", "Preview Image Size=640x480", "Object Distance=2.5 m",
                         "Record Mode=Best Shot", "Drive Mode=Auto-N", "Sharpness=-1", "Faces Detected=4"};
    const std::string header("QVC\0\0\0", 6);
    for (ByteOrder order : {kLE, kBE}) {
        SCOPED_TRACE(order == kBE ? "big-endian" : "little-endian");
        EXPECT_EQ(RowTexts(Note(order, "CASIO COMPUTER CO.,LTD", header, entries)), expected);
    }
}

}  // namespace
