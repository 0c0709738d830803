#include "makernote_numbers.h"

#include <algorithm>
#include <cstdio>

#include "exif/exif_reader.h"
#include "makernote_array.h"
#include "makernote_limits.h"

namespace makernotes {

size_t ReadIntegers(const MakerEntry& e, int64_t* out, size_t max) {
    const uint16_t type = e.entry().type;
    const uint32_t width = type == tiff::kUndefined ? 1 : tiff::TypeSize(type);
    const bool isInteger = type == tiff::kByte || type == tiff::kSByte || type == tiff::kUndefined ||
                           type == tiff::kShort || type == tiff::kSShort || type == tiff::kLong ||
                           type == tiff::kSLong;
    if (!isInteger) return 0;
    uint8_t bytes[kEntryIntegersLimit * 4] = {};
    const size_t wanted = std::min<uint64_t>({uint64_t{e.entry().count}, uint64_t{max}, kEntryIntegersLimit});
    const size_t read = exif::ReadRawBlock(e.context, bytes, wanted * width) / width;
    const int big = e.context.bigEndian();
    for (size_t i = 0; i < read; ++i) {
        const uint8_t* at = bytes + i * width;
        switch (type) {
            case tiff::kSByte: out[i] = static_cast<int8_t>(at[0]); break;
            case tiff::kShort: out[i] = platform::GetU16(at, big); break;
            case tiff::kSShort: out[i] = static_cast<int16_t>(platform::GetU16(at, big)); break;
            case tiff::kLong: out[i] = platform::GetU32(at, big); break;
            case tiff::kSLong: out[i] = static_cast<int32_t>(platform::GetU32(at, big)); break;
            default: out[i] = at[0]; break;
        }
    }
    return read;
}

size_t ReadQuotients(const MakerEntry& e, double* out, size_t max) {
    const bool isSigned = e.entry().type == tiff::kSRational;
    if (!isSigned && e.entry().type != tiff::kRational) return 0;
    const size_t wanted = std::min<uint64_t>({uint64_t{e.entry().count}, uint64_t{max}, kEntryQuotientsLimit});
    size_t read = 0;
    for (; read < wanted; ++read) {
        const uint64_t at = uint64_t{e.entry().valueField} + 8 * read;
        uint32_t numerator = 0, denominator = 0;
        if (at > UINT32_MAX ||
            !tiff::ReadRational(e.context.input, e.context.base, static_cast<uint32_t>(at), numerator, denominator) ||
            denominator == 0)
            break;
        out[read] = isSigned ? static_cast<double>(static_cast<int32_t>(numerator)) / static_cast<int32_t>(denominator)
                             : static_cast<double>(numerator) / denominator;
    }
    return read;
}

void AppendShortest(std::string& text, double v) {
    char number[32];
    std::snprintf(number, sizeof number, "%.10g", v);
    text += number;
}

void FormatFirstInteger(const MakerEntry& e, const Enumeration& en) {
    int64_t v = 0;
    if (ReadIntegers(e, &v, 1) == 1) FormatEnumeratedElement(en, v, e.row());
}

void FormatQuotients(const MakerEntry& e) {
    double v[kEntryQuotientsLimit];
    const size_t n = ReadQuotients(e, v, kEntryQuotientsLimit);
    std::string text;
    for (size_t i = 0; i < n; ++i) {
        if (i) text += ' ';
        AppendShortest(text, v[i]);
    }
    exif::SetRowValue(e.row(), text);
}

exif::TagRecord* AppendEntryRow(exif::TagRecordTable& table, uint32_t* rowCount, const tiff::Entry& entry,
                                const char* name) {
    if (*rowCount >= kMakerNoteRowLimit) return nullptr;
    exif::TagRecord& row = exif::TakeRow(table, *rowCount);
    exif::BeginRow(row, entry.tag, entry);
    exif::SetRowName(row, name);
    ++*rowCount;
    return &row;
}

}  // namespace makernotes
