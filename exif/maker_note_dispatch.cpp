#include "maker_note_dispatch.h"

#include <cstring>

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
};

bool Holds(const MakerCondition& c, const Note& note) {
    switch (c.test) {
        case MakerTest::kNone: return false;
        case MakerTest::kPrefixIs: return EqualsIgnoringCase(note.prefix, c.word);
        case MakerTest::kPrefixHas: return std::strstr(note.prefix, c.word) != nullptr;
        case MakerTest::kMakeIs: return MakeEquals(note.table, *note.rowCount, c.word);
        case MakerTest::kMakeHas: return MakeContains(note.table, *note.rowCount, c.word);
        case MakerTest::kCr3: return note.isCr3;
    }
    return false;
}

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

void DispatchMakerNote(platform::File& file, uint32_t tiffBase, TagRecordTable& table, uint32_t* rowCount,
                       int bigEndian, uint32_t makerNoteOffset, bool isCr3, const MakerNoteRules& rules) {
    if (makerNoteOffset == 0 || !rowCount) return;

    // Headers cut by the end of the file keep the bytes they have.
    const platform::Cursor input(file, platform::ByteOrder::kLittle);
    // A CR3 note is the absolute position of a TIFF header of its own: its
    // byte order holds for the note, and Canon's offsets count from it.
    int64_t noteStart = static_cast<int64_t>(tiffBase) + makerNoteOffset;
    uint32_t cr3Base = tiffBase;
    int order = bigEndian;
    if (isCr3) {
        uint8_t header[8] = {};
        input.ChildAt(makerNoteOffset, sizeof header).Some(header, sizeof header);
        order = header[0] == 'M' && header[1] == 'M';
        noteStart = static_cast<int64_t>(makerNoteOffset) + platform::GetU32(header + 4, order);
        cr3Base = makerNoteOffset;
    }
    // Offsets inside a note are 32-bit: a note beyond that cannot be read.
    if (noteStart > UINT32_MAX) return;
    const auto note = static_cast<uint32_t>(noteStart);

    char prefix[kPrefixSize + 1] = {};
    input.ChildAt(note, kPrefixSize).Some(prefix, kPrefixSize);
    const Note seen{prefix, isCr3, table, rowCount};

    for (size_t i = 0; i < rules.size;) {
        const uint8_t group = rules.rules[i].group;
        for (; i < rules.size && rules.rules[i].group == group; ++i) {
            const MakerNoteRule& rule = rules.rules[i];
            if (!Holds(rule.anyOf[0], seen) && !Holds(rule.anyOf[1], seen)) continue;
            if (rule.also.test != MakerTest::kNone && !Holds(rule.also, seen)) continue;
            platform::Cursor at = input.ChildAt(static_cast<uint64_t>(noteStart) + rule.directory, input.end());
            at.SetOrder(platform::OrderOf(order));
            if (rule.probe && !rule.probe(at)) continue;
            const uint32_t base = rule.base == OffsetBase::kNote         ? note + rule.baseOffset
                                  : rule.base == OffsetBase::kCr3Header ? cr3Base
                                                                        : tiffBase;
            rule.decode(at, base, table, rowCount);
            // The rest of the group are alternatives to this one.
            while (i < rules.size && rules.rules[i].group == group) ++i;
            break;
        }
    }
}

}  // namespace exif
