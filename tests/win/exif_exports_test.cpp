// The EXIF data exports through Metadata.dll, loaded by name as the viewer
// loads it: the same answers as the native suite gives for the same files.
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

class DllExifExports : public ::testing::Test {
protected:
    fixture::TempDir dir;
    const std::u16string little = dir.Write("little.jpg", Sample(ByteOrder::kLittle).File());
    const std::u16string big = dir.Write("big.jpg", Sample(ByteOrder::kBig).File());
};

TEST_F(DllExifExports, LoadDataGivesTheSameLinesInBothByteOrders) {
    auto load = Export<LoadDataFn>("LoadData_EXIF_W");
    ASSERT_NE(load, nullptr);
    for (const std::u16string& path : {little, big}) {
        std::wstring out(4096, L'#');
        EXPECT_EQ(load(W(path), out.data(), 4096, 3), exiftest::kSampleRows);
        EXPECT_EQ(out.substr(0, out.find(L'\0')), Widen(Sample(ByteOrder::kBig).Mode3()));
        EXPECT_EQ(load(W(path), out.data(), 4096, 2), exiftest::kSampleRows);
        EXPECT_EQ(out.substr(0, 14), L"271=Vantaview\n");
    }
    std::wstring small(20, L'#');
    EXPECT_EQ(load(W(big), small.data(), 20, 3), 1);  // "Model - VV-1\n" no longer fits
    EXPECT_EQ(small, std::wstring(L"Make - Vantaview\n") + std::wstring(3, L'\0'));
}

TEST_F(DllExifExports, LoadTagFindsByTheLow16BitsAndGivesThePosition) {
    auto tag = Export<LoadTagFn>("LoadTag_EXIF_W");
    ASSERT_NE(tag, nullptr);
    wchar_t out[64];
    EXPECT_EQ(tag(W(big), 0x10110, out, 64), 1);
    EXPECT_STREQ(out, L"VV-1");
    EXPECT_EQ(tag(W(little), 499, out, 64), 1);
    EXPECT_EQ(std::wstring(out), Widen(exiftest::kSamplePosition));
    EXPECT_EQ(tag(W(dir.Path("missing.jpg")), 271, out, 64), 1);
    EXPECT_STREQ(out, L"");
}

TEST_F(DllExifExports, GetExifInfosGivesTheHeaderOffsetAndExtent) {
    auto infos = Export<GetExifInfosFn>("GetExifInfos");
    ASSERT_NE(infos, nullptr);
    uint32_t size = 0, out5 = 9;
    EXPECT_EQ(infos(W(big), &size, nullptr, nullptr, nullptr, &out5, 2), exiftest::kJpegTiffOffset);
    EXPECT_EQ(size, 2048u);
    EXPECT_EQ(out5, 0u);
    EXPECT_EQ(infos(W(dir.Path("missing.jpg")), &size, nullptr, nullptr, nullptr, nullptr, 2), 0u);
}

}  // namespace
