#include "fixture/container_fixture.h"
#include "fixture/iptc_fixture.h"
#include "seeds.h"

using namespace fixture;

namespace {

std::vector<Bytes> ContainerSeeds() {
    TiffBuilder tiff(ByteOrder::kBig);
    tiff.Ascii(0, 271, "Vantaview").Short(0, 274, {6});
    const Bytes t = tiff.Build();
    const Bytes xmp = ToBytes("<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
                              "<rdf:Description xmlns:dc='http://purl.org/dc/elements/1.1/' dc:title='T'/></rdf:RDF></x:xmpmeta>");
    Bytes cmts;
    for (const char* type : {"CMT1", "CMT2", "CMT3", "CMT4"}) Append(cmts, IsoBox(type, t));
    return std::vector<Bytes>{
        HeifBuilder().IlocVersion(0).Item(1, "hvc1", ToBytes("x")).Item(2, "Exif", HeifExifItem(t)).Build(),
        HeifBuilder("avif").IlocVersion(2).FieldSizes(8, 8, 4).InfeVersion(3).IlocBeforeIinf()
            .Item(9, "Exif", HeifExifItem(t, 0)).Build(),
        HeifBuilder().LargeSizes().QuickTimeMeta().Item(1, "Exif", HeifExifItem(t)).Build(),
        Cr3File(UuidBox(kCanonUuidHex, Join({LargeIsoBox("CNCV", ToBytes("x")), cmts}))),
        PngFile({PngChunk("tEXt", ToBytes("k")), PngChunk("eXIf", t)}),
        WebpFile({RiffChunk("VP8X", Bytes(10, 0)), RiffChunk("ALPH", Bytes(3, 0)), RiffChunk("EXIF", t)}),
        JxlContainer({JxlBrobBox("Exif", Bytes(9, 0)), IsoBox("jxlc", {0xFF, 0x0A}), JxlExifBox(t)}),
        JxlCodestream(Join({ToBytes("Exif"), U32Be(0), t})),
        Join({{0, 'M', 'R', 'M'}, U32Be(100), {0, 'T', 'T', 'W'}, U32Be(64), t}),
        // Photoshop: resources with a name, IIM, XMP and EXIF (behind "Exif\0\0" in the second).
        PsdFile({NamedPhotoshopResource(0x03ED, "n", Bytes(3, 1)), PhotoshopResource(0x0404, IimBuilder().Dataset(2, 25, "k").Build()),
                 PhotoshopResource(0x0424, xmp), PhotoshopResource(0x0422, t)}, 4),
        PsdFile({PhotoshopResource(0x0422, Join({ToBytes("Exif"), {0, 0}, t}))}),
        // JPEG 2000: a JPX XML box, the codestream, the EXIF and XMP uuid boxes.
        Jp2File({IsoBox("xml ", ToBytes("<jpx/>")), IsoBox("jp2c", {0xFF, 0x4F}), Jp2ExifBox(t, true), UuidBox(kXmpUuidHex, xmp)}),
        Jp2File({IsoBox("xml ", xmp), Jp2ExifBox(t)}),
        // BigTIFF in both orders: inline values of 2, 6 and 8 bytes, one out of line, LONG8s, the Exif and GPS directories.
        [&] {
            BigTiffBuilder big(ByteOrder::kBig);
            const int exifIfd = big.AddIfd(), gps = big.AddIfd();
            big.Entry(0, 271, 2, 6, ToBytes(std::string("Canon\0", 6))).Entry(0, 272, 2, 10, ToBytes("0123456789"))
                .Entry(0, 274, 3, 1, {0, 6}).Entry(0, 282, 5, 1, {0, 0, 0, 72, 0, 0, 0, 1})
                .Entry(0, 279, 16, 2, Bytes(16, 1)).Pointer(0, 34665, exifIfd).Pointer(0, 34853, gps).Next(0, gps)
                .Entry(exifIfd, 33434, 5, 1, {0, 0, 0, 1, 0, 0, 0, 9}).Entry(gps, 1, 2, 2, {'N', 0});
            return big.Build();
        }(),
        [&] {
            BigTiffBuilder big;
            big.Entry(0, 273, 16, 1, {192}).RawEntry(0, 305, 2, 20, uint64_t{1} << 33).Entry(0, 33723, 7, 9, Bytes(9, 0x1C));
            return big.Build();
        }(),
        // PNG raw profiles: EXIF in tEXt, zTXt and iTXt, IPTC as bare datasets, XMP in iTXt.
        PngFile({PngText("Raw profile type exif", RawProfile("exif", Join({ToBytes("Exif"), {0, 0}, t})))}),
        PngFile({PngCompressedText("Raw profile type APP1", RawProfile("APP1", t)),
                 PngCompressedText("Raw profile type iptc", RawProfile("iptc", IimBuilder().Dataset(2, 5, "o").Build()))}),
        PngFile({PngInternationalText("Raw profile type exif", RawProfile("exif", t), true),
                 PngInternationalText("XML:com.adobe.xmp", xmp, true)}),
        // XMP in WebP, HEIF, CR3 and JPEG XL.
        WebpFile({RiffChunk("XMP ", xmp)}),
        HeifBuilder().Item(1, "hvc1", ToBytes("x")).MimeItem(2, "application/rdf+xml", xmp).Build(),
        Join({Cr3File(IsoBox("mvhd", {})), UuidBox(kXmpUuidHex, xmp)}),
        JxlContainer({IsoBox("xml ", xmp)}),
    };
}

}  // namespace

static const fuzzseeds::Register kSeeds("containers", ContainerSeeds);
// The EXIF exports take whole files too: the same containers reach the walker.
static const fuzzseeds::Register kExifSeeds("exif", ContainerSeeds);
