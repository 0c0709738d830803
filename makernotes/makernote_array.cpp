#include "makernote_array.h"

#include "exif/exif_reader.h"
#include "makernote_limits.h"

namespace makernotes {
namespace {

int64_t ElementAt(const uint8_t* bytes, const ArrayLayout& layout, int order) {
    if (layout.elementSize == 2) {
        const uint16_t v = platform::GetU16(bytes, order);
        return layout.sign == Sign::kSigned ? int64_t{static_cast<int16_t>(v)} : int64_t{v};
    }
    const uint32_t v = platform::GetU32(bytes, order);
    return layout.sign == Sign::kSigned ? int64_t{static_cast<int32_t>(v)} : int64_t{v};
}

void DecodeArray(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                 const ArrayTag& array, exif::TagRecordTable& table, uint32_t* rowCount) {
    const ArrayLayout& layout = array.layout;
    if (entry.type != layout.type || (layout.elementSize != 2 && layout.elementSize != 4)) return;
    uint8_t bytes[kArrayElementsLimit * 4] = {};
    // The reader wants a row for its context; it writes none.
    const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
    const size_t got = exif::ReadRawBlock(context, bytes, kArrayElementsLimit * layout.elementSize);
    const int order = layout.order == ElementOrder::kBigEndian ? 1 : input.bigEndian();
    int64_t values[kArrayElementsLimit] = {};
    const size_t size = got / layout.elementSize;
    for (size_t i = 0; i < size; ++i) values[i] = ElementAt(bytes + i * layout.elementSize, layout, order);
    const ArrayElements elements{values, size};
    for (size_t i = 0; i < array.size; ++i) {
        const ArrayRow& r = array.rows[i];
        if (!elements.Has(r.needs)) continue;
        if (*rowCount >= kMakerNoteRowLimit) return;
        exif::TagRecord& row = exif::TakeRow(table, *rowCount);
        exif::BeginRow(row, entry.tag, entry);
        exif::SetRowName(row, r.name);
        r.format(elements, row);
        ++*rowCount;
    }
}

}  // namespace

const ArrayTag* ArrayTags::Find(uint16_t tag) const {
    for (size_t i = 0; i < size; ++i)
        if (arrays[i].tag == tag) return &arrays[i];
    return nullptr;
}

void DecodeArrayTags(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                     uint32_t rowsBefore, uint32_t* rowCount, const ArrayTags& arrays) {
    const platform::Cursor input = directory.Whole();
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        if (const ArrayTag* array = arrays.Find(entry.tag))
            DecodeArray(input, offsetBase, entry, *array, table, rowCount);
    });
}

void FormatEnumeratedElement(const Enumeration& e, int64_t value, exif::TagRecord& row) {
    if (const char* text = EnumerationText(e, value)) return exif::SetRowValue(row, text);
    // The format is given a 32-bit number, as the entry loop gives it.
    if (!*e.otherwise) return;
    if (e.sign == Sign::kSigned) SetValuef(row, e.otherwise, static_cast<int32_t>(value));
    else SetValuef(row, e.otherwise, static_cast<uint32_t>(value));
}

}  // namespace makernotes
