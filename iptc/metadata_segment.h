// Fetching one metadata segment of an image file: the Photoshop APP13 block
// that holds the IPTC datasets, the first XMP or Exif APP1, or the first
// segment of any other marker (the comment writer asks for COM, 0xFE) of a
// JPEG; or the IPTC-NAA block of a TIFF's first directory.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace iptc {

constexpr uint8_t kApp1Marker = 0xE1;
constexpr uint8_t kApp13Marker = 0xED;
constexpr uint8_t kComMarker = 0xFE;
constexpr uint16_t kTiffIptcTag = 33723;
constexpr uint16_t kBigTiffVersion = 43;

// Finds the segment and reads it.
//
// JPEG: `length` receives the segment's stored length field (its own two
// bytes included), `offset` the file offset of the segment's 0xFF byte, and
// the result holds `length` bytes starting at the length field, followed by
// zero bytes (kSegmentSlack of them; the tail is zero too when the file ends
// early). APP13 is the block of Photoshop resources that ChooseIptcBlock
// picks (photoshop_blocks.h): APP13 segments of other kinds are passed over,
// and a block continued over several segments comes as one, `length` then
// being its joinedLength. APP1 is taken only when its payload starts with
// the XMP namespace identifier (xmpOnly) or with "Exif"; any other marker
// takes the first segment. The walk starts at offset 2 and gives up on the first byte pair
// that is not a marker, a length below 3, or the end of the file.
//
// TIFF (the file starts "II" or "MM"): `isTiff` is set to 1; only the APP13
// request finds anything: the IIM bytes at the value offset of tag 33723 in
// the first directory (of a BigTIFF too), `length` = kTiffIptcBlockLength,
// `offset` = that value offset.
//
// Other containers (Photoshop documents, PNG, WebP, HEIF/AVIF and other ISO
// media, JPEG XL, JPEG 2000; exif/metadata_blocks.h says where each keeps
// what): APP13 gives the IPTC-NAA resource as an APP13 carries it, APP1
// with xmpOnly the XMP packet; `length` is then the block's size and
// `offset` where the resource, chunk, box or item that holds it starts.
//
// With sizeOnly nothing is read: only the outputs are set. The result is
// empty when nothing was found (outputs 0) or with sizeOnly. `isTiff` may be
// null. Never reads outside the file or the returned buffer.
std::vector<uint8_t> LoadMetadataSegment(std::u16string_view fileName, uint32_t& length,
                                         uint32_t& offset, uint8_t marker, bool sizeOnly,
                                         int32_t* isTiff, bool xmpOnly);
// The same on an open input.
std::vector<uint8_t> LoadMetadataSegment(platform::File& file, uint32_t& length, uint32_t& offset,
                                         uint8_t marker, bool sizeOnly, int32_t* isTiff, bool xmpOnly);

}  // namespace iptc
