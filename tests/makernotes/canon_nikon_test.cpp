// Nikon (main form) notes where the corpus files do not go: a Nikon lens the
// table names, the rarer branches of the setting and flag texts, and what
// hostile offsets and arrays do.
#include <string>
#include <vector>

#include "makernotes/makernote_decoders.h"
#include "note_harness.h"

namespace {

using namespace notetest;

// ------------------------------------------------------------ Nikon

const std::string kEmbeddedLE("Nikon\0\x02\x10\0\0II*\0\x08\0\0\0", 18);
const std::string kEmbeddedBE("Nikon\0\x02\x10\0\0MM\0*\0\0\0\x08", 18);

// A note with the embedded header; its offsets count from that header, 10 bytes in.
Texts Nikon(ByteOrder fileOrder, ByteOrder noteOrder, void (*fill)(MakerNoteBuilder&)) {
    MakerNoteBuilder note(noteOrder);
    note.Header(noteOrder == kLE ? kEmbeddedLE : kEmbeddedBE);
    fill(note);
    return RowTexts(DispatchNote(fileOrder, "NIKON CORPORATION", note.Build(-10)));
}

// Lens data version 0100: the 7 identifying bytes of "AF-S DX Zoom-Nikkor
// 18-55mm f/3.5-5.6G ED II" at 6 to 12; then tag 0083, the lens-type byte
// that completes the key (06 for that lens), listed after the data.
void Lens(MakerNoteBuilder& n, uint8_t type) {
    Bytes data = fixture::ToBytes("0100");
    fixture::Append(data, {0, 0, 0x94, 0x40, 0x2D, 0x53, 0x2C, 0x3C, 0x96});
    n.OutOfLine(152, fixture::kUndefined, 13, data).Field(131, fixture::kByte, 1, {type, 0, 0, 0});
}

TEST(NikonNote, LensNameFromClearDataKeyedWithTheLensTypeAndFlagTexts) {
    // No lens of the corpus files is in the table. The notes here are in the
    // byte order unlike their file's.
    EXPECT_EQ(Nikon(kBE, kLE, [](MakerNoteBuilder& n) { Lens(n, 0x06); }),
              (Texts{"Lens Name=AF-S DX Zoom-Nikkor 18-55mm f/3.5-5.6G ED II", "Lens Type=G"}));
    EXPECT_EQ(Nikon(kLE, kBE, [](MakerNoteBuilder& n) { Lens(n, 0x0E); }),
              (Texts{"Lens Name=unknown (94 40 2D 53 2C 3C 96 0E)", "Lens Type=G VR"}));
    EXPECT_EQ(Nikon(kBE, kBE, [](MakerNoteBuilder& n) {
                  for (uint8_t type : {0x00, 0x46, 0x4E}) n.Field(131, fixture::kByte, 1, {type, 0, 0, 0});
                  for (uint16_t mode : {0x08, 0x100}) n.Short(137, mode);
              }),
              (Texts{"Lens Type=AF", "Lens Type=E", "Lens Type=E VR", "Shooting Mode=Single-Frame, Self-timer",
                     "Shooting Mode=Single-Frame, D-Lighting Bracketing"}));
}

TEST(NikonNote, HostileOffsetsLeaveValuesEmpty) {
    EXPECT_EQ(Nikon(kLE, kLE, [](MakerNoteBuilder& n) {
                  n.Field(132, fixture::kRational, 4, {0xF8, 0xFF, 0xFF, 0xFF});  // wraps past 4 GB
                  n.Field(132, fixture::kRational, 4, {0x00, 0x00, 0x00, 0x40});  // far past the end
                  n.Field(152, fixture::kUndefined, 13, {0xFC, 0xFF, 0xFF, 0xFF});
                  n.Field(152, fixture::kUndefined, 2, {'0', '1', 0, 0});  // too short to hold a version
                  Bytes data = fixture::ToBytes("0101");
                  data.resize(13, 0x40);  // its form's key ends at byte 18
                  n.OutOfLine(152, fixture::kUndefined, 13, data);
              }),
              (Texts{"Lens=", "Lens=", "Lens Name=", "Lens Name=", "Lens Name=unknown (lens data 0101)"}));
}

}  // namespace
