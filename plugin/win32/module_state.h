// The DLL's module state: its instance handle (for dialog resources). The
// EXIF window keeps its own module state in ui/exif_window. Everything runs
// on the viewer's thread; no locking.
#pragma once


#include <windows.h>

namespace vv {

struct ModuleState {
    HINSTANCE instance = nullptr;
};

ModuleState& Module();

}  // namespace vv
