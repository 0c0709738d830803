#include "exif_window.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "dialog_kit.h"
#include "exif/exif_reader.h"
#include "exif/gps.h"
#include "exif/map_links.h"
#include "exif/tag_record.h"
#include "guarded.h"
#include "makernotes/makernote_rules.h"
#include "model/exif_window_model.h"
#include "platform/platform.h"
#include "resource_ids.h"
#include "theme.h"

namespace vv {
namespace {

constexpr size_t kPathMax = 260;
constexpr int kRememberedTagMax = 128;
constexpr int kCellNameMax = 256;
constexpr int kCellValueMax = 3072;
constexpr size_t kClipboardBytesPerRow = 6208;
constexpr int kMinTrackSize = 300;  // dialog-independent pixels at 96 DPI
constexpr wchar_t kContextMenuName[] = L"IDR_EXIF_CONTEXT_MENU";
constexpr char16_t kDefaultPosition[] = u"0,0,0,0,0,0;";
// The table's rows, the figure the out-of-memory caption names (the count
// kept beside them is not part of it).
constexpr size_t kTableBytes = exif::kTagTableRows * sizeof(exif::TagRecord);
static_assert(sizeof(void*) != 4 || kTableBytes == 117504, "the 32-bit DLL's table is 288 rows of 408 bytes");

// Module-wide: the window and what the viewer last asked it to show.
struct ExifModule {
    HWND window = nullptr;
    HINSTANCE instance = nullptr;
    std::u16string fileName;
    std::u16string settingsPath;
    bool modalMode = false;
} g_exif;

std::u16string Cut(const char16_t* text) {
    if (!text)
        return {};
    std::u16string s(text);
    if (s.size() > kPathMax)
        s.resize(kPathMax);
    return s;
}

// Name and extension of a path.
std::u16string FileNamePart(std::u16string_view path) {
    const size_t slash = path.find_last_of(u"\\/:");
    return std::u16string(slash == std::u16string_view::npos ? path : path.substr(slash + 1));
}

WinRect ToWinRect(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

// The work area of the monitor nearest to a point.
WinRect NearestWorkArea(POINT point) {
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(MonitorFromPoint(point, MONITOR_DEFAULTTONEAREST), &info))
        return ToWinRect(info.rcWork);
    RECT work = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    return ToWinRect(work);
}

std::u16string ClassName(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return platform::ToU16string(name);
}

// ------------------------------------------------------------ tag chooser

struct ChooseTagsDialog : DialogBase {
    ChooseTagsDialog(std::vector<TagChoice> c, std::u16string_view settings) : choices(std::move(c)), settings(settings) {}

    std::vector<TagChoice> choices;
    std::u16string settings;
    HWND list = nullptr;

    std::u16string_view SettingsPath() const override { return settings; }

    void CheckAll(bool checked) {
        for (int i = 0; i < static_cast<int>(choices.size()); ++i)
            ListView_SetCheckState(list, i, checked);
    }

    INT_PTR OnInit(LPARAM) override {
        list = GetDlgItem(window, IDC_CHOOSE_LIST);
        ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
        RECT r;
        GetWindowRect(list, &r);
        const int w = r.right - r.left;
        InsertListColumn(list, 0, L"Tag Nr", w / 4);
        InsertListColumn(list, 1, L"Name", w - w / 4 - ScaleForWindow(window, 20));
        for (const TagChoice& choice : choices) {
            const int row = AppendListRow(list, choice.number);
            SetListCell(list, row, 1, choice.name);
            ListView_SetItemState(list, row, INDEXTOSTATEIMAGEMASK(choice.shown ? 2 : 1), LVIS_STATEIMAGEMASK);
        }
        return TRUE;
    }

    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM) override {
        if (message != WM_COMMAND)
            return FALSE;
        switch (LOWORD(wParam)) {
        case IDC_CHOOSE_SELECT_ALL: CheckAll(true); return TRUE;
        case IDC_CHOOSE_UNSELECT_ALL: CheckAll(false); return TRUE;
        case IDOK: {
            for (int i = 0; i < static_cast<int>(choices.size()); ++i)
                choices[i].shown = ListView_GetCheckState(list, i) != 0;
            const std::u16string hidden = platform::ReadSettingString(settings, u"EXIF", u"HideTags", u"");
            platform::WriteSettingString(settings, u"EXIF", u"HideTags", UpdateHideTags(hidden, choices));
            EndDialog(window, 1);
            return TRUE;
        }
        case IDCANCEL: EndDialog(window, 0); return TRUE;
        default: return FALSE;
        }
    }
};

// ------------------------------------------------------------ the window

struct ExifInfoWindow : DialogBase {
    exif::TagRecordTable* records = nullptr;
    uint32_t recordCount = 0;
    exif::GpsPosition position{0.0, 0.0, 0.0};
    std::string geoHackParams;
    std::u16string rememberedTag;
    std::u16string kmlTempPath;
    HMENU menuResource = nullptr;
    HMENU contextMenu = nullptr;
    UINT dpi = 96;
    bool inSizeMove = false;
    RECT lastClientRect = {};
    HWND list = nullptr;

