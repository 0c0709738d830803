// The Windows-side harness: Metadata.dll loaded by name with LoadLibraryW,
// exactly as the viewer loads it, and its exports resolved by name.
#pragma once

#include <windows.h>

#include <cstdint>

namespace windll {

using GetPlugInInfoFn = int(__cdecl*)(char*, char*);
using ClosePluginFn = int(__cdecl*)();
using GetExifWindowFn = HWND(__cdecl*)();
using GetExifInfosFn = uint64_t(__cdecl*)(const wchar_t*, uint32_t*, uint32_t*, uint32_t*, uint32_t*,
                                          uint32_t*, int);
using LoadDataFn = int(__cdecl*)(const wchar_t*, wchar_t*, int, int);
using LoadTagFn = int(__cdecl*)(const wchar_t*, int, wchar_t*, int);
using ShowExifInfoFn = int(__cdecl*)(const wchar_t*, HWND, const wchar_t*, int);
using CreateExifDataFn = int(__cdecl*)(const wchar_t*, HWND, const wchar_t*);
using ShowIptcInfoFn = int(__cdecl*)(const wchar_t*, HWND, const wchar_t*);
using LoadCommentFn = int(__cdecl*)(const wchar_t*, wchar_t*, int, int, const wchar_t*);
using ShowJpgCommentFn = int(__cdecl*)(const wchar_t*, HWND, int, const wchar_t*, int, const wchar_t*);

// The loaded plug-in (loaded once per test program, as the viewer keeps it).
HMODULE Plugin();

template <typename Fn>
Fn Export(const char* name) {
    return reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(Plugin(), name)));
}

}  // namespace windll
