// The hand-over from the directory walker to the camera makers' decoders.
#pragma once

#include <cstdint>

#include "exif/tag_record.h"
#include "platform/platform.h"

namespace makernotes {

// A maker's directory is decoded only while rows + entries stay below this.
constexpr uint32_t kMakerNoteRowLimit = 256;

// Every decoder's arguments: the open file (positioned at the maker's
// directory), the offset base its offsets are relative to, the table, the row
// count (read on entry, advanced for each row added) and the byte-order flag
// (non-zero for big-endian).
using MakerNoteDecoder = void (*)(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                                  uint32_t* rowCount, int bigEndian);

// Called by the walker after the Exif and GPS directories, with the file
// positioned just after the first five bytes of the maker note: recognises
// the maker from those bytes and the Make row, positions the file at the
// maker's directory and runs its decoder. makerNoteOffset is the offset stored
// in the Exif directory (relative to tiffBase); isCr3 marks a Canon CR3 file.
void DispatchMakerNote(platform::File& file, uint32_t tiffBase, exif::TagRecordTable& table,
                       uint32_t* rowCount, int bigEndian, uint32_t makerNoteOffset, bool isCr3);

}  // namespace makernotes
