#include "fixture/container_fixture.h"
#include "fixture/iptc_fixture.h"
#include "fixture/makernote_fixture.h"
#include "seeds.h"

static const fuzzseeds::Register kSeeds("iptc", [] {
    using fixture::IimBuilder;
    const fixture::Bytes iim = IimBuilder()
                                   .Dataset(1, 90, "\x1B%G").Dataset(2, 0, std::string("\0\x02", 2))
                                   .Dataset(2, 25, "a").Dataset(2, 25, "b").Dataset(2, 120, "c\r\nd\te")
                                   .Dataset(2, 55, "20240229").Dataset(2, 90, "utf").Build();
    return std::vector<fixture::Bytes>{
        fixture::IptcApp13(iim),
        iim,
        fixture::IptcApp13(IimBuilder().DatasetWithLength(2, 5, 0x8004, "extended").Build()),
        fixture::PhotoshopApp13({fixture::PhotoshopResource(0x040C, {1, 2, 3}),
                                 fixture::PhotoshopResource(0x0404, IimBuilder().Dataset(1, 1, "").Dataset(2, 20, "x").Build())}),
        // Whole JPEGs: resources continued over two APP13 segments, behind
        // one of another kind, and a dataset repeated.
        [] {
            const fixture::Bytes header = fixture::ToBytes(std::string("Photoshop 3.0\0", 14));
            const fixture::Bytes resources = fixture::Join(
                {fixture::PhotoshopResource(0x0425, fixture::Bytes(16, 1)),
                 fixture::PhotoshopResource(0x0404, IimBuilder().Dataset(2, 80, "Ann").Dataset(2, 80, "Bo").Build())});
            const size_t cut = resources.size() - 6;
            return fixture::JpegBuilder().Soi()
                .Segment(0xED, fixture::ToBytes(std::string("Adobe_CM\0\x02", 10)))
                .Segment(0xED, fixture::Join({header, fixture::Bytes(resources.begin(), resources.begin() + long(cut))}))
                .Segment(0xED, fixture::Join({header, fixture::Bytes(resources.begin() + long(cut), resources.end())}))
                .ScanAndEoi().Build();
        }(),
        // IIM and XMP in the other containers: a Photoshop document, a PNG
        // raw profile of bare datasets, a BigTIFF's tag 33723.
        fixture::PsdFile({fixture::PhotoshopResource(0x0404, iim), fixture::PhotoshopResource(0x0424, fixture::ToBytes("<x:xmpmeta/>"))}),
        fixture::PngFile({fixture::PngCompressedText("Raw profile type iptc", fixture::RawProfile("iptc", iim))}),
        fixture::PngFile({fixture::PngText("Raw profile type iptc", fixture::RawProfile("iptc", fixture::PhotoshopResource(0x0404, iim)))}),
        [&] {
            fixture::BigTiffBuilder big(fixture::ByteOrder::kBig);
            big.Entry(0, 33723, 7, iim.size(), iim);
            return big.Build();
        }(),
        // A Canon note that keeps a file offset (original-decision data).
        [] {
            fixture::TiffBuilder tiff(fixture::ByteOrder::kBig);
            tiff.Ascii(0, 0x010F, "Canon");
            const int exifIfd = tiff.AddIfd();
            tiff.Pointer(0, 0x8769, exifIfd);
            tiff.Blob(exifIfd, 0x927C, fixture::MakerNoteBuilder(fixture::ByteOrder::kBig).Long(0x0083, 40).Build(8));
            return fixture::JpegBuilder().Soi().App1Exif(tiff.Build()).ScanAndEoi().Build();
        }(),
    };
});
