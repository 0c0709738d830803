// Seeds for fuzz_makernotes: Minolta notes with their big-endian settings
// array (tag 0003 and the older 0001), and Pentax / Ricoh notes in every
// header form the decoder meets, in both byte orders.
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
    return seeds;
}

}  // namespace

static const fuzzseeds::Register kMinoltaPentaxSeeds("makernotes", MinoltaPentaxSeeds);
