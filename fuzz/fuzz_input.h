// The fuzz input as a file on disk, for readers that open files by path the
// way the viewer hands them over. One file per process, removed at exit.
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/platform.h"

namespace fuzzinput {

inline const std::u16string& InputPath() {
    struct InputFile {
        const std::u16string path =
            platform::TempFolder() + platform::Utf8ToUtf16("vv-fuzz-" + std::to_string(getpid()) + ".bin");
        ~InputFile() { platform::RemoveFile(path); }
    };
    static const InputFile file;
    return file.path;
}

// Writes the input to InputPath(); false when it could not be written.
inline bool WriteInput(const uint8_t* data, size_t size) {
    auto out = platform::OpenFile(InputPath(), platform::FileMode::kWrite);
    return out && out->WriteAll(data, size) && out->Flush();
}

}  // namespace fuzzinput
