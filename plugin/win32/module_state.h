// The DLL's module state: its instance handle (for dialog resources) and the
// modeless EXIF window. Everything runs on the viewer's thread; no locking.
#pragma once


#include <windows.h>

namespace vv {

struct ModuleState {
    HINSTANCE instance = nullptr;
    HWND exifWindow = nullptr;
};

ModuleState& Module();

}  // namespace vv
