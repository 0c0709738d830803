// Runs the dispatch over a note written into a small TIFF
// (the note at fixture::kNoteOffset, offsets counting from the TIFF header).
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "exif/tag_record.h"
#include "fixture/fixture.h"
#include "fixture/makernote_fixture.h"
#include "makernotes/makernote_rules.h"
#include "platform/platform.h"
#include "platform/input.h"

namespace notetest {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using Texts = std::vector<std::string>;

constexpr ByteOrder kLE = ByteOrder::kLittle;
constexpr ByteOrder kBE = ByteOrder::kBig;

struct Row {
    uint32_t tag;
    std::string name, value;
};

struct Decoded {
    std::unique_ptr<exif::TagRecordTable> table = std::make_unique<exif::TagRecordTable>();
    uint32_t first = 0;  // rows that stood before the note's
    uint32_t count = 0;

    std::vector<Row> rows() const {
        std::vector<Row> out;
        for (uint32_t i = first; i < count; ++i)
            out.push_back({table->rows[i].tag, table->rows[i].name, table->rows[i].value});
        return out;
    }
};

// "name=value" of each row the note added.
inline Texts RowTexts(const Decoded& d) {
    Texts out;
    for (const Row& r : d.rows()) out.push_back(r.name + "=" + r.value);
    return out;
}

// SHORTs or LONGs in the given order (negative values as their two's complement).
inline Bytes Shorts(ByteOrder order, std::initializer_list<int64_t> values) {
    Bytes out;
    for (int64_t v : values) fixture::PutU16(out, static_cast<uint16_t>(v), order);
    return out;
}
inline Bytes Longs(ByteOrder order, std::initializer_list<int64_t> values) {
    Bytes out;
    for (int64_t v : values) fixture::PutU32(out, static_cast<uint32_t>(v), order);
    return out;
}

// Appends a row with this tag, name and text (when the text is given).
inline void AddRow(Decoded& d, uint32_t tag, const char* name, const std::string& value) {
    if (value.empty()) return;
    exif::TagRecord& row = d.table->rows[d.count++];
    row.tag = tag;
    std::strcpy(row.name, name);
    std::strncpy(row.value, value.c_str(), 255);
}

// A table with `filler` data rows and then a Make row (when make is given).
inline Decoded TableWithMake(const std::string& make, uint32_t filler = 0) {
    Decoded d;
    while (d.count < filler) AddRow(d, 1, "filler", "-");
    AddRow(d, 271, "Make", make);
    d.first = d.count;
    return d;
}

template <typename Run>
void WithNoteFile(ByteOrder order, const Bytes& note, Run run) {  // the note in memory
    const Bytes bytes = fixture::MakerNoteTiff(order, note);
    run(*platform::Input::FromMemory(bytes.data(), bytes.size()));
}

inline int IsBig(ByteOrder order) { return order == ByteOrder::kBig; }

// The whole hand-over, as the walker makes it; with a model, a Model row
// follows the Make row (decoders that tell bodies apart read it).
inline Decoded DispatchNote(ByteOrder order, const std::string& make, const Bytes& note, uint32_t filler = 0,
                            const std::string& model = "") {
    Decoded d = TableWithMake(make, filler);
    AddRow(d, 272, "Model", model);
    d.first = d.count;
    WithNoteFile(order, note, [&](platform::File& file) {
        exif::DispatchMakerNote(file, 0, *d.table, &d.count, IsBig(order), fixture::kNoteOffset, false,
                                makernotes::StandardMakerNoteRules());
    });
    return d;
}

using Fill = std::function<void(MakerNoteBuilder&)>;

// The rows of a note with this header and these entries, its offsets
// counting from the TIFF header.
inline Decoded Note(ByteOrder order, const std::string& make, const std::string& header, const Fill& fill,
                    uint32_t filler = 0, const std::string& model = "") {
    MakerNoteBuilder note(order);
    note.Header(header);
    fill(note);
    return DispatchNote(order, make, note.Build(fixture::kNoteOffset), filler, model);
}

}  // namespace notetest
