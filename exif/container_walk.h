// The walks the container locators share: cursors over the whole input, ISO
// boxes (HEIF, CR3, JPEG XL, JPEG 2000), HEIF items, the image resources of a
// Photoshop document, and the signatures that tell the containers apart.
//
// Every block of fields is read through a cursor of its own, made at the
// block's position from the whole input's cursor (which itself reads
// nothing): a failure inside one block then ends that block only. Numbers
// are big-endian.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/input.h"

namespace exif::walk {

constexpr uint32_t FourCc(const char (&text)[5]) {
    return static_cast<uint32_t>(static_cast<uint8_t>(text[0])) << 24 |
           static_cast<uint32_t>(static_cast<uint8_t>(text[1])) << 16 |
           static_cast<uint32_t>(static_cast<uint8_t>(text[2])) << 8 |
           static_cast<uint32_t>(static_cast<uint8_t>(text[3]));
}

// The whole input, big-endian.
platform::Cursor WholeInput(platform::File& file);
// A cursor from pos to the end of the input; failed when pos lies beyond it.
platform::Cursor At(const platform::Cursor& file, uint64_t pos);
// An unsigned number of 0 to 8 bytes (0 bytes reads as 0).
uint64_t Number(platform::Cursor& in, unsigned n);
// A position handed back to the caller: inside the file and small enough for
// the 32-bit offsets of the interface, else 0 ("not found").
uint32_t ResultIn(const platform::Cursor& file, uint64_t pos);
// A size handed back to the caller, cut to 32 bits.
uint32_t SizeOut(uint64_t size);

bool IsByteOrderMark(const uint8_t* b);  // "II" or "MM"
bool IsTiffSignature(const uint8_t* b);  // "II" 42 or "MM" 42
// Some writers keep the JPEG habit of "Exif\0\0" before the TIFF header:
// the position behind it when the data of `length` bytes at `data` starts so.
uint64_t SkipExifPrefix(const platform::Cursor& file, uint64_t data, uint64_t length);

// ------------------------------------------------------------ ISO boxes

// One box of an ISO base-media file (and of a JPEG XL or JPEG 2000 file):
//   0  4  size, counting the header (1: a 64-bit size follows the type;
//         0: the box runs to the end of its parent)
//   4  4  type
//   8  8  the 64-bit size, when size is 1
// A full box then has one version byte and three flag bytes.
struct Box {
    uint32_t type = 0;
    uint64_t start = 0;
    uint64_t body = 0;      // just after the header
    uint64_t end = 0;       // cut at the parent's end
    uint64_t declared = 0;  // the size the box claims
};

// Reads the header of the box at pos inside a parent that ends at limit.
// A size smaller than the header is malformed; a box that claims more than
// its parent holds is cut at the parent's end, so a truncated file still
// yields what it has and the walk ends there.
bool ReadBox(const platform::Cursor& file, uint64_t pos, uint64_t limit, Box& box);
// The first box of the given type among at most maxBoxes boxes from pos.
bool FindBox(const platform::Cursor& file, uint64_t pos, uint64_t limit, uint32_t type, uint32_t maxBoxes,
             Box& found);

struct Uuid {
    uint8_t bytes[16] = {};
};
constexpr uint8_t HexDigit(char c) { return static_cast<uint8_t>(c <= '9' ? c - '0' : c - 'a' + 10); }
// An identifier from the 32 lower-case hex digits it is usually written as.
constexpr Uuid UuidFromHex(const char (&hex)[33]) {
    Uuid id;
    for (int i = 0; i < 16; ++i)
        id.bytes[i] = static_cast<uint8_t>(HexDigit(hex[2 * i]) << 4 | HexDigit(hex[2 * i + 1]));
    return id;
}
// The first top-level "uuid" box (of kMaxTopLevelBoxes) with the identifier;
// `data` is then where its data starts, behind the identifier.
bool FindUuidBox(const platform::Cursor& file, const Uuid& id, Box& box, uint64_t& data);

// ------------------------------------------------------------ HEIF items

struct ItemExtent {
    uint64_t offset = 0;
    uint64_t length = 0;
};

// Decides on one "infe" entry (version 2 or later): its item type, and a
// cursor just behind the type (over the rest of the entry).
using ItemTest = bool (*)(uint32_t type, platform::Cursor& rest);

// The first extent of the first item that `test` accepts: "meta" among the
// top-level boxes, its "iinf" and "iloc" (in either order). Nothing when
// "iinf" names no such item, when the item's data is not in this file, or a
// limit is reached.
bool FindHeifItem(const platform::Cursor& file, ItemTest test, ItemExtent& extent);

// ------------------------------------------------------------ Photoshop

// A Photoshop document ("8BPS", version 1; version 2 is the large form):
//   0   4  "8BPS"       4  2  version     6  6  reserved
//   12  2  channels     14 4  height      18 4  width
//   22  2  depth        24 2  colour mode
//   26  4  colour-mode data length n, then n bytes
//   .   4  image-resource section length m, then m bytes of resources:
//            4  "8BIM"
//            2  resource id (0x0404 IPTC-NAA, 0x0422 EXIF, 0x0424 XMP)
//            n  name: a length byte and its characters, n made even
//            4  data size s
//            s  data, and a pad byte when s is odd
struct PsdResource {
    uint64_t start = 0;  // its "8BIM"
    uint64_t data = 0;
    uint64_t size = 0;   // cut at the section's end
};
bool IsPsd(const uint8_t* head, size_t n);
// The first resource with the id in the document's resource section.
bool FindPsdResource(const platform::Cursor& file, uint16_t id, PsdResource& found);

// ------------------------------------------------------------ RIFF

// WebP: "RIFF", a little-endian size, "WEBP", then RIFF chunks:
//   0  4  FourCC
//   4  4  data size, little-endian
//   8  n  data, padded to an even length
// The RIFF size is not trusted: the walk runs to the end of the file.
bool IsWebp(const uint8_t* head, size_t n);
// The first chunk of the type (of kMaxChunks); false also when a chunk
// header is cut by the end of the file before it.
bool FindRiffChunk(const platform::Cursor& file, uint32_t type, uint64_t& data, uint32_t& size);

// ------------------------------------------------------------ JPEG 2000

// The signature box that opens a JP2 or JPX file (and a J2K codestream in a
// JP2 wrapper): 12 bytes, type "jP  ", data 0D 0A 87 0A.
bool IsJpeg2000(const uint8_t* head, size_t n);

}  // namespace exif::walk
