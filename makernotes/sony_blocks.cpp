// The second pass over Sony's main directory: the blocks some tags hold,
// one row per field a photographer reads, each carrying the block's tag.
// The blocks stored plain are here; the enciphered ones are in
// sony_enciphered.cpp and the DSLR-A100's Minolta-form directory in
// sony_minolta.cpp.
#include <algorithm>
#include <cstring>

#include "sony_makernote.h"

namespace makernotes {
namespace sony {
namespace {

// A text of at most `size` bytes at the field, up to its first zero byte.
std::string TextAt(const Block& b, size_t at, size_t size) {
    if (!b.Has(at, 1)) return {};
    size = std::min(size, b.size - at);
    const uint8_t* start = b.bytes + at;
    const uint8_t* end = std::find(start, start + size, 0);
    return std::string(reinterpret_cast<const char*>(start), reinterpret_cast<const char*>(end));
}

// ------------------------------------------------------------ shot info (tag 3000)
//
//   +0  "II" or "MM": the block's own byte order
//   +2  offset of the face records (16 bits)
//   +6  date and time, 20 bytes of text
//   +26 image height, +28 image width (16 bits each)
//   +48 faces detected (16 bits)
//   +52 version of the data, 16 bytes of text
//   from the face records' offset: 4 SHORTs per face (top, left, height,
//   width), 32 bytes apart at offset 72, 37 bytes apart at offset 94.

constexpr size_t kMaxFaces = 8;

void DecodeShotInfo(const Block& in) {
    if (!in.Has(0, 2) || !(std::memcmp(in.bytes, "II", 2) == 0 || std::memcmp(in.bytes, "MM", 2) == 0)) return;
    const Block b{in.bytes, in.size, in.bytes[0] == 'M', in.entry, in.table, in.rowCount, in.facts};
    if (b.Has(6, 20)) b.Row("Sony Date Time", TextAt(b, 6, 20));
    if (b.Has(26, 4)) {
        b.Row("Sony Image Height", Printf("%u", b.U16(26)));
        b.Row("Sony Image Width", Printf("%u", b.U16(28)));
    }
    if (!b.Has(48, 2)) return;
    const uint32_t faces = b.U16(48);
    b.Row("Faces Detected", Printf("%u", faces));
    if (b.Has(52, 16)) b.Row("Meta Version", TextAt(b, 52, 16));
    if (!b.Has(2, 2)) return;
    const uint32_t at = b.U16(2);
    const size_t step = at == 72 ? 32 : at == 94 ? 37 : 0;
    static const char* const kFaceNames[kMaxFaces] = {"Face 1 Position", "Face 2 Position", "Face 3 Position",
                                                      "Face 4 Position", "Face 5 Position", "Face 6 Position",
                                                      "Face 7 Position", "Face 8 Position"};
    for (size_t i = 0; step && i < faces && i < kMaxFaces; ++i) {
        const size_t face = at + i * step;
        if (!b.Has(face, 8)) return;
        b.Row(kFaceNames[i], Printf("%u %u %u %u", b.U16(face), b.U16(face + 2), b.U16(face + 4), b.U16(face + 6)));
    }
}

// ------------------------------------------------------------ focal-plane AF points (tag 202A)
//
//   +1  points used (a byte)
//   +2  the frame the points are placed in: width, height (16 bits each)
//   +6  each point used: x, y (16 bits each), up to 15 points

constexpr size_t kMaxFocalPlanePoints = 15;

void DecodeFocalPlanePoints(const Block& b) {
    if (!b.Has(1, 1)) return;
    const uint32_t used = b.U8(1);
    b.Row("Focal Plane AF Points Used", Printf("%u", used));
    if (used == 0 || !b.Has(2, 4)) return;
    b.Row("Focal Plane AF Point Area", Printf("%u %u", b.U16(2), b.U16(4)));
    for (size_t i = 0; i < used && i < kMaxFocalPlanePoints; ++i) {
        const size_t at = 6 + 4 * i;
        if (!b.Has(at, 4)) return;
        const std::string name = Printf("Focal Plane AF Point Location %u", static_cast<unsigned>(i + 1));
        b.Row(name.c_str(), Printf("%u %u", b.U16(at), b.U16(at + 2)));
    }
}

struct PlainBlock {
    uint16_t tag;
    void (*decode)(const Block&);
};
constexpr PlainBlock kPlainBlocks[] = {
    {0x202A, DecodeFocalPlanePoints},
    {0x3000, DecodeShotInfo},
};

// The A100's Minolta-form directory: tag B028 as a LONG offset.
constexpr uint16_t kA100DirectoryTag = 0xB028;

}  // namespace

void DecodeSonyBlocks(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                      uint32_t rowsBefore, uint32_t* rowCount, const SonyFacts& facts) {
    const platform::Cursor input = directory.Whole();
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        if (entry.tag == kA100DirectoryTag) {
            if (entry.type != tiff::kLong && entry.type != tiff::kIfd) return;
            const platform::Cursor sub = input.ChildAt(tiff::At(offsetBase, entry.valueField), input.end());
            return DecodeA100Directory(sub, offsetBase, table, rowCount);
        }
        if (DecodeEncipheredBlock(input, offsetBase, entry, table, rowCount, facts)) return;
        for (const PlainBlock& p : kPlainBlocks) {
            if (p.tag != entry.tag) continue;
            uint8_t bytes[kSonyPlainBlockReadLimit];
            // The reader wants a row for its context; it writes none.
            const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
            const size_t size = exif::ReadRawBlock(context, bytes, sizeof bytes);
            p.decode(Block{bytes, size, input.bigEndian(), entry, table, rowCount, facts});
        }
    });
}

}  // namespace sony
}  // namespace makernotes
