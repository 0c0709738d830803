// Placeholder expansion of comment and IPTC texts: a small template
// language in which "$" and a letter stand for a value of the file being
// written. The table users see is in the README.
//
// It has a folder of its own because two writers use it: the comment writer
// (comment/) and the IPTC sheet (ui/). It reads EXIF and IPTC values, so it
// depends on exif/ and iptc/ only; neither of those includes it, and the
// IPTC side never reaches comment/ through it.
//
//   $D         date and time the picture was taken (EXIF 36867), else the
//              file's last change: "YYYY-MM-DD / HH:MM:SS"
//   $d         today's date "YYYY-MM-DD"
//   $T         the time now "HH:MM:SS"
//   $F         file name with extension
//   $N         file name without extension
//   $O         name of the folder holding the file
//   $U         name of the user logged in
//   $S         file size: "%.2f KB" below 1 MB, else "%.2f MB" (1 KB = 1024 bytes)
//   $C         counter of the file in a batch: "_%.3d" ("_001")
//   $E<tag>    the EXIF value of the decimal tag number (GPS tags as 400 + tag)
//   $I<n>      the IPTC value of record-2 dataset n
//   |          a line break (CR LF)
//   $$  $|     a "$" or a "|" as such
//
// Anything else after "$" (and "$E" / "$I" without digits) stays as typed.
// A tag or dataset the file lacks gives nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace placeholder {

// Expansions are cut to this many characters, terminator included (the
// comment text and every IPTC field have the same size).
constexpr size_t kExpansionChars = 4096;
// The digits read after $E or $I (tags and datasets are below 65536).
constexpr int kPlaceholderNumberDigits = 5;

struct PlaceholderContext {
    std::u16string_view filePath;
    std::u16string_view settingsPath;  // reserved: no placeholder reads a setting yet
    int counter = 1;                   // $C: the file's position in its batch
    const platform::LocalTime* now = nullptr;  // $d, $T; null: the clock
};

// Expands the text for one file; the result holds at most capacity - 1
// characters (whole values are cut where the limit falls). EXIF is read only
// when the text holds "$D" or "$E", IPTC only when it holds "$I", each once.
std::u16string ExpandPlaceholders(std::u16string_view text, const PlaceholderContext& context,
                                  size_t capacity = kExpansionChars);

// The same into a caller's buffer of `capacity` characters, always
// terminated; `out` may hold `text` itself (a field expanded in place).
// Returns the number of characters written (without the terminator); 0 and
// nothing written for a null buffer or capacity 0. Throws nothing.
size_t ExpandPlaceholders(std::u16string_view text, char16_t* out, size_t capacity,
                          std::u16string_view filePath, std::u16string_view settingsPath, int counter = 1);

}  // namespace placeholder
