// The IPTC exports on containers other than JPEG and TIFF: the IIM record of
// a Photoshop document or a PNG raw profile, else the fields the file's XMP
// packet fills, wherever the container keeps it.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "fixture/container_fixture.h"
#include "fixture/iptc_fixture.h"
#include "iptc/iptc_reader.h"
#include "iptc/iptc_writer.h"
#include "iptc/metadata_segment.h"
#include "plugin/plugin_api.h"

using namespace fixture;

namespace {

const std::string kPacket =
    "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>"
    "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
    "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'"
    " xmlns:photoshop='http://ns.adobe.com/photoshop/1.0/' photoshop:City='K\xC3\xB6ln'>"
    "<dc:subject><rdf:Bag><rdf:li>one</rdf:li><rdf:li>two</rdf:li></rdf:Bag></dc:subject>"
    "</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end='w'?>";
const Bytes kXmp = ToBytes(kPacket);
const Bytes kIim = IimBuilder().Dataset(2, 0, std::string("\0\x04", 2)).Dataset(2, 25, "k").Dataset(2, 90, "Z").Build();

// LoadTag_IPTC_W's answer, or "(none)" when it finds no source.
std::u16string Tag(const std::u16string& path, int dataset) {
    char16_t out[64] = {};
    return vv::LoadTag_IPTC_W(path.c_str(), dataset, out, 64) ? std::u16string(out) : u"(none)";
}

TEST(ContainerIptc, EachContainerGivesItsXmpToTheIptcExports) {
    TempDir dir;
    const std::pair<const char*, Bytes> files[] = {
        {"psd", PsdFile({PhotoshopResource(0x0425, Bytes(16, 1)), PhotoshopResource(0x0424, kXmp)})},
        {"png iTXt", PngFile({PngInternationalText("XML:com.adobe.xmp", kXmp, false)})},
        {"png iTXt compressed", PngFile({PngText("Comment", ToBytes("c")), PngInternationalText("XML:com.adobe.xmp", kXmp, true)})},
        {"png raw profile", PngFile({PngCompressedText("Raw profile type xmp", RawProfile("xmp", kXmp))})},
        {"webp", WebpFile({RiffChunk("VP8X", Bytes(10, 0)), RiffChunk("XMP ", kXmp)})},
        {"heic", HeifBuilder().Item(1, "hvc1", ToBytes("x")).MimeItem(2, "image/jpeg", ToBytes("y"))
                     .MimeItem(3, "application/rdf+xml", kXmp).Build()},
        {"avif uuid", Join({HeifBuilder("avif").Item(1, "av01", ToBytes("x")).Build(), UuidBox(kXmpUuidHex, kXmp)})},
        {"cr3", Join({Cr3File(IsoBox("mvhd", {})), UuidBox(kXmpUuidHex, kXmp)})},
        {"jxl", JxlContainer({IsoBox("jxlc", Bytes(20, 0)), IsoBox("xml ", kXmp)})},
        {"jp2 uuid", Jp2File({IsoBox("jp2c", Bytes(20, 0)), UuidBox(kXmpUuidHex, kXmp)})},
        {"jp2 xml", Jp2File({IsoBox("xml ", ToBytes("<jpx><x/></jpx>")), IsoBox("xml ", kXmp)})},
    };
    for (const auto& [name, bytes] : files) {
        const std::u16string path = dir.Write(name, bytes);
        EXPECT_EQ(Tag(path, 25), u"one, two") << name;
        EXPECT_EQ(Tag(path, 90), u"K\u00F6ln") << name;
    }
    // No XMP where the container keeps it: nothing, as for a JPEG without XMP.
    const std::pair<const char*, Bytes> without[] = {
        {"heic other mime", HeifBuilder().MimeItem(2, "application/rdf+xmp", kXmp).Build()},
        {"png other keyword", PngFile({PngInternationalText("XML:com.adobe.xmp2", kXmp, false)})},
        {"jp2 other xml", Jp2File({IsoBox("xml ", ToBytes("<jpx><x/></jpx>"))})},
        {"webp other chunk", WebpFile({RiffChunk("EXIF", kXmp)})},
    };
    for (const auto& [name, bytes] : without) EXPECT_EQ(Tag(dir.Write(name, bytes), 25), u"(none)") << name;
}

TEST(ContainerIptc, AnIimRecordWinsOverXmpAndATiffStaysWithoutXmp) {
    TempDir dir;
    const Bytes resources = Join({PhotoshopResource(0x03ED, Bytes(16, 0)), PhotoshopResource(0x0404, kIim)});
    const std::pair<const char*, Bytes> files[] = {
        {"psd", PsdFile({PhotoshopResource(0x0404, kIim), PhotoshopResource(0x0424, kXmp)})},
        {"png bare datasets", PngFile({PngText("Raw profile type iptc", RawProfile("iptc", kIim)),
                                       PngInternationalText("XML:com.adobe.xmp", kXmp, false)})},
        {"png resources", PngFile({PngCompressedText("Raw profile type iptc", RawProfile("iptc", resources))})},
    };
    for (const auto& [name, bytes] : files) {
        const std::u16string path = dir.Write(name, bytes);
        EXPECT_EQ(Tag(path, 25), u"k") << name;
        EXPECT_EQ(Tag(path, 90), u"Z") << name;
        EXPECT_EQ(Tag(path, 0), std::u16string(u"\u0020\u0004")) << name;
    }
    // The document's resource is what the reader was given: from its "8BIM" on.
    const Bytes psd = std::get<1>(files[0]);
    uint32_t length = 0, offset = 0;
    const auto block = iptc::LoadMetadataSegment(dir.Path("psd"), length, offset, iptc::kApp13Marker, false, nullptr, false);
    EXPECT_EQ(offset, OffsetOf(psd, ToBytes("8BIM\x04\x04")));
    EXPECT_EQ(length, 12 + kIim.size());
    ASSERT_GE(block.size(), length);
    // The writer keeps to JPEG files.
    auto record = std::make_unique<iptc::IptcData>();
    iptc::ClearIptcData(*record);
    ASSERT_TRUE(iptc::LoadIptcData(dir.Path("psd"), *record));
    std::u16string error;
    EXPECT_EQ(iptc::WriteIptcToJpeg(dir.Path("psd"), record->app13Offset, record->app13Length, *record, error), 0);
    EXPECT_NE(error.find(u"is not a JPEG file."), std::u16string::npos);

    // A TIFF imports no XMP, a BigTIFF neither; the IIM block of either is read.
    TiffBuilder tiff;
    tiff.Undefined(0, 700, kXmp);
    BigTiffBuilder big;
    big.Entry(0, 700, kUndefined, kXmp.size(), kXmp);
    EXPECT_EQ(Tag(dir.Write("xmp.tif", tiff.Build()), 25), u"(none)");
    EXPECT_EQ(Tag(dir.Write("xmp.btf", big.Build()), 25), u"(none)");
    big.Entry(0, 33723, kUndefined, kIim.size(), kIim);
    EXPECT_EQ(Tag(dir.Write("iim.btf", big.Build()), 25), u"k");
}

}  // namespace
