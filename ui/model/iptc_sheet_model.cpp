#include "iptc_sheet_model.h"

#include <cstdio>
#include <memory>
#include <new>

#include "iptc/iptc_reader.h"
#include "iptc/iptc_writer.h"
#include "iptc/metadata_segment.h"
#include "iptc/xmp_import.h"
#include "placeholder/placeholders.h"
#include "platform/input.h"
#include "platform/platform.h"
#include "platform/text.h"

namespace vv {
namespace {

using iptc::IptcData;

// The twenty fields the sheet edits, in the order the change check reads
// them.
constexpr int kEditedFields[] = {
    iptc::kObjectName, iptc::kCategory,    iptc::kSupplementalCategory, iptc::kPriority, iptc::kKeywords,
    iptc::kSpecialInstructions, iptc::kCreatedDate, iptc::kByline, iptc::kBylineTitle, iptc::kCity,
    iptc::kSubLocation, iptc::kProvinceState, iptc::kCountry, iptc::kTransmissionReference, iptc::kHeadline,
    iptc::kCredit, iptc::kSource, iptc::kCopyright, iptc::kCaption, iptc::kCaptionWriter,
};

// How a batch in append mode joins a file's own text with the edited one.
enum class AppendRule { kComma, kLines, kKeepOld, kUntouched };

struct MergeRow {
    int dataset;
    AppendRule rule;
};

// Every text of the record, the record version first. Contact is never
// merged; single-valued fields keep a file's own value when it has one.
constexpr MergeRow kMergeRows[] = {
    {iptc::kRecordVersion, AppendRule::kKeepOld},
    {5, AppendRule::kComma},     {7, AppendRule::kKeepOld},    {10, AppendRule::kKeepOld},
    {15, AppendRule::kComma},    {20, AppendRule::kLines},     {22, AppendRule::kKeepOld},
    {25, AppendRule::kLines},    {30, AppendRule::kKeepOld},   {35, AppendRule::kKeepOld},
    {40, AppendRule::kLines},    {45, AppendRule::kKeepOld},   {47, AppendRule::kKeepOld},
    {50, AppendRule::kKeepOld},  {55, AppendRule::kKeepOld},   {60, AppendRule::kKeepOld},
    {65, AppendRule::kKeepOld},  {70, AppendRule::kKeepOld},   {75, AppendRule::kKeepOld},
    {80, AppendRule::kComma},    {85, AppendRule::kComma},     {90, AppendRule::kComma},
    {92, AppendRule::kComma},    {95, AppendRule::kComma},     {100, AppendRule::kKeepOld},
    {101, AppendRule::kComma},   {103, AppendRule::kComma},    {105, AppendRule::kLines},
    {110, AppendRule::kComma},   {115, AppendRule::kComma},    {116, AppendRule::kComma},
    {118, AppendRule::kUntouched}, {120, AppendRule::kLines},  {121, AppendRule::kKeepOld},
    {122, AppendRule::kComma},
};
static_assert(sizeof kMergeRows / sizeof kMergeRows[0] == iptc::kFieldCount + 1, "one rule per text");

using platform::EqualsIgnoringCase;

std::u16string_view Text(const IptcData& data, int dataset) { return iptc::FieldView(iptc::IptcField(data, dataset)); }

void AppendMerge(char16_t* field, std::u16string_view old, std::u16string_view separator) {
    const std::u16string edited(iptc::FieldView(field));
    if (old.size() + edited.size() >= iptc::kFieldChars - 1) return;  // too long together: the edited text stays
    std::u16string joined(old);
    if (!old.empty() && old.back() != separator.front()) joined += separator;
    joined += edited;
    iptc::SetField(field, joined);
}

}  // namespace

// ------------------------------------------------------------ settings

void ReadIptcSheetSettings(IptcData& data) {
    const std::u16string_view ini = iptc::FieldView(data.settingsPath, iptc::kPathChars);
    auto read = [&](const char16_t* key, int fallback) {
        return ini.empty() ? fallback : platform::ReadSettingInt(ini, kIptcSection, key, fallback);
    };
    data.keepOrgDate = read(u"KeepOrgDate", 1);
    data.loadXmp = read(u"LoadXMP", 1);
    data.replaceEmpty = read(u"ReplaceEmpty", 0);
    data.skipEmpty = read(u"SkipEmpty", 0);
    data.append = read(u"Append", 0);
    data.saveTab = read(u"SaveTab", 0);
    data.lastTab = read(u"LastTab", 0);
}

int ReadIptcBatchMode(std::u16string_view settingsPath) {
    return settingsPath.empty() ? 2 : platform::ReadSettingInt(settingsPath, kIptcSection, u"BatchMode", 2);
}

void WriteIptcSetting(std::u16string_view settingsPath, std::u16string_view key, int value) {
    if (settingsPath.empty()) return;
    char number[16];
    std::snprintf(number, sizeof number, "%d", value);
    platform::WriteSettingString(settingsPath, kIptcSection, key, platform::Utf8ToUtf16(number));
}

// ------------------------------------------------------------ loading

int LoadIptcSheetFile(IptcData& data, xmp::XmpRows* xmpRows) {
    data.recordVersion[0] = 0;
    for (auto& field : data.fields) field[0] = 0;
    data.codedCharacterSet[0] = 0;
    data.utf8 = 0;
    data.isTiff = 0;
    data.xmpLength = data.xmpOffset = 0;
    data.app13Length = data.app13Offset = 0;
    if (xmpRows) xmpRows->clear();
    // One opening of the file serves its IPTC block and its XMP packet.
    auto file = platform::Input::Open(iptc::FieldView(data.fileName, iptc::kPathChars));
    if (!file) return 0;
    const std::vector<uint8_t> segment = iptc::LoadMetadataSegment(*file, data.app13Length, data.app13Offset,
                                                                   iptc::kApp13Marker, false, &data.isTiff, false);
    int count = 0;
    if (!segment.empty()) count = iptc::ParseIptcBlock(segment.data(), data.app13Length, data, !data.isTiff);
    const bool import = count == 0 && data.loadXmp == 1;
    if (data.isTiff || (!import && !xmpRows)) return count;
    xmp::XmpRows own;
    xmp::XmpRows& rows = xmpRows ? *xmpRows : own;
    iptc::ReadXmpRows(*file, data, rows);
    if (import && data.xmpLength != 0) {
        if (!rows.empty()) count = iptc::ImportXmpRows(rows, data);
        data.utf8 = 1;
    }
    return count;
}

// ------------------------------------------------------------ file line

std::u16string IptcFileLine(std::u16string_view fileName, int index, int count, bool readOnly) {
    char position[64];
    std::snprintf(position, sizeof position, "(File: %d / %d)", index + 1, count);
    std::u16string line(fileName);
    line += u"\r\n";
    if (readOnly) line += u"Warning: This file is set as READ ONLY!\r\n";
    line += platform::Utf8ToUtf16(position);
    return line;
}

// ------------------------------------------------------------ edits

void CutPriority(IptcData& data) {
    char16_t* priority = iptc::IptcField(data, iptc::kPriority);
    if (priority[0] >= 0xD800 && priority[0] <= 0xDBFF) priority[2] = 0;  // a pair is one character
    else if (priority[0]) priority[1] = 0;
}

bool IptcTextsChanged(const IptcData& now, const IptcData& snapshot) {
    for (int dataset : kEditedFields)
        if (!EqualsIgnoringCase(Text(now, dataset), Text(snapshot, dataset))) return true;
    return false;
}

void ExpandIptcPlaceholders(IptcData& data, std::u16string_view fileName, int counter) {
    placeholder::PlaceholderContext context;
    context.filePath = fileName;
    context.settingsPath = iptc::FieldView(data.settingsPath, iptc::kPathChars);
    context.counter = counter;
    // One session for all fields: the file is read once, whatever they hold.
    std::unique_ptr<placeholder::PlaceholderSession> session;
    for (int dataset : kEditedFields) {
        if (dataset == iptc::kPriority) continue;  // a digit, never a template
        char16_t* field = iptc::IptcField(data, dataset);
        const std::u16string_view text = iptc::FieldView(field);
        if (text.find(u'$') == std::u16string_view::npos) continue;
        try {
            if (!session) session = std::make_unique<placeholder::PlaceholderSession>(context);
        } catch (const std::bad_alloc&) {
            return;  // no memory: the texts stay as typed
        }
        session->Expand(text, field, iptc::kFieldChars);
    }
}

void MergeBatchTexts(IptcData& edited, const IptcData& own) {
    for (const MergeRow& row : kMergeRows) {
        if (row.rule == AppendRule::kUntouched) continue;
        char16_t* field = iptc::IptcField(edited, row.dataset);
        const std::u16string_view old = Text(own, row.dataset);
        if (edited.append) {
            switch (row.rule) {
                case AppendRule::kComma: AppendMerge(field, old, u","); break;
                case AppendRule::kLines: AppendMerge(field, old, u"\r\n"); break;
                default:
                    if (!old.empty()) iptc::SetField(field, old);
                    break;
            }
            continue;
        }
        const bool keepOld = (edited.replaceEmpty && !old.empty()) || (edited.skipEmpty && field[0] == 0);
        if (keepOld) iptc::SetField(field, old);
    }
}

// ------------------------------------------------------------ writing

namespace {

// A path the viewer could not have given whole is refused, never written.
bool RefuseLongPath(std::u16string_view file, const IptcErrorSink& onError) {
    if (file.size() <= iptc::kViewerPathChars) return false;
    if (onError) onError(u"Can't open file: " + std::u16string(file) + u"\n\nThe path is too long.");
    return true;
}

}  // namespace

int WriteIptcSheetFile(const IptcData& data, int counter, const IptcErrorSink& onError) {
    if (data.isTiff) return 1;
    const std::u16string_view file = iptc::FieldView(data.fileName, iptc::kPathChars);
    if (RefuseLongPath(file, onError)) return 0;
    auto expanded = std::make_unique<IptcData>(data);
    ExpandIptcPlaceholders(*expanded, file, counter);
    std::u16string error;
    const int result = iptc::WriteIptcToJpeg(file, data.app13Offset, data.app13Length, *expanded, error);
    if (!result && onError) onError(error);
    return result;
}

bool WriteIptcBatch(const std::vector<std::u16string>& names, const IptcData& edited, const IptcErrorSink& onError) {
    auto work = std::make_unique<IptcData>();
    auto own = std::make_unique<IptcData>();
    const bool merge = edited.replaceEmpty || edited.skipEmpty || edited.append;
    bool allWritten = true;
    int counter = 0;
    bool previousWasTiff = false;
    for (const std::u16string& name : names) {
        ++counter;
        if (RefuseLongPath(name, onError)) {
            allWritten = false;
            continue;
        }
        *work = edited;
        iptc::SetField(work->fileName, name, iptc::kPathChars);
        iptc::LoadMetadataSegment(name, work->app13Length, work->app13Offset, iptc::kApp13Marker, true,
                                  &work->isTiff, false);
        const bool tiff = work->isTiff != 0;
        // The file after a TIFF keeps the typed text: its placeholders are
        // not expanded (the batch run has always worked that way).
        const bool expand = !previousWasTiff;
        previousWasTiff = tiff;
        if (tiff) continue;  // TIFF files are never written
        if (expand) ExpandIptcPlaceholders(*work, name, counter);
        if (merge) {
            iptc::ClearIptcData(*own);
            iptc::SetField(own->fileName, name, iptc::kPathChars);
            own->loadXmp = edited.loadXmp;
            LoadIptcSheetFile(*own);
            MergeBatchTexts(*work, *own);
        }
        std::u16string error;
        if (!iptc::WriteIptcToJpeg(name, work->app13Offset, work->app13Length, *work, error)) {
            allWritten = false;
            if (onError) onError(error);
        }
    }
    return allWritten;
}

}  // namespace vv
