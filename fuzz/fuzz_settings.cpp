// The settings-file engine and the UTF-8 decoder on arbitrary text.
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/ini.h"
#include "platform/platform.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    platform::ini::Find(text, "EXIF", "HideTags");
    std::string updated = platform::ini::Set(text, "EXIF", "HideTags", "271");
    if (platform::ini::Find(updated, "exif", "HIDETAGS") != std::optional<std::string>("271")) __builtin_trap();
    std::u16string wide = platform::Utf8ToUtf16(text);
    // Whatever came in, the conversion back and forth is stable.
    if (platform::Utf8ToUtf16(platform::Utf16ToUtf8(wide)) != wide) __builtin_trap();
    return 0;
}
