// How each camera maker's note is recognised and where its directory starts:
// the rules the directory walker is handed.
#pragma once

#include "exif/maker_note_dispatch.h"
#include "makernote_limits.h"
#include "platform/platform.h"

namespace makernotes {

// Every maker this library decodes, in the order the tests are made.
const exif::MakerNoteRules& StandardMakerNoteRules();

// With the file just after a note's "Nikon": true when the next 13 bytes are
// one of the known embedded-TIFF headers, leaving the file after them (at the
// embedded header's first directory) and setting *bigEndian to the header's
// order; otherwise false, with the file back where it was.
bool CheckNikonEmbeddedTiffHeader(platform::File& file, int* bigEndian);

}  // namespace makernotes
