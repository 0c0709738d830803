// Values read in the type their entry declares, for the makers that store a
// setting as a LONG or SLONG as readily as a SHORT (Apple, Samsung, Ricoh,
// Sanyo): the entry loop's 16-bit rules would see the wrong half of a
// big-endian LONG. And rows that one entry adds beyond its own, for the
// records and sub-directories read in a second pass.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "exif/tag_record.h"
#include "makernote_directory.h"

namespace makernotes {

// Up to `max` integer elements of the entry in the note's byte order, each
// widened with its type's sign (BYTE, SBYTE, UNDEFINED, SHORT, SSHORT, LONG,
// SLONG); 0 for any other type. Returns how many were read.
size_t ReadIntegers(const MakerEntry& e, int64_t* out, size_t max);

// Up to `max` RATIONAL or SRATIONAL quotients; a zero denominator ends the
// list. Returns how many were read.
size_t ReadQuotients(const MakerEntry& e, double* out, size_t max);

// A quotient as text with ten significant digits ("0.54", "-0.6483164083").
void AppendShortest(std::string& text, double v);

// The first integer element through an enumeration; nothing when the entry
// holds none.
void FormatFirstInteger(const MakerEntry& e, const Enumeration& en);
template <const Enumeration& E>
void FirstInteger(const MakerEntry& e) {
    FormatFirstInteger(e, E);
}

// Every quotient, separated by spaces.
void FormatQuotients(const MakerEntry& e);

// A row for `entry` after the rows the entry loop made, named; null (and no
// row) once the table holds kMakerNoteRowLimit rows.
exif::TagRecord* AppendEntryRow(exif::TagRecordTable& table, uint32_t* rowCount, const tiff::Entry& entry,
                                const char* name);

}  // namespace makernotes
