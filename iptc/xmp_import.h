// Filling IPTC fields from an image's XMP packet, for files that carry XMP
// but no IPTC block. The packet is flattened into rows by xmp/xmp_rows.h; this
// picks the rows that correspond to IPTC fields.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "iptc_data.h"
#include "platform/platform.h"
#include "xmp/xmp_rows.h"

namespace iptc {

struct XmpToIptcRow {
    const char* property;   // XMP property name, compared without regard to case
    int dataset;            // the IptcData field it fills
};

// The first row of the list whose name matches and whose value is not
// empty fills the field. photoshop:DateCreated fills Created Date (55) and,
// when it has a time part, Created Time (60).
inline constexpr XmpToIptcRow XmpToIptcMap[21] = {
    {"dc:title", kObjectName},
    {"photoshop:Urgency", kPriority},
    {"photoshop:Category", kCategory},
    {"photoshop:SupplementalCategories", kSupplementalCategory},
    {"dc:subject", kKeywords},
    {"photoshop:Instructions", kSpecialInstructions},
    {"dc:creator", kByline},
    {"photoshop:AuthorsPosition", kBylineTitle},
    {"photoshop:City", kCity},
    {"iptc4xmpCore:Location", kSubLocation},
    {"photoshop:State", kProvinceState},
    {"iptc4xmpCore:CountryCode", kCountryCode},
    {"photoshop:Country", kCountry},
    {"photoshop:TransmissionReference", kTransmissionReference},
    {"photoshop:Headline", kHeadline},
    {"photoshop:Credit", kCredit},
    {"photoshop:Source", kSource},
    {"dc:rights", kCopyright},
    {"dc:description", kCaption},
    {"photoshop:CaptionWriter", kCaptionWriter},
    {"photoshop:DateCreated", kCreatedDate},
};

// Fills the fields from already flattened rows: a multi-valued property's
// items ("a|b") become lines ("a\r\nb"). Returns the number of fields filled.
int ImportXmpRows(const xmp::XmpRows& rows, IptcData& data);

// Reads the file's first XMP APP1, or the packet another container keeps
// (metadata_segment.h; its length and offset go to the record's XMP
// members), flattens it and fills the fields; marks the record UTF-8.
// Does nothing unless `enable` is 1 and the file is not a TIFF. Returns the
// number of fields filled.
int ImportXmpIntoIptc(std::u16string_view fileName, IptcData& data, int enable, int isTiff);
int ImportXmpIntoIptc(platform::File& file, IptcData& data, int enable, int isTiff);

// The file's XMP packet (found as ImportXmpIntoIptc finds it, its length and
// offset stored in the record's XMP members) flattened into `rows`, cleared
// first. Returns the number of rows; 0 when there is no packet.
size_t ReadXmpRows(platform::File& file, IptcData& data, xmp::XmpRows& rows);

}  // namespace iptc
