// Container locators: where the TIFF header of the EXIF data sits in ISO
// media files (HEIF, AVIF, CR3), JPEG XL, PNG, WebP, Photoshop documents and
// JPEG 2000, and the dispatch that recognises them by their first kilobyte.
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
#include "container_walk.h"
#include "platform/input.h"
#include "jpeg/png_chunks.h"

namespace exif {
namespace {

using walk::At;
using walk::Box;
using walk::FourCc;
using walk::ReadBox;
using walk::ResultIn;

constexpr uint32_t kExifBox = FourCc("Exif");  // HEIF item type and JPEG XL box
constexpr uint32_t kMoov = FourCc("moov");
constexpr uint32_t kUuid = FourCc("uuid");
constexpr uint32_t kCmt1 = FourCc("CMT1");
constexpr uint32_t kPngExif = jpeg::PngChunkType("eXIf");
constexpr uint32_t kPngEnd = jpeg::PngChunkType("IEND");
constexpr uint32_t kRiffExif = FourCc("EXIF");
constexpr uint16_t kPsdExifResource = 0x0422;

// The identifier of the "uuid" box in which Canon keeps the CMT boxes, in the
// form it is usually written down.
constexpr char kCanonCr3UuidHex[] = "85c0b687820f11e08111f4ce462b6a48";
constexpr walk::Uuid kCanonCr3Uuid = walk::UuidFromHex(kCanonCr3UuidHex);
// JPEG 2000 keeps EXIF in a "uuid" box whose identifier is the text
// "JpgTiffExif->JP2".
constexpr walk::Uuid kJp2ExifUuid = {{'J', 'p', 'g', 'T', 'i', 'f', 'f', 'E', 'x', 'i', 'f', '-', '>', 'J', 'P', '2'}};

// ------------------------------------------------------------ HEIF

bool IsExifItem(uint32_t type, platform::Cursor&) { return type == kExifBox; }

// A TIFF header at `tiff` in a block that ends at `end`, with the length from
// it; a block too short to hold the header is none.
uint32_t HeaderWithLength(const platform::Cursor& file, uint64_t tiff, uint64_t end, uint32_t& length) {
    const uint32_t header = end - tiff >= 8 ? ResultIn(file, tiff) : 0;
    if (header != 0) length = walk::SizeOut(end - tiff);
    return header;
}

// The TIFF header inside an HEIF Exif item:
//   0  4  offset of the TIFF header, counted from the end of this word
//   4  .  usually "Exif\0\0", then the TIFF header
// Writers disagree on that word, so when it does not lead to a TIFF header
// the first one in the next few bytes is taken, and failing that the
// conventional place after "Exif\0\0".
uint64_t TiffHeaderInExifItem(const platform::Cursor& file, const walk::ItemExtent& item) {
    platform::Cursor in = At(file, item.offset);
    uint32_t toHeader = in.U32();
    if (!in.ok()) return 0;
    const uint64_t data = item.offset + 4;
    uint8_t bytes[kHeifTiffSearchBytes] = {};
    if (item.length >= 4 && toHeader <= item.length - 4 && item.length - 4 - toHeader >= 4) {
        platform::Cursor header = At(file, data + toHeader);
        if (header.Bytes(bytes, 4) && walk::IsTiffSignature(bytes)) return data + toHeader;
    }
    platform::Cursor search = At(file, data);
    if (!search.ok()) return 0;
    size_t available = static_cast<size_t>(std::min<uint64_t>(sizeof bytes, file.end() - data));
    search.Bytes(bytes, available);
    for (size_t i = 0; i + 4 <= available; ++i)
        if (walk::IsTiffSignature(bytes + i)) return data + i;
    return item.offset + 10;
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
        if (base < n && n - base >= 2 && walk::IsByteOrderMark(head + base)) return static_cast<uint32_t>(base);
    }
    return 0;
}

}  // namespace

