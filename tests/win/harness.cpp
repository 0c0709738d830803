#include "harness.h"

#include <commctrl.h>

#include <cstdlib>
#include <new>

#include "platform/win32/wide_text.h"
#include "screenshot.h"

namespace {
bool g_failing = false;
long g_untilFailure = 0;
size_t g_failingSize = 0;
}  // namespace

void* operator new(size_t size) {
    if (g_failing && size >= g_failingSize && --g_untilFailure <= 0)
        throw std::bad_alloc();
    if (void* block = std::malloc(size ? size : 1))
        return block;
    throw std::bad_alloc();
}
void* operator new[](size_t size) { return ::operator new(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, size_t) noexcept { std::free(block); }
void operator delete[](void* block, size_t) noexcept { std::free(block); }

namespace wintest {

FailingAllocations::FailingAllocations(long first, size_t atLeast) {
    g_untilFailure = first;
    g_failingSize = atLeast;
    g_failing = true;
}

FailingAllocations::~FailingAllocations() { g_failing = false; }

std::u16string ItemText(HWND dialog, int id) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(GetDlgItem(dialog, id))) + 1, L'\0');
    text.resize(GetDlgItemTextW(dialog, id, text.data(), static_cast<int>(text.size())));
    return platform::ToU16string(text);
}

std::u16string ListCell(HWND list, int row, int column) {
    wchar_t text[4096] = {};
    ListView_GetItemText(list, row, column, text, 4096);
    return platform::ToU16string(text);
}

std::u16string ClipboardText() {
    std::u16string text;
    if (!OpenClipboard(nullptr))
        return text;
    if (HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        text = platform::ToU16string(static_cast<const wchar_t*>(GlobalLock(data)));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

void Click(HWND dialog, int id) {
    SendMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
    PumpMessages();
}

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

namespace {

struct Driver {
    std::function<HWND()> find;
    std::vector<Step> steps;
    int yes;
    Driven driven;
    HWND window = nullptr, lastBox = nullptr;
    int idle = 0;
    bool busy = false;
};
Driver* g_driver = nullptr;

std::wstring TextOf(HWND window) {
    wchar_t text[4200] = {};
    GetWindowTextW(window, text, 4200);
    return text;
}

// A message box: a visible dialog of this thread other than the driven one,
// with its text in a static of id 0xFFFF (100 under Wine).
BOOL CALLBACK FindBox(HWND window, LPARAM found) {
    wchar_t className[16] = {};
    GetClassNameW(window, className, 16);
    if (window != g_driver->window && IsWindowVisible(window) && std::wstring(className) == L"#32770" &&
        (GetDlgItem(window, 0xFFFF) || GetDlgItem(window, 100))) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

// Boxes are answered even inside a step (one that clicks a button asking a
// question); steps do not nest (one that pumps messages).
void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    Driver& d = *g_driver;
    d.window = d.find();
    HWND box = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindBox, reinterpret_cast<LPARAM>(&box));
    if (box && box != d.lastBox) {
        d.lastBox = box;
        std::wstring text = TextOf(GetDlgItem(box, 0xFFFF));
        d.driven.boxes.emplace_back(text.empty() ? TextOf(GetDlgItem(box, 100)) : text, TextOf(box));
        const int button = GetDlgItem(box, IDYES) ? d.yes : IDOK;
        PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
    }
    if (box || d.busy || !d.window || !IsWindowVisible(d.window))
        return;
    d.busy = true;
    if (d.driven.stepsRun < d.steps.size())
        d.steps[d.driven.stepsRun++](d.window);
    else if (++d.idle > 60)
        PostMessageW(d.window, WM_COMMAND, IDCANCEL, 0);
    d.busy = false;
}

}  // namespace

Driven DriveModal(std::function<HWND()> find, std::vector<Step> steps, const std::function<void()>& modal, int yes) {
    Driver driver{std::move(find), std::move(steps), yes, {}};
    g_driver = &driver;
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, Tick);
    modal();
    KillTimer(nullptr, timer);
    g_driver = nullptr;
    return driver.driven;
}

}  // namespace wintest
