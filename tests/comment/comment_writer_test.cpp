// Writing the COM segment: where it goes, what else stays byte for byte, the
// refusals that leave the file as it was, and the single-file and batch runs.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "comment/comment_reader.h"
#include "comment/comment_writer.h"
#include "fixture/container_fixture.h"
#include "fixture/makernote_fixture.h"
#include "platform/platform.h"

namespace {

using fixture::Bytes;
using fixture::Join;

Bytes Com(std::string_view payload) { return fixture::JpegBuilder().Com(payload).Build(); }
const Bytes kSoi = {0xFF, 0xD8};
const Bytes kApp0 = fixture::JpegBuilder().Segment(0xE0, fixture::ToBytes("JFIF")).Build();
const Bytes kScan = fixture::JpegBuilder().ScanAndEoi().Build();
const Bytes kPlain = Join({kSoi, kScan});

class CommentWriter : public ::testing::Test {
protected:
    CommentWriter() : tempFolder_(temp_.Utf8Path("")) {}
    int Write(const std::u16string& path, std::string_view text, bool keepDate = false) {
        uint32_t offset = 0, length = 0;
        comment::LocateComment(path, offset, length);
        return comment::WriteJpegComment(path, offset, length, text, keepDate, error_);
    }
    // The file after writing `text` into `original`.
    Bytes Rewritten(const Bytes& original, std::string_view text) {
        const auto path = dir_.Write("w.jpg", original);
        EXPECT_EQ(Write(path, text), 1) << platform::Utf16ToUtf8(error_);
        return fixture::ReadAll(path);
    }
    std::string Comments(const std::u16string& path) {
        char out[4080];
        comment::ReadJpegComments(path, out, sizeof out);
        return out;
    }
    fixture::TempDir dir_, temp_;
    fixture::ScopedTempFolder tempFolder_;
    std::u16string error_;
};

TEST_F(CommentWriter, SegmentTakesTheOldCommentsPlaceOrFollowsStartOfImage) {
    using namespace std::string_literals;
    EXPECT_EQ(Rewritten(Join({kSoi, kApp0, kScan}), "new"), Join({kSoi, Com("new\0"s), kApp0, kScan}));
    EXPECT_EQ(Rewritten(Join({kSoi, Com("old text"), kApp0, kScan}), "n"), Join({kSoi, Com("n\0"s), kApp0, kScan}));
    EXPECT_EQ(Rewritten(Join({kSoi, Com("old"), Com("second"), kScan}), ""),
              Join({kSoi, Com("\0"s), Com("second"), kScan}));  // only the first; the NUL alone
    // Scan data that happens to look like segments holds no comment to replace.
    const Bytes scan = fixture::JpegBuilder().Segment(0xDA, {1, 1, 0, 0, 0x3F, 0})
                           .Raw({0xFF, 0x00, 0x00, 0x03, 0x77, 0xFF, 0xFE, 0x00, 0x04, 'a', 'b', 0xFF, 0xD9}).Build();
    EXPECT_EQ(Rewritten(Join({kSoi, scan}), "n"), Join({kSoi, Com("n\0"s), scan}));
    // Further in, the rest of the file follows the new segment exactly: a
    // trailer behind the image stays, and nothing is added behind it (a
    // tail count of file size - old length - 4 wrote the head's length - 2
    // zeros more on every write).
    const Bytes head = Join({kSoi, kApp0});
    const Bytes trailer = fixture::ToBytes("\0\0trailer of another program");
    const Bytes once = Rewritten(Join({head, Com("old"), kScan, trailer}), "replacement");
    EXPECT_EQ(once, Join({head, Com("replacement\0"s), kScan, trailer}));
    EXPECT_EQ(Rewritten(once, "replacement"), once);
}

// A Canon note keeps the place of its original-decision data as a file
// offset (tag 0x0083). A segment put before it moves the data, and the
// offset moves with it, in either byte order; nothing else changes.
TEST_F(CommentWriter, TheFileOffsetOfCanonsDecisionDataFollowsItsData) {
    for (const auto order : {fixture::ByteOrder::kLittle, fixture::ByteOrder::kBig}) {
        const Bytes decisionData = fixture::ToBytes("ODD: verification data");
        const auto build = [&](uint32_t offset) {
            fixture::TiffBuilder tiff(order);
            tiff.Ascii(0, 0x010F, "Canon");
            const int exifIfd = tiff.AddIfd();
            tiff.Pointer(0, 0x8769, exifIfd);
            const uint32_t noteAt = tiff.BlobOffset(0);
            tiff.Blob(exifIfd, 0x927C, fixture::MakerNoteBuilder(order).Long(0x0083, offset).Build(noteAt));
            tiff.Blob(exifIfd, 0xC000, decisionData);
            return Join({kSoi, fixture::JpegBuilder().App1Exif(tiff.Build()).Build(), kScan});
        };
        const uint32_t dataAt = 2 + 4 + 6 + [&] {
            fixture::TiffBuilder probe(order);
            probe.Blob(0, 1, Bytes(fixture::MakerNoteBuilder(order).Long(0x0083, 0).Build(0).size()));
            return probe.BlobOffset(1);
        }();
        const Bytes original = build(dataAt);
        ASSERT_EQ(Bytes(original.begin() + dataAt, original.begin() + dataAt + long(decisionData.size())), decisionData);
        const Bytes comment = Com(std::string("moved\0", 6));
        const Bytes moved = build(dataAt + uint32_t(comment.size()));
        EXPECT_EQ(Rewritten(original, "moved"), Join({kSoi, comment, Bytes(moved.begin() + 2, moved.end())}));
    }
}

TEST_F(CommentWriter, EveryRefusalLeavesTheFileByteForByte) {
    const Bytes original = Join({kSoi, kApp0, Com("keep me"), kScan});
    const auto path = dir_.Write("f.jpg", original);
    uint32_t offset = 0, length = 0;
    comment::LocateComment(path, offset, length);
    ASSERT_EQ(offset, kSoi.size() + kApp0.size());
    const struct {
        std::function<int()> write;
        std::u16string error;
    } cases[] = {
        {[&] { return comment::WriteJpegComment(path, offset + 1, length, "x", false, error_); },
         u"Can't write Comment data!\n\nThe file: '" + path + u"' has changed since it was read."},
        {[&] { return comment::WriteJpegComment(path, offset, length + 1, "x", false, error_); },
         u"Can't write Comment data!\n\nThe file: '" + path + u"' has changed since it was read."},
        {[&] { return Write(path, std::string(65533, 'a')); },
         u"Can't write Comment data!\n\nThe comment is too long for a JPEG segment (more than 65532 bytes)."},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.write(), 0);
        EXPECT_EQ(error_, c.error);
        EXPECT_EQ(fixture::ReadAll(path), original);
    }
    EXPECT_EQ(Write(dir_.Path("gone.jpg"), "x"), 0);
    EXPECT_EQ(error_, u"Can't open file: " + dir_.Path("gone.jpg"));
    // An empty text for a file without comment is no write at all, not even a check.
    const auto plain = dir_.Write("plain.jpg", kPlain);
    platform::SetReadOnly(plain, true);
    EXPECT_EQ(Write(plain, ""), 1);
    EXPECT_EQ(fixture::ReadAll(plain), kPlain);
}

