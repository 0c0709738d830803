#include "exif_window_model.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "platform/platform.h"

namespace vv {
namespace {

constexpr size_t kTokenMax = 128;          // a HideTags token is compared up to this length
constexpr size_t kHideTagsMax = 1022;      // the list's limit when a number is appended
constexpr size_t kClipboardNameMax = 256;
constexpr size_t kClipboardValueMax = 3072;

std::u16string Decimal(uint32_t n) {
    char text[16];
    std::snprintf(text, sizeof text, "%u", n);
    return std::u16string(text, text + std::strlen(text));
}

char16_t LowerAscii(char16_t c) { return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c; }

bool EqualNoCase(std::u16string_view a, std::u16string_view b) {
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (LowerAscii(a[i]) != LowerAscii(b[i]))
            return false;
    return true;
}

bool Listed(const exif::TagRecord& record, std::u16string_view hideTags) {
    return record.tag != 0 && record.name[0] != '\0' && IsTagInList(hideTags, Decimal(record.tag));
}

std::u16string RowValue(const exif::TagRecord& record) {
    const bool longText = (record.tag == 270 || record.tag == 37510) && record.longValue && record.longValue[0];
    if (longText)
        return platform::Utf8ToUtf16(std::string_view(record.longValue, ::strnlen(record.longValue, exif::kLongValueSize)));
    return platform::Utf8ToUtf16(std::string_view(record.value, ::strnlen(record.value, exif::kTagValueSize)));
}

std::u16string RowName(const exif::TagRecord& record) {
    return platform::AnsiToUtf16(std::string_view(record.name, ::strnlen(record.name, exif::kTagNameSize)));
}

// scanf's %d: blanks skipped, an optional sign, at least one digit.
bool ScanInt(std::u16string_view text, size_t& at, int& out) {
    while (at < text.size() && (text[at] == u' ' || text[at] == u'\t'))
        ++at;
    size_t i = at;
    bool negative = false;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        negative = text[i++] == u'-';
    if (i >= text.size() || text[i] < u'0' || text[i] > u'9')
        return false;
    long long value = 0;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i)
        value = std::min<long long>(value * 10 + (text[i] - u'0'), 0x7FFFFFFFLL + 1);
    value = negative ? -value : value;
    out = static_cast<int>(std::clamp<long long>(value, -0x7FFFFFFFLL - 1, 0x7FFFFFFFLL));
    at = i;
    return true;
}

// The list less every token equal to `numberText` (as IsTagInList compares),
// each with the comma after it; every other character stays as it was.
std::u16string WithoutToken(std::u16string_view list, std::u16string_view numberText) {
    std::u16string kept;
    size_t start = 0;
    while (start < list.size()) {
        size_t end = list.find(u',', start);
        end = end == std::u16string_view::npos ? list.size() : end + 1;
        const std::u16string_view entry = list.substr(start, end - start);
        if (!IsTagInList(entry, numberText))
            kept += entry;
        start = end;
    }
    return kept;
}

int Round(float value) { return static_cast<int>(value + 0.5f); }

// Single-precision division kept in memory: the 32-bit build would otherwise
// carry x87 excess precision and round a few pixels differently.
float Ratio(int now, int before) {
    volatile float ratio = before ? static_cast<float>(now) / static_cast<float>(before) : 1.0f;
    return ratio;
}

int MulDiv96(int n, int dpi) { return static_cast<int>((static_cast<long long>(n) * dpi + 48) / 96); }

constexpr int kCloseCommand = 2;  // IDCANCEL: the "&Exit" button

constexpr KeyBinding kExifKeys[] = {
    {0x08, ExifAction::kToParent, 0},  // Backspace
    {0x20, ExifAction::kToParent, 0},  // Space
    {0x25, ExifAction::kToParent, 0},  // Left
    {0x27, ExifAction::kToParent, 0},  // Right
    {0x09, ExifAction::kFocusParent, 0},  // Tab
    {0x1B, ExifAction::kDestroy, 0},      // Esc
    {'A', ExifAction::kCommand, IDM_BINGMAPS_APP},
    {'B', ExifAction::kCommand, IDM_BINGMAPS},
    {'C', ExifAction::kCommand, IDC_EXIF_COPY},
    {'E', ExifAction::kCommand, kCloseCommand},
    {'G', ExifAction::kCommand, IDC_EXIF_GOOGLE_EARTH},
    {'H', ExifAction::kCommand, IDM_GEOHACK},
    {'K', ExifAction::kCommand, IDM_KAKAOMAP},
    {'M', ExifAction::kCommand, IDC_EXIF_GOOGLE_MAPS},
    {'N', ExifAction::kCommand, IDM_NAVERMAP},
    {'O', ExifAction::kCommand, IDC_EXIF_OPENSTREETMAP},
    {'S', ExifAction::kCommand, IDM_COPY_SELECTED},
    {'T', ExifAction::kCommand, IDC_EXIF_MORE},
};

}  // namespace

