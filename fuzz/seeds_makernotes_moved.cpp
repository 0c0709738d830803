// Seeds for notes read somewhere else than where they were written: Canon
// notes moved by editing software, with the camera's record of where it
// wrote them (both byte orders, moved on and back) or without one; and notes
// kept in DNG private data: Adobe's "MakN" record holding a Canon or a
// Pentax note, and a Pentax camera's own note. For fuzz_makernotes (the note
// or the private data at the end of a bare file) and for fuzz_exif (whole
// files through the walker).
#include <string>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::MakerNoteSeed;
using fuzzseeds::Ramp;

// A Canon note written at `origin` (from the TIFF header), with the camera's
// record of it when `record` is set.
Bytes CanonNote(ByteOrder o, uint32_t origin, bool record) {
    MakerNoteBuilder n(o);
    n.OutOfLine(1, fixture::kShort, 46, Ramp(o, 46, 7)).OutOfLine(4, fixture::kShort, 34, Ramp(o, 34, 5));
    n.Ascii(6, "IMG:PowerShot S95 JPEG").Ascii(7, "Firmware Version 1.00");
    Bytes note = n.Build(origin);
    if (record) {
        fixture::Append(note, fixture::ToBytes(o == ByteOrder::kLittle ? std::string("II*\0", 4)
                                                                       : std::string("MM\0*", 4)));
        fixture::PutU32(note, origin, o);
    }
    return note;
}

Bytes PentaxNote(ByteOrder o, const std::string& header, int64_t origin) {
    MakerNoteBuilder n(o);
    n.Header(header).Long(5, 77650).Short(8, 4).OutOfLine(0x215, fixture::kLong, 5, Ramp(o, 5, 1000, 4));
    return n.Build(origin);
}

// Adobe's private data with its "MakN" block.
Bytes AdobeMakerNote(ByteOrder noteOrder, uint32_t original, const Bytes& note) {
    Bytes out = fixture::ToBytes(std::string("Adobe\0MakN", 10));
    fixture::PutU32(out, static_cast<uint32_t>(6 + note.size()), ByteOrder::kBig);
    fixture::Append(out, fixture::ToBytes(noteOrder == ByteOrder::kLittle ? "II" : "MM"));
    fixture::PutU32(out, original, ByteOrder::kBig);
    fixture::Append(out, note);
    return out;
}

// A bare file: a TIFF header, then `tail` at fixture::kNoteOffset, to the end.
Bytes AtTheEnd(ByteOrder o, const Bytes& tail) {
    Bytes file = fixture::ToBytes(o == ByteOrder::kLittle ? std::string("II*\0", 4) : std::string("MM\0*", 4));
    fixture::PutU32(file, 0, o);
    fixture::Append(file, tail);
    return file;
}

Bytes Jpeg(const Bytes& tiff) { return fixture::JpegBuilder().Soi().App1Exif(tiff).ScanAndEoi().Build(); }

// A JPEG with the note behind `padding` bytes of padding in IFD0.
Bytes CanonJpeg(ByteOrder o, const Bytes& note, size_t padding) {
    fixture::TiffBuilder t(o);
    const int exif = t.AddIfd();
    t.Ascii(0, 271, "Canon").Ascii(0, 272, "Canon PowerShot S95").Pointer(0, 34665, exif);
    if (padding) t.Blob(0, 0xEA1C, Bytes(padding, 0));
    return Jpeg(t.Blob(exif, 37500, note).Build());
}

Bytes Dng(ByteOrder o, const char* make, const Bytes& privateData) {
    return fixture::TiffBuilder(o).Ascii(0, 271, make).Blob(0, 50740, privateData).Build();
}

std::vector<Bytes> MovedSeeds() {
    using fuzzseeds::kDngPrivateData;
    using fuzzseeds::kNoteToEnd;
    std::vector<Bytes> seeds;
    for (ByteOrder o : {ByteOrder::kLittle, ByteOrder::kBig}) {
        const ByteOrder other = o == ByteOrder::kLittle ? ByteOrder::kBig : ByteOrder::kLittle;
        // Written where it stands, 6 bytes before it, 1000 bytes after it.
        for (uint32_t origin : {uint32_t{8}, uint32_t{2}, uint32_t{1008}})
            for (bool record : {true, false})
                seeds.push_back(
                    MakerNoteSeed(o, "Canon", AtTheEnd(o, CanonNote(o, origin, record)), false, kNoteToEnd));
        const Bytes canon = AdobeMakerNote(other, 2000, CanonNote(other, 2000, true));
        const Bytes aoc = AdobeMakerNote(o, 4, PentaxNote(o, std::string("AOC\0MM", 6), 4));
        const Bytes own = PentaxNote(o, std::string("PENTAX \0MM", 10), 0);
        seeds.push_back(MakerNoteSeed(o, "Canon", AtTheEnd(o, canon), false, kDngPrivateData));
        seeds.push_back(MakerNoteSeed(o, "PENTAX", AtTheEnd(o, aoc), false, kDngPrivateData));
        seeds.push_back(MakerNoteSeed(o, "RICOH IMAGING", AtTheEnd(o, own), false, kDngPrivateData));
    }
    return seeds;
}

std::vector<Bytes> MovedFileSeeds() {
    std::vector<Bytes> seeds;
    for (ByteOrder o : {ByteOrder::kLittle, ByteOrder::kBig}) {
        seeds.push_back(CanonJpeg(o, CanonNote(o, 8, true), 400));
        seeds.push_back(CanonJpeg(o, CanonNote(o, 1008, false), 0));
        seeds.push_back(Jpeg(Dng(o, "Canon", AdobeMakerNote(o, 2000, CanonNote(o, 2000, true)))));
        seeds.push_back(Dng(o, "PENTAX", PentaxNote(o, std::string("PENTAX \0MM", 10), 0)));
    }
    return seeds;
}

}  // namespace

static const fuzzseeds::Register kMovedSeeds("makernotes", MovedSeeds);
static const fuzzseeds::Register kMovedFileSeeds("exif", MovedFileSeeds);
