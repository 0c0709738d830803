// Maker-note decoding has not arrived yet: the hand-over adds no rows.
#include "makernote_dispatch.h"

namespace makernotes {

void DispatchMakerNote(platform::File&, uint32_t, exif::TagRecordTable&, uint32_t*, int, uint32_t, bool) {}

}  // namespace makernotes
