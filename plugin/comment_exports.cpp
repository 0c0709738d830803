// The comment data export. The viewer asks it only for PNG text: it reads
// JPEG comments itself, so a list naming only ";JPG;" is answered with
// nothing, as the viewer expects.
#include <algorithm>
#include <memory>
#include <new>
#include <string>

#include "comment/comment_reader.h"
#include "export_inputs.h"
#include "output_buffer.h"
#include "platform/platform.h"
#include "plugin_api.h"
#include "platform/input.h"

namespace vv {
namespace {

bool ListsFormat(const char16_t* formats, std::u16string_view format) {
    return std::u16string_view(formats).find(format) != std::u16string_view::npos;
}

// Room behind the PNG text beyond the caller's capacity.
constexpr size_t kPngBufferSlack = 8;

// The PNG text into a buffer already cleared (each export clears it once).
int32_t WritePngComment(platform::File& input, char16_t* out, int32_t capacity, int32_t unused,
                        const char16_t* formats) {
    if (!formats || !out || capacity < 1 || !ListsFormat(formats, u";PNG;")) return 0;
    try {
        const size_t size = static_cast<size_t>(capacity) + kPngBufferSlack;
        std::unique_ptr<char[]> text(new (std::nothrow) char[size]());
        if (!text) return 0;
        const int n = comment::ReadPngComment(input, text.get(), static_cast<size_t>(capacity), unused);
        if (n > 0) {
            const std::u16string wide = platform::AnsiToUtf16(text.get());
            std::copy_n(wide.begin(), std::min(wide.size(), static_cast<size_t>(capacity) - 1), out);
        }
        return n;
    } catch (const std::bad_alloc&) {
        ClearWide(out, capacity);
        return 0;
    }
}

}  // namespace

int32_t Load_Comment_W(const char16_t* path, char16_t* out, int32_t capacity, int32_t unused,
                       const char16_t* formats) {
    ClearWide(out, capacity);
    if (!formats || !path || !out || capacity < 1 || !ListsFormat(formats, u";PNG;")) return 0;
    try {
        const auto input = platform::Input::Open(path);
        return input ? WritePngComment(*input, out, capacity, unused, formats) : 0;
    } catch (const std::bad_alloc&) {
        ClearWide(out, capacity);
        return 0;
    }
}

int32_t LoadPngComment(platform::File& input, char16_t* out, int32_t capacity, int32_t unused,
                       const char16_t* formats) {
    ClearWide(out, capacity);
    return WritePngComment(input, out, capacity, unused, formats);
}

}  // namespace vv
