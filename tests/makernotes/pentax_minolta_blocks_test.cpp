// The setting blocks of Pentax notes (read in the note's order, or fixed
// big-endian where the camera writes them so) and the Dynax 7D and 5D
// settings of Minolta notes (big-endian SHORTs in files of either order):
// layouts no corpus file carries, both byte orders, the layouts that are
// not read, and the row limit in the middle of a block.
#include <cstdint>
#include <initializer_list>
#include <string>

#include "note_harness.h"

namespace {

using namespace notetest;

Bytes Longs(std::initializer_list<uint32_t> values, ByteOrder order) {
    Bytes out;
    for (uint32_t v : values) fixture::PutU32(out, v, order);
    return out;
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

// A K-5 note with one block of each kind (and two that are not read).
void PentaxBlocks(MakerNoteBuilder& n) {
    n.Long(5, 0x12e76);
    n.Field(6, fixture::kUndefined, 4, {0x07, 0xD8, 0x03, 0x02}).Field(7, fixture::kUndefined, 3, {12, 1, 23, 0});
    n.Short(0x50, 0).Short(0x50, 53190 - 5200);                           // none recorded, then 5200 K
    n.Field(0x5c, fixture::kByte, 2, {1, 1, 0, 0});                       // the two-byte form: not read
    n.Field(0x5d, fixture::kUndefined, 4, {0xF4, 0x26, 0xED, 0x8D});      // scrambled with date and time
    n.Field(0x60, fixture::kUndefined, 4, {2, 0, 40, 60}).Field(0x76, fixture::kByte, 2, {10, 2, 0, 0});
    n.OutOfLine(0x206, fixture::kUndefined, 24, Bytes(24, 0x40));         // a longer layout: not read
    n.OutOfLine(0x215, fixture::kLong, 5, Longs({0x12e76, 20101231, 8, 1, 4242}, n.order()));
    n.Field(0x216, fixture::kUndefined, 4, {0x02, 0x54, 0, 0});
    n.OutOfLine(0x21f, fixture::kUndefined, 12, {0, 0, 0, 0, 0xFF, 0xFE, 9, 3, 0, 0, 0, 19});
}

Decoded PentaxNote(ByteOrder order, uint32_t filler = 0) {
    MakerNoteBuilder note(order);
    note.Header(std::string("AOC\0MM", 6));
    PentaxBlocks(note);
    return DispatchNote(order, "PENTAX", note.Build(fixture::kNoteOffset), filler);
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
        EXPECT_EQ(RowTexts(PentaxNote(order)), want);
    }
    // 241 filler + Make + 13 entries stays below 256; the blocks stop at 256.
    const Decoded d = PentaxNote(kBE, 241);
    ASSERT_EQ(d.count, 256u);
    EXPECT_EQ(RowTexts(d).back(), "Body Battery State=Full");
}

TEST(PentaxBlocks, AnIsoCodeFarBeyondAnyCamerasNoLongerOverflows) {
    // Found by fuzzing: the speed of the highest code overflowed an int.
    Bytes ae(16, 64);
    ae[2] = 255;
    MakerNoteBuilder note(kLE);
    note.Header(std::string("AOC\0MM", 6)).OutOfLine(0x206, fixture::kUndefined, 16, ae);
    EXPECT_EQ(RowTexts(DispatchNote(kLE, "PENTAX", note.Build(fixture::kNoteOffset))).at(2), "AE ISO=24615639849");
}

// ------------------------------------------------------------ Minolta

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
