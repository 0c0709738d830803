// The one walk over a PNG's chunks, shared by the EXIF locator and the text
// reader.
//
// A PNG is an 8-byte signature (bytes 1-3 "PNG"), then chunks:
//   0  4  data length n, big-endian
//   4  4  type
//   8  n  data
//   8+n 4 CRC (not checked)
// The walk reports each chunk whose 8-byte header lies inside the input and
// whose length is at most kPngChunkLengthMax; it ends at the first that does
// not. Each step moves forward by at least 12 bytes, so it ends on any input.
// The readers decide themselves where their walk stops before that.
#pragma once

#include <cstdint>

#include "platform/input.h"

namespace jpeg {

using platform::ByteOrder;
using platform::Cursor;

constexpr uint32_t kPngChunkLengthMax = 0x7FFFFFFF;

constexpr uint32_t PngChunkType(const char (&type)[5]) {
    return static_cast<uint32_t>(static_cast<uint8_t>(type[0])) << 24 |
           static_cast<uint32_t>(static_cast<uint8_t>(type[1])) << 16 |
           static_cast<uint32_t>(static_cast<uint8_t>(type[2])) << 8 |
           static_cast<uint32_t>(static_cast<uint8_t>(type[3]));
}

struct PngChunk {
    uint32_t type = 0;
    uint32_t length = 0;
    uint64_t data = 0;  // input offset of the chunk data
};

class PngChunkWalk {
public:
    explicit PngChunkWalk(platform::File& input);

    // Whether the input starts with a PNG signature; a walk over anything
    // else reports no chunk.
    bool isPng() const { return isPng_; }
    bool Next(PngChunk& chunk);

private:
    Cursor in_;
    bool isPng_ = false;
    uint64_t next_ = 8;
};

}  // namespace jpeg
