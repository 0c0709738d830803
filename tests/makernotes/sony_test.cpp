// Sony notes where the corpus files do not go: the lens named from each of
// its sources (and a shared lens type the lens spec confirms or does not), the
// body's name, the settings each kind of body words its own way or leaves
// unrecorded, the enciphered blocks of a body whose layout is known (in both
// byte orders) and of one whose is not, face records, the 19-point AF info,
// the lens spec's words, blocks cut short and the row limit.
#include <string>
#include <vector>

#include "makernotes/makernote_decoders.h"
#include "makernotes/makernote_limits.h"
#include "makernotes/sony_makernote.h"
#include "note_harness.h"

namespace {

using namespace notetest;

const std::string kHeader("SONY DSC \0\0\0", 12);

Texts Sony(ByteOrder order, const Fill& fill, uint32_t filler = 0) {
    return RowTexts(Note(order, "SONY", kHeader, fill, filler));
}

Texts Only(const Texts& rows, const std::vector<std::string>& names) {
    Texts out;
    for (const std::string& r : rows)
        for (const std::string& name : names)
            if (r.rfind(name + "=", 0) == 0) out.push_back(r);
    return out;
}

// Sony's cipher as the camera applies it: each byte below 249 cubed mod 249.
Bytes Encipher(Bytes plain) {
    for (uint8_t& b : plain)
        if (b < 249) b = static_cast<uint8_t>(b * b % 249 * b % 249);
    return plain;
}

void Put16(Bytes& block, size_t at, uint16_t v, ByteOrder order) {
    Bytes two;
    fixture::PutU16(two, v, order);
    block[at] = two[0];
    block[at + 1] = two[1];
}
void Put32(Bytes& block, size_t at, uint32_t v, ByteOrder order) {
    Put16(block, at, static_cast<uint16_t>(order == kLE ? v : v >> 16), order);
    Put16(block, at + 2, static_cast<uint16_t>(order == kLE ? v >> 16 : v), order);
}

// A lens spec: flags, short and long focal length and the two apertures in
// binary-coded decimal, flags.
Bytes Spec(uint8_t flags, uint16_t shortFocal, uint16_t longFocal, uint8_t wide, uint8_t tele, uint8_t flags2) {
    auto bcd = [](unsigned v) { return static_cast<uint8_t>((v / 10 % 10) << 4 | v % 10); };
    return {flags, bcd(shortFocal / 100), bcd(shortFocal), bcd(longFocal / 100), bcd(longFocal), wide, tele, flags2};
}

// Tag 940C of an E-mount body: byte 8 the mount of the lens, then its type.
Bytes LensRecord(ByteOrder order, uint8_t mount, uint16_t type) {
    Bytes block(64, 0);
    block[8] = mount;
    Put16(block, 9, type, order);
    return Encipher(block);
}

TEST(SonyNote, TheLensIsNamedBesideItsTypeFromTheTypeTheEmountTypeOrTheSpec) {
    for (ByteOrder order : {kLE, kBE}) {
        // The Lens Type row reads the LONG's first two bytes, which hold
        // its high half in a big-endian file; the name is read from the
        // whole LONG.
        const auto type = [order](const char* le) { return std::string("Lens Type=") + (order == kLE ? le : "0"); };
        const std::vector<std::string> lens{"Lens Type", "Lens Name"};
        // A type no other lens reports.
        EXPECT_EQ(Only(Sony(order, [](MakerNoteBuilder& n) { n.Long(0xB027, 40); }), lens),
                  (Texts{type("40"), "Lens Name=Minolta/Sony AF DT 18-70mm F3.5-5.6 (D)"}));
        // A type it shares: the lens spec confirms it, contradicts it, or is absent.
        const auto shared = [order](Bytes spec) {
            return Only(Sony(order, [spec](MakerNoteBuilder& n) {
                            n.Long(0xB027, 48);
                            if (!spec.empty()) n.OutOfLine(0xB02A, fixture::kByte, 8, spec);
                        }),
                        {"Lens Name"});
        };
        EXPECT_EQ(shared(Spec(0, 24, 70, 0x28, 0, 0x05)),
                  Texts{"Lens Name=Carl Zeiss Vario-Sonnar T* 24-70mm F2.8 ZA SSM (SAL2470Z)"});
        EXPECT_EQ(shared(Spec(0, 24, 105, 0x40, 0, 0x09)), Texts{"Lens Name=24-105mm F4 G SSM"});
        EXPECT_EQ(shared({}), Texts{"Lens Name=Carl Zeiss Vario-Sonnar T* 24-70mm F2.8 ZA SSM (SAL2470Z) or other lens"});
        // No A-mount lens: an E-mount body's lens record names it, when the
        // record says an E-mount lens is on.
        const auto emount = [order](uint8_t mount) {
            return Only(Sony(order, [order, mount](MakerNoteBuilder& n) {
                            n.Short(0xB001, 363).Long(0xB027, 0xFFFF);
                            n.OutOfLine(0x940C, fixture::kUndefined, 64, LensRecord(order, mount, 32821));
                        }),
                        {"Lens Type", "Lens Name", "Lens Mount 2", "Lens Type 3"});
        };
        EXPECT_EQ(emount(4), (Texts{type("-1"), "Lens Name=Sony FE 24-70mm F2.8 GM", "Lens Mount 2=E-mount",
                                    "Lens Type 3=Sony FE 24-70mm F2.8 GM"}));
        EXPECT_EQ(emount(0), (Texts{type("-1"), "Lens Mount 2=Unknown", "Lens Type 3=Sony FE 24-70mm F2.8 GM"}));
        // Else the lens spec alone; with none, no row.
        EXPECT_EQ(Only(Sony(order, [](MakerNoteBuilder& n) {
                           n.Long(0xB027, 0xFFFF).OutOfLine(0xB02A, fixture::kByte, 8, Spec(0x83, 18, 135, 0x35, 0x56, 0));
                       }),
                       lens),
                  (Texts{type("-1"), "Lens Name=E 18-135mm F3.5-5.6 OSS"}));
        EXPECT_EQ(Only(Sony(order, [](MakerNoteBuilder& n) { n.Long(0xB027, 9999); }), lens), Texts{type("9999")});
    }
}

TEST(SonyNote, TheBodyIsNamedBesideItsIdUnlessTheIdRowNamesIt) {
    const auto model = [](uint16_t id) {
        return Only(Sony(kLE, [id](MakerNoteBuilder& n) { n.Short(0xB001, id); }), {"Sony Model ID", "Sony Model"});
    };
    EXPECT_EQ(model(383), (Texts{"Sony Model ID=383", "Sony Model=ILCE-7SM3"}));
    EXPECT_EQ(model(312), Texts{"Sony Model ID=ILCE-6000"});
    EXPECT_EQ(model(999), Texts{"Sony Model ID=999"});
}

TEST(SonyNote, EachKindOfBodyWordsItsAfSettingsAndUnrecordedSettingsGiveNoRow) {
    const auto af = [](uint16_t model) {
        return Sony(kLE, [model](MakerNoteBuilder& n) {
            n.Short(0xB001, model);
            n.Field(0x201C, fixture::kByte, 1, {9, 0, 0, 0}).Field(0x201D, fixture::kShort, 2, {0x40, 1, 0xF0, 0});
            n.Field(0x201E, fixture::kByte, 1, {1, 0, 0, 0});
            n.OutOfLine(0x2020, fixture::kByte, 10, {0x01, 0x02, 0, 0, 0, 0, 0, 0, 0, 0});
            n.Short(0xB041, 0xFFFF).Field(0xB048, fixture::kSShort, 1, {0xFF, 0xFF, 0, 0}).Short(0xB049, 2);
        });
    };
    EXPECT_EQ(af(303), (Texts{"Sony Model ID=303", "Sony Model=SLT-A58", "AF Area Mode=Spot", "AF Point Selected=Center",
                              "AF Points Used=Center, Far Right", "Flash Level=-1/3", "Release Mode=Continuous"}));
    EXPECT_EQ(af(363), (Texts{"Sony Model ID=363", "Sony Model=ILCE-7M3", "AF Area Mode=Center (LA-EA4)",
                              "Flexible Spot Position=320 240", "AF Point Selected=Center Zone",
                              "AF Points Used=Center, Far Right", "Flash Level=-1/3", "Release Mode=Continuous"}));
    EXPECT_EQ(af(369), (Texts{"Sony Model ID=369", "Sony Model=DSC-RX100M5A", "AF Area Mode=Center (LA-EA4)",
                              "Flexible Spot Position=320 240", "Flash Level=-1/3", "Release Mode=Continuous"}));
    // The DSLR-A100 fills these with 0xFFFF: nothing is recorded.
    EXPECT_EQ(af(256), (Texts{"Sony Model ID=DSLR-A100", "AF Area Mode=Center (LA-EA4)", "AF Point Selected=Center",
                              "AF Points Used=Center, Far Right", "Release Mode=Continuous"}));
}

// Tag 9050 of the ILCE-7M3 generation, in the clear.
Bytes ShutterBlock(ByteOrder order, size_t size) {
    Bytes block(128, 0);
    Put16(block, 38, 2750, order);
    Put16(block, 40, 5195, order);
    Put16(block, 42, 6588, order);
    block[57] = 65;
    Put32(block, 58, 123456, order);
    Put16(block, 70, 0x1756, order);
    Put16(block, 72, 0x1400, order);
    block[75] = 2;
    block.resize(size);
    return Encipher(block);
}

TEST(SonyNote, TheShutterCountIsReadFromTheEncipheredBlockOfABodyWhoseLayoutIsKnown) {
    for (ByteOrder order : {kLE, kBE}) {
        const auto decode = [order](uint16_t model, size_t size) {
            return Sony(order, [order, model, size](MakerNoteBuilder& n) {
                n.Short(0xB001, model).OutOfLine(0x9050, fixture::kUndefined, static_cast<uint32_t>(size),
                                                 ShutterBlock(order, size));
            });
        };
        EXPECT_EQ(decode(363, 128),
                  (Texts{"Sony Model ID=363", "Sony Model=ILCE-7M3", "Shutter=Mechanical (2750 5195 6588)",
                         "Flash Status=Built-in Flash Fired", "Shutter Count=123456", "Exposure Time=1/162",
                         "F Number=4.0", "Release Mode 2=Continuous - Exposure Bracketing"}));
        // Cut short: the fields the block holds whole.
        EXPECT_EQ(decode(363, 60), (Texts{"Sony Model ID=363", "Sony Model=ILCE-7M3",
                                         "Shutter=Mechanical (2750 5195 6588)", "Flash Status=Built-in Flash Fired"}));
        // A body whose layout is not known gives no rows from the block.
        EXPECT_EQ(decode(999, 128), Texts{"Sony Model ID=999"});
    }
}

// Found by fuzzing: the shortest exposure code, 0xFFFF, is 2^-240 seconds,
// whose denominator overflowed an int.
TEST(SonyNote, TheShortestExposureCodePrintsItsWholeDenominator) {
    Bytes block(128, 0);
    Put16(block, 70, 0xFFFF, kLE);
    const Texts rows = Only(Sony(kLE, [&](MakerNoteBuilder& n) {
                                n.Short(0xB001, 363).OutOfLine(0x9050, fixture::kUndefined, 128, Encipher(block));
                            }),
                            {"Exposure Time"});
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].rfind("Exposure Time=1/17", 0), 0u) << rows[0];
    EXPECT_EQ(rows[0].size(), std::string("Exposure Time=1/").size() + 73) << rows[0];
}

