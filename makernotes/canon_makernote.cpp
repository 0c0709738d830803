// Canon maker notes: a headerless directory whose offsets count from the
// TIFF header (in a CR3 file, from the embedded TIFF header that holds the
// note). No tags are named yet: entries are read and dropped.
#include "makernote_decoders.h"

namespace makernotes {
namespace {

constexpr MakerTable kCanon = NoTags(ValueRule::kLeadingShort);

}  // namespace

void DecodeCanonMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount, int bigEndian) {
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kCanon);
}

}  // namespace makernotes
