// Seeds for fuzz_makernotes: Sony notes of each kind of body the decoder
// tells apart, with the plain tags of the main directory and every block it
// reads for that body (the enciphered blocks of tags 2010, 9050 and 94xx,
// the SLT bodies' AF info, the shot info and the focal-plane AF points), and
// the DSLR-A100's Minolta-form directory with its three blocks; in both byte
// orders.
#include <string>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::MakerNoteSeed;

const std::string kHeader("SONY DSC \0\0\0", 12);

Bytes Counting(size_t size, uint8_t step) {
    Bytes out(size);
    for (size_t i = 0; i < size; ++i) out[i] = static_cast<uint8_t>(i * step + 1);
    return out;
}

// The plain tags, shared by every body.
void PlainTags(MakerNoteBuilder& note, uint16_t model, uint32_t lensType) {
    note.Short(0xB001, model).Long(0xB027, lensType).Short(0x0102, 6).Long(0x0115, 0x70);
    note.OutOfLine(0x0104, fixture::kSRational, 1, fuzzseeds::Longs(note.order(), {-7, 10}));
    note.Long(0x2004, 0xFFFFFFFD).Long(0x2008, 0x10001).Long(0x200A, 0x10012).Short(0x200E, 33);
    note.OutOfLine(0x2014, fixture::kSLong, 2, fuzzseeds::Longs(note.order(), {1, -2}));
    note.Field(0x201B, fixture::kByte, 1, {2, 0, 0, 0}).Field(0x201C, fixture::kByte, 1, {3, 0, 0, 0});
    note.Field(0x201D, fixture::kShort, 2, fuzzseeds::Shorts(note.order(), {320, 240}));
    note.Field(0x201E, fixture::kByte, 1, {5, 0, 0, 0});
    note.OutOfLine(0x2020, fixture::kByte, 10, {0x41, 0x03, 0, 0, 0, 0, 0, 0, 0, 0x80});
    note.OutOfLine(0x2026, fixture::kSLong, 2, fuzzseeds::Longs(note.order(), {1500, -250}));
    note.Field(0x2028, fixture::kShort, 2, fuzzseeds::Shorts(note.order(), {1, 2}));
    note.OutOfLine(0x202A, fixture::kUndefined, 66, Counting(66, 3));
    note.Short(0x202C, 0x301).OutOfLine(0x202D, fixture::kSRational, 1, fuzzseeds::Longs(note.order(), {1, 3}));
    note.Field(0x202E, fixture::kShort, 2, fuzzseeds::Shorts(note.order(), {1, 3}));
    note.OutOfLine(0x202F, fixture::kUndefined, 10, Counting(10, 1));
    note.OutOfLine(0x2037, fixture::kShort, 3, fuzzseeds::Shorts(note.order(), {450, 359, 257}));
    note.Field(0xB000, fixture::kByte, 4, {3, 3, 5, 0}).Ascii(0xB020, "Standard").Long(0xB021, 5400);
    note.OutOfLine(0xB02A, fixture::kByte, 8, {0x83, 0x00, 0x18, 0x01, 0x35, 0x35, 0x56, 0x09});
    note.OutOfLine(0xB02B, fixture::kLong, 2, fuzzseeds::Longs(note.order(), {3632, 5456}));
    note.Short(0xB041, 7).Field(0xB048, fixture::kSShort, 1, fuzzseeds::Shorts(note.order(), {-2})).Short(0xB04B, 0xFFFF);
}

// The shot info in its own byte order, with two face records.
Bytes ShotInfo(ByteOrder order) {
    Bytes block = Counting(168, 7);
    block[0] = block[1] = order == ByteOrder::kBig ? 'M' : 'I';
    const Bytes header = fuzzseeds::Shorts(order, {94});
    block[2] = header[0];
    block[3] = header[1];
    const Bytes faces = fuzzseeds::Shorts(order, {2});
    block[48] = faces[0];
    block[49] = faces[1];
    return block;
}

Bytes SonyNote(ByteOrder order, uint16_t model, uint32_t lensType, std::initializer_list<uint16_t> blocks) {
    MakerNoteBuilder note(order);
    note.Header(kHeader);
    PlainTags(note, model, lensType);
    note.OutOfLine(0x3000, fixture::kUndefined, 168, ShotInfo(order));
    uint8_t step = 5;
    for (uint16_t tag : blocks) {
        const size_t size = tag == 0x2010 ? 6400 : tag == 0x940E ? 400 : 256;
        Bytes block = Counting(size, step += 2);
        if (tag == 0x9406) block[0] = 0x08;  // enciphered 2
        if (tag == 0x940E) block[2] = model == 294 ? 0x08 : 0x01;  // enciphered 2 (19 points) or 1 (15)
        note.OutOfLine(tag, fixture::kUndefined, static_cast<uint32_t>(size), block);
    }
    return note.Build(fixture::kNoteOffset);
}

// The DSLR-A100: the Minolta-form directory behind tag B028, its blocks cut
// short of their camera sizes.
Bytes A100Note(ByteOrder order) {
    MakerNoteBuilder sub(order);
    sub.Field(0, fixture::kUndefined, 4, fixture::ToBytes("MLT0"));
    sub.OutOfLine(0x0010, fixture::kUndefined, 64, Counting(64, 9));
    sub.OutOfLine(0x0020, fixture::kUndefined, 200, Counting(200, 11));
    sub.Long(0x0100, 16).Long(0x010C, 40).Long(0x0113, 1);
    sub.OutOfLine(0x0114, fixture::kUndefined, 200, Counting(200, 13));
    // The directory sits after the main one: its offsets count from the
    // TIFF header too, so it is built for where it will stand.
    MakerNoteBuilder note(order);
    note.Header(kHeader);
    note.Short(0xB001, 256).Long(0xB027, 40).Long(0xB028, 0x200);
    Bytes bytes = note.Build(fixture::kNoteOffset);
    bytes.resize(0x200 - fixture::kNoteOffset, 0);
    fixture::Append(bytes, sub.Build(0x200));
    return bytes;
}

std::vector<Bytes> SonySeeds() {
    std::vector<Bytes> seeds;
    for (ByteOrder order : {ByteOrder::kLittle, ByteOrder::kBig}) {
        const auto add = [&](const Bytes& note) {
            seeds.push_back(MakerNoteSeed(order, "SONY", fixture::MakerNoteTiff(order, note)));
        };
        // ILCE-7SM3, ILCE-7M3, SLT-A58, SLT-A99 and DSC-RX100M5A.
        add(SonyNote(order, 383, 0xFFFF, {0x9050, 0x9400, 0x9402, 0x9406, 0x940C, 0x9416}));
        add(SonyNote(order, 363, 0xFFFF, {0x2010, 0x9050, 0x9400, 0x9405, 0x940C}));
        add(SonyNote(order, 303, 48, {0x2010, 0x9050, 0x9400, 0x9405, 0x9406, 0x940E}));
        add(SonyNote(order, 294, 52, {0x9050, 0x940E}));
        add(SonyNote(order, 369, 0xFFFF, {0x2010, 0x9400, 0x9402, 0x9405}));
        add(A100Note(order));
    }
    return seeds;
}

}  // namespace

static const fuzzseeds::Register kSonySeeds("makernotes", SonySeeds);
