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

// The export names are checked on the DLL's file (scripts/check-dll.sh, vvmeta
// exports) and the info texts natively; here the DLL loads and answers.
TEST(PluginDll, WindowExportsAnswerWithoutAWindow) {
    ASSERT_NE(Plugin(), nullptr) << "LoadLibraryW(L\"Metadata.dll\") failed: " << GetLastError();
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
