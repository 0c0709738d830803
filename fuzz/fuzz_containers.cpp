// The container locators and their dispatch on arbitrary bytes, held in
// memory behind the file interface. Whatever they are given, a position they
// report lies inside the input.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "exif/container.h"

namespace {

class MemoryFile final : public platform::File {
public:
    MemoryFile(const uint8_t* data, size_t size) : data_(data), size_(static_cast<int64_t>(size)) {}
    bool Seek(int64_t offset, platform::SeekFrom from) override {
        int64_t origin = from == platform::SeekFrom::kBegin ? 0 : from == platform::SeekFrom::kCurrent ? pos_ : size_;
        if (offset < -origin) return false;
        pos_ = origin + offset;
        return true;
    }
    int64_t Tell() override { return pos_; }
    int64_t Size() override { return size_; }
    size_t Read(void* buffer, size_t n) override {
        if (pos_ >= size_) return 0;
        size_t got = static_cast<size_t>(std::min<int64_t>(static_cast<int64_t>(n), size_ - pos_));
        std::memcpy(buffer, data_ + pos_, got);
        pos_ += static_cast<int64_t>(got);
        return got;
    }
    size_t Write(const void*, size_t) override { return 0; }
    bool Flush() override { return true; }

private:
    const uint8_t* data_;
    int64_t size_;
    int64_t pos_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    MemoryFile file(data, size);
    auto inside = [size](uint32_t offset) {
        if (offset != 0 && offset >= size) __builtin_trap();
    };
    uint32_t itemLength = 0;
    inside(exif::LocateHeifExif(file, itemLength));
    exif::Cr3Boxes boxes;
    inside(exif::LocateCr3Exif(file, boxes));
    for (uint32_t cmt : {boxes.cmt1, boxes.cmt2, boxes.cmt3, boxes.cmt4}) inside(cmt);
    inside(exif::LocatePngExif(file));
    inside(exif::LocateWebpExif(file));
    inside(exif::LocateJpegXlExif(file));
    exif::ContainerPointers pointers;
    inside(exif::LocateTiffHeaderInFile(file, pointers));
    for (uint32_t pointer : {pointers.exifIfd, pointers.makerNote, pointers.gpsIfd, pointers.ifd1}) inside(pointer);
    return 0;
}
