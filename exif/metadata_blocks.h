// Where the containers other than JPEG and TIFF keep the XMP packet and the
// IPTC-IIM datasets that the IPTC reader and the XMP page read.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/platform.h"

namespace exif {

struct MetadataBlock {
    std::vector<uint8_t> bytes;  // as the reader wants them (inflated, decoded)
    uint64_t offset = 0;         // where the resource, chunk, box or item data starts
};

// The most a block may hold: packets and IIM records of real files are far
// smaller, and a block claiming more is not read.
constexpr uint64_t kMetadataBlockLimit = 4u << 20;

// The XMP packet:
//   Photoshop document   image resource 0x0424
//   PNG                  iTXt "XML:com.adobe.xmp", else a "Raw profile type xmp" text
//   WebP                 chunk "XMP "
//   HEIF, AVIF           the item of type "mime" with content type "application/rdf+xml"
//   HEIF, AVIF, CR3 and other ISO media
//                        else the top-level "uuid" box be7acfcb-97a9-42e8-9c71-999491e3afac
//   JPEG XL              the first "xml " box
//   JPEG 2000            the "uuid" box above, else the first "xml " box holding an XMP packet
bool FindContainerXmp(platform::File& file, MetadataBlock& block);

// The IPTC-IIM datasets, as the Photoshop resources an APP13 segment carries:
//   Photoshop document   image resource 0x0404, from its "8BIM"
//   PNG                  a "Raw profile type iptc" text: Photoshop resources, or bare
//                        datasets, which are given the 0x0404 resource header
bool FindContainerIptc(platform::File& file, MetadataBlock& block);

}  // namespace exif
