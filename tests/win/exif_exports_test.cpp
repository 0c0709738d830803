// The EXIF data exports through Metadata.dll, loaded by name as the viewer
// loads it.
#include <gtest/gtest.h>

#include <string>

#include "exif/exif_fixtures.h"
#include "fixture/fixture.h"
#include "plugin_dll.h"

namespace {

using namespace windll;
using exiftest::ByteOrder;
using exiftest::Sample;

const wchar_t* W(const std::u16string& s) { return reinterpret_cast<const wchar_t*>(s.c_str()); }
std::wstring Widen(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }

// One call of each data export: the rules are the native suite's, here the
// wide strings and results must cross the DLL's boundary intact.
TEST(DllExifExports, AnswerAsTheNativeSuiteDoes) {
    fixture::TempDir dir;
    const std::u16string file = dir.Write("little.jpg", Sample(ByteOrder::kLittle).File());
    auto load = Export<LoadDataFn>("LoadData_EXIF_W");
    auto tag = Export<LoadTagFn>("LoadTag_EXIF_W");
    auto infos = Export<GetExifInfosFn>("GetExifInfos");
    ASSERT_TRUE(load && tag && infos);
    std::wstring out(4096, L'#');
    EXPECT_EQ(load(W(file), out.data(), 4096, 3), exiftest::kSampleRows);
    EXPECT_EQ(out.substr(0, out.find(L'\0')), Widen(Sample(ByteOrder::kBig).Mode3()));
    wchar_t value[64];
    EXPECT_EQ(tag(W(file), 499, value, 64), 1);
    EXPECT_EQ(std::wstring(value), Widen(exiftest::kSamplePosition));
    uint32_t size = 0, out5 = 9;
    EXPECT_EQ(infos(W(file), &size, nullptr, nullptr, nullptr, &out5, 2), exiftest::kJpegTiffOffset);
    EXPECT_EQ(size, 2048u);
    EXPECT_EQ(out5, 0u);
}

}  // namespace
