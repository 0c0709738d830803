// Canon and Nikon (main form) notes: the plain tags, the arrays and
// sub-blocks that hold one setting per element, and what hostile offsets,
// short arrays and a full table do to them.
#include <initializer_list>
#include <string>
#include <vector>

#include "makernotes/makernote_decoders.h"
#include "note_harness.h"

namespace {

using namespace notetest;

Bytes Shorts(ByteOrder order, std::initializer_list<int> values) {
    Bytes out;
    for (int v : values) fixture::PutU16(out, static_cast<uint16_t>(v), order);
    return out;
}

// ------------------------------------------------------------ Canon

// Elements 0 to 25 of the camera settings: macro, a 2 s custom timer, RAW,
// external flash, continuous high, AI servo, evaluative, manual, 18-55 mm
// in tenths.
Bytes CameraSettings(ByteOrder o) {
    return Shorts(o, {52, 1, 0x4014, 4, 16, 5, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 0, 4, 0, 0, 550, 180, 10});
}

Decoded Canon(ByteOrder order, const std::string& make, void (*fill)(MakerNoteBuilder&, ByteOrder),
              uint32_t filler = 0) {
    MakerNoteBuilder note(order);
    fill(note, order);
    return DispatchNote(order, make, note.Build(fixture::kNoteOffset), filler);
}

void CanonEntries(MakerNoteBuilder& n, ByteOrder o) {
    n.OutOfLine(1, fixture::kShort, 26, CameraSettings(o));
    n.OutOfLine(4, fixture::kShort, 10, Shorts(o, {20, 0, 160, 0, 0, 0, 0, 8, 0, 3}));
    n.Ascii(6, "Canon EOS 350D DIGITAL").Ascii(7, "Firmware 1.0.2").Long(8, 1181861).Ascii(9, "Phil");
    n.Long(12, 560018150).Long(16, 0x80000189).Ascii(149, "EF-S18-55mm");
    n.Short(2, 1).Short(0x1234, 7);  // never named
}

TEST(CanonNote, PlainTagsThenOneRowPerArraySettingInEitherOrder) {
    const Texts expected{"Image Type=Canon EOS 350D DIGITAL", "Firmware Version=Firmware 1.0.2",
                         "File Number=118-1861", "Owner Name=Phil", "Serial Number=560018150",
                         "Camera Model ID=2147484041", "Lens Model=EF-S18-55mm",
                         "Macro Mode=Macro", "Self Timer=2.0 s, Custom", "Quality=RAW",
                         "Flash Mode=External flash", "Drive Mode=Continuous, High", "Focus Mode=AI Servo AF",
                         "Metering Mode=Evaluative", "Exposure Mode=Manual", "Lens Focal Range=18 - 55 mm",
                         "Base ISO=100", "White Balance=Shade", "Sequence Number=3"};
    EXPECT_EQ(RowTexts(Canon(kLE, "Canon", CanonEntries)), expected);
    EXPECT_EQ(RowTexts(Canon(kBE, "Canon", CanonEntries)), expected);
}

TEST(CanonNote, SettingsBeyondAShortArrayAreLeftOut) {
    const Decoded d = Canon(kLE, "Canon", [](MakerNoteBuilder& n, ByteOrder o) {
        n.OutOfLine(1, fixture::kShort, 4, Shorts(o, {8, 2, 0, 1}));  // elements 0 to 3 only
        n.Field(4, fixture::kShort, 2, Shorts(o, {4, 192}));          // inline: ISO needs element 2
    });
    EXPECT_EQ(RowTexts(d), (Texts{"Macro Mode=Normal", "Self Timer=Off", "Quality=Economy"}));
}

TEST(CanonNote, UnlistedValuesShowTheirNumberAndEqualFocalEndsOneLength) {
    const Decoded d = Canon(kLE, "Canon", [](MakerNoteBuilder& n, ByteOrder o) {
        n.OutOfLine(1, fixture::kShort, 26,
                    Shorts(o, {52, 9, 0, -1, 99, 7, 0, 600, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9, 0, 0, 9, 0, 0, 50, 50, 0}));
    });
    EXPECT_EQ(RowTexts(d), (Texts{"Macro Mode=9", "Self Timer=Off", "Quality=n/a", "Flash Mode=99", "Drive Mode=7",
                                  "Focus Mode=600", "Metering Mode=9", "Exposure Mode=9",
                                  "Lens Focal Range=50 mm"}));
}

TEST(CanonNote, HostileArraysGiveNoRowsAndNoReadOutsideTheFile) {
    const Decoded d = Canon(kLE, "Canon", [](MakerNoteBuilder& n, ByteOrder) {
        n.Field(1, fixture::kShort, 26, {0xF0, 0xFF, 0xFF, 0xFF});           // offset past the end
        n.Field(4, fixture::kShort, 0x7FFFFFFF, {0x08, 0x00, 0x00, 0x00});   // a count no file holds
        n.Field(1, fixture::kLong, 26, {0x08, 0x00, 0x00, 0x00});            // not SHORTs
        n.Long(8, 42);
    });
    // The huge count reads the bytes that are there (the TIFF header and
    // note): whatever they say, no more than the shot-info rows appear.
    const Texts rows = RowTexts(d);
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front(), "File Number=0-0042");
    EXPECT_LE(rows.size(), 4u);
}

