// Dark-mode theming: the platform look-ups, the two entry points the dialog
// procedures call, owner-drawn menus and combo items, and the size grip.
// The flat-painted control subclasses are in theme_controls.cpp.
#include "ui/theme.h"

#include <vssym32.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "ui/theme_internal.h"

namespace vv {
namespace {

// Builds in which the dark-mode exports of uxtheme changed.
constexpr DWORD kBuildDarkModeApis = 17763;      // first build with dark controls
constexpr DWORD kBuildPreferredAppMode = 18362;  // ordinal 135 takes a mode, not a flag
constexpr DWORD kBuildWindows11 = 22000;

constexpr int kPreferredAppModeForceDark = 2;
constexpr DWORD kDwmUseImmersiveDarkMode = 20;
constexpr int kDefaultDpi = 96;

HBRUSH g_brush = nullptr;
UINT g_screenDpi = kDefaultDpi;

template <typename Fn>
Fn Lookup(HMODULE module, const char* name) {
    return module ? reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(module, name))) : nullptr;
}

// True when `module` exports `ordinal` without a name. The dark-mode entry
// points of uxtheme are nameless; where a system numbers its exports
// differently (Wine does), the same ordinal is some named function that
// must not be called with our signature. `module` is a loaded system image.
bool IsNamelessExport(HMODULE module, WORD ordinal) {
    const auto* base = reinterpret_cast<const BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    if (dos->e_magic != IMAGE_DOS_SIGNATURE)
        return false;
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    if (nt->Signature != IMAGE_NT_SIGNATURE)
        return false;
    const IMAGE_DATA_DIRECTORY& dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    if (dir.VirtualAddress == 0)
        return false;
    const auto* exports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + dir.VirtualAddress);
    if (ordinal < exports->Base || ordinal - exports->Base >= exports->NumberOfFunctions)
        return false;
    const WORD index = static_cast<WORD>(ordinal - exports->Base);
    const auto* nameIndexes = reinterpret_cast<const WORD*>(base + exports->AddressOfNameOrdinals);
    for (DWORD i = 0; i < exports->NumberOfNames; ++i)
        if (nameIndexes[i] == index)
            return false;
    return true;
}

template <typename Fn>
Fn LookupNameless(HMODULE module, WORD ordinal) {
    if (!module || !IsNamelessExport(module, ordinal))
        return nullptr;
    return reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(module, MAKEINTRESOURCEA(ordinal))));
}

