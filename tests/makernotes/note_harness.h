// Runs the dispatch over a note written into a small TIFF
// (the note at fixture::kNoteOffset, offsets counting from the TIFF header).
#pragma once

#include <gtest/gtest.h>

#include <cstring>
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

// A table with `filler` data rows and then a Make row (when make is given).
inline Decoded TableWithMake(const std::string& make, uint32_t filler = 0) {
    Decoded d;
    for (; d.count < filler; ++d.count) {
        d.table->rows[d.count].tag = 1;
        std::strcpy(d.table->rows[d.count].name, "filler");
    }
    if (!make.empty()) {
        exif::TagRecord& row = d.table->rows[d.count++];
        row.tag = 271;
        std::strcpy(row.name, "Make");
        std::strncpy(row.value, make.c_str(), 255);
    }
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
    if (!model.empty()) {
        exif::TagRecord& row = d.table->rows[d.count++];
        row.tag = 272;
        std::strcpy(row.name, "Model");
        std::strncpy(row.value, model.c_str(), 255);
        d.first = d.count;
    }
    WithNoteFile(order, note, [&](platform::File& file) {
        exif::DispatchMakerNote(file, 0, *d.table, &d.count, IsBig(order), fixture::kNoteOffset, false,
                                makernotes::StandardMakerNoteRules());
    });
    return d;
}

}  // namespace notetest
