// Settings that a maker stores as one array of numbers in a single entry
// (Minolta's camera settings, Canon's camera settings and shot info): each
// setting is one element, and each setting a maker names becomes a row of
// its own, carrying the entry's tag.
//
// The arrays are read in a second pass over the directory, after the entry
// loop of makernote_directory.h has named the plain tags, so the setting rows
// follow the plain rows.
#pragma once

#include <cstddef>
#include <cstdint>

#include "exif/tag_record.h"
#include "makernote_directory.h"
#include "platform/platform.h"

namespace makernotes {

// The elements of one array as read, each widened with its sign.
struct ArrayElements {
    const int64_t* values;
    size_t size;
    bool Has(size_t i) const { return i < size; }
    int64_t At(size_t i) const { return values[i]; }
};

using ElementFormatter = void (*)(const ArrayElements&, exif::TagRecord&);

// One setting: the highest element it reads (an array too short for it gives
// no row), its name and its format.
struct ArrayRow {
    size_t needs;
    const char* name;
    ElementFormatter format;
};

// The byte order of the elements: the note's, or big-endian whatever the
// note says (Minolta writes its settings so in every file).
enum class ElementOrder { kNote, kBigEndian };

// How an array is stored. An entry of another type is not read at all.
struct ArrayLayout {
    uint16_t type;         // TIFF type the entry must have
    uint32_t elementSize;  // 2 or 4 bytes
    Sign sign;
    ElementOrder order;
};

struct ArrayTag {
    uint16_t tag;
    ArrayLayout layout;
    const ArrayRow* rows;
    size_t size;
};

template <size_t N>
constexpr ArrayTag Array(uint16_t tag, const ArrayLayout& layout, const ArrayRow (&rows)[N]) {
    return {tag, layout, rows, N};
}

// A maker's array tags, each tag once.
struct ArrayTags {
    const ArrayTag* arrays;
    size_t size;

    const ArrayTag* Find(uint16_t tag) const;
};

template <size_t N>
constexpr ArrayTags Arrays(const ArrayTag (&arrays)[N]) {
    return {arrays, N};
}

// The second pass over the directory (`directory` at its entry count, in the
// note's byte order).
// rowsBefore is the row count before the entry loop ran: a directory that
// the loop skipped (rowsBefore + entry count reaching kMakerNoteRowLimit) is
// skipped here too. For each entry whose tag is an array tag, reads at most
// kArrayElementsLimit elements (from the value field, or at offsetBase +
// offset) and appends one row per setting the array is long enough for.
// Adds no row at or beyond kMakerNoteRowLimit, and stops at a short read.
void DecodeArrayTags(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                     uint32_t rowsBefore, uint32_t* rowCount, const ArrayTags& arrays);

// ------------------------------------------------------------ element formats

// An element through an enumeration: its text, or the enumeration's
// `otherwise` format given the number as a 32-bit int (signed or not, by the
// enumeration's sign); no text when `otherwise` is empty.
void FormatEnumeratedElement(const Enumeration& e, int64_t value, exif::TagRecord& row);

template <const Enumeration& E, size_t Index>
void EnumElement(const ArrayElements& a, exif::TagRecord& row) {
    FormatEnumeratedElement(E, a.At(Index), row);
}

// Element Index as its number.
template <size_t Index>
void NumberElement(const ArrayElements& a, exif::TagRecord& row) {
    SetValuef(row, "%lld", static_cast<long long>(a.At(Index)));
}

}  // namespace makernotes