void ReadOsVersion(ThemeApi& api) {
    using RtlGetVersionFn = LONG(WINAPI*)(OSVERSIONINFOW*);
    auto rtlGetVersion = Lookup<RtlGetVersionFn>(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion");
    OSVERSIONINFOW info = {};
    info.dwOSVersionInfoSize = sizeof info;
    if (!rtlGetVersion || rtlGetVersion(&info) != 0)
        return;
    api.osMajor = info.dwMajorVersion;
    api.osBuild = info.dwBuildNumber;
    if (api.osMajor >= 10)
        api.osRelease = api.osBuild < kBuildWindows11 ? 10 : 11;
}

HMODULE LoadSystemLibrary(const wchar_t* name) {
    HMODULE module = GetModuleHandleW(name);
    return module ? module : LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

void LookUpThemeFunctions(ThemeApi& api, HWND anyWindow) {
    ReadOsVersion(api);

    HMODULE uxtheme = LoadSystemLibrary(L"uxtheme.dll");
    api.setWindowTheme = Lookup<decltype(api.setWindowTheme)>(uxtheme, "SetWindowTheme");
    api.openThemeData = Lookup<decltype(api.openThemeData)>(uxtheme, "OpenThemeData");
    api.closeThemeData = Lookup<decltype(api.closeThemeData)>(uxtheme, "CloseThemeData");
    api.openThemeDataForDpi = Lookup<decltype(api.openThemeDataForDpi)>(uxtheme, "OpenThemeDataForDpi");
    api.getThemePartSize = Lookup<decltype(api.getThemePartSize)>(uxtheme, "GetThemePartSize");
    api.drawThemeBackground = Lookup<decltype(api.drawThemeBackground)>(uxtheme, "DrawThemeBackground");
    if (api.osMajor >= 10) {
        api.refreshImmersiveColorPolicyState =
            LookupNameless<decltype(api.refreshImmersiveColorPolicyState)>(uxtheme, 104);
        api.getIsImmersiveColorUsingHighContrast =
            LookupNameless<decltype(api.getIsImmersiveColorUsingHighContrast)>(uxtheme, 106);
        api.allowDarkModeForWindow = LookupNameless<decltype(api.allowDarkModeForWindow)>(uxtheme, 133);
        api.allowDarkModeForApp = LookupNameless<void*>(uxtheme, 135);
        api.isDarkModeAllowedForWindow = LookupNameless<decltype(api.isDarkModeAllowedForWindow)>(uxtheme, 137);
    }

    // Whatever comctl32 the process uses (version 6 under a manifest).
    HMODULE comctl32 = GetModuleHandleW(L"comctl32.dll");
    if (!comctl32)
        comctl32 = LoadLibraryW(L"comctl32.dll");
    api.setWindowSubclass = Lookup<decltype(api.setWindowSubclass)>(comctl32, MAKEINTRESOURCEA(410));
    api.removeWindowSubclass = Lookup<decltype(api.removeWindowSubclass)>(comctl32, MAKEINTRESOURCEA(412));
    api.defSubclassProc = Lookup<decltype(api.defSubclassProc)>(comctl32, MAKEINTRESOURCEA(413));
    if (!api.removeWindowSubclass || !api.defSubclassProc)
        api.setWindowSubclass = nullptr;  // a subclass that cannot forward must not be installed

    // Visual styles draw check boxes and group boxes in the theme's text
    // colour, ignoring WM_CTLCOLORSTATIC; only then are those subclassed.
    if (api.openThemeData && api.closeThemeData) {
        if (HTHEME theme = api.openThemeData(anyWindow, L"BUTTON")) {
            api.visualStyles = true;
            api.closeThemeData(theme);
        }
    }
}

// The documented theme functions the child passes need.
bool HasThemeFunctions(const ThemeApi& api) {
    return api.setWindowTheme && api.openThemeData && api.closeThemeData;
}

// The system darkens a window's own theme parts (the "CFD" combo box) once
// dark mode is allowed for the application and the window.
bool HasDarkThemes(const ThemeApi& api) {
    return HasThemeFunctions(api) && api.osMajor >= 10 && api.osBuild >= kBuildDarkModeApis &&
           api.allowDarkModeForWindow && api.allowDarkModeForApp;
}

bool HighContrast(const ThemeApi& api) {
    return api.getIsImmersiveColorUsingHighContrast && api.getIsImmersiveColorUsingHighContrast(0);
}

// Asks for the dark variants of theme parts in this process (popup menus,
// scroll bars, "CFD" combo boxes). High contrast keeps its own colours.
void AllowDarkModeForApp(const ThemeApi& api) {
    static bool done = false;
    if (done || !HasDarkThemes(api) || HighContrast(api))
        return;
    done = true;
    if (api.osBuild >= kBuildPreferredAppMode)
        reinterpret_cast<int(WINAPI*)(int)>(api.allowDarkModeForApp)(kPreferredAppModeForceDark);
    else
        reinterpret_cast<bool(WINAPI*)(bool)>(api.allowDarkModeForApp)(true);
    if (api.refreshImmersiveColorPolicyState)
        api.refreshImmersiveColorPolicyState();
}

bool AllowDarkModeForWindow(const ThemeApi& api, HWND window) {
    if (!HasDarkThemes(api) || HighContrast(api))
        return false;
    api.allowDarkModeForWindow(window, true);
    return !api.isDarkModeAllowedForWindow || api.isDarkModeAllowedForWindow(window);
}

void SetDarkTitleBar(HWND window) {
    HMODULE dwmapi = LoadLibraryExW(L"Dwmapi.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!dwmapi)
        return;
    using SetAttributeFn = HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD);
    if (auto setAttribute = Lookup<SetAttributeFn>(dwmapi, "DwmSetWindowAttribute")) {
        const BOOL dark = TRUE;
        setAttribute(window, kDwmUseImmersiveDarkMode, &dark, sizeof dark);
    }
    FreeLibrary(dwmapi);
}

void RecordScreenDpi(HWND dialog) {
    HDC dc = GetDC(dialog);
    const int dpi = dc ? GetDeviceCaps(dc, LOGPIXELSX) : 0;
    if (dc)
        ReleaseDC(dialog, dc);
    g_screenDpi = dpi > 0 ? static_cast<UINT>(dpi) : kDefaultDpi;
}

// ------------------------------------------------------------ child passes

enum class Pass { kButtons, kComboBoxes, kUpDowns, kListViews, kTabs };

struct PassContext {
    Pass pass;
    int flag;
    const ThemeApi* api;
};

bool ClassIs(HWND window, const wchar_t* name) {
    wchar_t className[64] = {};
    GetClassNameW(window, className, 64);
    return lstrcmpiW(className, name) == 0;
}

void ThemeButton(HWND button, const PassContext& context) {
    const LONG style = GetWindowLongW(button, GWL_STYLE);
    const bool visualStyles = context.api->visualStyles;
    switch (style & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        if (visualStyles && !(style & BS_PUSHLIKE))
            SubclassFlat(button, FlatControl::kCheckBox);
        break;
    case BS_GROUPBOX:
        if (visualStyles)
            SubclassFlat(button, FlatControl::kGroupBox);
        break;
    case BS_SPLITBUTTON:
    case BS_DEFSPLITBUTTON: SubclassFlat(button, FlatControl::kPushButton); break;
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
    case BS_OWNERDRAW:
        if (!(style & BS_ICON) || context.flag == -1)
            SubclassFlat(button, FlatControl::kPushButton);
        break;
    default: break;
    }
}

void ThemeComboBox(HWND combo, const ThemeApi& api) {
    if (AllowDarkModeForWindow(api, combo)) {
        api.setWindowTheme(combo, L"CFD", nullptr);
        SendMessageW(combo, WM_THEMECHANGED, 0, 0);
    } else {
        SubclassFlat(combo, FlatControl::kComboBox);
    }
}

void ThemeListView(HWND list, const ThemeApi& api) {
    if (!HasThemeFunctions(api))
        return;
    SubclassFlat(list, FlatControl::kList);
    HWND header = ListView_GetHeader(list);
    if (header)
        SubclassFlat(header, FlatControl::kHeader);
    for (HWND window : {header, list}) {
        if (!window)
            continue;
        AllowDarkModeForWindow(api, window);
        api.setWindowTheme(window, L"ItemsView", nullptr);
    }
    // Light text needs the dark background under it, including behind items.
    ListView_SetTextColor(list, kDarkTextColour);
    ListView_SetBkColor(list, kDarkBackgroundColour);
    ListView_SetTextBkColor(list, kDarkBackgroundColour);
}

BOOL CALLBACK ThemeChild(HWND child, LPARAM lParam) {
    const auto& context = *reinterpret_cast<const PassContext*>(lParam);
    const ThemeApi& api = *context.api;
    switch (context.pass) {
    case Pass::kButtons:
        if (ClassIs(child, WC_BUTTONW))
            ThemeButton(child, context);
        break;
    case Pass::kComboBoxes:
        if (ClassIs(child, WC_COMBOBOXW))
            ThemeComboBox(child, api);
        break;
    case Pass::kUpDowns:
        if (api.visualStyles && ClassIs(child, UPDOWN_CLASSW))
            SubclassFlat(child, FlatControl::kUpDown);
        break;
    case Pass::kListViews:
        if (ClassIs(child, WC_LISTVIEWW))
            ThemeListView(child, api);
        break;
    case Pass::kTabs:
        if (ClassIs(child, WC_TABCONTROLW))
            SubclassFlat(child, FlatControl::kTab);
        break;
    }
    return TRUE;
}

// ------------------------------------------------------------ colour messages

BOOL ColourControl(UINT message, WPARAM wParam, LRESULT* result) {
    if (!g_brush)
        return FALSE;
    HDC dc = reinterpret_cast<HDC>(wParam);
    SetTextColor(dc, kDarkTextColour);
    SetBkColor(dc, kDarkBackgroundColour);
    SetBkMode(dc, message == WM_CTLCOLOREDIT ? OPAQUE : TRANSPARENT);
    *result = reinterpret_cast<LRESULT>(g_brush);
    return TRUE;
}

// ------------------------------------------------------------ owner-drawn menus

// The menu font, selected into a device context for the object's life.
class MenuFontDc {
public:
    MenuFontDc(HWND window, HDC dc) : window_(window), dc_(dc ? dc : GetDC(window)), owned_(!dc) {
        NONCLIENTMETRICSW metrics = {};
        metrics.cbSize = sizeof metrics;
        if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
            font_ = CreateFontIndirectW(&metrics.lfMenuFont);
        if (dc_)
            old_ = SelectObject(dc_, font_ ? font_ : GetStockObject(DEFAULT_GUI_FONT));
    }
    ~MenuFontDc() {
        if (dc_) {
            SelectObject(dc_, old_);
            if (owned_)
                ReleaseDC(window_, dc_);
        }
        if (font_)
            DeleteObject(font_);
    }
    MenuFontDc(const MenuFontDc&) = delete;
    MenuFontDc& operator=(const MenuFontDc&) = delete;
    HDC dc() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
    bool owned_;
    HFONT font_ = nullptr;
    HGDIOBJ old_ = nullptr;
};

const wchar_t* MenuItemText(ULONG_PTR itemData) {
    const auto* text = reinterpret_cast<const wchar_t*>(itemData);
    return text && *text ? text : nullptr;
}

int MenuMargin() {
    return GetSystemMetrics(SM_CXMENUCHECK) + GetSystemMetrics(SM_CXEDGE);
}

void MeasureMenuItem(HWND window, MEASUREITEMSTRUCT& item) {
    const wchar_t* text = MenuItemText(item.itemData);
    if (!text) {
        item.itemWidth = GetSystemMetrics(SM_CXMENUCHECK);
        item.itemHeight = GetSystemMetrics(SM_CYMENU) / 4;
        return;
    }
    MenuFontDc font(window, nullptr);
    RECT bounds = {};
    if (font.dc())
        DrawTextW(font.dc(), text, -1, &bounds, DT_CALCRECT | DT_SINGLELINE | DT_EXPANDTABS);
    item.itemWidth = bounds.right - bounds.left + 2 * MenuMargin();
    item.itemHeight = bounds.bottom - bounds.top;
}

void DrawMenuItem(HWND window, const DRAWITEMSTRUCT& item) {
    const ThemeApi& api = Api(window);
    HDC dc = item.hDC;
    const RECT& rect = item.rcItem;
    const wchar_t* text = MenuItemText(item.itemData);
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    const bool disabled = (item.itemState & (ODS_GRAYED | ODS_DISABLED)) != 0;

    HTHEME theme = api.drawThemeBackground ? OpenTheme(window, L"DarkMode::Menu") : nullptr;
    if (theme) {
        api.drawThemeBackground(theme, dc, MENU_POPUPBACKGROUND, 0, &rect, nullptr);
        if (!text)
            api.drawThemeBackground(theme, dc, MENU_POPUPSEPARATOR, 0, &rect, nullptr);
        else if (selected)
            api.drawThemeBackground(theme, dc, MENU_POPUPITEM, disabled ? MPI_DISABLEDHOT : MPI_HOT, &rect, nullptr);
        CloseTheme(theme);
    } else {
        FillSolid(dc, rect, selected && text ? kDarkHighlightColour : kDarkBackgroundColour);
        if (!text) {
            const int y = (rect.top + rect.bottom) / 2;
            FillSolid(dc, {rect.left, y, rect.right, y + 1}, kDarkDisabledTextColour);
        }
    }
    if (!text)
        return;

    const COLORREF colour = disabled ? kDarkDisabledTextColour : kDarkTextColour;
    const int margin = MenuMargin();
    if (item.itemState & ODS_CHECKED)
        DrawCheckMark(dc, {rect.left, rect.top, rect.left + margin, rect.bottom}, colour);

    MenuFontDc font(window, dc);
    SetTextColor(dc, colour);
    SetBkMode(dc, TRANSPARENT);
    UINT format = DT_SINGLELINE | DT_VCENTER;
    if (item.itemState & ODS_NOACCEL)
        format |= DT_HIDEPREFIX;
    RECT textRect = {rect.left + margin, rect.top, rect.right - margin, rect.bottom};
    // "Label\tShortcut": the shortcut is right-aligned.
    const std::wstring label(text);
    const size_t tab = label.find(L'\t');
    DrawTextW(dc, label.c_str(), static_cast<int>(label.substr(0, tab).size()), &textRect, format | DT_LEFT);
    if (tab != std::wstring::npos)
        DrawTextW(dc, label.c_str() + tab + 1, -1, &textRect, format | DT_RIGHT);
}

void DrawComboItem(const DRAWITEMSTRUCT& item) {
    HDC dc = item.hDC;
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    FillSolid(dc, item.rcItem, selected ? kDarkHighlightColour : kDarkBackgroundColour);
    if (item.itemID == static_cast<UINT>(-1))
        return;
    std::wstring text;
    const LRESULT length = SendMessageW(item.hwndItem, CB_GETLBTEXTLEN, item.itemID, 0);
    if (length > 0) {
        text.resize(static_cast<size_t>(length) + 1);
        const LRESULT got =
            SendMessageW(item.hwndItem, CB_GETLBTEXT, item.itemID, reinterpret_cast<LPARAM>(&text[0]));
        text.resize(got > 0 ? static_cast<size_t>(got) : 0);
    }
    SetTextColor(dc, (item.itemState & ODS_DISABLED) ? kDarkDisabledTextColour : kDarkTextColour);
    SetBkMode(dc, TRANSPARENT);
    RECT textRect = item.rcItem;
    textRect.left += GetSystemMetrics(SM_CXEDGE);
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &textRect, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    if ((item.itemState & ODS_FOCUS) && !(item.itemState & ODS_NOFOCUSRECT))
        DrawFocusRect(dc, &item.rcItem);
}

// ------------------------------------------------------------ list views

// The grid of a list view with LVS_EX_GRIDLINES, drawn over the platform's
// white one where the platform draws it: a line above every row position
// (through the empty part below the last row too) and one just right of
// every column.
void DrawDarkGrid(HWND list, HDC dc) {
    RECT client;
    GetClientRect(list, &client);
    HWND header = ListView_GetHeader(list);
    RECT headerRect;
    if (header && IsWindowVisible(header) && GetWindowRect(header, &headerRect)) {
        MapWindowPoints(nullptr, list, reinterpret_cast<POINT*>(&headerRect), 2);
        client.top = std::max(client.top, headerRect.bottom);
    }
    RECT row;
    if (ListView_GetItemRect(list, ListView_GetTopIndex(list), &row, LVIR_BOUNDS) && row.bottom > row.top) {
        const int height = row.bottom - row.top;
        int y = row.top - 1;
        while (y - height >= client.top)
            y -= height;
        for (; y < client.bottom; y += height)
            if (y >= client.top)
                FillSolid(dc, {client.left, y, client.right, y + 1}, kDarkHighlightColour);
    }
    const int columns = header ? Header_GetItemCount(header) : 0;
    for (int i = 0; i < columns; ++i) {
        RECT column;
        if (!Header_GetItemRect(header, i, &column))
            continue;
        MapWindowPoints(header, list, reinterpret_cast<POINT*>(&column), 2);
        FillSolid(dc, {column.right, client.top, column.right + 1, client.bottom}, kDarkHighlightColour);
    }
}

// A dark list view's rows: the selection of a list without the focus on the
// dark highlight rather than the platform's light face (the row being
// edited in place is one), and the grid dark rather than white.
BOOL DrawListView(LPARAM lParam, LRESULT* result) {
    auto* draw = reinterpret_cast<NMLVCUSTOMDRAW*>(lParam);
    if (!draw || draw->nmcd.hdr.code != NM_CUSTOMDRAW || !ClassIs(draw->nmcd.hdr.hwndFrom, WC_LISTVIEWW))
        return FALSE;
    HWND list = draw->nmcd.hdr.hwndFrom;
    switch (draw->nmcd.dwDrawStage) {
    case CDDS_PREPAINT: *result = CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT; return TRUE;
    case CDDS_ITEMPREPAINT:
        if (GetFocus() != list &&
            ListView_GetItemState(list, static_cast<int>(draw->nmcd.dwItemSpec), LVIS_SELECTED)) {
            draw->nmcd.uItemState &= ~CDIS_SELECTED;
            draw->clrText = kDarkTextColour;
            draw->clrTextBk = kDarkHighlightColour;
        }
        *result = CDRF_DODEFAULT;
        return TRUE;
    case CDDS_POSTPAINT:
        if (ListView_GetExtendedListViewStyle(list) & LVS_EX_GRIDLINES)
            DrawDarkGrid(list, draw->nmcd.hdc);
        *result = CDRF_DODEFAULT;
        return TRUE;
    default: return FALSE;
    }
}

BOOL DrawItem(HWND window, WPARAM wParam, LPARAM lParam, int skipControlId, LRESULT* result) {
    const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    if (!item || (skipControlId != -1 && static_cast<int>(wParam) == skipControlId))
        return FALSE;
    if (item->CtlType == ODT_MENU)
        DrawMenuItem(window, *item);
    else if (item->CtlType == ODT_COMBOBOX)
        DrawComboItem(*item);
    else
        return FALSE;
    *result = TRUE;
    return TRUE;
}

// Makes the items of a popup menu (and of its submenus) owner-drawn for
// the life of the object, each carrying its text as item data, with the
// dark brush behind them; the destructor puts everything back. When the
// preparation fails half-way (memory), what it changed is put back at once
// and the menu is shown as the platform draws it.
class OwnerDrawnMenu {
public:
    explicit OwnerDrawnMenu(HMENU menu) {
        try {
            Prepare(menu);
        } catch (...) {
            Restore();
        }
    }
    ~OwnerDrawnMenu() { Restore(); }
    OwnerDrawnMenu(const OwnerDrawnMenu&) = delete;
    OwnerDrawnMenu& operator=(const OwnerDrawnMenu&) = delete;

private:
    struct Item {
        HMENU menu;
        UINT position;
        UINT type;
        ULONG_PTR data;
    };

    void Restore() {
        for (auto it = items_.rbegin(); it != items_.rend(); ++it) {
            MENUITEMINFOW info = {};
            info.cbSize = sizeof info;
            info.fMask = MIIM_FTYPE | MIIM_DATA;
            info.fType = it->type;
            info.dwItemData = it->data;
            SetMenuItemInfoW(it->menu, it->position, TRUE, &info);
        }
        for (auto it = backgrounds_.rbegin(); it != backgrounds_.rend(); ++it)
            SetMenuInfo(it->first, &it->second);
        items_.clear();
        backgrounds_.clear();
    }

    // Each change is recorded before it is made, so that Restore undoes
    // exactly what was done.
    void Prepare(HMENU menu) {
        MENUINFO old = {};
        old.cbSize = sizeof old;
        old.fMask = MIM_BACKGROUND;
        if (GetMenuInfo(menu, &old)) {
            backgrounds_.push_back({menu, old});
            MENUINFO dark = old;
            dark.hbrBack = DarkBrush();
            SetMenuInfo(menu, &dark);
        }
        const int count = GetMenuItemCount(menu);
        for (int i = 0; i < count; ++i) {
            MENUITEMINFOW info = {};
            info.cbSize = sizeof info;
            info.fMask = MIIM_FTYPE | MIIM_DATA | MIIM_SUBMENU | MIIM_STRING;
            if (!GetMenuItemInfoW(menu, i, TRUE, &info) || (info.fType & MFT_OWNERDRAW))
                continue;
            auto text = std::make_unique<std::wstring>();
            if (info.cch > 0) {
                text->resize(info.cch + 1);
                info.dwTypeData = &(*text)[0];
                info.cch += 1;
                GetMenuItemInfoW(menu, i, TRUE, &info);
                text->resize(lstrlenW(text->c_str()));
            }
            const wchar_t* drawn = text->empty() ? nullptr : text->c_str();
            texts_.push_back(std::move(text));
            items_.push_back({menu, static_cast<UINT>(i), info.fType, info.dwItemData});
            MENUITEMINFOW owned = {};
            owned.cbSize = sizeof owned;
            owned.fMask = MIIM_FTYPE | MIIM_DATA;
            owned.fType = info.fType | MFT_OWNERDRAW;
            owned.dwItemData = reinterpret_cast<ULONG_PTR>(drawn);
            SetMenuItemInfoW(menu, i, TRUE, &owned);
            if (info.hSubMenu)
                Prepare(info.hSubMenu);
        }
    }

    std::vector<Item> items_;
    std::vector<std::unique_ptr<std::wstring>> texts_;
    std::vector<std::pair<HMENU, MENUINFO>> backgrounds_;
};

}  // namespace

// ------------------------------------------------------------ shared state

const ThemeApi& Api(HWND anyWindow) {
    static ThemeApi api;
    static bool lookedUp = false;
    if (!lookedUp) {
        lookedUp = true;
        LookUpThemeFunctions(api, anyWindow);
    }
    return api;
}

HBRUSH DarkBrush() {
    return g_brush;
}

UINT ScreenDpi() {
    return g_screenDpi;
}

HTHEME OpenTheme(HWND window, const wchar_t* name) {
    const ThemeApi& api = Api(window);
    if (!api.closeThemeData)
        return nullptr;
    if (api.openThemeDataForDpi)
        return api.openThemeDataForDpi(window, name, g_screenDpi);
    return api.openThemeData ? api.openThemeData(window, name) : nullptr;
}

void CloseTheme(HTHEME theme) {
    if (theme)
        Api(nullptr).closeThemeData(theme);
}

// ------------------------------------------------------------ entry points

void ApplyDarkModeToDialog(HWND dialog, int flag, int darkMode) {
    if (!darkMode || !dialog)
        return;
    if (!g_brush)
        g_brush = CreateSolidBrush(kDarkBackgroundColour);
    RecordScreenDpi(dialog);
    const ThemeApi& api = Api(dialog);
    AllowDarkModeForApp(api);
    AllowDarkModeForWindow(api, dialog);

    for (Pass pass : {Pass::kButtons, Pass::kComboBoxes, Pass::kUpDowns, Pass::kListViews, Pass::kTabs}) {
        PassContext context = {pass, flag, &api};
        EnumChildWindows(dialog, ThemeChild, reinterpret_cast<LPARAM>(&context));
    }
    SetDarkTitleBar(dialog);
}

BOOL HandleDarkModeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, int darkMode, int skipControlId,
                           LRESULT* result) {
    if (!darkMode || !result)
        return FALSE;
    switch (message) {
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC: return ColourControl(message, wParam, result);
    case WM_MEASUREITEM: {
        auto* item = reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        if (!item || item->CtlType != ODT_MENU)
            return FALSE;
        MeasureMenuItem(window, *item);
        *result = TRUE;
        return TRUE;
    }
    case WM_DRAWITEM: return DrawItem(window, wParam, lParam, skipControlId, result);
    case WM_NOTIFY: return DrawListView(lParam, result);
    default: return FALSE;
    }
}

