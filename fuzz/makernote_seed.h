// The input layout of fuzz_makernotes, for the seed files: flags (bit 0
// big-endian, bit 1 CR3), no rows before, the note's offset, the length of
// the Make text, the Make text, then the file.
#pragma once

#include <string>

#include "fixture/makernote_fixture.h"

namespace fuzzseeds {

inline fixture::Bytes MakerNoteSeed(fixture::ByteOrder order, const std::string& make, const fixture::Bytes& file,
                                    bool cr3 = false) {
    fixture::Bytes seed{static_cast<uint8_t>((order == fixture::ByteOrder::kBig ? 1 : 0) | (cr3 ? 2 : 0)), 0,
                        static_cast<uint8_t>(fixture::kNoteOffset), static_cast<uint8_t>(make.size())};
    fixture::Append(seed, fixture::ToBytes(make));
    fixture::Append(seed, file);
    return seed;
}

}  // namespace fuzzseeds
