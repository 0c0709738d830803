// The native host reads every corpus file without failing.
#include "corpus.h"

TEST(CorpusRunner, VvmetaShowsEveryFile) {
    VV_REQUIRE_CORPUS();
    auto files = corpus::Files({".jpg", ".tif", ".cr2", ".cr3", ".dng", ".nef", ".rw2", ".raf", ".mrw",
                                ".heic", ".png", ".jxl", ".webp"});
    ASSERT_GE(files.size(), 40u);
    for (const std::string& name : files) {
        int rc = -1;
        corpus::Run(std::string(VV_VVMETA) + " show " + corpus::Quote(corpus::Path(name)) + " >/dev/null", &rc);
        EXPECT_EQ(rc, 0) << name;
    }
}
