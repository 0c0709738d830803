// Every bound the maker-note decoders put on what they read, each with its
// reason. The table's own capacities are in exif/tag_record.h.
#pragma once

#include <cstddef>
#include <cstdint>

namespace makernotes {

// A maker's directory is decoded only while rows + entries stay below this:
// the one guard against a corrupt entry count, and it keeps every maker row
// below the 256 rows whose long values the table frees.
constexpr uint32_t kMakerNoteRowLimit = 256;

// The first bytes of a note that name its maker ("Nikon", "OLYMP", "QVC"...).
constexpr size_t kMakerNotePrefixSize = 5;

// Rows of the Pentax lens table that a lookup scans: the last two rows of
// the table are kept as data but are never answered.
constexpr size_t kPentaxLensScanRows = 147;

// Bytes of a Panasonic face record read for its text: the record is short
// and only bytes 4 to 23 are shown.
constexpr uint32_t kFaceInfoReadLimit = 256;
constexpr size_t kFaceInfoTextStart = 4;
constexpr size_t kFaceInfoTextBytes = 20;

// Numbers a generic value lists (a SHORT or LONG array): more would not fit
// the 255-byte value text anyway.
constexpr uint32_t kGenericNumbersLimit = 64;
// Rationals a generic value lists.
constexpr uint32_t kGenericRationalsLimit = 8;

// Elements of a settings array that are read: the settings a maker names all
// lie below this (Minolta's last at 49), and what lies beyond is never fetched.
constexpr size_t kArrayElementsLimit = 64;

// Elements of a Canon record that are read: the AF records of the newest
// bodies run to some 600 elements, and nothing named lies beyond.
constexpr size_t kCanonRecordElementsLimit = 1024;
// Bytes of a Canon camera-info block that are read: every field named lies
// below.
constexpr size_t kCanonCameraInfoReadLimit = 0x200;

// Bytes of a Sony block that are read: past the furthest field named. The
// enciphered blocks' furthest lies at byte 6290 (tag 2010), the plain
// blocks' below byte 0x180, and the DSLR-A100's exposure info ends at byte
// 18920 of its 18928.
constexpr size_t kSonyBlockReadLimit = 0x1900;
constexpr size_t kSonyPlainBlockReadLimit = 0x180;
constexpr size_t kSonyA100BlockReadLimit = 18928;

// Integers and quotients of one entry read for a value text (Apple's
// acceleration vector has three, Samsung's sensor areas eight).
constexpr size_t kEntryIntegersLimit = 32;
constexpr size_t kEntryQuotientsLimit = 8;

// Bytes of an Apple property list (the run-time record) that are read: the
// record is about a hundred bytes, and a list cut here is read no further.
constexpr size_t kApplePlistReadLimit = 512;
// Entries of a property-list dictionary that are looked at.
constexpr size_t kApplePlistEntriesLimit = 16;

// Bytes of a Ricoh text note that are read: the text form is a few
// "key value;" pairs.
constexpr size_t kRicohTextReadLimit = 256;

}  // namespace makernotes
