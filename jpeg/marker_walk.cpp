#include "marker_walk.h"

#include <cstring>

namespace jpeg {

bool MarkerWalk::Next(Segment& segment) {
    while (!ended_) {
        uint8_t head[4];
        if (next_ > INT64_MAX || !input_.Seek(static_cast<int64_t>(next_)) || !input_.ReadExact(head, 2)) break;
        if (head[0] == kMarkerStart && head[1] == kStartOfImage) {
            next_ += 2;
            continue;
        }
        if (head[0] != kMarkerStart) break;
        if (rules_.stopAtScan && (head[1] == kStartOfScan || head[1] == kEndOfImage)) break;
        if (!input_.ReadExact(head + 2, 2)) break;
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
    return n <= sizeof bytes && input.Seek(static_cast<int64_t>(segment.payload())) && input.ReadExact(bytes, n) &&
           std::memcmp(bytes, prefix, n) == 0;
}

}  // namespace jpeg