// The joins and the file list are checked in the runs below.
TEST(CommentText, Utf8CutAtACharacterAndAnEmptyAddition) {
    EXPECT_EQ(comment::CommentToUtf8(std::u16string(4094, u'a') + u"\u00FC"), std::string(4094, 'a'));
    EXPECT_EQ(comment::AppendComment(u"old", u""), u"old");
}

TEST(CommentSettings, DefaultsKeepTheDateAndTheDialogsWritesReadBack) {
    fixture::TempDir dir;
    const auto ini = dir.Path("s.ini");
    const comment::CommentSettings defaults = comment::ReadCommentSettings(ini);
    EXPECT_EQ(defaults.conversion, 0);
    EXPECT_TRUE(defaults.keepOrgDate);
    EXPECT_FALSE(defaults.clearSpaces || defaults.append);
    ASSERT_TRUE(comment::WriteConversionSetting(ini, 2));
    ASSERT_TRUE(comment::WriteOptionSettings(ini, {0, false, true, true}));
    const comment::CommentSettings read = comment::ReadCommentSettings(ini);
    EXPECT_EQ(read.conversion, 2);
    EXPECT_FALSE(read.keepOrgDate);
    EXPECT_TRUE(read.clearSpaces && read.append);
    EXPECT_EQ(platform::ReadSettingString(ini, u"IPTC", u"JPGComKeepOrgDate", u""), u"0");
}

