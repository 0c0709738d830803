#include "comment_dialog.h"

#include <memory>
#include <string>

#include "comment/comment_limits.h"
#include "comment/comment_reader.h"
#include "comment_dialog_ids.h"
#include "dialog_kit.h"
#include "model/comment_dialog_model.h"

namespace vv {
namespace {

constexpr int kConversionRadios[] = {IDC_COMMENT_AUTOMATIC, IDC_COMMENT_ANSI, IDC_COMMENT_UNICODE};

bool Checked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }
void Check(HWND dialog, int id, bool on) { CheckDlgButton(dialog, id, on ? BST_CHECKED : BST_UNCHECKED); }

struct CommentEditDialog : DialogBase {
    CommentEditDialog(CommentDialogState& s, HWND p) : state(&s), parent(p) {}

    CommentDialogState* state;
    HWND parent;

    std::u16string_view SettingsPath() const override { return state->settingsPath; }
    INT_PTR OnInit(LPARAM) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCommand(int id);
};

INT_PTR CommentEditDialog::OnInit(LPARAM) {
    SetItemText(window, IDC_COMMENT_FILE, state->caption);
    SendDlgItemMessageW(window, IDC_COMMENT_TEXT, EM_LIMITTEXT, comment::kCommentChars - 1, 0);
    SetItemText(window, IDC_COMMENT_TEXT, state->oldText);
    const comment::CommentSettings& s = state->settings;
    Check(window, IDC_COMMENT_KEEP_DATE, s.keepOrgDate);
    Check(window, IDC_COMMENT_CLEAR_SPACES, s.clearSpaces);
    Check(window, IDC_COMMENT_APPEND, s.append);
    const int radio = s.conversion == comment::kConvertAnsi   ? IDC_COMMENT_ANSI
                      : s.conversion == comment::kConvertUtf8 ? IDC_COMMENT_UNICODE
                                                              : IDC_COMMENT_AUTOMATIC;
    CheckRadioButton(window, IDC_COMMENT_AUTOMATIC, IDC_COMMENT_UNICODE, radio);
    EnableWindow(GetDlgItem(window, IDC_COMMENT_APPEND), state->HasOldComment());
    ShowWindow(GetDlgItem(window, IDC_COMMENT_READ_ONLY), state->readOnly ? SW_SHOW : SW_HIDE);
    return TRUE;
}

bool CommentEditDialog::OnCommand(int id) {
    for (int conversion = 0; conversion < 3; ++conversion) {
        if (id == kConversionRadios[conversion]) {
            SetItemText(window, IDC_COMMENT_TEXT, ChooseConversion(*state, conversion));
            return true;
        }
    }
    switch (id) {
    case IDC_COMMENT_CLEAR_SPACES:
        if (Checked(window, IDC_COMMENT_CLEAR_SPACES)) {
            std::u16string text = ItemText(window, IDC_COMMENT_TEXT);
            comment::TrimBlanks(text);
            SetItemText(window, IDC_COMMENT_TEXT, text);
        }
        return true;
    case IDC_COMMENT_HELP:
        if (parent) SendMessageW(parent, kViewerHelpMessage, kCommentHelpTopic, 0);
        return true;
    case IDOK:
        AcceptCommentEdit(*state, ItemText(window, IDC_COMMENT_TEXT), Checked(window, IDC_COMMENT_KEEP_DATE),
                          Checked(window, IDC_COMMENT_CLEAR_SPACES), Checked(window, IDC_COMMENT_APPEND));
        EndDialog(window, IDOK);
        return true;
    case IDCANCEL: EndDialog(window, IDCANCEL); return true;
    default: return false;
    }
}

INT_PTR CommentEditDialog::OnMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
    case WM_COMMAND: return HIWORD(wParam) == BN_CLICKED && OnCommand(LOWORD(wParam)) ? TRUE : FALSE;
    case WM_HELP: return OnCommand(IDC_COMMENT_HELP) ? TRUE : FALSE;
    default: return FALSE;
    }
}

struct PngTextDialog : DialogBase {
    explicit PngTextDialog(const CommentDialogState& s) : state(&s) {}

    const CommentDialogState* state;

    std::u16string_view SettingsPath() const override { return state->settingsPath; }
    INT_PTR OnInit(LPARAM) override {
        SetItemText(window, IDC_COMMENT_FILE, state->caption);
        SetItemText(window, IDC_COMMENT_TEXT, state->oldText);
        // Focus for scrolling, but no selection: there is nothing to replace.
        SetFocus(GetDlgItem(window, IDC_COMMENT_TEXT));
        return FALSE;
    }
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM) override {
        if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)) return FALSE;
        EndDialog(window, IDCANCEL);
        return TRUE;
    }
};

// The write run after the dialog: wait cursor while files are written, the
// arrow while a refusal is shown.
int WriteAccepted(const CommentDialogState& state, HWND parent) {
    HCURSOR wait = LoadCursorW(nullptr, IDC_WAIT);
    HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
    SetCursor(wait);
    const int result = RunCommentWrite(state, [&](std::u16string_view error) {
        SetCursor(arrow);
        ShowMessage(parent, error, MB_OK | MB_ICONERROR);
        SetCursor(wait);
    });
    SetCursor(arrow);
    return result;
}

}  // namespace

int ShowJpgComment(HINSTANCE instance, std::u16string_view fileNames, HWND parent, std::u16string_view settingsPath,
                   std::u16string_view formats) {
    CommentDialogState state = PrepareCommentDialog(fileNames, settingsPath, formats);
    if (state.workingFile.empty()) return 0;
    if (state.png) {
        if (!state.oldText.empty())
            RunModalDialog(instance, IDD_PNG_TEXT, parent, std::make_unique<PngTextDialog>(state));
        return 1;
    }
    if (RunModalDialog(instance, IDD_COMMENT_EDIT, parent, std::make_unique<CommentEditDialog>(state, parent)) != IDOK)
        return 1;
    return WriteAccepted(state, parent);
}

}  // namespace vv
