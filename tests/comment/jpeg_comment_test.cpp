// JPEG COM segments: joining, CR LF normalisation, the walk's ends, and the
// conversion the encoding of the text decides.
#include <gtest/gtest.h>

#include <string>

#include "comment/comment_reader.h"
#include "fixture/fixture.h"

namespace {

using fixture::Bytes;
using fixture::JpegBuilder;

std::string Comments(const Bytes& jpeg, size_t capacity = 4080, int* result = nullptr) {
    fixture::TempDir dir;
    std::string out(capacity + 4, 'x');
    const int r = comment::ReadJpegComments(dir.Write("c.jpg", jpeg), out.data(), capacity);
    if (result) *result = r;
    EXPECT_EQ(out.substr(capacity), "xxxx");  // nothing written beyond the capacity
    return out.c_str();
}

TEST(JpegComments, SegmentsAreJoinedByCrLfAndLineEndsNormalised) {
    EXPECT_EQ(Comments(JpegBuilder().Soi().Segment(0xE0, Bytes(14, 0)).Com("a").Segment(0xDB, Bytes(65, 1))
                           .Com("b").Com("x").ScanAndEoi().Build()),
              "a\r\nb\r\nx");
    EXPECT_EQ(Comments(JpegBuilder().Soi().Com(std::string("a\nb\r\nc\rd\0e\n\n", 12)).ScanAndEoi().Build()),
              "a\r\nb\r\nc\r\nde\r\n\r\n");
}

TEST(JpegComments, WalkEndsAtScanBadLengthsOrNonMarkers) {
    EXPECT_EQ(Comments(JpegBuilder().Soi().Com("before").ScanAndEoi().Com("after").Build()), "before");
    EXPECT_EQ(Comments(JpegBuilder().Soi().Com("kept").Raw({0xFF, 0xE1, 0x00, 0x00}).Com("lost").Build()), "kept");
    // An empty segment (length 2) does not end this walk, unlike the EXIF and IPTC lookups.
    EXPECT_EQ(Comments(JpegBuilder().Soi().Com("a").Raw({0xFF, 0xE0, 0x00, 0x02}).Com("b").Build()), "a\r\nb");
    EXPECT_EQ(Comments(JpegBuilder().Soi().Com("one").Raw({0x00, 0x11, 0x00, 0x05}).Com("two").Build()), "one");
    EXPECT_EQ(Comments(JpegBuilder().Soi().Raw({0xFF, 0xFE, 0xFF, 0xF0, 'p', 'a', 'r', 't'}).Build()), "part");
}

TEST(JpegComments, ResultTellsOpenedFromUnreadableAndCapacityHolds) {
    int result = -1;
    EXPECT_EQ(Comments(JpegBuilder().Soi().ScanAndEoi().Build(), 100, &result), "");
    EXPECT_EQ(result, 1);
    EXPECT_EQ(Comments(JpegBuilder().Soi().Com("abcdefghijkl").ScanAndEoi().Build(), 8), "abcdef");
    fixture::TempDir dir;
    char out[4] = "xxx";
    EXPECT_EQ(comment::ReadJpegComments(dir.Path("missing.jpg"), out, sizeof out), 0);
    EXPECT_EQ(out[0], '\0');
}

TEST(AppendWithCrLf, RefusesShortCountsAndUnterminatedTargetsAndStaysTerminated) {
    char target[6] = "abc";
    comment::AppendWithCrLf("c", target, sizeof target, 1);
    EXPECT_STREQ(target, "abc");
    comment::AppendWithCrLf("\r\r\r", target, sizeof target, 3);  // one CR LF fits, then the terminator
    EXPECT_STREQ(target, "abc\r\n");
    char full[4] = {'a', 'b', 'c', 'd'};
    comment::AppendWithCrLf("xy", full, sizeof full, 2);
    EXPECT_EQ(std::string(full, 4), "abcd");
}

std::u16string LoadText(const std::string& bytes, const std::string& settings, size_t capacity = 4096) {
    fixture::TempDir dir;
    const auto path = dir.Write("c.jpg", JpegBuilder().Soi().Com(bytes).ScanAndEoi().Build());
    std::u16string out(capacity, u'x');
    EXPECT_EQ(comment::LoadCommentText(path, out.data(), capacity, dir.Write("s.ini", fixture::ToBytes(settings))),
              1);
    return out.c_str();
}

TEST(LoadCommentText, AutomaticModeReadsUtf8AsUtf8AndTheRestAsAnsi) {
    EXPECT_EQ(LoadText("Z\xC3\xBCrich", ""), u"Z\u00FCrich");
    EXPECT_EQ(LoadText("Z\xFCrich \x80", "[IPTC]\nJPGComConversion=0\n"), u"Z\u00FCrich \u20AC");
    EXPECT_EQ(LoadText("Z\xC3\xBCrich", "[IPTC]\nJPGComConversion=1\n"), u"Z\u00C3\u00BCrich");
    EXPECT_EQ(LoadText("Z\xFCrich", "[IPTC]\nJPGComConversion=2\n"), u"Z\uFFFDrich");
    // One valid sequence makes the text UTF-8; one cut short by the end does not.
    EXPECT_EQ(LoadText("\xFC and \xC3\xBC", ""), u"\uFFFD and \u00FC");
    EXPECT_EQ(LoadText("cut \xE2\x82", ""), u"cut \u00E2\u201A");
    EXPECT_EQ(comment::ClassifyTextEncoding("\xC3\xBC", 1), comment::kTextNotUtf8);  // the length given ends it
    EXPECT_EQ(LoadText("\xE2\x82\xAC", ""), u"\u20AC");
    EXPECT_EQ(LoadText("\xF0\x9F\x93\xB7", ""), u"\U0001F4F7");
    EXPECT_EQ(LoadText("abcdefghij", "", 6), u"abcd");  // the narrow read stops at capacity - 2 bytes
}

}  // namespace
