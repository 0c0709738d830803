// Camera files built in code for the EXIF suites (native and Windows), and
// the text each export must give for them.
#pragma once

#include <string>

#include "fixture/fixture.h"

namespace exiftest {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::TiffBuilder;

// SOI, APP1 "Exif" around the TIFF block, a scan, EOI. The TIFF header sits
// at file offset 12.
inline Bytes Jpeg(const Bytes& tiff) { return fixture::JpegBuilder().Soi().App1Exif(tiff).ScanAndEoi().Build(); }
constexpr uint32_t kJpegTiffOffset = 12;

// A camera file with IFD0, the Exif IFD, a GPS position south-west of the
// equator and a thumbnail directory; the same rows in either byte order.
struct Sample {
    TiffBuilder tiff;
    int exif, gps, ifd1;
    explicit Sample(ByteOrder order) : tiff(order) {
        exif = tiff.AddIfd();
        gps = tiff.AddIfd();
        ifd1 = tiff.AddIfd();
        tiff.Ascii(0, 271, "Vantaview")
            .Ascii(0, 272, "VV-1")
            .Short(0, 274, {6})
            .Rational(0, 282, {{72, 1}})
            .Short(0, 296, {2})
            .Pointer(0, 34665, exif)
            .Pointer(0, 34853, gps)
            .Next(0, ifd1);
        tiff.Rational(exif, 33434, {{1, 250}})
            .Rational(exif, 33437, {{28, 10}})
            .Short(exif, 34855, {200})
            .Short(exif, 37385, {16});
        tiff.Byte(gps, 0, {2, 3, 0, 0})
            .Ascii(gps, 1, "S")
            .Rational(gps, 2, {{33, 1}, {27, 1}, {0, 1}})
            .Ascii(gps, 3, "W")
            .Rational(gps, 4, {{70, 1}, {40, 1}, {1200, 100}})
            .Rational(gps, 17, {{90, 1}});
        tiff.Short(ifd1, 259, {6});
    }
    Bytes File() const { return Jpeg(tiff.Build()); }

    // LoadData_EXIF_W's text in mode 3.
    std::string Mode3() const {
        return "Make - Vantaview\nModel - VV-1\nOrientation - Right top\nXResolution - 72\n"
               "ResolutionUnit - Inches\nExif-IFD-Offset - " + std::to_string(tiff.IfdOffset(exif)) +
               "\nGPS-IFD-Offset - " + std::to_string(tiff.IfdOffset(gps)) +
               "\nExposureTime - 1/250\nFNumber - F 2.80\nISOSpeedRatings - 200\n"
               "Flash - Not fired, flash suppressed\nGPS information:\nGPSVersionID - 2.3.0.0\n"
               "GPSLatitudeRef - S\nGPSLatitude - 33  27  0 (33.450000)\nGPSLongitudeRef - W\n"
               "GPSLongitude - 70  40  12 (70.670000)\nGPSImgDirection - 90\nThumbnail:\n"
               "Compression - 6 (JPG)\n";
    }
};

// The position LoadTag_EXIF_W gives for tag 499.
constexpr char kSamplePosition[] = "-33.450000 -70.670000";
// Rows of the sample: 11 from IFD0 and the Exif IFD, separator + heading + 6
// for GPS, separator + heading + 1 for the thumbnail.
constexpr int kSampleRows = 22;

}  // namespace exiftest
