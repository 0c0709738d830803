// The maker rows the reader makes for the corpus's Casio, Sony and Panasonic
// files, against exiftool's values for the same tags. Every maker
// row is either checked against exiftool or listed as a disagreement with
// its reason; the disagreements pin the value our rules give.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "corpus.h"
#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "platform/platform.h"

namespace {

enum class Compare {
    kText,         // our text equals exiftool's printed value
    kNumber,       // our text equals exiftool's number
    kMillimetres,  // "n mm" against exiftool's metres
    kAfMode,       // our text for exiftool's two bytes "low high"
};

struct Check {
    uint32_t tag;
    const char* exiftool;  // "Group:Tag"
    Compare how;
};

struct Disagreement {
    uint32_t tag;
    const char* exiftool;
    const char* ours;  // what our rules show
    const char* why;
};

struct Sample {
    const char* file;
    std::vector<Check> checks;
    std::vector<Disagreement> disagreements;
};

constexpr char kBigEndianShort[] =
    "big-endian headerless Casio note: the value is the low half of the whole 32-bit field, so a SHORT "
    "stored in its first two bytes reads as 0 (deliberate)";

const Sample kSamples[] = {
    {"Casio.jpg",
     // Quality agrees by chance: the big-endian rule reads 0 where exiftool reads 3, and both mean "Fine".
     {{2, "Casio:Quality", Compare::kText},
      {6, "Casio:ObjectDistance", Compare::kMillimetres},  // a LONG: the whole field
      {10, "Casio:DigitalZoom", Compare::kText},
      {11, "Casio:Sharpness", Compare::kText},
      {12, "Casio:Contrast", Compare::kText},
      {13, "Casio:Saturation", Compare::kText}},
     {{1, "Casio:RecordingMode", "0", kBigEndianShort},
      {3, "Casio:FocusMode", "0", kBigEndianShort},
      {4, "Casio:FlashMode", "0", kBigEndianShort},
      {5, "Casio:FlashIntensity", "0", kBigEndianShort},
      {7, "Casio:WhiteBalance", "0", kBigEndianShort},
      {20, "Casio:ISO", "0", kBigEndianShort}}},
    {"Casio2.jpg",
     {{8210, "Casio:WhiteBalance", Compare::kText},
      {12290, "Casio:Quality", Compare::kText},
      {12291, "Casio:FocusMode", Compare::kText},
      {12295, "Casio:BestShotMode", Compare::kText},
      {12308, "Casio:ISO", Compare::kNumber},
      {12309, "Casio:ColorMode", Compare::kText},
      {12310, "Casio:Enhancement", Compare::kText},
      {12311, "Casio:ColorFilter", Compare::kText}},
     {}},
    // Its note holds none of the Sony tags we name (only 0x2000 and 0x9001-0x9006).
    {"Sony.jpg", {}, {}},
    {"Panasonic.jpg",
     {{1, "Panasonic:ImageQuality", Compare::kText},
      {7, "Panasonic:FocusMode", Compare::kText},
      {15, "Panasonic:AFAreaMode", Compare::kAfMode},
      {28, "Panasonic:MacroMode", Compare::kText},
      {31, "Panasonic:ShootingMode", Compare::kText}},
     {}},
};

// Our text for exiftool's value, or "" when we cannot tell.
std::string Expected(Compare how, const std::string& numeric, const std::string& printed) {
    switch (how) {
        case Compare::kText: return printed;
        case Compare::kNumber: return numeric;
        case Compare::kMillimetres: return std::to_string(std::lround(std::atof(numeric.c_str()) * 1000)) + " mm";
        case Compare::kAfMode: {
            // exiftool shows the two bytes in file order: low, then high.
            static const std::map<std::string, std::string> kAreas = {
                {"0 1", "9 area"}, {"0 16", "3 area (high speed)"}, {"1 0", "Spot Focusing"},
                {"1 1", "5 area"}, {"16 0", "1 area"},              {"16 16", "1 area (high speed)"},
                {"32 0", "Auto or Face Detect"}, {"64 0", "Face Detect"}};
            auto it = kAreas.find(numeric);
            return it == kAreas.end() ? "" : it->second;
        }
    }
    return "";
}

TEST(MakerNoteCorpus, MakerRowsAgreeWithExiftoolOrDifferForTheirListedReason) {
    VV_REQUIRE_CORPUS();
    for (const Sample& sample : kSamples) {
        SCOPED_TRACE(sample.file);
        const std::string path = corpus::Path(sample.file);
        const auto numeric = corpus::Exiftool(path, "-n");
        const auto printed = corpus::Exiftool(path, "");
        const std::vector<corpus::MakerRow> rows = corpus::MakerRows(path);

        std::map<uint32_t, const corpus::MakerRow*> byTag;
        for (const corpus::MakerRow& row : rows) byTag.emplace(row.tag, &row);
        size_t accounted = 0;
        for (const Check& check : sample.checks) {
            const auto row = byTag.find(check.tag);
            ASSERT_NE(row, byTag.end()) << "no row for tag " << check.tag;
            ASSERT_TRUE(numeric.count(check.exiftool)) << check.exiftool;
            EXPECT_EQ(row->second->value,
                      Expected(check.how, numeric.at(check.exiftool), printed.at(check.exiftool)))
                << row->second->name << " (" << check.exiftool << " = " << numeric.at(check.exiftool) << ")";
            ++accounted;
        }
        for (const Disagreement& d : sample.disagreements) {
            const auto row = byTag.find(d.tag);
            ASSERT_NE(row, byTag.end()) << "no row for tag " << d.tag;
            EXPECT_EQ(row->second->value, d.ours) << row->second->name;
            EXPECT_NE(row->second->value, printed.count(d.exiftool) ? printed.at(d.exiftool) : "")
                << d.exiftool << " now agrees: drop the disagreement";
            std::printf("%s %s: ours \"%s\", exiftool \"%s\" (%s): %s\n", sample.file, row->second->name.c_str(),
                        d.ours, numeric.count(d.exiftool) ? numeric.at(d.exiftool).c_str() : "-", d.exiftool,
                        d.why);
            ++accounted;
        }
        EXPECT_EQ(rows.size(), accounted) << "maker rows neither checked nor listed";
    }
}

}  // namespace
