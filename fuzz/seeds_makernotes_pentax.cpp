// Seeds for fuzz_makernotes: Pentax notes with the plain tags of the main
// directory and every block the decoder reads (shake reduction, shutter
// count, settings, auto exposure, lens, flash, camera, battery, AF, colour),
// and Minolta notes with the Dynax 7D and 5D settings and the plain tags,
// in both orders.
#include <string>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::MakerNoteSeed;

Bytes Counting(size_t size, uint8_t step) {
    Bytes out(size);
    for (size_t i = 0; i < size; ++i) out[i] = static_cast<uint8_t>(i * step + 1);
    return out;
}

Bytes PentaxBlocksNote(ByteOrder order) {
    MakerNoteBuilder note(order);
    note.Header(std::string("AOC\0MM", 6));
    note.Field(0, fixture::kByte, 4, {3, 0, 0, 0}).Short(1, 0).Field(2, fixture::kShort, 2, {2, 128, 1, 224});
    note.Long(3, 26).Long(5, 0x12c1e);
    note.Field(6, fixture::kUndefined, 4, {0x07, 0xD8, 0x03, 0x02}).Field(7, fixture::kUndefined, 3, {12, 1, 23, 0});
    note.Long(0x12, 1000).Short(0x13, 130).Short(0x16, 57).Field(0x18, fixture::kShort, 2, {0, 3, 2, 1});
    note.Long(0x1d, 1000).Field(0x27, fixture::kUndefined, 4, {254, 225, 255, 237}).Short(0x2d, 15104);
    note.Field(0x32, fixture::kUndefined, 4, {0, 0, 0, 4}).Field(0x34, fixture::kByte, 4, {1, 2, 4, 0x30});
    note.Field(0x47, 6 /* SBYTE */, 1, {0xF4, 0, 0, 0}).Long(0x4d, 0xFFFFFF00).Short(0x50, 48000);
    note.Field(0x5c, fixture::kByte, 4, {0x41, 7, 255, 21}).Field(0x5d, fixture::kUndefined, 4, {0xF4, 0x26, 0xED, 0x8D});
    note.Field(0x60, fixture::kUndefined, 4, {3, 0, 50, 50}).Field(0x76, fixture::kByte, 2, {10, 3, 0, 0});
    note.OutOfLine(0x205, fixture::kUndefined, 23, Counting(23, 13));
    note.OutOfLine(0x206, fixture::kUndefined, 16, Counting(16, 17));
    note.OutOfLine(0x207, fixture::kUndefined, 69, Counting(69, 11));
    note.OutOfLine(0x208, fixture::kUndefined, 27, Counting(27, 9));
    Bytes camera;
    for (uint32_t v : {0x12c1eu, 20070913u, 2u, 1u, 132352u}) fixture::PutU32(camera, v, order);
    note.OutOfLine(0x215, fixture::kLong, 5, camera);
    note.OutOfLine(0x216, fixture::kUndefined, 6, {2, 0x41, 173, 168, 5, 1});
    note.OutOfLine(0x21f, fixture::kUndefined, 12, Counting(12, 3));
    note.OutOfLine(0x222, fixture::kUndefined, 18, Counting(18, 29));
    return note.Build(fixture::kNoteOffset);
}

Bytes MinoltaDslrNote(ByteOrder order, uint16_t settingsTag) {
    MakerNoteBuilder note(order);
    note.Field(0, fixture::kUndefined, 4, fixture::ToBytes("MLT0"));
    note.OutOfLine(settingsTag, fixture::kUndefined, 128, Counting(128, 5));
    note.Field(0x18, fixture::kUndefined, 4, {1, 2, 3, 4}).Long(0x40, 16072064);
    note.OutOfLine(0x104, fixture::kSRational, 1, {0, 0, 0, 1, 0, 0, 0, 3});
    note.Long(0x105, 0x48).Long(0x107, 5).Long(0x10a, 1).Long(0x10b, 5500).Long(0x10c, 33);
    note.Long(0x111, 0xFFFFFFFE).Long(0x112, 2).Long(0x115, 0x30);
    return note.Build(fixture::kNoteOffset);
}

std::vector<Bytes> PentaxDepthSeeds() {
    std::vector<Bytes> seeds;
    for (ByteOrder order : {ByteOrder::kLittle, ByteOrder::kBig}) {
        seeds.push_back(MakerNoteSeed(order, "PENTAX Corporation", fixture::MakerNoteTiff(order, PentaxBlocksNote(order))));
        seeds.push_back(MakerNoteSeed(order, "KONICA MINOLTA", fixture::MakerNoteTiff(order, MinoltaDslrNote(order, 4))));
        seeds.push_back(MakerNoteSeed(order, "KONICA MINOLTA", fixture::MakerNoteTiff(order, MinoltaDslrNote(order, 0x114))));
    }
    return seeds;
}

}  // namespace

static const fuzzseeds::Register kPentaxDepthSeeds("makernotes", PentaxDepthSeeds);
