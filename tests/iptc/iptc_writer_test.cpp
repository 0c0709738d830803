// Writing: the IIM block's datasets and their order, the APP13 segment and
// where it goes, the writer's limits, and every refusal leaving the file as
// it was.
#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "fixture/iptc_fixture.h"
#include "iptc/iptc_reader.h"
#include "iptc/iptc_writer.h"
#include "iptc/metadata_segment.h"
#include "platform/platform.h"

using namespace fixture;
using namespace iptc;

namespace {

using Iim = std::vector<std::tuple<int, int, std::string>>;  // record, dataset, value

Iim ListIim(const uint8_t* p, size_t n) {
    Iim out;
    for (size_t i = 0; i + 5 <= n && p[i] == 0x1C;) {
        const size_t len = size_t{p[i + 3]} << 8 | p[i + 4];
        out.emplace_back(p[i + 1], p[i + 2], std::string(reinterpret_cast<const char*>(p + i + 5), len));
        i += 5 + len;
    }
    return out;
}

std::unique_ptr<IptcData> NewRecord() {
    auto data = std::make_unique<IptcData>();
    ClearIptcData(*data);
    return data;
}

void Set(IptcData& data, int dataset, std::u16string_view text) { SetField(IptcField(data, dataset), text); }

const Bytes kPlainJpeg = JpegBuilder().Soi().Segment(0xE0, ToBytes("JFIF\0")).Com("c").ScanAndEoi().Build();

TEST(IptcBlock, WritesTheEditedFieldsInTheirOrderAsUtf8) {
    auto data = NewRecord();
    for (const auto& row : IptcDatasetTable) Set(*data, row.dataset, u"-");  // also the unwritten ones
    Set(*data, kCaption, u"l1\r\nl2");
    Set(*data, kKeywords, u"k\u00FC\r\n\r\nk2\r\n");
    Set(*data, kSupplementalCategory, u"s1\r\ns2");
    Set(*data, kObjectName, u"");
    uint32_t length = 0;
    const auto block = BuildIptcBlock(*data, length);
    ASSERT_EQ(length + 1, block.size());
    EXPECT_EQ(size_t{block[0]} << 8 | block[1], length - 2);
    const Iim expected = {
        {1, 90, "\x1B%G"}, {1, 0, std::string("\0\x04", 2)},
        {2, 120, "l1\rl2"}, {2, 122, "-"}, {2, 105, "-"}, {2, 40, "-"}, {2, 80, "-"}, {2, 85, "-"},
        {2, 110, "-"}, {2, 115, "-"}, {2, 50, "-"}, {2, 55, "-"}, {2, 90, "-"}, {2, 92, "-"},
        {2, 95, "-"}, {2, 100, "-"}, {2, 101, "-"}, {2, 103, "-"}, {2, 15, "-"},
        {2, 20, "s1"}, {2, 20, "s2"}, {2, 10, "-"}, {2, 25, "k\xC3\xBC"}, {2, 25, "k2"},
        {2, 116, "-"}, {2, 118, "-"},
    };
    EXPECT_EQ(ListIim(block.data() + 2, length - 2), expected);
    EXPECT_EQ(block.back(), 0);
}

TEST(IptcBlock, CutsLongTextsAtACharacterBoundary) {
    std::vector<uint8_t> buffer;
    uint32_t length = 0;
    AppendIptcDataset(buffer, 120, length, std::u16string(4095, u'a') + u"\u00E9");
    ASSERT_EQ(length, 5u + 4095u);
    EXPECT_EQ(ListIim(buffer.data(), buffer.size()), (Iim{{2, 120, std::string(4095, 'a')}}));
    AppendIptcDataset(buffer, 5, length, u"");
    EXPECT_EQ(length, 5u + 4095u);
}

// Writes with the temporary folder in a folder of the test's own.
class IptcWriter : public ::testing::Test {
protected:
    TempDir dir, temp;
    ScopedTempFolder tempFolder{temp.Utf8Path("")};
    std::u16string error;
};

TEST_F(IptcWriter, InsertsRightAfterStartOfImageAndRoundTrips) {
    const auto path = dir.Write("a.jpg", kPlainJpeg);
    auto data = NewRecord();
    // An empty record still writes record 1: IIM 15 bytes, segment length 43 + 1 pad byte.
    ASSERT_EQ(WriteIptcToJpeg(path, 0, 0, *data, error), 1) << platform::Utf16ToUtf8(error);
    Bytes after = ReadAll(path);
    ASSERT_EQ(after.size(), kPlainJpeg.size() + 46);
    EXPECT_EQ(size_t{after[4]} << 8 | after[5], 44u);

    // A second write replaces that segment; the texts read back the same.
    Set(*data, kCaption, u"Stra\u00DFe\r\nzwei");
    Set(*data, kKeywords, u"eins\r\nzwei");
    uint32_t length = 0, offset = 0;
    LoadMetadataSegment(path, length, offset, kApp13Marker, true, nullptr, false);
    ASSERT_EQ(WriteIptcToJpeg(path, offset, length, *data, error), 1);
    auto back = NewRecord();
    ASSERT_EQ(LoadIptcData(path, *back), 1);
    EXPECT_EQ(std::u16string(FieldView(IptcField(*back, kCaption))), u"Stra\u00DFe\r\nzwei");
    EXPECT_EQ(std::u16string(FieldView(IptcField(*back, kKeywords))), u"eins\r\nzwei");
    LoadMetadataSegment(path, length, offset, kApp13Marker, true, nullptr, false);
    after = ReadAll(path);
    EXPECT_EQ(offset, 2u);
    EXPECT_TRUE(std::equal(after.begin() + 2 + 2 + length, after.end(), kPlainJpeg.begin() + 2));
}

// A dataset the file holds several times, where the record keeps one field
// (the last, as read): an edit of another field writes every occurrence back;
// an edit of that field replaces them all.
TEST_F(IptcWriter, KeepsEveryOccurrenceOfADatasetUnlessItsFieldWasEdited) {
    const Bytes iim = IimBuilder().Dataset(2, 80, "Ann").Dataset(2, 5, "t").Dataset(2, 80, "Bo")
                          .Dataset(2, 118, "c1").Dataset(2, 118, "c2").Build();
    const auto path = dir.Write("two.jpg", JpegWithIptc(iim));
    auto rewrite = [&](int dataset, std::u16string_view text) {
        auto data = NewRecord();
        ASSERT_EQ(LoadIptcData(path, *data), 1);
        Set(*data, dataset, text);
        ASSERT_EQ(WriteIptcToJpeg(path, data->app13Offset, data->app13Length, *data, error), 1);
    };
    auto datasets = [&] {
        uint32_t length = 0, offset = 0;
        const auto app13 = LoadMetadataSegment(path, length, offset, kApp13Marker, false, nullptr, false);
        Iim list;
        for (const auto& [record, dataset, value] : ListIim(app13.data() + 28, length - 28))
            if (record == 2) list.emplace_back(record, dataset, value);
        return list;
    };
    rewrite(kObjectName, u"new");
    EXPECT_EQ(datasets(), (Iim{{2, 80, "Ann"}, {2, 80, "Bo"}, {2, 5, "new"}, {2, 118, "c1"}, {2, 118, "c2"}}));
    rewrite(kByline, u"Cy");
    EXPECT_EQ(datasets(), (Iim{{2, 80, "Cy"}, {2, 5, "new"}, {2, 118, "c1"}, {2, 118, "c2"}}));
}

TEST_F(IptcWriter, DropsTheOtherPhotoshopResourcesAndKeepsTheDate) {
    const Bytes old = JpegBuilder().Soi().Segment(0xE0, ToBytes("JFIF\0"))
                          .Segment(0xED, PhotoshopApp13({PhotoshopResource(0x040C, Bytes(9, 7)),
                                                         PhotoshopResource(0x0404, IimBuilder().Dataset(2, 5, "old").Build())}))
                          .ScanAndEoi().Build();
    const auto path = dir.Write("b.jpg", old);
    uint32_t length = 0, offset = 0;
    LoadMetadataSegment(path, length, offset, kApp13Marker, true, nullptr, false);
    platform::FileTimes times{125000000000000000ULL, 126000000000000000ULL, 127000000000000000ULL};
    ASSERT_TRUE(platform::SetFileTimes(path, times));
    auto data = NewRecord();
    data->keepOrgDate = 1;
    Set(*data, kObjectName, u"new");
    ASSERT_EQ(WriteIptcToJpeg(path, offset, length, *data, error), 1);
    platform::FileTimes now;
    ASSERT_TRUE(platform::GetFileTimes(path, now));
    EXPECT_EQ(now.lastWrite, times.lastWrite);
    EXPECT_EQ(now.lastAccess, times.lastAccess);
    // No creation time is compared: neither POSIX nor Wine on Linux can set one.
    const Bytes bytes = ReadAll(path);
    const std::string after(bytes.begin(), bytes.end());
    EXPECT_EQ(after.find("8BIM\x04\x0C"), std::string::npos);
    EXPECT_NE(after.find("8BIM\x04\x04"), std::string::npos);
    EXPECT_NE(after.find("new"), std::string::npos);
}

// Each refusal: the message, and the original byte for byte.
class IptcWriterRefusal : public IptcWriter {
protected:
    void SetUp() override {
        path = dir.Write("c.jpg", kPlainJpeg);
        data = NewRecord();
        Set(*data, kObjectName, u"x");
    }
    int Write() { return WriteIptcToJpeg(path, 0, 0, *data, error); }
    std::u16string path;
    std::unique_ptr<IptcData> data;
};

TEST_F(IptcWriterRefusal, FileGoneOrChangedSinceItWasRead) {
    const Bytes withApp13 = JpegWithIptc(IimBuilder().Dataset(2, 5, "a").Build());
    dir.Write("c.jpg", withApp13);
    uint32_t length = 0, offset = 0;
    LoadMetadataSegment(path, length, offset, kApp13Marker, true, nullptr, false);
    // Something put a comment in front of the APP13 meanwhile.
    const Bytes moved = JpegBuilder().Soi().Com("new").Raw(Bytes(withApp13.begin() + 2, withApp13.end())).Build();
    dir.Write("c.jpg", moved);
    EXPECT_EQ(WriteIptcToJpeg(path, offset, length, *data, error), 0);
    EXPECT_EQ(error, u"Can't write IPTC data!\n\nThe file: '" + path + u"' has changed since it was read.");
    EXPECT_EQ(ReadAll(path), moved);

    ASSERT_TRUE(platform::RemoveFile(path));
    EXPECT_EQ(WriteIptcToJpeg(path, offset, length, *data, error), 0);
    EXPECT_EQ(error, u"Can't open file: " + path);
    EXPECT_FALSE(platform::FileExists(path));
}

TEST_F(IptcWriterRefusal, BlockTooLargeForASegment) {
    // 16 texts of 4000 "é": 8000 bytes each as UTF-8, cut to 4096, more than 65535 in all.
    for (int dataset : {5, 15, 40, 50, 80, 85, 90, 92, 95, 101, 103, 110, 115, 116, 118, 122})
        Set(*data, dataset, std::u16string(4000, u'\u00E9'));
    EXPECT_EQ(Write(), 0);
    EXPECT_EQ(error.rfind(u"Can't write IPTC data!\n\nThe IPTC data is too large", 0), 0u);
    EXPECT_EQ(ReadAll(path), kPlainJpeg);
}

}  // namespace
