// The plug-in's data exports as portable functions. The DLL's export table
// (plugin/win32) forwards the viewer's calls here, passing wchar_t text as
// char16_t; the native host and the tests call these directly.
//
// Argument lists of every export, as the viewer calls them (C calling
// convention, undecorated names):
//   int      GetPlugInInfo(char* version, char* description)
//   int      ClosePlugin(void)
//   HWND     Get_EXIF_Window(void)
//   uint64_t GetExifInfos(const wchar_t* path, uint32_t* size, uint32_t* out2,
//                         uint32_t* out3, uint32_t* out4, uint32_t* out5, int formatCode)
//   int      LoadData_EXIF_W(const wchar_t* path, wchar_t* out, int capacity, int mode)
//   int      LoadTag_EXIF_W(const wchar_t* path, int tag, wchar_t* out, int capacityOrAction)
//   int      Show_EXIF_Info_W(const wchar_t* path, HWND parent, const wchar_t* settings, int mode)
//   int      Create_EXIF_Data_W(const wchar_t* path, HWND parent, const wchar_t* settings)
//   int      LoadData_IPTC_W(const wchar_t* path, wchar_t* out, int capacity, int mode)
//   int      LoadTag_IPTC_W(const wchar_t* path, int dataset, wchar_t* out, int capacity)
//   int      Show_IPTC_Info_W(const wchar_t* paths, HWND parent, const wchar_t* settings)
//   int      Load_Comment_W(const wchar_t* path, wchar_t* out, int capacity, int unused,
//                           const wchar_t* formats)
//   int      Show_JPG_Comment_W(const wchar_t* paths, HWND parent, int reserved1,
//                               const wchar_t* settings, int reserved2, const wchar_t* formats)
#pragma once

#include <cstdint>

#include "plugin_version.h"

namespace vv {

// Both from the project (CMakeLists.txt).
inline constexpr char kPluginVersion[] = VV_VERSION_TEXT;
inline constexpr char kPluginDescription[] = VV_DESCRIPTION_TEXT;

// Copies the version and the description (each with its terminator). Returns 0.
int32_t GetPlugInInfo(char* version, char* description);

uint64_t GetExifInfos(const char16_t* path, uint32_t* size, uint32_t* out2, uint32_t* out3,
                      uint32_t* out4, uint32_t* out5, int32_t formatCode);
int32_t LoadData_EXIF_W(const char16_t* path, char16_t* out, int32_t capacity, int32_t mode);
int32_t LoadTag_EXIF_W(const char16_t* path, int32_t tag, char16_t* out, int32_t capacity);
int32_t LoadData_IPTC_W(const char16_t* path, char16_t* out, int32_t capacity, int32_t mode);
int32_t LoadTag_IPTC_W(const char16_t* path, int32_t dataset, char16_t* out, int32_t capacity);
int32_t Load_Comment_W(const char16_t* path, char16_t* out, int32_t capacity, int32_t unused,
                       const char16_t* formats);

}  // namespace vv
