// Kodak and Sigma notes beyond the corpus files. Kodak: how each record form
// is recognised, the "KDK" record written little-endian in a big-endian file
// (the year decides), a record cut short, the row limit. Sigma: the Foveon
// name, and the numbers the later bodies store where the early ones store text.
#include <string>

#include "makernotes/makernote_decoders.h"
#include "note_harness.h"

namespace {

using namespace notetest;

// A "KDK" record: model, then the settings named at their places.
Bytes KdkRecord(ByteOrder o) {
    Bytes r = fixture::ToBytes("Z760    ");
    r.resize(0x6C, 0);
    const auto put16 = [&](size_t at, int v) {
        Bytes b = Shorts(o, {v});
        r[at] = b[0], r[at + 1] = b[1];
    };
    r[0x09] = 2, r[0x0A] = 1;
    put16(0x0C, 2848), put16(0x10, 2006), r[0x12] = 12, r[0x13] = 3;
    r[0x14] = 7, r[0x15] = 5, r[0x16] = 9, r[0x17] = 0, r[0x1B] = 8, r[0x1C] = 2;
    put16(0x1E, 280);
    const Bytes time = Longs(o, {50000});
    std::copy(time.begin(), time.end(), r.begin() + 0x20);
    put16(0x24, -333), r[0x5C] = 16, r[0x5D] = 1, put16(0x5E, 200), put16(0x64, 1), put16(0x66, 8192);
    r[0x6B] = 0xFF;
    return r;
}

const Texts kKdkRows{"Kodak Model=Z760", "Quality=Normal", "Burst Mode=On", "Image Width=2848", "Image Height=0",
                     "Year Created=2006", "Month Day Created=12:03", "Time Created=07:05:09.00",
                     "Shutter Mode=Aperture Priority", "Metering Mode=Spot", "Sequence Number=0", "F Number=2.8",
                     "Exposure Time=0.5", "Exposure Compensation=-0.333", "Focus Mode=Normal",
                     "White Balance=Auto", "Flash Mode=Fill Flash", "Flash Fired=Yes", "ISO Setting=200", "ISO=0",
                     "Total Zoom=0", "Date Time Stamp=1", "Color Mode=B&W", "Digital Zoom=0", "Sharpness=-1"};

Decoded KodakNote(ByteOrder file, ByteOrder record, const std::string& make, uint32_t filler = 0) {
    Bytes note = fixture::ToBytes("KDK INFO");
    fixture::Append(note, KdkRecord(record));
    return DispatchNote(file, make, note, filler);
}

TEST(KodakNote, TheYearTellsTheRecordsOrderWhateverTheFiles) {
    for (ByteOrder file : {kLE, kBE})
        for (ByteOrder record : {kLE, kBE}) {
            SCOPED_TRACE(std::string(file == kBE ? "BE" : "LE") + " file, " + (record == kBE ? "BE" : "LE") + " record");
            EXPECT_EQ(RowTexts(KodakNote(file, record, "EASTMAN KODAK COMPANY")), kKdkRows);
        }
}

TEST(KodakNote, ARecordCutShortGivesTheFieldsItHoldsAndAFullTableNone) {
    // The note at the end of the input: 0x22 bytes of the record, so the
    // exposure time (4 bytes at 0x20) and all after it are missing.
    Bytes note = fixture::ToBytes("KDK INFO");
    const Bytes record = KdkRecord(kBE);
    note.insert(note.end(), record.begin(), record.begin() + 0x22);
    const auto input = platform::Input::FromMemory(note.data(), note.size());
    const platform::Cursor at(*input, platform::ByteOrder::kBig, 8, note.size());
    Decoded d;
    makernotes::DecodeKodakMakerNote(at, 0, *d.table, &d.count);
    EXPECT_EQ(RowTexts(d), Texts(kKdkRows.begin(), kKdkRows.begin() + 12));
    // 25 fields: a table of 231 rows (the filler and the Make row) has no
    // room for them, one of 230 has.
    EXPECT_EQ(KodakNote(kBE, kBE, "KODAK", 230).rows().size(), 0u);
    EXPECT_EQ(KodakNote(kBE, kBE, "KODAK", 229).rows().size(), 25u);
}

TEST(KodakNote, EachFormIsKodaksOnlyWithItsMarks) {
    EXPECT_TRUE(KodakNote(kBE, kBE, "Vivitar").rows().empty());
    Bytes dc = Longs(kBE, {0x01040300, 0x0201FFFF});
    dc.resize(0x20, 0);
    fixture::Append(dc, fixture::ToBytes("DCP01011.JPG"));
    dc.resize(72, 0);
    EXPECT_EQ(RowTexts(DispatchNote(kBE, "Eastman Kodak Company", dc)), Texts{"Original File Name=DCP01011.JPG"});
    EXPECT_TRUE(DispatchNote(kBE, "Vivitar", dc).rows().empty());
    dc[0x28] = 'X';  // no dot: not a file name
    EXPECT_TRUE(DispatchNote(kBE, "Eastman Kodak Company", dc).rows().empty());
}

TEST(SigmaNote, FoveonNameAndTheLaterBodiesNumbersInBothOrders) {
    const auto entries = [](MakerNoteBuilder& n) {
        const ByteOrder o = n.order();
        n.Ascii(0x08, "S").Ascii(0x09, "X").Ascii(0x10, "Satu:-1.0").Ascii(0x19, "  ");
        n.OutOfLine(0x0C, fixture::kSRational, 1, Longs(o, {-2, 3}));
        n.OutOfLine(0x14, fixture::kSRational, 3, Longs(o, {1, 2, -3, 3, 0, 1}));
        n.Long(0x2C, 4).Long(0x2C, 12).Short(0x2C, 3);
        n.OutOfLine(0x31, fixture::kRational, 1, Longs(o, {28, 10}));
        n.OutOfLine(0x32, fixture::kRational, 1, Longs(o, {1, 250}));
        n.OutOfLine(0x32, fixture::kRational, 1, Longs(o, {13, 10}));
    };
    const Texts expected{"Exposure Mode=Shutter speed priority AE", "Metering Mode=X", "Saturation=-1.0",
                         "Auto Bracket=", "Exposure Compensation=-0.7", "Color Adjustment=0.5 -1 0",
                         "Color Mode=Vivid", "Color Mode=12", "Color Mode=3", "F Number=2.8",
                         "Exposure Time=1/250", "Exposure Time=1.3"};
    for (ByteOrder order : {kLE, kBE}) {
        SCOPED_TRACE(order == kBE ? "big-endian" : "little-endian");
        EXPECT_EQ(RowTexts(Note(order, "SIGMA", std::string("SIGMA\0\0\0\x01\0", 10), entries)), expected);
        EXPECT_EQ(RowTexts(Note(order, "", std::string("FOVEON\0\0\x01\0", 10), entries)), expected);
    }
}

}  // namespace
