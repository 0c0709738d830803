// Olympus and OM System maker notes, in three header forms. No tags are
// named yet: entries are read and dropped.
#include <cstring>

#include "makernote_decoders.h"
#include "makernote_limits.h"

namespace makernotes {
namespace {

// The dispatch has read the first 5 bytes ("OLYMP" or "OM SY"); the next
// three tell the forms apart:
//
//   "OLYMP\0" ver(2)                           count at +8, EXIF byte order
//   "OLYMPUS\0" mark(2) ver(2)                 count at +12
//   "OM SYSTEM\0\0\0" mark(2) ver(2)           count at +16
//
// In the two newer forms a mark of "II" makes the note little-endian; any
// other mark keeps the EXIF order (a big-endian mark never switches).
constexpr size_t kFormBytes = 3;
constexpr int64_t kOmSystemPadding = 4;

constexpr MakerTable kOlympus = NoTags(ValueRule::kLeadingShort);

bool EqualsIgnoringCase(const char* a, const char* b) {
    for (; *a && *b; ++a, ++b) {
        const char x = (*a >= 'a' && *a <= 'z') ? static_cast<char>(*a - 'a' + 'A') : *a;
        if (x != *b) return false;
    }
    return *a == *b;
}

}  // namespace

void DecodeOlympusMakerNote(platform::File& file, uint32_t offsetBase, exif::TagRecordTable& table,
                            uint32_t* rowCount, int bigEndian) {
    // The newer forms count their offsets from the note's start.
    const int64_t noteStart = file.Tell() - static_cast<int64_t>(kMakerNotePrefixSize);
    char form[kFormBytes + 1] = {};
    file.Read(form, kFormBytes);
    const bool fullName = EqualsIgnoringCase(form, "US");
    const bool omSystem = EqualsIgnoringCase(form, "STE");
    if (fullName || omSystem) {
        if (omSystem) file.Seek(kOmSystemPadding, platform::SeekFrom::kCurrent);
        uint8_t markAndVersion[4] = {};
        file.Read(markAndVersion, sizeof markAndVersion);
        if (markAndVersion[0] == 'I' && markAndVersion[1] == 'I') bigEndian = 0;
        if (noteStart >= 0 && noteStart <= UINT32_MAX) offsetBase = static_cast<uint32_t>(noteStart);
    }
    DecodeMakerDirectory(file, offsetBase, table, rowCount, bigEndian, kOlympus);
}

}  // namespace makernotes
