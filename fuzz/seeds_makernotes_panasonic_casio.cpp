// Seeds for fuzz_makernotes: Panasonic notes with every structure the
// decoder reads beyond a SHORT (versions, serial number, times, texts, AF
// point rationals, face records, transform pairs, byte settings, LONGs) and
// Casio notes of both forms with their later tags (the headerless form's
// firmware date and settings, the QVC form's preview, AF point, effect and
// stabilisation values); in both byte orders.
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
using fuzzseeds::Shorts;

Bytes PanasonicNote(ByteOrder o) {
    MakerNoteBuilder note(o);
    note.Header(std::string("Panasonic\0\0\0", 12));
    note.Short(0x01, 2).Field(0x02, fixture::kUndefined, 4, {0, 1, 0, 8}).Short(0x03, 1).Short(0x0F, 0x0100);
    note.Short(0x23, 0xFFFE).Short(0x24, 4);
    note.OutOfLine(0x25, fixture::kUndefined, 16, fixture::ToBytes(std::string("F650912220134\0^\0", 16)));
    note.Field(0x26, fixture::kUndefined, 4, fixture::ToBytes("0300")).Long(0x29, 8640123).Long(0x2B, 7);
    note.Short(0x2D, 0xFFFD).Short(0x36, 65535);
    note.OutOfLine(0x33, fixture::kAscii, 20, fixture::ToBytes(std::string("9999:99:99 00:00:00\0", 20)));
    note.OutOfLine(0x4D, fixture::kRational, 2, Longs(o, {128, 256, 0, 0}));
    Bytes faces = Shorts(o, {5, 1, 2, 3, 4, 5, 6, 7, 8});
    faces.resize(42);
    note.OutOfLine(0x4E, fixture::kUndefined, 42, faces);
    note.Ascii(0x51, "LUMIX G 20/F1.7").Field(0x59, fixture::kUndefined, 4, Shorts(o, {-3, 2}));
    note.OutOfLine(0x61, fixture::kUndefined, 148, Bytes(148, 'n'));
    note.OutOfLine(0x65, fixture::kUndefined, 64, Bytes(64, 't')).Field(0x70, fixture::kByte, 1, {2, 0, 0, 0});
    note.Field(0x8F, fixture::kByte, 1, {1, 0, 0, 0}).Short(0x90, 0x8000).Short(0x91, 0x7FFF).Long(0xD1, 6400);
    note.Field(0x8000, fixture::kUndefined, 4, fixture::ToBytes("0133")).Short(0x8001, 84);
    note.OutOfLine(0x8010, fixture::kAscii, 20, fixture::ToBytes(std::string("2012:01:02 00:00:00\0", 20)));
    note.Field(0x8012, fixture::kUndefined, 4, Shorts(o, {1, 1}));
    return note.Build(fixture::kNoteOffset);
}

Bytes CasioNote(ByteOrder o) {
    MakerNoteBuilder note(o);
    note.Short(1, 1).Short(2, 3).Long(10, 0x20000).Short(22, 2).Short(23, 3).Short(24, 11).Short(25, 2);
    note.OutOfLine(21, fixture::kAscii, 18, fixture::ToBytes(std::string("0302\0\0" "2809\0\0" "45\0\0\0\0\0\0", 18)));
    return note.Build(fixture::kNoteOffset);
}

Bytes CasioQvcNote(ByteOrder o) {
    MakerNoteBuilder note(o);
    note.Header(std::string("QVC\0\0\0", 6));
    note.Field(0x02, fixture::kShort, 2, Shorts(o, {320, 240})).Long(0x03, 26).Long(0x04, 64);
    note.OutOfLine(0x1D, fixture::kRational, 1, Longs(o, {62, 10})).Short(0x1F, 1);
    note.OutOfLine(0x2000, fixture::kUndefined, 26, Bytes(26, 0xFF));
    note.OutOfLine(0x2001, fixture::kAscii, 18, fixture::ToBytes(std::string("0302\0\0" "2809\0\0" "45\0\0\0\0\0\0", 18)));
    note.Field(0x2011, fixture::kShort, 2, Shorts(o, {87, 93})).Short(0x2012, 13);
    note.OutOfLine(0x2021, fixture::kShort, 4, Shorts(o, {176, 352, 120, 240})).Long(0x2022, 1000);
    note.Field(0x2076, fixture::kByte, 3, {3, 0, 0, 0}).Field(0x211C, fixture::kByte, 1, {2, 0, 0, 0});
    note.Short(0x3000, 2).Ascii(0x3006, "New York").Field(0x3011, fixture::kUndefined, 2, Shorts(o, {-1}));
    note.Field(0x301D, fixture::kShort, 2, Shorts(o, {1, 3})).Field(0x3020, fixture::kShort, 2, Shorts(o, {18, 0}));
    note.Short(0x3020, 2).Short(0x3103, 10).Short(0x4003, 4);
    return note.Build(fixture::kNoteOffset);
}

std::vector<Bytes> PanasonicCasioSeeds() {
    std::vector<Bytes> seeds;
    for (ByteOrder order : {ByteOrder::kLittle, ByteOrder::kBig}) {
        seeds.push_back(MakerNoteSeed(order, "Panasonic", fixture::MakerNoteTiff(order, PanasonicNote(order))));
        seeds.push_back(MakerNoteSeed(order, "CASIO", fixture::MakerNoteTiff(order, CasioNote(order))));
        seeds.push_back(MakerNoteSeed(order, "CASIO COMPUTER CO.,LTD", fixture::MakerNoteTiff(order, CasioQvcNote(order))));
    }
    return seeds;
}

}  // namespace

static const fuzzseeds::Register kPanasonicCasioSeeds("makernotes", PanasonicCasioSeeds);
