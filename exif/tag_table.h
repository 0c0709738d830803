// The standard tags of IFD0, the Exif IFD and IFD1: which tags become rows,
// their display names and how their values are written. Tags not in the
// table produce no row.
#pragma once

#include <cstddef>
#include <cstdint>

#include "exif_reader.h"

namespace exif {

// Writes a row's value text from its entry.
using Formatter = void (*)(const EntryContext&);

struct TagInfo {
    uint16_t tag;
    const char* name;
    Formatter format;
};

// One value of an enumerated tag and its text.
struct EnumText {
    uint32_t value;
    const char* text;
};

// A table's promises, for a static_assert beside it: sorted by tag with no
// tag twice, and every row has a format and a name that fits the row's name
// field and does not end in ':' (such a name reads as a heading).
template <size_t N>
constexpr bool SortedAndNamed(const TagInfo (&tags)[N]) {
    for (size_t i = 0; i < N; ++i) {
        size_t length = 0;
        while (tags[i].name && tags[i].name[length]) ++length;
        if (length == 0 || length >= kTagNameSize || tags[i].name[length - 1] == ':' || !tags[i].format) return false;
        if (i > 0 && tags[i - 1].tag >= tags[i].tag) return false;
    }
    return true;
}

// The table, sorted by tag with no tag twice; null when the tag is not in it.
const TagInfo* FindStandardTag(uint16_t tag);

// The GPS directory's table, keyed by the GPS tag (0 .. 29), same invariants.
const TagInfo* FindGpsTag(uint16_t gpsTag);

// What the entry loop (ProcessDirectoryEntries) looks a directory's tags up
// in, and the tag number its rows carry: the tag itself in IFD0, the Exif IFD
// and IFD1; kGpsTagBase + the tag in the GPS directory.
struct DirectoryTags {
    const TagInfo* (*find)(uint16_t tag);
    uint32_t rowTagBase;
};
extern const DirectoryTags kStandardDirectory;
extern const DirectoryTags kGpsDirectory;

}  // namespace exif
