// The maker-note dispatch and every decoder behind it, on an arbitrary file.
//
// Input layout:
//   +0  flags: bit 0 big-endian EXIF block, bit 1 CR3 file, bit 2 the note's
//       length is known (it runs to the end of the file), bit 3 the offset
//       is of DNG private data (running to the end of the file)
//   +1  rows already in the table (0-255)
//   +2  maker-note offset (0-255; 0 means no note)
//   +3  length n of the Make text (0-255)
//   +4  the Make text (n bytes), then the file itself
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "exif/maker_note_dispatch.h"
#include "exif/tag_record.h"
#include "makernotes/makernote_rules.h"
#include "platform/platform.h"
#include "platform/input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 4) return 0;
    const int bigEndian = data[0] & 1;
    const bool cr3 = (data[0] & 2) != 0;
    const bool sized = (data[0] & 4) != 0;
    const bool dngPrivate = (data[0] & 8) != 0;
    const uint32_t filler = data[1];
    const uint32_t noteOffset = data[2];
    const size_t makeLength = std::min<size_t>(data[3], size - 4);

    auto table = std::make_unique<exif::TagRecordTable>();
    uint32_t rowCount = 0;
    for (; rowCount < filler; ++rowCount) table->rows[rowCount].tag = 1;
    exif::TagRecord& make = table->rows[rowCount++];
    make.tag = 271;
    std::memcpy(make.value, data + 4, std::min<size_t>(makeLength, 255));

    const auto input = platform::Input::FromMemory(data + 4 + makeLength, size - 4 - makeLength);
    platform::File& file = *input;
    const size_t fileSize = size - 4 - makeLength;
    const auto toEnd = static_cast<uint32_t>(fileSize > noteOffset ? fileSize - noteOffset : 0);
    exif::MakerNotePlace place;
    if (!dngPrivate)
        exif::DispatchMakerNote(file, 0, *table, &rowCount, bigEndian, noteOffset, cr3,
                                makernotes::StandardMakerNoteRules(), sized ? toEnd : 0);
    else if (exif::FindDngPrivateNote(file, 0, bigEndian, noteOffset, toEnd, place))
        exif::DispatchMakerNoteAt(file, place, *table, &rowCount, makernotes::StandardMakerNoteRules());

    // Rows stay inside the table, and every text stays terminated in its field.
    if (rowCount > exif::kTagTableRows) __builtin_trap();
    for (const exif::TagRecord& row : table->rows) {
        if (strnlen(row.name, sizeof row.name) == sizeof row.name) __builtin_trap();
        if (strnlen(row.value, 256) == 256) __builtin_trap();
    }
    exif::FreeTagRecordTable(table.get(), 0);
    return 0;
}
