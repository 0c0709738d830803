// PNG text chunks, and the comment export that serves them to the viewer.
#include <gtest/gtest.h>

#include <string>

#include "comment/comment_reader.h"
#include "fixture/container_fixture.h"
#include "plugin/plugin_api.h"

namespace {

using fixture::Bytes;
using fixture::PngChunk;
using fixture::PngFile;

Bytes Text(std::string_view keyword, std::string_view text, const char* type = "tEXt", std::string_view lang = "") {
    Bytes data = fixture::ToBytes(keyword);
    if (std::string_view(type) == "iTXt") {  // NUL flag method language NUL translated-keyword NUL
        fixture::Append(data, {0, 0, 0});
        fixture::Append(data, fixture::ToBytes(lang));
        data.push_back(0);
    }
    data.push_back(0);
    fixture::Append(data, fixture::ToBytes(text));
    return PngChunk(type, data);
}

std::string PngText(const Bytes& png, int* bytes = nullptr, size_t capacity = 4080) {
    fixture::TempDir dir;
    std::string out(capacity, 'x');
    const int n = comment::ReadPngComment(dir.Write("t.png", png), out.data(), capacity, 0);
    if (bytes) *bytes = n;
    return out.c_str();
}

TEST(PngText, ChunksAreKeywordColonTextJoinedByCrLf) {
    int n = 0;
    EXPECT_EQ(PngText(PngFile({Text("Comment", "Hello")}), &n), "Comment: Hello");
    EXPECT_EQ(n, 14);
    EXPECT_EQ(PngText(PngFile({Text("Comment", "Hello"), PngChunk("IDAT", Bytes(20, 7)), Text("Author", "Ann"),
                               Text("Title", "Sunset", "iTXt")})),
              "Comment: Hello\r\nAuthor: Ann\r\nTitle: Sunset");
    EXPECT_EQ(PngText(PngFile({Text("Title", "Sonnenuntergang", "iTXt", "de")})), "Title: de");
}

TEST(PngText, KeywordIsCutTo32BytesAndAnEmptyOneLeftOut) {
    const std::string keyword = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789xyz";
    EXPECT_EQ(PngText(PngFile({Text(keyword, "v")})), keyword.substr(0, 32) + ": v");
    EXPECT_EQ(PngText(PngFile({Text("", "  just\ttext \t  ")})), "just\ttext \t");  // spaces trimmed, not tabs
}

TEST(PngText, SixteenChunksAreReadAndTheSeventeenthEndsTheWalk) {
    Bytes png = fixture::Join({fixture::PngSignature(), PngChunk("IHDR", Bytes(13, 0))});
    for (int i = 0; i < 18; ++i) fixture::Append(png, Text("k" + std::to_string(i), "v"));
    const std::string text = PngText(png);
    EXPECT_EQ(text.substr(0, 7), "k0: v\r\n");
    EXPECT_EQ(text.substr(text.size() - 8), "\r\nk15: v");
}

TEST(PngText, FirstEmptyChunkEndsTheWalk) {
    int n = -1;
    EXPECT_EQ(PngText(PngFile({PngChunk("sRGB", {}), Text("Comment", "hidden")}), &n), "");
    EXPECT_EQ(n, 0);
    EXPECT_EQ(PngText(PngFile({Text("a", "1"), PngChunk("tIME", {}), Text("b", "2")})), "a: 1");
}

TEST(PngText, OversizedOrShortChunksAndOtherFilesAreSafe) {
    EXPECT_EQ(PngText(PngFile({Text("big", std::string(70000, 'b')), Text("small", "s")})), "small: s");
    EXPECT_EQ(PngText(PngFile({Text("a", std::string(40000, 'h')), Text("b", std::string(40000, 'h'))})), "");
    EXPECT_EQ(PngText(fixture::Join({fixture::PngSignature(),
                                     fixture::PngChunkWithLength(5000, "tEXt", fixture::ToBytes(std::string_view("k\0v", 3)))}))
                  .substr(0, 4),
              "k: v");
    EXPECT_EQ(PngText(fixture::JpegBuilder().Soi().Com("jpeg").ScanAndEoi().Build()), "");
}

TEST(PngTextChunks, ReportsCapacityUsedAndTheLastTextChunk) {
    fixture::TempDir dir;
    const Bytes last = Text("b", "22");
    const Bytes png = PngFile({Text("a", "1"), last});
    size_t length = 0;
    int64_t lastPos = 0;
    ASSERT_NE(comment::ReadPngTextChunks(dir.Write("t.png", png), &length, &lastPos, 0), nullptr);
    EXPECT_EQ(length, (3 + 8) + (4 + 8) + 1u);
    EXPECT_EQ(lastPos, static_cast<int64_t>(fixture::OffsetOf(png, last) + 8));
}

std::u16string Export(const Bytes& file, const char16_t* formats, int32_t& result, int32_t capacity = 256) {
    fixture::TempDir dir;
    std::u16string out(static_cast<size_t>(capacity) + 2, u'x');
    result = vv::Load_Comment_W(dir.Write("f", file).c_str(), out.data(), capacity, 0, formats);
    EXPECT_EQ(out.substr(static_cast<size_t>(capacity)), u"xx");
    return out.c_str();
}

TEST(LoadCommentExport, AnswersPngTextOnlyWhenPngIsListed) {
    const Bytes png = PngFile({Text("Comment", "Caf\xE9 \x80")});
    const Bytes jpeg = fixture::JpegBuilder().Soi().Com("jpeg comment").ScanAndEoi().Build();
    int32_t result = -1;
    EXPECT_EQ(Export(png, u";JPG;PNG;", result), u"Comment: Caf\u00E9 \u20AC");  // ANSI code page
    EXPECT_EQ(result, 15);
    EXPECT_EQ(Export(png, u";PNG;", result, 6), u"Comme");
    EXPECT_EQ(result, 5);
    for (const Bytes* file : {&png, &jpeg}) {
        EXPECT_EQ(Export(*file, u";JPG;", result), u"");
        EXPECT_EQ(result, 0);
        EXPECT_EQ(Export(*file, nullptr, result), u"");
        EXPECT_EQ(result, 0);
    }
    EXPECT_EQ(Export(jpeg, u";PNG;", result), u"");
}

}  // namespace
