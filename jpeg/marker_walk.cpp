#include "marker_walk.h"

#include <cstring>

namespace jpeg {

bool MarkerWalk::Next(Segment& segment) {
    while (!ended_) {
        // The marker pair and the length behind it, in one read.
        uint8_t head[4];
        const size_t got = input_.ChildAt(next_, sizeof head).Some(head, sizeof head);
        if (got < 2) break;
        if (head[0] == kMarkerStart && head[1] == kStartOfImage) {
            next_ += 2;
            continue;
        }
        if (head[0] != kMarkerStart) break;
        if (rules_.stopAtScan && (head[1] == kStartOfScan || head[1] == kEndOfImage)) break;
        if (got < sizeof head) break;
        const uint16_t length = static_cast<uint16_t>(head[2] << 8 | head[3]);
        if (length < rules_.minimumLength) break;
        segment.marker = head[1];
        segment.offset = next_;
        segment.length = length;
        next_ = segment.end();
        return true;
    }
    ended_ = true;
    return false;
}

bool PayloadStartsWith(platform::File& input, const Segment& segment, const char* prefix, size_t n) {
    uint8_t bytes[kPrefixMax];
    return n <= sizeof bytes &&
           platform::Cursor(input, platform::ByteOrder::kBig).ChildAt(segment.payload(), n).Bytes(bytes, n) &&
           std::memcmp(bytes, prefix, n) == 0;
}

}  // namespace jpeg