BOOL TrackThemedPopupMenu(HWND owner, HMENU menu, int flags, int x, int y, int darkMode) {
    if (!menu)
        return FALSE;
    HMENU shown = nullptr;
    if (GetMenuItemCount(menu) > 1) {
        shown = menu;
    } else if (HMENU first = GetSubMenu(menu, 0)) {
        if (GetMenuItemCount(first) > 0)
            shown = first;
    }
    if (!shown)
        return FALSE;
    const UINT trackFlags = flags == -1 ? 0 : static_cast<UINT>(flags);
    if (!darkMode || !g_brush)
        return TrackPopupMenu(shown, trackFlags, x, y, 0, owner, nullptr);
    OwnerDrawnMenu dark(shown);
    return TrackPopupMenu(shown, trackFlags, x, y, 0, owner, nullptr);
}

void DrawSizeGrip(HWND window, HINSTANCE instance, int iconId, int darkMode) {
    RECT client;
    if (!GetClientRect(window, &client))
        return;
    HDC dc = GetDC(window);
    if (!dc)
        return;
    HICON icon = nullptr;
    int size = 0;
    if (darkMode && instance) {
        size = MulDiv(16, static_cast<int>(WindowDpi(window)), kDefaultDpi);
        icon = static_cast<HICON>(LoadImageW(instance, MAKEINTRESOURCEW(iconId), IMAGE_ICON, size, size, LR_SHARED));
    }
    if (icon) {
        DrawIconEx(dc, client.right - size, client.bottom - size, icon, size, size, 0, nullptr, DI_NORMAL);
    } else {
        RECT grip = {client.right - GetSystemMetrics(SM_CXVSCROLL), client.bottom - GetSystemMetrics(SM_CYHSCROLL),
                     client.right, client.bottom};
        DrawFrameControl(dc, &grip, DFC_SCROLL, DFCS_SCROLLSIZEGRIP);
    }
    ReleaseDC(window, dc);
}

UINT WindowDpi(HWND window) {
    using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
    static const auto getDpiForWindow = Lookup<GetDpiForWindowFn>(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow");
    if (getDpiForWindow && window) {
        if (const UINT dpi = getDpiForWindow(window))
            return dpi;
    }
    HDC screen = GetDC(nullptr);
    const int dpi = screen ? GetDeviceCaps(screen, LOGPIXELSX) : 0;
    if (screen)
        ReleaseDC(nullptr, screen);
    return dpi > 0 ? static_cast<UINT>(dpi) : kDefaultDpi;
}

void ReleaseDarkModeResources() {
    if (g_brush) {
        DeleteObject(g_brush);
        g_brush = nullptr;
    }
}

bool SubclassWindow(HWND window, SUBCLASSPROC proc, UINT_PTR id, DWORD_PTR data) {
    const ThemeApi& api = Api(window);
    return api.setWindowSubclass && api.setWindowSubclass(window, proc, id, data);
}

LRESULT DefaultSubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return Api(window).defSubclassProc(window, message, wParam, lParam);
}

void RemoveSubclass(HWND window, SUBCLASSPROC proc, UINT_PTR id) { Api(window).removeWindowSubclass(window, proc, id); }

}  // namespace vv