TEST(SonyNote, ShotInfoInItsOwnByteOrderWithTheFacesItRecords) {
    Bytes block(94 + 2 * 37, 0);
    block[0] = block[1] = 'M';
    Put16(block, 2, 94, kBE);
    const std::string date = "2020:01:02 03:04:05";
    std::copy(date.begin(), date.end(), block.begin() + 6);
    Put16(block, 26, 4000, kBE);
    Put16(block, 28, 6000, kBE);
    Put16(block, 48, 2, kBE);
    for (int i = 0; i < 4; ++i) {
        Put16(block, 94 + 2 * i, static_cast<uint16_t>(100 + i), kBE);
        Put16(block, 94 + 37 + 2 * i, static_cast<uint16_t>(200 + i), kBE);
    }
    EXPECT_EQ(Sony(kLE, [&](MakerNoteBuilder& n) {
                  n.OutOfLine(0x3000, fixture::kUndefined, static_cast<uint32_t>(block.size()), block);
              }),
              (Texts{"Sony Date Time=2020:01:02 03:04:05", "Sony Image Height=4000", "Sony Image Width=6000",
                     "Faces Detected=2", "Meta Version=", "Face 1 Position=100 101 102 103",
                     "Face 2 Position=200 201 202 203"}));
}

TEST(SonyNote, AfInfoOfA19PointBodyNamesItsPointsAndTheirStatus) {
    Bytes block(384, 0);
    block[2] = 2;
    Put16(block, 4, static_cast<uint16_t>(-5), kLE);
    block[7] = 12;
    block[8] = 255;
    block[9] = 30;
    block[10] = 3;
    block[11] = 3;
    for (size_t at = 17; at < 17 + 60; at += 2) Put16(block, at, 0x8000, kLE);
    Put16(block, 17 + 24, 7, kLE);
    Put32(block, 366, 0x201, kLE);
    block[381] = static_cast<uint8_t>(-3);
    block[382] = 1;
    const Texts rows = Sony(kLE, [&](MakerNoteBuilder& n) {
        n.Short(0xB001, 294).OutOfLine(0x940E, fixture::kUndefined, 384, Encipher(block));
    });
    ASSERT_EQ(rows.size(), 2u + 7u + 30u + 3u);
    EXPECT_EQ(Texts(rows.begin() + 2, rows.begin() + 9),
              (Texts{"AF Type=19-point", "AF Status Active Sensor=Front Focus (-5)", "AF Point=Center (horizontal)",
                     "AF Point In Focus=(none)", "AF Point At Shutter Release=(out of focus)", "AF Area Mode=Zone",
                     "Focus Mode=AF-C"}));
    EXPECT_EQ(rows[9], "AF Status Upper Far Left=Out of Focus");
    EXPECT_EQ(rows[9 + 12], "AF Status Center Horizontal=Back Focus (+7)");
    EXPECT_EQ(Texts(rows.end() - 3, rows.end()),
              (Texts{"AF Points Used=Center, Far Right", "AF Micro Adjustment=-3",
                     "Exposure Program=Aperture-priority AE"}));
}

