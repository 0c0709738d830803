// Canon notes moved by editing software. Canon's offsets count from the TIFF
// header, so a program that rewrites the EXIF block and puts the note
// somewhere else without changing the offsets inside it leaves every value
// out of place by the distance the note moved. The camera records where it
// wrote the note, in the last eight bytes:
//
//   +0 "II*\0" or "MM\0*" (the note's byte order)   +4 the note's offset (4)
//
// so the distance is the note's offset now less the offset recorded. A note
// without that record (older bodies) still shows its move: its values lie
// outside it. They are written one after the other from the end of the
// directory to the end of the note (or of the record), which gives the
// distance from where the last value ends.
#include <cstring>

#include "makernote_decoders.h"
#include "tiff/entry.h"

namespace makernotes {
namespace {

constexpr size_t kFooterSize = 8;

// A value stored outside its entry: [begin, end) as its offsets give it.
struct Span {
    uint64_t begin, end;
};

struct Values {
    Span spans[kMakerNoteRowLimit];
    size_t size = 0;
    uint64_t directoryEnd = 0;  // the end of the entries, as an offset

    // Every value inside [directoryEnd, limit) once moved by `shift`.
    bool FitWith(int64_t shift, uint64_t limit) const {
        for (size_t i = 0; i < size; ++i) {
            const int64_t begin = static_cast<int64_t>(spans[i].begin) + shift;
            const int64_t end = static_cast<int64_t>(spans[i].end) + shift;
            if (begin < static_cast<int64_t>(directoryEnd) || end > static_cast<int64_t>(limit)) return false;
        }
        return true;
    }
    uint64_t LastEnd() const {
        uint64_t last = 0;
        for (size_t i = 0; i < size; ++i)
            if (spans[i].end > last) last = spans[i].end;
        return last;
    }
};

// The out-of-line values of the directory at the note's start; false when
// the entries do not fit in the note or are more than the decoder reads.
bool ReadValues(platform::Cursor note, uint64_t noteOffset, Values& values) {
    const uint32_t count = note.U16();
    if (!note.ok() || count >= kMakerNoteRowLimit || uint64_t{count} * tiff::kEntrySize > note.remaining())
        return false;
    values.directoryEnd = noteOffset + 2 + uint64_t{count} * tiff::kEntrySize;
    for (uint32_t i = 0; i < count; ++i) {
        tiff::Entry entry;
        if (!tiff::ReadEntry(note, entry)) return false;
        const uint64_t length = uint64_t{entry.count} * tiff::TypeSize(entry.type);
        if (length > tiff::kValueFieldSize)
            values.spans[values.size++] = {entry.valueField, uint64_t{entry.valueField} + length};
    }
    return true;
}

}  // namespace

int64_t CanonNoteShift(const platform::Cursor& note, int64_t noteOffset) {
    const uint64_t size = note.end() - note.begin();
    if (noteOffset < 0 || size <= kFooterSize) return 0;
    const auto offset = static_cast<uint64_t>(noteOffset);
    Values values;
    if (!ReadValues(note, offset, values) || values.size == 0) return 0;

    uint8_t footer[kFooterSize] = {};
    note.ChildAt(note.end() - kFooterSize, kFooterSize).Some(footer, sizeof footer);
    const bool big = note.bigEndian();
    const bool recorded = std::memcmp(footer, big ? "MM\0*" : "II*\0", 4) == 0;
    const uint32_t original = platform::GetU32(footer + 4, big);

    // The note stands where the camera wrote it, or software that moved it
    // changed its offsets too (then only the record is stale).
    if (recorded && original == offset) return 0;
    if (values.FitWith(0, offset + size)) return 0;
    const uint64_t limit = offset + size - (recorded ? kFooterSize : 0);
    if (recorded) {
        const int64_t shift = noteOffset - int64_t{original};
        if (values.FitWith(shift, limit)) return shift;
    }
    const int64_t shift = static_cast<int64_t>(limit) - static_cast<int64_t>(values.LastEnd());
    return values.FitWith(shift, limit) ? shift : 0;
}

}  // namespace makernotes
