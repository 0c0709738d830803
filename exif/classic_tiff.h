// EXIF that a file keeps in a form the directory walker does not read,
// given to it as a classic TIFF that it does read.
//
// - BigTIFF ("II" 43 / "MM" 43, 8-byte offsets, 20-byte entries): the first
//   directory, the one after it, and the Exif and GPS directories they point
//   to become classic directories with 12-byte entries, laid behind the end
//   of the file; the file's header becomes a classic one that points at them.
//   Every value stays where it is in the file (a value of 5 to 8 bytes that
//   a BigTIFF entry holds itself is pointed at inside that entry), so maker
//   notes and the offsets inside them read as they are. LONG8 values that
//   fit 32 bits become LONGs; an entry that cannot be told in 32 bits (a
//   count or an offset beyond 4 GiB) is left out.
// - PNG whose eXIf chunk gives nothing but which carries a raw profile
//   ("Raw profile type exif" or "Raw profile type APP1" in a tEXt, zTXt or
//   iTXt chunk): the profile's TIFF file, behind "Exif\0\0" when it starts so.
#pragma once

#include <memory>

#include "platform/platform.h"

namespace exif {

// The classic rendering, reading through `file` where it needs the file's
// bytes (`file` must outlive it); null when `file` is neither, or there is
// nothing to render.
std::unique_ptr<platform::File> OpenClassicTiff(platform::File& file);

}  // namespace exif
