// The EXIF exports on arbitrary bytes in memory, as the viewer's file would
// hold them. Whatever the bytes, every row taken stays terminated within its
// fields and every text within its buffer; a long value made where none may
// be shows as a leak. One table serves every input, as a long-running host
// would reuse it.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "exif/tag_record.h"
#include "plugin/export_inputs.h"
#include "platform/input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static exif::TagRecordTable* const table = exif::AllocateUnclearedTagRecordTable();
    const auto input = platform::Input::FromMemory(data, size);

    char16_t text[512];
    vv::LoadExifData(*input, *table, text, 512, 3);
    if (text[511] != 0 || table->zeroedRows > exif::kTagTableRows) __builtin_trap();
    for (uint32_t i = 0; i < table->zeroedRows; ++i) {
        const exif::TagRecord& row = table->rows[i];
        if (strnlen(row.name, exif::kTagNameSize) == exif::kTagNameSize) __builtin_trap();
        if (strnlen(row.value, exif::kTagValueSize) > 255) __builtin_trap();
    }
    vv::LoadExifTag(*input, *table, nullptr, 270, text, 64);
    if (text[63] != 0) __builtin_trap();
    uint32_t extent = 0;
    const uint64_t offset = vv::LocateExifInfos(*input, &extent, nullptr, nullptr, nullptr, nullptr, 0);
    // The first kilobyte's header with the clamped JPEG extent, or a block a
    // container names (Photoshop, JPEG 2000, WebP, JPEG XL) inside the input.
    const bool scanned = offset < 1024 && extent >= 2048 && extent <= 65535;
    const bool named = offset < size && extent >= 1 && (extent <= size - offset || extent <= 65535);
    if (offset != 0 && !scanned && !named) __builtin_trap();
    return 0;
}
