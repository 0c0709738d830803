// vvmeta.exe's backend: loads Metadata.dll by name with LoadLibraryW, exactly
// as the viewer does, and resolves the exports with GetProcAddress.

#include <windows.h>
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <algorithm>
#include <cstdio>

#include "platform/win32/wide_text.h"
#include "plugin_host.h"

namespace vvmeta {
namespace {
using platform::AsWchar;

HMODULE Module() {
    static HMODULE module = LoadLibraryW(L"Metadata.dll");
    return module;
}

template <typename T>
void Resolve(T& slot, const char* name) {
    slot = reinterpret_cast<T>(reinterpret_cast<void*>(GetProcAddress(Module(), name)));
}

template <typename T>
T Export(const char* name) {
    return reinterpret_cast<T>(reinterpret_cast<void*>(GetProcAddress(Module(), name)));
}

// The stand-in for the viewer's main window: the dialogs' owner.
HWND MakeViewerWindow() {
    WNDCLASSW wc = {};
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"VantaviewHost";
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    RegisterClassW(&wc);
    HWND viewer = CreateWindowExW(0, wc.lpszClassName, L"Vantaview", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                                  640, 480, nullptr, nullptr, wc.hInstance, nullptr);
    ShowWindow(viewer, SW_SHOWNORMAL);
    return viewer;
}

// The viewer names PNG in the comment dialog's format list when the file it
// shows is one; so does this host, from the first file's signature.
bool FirstFileIsPng(const std::u16string& files) {
    const std::u16string first = files.substr(0, files.find(u'|'));
    HANDLE file = CreateFileW(AsWchar(first), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                              OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    unsigned char head[8] = {};
    DWORD read = 0;
    const bool ok = ReadFile(file, head, sizeof head, &read, nullptr) && read == sizeof head;
    CloseHandle(file);
    static const unsigned char kPng[8] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    return ok && std::equal(head, head + 8, kPng);
}

int OpenDialog(const std::string& dialog, const std::u16string& files, const std::u16string& settings) {
    using ShowExif = int(__cdecl*)(const wchar_t*, HWND, const wchar_t*, int);
    using GetWindow = HWND(__cdecl*)();
    using Close = int(__cdecl*)();
    using ShowIptc = int(__cdecl*)(const wchar_t*, HWND, const wchar_t*);
    using ShowComment = int(__cdecl*)(const wchar_t*, HWND, int, const wchar_t*, int, const wchar_t*);
    HWND viewer = MakeViewerWindow();
    const wchar_t* ini = settings.empty() ? nullptr : AsWchar(settings);
    int answer = 0;
    if (dialog == "window") {
        answer = Export<ShowExif>("Show_EXIF_Info_W")(AsWchar(files), viewer, ini, 1);
        const auto exifWindow = Export<GetWindow>("Get_EXIF_Window");
        MSG message;
        while (exifWindow() && GetMessageW(&message, nullptr, 0, 0) > 0) {
            if (!IsDialogMessageW(exifWindow(), &message)) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
    } else if (dialog == "iptcsheet") {
        answer = Export<ShowIptc>("Show_IPTC_Info_W")(AsWchar(files), viewer, ini);
    } else {
        const wchar_t* formats = FirstFileIsPng(files) ? L";JPG;PNG;" : L";JPG;";
        answer = Export<ShowComment>("Show_JPG_Comment_W")(AsWchar(files), viewer, 0, ini, 0, formats);
    }
    Export<Close>("ClosePlugin")();
    DestroyWindow(viewer);
    return answer;
}
}  // namespace

bool LoadPlugin(PluginApi& api, std::string& error) {
    if (!Module()) {
        error = "cannot load Metadata.dll (error " + std::to_string(GetLastError()) + ")";
        return false;
    }
    // wchar_t and char16_t are the same UTF-16 unit here, so the exports'
    // wide pointers are taken as char16_t pointers.
    Resolve(api.GetPlugInInfo, "GetPlugInInfo");
    Resolve(api.GetExifInfos, "GetExifInfos");
    Resolve(api.LoadData_EXIF_W, "LoadData_EXIF_W");
    Resolve(api.LoadTag_EXIF_W, "LoadTag_EXIF_W");
    Resolve(api.LoadData_IPTC_W, "LoadData_IPTC_W");
    Resolve(api.LoadTag_IPTC_W, "LoadTag_IPTC_W");
    Resolve(api.Load_Comment_W, "Load_Comment_W");
    api.OpenDialog = OpenDialog;
    return true;
}

std::vector<bool> FindExports() {
    std::vector<bool> found;
    for (const char* name : kExportNames)
        found.push_back(Module() && GetProcAddress(Module(), name) != nullptr);
    return found;
}

const char* PluginOrigin() { return "Metadata.dll"; }

std::vector<std::u16string> Arguments(int, char**) {
    int n = 0;
    LPWSTR* argv = CommandLineToArgvW(GetCommandLineW(), &n);
    std::vector<std::u16string> args;
    for (int i = 1; i < n; ++i) {
        const wchar_t* a = argv[i];
        args.emplace_back(a, a + wcslen(a));
    }
    LocalFree(argv);
    return args;
}

void WriteOut(const std::string& utf8) {
    _setmode(_fileno(stdout), _O_BINARY);
    std::fwrite(utf8.data(), 1, utf8.size(), stdout);
}

void WriteErr(const std::string& utf8) {
    _setmode(_fileno(stderr), _O_BINARY);
    std::fwrite(utf8.data(), 1, utf8.size(), stderr);
}

}  // namespace vvmeta
