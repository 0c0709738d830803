// The hand-over from the directory walker to the camera makers' decoders.
// The walker knows no maker: it is handed a list of rules, each saying how a
// note is recognised (its first bytes, the Make text, the file kind), where
// the maker's directory starts, what its offsets count from and which
// decoder reads it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/input.h"
#include "platform/platform.h"
#include "tag_record.h"

namespace exif {

// Every decoder's arguments: a cursor from the maker's directory to the end
// of the input, in the note's byte order; the offset base its offsets are
// relative to; the table; the row count (read on entry, advanced for each row
// added).
using MakerNoteDecoder = void (*)(const platform::Cursor& directory, uint32_t offsetBase, TagRecordTable& table,
                                  uint32_t* rowCount);

// A header check made with the cursor at the rule's directory position: true
// when the header is there, leaving the cursor as a range from the end of the
// header, in the order the header gives; false with the cursor untouched.
using MakerNoteProbe = bool (*)(platform::Cursor& at);

// For a note whose offsets count from outside it: given a cursor over exactly
// the note's bytes (in its order) and the note's offset as its directory's
// offsets count it, returns what to add to the offset base for those offsets
// to find their values: 0 unless the note was moved by software that left
// its offsets as they were.
using MakerNoteRelocation = int64_t (*)(const platform::Cursor& note, int64_t noteOffset);

enum class MakerTest : uint8_t {
    kNone,         // never holds
    kPrefixIs,     // the note's first five bytes (up to a zero) equal word, ignoring case
    kPrefixHas,    // the first five bytes contain word (case-sensitive)
    kMakeIs,       // MakeEquals(word)
    kMakeHas,      // MakeContains(word)
    kCr3,          // the file is a Canon CR3
};

struct MakerCondition {
    MakerTest test = MakerTest::kNone;
    const char* word = "";
};

// What the directory's offsets count from.
enum class OffsetBase : uint8_t {
    kTiffHeader,  // the EXIF block's TIFF header
    kNote,        // the note's start + baseOffset
    kCr3Header,   // in a CR3, the note's own TIFF header; else the TIFF header
};

struct MakerNoteRule {
    // Rules of one group are alternatives, tried in order: the first that
    // matches runs. Groups are tested one after the other, each on its own,
    // so a note that passes two groups is decoded twice.
    uint8_t group;
    MakerCondition anyOf[2];  // either of these
    MakerCondition also;      // and this (kNone: nothing more is needed)
    uint32_t directory;       // the decoder's start, from the note's first byte
    OffsetBase base;
    uint32_t baseOffset;
    MakerNoteDecoder decode;
    MakerNoteProbe probe = nullptr;  // checked at `directory` before the rule matches
    MakerNoteRelocation relocate = nullptr;  // asked when the note's length is known
};

struct MakerNoteRules {
    const MakerNoteRule* rules = nullptr;
    size_t size = 0;
};

// No maker notes: the heading rows are made, no decoder runs.
inline MakerNoteRules NoMakerNotes() { return {}; }

// Called by the walker after the Exif and GPS directories, once it has read
// the first five bytes of the maker note and appended the separator and the
// "Maker Note (Vendor):" heading: recognises the maker by the rules,
// positions the file at the maker's directory and runs its decoder.
// makerNoteOffset is the offset stored in the Exif directory (relative to
// tiffBase; 0 means none); isCr3 marks a Canon CR3 file, whose note value is
// the absolute position of an embedded TIFF header. makerNoteSize is the
// note's length in bytes (0 when not known: then a moved note is not looked
// for). The note is found again from these offsets, so the file may stand
// anywhere on entry.
void DispatchMakerNote(platform::File& file, uint32_t tiffBase, TagRecordTable& table, uint32_t* rowCount,
                       int bigEndian, uint32_t makerNoteOffset, bool isCr3, const MakerNoteRules& rules,
                       uint32_t makerNoteSize = 0);

// Where a note lies and what the offsets in it count from.
struct MakerNotePlace {
    uint64_t start = 0;  // the note's first byte in the file
    uint32_t size = 0;   // its length; 0 when not known
    int bigEndian = 0;   // the order it is read in, unless its maker's header says otherwise
    // What offsets that count from a TIFF header count from. For a note
    // copied out of the file it was written in, this lies where that file's
    // header would lie, so it may come before the start of this file.
    int64_t tiffBase = 0;
    // In a CR3, the note's own TIFF header, from which Canon's offsets count;
    // elsewhere tiffBase.
    int64_t cr3Header = 0;
    bool isCr3 = false;
};

// A maker note kept in DNG private data (tag 50740 of IFD0: `size` bytes at
// tiffBase + offset), in one of two forms:
//
//   "Adobe\0" then blocks of { type (4 chars), length (4, big-endian), data }:
//     the "MakN" block of a converted raw file:
//       +0 the note's byte order, "II" or "MM"
//       +2 the note's offset in the file it came from (4, big-endian)
//       +6 the note, its offsets counting as they did in that file
//   "PENTAX \0" + mark + directory: a Pentax note as the camera wrote it
//     (Pentax and Ricoh-made bodies), its offsets counting from its start and
//     read in the order of the EXIF block like the note of a JPEG.
//
// True with the note's place when the data holds one; false for any other
// private data, a truncated record or a note that does not fit in it.
bool FindDngPrivateNote(platform::File& file, uint32_t tiffBase, int bigEndian, uint32_t offset, uint32_t size,
                        MakerNotePlace& place);

// Recognises the maker of a note whose place is known and runs its decoder
// (what DispatchMakerNote does once it has found the note).
void DispatchMakerNoteAt(platform::File& file, const MakerNotePlace& place, TagRecordTable& table,
                         uint32_t* rowCount, const MakerNoteRules& rules);

// The Make text is the value of the last row with tag 271. MakeEquals: the
// whole text equals word, ignoring ASCII case. MakeContains: the upper-cased
// text contains word (given in upper case). Both are false without a Make row.
bool MakeEquals(const TagRecordTable& table, uint32_t rowCount, const char* word);
bool MakeContains(const TagRecordTable& table, uint32_t rowCount, const char* word);

}  // namespace exif
