#include "container_walk.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "container_limits.h"

namespace exif::walk {
namespace {

constexpr uint64_t kNoOffset = std::numeric_limits<uint32_t>::max();
constexpr uint32_t kMeta = FourCc("meta");
constexpr uint32_t kHdlr = FourCc("hdlr");
constexpr uint32_t kIinf = FourCc("iinf");
constexpr uint32_t kInfe = FourCc("infe");
constexpr uint32_t kIloc = FourCc("iloc");
constexpr uint32_t kUuid = FourCc("uuid");

}  // namespace

platform::Cursor WholeInput(platform::File& file) {
    const int64_t size = file.Size();
    return platform::Cursor(file, platform::ByteOrder::kBig, 0, size > 0 ? static_cast<uint64_t>(size) : 0);
}

platform::Cursor At(const platform::Cursor& file, uint64_t pos) { return file.ChildAt(pos, file.end()); }

uint64_t Number(platform::Cursor& in, unsigned n) {
    uint8_t b[8];
    if (n > sizeof b || !in.Bytes(b, n)) return 0;
    uint64_t v = 0;
    for (unsigned i = 0; i < n; ++i) v = v << 8 | b[i];
    return v;
}

uint32_t ResultIn(const platform::Cursor& file, uint64_t pos) {
    return pos < file.end() && pos < kNoOffset ? static_cast<uint32_t>(pos) : 0;
}

uint32_t SizeOut(uint64_t size) { return static_cast<uint32_t>(std::min(size, kNoOffset)); }

bool IsByteOrderMark(const uint8_t* b) {
    return (b[0] == 'I' && b[1] == 'I') || (b[0] == 'M' && b[1] == 'M');
}

bool IsTiffSignature(const uint8_t* b) {
    return (b[0] == 'I' && b[1] == 'I' && b[2] == 0x2A && b[3] == 0) ||
           (b[0] == 'M' && b[1] == 'M' && b[2] == 0 && b[3] == 0x2A);
}

uint64_t SkipExifPrefix(const platform::Cursor& file, uint64_t data, uint64_t length) {
    static const uint8_t kPrefix[6] = {'E', 'x', 'i', 'f', 0, 0};
    uint8_t bytes[8];
    platform::Cursor in = At(file, data);
    if (length >= sizeof bytes && in.Bytes(bytes, sizeof bytes) &&
        std::memcmp(bytes, kPrefix, sizeof kPrefix) == 0 && IsByteOrderMark(bytes + 6))
        return data + sizeof kPrefix;
    return data;
}

// ------------------------------------------------------------ ISO boxes

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

bool FindUuidBox(const platform::Cursor& file, const Uuid& id, Box& box, uint64_t& data) {
    uint64_t pos = 0;
    for (uint32_t n = 0; n < kMaxTopLevelBoxes; ++n) {
        if (!ReadBox(file, pos, file.end(), box)) return false;
        pos = box.end;
        Uuid read;
        platform::Cursor body = file.ChildAt(box.body, box.end - box.body);
        if (box.type == kUuid && body.Bytes(read.bytes, sizeof read.bytes) &&
            std::memcmp(read.bytes, id.bytes, sizeof id.bytes) == 0) {
            data = body.position();
            return true;
        }
    }
    return false;
}

// ------------------------------------------------------------ HEIF items

namespace {

// "iinf" (full box): an entry count (16 bits in version 0, else 32), then
// one "infe" box per item. From version 2 an "infe" body reads:
//   0  4      version, flags
//   4  2 | 4  item ID (4 bytes from version 3)
//   .  2      protection index
//   .  4      item type ("Exif" for the EXIF block, "mime" for XMP)
//   .  .      the item's name, NUL-terminated; for "mime" its content type
// Earlier versions carry no item type and cannot name such an item.
bool FindItemId(const platform::Cursor& file, const Box& iinf, ItemTest test, uint32_t& itemId) {
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
        if (!in.ok() || in.position() > infe.end) continue;
        platform::Cursor rest = file.ChildAt(in.position(), infe.end - in.position());
        if (test(type, rest)) {
            itemId = id;
            return true;
        }
    }
    return false;
}

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
// first extent holds the start of the block.
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

}  // namespace

