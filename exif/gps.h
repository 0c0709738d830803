// The GPS position computed back from a table's GPS rows.
#pragma once

#include <cstdint>

#include "tag_record.h"

namespace exif {

// Signed decimal degrees (negative for S and W). Latitude 100.0 marks "no
// latitude"; heading is GPSImgDirection in degrees, 0 when absent.
struct GpsPosition {
    double latitude = 100.0;
    double longitude = 0.0;
    double heading = 0.0;
};

// Walks rows 401 (ref), 402 (latitude), 403 (ref), 404 (longitude) and 417
// (direction); a later row of a tag overwrites an earlier one.
GpsPosition ComputeGpsPosition(const TagRecordTable& table, uint32_t rowCount);

// Degrees + minutes / 60 + seconds / 3600 from the first three blank-separated
// numbers of a text such as "48  51  29.76 (48.858267)"; missing fields are 0.
double ParseDegMinSec(const char* text);

}  // namespace exif
