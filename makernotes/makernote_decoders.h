// One decoder per maker (and per note form), each a MakerNoteDecoder: given
// the open file at the position the dispatch chose, the offset base, the
// table, the row count and the byte order, it appends the maker's rows.
// Every decoder stops at a short read without complaint and adds no rows for
// a directory whose entry count would take the table to kMakerNoteRowLimit.
#pragma once

#include <cstdint>

#include "exif/tag_record.h"
#include "makernote_directory.h"
#include "platform/platform.h"

namespace makernotes {

// Casio, headerless: the directory at the note's first byte.
void DecodeCasioMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount, int bigEndian);
// Casio, after the 6-byte "QVC" header.
void DecodeCasioQvcMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                             uint32_t* rowCount, int bigEndian);
// Sony, after the 12-byte "SONY DSC" header or at the note's start.
void DecodeSonyMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                         uint32_t* rowCount, int bigEndian);
// Panasonic, after the 12-byte "Panasonic" header.
void DecodePanasonicMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                              uint32_t* rowCount, int bigEndian);
// Nikon's older form: the file at note + 5; skips the rest of its 8-byte header.
void DecodeNikonType1MakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                               uint32_t* rowCount, int bigEndian);
// Nikon's main form: at the directory of the embedded TIFF header (offset
// base = that header), or at the start of a note without header.
void DecodeNikonMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount, int bigEndian);
// Pentax and Ricoh: the file at note + 6; reads the 6-byte "AOC" or 8-byte
// "PENTAX" header form itself.
void DecodePentaxMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                           uint32_t* rowCount, int bigEndian);
// Canon: the directory at the note's first byte.
void DecodeCanonMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount, int bigEndian);
// Olympus and OM System: the file at note + 5; reads the rest of the 8-, 12-
// or 16-byte header itself.
void DecodeOlympusMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount, int bigEndian);
// Fujifilm: the file at note + 5, offset base = the note's start; the
// directory is little-endian whatever bigEndian says (which values follow).
void DecodeFujifilmMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                             uint32_t* rowCount, int bigEndian);
// Minolta: the directory at the note's first byte.
void DecodeMinoltaMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount, int bigEndian);

// Each maker's tags, for the checks on the tables themselves.
const MakerTable& CasioTags();
const MakerTable& CasioQvcTags();
const MakerTable& SonyTags();
const MakerTable& PanasonicTags();
const MakerTable& NikonType1Tags();
const MakerTable& PentaxTags();
const MakerTable& MinoltaTags();

}  // namespace makernotes
