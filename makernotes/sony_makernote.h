// The pieces of Sony's decoder that its files share. The main directory's
// plain tags are in sony_makernote.cpp; the blocks some tags hold, read in a
// second pass, in sony_blocks.cpp (the pass, and the blocks stored plain)
// and sony_enciphered.cpp (the blocks of tags 2010, 9050 and 94xx); the
// Minolta-form directory of the DSLR-A100 in sony_minolta.cpp; the bodies
// and lenses in sony_tables.cpp; the value formats they share in
// sony_values.cpp.
//
// What a body records, and where, follows the body: the model ID (tag B001)
// is looked up before the entry loop, with the lens from every place a body
// records it, so that the Lens Name row can stand beside the Lens Type row.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "makernote_decoders.h"
#include "makernote_limits.h"
#include "sony_tables.h"

namespace makernotes {

struct SonyFacts {
    bool haveModel = false;
    uint16_t modelId = 0;
    SonyBody body = SonyBody::kUnknown;
    bool haveLensType = false;  // tag B027, the A-mount lens type (65535: none)
    uint32_t lensType = 0;
    bool haveLensSpec = false;  // tag B02A
    uint8_t lensSpec[8] = {};
    bool haveEmountType = false;  // the E-mount lens type of the lens records
    uint16_t emountType = 0;
    std::string lensName;  // composed from the above; empty when none
};

namespace sony {

// ------------------------------------------------------------ value formats

// printf into a value text (cut to what a row holds).
std::string Printf(const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 1, 2)))
#endif
    ;

// A number as photographers write it: up to 15 significant digits, no
// trailing zeros.
std::string Number(double v);
// A signed setting: "+2", "-1", and a plain "0".
std::string SignedSetting(int64_t v);
// Sony's exposure time code: 2^(16 - code/256) seconds ("1/250", "0.8", "30").
std::string ExposureTimeText(uint32_t code);
// An exposure time in seconds: short times as a fraction.
std::string SecondsText(double seconds);
// Sony's aperture code: 2^((code/256 - 16) / 2), one decimal.
std::string FNumberText(uint32_t code);
// Sony's sensitivity code: 100 x 2^(16 - code/256), whole.
std::string IsoText(uint32_t code);

// The 8 bytes of a lens spec as a lens's name is written: "FE 24-70mm F2.8
// GM"; false when the bytes give no focal length or aperture.
bool LensSpecText(const uint8_t spec[8], std::string& out);
// The lens spec's numbers as stored: flags, focal lengths, apertures, flags.
std::string LensSpecNumbers(const uint8_t spec[8]);

// A lens's name; for a lens whose type other lenses share, the name when
// the lens spec confirms it, else the lens spec's text, else the name "or other
// lens".
std::string NamedLensText(const SonyLens& lens, const SonyFacts& facts);

// The lens's name from the facts: the A-mount type, else the E-mount type,
// else the lens spec; empty when none names it.
std::string ComposeLensName(const SonyFacts& facts);

// The names of the bits set in a mask of `bytes` little-endian bytes,
// ", " between them; "(none)" when no bit is set. Bits without a name are
// left out.
std::string BitNames(const uint8_t* bytes, size_t size, const char* const* names, size_t count);

// ------------------------------------------------------------ directory values

// An entry's value by its own type: a BYTE from the field's first byte, a
// SHORT from its first two, a LONG as the whole field; and the same with its
// sign.
uint32_t StoredValue(const MakerEntry& e);
int32_t SignedValue(const MakerEntry& e);

// A LONG value as an enumeration lists it.
constexpr int32_t U32(uint32_t v) { return static_cast<int32_t>(v); }

// The enumeration's text for the value, else the number.
void SetEnumerated(const MakerEntry& e, const Enumeration& en, uint32_t v);
template <const Enumeration& E>
void Enumerated(const MakerEntry& e) {
    SetEnumerated(e, E, E.sign == Sign::kSigned ? static_cast<uint32_t>(SignedValue(e)) : StoredValue(e));
}

void UnsignedNumber(const MakerEntry& e);
void SignedNumber(const MakerEntry& e);
// One signed rational after the entries: its quotient (the numerator where
// the denominator is 0); false when it cannot be read.
bool SignedRationalValue(const MakerEntry& e, double& v);
void RationalNumber(const MakerEntry& e);

// Lists that both of Sony's directories use (the main one and the
// DSLR-A100's Minolta-form one).
extern const Enumeration kTeleconverter;
extern const Enumeration kWhiteBalance;
extern const Enumeration kSceneMode;
extern const Enumeration kZoneMatching;

// ------------------------------------------------------------ blocks

// A block as read (deciphered where it was enciphered), and where its rows go.
struct Block {
    const uint8_t* bytes;
    size_t size;
    int bigEndian;
    const tiff::Entry& entry;
    exif::TagRecordTable& table;
    uint32_t* rowCount;
    const SonyFacts& facts;

    bool Has(size_t at, size_t length) const { return at <= size && length <= size - at; }
    uint32_t U8(size_t at) const { return bytes[at]; }
    uint32_t U16(size_t at) const;
    uint32_t U32(size_t at) const;
    // Appends a row with this name and value; none at the row limit.
    void Row(const char* name, const std::string& value) const;
};

// One field of a block: where it lies, its name, and its format (which
// writes the text and returns false when the field gives no row). No
// format reads more than kFieldBytes from where its field lies.
constexpr size_t kFieldBytes = 16;
struct Field;
using FieldFormat = bool (*)(const Block&, const Field&, std::string&);
struct Field {
    uint16_t at;
    const char* name;
    FieldFormat format;
    const Enumeration* values = nullptr;
};
using Fields = List<Field>;

// The rows of each field the block holds whole, in the fields' order.
void DecodeFields(const Block& block, const Fields& fields);

// The furthest byte the fields read, for the bytes to fetch.
constexpr size_t FieldsExtent(const Fields& fields) {
    size_t extent = 0;
    for (size_t i = 0; i < fields.size; ++i)
        if (fields.items[i].at + kFieldBytes > extent) extent = fields.items[i].at + kFieldBytes;
    return extent;
}

// Field formats: the byte, short or long at the field as a number, or
// through the field's enumeration (a value it does not list as its number).
bool ByteField(const Block&, const Field&, std::string&);
bool SignedByteField(const Block&, const Field&, std::string&);
bool ShortField(const Block&, const Field&, std::string&);
bool SignedShortField(const Block&, const Field&, std::string&);
bool LongField(const Block&, const Field&, std::string&);
// A signed SHORT: how far in front of or behind the subject an AF point
// focused ("Front Focus (-9)", "Back Focus (+11)"), "In Focus" at 0 and "Out
// of Focus" at -32768.
bool AfStatus(const Block&, const Field&, std::string&);

// The enciphered blocks: tag 2010, 9050 and the 94xx tags. Decodes the
// block when the body is one whose layout is known; false when the tag is
// not one of them.
bool DecodeEncipheredBlock(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                           exif::TagRecordTable& table, uint32_t* rowCount, const SonyFacts& facts);

// The E-mount lens type of the enciphered lens records, for the facts.
bool FindEmountLensType(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                        uint32_t rowCount, SonyFacts& facts);

// The DSLR-A100's Minolta-form directory (tag B028), at its entry count.
void DecodeA100Directory(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                         uint32_t* rowCount);

// The second pass over the main directory (at its count): the blocks and the
// A100's directory. rowsBefore: the row count before the entry loop ran.
void DecodeSonyBlocks(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                      uint32_t rowsBefore, uint32_t* rowCount, const SonyFacts& facts);

}  // namespace sony
}  // namespace makernotes