    ~ExifInfoWindow() override { ReleaseTable(); }

    std::u16string_view SettingsPath() const override { return g_exif.settingsPath; }

    void ReleaseTable() {
        if (records)
            exif::FreeTagRecordTable(records, 1);
        records = nullptr;
        recordCount = 0;
    }

    bool AllocateTable() {
        records = exif::AllocateTagRecordTable();
        if (records)
            return true;
        MessageBeep(MB_ICONHAND);
        wchar_t caption[96];
        std::swprintf(caption, 96, L"Error - Out of memory! (%d bytes required)", static_cast<int>(kTableBytes));
        SetWindowTextW(window, caption);
        return false;
    }

    int S(int n) const { return MulDiv(n, static_cast<int>(dpi), 96); }

    void SetColumnWidths() {
        RECT r;
        GetWindowRect(list, &r);
        const ColumnWidths w = ExifColumnWidths(r.right - r.left, static_cast<int>(dpi));
        ListView_SetColumnWidth(list, 0, w.number);
        ListView_SetColumnWidth(list, 1, w.name);
        ListView_SetColumnWidth(list, 2, w.value);
    }

    void ShowGpsControls(bool show) {
        for (int id : {IDC_EXIF_GOOGLE_EARTH, IDC_EXIF_GOOGLE_MAPS, IDC_EXIF_OPENSTREETMAP, IDM_BINGMAPS,
                       IDM_BINGMAPS_APP})
            if (HWND control = GetDlgItem(window, id))
                ShowWindow(control, show ? SW_SHOW : SW_HIDE);
        ShowWindow(GetDlgItem(window, IDC_EXIF_MORE), SW_SHOW);
    }

    void ClearList() {
        ListView_DeleteAllItems(list);
        ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
        ShowWindow(GetDlgItem(window, IDC_EXIF_COPY), SW_SHOW);
        ShowGpsControls(false);
        position = exif::GpsPosition{0.0, 0.0, 0.0};
    }

    void FillExifList() {
        ClearList();
        const std::u16string hidden = platform::ReadSettingString(g_exif.settingsPath, u"EXIF", u"HideTags", u"");
        const ExifListModel model = BuildExifListRows(*records, recordCount, hidden);
        SendMessageW(list, WM_SETREDRAW, FALSE, 0);
        for (const ExifListRow& row : model.rows) {
            const int item = AppendListRow(list, row.number);
            SetListCell(list, item, 1, row.name);
            SetListCell(list, item, 2, row.value);
        }
        SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        if (model.HasGps()) {
            position = exif::ComputeGpsPosition(*records, recordCount);
            geoHackParams = exif::BuildGeoHackParams(*records, recordCount);
            ShowGpsControls(true);
        }
    }

    void Reload() {
        if (!kmlTempPath.empty()) {
            platform::SleepMilliseconds(100);
            platform::RemoveFile(kmlTempPath);
            kmlTempPath.clear();
        }
        ReleaseTable();
        if (!AllocateTable())
            return;
        ClearList();
        const std::u16string name = FileNamePart(g_exif.fileName);
        SetWindowTextW(window, platform::AsWchar(name + u" - EXIF Info"));

        exif::TagRecord& first = records->rows[0];
        std::strcpy(first.name, "Filename");
        const std::string utf8Name = platform::Utf16ToUtf8(name);
        std::snprintf(first.value, sizeof first.value, "%.*s",
                      static_cast<int>(utf8Name.size() < kPathMax ? utf8Name.size() : kPathMax), utf8Name.c_str());
        recordCount = 1;
        int bigEndian = 0;
        if (!exif::ReadExifTags(g_exif.fileName, *records, &recordCount, &bigEndian,
                                makernotes::StandardMakerNoteRules())) {
            ShowWindow(GetDlgItem(window, IDC_EXIF_COPY), SW_HIDE);
            return;
        }
        FillExifList();
        SelectRememberedTag();
        UpdateWindow(window);
    }