uint32_t LocateHeifExif(platform::File& file, uint32_t& itemLength) {
    itemLength = 0;
    const platform::Cursor in = walk::WholeInput(file);
    walk::ItemExtent item;
    if (!walk::FindHeifItem(in, IsExifItem, item)) return 0;
    // An item inside the first box or an empty one cannot be an EXIF block.
    if (item.offset < 5 || item.length < 1 || item.offset >= in.end()) return 0;
    uint32_t header = ResultIn(in, TiffHeaderInExifItem(in, item));
    if (header == 0) return 0;
    itemLength = walk::SizeOut(item.length);
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
    const platform::Cursor in = walk::WholeInput(file);
    uint64_t pos = 0;
    for (uint32_t n = 0; n < kMaxTopLevelBoxes; ++n) {
        Box box;
        if (!ReadBox(in, pos, in.end(), box)) return 0;
        pos = box.end;
        if (box.type != kMoov) continue;
        Box uuid;
        if (!ReadBox(in, box.body, box.end, uuid) || uuid.type != kUuid) continue;
        walk::Uuid id;
        if (platform::Cursor body = At(in, uuid.body); !body.Bytes(id.bytes, sizeof id.bytes)) return 0;
        // A movie of another maker: it will not have Canon's boxes further on.
        if (std::memcmp(id.bytes, kCanonCr3Uuid.bytes, sizeof id.bytes) != 0) return 0;

        Cr3Boxes found;
        found.moovSize = walk::SizeOut(box.declared);
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
            const platform::Cursor in = walk::WholeInput(file);
            return ResultIn(in, walk::SkipExifPrefix(in, chunk.data, chunk.length));
        }
        if (chunk.type == kPngEnd) return 0;
    }
    return 0;
}

// WebP: the "EXIF" chunk holds a TIFF file.
uint32_t LocateWebpExif(platform::File& input) {
    const platform::Cursor file = walk::WholeInput(input);
    uint8_t header[12];
    uint64_t data = 0;
    uint32_t size = 0;
    if (!At(file, 0).Bytes(header, sizeof header) || !walk::IsWebp(header, sizeof header) ||
        !walk::FindRiffChunk(file, kRiffExif, data, size))
        return 0;
    return size == 0 ? 0 : ResultIn(file, walk::SkipExifPrefix(file, data, size));
}

// JPEG XL container: ISO boxes from offset 0. The "Exif" box body is
//   0  4  offset of the TIFF header, counted from the end of this word
//   4  .  the TIFF header (after "Exif\0\0" when the offset is 6)
// A "brob" box holds its metadata Brotli-compressed and is not read.
uint32_t LocateJpegXlExif(platform::File& input) {
    const platform::Cursor file = walk::WholeInput(input);
    Box exif;
    if (!walk::FindBox(file, 0, file.end(), kExifBox, kMaxTopLevelBoxes, exif)) return 0;
    platform::Cursor in = At(file, exif.body);
    uint32_t toHeader = in.U32();
    if (!in.ok() || in.position() > exif.end) return 0;
    // The TIFF header's first 8 bytes must lie inside the box.
    const uint64_t room = exif.end - in.position();
    if (room < 8 || toHeader > room - 8) return 0;
    return ResultIn(file, in.position() + toHeader);
}

// Photoshop: image resource 0x0422 holds a TIFF file.
uint32_t LocatePsdExif(platform::File& input, uint32_t& length) {
    length = 0;
    const platform::Cursor file = walk::WholeInput(input);
    uint8_t head[6];
    walk::PsdResource resource;
    if (!At(file, 0).Bytes(head, sizeof head) || !walk::IsPsd(head, sizeof head) ||
        !walk::FindPsdResource(file, kPsdExifResource, resource))
        return 0;
    const uint64_t tiff = walk::SkipExifPrefix(file, resource.data, resource.size);
    return HeaderWithLength(file, tiff, resource.data + resource.size, length);
}

// JPEG 2000: a top-level "uuid" box whose identifier reads "JpgTiffExif->JP2"
// holds a TIFF file, sometimes behind "Exif\0\0".
uint32_t LocateJpeg2000Exif(platform::File& input, uint32_t& length) {
    length = 0;
    const platform::Cursor file = walk::WholeInput(input);
    uint8_t head[12];
    Box box;
    uint64_t data = 0;
    if (!At(file, 0).Bytes(head, sizeof head) || !walk::IsJpeg2000(head, sizeof head) ||
        !walk::FindUuidBox(file, kJp2ExifUuid, box, data))
        return 0;
    return HeaderWithLength(file, walk::SkipExifPrefix(file, data, box.end - data), box.end, length);
}

uint32_t LocateTiffHeaderInFile(platform::File& file, ContainerPointers& pointers) {
    pointers = {};
    uint8_t head[kContainerHeadBytes] = {};
    const size_t n = walk::WholeInput(file).Some(head, sizeof head);

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
    // A document or JPEG 2000 file without the resource or box is scanned as before.
    uint32_t length = 0;
    if (walk::IsPsd(head, n)) {
        if (uint32_t header = LocatePsdExif(file, length)) return header;
    } else if (walk::IsJpeg2000(head, n)) {
        if (uint32_t header = LocateJpeg2000Exif(file, length)) return header;
    } else if (IsJpegXlContainer(head, n) || IsJpegXlCodestream(head, n)) {
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
