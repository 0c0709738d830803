// The one guard around everything the system or the viewer calls in the
// plug-in: the exports, and every window, dialog and subclass procedure and
// callback it installs. No C++ exception (an allocation failure, above all)
// may leave them: the 32-bit build unwinds with DWARF tables, which cannot
// pass the system's own frames, so an exception there ends the viewer.
#pragma once

namespace vv {

// Runs `body`; when it throws, answers `failed` instead.
template <typename Result, typename Body>
Result Guarded(Result failed, Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        return failed;
    }
}

}  // namespace vv
