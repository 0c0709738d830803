#include "tag_record.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace exif {

TagRecordTable* AllocateTagRecordTable() {
    // Value-initialisation zero-fills every row, long-value pointers included.
    return new (std::nothrow) TagRecordTable();
}

TagRecordTable* AllocateUnclearedTagRecordTable() {
    // Default-initialisation leaves the rows as they come: clearing 118 KB
    // would cost more than the reading it serves.
    TagRecordTable* table = new (std::nothrow) TagRecordTable;
    if (table) table->zeroedRows = 0;
    return table;
}

TagRecord& TakeRow(TagRecordTable& table, uint32_t index) {
    if (index >= table.zeroedRows && index < kTagTableRows) {
        std::memset(&table.rows[table.zeroedRows], 0, sizeof(TagRecord) * (index + 1 - table.zeroedRows));
        table.zeroedRows = index + 1;
    }
    return table.rows[index];
}

void FreeTagRecordTable(TagRecordTable* table, int freeBlock) {
    if (!table) return;
    // Long values are only made for rows that passed the directory guard, so
    // they all sit below kDirectoryRowLimit.
    const uint32_t cleared = table->zeroedRows < kDirectoryRowLimit ? table->zeroedRows : kDirectoryRowLimit;
    for (uint32_t i = 0; i < cleared; ++i) {
        std::free(table->rows[i].longValue);
        table->rows[i].longValue = nullptr;
    }
    if (freeBlock) delete table;
}

char* MakeLongValue(TagRecord& row) {
    if (!row.longValue) row.longValue = static_cast<char*>(std::calloc(1, kLongValueSize));
    return row.longValue;
}

const TagRecord* FindTagRecord(const TagRecordTable& table, uint32_t rowCount, uint32_t tag) {
    const uint32_t n = rowCount < kTagTableRows ? rowCount : kTagTableRows;
    for (uint32_t i = 0; i < n; ++i)
        if (table.rows[i].tag == tag) return &table.rows[i];
    return nullptr;
}

bool CopyTagValue(const TagRecordTable& table, uint32_t rowCount, uint32_t tag, char* out, size_t outSize) {
    const TagRecord* row = FindTagRecord(table, rowCount, tag);
    if (!row) return false;
    if (out && outSize > 0) {
        size_t n = strnlen(row->value, kTagValueSize);
        if (n > outSize - 1) n = outSize - 1;
        std::memcpy(out, row->value, n);
        out[n] = '\0';
    }
    return true;
}

}  // namespace exif
