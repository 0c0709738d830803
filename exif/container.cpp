// Container locators: where the TIFF header of the EXIF data sits in ISO
// media files (HEIF, AVIF, CR3), JPEG XL, PNG and WebP, and the dispatch that
// recognises them by their first kilobyte.
//
// Every read goes through a platform::Cursor, which checks each field against
// the file's size before reading it; every box or chunk is handled inside the
// range its parent declares, and every walk stops at a limit from
// container_limits.h, so a hostile file can neither make us read past what we
// asked for nor keep us walking.
#include "container.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "container_limits.h"
#include "platform/input.h"
#include "jpeg/png_chunks.h"

namespace exif {
namespace {

constexpr uint32_t FourCc(const char (&text)[5]) {
    return static_cast<uint32_t>(static_cast<uint8_t>(text[0])) << 24 |
           static_cast<uint32_t>(static_cast<uint8_t>(text[1])) << 16 |
           static_cast<uint32_t>(static_cast<uint8_t>(text[2])) << 8 |
           static_cast<uint32_t>(static_cast<uint8_t>(text[3]));
}

constexpr uint32_t kMeta = FourCc("meta");
constexpr uint32_t kHdlr = FourCc("hdlr");
constexpr uint32_t kIinf = FourCc("iinf");
constexpr uint32_t kInfe = FourCc("infe");
constexpr uint32_t kIloc = FourCc("iloc");
constexpr uint32_t kExifBox = FourCc("Exif");  // HEIF item type and JPEG XL box
constexpr uint32_t kMoov = FourCc("moov");
constexpr uint32_t kUuid = FourCc("uuid");
constexpr uint32_t kCmt1 = FourCc("CMT1");
constexpr uint32_t kPngExif = jpeg::PngChunkType("eXIf");
constexpr uint32_t kPngEnd = jpeg::PngChunkType("IEND");
constexpr uint32_t kRiffExif = FourCc("EXIF");

constexpr uint64_t kNoOffset = std::numeric_limits<uint32_t>::max();

// The identifier of the "uuid" box in which Canon keeps the CMT boxes, in the
// form it is usually written down.
constexpr char kCanonCr3UuidHex[] = "85c0b687820f11e08111f4ce462b6a48";

constexpr uint8_t HexDigit(char c) {
    return static_cast<uint8_t>(c <= '9' ? c - '0' : c - 'a' + 10);
}

struct Uuid {
    uint8_t bytes[16] = {};
};

constexpr Uuid UuidFromHex(const char (&hex)[33]) {
    Uuid id;
    for (int i = 0; i < 16; ++i)
        id.bytes[i] = static_cast<uint8_t>(HexDigit(hex[2 * i]) << 4 | HexDigit(hex[2 * i + 1]));
    return id;
}

constexpr Uuid kCanonCr3Uuid = UuidFromHex(kCanonCr3UuidHex);

// Every block of fields is read through a cursor of its own, made at the
// block's position from the whole input's cursor (which itself reads
// nothing): a failure inside one block then ends that block only. Numbers
// are big-endian unless the name says otherwise.
platform::Cursor WholeInput(platform::File& file) {
    const int64_t size = file.Size();
    return platform::Cursor(file, platform::ByteOrder::kBig, 0, size > 0 ? static_cast<uint64_t>(size) : 0);
}

// A cursor from pos to the end of the input; failed when pos lies beyond it.
platform::Cursor At(const platform::Cursor& file, uint64_t pos) { return file.ChildAt(pos, file.end()); }

// An unsigned number of 0 to 8 bytes (0 bytes reads as 0).
uint64_t Number(platform::Cursor& in, unsigned n) {
    uint8_t b[8];
    if (n > sizeof b || !in.Bytes(b, n)) return 0;
    uint64_t v = 0;
    for (unsigned i = 0; i < n; ++i) v = v << 8 | b[i];
    return v;
}

uint32_t AsOffset(uint64_t pos) { return pos < kNoOffset ? static_cast<uint32_t>(pos) : 0; }

// A position handed back to the caller: inside the file and small enough for
// the 32-bit offsets of the interface, else "not found".
uint32_t ResultIn(const platform::Cursor& file, uint64_t pos) { return pos < file.end() ? AsOffset(pos) : 0; }

bool IsByteOrderMark(const uint8_t* b) {
    return (b[0] == 'I' && b[1] == 'I') || (b[0] == 'M' && b[1] == 'M');
}

bool IsTiffSignature(const uint8_t* b) {
    return (b[0] == 'I' && b[1] == 'I' && b[2] == 0x2A && b[3] == 0) ||
           (b[0] == 'M' && b[1] == 'M' && b[2] == 0 && b[3] == 0x2A);
}

// ------------------------------------------------------------ ISO boxes

// One box of an ISO base-media file (and of a JPEG XL container):
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
bool ReadBox(const platform::Cursor& file, uint64_t pos, uint64_t limit, Box& box) {
    platform::Cursor in = At(file, pos);
    if (pos > limit || limit - pos < 8 || !in.ok()) return false;
    uint64_t size = in.U32();
    box.type = in.U32();
    uint64_t header = 8;
    if (size == 1) {
        size = Number(in, 8);
        header = 16;
    } else if (size == 0) {
        size = limit - pos;
    }
    if (!in.ok() || size < header) return false;
    box.start = pos;
    box.body = pos + header;
    box.declared = size;
    box.end = size > limit - pos ? limit : pos + size;
    return box.body <= box.end;
}

// The first box of the given type among at most maxBoxes boxes from pos.
bool FindBox(const platform::Cursor& file, uint64_t pos, uint64_t limit, uint32_t type, uint32_t maxBoxes,
             Box& found) {
    for (uint32_t n = 0; n < maxBoxes; ++n) {
        Box box;
        if (!ReadBox(file, pos, limit, box)) return false;
        if (box.type == type) {
            found = box;
            return true;
        }
        pos = box.end;
    }
    return false;
}

// ------------------------------------------------------------ HEIF

// "iinf" (full box): an entry count (16 bits in version 0, else 32), then
// one "infe" box per item. From version 2 an "infe" body reads:
//   0  4      version, flags
//   4  2 | 4  item ID (4 bytes from version 3)
//   .  2      protection index
//   .  4      item type ("Exif" for the EXIF block)
// Earlier versions carry no item type and cannot name an Exif item.
bool FindExifItemId(const platform::Cursor& file, const Box& iinf, uint32_t& itemId) {
    platform::Cursor head = At(file, iinf.body);
    uint8_t version = head.U8();
    head.Skip(3);
    uint32_t count = version == 0 ? head.U16() : head.U32();
    if (!head.ok()) return false;
    uint64_t pos = head.position();
    for (uint32_t i = 0; i < std::min(count, kMaxHeifItems); ++i) {
        Box infe;
        if (!ReadBox(file, pos, iinf.end, infe)) return false;
        pos = infe.end;
        if (infe.type != kInfe) continue;
        platform::Cursor in = At(file, infe.body);
        if (!in.ok()) continue;
        uint8_t infeVersion = in.U8();
        in.Skip(3);
        if (infeVersion < 2) continue;
        uint32_t id = infeVersion == 2 ? in.U16() : in.U32();
        in.Skip(2);
        uint32_t type = in.U32();
        if (in.ok() && in.position() <= infe.end && type == kExifBox) {
            itemId = id;
            return true;
        }
    }
    return false;
}

struct ItemExtent {
    uint64_t offset = 0;
    uint64_t length = 0;
};

bool IsFieldSize(unsigned bytes) { return bytes == 0 || bytes == 4 || bytes == 8; }

// "iloc" (full box, versions 0 to 2):
//   0  4      version, flags
//   4  1      offset size << 4 | length size        (bytes: 0, 4 or 8)
//   5  1      base-offset size << 4 | index size    (index size from version 1)
//   6  2 | 4  item count (4 bytes in version 2)
//   per item:
//      2 | 4  item ID (4 bytes in version 2)
//      2      construction method in the low 4 bits (from version 1)
//      2      data-reference index
//      b      base offset
//      2      extent count, then per extent: index, offset, length
// The wanted item's data must lie in this file (construction method 0); its
// first extent holds the start of the EXIF block.
bool FindItemExtent(const platform::Cursor& file, const Box& iloc, uint32_t wanted, ItemExtent& extent) {
    platform::Cursor in = At(file, iloc.body);
    if (!in.ok()) return false;
    uint8_t version = in.U8();
    in.Skip(3);
    uint8_t sizes = in.U8();
    uint8_t moreSizes = in.U8();
    const unsigned offsetSize = sizes >> 4, lengthSize = sizes & 15u, baseSize = moreSizes >> 4;
    const unsigned indexSize = version >= 1 ? moreSizes & 15u : 0;
    if (version > 2 || !IsFieldSize(offsetSize) || !IsFieldSize(lengthSize) || !IsFieldSize(baseSize) ||
        !IsFieldSize(indexSize))
        return false;
    uint32_t count = version < 2 ? in.U16() : in.U32();
    const uint64_t extentBytes = indexSize + offsetSize + lengthSize;
    for (uint32_t i = 0; i < std::min(count, kMaxHeifItems); ++i) {
        uint32_t id = version < 2 ? in.U16() : in.U32();
        unsigned method = version >= 1 ? in.U16() & 15u : 0;
        in.Skip(2);
        uint64_t base = Number(in, baseSize);
        uint16_t extents = in.U16();
        if (!in.ok() || in.position() > iloc.end) return false;
        if (id != wanted) {
            in.Skip(extents * extentBytes);
            continue;
        }
        if (method != 0 || extents == 0) return false;
        in.Skip(indexSize);
        uint64_t offset = Number(in, offsetSize);
        uint64_t length = Number(in, lengthSize);
        if (!in.ok() || in.position() > iloc.end || offset > std::numeric_limits<uint64_t>::max() - base) return false;
        extent = {base + offset, length};
        return true;
    }
    return false;
}

// The TIFF header inside an HEIF Exif item:
//   0  4  offset of the TIFF header, counted from the end of this word
//   4  .  usually "Exif\0\0", then the TIFF header
// Writers disagree on that word, so when it does not lead to a TIFF header
// the first one in the next few bytes is taken, and failing that the
// conventional place after "Exif\0\0".
uint64_t TiffHeaderInExifItem(const platform::Cursor& file, const ItemExtent& item) {
    platform::Cursor in = At(file, item.offset);
    uint32_t toHeader = in.U32();
    if (!in.ok()) return 0;
    const uint64_t data = item.offset + 4;
    uint8_t bytes[kHeifTiffSearchBytes] = {};
    if (item.length >= 4 && toHeader <= item.length - 4 && item.length - 4 - toHeader >= 4) {
        platform::Cursor header = At(file, data + toHeader);
        if (header.Bytes(bytes, 4) && IsTiffSignature(bytes)) return data + toHeader;
    }
    platform::Cursor search = At(file, data);
    if (!search.ok()) return 0;
    size_t available = static_cast<size_t>(std::min<uint64_t>(sizeof bytes, file.end() - data));
    search.Bytes(bytes, available);
    for (size_t i = 0; i + 4 <= available; ++i)
        if (IsTiffSignature(bytes + i)) return data + i;
    return item.offset + 10;
}

// ------------------------------------------------------------ payloads

// Some writers keep the JPEG habit of "Exif\0\0" before the TIFF header.
uint64_t SkipExifPrefix(const platform::Cursor& file, uint64_t data, uint64_t length) {
    static const uint8_t kPrefix[6] = {'E', 'x', 'i', 'f', 0, 0};
    uint8_t bytes[8];
    platform::Cursor in = At(file, data);
    if (length >= sizeof bytes && in.Bytes(bytes, sizeof bytes) &&
        std::memcmp(bytes, kPrefix, sizeof kPrefix) == 0 && IsByteOrderMark(bytes + 6))
        return data + sizeof kPrefix;
    return data;
}

// ------------------------------------------------------------ dispatch

enum class IsoContainer { kOther, kHeif, kCr3 };

struct BrandRoute {
    char prefix[4];  // the first three letters of the major brand
    IsoContainer container;
};

// HEIF images and sequences (mif1, msf1, heic, heix, hevc, ...) and AVIF,
// which is HEIF with AV1 pictures; Canon's raw format.
constexpr BrandRoute kBrandRoutes[] = {
    {"mif", IsoContainer::kHeif}, {"msf", IsoContainer::kHeif}, {"hei", IsoContainer::kHeif},
    {"hev", IsoContainer::kHeif}, {"avi", IsoContainer::kHeif}, {"crx", IsoContainer::kCr3},
};

IsoContainer IsoContainerOf(const uint8_t* head, size_t n) {
    if (n < 12 || std::memcmp(head + 4, "ftyp", 4) != 0) return IsoContainer::kOther;
    for (const BrandRoute& route : kBrandRoutes)
        if (std::memcmp(head + 8, route.prefix, 3) == 0) return route.container;
    return IsoContainer::kOther;
}

// The box form begins with its 12-byte signature box, the bare codestream
// with FF 0A.
bool IsJpegXlContainer(const uint8_t* head, size_t n) {
    static const uint8_t kSignature[7] = {0, 0, 0, 0x0C, 'J', 'X', 'L'};
    return n >= sizeof kSignature && std::memcmp(head, kSignature, sizeof kSignature) == 0;
}
bool IsJpegXlCodestream(const uint8_t* head, size_t n) { return n >= 2 && head[0] == 0xFF && head[1] == 0x0A; }

// "Exif" followed by its two padding bytes (or, in JPEG XL, by the box's
// 4-byte offset word), or Minolta's "\0TTW" block with its 4-byte length;
// then a TIFF byte-order mark. A hit without the mark (a word in an XMP
// packet, a compressed box's type) is passed over.
uint32_t ScanHead(const uint8_t* head, size_t n, bool jpegXl) {
    for (size_t p = 0; p < kContainerScanPositions && p < n; ++p) {
        size_t base;
        if (n - p >= 4 && std::memcmp(head + p, "Exif", 4) == 0) base = p + (jpegXl ? 8 : 6);
        else if (n - p >= 3 && std::memcmp(head + p, "TTW", 3) == 0) base = p + 7;
        else continue;
        if (base < n && n - base >= 2 && IsByteOrderMark(head + base)) return static_cast<uint32_t>(base);
    }
    return 0;
}

}  // namespace

uint32_t LocateHeifExif(platform::File& file, uint32_t& itemLength) {
    itemLength = 0;
    const platform::Cursor in = WholeInput(file);
    Box meta;
    if (!FindBox(in, 0, in.end(), kMeta, kMaxTopLevelBoxes, meta)) return 0;
    // "meta" is a full box in HEIF; QuickTime writes it without version and
    // flags, which shows as its handler box starting right away.
    uint64_t pos = meta.body + 4;
    Box first;
    if (ReadBox(in, meta.body, meta.end, first) && first.type == kHdlr) pos = meta.body;

    // "iloc" may come before "iinf": note where it is and read it once the
    // Exif item's ID is known.
    Box iloc;
    bool haveIloc = false, haveItem = false;
    uint32_t itemId = 0;
    for (uint32_t n = 0; n < kMaxChildBoxes && !(haveIloc && haveItem); ++n) {
        Box child;
        if (!ReadBox(in, pos, meta.end, child)) break;
        pos = child.end;
        if (child.type == kIinf && !haveItem) {
            haveItem = FindExifItemId(in, child, itemId);
            if (!haveItem) return 0;
        } else if (child.type == kIloc && !haveIloc) {
            iloc = child;
            haveIloc = true;
        }
    }
    ItemExtent item;
    if (!haveItem || !haveIloc || !FindItemExtent(in, iloc, itemId, item)) return 0;
    // An item inside the first box or an empty one cannot be an EXIF block.
    if (item.offset < 5 || item.length < 1 || item.offset >= in.end()) return 0;
    uint32_t header = ResultIn(in, TiffHeaderInExifItem(in, item));
    if (header == 0) return 0;
    itemLength = static_cast<uint32_t>(std::min<uint64_t>(item.length, kNoOffset));
    return header;
}

// CR3: an ISO media file whose "moov" begins with Canon's "uuid" box, which
// holds the EXIF directories as separate TIFF files, each in a box of its own:
//   moov
//     uuid 85c0b687-820f-11e0-8111-f4ce462b6a48
//       CMT1  IFD0         CMT2  Exif IFD
//       CMT3  maker note   CMT4  GPS IFD
uint32_t LocateCr3Exif(platform::File& file, Cr3Boxes& boxes) {
    boxes = {};
    const platform::Cursor in = WholeInput(file);
    uint64_t pos = 0;
    for (uint32_t n = 0; n < kMaxTopLevelBoxes; ++n) {
        Box box;
        if (!ReadBox(in, pos, in.end(), box)) return 0;
        pos = box.end;
        if (box.type != kMoov) continue;
        Box uuid;
        if (!ReadBox(in, box.body, box.end, uuid) || uuid.type != kUuid) continue;
        Uuid id;
        if (platform::Cursor body = At(in, uuid.body); !body.Bytes(id.bytes, sizeof id.bytes)) return 0;
        // A movie of another maker: it will not have Canon's boxes further on.
        if (std::memcmp(id.bytes, kCanonCr3Uuid.bytes, sizeof id.bytes) != 0) return 0;

        Cr3Boxes found;
        found.moovSize = static_cast<uint32_t>(std::min(box.declared, kNoOffset));
        uint32_t* slots[4] = {&found.cmt1, &found.cmt2, &found.cmt3, &found.cmt4};
        int known = 0;
        uint64_t childPos = uuid.body + sizeof id.bytes;
        for (uint32_t c = 0; c < kMaxChildBoxes && known < 4; ++c) {
            Box child;
            if (!ReadBox(in, childPos, uuid.end, child)) break;
            childPos = child.end;
            uint32_t index = child.type - kCmt1;
            if (index < 4 && *slots[index] == 0 && ResultIn(in, child.body) != 0) {
                *slots[index] = ResultIn(in, child.body);
                ++known;
            }
        }
        if (found.cmt1 == 0) return 0;
        boxes = found;
        return found.cmt1;
    }
    return 0;
}

// PNG: the "eXIf" chunk holds a TIFF file; the walk ends at "IEND".
uint32_t LocatePngExif(platform::File& file) {
    jpeg::PngChunkWalk walk(file);
    jpeg::PngChunk chunk;
    for (uint32_t n = 0; n < kMaxChunks && walk.Next(chunk); ++n) {
        if (chunk.type == kPngExif) {
            if (chunk.length == 0) return 0;
            const platform::Cursor in = WholeInput(file);
            return ResultIn(in, SkipExifPrefix(in, chunk.data, chunk.length));
        }
        if (chunk.type == kPngEnd) return 0;
    }
    return 0;
}

// WebP: "RIFF", a little-endian size, "WEBP", then RIFF chunks:
//   0  4  FourCC
//   4  4  data size, little-endian
//   8  n  data, padded to an even length
// The "EXIF" chunk holds a TIFF file. The RIFF size is not trusted: the walk
// runs to the end of the file.
uint32_t LocateWebpExif(platform::File& input) {
    const platform::Cursor file = WholeInput(input);
    platform::Cursor in = file;
    uint8_t header[12];
    if (!in.Bytes(header, sizeof header) || std::memcmp(header, "RIFF", 4) != 0 ||
        std::memcmp(header + 8, "WEBP", 4) != 0)
        return 0;
    uint64_t pos = sizeof header;
    for (uint32_t n = 0; n < kMaxChunks; ++n) {
        in = At(file, pos);
        uint32_t type = in.U32();
        in.SetOrder(platform::ByteOrder::kLittle);
        uint32_t size = in.U32();
        if (!in.ok()) return 0;
        if (type == kRiffExif) return size == 0 ? 0 : ResultIn(file, SkipExifPrefix(file, pos + 8, size));
        pos += 8 + static_cast<uint64_t>(size) + (size & 1u);
    }
    return 0;
}

// JPEG XL container: ISO boxes from offset 0. The "Exif" box body is
//   0  4  offset of the TIFF header, counted from the end of this word
//   4  .  the TIFF header (after "Exif\0\0" when the offset is 6)
// A "brob" box holds its metadata Brotli-compressed and is not read.
uint32_t LocateJpegXlExif(platform::File& input) {
    const platform::Cursor file = WholeInput(input);
    Box exif;
    if (!FindBox(file, 0, file.end(), kExifBox, kMaxTopLevelBoxes, exif)) return 0;
    platform::Cursor in = At(file, exif.body);
    uint32_t toHeader = in.U32();
    if (!in.ok() || in.position() > exif.end) return 0;
    // The TIFF header's first 8 bytes must lie inside the box.
    const uint64_t room = exif.end - in.position();
    if (room < 8 || toHeader > room - 8) return 0;
    return ResultIn(file, in.position() + toHeader);
}

uint32_t LocateTiffHeaderInFile(platform::File& file, ContainerPointers& pointers) {
    pointers = {};
    uint8_t head[kContainerHeadBytes] = {};
    const size_t n = WholeInput(file).Some(head, sizeof head);

    switch (IsoContainerOf(head, n)) {
    case IsoContainer::kHeif: {
        uint32_t itemLength = 0;
        return LocateHeifExif(file, itemLength);
    }
    case IsoContainer::kCr3: {
        pointers.separateHeaders = true;
        Cr3Boxes boxes;
        uint32_t header = LocateCr3Exif(file, boxes);
        pointers.exifIfd = boxes.cmt2;
        pointers.makerNote = boxes.cmt3;
        pointers.gpsIfd = boxes.cmt4;
        return header;
    }
    case IsoContainer::kOther:
        break;  // other ISO brands are scanned like any file
    }
    if (IsJpegXlContainer(head, n) || IsJpegXlCodestream(head, n)) {
        pointers.jpegXl = true;
        if (IsJpegXlContainer(head, n))
            if (uint32_t header = LocateJpegXlExif(file)) return header;
    } else if (n >= 4 && std::memcmp(head + 1, "PNG", 3) == 0) {
        return LocatePngExif(file);
    } else if (n >= 12 && std::memcmp(head, "RIF", 3) == 0 && std::memcmp(head + 8, "WEBP", 4) == 0) {
        return LocateWebpExif(file);
    }
    return ScanHead(head, n, pointers.jpegXl);
}

uint32_t LocateTiffHeaderInContainer(std::u16string_view path, ContainerPointers& pointers) {
    pointers = {};
    std::unique_ptr<platform::File> file = platform::OpenFile(path, platform::FileMode::kRead);
    return file ? LocateTiffHeaderInFile(*file, pointers) : 0;
}

}  // namespace exif
