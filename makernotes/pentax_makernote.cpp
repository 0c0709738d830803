// Pentax and Ricoh maker notes, behind a 6-byte "AOC\0" + byte-order header
// or an 8-byte "PENTAX \0" + byte-order header; offsets from the TIFF header.
// Only the lens type is named so far.
#include "lens_tables.h"
#include "makernote_decoders.h"

namespace makernotes {
namespace {

// A lens number of 0 is asked for as 32.
uint32_t NonZeroOr32(uint32_t key) { return key == 0 ? 32 : key; }

// The lens is stored as two bytes (series, number) at the start of the
// field. The word is taken in the file's order and searched first as its top
// two bytes, where a big-endian file puts them, then as its low two bytes,
// where a little-endian file does.
void LensType(const MakerEntry& e) {
    const uint32_t v = e.entry().valueField;
    const uint32_t b3 = v >> 24, b2 = (v >> 16) & 0xFF, b1 = (v >> 8) & 0xFF, b0 = v & 0xFF;
    exif::TagRecord& row = e.row();
    const uint32_t series = NonZeroOr32(b3), number = NonZeroOr32(b2);
    LookupPentaxLens(series, number, row.value, sizeof row.value);
    if (row.value[0] == '\0') LookupPentaxLens(b0, NonZeroOr32(b1), row.value, sizeof row.value);
    if (row.value[0] == '\0')
        SetValuef(row, "unknown (%d, %d; %d, %d)", static_cast<int>(series), static_cast<int>(number),
                  static_cast<int>(NonZeroOr32(b1)), static_cast<int>(b0));
}

constexpr MakerTag kPentaxTags[] = {
    {63, "Lens Type", LensType},
};
constexpr MakerTable kPentax = Table(kPentaxTags, ValueRule::kLowHalfOfWord);

bool IsByteOrderMark(uint16_t word) { return word == 0x4949 || word == 0x4D4D; }

}  // namespace

const MakerTable& PentaxTags() { return kPentax; }

// Two header forms, told apart by where the byte-order mark stands; the mark
// does not change the byte order, which stays the EXIF block's:
//
//   "AOC\0" mark(2) count(2) entries...        count at note + 6
//   "PENTAX \0" mark(2) count(2) entries...    count at note + 10
void DecodePentaxMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                           uint32_t* rowCount, int bigEndian) {
    uint8_t words[4] = {};
    file.Read(words, sizeof words);
    if (!IsByteOrderMark(exif::GetU16(words + 2, bigEndian))) file.Seek(-4, platform::SeekFrom::kCurrent);
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kPentax);
}

}  // namespace makernotes
