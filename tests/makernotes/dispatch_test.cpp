// Recognising the maker of a note and handing it over: which decoder runs,
// with the file where, with which offset base and byte order. The decoders
// are replaced by recorders, so each hand-over is seen as it is made.
#include <string>
#include <vector>

#include "makernotes/makernote_decoders.h"
#include "note_harness.h"

namespace {

using namespace notetest;

std::vector<std::string> gCalls;

// The standard rules, each decoder replaced by a recorder under its name.
// "<decoder> +<position from the note's start> base <offset base> <LE|BE>"
template <int I>
void Record(const platform::Cursor& at, uint32_t base, exif::TagRecordTable&, uint32_t*);

const struct {
    exif::MakerNoteDecoder real, recorder;
    const char* name;
} kRecorders[] = {
    {makernotes::DecodeOlympusMakerNote, Record<0>, "olympus"},
    {makernotes::DecodeNikonMakerNote, Record<1>, "nikon"},
    {makernotes::DecodeNikonType1MakerNote, Record<2>, "nikonType1"},
    {makernotes::DecodeCanonMakerNote, Record<3>, "canon"},
    {makernotes::DecodeFujifilmMakerNote, Record<4>, "fujifilm"},
    {makernotes::DecodeCasioMakerNote, Record<5>, "casio"},
    {makernotes::DecodeCasioQvcMakerNote, Record<6>, "casioQvc"},
    {makernotes::DecodePentaxMakerNote, Record<7>, "pentax"},
    {makernotes::DecodeMinoltaMakerNote, Record<8>, "minolta"},
    {makernotes::DecodeSonyMakerNote, Record<9>, "sony"},
    {makernotes::DecodePanasonicMakerNote, Record<10>, "panasonic"},
    {makernotes::DecodeAppleMakerNote, Record<11>, "apple"},
    {makernotes::DecodeSamsungStmnMakerNote, Record<12>, "samsungStmn"},
    {makernotes::DecodeSamsungMakerNote, Record<13>, "samsung"},
    {makernotes::DecodeSanyoMakerNote, Record<14>, "sanyo"},
    {makernotes::DecodeRicohMakerNote, Record<15>, "ricoh"},
    {makernotes::DecodeRicohTextMakerNote, Record<16>, "ricohText"},
};

template <int I>
void Record(const platform::Cursor& at, uint32_t base, exif::TagRecordTable&, uint32_t*) {
    gCalls.push_back(std::string(kRecorders[I].name) + " +" +
                     std::to_string(static_cast<int64_t>(at.position()) - fixture::kNoteOffset) + " base " +
                     std::to_string(base) + (at.bigEndian() ? " BE" : " LE"));
}

const std::vector<exif::MakerNoteRule>& RecordingRules() {
    static const std::vector<exif::MakerNoteRule> rules = [] {
        const exif::MakerNoteRules& standard = makernotes::StandardMakerNoteRules();
        std::vector<exif::MakerNoteRule> out(standard.rules, standard.rules + standard.size);
        for (exif::MakerNoteRule& rule : out)
            for (const auto& r : kRecorders)
                if (rule.decode == r.real) rule.decode = r.recorder;
        return out;
    }();
    return rules;
}

using Calls = std::vector<std::string>;

// The calls for a note that starts with `start`, padded so every form's header fits.
Calls Dispatch(ByteOrder order, const std::string& make, const std::string& start, bool cr3 = false,
               uint32_t noteOffset = fixture::kNoteOffset) {
    Bytes note = fixture::ToBytes(start);
    note.resize(32, 0);
    gCalls.clear();
    Decoded d = TableWithMake(make);
    WithNoteFile(order, note, [&](platform::File& file) {
        exif::DispatchMakerNote(file, 0, *d.table, &d.count, IsBig(order), noteOffset, cr3,
                                {RecordingRules().data(), RecordingRules().size()});
    });
    return gCalls;
}

TEST(MakerDispatch, PrefixAndMakeChooseTheDecoderItsStartBaseAndOrder) {
    // In a CR3 the note value is the absolute position of a TIFF header of its
    // own; the directory sits at that header + its IFD offset (here 12).
    const std::string cr3Header("MM\0*\0\0\0\x0C", 8);
    const struct {
        ByteOrder order;
        const char* make;
        std::string start;
        bool cr3;
        Calls calls;
    } cases[] = {
        {kBE, "", "OM SYSTEM", false, {"olympus +5 base 0 BE"}},
        {kBE, "", "olymp", false, {"olympus +5 base 0 BE"}},
        {kBE, "", "OLYMX", false, {}},
        // Nikon's embedded TIFF headers (2.00 and 2.10 in either order, 2.11
        // "II") give their own byte order, whatever the file's; the directory
        // follows the header at note + 10, its offsets counting from there.
        // (2.00 "II" and 2.10 "MM" are the corpus's Nikon.nef and NikonD70.jpg.)
        {kBE, "", std::string("Nikon\0\x02\x10\0\0II*\0\x08\0\0\0", 18), false, {"nikon +18 base 18 LE"}},
        {kBE, "", std::string("Nikon\0\x02\x11\0\0II*\0\x08\0\0\0", 18), false, {"nikon +18 base 18 LE"}},
        {kLE, "", std::string("Nikon\0\x02\0\0\0MM\0*\0\0\0\x08", 18), false, {"nikon +18 base 18 BE"}},
        // A big-endian 2.11 or an unknown header is the older form; without
        // the prefix, a NIKON Make reads a note without header.
        {kLE, "NIKON", std::string("Nikon\0\x02\x11\0\0MM\0*\0\0\0\x08", 18), false, {"nikonType1 +5 base 0 LE"}},
        {kBE, "", std::string("Nikon\0\x01\0", 8), false, {"nikonType1 +5 base 0 BE"}},
        {kBE, "nikon corporation", std::string("\0\x05", 2), false, {"nikon +0 base 0 BE"}},
        {kLE, "canon", "", false, {"canon +0 base 0 LE"}},
        {kLE, "Canon Inc.", "", false, {}},
        {kLE, "Not a camera", cr3Header, true, {"canon +12 base 8 BE"}},
        // Fujifilm's offsets count from the note itself.
        {kBE, "", "fujif", false, {"fujifilm +5 base 8 BE"}},
        // Casio by the whole Make text, else by the "QVC" prefix.
        {kBE, "casio", "QVC", false, {"casio +0 base 0 BE"}},
        {kBE, "CASIO COMPUTER CO.,LTD", "", false, {}},
        {kLE, "Asahi pentax", "AOC", false, {"pentax +6 base 0 LE"}},
        {kLE, "RICOH IMAGING", "AOC", false, {"pentax +6 base 0 LE"}},
        // Ricoh's own forms by their start, ahead of Pentax: the directory
        // behind "Ricoh" and two zero bytes, and the text notes; not
        // "RICOH\0II" (a Pentax note), nor a text without a Ricoh Make.
        {kBE, "RICOH", std::string("Ricoh\xCF\0\0", 8), false, {"ricoh +8 base 0 BE"}},
        {kLE, "RICOH", std::string("RICOH\0\0\0", 8), false, {"ricoh +8 base 0 LE"}},
        {kLE, "RICOH", "Rev0104;", false, {"ricohText +0 base 0 LE"}},
        {kLE, "RICOH IMAGING", std::string("RICOH\0II", 8), false, {"pentax +6 base 0 LE"}},
        {kLE, "RICOH", "Re0104;", false, {"pentax +6 base 0 LE"}},
        {kLE, "PENTAX", "Rv0103;", false, {"pentax +6 base 0 LE"}},
        {kLE, "", "Rv0103;", false, {}},
        // Sony's header is skipped only when the prefix holds "SONY".
        {kLE, "Sony Corporation", "", false, {"sony +0 base 0 LE"}},
        {kLE, "SONY", std::string("SONY DSC \0\0\0", 12), false, {"sony +12 base 0 LE"}},
        {kLE, "SONY", "sony dsc ", false, {"sony +0 base 0 LE"}},
        // Panasonic by its prefix alone, case-sensitive.
        {kLE, "", std::string("Panasonic\0\0\0", 12), false, {"panasonic +12 base 0 LE"}},
        {kLE, "Panasonic", "PANASONIC", false, {}},
        // Apple by its header, whose mark gives the order; offsets from the note.
        {kLE, "", std::string("Apple iOS\0\0\x01MM", 14), false, {"apple +14 base 8 BE"}},
        {kBE, "", std::string("apple iOS\0\0\x01II", 14), false, {}},
        {kBE, "", std::string("Apple iOS\0\0\x01II", 14), false, {"apple +14 base 8 LE"}},
        // Samsung: the "STMN" record from the note, whatever the Make; the
        // directory form by its version entry, in that entry's order.
        {kBE, "", "STMN100", false, {"samsungStmn +0 base 8 BE"}},
        {kBE, "SAMSUNG", std::string("\x02\0\x01\0\x07\0\x04\0\0\0" "0100", 14), false, {"samsung +0 base 0 LE"}},
        {kLE, "SAMSUNG", std::string("\0\x02\0\x01\0\x07\0\0\0\x04" "0100", 14), false, {"samsung +0 base 0 BE"}},
        {kLE, "SAMSUNG", std::string("\x02\0\x01\0\x07\0\x04\0\0\0" "0101", 14), false, {}},
        {kLE, "", std::string("\x02\0\x01\0\x07\0\x04\0\0\0" "0100", 14), false, {}},
        {kLE, "", std::string("SANYO\0\x01\0", 8), false, {"sanyo +8 base 0 LE"}},
        // A note meeting two tests is decoded twice, in step order.
        {kLE, "SONY", "Panasonic", false, {"sony +0 base 0 LE", "panasonic +12 base 0 LE"}},
        {kLE, "PENTAX", "QVC", false, {"casioQvc +6 base 0 LE", "pentax +6 base 0 LE"}},
        {kLE, "CANON NIKON MINOLTA", "OLYMPUS", false,
         {"olympus +5 base 0 LE", "nikon +0 base 0 LE", "minolta +0 base 0 LE"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Dispatch(c.order, c.make, c.start, c.cr3), c.calls) << c.make << " " << c.start;
    EXPECT_EQ(Dispatch(kLE, "CASIO", "QVC", false, /*noteOffset=*/0), Calls{});
}

TEST(MakerDispatch, LastMakeRowWithinTheCountDecides) {
    Decoded two = TableWithMake("Canon");
    AddRow(two, 271, "Make", "sony");
    EXPECT_TRUE(exif::MakeEquals(*two.table, two.count, "SONY"));
    EXPECT_TRUE(exif::MakeContains(*two.table, two.count, "ONY"));
    EXPECT_TRUE(exif::MakeEquals(*two.table, two.count - 1, "CANON"));
}

}  // namespace
