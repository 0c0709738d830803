// Seeds for fuzz_makernotes: Kodak's "KDK" record (written in either order,
// in files of either order) and the DC200 series' record with its file
// name; Sigma notes behind both names, with the early bodies' texts and the
// later bodies' rationals and LONGs.
#include <string>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::Longs;
using fuzzseeds::MakerNoteSeed;

Bytes KdkNote(ByteOrder o) {
    Bytes note = fixture::ToBytes("KDK INFODX4900  ");
    for (int i = 16; i < 8 + 0x6C; ++i) note.push_back(static_cast<uint8_t>(i * 7));
    const Bytes year = fuzzseeds::Shorts(o, {2002});
    note[8 + 0x10] = year[0], note[8 + 0x11] = year[1];
    return note;
}

Bytes Dc200Note() {
    Bytes note = Longs(ByteOrder::kBig, {0x01040300, 0x0201FFFF});
    note.resize(0x20, 0);
    fixture::Append(note, fixture::ToBytes("DCP01011.JPG"));
    note.resize(72, 0);
    return note;
}

Bytes SigmaNote(ByteOrder o, const std::string& header) {
    MakerNoteBuilder note(o);
    note.Header(header).Ascii(0x02, "02000019").Ascii(0x08, "P").Ascii(0x09, "8").Ascii(0x0C, "Expo:+0.8");
    note.Ascii(0x14, "CC:0").Ascii(0x16, "Qual:12").Ascii(0x19, " ");
    note.OutOfLine(0x0D, fixture::kSRational, 1, Longs(o, {-1, 3}));
    note.OutOfLine(0x14, fixture::kSRational, 3, Longs(o, {1, 2, 3, 4, 5, 0}));
    note.Long(0x2C, 8).OutOfLine(0x31, fixture::kRational, 1, Longs(o, {56, 10}));
    note.OutOfLine(0x32, fixture::kRational, 1, Longs(o, {1, 8000})).OutOfLine(0x35, fixture::kSRational, 1, Longs(o, {2, 3}));
    return note.Build(fixture::kNoteOffset);
}

std::vector<Bytes> KodakSigmaSeeds() {
    std::vector<Bytes> seeds;
    for (ByteOrder order : {ByteOrder::kLittle, ByteOrder::kBig}) {
        for (ByteOrder record : {ByteOrder::kLittle, ByteOrder::kBig})
            seeds.push_back(MakerNoteSeed(order, "EASTMAN KODAK COMPANY", fixture::MakerNoteTiff(order, KdkNote(record))));
        seeds.push_back(MakerNoteSeed(order, "Eastman Kodak Company", fixture::MakerNoteTiff(order, Dc200Note())));
        seeds.push_back(MakerNoteSeed(order, "SIGMA", fixture::MakerNoteTiff(order, SigmaNote(order, std::string("SIGMA\0\0\0\x01\0", 10)))));
        seeds.push_back(MakerNoteSeed(order, "", fixture::MakerNoteTiff(order, SigmaNote(order, std::string("FOVEON\0\0\x01\0", 10)))));
    }
    return seeds;
}

}  // namespace

static const fuzzseeds::Register kKodakSigmaSeeds("makernotes", KodakSigmaSeeds);
