// The APP13 segments of a JPEG that carry Photoshop image resources, and the
// one among them that holds the IPTC-IIM datasets.
//
//   offset  size  an APP13 segment of Photoshop resources
//   0       2     FF ED
//   2       2     length L, counting itself
//   4       14    "Photoshop 3.0" and a NUL
//   18      L-16  resources, one behind the other:
//                   4  signature "8BIM" (a few older tools: "PHUT", "AgHg", "DCSR", "MeSa")
//                   2  resource id (0x0404: IPTC-NAA, the IIM datasets)
//                   n  name: a length byte and its characters, n made even
//                   4  data size s, big-endian
//                   s  data, and a NUL when s is odd
//
// Resources too large for one segment are continued in the next APP13
// segment: it carries the header again, and the resource goes on right
// behind it. Segments joined that way form one block; a segment whose
// resources end with it ends its block. Other APP13 segments (such as
// "Adobe_CM") hold no resources and are never part of a block.
#pragma once

#include <cstdint>
#include <vector>

#include "jpeg/marker_walk.h"
#include "platform/input.h"
#include "platform/platform.h"

namespace iptc {

struct PhotoshopBlock {
    std::vector<jpeg::Segment> segments;  // in file order, each an APP13
    bool holdsIptc = false;               // an IPTC-NAA resource starts in it
    // The block as one segment: the first segment's length field, then the
    // payload (behind the header) of each further segment.
    uint32_t joinedLength = 0;
};

// Every block of the file's marker segments, in file order (the walk of the
// APP13 lookup: from offset 2, not stopping at the start of scan). Reads
// only segment and resource headers; stays within the file and the limits.
std::vector<PhotoshopBlock> FindPhotoshopBlocks(platform::File& file);

// The block the IPTC reader reads and the writer replaces: the first that
// holds an IPTC-NAA resource, else the first; null when there is none.
const PhotoshopBlock* ChooseIptcBlock(const std::vector<PhotoshopBlock>& blocks);

// The block's joinedLength bytes (what an APP13 buffer holds from its length
// field on), then `slack` zero bytes; zeros also stand for what the file
// lacks.
std::vector<uint8_t> ReadPhotoshopBlock(platform::File& file, const PhotoshopBlock& block, size_t slack);

}  // namespace iptc
