// The value readers that the directory walker and the maker decoders share:
// numbers and rationals at offset base + offset, each word in the file's
// order. Each reads at the position it is given and puts the stream back
// where it was, so an entry loop goes on where it stood. A short read or a
// position past the end gives an empty or partial value, never a read
// outside the caller's buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "entry.h"
#include "platform/platform.h"

namespace tiff {

// A multi-rational text stops growing at this many bytes.
constexpr size_t kMultiRationalTextLimit = 128;

// Puts the stream back where it was when the guard was made.
class PositionGuard {
public:
    explicit PositionGuard(platform::File& file) : file_(file), position_(file.Tell()) {}
    ~PositionGuard() {
        if (position_ >= 0) file_.Seek(position_);
    }
    PositionGuard(const PositionGuard&) = delete;
    PositionGuard& operator=(const PositionGuard&) = delete;

private:
    platform::File& file_;
    int64_t position_;
};

inline int64_t At(uint32_t base, uint32_t offset) { return static_cast<int64_t>(base) + offset; }

// Up to maxBytes of the entry's value bytes, in file order: from the value
// field when count x element size fits in it, else from base + offset.
// Returns the number of bytes stored.
size_t ReadValueBytes(platform::File& file, uint32_t base, const Entry& entry, uint8_t* out, size_t maxBytes);

// One RATIONAL or SRATIONAL at base + offset.
bool ReadRational(platform::File& file, uint32_t base, uint32_t offset, int bigEndian, uint32_t& numerator,
                  uint32_t& denominator);

// A rational's quotient in single precision, as every value text shows it.
float Quotient(uint32_t numerator, uint32_t denominator, bool isSigned);

enum class RationalDecimals { kTrimmedSix, kTwo };
// Up to maxCount rationals as "a  b  c": whole numbers bare, "%.2f/%.2f" for a
// zero denominator, else the quotient with six decimals (trailing zeros
// removed) or two. At most kMultiRationalTextLimit bytes.
std::string FormatMultiRational(platform::File& file, uint32_t base, uint32_t offset, uint32_t maxCount,
                                int bigEndian, RationalDecimals decimals);

// One rational: the numerator for a denominator of 0 or 1, else the quotient
// as "%0.2f"; empty when it cannot be read.
std::string FormatSingleRational(platform::File& file, uint32_t base, uint32_t offset, int bigEndian,
                                 bool isSigned);

}  // namespace tiff
