// Map links, the GeoHack link and the KML placemark for a GPS position.
//
// Coordinates are always written as "%f" would write them in the C locale
// (fixed, six decimals, a point), whatever locale the viewer runs in: a comma
// as decimal separator would break every link and the KML numbers.
#include "map_links.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "platform/platform.h"

namespace exif {
namespace {

// "%f" of the C locale.
void AppendFixed(std::string& out, double value) {
    // The largest double needs 309 integer digits, a sign, a point and six decimals.
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 6);
    if (result.ec == std::errc()) out.append(buffer, result.ptr);
}

// A printf-style template with only "%f" and "%%": each "%f" takes the next of
// values in turn, starting again at the first when they run out.
std::string FillTemplate(std::string_view format, std::initializer_list<double> values) {
    std::string out;
    auto next = values.begin();
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '%' && i + 1 < format.size()) {
            if (format[i + 1] == 'f') {
                if (next == values.end()) next = values.begin();
                AppendFixed(out, *next++);
                ++i;
                continue;
            }
            if (format[i + 1] == '%') {
                out.push_back('%');
                ++i;
                continue;
            }
        }
        out.push_back(format[i]);
    }
    return out;
}

std::u16string Widen(std::string_view ascii) { return std::u16string(ascii.begin(), ascii.end()); }

// Each web service is reached on its public https host; the Bing app is a
// URI scheme of its own and has none. Every "%f" takes latitude and longitude
// by turns.
struct MapLinkTemplate {
    MapService service;
    const char* origin;
    const char* pathAndQuery;
};

constexpr MapLinkTemplate kMapLinks[] = {
    {MapService::kGoogleMaps, "https://www.google.com", "/maps/place/%f,%f/@%f,%f,15z"},
    {MapService::kGoogleMapsSatellite, "https://www.google.com", "/maps/place/%f,%f/@%f,%f,15z/data=!3m1!1e3"},
    {MapService::kOpenStreetMap, "https://www.openstreetmap.org", "/?mlat=%f&mlon=%f&zoom=15"},
    {MapService::kBingMaps, "https://www.bing.com",
     "/maps/?v=2&cp=%f~%f&lvl=16&dir=0&sty=c&sp=point.%f_%f_PhotoLocation"},
    {MapService::kBingMapsApp, "", "bingmaps:?collection=point.%f_%f_PhotoLocation&lvl=16"},
    {MapService::kNaverMap, "https://map.naver.com", "/v5/?lat=%f&lng=%f&title=IMG"},
    // The place label is the camera pictograph U+1F4F7, already URL-encoded.
    {MapService::kKakaoMap, "https://map.kakao.com", "/link/map/%%F0%%9F%%93%%B7,%f,%f"},
};

constexpr const char* kGeoHackLinkStart = "https://geohack.toolforge.org/geohack/geohack.php?language=en&params=";

// The namespace Google Earth expects for a KML 2.0 document.
constexpr const char* kKml20Namespace = "http://earth.google.com/kml/2.0";

std::string_view ValueText(const TagRecord& row) {
    return std::string_view(row.value, strnlen(row.value, kTagValueSize));
}

char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// The decimal-degree figure that the GPS reader puts in parentheses at the
// end of a coordinate text: what follows the last "(", less the closing one.
std::string DecimalFigure(std::string_view value) {
    const size_t open = value.rfind('(');
    const size_t start = open == std::string_view::npos ? 0 : open + 1;
    const size_t end = value.empty() ? 0 : value.size() - 1;
    if (start >= end) return std::string();
    return std::string(value.substr(start, end - start));
}

// The file name with its extension: what follows the last folder separator
// (either slash) or a drive letter's colon.
std::u16string_view FileNameOf(std::u16string_view path) {
    size_t start = path.find_last_of(u"\\/");
    if (start != std::u16string_view::npos) return path.substr(start + 1);
    if (path.size() >= 2 && path[1] == u':') return path.substr(2);
    return path;
}

void Append(std::u16string& out, std::string_view ascii) { out.append(ascii.begin(), ascii.end()); }

// Element text: the two characters that would end it or start markup.
void AppendEscaped(std::u16string& out, std::u16string_view text) {
    for (char16_t c : text) {
        if (c == u'&') Append(out, "&amp;");
        else if (c == u'<') Append(out, "&lt;");
        else out.push_back(c);
    }
}

void AppendFixed(std::u16string& out, double value) {
    std::string text;
    AppendFixed(text, value);
    Append(out, text);
}

}  // namespace

std::u16string FormatMapLink(MapService service, double latitude, double longitude) {
    for (const MapLinkTemplate& link : kMapLinks) {
        if (link.service == service)
            return Widen(std::string(link.origin) + FillTemplate(link.pathAndQuery, {latitude, longitude}));
    }
    return std::u16string();
}

void OpenMapLink(MapService service, double latitude, double longitude) {
    const std::u16string link = FormatMapLink(service, latitude, longitude);
    if (!link.empty()) platform::ShellOpen(link);
}

MapService GoogleMapsServiceFor(std::u16string_view settingsPath) {
    return platform::ReadSettingInt(settingsPath, u"EXIF", u"Satellite", 0) != 0 ? MapService::kGoogleMapsSatellite
                                                                              : MapService::kGoogleMaps;
}

