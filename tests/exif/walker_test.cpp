// The directory walker: where it finds the TIFF header, which directories it
// reads in which order, its row limits, and files that lie.
#include <gtest/gtest.h>

#include "exif_reading.h"

namespace exiftest {
namespace {

using fixture::kAscii;
using fixture::kLong;
using fixture::kRational;
using fixture::kShort;
using fixture::kUndefined;

std::vector<std::string> Names(const Reading& r) {
    std::vector<std::string> names;
    for (const Row& row : r.rows) names.push_back(row.name);
    return names;
}

TEST(Walker, BothByteOrdersGiveTheSameRows) {
    const Reading little = ReadBytes(Sample(ByteOrder::kLittle).File());
    const Reading big = ReadBytes(Sample(ByteOrder::kBig).File());
    EXPECT_EQ(little.result, 1);
    EXPECT_EQ(little.bigEndian, 0);
    EXPECT_EQ(big.bigEndian, 1);
    ASSERT_EQ(little.rows.size(), static_cast<size_t>(kSampleRows));
    EXPECT_EQ(little.rows, big.rows);
    // A SHORT stored in the entry of a big-endian file is the upper half of the word.
    EXPECT_EQ(big.Value(274), "Right top");
    EXPECT_EQ(big.Value(400), "2.3.0.0");
}

TEST(Walker, FindsTheExifApp1BehindOtherSegments) {
    TiffBuilder tiff;
    tiff.Ascii(0, 271, "Vantaview");
    const Bytes file = fixture::JpegBuilder()
                           .Soi()
                           .Soi()
                           .Segment(0xE0, fixture::ToBytes("JFIF"))
                           .App1Xmp("<x:xmpmeta/>")
                           .App1Exif(tiff.Build())
                           .ScanAndEoi()
                           .Build();
    EXPECT_EQ(ReadBytes(file).Value(271), "Vantaview");
}

TEST(Walker, NoTiffHeaderMeansNoRows) {
    const Bytes noExif = fixture::JpegBuilder().Soi().App1Xmp("<x/>").Com("hi").ScanAndEoi().Build();
    const Bytes tinyApp1 = fixture::JpegBuilder().Soi().Segment(0xE1, fixture::ToBytes("Exif")).Build();
    for (const Bytes& file : {noExif, tinyApp1, fixture::ToBytes("plain text, not an image")}) {
        const Reading r = ReadBytes(file);
        EXPECT_EQ(r.result, 0);
        EXPECT_TRUE(r.rows.empty());
    }
    EXPECT_EQ(ReadRows(u"/nonexistent/vv.jpg").result, 0);
}

// IFD0 with `entries` entries (a Make and unknown tags, which sort between
// known ones), then a thumbnail directory.
Bytes WideIfd0(int entries) {
    TiffBuilder tiff;
    const int ifd1 = tiff.AddIfd();
    tiff.Ascii(0, 271, "Vantaview").Next(0, ifd1);
    for (int i = 1; i < entries; ++i) tiff.Short(0, static_cast<uint16_t>(1000 + i), {1});
    tiff.Short(ifd1, 259, {6});
    return Jpeg(tiff.Build());
}

TEST(Walker, Ifd0OfTooManyEntriesIsSkippedWhole) {
    // Unknown tags give no row and leave no gap.
    EXPECT_EQ(Names(ReadBytes(WideIfd0(255))), (std::vector<std::string>{"Make", "", "Thumbnail:", "Compression"}));
    EXPECT_EQ(Names(ReadBytes(WideIfd0(256))), (std::vector<std::string>{"", "Thumbnail:", "Compression"}));
}

TEST(Walker, HeadingsStayWhenTheirDirectoryNoLongerFits) {
    // 250 IFD0 rows; a GPS directory of 10 entries would pass 256.
    TiffBuilder tiff;
    const int gps = tiff.AddIfd(), exif = tiff.AddIfd(), ifd1 = tiff.AddIfd();
    tiff.Pointer(0, 34853, gps).Pointer(0, 34665, exif).Next(0, ifd1);
    for (int i = 0; i < 248; ++i) tiff.Short(0, 274, {1});
    for (int i = 0; i < 10; ++i) tiff.Ascii(gps, 1, "N");
    tiff.Undefined(exif, 37500, fixture::ToBytes("XXXXX-not-a-known-maker"));
    const Reading r = ReadBytes(Jpeg(tiff.Build()));
    // 250 + maker-note pointer, then three separator/heading pairs in this
    // order, the last for an empty thumbnail directory.
    ASSERT_EQ(r.rows.size(), 257u);
    EXPECT_EQ(r.rows[252].name, "GPS information:");
    EXPECT_EQ(r.rows[254].name, "Maker Note (Vendor):");
    EXPECT_EQ(r.rows[256].name, "Thumbnail:");
}

// A raw file whose IFD0 names an embedded JPEG (tag 46), with GPS and thumbnail
// directories of its own; the JPEG follows the TIFF block.
Bytes RawWithJpeg(bool pointAtJpeg) {
    TiffBuilder inner;
    const int innerExif = inner.AddIfd();
    inner.RawEntry(0, 46, kUndefined, 1, 8).Ascii(0, 271, "Inner").Pointer(0, 34665, innerExif);
    inner.Rational(innerExif, 33437, {{4, 1}});
    const Bytes embedded = Jpeg(inner.Build());
    auto build = [&](uint32_t offset) {
        TiffBuilder raw;
        const int exif = raw.AddIfd(), gps = raw.AddIfd(), ifd1 = raw.AddIfd();
        raw.RawEntry(0, 46, kUndefined, static_cast<uint32_t>(embedded.size()), offset)
            .Ascii(0, 271, "Outer")
            .Pointer(0, 34665, exif)
            .Pointer(0, 34853, gps)
            .Next(0, ifd1);
        raw.Rational(exif, 33437, {{2, 1}});
        raw.Ascii(gps, 1, "N");
        raw.Short(ifd1, 259, {6});
        return raw.Build();
    };
    Bytes file = build(0);
    if (pointAtJpeg) file = build(static_cast<uint32_t>(file.size()));
    fixture::Append(file, embedded);
    return file;
}

TEST(Walker, EmbeddedJpegStandsInForTheRestOfTheRawFile) {
    const Reading r = ReadBytes(RawWithJpeg(true));
    EXPECT_EQ(Names(r), (std::vector<std::string>{"Panasonic JPG offset", "Make", "Exif-IFD-Offset",
                                                  "GPS-IFD-Offset", "FNumber", "Panasonic JPG offset", "Make",
                                                  "Exif-IFD-Offset", "FNumber"}));
    EXPECT_EQ(r.rows[6].value, "Inner");
    EXPECT_EQ(r.rows[8].value, "F 4.00");

    // Offset 0: no embedded JPEG, the raw file's own directories are read.
    const Reading plain = ReadBytes(RawWithJpeg(false));
    EXPECT_EQ(plain.Value(401), "N");
    EXPECT_GE(plain.IndexOf("Thumbnail:"), 0);
    EXPECT_EQ(plain.Value(271), "Outer");
}

TEST(Walker, LyingOffsetsAndCountsEndOnlyTheirValue) {
    TiffBuilder tiff;
    const int exif = tiff.AddIfd();
    tiff.RawEntry(0, 270, kAscii, 0xFFFFFFFF, 0x7FFFFFF0)
        .RawEntry(0, 318, kRational, 0xFFFFFFFF, 8)
        .RawEntry(0, 273, kLong, 0xFFFFFFFF, 0xFFFFFFF0)
        .RawEntry(0, 258, kShort, 0xFFFFFFFF, 8)
        .RawEntry(0, 40093, 1, 0xFFFFFFFF, 8)
        .RawEntry(0, 34853, kLong, 1, 0xFFFFFF00)
        .Pointer(0, 34665, exif);
    tiff.RawEntry(exif, 37510, kUndefined, 0xFFFFFFFF, 8).RawEntry(exif, 33434, kRational, 1, 0xFFFFFFF8);
    const Reading r = ReadBytes(Jpeg(tiff.Build()));
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.Value(270), "");
    EXPECT_EQ(r.Value(33434), "");
    EXPECT_NE(r.Value(37510), "<none>");
    EXPECT_GE(r.IndexOf("GPS information:"), 0);  // the seek past the end succeeds; nothing is read
}

TEST(Walker, DirectoriesPointingAtThemselvesAreReadOncePerStep) {
    TiffBuilder tiff;
    // IFD0 sits at offset 8; its Exif, GPS and next-directory links all lead back to it.
    tiff.Ascii(0, 271, "Vantaview").RawEntry(0, 34665, kLong, 1, 8).RawEntry(0, 34853, kLong, 1, 8).Next(0, 0);
    const Reading r = ReadBytes(Jpeg(tiff.Build()));
    int makes = 0;
    for (const Row& row : r.rows) makes += row.tag == 271;
    EXPECT_EQ(makes, 3);  // IFD0, the Exif IFD and IFD1; as a GPS directory it has no GPS tags
}

TEST(Walker, EveryTruncationOfAFileIsSafe) {
    Sample sample(ByteOrder::kBig);
    sample.tiff.Ascii(0, 270, std::string(300, 'x')).Undefined(sample.exif, 37510, Bytes(300, 0));
    const Bytes file = sample.File();
    fixture::TempDir dir;
    for (size_t n = 0; n <= file.size(); n += 7) {
        const Reading r = ReadRows(dir.Write("cut.jpg", Bytes(file.begin(), file.begin() + n)));
        EXPECT_LE(r.rows.size(), static_cast<size_t>(kSampleRows + 2)) << n;
    }
}

}  // namespace
}  // namespace exiftest
