// The JPEG comment walk, the PNG text-chunk walk and the placeholder
// expansion on arbitrary bytes in memory.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "comment/comment_reader.h"
#include "comment/comment_writer.h"
#include "comment/placeholders.h"
#include "platform/platform.h"
#include "platform/input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto input = platform::Input::FromMemory(data, size);
    static char text[4080];
    comment::ReadJpegComments(*input, text, sizeof text);
    if (strnlen(text, sizeof text) == sizeof text) __builtin_trap();
    comment::ClassifyTextEncoding(text, std::strlen(text));

    const int n = comment::ReadPngComment(*input, text, sizeof text, 0);
    if (n < 0 || static_cast<size_t>(n) >= sizeof text || strnlen(text, sizeof text) > static_cast<size_t>(n))
        __builtin_trap();

    uint32_t offset = 0, length = 0;
    comment::LocateComment(*input, offset, length);
    if (length != 0 && (size < 4 || offset > size - 4)) __builtin_trap();  // its marker and length were read

    // The input's first bytes as a template. The file it names does not
    // exist: the EXIF and IPTC values a template reads from a file are
    // fuzzed through their own readers, so no value placeholder is added.
    const std::u16string pattern = platform::AnsiToUtf16(
        std::string_view(reinterpret_cast<const char*>(data), size < 64 ? size : 64));
    comment::PlaceholderContext context;
    context.filePath = u"/nonexistent/vv-fuzz.jpg";
    if (comment::ExpandPlaceholders(pattern + u"$C$$$|", context, 256).size() > 255) __builtin_trap();
    return 0;
}
