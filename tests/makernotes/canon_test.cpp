// Canon notes where the corpus files do not go: every corpus note is
// little-endian, so the records are read here in both byte orders (the file
// number packed across two elements shows the order most), with the values
// the corpus does not hold; and what hostile records do.
#include <string>

#include "makernotes/makernote_decoders.h"
#include "note_harness.h"

namespace {

using namespace notetest;

// The note of a body whose Model row reads `model`.
Decoded Canon(ByteOrder order, const char* model, const MakerNoteBuilder& note, uint32_t filler = 0) {
    return DispatchNote(order, "Canon", note.Build(fixture::kNoteOffset), filler, model);
}

TEST(CanonNote, RecordsReadInTheNotesByteOrder) {
    for (ByteOrder o : {kLE, kBE}) {
        SCOPED_TRACE(o == kLE ? "II" : "MM");
        MakerNoteBuilder n(o);
        // Camera settings 0 to 27: focal lengths in tenths of a millimetre,
        // a speed given as such (bit 14), apertures of 3 and 3 1/3 stops.
        n.OutOfLine(1, fixture::kShort, 28,
                    Shorts(o, {56, 1, 0x4014, -1, 16, 5, 0, 1, 0, -1, 0, 1, 0, -1, 0x7FFF, 2, 0x4000 | 200, 3, 2, 0,
                               4, 0, 246, 350, 160, 10, 0x60, 0x6C}));
        n.Field(2, fixture::kShort, 2, Shorts(o, {2, 240}));
        n.OutOfLine(4, fixture::kShort, 7, Shorts(o, {14, 0, 160, 0, 0x60, 0xC0, 12}));
        n.Long(0x10, 0x80000189);
        n.OutOfLine(0x26, fixture::kShort, 22,
                    Shorts(o, {44, 2, 3, 3, 600, 400, 600, 400, 10, 10, 10, 20, 20, 20, -100, 0, 100, 0, 0, 0, 4, 5}));
        // Folder 100, frame 24, packed as this body packs them into one
        // 32-bit number across elements 1 and 2.
        const int low = 100 << 6, high = 24;
        n.OutOfLine(0x93, fixture::kShort, 4, Shorts(o, {8, o == kLE ? low : high, o == kLE ? high : low, 1}));
        const Texts expected{
            "Camera Model ID=EOS Digital Rebel XT / 350D / Kiss Digital N",
            "Macro Mode=Macro", "Self Timer=2 s, Custom", "Quality=n/a", "Flash Mode=External flash",
            "Drive Mode=Continuous, High", "Focus Mode=AI Servo AF", "Image Size=Large", "Easy Mode=Manual",
            "Digital Zoom=None", "Contrast=-1", "Sharpness=+2", "Camera ISO=200", "Metering Mode=Evaluative",
            "Focus Range=Not Known", "Exposure Mode=Manual", "Lens Type=Canon EF 16-35mm f/2.8L II USM",
            "Max Focal Length=35 mm", "Min Focal Length=16 mm", "Focal Units=10/mm", "Max Aperture=2.8",
            "Min Aperture=3.2",
            "Focal Type=Zoom", "Focal Length=24 mm",
            "Auto ISO=100", "Base ISO=100", "Measured EV=5.00", "Target Aperture=2.8", "Target Exposure Time=1/64",
            "Exposure Compensation=+1/3",
            "AF Area Mode=Single-point AF", "Number of AF Points=3", "Valid AF Points=3", "Canon Image Width=600",
            "Canon Image Height=400", "AF Image Width=600", "AF Image Height=400", "AF Area Widths=10 10 10",
            "AF Area Heights=20 20 20", "AF Area X Positions=-100 0 100", "AF Area Y Positions=0 0 0",
            "AF Points In Focus=2", "AF Points Selected=0,2",
            "File Number=100-0024", "Bracket Mode=AEB"};
        EXPECT_EQ(RowTexts(Canon(o, "Canon EOS 350D DIGITAL", n)), expected);
    }
}

TEST(CanonNote, HostileRecordsStayInsideWhatTheyDeclareAndTheRowLimit) {
    MakerNoteBuilder n(kLE);
    // An AF record claiming 65535 points in 10 elements: its lists and masks
    // lie outside it and give no row.
    n.OutOfLine(0x26, fixture::kShort, 10, Shorts(kLE, {20, 0, -1, 1, 8, 6, 8, 6, 1, 1}));
    // An image ID of zeroes is no ID.
    n.OutOfLine(0x28, fixture::kByte, 16, Bytes(16, 0));
    const Texts expected{"AF Area Mode=Off (Manual Focus)", "Number of AF Points=65535", "Valid AF Points=1",
                         "Canon Image Width=8", "Canon Image Height=6", "AF Image Width=8", "AF Image Height=6"};
    EXPECT_EQ(RowTexts(Canon(kLE, "Canon EOS R", n)), expected);

    // The shortest exposure time the code can give (a regression: its
    // reciprocal overflowed an int).
    MakerNoteBuilder fast(kLE);
    fast.OutOfLine(4, fixture::kShort, 6, Shorts(kLE, {12, 0, 0, 0, 0, 0x7FFF}));
    const Texts shot = RowTexts(Canon(kLE, "Canon EOS 5D", fast));
    ASSERT_EQ(shot.size(), 3u);  // auto ISO, measured EV, the time
    EXPECT_EQ(shot[2].rfind("Target Exposure Time=1/17591", 0), 0u) << shot[2];

    // A camera-info block that ends inside its last field: that field gives
    // no row. The lens type is big-endian in either note.
    MakerNoteBuilder info(kLE);
    Bytes block(0x17E + 2, 0);
    block[0x30] = 1, block[0x111] = 0x00, block[0x112] = 0xF6, block[0x176] = 41;
    info.OutOfLine(0x0D, fixture::kUndefined, static_cast<uint32_t>(block.size()), block);
    const Texts infoRows{"Camera Orientation=Rotate 90 CW", "Lens Type=Canon EF 16-35mm f/2.8L II USM",
                         "File Index=1", "Shutter Count=42"};
    EXPECT_EQ(RowTexts(Canon(kLE, "Canon EOS-1D Mark III", info)), infoRows);

    // A shot-info record of a count no file holds reads what is there and
    // stops at the row limit with the rest.
    MakerNoteBuilder big(kLE);
    big.Field(4, fixture::kShort, 0x7FFFFFFF, {0x08, 0x00, 0x00, 0x00});
    big.Long(0x10, 0x412);
    EXPECT_EQ(Canon(kLE, "Canon EOS M50", big, 248).count, makernotes::kMakerNoteRowLimit);
}

}  // namespace
