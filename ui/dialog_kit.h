// The one way a dialog of the plug-in is written, and the small helpers for
// what every dialog repeats.
//
// A dialog is a class derived from DialogBase: its fields are the dialog's
// window-side state, OnInit and OnMessage its behaviour. The shared dialog
// procedure binds the object to the window at WM_INITDIALOG, reads the
// viewer's "Viewing"/"DarkMode" setting and applies theming, offers every
// later message to the theming layer first (returning its result when it
// handles one), catches every exception (none may reach the viewer's message
// loop), and deletes the object when the window is destroyed.
//
// Everything runs on the viewer's UI thread.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/win32/wide_text.h"

namespace vv {

class DialogBase {
public:
    virtual ~DialogBase() = default;

    HWND window = nullptr;  // set when WM_INITDIALOG binds the object
    int darkMode = 0;       // "Viewing"/"DarkMode", read at WM_INITDIALOG

protected:
    // The settings file the dark-mode switch is read from; empty for none.
    virtual std::u16string_view SettingsPath() const = 0;
    // WM_INITDIALOG, after the object is bound and theming is applied.
    // Returns what the dialog procedure returns for it.
    virtual INT_PTR OnInit(LPARAM lParam) = 0;
    // Every later message the theming layer did not handle; FALSE leaves it
    // to the default handling. WM_DESTROY reaches it before the object goes.
    virtual INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    // For messages whose answer goes through DWLP_MSGRESULT (WM_NOTIFY
    // replies, property-sheet notifications): stores it and returns TRUE.
    INT_PTR Reply(LRESULT result);

private:
    friend struct DialogDispatch;
    bool ownedByWindow_ = false;
};

// The dialog procedure of every dialog made by RunModalDialog and
// CreateModelessDialog; its WM_INITDIALOG lParam is the std::unique_ptr
// holding the object, whose ownership the window takes.
INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
// The same for a property-sheet page: the page's PROPSHEETPAGEW lParam is
// the DialogBase, which the caller keeps owning (it outlives the sheet).
INT_PTR CALLBACK PageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam);

// Runs `state` as a modal dialog from template `templateId` of `instance`.
// Returns what DialogBoxParamW returns (-1 when it could not be created).
INT_PTR RunModalDialog(HINSTANCE instance, int templateId, HWND parent, std::unique_ptr<DialogBase> state);
// Creates `state` as a modeless dialog (shown when its template says so);
// null when it could not be created. The window owns the object from then on.
HWND CreateModelessDialog(HINSTANCE instance, int templateId, HWND parent, std::unique_ptr<DialogBase> state);

// The object bound to a dialog made here, or null.
template <typename T>
T* BoundDialog(HWND dialog) {
    return dynamic_cast<T*>(reinterpret_cast<DialogBase*>(GetWindowLongPtrW(dialog, DWLP_USER)));
}

// ------------------------------------------------------------ messages

// The caption of every message box the plug-in shows.
inline constexpr wchar_t kMessageCaption[] = L"Vantaview";

// Shows `text` in a message box captioned "Vantaview"; returns its answer.
int ShowMessage(HWND owner, std::u16string_view text, UINT type);
// Tests replace the message box (and so observe what would be shown); null
// restores MessageBoxW.
using MessageBoxFn = int(WINAPI*)(HWND owner, const wchar_t* text, const wchar_t* caption, UINT type);
void SetMessageBoxHook(MessageBoxFn show);

// ------------------------------------------------------------ text

std::u16string WindowText(HWND window);
std::u16string ItemText(HWND dialog, int id);
void SetItemText(HWND dialog, int id, std::u16string_view text);

// ------------------------------------------------------------ DPI and placement

// MulDiv(n, dpi, 96) with the window's DPI.
int ScaleForWindow(HWND window, int n);

// Moves a top-level window the least distance that puts it wholly on the
// work area of the monitor it stands on (nearest to it); a sizable one
// larger than the work area is made smaller, any other keeps its caption on
// it. A minimised or maximised window is left as it is. Every dialog made
// here is kept so after WM_INITDIALOG.
void KeepOnWorkArea(HWND window);

// ------------------------------------------------------------ list views

// Registers the common-control classes the dialogs use (list views, tabs,
// property sheets); harmless to call again.
void InitDialogControls();

void InsertListColumn(HWND list, int index, const wchar_t* title, int width);
void DeleteListColumns(HWND list);
// Appends a row with its first cell; returns its index (-1 on failure).
int AppendListRow(HWND list, std::u16string_view firstCell);
void SetListCell(HWND list, int row, int column, std::u16string_view text);
// A cell's text, at most maxChars characters.
std::u16string ListCell(HWND list, int row, int column, int maxChars);

}  // namespace vv
