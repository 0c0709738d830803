// One decoder per maker (and per note form), each a MakerNoteDecoder: given
// a cursor from the position the dispatch chose to the end of the input (in
// the note's byte order), the offset base, the table and the row count, it
// appends the maker's rows.
// Every decoder stops at a short read without complaint and adds no rows for
// a directory whose entry count would take the table to kMakerNoteRowLimit.
//
// Every maker's decoder has the same shape. <maker>_makernote.cpp holds, in
// this order, the value texts and value rules of the maker's directory, its
// tag table (a MakerTable over the shared entry loop of
// makernote_directory.h) and its decode entry, declared here. A maker whose
// note holds more than one directory (sub-directories, records, byte
// structures, blocks of settings) keeps each further part in
// <maker>_<part>.cpp of the same shape: its texts, its rules, and the one
// table or entry point the decode entry uses. What the parts share goes in
// <maker>_makernote.h (seen by that maker's files only) and the value rules
// they share in <maker>_values.cpp; the lists of bodies and lenses a maker
// names in <maker>_tables.cpp. Value texts that several makers word alike
// are in makernote_texts.h.
#pragma once

#include <cstdint>

#include "exif/tag_record.h"
#include "makernote_directory.h"
#include "platform/input.h"

namespace makernotes {

// Casio, headerless: the directory at the note's first byte.
void DecodeCasioMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount);
// Casio, after the 6-byte "QVC" header.
void DecodeCasioQvcMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                             uint32_t* rowCount);
// Sony, after the 12-byte "SONY DSC" header or at the note's start.
void DecodeSonyMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                         uint32_t* rowCount);
// Panasonic, after the 12-byte "Panasonic" header.
void DecodePanasonicMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                              uint32_t* rowCount);
// Nikon's older form: the cursor at note + 5; skips the rest of its 8-byte header.
void DecodeNikonType1MakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                               uint32_t* rowCount);
// Nikon's main form: at the directory of the embedded TIFF header (offset
// base = that header), or at the start of a note without header.
void DecodeNikonMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount);
// Pentax and Ricoh: the cursor at note + 6; reads the 6-byte "AOC" or 8-byte
// "PENTAX" header form itself.
void DecodePentaxMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                           uint32_t* rowCount);
// Canon: the directory at the note's first byte.
void DecodeCanonMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount);
// Canon, before the decoder runs: how far the note lies from where its
// offsets put it, when software moved it without changing them (0 otherwise).
// `note` holds exactly the note's bytes; noteOffset is its offset as its
// directory's offsets count it.
int64_t CanonNoteShift(const platform::Cursor& note, int64_t noteOffset);
// Olympus and OM System: the cursor at note + 5; reads the rest of the 8-, 12-
// or 16-byte header itself.
void DecodeOlympusMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount);
// Fujifilm: the cursor at note + 5, offset base = the note's start; the
// directory is little-endian whatever the cursor's order (which values follow).
void DecodeFujifilmMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                             uint32_t* rowCount);
// Minolta: the directory at the note's first byte.
void DecodeMinoltaMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount);
// Kodak's record of settings after the 8-byte "KDK" header (offsets unused).
void DecodeKodakMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount);
// Kodak's DC200-series record, at the note's first byte: true when it holds
// the picture's 8.3 file name where the series keeps it (the cursor untouched).
bool CheckKodakFileNameRecord(platform::Cursor& at);
void DecodeKodakFileNameMakerNote(const platform::Cursor& directory, uint32_t offsetBase,
                                  exif::TagRecordTable& table, uint32_t* rowCount);
// Sigma and Foveon: after the 8-byte "SIGMA" or "FOVEON" name and a 2-byte version.
void DecodeSigmaMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount);

// Apple: the directory after the 14-byte "Apple iOS" header, offsets from
// the note's start. CheckAppleHeader (with the cursor at the note's start)
// tells the header and takes the note's byte order from its mark.
bool CheckAppleHeader(platform::Cursor& at);
void DecodeAppleMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount);
// Samsung's older "STMN" record, from the note's start, offsets from there.
void DecodeSamsungStmnMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                                uint32_t* rowCount);
// Samsung's directory form, at the note's start: CheckSamsungDirectory
// tells it by its first entry (the version "0100") and takes its byte order
// from it; the decoder finds what its offsets count from.
bool CheckSamsungDirectory(platform::Cursor& at);
void DecodeSamsungMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount);
// Sanyo, after the 8-byte "SANYO" header.
void DecodeSanyoMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount);
// Ricoh's own forms (Ricoh-made Pentax bodies write Pentax notes): the
// directory after an 8-byte "Ricoh" header, and the older text notes. Each
// check is made at the note's start and leaves the cursor where its decoder
// starts.
bool CheckRicohDirectory(platform::Cursor& at);
void DecodeRicohMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount);
bool CheckRicohText(platform::Cursor& at);
void DecodeRicohTextMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                              uint32_t* rowCount);

}  // namespace makernotes
