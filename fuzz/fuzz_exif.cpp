// The EXIF reader on arbitrary bytes in memory, then its exports on the same
// bytes written to a file as the viewer would hand it over. Whatever the
// bytes, the table stays within its rows and every text within its buffer.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "fuzz_input.h"
#include "makernotes/makernote_rules.h"
#include "platform/platform.h"
#include "plugin/plugin_api.h"
#include "platform/input.h"

using fuzzinput::InputPath;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    exif::TagRecordTable* table = exif::AllocateTagRecordTable();
    uint32_t rows = 0;
    int bigEndian = 0;
    const auto input = platform::Input::FromMemory(data, size);
    exif::ReadExifTags(*input, *table, &rows, &bigEndian, makernotes::StandardMakerNoteRules());
    if (rows > exif::kTagTableRows) __builtin_trap();
    for (uint32_t i = 0; i < rows; ++i) {
        const exif::TagRecord& row = table->rows[i];
        if (strnlen(row.name, exif::kTagNameSize) == exif::kTagNameSize) __builtin_trap();
        if (strnlen(row.value, exif::kTagValueSize) > 255) __builtin_trap();
        if (row.longValue && (i >= exif::kDirectoryRowLimit ||
                              strnlen(row.longValue, exif::kLongValueSize) == exif::kLongValueSize))
            __builtin_trap();
    }
    exif::FreeTagRecordTable(table, 1);

    // The exports, on the same bytes as the file the viewer hands over.
    if (!fuzzinput::WriteInput(data, size)) return 0;

    char16_t text[512];
    vv::LoadData_EXIF_W(InputPath().c_str(), text, 512, 3);
    vv::LoadTag_EXIF_W(InputPath().c_str(), 499, text, 64);
    uint32_t extent = 0;
    const uint64_t offset = vv::GetExifInfos(InputPath().c_str(), &extent, nullptr, nullptr, nullptr, nullptr, 0);
    if (offset >= 1024 || (offset != 0 && (extent < 2048 || extent > 65535))) __builtin_trap();
    return 0;
}
