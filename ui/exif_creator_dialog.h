// The EXIF creation dialog (template IDD_EXIF_CREATOR): the twelve fields in
// a report list, each Value cell edited in place by a click or F2, a
// keep-date check box, and OK writing the fields into the JPEG.
//
// The dialog works on an exif::ExifCreatorState the caller has prepared
// (PrepareExifCreator); it fills the default Date Taken itself. OK saves
// the keep-date choice to "EXIF"/"CreatorKeepOrgDate" and calls
// WriteExifToJpeg: on success the dialog ends with IDOK, on failure the
// writer's text is shown in a message box captioned "Vantaview" and the
// dialog stays open (a read-only file or one that already has EXIF data is
// refused that way). Cancel ends it with IDCANCEL and saves nothing.
#pragma once

#include <windows.h>

#include <string_view>

#include "exif/exif_creation.h"

namespace vv {

// Runs the dialog modally from `instance`'s template, owned by `parent`.
// Returns what DialogBoxParamW returns: IDOK, IDCANCEL, or -1 when the
// dialog could not be created.
INT_PTR RunExifCreatorDialog(HINSTANCE instance, HWND parent, exif::ExifCreatorState& state);

// The same dialog modeless (not shown yet), for hosts that run their own
// message loop; null on failure. It ends (hides itself) with EndDialog as the
// modal one does; the caller destroys it. `state` must outlive the window.
HWND CreateExifCreatorDialog(HINSTANCE instance, HWND parent, exif::ExifCreatorState& state);

// Puts the text typed for list row `row` (0 .. kCreatorVisibleRows-1) into
// the state's row; false (nothing changed) for any other row.
bool CommitCreatorEdit(exif::ExifCreatorState& state, int row, std::u16string_view text);

// Sets up the two columns and one item per visible row: the label, and the
// row's value as the Value cell. The label column fits the longest label.
void FillCreatorList(HWND list, const exif::ExifCreatorState& state);

}  // namespace vv
