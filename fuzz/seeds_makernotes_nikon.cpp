// Seeds for fuzz_makernotes: Nikon main-form notes with every structure the
// decoder reads (AF info, colour balance, lens data in the clear and
// enciphered, flash info, the preview directory), in both byte orders and
// without a header; and notes with the plain tags and lens data only, in a
// byte order unlike their file's.
#include <string>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::MakerNoteSeed;

// A structure: its version, then `size` bytes counting up from `first`.
Bytes Structure(const char* version, size_t size, uint8_t first) {
    Bytes out = fixture::ToBytes(version);
    for (size_t i = 0; out.size() < size; ++i) out.push_back(static_cast<uint8_t>(first + 7 * i));
    return out;
}

// Where the preview directory stands, from the offset base.
constexpr int64_t kPreviewAt = 0x600;

Bytes PreviewDirectory(ByteOrder order) {
    MakerNoteBuilder ifd(order);
    ifd.Short(259, 6).Short(296, 2).Long(513, 64).Long(514, 26).Short(531, 2);
    return ifd.Build(0);
}

// lensVersion and balanceVersion pick the forms; enciphered ones need the
// serial (0x1D) and shutter count (0xA7) that every seed carries.
Bytes NikonNote(ByteOrder order, const std::string& header, int64_t origin, const char* lensVersion,
                const char* balanceVersion) {
    MakerNoteBuilder note(order);
    note.Header(header);
    note.Field(1, fixture::kUndefined, 4, fixture::ToBytes("0210")).Short(2, 200).Ascii(4, "FINE");
    note.Field(13, fixture::kUndefined, 4, {0xFD, 1, 3, 0}).Field(14, fixture::kUndefined, 4, {0xC5, 1, 12, 0});
    note.Long(17, kPreviewAt).Ascii(29, "3001006").Field(32, fixture::kByte, 1, {1, 0, 0, 0}).Short(34, 3);
    note.Field(131, fixture::kByte, 1, {6, 0, 0, 0}).Field(136, fixture::kUndefined, 4, {1, 2, 0x00, 0x05});
    note.OutOfLine(151, fixture::kUndefined, 320, Structure(balanceVersion, 320, 0x11));
    note.OutOfLine(152, fixture::kUndefined, 33, Structure(lensVersion, 33, 0x2D));
    note.Long(167, 526).OutOfLine(168, fixture::kUndefined, 22, Structure("0100", 22, 1));
    // The later bodies' settings: crop, VR, picture control, world time, ISO,
    // power-up time, AF info 2, file info, AF fine tune.
    const Bytes crop = fuzzseeds::Shorts(order, {2, 6048, 4032, 3936, 2624, 1056, 704});
    note.OutOfLine(27, fixture::kShort, 7, crop).OutOfLine(31, fixture::kUndefined, 8, Structure("0100", 8, 1));
    note.OutOfLine(35, fixture::kUndefined, 58, Structure("0100", 58, 0x41));
    note.Field(36, fixture::kUndefined, 4, {0xB6, 0xFE, 1, 2}).OutOfLine(37, fixture::kUndefined, 14, Structure("H", 14, 1));
    note.OutOfLine(182, fixture::kUndefined, 7, Structure("\x07\xE5\x07\x04", 7, 18));
    note.OutOfLine(183, fixture::kUndefined, 8, Structure("0100", 8, 0));
    note.OutOfLine(184, fixture::kUndefined, 10, Structure("0100", 10, 1)).Field(185, fixture::kUndefined, 4, {1, 255, 0xFB, 3});
    Bytes out = note.Build(origin);
    out.resize(static_cast<size_t>(kPreviewAt - origin), 0);  // past every value
    fixture::Append(out, PreviewDirectory(order));
    return out;
}

// The plain tags and lens data 0100, nothing enciphered.
Bytes LensNote(ByteOrder order, const std::string& header, int64_t origin) {
    MakerNoteBuilder note(order);
    note.Header(header);
    Bytes lens = fixture::ToBytes("0100");
    fixture::Append(lens, {0, 0, 0x94, 0x40, 0x2D, 0x53, 0x2C, 0x3C, 0x96});
    note.Field(1, fixture::kUndefined, 4, fixture::ToBytes("0210")).Ascii(3, "COLOR").Ascii(4, "FINE");
    note.Ascii(7, "AF-S").Field(131, fixture::kByte, 1, {6, 0, 0, 0});
    note.OutOfLine(132, fixture::kRational, 4, fuzzseeds::Longs(order, {18, 1, 55, 1, 35, 10, 56, 10})).Short(137, 0x21);
    note.OutOfLine(152, fixture::kUndefined, static_cast<uint32_t>(lens.size()), lens).Long(167, 42);
    return note.Build(origin);
}

std::vector<Bytes> NikonSeeds() {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    const std::string embeddedLE("Nikon\0\x02\x10\0\0II*\0\x08\0\0\0", 18);
    const std::string embeddedBE("Nikon\0\x02\x10\0\0MM\0*\0\0\0\x08", 18);
    return {
        MakerNoteSeed(le, "NIKON CORPORATION", fixture::MakerNoteTiff(le, NikonNote(le, embeddedLE, -10, "0201", "0206"))),
        MakerNoteSeed(be, "NIKON CORPORATION", fixture::MakerNoteTiff(be, NikonNote(be, embeddedBE, -10, "0204", "0211"))),
        MakerNoteSeed(le, "NIKON CORPORATION", fixture::MakerNoteTiff(le, NikonNote(be, embeddedBE, -10, "0101", "0103"))),
        MakerNoteSeed(be, "NIKON", fixture::MakerNoteTiff(be, NikonNote(be, "", fixture::kNoteOffset, "0100", "0100"))),
        MakerNoteSeed(be, "NIKON CORPORATION", fixture::MakerNoteTiff(be, LensNote(le, embeddedLE, -10))),
        MakerNoteSeed(le, "NIKON CORPORATION", fixture::MakerNoteTiff(le, LensNote(be, embeddedBE, -10))),
        MakerNoteSeed(le, "NIKON", fixture::MakerNoteTiff(le, LensNote(le, "", fixture::kNoteOffset))),
    };
}

}  // namespace

static const fuzzseeds::Register kNikonSeeds("makernotes", NikonSeeds);
