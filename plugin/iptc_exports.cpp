// The IPTC data exports. Until the IPTC reader lands they answer "nothing"
// without opening the file.
#include "output_buffer.h"
#include "plugin_api.h"

namespace vv {

int32_t LoadData_IPTC_W(const char16_t*, char16_t* out, int32_t capacity, int32_t) {
    ClearWide(out, capacity);
    return 0;
}

int32_t LoadTag_IPTC_W(const char16_t*, int32_t, char16_t* out, int32_t capacity) {
    ClearWide(out, capacity);
    return 0;
}

}  // namespace vv
