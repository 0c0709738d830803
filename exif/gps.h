// The GPS position computed back from a table's GPS rows.
#pragma once

#include <cstdint>

#include "platform/input.h"
#include "tag_record.h"

namespace exif {

// Signed decimal degrees (negative for S and W). Latitude 100.0 marks "no
// latitude"; heading is GPSImgDirection in degrees, 0 when absent.
struct GpsPosition {
    double latitude = 100.0;
    double longitude = 0.0;
    double heading = 0.0;
};

// Decodes entryCount GPS directory entries from `entries` (in its byte order,
// which the values share) into rows tagged kGpsTagBase + the GPS tag; tags it does not name are read
// and dropped. Stops at a short read. The caller has checked
// *rowCount + entryCount < 256.
void ProcessGpsEntries(platform::Cursor& entries, uint32_t base, TagRecordTable& table, uint32_t* rowCount,
                       uint32_t entryCount);

// Walks rows 401 (ref), 402 (latitude), 403 (ref), 404 (longitude) and 417
// (direction); a later row of a tag overwrites an earlier one.
GpsPosition ComputeGpsPosition(const TagRecordTable& table, uint32_t rowCount);

// Degrees + minutes / 60 + seconds / 3600 from the first three blank-separated
// numbers of a text such as "48  51  29.76 (48.858267)"; missing fields are 0.
double ParseDegMinSec(const char* text);

}  // namespace exif
