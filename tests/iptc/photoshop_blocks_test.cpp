// APP13 layouts beyond the single Photoshop segment: segments of other
// kinds, the IPTC datasets in a later segment, resources continued from one
// segment into the next. The reader shows the datasets the file holds, and
// the writer leaves exactly one IPTC block and every other segment as it was.
#include <gtest/gtest.h>

#include <memory>

#include "fixture/container_fixture.h"
#include "fixture/iptc_fixture.h"
#include "iptc/iptc_reader.h"
#include "iptc/iptc_writer.h"
#include "iptc/metadata_segment.h"
#include "iptc/photoshop_blocks.h"
#include "platform/input.h"
#include "platform/platform.h"

using namespace fixture;

namespace {

const Bytes kHeader = ToBytes(std::string("Photoshop 3.0\0", 14));
const Bytes kAdobeCm = ToBytes(std::string("Adobe_CM\0\x02", 10));

// The resources as Photoshop continues them: cut after `cut` bytes, each
// part in an APP13 of its own behind the header.
std::vector<Bytes> Continued(const Bytes& resources, size_t cut) {
    return {Join({kHeader, Bytes(resources.begin(), resources.begin() + long(cut))}),
            Join({kHeader, Bytes(resources.begin() + long(cut), resources.end())})};
}

Bytes Jpeg(const std::vector<std::pair<uint8_t, Bytes>>& segments) {
    JpegBuilder jpeg;
    jpeg.Soi().Segment(0xE0, ToBytes("JFIF\0"));
    for (const auto& [marker, payload] : segments) jpeg.Segment(marker, payload);
    return jpeg.ScanAndEoi().Build();
}

class PhotoshopBlocks : public ::testing::Test {
protected:
    TempDir dir_, temp_;
    ScopedTempFolder tempFolder_{temp_.Utf8Path("")};

    std::vector<iptc::PhotoshopBlock> Blocks(const Bytes& file) {
        auto input = platform::Input::FromMemory(file.data(), file.size());
        return iptc::FindPhotoshopBlocks(*input);
    }
    std::u16string Field(const std::u16string& path, int dataset) {
        auto data = std::make_unique<iptc::IptcData>();
        iptc::ClearIptcData(*data);
        iptc::LoadIptcData(path, *data);
        return std::u16string(iptc::FieldView(iptc::IptcField(*data, dataset)));
    }
    // Writes Object Name "new" as the IPTC sheet does; the file afterwards.
    Bytes Written(const std::u16string& path) {
        auto data = std::make_unique<iptc::IptcData>();
        iptc::ClearIptcData(*data);
        iptc::SetField(iptc::IptcField(*data, iptc::kObjectName), u"new");
        uint32_t length = 0, offset = 0;
        iptc::LoadMetadataSegment(path, length, offset, iptc::kApp13Marker, true, nullptr, false);
        std::u16string error;
        EXPECT_EQ(iptc::WriteIptcToJpeg(path, offset, length, *data, error), 1) << platform::Utf16ToUtf8(error);
        return ReadAll(path);
    }
    // The APP13 segment the writer makes for Object Name "new".
    Bytes NewSegment() {
        const std::u16string path = dir_.Write("plain.jpg", Jpeg({}));
        const Bytes out = Written(path);
        const size_t length = size_t{out[4]} << 8 | out[5];
        return Bytes(out.begin() + 2, out.begin() + 4 + long(length));
    }
};

TEST_F(PhotoshopBlocks, SegmentsJoinOnlyWhereAResourceRunsOn) {
    const Bytes iptc = PhotoshopResource(0x0404, IimBuilder().Dataset(2, 80, "Jens Tr\x9F" "biger").Build());
    const Bytes other = PhotoshopResource(0x0425, Bytes(16, 1));
    const auto split = Continued(Join({other, iptc}), other.size() + 20);  // inside the IPTC value
    const auto atBoundary = Continued(Join({other, iptc}), other.size());  // between the two resources
    const struct {
        const char* layout;
        Bytes file;
        std::vector<size_t> segmentsPerBlock;
        std::vector<bool> holdsIptc;
    } cases[] = {
        {"one segment", Jpeg({{0xED, PhotoshopApp13({other, iptc})}}), {1}, {true}},
        {"not Photoshop", Jpeg({{0xED, kAdobeCm}}), {}, {}},
        {"continued", Jpeg({{0xED, split[0]}, {0xED, split[1]}}), {2}, {true}},
        {"ends at the boundary", Jpeg({{0xED, atBoundary[0]}, {0xED, atBoundary[1]}}), {1, 1}, {false, true}},
        {"apart", Jpeg({{0xED, split[0]}, {0xE2, Bytes(4, 0)}, {0xED, split[1]}}), {1, 1}, {true, false}},
        {"unreadable resources", Jpeg({{0xED, Join({kHeader, Bytes(40, 'x')})}, {0xED, PhotoshopApp13({iptc})}}),
         {1, 1}, {false, true}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.layout);
        const auto blocks = Blocks(c.file);
        ASSERT_EQ(blocks.size(), c.segmentsPerBlock.size());
        for (size_t i = 0; i < blocks.size(); ++i) {
            EXPECT_EQ(blocks[i].segments.size(), c.segmentsPerBlock[i]) << i;
            EXPECT_EQ(blocks[i].holdsIptc, c.holdsIptc[i]) << i;
        }
    }
}

TEST_F(PhotoshopBlocks, AnAppThirteenOfAnotherKindIsKeptAndTheNewOneFollowsTheStartOfImage) {
    const Bytes original = Jpeg({{0xED, kAdobeCm}});
    const std::u16string path = dir_.Write("cm.jpg", original);
    EXPECT_EQ(Field(path, iptc::kObjectName), u"");
    const Bytes segment = NewSegment();
    EXPECT_EQ(Written(path), Join({Bytes(original.begin(), original.begin() + 2), segment,
                                   Bytes(original.begin() + 2, original.end())}));
    EXPECT_EQ(Field(path, iptc::kObjectName), u"new");
}

TEST_F(PhotoshopBlocks, TheIptcInALaterSegmentIsReadAndReplacedThereAndTheFirstStays) {
    const Bytes first = PhotoshopApp13({PhotoshopResource(0x03EA, ToBytes("<plist/>"))});
    const Bytes second = PhotoshopApp13({PhotoshopResource(0x0404, IimBuilder().Dataset(2, 110, "A credit").Build())});
    const Bytes head = Jpeg({{0xED, first}});
    const Bytes original = Jpeg({{0xED, first}, {0xED, second}});
    const std::u16string path = dir_.Write("two.jpg", original);
    EXPECT_EQ(Field(path, iptc::kCredit), u"A credit");
    // The first segment keeps its place and bytes; the new one stands where
    // the second stood.
    const size_t secondAt = head.size() - JpegBuilder().ScanAndEoi().Build().size();
    const size_t secondEnd = secondAt + 4 + second.size();
    EXPECT_EQ(Written(path), Join({Bytes(original.begin(), original.begin() + long(secondAt)), NewSegment(),
                                   Bytes(original.begin() + long(secondEnd), original.end())}));
    EXPECT_EQ(Field(path, iptc::kCredit), u"");
    EXPECT_EQ(Field(path, iptc::kObjectName), u"new");
}

TEST_F(PhotoshopBlocks, AValueContinuedInTheNextSegmentIsReadWholeAndBothSegmentsAreReplaced) {
    const Bytes resources = Join({PhotoshopResource(0x0425, Bytes(16, 1)),
                                  PhotoshopResource(0x0404, IimBuilder().Dataset(2, 80, "Jens Tr\xC3\xBC" "biger")
                                                                .Dataset(1, 90, "\x1B%G").Build())});
    const auto parts = Continued(resources, resources.size() - 12);  // "…biger" and 1:90 in the second
    const Bytes original = Jpeg({{0xED, parts[0]}, {0xED, parts[1]}, {0xE2, ToBytes("after")}});
    const std::u16string path = dir_.Write("split.jpg", original);
    EXPECT_EQ(Field(path, iptc::kByline), u"Jens Tr\u00FC" "biger");
    const Bytes out = Written(path);
    const auto blocks = Blocks(out);
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[0].segments.size(), 1u);
    const Bytes before = Jpeg({});  // SOI, APP0 and the scan: only the scan follows the segments
    const size_t at = before.size() - JpegBuilder().ScanAndEoi().Build().size();
    EXPECT_EQ(out, Join({Bytes(original.begin(), original.begin() + long(at)), NewSegment(),
                         JpegBuilder().Segment(0xE2, ToBytes("after")).ScanAndEoi().Build()}));
    EXPECT_EQ(Field(path, iptc::kByline), u"");
}

