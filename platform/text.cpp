#include "text.h"

namespace platform {

size_t Utf8CutLength(std::string_view text, size_t limit) {
    if (text.size() <= limit) return text.size();
    size_t n = limit;
    while (n > 0 && (static_cast<uint8_t>(text[n]) & 0xC0) == 0x80) --n;
    return n;
}

size_t Utf16CutLength(std::u16string_view text, size_t limit) {
    if (text.size() <= limit) return text.size();
    size_t n = limit;
    if (n > 0 && text[n - 1] >= 0xD800 && text[n - 1] <= 0xDBFF) --n;
    return n;
}

char16_t FoldCase(char16_t c) {
    if ((c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) return static_cast<char16_t>(c + 0x20);
    if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return static_cast<char16_t>(c + 0x20);
    if (c >= 0x410 && c <= 0x42F) return static_cast<char16_t>(c + 0x20);
    if (c >= 0x400 && c <= 0x40F) return static_cast<char16_t>(c + 0x50);
    return c;
}

bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (FoldCase(a[i]) != FoldCase(b[i])) return false;
    return true;
}

bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        char x = a[i], y = b[i];
        if (x >= 'a' && x <= 'z') x = static_cast<char>(x - 'a' + 'A');
        if (y >= 'a' && y <= 'z') y = static_cast<char>(y - 'a' + 'A');
        if (x != y) return false;
    }
    return true;
}

void PutU16Le(std::vector<uint8_t>& out, uint32_t value) {
    out.push_back(static_cast<uint8_t>(value));
    out.push_back(static_cast<uint8_t>(value >> 8));
}

void PutU16Be(std::vector<uint8_t>& out, uint32_t value) {
    out.push_back(static_cast<uint8_t>(value >> 8));
    out.push_back(static_cast<uint8_t>(value));
}

void PutU32Le(std::vector<uint8_t>& out, uint32_t value) {
    PutU16Le(out, value & 0xFFFF);
    PutU16Le(out, value >> 16);
}

void PutU32Be(std::vector<uint8_t>& out, uint32_t value) {
    PutU16Be(out, value >> 16);
    PutU16Be(out, value & 0xFFFF);
}

std::vector<std::u16string> SplitFileList(std::u16string_view fileNames) {
    std::vector<std::u16string> paths;
    size_t start = 0;
    while (start <= fileNames.size()) {
        size_t bar = fileNames.find(u'|', start);
        if (bar == std::u16string_view::npos) bar = fileNames.size();
        if (bar > start) paths.emplace_back(fileNames.substr(start, bar - start));
        start = bar + 1;
    }
    return paths;
}

}  // namespace platform
