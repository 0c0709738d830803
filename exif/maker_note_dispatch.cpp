#include "maker_note_dispatch.h"

#include <cstring>

#include "exif_limits.h"
#include "platform/input.h"
#include "platform/text.h"

namespace exif {
namespace {

constexpr uint32_t kTagMake = 271;
// The first bytes of a note that name its maker ("Nikon", "OLYMP", "QVC"...).
constexpr size_t kPrefixSize = 5;

char Upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

bool EqualsIgnoringCase(const char* a, const char* b) { return platform::EqualsIgnoringAsciiCase(a, b); }

// The value of the last Make row; "" when there is none.
const char* MakeText(const TagRecordTable& table, uint32_t rowCount, char (&copy)[kTagValueSize]) {
    copy[0] = '\0';
    const uint32_t n = rowCount < kTagTableRows ? rowCount : kTagTableRows;
    for (uint32_t i = 0; i < n; ++i) {
        const TagRecord& row = table.rows[i];
        if (row.tag != kTagMake) continue;
        const size_t length = strnlen(row.value, sizeof copy - 1);
        std::memcpy(copy, row.value, length);
        copy[length] = '\0';
    }
    return copy;
}

struct Note {
    const char* prefix;
    bool isCr3;
    const TagRecordTable& table;
    const uint32_t* rowCount;  // read when a test runs: an earlier decoder may have added a Make row

    // The Make text as it stands, and in capitals: looked up again only
    // when rows were added since (the rules ask for it many times).
    const char* Make() const {
        if (makeRows != *rowCount) {
            MakeText(table, *rowCount, make);
            for (size_t i = 0; i < sizeof make; ++i) upper[i] = Upper(make[i]);
            makeRows = *rowCount;
        }
        return make;
    }
    const char* UpperMake() const { return Make(), upper; }

    mutable uint32_t makeRows = UINT32_MAX;
    mutable char make[kTagValueSize] = {};
    mutable char upper[kTagValueSize] = {};
};

bool Holds(const MakerCondition& c, const Note& note) {
    switch (c.test) {
        case MakerTest::kNone: return false;
        case MakerTest::kPrefixIs: return EqualsIgnoringCase(note.prefix, c.word);
        case MakerTest::kPrefixHas: return std::strstr(note.prefix, c.word) != nullptr;
        case MakerTest::kMakeIs: return EqualsIgnoringCase(note.Make(), c.word);
        case MakerTest::kMakeHas: return std::strstr(note.UpperMake(), c.word) != nullptr;
        case MakerTest::kCr3: return note.isCr3;
    }
    return false;
}

// The input seen `lead` bytes further on: position p here is p - lead in the
// input, and the first `lead` bytes hold nothing. A note whose offsets count
// from before the start of the file (one moved towards the start, or copied
// out of a larger file) is read through it with an offset base of 0.
class LeadingGap final : public platform::File {
public:
    LeadingGap(platform::File& input, uint64_t lead) : input_(input), lead_(lead) {}

