#include "entry.h"

#include <cstring>

namespace tiff {

uint32_t TypeSize(uint16_t type) {
    switch (type) {
        case kByte: case kAscii: case kSByte: case kUndefined: return 1;
        case kShort: case kSShort: return 2;
        case kLong: case kSLong: case kFloat: case kIfd: return 4;
        case kRational: case kSRational: case kDouble: return 8;
        default: return 0;
    }
}

namespace {

void DecodeEntry(const uint8_t (&raw)[kEntrySize], bool bigEndian, Entry& entry) {
    entry.tag = GetU16(raw, bigEndian);
    entry.type = GetU16(raw + 2, bigEndian);
    entry.count = GetU32(raw + 4, bigEndian);
    entry.valueField = GetU32(raw + 8, bigEndian);
    std::memcpy(entry.fieldBytes, raw + 8, kValueFieldSize);
    entry.inlineShort = bigEndian && entry.type == kShort ? static_cast<uint16_t>(entry.valueField >> 16)
                                                          : static_cast<uint16_t>(entry.valueField & 0xFFFF);
}

}  // namespace

bool ReadEntry(platform::Cursor& in, Entry& entry) {
    uint8_t raw[kEntrySize];
    const bool ok = in.Bytes(raw, sizeof raw);
    DecodeEntry(raw, in.bigEndian(), entry);
    return ok;
}

void ReadPartialEntry(platform::Cursor& in, Entry& entry) {
    uint8_t raw[kEntrySize] = {};
    in.Some(raw, sizeof raw);
    DecodeEntry(raw, in.bigEndian(), entry);
}

}  // namespace tiff
