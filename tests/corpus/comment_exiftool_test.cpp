// Comments against exiftool: it reads back what the writer wrote (ASCII and
// UTF-8) into a camera file, every other tag reads as before, and the
// readers agree with it.
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "comment/comment_reader.h"
#include "comment/comment_writer.h"
#include "corpus.h"
#include "fixture/fixture.h"
#include "platform/platform.h"

namespace {

using fixture::Bytes;

// exiftool's tag lines in file order, duplicates kept, without the file system's.
std::vector<std::string> TagLines(const std::string& file) {
    std::vector<std::string> lines;
    std::string out = corpus::Run("exiftool -args -a -G1 -n -x System:all " + corpus::Quote(file) + " 2>/dev/null");
    for (size_t start = 0, end; (end = out.find('\n', start)) != std::string::npos; start = end + 1)
        lines.push_back(out.substr(start, end - start));
    return lines;
}

// Writes `text` and checks that exiftool's tags changed in the comment only.
void WriteAndCompare(const std::string& file, const std::string& oldText, const std::string& text) {
    std::vector<std::string> expected = TagLines(file);
    ASSERT_NE(std::find(expected.begin(), expected.end(), "-File:Comment=" + oldText), expected.end());
    std::replace(expected.begin(), expected.end(), "-File:Comment=" + oldText, "-File:Comment=" + text);
    const std::u16string path = platform::Utf8ToUtf16(file);
    uint32_t offset = 0, length = 0;
    comment::LocateComment(path, offset, length);
    std::u16string error;
    ASSERT_EQ(comment::WriteJpegComment(path, offset, length, text, false, error), 1) << platform::Utf16ToUtf8(error);
    EXPECT_EQ(TagLines(file), expected);
}

class CommentExiftool : public ::testing::Test {
protected:
    void SetUp() override {
        if (!corpus::HaveExiftool()) GTEST_SKIP() << "exiftool not installed: skipped";
    }
    fixture::TempDir dir_, temp_;
    fixture::ScopedTempFolder tempFolder_{temp_.Utf8Path("")};
};

TEST_F(CommentExiftool, CameraFileKeepsEverythingButTheCommentInAsciiOrUtf8) {
    VV_REQUIRE_CORPUS();
    const std::string file = dir_.Utf8Path("ExifTool.jpg");
    std::filesystem::copy_file(corpus::Path("ExifTool.jpg"), file);
    std::filesystem::permissions(file, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    WriteAndCompare(file, "a comment", "new comment");
    WriteAndCompare(file, "new comment", "Z\xC3\xBCrich \xE2\x80\x94 \xE6\x9D\xB1\xE4\xBA\xAC \xF0\x9F\x93\xB7");
}

TEST_F(CommentExiftool, ReadersAgreeOnTheCorpusCommentAndPngText) {
    VV_REQUIRE_CORPUS();
    char out[4080];
    ASSERT_EQ(comment::ReadJpegComments(platform::Utf8ToUtf16(corpus::Path("ExifTool.jpg")), out, sizeof out), 1);
    const auto lines = TagLines(corpus::Path("ExifTool.jpg"));  // the APP10 comment first, COM last
    EXPECT_EQ("-File:Comment=" + std::string(out),
              *std::find_if(lines.rbegin(), lines.rend(), [](auto& l) { return l.rfind("-File:Comment=", 0) == 0; }));
    ASSERT_GT(comment::ReadPngComment(platform::Utf8ToUtf16(corpus::Path("PNG.png")), out, sizeof out, 0), 0);
    // exiftool names the tag "Comment" whatever the keyword's case ("comment" in this file).
    const std::string first = "comment: " + corpus::Exiftool(corpus::Path("PNG.png"))["PNG:Comment"] + "\r\n";
    EXPECT_EQ(std::string(out).substr(0, first.size()), first);
}

TEST_F(CommentExiftool, VvmetaWritesAListAndPrintsTheComment) {
    const Bytes jpeg = fixture::JpegBuilder().Soi().Com("old").ScanAndEoi().Build();
    const std::string a = platform::Utf16ToUtf8(dir_.Write("a.jpg", jpeg));
    const std::string b = platform::Utf16ToUtf8(dir_.Write("b.jpg", jpeg));
    const std::string ini = platform::Utf16ToUtf8(dir_.Write("s.ini", fixture::ToBytes("[IPTC]\nJPGComAppend=1\n")));
    const std::string vvmeta = std::string(VV_VVMETA) + " ";
    int rc = -1;
    corpus::Run(vvmeta + "writecomment --settings " + corpus::Quote(ini) + " '$N' " +
                    corpus::Quote(a + "|" + dir_.Utf8Path("missing.jpg") + "|" + b + "|") + " 2>/dev/null", &rc);
    EXPECT_EQ(rc, 1);  // one file of the list failed
    EXPECT_EQ(corpus::Run(vvmeta + "readcomment " + corpus::Quote(a)), "old\r\na\n");
    EXPECT_EQ(corpus::Run("exiftool -b -Comment " + corpus::Quote(b)), "old\r\nb");
}

}  // namespace
