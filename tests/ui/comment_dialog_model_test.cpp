// The comment dialog's decisions without a window: which file it shows and
// how, what the conversion choice shows and stores, and what "&Write" runs.
#include "ui/model/comment_dialog_model.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "comment/comment_reader.h"
#include "fixture/container_fixture.h"
#include "platform/platform.h"

namespace {

using fixture::Bytes;

Bytes Jpeg(std::string_view comment) {
    fixture::JpegBuilder jpeg;
    jpeg.Soi();
    if (!comment.empty()) jpeg.Com(comment);
    return jpeg.ScanAndEoi().Build();
}

class CommentDialogModel : public ::testing::Test {
protected:
    CommentDialogModel() : tempFolder_(temp_.Utf8Path("")) {}
    std::u16string Setting(const char16_t* key) {
        return platform::ReadSettingString(ini_, u"IPTC", key, u"<none>");
    }
    std::string Comments(const std::u16string& path) {
        char out[4080];
        comment::ReadJpegComments(path, out, sizeof out);
        return out;
    }
    fixture::TempDir dir_, temp_;
    fixture::ScopedTempFolder tempFolder_;
    const std::u16string ini_ = dir_.Path("viewer.ini");
};

// The caption, the read-only mark and the conversion choice are checked on
// the dialog itself (tests/win); here the settings that shape the old text.
TEST_F(CommentDialogModel, OldTextIsConvertedAndTrimmedBySettings) {
    const auto a = dir_.Write("a.jpg", Jpeg("  Caf\xC3\xA9  ")), b = dir_.Write("b.jpg", Jpeg(""));
    EXPECT_EQ(vv::PrepareCommentDialog(a, ini_, u"").oldText, u"  Caf\u00E9  ")
        << "automatic: UTF-8 bytes read as UTF-8, untrimmed";
    platform::WriteSettingString(ini_, u"IPTC", u"JPGComConversion", u"1");
    platform::WriteSettingString(ini_, u"IPTC", u"JPGComClearSpaces", u"1");
    EXPECT_EQ(vv::PrepareCommentDialog(a, ini_, u"").oldText, u"Caf\u00C3\u00A9") << "ANSI, then trimmed";
    EXPECT_FALSE(vv::PrepareCommentDialog(b, ini_, u"").HasOldComment());
}

TEST_F(CommentDialogModel, PngTextIsReadThroughAnsiWhenTheFormatListNamesPng) {
    const Bytes text = fixture::PngChunk("tEXt", fixture::Join({fixture::ToBytes("Title"), {0}, fixture::ToBytes("Caf\xE9")}));
    const auto png = dir_.Write("p.png", fixture::PngFile({text}));
    platform::WriteSettingString(ini_, u"IPTC", u"JPGComConversion", u"2");  // not for PNG text
    const auto shown = vv::PrepareCommentDialog(png, ini_, u";JPG;PNG;");
    EXPECT_TRUE(shown.png);
    EXPECT_EQ(shown.oldText, u"Title: Caf\u00E9");
    EXPECT_EQ(vv::PrepareCommentDialog(dir_.Write("e.png", fixture::PngFile({})), ini_, u";PNG;").oldText, u"");
}

TEST_F(CommentDialogModel, WriteStoresTheOptionsAndReportsEveryFailureOfABatch) {
    const auto a = dir_.Write("a.jpg", Jpeg("old a")), b = dir_.Write("b.jpg", Jpeg("old b"));
    std::vector<std::u16string> errors;
    const auto collect = [&](std::u16string_view e) { errors.emplace_back(e); };

    // One file never appends, whatever the box says.
    auto single = vv::PrepareCommentDialog(a, ini_, u"");
    vv::AcceptCommentEdit(single, u" new $N ", false, true, true);
    EXPECT_EQ(Setting(u"JPGComKeepOrgDate"), u"0");
    EXPECT_EQ(Setting(u"JPGComClearSpaces"), u"1");
    EXPECT_EQ(Setting(u"JPGComAppend"), u"1");
    EXPECT_EQ(vv::RunCommentWrite(single, collect), 1);
    EXPECT_EQ(Comments(a), "new a");

    platform::SetReadOnly(a, true);
    auto batch = vv::PrepareCommentDialog(a + u"|" + b + u"|", ini_, u"");
    vv::AcceptCommentEdit(batch, u"+$N", false, false, true);
    EXPECT_EQ(vv::RunCommentWrite(batch, collect), 0);
    platform::SetReadOnly(a, false);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0], u"Can't write Comment data!\n\nThe file: '" + a + u"' is read only.");
    EXPECT_EQ(Comments(a), "new a");
    EXPECT_EQ(Comments(b), "old b\r\n+b");
}

}  // namespace
