// The entry loop that every maker's decoder shares, and the pieces a maker
// describes its tags with: a table of {tag, name, format} rows, where a
// format is an enumeration (data) or a formatter of the maker's own.
//
// A directory, as every maker writes it:
//
//   +0   entry count (16 bits)
//   +2   entries, 12 bytes each:
//          +0 tag (16)  +2 type (16)  +4 count (32)  +8 value or offset (32)
//
// Values longer than the 4-byte field sit at offset base + offset.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "makernote_limits.h"
#include "platform/input.h"
#include "platform/platform.h"

namespace makernotes {

// How a decoder turns an entry's 4-byte value field into the 16-bit number
// its tables test. The makers differ here on purpose; each decoder names its
// rule, and the difference shows only in big-endian files.
enum class ValueRule {
    // The field converted from the file's byte order as one 32-bit word, and
    // the low 16 bits of that word. A SHORT stored big-endian in the field's
    // first two bytes therefore reads as the last two bytes (normally 0).
    // Casio's headerless notes and Nikon's type-1 notes.
    kLowHalfOfWord,
    // The field's first two bytes read as a 16-bit number in the file's byte
    // order: where a SHORT is stored, in either order. Casio "QVC" notes,
    // Sony and Panasonic.
    kLeadingShort,
};

enum class Sign { kUnsigned, kSigned };

// One value of an enumerated tag and its text.
struct ValueText {
    int32_t value;
    const char* text;
};

// An enumerated tag: the text of each listed value; any other value goes
// through `otherwise` (a printf format given the number), and an empty
// `otherwise` leaves the value text empty. `sign` says how the 16-bit number
// is read for the comparison, `printed` how `otherwise` is given it (the same
// unless a maker says otherwise).
struct Enumeration {
    const ValueText* texts;
    size_t size;
    Sign sign;
    const char* otherwise;
    Sign printed;
};

template <size_t N>
constexpr Enumeration Enum(const ValueText (&texts)[N], Sign sign, const char* otherwise) {
    return {texts, N, sign, otherwise, sign};
}
// The same enumeration, printing an unlisted value as a signed number.
constexpr Enumeration PrintedSigned(Enumeration e) {
    e.printed = Sign::kSigned;
    return e;
}
// A tag shown as its number only.
constexpr Enumeration Number(Sign sign, const char* format) { return {nullptr, 0, sign, format, sign}; }

// The text an enumeration lists for a value; null when it lists none.
const char* EnumerationText(const Enumeration& e, int64_t value);

struct SonyFacts;  // sony_makernote.h

// What a decoder learns about its note before the entry loop, for the value
// formats that depend on it. It lives for one note's decoding.
struct NoteContext {
    bool qualityFromZero = false;  // Olympus: the Quality values count from 0
    bool threePointAf = false;     // Olympus: the camera has the three AF points of the early bodies
    bool degreesStored = false;    // Olympus: the sensor temperature is stored in degrees, not as a reading
    const SonyFacts* sony = nullptr;  // Sony: the body and the lens, found before the loop
};

// What a tag's format is given: the entry (fields in host order, the value
// field also in file order), the row that receives the value text, the
// reading context for out-of-line values (input, offset base, byte order)
// and the note's context.
struct MakerEntry {
    exif::EntryContext context;
    ValueRule rule;
    const NoteContext& note;

    const tiff::Entry& entry() const { return context.entry; }
    exif::TagRecord& row() const { return context.row; }
    // The 16-bit number by the decoder's rule, unsigned and signed.
    uint16_t Unsigned16() const;
    int32_t Signed16() const;
    // Gives no row for this entry (a value the camera did not record): the
    // row is reused as an unknown tag's is.
    void Omit() const { omitted = true; }

    mutable bool omitted = false;
};

using ValueFormatter = void (*)(const MakerEntry&);

// A tag's value format: an enumeration or a formatter. The constructors are
// implicit so that a table row names either one directly.
struct TagFormat {
    constexpr TagFormat(const Enumeration& e) : enumeration(&e), formatter(nullptr) {}
    constexpr TagFormat(ValueFormatter f) : enumeration(nullptr), formatter(f) {}
    const Enumeration* enumeration;
    ValueFormatter formatter;
};

// A second row that a tag's entry adds right after its own: a name for what
// the tag's number stands for, beside the number itself. A companion whose
// format omits it, or leaves the text its tag's row already shows, gives no
// row.
struct Companion {
    const char* name = nullptr;
    ValueFormatter format = nullptr;
};

struct MakerTag {
    uint16_t tag;
    const char* name;
    TagFormat format;
    Companion companion = {};
    // When set, the only TIFF type the tag is stored in: an entry of another
    // type is not this tag and gives no row (a maker that gave a tag number
    // a new meaning in later cameras tells the two apart by their types).
    uint16_t onlyType = 0;
};

// A constant list and its length: a table of tables (a maker's records,
// its layouts of a block) names each list by one of these.
template <typename T>
struct List {
    const T* items;
    size_t size;
};
template <typename T, size_t N>
constexpr List<T> ListOf(const T (&items)[N]) {
    return {items, N};
}

// A maker's directory: its tags (sorted by tag, each once), its value rule,
// and whether the entry loop also stops when the table reaches
// kMakerNoteRowLimit rows while it is read (it always stops there once a
// companion row has been added, since the up-front test counts one row per
// entry).
struct MakerTable {
    const MakerTag* tags;
    size_t size;
    ValueRule rule;
    bool stopAtRowLimit;

