// Reading IIM datasets: the dataset reader's cleaning and bounds, the block
// walk with its character-set decision and accumulating fields, and the
// segment locator over JPEG and TIFF files.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "fixture/iptc_fixture.h"
#include "iptc/iptc_reader.h"
#include "iptc/metadata_segment.h"

using namespace fixture;
using namespace iptc;

namespace {

std::unique_ptr<IptcData> NewRecord() {
    auto data = std::make_unique<IptcData>();
    ClearIptcData(*data);
    return data;
}

std::u16string Field(const IptcData& data, int dataset) {
    return std::u16string(FieldView(IptcField(data, dataset)));
}

int ParseApp13(const Bytes& iim, IptcData& data) {
    const Bytes payload = IptcApp13(iim);
    return ParseIptcBlock(payload.data(), payload.size(), data, true);
}

TEST(IptcDataset, CleansControlBytesAndTrimsTrailingSpaces) {
    const Bytes b = IimBuilder().Dataset(2, 120, std::string("a\0b\tc\r\nd  ", 10)).Build();
    char text[kDatasetTextBytes];
    int dataset = 0;
    EXPECT_EQ(ReadIptcDataset(b.data(), 0, b.size(), dataset, text, false), 10);
    EXPECT_EQ(dataset, 120);
    EXPECT_STREQ(text, "a b    c\r\n\r\nd");
}

TEST(IptcDataset, StaysInsideTheBlock) {
    char text[kDatasetTextBytes];
    int ds = 0;
    // A length past the end: the value is clipped, the declared length returned.
    const Bytes b = IimBuilder().DatasetWithLength(2, 5, 0xFFFF, "abc").Build();
    EXPECT_EQ(ReadIptcDataset(b.data(), 0, b.size(), ds, text, false), 0xFFFF);
    EXPECT_STREQ(text, "abc");
    // No value byte before the end, a cut header, a foreign record, a position past the end.
    const std::tuple<size_t, size_t, bool> refused[] = {{0, 5, false}, {0, 4, false}, {0, 8, true}, {9, 8, false}};
    for (auto [position, end, recordOneOnly] : refused)
        EXPECT_EQ(ReadIptcDataset(b.data(), position, end, ds, text, recordOneOnly), -1) << position << end;
    const Bytes empty = IimBuilder().Dataset(1, 90, "").Build();
    EXPECT_EQ(ReadIptcDataset(empty.data(), 0, empty.size(), ds, text, true), 0);
    // TABs fill the work buffer to its limit; cut to 4095 bytes, only spaces follow the "x".
    const Bytes tabs = IimBuilder().Dataset(2, 120, "x" + std::string(3000, '\t') + "y").Build();
    EXPECT_EQ(ReadIptcDataset(tabs.data(), 0, tabs.size(), ds, text, false), 3002);
    EXPECT_STREQ(text, "x");
}

TEST(IptcBlock, CharacterSetFromRecordOnesEscapeOrACityMentioningUtfAndFromAnEscapeInRecordTwoOn) {
    const std::string city = "Z\xC3\xBCrich";
    const struct {
        Bytes iim;
        int utf8;
        const char* codedSet;
        std::vector<std::pair<int, std::u16string>> fields;
    } cases[] = {  // codedSet, when given: the text kept as the character set
        {IimBuilder().Dataset(1, 90, "\x1B%G").Dataset(2, 90, city).Build(), 1, "\x1B%G", {{kCity, u"Z\u00FCrich"}}},
        {IimBuilder().Dataset(2, 90, city).Build(), 0, nullptr, {{kCity, u"Z\u00C3\u00BCrich"}}},
        {IimBuilder().Dataset(2, 120, "caf\xC3\xA9").Dataset(2, 90, "Utfield-utf").Build(), 1, "Utfield-utf",
         {{kCaption, u"caf\u00E9"}, {kCity, u"Utfield-utf"}}},
        // An escape in record 2 switches only the datasets after it.
        {IimBuilder().Dataset(2, 90, "Bern").Dataset(2, 5, "\xE9").Dataset(2, 90, "\x1B%G").Dataset(2, 120, "\xC3\xA9")
             .Build(), 1, nullptr, {{kObjectName, u"\u00E9"}, {kCaption, u"\u00E9"}, {kCity, u"Bern"}}},
    };
    for (const auto& c : cases) {
        auto data = NewRecord();
        const int datasets = ParseApp13(c.iim, *data);
        EXPECT_EQ(data->utf8, c.utf8);
        if (c.codedSet) {
            EXPECT_EQ(datasets, static_cast<int>(c.fields.size()));
            EXPECT_STREQ(data->codedCharacterSet, c.codedSet);
        }
        for (const auto& [dataset, text] : c.fields) EXPECT_EQ(Field(*data, dataset), text) << dataset;
    }
}

TEST(IptcBlock, KeywordsCategoriesAndCaptionsAccumulateOthersTakeTheLast) {
    auto data = NewRecord();
    const int n = ParseApp13(IimBuilder()
                                 .Dataset(2, 0, std::string("\0\x02", 2))
                                 .Dataset(2, 25, "a").Dataset(2, 20, "x").Dataset(2, 25, "b")
                                 .Dataset(2, 120, "one ").Dataset(2, 5, "first").Dataset(2, 20, "y")
                                 .Dataset(2, 25, "c").Dataset(2, 120, "two").Dataset(2, 5, "second")
                                 .Dataset(2, 221, "not listed").Dataset(2, 55, "")
                                 .Build(),
                             *data);
    EXPECT_EQ(n, 9);
    EXPECT_EQ(Field(*data, kKeywords), u"a\r\nb\r\nc");
    EXPECT_EQ(Field(*data, kSupplementalCategory), u"x\r\ny");
    EXPECT_EQ(Field(*data, kCaption), u"onetwo");  // the trailing space went with the dataset
    EXPECT_EQ(Field(*data, kObjectName), u"second");
    EXPECT_EQ(Field(*data, kRecordVersion), u" \x02");
    EXPECT_EQ(RecordVersionText(*data), u"2.0");
}

TEST(IptcBlock, FindsTheIptcResourceAmongOthersAndNothingWithoutIt) {
    const Bytes decoy = IimBuilder().Dataset(2, 5, "thumbnail bytes").Build();
    const Bytes iim = IimBuilder().Dataset(2, 5, "title").Build();
    const Bytes both = PhotoshopApp13({PhotoshopResource(0x0409, decoy), PhotoshopResource(0x0404, iim)});
    auto data = NewRecord();
    EXPECT_EQ(ParseIptcBlock(both.data(), both.size(), *data, true), 1);
    EXPECT_EQ(Field(*data, kObjectName), u"title");

    const Bytes none = PhotoshopApp13({PhotoshopResource(0x0409, decoy)});
    auto empty = NewRecord();
    EXPECT_EQ(ParseIptcBlock(none.data(), none.size(), *empty, true), 0);
    EXPECT_EQ(Field(*empty, kObjectName), u"");
    // A walk over a truncated block keeps what was read before the cut.
    const Bytes cut(both.begin(), both.end() - 2);
    auto clipped = NewRecord();
    EXPECT_EQ(ParseIptcBlock(cut.data(), cut.size(), *clipped, true), 1);
    EXPECT_EQ(Field(*clipped, kObjectName), u"tit");
}

TEST(MetadataSegment, FindsEachMarkerInAJpeg) {
    TempDir dir;
    const Bytes app13 = IptcApp13(IimBuilder().Dataset(2, 5, "t").Build());
    const Bytes jpeg = JpegBuilder().Soi().Segment(0xE0, ToBytes("JFIF")).App1Exif(TiffBuilder().Build())
                           .App1Xmp("<x:xmpmeta/>").Segment(0xED, app13).Com("hi").ScanAndEoi().Build();
    const auto path = dir.Write("a.jpg", jpeg);
    uint32_t length = 0, offset = 0;
    int32_t isTiff = 7;
    const auto segment = LoadMetadataSegment(path, length, offset, kApp13Marker, false, &isTiff, false);
    ASSERT_EQ(length, app13.size() + 2);
    EXPECT_EQ(isTiff, 0);
    EXPECT_EQ(jpeg[offset], 0xFF);
    EXPECT_EQ(jpeg[offset + 1], 0xED);
    ASSERT_EQ(segment.size(), length + 256);
    EXPECT_TRUE(std::equal(segment.begin(), segment.begin() + length, jpeg.begin() + offset + 2));
    EXPECT_EQ(segment.back(), 0);

    uint32_t xmpLength = 0, xmpOffset = 0, exifOffset = 0, exifLength = 0;
    const auto xmp = LoadMetadataSegment(path, xmpLength, xmpOffset, kApp1Marker, false, nullptr, true);
    LoadMetadataSegment(path, exifLength, exifOffset, kApp1Marker, false, nullptr, false);
    EXPECT_EQ(std::string(xmp.begin() + 2, xmp.begin() + 30), "http://ns.adobe.com/xap/1.0/");
    EXPECT_LT(exifOffset, xmpOffset);
    // The comment writer's form: position and length only.
    uint32_t comLength = 0, comOffset = 0;
    EXPECT_TRUE(LoadMetadataSegment(path, comLength, comOffset, kComMarker, true, nullptr, false).empty());
    EXPECT_EQ(comLength, 4u);
    EXPECT_EQ(comOffset, offset + 2 + length);
}

TEST(MetadataSegment, GivesUpOnBrokenSegmentsAndMissingMarkers) {
    TempDir dir;
    uint32_t length = 1, offset = 1;
    for (const Bytes& jpeg : {JpegBuilder().Soi().Com("x").ScanAndEoi().Build(),
                              JpegBuilder().Soi().Raw({0xFF, 0xE0, 0x00, 0x02}).Segment(0xED, {1}).Build()}) {
        EXPECT_TRUE(LoadMetadataSegment(dir.Write("b.jpg", jpeg), length, offset, kApp13Marker, false, nullptr, false).empty());
        EXPECT_EQ(length, 0u);
    }
    EXPECT_TRUE(LoadMetadataSegment(dir.Path("gone.jpg"), length, offset, kApp13Marker, false, nullptr, false).empty());
}

TEST(MetadataSegment, ReadsTheIimBlockOfATiffInBothByteOrders) {
    for (ByteOrder order : {ByteOrder::kLittle, ByteOrder::kBig}) {
        TempDir dir;
        TiffBuilder tiff(order);
        tiff.Short(0, 256, {8}).Blob(0, kTiffIptcTag, IimBuilder().Dataset(2, 5, "tiff title").Build());
        const auto path = dir.Write("t.tif", tiff.Build());
        uint32_t length = 0, offset = 0;
        int32_t isTiff = 0;
        const auto block = LoadMetadataSegment(path, length, offset, kApp13Marker, false, &isTiff, false);
        EXPECT_EQ(isTiff, 1);
        EXPECT_EQ(length, 10240u);
        EXPECT_EQ(offset, tiff.BlobOffset(0));
        auto data = NewRecord();
        EXPECT_EQ(ParseIptcBlock(block.data(), length, *data, false), 1);
        EXPECT_EQ(Field(*data, kObjectName), u"tiff title");
        EXPECT_TRUE(LoadMetadataSegment(path, length, offset, kApp1Marker, false, &isTiff, true).empty());
    }
}

}  // namespace
