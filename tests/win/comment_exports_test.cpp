// Load_Comment_W through Metadata.dll, called as the viewer calls it.
#include <gtest/gtest.h>

#include <string>

#include "fixture/container_fixture.h"
#include "plugin_dll.h"

namespace {

using fixture::Bytes;

Bytes TextChunk(std::string_view keyword, std::string_view text) {
    return fixture::PngChunk("tEXt", fixture::Join({fixture::ToBytes(keyword), {0}, fixture::ToBytes(text)}));
}

std::wstring Call(const Bytes& file, const wchar_t* formats, int& result, int capacity = 512) {
    auto load = windll::Export<windll::LoadCommentFn>("Load_Comment_W");
    EXPECT_NE(load, nullptr);
    if (!load) return L"?";
    fixture::TempDir dir;
    const std::u16string path = dir.Write("f.img", file);
    std::wstring out(static_cast<size_t>(capacity) + 2, L'#');
    result = load(reinterpret_cast<const wchar_t*>(path.c_str()), out.data(), capacity, 0, formats);
    EXPECT_EQ(out.substr(static_cast<size_t>(capacity)), L"##");
    return out.c_str();
}

TEST(CommentExport, PngTextComesBackInTheAnsiCodePage) {
    int result = -1;
    const Bytes png = fixture::PngFile({TextChunk("Comment", "Hello"), TextChunk("Author", "Caf\xE9")});
    wchar_t cafe[8] = {};
    ASSERT_EQ(MultiByteToWideChar(CP_ACP, 0, "Caf\xE9", 4, cafe, 7), 4);
    EXPECT_EQ(Call(png, L";PNG;", result), L"Comment: Hello\r\nAuthor: " + std::wstring(cafe));
    EXPECT_EQ(result, 28);
    EXPECT_EQ(Call(png, L";PNG;", result, 4), L"Com");
    EXPECT_EQ(result, 3);
}

TEST(CommentExport, JpgOnlyAnswersNothing) {
    int result = -1;
    EXPECT_EQ(Call(fixture::JpegBuilder().Soi().Com("a comment").ScanAndEoi().Build(), L";JPG;", result), L"");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(Call(fixture::PngFile({TextChunk("Comment", "Hello")}), L";JPG;", result), L"");
    EXPECT_EQ(result, 0);
}

}  // namespace
