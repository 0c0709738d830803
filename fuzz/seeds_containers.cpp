#include "fixture/container_fixture.h"
#include "seeds.h"

using namespace fixture;

static const fuzzseeds::Register kSeeds("containers", [] {
    TiffBuilder tiff(ByteOrder::kBig);
    tiff.Ascii(0, 271, "Vantaview").Short(0, 274, {6});
    const Bytes t = tiff.Build();
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
    };
});