TEST(SonyLensSpec, FlagsGiveTheWordsAroundTheFocalLengthAndAperture) {
    const auto text = [](const Bytes& spec) {
        std::string out;
        return makernotes::sony::LensSpecText(spec.data(), out) ? out : "(none)";
    };
    EXPECT_EQ(text(Spec(0x02, 35, 0, 0x14, 0, 0)), "FE 35mm F1.4");
    EXPECT_EQ(text(Spec(0x03, 24, 70, 0x28, 0, 0x65)), "E 24-70mm F2.8 Macro ZA SSM");
    EXPECT_EQ(text(Spec(0xA8, 24, 70, 0x28, 0, 0x09)), "24-70mm F2.8 G SSM OSS LE II");
    EXPECT_EQ(text(Spec(0x43, 24, 70, 0x28, 0, 0x0A)), "E PZ 24-70mm F2.8 G SAM");
    EXPECT_EQ(text(Spec(0x01, 300, 0, 0x28, 0, 0x80)), "DT 300mm F2.8 Fisheye");
    EXPECT_EQ(text(Spec(0, 24, 70, 0x28, 0x40, 0x20)), "24-70mm F2.8-4 STF");
    EXPECT_EQ(text(Spec(0, 0, 0, 0x28, 0, 0)), "(none)");
    EXPECT_EQ(text(Spec(0, 24, 70, 0, 0, 0)), "(none)");
}

