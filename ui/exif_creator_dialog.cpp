#include "exif_creator_dialog.h"

#include <commctrl.h>

#include <cstdio>
#include <memory>
#include <string>

#include "dialog_kit.h"
#include "guarded.h"
#include "platform/platform.h"
#include "resource_ids.h"
#include "theme.h"

namespace vv {
namespace {

constexpr wchar_t kTagColumn[] = L"EXIF Tag";
constexpr wchar_t kValueColumn[] = L"Value (edit with click or F2)";
constexpr int kEditMaxChars = 255;  // a row holds at most 255 bytes of UTF-8

// The dialog's window-side state; the data itself stays in the model.
struct CreatorDialog : DialogBase {
    explicit CreatorDialog(exif::ExifCreatorState& s) : state(&s) {}

    exif::ExifCreatorState* state;
    HWND list = nullptr;
    HWND edit = nullptr;  // the in-place editor while a cell is edited
    int editRow = -1;

    std::u16string_view SettingsPath() const override { return state->settingsPath; }
    INT_PTR OnInit(LPARAM) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnOk();
    INT_PTR OnNotify(const NMHDR& header);
};

CreatorDialog* DialogOf(HWND dialog) { return BoundDialog<CreatorDialog>(dialog); }

void SetValueCell(HWND list, int row, const exif::TagRecord& record) {
    SetListCell(list, row, 1, platform::Utf8ToUtf16(record.value));
}

void SaveKeepDate(const exif::ExifCreatorState& state) {
    if (state.settingsPath.empty())
        return;  // no settings file given: nothing to remember it in
    char number[16];
    std::snprintf(number, sizeof number, "%d", state.keepDate);
    platform::WriteSettingString(state.settingsPath, u"EXIF", u"CreatorKeepOrgDate", platform::Utf8ToUtf16(number));
}

// ------------------------------------------------------------ in-place editor

// The editor goes also when the commit fails (memory): nothing else would
// end it.
void EndEdit(CreatorDialog& d, bool commit) {
    struct Closing {
        HWND edit, list;
        bool hadFocus;
        ~Closing() {
            DestroyWindow(edit);
            if (hadFocus)
                SetFocus(list);
        }
    };
    HWND edit = d.edit;
    if (!edit)
        return;
    d.edit = nullptr;  // the focus loss that DestroyWindow causes finds nothing to end
    const Closing closing{edit, d.list, GetFocus() == edit};
    if (commit && CommitCreatorEdit(*d.state, d.editRow, WindowText(edit)))
        SetValueCell(d.list, d.editRow, d.state->rows[d.editRow]);
}

// Enter commits and Esc cancels, rather than pressing the dialog's buttons;
// losing the focus commits.
LRESULT EditMessage(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    CreatorDialog* d = DialogOf(GetParent(edit));
    switch (message) {
    case WM_GETDLGCODE: return DefaultSubclassProc(edit, message, wParam, lParam) | DLGC_WANTALLKEYS;
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
        const LRESULT result = DefaultSubclassProc(edit, message, wParam, lParam);
        if (d)
            EndEdit(*d, true);
        return result;
    }
    default: break;
    }
    return DefaultSubclassProc(edit, message, wParam, lParam);
}

LRESULT CALLBACK EditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
    if (message == WM_NCDESTROY)
        RemoveSubclass(edit, EditProc, id);
    return Guarded<LRESULT>(0, [&] { return EditMessage(edit, message, wParam, lParam); });
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
    HWND edit = CreateWindowExW(0, WC_EDITW, platform::AsWchar(platform::Utf8ToUtf16(d.state->rows[row].value)),
                                WS_CHILD | WS_BORDER | ES_AUTOHSCROLL, cell.left, cell.top, cell.right - cell.left,
                                cell.bottom - cell.top, dialog, reinterpret_cast<HMENU>(IDC_CREATOR_EDIT),
                                reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(dialog, GWLP_HINSTANCE)), nullptr);
    if (!edit)
        return;
    SendMessageW(edit, WM_SETFONT, SendMessageW(d.list, WM_GETFONT, 0, 0), FALSE);
    SendMessageW(edit, EM_LIMITTEXT, kEditMaxChars, 0);
    SubclassWindow(edit, EditProc, 0, 0);
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

