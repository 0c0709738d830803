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
#include <memory>
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

// The expansions of one file: the file is opened at the first placeholder
// that needs it and only once, its EXIF read at the first "$D" or "$E" and
// its IPTC at the first "$I", however many texts are expanded (every field
// of an IPTC write shares one session).
class PlaceholderSession {
public:
    // The context's texts must outlive the session.
    explicit PlaceholderSession(const PlaceholderContext& context);
    ~PlaceholderSession();
    PlaceholderSession(const PlaceholderSession&) = delete;
    PlaceholderSession& operator=(const PlaceholderSession&) = delete;

    // The text expanded; at most capacity - 1 characters (whole values are
    // cut where the limit falls).
    std::u16string Expand(std::u16string_view text, size_t capacity = kExpansionChars);
    // The same into a buffer of `capacity` characters, always terminated;
    // `out` may hold `text` itself. Returns the characters written; 0 and
    // nothing written for a null buffer or capacity 0. Throws nothing.
    size_t Expand(std::u16string_view text, char16_t* out, size_t capacity);

private:
    struct Values;
    std::unique_ptr<Values> values_;
};

// One text for one file: a session of its own.
std::u16string ExpandPlaceholders(std::u16string_view text, const PlaceholderContext& context,
                                  size_t capacity = kExpansionChars);

// The same into a caller's buffer of `capacity` characters, always
// terminated; `out` may hold `text` itself (a field expanded in place).
// Returns the number of characters written (without the terminator); 0 and
// nothing written for a null buffer or capacity 0. Throws nothing.
size_t ExpandPlaceholders(std::u16string_view text, char16_t* out, size_t capacity,
                          std::u16string_view filePath, std::u16string_view settingsPath, int counter = 1);

}  // namespace placeholder
