#include "gps.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

#include "exif_limits.h"
#include "exif_reader.h"
#include "tag_table.h"

namespace exif {
namespace {

constexpr uint32_t kRowLatitudeRef = kGpsTagBase + 1;
constexpr uint32_t kRowLatitude = kGpsTagBase + 2;
constexpr uint32_t kRowLongitudeRef = kGpsTagBase + 3;
constexpr uint32_t kRowLongitude = kGpsTagBase + 4;
constexpr uint32_t kRowImgDirection = kGpsTagBase + 17;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A decimal number ("29.76", "-3") at p, without the C library's locale;
// p moves past it. False when no number starts at p.
bool ParseDecimal(const char*& p, double& value) {
    const char* q = p;
    const bool negative = *q == '-';
    if (*q == '-' || *q == '+') ++q;
    if (!IsDigit(*q) && !(*q == '.' && IsDigit(q[1]))) return false;
    double whole = 0;
    while (IsDigit(*q)) whole = whole * 10 + (*q++ - '0');
    double fraction = 0, scale = 1;
    if (*q == '.') {
        ++q;
        // Digits past double precision add nothing.
        for (int digits = 0; IsDigit(*q); ++q, ++digits) {
            if (digits < 17) {
                fraction = fraction * 10 + (*q - '0');
                scale *= 10;
            }
        }
    }
    value = whole + fraction / scale;
    if (negative) value = -value;
    p = q;
    return true;
}

void SkipBlanks(const char*& p) {
    while (*p == ' ' || *p == '\t') ++p;
}

// ------------------------------------------------------------ formatters

// The four version bytes, in the order the word holds them. In a big-endian
// file they come reversed, and so does the finished text.
void VersionId(const EntryContext& c) {
    const uint32_t v = c.entry.valueField;
    char text[32];
    std::snprintf(text, sizeof text, "%u.%u.%u.%u", v & 0xFF, v >> 8 & 0xFF, v >> 16 & 0xFF, v >> 24);
    if (c.bigEndian()) std::reverse(text, text + std::strlen(text));
    SetRowValue(c.row, text);
}

void Text(const EntryContext& c) { ReadTextValue(c, /*characterCodeHeader=*/false); }

void Coordinate(const EntryContext& c) {
    const std::string dms = tiff::FormatMultiRational(c.input, c.base, c.entry.valueField,
                                                std::min(c.entry.count, kGpsRationalsLimit),
                                                tiff::RationalDecimals::kTrimmedSix);
    char degrees[64];
    std::snprintf(degrees, sizeof degrees, " (%f)", ParseDegMinSec(dms.c_str()));
    SetRowValue(c.row, dms + degrees);
}

constexpr EnumText kAltitudeRefTexts[] = {
    {0, "Above Sea Level"},
    {1, "Below Sea Level (Sea level reference)"},
};

void AltitudeRef(const EntryContext& c) {
    // The BYTE is the top byte of the word in a big-endian file.
    const uint32_t value = c.bigEndian() ? c.entry.valueField >> 24 : c.entry.valueField & 0xFFFF;
    for (const EnumText& t : kAltitudeRefTexts)
        if (t.value == value) return SetRowValue(c.row, t.text);
    char text[32];
    std::snprintf(text, sizeof text, "%u (other)", value);
    SetRowValue(c.row, text);
}

void Altitude(const EntryContext& c) {
    const std::string metres = tiff::FormatSingleRational(c.input, c.base, c.entry.valueField, false);
    if (!metres.empty()) SetRowValue(c.row, metres + " m");
}

void TimeStamp(const EntryContext& c) {
    SetRowValue(c.row, tiff::FormatMultiRational(c.input, c.base, c.entry.valueField,
                                           std::min(c.entry.count, kGpsRationalsLimit),
                                           tiff::RationalDecimals::kTrimmedSix));
}

void DirectionRef(const EntryContext& c) {
    ReadTextValue(c, false);
    if (c.row.value[0] == 'T') SetRowValue(c.row, "True direction");
    else if (c.row.value[0] == 'M') SetRowValue(c.row, "Magnetic direction");
}

void Direction(const EntryContext& c) {
    SetRowValue(c.row, tiff::FormatMultiRational(c.input, c.base, c.entry.valueField, 1,
                                           tiff::RationalDecimals::kTrimmedSix));
}

// Sorted by GPS tag; each tag once. Rows carry kGpsTagBase + the tag.
constexpr TagInfo kGpsTags[] = {
    {0, "GPSVersionID", VersionId},
    {1, "GPSLatitudeRef", Text},
    {2, "GPSLatitude", Coordinate},
    {3, "GPSLongitudeRef", Text},
    {4, "GPSLongitude", Coordinate},
    {5, "GPSAltitudeRef", AltitudeRef},
    {6, "GPSAltitude", Altitude},
    {7, "GPSTimeStamp", TimeStamp},
    {16, "GPSImgDirectionRef", DirectionRef},
    {17, "GPSImgDirection", Direction},
    {29, "GPSDateStamp", Text},
};
static_assert(SortedAndNamed(kGpsTags), "sorted, each tag once, each named");
// GPS rows (kGpsTagBase + the tag) stay clear of the position's pseudo tag.
static_assert(kGpsTagBase + kGpsTags[std::size(kGpsTags) - 1].tag < kGpsPositionPseudoTag, "GPS rows below 499");

}  // namespace

const TagInfo* FindGpsTag(uint16_t gpsTag) {
    for (const TagInfo& t : kGpsTags)
        if (t.tag == gpsTag) return &t;
    return nullptr;
}

const DirectoryTags kGpsDirectory = {FindGpsTag, kGpsTagBase};

double ParseDegMinSec(const char* text) {
    if (!text) return 0;
    double parts[3] = {0, 0, 0};
    const char* p = text;
    for (double& part : parts) {
        SkipBlanks(p);
        if (!ParseDecimal(p, part)) break;
        // The rest of a token such as "5.00/0.00" (a zero denominator).
        while (*p && *p != ' ' && *p != '\t') ++p;
    }
    return parts[0] + parts[1] / 60 + parts[2] / 3600;
}

GpsPosition ComputeGpsPosition(const TagRecordTable& table, uint32_t rowCount) {
    GpsPosition position;
    double latitudeSign = 1, longitudeSign = 1;
    const uint32_t n = std::min(rowCount, kTagTableRows);
    for (uint32_t i = 0; i < n; ++i) {
        const TagRecord& row = table.rows[i];
        switch (row.tag) {
            case kRowLatitudeRef:
                latitudeSign = std::strcmp(row.value, "S") == 0 ? -1 : 1;
                break;
            case kRowLatitude:
                position.latitude = ParseDegMinSec(row.value);
                break;
            case kRowLongitudeRef:
                // "O" (Ouest) is west too.
                longitudeSign = std::strcmp(row.value, "W") == 0 || std::strcmp(row.value, "O") == 0 ? -1 : 1;
                break;
            case kRowLongitude:
                position.longitude = ParseDegMinSec(row.value);
                break;
            case kRowImgDirection: {
                const char* p = row.value;
                SkipBlanks(p);
                double heading = 0;
                position.heading = ParseDecimal(p, heading) ? heading : 0;
                break;
            }
            default:
                break;
        }
    }
    // The sign applies even to the marker value 100 when there is no latitude:
    // consumers test for the latitude row, not for the number.
    position.latitude *= latitudeSign;
    position.longitude *= longitudeSign;
    return position;
}

}  // namespace exif
