#include "dialog_kit.h"

#include <commctrl.h>
#include <prsht.h>

#include "guarded.h"
#include "model/window_placement.h"
#include "platform/platform.h"
#include "theme.h"

namespace vv {
namespace {

MessageBoxFn g_messageBox = MessageBoxW;

DialogBase* Bound(HWND dialog) { return reinterpret_cast<DialogBase*>(GetWindowLongPtrW(dialog, DWLP_USER)); }

}  // namespace

INT_PTR DialogBase::Reply(LRESULT result) {
    SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
    return TRUE;
}

// One body for dialogs and pages; they differ only in where WM_INITDIALOG
// finds the object and who owns it.
struct DialogDispatch {
    static INT_PTR Run(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, DialogBase* initial,
                       bool owned) {
        if (message == WM_INITDIALOG) {
            if (!initial)
                return FALSE;
            initial->window = dialog;
            initial->ownedByWindow_ = owned;
            SetWindowLongPtrW(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(initial));
            const std::u16string_view settings = initial->SettingsPath();
            initial->darkMode =
                settings.empty() ? 0 : platform::ReadSettingInt(settings, u"Viewing", u"DarkMode", 0);
            ApplyDarkModeToDialog(dialog, 0, initial->darkMode);
            const INT_PTR result = initial->OnInit(lParam);
            if (!(GetWindowLongW(dialog, GWL_STYLE) & WS_CHILD))
                KeepOnWorkArea(dialog);  // where the template or a saved position put it
            return result;
        }
        DialogBase* d = Bound(dialog);
        if (!d)
            return FALSE;
        LRESULT result = 0;
        if (HandleDarkModeMessage(dialog, message, wParam, lParam, d->darkMode, -1, &result)) {
            if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC)
                return static_cast<INT_PTR>(result);  // colour messages return the brush itself
            return d->Reply(result);
        }
        if (message != WM_NCDESTROY)
            return d->OnMessage(message, wParam, lParam);
        SetWindowLongPtrW(dialog, DWLP_USER, 0);
        if (d->ownedByWindow_)
            delete d;
        return FALSE;
    }
};

// Out of memory inside a handler: the message gets the default handling.
INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded<INT_PTR>(FALSE, [&] {
        DialogBase* initial = nullptr;
        if (message == WM_INITDIALOG && lParam)
            initial = reinterpret_cast<std::unique_ptr<DialogBase>*>(lParam)->release();
        return DialogDispatch::Run(dialog, message, wParam, lParam, initial, true);
    });
}

INT_PTR CALLBACK PageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded<INT_PTR>(FALSE, [&] {
        DialogBase* initial = nullptr;
        if (message == WM_INITDIALOG && lParam)
            initial = reinterpret_cast<DialogBase*>(reinterpret_cast<const PROPSHEETPAGEW*>(lParam)->lParam);
        return DialogDispatch::Run(page, message, wParam, lParam, initial, false);
    });
}

INT_PTR RunModalDialog(HINSTANCE instance, int templateId, HWND parent, std::unique_ptr<DialogBase> state) {
    InitDialogControls();
    // The window takes the object at WM_INITDIALOG; if it never gets there the
    // holder still owns it and frees it here.
    return DialogBoxParamW(instance, MAKEINTRESOURCEW(templateId), parent, DialogProc,
                           reinterpret_cast<LPARAM>(&state));
}

HWND CreateModelessDialog(HINSTANCE instance, int templateId, HWND parent, std::unique_ptr<DialogBase> state) {
    InitDialogControls();
    return CreateDialogParamW(instance, MAKEINTRESOURCEW(templateId), parent, DialogProc,
                              reinterpret_cast<LPARAM>(&state));
}

// ------------------------------------------------------------ messages

int ShowMessage(HWND owner, std::u16string_view text, UINT type) {
    const std::u16string copy(text);
    return g_messageBox(owner, platform::AsWchar(copy), kMessageCaption, type);
}

void SetMessageBoxHook(MessageBoxFn show) { g_messageBox = show ? show : MessageBoxW; }

// ------------------------------------------------------------ text

std::u16string WindowText(HWND window) {
    std::u16string text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
    text.resize(static_cast<size_t>(
        GetWindowTextW(window, platform::AsWchar(&text[0]), static_cast<int>(text.size()))));
    return text;
}

std::u16string ItemText(HWND dialog, int id) { return WindowText(GetDlgItem(dialog, id)); }

void SetItemText(HWND dialog, int id, std::u16string_view text) {
    SetDlgItemTextW(dialog, id, platform::AsWchar(std::u16string(text)));
}

int ScaleForWindow(HWND window, int n) { return MulDiv(n, static_cast<int>(WindowDpi(window)), 96); }

void KeepOnWorkArea(HWND window) {
    RECT r;
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    if (IsIconic(window) || IsZoomed(window) || !GetWindowRect(window, &r) ||
        !GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor))
        return;
    const bool sizable = (GetWindowLongW(window, GWL_STYLE) & WS_THICKFRAME) != 0;
    const RECT& work = monitor.rcWork;
    const WinRect fitted = FitToWorkArea({r.left, r.top, r.right, r.bottom},
                                         {work.left, work.top, work.right, work.bottom}, sizable);
    if (fitted.left == r.left && fitted.top == r.top && fitted.right == r.right && fitted.bottom == r.bottom)
        return;
    SetWindowPos(window, nullptr, fitted.left, fitted.top, fitted.right - fitted.left, fitted.bottom - fitted.top,
                 SWP_NOZORDER | SWP_NOOWNERZORDER | SWP_NOACTIVATE);
}

// ------------------------------------------------------------ list views

void InitDialogControls() {
    INITCOMMONCONTROLSEX init = {sizeof init, ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&init);
}

void InsertListColumn(HWND list, int index, const wchar_t* title, int width) {
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = const_cast<wchar_t*>(title);
    column.cx = width;
    ListView_InsertColumn(list, index, &column);
}

void DeleteListColumns(HWND list) {
    while (ListView_DeleteColumn(list, 0)) {
    }
}

int AppendListRow(HWND list, std::u16string_view firstCell) {
    std::u16string text(firstCell);
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = ListView_GetItemCount(list);
    item.pszText = const_cast<wchar_t*>(platform::AsWchar(text));
    return ListView_InsertItem(list, &item);
}

void SetListCell(HWND list, int row, int column, std::u16string_view text) {
    std::u16string copy(text);
    ListView_SetItemText(list, row, column, const_cast<wchar_t*>(platform::AsWchar(copy)));
}

std::u16string ListCell(HWND list, int row, int column, int maxChars) {
    std::u16string text(static_cast<size_t>(maxChars) + 1, u'\0');
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = platform::AsWchar(&text[0]);
    item.cchTextMax = maxChars + 1;
    const LRESULT length = SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    text.resize(static_cast<size_t>(length < 0 ? 0 : length));
    return text;
}

}  // namespace vv