TEST(CanonNote, ArrayRowsStopAtTheRowLimit) {
    // 241 rows before + 12 entries stays below 256, so the directory is read;
    // its 11 plain rows leave room for 4 of the 9 camera-settings rows.
    const Decoded d = Canon(kLE, "Canon", [](MakerNoteBuilder& n, ByteOrder o) {
        n.OutOfLine(1, fixture::kShort, 26, CameraSettings(o));
        for (int i = 0; i < 11; ++i) n.Long(8, 1);
    }, 240);
    EXPECT_EQ(d.count, 256u);
    EXPECT_EQ(RowTexts(d).back(), "Flash Mode=External flash");
}

TEST(CanonNote, DirectoryTooLargeForTheTableIsSkippedByBothPasses) {
    const Decoded d = Canon(kLE, "Canon", [](MakerNoteBuilder& n, ByteOrder o) {
        n.OutOfLine(1, fixture::kShort, 26, CameraSettings(o));
        for (int i = 0; i < 12; ++i) n.Long(8, 1);
    }, 242);
    // 242 filler + Make = 243; 243 + 13 entries reaches 256.
    EXPECT_EQ(RowTexts(d), Texts{});
}

// ------------------------------------------------------------ Nikon

const std::string kEmbeddedLE("Nikon\0\x02\x10\0\0II*\0\x08\0\0\0", 18);
const std::string kEmbeddedBE("Nikon\0\x02\x10\0\0MM\0*\0\0\0\x08", 18);

Bytes Rationals(ByteOrder o, std::initializer_list<std::pair<uint32_t, uint32_t>> values) {
    Bytes out;
    for (const auto& v : values) {
        fixture::PutU32(out, v.first, o);
        fixture::PutU32(out, v.second, o);
    }
    return out;
}

// Lens data version 0100: the 7 identifying bytes of "AF-S DX Zoom-Nikkor
// 18-55mm f/3.5-5.6G ED II" at 6 to 12; the lens-type byte (06) comes after
// it in the directory.
void NikonEntries(MakerNoteBuilder& n, const std::string& lensData = "0100") {
    const ByteOrder o = n.order();
    Bytes data = fixture::ToBytes(lensData);
    fixture::Append(data, {0, 0, 0x94, 0x40, 0x2D, 0x53, 0x2C, 0x3C, 0x96});
    n.Field(1, fixture::kUndefined, 4, fixture::ToBytes("0210"));
    n.Field(2, fixture::kShort, 2, Shorts(o, {0, 400}));
    n.Ascii(3, "COLOR").Ascii(4, "FINE ").Ascii(5, "AUTO").Ascii(6, "NORMAL").Ascii(7, "AF-S");
    n.Ascii(8, "NORMAL").Ascii(15, "MANUAL").Ascii(29, "4711");
    n.OutOfLine(132, fixture::kRational, 4, Rationals(o, {{18, 1}, {55, 1}, {35, 10}, {56, 10}}));
    n.Field(135, fixture::kByte, 1, {9, 0, 0, 0});
    n.Short(137, 0x21);
    n.OutOfLine(152, fixture::kUndefined, static_cast<uint32_t>(data.size()), data);
    n.Field(131, fixture::kByte, 1, {6, 0, 0, 0});
    n.Long(167, 3619);
    n.Short(0x1234, 1);  // never named
}

Texts NikonExpected(const std::string& lensName) {
    return {"Version=0210", "ISO Setting=400", "Color Mode=COLOR", "Quality=FINE", "White Balance=AUTO",
            "Sharpening=NORMAL", "Focus Mode=AF-S", "Flash Setting=NORMAL", "ISO Selection=MANUAL",
            "Serial Number=4711", "Lens=18-55mm f/3.5-5.6", "Flash Mode=Fired, TTL Mode",
            "Shooting Mode=Continuous, Auto ISO", "Lens Name=" + lensName, "Lens Type=G", "Shutter Count=3619"};
}

