#include "png_chunks.h"

#include <cstring>

namespace jpeg {

PngChunkWalk::PngChunkWalk(platform::File& input) : in_(input, ByteOrder::kBig) {
    uint8_t signature[8];
    isPng_ = in_.Bytes(signature, sizeof signature) && std::memcmp(signature + 1, "PNG", 3) == 0;
}

bool PngChunkWalk::Next(PngChunk& chunk) {
    if (!isPng_ || !in_.Seek(next_)) return false;
    chunk.length = in_.U32();
    chunk.type = in_.U32();
    if (!in_.ok() || chunk.length > kPngChunkLengthMax) {
        isPng_ = false;  // the walk has ended
        return false;
    }
    chunk.data = next_ + 8;
    next_ = chunk.data + chunk.length + 4;
    return true;
}

}  // namespace jpeg