    void SelectRememberedTag() {
        const int n = ListView_GetItemCount(list);
        if (rememberedTag.empty() || n == 0)
            return;
        for (int i = 0; i < n; ++i) {
            const std::u16string name = ListCell(list, i, 1, kRememberedTagMax);
            if (lstrcmpiW(platform::AsWchar(name), platform::AsWchar(rememberedTag)) == 0) {
                ListView_SetItemState(list, i, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
                ListView_EnsureVisible(list, i, FALSE);
                return;
            }
        }
    }

    // ---------------------------------------------------- placement

    void RestoreWindowPlacement() {
        const std::u16string text =
            platform::ReadSettingString(g_exif.settingsPath, u"WinPosition", u"EXIF", kDefaultPosition);
        WinPosition p = ParseWinPosition(text);
        const int monitors = GetSystemMetrics(SM_CMONITORS);
        WinRect work;
        if (monitors < 2) {
            RECT r = {};
            SystemParametersInfoW(SPI_GETWORKAREA, 0, &r, 0);
            work = ToWinRect(r);
        } else {
            work = NearestWorkArea(POINT{p.left, p.top});
        }
        ClampWinPosition(p, monitors, work);
        if (p.width <= 0 || p.height <= 0)
            return;
        int width = 0, height = 0;
        SizeForDpi(p, static_cast<int>(WindowDpi(window)), &width, &height);
        SetWindowPos(window, nullptr, p.left, p.top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    }

    void SaveWindowPlacement() {
        RECT r;
        if (g_exif.settingsPath.empty() || !GetWindowRect(window, &r))
            return;
        WinPosition p;
        p.left = r.left;
        p.top = r.top;
        p.width = r.right - r.left;
        p.height = r.bottom - r.top;
        p.maximized = IsZoomed(window) ? 1 : 0;
        p.dpi = static_cast<int>(dpi);
        platform::WriteSettingString(g_exif.settingsPath, u"WinPosition", u"EXIF", FormatWinPosition(p));
    }

    // Wholly on its monitor's work area, also when the saved size came from
    // another DPI or the viewer moved the window's owner.
    void KeepWindowOnScreen() {
        SendMessageW(window, DM_REPOSITION, 0, 0);
        KeepOnWorkArea(window);
    }

    // ---------------------------------------------------- layout

    void Layout() {
        RECT client;
        GetClientRect(window, &client);
        const int oldWidth = lastClientRect.right - lastClientRect.left;
        const int oldHeight = lastClientRect.bottom - lastClientRect.top;
        const LayoutMetrics metrics{GetSystemMetrics(SM_CXBORDER), GetSystemMetrics(SM_CYMENUSIZE)};
        HWND focus = GetFocus();
        for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            RECT r;
            GetWindowRect(child, &r);
            MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&r), 2);
            const WinRect moved = LayoutChild(ClassifyChild(ClassName(child)), ToWinRect(r), oldWidth, oldHeight,
                                              client.right, client.bottom, metrics);
            const bool visible = IsWindowVisible(child) != FALSE;
            ShowWindow(child, SW_HIDE);
            MoveWindow(child, moved.left, moved.top, moved.right - moved.left, moved.bottom - moved.top, FALSE);
            if (visible)
                ShowWindow(child, SW_SHOW);
        }
        if (focus)
            SetFocus(focus);
        SetColumnWidths();
        RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
        RedrawWindow(ListView_GetHeader(list), nullptr, nullptr, RDW_INVALIDATE);
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
        lastClientRect = client;
        DrawSizeGrip(window, g_exif.instance, IDI_SIZE_GRIP, darkMode);
    }

    // ---------------------------------------------------- commands

    // Loaded on first use and kept until the window goes.
    HMENU ContextMenu() {
        if (!contextMenu) {
            menuResource = LoadMenuW(g_exif.instance, kContextMenuName);
            contextMenu = menuResource ? GetSubMenu(menuResource, 0) : nullptr;
        }
        return contextMenu;
    }

    // The map items are greyed, and their shortcuts do nothing, while the
    // list offers no position (the map buttons are hidden).
    bool Available(int command) {
        return !NeedsPosition(command) || IsWindowVisible(GetDlgItem(window, IDC_EXIF_GOOGLE_EARTH));
    }