ExifListModel BuildExifListRows(const exif::TagRecordTable& table, uint32_t count, std::u16string_view hideTags) {
    ExifListModel model;
    count = std::min(count, exif::kTagTableRows);
    for (uint32_t i = 0; i < count; ++i) {
        const exif::TagRecord& record = table.rows[i];
        if (Listed(record, hideTags))
            continue;
        ExifListRow row;
        row.tag = record.tag;
        if (record.tag != 0 && record.name[0] != '\0')
            row.number = Decimal(record.tag);
        row.name = RowName(record);
        row.value = RowValue(record);
        if (record.tag == 402)
            model.gpsScore += 2;
        else if (record.tag == 404)
            model.gpsScore += 4;
        model.rows.push_back(std::move(row));
    }
    return model;
}

bool IsTagInList(std::u16string_view list, std::u16string_view numberText) {
    size_t start = 0;
    while (start <= list.size()) {
        size_t end = list.find(u',', start);
        if (end == std::u16string_view::npos)
            end = list.size();
        std::u16string_view token = list.substr(start, end - start);
        if (token.size() > kTokenMax)
            token = token.substr(0, kTokenMax);
        if (!token.empty() && EqualNoCase(token, numberText))
            return true;
        start = end + 1;
    }
    return false;
}

std::vector<TagChoice> BuildTagChoices(const exif::TagRecordTable& table, uint32_t count,
                                       std::u16string_view hideTags) {
    std::vector<TagChoice> choices;
    count = std::min(count, exif::kTagTableRows);
    for (uint32_t i = 0; i < count; ++i) {
        const exif::TagRecord& record = table.rows[i];
        if (record.tag == 0 || record.name[0] == '\0')
            continue;
        TagChoice choice;
        choice.tag = record.tag;
        choice.number = Decimal(record.tag);
        choice.name = RowName(record);
        choice.shown = !IsTagInList(hideTags, choice.number);
        choices.push_back(std::move(choice));
    }
    return choices;
}

std::u16string UpdateHideTags(std::u16string list, const std::vector<TagChoice>& choices) {
    for (const TagChoice& choice : choices) {
        const bool listed = IsTagInList(list, choice.number);
        if (!choice.shown && !listed) {
            // A list typed without its last comma keeps its last number apart.
            std::u16string entry = choice.number + u",";
            if (!list.empty() && list.back() != u',')
                entry.insert(entry.begin(), u',');
            if (list.size() + entry.size() <= kHideTagsMax)
                list += entry;
        } else if (choice.shown && listed) {
            list = WithoutToken(list, choice.number);
        }
    }
    return list;
}

std::u16string FormatClipboardText(const std::vector<ListLine>& lines) {
    std::u16string text;
    for (const ListLine& line : lines) {
        if (!line.name.empty()) {
            text.append(line.name, 0, kClipboardNameMax);
            text += u" - ";
            text.append(line.value, 0, kClipboardValueMax);
        }
        text += u"\r\n";
    }
    return text;
}

std::u16string FormatWinPosition(const WinPosition& p) {
    char text[96];
    std::snprintf(text, sizeof text, "%d,%d,%d,%d,%d,%d;", p.left, p.top, p.width, p.height, p.maximized, p.dpi);
    return std::u16string(text, text + std::strlen(text));
}

