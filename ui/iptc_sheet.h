// The IPTC property sheet: the modal sheet in which the user edits the IPTC
// fields of one image, or of a batch ("|"-separated names), and writes them.
//
// Batch mode 1 edits the first file and writes its text into every file
// after OK ("&Write"); batch mode 2 walks the files inside the sheet with
// "&Previous", "&Next" and "&Save", asking the viewer to show each file it
// moves to (WM_COPYDATA, type 9, the file name).
//
// The session (the record being edited, its snapshot, the names list) is
// module state: one sheet at a time, on the viewer's UI thread.
#pragma once

#include <windows.h>

namespace vv {

// Runs the sheet for `fileNames` owned by `parent`, with the settings of
// `settingsPath` (section "IPTC"). Returns 1 when nothing needed writing or
// everything was written, 0 when a write failed (its message was shown) or
// the names list could not be made. Null paths stand for empty.
int ShowIptcInfo(HINSTANCE instance, const char16_t* fileNames, HWND parent, const char16_t* settingsPath);

// The viewer's copy-data type for "show this file".
inline constexpr ULONG_PTR kShowFileCopyDataType = 9;

}  // namespace vv