TEST(SonyNote, CompanionRowsStopAtTheRowLimit) {
    // 250 rows, then five entries: 250 + 5 stays below the limit, so the
    // directory is read. The lens adds its name; the body's ID then fills
    // the last row, and its name finds no room.
    const Decoded d = Note(kLE, "SONY", kHeader, [](MakerNoteBuilder& n) {
        n.Short(0xB025, 1).Short(0xB026, 1).Short(0xB029, 0).Long(0xB027, 40).Short(0xB001, 383);
    }, 249);
    EXPECT_EQ(d.count, makernotes::kMakerNoteRowLimit);
    const std::vector<Row> rows = d.rows();
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[4].name, "Lens Name");
    EXPECT_EQ(rows[5].name, "Sony Model ID");
}

TEST(SonyNote, HostileOffsetsAndShortBlocksGiveNoRowsFromThem) {
    EXPECT_EQ(Sony(kLE, [](MakerNoteBuilder& n) {
                  n.Short(0xB001, 256).Long(0xB028, 0xFFFFFFF0);                   // A100 directory past the end
                  n.Field(0x9050, fixture::kUndefined, 200, {0xF0, 0xFF, 0xFF, 0xFF});  // block past the end
                  n.Field(0x3000, fixture::kUndefined, 2, {'I', 'I', 0, 0});             // shot info of its mark only
                  n.Field(0x202A, fixture::kUndefined, 1, {1, 0, 0, 0});                 // points used, no more
              }),
              (Texts{"Sony Model ID=DSLR-A100"}));
}

}  // namespace
