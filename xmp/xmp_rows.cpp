#include "xmp_rows.h"

#include <tinyxml2.h>

#include <cstring>

#include "platform/platform.h"
#include "platform/text.h"

namespace xmp {
namespace {

constexpr std::u16string_view kElementMark = u"*element*:";
constexpr std::u16string_view kAttributeMark = u"*attribute*:";
constexpr std::u16string_view kTextMark = u"*text*:";
constexpr std::u16string_view kCommentMark = u"*comment*:";
constexpr std::u16string_view kCommentRowName = u"#comment";

// UTF-8 from the parser into wide text of at most kXmpTextChars - 1
// characters, never ending in half a surrogate pair.
std::u16string Wide(const char* utf8) {
    std::u16string w = platform::Utf8ToUtf16(utf8 ? utf8 : "");
    w.resize(platform::Utf16CutLength(w, kXmpTextChars - 1));
    return w;
}

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }

std::u16string_view Trim(std::u16string_view v) {
    while (!v.empty() && IsBlank(v.front())) v.remove_prefix(1);
    while (!v.empty() && IsBlank(v.back())) v.remove_suffix(1);
    return v;
}

using platform::EqualsIgnoringCase;

void RemoveAll(std::u16string& text, std::u16string_view what) {
    for (size_t at = text.find(what); at != std::u16string::npos; at = text.find(what, at))
        text.erase(at, what.size());
}

// The walk over the parsed document: one line per node, in document order.
class TravelerUtil final : public tinyxml2::XMLVisitor {
public:
    explicit TravelerUtil(std::vector<std::u16string>& lines) : lines_(lines) {}

    bool VisitEnter(const tinyxml2::XMLElement& element, const tinyxml2::XMLAttribute* attribute) override {
        const std::u16string name = Wide(element.Name());
        // Containers are transparent: their items join the property's value.
        if (name == u"rdf:Bag" || name == u"rdf:Seq" || name == u"rdf:Alt") return true;
        if (name != u"rdf:RDF" && name != u"rdf:li") Emit(std::u16string(kElementMark) + name);
        for (; attribute; attribute = attribute->Next()) {
            const std::u16string attributeName = Wide(attribute->Name());
            if (attributeName == u"xml:lang" || attributeName == u"rdf:about") continue;
            Emit(std::u16string(kAttributeMark) + attributeName + u"|" + Wide(attribute->Value()));
        }
        return true;
    }

    bool Visit(const tinyxml2::XMLText& text) override {
        Emit(std::u16string(kTextMark) + Wide(text.Value()) + u"|");
        return true;
    }

