#include "harness.h"

#include "fixture/fixture.h"
#include "platform/platform.h"

namespace wintest {

StandInViewer::StandInViewer(const wchar_t* title, int left) {
    WNDCLASSW wc = {};
    wc.lpfnWndProc = Proc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"VantaviewTestViewer";
    RegisterClassW(&wc);  // the second registration fails harmlessly
    window_ = CreateWindowExW(0, wc.lpszClassName, title, WS_OVERLAPPEDWINDOW, left, 50, 300, 200, nullptr, nullptr,
                              wc.hInstance, this);
    ShowWindow(window_, SW_SHOWNOACTIVATE);
}

StandInViewer::~StandInViewer() {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

std::vector<ViewerMessage> StandInViewer::Received(UINT message) const {
    std::vector<ViewerMessage> found;
    for (const ViewerMessage& m : received_)
        if (m.message == message)
            found.push_back(m);
    return found;
}

LRESULT CALLBACK StandInViewer::Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* self = reinterpret_cast<StandInViewer*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && (message == WM_KEYDOWN || message == WM_COPYDATA || message >= WM_USER)) {
        ViewerMessage m{message, wParam, lParam, 0, {}};
        if (message == WM_COPYDATA) {
            const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
            const auto* text = static_cast<const char16_t*>(data.lpData);
            m.copyType = data.dwData;
            m.copyText.assign(text, data.cbData / 2 ? data.cbData / 2 - 1 : 0);
        }
        self->received_.push_back(std::move(m));
        if (message == WM_COPYDATA)
            return TRUE;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

std::string UnixPath(const std::u16string& path) {
    using Convert = char*(CDECL*)(const wchar_t*);
    const auto convert = reinterpret_cast<Convert>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    char* unix = convert ? convert(reinterpret_cast<const wchar_t*>(path.c_str())) : nullptr;
    const std::string result = unix ? unix : "";
    HeapFree(GetProcessHeap(), 0, unix);
    return result;
}

std::string RunOnHost(const std::string& shellCommand) {
    fixture::TempDir out;
    const std::u16string answer = out.Path("answer.txt");
    const std::string target = UnixPath(answer);
    if (target.empty())
        return "<no host path>";
    const std::string script =
        "(" + shellCommand + ") > '" + target + ".part' 2>&1; mv '" + target + ".part' '" + target + "'";
    std::u16string command = u"Z:\\bin\\sh -c \"" + platform::Utf8ToUtf16(script) + u"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, reinterpret_cast<wchar_t*>(&command[0]), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &startup, &process))
        return "<host program not started>";
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    for (int i = 0; i < 600 && !platform::FileExists(answer); ++i)
        Sleep(50);
    const fixture::Bytes bytes = fixture::ReadAll(answer);
    return std::string(bytes.begin(), bytes.end());
}

}  // namespace wintest