    void ShowContextMenu(POINT screen) {
        if (!ContextMenu())
            return;
        for (int id : kGpsMenuItems)
            EnableMenuItem(contextMenu, static_cast<UINT>(id), MF_BYCOMMAND | (Available(id) ? MF_ENABLED : MF_GRAYED));
        const bool satellite = platform::ReadSettingInt(g_exif.settingsPath, u"EXIF", u"Satellite", 0) != 0;
        CheckMenuItem(contextMenu, IDM_SATELLITE, MF_BYCOMMAND | (satellite ? MF_CHECKED : MF_UNCHECKED));
        TrackThemedPopupMenu(window, contextMenu, -1, screen.x, screen.y, darkMode);
    }

    // Alt and a key the context menu shows as a shortcut: in the window the
    // system asks the window menu, with the context menu open that menu; both
    // send WM_MENUCHAR, since neither has the key as a mnemonic (the dark
    // menu's owner-drawn items have none at all).
    INT_PTR OnMenuChar(char16_t key, HMENU menu) {
        HMENU context = ContextMenu();
        const char16_t upper = key >= u'a' && key <= u'z' ? static_cast<char16_t>(key - 32) : key;
        for (int i = 0; context && i < GetMenuItemCount(context); ++i) {
            wchar_t text[160] = {};
            GetMenuStringW(context, static_cast<UINT>(i), text, 160, MF_BYPOSITION);
            if (AltShortcutKey(platform::ToU16string(text)) != upper)
                continue;
            const int id = static_cast<int>(GetMenuItemID(context, i));
            if (!Available(id))
                return Reply(MAKELRESULT(0, MNC_IGNORE));  // greyed: a beep, nothing done
            if (menu == context)
                return Reply(MAKELRESULT(i, MNC_EXECUTE));
            PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
            return Reply(MAKELRESULT(0, MNC_CLOSE));
        }
        return FALSE;
    }

    void ToggleSatellite() {
        if (!contextMenu)
            return;
        const bool checked = (GetMenuState(contextMenu, IDM_SATELLITE, MF_BYCOMMAND) & MF_CHECKED) != 0;
        CheckMenuItem(contextMenu, IDM_SATELLITE, MF_BYCOMMAND | (checked ? MF_UNCHECKED : MF_CHECKED));
        platform::WriteSettingString(g_exif.settingsPath, u"EXIF", u"Satellite", checked ? u"0" : u"1");
    }

    void ChooseTags() {
        if (!records)
            return;
        const std::u16string hidden = platform::ReadSettingString(g_exif.settingsPath, u"EXIF", u"HideTags", u"");
        auto chooser = std::make_unique<ChooseTagsDialog>(BuildTagChoices(*records, recordCount, hidden),
                                                          g_exif.settingsPath);
        if (RunModalDialog(g_exif.instance, IDD_CHOOSE_TAGS, window, std::move(chooser)) == 1) {
            FillExifList();
            SelectRememberedTag();  // as a refresh does: the row stays selected
        }
    }

    void OpenMap(exif::MapService service) { exif::OpenMapLink(service, position.latitude, position.longitude); }

    // Returns false for a command that is not the window's.
    bool OnCommand(int id) {
        switch (id) {
        case IDC_EXIF_COPY:
        case IDM_COPY_ALL: CopyListToClipboard(window, list, false); break;
        case IDM_COPY_SELECTED: CopyListToClipboard(window, list, true); break;
        case IDC_EXIF_MORE: {
            RECT r;
            GetWindowRect(GetDlgItem(window, IDC_EXIF_MORE), &r);
            ShowContextMenu(POINT{r.left, r.top});
            break;
        }
        case IDM_CHOOSE_TAGS: ChooseTags(); break;
        case IDC_EXIF_GOOGLE_EARTH:
            exif::ExportKmlAndOpen(g_exif.fileName, position.longitude, position.latitude, position.heading,
                                   kmlTempPath);
            break;
        case IDC_EXIF_GOOGLE_MAPS: OpenMap(exif::GoogleMapsServiceFor(g_exif.settingsPath)); break;
        case IDC_EXIF_OPENSTREETMAP: OpenMap(exif::MapService::kOpenStreetMap); break;
        case IDM_KAKAOMAP: OpenMap(exif::MapService::kKakaoMap); break;
        case IDM_NAVERMAP: OpenMap(exif::MapService::kNaverMap); break;
        case IDM_BINGMAPS: OpenMap(exif::MapService::kBingMaps); break;
        case IDM_BINGMAPS_APP: OpenMap(exif::MapService::kBingMapsApp); break;
        case IDM_GEOHACK: exif::OpenGeoHackLink(geoHackParams); break;
        case IDM_SATELLITE: ToggleSatellite(); break;
        case IDOK:
        case IDCANCEL:
            g_exif.window = nullptr;
            if (g_exif.modalMode)
                EndDialog(window, 1);
            else
                DestroyWindow(window);
            return true;
        default: return false;
        }
        SetFocus(list);
        return true;
    }