bool FindHeifItem(const platform::Cursor& file, ItemTest test, ItemExtent& extent) {
    Box meta;
    if (!FindBox(file, 0, file.end(), kMeta, kMaxTopLevelBoxes, meta)) return false;
    // "meta" is a full box in HEIF; QuickTime writes it without version and
    // flags, which shows as its handler box starting right away.
    uint64_t pos = meta.body + 4;
    Box first;
    if (ReadBox(file, meta.body, meta.end, first) && first.type == kHdlr) pos = meta.body;

    // "iloc" may come before "iinf": note where it is and read it once the
    // item's ID is known.
    Box iloc;
    bool haveIloc = false, haveItem = false;
    uint32_t itemId = 0;
    for (uint32_t n = 0; n < kMaxChildBoxes && !(haveIloc && haveItem); ++n) {
        Box child;
        if (!ReadBox(file, pos, meta.end, child)) break;
        pos = child.end;
        if (child.type == kIinf && !haveItem) {
            haveItem = FindItemId(file, child, test, itemId);
            if (!haveItem) return false;
        } else if (child.type == kIloc && !haveIloc) {
            iloc = child;
            haveIloc = true;
        }
    }
    return haveItem && haveIloc && FindItemExtent(file, iloc, itemId, extent);
}

// ------------------------------------------------------------ Photoshop

bool IsPsd(const uint8_t* head, size_t n) {
    return n >= 6 && std::memcmp(head, "8BPS", 4) == 0 && head[4] == 0 && (head[5] == 1 || head[5] == 2);
}

bool FindPsdResource(const platform::Cursor& file, uint16_t id, PsdResource& found) {
    constexpr uint64_t kFileHeaderBytes = 26;
    platform::Cursor in = At(file, kFileHeaderBytes);
    const uint32_t colourModeBytes = in.U32();
    in.Skip(colourModeBytes);
    const uint32_t sectionBytes = in.U32();
    if (!in.ok()) return false;
    const platform::Cursor section = in.Child(sectionBytes);
    uint64_t pos = section.begin();
    for (uint32_t n = 0; n < kMaxPsdResources; ++n) {
        platform::Cursor r = section.ChildAt(pos, section.end() - pos);
        uint8_t signature[4];
        r.Bytes(signature, sizeof signature);
        const uint16_t resourceId = r.U16();
        const uint8_t nameLength = r.U8();
        r.Skip(nameLength | 1u);  // the name and its length byte fill an even count
        const uint32_t size = r.U32();
        // Only "8BIM" is written in documents; anything else means the
        // section is not what it claims to be.
        if (!r.ok() || std::memcmp(signature, "8BIM", 4) != 0) return false;
        const uint64_t data = r.position();
        if (resourceId == id) {
            found = {pos, data, std::min<uint64_t>(size, section.end() - data)};
            return true;
        }
        pos = data + size + (size & 1u);
        if (pos >= section.end()) return false;
    }
    return false;
}

// ------------------------------------------------------------ RIFF

bool IsWebp(const uint8_t* head, size_t n) {
    return n >= 12 && std::memcmp(head, "RIFF", 4) == 0 && std::memcmp(head + 8, "WEBP", 4) == 0;
}

bool FindRiffChunk(const platform::Cursor& file, uint32_t type, uint64_t& data, uint32_t& size) {
    uint64_t pos = 12;
    for (uint32_t n = 0; n < kMaxChunks; ++n) {
        platform::Cursor in = At(file, pos);
        const uint32_t chunkType = in.U32();
        in.SetOrder(platform::ByteOrder::kLittle);
        size = in.U32();
        if (!in.ok()) return false;
        if (chunkType == type) {
            data = pos + 8;
            return true;
        }
        pos += 8 + static_cast<uint64_t>(size) + (size & 1u);
    }
    return false;
}

// ------------------------------------------------------------ JPEG 2000

bool IsJpeg2000(const uint8_t* head, size_t n) {
    static const uint8_t kSignature[12] = {0, 0, 0, 0x0C, 'j', 'P', ' ', ' ', 0x0D, 0x0A, 0x87, 0x0A};
    return n >= sizeof kSignature && std::memcmp(head, kSignature, sizeof kSignature) == 0;
}

}  // namespace exif::walk
