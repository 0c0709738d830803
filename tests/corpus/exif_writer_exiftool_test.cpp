// vvmeta's EXIF creation command, checked with exiftool as the independent
// reader and with our own reader: every field comes back with the text given,
// the image behind the new segment is the original's, and a second run is
// refused without touching the file (the writer's own suite refuses the rest).
#include <algorithm>

#include "corpus.h"
#include "fixture/fixture.h"
#include "platform/platform.h"

namespace {

struct Field {
    const char* option;
    const char* text;      // UTF-8
    const char* exiftool;  // exiftool's "Group:Tag"
    const char* row;       // our row name
};

const Field kFields[] = {
    {"--description", "Harbour at dusk", "IFD0:ImageDescription", "ImageDescription"},
    {"--maker", "ACME", "IFD0:Make", "Make"},
    {"--model", "Scanner 9", "IFD0:Model", "Model"},
    {"--program", "vvmeta", "IFD0:Software", "Software"},
    {"--rating", "4", "IFD0:Rating", "Rating"},
    {"--copyright", "(c) Ann Example", "IFD0:Copyright", "Copyright"},
    {"--comment", "Kommentar \xC3\xA4\xC3\xB6\xC3\xBC \xE2\x98\x83", "IFD0:XPComment", "XPComment"},
    {"--author", "Zo\xC3\xAB", "IFD0:XPAuthor", "XPAuthor"},
    {"--tags", "sea;boat;\xE6\xB8\xAF", "IFD0:XPKeywords", "XPKeywords"},
    {"--subject", "S\xC3\xBC" "bject", "IFD0:XPSubject", "XPSubject"},
    {"--date", "2024:05:06 07:08:09", "ExifIFD:DateTimeOriginal", "DateTimeOriginal"},
};

TEST(VvmetaCreateExif, EveryFieldReadsBackInExiftoolAndOurReaderAndTheImageIsKept) {
    if (!corpus::HaveExiftool()) GTEST_SKIP() << "exiftool not installed (libimage-exiftool-perl)";
    fixture::TempDir dir;
    const fixture::Bytes original = fixture::JpegBuilder().Soi().Com("scan").ScanAndEoi().Build();
    dir.Write("new.jpg", original);
    const std::string path = dir.Utf8Path("new.jpg");
    std::string command = std::string(VV_VVMETA) + " createexif --title 'A title'";
    for (const Field& f : kFields) command += std::string(" ") + f.option + " " + corpus::Quote(f.text);
    int rc = -1;
    corpus::Run(command + " " + corpus::Quote(path), &rc);
    ASSERT_EQ(rc, 0);

    auto tags = corpus::Exiftool(path, "");
    EXPECT_EQ(tags.count("ExifTool:Warning"), 0u) << tags["ExifTool:Warning"];
    EXPECT_EQ(tags.count("ExifTool:Error"), 0u) << tags["ExifTool:Error"];
    const auto ours = corpus::Rows(path);
    for (const Field& f : kFields) {
        SCOPED_TRACE(f.option);
        EXPECT_EQ(tags[f.exiftool], f.text);
        const auto given = [&](const corpus::Row& r) { return r.name == f.row && r.value == f.text; };
        EXPECT_NE(std::find_if(ours.begin(), ours.end(), given), ours.end());
    }

    const fixture::Bytes written = fixture::ReadAll(dir.Path("new.jpg"));
    ASSERT_GT(written.size(), original.size());
    EXPECT_TRUE(std::equal(original.begin(), original.begin() + 2, written.begin()));
    EXPECT_TRUE(std::equal(original.begin() + 2, original.end(), written.end() - (original.size() - 2)));

    // The file has EXIF data now: refused with the doubled message, nothing written.
    const std::string again =
        corpus::Run(std::string(VV_VVMETA) + " createexif --maker Other " + corpus::Quote(path) + " 2>&1", &rc);
    EXPECT_EQ(rc, 1);
    EXPECT_NE(again.find("ERROR: The file already contains EXIF data!The file already contains EXIF data."),
              std::string::npos)
        << again;
    EXPECT_EQ(fixture::ReadAll(dir.Path("new.jpg")), written);
}

}  // namespace