    bool Seek(int64_t offset, platform::SeekFrom from) override {
        int64_t origin = 0;
        if (from == platform::SeekFrom::kCurrent) origin = position_;
        if (from == platform::SeekFrom::kEnd) origin = Size();
        if (origin < 0 || offset < -origin || (offset > 0 && offset > INT64_MAX - origin))
            return false;
        position_ = origin + offset;
        return true;
    }
    int64_t Tell() override { return position_; }
    int64_t Size() override {
        const int64_t size = input_.Size();
        return size < 0 ? size : size + static_cast<int64_t>(lead_);
    }
    // Nothing is read from inside the gap.
    size_t Read(void* buffer, size_t n) override {
        const auto at = static_cast<uint64_t>(position_);
        if (at < lead_ || !input_.Seek(static_cast<int64_t>(at - lead_))) return 0;
        const size_t got = input_.Read(buffer, n);
        position_ += static_cast<int64_t>(got);
        return got;
    }
    size_t Write(const void*, size_t) override { return 0; }
    bool Flush() override { return false; }

private:
    platform::File& input_;
    uint64_t lead_;
    int64_t position_ = 0;
};

// Runs a decoder from `at` with offsets counting from `base`. A base before
// the start of the file is read through a LeadingGap; a base beyond 32 bits
// would put every value out of reach, so the note is read as it stands.
void Decode(MakerNoteDecoder decode, platform::File& file, const platform::Cursor& at, int64_t base,
            int64_t unmoved, TagRecordTable& table, uint32_t* rowCount) {
    if (base > INT64_C(0xFFFFFFFF)) base = unmoved;
    if (base >= 0) return decode(at, static_cast<uint32_t>(base), table, rowCount);
    const auto lead = static_cast<uint64_t>(-base);
    LeadingGap shifted(file, lead);
    platform::Cursor there(shifted, at.order(), at.position() + lead, at.end() + lead);
    decode(there, 0, table, rowCount);
}

// How DNG private data begins: "Adobe\0" and blocks (lengths big-endian),
// or a Pentax note as the camera wrote it.
constexpr char kAdobePrivate[] = "Adobe";   // and its NUL
constexpr char kPentaxNote[] = "PENTAX ";   // and its NUL
constexpr char kMakerNoteBlock[4] = {'M', 'a', 'k', 'N'};
constexpr size_t kMakerNoteBlockHead = 6;   // byte order (2), original offset (4)

}  // namespace

bool MakeEquals(const TagRecordTable& table, uint32_t rowCount, const char* word) {
    char make[kTagValueSize];
    return EqualsIgnoringCase(MakeText(table, rowCount, make), word);
}

bool MakeContains(const TagRecordTable& table, uint32_t rowCount, const char* word) {
    char make[kTagValueSize];
    MakeText(table, rowCount, make);
    for (char* c = make; *c; ++c) *c = Upper(*c);
    return std::strstr(make, word) != nullptr;
}

bool FindDngPrivateNote(platform::File& file, uint32_t tiffBase, int bigEndian, uint32_t offset, uint32_t size,
                        MakerNotePlace& place) {
    const platform::Cursor input(file, platform::ByteOrder::kBig);
    platform::Cursor data = input.ChildAt(uint64_t{tiffBase} + offset, size);
    char name[sizeof kPentaxNote] = {};
    data.Some(name, sizeof name);
    if (std::memcmp(name, kPentaxNote, sizeof kPentaxNote) == 0) {
        const auto start = static_cast<int64_t>(data.begin());
        place = MakerNotePlace{data.begin(), static_cast<uint32_t>(data.end() - data.begin()), bigEndian, start, start,
                               false};
        return true;
    }
    if (std::memcmp(name, kAdobePrivate, sizeof kAdobePrivate) != 0) return false;
    data.Seek(data.begin() + sizeof kAdobePrivate);
    for (int block = 0; block < kDngPrivateBlocksLimit && data.remaining() >= 8; ++block) {
        char type[4];
        data.Bytes(type, sizeof type);
        const uint32_t length = data.U32();
        if (length > data.remaining()) return false;
        if (std::memcmp(type, kMakerNoteBlock, sizeof type) != 0) {
            data.Skip(length);
            continue;
        }
        if (length <= kMakerNoteBlockHead) return false;
        char mark[2];
        data.Bytes(mark, sizeof mark);
        const uint32_t original = data.U32();
        if (!data.ok() || mark[0] != mark[1] || (mark[0] != 'I' && mark[0] != 'M')) return false;
        const uint64_t start = data.position();
        const int64_t base = static_cast<int64_t>(start) - original;
        place = MakerNotePlace{start, length - static_cast<uint32_t>(kMakerNoteBlockHead), mark[0] == 'M', base, base,
                               false};
        return true;
    }
    return false;
}

void DispatchMakerNote(platform::File& file, uint32_t tiffBase, TagRecordTable& table, uint32_t* rowCount,
                       int bigEndian, uint32_t makerNoteOffset, bool isCr3, const MakerNoteRules& rules,
                       uint32_t makerNoteSize) {
    if (makerNoteOffset == 0 || !rowCount) return;

    MakerNotePlace place{uint64_t{tiffBase} + makerNoteOffset, makerNoteSize, bigEndian, tiffBase, tiffBase, isCr3};
    // A CR3 note is the absolute position of a TIFF header of its own: its
    // byte order holds for the note, and Canon's offsets count from it.
    if (isCr3) {
        // Headers cut by the end of the file keep the bytes they have.
        const platform::Cursor input(file, platform::ByteOrder::kLittle);
        uint8_t header[8] = {};
        input.ChildAt(makerNoteOffset, sizeof header).Some(header, sizeof header);
        place.bigEndian = header[0] == 'M' && header[1] == 'M';
        place.start = uint64_t{makerNoteOffset} + platform::GetU32(header + 4, place.bigEndian);
        place.size = 0;
        place.cr3Header = makerNoteOffset;
    }
    DispatchMakerNoteAt(file, place, table, rowCount, rules);
}

void DispatchMakerNoteAt(platform::File& file, const MakerNotePlace& place, TagRecordTable& table,
                         uint32_t* rowCount, const MakerNoteRules& rules) {
    // Offsets inside a note are 32-bit: a note beyond that cannot be read.
    if (place.start > UINT32_MAX || !rowCount) return;
    const auto note = static_cast<uint32_t>(place.start);

    const platform::Cursor input(file, platform::ByteOrder::kLittle);
    char prefix[kPrefixSize + 1] = {};
    input.ChildAt(note, kPrefixSize).Some(prefix, kPrefixSize);
    const Note seen{prefix, place.isCr3, table, rowCount};

    for (size_t i = 0; i < rules.size;) {
        const uint8_t group = rules.rules[i].group;
        for (; i < rules.size && rules.rules[i].group == group; ++i) {
            const MakerNoteRule& rule = rules.rules[i];
            if (!Holds(rule.anyOf[0], seen) && !Holds(rule.anyOf[1], seen)) continue;
            if (rule.also.test != MakerTest::kNone && !Holds(rule.also, seen)) continue;
            platform::Cursor at = input.ChildAt(uint64_t{note} + rule.directory, input.end());
            at.SetOrder(platform::OrderOf(place.bigEndian));
            if (rule.probe && !rule.probe(at)) continue;
            const int64_t unmoved = rule.base == OffsetBase::kNote         ? int64_t{note + rule.baseOffset}
                                    : rule.base == OffsetBase::kCr3Header ? place.cr3Header
                                                                          : place.tiffBase;
            int64_t base = unmoved;
            if (rule.relocate && place.size > 0) {
                platform::Cursor bytes = input.ChildAt(note, place.size);
                bytes.SetOrder(platform::OrderOf(place.bigEndian));
                base += rule.relocate(bytes, int64_t{note} - unmoved);
            }
            Decode(rule.decode, file, at, base, unmoved, table, rowCount);
            // The rest of the group are alternatives to this one.
            while (i < rules.size && rules.rules[i].group == group) ++i;
            break;
        }
    }
}

}  // namespace exif
