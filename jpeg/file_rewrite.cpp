#include "file_rewrite.h"

#include <zlib.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <new>
#include <random>

#include "exif_file_pointers.h"
#include "platform/input.h"
#include "platform/platform.h"

namespace vv {
namespace {

constexpr size_t kCopyChunk = 64 * 1024;
// Names tried for a new file (the temporary file, the file beside the
// original) before giving up; each collision means another file has the name.
constexpr int kNameTries = 16;
// Writers place their new segment after the two bytes of the start-of-image marker.
constexpr uint64_t kAfterStartOfImage = 2;

// Where byte `x` of the original lands in the new file; false when the
// pieces leave it out.
bool NewPosition(const std::vector<RewritePiece>& pieces, uint64_t size, uint64_t x, uint64_t& moved) {
    uint64_t at = 0;
    for (const RewritePiece& piece : pieces) {
        if (piece.bytes) {
            at += piece.byteCount;
            continue;
        }
        const uint64_t length = piece.length >= 0 ? uint64_t(piece.length) : size > piece.offset ? size - piece.offset : 0;
        if (x >= piece.offset && x - piece.offset < length) {
            moved = at + (x - piece.offset);
            return true;
        }
        at += length;
    }
    return false;
}

// Values of the EXIF block that count from the start of the file follow the
// bytes they point at: each one whose target moves gets its new place,
// written over its four bytes in the piece that copies them.
void KeepFilePointers(platform::File& original, std::vector<RewritePiece>& pieces,
                      std::vector<std::vector<uint8_t>>& patches) {
    const uint64_t size = static_cast<uint64_t>(std::max<int64_t>(original.Size(), 0));
    const std::vector<jpeg::FilePointer> pointers = jpeg::FindFilePointers(original);
    patches.reserve(pointers.size());  // the pieces point into them
    for (const jpeg::FilePointer& pointer : pointers) {
        uint64_t target = 0, at = 0;
        if (!NewPosition(pieces, size, pointer.target, target) || target == pointer.target || target > UINT32_MAX ||
            !NewPosition(pieces, size, pointer.at, at))
            continue;
        std::vector<uint8_t>& value = patches.emplace_back(4);
        for (int i = 0; i < 4; ++i)
            value[size_t(i)] = static_cast<uint8_t>(target >> (pointer.bigEndian ? 24 - 8 * i : 8 * i));
        for (size_t i = 0; i < pieces.size(); ++i) {
            const RewritePiece piece = pieces[i];
            const uint64_t length = piece.length >= 0 ? uint64_t(piece.length) : size - piece.offset;
            if (piece.bytes || pointer.at < piece.offset || pointer.at - piece.offset >= length) continue;
            if (length - (pointer.at - piece.offset) < 4) break;  // the value spans two pieces: left as it is
            const uint64_t behind = pointer.at + 4;
            std::vector<RewritePiece> split = {
                RewritePiece::Original(piece.offset, int64_t(pointer.at - piece.offset)),
                RewritePiece::New(value.data(), value.size()),
                RewritePiece::Original(behind, piece.length >= 0 ? int64_t(length - (behind - piece.offset)) : -1)};
            pieces.erase(pieces.begin() + long(i));
            pieces.insert(pieces.begin() + long(i), split.begin(), split.end());
            break;
        }
    }
}

std::function<void()>& Hook() {
    static std::function<void()> hook;
    return hook;
}

// What a file holds, as far as the rewrite checks it: its size and a
// checksum of its bytes in order.
struct Content {
    uint64_t size = 0;
    uint32_t crc = static_cast<uint32_t>(crc32(0L, Z_NULL, 0));
    void Add(const uint8_t* bytes, size_t n) {
        size += n;
        while (n > 0) {  // zlib counts in uInt
            const uInt part = static_cast<uInt>(std::min<size_t>(n, 1u << 30));
            crc = static_cast<uint32_t>(crc32(crc, bytes, part));
            bytes += part;
            n -= part;
        }
    }
    bool operator==(const Content& other) const { return size == other.size && crc == other.crc; }
};

// The pieces of eight hexadecimal digits that make new names: different in
// every call, and, from a random start, in every process.
uint32_t NextNameNumber() {
    static const uint32_t start = [] {
        uint32_t seed = static_cast<uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count());
        try {
            seed ^= std::random_device()();
        } catch (...) {  // no random source: the clock alone
        }
        return seed;
    }();
    static std::atomic<uint32_t> serial{0};
    return start + ++serial * 0x9E3779B9u;
}

std::u16string NumberedName(std::u16string_view folder, std::u16string_view prefix, uint32_t n,
                            std::u16string_view suffix) {
    std::u16string path(folder);
    path += prefix;
    for (int shift = 28; shift >= 0; shift -= 4) path += u"0123456789abcdef"[(n >> shift) & 0xF];
    path += suffix;
    return path;
}

// Creates a new file in `folder` under a name no file there has; `path` gets
// the name (the first one tried when none could be made).
std::unique_ptr<platform::File> CreateUnique(std::u16string_view folder, std::u16string_view prefix,
                                             std::u16string_view suffix, std::u16string& path) {
    std::u16string first;
    for (int i = 0; i < kNameTries; ++i) {
        path = NumberedName(folder, prefix, NextNameNumber(), suffix);
        if (first.empty()) first = path;
        if (auto file = platform::OpenFile(path, platform::FileMode::kCreateNew)) return file;
        // Not a collision: the folder takes no new file.
        if (platform::KindOf(path) == platform::PathKind::kMissing) break;
    }
    path = first;
    return nullptr;
}

// Whether the file holds `bytes` at `offset`.
bool Holds(platform::File& file, uint64_t offset, const std::vector<uint8_t>& bytes) {
    std::vector<uint8_t> found(bytes.size());
    return platform::Cursor(file, platform::ByteOrder::kBig).ChildAt(offset, found.size()).Bytes(found.data(), found.size()) &&
           found == bytes;
}

bool Write(platform::File& to, const uint8_t* bytes, size_t n, Content& written) {
    if (!to.WriteAll(bytes, n)) return false;
    written.Add(bytes, n);
    return true;
}

// Copies `count` bytes (or, with count < 0, everything up to the end) from
// the source's current position. False on a short read of a fixed count or
// on a short write.
bool CopyBytes(platform::File& from, platform::File& to, int64_t count, std::vector<uint8_t>& chunk,
               Content& written) {
    for (;;) {
        size_t want = chunk.size();
        if (count >= 0) {
            if (count == 0) return true;
            if (static_cast<uint64_t>(count) < want) want = static_cast<size_t>(count);
        }
        const size_t got = from.Read(chunk.data(), want);
        if (got == 0) return count < 0;
        if (!Write(to, chunk.data(), got, written)) return false;
        if (count >= 0) count -= static_cast<int64_t>(got);
    }
}

// What a file on disk holds now.
bool ReadContent(const std::u16string& path, std::vector<uint8_t>& chunk, Content& content) {
    auto file = platform::OpenFile(path, platform::FileMode::kRead);
    if (!file) return false;
    for (size_t got; (got = file->Read(chunk.data(), chunk.size())) > 0;) content.Add(chunk.data(), got);
    return true;
}

RewriteStatus BuildTemp(const std::vector<RewritePiece>& pieces, platform::File& source, uint64_t sourceSize,
                        std::vector<uint8_t>& chunk, std::u16string& tempPath, Content& meant) {
    auto temp = CreateUnique(RewriteTempFolder(), kRewriteTempPrefix, u".jpg", tempPath);
    if (!temp) return RewriteStatus::kCantOpenTemp;
    for (const RewritePiece& piece : pieces) {
        if (piece.bytes) {
            if (!Write(*temp, piece.bytes, piece.byteCount, meant)) return RewriteStatus::kTempIncomplete;
            continue;
        }
        if (piece.length < 0 && piece.offset >= sourceSize) continue;  // nothing left to the end
        if (piece.length >= 0 && (piece.offset > sourceSize || uint64_t(piece.length) > sourceSize - piece.offset))
            return RewriteStatus::kSourceChanged;
        if (!source.Seek(static_cast<int64_t>(piece.offset))) return RewriteStatus::kSourceChanged;
        const uint64_t before = meant.size;
        if (!CopyBytes(source, *temp, piece.length, chunk, meant)) {
            // A short read of a range that was there: the original shrank.
            const bool wroteAll = meant.size - before == uint64_t(std::max<int64_t>(piece.length, 0));
            return wroteAll ? RewriteStatus::kTempIncomplete : RewriteStatus::kSourceChanged;
        }
    }
    if (!temp->Flush()) return RewriteStatus::kTempIncomplete;
    return RewriteStatus::kDone;
}

// The folder part of a path, with its separator ("" for a bare name).
std::u16string_view FolderOf(std::u16string_view path) {
    const size_t cut = path.find_last_of(platform::kPathSeparator == u'\\' ? u"\\/" : u"/");
    return cut == std::u16string_view::npos ? std::u16string_view() : path.substr(0, cut + 1);
}

// Copies the temporary file to a new file beside `target`, named in `beside`
// once created, and has it put on the disk. The temporary file must hold
// what was meant (else kTempIncomplete), and so must the copy once it is on
// the disk (else kCopyFailed).
RewriteStatus CopyBeside(const std::u16string& tempPath, const Content& meant, std::u16string_view target,
                         std::vector<uint8_t>& chunk, std::u16string& beside) {
    auto temp = platform::OpenFile(tempPath, platform::FileMode::kRead);
    if (!temp) return RewriteStatus::kTempIncomplete;
    auto out = CreateUnique(FolderOf(target), kBesidePrefix, u".tmp", beside);
    if (!out) {
        beside.clear();
        return RewriteStatus::kCopyFailed;
    }
    Content copied;
    const bool complete = CopyBytes(*temp, *out, -1, chunk, copied);
    temp.reset();
    // A full disk or a quota can leave a file short without a failed call;
    // another program can have written into it.
    if (!(copied == meant)) return complete ? RewriteStatus::kTempIncomplete : RewriteStatus::kCopyFailed;
    if (!out->Sync()) return RewriteStatus::kCopyFailed;
    out.reset();
    Content onDisk;
    if (!ReadContent(beside, chunk, onDisk) || !(onDisk == meant)) return RewriteStatus::kCopyFailed;
    return RewriteStatus::kDone;
}

// What the original looked like when the rewrite read it: another program
// writing it meanwhile changes its size or its last-write time.
struct Snapshot {
    int64_t size = -1;
    bool haveTimes = false;
    platform::FileTimes times;
};

bool Unchanged(std::u16string_view path, const Snapshot& before) {
    auto file = platform::OpenFile(path, platform::FileMode::kRead);
    if (!file || file->Size() != before.size) return false;
    platform::FileTimes now;
    return !before.haveTimes || (platform::GetFileTimes(path, now) && now.lastWrite == before.times.lastWrite);
}

RewriteStatus Rewrite(const FileRewrite& r, std::u16string& tempPath, std::vector<uint8_t>& chunk) {
    tempPath = RewriteTempFolder() + kRewriteTempPrefix + u"00000000.jpg";  // named until one is made
    switch (platform::KindOf(r.path)) {
        case platform::PathKind::kOther: return RewriteStatus::kNotAFile;
        case platform::PathKind::kMissing: return RewriteStatus::kCantOpenSource;
        case platform::PathKind::kRegularFile: break;
    }
    if (platform::IsReadOnly(r.path)) return RewriteStatus::kReadOnly;
    // Taken before reading, so that our own reading does not count as an access.
    Snapshot before;
    before.haveTimes = platform::GetFileTimes(r.path, before.times);

    RewriteStatus status;
    Content meant;
    {
        auto source = platform::Input::Open(r.path);
        if (!source) return RewriteStatus::kCantOpenSource;
        before.size = source->Size();
        if (before.size < 0) return RewriteStatus::kCantOpenSource;
        if (before.size == 0) return RewriteStatus::kEmpty;
        if (!Holds(*source, 0, r.signature)) return RewriteStatus::kWrongType;
        std::vector<RewritePiece> pieces;
        if (!r.plan || !r.plan(*source, pieces)) return RewriteStatus::kSourceChanged;
        status = BuildTemp(pieces, *source, static_cast<uint64_t>(before.size), chunk, tempPath, meant);
    }  // both files are closed before the original is replaced
    if (status == RewriteStatus::kDone && Hook()) Hook()();

    // The new file goes beside the original (the real file when the path is
    // a link) so that the final step is a rename within one folder.
    const std::u16string target = platform::FullPath(r.path);
    std::u16string beside;
    if (status == RewriteStatus::kDone) status = CopyBeside(tempPath, meant, target, chunk, beside);
    if (status == RewriteStatus::kDone && !Unchanged(r.path, before)) status = RewriteStatus::kSourceChanged;
    if (status == RewriteStatus::kDone && !platform::MoveFileOver(beside, target))
        status = RewriteStatus::kCopyFailed;
    if (status != RewriteStatus::kDone) {
        if (!beside.empty()) platform::RemoveFile(beside);
        if (status != RewriteStatus::kCantOpenTemp) platform::RemoveFile(tempPath);
        return status;
    }
    if (r.keepDate && before.haveTimes) platform::SetFileTimes(target, before.times);
    platform::RemoveFile(tempPath);
    return RewriteStatus::kDone;
}

}  // namespace

