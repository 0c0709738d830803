// The TIFF directory walker behind every EXIF export, and the value readers
// it shares with the GPS directory and the maker-note decoders.
//
// Every reader works on a cursor over the open input and a base offset (the
// file position of the TIFF header the offsets count from). A value reader
// reads at base + offset through a child cursor of its own into a buffer of
// its own size, so an entry loop goes on where it was. A short read or an
// offset past the end gives an empty or partial value, never a read outside
// the reader's buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "maker_note_dispatch.h"
#include "platform/input.h"
#include "platform/platform.h"
#include "tag_record.h"
#include "tiff/entry.h"
#include "tiff/values.h"

namespace exif {

// Offsets (from the TIFF base) that a directory hands to the walker; 0 when
// the directory has no such entry.
struct IfdPointers {
    uint32_t exifIfd = 0;           // tag 34665
    uint32_t gpsIfd = 0;            // tag 34853
    uint32_t makerNote = 0;         // tag 37500
    uint32_t interoperability = 0;  // tag 40965 (shown, not walked)
    uint32_t iptc = 0;              // tag 33723
    uint32_t makerNoteSize = 0;     // tag 37500's length in bytes
    uint32_t dngPrivateData = 0;    // tag 50740, found without a row of its own
    uint32_t dngPrivateDataSize = 0;
};

// Reads the EXIF data of a file into the table, appending rows after
// *rowCount and advancing it. startOffset is 0 except when the reader calls
// itself for a JPEG embedded in a raw file (tag 46). A maker note is read by
// the first of `makerNotes` that recognises it. Opens and closes the
// file itself. Returns 1 and sets *bigEndian (1 for "MM", else 0) when a TIFF
// header was found; 0, adding no rows, when the file cannot be opened or has
// no EXIF data.
int ReadExifTags(std::u16string_view path, TagRecordTable& table, uint32_t* rowCount, int* bigEndian,
                 const MakerNoteRules& makerNotes, uint32_t startOffset = 0);
// The same on an input the caller has opened (any position on entry).
int ReadExifTags(platform::File& input, TagRecordTable& table, uint32_t* rowCount, int* bigEndian,
                 const MakerNoteRules& makerNotes, uint32_t startOffset = 0);

struct DirectoryTags;  // tag_table.h: the standard and the GPS directories' tags

// The entry loop of the standard and GPS directories: decodes entryCount
// 12-byte entries from `entries` (in its byte order, which the values share);
// every tag the directory's table names becomes a row, other tags none. The
// offsets of the directories an entry points to go to *pointers, when given.
// Stops at a short read, keeping the rows made so far. The caller has checked
// *rowCount + entryCount < 256.
void ProcessDirectoryEntries(platform::Cursor& entries, uint32_t base, TagRecordTable& table, uint32_t* rowCount,
                             uint32_t entryCount, const DirectoryTags& tags, IfdPointers* pointers = nullptr);

// Scans a JPEG from startOffset for the first segment with marker 0xFF
// `marker` (for APP1, 225, only one that begins "Exif"). firstTwo receives the
// first two bytes read. Returns a zero-padded copy (length + 256 bytes) of
// the segment from its length field on, with `length` (the length field) and
// `markerOffset` (the file offset of the 0xFF); null when there is none or
// the file begins "II"/"MM".
std::unique_ptr<uint8_t[]> FindJpegSegment(std::u16string_view path, uint32_t& length,
                                           uint32_t& markerOffset, uint8_t marker, uint8_t firstTwo[2],
                                           uint32_t startOffset);
// The same scan on an open file, without the copy: true when the segment is
// found, with the file at its length field.
bool FindJpegSegmentAt(platform::File& file, uint32_t& length, uint32_t& markerOffset, uint8_t marker,
                       uint8_t firstTwo[2], uint32_t startOffset);

// ------------------------------------------------------------ entries

// What a tag's formatter is given: a cursor over the whole input in the
// values' byte order, where offsets count from, the entry and the row (name
// already written) that receives the value.
struct EntryContext {
    platform::Cursor input;
    uint32_t base;
    const tiff::Entry& entry;
    TagRecord& row;

    int bigEndian() const { return input.bigEndian(); }
};

// ------------------------------------------------------------ value readers

// ASCII or UNDEFINED text into row.value (or row.longValue for tags 270 and
// 37510 with 257 or more bytes). With characterCodeHeader the first 8 bytes
// name the encoding (UserComment). Texts are cleaned of padding, except the
// out-of-line Make and Model, which are kept as stored.
void ReadTextValue(const EntryContext& c, bool characterCodeHeader);

// UTF-16 little-endian text (the Windows XP tags), whatever the file's order.
void ReadUtf16LeTextValue(const EntryContext& c);

// Up to maxBytes of the entry's value bytes, in file order: from the value
// field when count x element size fits in it, else from base + offset.
// Returns the number of bytes stored.
size_t ReadRawBlock(const EntryContext& c, uint8_t* out, size_t maxBytes);

// ------------------------------------------------------------ rows

// Starts the row for an entry: tag (the entry's, or the GPS row tag), type,
// count and value field written, name and value cleared.
void BeginRow(TagRecord& row, uint32_t tag, const tiff::Entry& entry);

// Writes text into the row's name or value, cut to what the field holds.
void SetRowName(TagRecord& row, std::string_view name);
void SetRowValue(TagRecord& row, std::string_view value);

// Appends a separator row (all fields zero) or a heading row (name only).
// Rows at or beyond the table's capacity are not written.
void AppendSeparatorRow(TagRecordTable& table, uint32_t* rowCount);
void AppendHeadingRow(TagRecordTable& table, uint32_t* rowCount, const char* heading);

// Cuts UTF-8 text to at most maxBytes without splitting a character.
std::string CutUtf8(std::string text, size_t maxBytes);

}  // namespace exif
