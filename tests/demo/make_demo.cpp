// Writes the demo JPEG that ./run.sh shows when it is given no image:
// a small JPEG with EXIF (camera, exposure, a GPS position), IPTC and a comment.
#include <cstdio>
#include <fstream>

#include "fixture/fixture.h"
#include "fixture/iptc_fixture.h"

using namespace fixture;

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_demo OUT.jpg\n");
        return 2;
    }
    TiffBuilder tiff(ByteOrder::kLittle);
    const int exif = tiff.AddIfd();
    const int gps = tiff.AddIfd();
    tiff.Ascii(0, 271, "Vantaview")
        .Ascii(0, 272, "Demo Camera 1")
        .Short(0, 274, {1})
        .Ascii(0, 306, "2026:11:22 10:30:00")
        .Pointer(0, 34665, exif)
        .Pointer(0, 34853, gps);
    tiff.Rational(exif, 33434, {{1, 250}})
        .Rational(exif, 33437, {{28, 10}})
        .Short(exif, 34855, {200})
        .Ascii(exif, 36867, "2026:11:22 10:30:00")
        .Rational(exif, 37386, {{50, 1}});
    tiff.Byte(gps, 0, {2, 3, 0, 0})
        .Ascii(gps, 1, "N")
        .Rational(gps, 2, {{48, 1}, {51, 1}, {2976, 100}})
        .Ascii(gps, 3, "E")
        .Rational(gps, 4, {{2, 1}, {17, 1}, {4008, 100}});
    Bytes jpeg = JpegBuilder()
                     .Soi()
                     .Segment(0xE0, ToBytes(std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14)))
                     .App1Exif(tiff.Build())
                     .Segment(0xED, IptcApp13(IimBuilder()
                                                  .Dataset(2, 0, std::string("\0\4", 2))
                                                  .Dataset(2, 5, "Eiffel Tower at noon")
                                                  .Dataset(2, 25, "Paris")
                                                  .Dataset(2, 25, "tower")
                                                  .Dataset(2, 80, "Vantaview")
                                                  .Dataset(2, 90, "Paris")
                                                  .Dataset(2, 116, "(c) Vantaview demo")
                                                  .Dataset(2, 120, "A demo image made by run.sh")
                                                  .Build()))
                     .Com("Vantaview demo image")
                     .ScanAndEoi()
                     .Build();
    std::ofstream out(argv[1], std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(jpeg.data()), static_cast<std::streamsize>(jpeg.size()));
    return out ? 0 : 1;
}
