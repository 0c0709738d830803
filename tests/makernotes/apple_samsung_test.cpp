// Apple notes beyond the corpus's three (big-endian, with an intact run-time
// record): the little-endian mark, the tags no corpus file carries, the
// run-time record's rarer values, hostile property lists and the row limit.
// Samsung notes, of which the corpus has none: the "STMN" record and the
// directory form in both byte orders, with offsets counting from the TIFF
// header or from the note. The expected texts are exiftool's for the same
// bytes (its later names where 12.57 had none).
#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "makernotes/makernote_limits.h"
#include "note_harness.h"

namespace {

using namespace notetest;

// ------------------------------------------------------------ Apple

Bytes AppleHeader(ByteOrder order) {
    return fixture::ToBytes(std::string("Apple iOS\0\0\x01", 12) + (order == kBE ? "MM" : "II"));
}

Bytes RunTime(int64_t flags, int64_t value, int64_t scale) {
    return fixture::IntegerPropertyList({{"flags", flags}, {"value", value}, {"timescale", scale}, {"epoch", 0}});
}

// The note (offsets from its own start) in a file of the other byte order.
Decoded AppleNote(ByteOrder order, const Fill& fill, uint32_t filler = 0) {
    MakerNoteBuilder note(order);
    note.Header(AppleHeader(order));
    fill(note);
    return DispatchNote(order == kBE ? kLE : kBE, "Apple", note.Build(0), filler);
}

void WithRunTime(MakerNoteBuilder& n, const Bytes& plist) {
    n.Field(1, fixture::kSLong, 1, Longs(n.order(), {14}));
    n.OutOfLine(3, fixture::kUndefined, static_cast<uint32_t>(plist.size()), plist);
}

TEST(AppleNote, ItsOwnMarkGivesTheOrderAndTheTagsNoCorpusFileCarriesRead) {
    for (ByteOrder order : {kLE, kBE}) {
        SCOPED_TRACE(order == kBE ? "MM" : "II");
        const Decoded d = AppleNote(order, [](MakerNoteBuilder& n) {
            WithRunTime(n, RunTime(3, 90061000, 1000));
            n.Field(4, fixture::kSLong, 1, Longs(n.order(), {0})).Field(10, fixture::kSLong, 1, Longs(n.order(), {3}));
            n.Ascii(11, "ABCDEFG").OutOfLine(12, fixture::kSRational, 2, Longs(n.order(), {3, 2, 1, 2}));
            n.Ascii(17, "UUID").Field(20, fixture::kSLong, 1, Longs(n.order(), {2}));
            n.Field(0x45, fixture::kSLong, 1, Longs(n.order(), {1}));
        });
        EXPECT_EQ(RowTexts(d), (Texts{"Maker Note Version=14", "AE Stable=No", "HDR Image Type=HDR Image",
                                      "Burst UUID=ABCDEFG", "Focus Distance Range=0.50 - 1.50 m",
                                      "Content Identifier=UUID", "Image Capture Type=Portrait",
                                      "Front Facing Camera=Yes", "Run Time Flags=Valid, Has been rounded",
                                      "Run Time Value=90061000", "Run Time Epoch=0", "Run Time Scale=1000",
                                      "Run Time Since Power Up=1 days 1:01:01"}));
        // The record's rows carry its tag.
        EXPECT_EQ(d.rows().back().tag, 3u);
    }
}

TEST(AppleNote, RunTimeUnderHalfAMinuteAWholeDayAndWithoutAValidTime) {
    const struct {
        int64_t flags, value, scale;
        Texts rows;
    } cases[] = {
        {1, 1234, 100, {"Run Time Flags=Valid", "Run Time Since Power Up=12.34 s"}},
        {1, 86400, 1, {"Run Time Flags=Valid", "Run Time Since Power Up=24:00:00"}},
        {1, 29999, 1000, {"Run Time Flags=Valid", "Run Time Since Power Up=30.00 s"}},
        {1, 0, 1, {"Run Time Flags=Valid", "Run Time Since Power Up=0 s"}},
        {0, 5, 1, {"Run Time Flags=(none)"}},
        {16, 5, 1, {"Run Time Flags=Indefinite"}},
        {1, 5, 0, {"Run Time Flags=Valid"}},
    };
    for (const auto& c : cases) {
        const Decoded d = AppleNote(kBE, [&](MakerNoteBuilder& n) { WithRunTime(n, RunTime(c.flags, c.value, c.scale)); });
        Texts rows = RowTexts(d);
        rows.erase(rows.begin());  // the version
        for (auto it = rows.begin(); it != rows.end();)
            it = it->rfind("Run Time Flags", 0) == 0 || it->rfind("Run Time Since", 0) == 0 ? it + 1 : rows.erase(it);
        EXPECT_EQ(rows, c.rows) << c.flags << " " << c.value << "/" << c.scale;
    }
}

TEST(AppleNote, HostilePropertyListsGiveNoRunTimeRows) {
    const Bytes good = RunTime(1, 100, 1);
    std::vector<Bytes> hostile;
    hostile.push_back(Bytes(good.begin(), good.end() - 1));  // the trailer cut
    Bytes magic = good;
    magic[7] = '1';
    hostile.push_back(magic);
    Bytes table = good;
    table.back() = 0xF0;  // the position table beyond the list
    hostile.push_back(table);
    Bytes objects = good;
    objects[objects.size() - 17] = 0xFF;  // more objects than the table holds
    hostile.push_back(objects);
    Bytes top = good;
    top[top.size() - 9] = 1;  // the top object is a key, not a dictionary
    hostile.push_back(top);
    Bytes references = good;
    references[9] = 0x7F;  // the first key refers to no object
    references[13] = 0x7F;  // nor does its value
    hostile.push_back(references);
    Bytes length = good;
    length[8] = 0xDF;  // a dictionary whose length follows as an integer object,
    length[9] = 0x13;  // of 8 bytes: a length far beyond the list
    hostile.push_back(length);
    for (size_t i = 0; i < hostile.size(); ++i) {
        const Decoded d = AppleNote(kBE, [&](MakerNoteBuilder& n) { WithRunTime(n, hostile[i]); });
        Texts expected{"Maker Note Version=14"};
        // Only the reference test keeps the other three keys readable.
        if (i == 5) expected = {"Maker Note Version=14", "Run Time Value=100", "Run Time Epoch=0", "Run Time Scale=1"};
        EXPECT_EQ(RowTexts(d), expected) << "case " << i;
    }
}

TEST(AppleNote, RunTimeRowsStopAtTheRowLimit) {
    // The filler and the Make row leave room for the two entries; the
    // version row and three of the record's five rows then fill the table.
    const uint32_t filler = makernotes::kMakerNoteRowLimit - 5;
    const Decoded d = AppleNote(kBE, [](MakerNoteBuilder& n) { WithRunTime(n, RunTime(1, 100, 1)); }, filler);
    EXPECT_EQ(d.count, makernotes::kMakerNoteRowLimit);
    EXPECT_EQ(RowTexts(d), (Texts{"Maker Note Version=14", "Run Time Flags=Valid", "Run Time Value=100", "Run Time Epoch=0"}));
}

// ------------------------------------------------------------ Samsung

TEST(SamsungNote, StmnRecordInBothOrdersAndWithoutAPreview) {
    for (ByteOrder order : {kLE, kBE}) {
        Bytes note = fixture::ToBytes(std::string("STMN100\0", 8));
        fixture::Append(note, Longs(order, {64, 16}));
        note.resize(80, 0);
        EXPECT_EQ(RowTexts(DispatchNote(order, "SAMSUNG", note)),
                  (Texts{"Maker Note Version=STMN100", "Preview Image Start=64", "Preview Image Length=16"}));
        std::fill(note.begin() + 8, note.begin() + 16, 0);
        EXPECT_EQ(RowTexts(DispatchNote(order, "SAMSUNG", note)), Texts{"Maker Note Version=STMN100"});
    }
}

void SamsungEntries(MakerNoteBuilder& n) {
    const ByteOrder o = n.order();
    n.Field(1, fixture::kUndefined, 4, fixture::ToBytes("0100")).Long(2, 0x12000).Long(3, 0x100130c);
    n.Field(0x20, fixture::kShort, 2, Shorts(o, {3, 0})).OutOfLine(0x21, fixture::kShort, 5, Shorts(o, {1, 255, 5, 3, 4}));
    n.Field(0x40, fixture::kUndefined, 1, {1}).Long(0x41, 1).OutOfLine(0x43, fixture::kSRational, 1, Longs(o, {355, 10}));
    n.Short(0x100, 1).Ascii(0xa002, "SN12345678").Short(0xa003, 10).Short(0xa011, 1);
    n.OutOfLine(0xa013, fixture::kSRational, 1, Longs(o, {-2, 3})).Long(0xa014, 400);
    n.OutOfLine(0xa018, fixture::kRational, 1, Longs(o, {1, 125})).OutOfLine(0xa019, fixture::kRational, 1, Longs(o, {28, 10}));
    n.Long(0xa01a, 35);
}

TEST(SamsungNote, DirectoryInEitherOrderWithOffsetsFromTheTiffHeaderOrFromTheNote) {
    const Texts expected{"Maker Note Version=0100", "Device Type=Cell Phone", "Samsung Model ID=NX100",
                         "Smart Album Color=Blue; 0", "Raw Data Byte Order=Big-endian (Motorola, MM)",
                         "White Balance Setup=Manual", "Camera Temperature=35.5 C", "Face Detect=On",
                         "Serial Number=SN12345678", "Lens Type=Samsung NX 45mm F1.8", "Color Space=Adobe RGB",
                         "Exposure Compensation=-0.6666666667", "ISO=400", "Exposure Time=1/125", "F Number=2.8",
                         "Focal Length In 35mm Format=3.5 mm", "Picture Wizard Mode=Vivid", "Picture Wizard Color=255",
                         "Picture Wizard Saturation=1", "Picture Wizard Sharpness=-1", "Picture Wizard Contrast=0"};
    for (ByteOrder noteOrder : {kLE, kBE}) {
        for (int64_t origin : {int64_t{fixture::kNoteOffset}, int64_t{0}}) {
            SCOPED_TRACE(std::string(noteOrder == kBE ? "BE" : "LE") + (origin ? " from the TIFF header" : " from the note"));
            MakerNoteBuilder note(noteOrder);
            SamsungEntries(note);
            // The note's own order holds whatever the file's is.
            EXPECT_EQ(RowTexts(DispatchNote(noteOrder == kBE ? kLE : kBE, "SAMSUNG", note.Build(origin))), expected);
        }
    }
}

TEST(SamsungNote, UnlistedValuesPrintTheirNumberAndOtherNotesAreNotSamsungs) {
    const Decoded d = Note(kLE, "SAMSUNG", "", [](MakerNoteBuilder& n) {
        n.Field(1, fixture::kUndefined, 4, fixture::ToBytes("0100")).Long(2, 0x1234).Long(3, 999);
        n.Field(0x20, fixture::kShort, 2, Shorts(n.order(), {0, 0})).Field(0x20, fixture::kShort, 2, Shorts(n.order(), {9, 5}));
        n.Short(0xa003, 99).OutOfLine(0xa018, fixture::kRational, 1, Longs(n.order(), {3, 1})).Long(0xa01a, 280);
        n.OutOfLine(0x21, fixture::kShort, 5, Shorts(n.order(), {11, 2, 0xFFFF, 7, 1}));
    });
    EXPECT_EQ(RowTexts(d), (Texts{"Maker Note Version=0100", "Device Type=4660", "Samsung Model ID=999",
                                  "Smart Album Color=n/a", "Smart Album Color=9; 5", "Lens Type=99", "Exposure Time=3",
                                  "Focal Length In 35mm Format=28 mm", "Picture Wizard Mode=Custom3",
                                  "Picture Wizard Color=2", "Picture Wizard Saturation=65531",
                                  "Picture Wizard Sharpness=3", "Picture Wizard Contrast=-3"}));
    // Without the version entry first, a Samsung Make's note is not read.
    EXPECT_EQ(RowTexts(Note(kLE, "SAMSUNG", "", [](MakerNoteBuilder& n) { n.Long(2, 0x12000); })), Texts{});
}

}  // namespace
