// Text between the portable core (UTF-16 in char16_t) and the Windows API
// (UTF-16 in wchar_t). On Windows both are the same 16-bit code units, so a
// view is a cast and a copy is element by element. Windows only.
#pragma once

#include <string>
#include <string_view>

static_assert(sizeof(wchar_t) == sizeof(char16_t), "wchar_t must be UTF-16 on Windows");

namespace platform {

// The same characters seen as the other type (no copy; null stays null).
inline const wchar_t* AsWchar(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }
inline wchar_t* AsWchar(char16_t* text) { return reinterpret_cast<wchar_t*>(text); }
inline const wchar_t* AsWchar(const std::u16string& text) { return AsWchar(text.c_str()); }
inline const char16_t* AsChar16(const wchar_t* text) { return reinterpret_cast<const char16_t*>(text); }
inline char16_t* AsChar16(wchar_t* text) { return reinterpret_cast<char16_t*>(text); }

// Copies into the other string type.
inline std::wstring ToWstring(std::u16string_view text) { return std::wstring(text.begin(), text.end()); }
inline std::u16string ToU16string(std::wstring_view text) { return std::u16string(text.begin(), text.end()); }
// A C string the Windows API returned; null gives an empty text.
inline std::u16string ToU16string(const wchar_t* text) {
    return text ? ToU16string(std::wstring_view(text)) : std::u16string();
}

}  // namespace platform
