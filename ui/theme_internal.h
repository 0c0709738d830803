// Shared by the theming files only: the run-time looked-up platform
// functions, the process-wide brush and DPI, and the flat-painted control
// subclasses. Dialogs use ui/theme.h.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <uxtheme.h>

namespace vv {

// Selected menu, combo-box and tab items; a shade between the background
// and the disabled text so the light text stays readable on it.
constexpr COLORREF kDarkHighlightColour = 0x404040;

// Functions the platform may lack; every pointer may be null.
struct ThemeApi {
    // uxtheme, by name.
    HRESULT(WINAPI* setWindowTheme)(HWND, LPCWSTR, LPCWSTR) = nullptr;
    HTHEME(WINAPI* openThemeData)(HWND, LPCWSTR) = nullptr;
    HRESULT(WINAPI* closeThemeData)(HTHEME) = nullptr;
    HTHEME(WINAPI* openThemeDataForDpi)(HWND, LPCWSTR, UINT) = nullptr;
    HRESULT(WINAPI* getThemePartSize)(HTHEME, HDC, int, int, LPCRECT, THEMESIZE, SIZE*) = nullptr;
    HRESULT(WINAPI* drawThemeBackground)(HTHEME, HDC, int, int, LPCRECT, LPCRECT) = nullptr;
    // uxtheme, nameless exports of Windows 10 and later.
    void(WINAPI* refreshImmersiveColorPolicyState)() = nullptr;         // 104
    bool(WINAPI* getIsImmersiveColorUsingHighContrast)(int) = nullptr;  // 106
    bool(WINAPI* allowDarkModeForWindow)(HWND, bool) = nullptr;         // 133
    void* allowDarkModeForApp = nullptr;                       // 135: bool(bool) before build 18362, int(int) from it
    bool(WINAPI* isDarkModeAllowedForWindow)(HWND) = nullptr;  // 137
    // comctl32, by ordinal (410, 412, 413).
    BOOL(WINAPI* setWindowSubclass)(HWND, SUBCLASSPROC, UINT_PTR, DWORD_PTR) = nullptr;
    BOOL(WINAPI* removeWindowSubclass)(HWND, SUBCLASSPROC, UINT_PTR) = nullptr;
    LRESULT(WINAPI* defSubclassProc)(HWND, UINT, WPARAM, LPARAM) = nullptr;

    DWORD osMajor = 0;
    DWORD osBuild = 0;
    int osRelease = 0;          // 10 or 11; 0 before Windows 10
    bool visualStyles = false;  // the BUTTON theme opens: controls draw their own text colour
};

// Looks everything up on the first call; later calls return the same record.
const ThemeApi& Api(HWND anyWindow);

// The background brush, null until ApplyDarkModeToDialog created it.
HBRUSH DarkBrush();

// The screen DPI recorded by ApplyDarkModeToDialog (96 before that).
UINT ScreenDpi();

// Opens theme class `name` for `window` at the recorded DPI; null when the
// theme or the functions are missing. Close with CloseTheme.
HTHEME OpenTheme(HWND window, const wchar_t* name);
void CloseTheme(HTHEME theme);

// Small painting helpers shared by the menu and the control painting.
void FillSolid(HDC dc, const RECT& rect, COLORREF colour);
void DrawCheckMark(HDC dc, const RECT& box, COLORREF colour);

enum class FlatControl : DWORD_PTR { kCheckBox = 1, kGroupBox, kPushButton, kComboBox, kUpDown, kList, kTab, kHeader };

// Gives `control` the flat dark painting of `kind`. Does nothing when the
// platform has no SetWindowSubclass. Applying twice is harmless.
void SubclassFlat(HWND control, FlatControl kind);

}  // namespace vv
