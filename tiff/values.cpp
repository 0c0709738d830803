#include "values.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace tiff {
namespace {

// The x87 unit that 32-bit Windows code uses keeps excess precision in its
// registers; a trip through memory rounds to single precision as SSE does.
float Single(float value) {
    volatile float stored = value;
    return stored;
}

bool ReadRationalAt(platform::File& file, int64_t position, int bigEndian, uint32_t& numerator,
                    uint32_t& denominator) {
    PositionGuard guard(file);
    uint8_t raw[8];
    if (!file.Seek(position) || !file.ReadExact(raw, sizeof raw)) return false;
    numerator = GetU32(raw, bigEndian);
    denominator = GetU32(raw + 4, bigEndian);
    return true;
}

}  // namespace

float Quotient(uint32_t numerator, uint32_t denominator, bool isSigned) {
    if (isSigned)
        return Single(Single(static_cast<float>(static_cast<int32_t>(numerator))) /
                      Single(static_cast<float>(static_cast<int32_t>(denominator))));
    return Single(Single(static_cast<float>(numerator)) / Single(static_cast<float>(denominator)));
}

size_t ReadValueBytes(platform::File& file, uint32_t base, const Entry& entry, uint8_t* out, size_t maxBytes) {
    const uint64_t total = static_cast<uint64_t>(entry.count) * TypeSize(entry.type);
    const size_t want = static_cast<size_t>(std::min<uint64_t>(total, maxBytes));
    if (total <= kValueFieldSize) {
        std::memcpy(out, entry.fieldBytes, want);
        return want;
    }
    PositionGuard guard(file);
    if (!file.Seek(At(base, entry.valueField))) return 0;
    return file.Read(out, want);
}

bool ReadRational(platform::File& file, uint32_t base, uint32_t offset, int bigEndian, uint32_t& numerator,
                  uint32_t& denominator) {
    return ReadRationalAt(file, At(base, offset), bigEndian, numerator, denominator);
}

std::string FormatMultiRational(platform::File& file, uint32_t base, uint32_t offset, uint32_t maxCount,
                                int bigEndian, RationalDecimals decimals) {
    std::string out;
    for (uint32_t i = 0; i < maxCount && out.size() < kMultiRationalTextLimit; ++i) {
        uint32_t numerator = 0, denominator = 0;
        if (!ReadRationalAt(file, At(base, offset) + 8 * static_cast<int64_t>(i), bigEndian, numerator,
                            denominator))
            break;
        char text[64];
        if (denominator == 1) {
            std::snprintf(text, sizeof text, "%u", numerator);
        } else if (denominator == 0) {
            std::snprintf(text, sizeof text, "%.2f/%.2f", static_cast<double>(numerator), 0.0);
        } else {
            const float quotient = Quotient(numerator, denominator, false);
            if (decimals == RationalDecimals::kTwo) {
                std::snprintf(text, sizeof text, "%0.2f", static_cast<double>(quotient));
            } else {
                std::snprintf(text, sizeof text, "%0.6f", static_cast<double>(quotient));
                size_t n = std::strlen(text);
                while (n > 0 && text[n - 1] == '0') text[--n] = '\0';
                if (n > 0 && text[n - 1] == '.') text[--n] = '\0';
            }
        }
        if (i > 0) out += "  ";
        out += text;
    }
    if (out.size() > kMultiRationalTextLimit) out.resize(kMultiRationalTextLimit);
    return out;
}

std::string FormatSingleRational(platform::File& file, uint32_t base, uint32_t offset, int bigEndian,
                                 bool isSigned) {
    uint32_t numerator = 0, denominator = 0;
    if (!ReadRational(file, base, offset, bigEndian, numerator, denominator)) return {};
    char text[64];
    if (denominator == 0 || denominator == 1) {
        if (isSigned) std::snprintf(text, sizeof text, "%d", static_cast<int32_t>(numerator));
        else std::snprintf(text, sizeof text, "%u", numerator);
    } else {
        const float quotient = Quotient(numerator, denominator, isSigned);
        std::snprintf(text, sizeof text, "%0.2f", static_cast<double>(quotient));
    }
    return text;
}

}  // namespace tiff
