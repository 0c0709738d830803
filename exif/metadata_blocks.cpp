#include "metadata_blocks.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "container_limits.h"
#include "container_walk.h"
#include "jpeg/png_chunks.h"
#include "platform/input.h"

namespace exif {
namespace {

using walk::FourCc;

constexpr uint16_t kPsdIptcResource = 0x0404;
constexpr uint16_t kPsdXmpResource = 0x0424;
constexpr uint32_t kXmlBox = FourCc("xml ");
constexpr uint32_t kMimeItem = FourCc("mime");
constexpr uint32_t kRiffXmp = FourCc("XMP ");
constexpr walk::Uuid kXmpUuid = walk::UuidFromHex("be7acfcb97a942e89c71999491e3afac");
constexpr std::string_view kXmpContentType = "application/rdf+xml";
constexpr size_t kHeadBytes = 16;

enum class Kind { kOther, kPsd, kPng, kWebp, kIso, kJpegXl, kJpeg2000 };

Kind KindOf(const platform::Cursor& file) {
    uint8_t head[kHeadBytes] = {};
    const size_t n = walk::At(file, 0).Some(head, sizeof head);
    static const uint8_t kJpegXl[12] = {0, 0, 0, 0x0C, 'J', 'X', 'L', ' ', 0x0D, 0x0A, 0x87, 0x0A};
    if (walk::IsPsd(head, n)) return Kind::kPsd;
    if (n >= 8 && std::memcmp(head + 1, "PNG", 3) == 0) return Kind::kPng;
    if (walk::IsWebp(head, n)) return Kind::kWebp;
    if (walk::IsJpeg2000(head, n)) return Kind::kJpeg2000;
    if (n >= sizeof kJpegXl && std::memcmp(head, kJpegXl, sizeof kJpegXl) == 0) return Kind::kJpegXl;
    if (n >= 12 && std::memcmp(head + 4, "ftyp", 4) == 0) return Kind::kIso;
    return Kind::kOther;
}

// `length` bytes from `offset`, as far as the file holds them.
bool ReadBlock(const platform::Cursor& file, uint64_t offset, uint64_t length, MetadataBlock& block) {
    if (length == 0 || length > kMetadataBlockLimit) return false;
    platform::Cursor in = file.ChildAt(offset, length);
    block.bytes.resize(static_cast<size_t>(in.remaining()));
    block.offset = offset;
    return !block.bytes.empty() && in.Bytes(block.bytes.data(), block.bytes.size());
}

bool BoxBlock(const platform::Cursor& file, const walk::Box& box, uint64_t data, MetadataBlock& block) {
    return ReadBlock(file, data, box.end - data, block);
}

bool Contains(const std::vector<uint8_t>& bytes, std::string_view text) {
    return std::search(bytes.begin(), bytes.end(), text.begin(), text.end()) != bytes.end();
}

// An "infe" entry of type "mime" whose content type (behind the item's
// name) names XMP.
bool IsXmpItem(uint32_t type, platform::Cursor& rest) {
    if (type != kMimeItem) return false;
    char c = 1;
    while (c != 0 && rest.ok()) c = static_cast<char>(rest.U8());  // the name
    std::string_view wanted = kXmpContentType;
    for (char want : wanted)
        if (static_cast<char>(rest.U8()) != want) return false;
    return rest.U8() == 0 && rest.ok();
}

bool PsdBlock(const platform::Cursor& file, uint16_t id, bool withHeader, MetadataBlock& block) {
    walk::PsdResource resource;
    if (!walk::FindPsdResource(file, id, resource)) return false;
    const uint64_t from = withHeader ? resource.start : resource.data;
    return ReadBlock(file, from, resource.data + resource.size - from, block);
}

bool PngText(platform::File& input, std::string_view keyword, bool rawProfile, MetadataBlock& block) {
    if (!jpeg::FindPngText(input, {keyword}, block.bytes, block.offset)) return false;
    if (rawProfile) block.bytes = jpeg::DecodeRawProfile(block.bytes);
    return !block.bytes.empty();
}

bool IsoXmp(const platform::Cursor& file, MetadataBlock& block) {
    walk::ItemExtent item;
    if (walk::FindHeifItem(file, IsXmpItem, item) && ReadBlock(file, item.offset, item.length, block)) return true;
    walk::Box box;
    uint64_t data = 0;
    return walk::FindUuidBox(file, kXmpUuid, box, data) && BoxBlock(file, box, data, block);
}

// JPEG 2000 also writes other XML (JPX's own metadata) in "xml " boxes.
bool Jpeg2000Xmp(const platform::Cursor& file, MetadataBlock& block) {
    walk::Box box;
    uint64_t data = 0;
    if (walk::FindUuidBox(file, kXmpUuid, box, data)) return BoxBlock(file, box, data, block);
    uint64_t pos = 0;
    for (uint32_t n = 0; n < kMaxTopLevelBoxes && walk::ReadBox(file, pos, file.end(), box); ++n) {
        pos = box.end;
        if (box.type == kXmlBox && BoxBlock(file, box, box.body, block) &&
            (Contains(block.bytes, "xmpmeta") || Contains(block.bytes, "xapmeta")))
            return true;
    }
    return false;
}

}  // namespace

bool FindContainerXmp(platform::File& input, MetadataBlock& block) {
    block = {};
    const platform::Cursor file = walk::WholeInput(input);
    walk::Box box;
    uint64_t data = 0;
    uint32_t size = 0;
    bool found = false;
    switch (KindOf(file)) {
        case Kind::kPsd: found = PsdBlock(file, kPsdXmpResource, false, block); break;
        case Kind::kPng:
            found = PngText(input, "XML:com.adobe.xmp", false, block) ||
                    PngText(input, "Raw profile type xmp", true, block);
            break;
        case Kind::kWebp:
            found = walk::FindRiffChunk(file, kRiffXmp, data, size) && ReadBlock(file, data, size, block);
            break;
        case Kind::kIso: found = IsoXmp(file, block); break;
        case Kind::kJpegXl:
            found = walk::FindBox(file, 0, file.end(), kXmlBox, kMaxTopLevelBoxes, box) &&
                    BoxBlock(file, box, box.body, block);
            break;
        case Kind::kJpeg2000: found = Jpeg2000Xmp(file, block); break;
        case Kind::kOther: break;
    }
    if (!found) block = {};
    return found;
}

bool FindContainerIptc(platform::File& input, MetadataBlock& block) {
    block = {};
    const platform::Cursor file = walk::WholeInput(input);
    bool found = false;
    switch (KindOf(file)) {
        case Kind::kPsd: found = PsdBlock(file, kPsdIptcResource, true, block); break;
        case Kind::kPng:
            if (PngText(input, "Raw profile type iptc", true, block)) {
                std::vector<uint8_t>& bytes = block.bytes;
                if (!Contains(bytes, "8BIM") && bytes[0] == 0x1C) {
                    // Bare datasets: under the header of the resource an APP13 would carry.
                    const uint32_t size = static_cast<uint32_t>(bytes.size());
                    const uint8_t header[12] = {'8', 'B', 'I', 'M', 0x04, 0x04, 0, 0,
                                                static_cast<uint8_t>(size >> 24), static_cast<uint8_t>(size >> 16),
                                                static_cast<uint8_t>(size >> 8), static_cast<uint8_t>(size)};
                    bytes.insert(bytes.begin(), header, header + sizeof header);
                }
                found = Contains(bytes, "8BIM");
            }
            break;
        default: break;
    }
    if (!found) block = {};
    return found;
}

}  // namespace exif
