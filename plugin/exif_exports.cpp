// The EXIF data exports: the whole table as text lines, one tag (or the GPS
// position, or a map action), and where the EXIF data sits in the file.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "exif/container.h"
#include "exif/exif_reader.h"
#include "exif/gps.h"
#include "exif/map_links.h"
#include "exif/tag_record.h"
#include "makernotes/makernote_rules.h"
#include "output_buffer.h"
#include "export_inputs.h"
#include "plugin_api.h"
#include "platform/input.h"

namespace vv {
namespace {

// The viewer's format codes that choose a container locator.
constexpr int32_t kFormatPng = 3;
constexpr int32_t kFormatHeif = 115;
constexpr int32_t kFormatCr3 = 118;

// Action codes passed in place of LoadTag_EXIF_W's capacity.
constexpr int32_t kActionKml = -1;
constexpr int32_t kActionWebMap = -2;
// The KML file must outlive the program that opens it for a moment.
constexpr unsigned kKmlLingerMilliseconds = 3000;
// Weights of the latitude (402) and longitude (404) rows: both present = 6.
constexpr int kLatitudeWeight = 2;
constexpr int kLongitudeWeight = 4;
constexpr int kPositionWeight = kLatitudeWeight + kLongitudeWeight;

constexpr uint32_t kTagImageDescription = 270;
constexpr uint32_t kTagUserComment = 37510;

// A table's reading; the long values it made are freed on every way out.
class ExifTable {
public:
    explicit ExifTable(exif::TagRecordTable& table) : table_(table) {
        // Rows an earlier reading left are freed and then cleared as taken.
        exif::FreeTagRecordTable(&table_, 0);
        table_.zeroedRows = 0;
    }
    ~ExifTable() { exif::FreeTagRecordTable(&table_, 0); }
    ExifTable(const ExifTable&) = delete;
    ExifTable& operator=(const ExifTable&) = delete;