INT_PTR CreatorDialog::OnInit(LPARAM) {
    list = GetDlgItem(window, IDC_CREATOR_LIST);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    exif::FillDefaultDateTaken(*state);
    FillCreatorList(list, *state);
    CheckDlgButton(window, IDC_CREATOR_KEEP_DATE, state->keepDate ? BST_CHECKED : BST_UNCHECKED);
    return TRUE;
}

void CreatorDialog::OnOk() {
    EndEdit(*this, true);
    state->keepDate = IsDlgButtonChecked(window, IDC_CREATOR_KEEP_DATE) == BST_CHECKED;
    SaveKeepDate(*state);
    std::u16string error;
    if (exif::WriteExifCreator(*state, error)) {
        EndDialog(window, IDOK);
        return;
    }
    ShowMessage(window, error, MB_OK | MB_ICONERROR);
}

INT_PTR CreatorDialog::OnNotify(const NMHDR& header) {
    if (header.hwndFrom != list)
        return FALSE;
    if (header.code == NM_CLICK) {
        const auto& click = reinterpret_cast<const NMITEMACTIVATE&>(header);
        BeginEdit(window, *this, click.iItem >= 0 ? click.iItem : RowAt(list, click.ptAction));
        return TRUE;
    }
    if (header.code == LVN_KEYDOWN && reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_F2) {
        int row = ListView_GetNextItem(list, -1, LVNI_SELECTED);
        if (row < 0)
            row = ListView_GetNextItem(list, -1, LVNI_FOCUSED);
        BeginEdit(window, *this, row);
        return TRUE;
    }
    return FALSE;
}

INT_PTR CreatorDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NOTIFY: return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK) {
            OnOk();
            return TRUE;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            EndEdit(*this, false);
            EndDialog(window, IDCANCEL);
            return TRUE;
        }
        return FALSE;
    default: return FALSE;
    }
}

}  // namespace

INT_PTR RunExifCreatorDialog(HINSTANCE instance, HWND parent, exif::ExifCreatorState& state) {
    return RunModalDialog(instance, IDD_EXIF_CREATOR, parent, std::make_unique<CreatorDialog>(state));
}

HWND CreateExifCreatorDialog(HINSTANCE instance, HWND parent, exif::ExifCreatorState& state) {
    return CreateModelessDialog(instance, IDD_EXIF_CREATOR, parent, std::make_unique<CreatorDialog>(state));
}

bool CommitCreatorEdit(exif::ExifCreatorState& state, int row, std::u16string_view text) {
    if (row < 0 || row >= static_cast<int>(exif::kCreatorVisibleRows))
        return false;
    exif::SetCreatorValue(state.rows[row], platform::Utf16ToUtf8(text));
    return true;
}

void FillCreatorList(HWND list, const exif::ExifCreatorState& state) {
    ListView_DeleteAllItems(list);
    DeleteListColumns(list);
    InsertListColumn(list, 0, kTagColumn, 0);
    InsertListColumn(list, 1, kValueColumn, 0);
    for (uint32_t row = 0; row < exif::kCreatorVisibleRows; ++row) {
        AppendListRow(list, platform::Utf8ToUtf16(exif::kCreatorFields[row].label));
        SetValueCell(list, static_cast<int>(row), state.rows[row]);
    }
    // The labels set the first width in the list's own font (so at any DPI);
    // the Value column takes the rest.
    ListView_SetColumnWidth(list, 0, LVSCW_AUTOSIZE);
    ListView_SetColumnWidth(list, 1, LVSCW_AUTOSIZE_USEHEADER);
}

}  // namespace vv
