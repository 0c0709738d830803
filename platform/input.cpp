#include "input.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace platform {

std::unique_ptr<Input> Input::Open(std::u16string_view path) {
    auto file = platform::OpenFile(path, platform::FileMode::kRead);
    if (!file) return nullptr;
    std::unique_ptr<Input> input(new (std::nothrow) Input());
    if (!input) return nullptr;
    input->window_.reset(new (std::nothrow) uint8_t[kWindowSize]);
    if (!input->window_) return nullptr;
    input->file_ = std::move(file);
    input->data_ = input->window_.get();
    return input;
}

std::unique_ptr<Input> Input::FromMemory(const uint8_t* data, size_t size) {
    std::unique_ptr<Input> input(new (std::nothrow) Input());
    if (!input) return nullptr;
    input->data_ = data;
    input->windowLength_ = data ? size : 0;
    input->size_ = static_cast<int64_t>(input->windowLength_);
    return input;
}

int64_t Input::Size() {
    if (size_ < 0 && file_) size_ = file_->Size();
    return size_;
}

bool Input::Seek(int64_t offset, platform::SeekFrom from) {
    int64_t origin = 0;
    if (from == platform::SeekFrom::kCurrent) origin = position_;
    else if (from == platform::SeekFrom::kEnd) origin = Size();
    if (origin < 0) return false;
    // origin + offset < 0, or beyond what an int64_t holds, written without overflow.
    if (offset < 0 ? offset < -origin : offset > INT64_MAX - origin) return false;
    position_ = origin + offset;
    return true;
}

bool Input::Fill(uint64_t position, size_t size) {
    windowStart_ = position;
    windowLength_ = 0;
    windowFull_ = size == kWindowSize;
    if (position > static_cast<uint64_t>(INT64_MAX) || !file_->Seek(static_cast<int64_t>(position))) return false;
    windowLength_ = file_->Read(window_.get(), size);
    return windowLength_ > 0;
}

size_t Input::ReadAt(uint64_t position, void* buffer, size_t n) {
    auto* out = static_cast<uint8_t*>(buffer);
    size_t total = 0;
    while (total < n) {
        const uint64_t at = position + total;
        const bool inWindow = at >= windowStart_ && at - windowStart_ < windowLength_;
        if (!inWindow) {
            // Memory has no more bytes; a file is read directly for a large
            // block, through the window otherwise.
            if (!file_) break;
            if (n - total >= kWindowSize) {
                if (at > static_cast<uint64_t>(INT64_MAX) || !file_->Seek(static_cast<int64_t>(at))) break;
                total += file_->Read(out + total, n - total);
                break;
            }
            // Reading on from where the window ends, or the first read:
            // the whole window; a jump elsewhere: a probe.
            const bool onward = at == windowStart_ + windowLength_;
            if (!Fill(at, onward ? kWindowSize : kProbeSize)) break;
        }
        const size_t offset = static_cast<size_t>(at - windowStart_);
        const size_t take = std::min(n - total, windowLength_ - offset);
        std::memcpy(out + total, data_ + offset, take);
        total += take;
        // A window shorter than asked for ended at the end of the file.
        if (file_ && windowLength_ < (windowFull_ ? kWindowSize : kProbeSize) && total < n) break;
    }
    return total;
}

size_t Input::Read(void* buffer, size_t n) {
    if (n == 0) return 0;
    const size_t got = ReadAt(static_cast<uint64_t>(position_), buffer, n);
    position_ += static_cast<int64_t>(got);
    return got;
}

// ------------------------------------------------------------ cursor

Cursor::Cursor(platform::File& input, ByteOrder order)
    : input_(&input), order_(order), begin_(0), end_(UINT64_MAX), position_(0) {
    const int64_t size = input.Size();
    if (size >= 0) end_ = static_cast<uint64_t>(size);
}

Cursor::Cursor(platform::File& input, ByteOrder order, uint64_t begin, uint64_t end)
    : input_(&input), order_(order), begin_(begin), end_(std::max(begin, end)), position_(begin) {}

bool Cursor::Seek(uint64_t position) {
    if (position < begin_ || position > end_) {
        ok_ = false;
        return false;
    }
    position_ = position;
    return true;
}

bool Cursor::Skip(uint64_t n) {
    if (n > remaining()) {
        ok_ = false;
        position_ = end_;
        return false;
    }
    position_ += n;
    return true;
}

bool Cursor::Bytes(void* out, size_t n) {
    if (n > remaining() || position_ > static_cast<uint64_t>(INT64_MAX) ||
        !input_->Seek(static_cast<int64_t>(position_)) || input_->Read(out, n) != n) {
        std::memset(out, 0, n);
        ok_ = false;
        return false;
    }
    position_ += n;
    return true;
}

size_t Cursor::Some(void* out, size_t n) {
    const auto want = static_cast<size_t>(std::min<uint64_t>(n, remaining()));
    if (want == 0 || position_ > static_cast<uint64_t>(INT64_MAX) || !input_->Seek(static_cast<int64_t>(position_)))
        return 0;
    const size_t got = input_->Read(out, want);
    position_ += got;
    return got;
}

uint8_t Cursor::U8() {
    uint8_t b = 0;
    Bytes(&b, 1);
    return b;
}

uint16_t Cursor::U16() {
    uint8_t b[2];
    Bytes(b, sizeof b);
    return GetU16(b, bigEndian());
}

uint32_t Cursor::U32() {
    uint8_t b[4];
    Bytes(b, sizeof b);
    return GetU32(b, bigEndian());
}

Cursor Cursor::Child(uint64_t size) const { return ChildAt(position_, size); }

Cursor Cursor::ChildAt(uint64_t position, uint64_t size) const {
    Cursor child(*input_, order_, position, position);
    if (position < begin_ || position > end_) {
        child.ok_ = false;
        return child;
    }
    child.end_ = position + std::min(size, end_ - position);
    child.ok_ = ok_;
    return child;
}

uint16_t GetU16(const uint8_t* b, bool bigEndian) {
    return bigEndian ? static_cast<uint16_t>(b[0] << 8 | b[1]) : static_cast<uint16_t>(b[1] << 8 | b[0]);
}

uint32_t GetU32(const uint8_t* b, bool bigEndian) {
    const uint32_t hi = GetU16(bigEndian ? b : b + 2, bigEndian);
    const uint32_t lo = GetU16(bigEndian ? b + 2 : b, bigEndian);
    return hi << 16 | lo;
}

}  // namespace platform
