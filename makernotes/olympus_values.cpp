// The value formats that every Olympus directory uses.
#include <algorithm>
#include <string>

#include "olympus_makernote.h"
#include "olympus_tables.h"

namespace makernotes {
namespace olympus {

size_t ReadElements(const MakerEntry& e, int64_t* out, size_t max, bool signed16) {
    const uint16_t type = e.entry().type;
    const size_t size = type == kUndefinedType ? 1 : tiff::TypeSize(type);
    if (size != 1 && size != 2 && size != 4) return 0;
    if (max > kElementsLimit) max = kElementsLimit;
    uint8_t bytes[kElementsLimit * 4] = {};
    const uint64_t want = std::min<uint64_t>(uint64_t{e.entry().count}, max) * size;
    const size_t got = exif::ReadRawBlock(e.context, bytes, static_cast<size_t>(want)) / size;
    for (size_t i = 0; i < got; ++i) {
        const uint8_t* b = bytes + i * size;
        if (size == 1) out[i] = type == tiff::kSByte ? int64_t{static_cast<int8_t>(b[0])} : int64_t{b[0]};
        else if (size == 2) {
            const uint16_t v = platform::GetU16(b, e.context.bigEndian());
            out[i] = type == tiff::kSShort || signed16 ? int64_t{static_cast<int16_t>(v)} : int64_t{v};
        } else {
            const uint32_t v = platform::GetU32(b, e.context.bigEndian());
            out[i] = type == tiff::kSLong ? int64_t{static_cast<int32_t>(v)} : int64_t{v};
        }
    }
    return got;
}

void SignedNumbers(const MakerEntry& e) {
    int64_t v[kElementsLimit];
    const size_t n = ReadElements(e, v, kElementsLimit, /*signed16=*/true);
    std::string text;
    for (size_t i = 0; i < n; ++i) text += (i ? " " : "") + std::to_string(v[i]);
    exif::SetRowValue(e.row(), text);
}

bool ReadQuotient(const MakerEntry& e, double& out) {
    uint32_t num = 0, den = 0;
    const bool sign = e.entry().type == tiff::kSRational;
    if ((e.entry().type != kRationalType && !sign) ||
        !tiff::ReadRational(e.context.input, e.context.base, e.entry().valueField, num, den) ||
        den == 0)
        return false;
    out = sign ? static_cast<double>(static_cast<int32_t>(num)) / static_cast<int32_t>(den)
               : static_cast<double>(num) / den;
    return true;
}

std::string FlagNames(const BitSet& set, uint32_t value) {
    std::string text;
    for (size_t i = 0; i < set.size; ++i) {
        if (!(value & (1u << set.names[i].bit))) continue;
        if (!text.empty()) text += ", ";
        text += set.names[i].name;
    }
    return text.empty() ? set.none : text;
}

void FirmwareVersion(const MakerEntry& e) {
    if (e.entry().type == kAsciiType) return FormatGenericValue(e);
    int64_t v = 0;
    if (ReadElements(e, &v, 1) != 1) return;
    if (v < 0x1000) return SetValuef(e.row(), "%x", static_cast<unsigned>(v));
    SetValuef(e.row(), "%x.%03x", static_cast<unsigned>(v >> 12), static_cast<unsigned>(v & 0xFFF));
}

void CameraType(const MakerEntry& e) {
    char code[8] = {};
    exif::ReadRawBlock(e.context, reinterpret_cast<uint8_t*>(code), sizeof code - 1);
    if (const char* model = OlympusCameraName(code)) return exif::SetRowValue(e.row(), model);
    FormatGenericValue(e);
}

void SettingWithRange(const MakerEntry& e) {
    int64_t v[3] = {};
    if (ReadElements(e, v, 3, /*signed16=*/true) < 3) return SignedNumbers(e);
    SetValuef(e.row(), "%lld (min %lld, max %lld)", static_cast<long long>(v[0]), static_cast<long long>(v[1]),
              static_cast<long long>(v[2]));
}

}  // namespace olympus
}  // namespace makernotes
