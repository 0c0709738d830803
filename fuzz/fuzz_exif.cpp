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
    // Where the EXIF stands is the container's affair (WebP and JPEG XL keep
    // it anywhere in the file): the header reported lies inside the input, or
    // at most 4 bytes past a "TTW" marker that ends it. Its extent is the
    // clamped JPEG extent, or the length of a block a container names
    // (Photoshop, JPEG 2000) from inside the input.
    uint32_t extent = 0;
    const uint64_t offset = vv::LocateExifInfos(*input, &extent, nullptr, nullptr, nullptr, nullptr, 0);
    const bool clamped = extent >= 2048 && extent <= 65535;
    const bool named = offset < size && extent >= 1 && (extent <= size - offset || extent <= 65535);
    if (offset > uint64_t{size} + 4 || (offset != 0 && !clamped && !named)) __builtin_trap();
    return 0;
}
