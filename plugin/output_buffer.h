// Small helpers shared by the data exports for the caller's output buffers.
#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace vv {

// Clears capacity characters of a caller's wide buffer (nothing for capacity < 1).
inline void ClearWide(char16_t* out, int32_t capacity) {
    if (out && capacity > 0) std::memset(out, 0, sizeof(char16_t) * static_cast<size_t>(capacity));
}

// Sets each given (non-null) output number to 0.
inline void ClearOutputs(std::initializer_list<uint32_t*> outputs) {
    for (uint32_t* p : outputs)
        if (p) *p = 0;
}

}  // namespace vv
