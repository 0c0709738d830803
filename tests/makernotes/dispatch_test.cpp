// Recognising the maker of a note and handing it over: which decoder runs,
// with the file where, with which offset base and byte order. The decoders
// are replaced by recorders, so each hand-over is seen as it is made.
#include <string>
#include <vector>

#include "note_harness.h"

namespace {

using namespace notetest;

std::vector<std::string> gCalls;

constexpr const char* kNames[] = {"olympus", "nikon",    "nikonType1", "canon", "fujifilm", "casio",
                                  "casioQvc", "pentax", "minolta",    "sony",  "panasonic"};

// "<decoder> +<position from the note's start> base <offset base> <LE|BE>"
template <int I>
void Record(platform::File& file, uint32_t base, exif::TagRecordTable&, uint32_t*, int bigEndian) {
    gCalls.push_back(std::string(kNames[I]) + " +" + std::to_string(file.Tell() - fixture::kNoteOffset) +
                     " base " + std::to_string(base) + (bigEndian ? " BE" : " LE"));
}

constexpr makernotes::MakerNoteDecoders kRecorders = {
    Record<0>, Record<1>, Record<2>, Record<3>, Record<4>, Record<5>,
    Record<6>, Record<7>, Record<8>, Record<9>, Record<10>,
};

// A note that starts with these bytes, padded so every form's header fits.
Bytes Note(const std::string& start) {
    Bytes note = fixture::ToBytes(start);
    note.resize(32, 0);
    return note;
}

std::vector<std::string> Dispatch(ByteOrder order, const std::string& make, const Bytes& note,
                                  bool cr3 = false, uint32_t noteOffset = fixture::kNoteOffset) {
    gCalls.clear();
    Decoded d = TableWithMake(make);
    WithNoteFile(order, note, [&](platform::File& file) {
        makernotes::DispatchMakerNote(file, 0, *d.table, &d.count, IsBig(order), noteOffset, cr3, kRecorders);
    });
    return gCalls;
}

using Calls = std::vector<std::string>;

TEST(MakerDispatch, NothingRunsWithoutANoteOffset) {
    EXPECT_EQ(Dispatch(kLE, "CASIO", Note("QVC"), false, 0), Calls{});
}

TEST(MakerDispatch, OlympusAndOmSystemPrefixesInAnyCase) {
    for (const char* prefix : {"OLYMPUS\0II", "OM SYSTEM", "olymp"})
        EXPECT_EQ(Dispatch(kBE, "", Note(prefix)), Calls{"olympus +5 base 0 BE"}) << prefix;
    EXPECT_EQ(Dispatch(kBE, "", Note("OLYMX")), Calls{});
}

TEST(MakerDispatch, NikonEmbeddedHeadersGiveTheHeadersBaseAndByteOrder) {
    const struct {
        std::string afterNikon;
        const char* order;
    } headers[] = {
        {std::string("\0\x02\x10\0\0II*\0\x08\0\0\0", 13), "LE"},
        {std::string("\0\x02\0\0\0MM\0*\0\0\0\x08", 13), "BE"},
        {std::string("\0\x02\x10\0\0MM\0*\0\0\0\x08", 13), "BE"},
        {std::string("\0\x02\0\0\0II*\0\x08\0\0\0", 13), "LE"},
        {std::string("\0\x02\x11\0\0II*\0\x08\0\0\0", 13), "LE"},
    };
    for (const auto& h : headers) {
        // The directory follows the embedded header at note + 10; its offsets count from that header.
        const std::string expected = std::string("nikon +18 base 18 ") + h.order;
        EXPECT_EQ(Dispatch(kLE, "NIKON", Note("Nikon" + h.afterNikon)), Calls{expected});
        EXPECT_EQ(Dispatch(kBE, "NIKON", Note("Nikon" + h.afterNikon)), Calls{expected});
    }
}

TEST(MakerDispatch, NikonBigEndian211AndUnknownHeadersAreTheOlderForm) {
    const std::string bigEndian211("Nikon\0\x02\x11\0\0MM\0*\0\0\0\x08", 18);
    EXPECT_EQ(Dispatch(kLE, "NIKON", Note(bigEndian211)), Calls{"nikonType1 +5 base 0 LE"});
    EXPECT_EQ(Dispatch(kBE, "", Note(std::string("Nikon\0\x01\0", 8))), Calls{"nikonType1 +5 base 0 BE"});
}

TEST(MakerDispatch, NikonMakeWithoutPrefixReadsANoteWithoutHeader) {
    EXPECT_EQ(Dispatch(kBE, "nikon corporation", Note("\0\x05")), Calls{"nikon +0 base 0 BE"});
}

TEST(MakerDispatch, CanonOnlyByTheWholeMakeText) {
    EXPECT_EQ(Dispatch(kLE, "canon", Note("")), Calls{"canon +0 base 0 LE"});
    EXPECT_EQ(Dispatch(kLE, "Canon Inc.", Note("")), Calls{});
}

TEST(MakerDispatch, Cr3NoteIsAnEmbeddedTiffHeaderAndAlwaysCanonOnce) {
    // In a CR3 the note value is the absolute position of a TIFF header of its
    // own; the directory sits at that header + its IFD offset (here 12).
    const Bytes header = fixture::ToBytes(std::string("MM\0*\0\0\0\x0C", 8));
    for (const char* make : {"", "CANON", "Not a camera"})
        EXPECT_EQ(Dispatch(kLE, make, Note(std::string(header.begin(), header.end())), true),
                  Calls{"canon +12 base 8 BE"})
            << make;
}

TEST(MakerDispatch, FujifilmNoteIsItsOwnOffsetBase) {
    EXPECT_EQ(Dispatch(kBE, "", Note("FUJIFILM")), Calls{"fujifilm +5 base 8 BE"});
    EXPECT_EQ(Dispatch(kBE, "", Note("fujif")), Calls{"fujifilm +5 base 8 BE"});
}

TEST(MakerDispatch, CasioByTheWholeMakeElseByQvcPrefix) {
    EXPECT_EQ(Dispatch(kBE, "casio", Note("QVC")), Calls{"casio +0 base 0 BE"});
    EXPECT_EQ(Dispatch(kBE, "CASIO COMPUTER CO.,LTD", Note("QVC")), Calls{"casioQvc +6 base 0 BE"});
    EXPECT_EQ(Dispatch(kBE, "CASIO COMPUTER CO.,LTD", Note("")), Calls{});
}

TEST(MakerDispatch, PentaxRicohMinoltaAndSonyByMakeSubstringInAnyCase) {
    for (const char* make : {"PENTAX Corporation", "Asahi pentax", "RICOH IMAGING"})
        EXPECT_EQ(Dispatch(kLE, make, Note("AOC")), Calls{"pentax +6 base 0 LE"}) << make;
    EXPECT_EQ(Dispatch(kLE, "Konica Minolta Camera, Inc.", Note("")), Calls{"minolta +0 base 0 LE"});
    EXPECT_EQ(Dispatch(kLE, "Sony Corporation", Note("")), Calls{"sony +0 base 0 LE"});
}

TEST(MakerDispatch, SonyHeaderIsSkippedOnlyWhenThePrefixHoldsSony) {
    EXPECT_EQ(Dispatch(kLE, "SONY", Note(std::string("SONY DSC \0\0\0", 12))), Calls{"sony +12 base 0 LE"});
    EXPECT_EQ(Dispatch(kLE, "SONY", Note("sony dsc ")), Calls{"sony +0 base 0 LE"});
}

TEST(MakerDispatch, PanasonicByItsPrefixAloneCaseSensitive) {
    EXPECT_EQ(Dispatch(kLE, "", Note(std::string("Panasonic\0\0\0", 12))), Calls{"panasonic +12 base 0 LE"});
    EXPECT_EQ(Dispatch(kLE, "Panasonic", Note("PANASONIC")), Calls{});
}

TEST(MakerDispatch, NoteMeetingTwoTestsIsDecodedTwiceInStepOrder) {
    EXPECT_EQ(Dispatch(kLE, "SONY", Note("Panasonic")), (Calls{"sony +0 base 0 LE", "panasonic +12 base 0 LE"}));
    EXPECT_EQ(Dispatch(kLE, "PENTAX", Note("QVC")), (Calls{"casioQvc +6 base 0 LE", "pentax +6 base 0 LE"}));
    EXPECT_EQ(Dispatch(kLE, "CANON NIKON MINOLTA", Note("OLYMPUS")),
              (Calls{"olympus +5 base 0 LE", "nikon +0 base 0 LE", "minolta +0 base 0 LE"}));
}

TEST(MakerDispatch, LastMakeRowDecidesAndNoMakeRowMatchesNothing) {
    const Decoded none = TableWithMake("");
    EXPECT_FALSE(makernotes::MakeEquals(*none.table, none.count, "CANON"));
    EXPECT_FALSE(makernotes::MakeContains(*none.table, none.count, "CANON"));

    Decoded two = TableWithMake("Canon");
    exif::TagRecord& later = two.table->rows[two.count++];
    later.tag = 271;
    std::strcpy(later.value, "sony");
    EXPECT_TRUE(makernotes::MakeEquals(*two.table, two.count, "SONY"));
    EXPECT_FALSE(makernotes::MakeEquals(*two.table, two.count, "CANON"));
    EXPECT_TRUE(makernotes::MakeContains(*two.table, two.count, "ON"));
    // Rows beyond the count are not part of the table.
    EXPECT_TRUE(makernotes::MakeEquals(*two.table, two.count - 1, "CANON"));
}

// The real decoders behind the dispatch: the row guard and a double decoding.

Bytes SonyNoteOfTenEntries() {
    fixture::MakerNoteBuilder note(kLE);
    for (int i = 0; i < 10; ++i) note.Short(45094, 1);
    return note.Build(fixture::kNoteOffset);
}

TEST(MakerDispatch, DirectoryThatWouldReach256RowsAddsNoRows) {
    // 250 rows before the note (249 + Make) and 10 entries: skipped whole;
    // so is 246 + 10, which reaches 256 exactly.
    EXPECT_EQ(DispatchNote(kLE, "SONY", SonyNoteOfTenEntries(), 249).rows().size(), 0u);
    EXPECT_EQ(DispatchNote(kLE, "SONY", SonyNoteOfTenEntries(), 245).rows().size(), 0u);
    // 245 + 10 = 255 stays below the limit.
    const Decoded fits = DispatchNote(kLE, "SONY", SonyNoteOfTenEntries(), 244);
    ASSERT_EQ(fits.rows().size(), 10u);
    EXPECT_EQ(fits.rows()[9].value, "On");
}

TEST(MakerDispatch, TwoDecodersReadTheSameDirectoryInStepOrder) {
    // A "QVC" note of a camera whose Make holds PENTAX: both read from note + 6.
    const Bytes note = fixture::MakerNoteBuilder(kLE)
                           .Header(std::string("QVC\0\0\0", 6))
                           .Short(8, 2)
                           .Field(63, fixture::kByte, 4, {0x03, 0x11, 0, 0})
                           .Build(fixture::kNoteOffset);
    const auto rows = DispatchNote(kLE, "PENTAX", note).rows();
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].name + "=" + rows[0].value, "Quality=Fine");
    EXPECT_EQ(rows[1].name + "=" + rows[1].value, "Quality=Best");
    EXPECT_EQ(rows[2].name + "=" + rows[2].value, "Lens Type=smc PENTAX-FA SOFT 85mm F2.8");
}

}  // namespace