std::u16string RewriteTempFolder() {
    std::u16string folder = platform::TempFolder();
    if (folder.empty() || (folder.back() != u'\\' && folder.back() != u'/')) folder += platform::kPathSeparator;
    return folder;
}

void SetRewriteHook(std::function<void()> hook) { Hook() = std::move(hook); }

RewriteStatus RewriteFile(const FileRewrite& r, std::u16string& tempPath) {
    std::vector<uint8_t> chunk;
    try {
        chunk.resize(kCopyChunk);
    } catch (const std::bad_alloc&) {
        return RewriteStatus::kNoMemory;
    }
    return Rewrite(r, tempPath, chunk);
}

std::u16string WithPath(std::u16string_view format, std::u16string_view path) {
    std::u16string text(format);
    const size_t at = text.find(u"%s");
    if (at != std::u16string::npos) text.replace(at, 2, path);
    return text;
}

RewriteMessages WriterMessages(std::u16string_view head, std::u16string_view theFile, std::u16string_view prefix) {
    const std::u16string file = std::u16string(head) + std::u16string(theFile);
    const std::u16string shared(prefix);
    RewriteMessages m;
    m.notAFile = file + u" is not a file but a folder, a device or a pipe.";
    m.readOnly = file + u" is read only.";
    m.open = shared + u"Can't open file: %s";
    m.empty = file + u" is empty.";
    m.notJpeg = file + u" is not a JPEG file.";
    m.changed = file + u" has changed since it was read.";
    m.temp = shared + u"Can't open file for writing: %s";
    m.incomplete = std::u16string(head) + u"The temporary file: '%s' could not be written in full.";
    m.copy = shared + u"Can't write to input file (read only)!";
    m.memory = shared + u"Can't allocate memory";
    return m;
}

