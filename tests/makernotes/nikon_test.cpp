// Nikon main-form notes where the corpus files do not go: both lens tables,
// enciphered lens data in the later layout and in both byte orders, the AF
// points' byte order by body, a flash record with a flash unit, the row limit
// inside a structure, and what hostile offsets do.
#include <string>
#include <vector>

#include "makernotes/makernote_decoders.h"
#include "note_harness.h"

namespace {

using namespace notetest;

const std::string kEmbeddedLE("Nikon\0\x02\x10\0\0II*\0\x08\0\0\0", 18);
const std::string kEmbeddedBE("Nikon\0\x02\x10\0\0MM\0*\0\0\0\x08", 18);

// A note with the embedded header (its offsets count from that header, 10
// bytes in), in a file whose table holds Make and Model rows.
Decoded NikonDecoded(ByteOrder fileOrder, ByteOrder noteOrder, const std::string& model,
                     const Fill& fill, uint32_t filler = 0) {
    MakerNoteBuilder note(noteOrder);
    note.Header(noteOrder == kLE ? kEmbeddedLE : kEmbeddedBE);
    fill(note);
    return DispatchNote(fileOrder, "NIKON CORPORATION", note.Build(-10), filler, model);
}

Texts Nikon(ByteOrder fileOrder, ByteOrder noteOrder, const Fill& fill,
            const std::string& model = "NIKON D70") {
    return RowTexts(NikonDecoded(fileOrder, noteOrder, model, fill));
}

Texts Only(const Texts& rows, const std::string& name) {
    Texts out;
    for (const std::string& r : rows)
        if (r.rfind(name + "=", 0) == 0) out.push_back(r);
    return out;
}

// Lens data with the 7 identifying bytes at `at`, and tag 0083's lens-type
// byte, listed after the data.
void Lens(MakerNoteBuilder& n, const char* version, size_t at, std::vector<uint8_t> id, uint8_t type) {
    Bytes data = fixture::ToBytes(version);
    data.resize(at, 0);
    data.insert(data.end(), id.begin(), id.end());
    data.resize(20, 0);
    n.OutOfLine(152, fixture::kUndefined, static_cast<uint32_t>(data.size()), data)
        .Field(131, fixture::kByte, 1, {type, 0, 0, 0});
}

TEST(NikonNote, LensNameFromTheFirstTableThenTheSecondElseTheKey) {
    // The notes are in the byte order unlike their file's.
    EXPECT_EQ(Only(Nikon(kBE, kLE, [](MakerNoteBuilder& n) {
                  Lens(n, "0100", 6, {0x94, 0x40, 0x2D, 0x53, 0x2C, 0x3C, 0x96}, 0x06);
              }), "Lens Name"),
              Texts{"Lens Name=AF-S DX Zoom-Nikkor 18-55mm f/3.5-5.6G ED II"});
    EXPECT_EQ(Only(Nikon(kLE, kBE, [](MakerNoteBuilder& n) {
                  Lens(n, "0101", 11, {0xB0, 0x4C, 0x50, 0x50, 0x14, 0x14, 0xB2}, 0x06);
              }), "Lens Name"),
              Texts{"Lens Name=AF-S Nikkor 50mm f/1.8G"});
    EXPECT_EQ(Only(Nikon(kLE, kLE, [](MakerNoteBuilder& n) {
                  Lens(n, "0101", 11, {0xB0, 0x4C, 0x50, 0x50, 0x14, 0x14, 0xB2}, 0x0E);
              }), "Lens Name"),
              Texts{"Lens Name=unknown (B0 4C 50 50 14 14 B2 0E)"});
}

// Lens data 0204 enciphered with serial key 0x60 (a serial that is not a
// number) and shutter count 0x01020304, as exiftool enciphers it; in the
// clear: exit pupil 0x20, AF aperture 0x30, focus position 0x10, distance
// 0x50, focal length 0x48, then the 35mm f/1.8G's identifying bytes and an
// effective aperture of 0x14.
const Bytes kEnciphered0204 = {0x30, 0x32, 0x30, 0x34, 0x51, 0x5E, 0x88, 0xBF, 0x03, 0x84,
                               0x42, 0xF5, 0x1A, 0x32, 0x28, 0xCF, 0xD3, 0x34, 0x37, 0x3D};

TEST(NikonNote, EncipheredLensDataIsReadWithTheSerialAndShutterCountInEitherOrder) {
    const Texts expected{"Lens Data Version=0204", "Exit Pupil Position=64.0 mm", "AF Aperture=4.0",
                         "Focus Position=0x10", "Focus Distance=1.00 m", "Focal Length=40.0 mm",
                         "Lens ID Number=159", "Lens F-Stops=7.33", "Min Focal Length=35.6 mm",
                         "Max Focal Length=35.6 mm", "Max Aperture At Min Focal=1.8",
                         "Max Aperture At Max Focal=1.8", "MCU Version=161", "Effective Max Aperture=1.8",
                         "Lens Name=AF-S DX Nikkor 35mm f/1.8G"};
    for (ByteOrder order : {kLE, kBE}) {
        const Texts rows = Nikon(order, order, [](MakerNoteBuilder& n) {
            n.Ascii(29, "ABC").Field(131, fixture::kByte, 1, {0x06, 0, 0, 0});
            n.OutOfLine(152, fixture::kUndefined, 20, kEnciphered0204).Long(167, 0x01020304);
        });
        ASSERT_GE(rows.size(), expected.size());
        EXPECT_EQ(Texts(rows.end() - 15, rows.end()), expected);
    }
    // Without the shutter count the data cannot be read: its version only.
    EXPECT_EQ(Nikon(kLE, kLE, [](MakerNoteBuilder& n) {
                  n.Ascii(29, "ABC").OutOfLine(152, fixture::kUndefined, 20, kEnciphered0204);
              }),
              (Texts{"Serial Number=ABC", "Lens Data Version=0204"}));
}

TEST(NikonNote, AfPointsAreBigEndianOnTheSlrsOnly) {
    const auto af = [](MakerNoteBuilder& n) { n.Field(136, fixture::kUndefined, 4, {1, 3, 0x00, 0x01}); };
    EXPECT_EQ(Nikon(kLE, kLE, af, "NIKON D70"),
              (Texts{"AF Area Mode=Dynamic Area", "AF Point=Mid-left", "AF Points In Focus=Center"}));
    EXPECT_EQ(Only(Nikon(kBE, kBE, af, "COOLPIX P7000"), "AF Points In Focus"),
              Texts{"AF Points In Focus=Lower-right"});
    // Without a Model row (a fuzz finding: the test read past an empty text).
    EXPECT_EQ(Only(RowTexts(DispatchNote(kBE, "NIKON", [&] {
                  MakerNoteBuilder n(kBE);
                  af(n);
                  return n.Build(fixture::kNoteOffset);
              }())), "AF Points In Focus"),
              Texts{"AF Points In Focus=Lower-right"});
    EXPECT_EQ(Only(Nikon(kLE, kLE, [](MakerNoteBuilder& n) { n.Field(136, fixture::kUndefined, 4, {9, 42, 0x07, 0xFF}); }),
                   "AF Point"),
              Texts{"AF Point=42"});
}

TEST(NikonNote, FlashRecordWithAFlashUnitAndExposureSteps) {
    const Texts rows = Nikon(kBE, kBE, [](MakerNoteBuilder& n) {
        n.Field(13, fixture::kUndefined, 4, {1, 1, 3, 0}).Field(14, fixture::kUndefined, 4, {0xFE, 1, 2, 0});
        Bytes flash = fixture::ToBytes("0100");
        fixture::Append(flash, {1, 0, 5, 2, 0x11, 0x86, 6, 24, 0, 0, 10, 2, 6, 0xFD, 0});
        n.OutOfLine(168, fixture::kUndefined, static_cast<uint32_t>(flash.size()), flash);
    });
    EXPECT_EQ(rows, (Texts{"Program Shift=+1/3", "Exposure Difference=-1.0", "Flash Info Version=0100",
                           "Flash Source=External", "External Flash Firmware=5.02",
                           "External Flash Flags=Fired, Wide Flash Adapter", "Flash Commander Mode=On",
                           "Flash Control Mode=Manual", "Flash Output=50%", "Flash Focal Length=24 mm",
                           "Flash GN Distance=1.0 m", "Flash Group A Control Mode=iTTL",
                           "Flash Group B Control Mode=Manual", "Flash Group A Compensation=+0.5",
                           "Flash Group B Output=Full"}));
}

TEST(NikonNote, SettingsOfTheLaterBodiesInTheirStructures) {
    const auto note = [](MakerNoteBuilder& n) {
        const ByteOrder o = n.order();
        n.OutOfLine(27, fixture::kShort, 7, Shorts(o, {2, 6048, 4032, 3936, 2624, 1056, 704}));
        Bytes vr = fixture::ToBytes("0100");
        fixture::Append(vr, {1, 0, 1, 0});
        n.OutOfLine(31, fixture::kUndefined, 8, vr);
        Bytes picture = fixture::ToBytes("0100STANDARD");
        picture.resize(24, 0);
        fixture::Append(picture, fixture::ToBytes("NEUTRAL   "));
        picture.resize(58, 0);
        n.OutOfLine(35, fixture::kUndefined, 58, picture);
        Bytes world = Shorts(o, {-330});
        fixture::Append(world, {1, 2});
        n.Field(36, fixture::kUndefined, 4, world);
        n.OutOfLine(37, fixture::kUndefined, 14, {0x48, 0, 0, 0, 0x01, 0x06, 0x48, 0, 0, 0, 0, 0, 0, 0});
        Bytes powerUp = Shorts(o, {2021});
        fixture::Append(powerUp, {7, 4, 18, 5, 9});
        n.OutOfLine(182, fixture::kUndefined, 7, powerUp);
        // Folder 100 and file 1234, little-endian whatever the note's order.
        Bytes file = fixture::ToBytes("0100");
        fixture::Append(file, {1, 0, 100, 0, 0xD2, 0x04});
        n.OutOfLine(183, fixture::kUndefined, 8, {'0', '1', '0', '0', 1, 3, 0, 0});
        n.OutOfLine(184, fixture::kUndefined, 10, file);
        n.Field(185, fixture::kUndefined, 4, {1, 255, 0xFB, 0});
    };
    const Texts expected{"Crop Hi Speed=DX Crop (6048x4032 cropped to 3936x2624 at pixel 1056,704)",
                         "Power Up Time=2021:07:04 18:05:09", "VR Info Version=0100", "Vibration Reduction=On", "VR Mode=Normal",
                         "Picture Control Version=0100", "Picture Control Name=STANDARD",
                         "Picture Control Base=NEUTRAL", "Time Zone=-05:30", "Daylight Savings=Yes",
                         "Date Display Format=D/M/Y", "ISO=200", "ISO Expansion=Hi 1.5", "AF Info 2 Version=0100",
                         "Contrast Detect AF=On", "AF Area Mode=Contrast-detect (face priority)",
                         "Phase Detect AF=Off", "File Info Version=0100",
                         "Memory Card Number=1", "Directory Number=100", "File Number=1234", "AF Fine Tune=On (1)",
                         "AF Fine Tune Index=n/a", "AF Fine Tune Adj=-5", "AF Fine Tune Adj Tele=0"};
    EXPECT_EQ(Nikon(kLE, kLE, note, "NIKON Z 6_2"), expected);
    EXPECT_EQ(Nikon(kBE, kBE, note, "Nikon Z 7"), expected);
    EXPECT_EQ(Only(Nikon(kLE, kBE, note, "NIKON Z 8"), "VR Mode"), Texts{"VR Mode=On (1)"});
}

TEST(NikonNote, StructuresStopAtTheRowLimitAndHostileOffsetsGiveNoRows) {
    const auto lens = [](MakerNoteBuilder& n) {
        Lens(n, "0101", 11, {0xB0, 0x4C, 0x50, 0x50, 0x14, 0x14, 0xB2}, 0x06);
    };
    // 250 rows, Make, Model, then the Lens Type row: 3 of the lens data's rows fit.
    const Decoded full = NikonDecoded(kLE, kLE, "NIKON D70", lens, 250);
    EXPECT_EQ(full.count, 256u);
    EXPECT_EQ(RowTexts(full).back(), "AF Aperture=1.0");
    EXPECT_EQ(Nikon(kLE, kLE, [](MakerNoteBuilder& n) {
                  n.Field(132, fixture::kRational, 4, {0xF8, 0xFF, 0xFF, 0xFF});  // wraps past 4 GB
                  n.Field(152, fixture::kUndefined, 20, {0xFC, 0xFF, 0xFF, 0xFF});
                  n.Field(168, fixture::kUndefined, 2, {'0', '1', 0, 0});       // too short for a version
                  n.Field(17, fixture::kLong, 1, {0x00, 0x00, 0x00, 0x40});     // a preview far past the end
                  Bytes data = fixture::ToBytes("0101");
                  data.resize(13, 0x40);  // its identifying bytes end at byte 18
                  n.OutOfLine(152, fixture::kUndefined, 13, data);
              }),
              (Texts{"Lens=", "Lens Data Version=0101"}));
}

// A fuzz finding: a bracket step of 2.45e9 EV overflowed the int its steps
// were counted in.
TEST(NikonNote, ABracketValueBeyondAnyIntIsPrinted) {
    EXPECT_EQ(Nikon(kLE, kLE, [](MakerNoteBuilder& n) {
                  n.OutOfLine(25, fixture::kRational, 1, Longs(kLE, {2453700000u, 1}));
              }),
              (Texts{"Exposure Bracket Value=+2.45e+09"}));
}

}  // namespace
