// What the dialog suites share: a stand-in for the viewer's main window that
// records what the plug-in sends it, and a way to ask a program of the host
// (exiftool, the independent reader of the files we write).
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace wintest {

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

// The host's path of a Windows path (Wine's drive mapping); "" when unknown.
std::string UnixPath(const std::u16string& path);

// Runs `shellCommand` with the host's /bin/sh and returns what it printed
// (standard output and error). Wine starts host programs but does not hand
// them our standard handles, so the output comes back through a file that
// appears whole when the command is done. Waits at most 30 seconds.
std::string RunOnHost(const std::string& shellCommand);

}  // namespace wintest