RewriteMessages DataWriterMessages(std::u16string_view data) {
    return WriterMessages(u"Can't write " + std::u16string(data) + u" data!\n\n", u"The file: '%s'", u"");
}

bool RefusedUnread(std::u16string_view path, const RewriteMessages& messages, std::u16string& errorText) {
    if (platform::KindOf(path) == platform::PathKind::kOther) errorText = WithPath(messages.notAFile, path);
    else if (platform::IsReadOnly(path)) errorText = WithPath(messages.readOnly, path);
    else return false;
    return true;
}

int ReplaceJpegSegments(std::u16string_view path, const SegmentPlan& plan, bool keepDate,
                        const RewriteMessages& messages, std::u16string& errorText) {
    FileRewrite rewrite;
    rewrite.path = path;
    rewrite.keepDate = keepDate;
    rewrite.signature = {0xFF, 0xD8};
    std::vector<std::vector<uint8_t>> patches;
    std::vector<uint8_t> segment;
    rewrite.plan = [&](platform::File& original, std::vector<RewritePiece>& pieces) {
        std::vector<jpeg::Segment> remove;
        uint64_t insertAt = kAfterStartOfImage;
        if (!plan(original, segment, remove, insertAt)) return false;
        uint64_t copied = 0;  // the original up to here is in the pieces
        bool inserted = false;
        auto keepUpTo = [&](uint64_t end) {
            if (end > copied) pieces.push_back(RewritePiece::Original(copied, static_cast<int64_t>(end - copied)));
            copied = std::max(copied, end);
        };
        auto insert = [&] {
            keepUpTo(insertAt);
            pieces.push_back(RewritePiece::New(segment.data(), segment.size()));
            inserted = true;
        };
        if (insertAt < kAfterStartOfImage) return false;
        for (const jpeg::Segment& old : remove) {
            // Out of order, overlapping or moved: the copies around the old
            // segments would cut the file in the wrong places.
            if (old.offset < std::max(copied, kAfterStartOfImage) ||
                !Holds(original, old.offset,
                       {0xFF, old.marker, static_cast<uint8_t>(old.length >> 8), static_cast<uint8_t>(old.length)}))
                return false;
            if (!inserted && insertAt <= old.offset) insert();
            keepUpTo(old.offset);
            copied = old.end();
        }
        if (!inserted) insert();
        pieces.push_back(RewritePiece::Original(copied, -1));
        KeepFilePointers(original, pieces, patches);
        return true;
    };

    std::u16string tempPath;
    switch (RewriteFile(rewrite, tempPath)) {
        case RewriteStatus::kDone: return 1;
        case RewriteStatus::kNotAFile: errorText = WithPath(messages.notAFile, path); break;
        case RewriteStatus::kReadOnly: errorText = WithPath(messages.readOnly, path); break;
        case RewriteStatus::kCantOpenSource: errorText = WithPath(messages.open, path); break;
        case RewriteStatus::kEmpty: errorText = WithPath(messages.empty, path); break;
        case RewriteStatus::kWrongType: errorText = WithPath(messages.notJpeg, path); break;
        case RewriteStatus::kSourceChanged: errorText = WithPath(messages.changed, path); break;
        case RewriteStatus::kCantOpenTemp: errorText = WithPath(messages.temp, tempPath); break;
        case RewriteStatus::kTempIncomplete: errorText = WithPath(messages.incomplete, tempPath); break;
        case RewriteStatus::kCopyFailed: errorText = messages.copy; break;
        case RewriteStatus::kNoMemory: errorText = messages.memory; break;
    }
    return 0;
}

int ReplaceJpegSegment(std::u16string_view path, uint32_t oldOffset, uint32_t oldLength,
                       const std::vector<uint8_t>& segment, bool keepDate, const RewriteMessages& messages,
                       std::u16string& errorText) {
    if (oldLength > 0xFFFF) {  // no length field holds it: the measurement is stale
        errorText = WithPath(messages.changed, path);
        return 0;
    }
    const SegmentPlan plan = [&](platform::File&, std::vector<uint8_t>& planned, std::vector<jpeg::Segment>& remove,
                                 uint64_t& insertAt) {
        planned = segment;
        if (oldLength == 0) return true;  // right after the start-of-image marker
        jpeg::Segment old;
        old.marker = segment.size() >= 2 ? segment[1] : 0;
        old.offset = oldOffset;
        old.length = static_cast<uint16_t>(oldLength);
        remove.push_back(old);
        insertAt = oldOffset;
        return true;
    };
    return ReplaceJpegSegments(path, plan, keepDate, messages, errorText);
}

}  // namespace vv
