#include "metadata_segment.h"

#include <algorithm>
#include <cstring>

#include "exif/metadata_blocks.h"
#include "iptc_limits.h"
#include "jpeg/marker_walk.h"
#include "platform/platform.h"
#include "photoshop_blocks.h"
#include "platform/input.h"
#include "tiff/entry.h"

namespace iptc {
namespace {

// Only the first 24 bytes of "http://ns.adobe.com/xap/1.0/\0" are compared;
// they already tell the main packet from the extended-XMP segments
// ("http://ns.adobe.com/xmp/extension/").
constexpr char kXmpNamespace[] = "http://ns.adobe.com/xap/1.0/";
constexpr size_t kXmpCompareBytes = 24;

// An offset of a classic TIFF (4 bytes) or of a BigTIFF (8 bytes), in the
// cursor's byte order.
uint64_t ReadOffset(platform::Cursor& in, bool bigTiff) {
    if (!bigTiff) return in.U32();
    const uint64_t first = in.U32(), second = in.U32();
    return in.bigEndian() ? first << 32 | second : second << 32 | first;
}

// The value offset of the IPTC-NAA entry of the first directory, 0 for none;
// `file` is the whole input in the TIFF header's byte order. A BigTIFF
// (version 43) has 8-byte offsets and counts and 20-byte entries; its offset
// must fit the 32 bits of the answer.
uint32_t FindTiffIptcOffset(platform::Cursor file) {
    if (!file.Seek(2)) return 0;
    const bool bigTiff = file.U16() == kBigTiffVersion;
    if (bigTiff) file.Skip(4);  // offset size and a reserved word
    const uint64_t ifd = ReadOffset(file, bigTiff);
    if (!file.ok() || ifd == 0 || !file.Seek(ifd)) return 0;
    if (!bigTiff) {
        const uint32_t entries = std::min<uint32_t>(file.U16(), kTiffEntryLimit);
        tiff::Entry entry;
        for (uint32_t i = 0; file.ok() && i < entries; ++i)
            if (tiff::ReadEntry(file, entry) && entry.tag == kTiffIptcTag) return entry.valueField;
        return 0;
    }
    const uint64_t entries = std::min<uint64_t>(ReadOffset(file, true), kTiffEntryLimit);
    for (uint64_t i = 0; file.ok() && i < entries; ++i) {
        const uint16_t tag = file.U16();
        file.Skip(10);  // type and count
        const uint64_t value = ReadOffset(file, true);
        if (file.ok() && tag == kTiffIptcTag) return value <= UINT32_MAX ? static_cast<uint32_t>(value) : 0;
    }
    return 0;
}

// Reads `length` bytes from `offset` into a zero-filled buffer with slack.
std::vector<uint8_t> ReadBlock(const platform::Cursor& file, uint64_t offset, uint32_t length) {
    std::vector<uint8_t> buffer(size_t{length} + kSegmentSlack, 0);
    file.ChildAt(offset, length).Some(buffer.data(), length);  // a short read leaves zeros
    return buffer;
}

// The file offset of the chosen JPEG segment's 0xFF byte, or -1. A comment
// behind the start of scan would lie in entropy-coded data that only looks
// like segments, so the walk for COM stops there, as the comment reader does.
int64_t FindJpegSegment(platform::File& file, uint8_t marker, bool xmpOnly) {
    jpeg::WalkRules rules;
    rules.stopAtScan = marker == kComMarker;
    jpeg::MarkerWalk walk(file, 2, rules);
    jpeg::Segment segment;
    const bool found = jpeg::FindSegment(walk, marker, segment, [&](const jpeg::Segment& candidate) {
        if (marker != kApp1Marker) return true;
        return xmpOnly ? jpeg::PayloadStartsWith(file, candidate, kXmpNamespace, kXmpCompareBytes)
                       : jpeg::PayloadStartsWith(file, candidate, "Exif", 4);
    });
    return found ? static_cast<int64_t>(segment.offset) : -1;
}

// The IIM resource or the XMP packet of a file that is not a JPEG: its
// length and the offset of the resource, chunk, box or item that holds it.
std::vector<uint8_t> LoadContainerBlock(platform::File& file, uint32_t& length, uint32_t& offset, uint8_t marker,
                                        bool sizeOnly) {
    exif::MetadataBlock block;
    const bool found = marker == kApp13Marker ? exif::FindContainerIptc(file, block) : exif::FindContainerXmp(file, block);
    if (!found || block.offset > 0xFFFFFFFF) return {};
    length = static_cast<uint32_t>(block.bytes.size());
    offset = static_cast<uint32_t>(block.offset);
    if (sizeOnly) return {};
    block.bytes.resize(block.bytes.size() + kSegmentSlack, 0);
    return std::move(block.bytes);
}

}  // namespace

std::vector<uint8_t> LoadMetadataSegment(std::u16string_view fileName, uint32_t& length,
                                         uint32_t& offset, uint8_t marker, bool sizeOnly,
                                         int32_t* isTiff, bool xmpOnly) {
    length = 0;
    offset = 0;
    if (isTiff) *isTiff = 0;
    auto file = platform::Input::Open(fileName);
    if (!file) return {};
    return LoadMetadataSegment(*file, length, offset, marker, sizeOnly, isTiff, xmpOnly);
}

std::vector<uint8_t> LoadMetadataSegment(platform::File& file, uint32_t& length, uint32_t& offset,
                                         uint8_t marker, bool sizeOnly, int32_t* isTiff, bool xmpOnly) {
    length = 0;
    offset = 0;
    if (isTiff) *isTiff = 0;
    platform::Cursor whole(file, platform::ByteOrder::kBig);
    uint8_t start[2];
    if (!whole.Bytes(start, 2)) return {};
    if ((start[0] == 'I' && start[1] == 'I') || (start[0] == 'M' && start[1] == 'M')) {
        if (isTiff) *isTiff = 1;
        if (marker != kApp13Marker) return {};
        if (start[0] == 'I') whole.SetOrder(platform::ByteOrder::kLittle);
        const uint32_t iim = FindTiffIptcOffset(whole);
        if (iim == 0) return {};
        length = kTiffIptcBlockLength;
        offset = iim;
        if (sizeOnly) return {};
        return ReadBlock(whole, iim, kTiffIptcBlockLength);
    }

    if (marker == kApp13Marker) {
        const std::vector<PhotoshopBlock> blocks = FindPhotoshopBlocks(file);
        const PhotoshopBlock* block = ChooseIptcBlock(blocks);
        if (!block) return LoadContainerBlock(file, length, offset, marker, sizeOnly);
        if (block->segments.front().offset > 0xFFFFFFFF) return {};
        length = block->joinedLength;
        offset = static_cast<uint32_t>(block->segments.front().offset);
        if (sizeOnly) return {};
        return ReadPhotoshopBlock(file, *block, kSegmentSlack);
    }
    const int64_t position = FindJpegSegment(file, marker, xmpOnly);
    if (position < 0 && marker == kApp1Marker && xmpOnly)
        return LoadContainerBlock(file, length, offset, marker, sizeOnly);
    if (position < 0 || position > 0xFFFFFFFF) return {};
    platform::Cursor lengthField = whole.ChildAt(static_cast<uint64_t>(position) + 2, 2);
    const uint16_t stored = lengthField.U16();
    if (!lengthField.ok() || stored < 3) return {};
    length = stored;
    offset = static_cast<uint32_t>(position);
    if (sizeOnly) return {};
    return ReadBlock(whole, static_cast<uint64_t>(position) + 2, stored);
}

}  // namespace iptc
