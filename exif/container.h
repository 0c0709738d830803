// Finding the TIFF header of the EXIF data in each container the plug-in
// reads. Every locator works on an open file and reports an absolute file
// offset; 0 means not found. Container fields (JPEG lengths, box and chunk
// sizes) are big-endian, except RIFF (WebP) chunk sizes, which are little-endian.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/platform.h"

namespace exif {

// What the container dispatch reports besides the TIFF header's offset.
struct ContainerPointers {
    bool separateHeaders = false;  // CR3: each directory sits behind a TIFF header of its own
    bool jpegXl = false;           // the "Exif" found has 4 more bytes before its TIFF header
    uint32_t exifIfd = 0;          // CR3: absolute offsets of the CMT2, CMT3 and CMT4 headers
    uint32_t makerNote = 0;
    uint32_t gpsIfd = 0;
    uint32_t ifd1 = 0;
};

// The container dispatch, used by the directory walker when the file is
// neither a JPEG with an Exif APP1 nor a bare TIFF: ISO media (HEIF, CR3),
// Photoshop documents, JPEG 2000, JPEG XL, PNG, WebP, then a scan of the
// first kilobyte.
uint32_t LocateTiffHeaderInContainer(std::u16string_view path, ContainerPointers& pointers);
// The same dispatch on a file that is already open.
uint32_t LocateTiffHeaderInFile(platform::File& file, ContainerPointers& pointers);

// The locators behind GetExifInfos, chosen by the viewer's format code.
uint32_t LocateHeifExif(platform::File& file, uint32_t& itemLength);            // code 115
struct Cr3Boxes {
    uint32_t moovSize = 0;
    uint32_t cmt1 = 0, cmt2 = 0, cmt3 = 0, cmt4 = 0;
};
uint32_t LocateCr3Exif(platform::File& file, Cr3Boxes& boxes);                  // code 118
uint32_t LocatePngExif(platform::File& file);                                     // code 3
uint32_t LocateWebpExif(platform::File& file);
// JPEG XL in its box form: the TIFF header inside the "Exif" box, wherever
// that box stands (writers often put it after the codestream).
uint32_t LocateJpegXlExif(platform::File& file);
// Photoshop documents (PSD, PSB): the TIFF file in image resource 0x0422.
// JPEG 2000 (JP2, JPX): the TIFF file in the "uuid" box named
// "JpgTiffExif->JP2". `length` receives the bytes from the TIFF header to
// the end of the resource or box.
uint32_t LocatePsdExif(platform::File& file, uint32_t& length);
uint32_t LocateJpeg2000Exif(platform::File& file, uint32_t& length);
// Any other code (JPEG and TIFF-based files): the header found in the first
// kilobyte, else the WebP or JPEG XL one wherever it stands, and the EXIF
// extent clamped to 2048 .. 65535. Photoshop documents and JPEG 2000 files
// answer their TIFF header and the true length of the resource or box from it.
uint32_t LocateExifDefault(platform::File& file, uint32_t& size);

}  // namespace exif