    // The tag's row, or null: a tag not listed, or stored in a type its row excludes.
    const MakerTag* Find(uint16_t tag, uint16_t type) const;
};

// A table's invariants, for a maker's static_assert: tags ascend, each
// once, each with a name; an enumeration lists each value once.
template <size_t N>
constexpr bool TagsAscend(const MakerTag (&tags)[N]) {
    for (size_t i = 1; i < N; ++i)
        if (tags[i - 1].tag >= tags[i].tag) return false;
    return true;
}
template <size_t N>
constexpr bool TagsNamed(const MakerTag (&tags)[N]) {
    for (const MakerTag& t : tags)
        if (!t.name || !t.name[0]) return false;
    return true;
}
template <size_t N>
constexpr bool ValuesUnique(const ValueText (&texts)[N]) {
    for (size_t i = 0; i < N; ++i)
        for (size_t j = i + 1; j < N; ++j)
            if (texts[i].value == texts[j].value) return false;
    return true;
}

template <size_t N>
constexpr MakerTable Table(const MakerTag (&tags)[N], ValueRule rule, bool stopAtRowLimit = false) {
    return {tags, N, rule, stopAtRowLimit};
}
// A maker whose tags are not named yet: its entries are read and dropped.
constexpr MakerTable NoTags(ValueRule rule) { return {nullptr, 0, rule, false}; }

// The shared entry loop, from `in` (at the entry count; count and entries in
// its byte order): reads the entry count (a short read keeps the byte it
// got); returns at once when *rowCount + count reaches kMakerNoteRowLimit;
// otherwise reads each 12-byte entry (a short read leaves the missing bytes
// zero and goes on), writes its tag into the row at *rowCount, and for a tag
// the maker knows writes the name and value text and advances *rowCount.
// Out-of-line values are read at offsetBase + offset, in `values` order (it
// differs from the directory's only for Fujifilm).
void DecodeMakerDirectory(platform::Cursor& in, platform::ByteOrder values, uint32_t offsetBase,
                          exif::TagRecordTable& table, uint32_t* rowCount, const MakerTable& maker,
                          const NoteContext& note = {});
inline void DecodeMakerDirectory(platform::Cursor& in, uint32_t offsetBase, exif::TagRecordTable& table,
                                 uint32_t* rowCount, const MakerTable& maker, const NoteContext& note = {}) {
    DecodeMakerDirectory(in, in.order(), offsetBase, table, rowCount, maker, note);
}

// ------------------------------------------------------------ second passes
//
// Some tags are read in a pass of their own after the entry loop (setting
// arrays, sub-directories), or looked up before it (a tag whose value changes
// how another tag reads). Both walk the same directory again.

// The entry count of the directory (`in` at its count), leaving `in` at its
// first entry; -1 when the count cannot be read, or when the entry loop
// skipped the directory (rowsBefore: the row count before the loop ran, so
// that both passes make the same decision).
int32_t RevisitDirectoryCount(platform::Cursor& in, uint32_t rowsBefore);

// Walks the directory (`directory` at its count) again, calling
// visit(entry, entryCount) for each entry while the table has room; stops at
// a short read.
template <typename Visit>
void RevisitDirectory(platform::Cursor directory, uint32_t rowsBefore, const uint32_t* rowCount, Visit&& visit) {
    const int32_t count = RevisitDirectoryCount(directory, rowsBefore);
    for (int32_t i = 0; i < count && *rowCount < kMakerNoteRowLimit; ++i) {
        tiff::Entry entry;
        if (!tiff::ReadEntry(directory, entry)) return;
        visit(entry, static_cast<uint32_t>(count));
    }
}

// The first entry with `tag` in the directory (`directory` at its count; at
// most as many entries as the row limit are looked at).
bool FindDirectoryEntry(platform::Cursor directory, uint16_t tag, tiff::Entry& found);

// Formats for the tags whose value is stored in its own type: text for ASCII
// and UNDEFINED, numbers for the integer types and rationals (one decimal
// quotient each), separated by spaces.
void FormatGenericValue(const MakerEntry& e);
// One rational at offset base + offset: the numerator when the denominator
// is 0 or 1, otherwise the quotient with two decimals.
void FormatRational(const MakerEntry& e);

// An exposure time in seconds: up to a quarter second as 1/n, longer ones
// in tenths with a whole number shown plain (2, 1.3).
void SetExposureSeconds(exif::TagRecord& row, double seconds);

// Appends a row for `entry` with this name and value, as the structures and
// blocks a decoder takes apart make theirs; none at the row limit.
void AppendMakerRow(exif::TagRecordTable& table, uint32_t* rowCount, const tiff::Entry& entry, const char* name,
                    const std::string& value);

// Writes a printf-formatted value text (cut to the row's 255 bytes).
void SetValuef(exif::TagRecord& row, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 2, 3)))
#endif
    ;

}  // namespace makernotes
