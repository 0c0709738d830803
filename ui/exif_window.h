// The EXIF information window: the one modeless tool window that lists the
// tags of the file the viewer shows, follows the viewer from file to file,
// hides the tags the user chose, copies rows, remembers its placement and
// opens a GPS position in map services or Google Earth.
//
// There is at most one window per process; its handle and the paths it works
// on are module state. Everything runs on the viewer's UI thread.
#pragma once

#include <windows.h>

#include <string_view>

namespace vv {

// Refreshes the open window with `path`, or opens it from `instance`'s
// template (owned by `parent`) when none is open. Mode 2 only refreshes: with
// no window it opens nothing. Returns 0, or -1 when the window could not be
// created (memory included). Paths are cut to 260 characters; null stands for
// empty.
int ShowExifInfo(HINSTANCE instance, const char16_t* path, HWND parent, const char16_t* settingsPath, int mode);

// The window when it is a live window, else null.
HWND ExifWindowHandle();

// Destroys the window if it exists (it saves its placement as it goes).
void CloseExifWindow();

// Copies the list's rows (or only the selected ones) to the clipboard as
// Unicode text, one line per row: the name (column `nameColumn`), " - ", the
// value (the column after it), CR LF. The EXIF list's names are in column 1
// (column 0 holds the tag number), the XMP list's in column 0. Beeps and
// leaves the clipboard alone when there is nothing to copy; the list has the
// focus afterwards.
void CopyListToClipboard(HWND owner, HWND list, bool selectedOnly, int nameColumn = 1);

// The private message that makes the window read its file again.
inline constexpr UINT kExifReloadMessage = WM_USER + 0x2FD;

}  // namespace vv
