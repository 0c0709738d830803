// The value readers that the directory walker and the maker decoders share:
// numbers and rationals at offset base + offset, read through `in`, a cursor
// over the whole input in the values' byte order. Each reads through a child
// of its own, so the caller's cursor stays where it stood. A short read or a
// position past the end gives an empty or partial value, never a read
// outside the caller's buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "entry.h"
#include "platform/input.h"

namespace tiff {

// A multi-rational text stops growing at this many bytes.
constexpr size_t kMultiRationalTextLimit = 128;

inline uint64_t At(uint32_t base, uint32_t offset) { return uint64_t{base} + offset; }

// Up to maxBytes of the entry's value bytes, in file order: from the value
// field when count x element size fits in it, else from base + offset.
// Returns the number of bytes stored.
size_t ReadValueBytes(const platform::Cursor& in, uint32_t base, const Entry& entry, uint8_t* out, size_t maxBytes);

// One RATIONAL or SRATIONAL at base + offset; numerator and denominator are
// left as they were when it cannot be read.
bool ReadRational(const platform::Cursor& in, uint32_t base, uint32_t offset, uint32_t& numerator,
                  uint32_t& denominator);

// A rational's quotient in single precision, as every value text shows it.
float Quotient(uint32_t numerator, uint32_t denominator, bool isSigned);

enum class RationalDecimals { kTrimmedSix, kTwo };
// Up to maxCount rationals as "a  b  c": whole numbers bare, "%.2f/%.2f" for a
// zero denominator, else the quotient with six decimals (trailing zeros
// removed) or two. At most kMultiRationalTextLimit bytes.
std::string FormatMultiRational(const platform::Cursor& in, uint32_t base, uint32_t offset, uint32_t maxCount,
                                RationalDecimals decimals);

// One rational: the numerator for a denominator of 0 or 1, else the quotient
// as "%0.2f"; empty when it cannot be read.
std::string FormatSingleRational(const platform::Cursor& in, uint32_t base, uint32_t offset, bool isSigned);

}  // namespace tiff
