// Every bound the IPTC reader and writer keep, in one place.
#pragma once

#include <cstddef>
#include <cstdint>

namespace iptc {

// One dataset's text as read: at most 4095 bytes and a terminator.
constexpr size_t kDatasetTextBytes = 4096;
// Work buffer for cleaning a dataset: line breaks double and TABs quadruple.
constexpr size_t kCleanBufferBytes = 8192;
// The cleaned text stops here, two bytes short of the work buffer.
constexpr size_t kCleanFillLimit = 8190;
// Accumulating fields (Keywords, Supplemental Category, Caption) stay below
// this many characters, leaving room for the terminator.
constexpr size_t kAccumulateLimit = 4095;

// A TIFF's IIM bytes are read as a block of this size; the entry's own count
// is not trusted.
constexpr uint32_t kTiffIptcBlockLength = 10240;
// Entries examined in a TIFF's first directory while looking for tag 33723.
constexpr uint32_t kTiffEntryLimit = 512;
// Zero bytes behind every loaded segment, so a scan that overshoots by a
// header's width still reads zeros inside the allocation.
constexpr size_t kSegmentSlack = 256;

// APP13 segments of Photoshop resources looked at in one file (a resource
// block of a few megabytes), and resources read in one run of them.
constexpr size_t kPhotoshopSegmentLimit = 256;
constexpr size_t kPhotoshopResourceLimit = 4096;

// A written text's UTF-8 form is cut (at a character boundary) to this many
// bytes, so a dataset never needs the extended-length form.
constexpr size_t kWrittenTextBytes = 4096;
// A JPEG segment's length field is 16 bits: larger IIM blocks are refused.
constexpr uint32_t kMaxSegmentLength = 65535;

}  // namespace iptc
