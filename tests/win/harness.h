// What the dialog suites share: a stand-in for the viewer's main window that
// records what the plug-in sends it, and a driver for the plug-in's modal
// windows.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace wintest {

// A control's text, a list-view cell (at most 4095 characters) and the
// clipboard's Unicode text ("" when there is none).
std::u16string ItemText(HWND dialog, int id);
std::u16string ListCell(HWND list, int row, int column);
std::u16string ClipboardText();

// Clicks control `id` of `dialog` as the mouse would (BM_CLICK: a check box
// or radio button changes its state, its parent gets BN_CLICKED) and handles
// the messages that follow.
void Click(HWND dialog, int id);

struct ViewerMessage {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    ULONG_PTR copyType;      // WM_COPYDATA: its dwData
    std::u16string copyText;  // WM_COPYDATA: its UTF-16 text, without the terminator
};

// A top-level window standing in for the viewer. It records WM_KEYDOWN,
// WM_COPYDATA and the viewer's private messages (WM_USER and above).
class StandInViewer {
public:
    explicit StandInViewer(const wchar_t* title = L"Viewer", int left = 700);
    ~StandInViewer();
    StandInViewer(const StandInViewer&) = delete;
    StandInViewer& operator=(const StandInViewer&) = delete;

    HWND Window() const { return window_; }
    // The recorded messages of one kind, oldest first.
    std::vector<ViewerMessage> Received(UINT message) const;
    void Clear() { received_.clear(); }

private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    HWND window_ = nullptr;
    std::vector<ViewerMessage> received_;
};

// While an object lives, this suite's operator new throws std::bad_alloc
// for every allocation of at least `atLeast` bytes from the `first`-th such
// one on (1: the next). The code compiled into the suite (the dialogs, the
// theming) meets the failure; the loaded DLL allocates with its own.
class FailingAllocations {
public:
    explicit FailingAllocations(long first = 1, size_t atLeast = 0);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
};

// Acts inside the modal loops of this thread while `modal` runs (it opens a
// modal window and returns when that closes). On each tick of a thread timer
// a message box is noted and answered (`yes` where it asks, OK elsewhere);
// otherwise, while `find` names a visible window, the next step acts on it.
// A window still up long after the last step is cancelled, so that a stuck
// test fails instead of hanging.
using Step = std::function<void(HWND window)>;
struct Driven {
    std::vector<std::pair<std::wstring, std::wstring>> boxes;  // text, caption
    size_t stepsRun = 0;
};
Driven DriveModal(std::function<HWND()> find, std::vector<Step> steps, const std::function<void()>& modal,
                  int yes = IDYES);

}  // namespace wintest
