#include "iptc_data.h"
#include "platform/text.h"

#include <cstring>

namespace iptc {

void ClearIptcData(IptcData& data) { std::memset(&data, 0, sizeof data); }

int IptcTableRow(int dataset) {
    for (int row = 0; row <= kFieldCount; ++row)
        if (IptcDatasetTable[row].dataset == dataset) return row;
    return -1;
}

char16_t* IptcField(IptcData& data, int dataset) {
    const int row = IptcTableRow(dataset);
    if (row < 0) return nullptr;
    return row == 0 ? data.recordVersion : data.fields[row - 1];
}

const char16_t* IptcField(const IptcData& data, int dataset) {
    return IptcField(const_cast<IptcData&>(data), dataset);
}

std::u16string_view FieldView(const char16_t* field, size_t capacity) {
    size_t n = 0;
    while (n < capacity && field[n]) ++n;
    return {field, n};
}

namespace {

// How much of `text` fits into `room` characters without splitting a
// surrogate pair.
size_t FittingLength(std::u16string_view text, size_t room) { return platform::Utf16CutLength(text, room); }

}  // namespace

void SetField(char16_t* field, std::u16string_view text, size_t capacity) {
    if (capacity == 0) return;
    const size_t n = FittingLength(text, capacity - 1);
    // The source may be the field itself (a trimmed view of it).
    std::memmove(field, text.data(), n * sizeof(char16_t));
    field[n] = 0;
}

void AppendField(char16_t* field, std::u16string_view text, size_t capacity) {
    if (capacity == 0) return;
    const size_t used = FieldView(field, capacity - 1).size();
    const size_t n = FittingLength(text, capacity - 1 - used);
    std::memmove(field + used, text.data(), n * sizeof(char16_t));
    field[used + n] = 0;
}

}  // namespace iptc
