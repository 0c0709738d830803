#include "exif_reading.h"

#include <cstdio>
#include <cstring>

#include "makernotes/makernote_rules.h"

namespace exiftest {

Reading ReadRows(const std::u16string& path) {
    Reading out;
    // The exports' table, whose rows are cleared only as the readers take
    // them: stale bytes here must not reach any row the readers give back.
    exif::TagRecordTable* table = exif::AllocateUnclearedTagRecordTable();
    std::memset(table->rows, 0xA5, sizeof table->rows);
    uint32_t count = 0;
    out.result = exif::ReadExifTags(path, *table, &count, &out.bigEndian, makernotes::StandardMakerNoteRules());
    EXPECT_LE(count, exif::kTagTableRows);
    for (uint32_t i = 0; i < count && i < exif::kTagTableRows; ++i) {
        const exif::TagRecord& r = table->rows[i];
        EXPECT_LT(strnlen(r.name, exif::kTagNameSize), exif::kTagNameSize) << "row " << i;
        EXPECT_LE(strnlen(r.value, exif::kTagValueSize), 255u) << "row " << i;
        EXPECT_TRUE(!r.longValue || i < exif::kDirectoryRowLimit) << "row " << i;
        out.rows.push_back({r.tag, r.name, r.value,
                            r.longValue ? std::string(r.longValue, strnlen(r.longValue, exif::kLongValueSize))
                                        : std::string()});
    }
    exif::FreeTagRecordTable(table, 1);
    return out;
}

Reading ReadBytes(const Bytes& bytes) {
    fixture::TempDir dir;
    return ReadRows(dir.Write("image.jpg", bytes));
}

std::unique_ptr<exif::TagRecordTable> TableOf(std::initializer_list<std::pair<uint32_t, const char*>> rows) {
    auto table = std::make_unique<exif::TagRecordTable>();
    uint32_t i = 0;
    for (const auto& [tag, value] : rows) {
        table->rows[i].tag = tag;
        std::snprintf(table->rows[i++].value, exif::kTagValueSize, "%s", value);
    }
    return table;
}

}  // namespace exiftest
