#include "png_chunks.h"

#include <zlib.h>

#include <algorithm>
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

// ------------------------------------------------------------ text chunks

namespace {

constexpr size_t kKeywordMax = 79;
// Chunks walked looking for text: an animated PNG has one per frame, so this
// is generous; it only caps a file of tiny chunks.
constexpr uint32_t kChunkWalkLimit = 1u << 20;
constexpr size_t kInflateStep = 16 * 1024;
constexpr uint32_t kText = PngChunkType("tEXt");
constexpr uint32_t kCompressedText = PngChunkType("zTXt");
constexpr uint32_t kInternationalText = PngChunkType("iTXt");
constexpr uint32_t kEnd = PngChunkType("IEND");

// Reads up to a NUL inside the cursor's range into `out` (at most `max`
// bytes); false when there is no NUL in reach.
bool ReadNulTerminated(Cursor& in, size_t max, std::string* out) {
    for (size_t n = 0; n <= max; ++n) {
        const uint8_t c = in.U8();
        if (!in.ok()) return false;
        if (c == 0) return true;
        if (out) out->push_back(static_cast<char>(c));
    }
    return false;
}

// The rest of the cursor's range, as stored.
bool ReadStored(Cursor& in, std::vector<uint8_t>& text) {
    if (in.remaining() > kPngTextLimit) return false;
    text.resize(static_cast<size_t>(in.remaining()));
    return in.Bytes(text.data(), text.size());
}

// The rest of the cursor's range as a zlib stream, which must end inside it.
bool Inflate(Cursor& in, std::vector<uint8_t>& text) {
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) return false;
    uint8_t input[kInflateStep];
    int status = Z_OK;
    while (status == Z_OK) {
        if (stream.avail_in == 0) {
            const size_t n = in.Some(input, sizeof input);
            if (n == 0) break;
            stream.next_in = input;
            stream.avail_in = static_cast<uInt>(n);
        }
        const size_t used = text.size();
        if (used >= kPngTextLimit) break;
        const size_t room = std::min(kInflateStep, kPngTextLimit - used);
        text.resize(used + room);
        stream.next_out = text.data() + used;
        stream.avail_out = static_cast<uInt>(room);
        status = inflate(&stream, Z_NO_FLUSH);
        text.resize(used + room - stream.avail_out);
    }
    inflateEnd(&stream);
    return status == Z_STREAM_END;
}

bool IsBlank(uint8_t c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

int HexValue(uint8_t c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

bool ReadPngText(platform::File& input, const PngChunk& chunk, std::string& keyword, std::vector<uint8_t>& text) {
    keyword.clear();
    text.clear();
    if (chunk.type != kText && chunk.type != kCompressedText && chunk.type != kInternationalText) return false;
    Cursor in = Cursor(input, ByteOrder::kBig).ChildAt(chunk.data, chunk.length);
    if (in.remaining() < chunk.length || !ReadNulTerminated(in, kKeywordMax, &keyword) || keyword.empty())
        return false;
    bool compressed = chunk.type == kCompressedText;
    if (chunk.type == kInternationalText) {
        compressed = in.U8() != 0;
        if (in.U8() != 0 && compressed) return false;
        if (!ReadNulTerminated(in, chunk.length, nullptr) || !ReadNulTerminated(in, chunk.length, nullptr))
            return false;
    } else if (compressed && in.U8() != 0) {
        return false;
    }
    if (!in.ok()) return false;
    return compressed ? Inflate(in, text) : ReadStored(in, text);
}

bool FindPngText(platform::File& input, const std::vector<std::string_view>& keywords, std::vector<uint8_t>& text,
                 uint64_t& at) {
    text.clear();
    at = 0;
    PngChunkWalk walk(input);
    PngChunk chunk;
    std::string keyword;
    for (uint32_t n = 0; n < kChunkWalkLimit && walk.Next(chunk) && chunk.type != kEnd; ++n) {
        if (chunk.type != kText && chunk.type != kCompressedText && chunk.type != kInternationalText) continue;
        // The keyword first, from the window: most text chunks are not wanted.
        char head[kKeywordMax + 1] = {};
        Cursor(input, ByteOrder::kBig).ChildAt(chunk.data, chunk.length).Some(head, sizeof head);
        const std::string_view name(head, strnlen(head, sizeof head));
        if (std::find(keywords.begin(), keywords.end(), name) == keywords.end()) continue;
        if (ReadPngText(input, chunk, keyword, text)) {
            at = chunk.data;
            return true;
        }
    }
    text.clear();
    return false;
}

std::vector<uint8_t> DecodeRawProfile(const std::vector<uint8_t>& text) {
    // "\n" name "\n" count "\n": the name may be empty, blanks may stand
    // before the count.
    size_t at = 0;
    if (at < text.size() && text[at] == '\n') ++at;
    while (at < text.size() && text[at] != '\n') ++at;
    uint64_t count = 0;
    bool digits = false;
    while (at < text.size() && IsBlank(text[at])) ++at;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        count = count * 10 + (text[at] - '0');
        digits = true;
        if (count > text.size()) return {};  // more bytes than the text has digits for
    }
    if (!digits || count == 0) return {};
    std::vector<uint8_t> bytes;
    bytes.reserve(static_cast<size_t>(count));
    int high = -1;
    for (; at < text.size() && bytes.size() < count; ++at) {
        if (IsBlank(text[at])) continue;
        const int v = HexValue(text[at]);
        if (v < 0) break;
        if (high < 0) {
            high = v;
        } else {
            bytes.push_back(static_cast<uint8_t>(high << 4 | v));
            high = -1;
        }
    }
    return bytes;
}

}  // namespace jpeg
