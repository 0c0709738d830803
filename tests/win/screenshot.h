// Photographs of the dialogs as the tests leave them: the window's screen
// area copied from the (virtual) display and saved as PNG by GDI+, into the
// screenshots folder of the Windows build tree that ran them.
#pragma once

#include <windows.h>

#include <vector>

namespace wintest {

// Pumps the window's pending paint messages, then saves its screen area as
// "<folder>/<name>.png" ("<name>_144dpi.png" on a screen of 144 DPI, and so
// on); with `also` (a menu, say), the rectangle that holds
// both. Returns false (and saves nothing) when the window is not visible or
// the display cannot be read.
bool SaveScreenshot(HWND window, const char* name, HWND also = nullptr);

// Handles every queued message of this thread (no waiting).
void PumpMessages();

// Whether the screen is dark at every given point of `window`'s client area
// once the window has painted (as the dark theme's colours are).
bool DarkOnScreen(HWND window, std::vector<POINT> client);

}  // namespace wintest
