// EXIF read end to end from each container: the directory walker finds the
// same rows as in a JPEG, and GetExifInfos answers with the locator its
// format code names.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "exif_reading.h"
#include "fixture/container_fixture.h"
#include "plugin/plugin_api.h"

namespace {

using namespace fixture;

constexpr int32_t kHeifCode = 115, kPngCode = 3, kCr3Code = 118;

Bytes Ifd0(ByteOrder order = ByteOrder::kLittle) {
    TiffBuilder tiff(order);
    tiff.Ascii(0, 271, "Vantaview").Ascii(0, 272, "Test");
    return tiff.Build();
}

// The rows a file gives, tag -> value text; empty when nothing was read.
std::map<uint32_t, std::string> Rows(const std::u16string& path) {
    std::map<uint32_t, std::string> rows;
    for (const exiftest::Row& row : exiftest::ReadRows(path).rows) rows.emplace(row.tag, row.value);
    return rows;
}

TEST(ContainerReading, EveryContainerGivesTheRowsOfIfd0) {
    TempDir dir;
    const Bytes tiff = Ifd0(ByteOrder::kBig);
    const std::pair<const char*, Bytes> files[] = {
        {"heic", HeifBuilder().IlocBeforeIinf().Item(1, "hvc1", ToBytes("x")).Item(2, "Exif", HeifExifItem(tiff)).Build()},
        {"avif", HeifBuilder("avif").FieldSizes(4, 4, 4).Item(5, "Exif", HeifExifItem(tiff)).Build()},
        {"png", PngFile({PngChunk("IDAT", Bytes(20, 0)), PngChunk("eXIf", tiff)})},
        {"webp", WebpFile({RiffChunk("VP8X", Bytes(10, 0)), RiffChunk("VP8 ", Bytes(2001, 0)), RiffChunk("EXIF", tiff)})},
        {"jxl", JxlContainer({IsoBox("jxlc", Bytes(3000, 0)), JxlExifBox(tiff)})},
        {"jxl codestream", JxlCodestream(Join({ToBytes("Exif"), U32Be(0), tiff}))},
        {"mrw", Join({{0, 'M', 'R', 'M'}, U32Be(100), {0, 'T', 'T', 'W'}, U32Be(64), tiff})},
    };
    for (const auto& [name, bytes] : files) {
        auto rows = Rows(dir.Write(name, bytes));
        EXPECT_EQ(rows[271], "Vantaview") << name;
        EXPECT_EQ(rows[272], "Test") << name;
    }
    EXPECT_TRUE(Rows(dir.Write("no exif.png", PngFile({}))).empty());
}

TEST(ContainerReading, Cr3DirectoriesEachBehindTheirOwnHeader) {
    TiffBuilder exifIfd(ByteOrder::kBig), gps;
    exifIfd.Rational(0, 33434, {{1, 250}}).Rational(0, 33437, {{28, 10}});
    gps.Ascii(0, 1, "N").Rational(0, 2, {{48, 1}, {51, 1}, {0, 1}});
    TempDir dir;
    auto rows = Rows(dir.Write("a.cr3", Cr3File(UuidBox(kCanonUuidHex, Join({IsoBox("CMT1", Ifd0()),
                                                                          IsoBox("CMT2", exifIfd.Build()),
                                                                          IsoBox("CMT4", gps.Build())})))));
    EXPECT_EQ(rows[271], "Vantaview");
    EXPECT_FALSE(rows[33434].empty());
    EXPECT_FALSE(rows[33437].empty());
    EXPECT_FALSE(rows[exif::kGpsTagBase + 2].empty());
}

TEST(ContainerReading, GetExifInfosAnswersWithTheLocatorOfItsFormatCode) {
    TempDir dir;
    const Bytes item = HeifExifItem(Ifd0());
    const Bytes heif = HeifBuilder().Item(3, "Exif", item).Build(), png = PngFile({PngChunk("eXIf", Ifd0())});
    Bytes cmts;
    for (const char* type : {"CMT1", "CMT2", "CMT3", "CMT4"}) Append(cmts, IsoBox(type, Ifd0()));
    const Bytes cr3 = Cr3File(UuidBox(kCanonUuidHex, cmts));
    const std::u16string heifPath = dir.Write("a.heic", heif), pngPath = dir.Write("a.png", png),
                         cr3Path = dir.Write("a.cr3", cr3);
    uint32_t size = 1, out[4] = {1, 1, 1, 1};
    auto infos = [&](const std::u16string& path, int32_t code) {
        return vv::GetExifInfos(path.c_str(), &size, &out[0], &out[1], &out[2], &out[3], code);
    };
    auto after = [](const Bytes& file, const char* type) { return OffsetOf(file, ToBytes(type)) + 4; };

    EXPECT_EQ(infos(heifPath, kHeifCode), OffsetOf(heif, Ifd0()));
    EXPECT_EQ(size, item.size());
    EXPECT_EQ(infos(pngPath, kPngCode), OffsetOf(png, Ifd0()));
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(infos(cr3Path, kCr3Code), after(cr3, "CMT1"));
    EXPECT_EQ(size, OffsetOf(cr3, ToBytes("mdat")) - OffsetOf(cr3, ToBytes("moov")));
    const uint32_t expected[4] = {uint32_t(after(cr3, "CMT2")), uint32_t(after(cr3, "CMT3")),
                                  uint32_t(after(cr3, "CMT4")), 0};
    EXPECT_TRUE(std::equal(out, out + 4, expected));
    // Another container's code: that locator finds nothing, and every output is cleared.
    EXPECT_EQ(infos(heifPath, kCr3Code), 0u);
    EXPECT_EQ(out[0] | out[1] | out[2] | out[3] | size, 0u);
    EXPECT_EQ(infos(pngPath, kHeifCode), 0u);
}

}  // namespace
