// The tag record table: the rows of decoded EXIF data that every reader
// (directory walker, GPS directory, maker-note decoders) appends to and every
// consumer (the text exports, the EXIF window, the map links) reads.
#pragma once

#include <cstddef>
#include <cstdint>

namespace exif {

// Row capacity of a table. A directory is decoded only while rows + entries
// stay below kDirectoryRowLimit; the 32 rows above it hold the separator and
// heading rows that are appended before that test.
constexpr uint32_t kTagTableRows = 288;
constexpr uint32_t kDirectoryRowLimit = 256;
// GPS rows carry 400 + the GPS tag, so they never collide with TIFF tags.
constexpr uint32_t kGpsTagBase = 400;
// LoadTag_EXIF_W's pseudo tag for "the GPS position".
constexpr uint32_t kGpsPositionPseudoTag = 499;

constexpr size_t kTagNameSize = 128;
constexpr size_t kTagValueSize = 259;      // at most 255 bytes used, terminated in the first 256
constexpr size_t kLongValueSize = 3072;    // holds up to 3071 bytes

// One row. Separator rows have an empty name; heading rows a name ending in
// a colon and an empty value.
struct TagRecord {
    uint32_t tag;          // TIFF tag; GPS: kGpsTagBase + tag; separators/headings: 0
    uint16_t type;         // TIFF field type, host order
    uint32_t count;        // TIFF value count, host order
    uint32_t valueField;   // value-or-offset word, swapped as one 32-bit word if big-endian
    char name[kTagNameSize];    // UTF-8, NUL-terminated
    char value[kTagValueSize];  // UTF-8, NUL-terminated
    char* longValue;       // owned; kLongValueSize bytes, only for tags 270 and 37510
};

// 288 rows. The row count is kept beside it by the caller and passed to the
// readers by reference. Rows from zeroedRows on have not been cleared yet:
// the readers take each row through TakeRow, which clears it first.
struct TagRecordTable {
    TagRecord rows[kTagTableRows];
    uint32_t zeroedRows = kTagTableRows;
};

// Allocates a zero-filled table in one block; null when memory runs out.
TagRecordTable* AllocateTagRecordTable();
// The same without clearing the rows: each is cleared as a reader takes it,
// so the rows below the row count read as in a zero-filled table. For a
// caller that reads only rows below the count the readers give it.
TagRecordTable* AllocateUnclearedTagRecordTable();

// The row at index for a reader to fill: cleared first (with every row
// before it) when the table has not cleared it yet.
TagRecord& TakeRow(TagRecordTable& table, uint32_t index);

// Frees the long values of the first kDirectoryRowLimit rows that have been
// cleared (and clears them); then, when freeBlock is non-zero, the table itself.
void FreeTagRecordTable(TagRecordTable* table, int freeBlock);

// The row's long value, made (zero-filled, kLongValueSize bytes) on first
// need; null when memory runs out. FreeTagRecordTable releases it.
char* MakeLongValue(TagRecord& row);

// The first row (of rows 0 .. rowCount-1) whose tag equals `tag`, or null.
const TagRecord* FindTagRecord(const TagRecordTable& table, uint32_t rowCount, uint32_t tag);

// Copies the first matching row's value text into out (at most outSize-1
// bytes, terminated); false when no row has that tag.
bool CopyTagValue(const TagRecordTable& table, uint32_t rowCount, uint32_t tag, char* out,
                  size_t outSize);

}  // namespace exif
