#include "file_rewrite.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <new>

#include "platform/platform.h"

namespace vv {
namespace {

constexpr size_t kCopyChunk = 64 * 1024;
// Names tried for the new file beside the original before giving up; each
// collision means another file took the name since the last try.
constexpr int kBesideNameTries = 16;

std::function<void()>& Hook() {
    static std::function<void()> hook;
    return hook;
}

bool Matches(platform::File& file, const ExpectedBytes& expected) {
    std::vector<uint8_t> found(expected.bytes.size());
    if (!file.Seek(static_cast<int64_t>(expected.offset))) return false;
    return file.ReadExact(found.data(), found.size()) && found == expected.bytes;
}

// Copies `count` bytes (or, with count < 0, everything up to the end) from
// the source's current position. False on a short read of a fixed count or
// on a short write.
bool CopyBytes(platform::File& from, platform::File& to, int64_t count, std::vector<uint8_t>& chunk,
               uint64_t& written) {
    for (;;) {
        size_t want = chunk.size();
        if (count >= 0) {
            if (count == 0) return true;
            if (static_cast<uint64_t>(count) < want) want = static_cast<size_t>(count);
        }
        const size_t got = from.Read(chunk.data(), want);
        if (got == 0) return count < 0;
        if (!to.WriteAll(chunk.data(), got)) return false;
        written += got;
        if (count >= 0) count -= static_cast<int64_t>(got);
    }
}

RewriteStatus BuildTemp(const FileRewrite& r, platform::File& source, int64_t sourceSize,
                        const std::u16string& tempPath, uint64_t& written) {
    std::vector<uint8_t> chunk;
    try {
        chunk.resize(kCopyChunk);
    } catch (const std::bad_alloc&) {
        return RewriteStatus::kNoMemory;
    }
    auto temp = platform::OpenFile(tempPath, platform::FileMode::kWrite);
    if (!temp) return RewriteStatus::kCantOpenTemp;

    written = 0;
    if (!source.Seek(0) || !CopyBytes(source, *temp, static_cast<int64_t>(r.headLength), chunk, written))
        return RewriteStatus::kSourceChanged;
    if (r.insertLength && !temp->WriteAll(r.insert, r.insertLength)) return RewriteStatus::kTempIncomplete;
    written += r.insertLength;
    const uint64_t available =
        r.tailOffset < static_cast<uint64_t>(sourceSize) ? static_cast<uint64_t>(sourceSize) - r.tailOffset : 0;
    const uint64_t fromSource = r.tailLength < 0 ? available : std::min(available, uint64_t(r.tailLength));
    if (fromSource > 0) {
        const int64_t count = r.tailLength < 0 ? -1 : static_cast<int64_t>(fromSource);
        if (!source.Seek(static_cast<int64_t>(r.tailOffset)) || !CopyBytes(source, *temp, count, chunk, written))
            return RewriteStatus::kTempIncomplete;
    }
    if (r.tailLength > 0 && uint64_t(r.tailLength) > fromSource) {
        std::fill(chunk.begin(), chunk.end(), uint8_t{0});
        for (uint64_t zeros = uint64_t(r.tailLength) - fromSource; zeros > 0;) {
            const size_t n = static_cast<size_t>(std::min<uint64_t>(zeros, chunk.size()));
            if (!temp->WriteAll(chunk.data(), n)) return RewriteStatus::kTempIncomplete;
            written += n;
            zeros -= n;
        }
    }
    if (!temp->Flush()) return RewriteStatus::kTempIncomplete;
    temp.reset();

    // A full disk or a quota can leave the file short without a failed call.
    auto check = platform::OpenFile(tempPath, platform::FileMode::kRead);
    if (!check || check->Size() != static_cast<int64_t>(written)) return RewriteStatus::kTempIncomplete;
    return RewriteStatus::kDone;
}

// The folder part of a path, with its separator ("" for a bare name).
std::u16string_view FolderOf(std::u16string_view path) {
    const size_t cut = path.find_last_of(platform::kPathSeparator == u'\\' ? u"\\/" : u"/");
    return cut == std::u16string_view::npos ? std::u16string_view() : path.substr(0, cut + 1);
}

// Creates a new file under a name that no file in `folder` has.
std::unique_ptr<platform::File> CreateBeside(std::u16string_view folder, std::u16string& path) {
    static uint32_t serial = 0;
    uint32_t seed = static_cast<uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    for (int i = 0; i < kBesideNameTries; ++i) {
        const uint32_t n = (seed ^ (++serial * 0x9E3779B9u));
        path.assign(folder);
        path += kBesidePrefix;
        for (int shift = 28; shift >= 0; shift -= 4) path += u"0123456789abcdef"[(n >> shift) & 0xF];
        path += u".tmp";
        if (auto file = platform::OpenFile(path, platform::FileMode::kCreateNew)) return file;
        if (!platform::FileExists(path)) break;  // not a collision: the folder takes no new file
        seed = seed * 1664525u + 1013904223u;
    }
    path.clear();
    return nullptr;
}

// Copies the complete temporary file (`size` bytes) to a new file beside
// `target`, named in `beside` once created, and has it put on the disk.
RewriteStatus CopyBeside(const std::u16string& tempPath, uint64_t size, std::u16string_view target,
                         std::u16string& beside) {
    std::vector<uint8_t> chunk;
    try {
        chunk.resize(kCopyChunk);
    } catch (const std::bad_alloc&) {
        return RewriteStatus::kNoMemory;
    }
    auto temp = platform::OpenFile(tempPath, platform::FileMode::kRead);
    if (!temp) return RewriteStatus::kCopyFailed;
    auto out = CreateBeside(FolderOf(target), beside);
    if (!out) return RewriteStatus::kCopyFailed;
    uint64_t copied = 0;
    if (!CopyBytes(*temp, *out, -1, chunk, copied) || copied != size || !out->Sync())
        return RewriteStatus::kCopyFailed;
    out.reset();
    auto check = platform::OpenFile(beside, platform::FileMode::kRead);
    if (!check || check->Size() != static_cast<int64_t>(size)) return RewriteStatus::kCopyFailed;
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

}  // namespace

std::u16string RewriteTempPath() {
    std::u16string folder = platform::TempFolder();
    if (folder.empty() || (folder.back() != u'\\' && folder.back() != u'/')) folder += platform::kPathSeparator;
    return folder + kRewriteTempName;
}

void SetRewriteHook(std::function<void()> hook) { Hook() = std::move(hook); }

RewriteStatus RewriteFile(const FileRewrite& r, std::u16string& tempPath) {
    tempPath = RewriteTempPath();
    // Building the temporary file would truncate the very file it reads.
    if (platform::IsSameFile(r.path, tempPath)) return RewriteStatus::kIsTempFile;
    if (platform::IsReadOnly(r.path)) return RewriteStatus::kReadOnly;
    // Taken before reading, so that our own reading does not count as an access.
    Snapshot before;
    before.haveTimes = platform::GetFileTimes(r.path, before.times);

    RewriteStatus status;
    uint64_t written = 0;
    {
        auto source = platform::OpenFile(r.path, platform::FileMode::kRead);
        if (!source) return RewriteStatus::kCantOpenSource;
        before.size = source->Size();
        if (before.size < 0) return RewriteStatus::kCantOpenSource;
        if (r.headLength > static_cast<uint64_t>(before.size)) return RewriteStatus::kSourceChanged;
        for (const ExpectedBytes& e : r.expect)
            if (!Matches(*source, e)) return RewriteStatus::kSourceChanged;
        status = BuildTemp(r, *source, before.size, tempPath, written);
    }  // both files are closed before the original is replaced
    if (status == RewriteStatus::kDone && Hook()) Hook()();

    // The new file goes beside the original (the real file when the path is
    // a link) so that the final step is a rename within one folder.
    const std::u16string target = platform::FullPath(r.path);
    std::u16string beside;
    if (status == RewriteStatus::kDone) status = CopyBeside(tempPath, written, target, beside);
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

std::u16string WithPath(std::u16string_view format, std::u16string_view path) {
    std::u16string text(format);
    const size_t at = text.find(u"%s");
    if (at != std::u16string::npos) text.replace(at, 2, path);
    return text;
}

int ReplaceJpegSegment(std::u16string_view path, uint32_t oldOffset, uint32_t oldLength,
                       const std::vector<uint8_t>& segment, bool keepDate, int64_t tailLength,
                       const RewriteMessages& messages, std::u16string& errorText) {
    if (oldLength > 0xFFFF) {  // no length field holds it: the measurement is stale
        errorText = WithPath(messages.changed, path);
        return 0;
    }
    FileRewrite rewrite;
    rewrite.path = path;
    rewrite.insert = segment.data();
    rewrite.insertLength = segment.size();
    rewrite.keepDate = keepDate;
    rewrite.tailLength = tailLength;
    rewrite.expect.push_back({0, {0xFF, 0xD8}});
    if (oldLength != 0 && segment.size() >= 2) {
        rewrite.headLength = oldOffset;
        rewrite.tailOffset = uint64_t{oldOffset} + 2 + oldLength;
        // The old segment must still be where it was measured, or the head
        // and tail copies would cut the file in the wrong places.
        rewrite.expect.push_back(
            {oldOffset, {0xFF, segment[1], static_cast<uint8_t>(oldLength >> 8), static_cast<uint8_t>(oldLength)}});
    } else {
        rewrite.headLength = 2;
        rewrite.tailOffset = 2;
    }
    std::u16string tempPath;
    switch (RewriteFile(rewrite, tempPath)) {
        case RewriteStatus::kDone: return 1;
        case RewriteStatus::kReadOnly: errorText = WithPath(messages.readOnly, path); break;
        case RewriteStatus::kIsTempFile: errorText = WithPath(messages.isTemp, path); break;
        case RewriteStatus::kCantOpenSource: errorText = WithPath(messages.open, path); break;
        case RewriteStatus::kSourceChanged: errorText = WithPath(messages.changed, path); break;
        case RewriteStatus::kCantOpenTemp: errorText = WithPath(messages.temp, tempPath); break;
        case RewriteStatus::kTempIncomplete: errorText = WithPath(messages.incomplete, tempPath); break;
        case RewriteStatus::kCopyFailed: errorText = messages.copy; break;
        case RewriteStatus::kNoMemory: errorText = messages.memory; break;
    }
    return 0;
}

}  // namespace vv
