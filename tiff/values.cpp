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

// The next rational of `in`; false, leaving both as they were, at a short read.
bool NextRational(platform::Cursor& in, uint32_t& numerator, uint32_t& denominator) {
    const uint32_t n = in.U32(), d = in.U32();
    if (!in.ok()) return false;
    numerator = n;
    denominator = d;
    return true;
}

}  // namespace

float Quotient(uint32_t numerator, uint32_t denominator, bool isSigned) {
    if (isSigned)
        return Single(Single(static_cast<float>(static_cast<int32_t>(numerator))) /
                      Single(static_cast<float>(static_cast<int32_t>(denominator))));
    return Single(Single(static_cast<float>(numerator)) / Single(static_cast<float>(denominator)));
}

size_t ReadValueBytes(const platform::Cursor& in, uint32_t base, const Entry& entry, uint8_t* out, size_t maxBytes) {
    const uint64_t total = static_cast<uint64_t>(entry.count) * TypeSize(entry.type);
    const size_t want = static_cast<size_t>(std::min<uint64_t>(total, maxBytes));
    if (total <= kValueFieldSize) {
        std::memcpy(out, entry.fieldBytes, want);
        return want;
    }
    return in.ChildAt(At(base, entry.valueField), want).Some(out, want);
}

bool ReadRational(const platform::Cursor& in, uint32_t base, uint32_t offset, uint32_t& numerator,
                  uint32_t& denominator) {
    platform::Cursor at = in.ChildAt(At(base, offset), 8);
    return NextRational(at, numerator, denominator);
}

std::string FormatMultiRational(const platform::Cursor& in, uint32_t base, uint32_t offset, uint32_t maxCount,
                                RationalDecimals decimals) {
    std::string out;
    platform::Cursor at = in.ChildAt(At(base, offset), in.end());
    for (uint32_t i = 0; i < maxCount && out.size() < kMultiRationalTextLimit; ++i) {
        uint32_t numerator = 0, denominator = 0;
        if (!NextRational(at, numerator, denominator)) break;
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

std::string FormatSingleRational(const platform::Cursor& in, uint32_t base, uint32_t offset, bool isSigned) {
    uint32_t numerator = 0, denominator = 0;
    if (!ReadRational(in, base, offset, numerator, denominator)) return {};
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