TEST_F(PhotoshopBlocks, EveryOtherIptcBlockGoesTooAndBlocksWithoutIptcStay) {
    const Bytes a = PhotoshopApp13({PhotoshopResource(0x0404, IimBuilder().Dataset(2, 5, "first").Build())});
    const Bytes b = PhotoshopApp13({PhotoshopResource(0x040C, Bytes(8, 2))});
    const Bytes c = PhotoshopApp13({PhotoshopResource(0x0404, IimBuilder().Dataset(2, 5, "second").Build())});
    const std::u16string path = dir_.Write("three.jpg", Jpeg({{0xED, a}, {0xE2, Bytes(2, 0)}, {0xED, b},
                                                              {0xE2, Bytes(2, 0)}, {0xED, c}}));
    EXPECT_EQ(Field(path, iptc::kObjectName), u"first");
    const Bytes segment = NewSegment();
    EXPECT_EQ(Written(path), Jpeg({{0xED, Bytes(segment.begin() + 4, segment.end())},
                                   {0xE2, Bytes(2, 0)}, {0xED, b}, {0xE2, Bytes(2, 0)}}));
}

TEST_F(PhotoshopBlocks, ABlockThatMovedSinceItWasReadIsNotWritten) {
    const Bytes app13 = PhotoshopApp13({PhotoshopResource(0x0404, IimBuilder().Dataset(2, 5, "x").Build())});
    const Bytes original = Jpeg({{0xED, app13}});
    const std::u16string path = dir_.Write("moved.jpg", original);
    uint32_t length = 0, offset = 0;
    iptc::LoadMetadataSegment(path, length, offset, iptc::kApp13Marker, true, nullptr, false);
    auto data = std::make_unique<iptc::IptcData>();
    iptc::ClearIptcData(*data);
    for (const auto& [at, size] : {std::pair<uint32_t, uint32_t>{offset + 2, length}, {offset, length + 1}, {0, 0}}) {
        std::u16string error;
        EXPECT_EQ(iptc::WriteIptcToJpeg(path, at, size, *data, error), 0);
        EXPECT_EQ(error, u"Can't write IPTC data!\n\nThe file: '" + path + u"' has changed since it was read.");
        EXPECT_EQ(ReadAll(path), original);
    }
}

}  // namespace
