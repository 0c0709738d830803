// Lens names by the identifiers that Pentax/Ricoh and Nikon maker notes
// store. Both tables are constant data, scanned from the first row; the
// first row whose key matches wins.
#pragma once

#include <cstddef>
#include <cstdint>

namespace makernotes {

struct PentaxLens {
    uint32_t series;
    uint32_t number;
    const char* name;  // at most 127 bytes
};

struct NikonLens {
    uint8_t key[8];    // compared byte for byte, in this order
    const char* name;  // at most 127 bytes
};

constexpr size_t kPentaxLensRows = 149;
constexpr size_t kNikonLensRows = 8;

// Series ascending, numbers ascending within a series, except the row
// (3, 4432) that stands between (3, 44) and (3, 46). No key pair twice.
extern const PentaxLens PentaxLensTable[kPentaxLensRows];
extern const NikonLens NikonLensTable[kNikonLensRows];

// Copies the name of the first of the first kPentaxLensScanRows rows with
// this series and number into out (cut to outSize - 1 bytes, terminated) and
// returns true; leaves out as it was and returns false when none matches.
bool LookupPentaxLens(uint32_t series, uint32_t number, char* out, size_t outSize);

// The same for the 8 key bytes of a Nikon lens, over all rows.
bool LookupNikonLens(const uint8_t key[8], char* out, size_t outSize);

}  // namespace makernotes
