// TIFF field types and the 12-byte directory entry, shared by the directory
// walker and every maker-note decoder.
//
//   +0 tag (16)  +2 type (16)  +4 count (32)  +8 value, or offset to it (32)
//
// Values longer than the 4-byte field sit at offset base + offset.
#pragma once

#include <cstdint>

#include "platform/input.h"

namespace tiff {

// The words of entries and values, read in the directory's byte order.
using platform::GetU16;
using platform::GetU32;

enum FieldType : uint16_t {
    kByte = 1, kAscii = 2, kShort = 3, kLong = 4, kRational = 5, kSByte = 6, kUndefined = 7,
    kSShort = 8, kSLong = 9, kSRational = 10, kFloat = 11, kDouble = 12, kIfd = 13,
};

constexpr uint32_t kEntrySize = 12;
constexpr uint32_t kValueFieldSize = 4;

// Bytes of one element of a field type; 0 for a type this reader does not know.
uint32_t TypeSize(uint16_t type);

// One directory entry, fields in host order.
struct Entry {
    uint16_t tag = 0;
    uint16_t type = 0;
    uint32_t count = 0;
    uint32_t valueField = 0;     // swapped as one 32-bit word in a big-endian file
    uint16_t inlineShort = 0;    // a SHORT's value: its two bytes at the field's start;
                                 // for other types the low half of the word
    uint8_t fieldBytes[4] = {};  // the value field in file order
};

// Reads the 12 bytes at the cursor, in its byte order; a short read fails
// the cursor and leaves the entry all zero.
bool ReadEntry(platform::Cursor& in, Entry& entry);
// The same, keeping what a short read got with the missing bytes zero; the
// cursor does not fail (the maker decoders go on with such an entry).
void ReadPartialEntry(platform::Cursor& in, Entry& entry);

}  // namespace tiff
