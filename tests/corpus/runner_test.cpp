// The corpus runner itself: every corpus file is known to exiftool, and the
// native host reads each one without failing.
#include "corpus.h"

TEST(CorpusRunner, ExiftoolKnowsEveryFileAndVvmetaReadsIt) {
    VV_REQUIRE_CORPUS();
    auto files = corpus::Files({".jpg", ".tif", ".cr2", ".cr3", ".dng", ".nef", ".rw2", ".raf", ".mrw",
                                ".heic", ".png", ".jxl", ".webp"});
    ASSERT_GE(files.size(), 40u);
    for (const std::string& name : files) {
        auto tags = corpus::Exiftool(corpus::Path(name));
        EXPECT_FALSE(tags["File:FileType"].empty()) << name;
        int rc = -1;
        corpus::Run(std::string(VV_VVMETA) + " show " + corpus::Quote(corpus::Path(name)) + " >/dev/null", &rc);
        EXPECT_EQ(rc, 0) << name;
    }
}
