// Seeds for fuzz_makernotes: Apple notes in both marks with a run-time
// property list; Samsung's "STMN" record and its directory form in both byte
// orders, offsets from the TIFF header and from the note, with the picture
// wizard; Sanyo notes in both orders; Ricoh's directory with the
// image-information block and the camera-information sub-directory (offsets
// from the block and from the TIFF header), the GR's SHORT tags, and the
// text notes. And some of them in whole files, for the EXIF target.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

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

Bytes AppleNote(ByteOrder order) {
    MakerNoteBuilder note(order);
    note.Header(std::string("Apple iOS\0\0\x01", 12) + (order == ByteOrder::kBig ? "MM" : "II"));
    const Bytes plist = fixture::IntegerPropertyList({{"flags", 1}, {"value", 39772089846958}, {"epoch", 0}, {"timescale", 1000000000}});
    note.Field(1, fixture::kSLong, 1, Longs(order, {12}));
    note.OutOfLine(3, fixture::kUndefined, static_cast<uint32_t>(plist.size()), plist);
    note.Field(4, fixture::kSLong, 1, Longs(order, {1})).Field(10, fixture::kSLong, 1, Longs(order, {3}));
    note.OutOfLine(8, fixture::kSRational, 3, Longs(order, {-1213, 1871, 107, 47259, -2443, 3257}));
    note.Ascii(11, "7A2E1D").OutOfLine(12, fixture::kSRational, 2, Longs(order, {69, 128, 175, 256}));
    note.Field(20, fixture::kSLong, 1, Longs(order, {10})).Ascii(32, "6D45E6A1-BE56-43A0-B1A8-0175E380A06A");
    note.OutOfLine(0x23, fixture::kSLong, 2, Longs(order, {954, 268435495}));
    return note.Build(0);
}

Bytes StmnNote(ByteOrder order) {
    Bytes note = fixture::ToBytes(std::string("STMN100\0", 8));
    fixture::Append(note, Longs(order, {64, 16}));
    note.resize(64, 0);
    fixture::Append(note, {0xFF, 0xD8, 0xFF, 0xD9});
    return note;
}

Bytes SamsungNote(ByteOrder order, int64_t origin) {
    MakerNoteBuilder note(order);
    note.Field(1, fixture::kUndefined, 4, fixture::ToBytes("0100")).Long(2, 0x12000).Long(3, 0x100130c);
    note.Field(0x20, fixture::kShort, 2, Shorts(order, {3, 0})).OutOfLine(0x21, fixture::kShort, 5, Shorts(order, {1, 255, 5, 3, 4}));
    note.Field(0x40, fixture::kUndefined, 1, {1}).OutOfLine(0x43, fixture::kSRational, 1, Longs(order, {355, 10}));
    note.Ascii(0xa002, "SN12345678").Short(0xa003, 10).OutOfLine(0xa010, fixture::kLong, 8, Longs(order, {1, 2, 3, 4, 5, 6, 7, 8}));
    note.OutOfLine(0xa018, fixture::kRational, 1, Longs(order, {1, 125})).Long(0xa01a, 35);
    return note.Build(origin);
}

Bytes SanyoNote(ByteOrder order) {
    MakerNoteBuilder note(order);
    note.Header(std::string("SANYO\0\x01\0", 8)).Short(0xff, 1076).OutOfLine(0x200, fixture::kLong, 3, Longs(order, {0, 0, 0}));
    note.Short(0x201, 262).Short(0x202, 1).OutOfLine(0x204, fixture::kRational, 1, Longs(order, {0, 100}));
    note.Short(0x20e, 2).Short(0x217, 1).Short(0x21f, 3).OutOfLine(0x223, fixture::kRational, 1, Longs(order, {100, 100}));
    note.Short(0x224, 1).Short(0x225, 3);
    return note.Build(fixture::kNoteOffset);
}

// The camera-information block: its header, then a directory whose one
// out-of-line value counts from the block or from the TIFF header.
Bytes CameraInfo(ByteOrder order, int64_t origin) {
    Bytes block = fixture::ToBytes(std::string("[Ricoh Camera Info]\0", 20));
    MakerNoteBuilder sub(order);
    sub.Ascii(4, "2005:06:06          ").Ascii(5, "2003:08:19").Long(0x2a, 2);
    fixture::Append(block, sub.Build(origin + 20));
    return block;
}

