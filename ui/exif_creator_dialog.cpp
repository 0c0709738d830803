#include "exif_creator_dialog.h"

#include <commctrl.h>

#include <cstdio>
#include <string>

#include "platform/platform.h"
#include "resource_ids.h"
#include "theme.h"

namespace vv {
namespace {

constexpr wchar_t kMessageCaption[] = L"Vantaview";
constexpr wchar_t kTagColumn[] = L"EXIF Tag";
constexpr wchar_t kValueColumn[] = L"Value (edit with click or F2)";
constexpr int kEditMaxChars = 255;  // a row holds at most 255 bytes of UTF-8

CreatorMessageBox g_messageBox = MessageBoxW;

// The dialog's window-side state; the data itself stays in the model.
struct CreatorDialog {
    exif::ExifCreatorState* state = nullptr;
    int darkMode = 0;
    HWND list = nullptr;
    HWND edit = nullptr;  // the in-place editor while a cell is edited
    int editRow = -1;
};

CreatorDialog* DialogOf(HWND dialog) {
    return reinterpret_cast<CreatorDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
}

const wchar_t* W(const std::u16string& s) { return reinterpret_cast<const wchar_t*>(s.c_str()); }

std::u16string WindowText(HWND window) {
    std::u16string text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
    text.resize(static_cast<size_t>(
        GetWindowTextW(window, reinterpret_cast<wchar_t*>(&text[0]), static_cast<int>(text.size()))));
    return text;
}

// Column 0 adds the row; the other columns fill it.
void SetCell(HWND list, int row, int column, const wchar_t* text) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = const_cast<wchar_t*>(text);
    if (column == 0)
        ListView_InsertItem(list, &item);
    else
        ListView_SetItem(list, &item);
}

void SetValueCell(HWND list, int row, const exif::TagRecord& record) {
    SetCell(list, row, 1, W(platform::Utf8ToUtf16(record.value)));
}

void SaveKeepDate(const exif::ExifCreatorState& state) {
    if (state.settingsPath.empty())
        return;  // no settings file given: nothing to remember it in
    char number[16];
    std::snprintf(number, sizeof number, "%d", state.keepDate);
    platform::WriteSettingString(state.settingsPath, u"EXIF", u"CreatorKeepOrgDate", platform::Utf8ToUtf16(number));
}

// ------------------------------------------------------------ in-place editor

void EndEdit(CreatorDialog& d, bool commit) {
    HWND edit = d.edit;
    if (!edit)
        return;
    d.edit = nullptr;  // the focus loss that DestroyWindow causes finds nothing to end
    if (commit && CommitCreatorEdit(*d.state, d.editRow, WindowText(edit)))
        SetValueCell(d.list, d.editRow, d.state->rows[d.editRow]);
    const bool hadFocus = GetFocus() == edit;
    DestroyWindow(edit);
    if (hadFocus)
        SetFocus(d.list);
}

// Enter commits and Esc cancels, rather than pressing the dialog's buttons;
// losing the focus commits.
LRESULT CALLBACK EditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto base = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(edit, GWLP_USERDATA));
    CreatorDialog* d = DialogOf(GetParent(edit));
    switch (message) {
    case WM_GETDLGCODE: return CallWindowProcW(base, edit, message, wParam, lParam) | DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        if (d && (wParam == VK_RETURN || wParam == VK_ESCAPE)) {
            EndEdit(*d, wParam == VK_RETURN);
            return 0;
        }
        break;
    case WM_CHAR:
        if (wParam == L'\r' || wParam == 0x1B)
            return 0;  // already handled as a key; no beep
        break;
    case WM_KILLFOCUS: {
        const LRESULT result = CallWindowProcW(base, edit, message, wParam, lParam);
        if (d)
            EndEdit(*d, true);
        return result;
    }
    default: break;
    }
    return CallWindowProcW(base, edit, message, wParam, lParam);
}

// The editor is a child of the dialog, not of the list, so that its colour
// message reaches the dialog procedure and the theming layer.
void BeginEdit(HWND dialog, CreatorDialog& d, int row) {
    EndEdit(d, true);
    if (row < 0 || row >= static_cast<int>(exif::kCreatorVisibleRows))
        return;
    ListView_EnsureVisible(d.list, row, FALSE);
    RECT cell;
    if (!ListView_GetSubItemRect(d.list, row, 1, LVIR_BOUNDS, &cell))
        return;
    MapWindowPoints(d.list, dialog, reinterpret_cast<POINT*>(&cell), 2);
    HWND edit = CreateWindowExW(0, WC_EDITW, W(platform::Utf8ToUtf16(d.state->rows[row].value)),
                                WS_CHILD | WS_BORDER | ES_AUTOHSCROLL, cell.left, cell.top, cell.right - cell.left,
                                cell.bottom - cell.top, dialog, reinterpret_cast<HMENU>(IDC_CREATOR_EDIT),
                                reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(dialog, GWLP_HINSTANCE)), nullptr);
    if (!edit)
        return;
    SendMessageW(edit, WM_SETFONT, SendMessageW(d.list, WM_GETFONT, 0, 0), FALSE);
    SendMessageW(edit, EM_LIMITTEXT, kEditMaxChars, 0);
    SetWindowLongPtrW(edit, GWLP_USERDATA, GetWindowLongPtrW(edit, GWLP_WNDPROC));
    SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(EditProc));
    d.edit = edit;
    d.editRow = row;
    SetWindowPos(edit, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
    SendMessageW(edit, EM_SETSEL, 0, -1);
    SetFocus(edit);
}

int RowAt(HWND list, POINT point) {
    LVHITTESTINFO hit = {};
    hit.pt = point;
    return ListView_SubItemHitTest(list, &hit);
}

