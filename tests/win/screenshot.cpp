#include "screenshot.h"

#include <objidl.h>  // PROPID, which the lean Windows headers leave out
#include <gdiplus.h>

#include <string>

namespace wintest {
namespace {

// PNG's encoder in GDI+ ({557CF406-1A04-11D3-9A73-0000F81EF32E}).
const CLSID kPngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

std::wstring Folder() {
    const std::string unixPath = VV_SCREENSHOT_DIR;  // Wine's drive Z: is the file-system root
    std::wstring path = L"Z:";
    for (char c : unixPath)
        path += c == '/' ? L'\\' : static_cast<wchar_t>(static_cast<unsigned char>(c));
    return path;
}

}  // namespace

void PumpMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool DarkOnScreen(HWND window, std::vector<POINT> points) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    PumpMessages();
    Sleep(150);  // let the X server finish drawing
    HDC screen = GetDC(nullptr);
    bool dark = true;
    for (POINT point : points) {
        ClientToScreen(window, &point);
        const COLORREF colour = GetPixel(screen, point.x, point.y);
        dark = dark && GetRValue(colour) < 0x80 && GetGValue(colour) < 0x80 && GetBValue(colour) < 0x80;
    }
    ReleaseDC(nullptr, screen);
    return dark;
}

bool SaveScreenshot(HWND window, const char* name, HWND also) {
    if (!IsWindowVisible(window))
        return false;
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    PumpMessages();
    Sleep(150);  // let the X server finish drawing
    PumpMessages();
    RECT r;
    GetWindowRect(window, &r);
    RECT other;
    if (also && GetWindowRect(also, &other))
        UnionRect(&r, &r, &other);
    const int w = r.right - r.left, h = r.bottom - r.top;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, w, h);
    HGDIOBJ old = SelectObject(memory, bitmap);
    const bool copied = BitBlt(memory, 0, 0, w, h, screen, r.left, r.top, SRCCOPY) != FALSE;
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    SelectObject(memory, old);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);

    bool saved = false;
    ULONG_PTR token = 0;
    Gdiplus::GdiplusStartupInput input;
    if (copied && Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok) {
        {
            const std::wstring folder = Folder();
            CreateDirectoryW(folder.c_str(), nullptr);
            std::wstring file = folder + L"\\";
            for (const char* c = name; *c; ++c)
                file += static_cast<wchar_t>(*c);
            if (dpi != 96)  // a run at another DPI: its own set
                file += L"_" + std::to_wstring(dpi) + L"dpi";
            file += L".png";
            Gdiplus::Bitmap image(bitmap, nullptr);
            saved = image.Save(file.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
        }
        Gdiplus::GdiplusShutdown(token);
    }
    DeleteObject(bitmap);
    return saved;
}

}  // namespace wintest