WinPosition ParseWinPosition(std::u16string_view text, bool withDpi) {
    WinPosition p;
    int* fields[] = {&p.left, &p.top, &p.width, &p.height, &p.maximized, &p.dpi};
    const size_t n = withDpi ? 6 : 5;
    size_t at = 0;
    for (size_t i = 0; i < n; ++i) {
        if (i > 0) {
            if (at >= text.size() || text[at] != u',')
                break;
            ++at;
        }
        if (!ScanInt(text, at, *fields[i]))
            break;
    }
    return p;
}

void ClampWinPosition(WinPosition& p, int monitorCount, const WinRect& work) {
    if (monitorCount < 2) {
        if (p.left < work.left || p.left >= work.right)
            p.left = work.left;
        if (p.top < work.top || p.top >= work.bottom)
            p.top = work.top;
    } else if (p.left < work.left) {
        p.left = work.left;
    }
}

void SizeForDpi(const WinPosition& p, int currentDpi, int* width, int* height) {
    *width = p.width;
    *height = p.height;
    if (p.dpi != 0 && p.dpi != currentDpi) {
        *width = static_cast<int>(static_cast<long long>(p.width) * currentDpi / p.dpi);
        *height = static_cast<int>(static_cast<long long>(p.height) * currentDpi / p.dpi);
    }
}

ColumnWidths ExifColumnWidths(int listWidth, int dpi) {
    ColumnWidths w;
    w.number = MulDiv96(5, dpi);
    w.name = MulDiv96(15, dpi) + listWidth / 3;
    w.value = 2 * (listWidth / 3) - MulDiv96(40, dpi);
    return w;
}

ChildKind ClassifyChild(std::u16string_view className) {
    if (className.find(u"SysListView32") != std::u16string_view::npos)
        return ChildKind::kListView;
    if (EqualNoCase(className, u"button"))
        return ChildKind::kButton;
    return ChildKind::kGeneric;
}

WinRect LayoutChild(ChildKind kind, const WinRect& child, int oldWidth, int oldHeight, int newWidth, int newHeight,
                    const LayoutMetrics& metrics) {
    const float rx = Ratio(newWidth, oldWidth);
    const float ry = Ratio(newHeight, oldHeight);
    const int width = child.right - child.left;
    const int height = child.bottom - child.top;
    WinRect out;
    switch (kind) {
    case ChildKind::kListView:
        out.left = metrics.borderWidth;
        out.top = child.top;
        out.right = newWidth;  // left + (client width - border)
        out.bottom = child.top + newHeight - 3 * metrics.menuSize - metrics.menuSize / 2;
        break;
    case ChildKind::kButton: {
        out.left = Round(child.left * rx);
        out.right = out.left + Round(width * rx);
        const int fromBottom = oldHeight - child.top;
        out.top = newHeight - fromBottom;
        out.bottom = out.top + height;
        break;
    }
    case ChildKind::kGeneric:
        out.left = Round(child.left * rx);
        out.right = out.left + Round(width * rx);
        out.top = child.top;
        out.bottom = out.top + Round(height * ry);
        break;
    }
    return out;
}

bool NeedsPosition(int command) {
    return std::find(std::begin(kGpsMenuItems), std::end(kGpsMenuItems), command) != std::end(kGpsMenuItems);
}

char16_t AltShortcutKey(std::u16string_view menuText) {
    constexpr std::u16string_view kAlt = u"\tAlt+";
    const size_t at = menuText.find(kAlt);
    if (at == std::u16string_view::npos || menuText.size() != at + kAlt.size() + 1)
        return 0;
    const char16_t key = menuText.back();
    return key >= u'a' && key <= u'z' ? static_cast<char16_t>(key - 32) : key;
}

KeyBinding ExifKeyBinding(int virtualKey) {
    for (const KeyBinding& binding : kExifKeys)
        if (binding.key == virtualKey)
            return binding;
    return {virtualKey, ExifAction::kNone, 0};
}

}  // namespace vv
