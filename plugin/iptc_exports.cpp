// The IPTC data exports: every field of a file's IPTC record as text lines,
// or one field by dataset number. Both load the record afresh (the file's IIM
// block, or its XMP packet) and free it before returning.
#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "export_inputs.h"
#include "iptc/iptc_reader.h"
#include "output_buffer.h"
#include "plugin_api.h"
#include "platform/input.h"

namespace vv {
namespace {

// The record is too large for the viewer's stack.
std::unique_ptr<iptc::IptcData> NewRecord() { return std::unique_ptr<iptc::IptcData>(new (std::nothrow) iptc::IptcData); }

// The record filled from the input; null when the input has no IPTC source.
iptc::IptcData* LoadRecord(platform::File& input, iptc::IptcData& record) {
    iptc::ClearIptcData(record);
    return iptc::LoadIptcData(input, record) ? &record : nullptr;
}

// Copies at most `limit` characters, always leaving the output terminated.
void CopyOut(char16_t* out, int32_t capacity, std::u16string_view text, size_t limit) {
    if (!out || capacity < 1) return;
    const size_t n = std::min({text.size(), limit, static_cast<size_t>(capacity) - 1});
    std::memcpy(out, text.data(), n * sizeof(char16_t));
    out[n] = 0;
}

// A path export: the caller's buffer cleared once, the file opened once, a
// record made for it, and `write` given both.
template <typename Write>
int32_t FromPath(const char16_t* path, char16_t* out, int32_t capacity, Write write) {
    ClearWide(out, capacity);
    try {
        const auto input = path ? platform::Input::Open(path) : nullptr;
        const auto record = input ? NewRecord() : nullptr;
        return record ? write(*input, *record) : 0;
    } catch (...) {
        return 0;  // nothing may cross the export boundary
    }
}

// The IPTC lines into a buffer already cleared (each export clears it once).
int32_t WriteIptcText(platform::File& input, iptc::IptcData& record, char16_t* out, int32_t capacity, int32_t mode) {
    try {
        iptc::IptcData* data = LoadRecord(input, record);
        if (!data || !out) return 0;
        int32_t counter = 0;
        int32_t entries = 0;
        char16_t version[iptc::kFieldChars] = {};
        iptc::SetField(version, iptc::RecordVersionText(*data));
        entries += iptc::AppendIptcLine(out, version, capacity, counter, iptc::IptcDatasetTable[0].name, 0, mode);
        for (int row = 1; row <= iptc::kFieldCount; ++row) {
            const iptc::IptcDatasetRow& r = iptc::IptcDatasetTable[row];
            entries += iptc::AppendIptcLine(out, data->fields[row - 1], capacity, counter, r.name, r.dataset, mode);
        }
        return entries;
    } catch (...) {
        return 0;  // nothing may cross the export boundary
    }
}

}  // namespace

int32_t LoadIptcText(platform::File& input, iptc::IptcData& record, char16_t* out, int32_t capacity, int32_t mode) {
    ClearWide(out, capacity);
    return WriteIptcText(input, record, out, capacity, mode);
}

int32_t LoadData_IPTC_W(const char16_t* path, char16_t* out, int32_t capacity, int32_t mode) {
    return FromPath(path, out, capacity, [&](platform::File& input, iptc::IptcData& record) {
        return WriteIptcText(input, record, out, capacity, mode);
    });
}

namespace {

// One dataset into a buffer already cleared.
int32_t WriteIptcTag(platform::File& input, iptc::IptcData& record, int32_t dataset, char16_t* out, int32_t capacity) {
    try {
        iptc::IptcData* data = LoadRecord(input, record);
        if (!data) return 0;
        const std::u16string text = iptc::IptcTagText(*data, dataset);
        const bool isDate = dataset == iptc::kReleaseDate || dataset == iptc::kCreatedDate;
        CopyOut(out, capacity, text, isDate ? 16 : iptc::kFieldChars - 1);
        return 1;
    } catch (...) {
        return 0;
    }
}

}  // namespace

int32_t LoadIptcTag(platform::File& input, iptc::IptcData& record, int32_t dataset, char16_t* out, int32_t capacity) {
    ClearWide(out, capacity);
    return WriteIptcTag(input, record, dataset, out, capacity);
}

int32_t LoadTag_IPTC_W(const char16_t* path, int32_t dataset, char16_t* out, int32_t capacity) {
    return FromPath(path, out, capacity, [&](platform::File& input, iptc::IptcData& record) {
        return WriteIptcTag(input, record, dataset, out, capacity);
    });
}

}  // namespace vv
