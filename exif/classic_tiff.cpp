#include "classic_tiff.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <vector>

#include "container.h"
#include "container_limits.h"
#include "container_walk.h"
#include "jpeg/png_chunks.h"
#include "platform/input.h"
#include "tiff/entry.h"

namespace exif {
namespace {

// ------------------------------------------------------------ the view

// A file's bytes with other bytes laid over them and, beyond its end, more
// bytes; what neither covers reads as zero. Reads like a file opened for
// reading.
class LaidOverFile final : public platform::File {
public:
    LaidOverFile(platform::File* base, uint64_t baseSize) : base_(base), size_(base ? baseSize : 0), baseSize_(size_) {}

    void Lay(uint64_t at, std::vector<uint8_t> bytes) {
        size_ = std::max(size_, at + bytes.size());
        layers_.push_back({at, std::move(bytes)});
    }

    bool Seek(int64_t offset, platform::SeekFrom from) override {
        const int64_t origin = from == platform::SeekFrom::kCurrent ? position_
                               : from == platform::SeekFrom::kEnd   ? static_cast<int64_t>(size_)
                                                                    : 0;
        if (offset < 0 ? offset < -origin : offset > INT64_MAX - origin) return false;
        position_ = origin + offset;
        return true;
    }
    int64_t Tell() override { return position_; }
    int64_t Size() override { return static_cast<int64_t>(size_); }
    size_t Read(void* buffer, size_t n) override {
        const uint64_t at = static_cast<uint64_t>(position_);
        if (at >= size_ || n == 0) return 0;
        const size_t want = static_cast<size_t>(std::min<uint64_t>(n, size_ - at));
        auto* out = static_cast<uint8_t*>(buffer);
        std::memset(out, 0, want);
        if (base_ && at < baseSize_ && base_->Seek(static_cast<int64_t>(at)))
            base_->Read(out, static_cast<size_t>(std::min<uint64_t>(want, baseSize_ - at)));
        for (const Layer& layer : layers_) {
            const uint64_t from = std::max(at, layer.at), to = std::min(at + want, layer.at + layer.bytes.size());
            if (from < to)
                std::memcpy(out + (from - at), layer.bytes.data() + (from - layer.at), static_cast<size_t>(to - from));
        }
        position_ += static_cast<int64_t>(want);
        return want;
    }
    size_t Write(const void*, size_t) override { return 0; }
    bool Flush() override { return false; }

private:
    struct Layer {
        uint64_t at;
        std::vector<uint8_t> bytes;
    };
    platform::File* base_;
    uint64_t size_, baseSize_;
    std::vector<Layer> layers_;
    int64_t position_ = 0;
};

// ------------------------------------------------------------ BigTIFF

// The BigTIFF header:
//   0  2  "II" or "MM"      2  2  43
//   4  2  offset size (8)   6  2  0
//   8  8  offset of the first directory
// A directory: an 8-byte entry count, 20-byte entries, the 8-byte offset of
// the next directory. An entry: tag (2), type (2), count (8), then the value
// when it fits in 8 bytes, else its offset (8).
constexpr uint32_t kBigHeaderSize = 16;
constexpr uint32_t kBigEntrySize = 20;
constexpr uint16_t kLong8 = 16, kSLong8 = 17, kIfd8 = 18;
constexpr uint16_t kExifIfdTag = 34665, kGpsIfdTag = 34853;
// Directories rendered: the first, the next, and the Exif and GPS
// directories, which the Exif directory may point to in turn.
constexpr size_t kMaxRenderedDirectories = 8;
constexpr int kMaxPointerDepth = 2;
// LONG8 entries rendered as arrays of LONGs.
constexpr uint32_t kMaxRenderedArrays = 64;
// Room kept below 4 GiB for the rendered directories of a file that reaches
// that far: what they and their arrays can take at most.
constexpr uint64_t kRenderedRoom = kMaxRenderedDirectories * (2 + uint64_t{kMaxBigTiffEntries} * tiff::kEntrySize + 4) +
                                   uint64_t{kMaxRenderedArrays} * kMaxBigTiffLongs * 4;
constexpr uint64_t kClassicLimit = uint64_t{1} << 32;

class BigTiffRendering {
public:
    BigTiffRendering(const platform::Cursor& file, uint64_t blockStart) : file_(file), blockStart_(blockStart) {}

