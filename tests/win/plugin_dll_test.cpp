#include "plugin_dll.h"

#include <gtest/gtest.h>

#include <string>

#include "fixture/fixture.h"

namespace windll {
HMODULE Plugin() {
    static HMODULE module = LoadLibraryW(L"Metadata.dll");
    return module;
}
}  // namespace windll

namespace {

using namespace windll;

const char* const kExports[] = {
    "GetPlugInInfo",    "ClosePlugin",      "Get_EXIF_Window",    "GetExifInfos",    "LoadData_EXIF_W",
    "LoadTag_EXIF_W",   "Show_EXIF_Info_W", "Create_EXIF_Data_W", "LoadData_IPTC_W", "LoadTag_IPTC_W",
    "Show_IPTC_Info_W", "Load_Comment_W",   "Show_JPG_Comment_W",
};

TEST(PluginDll, LoadsByNameAndHasAllThirteenExports) {
    ASSERT_NE(Plugin(), nullptr) << "LoadLibraryW(L\"Metadata.dll\") failed: " << GetLastError();
    for (const char* name : kExports)
        EXPECT_NE(GetProcAddress(Plugin(), name), nullptr) << name;
    // Undecorated only: no stdcall-style "_Name@n" aliases.
    EXPECT_EQ(GetProcAddress(Plugin(), "_GetPlugInInfo"), nullptr);
}

TEST(PluginDll, GetPlugInInfoAnswersTheTwoTexts) {
    auto info = Export<GetPlugInInfoFn>("GetPlugInInfo");
    ASSERT_NE(info, nullptr);
    char version[32] = {}, description[128] = {};
    EXPECT_EQ(info(version, description), 0);
    EXPECT_STREQ(version, "4.76");
    EXPECT_STREQ(description, "EXIF/IPTC/Comment image information");
}

TEST(PluginDll, WindowExportsAnswerWithoutAWindow) {
    auto getWindow = Export<GetExifWindowFn>("Get_EXIF_Window");
    auto close = Export<ClosePluginFn>("ClosePlugin");
    ASSERT_NE(getWindow, nullptr);
    ASSERT_NE(close, nullptr);
    EXPECT_EQ(getWindow(), nullptr);
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(getWindow(), nullptr);
}

TEST(PluginDll, VersionResourceNamesTheProduct) {
    wchar_t path[MAX_PATH];
    ASSERT_GT(GetModuleFileNameW(Plugin(), path, MAX_PATH), 0u);
    HRSRC res = FindResourceW(Plugin(), MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(16) /* RT_VERSION */);
    ASSERT_NE(res, nullptr);
    DWORD size = SizeofResource(Plugin(), res);
    const char* data = static_cast<const char*>(LockResource(LoadResource(Plugin(), res)));
    ASSERT_NE(data, nullptr);
    // The VS_FIXEDFILEINFO follows the "VS_VERSION_INFO" key; find its signature.
    const std::string block(data, size);
    const size_t sig = block.find(std::string("\xBD\x04\xEF\xFE", 4));
    ASSERT_NE(sig, std::string::npos);
    DWORD versionMs = 0;
    memcpy(&versionMs, data + sig + 8, 4);
    EXPECT_EQ(HIWORD(versionMs), 4);
    EXPECT_EQ(LOWORD(versionMs), 76);
    const std::wstring description = L"EXIF/IPTC/Comment image information";
    EXPECT_NE(std::wstring(reinterpret_cast<const wchar_t*>(data), size / 2).find(description),
              std::wstring::npos);
}

}  // namespace
