// The maker-note dispatch and every decoder behind it, on an arbitrary file.
//
// Input layout:
//   +0  flags: bit 0 big-endian EXIF block, bit 1 CR3 file
//   +1  rows already in the table (0-255)
//   +2  maker-note offset (0-255; 0 means no note)
//   +3  length n of the Make text (0-255)
//   +4  the Make text (n bytes), then the file itself
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "exif/tag_record.h"
#include "makernotes/makernote_dispatch.h"
#include "platform/platform.h"

namespace {

// A read-only file over the input, with the stream rules of platform::File:
// a seek past the end succeeds and the next read comes back short.
class MemoryFile : public platform::File {
public:
    MemoryFile(const uint8_t* data, size_t size) : data_(data), size_(size) {}
    bool Seek(int64_t offset, platform::SeekFrom from) override {
        const int64_t origin = from == platform::SeekFrom::kBegin     ? 0
                               : from == platform::SeekFrom::kCurrent ? position_
                                                                      : static_cast<int64_t>(size_);
        if (offset < -origin) return false;
        position_ = origin + offset;
        return true;
    }
    int64_t Tell() override { return position_; }
    int64_t Size() override { return static_cast<int64_t>(size_); }
    size_t Read(void* buffer, size_t n) override {
        if (position_ >= static_cast<int64_t>(size_)) return 0;
        const size_t got = std::min(n, size_ - static_cast<size_t>(position_));
        std::memcpy(buffer, data_ + position_, got);
        position_ += static_cast<int64_t>(got);
        return got;
    }
    size_t Write(const void*, size_t) override { return 0; }
    bool Flush() override { return true; }

private:
    const uint8_t* data_;
    size_t size_;
    int64_t position_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 4) return 0;
    const int bigEndian = data[0] & 1;
    const bool cr3 = (data[0] & 2) != 0;
    const uint32_t filler = data[1];
    const uint32_t noteOffset = data[2];
    const size_t makeLength = std::min<size_t>(data[3], size - 4);

    auto table = std::make_unique<exif::TagRecordTable>();
    uint32_t rowCount = 0;
    for (; rowCount < filler; ++rowCount) table->rows[rowCount].tag = 1;
    exif::TagRecord& make = table->rows[rowCount++];
    make.tag = 271;
    std::memcpy(make.value, data + 4, std::min<size_t>(makeLength, 255));

    MemoryFile file(data + 4 + makeLength, size - 4 - makeLength);
    makernotes::DispatchMakerNote(file, 0, *table, &rowCount, bigEndian, noteOffset, cr3);

    // Rows stay inside the table, and every text stays terminated in its field.
    if (rowCount > exif::kTagTableRows) __builtin_trap();
    for (const exif::TagRecord& row : table->rows) {
        if (strnlen(row.name, sizeof row.name) == sizeof row.name) __builtin_trap();
        if (strnlen(row.value, 256) == 256) __builtin_trap();
    }
    exif::FreeTagRecordTable(table.get(), 0);
    return 0;
}
