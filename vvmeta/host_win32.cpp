// vvmeta.exe's backend: loads Metadata.dll by name with LoadLibraryW, exactly
// as the viewer does, and resolves the exports with GetProcAddress.

#include <windows.h>
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>

#include "plugin_host.h"

namespace vvmeta {
namespace {
HMODULE Module() {
    static HMODULE module = LoadLibraryW(L"Metadata.dll");
    return module;
}

template <typename T>
void Resolve(T& slot, const char* name) {
    slot = reinterpret_cast<T>(reinterpret_cast<void*>(GetProcAddress(Module(), name)));
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
