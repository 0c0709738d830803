// Reads a file built in a test through ReadExifTags and keeps the rows as
// plain values, checking on the way that every row stays inside its buffers;
// and tables made by hand for the readers of the table.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "exif_fixtures.h"

namespace exiftest {

struct Row {
    uint32_t tag;
    std::string name, value, longValue;
    bool operator==(const Row& o) const {
        return tag == o.tag && name == o.name && value == o.value && longValue == o.longValue;
    }
};

struct Reading {
    int result = 0;
    int bigEndian = -1;
    std::vector<Row> rows;
    // The first row with the tag's value, or "<none>".
    std::string Value(uint32_t tag) const {
        for (const Row& r : rows)
            if (r.tag == tag) return r.value;
        return "<none>";
    }
    // The index of the first row named so, or -1.
    int IndexOf(const std::string& name) const {
        for (size_t i = 0; i < rows.size(); ++i)
            if (rows[i].name == name) return static_cast<int>(i);
        return -1;
    }
};

Reading ReadRows(const std::u16string& path);
Reading ReadBytes(const Bytes& bytes);
// A table holding just these rows (tag, value), as the readers would leave them.
std::unique_ptr<exif::TagRecordTable> TableOf(std::initializer_list<std::pair<uint32_t, const char*>> rows);

}  // namespace exiftest
