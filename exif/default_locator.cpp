// The locator behind GetExifInfos for JPEG and TIFF-based files: the TIFF
// header marked by "Exif" in the first kilobyte, and how far its data reaches.
#include <algorithm>
#include <cstring>

#include "container.h"
#include "exif_limits.h"
#include "exif_reader.h"

namespace exif {
namespace {

constexpr uint16_t kTagThumbnailOffset = 513;
constexpr uint16_t kTagThumbnailLength = 514;
// Sub-directories whose entries and values belong to the EXIF data.
constexpr uint16_t kSubDirectoryTags[kExtentSubDirectories] = {34665, 34853, 40965};

// The furthest end of the EXIF data seen so far, as an absolute position.
// Ends beyond the file are lies and do not count.
class Extent {
public:
    Extent(platform::File& file, uint32_t tiff, int bigEndian)
        : file_(file), tiff_(tiff), bigEndian_(bigEndian), fileSize_(std::max<int64_t>(file.Size(), 0)) {}

    // Reads one directory at tiff + offset; notes the end of its table and of
    // every out-of-line value; returns its next-directory offset and, when
    // asked, its sub-directory pointers.
    uint32_t Directory(uint32_t offset, uint32_t* subDirectories) {
        const int64_t start = static_cast<int64_t>(tiff_) + offset;
        uint8_t raw[2];
        if (!file_.Seek(start) || !file_.ReadExact(raw, sizeof raw)) return 0;
        const uint32_t n = platform::GetU16(raw, bigEndian_);
        Note(start + 2 + 12 * static_cast<int64_t>(n) + 4);
        uint32_t thumbnailOffset = 0, thumbnailLength = 0;
        for (uint32_t i = 0; i < n; ++i) {
            tiff::Entry e;
            if (!tiff::ReadEntry(file_, bigEndian_, e)) return 0;
            const uint64_t bytes = static_cast<uint64_t>(e.count) * tiff::TypeSize(e.type);
            if (bytes > 4) Note(static_cast<int64_t>(tiff_) + e.valueField + static_cast<int64_t>(bytes));
            const uint32_t number = e.type == 3 ? e.inlineShort : e.valueField;
            if (e.tag == kTagThumbnailOffset) thumbnailOffset = number;
            if (e.tag == kTagThumbnailLength) thumbnailLength = number;
            for (int k = 0; subDirectories && k < kExtentSubDirectories; ++k)
                if (e.tag == kSubDirectoryTags[k]) subDirectories[k] = e.valueField;
        }
        if (thumbnailOffset && thumbnailLength)
            Note(static_cast<int64_t>(tiff_) + thumbnailOffset + static_cast<int64_t>(thumbnailLength));
        uint8_t next[4];
        return file_.ReadExact(next, sizeof next) ? platform::GetU32(next, bigEndian_) : 0;
    }

    int64_t End() const { return end_; }
    int64_t Position() { return std::min<int64_t>(std::max<int64_t>(file_.Tell(), 0), fileSize_); }

private:
    void Note(int64_t end) {
        if (end <= fileSize_) end_ = std::max(end_, end);
    }

    platform::File& file_;
    uint32_t tiff_;
    int bigEndian_;
    int64_t fileSize_;
    int64_t end_ = 0;
};

// "Exif" followed by two bytes and a byte-order mark, or the "TTW" marker.
uint32_t FindTiffHeader(const uint8_t* bytes, size_t size) {
    for (size_t pos = 0; pos <= kHeaderScanLastPosition && pos < size; ++pos) {
        if (pos + 8 <= size && std::memcmp(bytes + pos, "Exif", 4) == 0 &&
            ((bytes[pos + 6] == 'I' && bytes[pos + 7] == 'I') || (bytes[pos + 6] == 'M' && bytes[pos + 7] == 'M')))
            return static_cast<uint32_t>(pos + 6);
        if (pos + 3 <= size && std::memcmp(bytes + pos, "TTW", 3) == 0) return static_cast<uint32_t>(pos + 7);
    }
    return 0;
}

}  // namespace

uint32_t LocateExifDefault(platform::File& file, uint32_t& size) {
    size = 0;
    uint8_t head[kHeaderScanBytes];
    if (!file.Seek(0)) return 0;
    const size_t got = file.Read(head, sizeof head);
    uint32_t tiff = FindTiffHeader(head, got);
    // WebP and JPEG XL keep their EXIF in a chunk or box that the first
    // kilobyte's scan may not reach; the viewer has no format code of its
    // own for them, so their locators stand in here.
    if (tiff == 0) tiff = LocateWebpExif(file);
    if (tiff == 0) tiff = LocateJpegXlExif(file);
    if (tiff == 0) return 0;

    uint8_t header[8] = {};
    if (!file.Seek(tiff)) return 0;
    file.Read(header, sizeof header);
    const int bigEndian = header[0] == 'M' && header[1] == 'M';
    Extent extent(file, tiff, bigEndian);
    uint32_t subDirectories[kExtentSubDirectories] = {};
    const uint32_t ifd0 = platform::GetU32(header + 4, bigEndian);
    const uint32_t ifd1 = ifd0 ? extent.Directory(ifd0, subDirectories) : 0;
    for (uint32_t sub : subDirectories)
        if (sub) extent.Directory(sub, nullptr);
    if (ifd1) extent.Directory(ifd1, nullptr);

    const int64_t extentSize = std::max(extent.End(), extent.Position()) - tiff + 8;
    if (extentSize < 1) return 0;
    size = static_cast<uint32_t>(std::clamp<int64_t>(extentSize, kExifExtentMin, kExifExtentMax));
    return tiff;
}

}  // namespace exif
