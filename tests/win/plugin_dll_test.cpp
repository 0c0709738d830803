#include "plugin_dll.h"

#include <winver.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exif/exif_fixtures.h"
#include "fixture/container_fixture.h"
#include "fixture/iptc_fixture.h"
#include "platform/win32/wide_text.h"

namespace windll {
HMODULE Plugin() {
    static HMODULE module = LoadLibraryW(L"Metadata.dll");
    return module;
}
}  // namespace windll

namespace {

using namespace windll;
using exiftest::ByteOrder;
using exiftest::Sample;

using platform::AsWchar;
std::wstring Widen(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }
std::wstring UpToNul(const std::wstring& s) { return s.substr(0, s.find(L'\0')); }
std::string Narrow(const wchar_t* ascii) { return std::string(ascii, ascii + wcslen(ascii)); }

// The export names are checked on the DLL's file (scripts/check-dll.sh,
// vvmeta exports). What the viewer asks GetPlugInInfo and what Windows shows
// in the file's properties are one version and one description.
TEST(PluginDll, GetPlugInInfoAgreesWithTheVersionResource) {
    ASSERT_NE(Plugin(), nullptr) << "LoadLibraryW(L\"Metadata.dll\") failed: " << GetLastError();
    char version[16], description[64];
    memset(version, 'x', sizeof version);
    memset(description, 'x', sizeof description);
    EXPECT_EQ(Export<GetPlugInInfoFn>("GetPlugInInfo")(version, description), 0);
    EXPECT_STREQ(version, "4.76");
    EXPECT_EQ(version[5], 'x') << "nothing written past the terminator";

    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(Plugin(), path, MAX_PATH);
    std::vector<char> info(GetFileVersionInfoSizeW(path, nullptr));
    ASSERT_FALSE(info.empty());
    ASSERT_TRUE(GetFileVersionInfoW(path, 0, static_cast<DWORD>(info.size()), info.data()));
    const auto text = [&](const wchar_t* key) {
        wchar_t* value = nullptr;
        UINT length = 0;
        const std::wstring query = std::wstring(L"\\StringFileInfo\\040904b0\\") + key;
        return VerQueryValueW(info.data(), query.c_str(), reinterpret_cast<void**>(&value), &length) && value
                   ? Narrow(value)
                   : std::string("<none>");
    };
    EXPECT_EQ(text(L"FileVersion"), version);
    EXPECT_EQ(text(L"ProductVersion"), version);
    EXPECT_EQ(text(L"FileDescription"), description);
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(info.data(), L"\\", reinterpret_cast<void**>(&fixed), &length));
    EXPECT_EQ(std::to_string(HIWORD(fixed->dwFileVersionMS)) + "." + std::to_string(LOWORD(fixed->dwFileVersionMS)),
              version);
    EXPECT_EQ(fixed->dwProductVersionMS, fixed->dwFileVersionMS);
}

// One call of each data export: the rules are the native suites', here the
// wide strings and results must cross the DLL's boundary intact.
TEST(PluginDll, DataExportsAnswerAsTheNativeSuitesDo) {
    fixture::TempDir dir;
    const std::u16string exifFile = dir.Write("little.jpg", Sample(ByteOrder::kLittle).File());
    std::wstring out(4096, L'#');
    EXPECT_EQ(Export<LoadDataFn>("LoadData_EXIF_W")(AsWchar(exifFile), out.data(), 4096, 3), exiftest::kSampleRows);
    EXPECT_EQ(UpToNul(out), Widen(Sample(ByteOrder::kBig).Mode3()));
    wchar_t value[64];
    EXPECT_EQ(Export<LoadTagFn>("LoadTag_EXIF_W")(AsWchar(exifFile), 499, value, 64), 1);
    EXPECT_EQ(std::wstring(value), Widen(exiftest::kSamplePosition));
    uint32_t size = 0, out5 = 9;
    EXPECT_EQ(Export<GetExifInfosFn>("GetExifInfos")(AsWchar(exifFile), &size, nullptr, nullptr, nullptr, &out5, 2),
              exiftest::kJpegTiffOffset);
    EXPECT_EQ(size, 2048u);
    EXPECT_EQ(out5, 0u);

    // No character set named: the ANSI code page (Windows-1252 here) decodes \xE9.
    const std::u16string iptcFile = dir.Write("a.jpg", fixture::JpegWithIptc(fixture::IimBuilder()
                                                                             .Dataset(2, 0, std::string("\0\x04", 2))
                                                                             .Dataset(2, 5, "Caf\xE9")
                                                                             .Dataset(2, 25, "k1").Dataset(2, 25, "k2")
                                                                             .Dataset(2, 55, "19991231").Build()));
    EXPECT_EQ(Export<LoadDataFn>("LoadData_IPTC_W")(AsWchar(iptcFile), out.data(), 512, 3), 4);
    EXPECT_EQ(UpToNul(out), L"Record Version - 4.0\nObject Name - Caf\u00E9\nKeywords - k1 \nk2\nCreated Date - 19991231\n");
    EXPECT_EQ(Export<LoadTagFn>("LoadTag_IPTC_W")(AsWchar(iptcFile), 55, value, 16), 1);
    EXPECT_STREQ(value, L"1999:12:31");

    const fixture::Bytes text = fixture::PngChunk("tEXt", fixture::Join({fixture::ToBytes("Comment"), {0},
                                                                         fixture::ToBytes("Hello")}));
    const std::u16string png = dir.Write("p.png", fixture::PngFile({text}));
    EXPECT_EQ(Export<LoadCommentFn>("Load_Comment_W")(AsWchar(png), out.data(), 6, 0, L";PNG;"), 5);
    EXPECT_EQ(UpToNul(out), L"Comme");
}

}  // namespace
