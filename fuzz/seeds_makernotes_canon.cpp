// Seeds for fuzz_makernotes: Canon notes with every record the decoder reads
// (settings, focal length, shot info, panorama, both AF forms, file info,
// crop, aspect, processing, measured colour, sensor, picture styles, AF
// micro-adjustment, time, camera info) and the tags read whole, in both byte
// orders; and the plain tags with the settings arrays, in a CR3's own TIFF
// header too.
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
using fuzzseeds::Shorts;

Bytes RecordsNote(ByteOrder o, bool newerAf) {
    MakerNoteBuilder n(o);
    n.OutOfLine(1, fixture::kShort, 47, Ramp(o, 47, 5)).Field(2, fixture::kShort, 2, Shorts(o, {2, 35}));
    n.OutOfLine(4, fixture::kShort, 34, Ramp(o, 34, 9)).OutOfLine(5, fixture::kShort, 6, Ramp(o, 6, 1));
    n.Ascii(6, "Canon EOS 350D DIGITAL").Long(12, 123456789).Long(16, 0x80000189);
    if (newerAf)
        n.OutOfLine(0x26, fixture::kShort, 24,
                    Shorts(o, {48, 2, 3, 3, 600, 400, 600, 400, 9, 9, 9, 8, 8, 8, -5, 0, 5, 1, 0, -1, 4, 5, 0, 0}));
    else
        n.OutOfLine(0x12, fixture::kShort, 16, Shorts(o, {3, 3, 600, 400, 600, 400, 9, 8, -5, 0, 5, 1, 0, -1, 6, 0}));
    n.OutOfLine(0x0D, fixture::kUndefined, 0x182, Ramp(o, 0xC1, 0x0101));
    n.OutOfLine(0x35, fixture::kSLong, 4, Ramp(o, 4, 20, 4));
    n.OutOfLine(0x28, fixture::kByte, 16, Ramp(o, 8, 0x1F1F)).OutOfLine(0x38, fixture::kUndefined, 76, Ramp(o, 38, 0x4C4C));
    n.OutOfLine(0x93, fixture::kShort, 26, Ramp(o, 26, 3)).OutOfLine(0x98, fixture::kShort, 4, Ramp(o, 4, 1));
    n.OutOfLine(0x9A, fixture::kLong, 5, Ramp(o, 5, 100, 4)).OutOfLine(0xA0, fixture::kShort, 14, Ramp(o, 14, 11));
    n.OutOfLine(0xAA, fixture::kShort, 6, Ramp(o, 6, 200)).OutOfLine(0xE0, fixture::kShort, 17, Ramp(o, 17, 50));
    n.OutOfLine(0x4008, fixture::kShort, 3, Shorts(o, {0x81, 0x84, 0x86})).OutOfLine(0x4013, fixture::kSLong, 5, Ramp(o, 5, 1, 4));
    return n.Build(fixture::kNoteOffset);
}

Bytes PlainNote(ByteOrder order, const std::string& header, int64_t origin) {
    MakerNoteBuilder note(order);
    note.Header(header);
    note.OutOfLine(1, fixture::kShort, 46, Ramp(order, 46, 3)).OutOfLine(4, fixture::kShort, 34, Ramp(order, 34, 7));
    note.Ascii(6, "Canon EOS 350D DIGITAL").Ascii(7, "Firmware 1.0.2").Long(8, 1181861).Ascii(9, "Owner");
    note.Long(12, 123456789).Long(16, 0x80000189).Ascii(149, "EF-S18-55mm f/3.5-5.6");
    return note.Build(origin);
}

std::vector<Bytes> CanonSeeds() {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    return {
        MakerNoteSeed(le, "Canon", fixture::MakerNoteTiff(le, RecordsNote(le, true))),
        MakerNoteSeed(be, "Canon", fixture::MakerNoteTiff(be, RecordsNote(be, true))),
        MakerNoteSeed(le, "Canon", fixture::MakerNoteTiff(le, RecordsNote(le, false))),
        MakerNoteSeed(be, "Canon", fixture::MakerNoteTiff(be, RecordsNote(be, false))),
        MakerNoteSeed(le, "Canon", fixture::MakerNoteTiff(le, PlainNote(le, "", fixture::kNoteOffset))),
        MakerNoteSeed(be, "Canon", fixture::MakerNoteTiff(be, PlainNote(be, "", fixture::kNoteOffset))),
        MakerNoteSeed(le, "Canon", fixture::MakerNoteTiff(le, PlainNote(be, std::string("MM\0*\0\0\0\x08", 8), 0)), true),
    };
}

}  // namespace

static const fuzzseeds::Register kCanonSeeds("makernotes", CanonSeeds);
