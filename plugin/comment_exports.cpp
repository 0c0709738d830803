// The comment data export. Until the comment reader lands it answers
// "nothing" without opening the file.
#include "output_buffer.h"
#include "plugin_api.h"

namespace vv {

int32_t Load_Comment_W(const char16_t*, char16_t* out, int32_t capacity, int32_t, const char16_t*) {
    ClearWide(out, capacity);
    return 0;
}

}  // namespace vv
