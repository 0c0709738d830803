// Text and byte helpers every layer shares: where a text may be cut without
// splitting a character, letter case as comparisons ignore it, and 16- and
// 32-bit words appended in a named byte order, the viewer's file lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The length of the longest start of `text` of at most `limit` code units
// that does not end inside a character: a UTF-8 cut steps back over
// continuation bytes, a UTF-16 cut never keeps the first half of a pair.
size_t Utf8CutLength(std::string_view text, size_t limit);
size_t Utf16CutLength(std::u16string_view text, size_t limit);

// Letter case folded as comparisons ignore it: ASCII, Latin-1, Greek and
// Cyrillic capitals become their small letters.
char16_t FoldCase(char16_t c);
bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b);
// ASCII letters only, for the bytes of a file.
bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b);

// The viewer's list of files: the paths of a "|"-separated text, in order,
// empty entries left out (the last "|" may be missing).
std::vector<std::u16string> SplitFileList(std::u16string_view fileNames);

void PutU16Le(std::vector<uint8_t>& out, uint32_t value);
void PutU16Be(std::vector<uint8_t>& out, uint32_t value);
void PutU32Le(std::vector<uint8_t>& out, uint32_t value);
void PutU32Be(std::vector<uint8_t>& out, uint32_t value);

}  // namespace platform
