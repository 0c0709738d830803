// Seeds for fuzz_makernotes: Minolta notes with their big-endian settings
// array (tag 0003 and the older 0001), the Dynax 7D and 5D settings and the
// plain tags; Pentax / Ricoh notes in every header form the decoder meets,
// and Pentax notes with the plain tags of the main directory and every block
// the decoder reads (shake reduction, shutter count, settings, auto
// exposure, lens, flash, camera, battery, AF, colour); in both byte orders.
#include <string>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::MakerNoteSeed;

Bytes MinoltaNote(ByteOrder order, uint16_t settingsTag) {
    Bytes settings;
    for (uint32_t i = 0; i < 56; ++i) fixture::PutU32(settings, i * 7, ByteOrder::kBig);
    MakerNoteBuilder note(order);
    note.Field(0, fixture::kUndefined, 4, fixture::ToBytes("MLT0"));
    note.OutOfLine(settingsTag, fixture::kUndefined, static_cast<uint32_t>(settings.size()), settings);
    note.Long(0x100, 1).Long(0x101, 9).Long(0x102, 2);
    return note.Build(fixture::kNoteOffset);
}

Bytes PentaxNote(ByteOrder order, const std::string& header) {
    MakerNoteBuilder note(order);
    Bytes twoShorts;
    fixture::PutU16(twoShorts, 1, order);
    fixture::PutU16(twoShorts, 63, order);
    note.Header(header).Short(8, 1).Field(9, fixture::kShort, 2, twoShorts).Short(11, 9);
    note.Field(12, fixture::kShort, 2, twoShorts).Short(13, 16).Short(14, 6).Short(20, 270).Short(25, 0);
    note.Short(31, 1).Short(32, 1).Short(33, 1).Short(34, 0).Short(35, 11).Short(36, 12);
    note.Field(51, fixture::kByte, 3, {5, 0, 1}).Field(63, fixture::kByte, 4, {0x03, 0x11, 0, 0});
    return note.Build(fixture::kNoteOffset);
}

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

std::vector<Bytes> MinoltaPentaxSeeds() {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    std::vector<Bytes> seeds = {
        MakerNoteSeed(be, "Minolta Co., Ltd.", fixture::MakerNoteTiff(be, MinoltaNote(be, 3))),
        MakerNoteSeed(le, "KONICA MINOLTA", fixture::MakerNoteTiff(le, MinoltaNote(le, 1))),
        // Ricoh's own directory behind "RICOH\0\0\0", and its text note.
        MakerNoteSeed(be, "RICOH", fixture::MakerNoteTiff(be, PentaxNote(be, std::string("RICOH\0\0\0", 8)))),
        MakerNoteSeed(le, "RICOH", fixture::MakerNoteTiff(le, fixture::ToBytes("Rv0103;Rg1C;Bg1A;Gg20;"))),
    };
    for (ByteOrder order : {le, be}) {
        for (const std::string& header : {std::string("AOC\0MM", 6), std::string("AOC\0II", 6),
                                          std::string("PENTAX \0MM", 10), std::string("PENTAX \0II", 10)}) {
            const Bytes file = fixture::MakerNoteTiff(order, PentaxNote(order, header));
            seeds.push_back(MakerNoteSeed(order, "PENTAX Corporation", file));
        }
    }
    for (ByteOrder order : {ByteOrder::kLittle, ByteOrder::kBig}) {
        seeds.push_back(MakerNoteSeed(order, "PENTAX Corporation", fixture::MakerNoteTiff(order, PentaxBlocksNote(order))));
        seeds.push_back(MakerNoteSeed(order, "KONICA MINOLTA", fixture::MakerNoteTiff(order, MinoltaDslrNote(order, 4))));
        seeds.push_back(MakerNoteSeed(order, "KONICA MINOLTA", fixture::MakerNoteTiff(order, MinoltaDslrNote(order, 0x114))));
    }
    return seeds;
}

}  // namespace

static const fuzzseeds::Register kMinoltaPentaxSeeds("makernotes", MinoltaPentaxSeeds);
