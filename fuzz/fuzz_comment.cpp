// The JPEG comment walk, the PNG text-chunk walk and the placeholder
// expansion on arbitrary bytes. The readers take a file name, so each input
// is written to a file of this process first.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "comment/comment_reader.h"
#include "comment/comment_writer.h"
#include "comment/placeholders.h"
#include "fuzz_input.h"
#include "platform/platform.h"

using fuzzinput::InputPath;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (!fuzzinput::WriteInput(data, size)) return 0;
    static char text[4080];
    comment::ReadJpegComments(InputPath(), text, sizeof text);
    if (strnlen(text, sizeof text) == sizeof text) __builtin_trap();
    comment::ClassifyTextEncoding(text, std::strlen(text));

    const int n = comment::ReadPngComment(InputPath(), text, sizeof text, 0);
    if (n < 0 || static_cast<size_t>(n) >= sizeof text || strnlen(text, sizeof text) > static_cast<size_t>(n))
        __builtin_trap();

    uint32_t offset = 0, length = 0;
    comment::LocateComment(InputPath(), offset, length);
    if (length != 0 && (size < 4 || offset > size - 4)) __builtin_trap();  // its marker and length were read

    // The input's first bytes as a template, expanded against the input as a file.
    const std::u16string pattern = platform::AnsiToUtf16(
        std::string_view(reinterpret_cast<const char*>(data), size < 64 ? size : 64));
    comment::PlaceholderContext context;
    context.filePath = InputPath();
    if (comment::ExpandPlaceholders(pattern + u"$D$E271$I120", context, 256).size() > 255) __builtin_trap();
    return 0;
}
