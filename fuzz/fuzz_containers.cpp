// The container locators and their dispatch on arbitrary bytes, held in
// memory behind the file interface. Whatever they are given, a position they
// report lies inside the input.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "exif/container.h"
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
    return 0;
}
