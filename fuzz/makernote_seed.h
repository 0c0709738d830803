// The input layout of fuzz_makernotes, for the seed files: flags (bit 0
// big-endian and those below), no rows before, the note's offset, the length
// of the Make text, the Make text, then the file. And the number lists the
// seed files fill their notes' values with.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "fixture/makernote_fixture.h"

namespace fuzzseeds {

// Flags beyond the byte order: a CR3 file; a note whose length is known
// (it runs to the end of the file); DNG private data at the offset.
constexpr uint8_t kCr3 = 2, kNoteToEnd = 4, kDngPrivateData = 8;

inline fixture::Bytes MakerNoteSeed(fixture::ByteOrder order, const std::string& make, const fixture::Bytes& file,
                                    bool cr3 = false, uint8_t flags = 0) {
    fixture::Bytes seed{static_cast<uint8_t>((order == fixture::ByteOrder::kBig ? 1 : 0) | (cr3 ? kCr3 : 0) | flags),
                        0, static_cast<uint8_t>(fixture::kNoteOffset), static_cast<uint8_t>(make.size())};
    fixture::Append(seed, fixture::ToBytes(make));
    fixture::Append(seed, file);
    return seed;
}

// SHORTs or LONGs in the given order (negative values as their two's complement).
inline fixture::Bytes Shorts(fixture::ByteOrder order, std::initializer_list<int64_t> values) {
    fixture::Bytes out;
    for (int64_t v : values) fixture::PutU16(out, static_cast<uint16_t>(v), order);
    return out;
}
inline fixture::Bytes Longs(fixture::ByteOrder order, std::initializer_list<int64_t> values) {
    fixture::Bytes out;
    for (int64_t v : values) fixture::PutU32(out, static_cast<uint32_t>(v), order);
    return out;
}

// `count` SHORTs (size 2) or LONGs (size 4) counting up from 0 by `step`.
inline fixture::Bytes Ramp(fixture::ByteOrder order, int count, int step, int size = 2) {
    fixture::Bytes out;
    for (int i = 0; i < count; ++i) {
        if (size == 2) fixture::PutU16(out, static_cast<uint16_t>(i * step), order);
        else fixture::PutU32(out, static_cast<uint32_t>(i * step), order);
    }
    return out;
}

}  // namespace fuzzseeds
