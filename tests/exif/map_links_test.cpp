#include "exif/map_links.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <clocale>
#include <cstdio>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "exif_reading.h"
#include "fixture/fixture.h"
#include "platform/platform.h"

namespace {

using exif::MapService;

// Rio de Janeiro: south and west, so both coordinates are negative.
constexpr double kLatitude = -22.9519;
constexpr double kLongitude = -43.2105;

// Records every shell request instead of opening anything.
class ShellTest : public ::testing::Test {
protected:
    void SetUp() override {
        platform::SetShellOpenHook([this](std::u16string_view target) {
            opened.emplace_back(target);
            return true;
        });
    }
    void TearDown() override { platform::SetShellOpenHook(nullptr); }
    std::vector<std::u16string> opened;
};

TEST_F(ShellTest, EveryServiceLinksASouthWesternPositionWithNegativeNumbers) {
    const struct {
        MapService service;
        const char16_t* link;
    } expected[] = {
        {MapService::kGoogleMaps, u"https://www.google.com/maps/place/-22.951900,-43.210500/@-22.951900,-43.210500,15z"},
        {MapService::kGoogleMapsSatellite,
         u"https://www.google.com/maps/place/-22.951900,-43.210500/@-22.951900,-43.210500,15z/data=!3m1!1e3"},
        {MapService::kOpenStreetMap, u"https://www.openstreetmap.org/?mlat=-22.951900&mlon=-43.210500&zoom=15"},
        {MapService::kBingMaps, u"https://www.bing.com/maps/?v=2&cp=-22.951900~-43.210500&lvl=16&dir=0&sty=c"
                                u"&sp=point.-22.951900_-43.210500_PhotoLocation"},
        {MapService::kBingMapsApp, u"bingmaps:?collection=point.-22.951900_-43.210500_PhotoLocation&lvl=16"},
        {MapService::kNaverMap, u"https://map.naver.com/v5/?lat=-22.951900&lng=-43.210500&title=IMG"},
        {MapService::kKakaoMap, u"https://map.kakao.com/link/map/%F0%9F%93%B7,-22.951900,-43.210500"},
    };
    for (const auto& e : expected) {
        EXPECT_EQ(exif::FormatMapLink(e.service, kLatitude, kLongitude), e.link);
        exif::OpenMapLink(e.service, kLatitude, kLongitude);
        ASSERT_FALSE(opened.empty());
        EXPECT_EQ(opened.back(), e.link);
    }
    exif::OpenGeoHackLink("-22.951900;-43.210500");  // narrow, but the same link
    EXPECT_EQ(opened.back(), u"https://geohack.toolforge.org/geohack/geohack.php?language=en&params=-22.951900;-43.210500");
    EXPECT_EQ(opened.size(), std::size(expected) + 1);
}

TEST(MapLinks, CoordinatesKeepTheirPointUnderADecimalCommaLocale) {
    const std::string saved = std::setlocale(LC_NUMERIC, nullptr);
    bool comma = false;
    for (const char* name : {"de_DE.UTF-8", "de_DE", "German", "de-DE"}) {
        char probe[16];
        if (std::setlocale(LC_NUMERIC, name) && std::snprintf(probe, sizeof probe, "%.1f", 0.5) > 0 &&
            std::string(probe) == "0,5") {
            comma = true;
            break;
        }
    }
    const std::u16string link = exif::FormatMapLink(MapService::kOpenStreetMap, 1.5, -2.25);
    std::setlocale(LC_NUMERIC, saved.c_str());
    if (!comma) GTEST_SKIP() << "no locale with a decimal comma installed";
    EXPECT_EQ(link, u"https://www.openstreetmap.org/?mlat=1.500000&mlon=-2.250000&zoom=15");
}

TEST(MapLinks, SatelliteSettingChoosesOnlyTheGoogleForm) {
    fixture::TempDir dir;
    const std::u16string ini = dir.Path("settings.ini");
    EXPECT_EQ(exif::GoogleMapsServiceFor(ini), MapService::kGoogleMaps);  // no file yet
    ASSERT_TRUE(platform::WriteSettingString(ini, u"EXIF", u"Satellite", u"1"));
    EXPECT_EQ(exif::GoogleMapsServiceFor(ini), MapService::kGoogleMapsSatellite);
    ASSERT_TRUE(platform::WriteSettingString(ini, u"EXIF", u"Satellite", u"0"));
    EXPECT_EQ(exif::GoogleMapsServiceFor(ini), MapService::kGoogleMaps);
}

TEST(GeoHack, ParamsTakeTheParenthesisedFigureAndSignTheSouthAndWest) {
    auto table = exiftest::TableOf({{401, "N"}, {401, "s"}, {402, "22  57  6.84 (22.951900)"}, {403, "w"},
                       {404, "43  12  37.8 (43.210500)"}, {401, "N"}});
    EXPECT_EQ(exif::BuildGeoHackParams(*table, 5), "-22.951900;-43.210500");  // the last row lies past the count
    EXPECT_EQ(exif::BuildGeoHackParams(*table, 6), "22.951900;-43.210500");

    // "O" is west for the position, but GeoHack gets the figure unsigned; no "(" keeps all but the last character.
    auto other = exiftest::TableOf({{401, "S"}, {402, "12.5x"}, {403, "O"}, {404, "7 (8.25)"}});
    EXPECT_EQ(exif::BuildGeoHackParams(*other, 4), "-12.5;8.25");
    EXPECT_EQ(exif::BuildGeoHackParams(*other, 0), ";");
}

const std::string kKmlHead =
    "<?xml version=\"1.0\"?>\r\n<kml xmlns=\"http://earth.google.com/kml/2.0\">\r\n<Placemark>\r\n"
    "<name>Cafe 1.JPG</name>\r\n<description>\r\n"
    "<![CDATA[<b>Lat: </b><code>-22.951900</code>, <b>Lon: </b><code>-43.210500</code><b></b><br/><br/>"
    "<img src='file:///C:/Fotos/Cafe 1.JPG' width='200'/>\r\n<br/><br/>\r\n<b>File:</b><br/>\r\n"
    "<code>C:\\Fotos/Cafe 1.JPG</code>\r\n<hr/>]]>\r\n</description>\r\n<LookAt>\r\n"
    "<longitude>-43.210500</longitude>\r\n<latitude>-22.951900</latitude>\r\n";
const std::string kKmlTail =
    "<range>800</range>\r\n<tilt>45</tilt>\r\n</LookAt>\r\n%s<Point>\r\n"
    "<coordinates>-43.210500,-22.951900,0</coordinates>\r\n</Point>\r\n</Placemark>\r\n</kml>\r\n";
constexpr char16_t kImage[] = u"C:\\Fotos/Cafe 1.JPG";

std::string Kml(const char* heading, const std::string& style) {
    std::string tail = kKmlTail;
    tail.replace(tail.find("%s"), 2, style);
    return kKmlHead + "<heading>" + heading + "</heading>\r\n" + tail;
}

TEST(Kml, OnlyAPositiveHeadingAddsAStyleTurnedToTheSinglePrecisionHeading) {
    EXPECT_EQ(exif::FormatKml(kImage, kLongitude, kLatitude, 0.0), Kml("0.000000", ""));
    EXPECT_EQ(exif::FormatKml(kImage, kLongitude, kLatitude, -5.0), Kml("-5.000000", ""));
    const std::string style =
        "<Style>\r\n<IconStyle>\r\n<color>ffffffff</color>\r\n<heading>123.400002</heading>\r\n<Icon>\r\n"
        "<href>root://icons/palette-4.png</href>\r\n<x>128</x>\r\n<y>128</y>\r\n<w>32</w>\r\n<h>32</h>\r\n"
        "</Icon>\r\n</IconStyle>\r\n<LineStyle>\r\n<width>0.75</width>\r\n</LineStyle>\r\n</Style>\r\n";
    EXPECT_EQ(exif::FormatKml(kImage, kLongitude, kLatitude, 123.4), Kml("123.400000", style));
}

// Any file name gives a document an XML reader takes, with the name and the
// path as they are; an ASCII one keeps the form above byte for byte.
TEST(Kml, IsValidXmlInUtf8ForAnyFileName) {
    for (const char16_t* image : {u"C:\\Fotos\\\u00C4sthetik_\u6771\u4EAC.jpg", u"C:\\R&D\\a&b <1>.jpg"}) {
        const std::string kml = exif::FormatKml(image, kLongitude, kLatitude, 0.0);
        const bool ascii = std::u16string_view(image).find(u'\u00C4') == std::u16string_view::npos;
        const char* declaration =
            ascii ? "<?xml version=\"1.0\"?>\r\n" : "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n";
        EXPECT_EQ(kml.rfind(declaration, 0), 0u);
        tinyxml2::XMLDocument document;
        ASSERT_EQ(document.Parse(kml.data(), kml.size()), tinyxml2::XML_SUCCESS) << kml;
        const tinyxml2::XMLElement* placemark = document.RootElement()->FirstChildElement("Placemark");
        const std::string path = platform::Utf16ToUtf8(image);
        EXPECT_EQ(placemark->FirstChildElement("name")->GetText(), path.substr(path.rfind('\\') + 1));
        EXPECT_NE(std::string(placemark->FirstChildElement("description")->GetText()).find("<code>" + path + "</code>"),
                  std::string::npos);
    }
}

TEST_F(ShellTest, ExportWritesATimeNamedFileInTheTempFolderAndOpensItAndNothingIntoAMissingOne) {
    fixture::TempDir dir;
    fixture::ScopedTempFolder temp(dir.Utf8Path(""));
    std::u16string first, second;
    exif::ExportKmlAndOpen(kImage, kLongitude, kLatitude, 0.0, first);
    exif::ExportKmlAndOpen(kImage, kLongitude, kLatitude, 0.0, second);
    ASSERT_EQ(opened, (std::vector<std::u16string>{first, second}));
    EXPECT_NE(first, second);
    const std::u16string name = first.substr(first.size() - 26);
    EXPECT_EQ(first.substr(0, first.size() - 26), dir.Path(""));
    EXPECT_EQ(name.substr(0, 5), u"temp_");
    EXPECT_EQ(name.substr(22), u".kml");
    const std::string kml = exif::FormatKml(kImage, kLongitude, kLatitude, 0.0);
    EXPECT_EQ(fixture::ReadAll(first), fixture::Bytes(kml.begin(), kml.end()));
    // Into a missing folder nothing is written or opened.
    fixture::ScopedTempFolder missing(dir.Utf8Path("missing/"));
    std::u16string path = u"left over";
    exif::ExportKmlAndOpen(kImage, kLongitude, kLatitude, 10.0, path);
    EXPECT_TRUE(path.empty());
    EXPECT_EQ(opened.size(), 2u);
}

}  // namespace
