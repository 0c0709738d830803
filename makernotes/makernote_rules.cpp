#include "makernote_rules.h"

#include <cstring>

#include "makernote_decoders.h"

namespace makernotes {
namespace {

using exif::MakerTest;
using exif::OffsetBase;

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

constexpr exif::MakerCondition PrefixIs(const char* w) { return {MakerTest::kPrefixIs, w}; }
constexpr exif::MakerCondition PrefixHas(const char* w) { return {MakerTest::kPrefixHas, w}; }
constexpr exif::MakerCondition MakeIs(const char* w) { return {MakerTest::kMakeIs, w}; }
constexpr exif::MakerCondition MakeHas(const char* w) { return {MakerTest::kMakeHas, w}; }
constexpr exif::MakerCondition kCr3 = {MakerTest::kCr3, ""};
constexpr exif::MakerCondition kNothing = {};

// Where each form's directory starts, from the note's first byte.
constexpr uint32_t kAtNoteStart = 0;
constexpr uint32_t kAfterPrefix = kMakerNotePrefixSize;  // the decoder reads its header on
constexpr uint32_t kAfterQvcHeader = 6;                  // "QVC\0" + 2
constexpr uint32_t kAfterPentaxAocHeader = 6;            // "AOC\0" + mark; the decoder tells the 8-byte form
constexpr uint32_t kAfterSonyHeader = 12;                // "SONY DSC \0\0\0"
constexpr uint32_t kAfterPanasonicHeader = 12;           // "Panasonic\0\0\0"
constexpr uint32_t kAfterKodakHeader = 8;                // "KDK INFO"
constexpr uint32_t kAfterSigmaHeader = 10;               // "SIGMA\0\0\0" or "FOVEON\0\0", version (2)
constexpr uint32_t kAfterSanyoHeader = 8;                // "SANYO\0" + 2
// "Nikon\0" + a 4-byte version, then the embedded TIFF header.
constexpr uint32_t kNikonEmbeddedHeader = 10;

//  group  recognised by                           and also          directory           offsets count from               decoder
constexpr exif::MakerNoteRule kRules[] = {
    {1, {PrefixIs("OLYMP"), PrefixIs("OM SY")},    kNothing,          kAfterPrefix,         OffsetBase::kTiffHeader, 0, DecodeOlympusMakerNote},
    {2, {PrefixIs("Nikon"), kNothing},             kNothing,          kAfterPrefix,         OffsetBase::kNote, kNikonEmbeddedHeader, DecodeNikonMakerNote,
         CheckNikonEmbeddedTiffHeader},
    {2, {PrefixIs("Nikon"), kNothing},             kNothing,          kAfterPrefix,         OffsetBase::kTiffHeader, 0, DecodeNikonType1MakerNote},
    {2, {MakeHas("NIKON"), kNothing},              kNothing,          kAtNoteStart,         OffsetBase::kTiffHeader, 0, DecodeNikonMakerNote},
    {3, {MakeIs("CANON"), kCr3},                   kNothing,          kAtNoteStart,         OffsetBase::kCr3Header,  0, DecodeCanonMakerNote,
         nullptr, CanonNoteShift},
    {4, {PrefixIs("FUJIF"), kNothing},             kNothing,          kAfterPrefix,         OffsetBase::kNote,       0, DecodeFujifilmMakerNote},
    {5, {MakeIs("CASIO"), kNothing},               kNothing,          kAtNoteStart,         OffsetBase::kTiffHeader, 0, DecodeCasioMakerNote},
    {5, {PrefixIs("QVC"), kNothing},               kNothing,          kAfterQvcHeader,      OffsetBase::kTiffHeader, 0, DecodeCasioQvcMakerNote},
    // Ricoh's own note forms go to Ricoh; Ricoh-made Pentax bodies write Pentax notes.
    {6, {MakeHas("RICOH"), kNothing},              kNothing,          kAtNoteStart,         OffsetBase::kTiffHeader, 0, DecodeRicohMakerNote,
         CheckRicohDirectory},
    {6, {MakeHas("RICOH"), kNothing},              kNothing,          kAtNoteStart,         OffsetBase::kTiffHeader, 0, DecodeRicohTextMakerNote,
         CheckRicohText},
    {6, {MakeHas("PENTAX"), MakeHas("RICOH")},     kNothing,          kAfterPentaxAocHeader, OffsetBase::kTiffHeader, 0, DecodePentaxMakerNote},
    {7, {MakeHas("MINOLTA"), kNothing},            kNothing,          kAtNoteStart,         OffsetBase::kTiffHeader, 0, DecodeMinoltaMakerNote},
    {8, {MakeHas("SONY"), kNothing},               PrefixHas("SONY"), kAfterSonyHeader,     OffsetBase::kTiffHeader, 0, DecodeSonyMakerNote},
    {8, {MakeHas("SONY"), kNothing},               kNothing,          kAtNoteStart,         OffsetBase::kTiffHeader, 0, DecodeSonyMakerNote},
    // Recognised by the note alone: the Make text plays no part.
    {9, {PrefixHas("Panas"), kNothing},            kNothing,          kAfterPanasonicHeader, OffsetBase::kTiffHeader, 0, DecodePanasonicMakerNote},
    {22, {PrefixHas("KDK"), kNothing},             MakeHas("KODAK"),  kAfterKodakHeader,    OffsetBase::kNote,       0, DecodeKodakMakerNote},
    {22, {MakeHas("KODAK"), kNothing},             kNothing,          kAtNoteStart,         OffsetBase::kNote,       0, DecodeKodakFileNameMakerNote,
         CheckKodakFileNameRecord},
    {21, {PrefixIs("SIGMA"), PrefixIs("FOVEO")},   kNothing,          kAfterSigmaHeader,    OffsetBase::kTiffHeader, 0, DecodeSigmaMakerNote},
    // Recognised by the note (Samsung's directory form also by the Make);
    // group numbers only need to differ from their neighbours'.
    {24, {PrefixIs("Apple"), kNothing},            kNothing,          kAtNoteStart,         OffsetBase::kNote,       0, DecodeAppleMakerNote,
          CheckAppleHeader},
    {25, {PrefixHas("STMN"), kNothing},            kNothing,          kAtNoteStart,         OffsetBase::kNote,       0, DecodeSamsungStmnMakerNote},
    {25, {MakeHas("SAMSUNG"), kNothing},           kNothing,          kAtNoteStart,         OffsetBase::kTiffHeader, 0, DecodeSamsungMakerNote,
          CheckSamsungDirectory},
    {26, {PrefixIs("SANYO"), kNothing},            kNothing,          kAfterSanyoHeader,    OffsetBase::kTiffHeader, 0, DecodeSanyoMakerNote},
};

}  // namespace

const exif::MakerNoteRules& StandardMakerNoteRules() {
    static constexpr exif::MakerNoteRules kStandard = {kRules, sizeof kRules / sizeof kRules[0]};
    return kStandard;
}

bool CheckNikonEmbeddedTiffHeader(platform::Cursor& at) {
    uint8_t bytes[sizeof kNikonHeaders[0].bytes] = {};
    platform::Cursor in = at;
    if (in.Bytes(bytes, sizeof bytes)) {
        for (const NikonHeader& header : kNikonHeaders) {
            if (std::memcmp(bytes, header.bytes, sizeof bytes) == 0) {
                at = in.ChildAt(in.position(), in.end());
                at.SetOrder(platform::OrderOf(header.bigEndian));
                return true;
            }
        }
    }
    return false;
}

}  // namespace makernotes