    void OnListKey(int key) {
        const KeyBinding binding = ExifKeyBinding(key);
        switch (binding.action) {
        case ExifAction::kToParent: PostMessageW(GetParent(window), WM_KEYDOWN, static_cast<WPARAM>(key), 0); break;
        case ExifAction::kFocusParent: SetFocus(GetParent(window)); break;
        case ExifAction::kDestroy: DestroyWindow(window); break;
        case ExifAction::kCommand: PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(binding.command), 0); break;
        case ExifAction::kNone: break;
        }
    }

    INT_PTR OnNotify(const NMHDR& header) {
        if (header.idFrom != IDC_EXIF_LIST)
            return FALSE;
        switch (header.code) {
        case LVN_KEYDOWN: OnListKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey); return TRUE;
        case LVN_ITEMCHANGED: {
            const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
            if (change.iItem >= 0 && (change.uChanged & LVIF_STATE) && (change.uNewState & LVIS_SELECTED))
                rememberedTag = ListCell(list, change.iItem, 1, kRememberedTagMax);
            return TRUE;
        }
        case NM_RCLICK: {
            POINT point = reinterpret_cast<const NMITEMACTIVATE&>(header).ptAction;
            ClientToScreen(list, &point);
            ShowContextMenu(point);
            return TRUE;
        }
        default: return FALSE;
        }
    }

    // ---------------------------------------------------- messages

    INT_PTR OnInit(LPARAM) override {
        list = GetDlgItem(window, IDC_EXIF_LIST);
        AllocateTable();
        recordCount = 0;
        rememberedTag.clear();
        kmlTempPath.clear();
        inSizeMove = false;
        GetClientRect(window, &lastClientRect);
        dpi = WindowDpi(window);
        InsertListColumn(list, 0, L"#", 0);
        InsertListColumn(list, 1, L"EXIF Tag", 0);
        InsertListColumn(list, 2, L"Value", 0);
        SetColumnWidths();
        inSizeMove = true;
        RestoreWindowPlacement();
        dpi = WindowDpi(window);
        inSizeMove = false;
        PostMessageW(window, WM_SIZE, 0, 0);
        KeepWindowOnScreen();
        ShowWindow(window, SW_SHOW);
        PostMessageW(window, kExifReloadMessage, 0, 0);
        SendMessageW(window, WM_SIZE, 0, 0);
        return TRUE;
    }

    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case kExifReloadMessage: Reload(); return TRUE;
        case WM_COMMAND: return OnCommand(LOWORD(wParam)) ? TRUE : FALSE;
        case WM_MENUCHAR: return OnMenuChar(LOWORD(wParam), reinterpret_cast<HMENU>(lParam));
        case WM_NOTIFY: return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
        case WM_SIZE:
            if (inSizeMove)
                return TRUE;
            Layout();
            return TRUE;
        case WM_PAINT: {
            PAINTSTRUCT paint;
            BeginPaint(window, &paint);
            EndPaint(window, &paint);
            DrawSizeGrip(window, g_exif.instance, IDI_SIZE_GRIP, darkMode);
            return TRUE;
        }
        case WM_DPICHANGED:
            dpi = LOWORD(wParam);
            GetClientRect(window, &lastClientRect);
            return FALSE;
        case WM_SIZING:
            if (IsWindowVisible(window)) {
                RECT& r = *reinterpret_cast<RECT*>(lParam);
                if (r.right - r.left < S(kMinTrackSize))
                    r.right = r.left + S(kMinTrackSize);
                if (r.bottom - r.top < S(kMinTrackSize))
                    r.bottom = r.top + S(kMinTrackSize);
            }
            return TRUE;
        case WM_ENTERSIZEMOVE: inSizeMove = true; return FALSE;
        case WM_EXITSIZEMOVE:
            inSizeMove = false;
            SendMessageW(window, WM_SIZE, 0, 0);
            return FALSE;
        case WM_ACTIVATE:
        case WM_ACTIVATEAPP:
            // Only on becoming active: taking the focus while losing it would
            // pull the window back in front of the viewer.
            if ((message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE) || (message == WM_ACTIVATEAPP && wParam)) {
                RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
                SetFocus(list);
            }
            return FALSE;
        case WM_DESTROY:
            if (!kmlTempPath.empty()) {
                platform::SleepMilliseconds(10);
                platform::RemoveFile(kmlTempPath);
                kmlTempPath.clear();
            }
            if (!g_exif.modalMode)
                SaveWindowPlacement();
            if (menuResource)
                DestroyMenu(menuResource);
            menuResource = contextMenu = nullptr;
            ReleaseTable();
            if (g_exif.window == window)
                g_exif.window = nullptr;
            return FALSE;
        default: return FALSE;
        }
    }
};