    // The rendered directory of the BigTIFF directory at `offset`, and those
    // it leads to; its offset in the rendering, or 0.
    uint32_t Directory(uint64_t offset, bool followNext, int depth) {
        if (const auto done = rendered_.find(offset); done != rendered_.end()) return done->second;
        if (offset == 0 || rendered_.size() >= kMaxRenderedDirectories) return 0;
        platform::Cursor in = walk::At(file_, offset);
        const uint64_t count = Read64(in);
        if (!in.ok()) return 0;
        const uint32_t n = static_cast<uint32_t>(std::min<uint64_t>(count, kMaxBigTiffEntries));
        const size_t at = block_.size();
        const uint32_t result = Offset(at);
        rendered_[offset] = result;
        block_.resize(at + 2 + size_t{n} * tiff::kEntrySize + 4, 0);
        uint32_t kept = 0;
        std::vector<std::pair<size_t, uint64_t>> pointers;  // value field in the block, directory
        for (uint32_t i = 0; i < n; ++i) {
            const uint64_t entryAt = in.position();
            uint8_t raw[kBigEntrySize];
            if (!in.Bytes(raw, sizeof raw)) break;
            const size_t out = at + 2 + size_t{kept} * tiff::kEntrySize;
            uint64_t pointer = 0;
            if (Entry(raw, entryAt, out, pointer)) {
                if (pointer) pointers.push_back({out + 8, pointer});
                ++kept;
            }
        }
        Put16(at, static_cast<uint16_t>(kept));
        // A directory cut short, by the file or by the limit, has no
        // next-directory offset.
        if (followNext && in.ok() && count <= kMaxBigTiffEntries) {
            const uint64_t next = Read64(in);
            if (in.ok()) Put32(at + 2 + size_t{kept} * tiff::kEntrySize, Directory(next, false, depth));
        }
        for (const auto& [field, target] : pointers)
            Put32(field, depth < kMaxPointerDepth ? Directory(target, false, depth + 1) : 0);
        return result;
    }

    std::vector<uint8_t>& block() { return block_; }

    uint64_t Read64(platform::Cursor& in) const {
        uint8_t b[8];
        in.Bytes(b, sizeof b);
        return Get(b, 8);
    }

private:
    bool big() const { return file_.bigEndian(); }
    uint32_t Offset(size_t inBlock) const { return static_cast<uint32_t>(blockStart_ + inBlock); }
    void Put16(size_t at, uint16_t v) {
        block_[at] = static_cast<uint8_t>(big() ? v >> 8 : v);
        block_[at + 1] = static_cast<uint8_t>(big() ? v : v >> 8);
    }
    void Put32(size_t at, uint32_t v) {
        for (int i = 0; i < 4; ++i) block_[at + i] = static_cast<uint8_t>(v >> (big() ? 24 - 8 * i : 8 * i));
    }
    uint64_t Get(const uint8_t* b, unsigned n) const {
        uint64_t v = 0;
        for (unsigned i = 0; i < n; ++i) v |= uint64_t{b[i]} << (big() ? 8 * (n - 1 - i) : 8 * i);
        return v;
    }

    // One 20-byte entry at file offset entryAt, rendered into the 12 bytes at
    // `out`; false when it cannot be. `pointer` receives the directory an
    // Exif or GPS entry points to.
    bool Entry(const uint8_t* raw, uint64_t entryAt, size_t out, uint64_t& pointer) {
        const uint16_t tag = static_cast<uint16_t>(Get(raw, 2));
        uint16_t type = static_cast<uint16_t>(Get(raw + 2, 2));
        const uint64_t count = Get(raw + 4, 8);
        const uint8_t* field = raw + 12;
        if (count > UINT32_MAX) return false;
        std::memcpy(&block_[out], raw, 4);  // tag and type, in file order
        Put32(out + 4, static_cast<uint32_t>(count));
        const bool wide = type == kLong8 || type == kSLong8 || type == kIfd8;
        if ((tag == kExifIfdTag || tag == kGpsIfdTag) && count == 1 &&
            (wide || type == tiff::kLong || type == tiff::kIfd)) {
            pointer = wide ? Get(field, 8) : Get(field, 4);
            Put16(out + 2, tiff::kLong);
            return pointer != 0;
        }
        if (wide) {
            type = type == kSLong8 ? tiff::kSLong : tiff::kLong;
            Put16(out + 2, type);
            return Longs(type == tiff::kSLong, static_cast<uint32_t>(count), field, out + 8);
        }
        const uint64_t bytes = count * tiff::TypeSize(type);
        if (bytes <= tiff::kValueFieldSize || tiff::TypeSize(type) == 0) {
            std::memcpy(&block_[out + 8], field, tiff::kValueFieldSize);
        } else {
            const uint64_t at = bytes <= 8 ? entryAt + 12 : Get(field, 8);
            if (at >= kClassicLimit) return false;
            Put32(out + 8, static_cast<uint32_t>(at));
        }
        return true;
    }

