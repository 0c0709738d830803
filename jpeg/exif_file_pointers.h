// Values in a JPEG's EXIF block that count from the start of the file
// instead of from the TIFF header. A rewrite that moves the bytes such a
// value points at must change the value with them, or what it points to is
// lost for good although every byte of it is still in the file.
//
// Known: the original-decision data of Canon bodies (image verification),
// whose place the maker note keeps in tag 0x0083 as a LONG file offset.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/platform.h"

namespace jpeg {

struct FilePointer {
    uint64_t at = 0;         // file offset of the 4-byte value
    bool bigEndian = false;  // the value's byte order (the TIFF block's)
    uint32_t target = 0;     // the file offset it holds
};

// The file pointers in the EXIF block of the first "Exif" APP1 segment; none
// when there is no such block or it cannot be read. Reads within the segment.
std::vector<FilePointer> FindFilePointers(platform::File& file);

}  // namespace jpeg
