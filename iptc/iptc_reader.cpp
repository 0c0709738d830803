#include "iptc_reader.h"

#include <cstdio>
#include <cstring>
#include <memory>

#include "metadata_segment.h"
#include "platform/platform.h"
#include "platform/input.h"
#include "xmp_import.h"

namespace iptc {
namespace {

constexpr size_t kHeaderBytes = 5;  // 0x1C, record, dataset, 16-bit length

// 1:90 (or a record-2 90) that selects UTF-8: the ISO 2022 escape ESC % G.
bool IsUtf8Escape(const char* text) { return std::strncmp(text, "\x1B%G", 3) == 0; }

bool SelectsUtf8(const char* text) {
    return IsUtf8Escape(text) || std::strstr(text, "utf") || std::strstr(text, "UTF");
}

bool IsHeader(const uint8_t* block, size_t position, size_t end, uint8_t record) {
    return position <= end && end - position >= 2 && block[position] == 0x1C && block[position + 1] == record;
}

void CopyCodedCharacterSet(IptcData& data, const char* text) {
    std::strncpy(data.codedCharacterSet, text, kFieldChars - 1);
    data.codedCharacterSet[kFieldChars - 1] = 0;
}

// Record 1 from `position`: only its character set matters here.
void WalkRecordOne(const uint8_t* buffer, size_t length, size_t position, IptcData& data) {
    char text[kDatasetTextBytes];
    while (IsHeader(buffer, position, length, 0x01)) {
        int dataset = 0;
        const int32_t declared = ReadIptcDataset(buffer, position, length, dataset, text, true);
        if (declared < 0) return;
        if (dataset == 90) {
            CopyCodedCharacterSet(data, text);
            if (SelectsUtf8(text)) data.utf8 = 1;
        }
        position += kHeaderBytes + static_cast<size_t>(declared);
    }
}

// Files without a 1:90 may still name their character set in a dataset 90
// further on; the first one of either record decides (a record-2 City that
// mentions "utf" selects UTF-8 too, as it always has).
void FindLateCharacterSet(const uint8_t* buffer, size_t length, size_t position, IptcData& data) {
    char text[kDatasetTextBytes];
    for (;;) {
        int dataset = 0;
        const int32_t declared = ReadIptcDataset(buffer, position, length, dataset, text, false);
        if (declared < 0) return;
        if (dataset == 90) {
            CopyCodedCharacterSet(data, text);
            if (SelectsUtf8(text)) data.utf8 = 1;
            return;
        }
        position += kHeaderBytes + static_cast<size_t>(declared);
    }
}

// Keywords and Supplemental Category gather every dataset, one per line.
void AccumulateLine(char16_t* field, std::u16string_view text, size_t byteLength) {
    size_t used = FieldView(field).size();
    if (used > 0 && used + 2 < kAccumulateLimit) {
        AppendField(field, u"\r\n");
        used += 2;
    }
    if (used + byteLength < kAccumulateLimit) AppendField(field, text);
}

// Returns true when the dataset filled a field.
bool StoreDataset(IptcData& data, int dataset, const char* text, bool& utf8) {
    const size_t byteLength = std::strlen(text);
    if (byteLength == 0) return false;
    if (dataset == 90 && IsUtf8Escape(text)) {
        utf8 = true;
        data.utf8 = 1;
        return false;
    }
    char16_t* field = IptcField(data, dataset);
    if (!field) return false;
    const std::u16string wide = utf8 ? platform::Utf8ToUtf16(text) : platform::AnsiToUtf16(text);
    switch (dataset) {
        case kSupplementalCategory:
        case kKeywords:
            AccumulateLine(field, wide, byteLength);
            break;
        case kCaption:
            // A caption split over several datasets is joined as it stands.
            if (field[0] == 0) SetField(field, wide);
            else if (FieldView(field).size() + byteLength < kAccumulateLimit) AppendField(field, wide);
            break;
        default:
            SetField(field, wide);
    }
    return dataset != kRecordVersion;
}

// Trims spaces (only spaces) at both ends of a field, in place.
void TrimSpaces(char16_t* field) {
    std::u16string_view v = FieldView(field);
    while (!v.empty() && v.front() == u' ') v.remove_prefix(1);
    while (!v.empty() && v.back() == u' ') v.remove_suffix(1);
    SetField(field, v);
}

void ReplaceAll(std::u16string& text, std::u16string_view from, std::u16string_view to) {
    for (size_t at = text.find(from); at != std::u16string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

}  // namespace

int32_t ReadIptcDataset(const uint8_t* block, size_t position, size_t end, int& dataset,
                        char (&text)[kDatasetTextBytes], bool recordOneOnly) {
    text[0] = 0;
    if (position > end || end - position < kHeaderBytes) return -1;
    const uint8_t* h = block + position;
    if (h[0] != 0x1C || !(h[1] == 0x01 || (h[1] == 0x02 && !recordOneOnly))) return -1;
    dataset = h[2];
    const int32_t declared = h[3] << 8 | h[4];
    if (declared < 1) return 0;

    size_t n = static_cast<size_t>(declared);
    if (n > kDatasetTextBytes - 1) n = kDatasetTextBytes - 1;
    if (n > end - position - kHeaderBytes) n = end - position - kHeaderBytes;
    if (n < 1) return -1;

    // Line breaks become CR LF pairs so every edit control shows them; a CR
    // LF pair in the data therefore becomes two breaks.
    char work[kCleanBufferBytes];
    size_t w = 0;
    for (const uint8_t* v = h + kHeaderBytes; v != h + kHeaderBytes + n; ++v) {
        const char c = static_cast<char>(*v);
        if (c == '\r' || c == '\n') {
            if (w < kCleanFillLimit - 1) { work[w++] = '\r'; work[w++] = '\n'; }
        } else if (c == '\t') {
            if (w < kCleanFillLimit - 3) for (int i = 0; i < 4; ++i) work[w++] = ' ';
        } else if (w < kCleanFillLimit) {
            work[w++] = c == 0 ? ' ' : c;
        }
    }
    if (w > kDatasetTextBytes - 1) w = kDatasetTextBytes - 1;
    while (w > 0 && work[w - 1] == ' ') --w;
    std::memcpy(text, work, w);
    text[w] = 0;
    return declared;
}

namespace {

// Finds the datasets of record 2 and decides their character set, as the
// reader does; then hands each dataset of the record-2 walk, in order, to
// `each` (number, cleaned text, whether it is UTF-8). False when there is no
// record 2.
template <typename Each>
bool WalkRecordTwo(const uint8_t* buffer, size_t length, IptcData& data, bool searchResource, Each each) {
    data.utf8 = 0;
    if (!buffer || length < 2) return false;

    size_t start = 0;
    if (searchResource) {
        static constexpr uint8_t kIptcResource[6] = {'8', 'B', 'I', 'M', 0x04, 0x04};
        size_t p = 0;
        while (p + 5 < length && std::memcmp(buffer + p, kIptcResource, 6) != 0) ++p;
        if (p + 5 >= length) return false;
        start = p;
    }

    // Every record-1 run before record 2 is walked for its character set.
    size_t record2 = length;
    for (size_t q = start; q <= length - 2; ++q) {
        if (buffer[q] != 0x1C) continue;
        if (buffer[q + 1] == 0x01) WalkRecordOne(buffer, length, q, data);
        if (buffer[q + 1] == 0x02) {
            record2 = q;
            break;
        }
    }
    if (record2 == length) return false;

    if (data.codedCharacterSet[0] == 0 && !data.utf8) FindLateCharacterSet(buffer, length, record2, data);

    bool utf8 = data.utf8 != 0;
    char text[kDatasetTextBytes];
    for (size_t position = record2;;) {
        int dataset = 0;
        const int32_t declared = ReadIptcDataset(buffer, position, length, dataset, text, false);
        if (declared < 0) break;
        each(dataset, text, utf8);
        position += kHeaderBytes + static_cast<size_t>(declared);
    }
    return true;
}

}  // namespace

int ParseIptcBlock(const uint8_t* buffer, size_t length, IptcData& data, bool searchResource) {
    int count = 0;
    WalkRecordTwo(buffer, length, data, searchResource, [&](int dataset, const char* text, bool& utf8) {
        if (StoreDataset(data, dataset, text, utf8)) ++count;
    });
    return count;
}

std::vector<IptcOccurrence> ListIptcDatasets(const uint8_t* buffer, size_t length, bool searchResource) {
    std::vector<IptcOccurrence> list;
    auto scratch = std::make_unique<IptcData>();
    ClearIptcData(*scratch);
    WalkRecordTwo(buffer, length, *scratch, searchResource, [&](int dataset, const char* text, bool& utf8) {
        if (text[0] == 0) return;
        if (dataset == 90 && IsUtf8Escape(text)) {
            utf8 = true;
            return;
        }
        list.push_back({dataset, utf8 ? platform::Utf8ToUtf16(text) : platform::AnsiToUtf16(text)});
    });
    return list;
}

int LoadIptcData(std::u16string_view fileName, IptcData& data) {
    auto file = platform::Input::Open(fileName);
    return file ? LoadIptcData(*file, data) : 0;
}

int LoadIptcData(platform::File& file, IptcData& data) {
    uint32_t length = 0, offset = 0;
    int32_t isTiff = 0;
    const std::vector<uint8_t> segment =
        LoadMetadataSegment(file, length, offset, kApp13Marker, false, &isTiff, false);
    // Kept in the record so that a writer can replace exactly this segment.
    data.isTiff = isTiff;
    data.app13Length = segment.empty() ? 0 : length;
    data.app13Offset = segment.empty() ? 0 : offset;
    if (!segment.empty()) {
        ParseIptcBlock(segment.data(), length, data, !isTiff);
        return 1;
    }
    if (isTiff) return 0;
    ImportXmpIntoIptc(file, data, 1, isTiff);
    return data.xmpLength != 0 ? 1 : 0;
}

int AppendIptcLine(char16_t* output, char16_t* fieldText, int32_t capacity, int32_t& counter,
                   const char* displayName, int dataset, int mode) {
    TrimSpaces(fieldText);
    if (fieldText[0] == 0) return 0;
    for (char16_t* c = fieldText; *c; ++c)
        if (*c == u'\r') *c = u' ';
    TrimSpaces(fieldText);
    std::u16string_view v = FieldView(fieldText);
    while (!v.empty() && v.back() == u'\n') v.remove_suffix(1);
    SetField(fieldText, v);
    TrimSpaces(fieldText);
    const std::u16string_view value = FieldView(fieldText);
    if (value.empty()) return 0;

    const std::u16string name = platform::Utf8ToUtf16(displayName ? displayName : "");
    const int32_t valueLength = static_cast<int32_t>(value.size());
    std::u16string line;
    switch (mode) {
        case 0:
        case 1:
            line.append(value).append(u"\n");
            if (mode == 1) counter += valueLength + 2;
            break;
        case 2: {
            char number[16];
            std::snprintf(number, sizeof number, "%d=", dataset);
            line.append(platform::Utf8ToUtf16(number)).append(value).append(u"\n");
            counter += valueLength + 7;
            break;
        }
        case 3:
            line.append(name).append(u" - ").append(value).append(u"\n");
            counter += static_cast<int32_t>(name.size()) + valueLength + 5;
            break;
        default:
            return 0;
    }
    if (mode != 0 && counter >= capacity) return 0;

    // The counter over-estimates every line, so this only bites in mode 0.
    if (!output || capacity < 1) return 0;
    const size_t used = FieldView(output, static_cast<size_t>(capacity)).size();
    if (used >= static_cast<size_t>(capacity) || line.size() > static_cast<size_t>(capacity) - 1 - used)
        return 0;
    std::memcpy(output + used, line.data(), line.size() * sizeof(char16_t));
    output[used + line.size()] = 0;
    return 1;
}

std::u16string RecordVersionText(const IptcData& data) {
    if (FieldView(data.recordVersion).size() < 2) return {};
    char text[32];
    std::snprintf(text, sizeof text, "%d.%d", static_cast<int>(data.recordVersion[1]),
                  static_cast<int>(data.recordVersion[2]));
    return platform::Utf8ToUtf16(text);
}

std::u16string IptcTagText(const IptcData& data, int dataset) {
    const char16_t* field = IptcField(data, dataset);
    if (!field) return {};
    std::u16string text(FieldView(field));
    switch (dataset) {
        case kKeywords:
            ReplaceAll(text, u"\r\n", u", ");
            ReplaceAll(text, u"\n", u",");
            return text;
        case kReleaseDate:
        case kCreatedDate: {
            if (text.size() < 4) return {};
            // Characters 1-4, 5-6 and 7-8, whatever is there of them.
            auto part = [&](size_t at, size_t n) { return at < text.size() ? text.substr(at, n) : u""; };
            return part(0, 4) + u":" + part(4, 2) + u":" + part(6, 2);
        }
        default:
            return text;
    }
}

}  // namespace iptc
