// The export table of Metadata.dll: thirteen C functions with undecorated
// names (see Metadata.def). wchar_t is UTF-16 here, so wide arguments pass to
// the portable core as char16_t unchanged.
#include <cstdint>
#include <memory>

#include "exif/exif_creation.h"
#include "../plugin_api.h"
#include "module_state.h"
#include "platform/win32/wide_text.h"
#include "ui/comment_dialog.h"
#include "ui/exif_creator_dialog.h"
#include "ui/exif_window.h"
#include "ui/guarded.h"
#include "ui/iptc_sheet.h"
#include "ui/theme.h"

namespace vv {
ModuleState& Module() {
    static ModuleState state;
    return state;
}
}  // namespace vv

namespace {
using platform::AsChar16;
// Every export runs its body through the guard; a body that throws answers
// the export's "nothing done" result (-1, "no dialog", for the EXIF window).
using vv::Guarded;
}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        vv::Module().instance = instance;
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}

int __cdecl GetPlugInInfo(char* version, char* description) {
    return Guarded(0, [&] { return vv::GetPlugInInfo(version, description); });
}

int __cdecl ClosePlugin(void) {
    return Guarded(0, [] {
        vv::CloseExifWindow();
        vv::ReleaseDarkModeResources();
        return 0;
    });
}

HWND __cdecl Get_EXIF_Window(void) {
    return Guarded<HWND>(nullptr, [] { return vv::ExifWindowHandle(); });
}

uint64_t __cdecl GetExifInfos(const wchar_t* path, uint32_t* size, uint32_t* out2, uint32_t* out3,
                              uint32_t* out4, uint32_t* out5, int formatCode) {
    return Guarded<uint64_t>(
        0, [&] { return vv::GetExifInfos(AsChar16(path), size, out2, out3, out4, out5, formatCode); });
}

int __cdecl LoadData_EXIF_W(const wchar_t* path, wchar_t* out, int capacity, int mode) {
    return Guarded(0, [&] { return vv::LoadData_EXIF_W(AsChar16(path), AsChar16(out), capacity, mode); });
}

int __cdecl LoadTag_EXIF_W(const wchar_t* path, int tag, wchar_t* out, int capacity) {
    return Guarded(0, [&] { return vv::LoadTag_EXIF_W(AsChar16(path), tag, AsChar16(out), capacity); });
}

int __cdecl Show_EXIF_Info_W(const wchar_t* path, HWND parent, const wchar_t* settings, int mode) {
    return Guarded(-1, [&] {
        return vv::ShowExifInfo(vv::Module().instance, AsChar16(path), parent, AsChar16(settings), mode);
    });
}

int __cdecl Create_EXIF_Data_W(const wchar_t* path, HWND parent, const wchar_t* settings) {
    return Guarded(0, [&] {
        if (!path) return 0;
        auto state = std::make_unique<exif::ExifCreatorState>();
        const std::u16string_view settingsPath = settings ? std::u16string_view(AsChar16(settings)) : u"";
        exif::PrepareExifCreator(AsChar16(path), settingsPath, *state);
        vv::RunExifCreatorDialog(vv::Module().instance, parent, *state);
        return 0;
    });
}

int __cdecl LoadData_IPTC_W(const wchar_t* path, wchar_t* out, int capacity, int mode) {
    return Guarded(0, [&] { return vv::LoadData_IPTC_W(AsChar16(path), AsChar16(out), capacity, mode); });
}

int __cdecl LoadTag_IPTC_W(const wchar_t* path, int dataset, wchar_t* out, int capacity) {
    return Guarded(0, [&] { return vv::LoadTag_IPTC_W(AsChar16(path), dataset, AsChar16(out), capacity); });
}

int __cdecl Show_IPTC_Info_W(const wchar_t* fileNames, HWND parent, const wchar_t* settings) {
    return Guarded(0, [&] {
        return vv::ShowIptcInfo(vv::Module().instance, AsChar16(fileNames), parent, AsChar16(settings));
    });
}

int __cdecl Load_Comment_W(const wchar_t* path, wchar_t* out, int capacity, int unused,
                           const wchar_t* formats) {
    return Guarded(0, [&] {
        return vv::Load_Comment_W(AsChar16(path), AsChar16(out), capacity, unused, AsChar16(formats));
    });
}

int __cdecl Show_JPG_Comment_W(const wchar_t* paths, HWND parent, int, const wchar_t* settings, int,
                               const wchar_t* formats) {
    return Guarded(0, [&] {
        if (!paths) return 0;
        return vv::ShowJpgComment(vv::Module().instance, AsChar16(paths), parent,
                                  settings ? std::u16string_view(AsChar16(settings)) : std::u16string_view(),
                                  formats ? std::u16string_view(AsChar16(formats)) : std::u16string_view());
    });
}

}  // extern "C"
