#include "makernote_dispatch.h"

#include <cstring>

#include "exif/exif_reader.h"
#include "makernote_decoders.h"

namespace makernotes {
namespace {

constexpr uint32_t kTagMake = 271;

// Where each form's directory starts, from the note's first byte.
constexpr int64_t kAtNoteStart = 0;
constexpr int64_t kAfterPrefix = static_cast<int64_t>(kMakerNotePrefixSize);  // the decoder reads its header on
constexpr int64_t kAfterQvcHeader = 6;        // "QVC\0" + 2
constexpr int64_t kAfterPentaxAocHeader = 6;  // "AOC\0" + mark; the decoder tells the 8-byte form itself
constexpr int64_t kAfterSonyHeader = 12;      // "SONY DSC \0\0\0"
constexpr int64_t kAfterPanasonicHeader = 12; // "Panasonic\0\0\0"
// "Nikon\0" + a 4-byte version, then the embedded TIFF header.
constexpr uint32_t kNikonEmbeddedHeaderOffset = 10;

// The 13 bytes after "Nikon" in the notes that carry their own TIFF header:
//
//   +5  00            +6 version (4)     +10 "II" 2A 00 or "MM" 00 2A
//   +14 first directory offset (4) = 8, so the directory is at +18
//
// Tried in this order; the first match wins. A big-endian 2.11 header is
// not among them and is read as the older form.
struct NikonHeader {
    uint8_t bytes[13];
    int bigEndian;
};
constexpr NikonHeader kNikonHeaders[] = {
    {{0x00, 0x02, 0x10, 0x00, 0x00, 'I', 'I', 0x2A, 0x00, 0x08, 0x00, 0x00, 0x00}, 0},  // 2.10 "II"
    {{0x00, 0x02, 0x00, 0x00, 0x00, 'M', 'M', 0x00, 0x2A, 0x00, 0x00, 0x00, 0x08}, 1},  // 2.00 "MM"
    {{0x00, 0x02, 0x10, 0x00, 0x00, 'M', 'M', 0x00, 0x2A, 0x00, 0x00, 0x00, 0x08}, 1},  // 2.10 "MM"
    {{0x00, 0x02, 0x00, 0x00, 0x00, 'I', 'I', 0x2A, 0x00, 0x08, 0x00, 0x00, 0x00}, 0},  // 2.00 "II"
    {{0x00, 0x02, 0x11, 0x00, 0x00, 'I', 'I', 0x2A, 0x00, 0x08, 0x00, 0x00, 0x00}, 0},  // 2.11 "II"
};

char Upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

bool EqualsIgnoringCase(const char* a, const char* b) {
    for (; *a && *b; ++a, ++b)
        if (Upper(*a) != Upper(*b)) return false;
    return *a == *b;
}

// The value of the last Make row; "" when there is none.
const char* MakeText(const exif::TagRecordTable& table, uint32_t rowCount, char (&copy)[exif::kTagValueSize]) {
    copy[0] = '\0';
    const uint32_t n = rowCount < exif::kTagTableRows ? rowCount : exif::kTagTableRows;
    for (uint32_t i = 0; i < n; ++i) {
        const exif::TagRecord& row = table.rows[i];
        if (row.tag != kTagMake) continue;
        const size_t length = strnlen(row.value, sizeof copy - 1);
        std::memcpy(copy, row.value, length);
        copy[length] = '\0';
    }
    return copy;
}

}  // namespace

const MakerNoteDecoders& StandardMakerNoteDecoders() {
    static constexpr MakerNoteDecoders kDecoders = {
        DecodeOlympusMakerNote, DecodeNikonMakerNote,   DecodeNikonType1MakerNote, DecodeCanonMakerNote,
        DecodeFujifilmMakerNote, DecodeCasioMakerNote,  DecodeCasioQvcMakerNote,   DecodePentaxMakerNote,
        DecodeMinoltaMakerNote,  DecodeSonyMakerNote,   DecodePanasonicMakerNote,
    };
    return kDecoders;
}

bool MakeEquals(const exif::TagRecordTable& table, uint32_t rowCount, const char* word) {
    char make[exif::kTagValueSize];
    return EqualsIgnoringCase(MakeText(table, rowCount, make), word);
}

bool MakeContains(const exif::TagRecordTable& table, uint32_t rowCount, const char* word) {
    char make[exif::kTagValueSize];
    MakeText(table, rowCount, make);
    for (char* c = make; *c; ++c) *c = Upper(*c);
    return std::strstr(make, word) != nullptr;
}

bool CheckNikonEmbeddedTiffHeader(platform::File& file, int* bigEndian) {
    const int64_t start = file.Tell();
    uint8_t bytes[sizeof kNikonHeaders[0].bytes] = {};
    const size_t got = file.Read(bytes, sizeof bytes);
    if (got == sizeof bytes) {
        for (const NikonHeader& header : kNikonHeaders) {
            if (std::memcmp(bytes, header.bytes, sizeof bytes) == 0) {
                if (bigEndian) *bigEndian = header.bigEndian;
                return true;
            }
        }
    }
    file.Seek(start);
    return false;
}

void DispatchMakerNote(platform::File& file, uint32_t tiffBase, exif::TagRecordTable& table,
                       uint32_t* rowCount, int bigEndian, uint32_t makerNoteOffset, bool isCr3) {
    DispatchMakerNote(file, tiffBase, table, rowCount, bigEndian, makerNoteOffset, isCr3,
                      StandardMakerNoteDecoders());
}

void DispatchMakerNote(platform::File& file, uint32_t tiffBase, exif::TagRecordTable& table,
                       uint32_t* rowCount, int bigEndian, uint32_t makerNoteOffset, bool isCr3,
                       const MakerNoteDecoders& d) {
    if (makerNoteOffset == 0 || !rowCount) return;

    // A CR3 note is the absolute position of a TIFF header of its own: its
    // byte order holds for the note, and Canon's offsets count from it.
    int64_t noteStart = static_cast<int64_t>(tiffBase) + makerNoteOffset;
    uint32_t canonBase = tiffBase;
    int order = bigEndian;
    if (isCr3) {
        uint8_t header[8] = {};
        if (!file.Seek(makerNoteOffset)) return;
        file.Read(header, sizeof header);
        order = header[0] == 'M' && header[1] == 'M';
        noteStart = static_cast<int64_t>(makerNoteOffset) + tiff::GetU32(header + 4, order);
        canonBase = makerNoteOffset;
    }
    // Offsets inside a note are 32-bit: a note beyond that cannot be read.
    if (noteStart > UINT32_MAX || !file.Seek(noteStart)) return;
    const auto note = static_cast<uint32_t>(noteStart);

    char prefix[kMakerNotePrefixSize + 1] = {};
    file.Read(prefix, kMakerNotePrefixSize);
    const auto seekNote = [&](int64_t delta) { file.Seek(noteStart + delta); };
    const auto makeEquals = [&](const char* word) { return MakeEquals(table, *rowCount, word); };
    const auto makeContains = [&](const char* word) { return MakeContains(table, *rowCount, word); };

    // Each test stands on its own; a note that passes two is decoded twice.
    if (EqualsIgnoringCase(prefix, "OLYMP") || EqualsIgnoringCase(prefix, "OM SY")) {
        seekNote(kAfterPrefix);
        d.olympus(file, tiffBase, table, rowCount, order);
    }

    if (EqualsIgnoringCase(prefix, "Nikon")) {
        seekNote(kAfterPrefix);
        int embeddedOrder = order;
        if (CheckNikonEmbeddedTiffHeader(file, &embeddedOrder))
            d.nikon(file, note + kNikonEmbeddedHeaderOffset, table, rowCount, embeddedOrder);
        else
            d.nikonType1(file, tiffBase, table, rowCount, order);
    } else if (makeContains("NIKON")) {
        // A note without header, its offsets counting from the EXIF TIFF header.
        seekNote(kAtNoteStart);
        d.nikon(file, tiffBase, table, rowCount, order);
    }

    if (makeEquals("CANON") || isCr3) {
        seekNote(kAtNoteStart);
        d.canon(file, canonBase, table, rowCount, order);
    }

    if (EqualsIgnoringCase(prefix, "FUJIF")) {
        seekNote(kAfterPrefix);
        d.fujifilm(file, note, table, rowCount, order);
    }

    if (makeEquals("CASIO")) {
        seekNote(kAtNoteStart);
        d.casio(file, tiffBase, table, rowCount, order);
    } else if (EqualsIgnoringCase(prefix, "QVC")) {
        seekNote(kAfterQvcHeader);
        d.casioQvc(file, tiffBase, table, rowCount, order);
    }

    if (makeContains("PENTAX") || makeContains("RICOH")) {
        seekNote(kAfterPentaxAocHeader);
        d.pentax(file, tiffBase, table, rowCount, order);
    }

    if (makeContains("MINOLTA")) {
        seekNote(kAtNoteStart);
        d.minolta(file, tiffBase, table, rowCount, order);
    }

    if (makeContains("SONY")) {
        seekNote(std::strstr(prefix, "SONY") ? kAfterSonyHeader : kAtNoteStart);
        d.sony(file, tiffBase, table, rowCount, order);
    }

    // Recognised by the note alone: the Make text plays no part.
    if (std::strstr(prefix, "Panas")) {
        seekNote(kAfterPanasonicHeader);
        d.panasonic(file, tiffBase, table, rowCount, order);
    }
}

}  // namespace makernotes
