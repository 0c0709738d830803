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

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

// ------------------------------------------------------------ text chunks
//
//   tEXt  keyword, NUL, text
//   zTXt  keyword, NUL, compression method (0), the text as a zlib stream
//   iTXt  keyword, NUL, compression flag, compression method, language tag,
//         NUL, translated keyword, NUL, text (a zlib stream when the flag is 1)
// A keyword has 1 to 79 bytes.

// The most text a chunk gives, inflated or not: profiles and XMP packets of
// real files are far smaller; a chunk that would give more gives nothing.
constexpr size_t kPngTextLimit = 4u << 20;

// The keyword and the text of a textual chunk, inflated where compressed.
// False for another type, a malformed chunk, a compression other than zlib,
// a stream that does not inflate to its end, or text beyond kPngTextLimit.
bool ReadPngText(platform::File& input, const PngChunk& chunk, std::string& keyword, std::vector<uint8_t>& text);

// The text of the first textual chunk, before "IEND", whose keyword is one of
// `keywords` (compared exactly); `at` receives the chunk's data offset.
bool FindPngText(platform::File& input, const std::vector<std::string_view>& keywords, std::vector<uint8_t>& text,
                 uint64_t& at);

// The bytes of a raw profile kept as text (ImageMagick, digiKam): a line
// break, the profile's name, a line break, the byte count in decimal (often
// after spaces), a line break, then the bytes as pairs of hexadecimal digits,
// broken into lines. Decoding stops at the count, or at the first character
// that is neither a digit nor white space. Empty when the text has not that
// form.
std::vector<uint8_t> DecodeRawProfile(const std::vector<uint8_t>& text);

}  // namespace jpeg
