// Data the Nikon decoder reads its main-form notes with: the two
// substitution tables of the cipher that hides lens data, colour balance and
// shot info from version 0201 on, and the names of further lenses by their
// 8-byte key (the lenses that the older lens table does not name).
#pragma once

#include <cstddef>
#include <cstdint>

#include "lens_tables.h"

namespace makernotes {

// Indexed by the low byte of the serial number and by the shutter count's
// four bytes XORed together.
extern const uint8_t NikonCipherBySerial[256];
extern const uint8_t NikonCipherByCount[256];

// Key bytes ascending; each key once.
constexpr size_t kNikonMoreLensRows = 34;
extern const NikonLens NikonMoreLensTable[kNikonMoreLensRows];

// The name of the lens with these 8 key bytes from NikonMoreLensTable,
// copied into out (cut to outSize - 1 bytes); false, out untouched, when the
// table does not list it.
bool LookupNikonMoreLens(const uint8_t key[8], char* out, size_t outSize);

}  // namespace makernotes