    bool Visit(const tinyxml2::XMLComment& comment) override {
        Emit(std::u16string(kCommentMark) + u"|" + Wide(comment.Value()));
        return true;
    }

private:
    void Emit(std::u16string line) { lines_.push_back(std::move(line)); }
    std::vector<std::u16string>& lines_;
};

// The texts gathered since the last other line, as one value-only row.
void Flush(std::u16string& accumulator, XmpRows& rows) {
    if (accumulator.empty()) return;
    RemoveAll(accumulator, kTextMark);
    if (!accumulator.empty() && accumulator.back() == u'|') accumulator.pop_back();
    AddXmpRow(rows, u"", accumulator);
    accumulator.clear();
}

std::pair<std::u16string_view, std::u16string_view> SplitAtBar(std::u16string_view text) {
    const size_t bar = text.find(u'|');
    if (bar == std::u16string_view::npos) return {text, {}};
    return {text.substr(0, bar), text.substr(bar + 1)};
}

bool StartsWith(std::u16string_view text, std::u16string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// XMP may be serialised as UTF-16. When the packet right behind the APP1
// namespace identifier starts "<" in either byte order (with or without a
// byte-order mark), it is turned into UTF-8 so that the same rules apply.
std::string Utf8Packet(const uint8_t* buffer, size_t length) {
    static constexpr char kHeader[] = "http://ns.adobe.com/xap/1.0/";  // + NUL, behind 2 length bytes
    constexpr size_t kPacket = 2 + sizeof kHeader;
    std::string bytes(reinterpret_cast<const char*>(buffer), length);
    if (length < kPacket + 4 || std::memcmp(buffer + 2, kHeader, sizeof kHeader) != 0) return bytes;
    const uint8_t* p = buffer + kPacket;
    size_t n = length - kPacket;
    bool bigEndian;
    if (p[0] == 0xFE && p[1] == 0xFF) { bigEndian = true; p += 2; n -= 2; }
    else if (p[0] == 0xFF && p[1] == 0xFE) { bigEndian = false; p += 2; n -= 2; }
    else if (p[0] == 0 && p[1] == '<') bigEndian = true;
    else if (p[0] == '<' && p[1] == 0) bigEndian = false;
    else return bytes;
    std::u16string wide(n / 2, u'\0');
    for (size_t i = 0; i < wide.size(); ++i) {
        const uint8_t a = p[2 * i], b = p[2 * i + 1];
        wide[i] = static_cast<char16_t>(bigEndian ? (a << 8 | b) : (b << 8 | a));
    }
    return platform::Utf16ToUtf8(wide);
}

// The packet inside the buffer: from the first "<x" up to and including the
// last ":xmpmeta>" that starts at least 10 bytes before the buffer's end.
// What follows it (padding, the packet trailer, stray bytes) is dropped, so it
// cannot spoil the parse.
std::string_view DelimitPacket(std::string_view bytes) {
    static constexpr std::string_view kClose = ":xmpmeta>";
    if (bytes.size() >= 10) {
        for (size_t p = bytes.size() - 10 + 1; p-- > 0;) {
            if (bytes.compare(p, kClose.size(), kClose) == 0) {
                bytes = bytes.substr(0, p + kClose.size());
                break;
            }
        }
    }
    const size_t start = bytes.find("<x");
    if (start == std::string_view::npos) return {};
    return bytes.substr(start);
}

}  // namespace

void AddXmpRow(XmpRows& rows, std::u16string_view name, std::u16string_view value) {
    name = Trim(name);
    value = Trim(value);
    if (name.empty()) {
        if (!value.empty() && !rows.empty()) rows.back().value = std::u16string(value);
        return;
    }
    if (value.empty() && (EqualsIgnoringCase(name, u"rdf:Description") || EqualsIgnoringCase(name, u"x:xmpmeta")))
        return;
    rows.push_back({std::u16string(name), std::u16string(value)});
}

bool CollectXmpLines(std::string_view xml, std::vector<std::u16string>& lines) {
    if (xml.empty()) return false;
    tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
    if (document.Parse(xml.data(), xml.size()) != tinyxml2::XML_SUCCESS) return false;
    TravelerUtil traveler(lines);
    document.Accept(&traveler);
    return true;
}

void RowsFromXmpLines(const std::vector<std::u16string>& lines, XmpRows& rows) {
    std::u16string accumulator;
    for (const std::u16string& line : lines) {
        if (line.size() > kXmpTextChars || Trim(line).empty()) continue;
        if (line.find(kTextMark) != std::u16string::npos) {
            if (accumulator.size() + line.size() < kXmpTextChars) accumulator += line;
            continue;
        }
        Flush(accumulator, rows);
        const std::u16string_view v = line;
        if (StartsWith(v, kAttributeMark)) {
            auto [name, value] = SplitAtBar(v.substr(kAttributeMark.size()));
            AddXmpRow(rows, name, value);
        } else if (StartsWith(v, kCommentMark)) {
            AddXmpRow(rows, kCommentRowName, SplitAtBar(v.substr(kCommentMark.size())).second);
        } else if (StartsWith(v, kElementMark)) {
            AddXmpRow(rows, v.substr(kElementMark.size()), u"");
        }
    }
    Flush(accumulator, rows);
}

int FillListViews_From_XMP_Buffer(const uint8_t* buffer, size_t length, XmpRows& rows) {
    rows.clear();
    if (!buffer || length == 0) return 0;
    const std::string bytes = Utf8Packet(buffer, length);
    std::vector<std::u16string> lines;
    if (!CollectXmpLines(DelimitPacket(bytes), lines)) return 0;
    RowsFromXmpLines(lines, rows);
    return static_cast<int>(rows.size());
}

}  // namespace xmp
