// Map links and the KML placemark for a GPS position: each formats a link or
// writes a file and hands it to the shell (platform::ShellOpen). Nothing is
// sent or received by the plug-in itself.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tag_record.h"

namespace exif {

enum class MapService {
    kGoogleMaps,
    kGoogleMapsSatellite,
    kOpenStreetMap,
    kBingMaps,
    kBingMapsApp,
    kNaverMap,
    kKakaoMap,
};

// The service's link for a position (coordinates in "%f").
std::u16string FormatMapLink(MapService service, double latitude, double longitude);
// Formats the link and opens it with the shell.
void OpenMapLink(MapService service, double latitude, double longitude);
// The Google Maps form the user chose: satellite when key "Satellite" of
// section "EXIF" in the settings file is not 0, read at each call.
MapService GoogleMapsServiceFor(std::u16string_view settingsPath);

// "%s;%s" of the decimal latitude and longitude taken from rows 401..404
// (a leading "-" for S and W), for the GeoHack link.
std::string BuildGeoHackParams(const TagRecordTable& table, uint32_t rowCount);
std::string FormatGeoHackLink(std::string_view geoHackParams);
void OpenGeoHackLink(std::string_view geoHackParams);

// The KML 2.0 placemark document for an image at a position, as the bytes
// written to disk: CR LF line ends, UTF-8, declared so when the image's path
// is not ASCII; "&" and "<" in the name are escaped. A valid XML document for
// any file name.
std::string FormatKml(std::u16string_view imagePath, double longitude, double latitude, double heading);
// Writes the placemark to "temp_<local time>.kml" in the temporary folder and
// opens it with the shell; kmlTempPath receives the file's path (empty when
// the file could not be created, in which case nothing is opened).
void ExportKmlAndOpen(std::u16string_view imagePath, double longitude, double latitude, double heading,
                      std::u16string& kmlTempPath);

}  // namespace exif
