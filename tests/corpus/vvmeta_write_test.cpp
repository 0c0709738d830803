// vvmeta's IPTC write command, checked with exiftool as the independent reader.
#include "corpus.h"
#include "fixture/fixture.h"

TEST(VvmetaWriteIptc, SetsDatasetsThatExiftoolReadsBackAndKeepsTheImage) {
    if (!corpus::HaveExiftool()) GTEST_SKIP() << "exiftool not installed (libimage-exiftool-perl)";
    fixture::TempDir dir;
    const fixture::Bytes original = fixture::JpegBuilder().Soi().Com("old").ScanAndEoi().Build();
    dir.Write("w.jpg", original);
    const std::string path = dir.Utf8Path("w.jpg");
    int rc = -1;
    corpus::Run(std::string(VV_VVMETA) + " writeiptc --set '120=Caf\xC3\xA9 au lait' --set 25=one --set 25=two " +
                    corpus::Quote(path),
                &rc);
    ASSERT_EQ(rc, 0);
    auto tags = corpus::Exiftool(path, "");
    EXPECT_EQ(tags["IPTC:Caption-Abstract"], "Caf\xC3\xA9 au lait");
    EXPECT_EQ(tags["IPTC:Keywords"], "one, two");  // one dataset per keyword
    const fixture::Bytes written = fixture::ReadAll(dir.Path("w.jpg"));
    // The comment segment and the scan behind the new APP13 are the original's bytes.
    ASSERT_GT(written.size(), original.size());
    EXPECT_TRUE(std::equal(original.begin() + 2, original.end(), written.end() - (original.size() - 2)));

    corpus::Run(std::string(VV_VVMETA) + " writeiptc --set 999=x " + corpus::Quote(path) + " 2>/dev/null", &rc);
    EXPECT_NE(rc, 0);
    EXPECT_EQ(fixture::ReadAll(dir.Path("w.jpg")), written);  // a refused write changes nothing
}
