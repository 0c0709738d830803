// The pieces of the Pentax decoder that its files share. The main
// directory and the header forms are in pentax_makernote.cpp; the blocks of
// settings some tags hold, read in a second pass, in pentax_blocks.cpp (the
// pass, and the camera's, battery, AF and settings blocks) and
// pentax_shot_blocks.cpp (shake reduction, exposure, lens and flash); the
// value formats they share in pentax_values.cpp.
#pragma once

#include <cstddef>
#include <cstdint>

#include "makernote_array.h"
#include "makernote_decoders.h"

namespace makernotes {
namespace pentax {

// ------------------------------------------------------------ value formats

// A number to 15 significant digits, no trailing zeros.
void SetNumber(exif::TagRecord& row, double v);

// An exposure time in seconds: short times as a fraction, long ones in
// tenths with a whole number shown plain.
void SetExposureTime(exif::TagRecord& row, double seconds);

// An EV amount with its sign, or a plain 0.
void SetSignedEv(exif::TagRecord& row, double ev);

// The body's name for its model ID, else the number.
void SetModel(exif::TagRecord& row, uint32_t id);

// Names of the bits set in a mask, ", " between them; unnamed bits as "[n]".
void SetBits(exif::TagRecord& row, uint32_t mask, const ValueText* bits, size_t size);

// ------------------------------------------------------------ blocks

// Some tags hold a block of settings, one or more bytes each; they are read
// in a second pass, after the plain tags, one row per setting. Each block is
// recognised by its tag and, where a tag has several layouts, its count.

// A block's element Index as a byte, unsigned or signed.
template <size_t Index>
uint32_t Byte(const ArrayElements& a) { return static_cast<uint32_t>(a.At(Index)); }
template <size_t Index>
int32_t SignedByte(const ArrayElements& a) { return static_cast<int8_t>(a.At(Index) & 0xFF); }

// The settings of one block layout.
using Rows = List<ArrayRow>;

// The blocks of pentax_shot_blocks.cpp.
extern const Rows kShakeReductionBlock;  // tag 005C, 4 bytes
extern const Rows kAeBlock;              // tag 0206, up to 20 bytes
extern const Rows kLensBlock;            // tag 0207, the older layouts
extern const Rows kFlashBlock;           // tag 0208, 27 bytes

// The second pass over the directory (at its count): the blocks, and the
// values that need other tags first. rowsBefore: the row count before the
// entry loop ran.
void DecodeBlocks(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                  uint32_t rowsBefore, uint32_t* rowCount);

}  // namespace pentax
}  // namespace makernotes
