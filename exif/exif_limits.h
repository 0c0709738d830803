// Every bound the EXIF reading core puts on what it reads, each with its
// reason. The table's own capacities (rows, name, value, long value) are in
// tag_record.h.
#pragma once

#include <cstddef>
#include <cstdint>

namespace exif {

// Bytes of a value text that readers fill; the row's buffer keeps a
// terminator within the first 256 bytes.
constexpr size_t kValueTextLimit = 255;
// Bytes of a long value that readers fill (the block is kLongValueSize).
constexpr size_t kLongValueTextLimit = 3071;
// Stored counts from which ImageDescription and UserComment get a long value.
constexpr uint32_t kLongValueMinCount = 257;
// Numbers listed for one entry (strip offsets, bits per sample, CFA bytes):
// more would not fit the 255-byte value text anyway.
constexpr uint32_t kListedNumbersLimit = 64;
// Rationals read for the coordinate and time tags (degrees, minutes, seconds).
constexpr uint32_t kGpsRationalsLimit = 3;
// Rationals read for Lens Info (shortest and longest focal length, their apertures).
constexpr uint32_t kLensInfoRationalsLimit = 4;
// Rationals read for the chromaticity tags (ReferenceBlackWhite has six).
constexpr uint32_t kChromaticityRationalsLimit = 6;
// The first kilobyte is where a container keeps its "Exif" marker.
constexpr size_t kHeaderScanBytes = 1024;
// Last scan position: the TIFF header after "Exif" needs 12 more bytes.
constexpr size_t kHeaderScanLastPosition = 1012;
// Extent the default locator reports: at least a typical APP1's worth, at
// most what one JPEG segment can hold.
constexpr uint32_t kExifExtentMin = 2048;
constexpr uint32_t kExifExtentMax = 65535;
// Sub-directories the default locator follows from IFD0 (Exif, GPS, Interop).
constexpr int kExtentSubDirectories = 3;

// Blocks of Adobe's DNG private data looked through for the maker note (a
// converter writes a handful).
constexpr int kDngPrivateBlocksLimit = 64;

}  // namespace exif
