// The GPS directory: value texts in both byte orders, and the position
// computed back from the rows.
#include <gtest/gtest.h>

#include <functional>

#include "exif/gps.h"
#include "exif_reading.h"

namespace exiftest {
namespace {

using fixture::ToBytes;

Reading WithGps(ByteOrder order, const std::function<void(TiffBuilder&, int)>& fill) {
    TiffBuilder tiff(order);
    const int gps = tiff.AddIfd();
    tiff.Pointer(0, 34853, gps);
    fill(tiff, gps);
    return ReadBytes(Jpeg(tiff.Build()));
}

TEST(Gps, ValueTextsInBothByteOrders) {
    for (ByteOrder order : {ByteOrder::kLittle, ByteOrder::kBig}) {
        const Reading r = WithGps(order, [](TiffBuilder& t, int gps) {
            t.Rational(gps, 2, {{48, 1}, {51, 1}, {2976, 100}})
                .Byte(gps, 5, {1})
                .Rational(gps, 6, {{1234, 10}})
                .Rational(gps, 7, {{0, 0}, {30, 1}, {100, 50}})
                .Ascii(gps, 16, "M")
                .Rational(gps, 17, {{12345, 100}})
                .Ascii(gps, 18, "WGS-84")  // not shown
                .Ascii(gps, 29, "2024:02:29")
                .Short(gps, 30, {1});  // beyond the GPS tags
        });
        EXPECT_EQ(r.Value(402), "48  51  29.76 (48.858267)");
        EXPECT_EQ(r.Value(405), "Below Sea Level (Sea level reference)");
        EXPECT_EQ(r.Value(406), "123.40 m");
        EXPECT_EQ(r.Value(407), "0.00/0.00  30  2");
        EXPECT_EQ(r.Value(416), "Magnetic direction");
        EXPECT_EQ(r.Value(417), "123.449997");  // the quotient is single precision
        EXPECT_EQ(r.Value(429), "2024:02:29");
        EXPECT_EQ(r.rows.size(), 10u);  // pointer, separator, heading, 7 rows
    }
}

TEST(Gps, AltitudeReferenceAndVersionBytes) {
    const Reading little = WithGps(ByteOrder::kLittle, [](TiffBuilder& t, int gps) {
        t.Byte(gps, 0, {2, 10, 0, 0}).Byte(gps, 5, {0}).Rational(gps, 6, {{100, 1}});
    });
    EXPECT_EQ(little.Value(400), "2.10.0.0");
    EXPECT_EQ(little.Value(405), "Above Sea Level");
    EXPECT_EQ(little.Value(406), "100 m");
    // Big-endian: the text of the reversed bytes is itself reversed, digits included.
    const Reading big = WithGps(ByteOrder::kBig, [](TiffBuilder& t, int gps) {
        t.Byte(gps, 0, {2, 10, 0, 0}).Byte(gps, 5, {7});
    });
    EXPECT_EQ(big.Value(400), "2.01.0.0");
    EXPECT_EQ(big.Value(405), "7 (other)");
}

exif::GpsPosition Position(std::initializer_list<std::pair<uint32_t, const char*>> rows) {
    return exif::ComputeGpsPosition(*TableOf(rows), static_cast<uint32_t>(rows.size()));
}

TEST(Gps, PositionIsSignedBySouthAndWest) {
    exif::GpsPosition p =
        Position({{401, "S"}, {402, "33  27  0 (33.450000)"}, {403, "O"}, {404, "70  40  12 (70.670000)"}});
    EXPECT_NEAR(p.latitude, -33.45, 1e-9);
    EXPECT_NEAR(p.longitude, -70.67, 1e-9);  // "O" (Ouest) is west
    p = Position({{401, "N"}, {402, "48  51  29.76 (48.858267)"}, {403, "E"}, {404, "2  17  40.08"}});
    EXPECT_NEAR(p.latitude, 48.858267, 1e-6);
    EXPECT_NEAR(p.longitude, 2.2944667, 1e-6);
    p = Position({{401, "S"}, {403, "W"}, {404, "1  30  0"}});
    EXPECT_EQ(p.latitude, -100.0);  // no latitude: the marker, signed all the same
    EXPECT_EQ(p.longitude, -1.5);
    p = Position({});
    EXPECT_EQ(p.latitude, 100.0);
    EXPECT_EQ(p.longitude, 0.0);
}

TEST(Gps, DegreesFromTheFirstThreeNumbers) {
    EXPECT_DOUBLE_EQ(exif::ParseDegMinSec("48  51  29.76 (48.858267)"), 48 + 51 / 60.0 + 29.76 / 3600);
    EXPECT_DOUBLE_EQ(exif::ParseDegMinSec("12  30 (12.5)"), 12.5);  // the suffix is not a third number
    EXPECT_DOUBLE_EQ(exif::ParseDegMinSec("10  5.00/0.00  36"), 10 + 5 / 60.0 + 36 / 3600.0);
    EXPECT_DOUBLE_EQ(exif::ParseDegMinSec("7"), 7);
    EXPECT_DOUBLE_EQ(exif::ParseDegMinSec(""), 0);
    EXPECT_DOUBLE_EQ(exif::ParseDegMinSec("n/a"), 0);
}

}  // namespace
}  // namespace exiftest
