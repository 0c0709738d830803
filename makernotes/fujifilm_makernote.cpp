// Fujifilm maker notes: a little-endian directory, whatever the EXIF block's
// byte order, whose offsets count from the note's start. No tags are named
// yet: entries are read and dropped.
#include "makernote_decoders.h"

namespace makernotes {
namespace {

// Note layout; the dispatch has read the first 5 bytes:
//
//   +0   "FUJIFILM"                 8 bytes
//   +8   directory offset (LE)      4 bytes, not followed: the count comes next
//   +12  entry count (LE), entries
constexpr int64_t kSignatureRest = 3;
constexpr int64_t kDirectoryOffsetSize = 4;

constexpr MakerTable kFujifilm = NoTags(ValueRule::kLeadingShort);

}  // namespace

void DecodeFujifilmMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                             uint32_t* rowCount, int bigEndian) {
    file.Seek(kSignatureRest + kDirectoryOffsetSize, platform::SeekFrom::kCurrent);
    // The values that shared readers fetch keep the EXIF order.
    DecodeMakerDirectory(file, offsetBase, table, rowCount, DirectoryOrder{/*entries=*/0, /*values=*/bigEndian},
                         kFujifilm);
}

}  // namespace makernotes
