// Replacing the comment of JPEG files: the segment writer, and the single-file
// and batch write runs that the comment dialog performs after "&Write".
//
// The new COM segment:
//
//   FF FE          marker
//   L (16 bits)    big-endian, text length + 3 (itself and the NUL)
//   text           UTF-8 as given
//   00             a terminating NUL, part of the segment
//
// It stands where the first COM segment stood (further ones stay), or right
// behind the start-of-image marker when the file had none.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "comment_settings.h"
#include "platform/platform.h"

namespace comment {

// The first COM segment before the start of scan: the file offset of
// its 0xFF byte and its length field, both 0 when there is none.
void LocateComment(std::u16string_view fileName, uint32_t& oldOffset, uint32_t& oldLength);
void LocateComment(platform::File& input, uint32_t& oldOffset, uint32_t& oldLength);

// Rewrites the file (through a temporary file, see jpeg/file_rewrite.h) with
// `text` in a new COM segment in place of the one at oldOffset/oldLength
// (oldLength 0: none); every byte behind the old segment follows the new one
// unchanged, to the end of the file. With keepDate the file keeps its three
// times. An empty text for a file without comment writes nothing.
// Returns 1, or 0 with errorText set; then the original is unchanged. A text
// too long for one segment is refused, and so is a path that names no
// regular file, an empty file and one that is not a JPEG.
int WriteJpegComment(std::u16string_view fileName, uint32_t oldOffset, uint32_t oldLength,
                     std::string_view textUtf8, bool keepDate, std::u16string& errorText);

// The UTF-8 form of a text to write, cut at a character boundary to
// kWrittenCommentBytes - 1 bytes.
std::string CommentToUtf8(std::u16string_view text);

// Joins a file's existing comment and the new text with CR LF; either empty
// gives the other alone.
std::u16string AppendComment(std::u16string_view oldText, std::u16string_view newText);

// What a write run is given: the edited text and the settings in force.
struct CommentJob {
    std::u16string text;           // as typed, placeholders not yet expanded
    std::u16string settingsPath;
    CommentSettings settings;
};

// Called with each failing file's message (the dialog shows it in a message
// box with the caption "Vantaview").
using CommentErrorSink = std::function<void(std::u16string_view errorText)>;

// One file: locate its comment, expand the placeholders when the text holds
// a "$", trim when clearSpaces, write. Returns WriteJpegComment's result;
// the error also goes to `onError`.
int WriteCommentToFile(std::u16string_view fileName, const CommentJob& job, const CommentErrorSink& onError);

struct BatchResult {
    int written = 0;
    int failed = 0;
};
// Every file of a "|"-separated list (the last "|" may be missing; empty
// entries are skipped), in order, each as in WriteCommentToFile but with its
// own placeholder values and counter (1, 2, ...). With append the file's own
// comment (converted by the conversion setting) comes first, joined by
// AppendComment and not trimmed. A failing file, or a path of 260 characters
// or more, is reported to `onError` and the run goes on with the next.
BatchResult WriteCommentBatch(std::u16string_view fileNames, const CommentJob& job,
                              const CommentErrorSink& onError);

}  // namespace comment
