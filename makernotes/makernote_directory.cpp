#include "makernote_directory.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "exif/exif_limits.h"
#include "makernote_limits.h"

namespace makernotes {
namespace {

using namespace tiff;  // field types

void FormatEnumeration(const MakerEntry& e, const Enumeration& en) {
    const int32_t value = en.sign == Sign::kSigned ? e.Signed16() : static_cast<int32_t>(e.Unsigned16());
    for (size_t i = 0; i < en.size; ++i) {
        if (en.texts[i].value == value) return exif::SetRowValue(e.row(), en.texts[i].text);
    }
    if (*en.otherwise)
        SetValuef(e.row(), en.otherwise, en.printed == Sign::kSigned ? e.Signed16() : static_cast<int32_t>(e.Unsigned16()));
}

void FormatNumbers(const MakerEntry& e) {
    const tiff::Entry& entry = e.entry();
    const uint32_t size = tiff::TypeSize(entry.type);
    if (size == 0 || size == 8) return SetValuef(e.row(), "%u", entry.valueField);
    uint8_t bytes[kGenericNumbersLimit * 4];
    const size_t want = std::min<uint64_t>(sizeof bytes, uint64_t{entry.count} * size);
    const size_t got = exif::ReadRawBlock(e.context, bytes, want);
    const int order = e.context.bigEndian();
    std::string out;
    for (size_t i = 0; i + size <= got && out.size() < exif::kValueTextLimit; i += size) {
        const uint8_t* b = bytes + i;
        char text[16];
        switch (entry.type) {
            case kSByte: std::snprintf(text, sizeof text, "%d", static_cast<int8_t>(b[0])); break;
            case kShort: std::snprintf(text, sizeof text, "%u", platform::GetU16(b, order)); break;
            case kSShort: std::snprintf(text, sizeof text, "%d", static_cast<int16_t>(platform::GetU16(b, order))); break;
            case kSLong: std::snprintf(text, sizeof text, "%d", static_cast<int32_t>(platform::GetU32(b, order))); break;
            case kLong: std::snprintf(text, sizeof text, "%u", platform::GetU32(b, order)); break;
            default:
                if (size == 4) std::snprintf(text, sizeof text, "%u", platform::GetU32(b, order));
                else std::snprintf(text, sizeof text, "%u", b[0]);
                break;
        }
        if (!out.empty()) out += ' ';
        out += text;
    }
    exif::SetRowValue(e.row(), out);
}

void FormatRationals(const MakerEntry& e) {
    const tiff::Entry& entry = e.entry();
    std::string out;
    const uint32_t n = std::min(entry.count, kGenericRationalsLimit);
    for (uint32_t i = 0; i < n; ++i) {
        const uint64_t offset = uint64_t{entry.valueField} + 8ull * i;
        if (offset > UINT32_MAX) break;
        const std::string one = tiff::FormatSingleRational(e.context.input, e.context.base,
                                                           static_cast<uint32_t>(offset),
                                                           entry.type == kSRational);
        if (one.empty()) break;
        if (i > 0) out += ' ';
        out += one;
    }
    exif::SetRowValue(e.row(), out);
}

}  // namespace

uint16_t MakerEntry::Unsigned16() const {
    const tiff::Entry& e = entry();
    switch (rule) {
        case ValueRule::kLowHalfOfWord:
            return static_cast<uint16_t>(e.valueField & 0xFFFF);
        case ValueRule::kLeadingShort:
            return platform::GetU16(e.fieldBytes, context.bigEndian());
    }
    return 0;
}

int32_t MakerEntry::Signed16() const { return static_cast<int16_t>(Unsigned16()); }

const char* EnumerationText(const Enumeration& e, int64_t value) {
    for (size_t i = 0; i < e.size; ++i)
        if (e.texts[i].value == value) return e.texts[i].text;
    return nullptr;
}

int32_t RevisitDirectoryCount(platform::Cursor& in, uint32_t rowsBefore) {
    const uint32_t entryCount = in.U16();
    if (!in.ok()) return -1;
    if (rowsBefore >= kMakerNoteRowLimit || entryCount >= kMakerNoteRowLimit - rowsBefore) return -1;
    return static_cast<int32_t>(entryCount);
}

bool FindDirectoryEntry(platform::Cursor directory, uint16_t tag, tiff::Entry& found) {
    const uint32_t count = directory.U16();
    for (uint32_t i = 0; i < count && i < kMakerNoteRowLimit; ++i) {
        if (!tiff::ReadEntry(directory, found)) return false;
        if (found.tag == tag) return true;
    }
    return false;
}

const MakerTag* MakerTable::Find(uint16_t tag, uint16_t type) const {
    for (size_t i = 0; i < size; ++i)
        if (tags[i].tag == tag) return tags[i].onlyType == 0 || tags[i].onlyType == type ? &tags[i] : nullptr;
    return nullptr;
}

void SetValuef(exif::TagRecord& row, const char* format, ...) {
    char text[exif::kTagValueSize];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    exif::SetRowValue(row, text);
}

void SetExposureSeconds(exif::TagRecord& row, double seconds) {
    if (seconds > 0 && seconds < 0.25001) return SetValuef(row, "1/%.0f", std::floor(0.5 + 1.0 / seconds));
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", seconds);
    std::string out = text;
    if (out.size() > 2 && out.compare(out.size() - 2, 2, ".0") == 0) out.resize(out.size() - 2);
    exif::SetRowValue(row, out);
}

void FormatGenericValue(const MakerEntry& e) {
    switch (e.entry().type) {
        case kAscii:
        case kUndefined:
            return exif::ReadTextValue(e.context, /*characterCodeHeader=*/false);
        case kRational:
        case kSRational:
            return FormatRationals(e);
        default:
            return FormatNumbers(e);
    }
}

void FormatRational(const MakerEntry& e) {
    exif::SetRowValue(e.row(), tiff::FormatSingleRational(e.context.input, e.context.base, e.entry().valueField,
                                                          /*isSigned=*/false));
}

void DecodeMakerDirectory(platform::Cursor& in, platform::ByteOrder values, uint32_t offsetBase,
                          exif::TagRecordTable& table, uint32_t* rowCount, const MakerTable& maker,
                          const NoteContext& note) {
    uint8_t countBytes[2] = {};
    in.Some(countBytes, sizeof countBytes);
    const uint32_t entryCount = platform::GetU16(countBytes, in.bigEndian());
    platform::Cursor input = in.Whole();
    input.SetOrder(values);
    // rows + entries >= limit, written so that no sum can wrap.
    if (*rowCount >= kMakerNoteRowLimit || entryCount >= kMakerNoteRowLimit - *rowCount) return;

    bool companionAdded = false;
    for (uint32_t i = 0; i < entryCount; ++i) {
        if ((maker.stopAtRowLimit || companionAdded) && *rowCount >= kMakerNoteRowLimit) return;
        tiff::Entry entry;
        // A short read leaves the missing bytes zero, and the loop goes on.
        tiff::ReadPartialEntry(in, entry);
        // The row takes the entry before the tag is known: an unknown tag
        // leaves the count where it was, and the next entry reuses the row.
        exif::TagRecord& row = exif::TakeRow(table, *rowCount);
        exif::BeginRow(row, entry.tag, entry);
        const MakerTag* tag = maker.Find(entry.tag, entry.type);
        if (!tag) continue;
        exif::SetRowName(row, tag->name);
        const MakerEntry value{exif::EntryContext{input, offsetBase, entry, row}, maker.rule, note};
        if (tag->format.enumeration) FormatEnumeration(value, *tag->format.enumeration);
        else tag->format.formatter(value);
        if (value.omitted) continue;
        ++*rowCount;
        if (!tag->companion.format || *rowCount >= kMakerNoteRowLimit) continue;
        exif::TagRecord& second = exif::TakeRow(table, *rowCount);
        exif::BeginRow(second, entry.tag, entry);
        exif::SetRowName(second, tag->companion.name);
        const MakerEntry companion{exif::EntryContext{input, offsetBase, entry, second}, maker.rule, note};
        tag->companion.format(companion);
        if (companion.omitted || std::strcmp(second.value, row.value) == 0) continue;
        ++*rowCount;
        companionAdded = true;
    }
}

void AppendMakerRow(exif::TagRecordTable& table, uint32_t* rowCount, const tiff::Entry& entry, const char* name,
                    const std::string& value) {
    if (*rowCount >= kMakerNoteRowLimit) return;
    exif::TagRecord& row = exif::TakeRow(table, *rowCount);
    exif::BeginRow(row, entry.tag, entry);
    exif::SetRowName(row, name);
    exif::SetRowValue(row, value);
    ++*rowCount;
}

}  // namespace makernotes