// ------------------------------------------------------------ dialog

void InitDialog(HWND dialog, exif::ExifCreatorState& state) {
    auto* d = new CreatorDialog;
    d->state = &state;
    SetWindowLongPtrW(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(d));
    if (!state.settingsPath.empty())
        d->darkMode = platform::ReadSettingInt(state.settingsPath, u"Viewing", u"DarkMode", 0);
    d->list = GetDlgItem(dialog, IDC_CREATOR_LIST);
    ListView_SetExtendedListViewStyle(d->list, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    exif::FillDefaultDateTaken(state);
    FillCreatorList(d->list, state);
    CheckDlgButton(dialog, IDC_CREATOR_KEEP_DATE, state.keepDate ? BST_CHECKED : BST_UNCHECKED);
    ApplyDarkModeToDialog(dialog, 0, d->darkMode);
}

void OnOk(HWND dialog, CreatorDialog& d) {
    EndEdit(d, true);
    exif::ExifCreatorState& state = *d.state;
    state.keepDate = IsDlgButtonChecked(dialog, IDC_CREATOR_KEEP_DATE) == BST_CHECKED;
    SaveKeepDate(state);
    std::u16string error;
    if (exif::WriteExifToJpeg(state.path, state.rows, exif::kCreatorRowCount, state.keepDate, error)) {
        EndDialog(dialog, IDOK);
        return;
    }
    g_messageBox(dialog, W(error), kMessageCaption, MB_OK | MB_ICONERROR);
}

BOOL OnNotify(HWND dialog, CreatorDialog& d, const NMHDR& header) {
    if (header.hwndFrom != d.list)
        return FALSE;
    if (header.code == NM_CLICK) {
        const auto& click = reinterpret_cast<const NMITEMACTIVATE&>(header);
        BeginEdit(dialog, d, click.iItem >= 0 ? click.iItem : RowAt(d.list, click.ptAction));
        return TRUE;
    }
    if (header.code == LVN_KEYDOWN && reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_F2) {
        int row = ListView_GetNextItem(d.list, -1, LVNI_SELECTED);
        if (row < 0)
            row = ListView_GetNextItem(d.list, -1, LVNI_FOCUSED);
        BeginEdit(dialog, d, row);
        return TRUE;
    }
    return FALSE;
}

INT_PTR HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        InitDialog(dialog, *reinterpret_cast<exif::ExifCreatorState*>(lParam));
        return TRUE;
    }
    CreatorDialog* d = DialogOf(dialog);
    if (!d)
        return FALSE;
    LRESULT result = 0;
    if (HandleDarkModeMessage(dialog, message, wParam, lParam, d->darkMode, -1, &result)) {
        if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC)
            return static_cast<INT_PTR>(result);  // colour messages return the brush itself
        SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
        return TRUE;
    }
    switch (message) {
    case WM_NOTIFY: return OnNotify(dialog, *d, *reinterpret_cast<const NMHDR*>(lParam));
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK) {
            OnOk(dialog, *d);
            return TRUE;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            EndEdit(*d, false);
            EndDialog(dialog, IDCANCEL);
            return TRUE;
        }
        return FALSE;
    case WM_DESTROY:
        SetWindowLongPtrW(dialog, DWLP_USER, 0);
        delete d;
        return FALSE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK CreatorDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        return HandleMessage(dialog, message, wParam, lParam);
    } catch (...) {
        return FALSE;  // out of memory: the message is left to the default handling
    }
}

void InitListControls() {
    INITCOMMONCONTROLSEX init = {sizeof init, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&init);
}

}  // namespace

INT_PTR RunExifCreatorDialog(HINSTANCE instance, HWND parent, exif::ExifCreatorState& state) {
    InitListControls();
    return DialogBoxParamW(instance, MAKEINTRESOURCEW(IDD_EXIF_CREATOR), parent, CreatorDialogProc,
                           reinterpret_cast<LPARAM>(&state));
}

HWND CreateExifCreatorDialog(HINSTANCE instance, HWND parent, exif::ExifCreatorState& state) {
    InitListControls();
    return CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_EXIF_CREATOR), parent, CreatorDialogProc,
                              reinterpret_cast<LPARAM>(&state));
}

bool CommitCreatorEdit(exif::ExifCreatorState& state, int row, std::u16string_view text) {
    if (row < 0 || row >= static_cast<int>(exif::kCreatorVisibleRows))
        return false;
    exif::SetCreatorValue(state.rows[row], platform::Utf16ToUtf8(text));
    return true;
}

void FillCreatorList(HWND list, const exif::ExifCreatorState& state) {
    ListView_DeleteAllItems(list);
    while (ListView_DeleteColumn(list, 0)) {
    }
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT;
    column.pszText = const_cast<wchar_t*>(kTagColumn);
    ListView_InsertColumn(list, 0, &column);
    column.pszText = const_cast<wchar_t*>(kValueColumn);
    ListView_InsertColumn(list, 1, &column);
    for (uint32_t row = 0; row < exif::kCreatorVisibleRows; ++row) {
        SetCell(list, static_cast<int>(row), 0, W(platform::Utf8ToUtf16(exif::kCreatorFields[row].label)));
        SetValueCell(list, static_cast<int>(row), state.rows[row]);
    }
    // The labels set the first width in the list's own font (so at any DPI);
    // the Value column takes the rest.
    ListView_SetColumnWidth(list, 0, LVSCW_AUTOSIZE);
    ListView_SetColumnWidth(list, 1, LVSCW_AUTOSIZE_USEHEADER);
}

void SetCreatorMessageBox(CreatorMessageBox show) { g_messageBox = show ? show : MessageBoxW; }

}  // namespace vv
