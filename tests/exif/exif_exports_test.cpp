// The EXIF data exports as the viewer calls them: line modes and capacity,
// one tag, the GPS position and its actions, and the EXIF extent.
#include <gtest/gtest.h>

#include <vector>

#include "exif_fixtures.h"
#include "platform/platform.h"
#include "plugin/plugin_api.h"

namespace exiftest {
namespace {

std::u16string U16(const std::string& s) { return platform::Utf8ToUtf16(s); }

class ExifExports : public ::testing::Test {
protected:
    fixture::TempDir dir;
    const std::u16string sample = dir.Write("sample.jpg", Sample(ByteOrder::kBig).File());
    const std::u16string noExif = dir.Write("plain.jpg", fixture::JpegBuilder().Soi().Com("x").ScanAndEoi().Build());

    // The buffer is filled with '#' first, so an uncleared tail shows.
    std::u16string Data(const std::u16string& path, int32_t capacity, int32_t mode, int32_t* rows = nullptr) {
        std::u16string out(static_cast<size_t>(capacity), u'#');
        const int32_t n = vv::LoadData_EXIF_W(path.c_str(), out.data(), capacity, mode);
        if (rows) *rows = n;
        return out;
    }
    std::u16string Tag(const std::u16string& path, int32_t tag, int32_t capacity = 300) {
        std::u16string out(static_cast<size_t>(capacity), u'x');
        EXPECT_EQ(vv::LoadTag_EXIF_W(path.c_str(), tag, out.data(), capacity), 1);
        return out.substr(0, out.find(u'\0'));
    }
};

std::u16string Text(const std::u16string& buffer) { return buffer.substr(0, buffer.find(u'\0')); }

TEST_F(ExifExports, LoadDataWritesEachMode) {
    int32_t rows = 0;
    EXPECT_EQ(Text(Data(sample, 4096, 3, &rows)), U16(Sample(ByteOrder::kBig).Mode3()));
    EXPECT_EQ(rows, kSampleRows);
    const std::u16string mode2 = Text(Data(sample, 4096, 2));
    EXPECT_EQ(mode2.substr(0, 14), u"271=Vantaview\n");
    EXPECT_NE(mode2.find(u"\n402=33  27  0 (33.450000)\n"), std::u16string::npos);
    EXPECT_EQ(mode2.find(u"information"), std::u16string::npos);  // headings only in mode 3
    EXPECT_EQ(Text(Data(sample, 4096, 1)).substr(0, 15), u"Vantaview\nVV-1\n");
    EXPECT_EQ(Text(Data(sample, 4096, 7, &rows)), u"");
    EXPECT_EQ(rows, kSampleRows);
}

TEST_F(ExifExports, LoadDataStopsAtTheFirstLineThatDoesNotFit) {
    const std::u16string full = U16(Sample(ByteOrder::kBig).Mode3());
    const std::u16string lastLine = u"Compression - 6 (JPG)\n";
    int32_t rows = 0;
    EXPECT_EQ(Text(Data(sample, static_cast<int32_t>(full.size() + 1), 3, &rows)), full);
    EXPECT_EQ(rows, kSampleRows);
    const std::u16string cut = Data(sample, static_cast<int32_t>(full.size()), 3, &rows);
    EXPECT_EQ(Text(cut), full.substr(0, full.size() - lastLine.size()));
    EXPECT_EQ(cut.find(u'#'), std::u16string::npos);  // cleared to the end
    EXPECT_EQ(rows, kSampleRows - 1);
    EXPECT_EQ(Text(Data(sample, 5, 3, &rows)), u"");
    EXPECT_EQ(rows, 0);
}

TEST_F(ExifExports, LoadDataWithoutExifGivesNothing) {
    for (const std::u16string& path : {noExif, dir.Path("missing.jpg")}) {
        int32_t rows = -1;
        EXPECT_EQ(Data(path, 64, 3, &rows), std::u16string(64, u'\0'));
        EXPECT_EQ(rows, 0);
    }
}

TEST_F(ExifExports, LoadTagFindsTheFirstRowByTheLow16Bits) {
    EXPECT_EQ(Tag(sample, 0x10110), u"VV-1");
    EXPECT_EQ(Tag(sample, 296), u"Inches");
    EXPECT_EQ(Tag(sample, 259), u"6 (JPG)");  // from the thumbnail directory
    EXPECT_EQ(Tag(sample, 271, 4), u"Van");  // capacity 4: three characters and the terminator
    EXPECT_EQ(Tag(sample, 1234), u"");
    EXPECT_EQ(Tag(noExif, 271), u"");
    EXPECT_EQ(Tag(dir.Path("missing.jpg"), 271), u"");
    // A description's long text, and 499 for the position.
    TiffBuilder tiff;
    tiff.Ascii(0, 270, std::string(300, 'd'));
    EXPECT_EQ(Tag(dir.Write("long.jpg", Jpeg(tiff.Build())), 270, 1000), std::u16string(300, u'd'));
    EXPECT_EQ(Tag(sample, 499), U16(kSamplePosition));
    EXPECT_EQ(Tag(noExif, 499), u"100.000000 0.000000");
    EXPECT_EQ(vv::LoadTag_EXIF_W(sample.c_str(), 499, nullptr, -1), 1);
}

// Calls the action code and returns what the shell was asked to open.
std::vector<std::u16string> Act(const std::u16string& path, int32_t tag, int32_t action) {
    std::vector<std::u16string> opened;
    platform::SetShellOpenHook([&](std::u16string_view target) {
        opened.emplace_back(target);
        return true;
    });
    EXPECT_EQ(vv::LoadTag_EXIF_W(path.c_str(), tag, nullptr, action), 1);
    platform::SetShellOpenHook(nullptr);
    return opened;
}

TEST_F(ExifExports, ActionsNeedBothLatitudeAndLongitude) {
    const std::vector<std::u16string> web = Act(sample, 402, -2);
    ASSERT_EQ(web.size(), 1u);
    EXPECT_NE(web[0].find(u"-33.45"), std::u16string::npos);
    EXPECT_NE(web[0].find(u"-70.67"), std::u16string::npos);

    const std::vector<std::u16string> kml = Act(sample, 271, -1);
    ASSERT_EQ(kml.size(), 1u);
    EXPECT_EQ(kml[0].substr(kml[0].size() - 4), u".kml");
    EXPECT_FALSE(platform::FileExists(kml[0]));  // removed after the wait

    TiffBuilder latitudeOnly;
    const int gps = latitudeOnly.AddIfd();
    latitudeOnly.Pointer(0, 34853, gps).Rational(gps, 2, {{1, 1}, {2, 1}, {3, 1}});
    const std::u16string half = dir.Write("half.jpg", Jpeg(latitudeOnly.Build()));
    EXPECT_TRUE(Act(half, 402, -2).empty());  // weight 2 of 6
    EXPECT_TRUE(Act(sample, 1234, -2).empty());  // the tag is not in the file
}

TEST_F(ExifExports, GetExifInfosGivesTheHeaderAndTheExtent) {
    uint32_t size = 7, out3 = 7, out4 = 7, out5 = 7;
    EXPECT_EQ(vv::GetExifInfos(sample.c_str(), &size, nullptr, &out3, &out4, &out5, 2), kJpegTiffOffset);
    EXPECT_EQ(size, 2048u);  // small blocks are raised to 2048
    EXPECT_EQ(out3 + out4 + out5, 0u);

    // "Exif" and a TIFF block with one large value: the extent reaches its end.
    for (uint32_t valueSize : {10000u, 70000u}) {
        TiffBuilder tiff;
        tiff.Undefined(0, 41995, Bytes(valueSize, 1));
        Bytes file = fixture::ToBytes(std::string("Exif\0\0", 6));
        const Bytes block = tiff.Build();
        fixture::Append(file, block);
        const std::u16string path = dir.Write("raw.bin", file);
        EXPECT_EQ(vv::GetExifInfos(path.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 0), 6u);
        EXPECT_EQ(size, std::min<uint32_t>(static_cast<uint32_t>(block.size()) + 8, 65535u)) << valueSize;
    }

    EXPECT_EQ(vv::GetExifInfos(noExif.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 0), 0u);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(vv::GetExifInfos(sample.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 3), 0u);  // not a PNG
    EXPECT_EQ(vv::GetExifInfos(dir.Path("missing.jpg").c_str(), &size, nullptr, nullptr, nullptr, nullptr, 0), 0u);
}

}  // namespace
}  // namespace exiftest
