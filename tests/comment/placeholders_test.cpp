// The placeholder language: every code, what stays as typed, and the limit.
#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <string>

#include "comment/placeholders.h"
#include "fixture/container_fixture.h"
#include "fixture/iptc_fixture.h"

namespace {

using fixture::Bytes;

const platform::LocalTime kNow = {2024, 2, 9, 7, 5, 3, 5, 0};

Bytes ExifTiff(std::string_view dateTaken) {
    fixture::TiffBuilder tiff;
    const int exifIfd = tiff.AddIfd();
    tiff.Ascii(0, 271, "Maker Inc").Ascii(0, 270, std::string(300, 'd')).Pointer(0, 34665, exifIfd);
    if (!dateTaken.empty()) tiff.Ascii(exifIfd, 36867, dateTaken);
    return tiff.Build();
}

Bytes JpegWith(std::string_view dateTaken) {
    const Bytes iim = fixture::IimBuilder().Dataset(2, 120, "A caption").Dataset(2, 25, "one").Dataset(2, 25, "two")
                          .Build();
    return fixture::JpegBuilder().Soi().App1Exif(ExifTiff(dateTaken)).Segment(0xED, fixture::IptcApp13(iim))
        .ScanAndEoi().Build();
}

class Placeholders : public ::testing::Test {
protected:
    std::u16string Expand(std::u16string_view text, size_t capacity = comment::kCommentChars) {
        comment::PlaceholderContext context;
        context.filePath = path_;
        context.counter = counter_;
        context.now = &kNow;
        return comment::ExpandPlaceholders(text, context, capacity);
    }
    void Use(std::string_view name, const Bytes& bytes) { path_ = dir_.Write(name, bytes); }

    fixture::TempDir dir_;
    std::u16string path_;
    int counter_ = 7;
};

TEST_F(Placeholders, FileNamesFolderClockCounterAndUser) {
    Use("Holiday.2024.jpg", JpegWith(""));
    const std::u16string folder = std::filesystem::path(path_).parent_path().filename().u16string();
    EXPECT_EQ(Expand(u"$F|$N|$O"), u"Holiday.2024.jpg\r\nHoliday.2024\r\n" + folder);
    EXPECT_EQ(Expand(u"$d $T x$C by $U."), u"2024-02-09 07:05:03 x_007 by " + platform::UserName() + u".");
    EXPECT_FALSE(platform::UserName().empty());
    Use(".hidden", JpegWith(""));
    EXPECT_EQ(Expand(u"$N"), u".hidden");
}

// One session reads its file once: every text it expands later shows the
// values of that one reading, even when the file has changed meanwhile (an
// IPTC write expands all its fields in one session).
TEST_F(Placeholders, ASessionReadsItsFileOnceForEveryText) {
    Use("a.jpg", JpegWith("2021:12:24 18:30:05"));
    comment::PlaceholderContext context;
    context.filePath = path_;
    context.now = &kNow;
    placeholder::PlaceholderSession session(context);
    EXPECT_EQ(session.Expand(u"$E271 $I120 $S"), u"Maker Inc A caption 0.48 KB");
    dir_.Write("a.jpg", Bytes(2048, 0));
    EXPECT_EQ(session.Expand(u"$E271|$I25 $D $S"), u"Maker Inc\r\none, two 2021-12-24 / 18:30:05 0.48 KB");
    EXPECT_EQ(Expand(u"[$E271$I120] $S"), u"[] 2.00 KB") << "a new session reads the file as it is now";
}

TEST_F(Placeholders, SizeInKilobytesBelowOneMegabyteElseMegabytes) {
    Use("small.jpg", Bytes(1536, 0));
    EXPECT_EQ(Expand(u"$S"), u"1.50 KB");
    Use("edge.jpg", Bytes(1024 * 1024 - 1, 0));
    EXPECT_EQ(Expand(u"$S"), u"1024.00 KB");
    Use("large.jpg", Bytes(3 * 1024 * 1024 / 2, 0));
    EXPECT_EQ(Expand(u"$S"), u"1.50 MB");
}

TEST_F(Placeholders, DateIsTheDateTakenElseTheFilesLastChange) {
    Use("a.jpg", JpegWith("2021:12:24 18:30:05"));
    EXPECT_EQ(Expand(u"$D"), u"2021-12-24 / 18:30:05");
    Use("b.jpg", JpegWith(""));
    platform::FileTimes times;
    times.creation = times.lastAccess = times.lastWrite = 132500000000000000ULL;
    ASSERT_TRUE(platform::SetFileTimes(path_, times));
    const std::time_t seconds = static_cast<std::time_t>(132500000000000000ULL / 10000000ULL - 11644473600ULL);
    char expected[64];
    std::strftime(expected, sizeof expected, "%Y-%m-%d / %H:%M:%S", std::localtime(&seconds));
    EXPECT_EQ(Expand(u"$D"), platform::Utf8ToUtf16(expected));
}

TEST_F(Placeholders, ExifAndIptcValuesByNumber) {
    Use("a.jpg", JpegWith("2021:12:24 18:30:05"));
    EXPECT_EQ(Expand(u"[$E271] $E36867"), u"[Maker Inc] 2021:12:24 18:30:05");
    EXPECT_EQ(Expand(u"$E270"), std::u16string(300, u'd'));  // the long value, not the cut one
    EXPECT_EQ(Expand(u"[$E272][$E2711]$E271234"), u"[][]4");   // absent; at most five digits
    EXPECT_EQ(Expand(u"$I120 ($I25) [$I105]"), u"A caption (one, two) []");
    Use("a.png", fixture::PngFile({fixture::PngChunk("eXIf", ExifTiff(""))}));
    EXPECT_EQ(Expand(u"$E271"), u"Maker Inc");
    path_ = dir_.Path("gone.jpg");
    EXPECT_EQ(Expand(u"[$S][$E271][$I120][$D]$F"), u"[][][][]gone.jpg");
}

TEST_F(Placeholders, UnknownCodesAndEscapesStayAsTyped) {
    Use("a.jpg", Bytes(4, 0));
    EXPECT_EQ(Expand(u"$X $e $E $Ix 5$"), u"$X $e $E $Ix 5$");
    EXPECT_EQ(Expand(u"$$F costs $$5 $| a|b"), u"$F costs $5 | a\r\nb");
}

TEST_F(Placeholders, OutputStaysWithinTheLimit) {
    Use("name.jpg", JpegWith(""));
    EXPECT_EQ(Expand(std::u16string(5000, u'a')).size(), comment::kCommentChars - 1);
    EXPECT_EQ(Expand(u"ab$E270", 10), u"abddddddd");
    EXPECT_EQ(Expand(u"ab\U0001F4F7", 4), u"ab");  // a pair is not split
    std::u16string out(12, u'#');
    EXPECT_EQ(comment::ExpandPlaceholders(u"$F and more", out.data(), 8, path_, u""), 7u);
    EXPECT_EQ(out, std::u16string(u"name.jp\0####", 12));
    EXPECT_EQ(comment::ExpandPlaceholders(u"$F", out.data(), 0, path_, u""), 0u);
    std::u16string field = u"[$F]" + std::u16string(8, u'\0');  // expanded in place
    comment::ExpandPlaceholders(std::u16string_view(field.c_str()), field.data(), field.size(), path_, u"");
    EXPECT_EQ(std::u16string(field.c_str()), u"[name.jpg]");
}

}  // namespace
