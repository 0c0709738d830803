// Dark-mode theming of the plug-in's dialogs.
//
// Every dialog procedure offers each message to HandleDarkModeMessage first
// and calls ApplyDarkModeToDialog from WM_INITDIALOG with the viewer's
// "Viewing"/"DarkMode" setting. With darkMode 0 both do nothing, so the
// dialogs look exactly as the platform draws them.
//
// Every theming function the platform may lack (uxtheme, dwmapi, the
// subclassing calls of comctl32, GetDpiForWindow) is looked up at run time;
// a missing one is skipped and the dialog is simply less dark. Nothing here
// throws. All of it runs on the viewer's UI thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

namespace vv {

// Colours (0x00BBGGRR).
constexpr COLORREF kDarkBackgroundColour = 0x202020;
constexpr COLORREF kDarkTextColour = 0xDCDCDC;
constexpr COLORREF kDarkDisabledTextColour = 0x808080;

// The icon resource drawn as the size grip in dark mode.
constexpr int kDarkSizeGripIconId = 1478;

// Darkens `dialog` and its children when darkMode is not 0: creates the
// background brush (once per library life), records the screen DPI, gives
// the window a dark title bar where the desktop window manager offers one,
// and themes or subclasses the child controls. `flag` -1 also subclasses
// icon push buttons (BS_ICON); any other value leaves them to the platform.
// Call it once per dialog, from WM_INITDIALOG.
void ApplyDarkModeToDialog(HWND dialog, int flag, int darkMode);

// Offers one message of a dialog procedure to the theming layer. Returns
// nonzero when it handled the message; *result then holds what the dialog
// procedure must return. Handles nothing when darkMode is 0.
//  - WM_CTLCOLOREDIT..WM_CTLCOLORSTATIC: light text on the dark brush
//    (opaque for edits, transparent otherwise); *result is the brush.
//  - WM_MEASUREITEM / WM_DRAWITEM for owner-drawn menu items, whose item
//    data is a pointer to the item's text (TrackThemedPopupMenu sets this
//    up; null or "" is a separator), and WM_DRAWITEM for owner-drawn combo
//    box items. WM_DRAWITEM for control `skipControlId` is left to the
//    dialog (pass -1 to skip none).
//  - WM_NOTIFY with NM_CUSTOMDRAW from a list view: the selection of a list
//    without the focus and its grid lines in dark colours.
BOOL HandleDarkModeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, int darkMode, int skipControlId,
                           LRESULT* result);

// Shows `menu` at screen point x, y with TrackPopupMenu, owned by `owner`:
// the menu itself when it has more than one item, else its first submenu
// when that has items. flags -1 stand for 0 (left/top aligned). In dark mode
// (once ApplyDarkModeToDialog has run) the items are made owner-drawn, on a
// dark menu background, for the duration of the call, so the
// owner's dialog procedure must pass WM_MEASUREITEM/WM_DRAWITEM to
// HandleDarkModeMessage. Returns what TrackPopupMenu returns (the command
// with TPM_RETURNCMD), 0 when there is nothing to show.
BOOL TrackThemedPopupMenu(HWND owner, HMENU menu, int flags, int x, int y, int darkMode);

// Draws the size grip in the bottom-right corner of `window`'s client area:
// in dark mode (with an instance) the icon `iconId` of `instance` at
// 16 pixels scaled by the window's DPI, otherwise the platform's grip.
void DrawSizeGrip(HWND window, HINSTANCE instance, int iconId, int darkMode);

// The DPI of `window`: GetDpiForWindow where the system has it, else the
// screen's LOGPIXELSX (96 when even that is unavailable).
UINT WindowDpi(HWND window);

// Deletes the background brush; ClosePlugin calls it before the viewer
// unloads the library. A later ApplyDarkModeToDialog creates a new one.
void ReleaseDarkModeResources();

// Subclassing, the one way the plug-in does it: comctl32's
// SetWindowSubclass, looked up with the theme functions. SubclassWindow
// installs `proc` under `id` with `data` (false when the platform has none);
// the procedure hands what it leaves to DefaultSubclassProc, removes itself
// with RemoveSubclass at WM_NCDESTROY, and runs its body under Guarded.
bool SubclassWindow(HWND window, SUBCLASSPROC proc, UINT_PTR id, DWORD_PTR data);
LRESULT DefaultSubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void RemoveSubclass(HWND window, SUBCLASSPROC proc, UINT_PTR id);

}  // namespace vv
