#include "exif_file_pointers.h"

#include <cstring>

#include "marker_walk.h"
#include "platform/input.h"
#include "tiff/entry.h"

namespace jpeg {
namespace {

constexpr uint16_t kMake = 0x010F;
constexpr uint16_t kExifIfd = 0x8769;
constexpr uint16_t kMakerNote = 0x927C;
constexpr uint16_t kCanonDecisionDataOffset = 0x0083;
// Entries looked at in one directory.
constexpr uint32_t kEntryLimit = 512;
constexpr size_t kExifHeader = 6;  // "Exif" and two NULs

// The entry with `tag` in the directory at `offset` of the TIFF block `tiff`;
// `at` gets the block offset of the entry.
bool FindEntry(const platform::Cursor& tiff, uint32_t offset, uint16_t tag, tiff::Entry& found, uint64_t& at) {
    platform::Cursor directory = tiff.ChildAt(tiff.begin() + offset, UINT64_MAX);
    const uint32_t count = directory.U16();
    for (uint32_t i = 0; directory.ok() && i < count && i < kEntryLimit; ++i) {
        at = directory.position();
        if (tiff::ReadEntry(directory, found) && found.tag == tag) return true;
    }
    return false;
}

}  // namespace

std::vector<FilePointer> FindFilePointers(platform::File& file) {
    MarkerWalk walk(file, 2, WalkRules{});
    Segment app1;
    if (!FindSegment(walk, kApp1, app1, [&](const Segment& s) { return PayloadStartsWith(file, s, "Exif\0", 6); }))
        return {};
    platform::Cursor tiff(file, platform::ByteOrder::kBig, app1.payload() + kExifHeader, app1.end());
    uint8_t order[2];
    if (!tiff.Bytes(order, 2) || order[0] != order[1] || (order[0] != 'I' && order[0] != 'M')) return {};
    tiff.SetOrder(platform::OrderOf(order[0] == 'M'));
    tiff.Skip(2);
    const uint32_t ifd0 = tiff.U32();
    if (!tiff.ok()) return {};

    tiff::Entry entry;
    uint64_t at = 0;
    char make[6] = {};
    if (!FindEntry(tiff, ifd0, kMake, entry, at) || entry.count < 5) return {};
    const uint64_t makeAt = entry.count <= 4 ? at + 8 : tiff.begin() + entry.valueField;
    if (!tiff.ChildAt(makeAt, 5).Bytes(make, 5) || std::strncmp(make, "Canon", 5) != 0) return {};
    if (!FindEntry(tiff, ifd0, kExifIfd, entry, at)) return {};
    if (!FindEntry(tiff, entry.valueField, kMakerNote, entry, at)) return {};
    // Canon's note is a plain directory in the block's byte order.
    if (!FindEntry(tiff, entry.valueField, kCanonDecisionDataOffset, entry, at) || entry.type != tiff::kLong ||
        entry.count != 1 || entry.valueField == 0)
        return {};
    return {FilePointer{at + 8, tiff.bigEndian(), entry.valueField}};
}

}  // namespace jpeg
