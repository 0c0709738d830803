// Real files of every container: the offsets we answer hold a TIFF header,
// and the standard tags we read agree with exiftool. PNG, JPEG XL and HEIF
// samples come without EXIF; exiftool writes it into a copy, where real
// writers put it (eXIf chunk, Exif box, HEIF Exif item).
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "corpus.h"
#include "exif/container.h"
#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "fixture/fixture.h"
#include "plugin/plugin_api.h"

namespace {

constexpr int32_t kHeifCode = 115, kPngCode = 3, kCr3Code = 118, kOtherCode = 0;

// What GetExifInfos can answer for a file.
enum class Answer {
    kTiffHeader,  // the offset of the TIFF header
    kFileStart,   // 0: the file is the TIFF header's own file, which the answer cannot tell from "none"
};

struct Sample {
    const char* name;
    int32_t code;
    Answer answer;
};

const Sample kShipped[] = {
    {"CanonRaw.cr3", kCr3Code, Answer::kTiffHeader},  {"FujiFilm.raf", kOtherCode, Answer::kTiffHeader},
    {"Minolta.mrw", kOtherCode, Answer::kTiffHeader}, {"CanonRaw.cr2", kOtherCode, Answer::kFileStart},
    {"DNG.dng", kOtherCode, Answer::kFileStart},      {"Nikon.nef", kOtherCode, Answer::kFileStart},
    {"Panasonic.rw2", kOtherCode, Answer::kFileStart}, {"RIFF.webp", kOtherCode, Answer::kTiffHeader},
};
const Sample kWritten[] = {{"PNG.png", kPngCode, Answer::kTiffHeader},
                           {"JXL2.jxl", kOtherCode, Answer::kTiffHeader},
                           {"QuickTime.heic", kHeifCode, Answer::kTiffHeader}};

// A copy of a corpus file with EXIF written by exiftool.
std::string WriteExifCopy(const fixture::TempDir& dir, const std::string& name) {
    const std::string copy = dir.Utf8Path(name);
    std::filesystem::copy_file(corpus::Path(name), copy);
    std::filesystem::permissions(copy, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    int rc = -1;
    corpus::Run("exiftool -q -overwrite_original -Make=Vantaview -Model=Test -ExposureTime=0.004 -FNumber=5.6 "
                "-ISO=200 -DateTimeOriginal='2024:05:06 07:08:09' -GPSLatitude=48.85 -GPSLatitudeRef=N " +
                    corpus::Quote(copy) + " 2>/dev/null",
                &rc);
    EXPECT_EQ(rc, 0) << name;
    return copy;
}

std::string Head(const std::string& path, uint32_t offset) {
    char bytes[4] = {};
    if (FILE* f = std::fopen(path.c_str(), "rb")) {
        if (std::fseek(f, static_cast<long>(offset), SEEK_SET) == 0) std::fread(bytes, 1, sizeof bytes, f);
        std::fclose(f);
    }
    return std::string(bytes, sizeof bytes);
}

::testing::AssertionResult HoldsTiffHeader(const std::string& path, uint32_t offset) {
    const std::string head = Head(path, offset);
    if (head == std::string("II*\0", 4) || head == std::string("MM\0*", 4)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << path << " at " << offset << " holds no TIFF header";
}

std::u16string Wide(const std::string& path) { return std::u16string(path.begin(), path.end()); }

uint32_t ExifInfos(const std::string& path, int32_t code, uint32_t outs[4]) {
    uint32_t size = 0, out5 = 0;
    return static_cast<uint32_t>(
        vv::GetExifInfos(Wide(path).c_str(), &size, &outs[0], &outs[1], &outs[2], &out5, code));
}

TEST(ContainerCorpus, GetExifInfosAndTheWalkersLocatorPointAtTiffHeaders) {
    VV_REQUIRE_CORPUS();
    fixture::TempDir dir;
    std::vector<std::pair<Sample, std::string>> files;
    for (const Sample& s : kShipped) files.push_back({s, corpus::Path(s.name)});
    for (const Sample& s : kWritten) files.push_back({s, WriteExifCopy(dir, s.name)});
    for (const auto& [sample, path] : files) {
        SCOPED_TRACE(sample.name);
        uint32_t outs[4] = {};
        const uint32_t offset = ExifInfos(path, sample.code, outs);
        if (sample.answer == Answer::kFileStart) {
            // Panasonic's raw files use their own magic number after "II".
            EXPECT_EQ(offset, 0u);
            EXPECT_TRUE(Head(path, 0).rfind("II", 0) == 0 || Head(path, 0).rfind("MM", 0) == 0);
            continue;
        }
        if (sample.answer == Answer::kTiffHeader) {
            EXPECT_TRUE(HoldsTiffHeader(path, offset));
        } else {
            EXPECT_EQ(offset, 0u);
        }
        for (int i = 0; sample.code == kCr3Code && i < 3; ++i)
            EXPECT_TRUE(HoldsTiffHeader(path, outs[i])) << "CMT" << i + 2;
        exif::ContainerPointers pointers;
        EXPECT_TRUE(HoldsTiffHeader(path, exif::LocateTiffHeaderInContainer(Wide(path), pointers)));
    }
}

// exiftool's numbers written as our formatters write them.
std::string Expected(uint32_t tag, const std::string& numeric) {
    char text[64];
    const double v = std::atof(numeric.c_str());
    if (tag == 33434) std::snprintf(text, sizeof text, v < 1 ? "1/%.0f" : "%.0f", v < 1 ? 1 / v : v);
    else if (tag == 33437) std::snprintf(text, sizeof text, "F %.2f", v);
    else return numeric;
    return text;
}

std::string TrimRight(std::string text) {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

TEST(ContainerCorpus, StandardTagsMatchExiftool) {
    VV_REQUIRE_CORPUS();
    const std::pair<uint32_t, const char*> kTags[] = {{271, "Make"},          {272, "Model"},
                                                      {33434, "ExposureTime"}, {33437, "FNumber"},
                                                      {34855, "ISO"},          {36867, "DateTimeOriginal"},
                                                      {315, "Artist"}};
    fixture::TempDir dir;
    std::vector<std::string> paths;
    for (const Sample& s : kShipped) paths.push_back(corpus::Path(s.name));
    for (const Sample& s : kWritten) paths.push_back(WriteExifCopy(dir, s.name));
    for (const std::string& path : paths) {
        SCOPED_TRACE(path);
        std::unique_ptr<exif::TagRecordTable, void (*)(exif::TagRecordTable*)> owned(
            exif::AllocateTagRecordTable(), [](exif::TagRecordTable* t) { exif::FreeTagRecordTable(t, 1); });
        const exif::TagRecordTable* table = owned.get();
        uint32_t rows = 0;
        int bigEndian = 0;
        ASSERT_EQ(exif::ReadExifTags(Wide(path), *owned, &rows, &bigEndian), 1);
        auto oracle = corpus::Exiftool(path);
        int compared = 0;
        for (const auto& [tag, name] : kTags) {
            std::string want = oracle["IFD0:" + std::string(name)];
            if (want.empty()) want = oracle["ExifIFD:" + std::string(name)];
            if (want.empty()) continue;
            const exif::TagRecord* row = exif::FindTagRecord(*table, rows, tag);
            ASSERT_NE(row, nullptr) << name;
            EXPECT_EQ(TrimRight(row->value), Expected(tag, want)) << name;
            ++compared;
        }
        EXPECT_GE(compared, 1);
    }
}

}  // namespace
