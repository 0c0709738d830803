// The private-profile (INI) engine of the POSIX platform: the text model
// behind ReadSettingString / ReadSettingInt / WriteSettingString, kept apart
// from file access so that it can be tested on strings.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform::ini {

// The value of key in section, or nothing. Sections and keys compare without
// regard to ASCII case; the value loses surrounding blanks and matching quotes.
std::optional<std::string> Find(std::string_view text, std::string_view section,
                                std::string_view key);

// The text with key set to value: the key's line is replaced, or a line is
// added at the end of the section, or the section is added at the end.
std::string Set(std::string_view text, std::string_view section, std::string_view key,
                std::string_view value);

}  // namespace platform::ini
