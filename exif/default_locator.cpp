// The locator behind GetExifInfos for JPEG and TIFF-based files: the TIFF
// header marked by "Exif" in the first kilobyte, and how far its data
// reaches; and for the containers that say where their EXIF block is and how
// long it is, those.
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
// Ends beyond the input are lies and do not count. Also keeps where the last
// read ended: the end of the input once a read has failed.
class Extent {
public:
    Extent(const platform::Cursor& in, uint32_t tiff, uint64_t position)
        : in_(in), tiff_(tiff), position_(position) {}

    // Reads one directory at tiff + offset; notes the end of its table and of
    // every out-of-line value; returns its next-directory offset and, when
    // asked, its sub-directory pointers.
    uint32_t Directory(uint32_t offset, uint32_t* subDirectories) {
        const uint64_t start = uint64_t{tiff_} + offset;
        platform::Cursor in = in_.ChildAt(start, in_.end());
        const uint32_t n = in.U16();
        if (!in.ok()) return Stop();
        Note(start + 2 + uint64_t{tiff::kEntrySize} * n + 4);
        uint32_t thumbnailOffset = 0, thumbnailLength = 0;
        for (uint32_t i = 0; i < n; ++i) {
            tiff::Entry e;
            if (!tiff::ReadEntry(in, e)) return Stop();
            const uint64_t bytes = uint64_t{e.count} * tiff::TypeSize(e.type);
            if (bytes > 4) Note(uint64_t{tiff_} + e.valueField + bytes);
            const uint32_t number = e.type == tiff::kShort ? e.inlineShort : e.valueField;
            if (e.tag == kTagThumbnailOffset) thumbnailOffset = number;
            if (e.tag == kTagThumbnailLength) thumbnailLength = number;
            for (int k = 0; subDirectories && k < kExtentSubDirectories; ++k)
                if (e.tag == kSubDirectoryTags[k]) subDirectories[k] = e.valueField;
        }
        if (thumbnailOffset && thumbnailLength) Note(uint64_t{tiff_} + thumbnailOffset + thumbnailLength);
        const uint32_t next = in.U32();
        if (!in.ok()) return Stop();
        position_ = in.position();
        return next;
    }

    uint64_t End() const { return std::max(end_, position_); }

private:
    uint32_t Stop() {
        position_ = in_.end();
        return 0;
    }
    void Note(uint64_t end) {
        if (end <= in_.end()) end_ = std::max(end_, end);
    }

    const platform::Cursor in_;
    const uint32_t tiff_;
    uint64_t position_;
    uint64_t end_ = 0;
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
    // A Photoshop document or a JPEG 2000 file names its EXIF block in a
    // resource or a box, which gives its true place and length.
    if (const uint32_t header = LocatePsdExif(file, size)) return header;
    if (const uint32_t header = LocateJpeg2000Exif(file, size)) return header;
    platform::Cursor in(file, platform::ByteOrder::kLittle);
    uint8_t head[kHeaderScanBytes];
    const size_t got = static_cast<size_t>(std::min<uint64_t>(sizeof head, in.remaining()));
    if (!in.Bytes(head, got)) return 0;
    uint32_t tiff = FindTiffHeader(head, got);
    // WebP and JPEG XL keep their EXIF in a chunk or box that the first
    // kilobyte's scan may not reach; the viewer has no format code of its
    // own for them, so their locators stand in here.
    if (tiff == 0) tiff = LocateWebpExif(file);
    if (tiff == 0) tiff = LocateJpegXlExif(file);
    if (tiff == 0) return 0;

    // The header as far as the input holds it; what is missing reads as zero.
    uint8_t header[8] = {};
    platform::Cursor head8 = in.ChildAt(tiff, sizeof header);
    const uint64_t headerBytes = head8.remaining();
    head8.Bytes(header, static_cast<size_t>(headerBytes));
    const bool bigEndian = header[0] == 'M' && header[1] == 'M';
    in.SetOrder(platform::OrderOf(bigEndian));
    Extent extent(in, tiff, std::min<uint64_t>(uint64_t{tiff} + headerBytes, in.end()));
    uint32_t subDirectories[kExtentSubDirectories] = {};
    const uint32_t ifd0 = platform::GetU32(header + 4, bigEndian);
    const uint32_t ifd1 = ifd0 ? extent.Directory(ifd0, subDirectories) : 0;
    for (uint32_t sub : subDirectories)
        if (sub) extent.Directory(sub, nullptr);
    if (ifd1) extent.Directory(ifd1, nullptr);

    const int64_t extentSize = static_cast<int64_t>(extent.End()) - tiff + 8;
    if (extentSize < 1) return 0;
    size = static_cast<uint32_t>(std::clamp<int64_t>(extentSize, kExifExtentMin, kExifExtentMax));
    return tiff;
}

}  // namespace exif