    // LONG8 values as LONGs (SLONG8 as SLONGs): in the entry when there is
    // one, else as an array in the block. False when one does not fit.
    bool Longs(bool isSigned, uint32_t count, const uint8_t* field, size_t valueField) {
        if (count > kMaxBigTiffLongs || (count > 1 && arrays_ >= kMaxRenderedArrays)) return false;
        std::vector<uint8_t> values(size_t{count} * 8);
        if (count == 1) std::memcpy(values.data(), field, 8);
        else if (count > 1 && !file_.ChildAt(Get(field, 8), values.size()).Bytes(values.data(), values.size()))
            return false;
        std::vector<uint32_t> narrow;
        for (uint32_t i = 0; i < count; ++i) {
            const uint64_t v = Get(values.data() + 8 * size_t{i}, 8);
            const bool fits = isSigned ? static_cast<int64_t>(v) >= INT32_MIN && static_cast<int64_t>(v) <= INT32_MAX
                                       : v <= UINT32_MAX;
            if (!fits) return false;
            narrow.push_back(static_cast<uint32_t>(v));
        }
        if (count <= 1) {
            Put32(valueField, count ? narrow[0] : 0);
            return true;
        }
        ++arrays_;
        const size_t at = block_.size();
        block_.resize(at + narrow.size() * 4);
        for (size_t i = 0; i < narrow.size(); ++i) Put32(at + 4 * i, narrow[i]);
        Put32(valueField, Offset(at));
        return true;
    }

    const platform::Cursor file_;
    const uint64_t blockStart_;
    std::vector<uint8_t> block_;
    std::map<uint64_t, uint32_t> rendered_;
    uint32_t arrays_ = 0;
};

std::unique_ptr<platform::File> RenderBigTiff(platform::File& input, const platform::Cursor& file,
                                              const uint8_t* head) {
    const bool big = head[0] == 'M';
    // The directories go behind the end of the file, or, for a file that
    // reaches 4 GiB, into the room kept below that.
    const uint64_t blockStart = std::min((file.end() + 3) & ~uint64_t{3}, kClassicLimit - kRenderedRoom);
    platform::Cursor ordered = file;
    ordered.SetOrder(platform::OrderOf(big));
    BigTiffRendering rendering(ordered, blockStart);
    platform::Cursor ifd0 = walk::At(ordered, 8);
    const uint32_t first = rendering.Directory(rendering.Read64(ifd0), true, 0);
    if (first == 0) return nullptr;
    std::vector<uint8_t> header = {head[0], head[1], 0, 0, 0, 0, 0, 0};
    header[big ? 3 : 2] = 0x2A;
    for (int i = 0; i < 4; ++i) header[4 + i] = static_cast<uint8_t>(first >> (big ? 24 - 8 * i : 8 * i));
    auto view = std::make_unique<LaidOverFile>(&input, file.end());
    view->Lay(0, std::move(header));
    view->Lay(blockStart, std::move(rendering.block()));
    return view;
}

bool IsBigTiff(const uint8_t* head) {
    static const uint8_t kLittle[8] = {'I', 'I', 43, 0, 8, 0, 0, 0}, kBig[8] = {'M', 'M', 0, 43, 0, 8, 0, 0};
    return std::memcmp(head, kLittle, 8) == 0 || std::memcmp(head, kBig, 8) == 0;
}

// ------------------------------------------------------------ PNG raw profiles

std::unique_ptr<platform::File> RenderPngProfile(platform::File& input) {
    if (LocatePngExif(input) != 0) return nullptr;
    std::vector<uint8_t> text;
    uint64_t at = 0;
    // An "APP1" profile may hold an XMP segment instead: "exif" is looked for first.
    if (!jpeg::FindPngText(input, {"Raw profile type exif"}, text, at) &&
        !jpeg::FindPngText(input, {"Raw profile type APP1"}, text, at))
        return nullptr;
    std::vector<uint8_t> profile = jpeg::DecodeRawProfile(text);
    static const uint8_t kPrefix[6] = {'E', 'x', 'i', 'f', 0, 0};
    size_t skip = profile.size() >= 8 && std::memcmp(profile.data(), kPrefix, sizeof kPrefix) == 0 ? 6 : 0;
    if (profile.size() < skip + 8 || !walk::IsByteOrderMark(profile.data() + skip)) return nullptr;
    profile.erase(profile.begin(), profile.begin() + static_cast<long>(skip));
    auto view = std::make_unique<LaidOverFile>(nullptr, 0);
    view->Lay(0, std::move(profile));
    return view;
}

}  // namespace

std::unique_ptr<platform::File> OpenClassicTiff(platform::File& input) {
    const platform::Cursor file = walk::WholeInput(input);
    uint8_t head[kBigHeaderSize] = {};
    const size_t n = walk::At(file, 0).Some(head, sizeof head);
    if (n == sizeof head && IsBigTiff(head)) return RenderBigTiff(input, file, head);
    if (n >= 8 && std::memcmp(head + 1, "PNG", 3) == 0) return RenderPngProfile(input);
    return nullptr;
}

}  // namespace exif
