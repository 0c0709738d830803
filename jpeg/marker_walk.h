// The one walk over a JPEG's marker segments, shared by every reader and
// writer that looks for a segment.
//
// A segment is 0xFF, its marker code, a 16-bit big-endian length that counts
// itself, then length - 2 bytes of payload. The start-of-image pair
// 0xFF 0xD8 stands alone (no length) and is passed over wherever it appears.
// The walk ends, reporting no further segment, at the end of the input, at a
// pair whose first byte is not 0xFF, at a length below the rules' minimum,
// or, when the rules say so, at start of scan (0xFF 0xDA) or end of image
// (0xFF 0xD9). Every step moves forward by at least two bytes, so the walk
// ends on any input; it never reads outside the caller's buffers.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/input.h"
#include "platform/platform.h"

namespace jpeg {

constexpr uint8_t kMarkerStart = 0xFF;
constexpr uint8_t kStartOfImage = 0xD8;
constexpr uint8_t kEndOfImage = 0xD9;
constexpr uint8_t kStartOfScan = 0xDA;
constexpr uint8_t kApp1 = 0xE1;
constexpr uint8_t kApp13 = 0xED;
constexpr uint8_t kComment = 0xFE;

// Where the readers differ on odd input.
struct WalkRules {
    // A length field below this ends the walk. The EXIF and IPTC lookups
    // want a byte of payload (3); the comment reader accepts an empty
    // segment (2).
    uint16_t minimumLength = 3;
    // Whether start of scan and end of image end the walk (what follows
    // them is entropy-coded data that only looks like segments).
    bool stopAtScan = false;
};

struct Segment {
    uint8_t marker = 0;   // the code behind 0xFF
    uint64_t offset = 0;  // input offset of the 0xFF byte
    uint16_t length = 0;  // the length field
    uint64_t payload() const { return offset + 4; }
    uint64_t end() const { return offset + 2 + length; }
};

class MarkerWalk {
public:
    // Walks from `start`: the offset behind the start-of-image marker
    // (2 for a whole file).
    MarkerWalk(platform::File& input, uint64_t start, WalkRules rules)
        : input_(input, platform::ByteOrder::kBig), next_(start), rules_(rules) {}

    // The next segment; false once the walk has ended.
    bool Next(Segment& segment);
    // Goes on at `position` instead of behind the last segment.
    void ResumeAt(uint64_t position) { next_ = position; }

private:
    platform::Cursor input_;
    uint64_t next_;
    WalkRules rules_;
    bool ended_ = false;
};

// The first segment with `marker` that `accept` (when given) takes.
template <typename Accept>
bool FindSegment(MarkerWalk& walk, uint8_t marker, Segment& found, Accept accept) {
    Segment segment;
    while (walk.Next(segment))
        if (segment.marker == marker && accept(segment)) {
            found = segment;
            return true;
        }
    return false;
}
// Whether the segment's payload begins with the n bytes of `prefix` (n at
// most kPrefixMax; a segment or input too short does not).
constexpr size_t kPrefixMax = 32;
bool PayloadStartsWith(platform::File& input, const Segment& segment, const char* prefix, size_t n);

inline bool FindSegment(MarkerWalk& walk, uint8_t marker, Segment& found) {
    return FindSegment(walk, marker, found, [](const Segment&) { return true; });
}

}  // namespace jpeg
