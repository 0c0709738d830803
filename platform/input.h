// What every binary reader reads from, and the cursor it reads with.
//
// An Input is either a file opened once per export call and read through a
// read-ahead window, or bytes in memory (tests and fuzz targets). It behaves
// as a platform::File opened for reading: seeking past the end succeeds and
// the next read comes back short; a negative position fails. Seeks and reads
// inside the window cost no system call, so a reader that jumps between a
// directory and its values costs little.
//
// A Cursor reads numbers in a byte order from a range [begin, end) of an
// Input. Any read or seek that would leave the range sets a failure flag that
// stays set; the reads that fail give zeroes, so a caller checks ok() once at
// the end of a block (Some alone takes what there is and never fails). Child
// ranges (a directory, a segment, a box) are made from the declared size and
// cut to the parent's range.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/platform.h"

namespace platform {

class Input final : public File {
public:
    // Reads a file through a window of kWindowSize bytes.
    static std::unique_ptr<Input> Open(std::u16string_view path);
    // Reads bytes the caller keeps alive for the Input's life.
    static std::unique_ptr<Input> FromMemory(const uint8_t* data, size_t size);

    // Large enough for a JPEG segment walk and a maker note's directory,
    // small enough to stay well inside one call's heap budget.
    static constexpr size_t kWindowSize = 16 * 1024;
    // What a refill reads when it does not continue the window before it:
    // a walk that skips from segment header to segment header reads little.
    static constexpr size_t kProbeSize = 512;

    bool Seek(int64_t offset, platform::SeekFrom from = platform::SeekFrom::kBegin) override;
    int64_t Tell() override { return position_; }
    int64_t Size() override;
    size_t Read(void* buffer, size_t n) override;
    size_t Write(const void*, size_t) override { return 0; }
    bool Flush() override { return false; }

    // Reads at an absolute position without moving the stream position.
    size_t ReadAt(uint64_t position, void* buffer, size_t n);

private:
    Input() = default;
    bool Fill(uint64_t position, size_t size);

    std::unique_ptr<platform::File> file_;  // null for memory
    std::unique_ptr<uint8_t[]> window_;
    const uint8_t* data_ = nullptr;         // the window's bytes, or the memory
    uint64_t windowStart_ = 0;
    size_t windowLength_ = 0;
    bool windowFull_ = true;                // the window was read at kWindowSize
    int64_t size_ = -1;                     // known once asked for (memory: always)
    int64_t position_ = 0;
};

enum class ByteOrder { kLittle, kBig };
constexpr ByteOrder OrderOf(bool bigEndian) { return bigEndian ? ByteOrder::kBig : ByteOrder::kLittle; }

class Cursor {
public:
    // The whole input, from position 0.
    Cursor(platform::File& input, ByteOrder order);
    // [begin, end) of the input, positioned at begin.
    Cursor(platform::File& input, ByteOrder order, uint64_t begin, uint64_t end);

    ByteOrder order() const { return order_; }
    bool bigEndian() const { return order_ == ByteOrder::kBig; }
    void SetOrder(ByteOrder order) { order_ = order; }
    bool ok() const { return ok_; }
    uint64_t begin() const { return begin_; }
    uint64_t end() const { return end_; }
    uint64_t position() const { return position_; }
    uint64_t remaining() const { return end_ - position_; }

    // Moves to an absolute position inside the range; fails past its end.
    bool Seek(uint64_t position);
    bool Skip(uint64_t n);

    uint8_t U8();
    uint16_t U16();
    uint32_t U32();
    // Exactly n bytes or a failure (the buffer is then zero-filled).
    bool Bytes(void* out, size_t n);
    // Up to n bytes, as many as the range and the input hold, moving past
    // them; returns how many. No failure: a value cut by the end of the
    // input stays partial, and the buffer's other bytes are left as they are.
    size_t Some(void* out, size_t n);

    // [position, position + size) cut to this range, in the same byte order.
    Cursor Child(uint64_t size) const;
    Cursor ChildAt(uint64_t position, uint64_t size) const;
    // The whole input in this byte order: where offsets met in a range point.
    Cursor Whole() const { return Cursor(*input_, order_); }

private:
    platform::File* input_;
    ByteOrder order_;
    uint64_t begin_, end_, position_;
    bool ok_ = true;
};

// Words from bytes in a given order.
uint16_t GetU16(const uint8_t* bytes, bool bigEndian);
uint32_t GetU32(const uint8_t* bytes, bool bigEndian);

}  // namespace platform
