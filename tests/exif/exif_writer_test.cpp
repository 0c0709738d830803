// Creating EXIF data in a JPEG without any: the segment's layout, the rows
// read back by the reader, and the refusals that leave the file untouched.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "exif/exif_creation.h"
#include "exif/exif_reader.h"
#include "exif/exif_writer.h"
#include "fixture/fixture.h"
#include "platform/platform.h"

namespace {

using fixture::Bytes;

uint32_t U16At(const Bytes& b, size_t at) { return b[at] | b[at + 1] << 8; }
uint32_t U32At(const Bytes& b, size_t at) { return U16At(b, at) | U16At(b, at + 2) << 16; }

class ExifWriter : public ::testing::Test {
protected:
    fixture::TempDir dir;
    exif::TagRecord rows[exif::kCreatorRowCount];
    const Bytes plain = fixture::JpegBuilder().Soi().Com("scan").ScanAndEoi().Build();

    void SetUp() override { exif::InitCreatorRows(rows); }
    void Set(uint32_t row, const std::string& text) { exif::SetCreatorValue(rows[row], text); }
    int Write(const std::string& name, std::u16string& error) {
        return exif::WriteExifToJpeg(dir.Path(name), rows, exif::kCreatorRowCount, 0, error);
    }
    // The written file; checks that the original follows the new segment unchanged.
    Bytes WriteOk(const Bytes& original) {
        dir.Write("a.jpg", original);
        std::u16string error;
        EXPECT_EQ(Write("a.jpg", error), 1) << platform::Utf16ToUtf8(error);
        const Bytes out = fixture::ReadAll(dir.Path("a.jpg"));
        const size_t end = 4 + (out[4] << 8 | out[5]);
        EXPECT_EQ(Bytes(out.begin() + end, out.end()), Bytes(original.begin() + 2, original.end()));
        return out;
    }
};

// TIFF offsets in the written file count from offset 12 ("II").
constexpr size_t kTiff = 12;

TEST_F(ExifWriter, DateAloneLeavesOnlyThePointerInIfd0) {
    Set(exif::kCreatorDateRow, "2024:01:02 03:04:05");
    const Bytes out = WriteOk(plain);
    ASSERT_EQ(U16At(out, kTiff + 8), 1u);
    EXPECT_EQ(U16At(out, kTiff + 10), 34665u);
    EXPECT_EQ(U16At(out, kTiff + 12), 4u);
    EXPECT_EQ(U32At(out, kTiff + 14), 1u);
    const uint32_t exifIfd = U32At(out, kTiff + 18);
    EXPECT_EQ(exifIfd, 26u);  // right after IFD0's entry and next word
    EXPECT_EQ(U32At(out, kTiff + 22), 0u);
    ASSERT_EQ(U16At(out, kTiff + exifIfd), 1u);
    EXPECT_EQ(U16At(out, kTiff + exifIfd + 2), 36867u);
    EXPECT_EQ(U32At(out, kTiff + exifIfd + 6), 20u);  // the terminator counts
    const uint32_t text = U32At(out, kTiff + exifIfd + 10);
    EXPECT_EQ(std::string(out.begin() + kTiff + text, out.begin() + kTiff + text + 20),
              std::string("2024:01:02 03:04:05", 20));
}

TEST_F(ExifWriter, DefaultDateIsWrittenWhenNothingElseIsFilled) {
    exif::ExifCreatorState state;
    const std::u16string path = dir.Write("a.jpg", plain);
    exif::PrepareExifCreator(path, dir.Path("none.ini"), state);
    exif::FillDefaultDateTaken(state);
    const std::string date = state.rows[exif::kCreatorDateRow].value;
    ASSERT_EQ(date.size(), 19u);
    EXPECT_GE(date.substr(0, 4), "2024");  // this year's, from the local clock
    EXPECT_EQ(date[4], ':');
    EXPECT_EQ(date[10], ' ');
    std::u16string error;
    ASSERT_EQ(exif::WriteExifToJpeg(path, state.rows, exif::kCreatorRowCount, state.keepDate, error), 1);
    exif::TagRecordTable* table = exif::AllocateTagRecordTable();
    uint32_t n = 0;
    int big = 1;
    ASSERT_EQ(exif::ReadExifTags(path, *table, &n, &big, exif::NoMakerNotes()), 1);
    EXPECT_EQ(big, 0);
    const exif::TagRecord* row = exif::FindTagRecord(*table, n, 36867);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(std::string(row->value), date);
    exif::FreeTagRecordTable(table, 1);
}

TEST_F(ExifWriter, OddBlockIsPaddedToAnEvenSegment) {
    Set(1, "Canon");  // 12 + 4 + 6 bytes: block 22, + 18 = 40 even
    Bytes out = WriteOk(plain);
    EXPECT_EQ(U16At(out, kTiff + 10), 271u);  // the camera maker's row is Make
    EXPECT_EQ((out[4] << 8 | out[5]) % 2, 0);
    Set(1, "Nikon1");  // block 23: raised to 42 with one zero byte
    dir.Write("a.jpg", plain);
    out = WriteOk(plain);
    EXPECT_EQ(out[4] << 8 | out[5], 42);
    EXPECT_EQ(out[4 + 41], 0);
}

TEST_F(ExifWriter, TitleAndCopyrightShareTheTagAsciiFirst) {
    Set(5, "(c) Me");
    Set(6, "Tï");
    const Bytes out = WriteOk(plain);
    ASSERT_EQ(U16At(out, kTiff + 8), 2u);
    EXPECT_EQ(U16At(out, kTiff + 10), 33432u);
    EXPECT_EQ(U16At(out, kTiff + 12), 2u);
    EXPECT_EQ(U32At(out, kTiff + 14), 7u);
    EXPECT_EQ(U16At(out, kTiff + 22), 33432u);
    EXPECT_EQ(U16At(out, kTiff + 24), 1u);
    EXPECT_EQ(U32At(out, kTiff + 26), 6u);  // two UTF-16 characters and a NUL character
    const uint32_t at = U32At(out, kTiff + 30);
    EXPECT_EQ(Bytes(out.begin() + kTiff + at, out.begin() + kTiff + at + 6), (Bytes{'T', 0, 0xEF, 0, 0, 0}));
}

TEST_F(ExifWriter, RatingIsAnInlineShortAndBadOnesOrNoRowsAreRefused) {
    Set(exif::kCreatorRatingRow, "4");
    Bytes out = WriteOk(plain);
    EXPECT_EQ(U16At(out, kTiff + 10), 18246u);
    EXPECT_EQ(U16At(out, kTiff + 12), 3u);
    EXPECT_EQ(U32At(out, kTiff + 18), 4u);
    const std::u16string rating = u"ERROR: The rating must be a whole number from 0 to 5.";
    const std::pair<const char*, std::u16string> refusals[] = {
        {"6", rating}, {"-1", rating}, {"3x", rating}, {"abc", rating}, {"", u"ERROR: Empty/bad EXIF data!"}};
    for (const auto& [value, message] : refusals) {
        Set(exif::kCreatorRatingRow, value);  // the only row filled
        dir.Write("b.jpg", plain);
        std::u16string error;
        EXPECT_EQ(Write("b.jpg", error), 0) << value;
        EXPECT_EQ(error, message);
        EXPECT_EQ(fixture::ReadAll(dir.Path("b.jpg")), plain);
    }
}

TEST_F(ExifWriter, ExistingExifIsRefusedWithTheDoubledMessage) {
    Set(0, "x");
    const Bytes original =
        fixture::JpegBuilder().Soi().App1Exif(fixture::TiffBuilder().Ascii(0, 271, "A").Build()).ScanAndEoi().Build();
    dir.Write("a.jpg", original);
    std::u16string error;
    EXPECT_EQ(Write("a.jpg", error), 0);
    EXPECT_EQ(error, u"ERROR: The file already contains EXIF data!The file already contains EXIF data.");
    EXPECT_EQ(fixture::ReadAll(dir.Path("a.jpg")), original);
}

TEST_F(ExifWriter, XmpOnlyFileGetsTheSegmentAheadOfIt) {
    Set(2, "Model");
    const Bytes original = fixture::JpegBuilder().Soi().App1Xmp("<x/>").ScanAndEoi().Build();
    const Bytes out = WriteOk(original);
    EXPECT_EQ(std::string(out.begin() + 6, out.begin() + 10), "Exif");
}

// A path longer than the viewer's 260 characters is refused whole: cut, it
// named another file, which was written instead when it existed.
TEST_F(ExifWriter, CreatorRefusesAPathItsCutWouldChangeAndReadsTheKeepDateSetting) {
    const std::u16string ini = dir.Path("s.ini");
    platform::WriteSettingString(ini, u"EXIF", u"CreatorKeepOrgDate", u"0");
    // A file whose path is exactly the first 260 characters of the one named.
    const size_t folder = dir.Path("").size();
    const std::u16string cutName = dir.Write(std::string(exif::kCreatorPathLimit - folder, 'n'), plain);
    ASSERT_EQ(cutName.size(), exif::kCreatorPathLimit);
    exif::ExifCreatorState state;
    exif::PrepareExifCreator(cutName + u".jpg", ini, state);
    exif::SetCreatorValue(state.rows[1], "Maker");
    std::u16string error;
    EXPECT_EQ(exif::WriteExifCreator(state, error), 0);
    EXPECT_EQ(error, u"ERROR: Can't write EXIF data. The path is longer than 260 characters.");
    EXPECT_EQ(fixture::ReadAll(cutName), plain);
    EXPECT_EQ(state.keepDate, 0);
    exif::PrepareExifCreator(dir.Path("a.jpg"), dir.Path("none.ini"), state);
    EXPECT_EQ(state.keepDate, 1);
    EXPECT_EQ(state.rows[exif::kCreatorPointerRow].tag, 34665u);
    EXPECT_EQ(state.rows[exif::kCreatorDateRow].name[0], exif::kCreatorExifIfd);
}

}  // namespace
