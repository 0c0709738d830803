// The pieces of Nikon's main-form decoder that its files share. The main
// directory's plain tags are in nikon_makernote.cpp, the byte structures and
// the second pass that reads them in nikon_structures.cpp, the later
// bodies' small setting structures in nikon_body_settings.cpp, the value
// formats they share in nikon_values.cpp. (The older form is a file of its
// own, nikon_type1_makernote.cpp.)
//
// AF info, colour balance, lens data, flash info and the later bodies'
// settings are byte structures in one UNDEFINED entry each, and the preview
// is a directory of its own; they are read in a second pass over the
// directory, and each field a photographer reads becomes a row carrying the
// entry's tag. From version 0201 on, lens data and colour balance are
// enciphered: a stream of bytes XORed onto the data, keyed by the serial
// number (tag 001D) and the shutter count (tag 00A7).
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "makernote_decoders.h"
#include "makernote_limits.h"

namespace makernotes {
namespace nikon {

// Up to four characters of a version, '?' for a byte that is not printable.
std::string VersionChars(const uint8_t* b, size_t size);

// An EV amount as photographers write it: whole steps, halves or thirds as
// a signed fraction ("+1", "-5/3"), anything else to three figures.
std::string EvFraction(double v);

// Bit names of a flag byte or word, joined by `separator`.
struct BitName {
    int bit;
    const char* name;
};

template <size_t N>
std::string BitNames(uint32_t value, const BitName (&names)[N], const char* separator) {
    std::string out;
    for (const BitName& b : names) {
        if (!(value & (1u << b.bit))) continue;
        if (!out.empty()) out += separator;
        out += b.name;
    }
    return out;
}

// The enumeration's text for a value, else the number.
std::string EnumText(const Enumeration& e, int64_t value);

// Bytes of a structure that are read: past the colour balance's enciphered
// white-balance levels (at most byte 308), more than any other field needs.
constexpr size_t kStructureReadLimit = 320;

// What the second pass needs from elsewhere in the directory and the table.
struct NikonFacts {
    uint8_t lensType = 0;
    bool afBigEndian = false;  // the SLRs ("NIKON D...") store AF info big-endian
    bool earlyZ = false;       // the first Z bodies name their VR modes otherwise
    bool fileInfoLittleEndian = false;
    bool haveSerial = false, haveCount = false;
    uint32_t serial = 0;  // its low byte keys the cipher
    uint32_t count = 0;
};

// A structure as read, and where its rows go.
struct Structure {
    uint8_t bytes[kStructureReadLimit];
    size_t size;
    int bigEndian;
    const tiff::Entry& entry;
    exif::TagRecordTable& table;
    uint32_t* rowCount;

    bool Has(size_t offset, size_t length = 1) const { return offset + length <= size; }
    // Appends a row with this name and value; none at the row limit.
    void Row(const char* name, const std::string& value) const { AppendMakerRow(table, rowCount, entry, name, value); }
    void Rowf(const char* name, const char* format, ...) const
#if defined(__GNUC__)
        __attribute__((format(printf, 3, 4)))
#endif
    {
        char text[exif::kTagValueSize];
        va_list args;
        va_start(args, format);
        std::vsnprintf(text, sizeof text, format, args);
        va_end(args);
        Row(name, text);
    }
    // The 4-character version at the start.
    std::string VersionText() const { return VersionChars(bytes, size); }
    bool VersionIs(const char* v) const { return Has(0, 4) && std::memcmp(bytes, v, 4) == 0; }
};

// Deciphers bytes [start, size) in place: the key stream starts at `start`.
// False, the bytes untouched, without both keys.
bool Decipher(Structure& s, size_t start, const NikonFacts& keys);

// The later bodies' settings, one small structure each.
void VrInfo(Structure& s, const NikonFacts& keys);          // tag 001F
void PictureControl(Structure& s, const NikonFacts& keys);  // tag 0023
void WorldTime(Structure& s, const NikonFacts& keys);       // tag 0024
void IsoInfo(Structure& s, const NikonFacts& keys);         // tag 0025
void AfInfo2(Structure& s, const NikonFacts& keys);         // tag 00B7
void FileInfo(Structure& s, const NikonFacts& keys);        // tag 00B8
void AfTune(Structure& s, const NikonFacts& keys);          // tag 00B9

// Reads, from the Model row and from the directory (at its count), what the
// structures depend on: the body, the lens-type flags and the cipher's keys.
NikonFacts FindFacts(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                     uint32_t rowCount);

// The second pass over the directory (at its count): each structure the
// entry loop left, and the preview's directory. rowsBefore: the row count
// before the entry loop ran.
void DecodeNikonStructures(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                           uint32_t rowsBefore, uint32_t* rowCount, const NikonFacts& facts);

}  // namespace nikon
}  // namespace makernotes
