// The pieces of the Canon decoder that its files share: what the second
// pass knows of the camera, a record as read, and the value formats of the
// records' settings. The plain tags and the second pass are in
// canon_makernote.cpp; the records' settings in canon_settings_records.cpp
// (camera settings, focal length, shot info, panorama) and
// canon_image_records.cpp (file info, processing and the smaller records);
// the formats they share in canon_values.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "makernote_decoders.h"

namespace makernotes {
namespace canon {

// What the second pass knows about the note and the camera: the Model text,
// and settings that later records depend on.
struct CanonNote {
    std::string model;
    int bigEndian = 0;
    int64_t focalUnits = 1;
    int64_t focusDistanceUpper = 0;  // of the record being read

    bool ModelHas(const char* word) const { return model.find(word) != std::string::npos; }
    bool IsCompact() const { return ModelHas("PowerShot") || ModelHas("IXUS") || ModelHas("IXY"); }
    // The 20D and 350D record some settings in units of their own.
    bool CountsLike350D() const {
        return ModelHas("20D") || ModelHas("350D") || ModelHas("REBEL XT") || ModelHas("Kiss Digital N");
    }
    bool ModelEnds(const char* word) const {
        const size_t n = std::strlen(word);
        return model.size() >= n && model.compare(model.size() - n, n, word) == 0;
    }
};

// One record as read: each element widened with the record's sign.
struct Record {
    const int64_t* values;
    size_t size;
    CanonNote& note;

    int64_t At(size_t i) const { return i < size ? values[i] : 0; }
    uint16_t U16(size_t i) const { return static_cast<uint16_t>(At(i)); }
};

// Writes the setting's text; false when the setting gives no row.
using FieldFormat = bool (*)(const Record&, size_t index, exif::TagRecord&);

struct Field {
    uint16_t index;
    const char* name;
    FieldFormat format;
};

// How a record's elements are stored (2 or 4 bytes, signed or not) and its
// settings. An entry of another size is not read.
struct RecordTag {
    uint16_t tag;
    uint32_t elementSize;
    bool isSigned;
    const Field* fields;
    size_t size;
};

template <size_t N>
constexpr RecordTag Fields(uint16_t tag, uint32_t elementSize, bool isSigned, const Field (&fields)[N]) {
    return {tag, elementSize, isSigned, fields, N};
}

// A list of record tags, each tag once.
using RecordTags = List<RecordTag>;

// The records of canon_settings_records.cpp and canon_image_records.cpp.
extern const RecordTags kSettingsRecords;
extern const RecordTags kImageRecords;

// ------------------------------------------------------------ value formats

// A ready text; true.
bool Text(exif::TagRecord& row, const char* text);
// A number to 15 significant digits, no trailing zeros; true.
bool Number(exif::TagRecord& row, double v);

// Canon's exposure steps: 32 to a stop, with 12 and 20 standing for a third
// and two thirds.
double CanonEv(int64_t raw);
// An exposure time: "1/n" up to a quarter second, else seconds with one
// decimal (".0" left off).
bool ExposureTime(exif::TagRecord& row, double seconds);
// A step in EV as a signed fraction in halves or thirds where it is one.
bool Fraction(exif::TagRecord& row, double v);

// Settings of records (a FieldFormat each).
bool Plain(const Record& r, size_t i, exif::TagRecord& row);
bool PlainU16(const Record& r, size_t i, exif::TagRecord& row);
// The element through an enumeration, else its number; no row when it holds
// the sentinel `Unused`.
template <const Enumeration& E, int64_t Unused = INT64_MIN>
bool Enumerated(const Record& r, size_t i, exif::TagRecord& row) {
    if (r.At(i) == Unused) return false;
    if (const char* text = EnumerationText(E, r.At(i))) return Text(row, text);
    return Number(row, static_cast<double>(r.At(i)));
}

// Signed settings around a normal of 0, with 0x7FFF for "not recorded".
bool Parameter(const Record& r, size_t i, exif::TagRecord& row);
bool Sharpness(const Record& r, size_t i, exif::TagRecord& row);
bool NotMinusOne(const Record& r, size_t i, exif::TagRecord& row);
bool Aperture(const Record& r, size_t i, exif::TagRecord& row);
bool Tenths(const Record& r, size_t i, exif::TagRecord& row);
bool Distance(const Record& r, size_t i, exif::TagRecord& row);
// The upper focus distance opens a pair: 0 means neither is known.
bool DistanceUpper(const Record& r, size_t i, exif::TagRecord& row);
bool DistanceLower(const Record& r, size_t i, exif::TagRecord& row);

// Enumerations of the camera settings and shot info that other records name too.
extern const Enumeration kQuality;
extern const Enumeration kImageSize;
extern const Enumeration kWhiteBalance;

}  // namespace canon
}  // namespace makernotes
