// The container locators and their dispatch on arbitrary bytes, held in
// memory behind the file interface. Whatever they are given, a position they
// report lies inside the input.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "exif/classic_tiff.h"
#include "exif/container.h"
#include "exif/metadata_blocks.h"
#include "platform/input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto input = platform::Input::FromMemory(data, size);
    platform::File& file = *input;
    auto inside = [size](uint32_t offset) {
        if (offset != 0 && offset >= size) __builtin_trap();
    };
    uint32_t itemLength = 0;
    inside(exif::LocateHeifExif(file, itemLength));
    exif::Cr3Boxes boxes;
    inside(exif::LocateCr3Exif(file, boxes));
    for (uint32_t cmt : {boxes.cmt1, boxes.cmt2, boxes.cmt3, boxes.cmt4}) inside(cmt);
    inside(exif::LocatePngExif(file));
    inside(exif::LocateWebpExif(file));
    inside(exif::LocateJpegXlExif(file));
    exif::ContainerPointers pointers;
    inside(exif::LocateTiffHeaderInFile(file, pointers));
    for (uint32_t pointer : {pointers.exifIfd, pointers.makerNote, pointers.gpsIfd, pointers.ifd1}) inside(pointer);
    // Photoshop and JPEG 2000: the block lies inside the input.
    for (auto locate : {exif::LocatePsdExif, exif::LocateJpeg2000Exif}) {
        uint32_t length = 0;
        const uint32_t header = locate(file, length);
        inside(header);
        if (header != 0 && (length < 8 || length > size - header)) __builtin_trap();
    }
    // The classic rendering of a BigTIFF or a PNG profile reads whole, stays
    // within 32-bit offsets, and keeps the input's bytes where it does not lay its own.
    if (const auto classic = exif::OpenClassicTiff(file)) {
        const int64_t renderedSize = classic->Size();
        if (renderedSize < 8 || renderedSize > (int64_t{1} << 32)) __builtin_trap();
        uint8_t bytes[4096];
        for (int64_t at = 0; at < renderedSize; at += sizeof bytes) {
            const size_t want = static_cast<size_t>(std::min<int64_t>(sizeof bytes, renderedSize - at));
            if (!classic->Seek(at) || classic->Read(bytes, want) != want) __builtin_trap();
        }
    }
    for (auto find : {exif::FindContainerXmp, exif::FindContainerIptc}) {
        exif::MetadataBlock block;
        if (find(file, block) && (block.bytes.empty() || block.bytes.size() > exif::kMetadataBlockLimit + 12))
            __builtin_trap();
    }
    return 0;
}
