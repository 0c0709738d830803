// The EXIF data exports. Until the EXIF reader lands they answer "nothing"
// without opening the file.
#include "output_buffer.h"
#include "plugin_api.h"

namespace vv {

uint64_t GetExifInfos(const char16_t*, uint32_t* size, uint32_t* out2, uint32_t* out3,
                      uint32_t* out4, uint32_t* out5, int32_t) {
    ClearOutputs({size, out2, out3, out4, out5});
    return 0;
}

int32_t LoadData_EXIF_W(const char16_t*, char16_t* out, int32_t capacity, int32_t) {
    ClearWide(out, capacity);
    return 0;
}

int32_t LoadTag_EXIF_W(const char16_t*, int32_t, char16_t* out, int32_t capacity) {
    ClearWide(out, capacity);
    return 0;
}

}  // namespace vv