class CommentRun : public CommentWriter {
protected:
    comment::CommentJob Job(std::u16string text) {
        comment::CommentJob job;
        job.text = std::move(text);
        job.settings.keepOrgDate = false;
        return job;
    }
    comment::CommentErrorSink Collect() {
        return [this](std::u16string_view e) { errors_.emplace_back(e); };
    }
    std::vector<std::u16string> errors_;
};

// The jobs here do not keep the date: the file times are new.
TEST_F(CommentRun, SingleFileExpandsOnlyWithADollarAndTrimsWhenAsked) {
    const auto path = dir_.Write("one.jpg", kPlain);
    platform::FileTimes old, now;
    old.creation = old.lastAccess = old.lastWrite = 132000000000000000ULL;  // 2019
    ASSERT_TRUE(platform::SetFileTimes(path, old));
    auto job = Job(u"  a|b\t  ");
    job.settings.clearSpaces = true;
    EXPECT_EQ(comment::WriteCommentToFile(path, job, Collect()), 1);
    EXPECT_EQ(Comments(path), "a|b\t");  // spaces trimmed, not tabs
    ASSERT_TRUE(platform::GetFileTimes(path, now));
    EXPECT_GT(now.lastWrite, old.lastWrite);
    job.text = u"   ";
    EXPECT_EQ(comment::WriteCommentToFile(path, job, Collect()), 1);
    EXPECT_EQ(Comments(path), "");
    EXPECT_EQ(comment::WriteCommentToFile(path, Job(u"$F|Z\u00FCrich"), Collect()), 1);
    EXPECT_EQ(Comments(path), "one.jpg\r\nZ\xC3\xBCrich");
    EXPECT_TRUE(errors_.empty());
}

TEST_F(CommentRun, BatchGoesOnAfterFailingFiles) {
    const auto a = dir_.Write("a.jpg", kPlain), b = dir_.Write("b.jpg", kPlain), c = dir_.Write("c.jpg", kPlain);
    const auto missing = dir_.Path("gone.jpg");
    const std::u16string overlong = dir_.Path(std::string(270, 'x'));
    platform::SetReadOnly(b, true);
    const auto result = comment::WriteCommentBatch(a + u"||" + b + u"|" + missing + u"|" + overlong + u"|" + c + u"|",
                                                   Job(u"n$C"), Collect());
    platform::SetReadOnly(b, false);
    EXPECT_EQ(result.written, 2);
    EXPECT_EQ(result.failed, 3);
    ASSERT_EQ(errors_.size(), 3u);
    EXPECT_NE(errors_[0].find(b + u"' is read only"), std::u16string::npos);
    EXPECT_EQ(errors_[1], u"Can't open file: " + missing);
    EXPECT_EQ(errors_[2], u"Can't open file: " + overlong + u"\n\nThe path is too long.");
    EXPECT_EQ(Comments(a), "n_001");
    EXPECT_EQ(fixture::ReadAll(b), kPlain);
    EXPECT_EQ(Comments(c), "n_005");  // the counter counts every listed file
}

TEST_F(CommentRun, BatchAppendPutsEachFilesOwnCommentFirstUntrimmed) {
    const auto withOld = dir_.Write("a.jpg", Join({kSoi, Com("  Gr\xFC\xDF" "e  "), kScan}));
    const auto without = dir_.Write("b.jpg", kPlain);
    auto job = Job(u" added ");
    job.settings.append = job.settings.clearSpaces = true;
    EXPECT_EQ(comment::WriteCommentBatch(withOld + u"|" + without, job, Collect()).written, 2);
    // The old Latin-1 bytes are read by the automatic conversion and written back as UTF-8.
    EXPECT_EQ(Comments(withOld), "  Gr\xC3\xBC\xC3\x9F" "e  \r\n added ");
    EXPECT_EQ(Comments(without), " added ");
}

}  // namespace
