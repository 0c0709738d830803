// The value formats that Nikon's main directory and structures share.
#include <cmath>
#include <cstdio>
#include <string>

#include "nikon_makernote.h"

namespace makernotes {
namespace nikon {

std::string VersionChars(const uint8_t* b, size_t size) {
    std::string v;
    for (size_t i = 0; i < 4 && i < size; ++i) v += b[i] >= ' ' && b[i] <= '~' ? static_cast<char>(b[i]) : '?';
    return v;
}

std::string EvFraction(double v) {
    v *= 1.00001;  // so that 1/3 steps stored as decimals come out whole
    char text[32];
    if (v == 0) return "0";
    // No camera brackets by a million stops: a value beyond any int is only
    // printed, never counted in steps.
    if (!(std::fabs(v) < 1e6)) {
        std::snprintf(text, sizeof text, "%+.3g", v);
        return text;
    }
    if (static_cast<int>(v) / v > 0.999) std::snprintf(text, sizeof text, "%+d", static_cast<int>(v));
    else if (static_cast<int>(v * 2) / (v * 2) > 0.999) std::snprintf(text, sizeof text, "%+d/2", static_cast<int>(v * 2));
    else if (static_cast<int>(v * 3) / (v * 3) > 0.999) std::snprintf(text, sizeof text, "%+d/3", static_cast<int>(v * 3));
    else std::snprintf(text, sizeof text, "%+.3g", v);
    return text;
}

std::string EnumText(const Enumeration& e, int64_t value) {
    if (const char* text = EnumerationText(e, value)) return text;
    return std::to_string(value);
}

}  // namespace nikon
}  // namespace makernotes