    bool Read(platform::File& input) {
        int bigEndian = 0;
        return exif::ReadExifTags(input, table_, &rows_, &bigEndian, makernotes::StandardMakerNoteRules()) == 1;
    }
    const exif::TagRecordTable& table() const { return table_; }
    uint32_t rows() const { return std::min(rows_, exif::kTagTableRows); }

private:
    exif::TagRecordTable& table_;
    uint32_t rows_ = 0;
};

struct TableDeleter {
    void operator()(exif::TagRecordTable* table) const { exif::FreeTagRecordTable(table, 1); }
};
using OwnedTable = std::unique_ptr<exif::TagRecordTable, TableDeleter>;

std::u16string Wide(const char* utf8, size_t maxBytes) {
    return platform::Utf8ToUtf16(std::string_view(utf8, strnlen(utf8, maxBytes)));
}

std::u16string Ascii(const std::string& text) { return std::u16string(text.begin(), text.end()); }

// The line a row gives in a mode, made in `line` (one buffer serves every
// row of a call); empty when the mode leaves the row out.
void FormatLine(const exif::TagRecord& row, int32_t mode, std::u16string& line) {
    line.clear();
    const std::string_view name(row.name, strnlen(row.name, exif::kTagNameSize));
    const std::string_view value(row.value, strnlen(row.value, exif::kTagValueSize));
    if (name.empty() || (value.empty() && mode != 3) || mode < 1 || mode > 3) return;
    if (mode == 2) {
        const std::string number = std::to_string(static_cast<int32_t>(row.tag));
        line.append(number.begin(), number.end());
        line += u'=';
    }
    if (mode == 3) {
        platform::AppendUtf8AsUtf16(line, name);
        if (!value.empty()) line += u" - ";
    }
    platform::AppendUtf8AsUtf16(line, value);
    line += u'\n';
}

// Copies text into a cleared buffer of capacity characters; the last
// character is always a terminator.
void WriteTerminated(char16_t* out, int32_t capacity, const std::u16string& text) {
    const size_t n = std::min(text.size(), static_cast<size_t>(capacity));
    std::copy(text.begin(), text.begin() + static_cast<ptrdiff_t>(n), out);
    out[capacity - 1] = u'\0';
}

void ShowPosition(const char16_t* path, const ExifTable& exif, int32_t action) {
    int weight = 0;
    for (uint32_t i = 0; i < exif.rows(); ++i) {
        if (exif.table().rows[i].tag == exif::kGpsTagBase + 2) weight += kLatitudeWeight;
        if (exif.table().rows[i].tag == exif::kGpsTagBase + 4) weight += kLongitudeWeight;
    }
    if (weight < kPositionWeight) return;
    const exif::GpsPosition position = exif::ComputeGpsPosition(exif.table(), exif.rows());
    if (action == kActionKml) {
        std::u16string kmlPath;
        exif::ExportKmlAndOpen(path, position.longitude, position.latitude, position.heading, kmlPath);
        if (!kmlPath.empty()) {
            platform::SleepMilliseconds(kKmlLingerMilliseconds);
            platform::RemoveFile(kmlPath);
        }
    } else {
        exif::OpenMapLink(exif::MapService::kGoogleMaps, position.latitude, position.longitude);
    }
}

}  // namespace

namespace {

// The lines into a buffer already cleared (each caller clears it once: a
// second clear of 16384 characters would cost as much as reading the file).
int32_t WriteExifLines(platform::File& input, exif::TagRecordTable& table, char16_t* out, int32_t capacity,
                       int32_t mode) {
    ExifTable exif(table);
    if (!exif.Read(input)) return 0;
    size_t used = 0;
    uint32_t visited = 0;
    std::u16string line;
    line.reserve(exif::kTagNameSize + exif::kTagValueSize + 16);
    for (; visited < exif.rows(); ++visited) {
        FormatLine(exif.table().rows[visited], mode, line);
        if (line.empty()) continue;
        if (used + line.size() >= static_cast<size_t>(std::max(capacity, 0))) break;
        std::copy(line.begin(), line.end(), out + used);
        used += line.size();
    }
    return static_cast<int32_t>(visited);
}

}  // namespace

int32_t LoadExifData(platform::File& input, exif::TagRecordTable& table, char16_t* out, int32_t capacity,
                     int32_t mode) {
    if (!out) capacity = 0;
    ClearWide(out, capacity);
    return WriteExifLines(input, table, out, capacity, mode);
}

int32_t LoadData_EXIF_W(const char16_t* path, char16_t* out, int32_t capacity, int32_t mode) {
    if (!out) capacity = 0;
    ClearWide(out, capacity);
    const OwnedTable table(exif::AllocateUnclearedTagRecordTable());
    if (!table || !path) return 0;
    const auto input = platform::Input::Open(path);
    return input ? WriteExifLines(*input, *table, out, capacity, mode) : 0;
}

namespace {

// One tag's answer into a buffer already cleared.
int32_t WriteExifTag(platform::File& input, exif::TagRecordTable& table, const char16_t* path, int32_t tag,
                     char16_t* out, int32_t capacity) {
    const bool writes = out && capacity >= 1;
    ExifTable exif(table);
    exif.Read(input);
    if (static_cast<uint32_t>(tag) == exif::kGpsPositionPseudoTag) {
        if (!writes) return 1;
        // Without a latitude this reads "100.000000 0.000000".
        const exif::GpsPosition position = exif::ComputeGpsPosition(exif.table(), exif.rows());
        char text[128];
        std::snprintf(text, sizeof text, "%f %f", position.latitude, position.longitude);
        WriteTerminated(out, capacity, Ascii(text));
        return 1;
    }

    // Only the low 16 bits name the tag.
    const exif::TagRecord* row =
        exif::FindTagRecord(exif.table(), exif.rows(), static_cast<uint32_t>(tag) & 0xFFFF);
    if (!row) return 1;
    if (capacity == kActionKml || capacity == kActionWebMap) {
        ShowPosition(path, exif, capacity);
    } else if (writes) {
        const bool useLong = (row->tag == kTagImageDescription || row->tag == kTagUserComment) && row->longValue;
        const std::u16string value =
            useLong ? Wide(row->longValue, exif::kLongValueSize) : Wide(row->value, exif::kTagValueSize);
        WriteTerminated(out, capacity, value);
    }
    return 1;
}

}  // namespace

int32_t LoadExifTag(platform::File& input, exif::TagRecordTable& table, const char16_t* path, int32_t tag,
                    char16_t* out, int32_t capacity) {
    if (out && capacity >= 1) ClearWide(out, capacity);
    return WriteExifTag(input, table, path, tag, out, capacity);
}

int32_t LoadTag_EXIF_W(const char16_t* path, int32_t tag, char16_t* out, int32_t capacity) {
    if (out && capacity >= 1) ClearWide(out, capacity);
    const OwnedTable table(exif::AllocateUnclearedTagRecordTable());
    if (!table) return 0;
    // A file that cannot be opened reads as one without EXIF data.
    std::unique_ptr<platform::File> input;
    if (path) input = platform::Input::Open(path);
    if (!input) input = platform::Input::FromMemory(nullptr, 0);
    if (!input) return 0;
    return WriteExifTag(*input, *table, path, tag, out, capacity);
}

uint64_t GetExifInfos(const char16_t* path, uint32_t* size, uint32_t* out2, uint32_t* out3, uint32_t* out4,
                      uint32_t* out5, int32_t formatCode) {
    ClearOutputs({size, out2, out3, out4, out5});
    if (!path) return 0;
    const auto input = platform::Input::Open(path);
    return input ? LocateExifInfos(*input, size, out2, out3, out4, out5, formatCode) : 0;
}

uint64_t LocateExifInfos(platform::File& input, uint32_t* size, uint32_t* out2, uint32_t* out3,
                         uint32_t* out4, uint32_t* out5, int32_t formatCode) {
    ClearOutputs({size, out2, out3, out4, out5});
    uint32_t extent = 0;
    uint32_t offset = 0;
    switch (formatCode) {
        case kFormatHeif:
            offset = exif::LocateHeifExif(input, extent);
            break;
        case kFormatPng:
            offset = exif::LocatePngExif(input);
            break;
        case kFormatCr3: {
            exif::Cr3Boxes boxes;
            offset = exif::LocateCr3Exif(input, boxes);
            extent = boxes.moovSize;
            if (out2) *out2 = boxes.cmt2;
            if (out3) *out3 = boxes.cmt3;
            if (out4) *out4 = boxes.cmt4;
            break;
        }
        default:
            offset = exif::LocateExifDefault(input, extent);
            break;
    }
    if (size) *size = extent;
    return offset;
}

}  // namespace vv
