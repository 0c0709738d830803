// Minolta maker notes: a headerless directory whose offsets count from the
// TIFF header. No tags are named yet: entries are read and dropped.
#include "makernote_decoders.h"

namespace makernotes {
namespace {

constexpr MakerTable kMinolta = NoTags(ValueRule::kLeadingShort);

}  // namespace

void DecodeMinoltaMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount, int bigEndian) {
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kMinolta);
}

}  // namespace makernotes
