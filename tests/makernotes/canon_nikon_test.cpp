// Canon notes where the corpus files do not go: arrays in a big-endian note,
// the rarer branches of the setting texts, and what hostile arrays do. The
// Nikon main form has its own tests (nikon_test.cpp).
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

Decoded Canon(ByteOrder order, void (*fill)(MakerNoteBuilder&, ByteOrder)) {
    MakerNoteBuilder note(order);
    fill(note, order);
    return DispatchNote(order, "Canon", note.Build(fixture::kNoteOffset));
}

TEST(CanonNote, ArrayElementsAreSignedShortsInTheNotesByteOrder) {
    // The corpus's Canon notes are all little-endian.
    // Elements 0 to 25 of the camera settings: macro, a 2 s custom timer,
    // quality -1, external flash, continuous high, AI servo, evaluative,
    // manual, and both focal ends 50 with no units given.
    const auto entries = [](MakerNoteBuilder& n, ByteOrder o) {
        n.Long(8, 1181861).Short(0x1234, 7);
        const Bytes settings =
            Shorts(o, {52, 1, 0x4014, -1, 16, 5, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 0, 4, 0, 0, 50, 50, 0});
        n.OutOfLine(1, fixture::kShort, 26, settings);
    };
    const Texts expected{"File Number=118-1861", "Macro Mode=Macro", "Self Timer=2.0 s, Custom", "Quality=n/a",
                         "Flash Mode=External flash", "Drive Mode=Continuous, High", "Focus Mode=AI Servo AF",
                         "Metering Mode=Evaluative", "Exposure Mode=Manual", "Lens Focal Range=50 mm"};
    EXPECT_EQ(RowTexts(Canon(kLE, entries)), expected);
    EXPECT_EQ(RowTexts(Canon(kBE, entries)), expected);
}

TEST(CanonNote, HostileArraysGiveNoRowsAndNoReadOutsideTheFile) {
    const Decoded d = Canon(kLE, [](MakerNoteBuilder& n, ByteOrder) {
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

}  // namespace
