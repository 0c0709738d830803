// Seeds for fuzz_makernotes: one note per maker form, in its header.
#include <string>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::MakerNoteSeed;

Bytes Note(ByteOrder order, const std::string& header, int64_t origin = fixture::kNoteOffset) {
    MakerNoteBuilder note(order);
    note.Header(header).Short(1, 2).Short(3, 1).Long(10, 0x10000).Short(15, 0x0100).Short(20, 3);
    note.Field(63, fixture::kByte, 4, {0x03, 0x11, 0, 0}).Ascii(101, "Title text").Ascii(45088, "Standard");
    note.OutOfLine(97, fixture::kUndefined, 24, Bytes(24, 'f')).Short(45097, 16).Short(8210, 1);
    return note.Build(origin);
}

// The note in noteOrder inside a TIFF in fileOrder.
Bytes Tiff(ByteOrder fileOrder, ByteOrder noteOrder, const std::string& header,
           int64_t origin = fixture::kNoteOffset) {
    return fixture::MakerNoteTiff(fileOrder, Note(noteOrder, header, origin));
}
Bytes Tiff(ByteOrder order, const std::string& header) { return Tiff(order, order, header); }

// A whole TIFF as a camera writes it: Make in IFD0, the note in the Exif IFD.
Bytes CameraTiff(ByteOrder order, const std::string& make, const Bytes& note) {
    fixture::TiffBuilder tiff(order);
    const int exif = tiff.AddIfd();
    tiff.Ascii(0, 271, make).Pointer(0, 34665, exif).Blob(exif, 37500, note);
    return tiff.Build();
}

std::vector<Bytes> MakerNoteSeeds() {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    return {
        MakerNoteSeed(be, "CASIO", Tiff(be, "")),
        MakerNoteSeed(be, "CASIO COMPUTER CO.,LTD", Tiff(be, std::string("QVC\0\0\0", 6))),
        MakerNoteSeed(le, "SONY", Tiff(le, std::string("SONY DSC \0\0\0", 12))),
        MakerNoteSeed(le, "Panasonic", Tiff(le, std::string("Panasonic\0\0\0", 12))),
        MakerNoteSeed(le, "NIKON", Tiff(le, std::string("Nikon\0\x01\0", 8))),
        MakerNoteSeed(le, "NIKON", Tiff(le, be, std::string("Nikon\0\x02\x10\0\0MM\0*\0\0\0\x08", 18), -10)),
        MakerNoteSeed(be, "PENTAX Corporation", Tiff(be, std::string("AOC\0MM", 6))),
        MakerNoteSeed(be, "RICOH", Tiff(be, std::string("PENTAX \0MM", 10))),
        MakerNoteSeed(be, "OLYMPUS", Tiff(be, le, std::string("OLYMPUS\0II\x03\0", 12))),
        MakerNoteSeed(be, "OM Digital", Tiff(be, le, std::string("OM SYSTEM\0\0\0II\x04\0", 16))),
        MakerNoteSeed(be, "FUJIFILM", Tiff(be, le, std::string("FUJIFILM\x0C\0\0\0", 12), 0)),
        MakerNoteSeed(le, "Canon", Tiff(le, "")),
        MakerNoteSeed(le, "Canon", Tiff(le, be, std::string("MM\0*\0\0\0\x08", 8), 0), true),
        MakerNoteSeed(be, "Minolta Co., Ltd.", Tiff(be, "")),
    };
}

}  // namespace

static const fuzzseeds::Register kSeeds("makernotes", MakerNoteSeeds);

// The same notes in whole files, for the target that fuzzes the EXIF reader
// from the file's first byte: the walker hands each note to the dispatch.
static const fuzzseeds::Register kExifSeeds("exif", [] {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    return std::vector<Bytes>{
        CameraTiff(be, "CASIO", Note(be, "")),
        CameraTiff(be, "CASIO COMPUTER CO.,LTD", Note(be, std::string("QVC\0\0\0", 6))),
        CameraTiff(le, "SONY", Note(le, std::string("SONY DSC \0\0\0", 12))),
        CameraTiff(le, "Panasonic", Note(le, std::string("Panasonic\0\0\0", 12))),
        CameraTiff(le, "NIKON", Note(le, std::string("Nikon\0\x01\0", 8))),
        CameraTiff(le, "NIKON", Note(be, std::string("Nikon\0\x02\x10\0\0MM\0*\0\0\0\x08", 18), -10)),
        CameraTiff(be, "PENTAX Corporation", Note(be, std::string("AOC\0MM", 6))),
        CameraTiff(be, "OLYMPUS", Note(le, std::string("OLYMPUS\0II\x03\0", 12))),
        CameraTiff(be, "FUJIFILM", Note(le, std::string("FUJIFILM\x0C\0\0\0", 12), 0)),
        CameraTiff(le, "Canon", Note(le, "")),
    };
});