Texts Nikon(ByteOrder fileOrder, ByteOrder noteOrder, const std::string& make, const std::string& header,
            const std::string& lensData = "0100") {
    MakerNoteBuilder note(noteOrder);
    note.Header(header);
    NikonEntries(note, lensData);
    // The embedded form counts offsets from its own header, 10 bytes in.
    const int64_t origin = header.empty() ? fixture::kNoteOffset : -10;
    return RowTexts(DispatchNote(fileOrder, make, note.Build(origin)));
}

TEST(NikonNote, EmbeddedTiffFormInItsOwnByteOrder) {
    const Texts expected = NikonExpected("AF-S DX Zoom-Nikkor 18-55mm f/3.5-5.6G ED II");
    EXPECT_EQ(Nikon(kBE, kLE, "NIKON CORPORATION", kEmbeddedLE), expected);
    EXPECT_EQ(Nikon(kLE, kBE, "NIKON CORPORATION", kEmbeddedBE), expected);
}

TEST(NikonNote, HeaderlessFormOffsetsFromTheExifHeader) {
    EXPECT_EQ(Nikon(kLE, kLE, "NIKON", ""), NikonExpected("AF-S DX Zoom-Nikkor 18-55mm f/3.5-5.6G ED II"));
    EXPECT_EQ(Nikon(kBE, kBE, "NIKON", ""), NikonExpected("AF-S DX Zoom-Nikkor 18-55mm f/3.5-5.6G ED II"));
}

TEST(NikonNote, LensNameOnlyFromClearVersion0100Data) {
    EXPECT_EQ(Nikon(kLE, kLE, "NIKON", kEmbeddedLE, "0201")[13], "Lens Name=unknown (lens data 0201)");
}

TEST(NikonNote, UnknownLensShowsItsKey) {
    MakerNoteBuilder note(kLE);
    note.Header(kEmbeddedLE);
    Bytes data = fixture::ToBytes("0100");
    fixture::Append(data, {0, 0, 0x94, 0x40, 0x2D, 0x53, 0x2C, 0x3C, 0x96});
    note.OutOfLine(152, fixture::kUndefined, 13, data).Field(131, fixture::kByte, 1, {0x0E, 0, 0, 0});
    EXPECT_EQ(RowTexts(DispatchNote(kLE, "", note.Build(-10))),
              (Texts{"Lens Name=unknown (94 40 2D 53 2C 3C 96 0E)", "Lens Type=G VR"}));
}

TEST(NikonNote, FlagTextsOfLensTypeAndShootingMode) {
    MakerNoteBuilder note(kBE);
    note.Header(kEmbeddedBE);
    for (uint8_t type : {0x00, 0x01, 0x02, 0x0A, 0x46, 0x4E, 0x80}) note.Field(131, fixture::kByte, 1, {type, 0, 0, 0});
    for (uint16_t mode : {0x00, 0x08, 0x12, 0x100}) note.Short(137, mode);
    EXPECT_EQ(RowTexts(DispatchNote(kBE, "", note.Build(-10))),
              (Texts{"Lens Type=AF", "Lens Type=MF", "Lens Type=D", "Lens Type=D VR", "Lens Type=E",
                     "Lens Type=E VR", "Lens Type=AF-P", "Shooting Mode=Single-Frame",
                     "Shooting Mode=Single-Frame, Self-timer", "Shooting Mode=Delay, Exposure Bracketing",
                     "Shooting Mode=Single-Frame, D-Lighting Bracketing"}));
}

TEST(NikonNote, HostileOffsetsLeaveValuesEmpty) {
    MakerNoteBuilder note(kLE);
    note.Header(kEmbeddedLE);
    note.Field(132, fixture::kRational, 4, {0xF8, 0xFF, 0xFF, 0xFF});   // wraps past 4 GB
    note.Field(132, fixture::kRational, 4, {0x00, 0x00, 0x00, 0x40});   // far past the end
    note.Field(152, fixture::kUndefined, 13, {0xFC, 0xFF, 0xFF, 0xFF});
    note.Field(152, fixture::kUndefined, 2, {'0', '1', 0, 0});          // too short to hold a lens
    EXPECT_EQ(RowTexts(DispatchNote(kLE, "", note.Build(-10))), (Texts{"Lens=", "Lens=", "Lens Name=", "Lens Name="}));
}

TEST(NikonNote, DirectoryTooLargeForTheTableAddsNothing) {
    MakerNoteBuilder note(kLE);
    note.Header(kEmbeddedLE);
    NikonEntries(note);
    // 17 entries; 238 filler + Make = 239, and 239 + 17 reaches 256.
    EXPECT_EQ(RowTexts(DispatchNote(kLE, "NIKON", note.Build(-10), 238)), Texts{});
}

}  // namespace
