// Every bound the comment reader, writer and placeholder expansion keep, in
// one place.
#pragma once

#include <cstddef>
#include <cstdint>

namespace comment {

// The comment dialog holds the old comment as at most this many bytes.
constexpr size_t kOldCommentBytes = 4080;
// Comment texts in wide characters (terminator included): the edit field,
// the old comment as shown, and every placeholder expansion.
constexpr size_t kCommentChars = 4096;
// The UTF-8 form of a text to write is cut (at a character boundary) to this
// many bytes, far below what one COM segment can carry.
constexpr size_t kWrittenCommentBytes = 4096;
// A COM segment's 16-bit length counts itself (2), the text and its NUL.
constexpr size_t kMaxSegmentText = 65535 - 3;
// A path in a batch list must be shorter than this (the viewer's MAX_PATH).
constexpr size_t kBatchPathChars = 260;

// PNG: text chunks collected per file; the next one ends the walk.
constexpr int kPngTextChunkLimit = 16;
// PNG: a keyword is shown with at most this many bytes (the format allows 79).
constexpr size_t kPngKeywordShown = 32;
// PNG: chunks longer than this are left out, and the texts together (with
// eight bytes of room per chunk) must stay within it.
constexpr uint32_t kPngTextTotalMax = 65535;
// PNG: a chunk length with the top bit set is not valid PNG.
constexpr uint32_t kPngChunkLengthMax = 0x7FFFFFFF;
// PNG: spare bytes behind the collected text.
constexpr size_t kPngTextSlack = 1024;

}  // namespace comment