int ShowOrRefresh(HINSTANCE instance, const char16_t* path, HWND parent, const char16_t* settingsPath, int mode) {
    g_exif.fileName = Cut(path);
    g_exif.settingsPath = Cut(settingsPath);
    g_exif.modalMode = false;
    g_exif.instance = instance;
    HWND window = ExifWindowHandle();
    if (!window) {
        g_exif.window = nullptr;
        if (mode == 2)
            return 0;
        window = CreateModelessDialog(instance, IDD_EXIF_INFO, parent, std::make_unique<ExifInfoWindow>());
        if (!window)
            return -1;
        g_exif.window = window;
        SetFocus(window);
        SetFocus(GetDlgItem(window, IDC_EXIF_LIST));
        return 0;
    }
    if (parent && parent != GetParent(window) && parent != window) {
        constexpr ATOM kDialogClassAtom = 32770;
        const bool parentIsDialog = static_cast<ATOM>(GetClassLongW(parent, GCW_ATOM)) == kDialogClassAtom;
        SetParent(window, parentIsDialog ? GetParent(parent) : parent);
    }
    SendMessageW(window, kExifReloadMessage, 0, 0);
    if (auto* w = BoundDialog<ExifInfoWindow>(window))
        w->KeepWindowOnScreen();
    return 0;
}

}  // namespace

int ShowExifInfo(HINSTANCE instance, const char16_t* path, HWND parent, const char16_t* settingsPath, int mode) {
    return Guarded(-1, [&] { return ShowOrRefresh(instance, path, parent, settingsPath, mode); });
}

HWND ExifWindowHandle() { return (g_exif.window && IsWindow(g_exif.window)) ? g_exif.window : nullptr; }

void CloseExifWindow() {
    if (HWND window = ExifWindowHandle())
        DestroyWindow(window);
    g_exif.window = nullptr;
}

void CopyListToClipboard(HWND owner, HWND list, bool selectedOnly, int nameColumn) {
    std::vector<ListLine> lines;
    const int rows = ListView_GetItemCount(list);
    for (int i = 0; i < rows; ++i) {
        if (selectedOnly && !(ListView_GetItemState(list, i, LVIS_SELECTED) & LVIS_SELECTED))
            continue;
        ListLine line;
        line.name = ListCell(list, i, nameColumn, kCellNameMax);
        if (!line.name.empty())
            line.value = ListCell(list, i, nameColumn + 1, kCellValueMax);
        lines.push_back(std::move(line));
    }
    if (lines.empty()) {
        MessageBeep(MB_ICONASTERISK);
        return;
    }
    const std::u16string text = FormatClipboardText(lines);
    // A row of the longest name and value needs more than the nominal block
    // per row; never less than the text itself.
    const size_t bytes = std::max(lines.size() * kClipboardBytesPerRow, (text.size() + 1) * sizeof(char16_t));
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
    if (!block)
        return;
    if (void* data = GlobalLock(block)) {
        std::memcpy(data, text.data(), text.size() * sizeof(char16_t));
        GlobalUnlock(block);
    }
    if (!OpenClipboard(owner)) {
        GlobalFree(block);
        return;
    }
    EmptyClipboard();
    if (!SetClipboardData(CF_UNICODETEXT, block))
        GlobalFree(block);
    CloseClipboard();
    SetFocus(list);
}

}  // namespace vv
