#include "ini.h"

#include "text.h"

#include <vector>

namespace platform::ini {
namespace {

std::string_view Trim(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r'))
        s.remove_suffix(1);
    return s;
}

bool EqualNoCase(std::string_view a, std::string_view b) { return EqualsIgnoringAsciiCase(a, b); }

struct Line {
    std::string_view text;   // without the line break
    size_t begin = 0;        // offset of the line in the whole text
    size_t end = 0;          // offset just past its line break
};

// A UTF-8 byte-order mark is not part of the first line (and stays in place
// when the text is rewritten).
std::vector<Line> SplitLines(std::string_view text) {
    std::vector<Line> lines;
    size_t pos = text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
    while (pos < text.size()) {
        size_t nl = text.find('\n', pos);
        size_t stop = nl == std::string_view::npos ? text.size() : nl;
        size_t next = nl == std::string_view::npos ? text.size() : nl + 1;
        lines.push_back({text.substr(pos, stop - pos), pos, next});
        pos = next;
    }
    return lines;
}

// "[name]" gives name; anything else gives nothing.
std::optional<std::string_view> SectionName(std::string_view line) {
    line = Trim(line);
    if (line.size() < 2 || line.front() != '[') return std::nullopt;
    size_t close = line.find(']');
    if (close == std::string_view::npos) return std::nullopt;
    return Trim(line.substr(1, close - 1));
}

bool SplitKey(std::string_view line, std::string_view& key, std::string_view& value) {
    size_t eq = line.find('=');
    if (eq == std::string_view::npos) return false;
    key = Trim(line.substr(0, eq));
    value = Trim(line.substr(eq + 1));
    return true;
}

}  // namespace

std::optional<std::string> Find(std::string_view text, std::string_view section,
                                std::string_view key) {
    bool inSection = false;
    for (const Line& line : SplitLines(text)) {
        if (auto name = SectionName(line.text)) {
            inSection = EqualNoCase(*name, Trim(section));
            continue;
        }
        std::string_view k, v;
        if (inSection && SplitKey(line.text, k, v) && EqualNoCase(k, Trim(key))) {
            if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front())
                v = v.substr(1, v.size() - 2);
            return std::string(v);
        }
    }
    return std::nullopt;
}

std::string Set(std::string_view text, std::string_view section, std::string_view key,
                std::string_view value) {
    const std::string newLine = std::string(key) + "=" + std::string(value) + "\r\n";
    bool inSection = false;
    bool sectionFound = false;
    size_t insertAt = std::string_view::npos;  // just past the section's last key line
    for (const Line& line : SplitLines(text)) {
        if (auto name = SectionName(line.text)) {
            if (inSection) break;  // the section ended without the key
            inSection = EqualNoCase(*name, Trim(section));
            if (inSection) { sectionFound = true; insertAt = line.end; }
            continue;
        }
        if (!inSection) continue;
        std::string_view k, v;
        if (SplitKey(line.text, k, v)) {
            if (EqualNoCase(k, Trim(key))) {
                return std::string(text.substr(0, line.begin)) + newLine +
                       std::string(text.substr(line.end));
            }
            insertAt = line.end;
        }
    }
    std::string out(text);
    if (sectionFound) {
        // A last line without a break gets one before the new key.
        std::string prefix(text.substr(0, insertAt));
        if (!prefix.empty() && prefix.back() != '\n') prefix += "\r\n";
        return prefix + newLine + std::string(text.substr(insertAt));
    }
    if (!out.empty() && out.back() != '\n') out += "\r\n";
    out += "[" + std::string(section) + "]\r\n" + newLine;
    return out;
}

}  // namespace platform::ini
