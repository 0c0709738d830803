// Seeds for fuzz_makernotes: Canon notes with their setting arrays and
// Nikon main-form notes with lens data, in both byte orders.
#include <string>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::MakerNoteSeed;

Bytes Shorts(ByteOrder order, int count, int step) {
    Bytes out;
    for (int i = 0; i < count; ++i) fixture::PutU16(out, static_cast<uint16_t>(i * step), order);
    return out;
}

Bytes CanonNote(ByteOrder order, const std::string& header, int64_t origin) {
    MakerNoteBuilder note(order);
    note.Header(header);
    note.OutOfLine(1, fixture::kShort, 46, Shorts(order, 46, 3)).OutOfLine(4, fixture::kShort, 34, Shorts(order, 34, 7));
    note.Ascii(6, "Canon EOS 350D DIGITAL").Ascii(7, "Firmware 1.0.2").Long(8, 1181861).Ascii(9, "Owner");
    note.Long(12, 123456789).Long(16, 0x80000189).Ascii(149, "EF-S18-55mm f/3.5-5.6");
    return note.Build(origin);
}

Bytes NikonNote(ByteOrder order, const std::string& header, int64_t origin) {
    MakerNoteBuilder note(order);
    note.Header(header);
    Bytes lens = fixture::ToBytes("0100");
    fixture::Append(lens, {0, 0, 0x94, 0x40, 0x2D, 0x53, 0x2C, 0x3C, 0x96});
    note.Field(1, fixture::kUndefined, 4, fixture::ToBytes("0210")).Ascii(3, "COLOR").Ascii(4, "FINE");
    note.Ascii(7, "AF-S").Field(131, fixture::kByte, 1, {6, 0, 0, 0});
    Bytes range;
    for (uint32_t v : {18u, 1u, 55u, 1u, 35u, 10u, 56u, 10u}) fixture::PutU32(range, v, order);
    note.OutOfLine(132, fixture::kRational, 4, range).Short(137, 0x21);
    note.OutOfLine(152, fixture::kUndefined, static_cast<uint32_t>(lens.size()), lens).Long(167, 42);
    return note.Build(origin);
}

std::vector<Bytes> CanonNikonSeeds() {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    const std::string embeddedLE("Nikon\0\x02\x10\0\0II*\0\x08\0\0\0", 18);
    const std::string embeddedBE("Nikon\0\x02\x10\0\0MM\0*\0\0\0\x08", 18);
    return {
        MakerNoteSeed(le, "Canon", fixture::MakerNoteTiff(le, CanonNote(le, "", fixture::kNoteOffset))),
        MakerNoteSeed(be, "Canon", fixture::MakerNoteTiff(be, CanonNote(be, "", fixture::kNoteOffset))),
        MakerNoteSeed(le, "Canon", fixture::MakerNoteTiff(le, CanonNote(be, std::string("MM\0*\0\0\0\x08", 8), 0)), true),
        MakerNoteSeed(be, "NIKON CORPORATION", fixture::MakerNoteTiff(be, NikonNote(le, embeddedLE, -10))),
        MakerNoteSeed(le, "NIKON CORPORATION", fixture::MakerNoteTiff(le, NikonNote(be, embeddedBE, -10))),
        MakerNoteSeed(le, "NIKON", fixture::MakerNoteTiff(le, NikonNote(le, "", fixture::kNoteOffset))),
    };
}

}  // namespace

static const fuzzseeds::Register kCanonNikonSeeds("makernotes", CanonNikonSeeds);
