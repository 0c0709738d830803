// The value formats of the Canon records' settings.
#include <cmath>
#include <cstdio>
#include <cstring>

#include "canon_makernote.h"

namespace makernotes {
namespace canon {

bool Text(exif::TagRecord& row, const char* text) {
    exif::SetRowValue(row, text);
    return true;
}

bool Number(exif::TagRecord& row, double v) {
    SetValuef(row, "%.15g", v);
    return true;
}

// Canon's exposure steps: 32 to a stop, with 12 and 20 standing for a third
// and two thirds.
double CanonEv(int64_t raw) {
    const int64_t sign = raw < 0 ? -1 : 1;
    const int64_t v = raw < 0 ? -raw : raw;
    double fraction = static_cast<double>(v & 0x1F);
    if (fraction == 12) fraction = 32.0 / 3;
    else if (fraction == 20) fraction = 64.0 / 3;
    return static_cast<double>(sign) * (static_cast<double>(v - (v & 0x1F)) + fraction) / 32;
}

// An exposure time: "1/n" up to a quarter second, else seconds with one
// decimal (".0" left off).
bool ExposureTime(exif::TagRecord& row, double seconds) {
    if (seconds > 0 && seconds < 0.25001) {
        // The shortest times a hostile code gives do not fit an int.
        SetValuef(row, "1/%.0f", std::floor(0.5 + 1 / seconds));
        return true;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", seconds);
    const size_t n = std::strlen(text);
    if (n > 2 && std::strcmp(text + n - 2, ".0") == 0) text[n - 2] = '\0';
    return Text(row, text);
}

// A step in EV as a signed fraction in halves or thirds where it is one.
bool Fraction(exif::TagRecord& row, double v) {
    v *= 1.00001;  // round-off
    if (v == 0) return Text(row, "0");
    const double halves = v * 2, thirds = v * 3;
    if (std::trunc(v) / v > 0.999) SetValuef(row, "%+d", static_cast<int>(v));
    else if (std::trunc(halves) / halves > 0.999) SetValuef(row, "%+d/2", static_cast<int>(halves));
    else if (std::trunc(thirds) / thirds > 0.999) SetValuef(row, "%+d/3", static_cast<int>(thirds));
    else SetValuef(row, "%+.3g", v);
    return true;
}

bool Plain(const Record& r, size_t i, exif::TagRecord& row) { return Number(row, static_cast<double>(r.At(i))); }
bool PlainU16(const Record& r, size_t i, exif::TagRecord& row) { return Number(row, r.U16(i)); }

// Signed settings around a normal of 0, with 0x7FFF for "not recorded".
bool Parameter(const Record& r, size_t i, exif::TagRecord& row) {
    const int64_t v = r.At(i);
    if (v == 0x7FFF) return false;
    if (v == 0) return Text(row, "Normal");
    SetValuef(row, v > 0 ? "+%lld" : "%lld", static_cast<long long>(v));
    return true;
}

bool Sharpness(const Record& r, size_t i, exif::TagRecord& row) {
    const int64_t v = r.At(i);
    if (v == 0x7FFF) return false;
    SetValuef(row, v > 0 ? "+%lld" : "%lld", static_cast<long long>(v));
    return true;
}

bool NotMinusOne(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) != -1 && Plain(r, i, row); }

bool Aperture(const Record& r, size_t i, exif::TagRecord& row) {
    if (r.At(i) <= 0) return false;
    SetValuef(row, "%.2g", std::exp2(CanonEv(r.At(i)) / 2));
    return true;
}

bool Tenths(const Record& r, size_t i, exif::TagRecord& row) { return Number(row, static_cast<double>(r.At(i)) / 10); }

bool Distance(const Record& r, size_t i, exif::TagRecord& row) {
    const double metres = r.U16(i) / 100.0;
    if (metres > 655.345) return Text(row, "inf");
    SetValuef(row, "%.15g m", metres);
    return true;
}

// The upper focus distance opens a pair: 0 means neither is known.
bool DistanceUpper(const Record& r, size_t i, exif::TagRecord& row) {
    r.note.focusDistanceUpper = r.U16(i);
    return r.U16(i) != 0 && Distance(r, i, row);
}
bool DistanceLower(const Record& r, size_t i, exif::TagRecord& row) {
    return r.note.focusDistanceUpper != 0 && Distance(r, i, row);
}

}  // namespace canon
}  // namespace makernotes
