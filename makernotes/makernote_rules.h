// How each camera maker's note is recognised and where its directory starts:
// the rules the directory walker is handed.
#pragma once

#include "exif/maker_note_dispatch.h"
#include "makernote_limits.h"
#include "platform/input.h"

namespace makernotes {

// Every maker this library decodes, in the order the tests are made.
const exif::MakerNoteRules& StandardMakerNoteRules();

// With the cursor just after a note's "Nikon": true when the next 13 bytes
// are one of the known embedded-TIFF headers, leaving the cursor as a range
// from after them (the embedded header's first directory) in the header's
// order; otherwise false, with the cursor untouched.
bool CheckNikonEmbeddedTiffHeader(platform::Cursor& at);

}  // namespace makernotes
