#include "xmp_import.h"

#include <climits>
#include <cstdio>

#include "metadata_segment.h"
#include "platform/platform.h"
#include "platform/input.h"

namespace iptc {
namespace {

bool SameName(std::u16string_view rowName, const char* property) {
    const std::u16string wanted = platform::Utf8ToUtf16(property);
    if (rowName.size() != wanted.size()) return false;
    for (size_t i = 0; i < wanted.size(); ++i) {
        char16_t a = rowName[i], b = wanted[i];
        if (a >= u'A' && a <= u'Z') a = static_cast<char16_t>(a + 32);
        if (b >= u'A' && b <= u'Z') b = static_cast<char16_t>(b + 32);
        if (a != b) return false;
    }
    return true;
}

const xmp::XmpRow* FindRow(const xmp::XmpRows& rows, const char* property) {
    for (const xmp::XmpRow& row : rows)
        if (!row.value.empty() && SameName(row.name, property)) return &row;
    return nullptr;
}

std::u16string ItemsAsLines(std::u16string_view value) {
    std::u16string out;
    for (char16_t c : value) {
        if (c == u'|') out += u"\r\n";
        else out += c;
    }
    return out;
}

// Reads one decimal number the way "%d" does: leading blanks, a sign,
// digits. False when there is no digit.
bool ScanNumber(std::u16string_view text, size_t& at, int& value) {
    while (at < text.size() && (text[at] == u' ' || text[at] == u'\t' || text[at] == u'\n' || text[at] == u'\r'))
        ++at;
    bool negative = false;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) negative = text[at++] == u'-';
    if (at >= text.size() || text[at] < u'0' || text[at] > u'9') return false;
    long long n = 0;
    for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at)
        if (n < INT_MAX) n = n * 10 + (text[at] - u'0');
    if (n > INT_MAX) n = INT_MAX;
    value = static_cast<int>(negative ? -n : n);
    return true;
}

// "YYYY-MM-DDThh:mm:ss..." -> Created Date "YYYYMMDD" (missing parts are
// month 1, day 1) and Created Time "hh:mm:ss..." when a time follows the T.
void SplitDateCreated(std::u16string_view value, IptcData& data) {
    int date[3] = {0, 1, 1};
    size_t at = 0;
    for (int i = 0; i < 3; ++i) {
        if (i > 0) {
            if (at >= value.size() || value[at] != u'-') break;
            ++at;
        }
        if (!ScanNumber(value, at, date[i])) break;
    }
    const size_t t = value.find(u'T');
    if (t != std::u16string_view::npos && value.size() - t - 1 >= 2)
        SetField(IptcField(data, kCreatedTime), value.substr(t + 1));
    char text[48];
    std::snprintf(text, sizeof text, "%04d%02d%02d", date[0], date[1], date[2]);
    SetField(IptcField(data, kCreatedDate), platform::Utf8ToUtf16(text));
}

}  // namespace

int ImportXmpRows(const xmp::XmpRows& rows, IptcData& data) {
    int count = 0;
    for (const XmpToIptcRow& entry : XmpToIptcMap) {
        const xmp::XmpRow* row = FindRow(rows, entry.property);
        if (!row) continue;
        SetField(IptcField(data, entry.dataset), ItemsAsLines(row->value));
        if (entry.dataset == kCreatedDate) SplitDateCreated(row->value, data);
        ++count;
    }
    return count;
}

int ImportXmpIntoIptc(std::u16string_view fileName, IptcData& data, int enable, int isTiff) {
    if (enable != 1 || isTiff) return 0;
    auto file = platform::Input::Open(fileName);
    return file ? ImportXmpIntoIptc(*file, data, enable, isTiff) : 0;
}

size_t ReadXmpRows(platform::File& file, IptcData& data, xmp::XmpRows& rows) {
    rows.clear();
    const std::vector<uint8_t> segment =
        LoadMetadataSegment(file, data.xmpLength, data.xmpOffset, kApp1Marker, false, nullptr, true);
    if (segment.empty()) return 0;
    xmp::FillListViews_From_XMP_Buffer(segment.data(), data.xmpLength, rows);
    return rows.size();
}

int ImportXmpIntoIptc(platform::File& file, IptcData& data, int enable, int isTiff) {
    if (enable != 1 || isTiff) return 0;
    xmp::XmpRows rows;
    ReadXmpRows(file, data, rows);
    if (data.xmpLength == 0) return 0;
    const int count = rows.empty() ? 0 : ImportXmpRows(rows, data);
    data.utf8 = 1;
    return count;
}

}  // namespace iptc