std::string BuildGeoHackParams(const TagRecordTable& table, uint32_t rowCount) {
    char latitudeRef = 0;
    char longitudeRef = 0;
    std::string latitude;
    std::string longitude;
    const uint32_t rows = std::min(rowCount, kTagTableRows);
    for (uint32_t i = 0; i < rows; ++i) {
        const TagRecord& row = table.rows[i];
        const std::string_view value = ValueText(row);
        const char first = value.empty() ? 0 : UpperAscii(value[0]);
        switch (row.tag) {
            case kGpsTagBase + 1: latitudeRef = first; break;
            case kGpsTagBase + 2: latitude = DecimalFigure(value); break;
            case kGpsTagBase + 3: longitudeRef = first; break;
            case kGpsTagBase + 4: longitude = DecimalFigure(value); break;
            default: break;
        }
    }
    // Only "W" counts as west here; GeoHack is given the reference as written.
    if (latitudeRef == 'S') latitude.insert(0, 1, '-');
    if (longitudeRef == 'W') longitude.insert(0, 1, '-');
    return latitude + ";" + longitude;
}

std::string FormatGeoHackLink(std::string_view geoHackParams) {
    return std::string(kGeoHackLinkStart) + std::string(geoHackParams);
}

void OpenGeoHackLink(std::string_view geoHackParams) {
    // The link is narrow text in the ANSI code page, as the shell's narrow entry would read it.
    platform::ShellOpen(platform::AnsiToUtf16(FormatGeoHackLink(geoHackParams)));
}

std::string FormatKml(std::u16string_view imagePath, double longitude, double latitude, double heading) {
    std::u16string slashed(imagePath);
    std::replace(slashed.begin(), slashed.end(), u'\\', u'/');

    // A path beyond ASCII makes the file UTF-8 and says so: undeclared bytes
    // of the ANSI code page are not XML (Google Earth refuses the file), and
    // that code page turns the characters it lacks into "?".
    const bool ascii = std::all_of(imagePath.begin(), imagePath.end(), [](char16_t c) { return c < 0x80; });
    std::u16string text;
    Append(text, ascii ? "<?xml version=\"1.0\"?>\n" : "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    Append(text, "<kml xmlns=\"");
    Append(text, kKml20Namespace);
    Append(text, "\">\n<Placemark>\n");
    Append(text, "<name>");
    AppendEscaped(text, FileNameOf(imagePath));
    Append(text, "</name>\n");
    Append(text, "<description>\n");
    Append(text, "<![CDATA[<b>Lat: </b><code>");
    AppendFixed(text, latitude);
    Append(text, "</code>, <b>Lon: </b><code>");
    AppendFixed(text, longitude);
    Append(text, "</code><b></b><br/><br/><img src='file:///");
    text += slashed;
    Append(text, "' width='200'/>\n");
    Append(text, "<br/><br/>\n");
    Append(text, "<b>File:</b><br/>\n");
    Append(text, "<code>");
    text += imagePath;
    Append(text, "</code>\n");
    Append(text, "<hr/>]]>\n");
    Append(text, "</description>\n");
    Append(text, "<LookAt>\n");
    Append(text, "<longitude>");
    AppendFixed(text, longitude);
    Append(text, "</longitude>\n");
    Append(text, "<latitude>");
    AppendFixed(text, latitude);
    Append(text, "</latitude>\n");
    Append(text, "<heading>");
    AppendFixed(text, heading);
    Append(text, "</heading>\n");
    Append(text, "<range>800</range>\n");
    Append(text, "<tilt>45</tilt>\n");
    Append(text, "</LookAt>\n");
    // Without a direction the default pin is shown; with one, a pointer turned to it.
    if (heading > 0) {
        Append(text, "<Style>\n<IconStyle>\n<color>ffffffff</color>\n<heading>");
        AppendFixed(text, static_cast<double>(static_cast<float>(heading)));
        Append(text,
               "</heading>\n<Icon>\n<href>root://icons/palette-4.png</href>\n"
               "<x>128</x>\n<y>128</y>\n<w>32</w>\n<h>32</h>\n</Icon>\n</IconStyle>\n"
               "<LineStyle>\n<width>0.75</width>\n</LineStyle>\n</Style>\n");
    }
    Append(text, "<Point>\n");
    Append(text, "<coordinates>");
    AppendFixed(text, longitude);
    Append(text, ",");
    AppendFixed(text, latitude);
    Append(text, ",0</coordinates>\n");
    Append(text, "</Point>\n</Placemark>\n</kml>\n");

    // Google Earth has always been given this file as Windows text: CR LF
    // line ends, the same bytes on every platform.
    std::u16string crlf;
    crlf.reserve(text.size() + 64);
    for (char16_t c : text) {
        if (c == u'\n') crlf.push_back(u'\r');
        crlf.push_back(c);
    }
    return platform::Utf16ToUtf8(crlf);
}

void ExportKmlAndOpen(std::u16string_view imagePath, double longitude, double latitude, double heading,
                      std::u16string& kmlTempPath) {
    kmlTempPath.clear();
    std::u16string folder = platform::TempFolder();
    if (folder.empty() || (folder.back() != u'\\' && folder.back() != u'/')) folder += platform::kPathSeparator;

    // The name carries the millisecond; waiting first keeps two quick exports apart.
    platform::SleepMilliseconds(10);
    const platform::LocalTime now = platform::GetLocalTime();
    char name[128];
    std::snprintf(name, sizeof name, "temp_%04d%02d%02d%02d%02d%02d%03d.kml", now.year, now.month, now.day,
                  now.hour, now.minute, now.second, now.millisecond);
    const std::u16string path = folder + Widen(name);

    auto file = platform::OpenFile(path, platform::FileMode::kWrite);
    if (!file) return;
    const std::string kml = FormatKml(imagePath, longitude, latitude, heading);
    const bool written = file->WriteAll(kml.data(), kml.size()) && file->Flush();
    file.reset();
    if (!written) {
        // A half-written placemark would only confuse the viewer that opens it.
        platform::RemoveFile(path);
        return;
    }
    kmlTempPath = path;
    platform::ShellOpen(path);
}

}  // namespace exif
