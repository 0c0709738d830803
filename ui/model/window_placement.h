// Where a window of the plug-in may stand: wholly on the work area of the
// monitor it opens on, whatever the DPI it was sized or saved at.
#pragma once

namespace vv {

// A rectangle in screen or client pixels, right and bottom exclusive.
struct WinRect {
    int left = 0, top = 0, right = 0, bottom = 0;
};

// `window` moved the least distance that puts it wholly on `workArea`. One
// larger than the work area is made as wide or high as the work area when
// `mayShrink` (a sizable window lays itself out again), else its top-left
// corner is kept on the work area so that its caption stays in reach.
WinRect FitToWorkArea(const WinRect& window, const WinRect& workArea, bool mayShrink);

}  // namespace vv