Bytes RicohNote(ByteOrder order, bool fromBlock) {
    Bytes info = Shorts(order, {2048, 1536, 0});
    fixture::Append(info, {0x20, 0x06, 0x05, 0x26, 0x11, 0x48, 0x48});
    info.resize(28, 0);
    fixture::Append(info, Shorts(order, {1234, 5678}));
    fixture::Append(info, {2, 1, 2, 0, 0, 0, 9, 11, 10, 0});
    MakerNoteBuilder note(order);
    note.Header(std::string("Ricoh\0\0\0", 8)).Ascii(1, "Rdc").Ascii(2, "Rev2219");
    note.OutOfLine(5, fixture::kUndefined, 16, Bytes{0, 0, 0, 0, 0, 0, 0, 1, 0x22, 7, 0, 0, 3, 0x10, 9, 0x57});
    note.OutOfLine(0x1001, fixture::kUndefined, static_cast<uint32_t>(info.size()), info).Long(0x1003, 0);
    // The block follows the image information; its offsets are written for
    // where it lands (the note's values start after 6 entries).
    const int64_t blockAt = fixture::kNoteOffset + 8 + 2 + 12 * 6 + 4 + 8 + 16 + static_cast<int64_t>(info.size());
    const Bytes block = CameraInfo(order, fromBlock ? 0 : blockAt);
    note.OutOfLine(0x2001, fixture::kUndefined, static_cast<uint32_t>(block.size()), block);
    return note.Build(fixture::kNoteOffset);
}

Bytes GrNote(ByteOrder order) {
    MakerNoteBuilder note(order);
    note.Header(std::string("RICOH\0\0\0", 8)).Ascii(1, "Rdc").OutOfLine(5, fixture::kUndefined, 16, fixture::ToBytes("GRD2SERIAL000001"));
    note.Short(0x1000, 3).Short(0x1001, 3).Short(0x1002, 8).Short(0x1003, 12).Long(0x1004, 5).Short(0x1006, 9);
    note.OutOfLine(0x100b, fixture::kSRational, 1, Longs(order, {-1, 3})).Short(0x1010, 15).Long(0x1201, 320);
    note.OutOfLine(0x1500, fixture::kRational, 1, Longs(order, {183, 10})).Long(0x1601, 4928);
    return note.Build(fixture::kNoteOffset);
}

std::vector<Bytes> Seeds() {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    return {
        MakerNoteSeed(be, "Apple", fixture::MakerNoteTiff(be, AppleNote(be))),
        MakerNoteSeed(le, "Apple", fixture::MakerNoteTiff(le, AppleNote(le))),
        MakerNoteSeed(le, "SAMSUNG", fixture::MakerNoteTiff(le, StmnNote(le))),
        MakerNoteSeed(be, "SAMSUNG", fixture::MakerNoteTiff(be, StmnNote(be))),
        MakerNoteSeed(le, "SAMSUNG", fixture::MakerNoteTiff(le, SamsungNote(le, fixture::kNoteOffset))),
        MakerNoteSeed(be, "SAMSUNG", fixture::MakerNoteTiff(be, SamsungNote(le, 0))),
        MakerNoteSeed(le, "SANYO Electric Co.,Ltd.", fixture::MakerNoteTiff(le, SanyoNote(le))),
        MakerNoteSeed(be, "SANYO Electric Co.,Ltd.", fixture::MakerNoteTiff(be, SanyoNote(be))),
        MakerNoteSeed(be, "RICOH", fixture::MakerNoteTiff(be, RicohNote(be, true))),
        MakerNoteSeed(be, "RICOH", fixture::MakerNoteTiff(be, RicohNote(be, false))),
        MakerNoteSeed(le, "RICOH", fixture::MakerNoteTiff(le, RicohNote(le, false))),
        MakerNoteSeed(be, "RICOH", fixture::MakerNoteTiff(be, GrNote(be))),
        MakerNoteSeed(le, "RICOH", fixture::MakerNoteTiff(le, fixture::ToBytes("Rev0206;Rg7F;Bg80;Gg81;"))),
        MakerNoteSeed(le, "RICOH IMAGING", fixture::MakerNoteTiff(le, fixture::ToBytes(std::string("RICOH\0II\x01\0", 10)))),
    };
}

// A whole TIFF as a camera writes it: Make in IFD0, the note in the Exif IFD.
Bytes CameraTiff(ByteOrder order, const std::string& make, const Bytes& note) {
    fixture::TiffBuilder tiff(order);
    const int exif = tiff.AddIfd();
    tiff.Ascii(0, 271, make).Pointer(0, 34665, exif).Blob(exif, 37500, note);
    return tiff.Build();
}

}  // namespace

static const fuzzseeds::Register kSeeds("makernotes", Seeds);

// Notes whose offsets do not count from the TIFF header, in whole files:
// the walker places them where it will.
static const fuzzseeds::Register kExifSeeds("exif", [] {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    return std::vector<Bytes>{
        CameraTiff(le, "Apple", AppleNote(be)),
        CameraTiff(be, "SAMSUNG", SamsungNote(le, 0)),
        CameraTiff(le, "SAMSUNG", StmnNote(le)),
        CameraTiff(le, "RICOH", fixture::ToBytes("Rv0103;Rg1C;Bg1A;Gg20;")),
    };
});
