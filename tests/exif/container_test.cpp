// The container locators on files built box by box and chunk by chunk: each
// case states where the TIFF header is and checks that exactly that offset
// comes back, or that a malformed container yields nothing.
#include "exif/container.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "exif_reading.h"
#include "fixture/container_fixture.h"
#include "fixture/iptc_fixture.h"
#include "plugin/plugin_api.h"

namespace {

using namespace fixture;
using BO = ByteOrder;

Bytes Tiff(BO order = BO::kLittle) {
    TiffBuilder tiff(order);
    tiff.Ascii(0, 271, "Vantaview");
    return tiff.Build();
}
const Bytes kExifTiff = Join({ToBytes("Exif"), {0, 0}, Tiff()});  // as in a JPEG APP1
const Bytes kItem = HeifExifItem(Tiff());

// The first TIFF header in the file: the test's own oracle.
uint32_t TiffAt(const Bytes& file, BO order = BO::kLittle) { return static_cast<uint32_t>(OffsetOf(file, Tiff(order))); }
uint32_t After(const Bytes& file, const char* type) { return static_cast<uint32_t>(OffsetOf(file, ToBytes(type)) + 4); }

Bytes Frees(int n) {
    Bytes out;
    for (int i = 0; i < n; ++i) Append(out, IsoBox("free", {}));
    return out;
}
Bytes Cmts(int othersBefore = 0) {
    Bytes children = Frees(othersBefore);
    for (const char* type : {"CMT1", "CMT2", "CMT3", "CMT4"}) Append(children, IsoBox(type, Tiff()));
    return children;
}
Bytes HeifWith(HeifBuilder builder, const Bytes& item = kItem) { return builder.Item(1, "hvc1", ToBytes("pixels")).Item(2, "Exif", item).Build(); }

enum class Kind { kHeif, kCr3, kPng, kWebp, kJxl, kDispatch };

class Container : public ::testing::Test {
protected:
    uint32_t Locate(Kind kind, const Bytes& bytes) {
        const std::u16string path = dir_.Write("f" + std::to_string(serial_++), bytes);
        auto file = platform::OpenFile(path, platform::FileMode::kRead);
        switch (kind) {
            case Kind::kHeif: return exif::LocateHeifExif(*file, length_);
            case Kind::kCr3: return exif::LocateCr3Exif(*file, boxes_);
            case Kind::kPng: return exif::LocatePngExif(*file);
            case Kind::kWebp: return exif::LocateWebpExif(*file);
            case Kind::kJxl: return exif::LocateJpegXlExif(*file);
            case Kind::kDispatch: return exif::LocateTiffHeaderInContainer(path, pointers_);
        }
        return 0;
    }
    TempDir dir_;
    int serial_ = 0;
    uint32_t length_ = 0;
    exif::Cr3Boxes boxes_;
    exif::ContainerPointers pointers_;
};

TEST_F(Container, FindsTheTiffHeaderInEachLayout) {
    const Bytes big = Tiff(BO::kBig);
    Bytes meta0 = HeifWith(HeifBuilder());
    std::copy_n(U32Be(0).begin(), 4, meta0.begin() + OffsetOf(meta0, ToBytes("meta")) - 4);  // runs to the end
    Bytes lyingWord = kItem;
    lyingWord[3] = 200;
    const std::pair<Kind, Bytes> cases[] = {
        {Kind::kHeif, HeifWith(HeifBuilder().IlocVersion(0))},
        {Kind::kHeif, HeifWith(HeifBuilder().IlocVersion(1).IlocBeforeIinf())},
        {Kind::kHeif, HeifWith(HeifBuilder().IlocVersion(2).FieldSizes(8, 8, 0).InfeVersion(3))},
        {Kind::kHeif, HeifWith(HeifBuilder().IlocVersion(0).FieldSizes(4, 4, 4))},  // position in the base offset
        {Kind::kHeif, HeifWith(HeifBuilder("avif").LargeSizes())},
        {Kind::kHeif, HeifWith(HeifBuilder().QuickTimeMeta().TopLevelBox(IsoBox("free", Bytes(3000, 0))))},
        {Kind::kHeif, HeifWith(HeifBuilder(), HeifExifItem(Tiff(), 40))},  // beyond the bytes searched
        {Kind::kHeif, HeifWith(HeifBuilder(), lyingWord)},                  // found by the search
        {Kind::kHeif, meta0},
        {Kind::kCr3, Cr3File(UuidBox(kCanonUuidHex, LargeIsoBox("CMT1", Tiff())))},
        {Kind::kCr3, Join({Cr3File(IsoBox("mvhd", {})), IsoBox("moov", UuidBox(kCanonUuidHex, Cmts()))})},
        {Kind::kPng, PngFile({PngChunk("eXIf", Tiff()), PngChunk("IDAT", Bytes(33, 1))})},
        {Kind::kPng, PngFile({PngChunk("IDAT", Bytes(33, 1)), PngChunk("eXIf", kExifTiff)})},
        {Kind::kWebp, WebpFile({RiffChunk("VP8X", Bytes(10, 0)), RiffChunk("ALPH", Bytes(0x101, 7)), RiffChunk("EXIF", Tiff())})},
        {Kind::kWebp, WebpFile({RiffChunk("EXIF", kExifTiff)})},
        {Kind::kJxl, JxlContainer({JxlExifBox(Tiff(), {'E', 'x', 'i', 'f', 0, 0})})},
        {Kind::kDispatch, Join({Ftyp("isom"), IsoBox("udta", kExifTiff)})},  // other brands are scanned
        {Kind::kDispatch, PngFile({PngChunk("eXIf", Tiff())})},
        {Kind::kDispatch, WebpFile({RiffChunk("EXIF", Tiff())})},
        {Kind::kDispatch, JxlCodestream(Join({Bytes(30, 0), ToBytes("Exif"), U32Be(0), Tiff()}))},
        {Kind::kDispatch, Join({{0, 'M', 'R', 'M'}, U32Be(100), {0, 'T', 'T', 'W'}, U32Be(64), Tiff()})},
        {Kind::kDispatch, Join({ToBytes("<exif:ExifVersion>"), kExifTiff})},  // no byte-order mark: passed over
        {Kind::kDispatch, Join({Bytes(1012, ' '), kExifTiff})},                // the last position scanned
    };
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(Locate(cases[i].first, cases[i].second), TiffAt(cases[i].second)) << "case " << i;
    for (const char* brand : {"mif1", "msf1", "heic", "heix", "hevc", "avif"})
        EXPECT_NE(Locate(Kind::kDispatch, HeifWith(HeifBuilder(brand))), 0u) << brand;
    // The JPEG XL Exif box after a large codestream and behind a compressed one.
    Bytes jxl = JxlContainer({JxlBrobBox("Exif", Bytes(40, 'M')), IsoBox("jxlc", Bytes(5000, 0)), JxlExifBox(big)});
    EXPECT_EQ(Locate(Kind::kDispatch, jxl), TiffAt(jxl, BO::kBig));
    EXPECT_TRUE(pointers_.jpegXl);
    EXPECT_FALSE(pointers_.separateHeaders);
}

TEST_F(Container, Cr3GivesTheWalkerTheHeaderOfEachDirectory) {
    const Bytes file = Cr3File(UuidBox(kCanonUuidHex, Cmts()));
    EXPECT_EQ(Locate(Kind::kDispatch, file), After(file, "CMT1"));
    EXPECT_TRUE(pointers_.separateHeaders);
    EXPECT_EQ(pointers_.exifIfd, After(file, "CMT2"));
    EXPECT_EQ(pointers_.makerNote, After(file, "CMT3"));
    EXPECT_EQ(pointers_.gpsIfd, After(file, "CMT4"));
    EXPECT_EQ(pointers_.ifd1, 0u);
}

TEST_F(Container, MalformedContainersYieldNothing) {
    Bytes notPng = PngFile({PngChunk("eXIf", Tiff())}), avi = WebpFile({RiffChunk("EXIF", Tiff())});
    notPng[2] = 'X';
    std::copy_n("AVI ", 4, avi.begin() + 8);
    const Bytes heif = HeifWith(HeifBuilder());
    const std::pair<Kind, Bytes> cases[] = {
        {Kind::kHeif, HeifBuilder().Item(1, "hvc1", kItem).Build()},
        {Kind::kHeif, HeifBuilder().Item(1, "Exif", {}).Build()},
        {Kind::kHeif, HeifWith(HeifBuilder().ConstructionMethod(1))},
        {Kind::kHeif, HeifWith(HeifBuilder().FieldSizes(3, 4, 0))},
        {Kind::kHeif, HeifBuilder().ClaimedItemCount(0xFFFF).Item(1, "hvc1", kItem).Build()},
        {Kind::kHeif, HeifWith(HeifBuilder().TopLevelBox(IsoBoxWithSize(4, "free", {})))},
        {Kind::kHeif, HeifWith(HeifBuilder().TopLevelBox(IsoBoxWithSize(1, "free", Bytes(8, 0))))},
        {Kind::kHeif, Bytes(heif.begin(), heif.begin() + OffsetOf(heif, ToBytes("mdat")) + 6)},
        // Another maker's uuid: no EXIF, even with Canon's moov after it.
        {Kind::kCr3, Join({Cr3File(UuidBox("00112233445566778899aabbccddeeff", Cmts())),
                           IsoBox("moov", UuidBox(kCanonUuidHex, Cmts()))})},
        {Kind::kCr3, Cr3File(UuidBox(kCanonUuidHex, IsoBox("CMT2", Tiff())))},
        {Kind::kPng, PngFile({PngChunkWithLength(0x80000000u, "tEXt", {}), PngChunk("eXIf", Tiff())})},
        {Kind::kPng, PngFile({PngChunkWithLength(0x1000, "tEXt", {}), PngChunk("eXIf", Tiff())})},
        {Kind::kPng, PngFile({PngChunk("eXIf", {})})},
        {Kind::kPng, Join({PngFile({}), PngChunk("eXIf", Tiff())})},  // after IEND
        {Kind::kPng, notPng},
        {Kind::kWebp, WebpFile({RiffChunkWithSize(0xFFFFFFF0u, "VP8 ", {}), RiffChunk("EXIF", Tiff())})},
        {Kind::kWebp, WebpFile({RiffChunk("XMP ", kExifTiff)})},
        {Kind::kWebp, WebpFile({RiffChunk("EXIF", {})})},
        {Kind::kWebp, avi},
        {Kind::kJxl, JxlContainer({IsoBoxWithSize(20, "Exif", Join({U32Be(9), Tiff()}))})},  // header outside the box
        {Kind::kDispatch, Join({Bytes(1013, ' '), kExifTiff})},
        {Kind::kDispatch, ToBytes("no marker here")},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        length_ = 7;
        EXPECT_EQ(Locate(cases[i].first, cases[i].second), 0u) << "case " << i;
        EXPECT_TRUE(cases[i].first != Kind::kHeif || length_ == 0) << "case " << i;
    }
    EXPECT_EQ(boxes_.cmt2, 0u);
    EXPECT_EQ(exif::LocateTiffHeaderInContainer(u"/nonexistent/a.heic", pointers_), 0u);
}

TEST_F(Container, LimitsAreExact) {
    // meta as the 50th top-level box, then the 51st.
    EXPECT_NE(Locate(Kind::kHeif, HeifWith(HeifBuilder().TopLevelBox(Frees(48)))), 0u);
    EXPECT_EQ(Locate(Kind::kHeif, HeifWith(HeifBuilder().TopLevelBox(Frees(49)))), 0u);
    // hdlr, 29 others, iinf and iloc make 32 children of meta.
    EXPECT_NE(Locate(Kind::kHeif, HeifWith(HeifBuilder().MetaChild(Frees(29)))), 0u);
    EXPECT_EQ(Locate(Kind::kHeif, HeifWith(HeifBuilder().MetaChild(Frees(30)))), 0u);
    for (uint32_t items : {1024u, 1025u}) {
        HeifBuilder many;
        for (uint32_t id = 1; id < items; ++id) many.Item(id, "hvc1", {});
        EXPECT_EQ(Locate(Kind::kHeif, many.Item(items, "Exif", kItem).Build()) != 0, items == 1024) << items;
    }
    EXPECT_NE(Locate(Kind::kCr3, Cr3File(UuidBox(kCanonUuidHex, Cmts(28)))), 0u);
    EXPECT_NE(boxes_.cmt4, 0u);
    EXPECT_NE(Locate(Kind::kCr3, Cr3File(UuidBox(kCanonUuidHex, Cmts(29)))), 0u);
    EXPECT_EQ(boxes_.cmt4, 0u);  // the 33rd child
}

// Photoshop documents and JPEG 2000 say where their EXIF block is and how
// long it is; the walker, the dispatch and GetExifInfos' general code all
// take it from there.
TEST_F(Container, PhotoshopAndJpeg2000NameTheirBlock) {
    const Bytes big = Tiff(BO::kBig);
    auto infos = [&](const Bytes& bytes, uint32_t& size) {
        const std::u16string path = dir_.Write("f" + std::to_string(serial_++), bytes);
        return static_cast<uint32_t>(vv::GetExifInfos(path.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 0));
    };
    // Resources with a name of odd length and data of odd size before it.
    const Bytes psd = PsdFile({NamedPhotoshopResource(0x03ED, "abc", Bytes(7, 1)), PhotoshopResource(0x0404, {0x1C, 2}),
                               PhotoshopResource(0x0422, big)}, 9);
    const Bytes psdPrefixed = PsdFile({PhotoshopResource(0x0422, Join({ToBytes("Exif"), {0, 0}, big}))});
    // JPX metadata before the codestream whose text the first kilobyte's scan took for EXIF.
    const Bytes trap = IsoBox("xml ", Join({ToBytes("<a>Exif"), {0, 0}, ToBytes("MM</a>")}));
    const Bytes jp2 = Jp2File({trap, IsoBox("jp2c", Bytes(100, 0)), Jp2ExifBox(big, true)});
    const Bytes jp2Bare = Jp2File({Jp2ExifBox(big)});
    for (const Bytes* file : {&psd, &psdPrefixed, &jp2, &jp2Bare}) {
        const uint32_t expected = TiffAt(*file, BO::kBig);
        EXPECT_EQ(Locate(Kind::kDispatch, *file), expected);
        uint32_t size = 0;
        EXPECT_EQ(infos(*file, size), expected);
        EXPECT_EQ(size, big.size());  // the true length, not the JPEG extent of 2048 or more
        const auto rows = exiftest::ReadRows(dir_.Write("r" + std::to_string(serial_++), *file));
        EXPECT_EQ(rows.Value(271), "Vantaview");
    }
    uint32_t length = 0;
    auto file = platform::Input::FromMemory(psd.data(), psd.size());
    EXPECT_EQ(exif::LocatePsdExif(*file, length), TiffAt(psd, BO::kBig));
    EXPECT_EQ(exif::LocateJpeg2000Exif(*file, length), 0u);
    EXPECT_EQ(length, 0u);
}

TEST_F(Container, PhotoshopAndJpeg2000WithoutTheirBlockYieldNothing) {
    Bytes wrongSignature = PsdFile({PhotoshopResource(0x0422, Tiff())}), version3 = wrongSignature;
    std::copy_n("8BIX", 4, wrongSignature.begin() + 34);
    version3[5] = 3;
    Bytes cut = PsdFile({PhotoshopResource(0x0422, Tiff())});
    cut[33] = 16;  // the resource section ends inside the TIFF header
    const Bytes cases[] = {
        wrongSignature, version3, cut,
        PsdFile({PhotoshopResource(0x0404, Tiff())}),            // no EXIF resource
        PsdFile({PhotoshopResource(0x0422, {'I', 'I', 42})}),    // too short for a header
        Jp2File({IsoBox("uuid", Join({ToBytes("JpgTiffExif->JP2"), {'I', 'I', 42, 0}}))}),
        Jp2File({UuidBox(kXmpUuidHex, Tiff())}),
        Jp2File({IsoBox("jp2c", Join({ToBytes("Exif"), {0, 0}}))}),  // the scan's EXIF needs a byte-order mark
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(Locate(Kind::kDispatch, cases[i]), 0u) << "case " << i;
        const std::u16string path = dir_.Write("g" + std::to_string(i), cases[i]);
        uint32_t size = 7;
        EXPECT_EQ(vv::GetExifInfos(path.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 0), 0u) << "case " << i;
        EXPECT_EQ(size, 0u);
    }
}

// End to end through the directory walker: the rows a file gives, tag ->
// value text; empty when nothing was read. GetExifInfos answers with the
// locator its format code names.
std::map<uint32_t, std::string> Rows(const std::u16string& path) {
    std::map<uint32_t, std::string> rows;
    for (const exiftest::Row& row : exiftest::ReadRows(path).rows) rows.emplace(row.tag, row.value);
    return rows;
}

constexpr int32_t kHeifCode = 115, kPngCode = 3, kCr3Code = 118;

TEST(ContainerReading, EveryContainerGivesTheRowsOfIfd0) {
    TempDir dir;
    const Bytes tiff = Tiff(BO::kBig);
    const std::pair<const char*, Bytes> files[] = {
        {"heic", HeifBuilder().IlocBeforeIinf().Item(1, "hvc1", ToBytes("x")).Item(2, "Exif", HeifExifItem(tiff)).Build()},
        {"avif", HeifBuilder("avif").FieldSizes(4, 4, 4).Item(5, "Exif", HeifExifItem(tiff)).Build()},
        {"png", PngFile({PngChunk("IDAT", Bytes(20, 0)), PngChunk("eXIf", tiff)})},
        {"webp", WebpFile({RiffChunk("VP8X", Bytes(10, 0)), RiffChunk("VP8 ", Bytes(2001, 0)), RiffChunk("EXIF", tiff)})},
        {"jxl", JxlContainer({IsoBox("jxlc", Bytes(3000, 0)), JxlExifBox(tiff)})},
        {"jxl codestream", JxlCodestream(Join({ToBytes("Exif"), U32Be(0), tiff}))},
        {"mrw", Join({{0, 'M', 'R', 'M'}, U32Be(100), {0, 'T', 'T', 'W'}, U32Be(64), tiff})},
    };
    for (const auto& [name, bytes] : files) EXPECT_EQ(Rows(dir.Write(name, bytes))[271], "Vantaview") << name;
    EXPECT_TRUE(Rows(dir.Write("no exif.png", PngFile({}))).empty());
}

TEST(ContainerReading, Cr3DirectoriesEachBehindTheirOwnHeader) {
    TiffBuilder exifIfd(ByteOrder::kBig), gps;
    exifIfd.Rational(0, 33434, {{1, 250}}).Rational(0, 33437, {{28, 10}});
    gps.Ascii(0, 1, "N").Rational(0, 2, {{48, 1}, {51, 1}, {0, 1}});
    TempDir dir;
    auto rows = Rows(dir.Write("a.cr3", Cr3File(UuidBox(kCanonUuidHex, Join({IsoBox("CMT1", Tiff()),
                                                                          IsoBox("CMT2", exifIfd.Build()),
                                                                          IsoBox("CMT4", gps.Build())})))));
    EXPECT_EQ(rows[271], "Vantaview");
    EXPECT_FALSE(rows[33434].empty());
    EXPECT_FALSE(rows[33437].empty());
    EXPECT_FALSE(rows[exif::kGpsTagBase + 2].empty());
}

// Values in a byte order, as a BigTIFF entry holds them.
Bytes Numbers(BO order, std::initializer_list<uint64_t> values, unsigned width) {
    Bytes out;
    for (uint64_t v : values) PutNumber(out, v, width, order);
    return out;
}

TEST(ContainerReading, BigTiffDirectoriesReadLikeClassicOnes) {
    constexpr uint16_t kLong8 = 16;
    for (BO order : {BO::kLittle, BO::kBig}) {
        SCOPED_TRACE(order == BO::kBig ? "MM" : "II");
        BigTiffBuilder tiff(order);
        const int exifIfd = tiff.AddIfd(), gps = tiff.AddIfd(), ifd1 = tiff.AddIfd();
        tiff.Entry(0, 271, kAscii, 6, ToBytes(std::string("Canon\0", 6)))          // 5 to 8 bytes: in the entry
            .Entry(0, 272, kAscii, 13, ToBytes(std::string("EOS 5D Mk IV\0", 13)))  // out of line
            .Entry(0, 274, kShort, 1, Numbers(order, {6}, 2))
            .Entry(0, 282, kRational, 1, Numbers(order, {72, 1}, 4))
            .Entry(0, 273, kLong8, 1, Numbers(order, {192}, 8))
            .Entry(0, 279, kLong8, 3, Numbers(order, {1, 2, 3}, 8))
            .Entry(0, 278, kLong8, 1, Numbers(order, {uint64_t{1} << 32}, 8))   // too large for a LONG
            .RawEntry(0, 305, kAscii, 20, uint64_t{1} << 33)                    // value beyond 4 GiB
            .RawEntry(0, 306, kAscii, uint64_t{1} << 32, 16)                    // count beyond 32 bits
            .Pointer(0, 34665, exifIfd).Pointer(0, 34853, gps).Next(0, ifd1)
            .Entry(exifIfd, 33434, kRational, 1, Numbers(order, {1, 250}, 4))
            .Entry(gps, 1, kAscii, 2, ToBytes(std::string("N\0", 2)))
            .Entry(gps, 2, kRational, 3, Numbers(order, {48, 1, 51, 1, 0, 1}, 4))
            .Entry(ifd1, 259, kShort, 1, Numbers(order, {6}, 2));
        const exiftest::Reading r = exiftest::ReadBytes(tiff.Build());
        EXPECT_EQ(r.result, 1);
        EXPECT_EQ(r.bigEndian, order == BO::kBig ? 1 : 0);
        EXPECT_EQ(r.Value(271), "Canon");
        EXPECT_EQ(r.Value(272), "EOS 5D Mk IV");
        EXPECT_EQ(r.Value(274), "Right top");
        EXPECT_EQ(r.Value(282), "72");
        EXPECT_EQ(r.Value(273), "192");
        EXPECT_EQ(r.Value(279), "1 2 3");
        for (uint32_t tag : {278u, 305u, 306u}) EXPECT_EQ(r.Value(tag), "<none>") << tag;
        EXPECT_EQ(r.Value(33434), "1/250");
        EXPECT_EQ(r.Value(exif::kGpsTagBase + 1), "N");
        EXPECT_NE(r.Value(exif::kGpsTagBase + 2), "<none>");
        EXPECT_GT(r.IndexOf("Thumbnail:"), r.IndexOf("GPS information:"));
        EXPECT_EQ(r.Value(259), "6 (JPG)");
    }
    // A directory pointing at itself, and at a place past the end, reads once and stops.
    BigTiffBuilder loop;
    loop.Entry(0, 271, kAscii, 2, ToBytes(std::string("A\0", 2))).Pointer(0, 34665, 0).Next(0, 0);
    EXPECT_EQ(exiftest::ReadBytes(loop.Build()).Value(271), "A");
    loop.RawEntry(0, 34853, 18, 1, 1u << 20);
    EXPECT_EQ(exiftest::ReadBytes(loop.Build()).Value(271), "A");
}

// PNG writers that predate the "eXIf" chunk keep EXIF as hexadecimal text.
TEST(ContainerReading, PngRawProfilesReadWhenNoExifChunkGivesAny) {
    const Bytes tiff = Tiff(BO::kBig), prefixed = Join({ToBytes("Exif"), {0, 0}, tiff});
    TiffBuilder other;
    other.Ascii(0, 271, "From eXIf");
    const std::pair<Bytes, std::string> files[] = {
        {PngFile({PngText("Raw profile type exif", RawProfile("exif", prefixed)), PngChunk("IDAT", {0})}), "Vantaview"},
        {PngFile({PngCompressedText("Raw profile type APP1", RawProfile("APP1", ToBytes("http://ns.adobe.com/xap/1.0/"))),
                  PngText("Raw profile type exif", RawProfile("exif", tiff))}), "Vantaview"},
        {PngFile({PngCompressedText("Raw profile type APP1", RawProfile("APP1", tiff))}), "Vantaview"},
        {PngFile({PngInternationalText("Raw profile type exif", RawProfile("exif", tiff), true)}), "Vantaview"},
        {PngFile({PngText("Comment", ToBytes("x")), PngText("Raw profile type exif", RawProfile("", tiff))}), "Vantaview"},
        {PngFile({PngText("Raw profile type exif", RawProfile("exif", tiff)), PngChunk("eXIf", other.Build())}), "From eXIf"},
        {PngFile({PngText("Raw profile type iptc", RawProfile("iptc", tiff))}), "<none>"},
        {PngFile({PngText("Raw profile type exif", RawProfile("exif", ToBytes("not a TIFF file")))}), "<none>"},
        {PngFile({PngText("Raw profile type exif", ToBytes("\nexif\n  0\n"))}), "<none>"},
        {PngFile({PngChunk("zTXt", Join({ToBytes("Raw profile type exif"), {0, 0}, ZlibStored(RawProfile("exif", tiff))}))}), "Vantaview"},
        {PngFile({PngChunk("zTXt", Join({ToBytes("Raw profile type exif"), {0, 1}, ZlibStored(RawProfile("exif", tiff))}))}), "<none>"},
        {PngFile({}), "<none>"},
    };
    for (size_t i = 0; i < std::size(files); ++i)
        EXPECT_EQ(exiftest::ReadBytes(files[i].first).Value(271), files[i].second) << "file " << i;
    // The profile's bytes are not in the file: GetExifInfos has no offset for them.
    TempDir dir;
    const std::u16string path = dir.Write("a.png", files[0].first);
    uint32_t size = 1;
    EXPECT_EQ(vv::GetExifInfos(path.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 0), 0u);
    EXPECT_EQ(vv::GetExifInfos(path.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 3), 0u);
}

TEST(ContainerReading, GetExifInfosAnswersWithTheLocatorOfItsFormatCode) {
    TempDir dir;
    const Bytes heif = HeifBuilder().Item(3, "Exif", kItem).Build(), png = PngFile({PngChunk("eXIf", Tiff())});
    const Bytes cr3 = Cr3File(UuidBox(kCanonUuidHex, Cmts()));
    const std::u16string heifPath = dir.Write("a.heic", heif), pngPath = dir.Write("a.png", png),
                         cr3Path = dir.Write("a.cr3", cr3);
    uint32_t size = 1, out[4] = {1, 1, 1, 1};
    auto infos = [&](const std::u16string& path, int32_t code) {
        return vv::GetExifInfos(path.c_str(), &size, &out[0], &out[1], &out[2], &out[3], code);
    };

    EXPECT_EQ(infos(heifPath, kHeifCode), OffsetOf(heif, Tiff()));
    EXPECT_EQ(size, kItem.size());
    EXPECT_EQ(infos(pngPath, kPngCode), OffsetOf(png, Tiff()));
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(infos(cr3Path, kCr3Code), After(cr3, "CMT1"));
    EXPECT_EQ(size, OffsetOf(cr3, ToBytes("mdat")) - OffsetOf(cr3, ToBytes("moov")));
    const uint32_t expected[4] = {After(cr3, "CMT2"), After(cr3, "CMT3"), After(cr3, "CMT4"), 0};
    EXPECT_TRUE(std::equal(out, out + 4, expected));
    // Another container's code: that locator finds nothing, and every output is cleared.
    EXPECT_EQ(infos(heifPath, kCr3Code), 0u);
    EXPECT_EQ(out[0] | out[1] | out[2] | out[3] | size, 0u);
    EXPECT_EQ(infos(pngPath, kHeifCode), 0u);
}

}  // namespace
