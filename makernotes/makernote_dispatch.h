// The hand-over from the directory walker to the camera makers' decoders.
#pragma once

#include <cstdint>

#include "exif/tag_record.h"
#include "makernote_limits.h"
#include "platform/platform.h"

namespace makernotes {

// Every decoder's arguments: the open file (positioned at the maker's
// directory), the offset base its offsets are relative to, the table, the row
// count (read on entry, advanced for each row added) and the byte-order flag
// (non-zero for big-endian).
using MakerNoteDecoder = void (*)(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                                  uint32_t* rowCount, int bigEndian);

// Called by the walker after the Exif and GPS directories, once it has read
// the first five bytes of the maker note and appended the separator and the
// "Maker Note (Vendor):" heading: recognises the maker from those bytes and
// the Make row, positions the file at the maker's directory and runs its
// decoder. makerNoteOffset is the offset stored in the Exif directory
// (relative to tiffBase; 0 means none); isCr3 marks a Canon CR3 file, whose
// note value is the absolute position of an embedded TIFF header. The note
// is found again from these offsets, so the file may stand anywhere on entry.
void DispatchMakerNote(platform::File& file, uint32_t tiffBase, exif::TagRecordTable& table,
                       uint32_t* rowCount, int bigEndian, uint32_t makerNoteOffset, bool isCr3);

// The decoder of each recognised note form.
struct MakerNoteDecoders {
    MakerNoteDecoder olympus;
    MakerNoteDecoder nikon;        // embedded TIFF header, or no header
    MakerNoteDecoder nikonType1;   // "Nikon" and an older header
    MakerNoteDecoder canon;
    MakerNoteDecoder fujifilm;
    MakerNoteDecoder casio;        // headerless
    MakerNoteDecoder casioQvc;
    MakerNoteDecoder pentax;
    MakerNoteDecoder minolta;
    MakerNoteDecoder sony;
    MakerNoteDecoder panasonic;
};
// The decoders DispatchMakerNote uses.
const MakerNoteDecoders& StandardMakerNoteDecoders();

// DispatchMakerNote with another set of decoders (tests observe the hand-over
// through it). Each recognition test runs on its own: a note that passes two
// of them is decoded twice, in the order of the tests.
void DispatchMakerNote(platform::File& file, uint32_t tiffBase, exif::TagRecordTable& table,
                       uint32_t* rowCount, int bigEndian, uint32_t makerNoteOffset, bool isCr3,
                       const MakerNoteDecoders& decoders);

// The Make text is the value of the last row with tag 271. MakeEquals: the
// whole text equals word, ignoring ASCII case. MakeContains: the upper-cased
// text contains word (given in upper case). Both are false without a Make row.
bool MakeEquals(const exif::TagRecordTable& table, uint32_t rowCount, const char* word);
bool MakeContains(const exif::TagRecordTable& table, uint32_t rowCount, const char* word);

// With the file just after a note's "Nikon": true when the next 13 bytes are
// one of the known embedded-TIFF headers, leaving the file after them (at the
// embedded header's first directory) and setting *bigEndian to the header's
// order; otherwise false, with the file back where it was.
bool CheckNikonEmbeddedTiffHeader(platform::File& file, int* bigEndian);

}  // namespace makernotes
