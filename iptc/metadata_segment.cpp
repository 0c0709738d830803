#include "metadata_segment.h"

#include <cstring>

#include "iptc_limits.h"
#include "jpeg/marker_walk.h"
#include "platform/platform.h"
#include "platform/input.h"

namespace iptc {
namespace {

// Only the first 24 bytes of "http://ns.adobe.com/xap/1.0/\0" are compared;
// they already tell the main packet from the extended-XMP segments
// ("http://ns.adobe.com/xmp/extension/").
constexpr char kXmpNamespace[] = "http://ns.adobe.com/xap/1.0/";
constexpr size_t kXmpCompareBytes = 24;

bool ReadU16(platform::File& file, bool bigEndian, uint16_t& value) {
    uint8_t b[2];
    if (!file.ReadExact(b, 2)) return false;
    value = bigEndian ? static_cast<uint16_t>(b[0] << 8 | b[1]) : static_cast<uint16_t>(b[1] << 8 | b[0]);
    return true;
}

bool ReadU32(platform::File& file, bool bigEndian, uint32_t& value) {
    uint8_t b[4];
    if (!file.ReadExact(b, 4)) return false;
    value = bigEndian ? (uint32_t{b[0]} << 24 | uint32_t{b[1]} << 16 | uint32_t{b[2]} << 8 | b[3])
                      : (uint32_t{b[3]} << 24 | uint32_t{b[2]} << 16 | uint32_t{b[1]} << 8 | b[0]);
    return true;
}

// The value offset of the IPTC-NAA entry of the first directory, 0 for none.
uint32_t FindTiffIptcOffset(platform::File& file, bool bigEndian) {
    uint32_t ifd = 0;
    uint16_t count = 0;
    if (!file.Seek(4) || !ReadU32(file, bigEndian, ifd) || ifd == 0) return 0;
    if (!file.Seek(ifd) || !ReadU16(file, bigEndian, count)) return 0;
    const uint32_t entries = count < kTiffEntryLimit ? count : kTiffEntryLimit;
    for (uint32_t i = 0; i < entries; ++i) {
        uint8_t entry[12];
        if (!file.ReadExact(entry, sizeof entry)) return 0;
        const uint16_t tag = bigEndian ? static_cast<uint16_t>(entry[0] << 8 | entry[1])
                                       : static_cast<uint16_t>(entry[1] << 8 | entry[0]);
        if (tag != kTiffIptcTag) continue;
        const uint8_t* v = entry + 8;
        return bigEndian ? (uint32_t{v[0]} << 24 | uint32_t{v[1]} << 16 | uint32_t{v[2]} << 8 | v[3])
                         : (uint32_t{v[3]} << 24 | uint32_t{v[2]} << 16 | uint32_t{v[1]} << 8 | v[0]);
    }
    return 0;
}

// Reads `length` bytes from `offset` into a zero-filled buffer with slack.
std::vector<uint8_t> ReadBlock(platform::File& file, int64_t offset, uint32_t length) {
    std::vector<uint8_t> buffer(size_t{length} + kSegmentSlack, 0);
    if (file.Seek(offset)) file.Read(buffer.data(), length);  // a short read leaves zeros
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
    uint8_t start[2];
    if (!file.Seek(0) || !file.ReadExact(start, 2)) return {};
    if ((start[0] == 'I' && start[1] == 'I') || (start[0] == 'M' && start[1] == 'M')) {
        if (isTiff) *isTiff = 1;
        if (marker != kApp13Marker) return {};
        const uint32_t iim = FindTiffIptcOffset(file, start[0] == 'M');
        if (iim == 0) return {};
        length = kTiffIptcBlockLength;
        offset = iim;
        if (sizeOnly) return {};
        return ReadBlock(file, iim, kTiffIptcBlockLength);
    }

    const int64_t position = FindJpegSegment(file, marker, xmpOnly);
    if (position < 0 || position > 0xFFFFFFFF) return {};
    uint16_t stored = 0;
    if (!file.Seek(position + 2) || !ReadU16(file, true, stored) || stored < 3) return {};
    length = stored;
    offset = static_cast<uint32_t>(position);
    if (sizeOnly) return {};
    return ReadBlock(file, position + 2, stored);
}

}  // namespace iptc
