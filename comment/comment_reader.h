// Reading the free-text comment of an image: the COM segments of a JPEG and
// the tEXt / iTXt chunks of a PNG. Read-only. Each reader works on an open
// input; its path form opens the file once for it. Corrupt data only
// shortens the result.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace comment {

// Narrow text of all COM segments of a JPEG, in file order, joined by CR LF,
// line ends normalised to CR LF, NUL-terminated within `capacity` bytes
// (appending stops once the text reaches capacity - 2 bytes). The walk
// starts behind the start marker and ends at the start of scan, the end of
// image, a byte pair that is not a marker, a length below 2 or the end of
// the file.
// Returns 1 when the file could be opened (also when it has no comment), 0
// when not.
int ReadJpegComments(std::u16string_view fileName, char* out, size_t capacity);
// The same on an open input (returns 1).
int ReadJpegComments(platform::File& input, char* out, size_t capacity);

// Appends `count` source bytes to the NUL-terminated `target` while its
// length is below targetCapacity - 2: CR becomes CR LF, LF becomes CR LF
// unless it follows a CR (then it is dropped), NUL adds nothing. Does nothing
// for a null source, a count below 2 or a target without a terminator inside
// its capacity. The target stays terminated.
void AppendWithCrLf(const char* source, char* target, size_t targetCapacity, size_t count);

// How a text's bytes are encoded:
enum TextEncoding : unsigned {
    kTextEmpty = 0,
    kTextAscii = 1,       // every byte below 0x80
    kTextNotUtf8 = 2,     // bytes of 0x80 and above, none of them a valid UTF-8 sequence
    kTextUtf8 = 3,        // at least one valid UTF-8 sequence of two to four bytes
};
unsigned ClassifyTextEncoding(const char* bytes, size_t length);

// The comment conversion setting ("JPGComConversion").
enum CommentConversion : int {
    kConvertAutomatic = 0,  // UTF-8 when the bytes hold UTF-8, else ANSI
    kConvertAnsi = 1,
    kConvertUtf8 = 2,
};
// Converts comment bytes to wide text by the conversion setting (any value
// other than 1 and 2 is automatic).
std::u16string ConvertCommentText(std::string_view bytes, int conversion);

// The JPEG comment as wide text: ReadJpegComments with capacityChars bytes,
// converted by the settings file's "JPGComConversion", at most
// capacityChars - 1 characters into the zeroed `outWide`. Returns 1, or 0
// when the file cannot be opened or memory runs out.
int LoadCommentText(std::u16string_view fileName, char16_t* outWide, size_t capacityChars,
                    std::u16string_view settingsPath);

// The texts of up to 16 tEXt / iTXt chunks of a PNG, one line each
// ("keyword: text", the keyword cut to 32 bytes and left out when empty),
// joined by CR LF. The walk ends at the first chunk of length 0 (IEND at the
// latest), a 17th text chunk, or the end of the file. iTXt text follows its
// empty flag, method, language and translated-keyword fields; compressed
// text is not inflated.
// Returns null for an unreadable file, a file that is not PNG, or no usable
// text (the texts together must come to 2 .. 65535 bytes with their chunk
// overhead); otherwise a zero-padded text, `outLength` its capacity used
// (the sum + 1). `lastChunkPos` receives the data offset of the last text
// chunk recorded (0 for none). Either output may be null.
std::unique_ptr<char[]> ReadPngTextChunks(std::u16string_view fileName, size_t* outLength,
                                          int64_t* lastChunkPos, int unused);
std::unique_ptr<char[]> ReadPngTextChunks(platform::File& input, size_t* outLength, int64_t* lastChunkPos,
                                          int unused);

// ReadPngTextChunks into the zeroed `out`: at most capacity - 1 bytes, then
// blanks trimmed at both ends. Returns the number of bytes copied (before the
// trim), 0 when there is no text.
int ReadPngComment(std::u16string_view fileName, char* out, size_t capacity, int unused);
int ReadPngComment(platform::File& input, char* out, size_t capacity, int unused);

// Removes blanks (0x20 only) at the end and then at the start of a
// NUL-terminated text, in place.
void TrimBlanks(char* text);
// The same for wide text (the dialog's edit text).
void TrimBlanks(std::u16string& text);

}  // namespace comment
