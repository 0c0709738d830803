// The IPTC data exports as the viewer calls them: through Metadata.dll, with
// wchar_t buffers (the rules themselves are tested in the iptc suite).
#include <gtest/gtest.h>

#include <string>

#include "fixture/iptc_fixture.h"
#include "plugin_dll.h"

namespace {

using namespace windll;

TEST(IptcExports, LinesAndOneFieldThroughTheDll) {
    auto loadData = Export<LoadDataFn>("LoadData_IPTC_W");
    auto loadTag = Export<LoadTagFn>("LoadTag_IPTC_W");
    ASSERT_TRUE(loadData && loadTag);
    fixture::TempDir dir;
    // No character set named: the ANSI code page (Windows-1252 here) decodes \xE9.
    const std::u16string file = dir.Write("a.jpg", fixture::JpegWithIptc(fixture::IimBuilder()
                                                                             .Dataset(2, 0, std::string("\0\x04", 2))
                                                                             .Dataset(2, 5, "Caf\xE9")
                                                                             .Dataset(2, 25, "k1").Dataset(2, 25, "k2")
                                                                             .Dataset(2, 55, "19991231").Build()));
    const std::wstring path(file.begin(), file.end());
    std::wstring out(512, L'#');
    EXPECT_EQ(loadData(path.c_str(), &out[0], 512, 3), 4);
    EXPECT_EQ(out.substr(0, out.find(L'\0')),
              L"Record Version - 4.0\nObject Name - Caf\u00E9\nKeywords - k1 \nk2\nCreated Date - 19991231\n");
    wchar_t tag[16];
    EXPECT_EQ(loadTag(path.c_str(), 25, tag, 16), 1);
    EXPECT_STREQ(tag, L"k1, k2");
    EXPECT_EQ(loadTag(path.c_str(), 55, tag, 16), 1);
    EXPECT_STREQ(tag, L"1999:12:31");
    EXPECT_EQ(loadTag((path + L".missing").c_str(), 25, tag, 16), 0);
    EXPECT_STREQ(tag, L"");
}

}  // namespace
