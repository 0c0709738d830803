// The reading exports on an input the caller holds: the exports open the
// file once and call these; the fuzz targets hand them bytes in memory. Each
// answers exactly as its export does for a file with the same bytes.
#pragma once

#include <cstdint>

#include "exif/tag_record.h"
#include "iptc/iptc_data.h"
#include "platform/platform.h"

namespace vv {

// LoadData_EXIF_W and LoadTag_EXIF_W reading into `table`, which may hold
// the rows of an earlier call: its long values are freed and its rows
// cleared as they are taken again. `path` serves only the map actions.
int32_t LoadExifData(platform::File& input, exif::TagRecordTable& table, char16_t* out, int32_t capacity,
                     int32_t mode);
int32_t LoadExifTag(platform::File& input, exif::TagRecordTable& table, const char16_t* path, int32_t tag,
                    char16_t* out, int32_t capacity);
// GetExifInfos on an open input.
uint64_t LocateExifInfos(platform::File& input, uint32_t* size, uint32_t* out2, uint32_t* out3,
                         uint32_t* out4, uint32_t* out5, int32_t formatCode);

// LoadData_IPTC_W and LoadTag_IPTC_W, reading into `record` (cleared first).
int32_t LoadIptcText(platform::File& input, iptc::IptcData& record, char16_t* out, int32_t capacity,
                     int32_t mode);
int32_t LoadIptcTag(platform::File& input, iptc::IptcData& record, int32_t dataset, char16_t* out,
                    int32_t capacity);

// Load_Comment_W.
int32_t LoadPngComment(platform::File& input, char16_t* out, int32_t capacity, int32_t unused,
                       const char16_t* formats);

}  // namespace vv
