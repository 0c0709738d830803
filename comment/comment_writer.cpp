#include "comment_writer.h"

#include <algorithm>
#include <memory>
#include <new>

#include "comment_limits.h"
#include "comment_reader.h"
#include "placeholders.h"
#include "platform/platform.h"
#include "jpeg/file_rewrite.h"
#include "jpeg/marker_walk.h"
#include "platform/input.h"
#include "platform/text.h"

namespace comment {
namespace {

constexpr char16_t kReadOnlyError[] = u"Can't write Comment data!\n\nThe file: '%s' is read only.";
constexpr char16_t kIsTempError[] =
    u"Can't write Comment data!\n\nThe file: '%s' is the plug-in's own temporary file. Rename it or copy it "
    u"to another folder, then write to the copy.";
constexpr char16_t kOpenError[] = u"Can't open file: %s";
constexpr char16_t kTempError[] = u"Can't open file for writing: %s";
constexpr char16_t kCopyError[] = u"Can't write to input file (read only)!";
constexpr char16_t kMemoryError[] = u"Can't allocate memory";
constexpr char16_t kNotJpegError[] = u"Can't write Comment data!\n\nThe file: '%s' is not a JPEG file.";
constexpr char16_t kTooLongError[] =
    u"Can't write Comment data!\n\nThe comment is too long for a JPEG segment (more than 65532 bytes).";
constexpr char16_t kChangedError[] =
    u"Can't write Comment data!\n\nThe file: '%s' has changed since it was read.";
constexpr char16_t kIncompleteError[] =
    u"Can't write Comment data!\n\nThe temporary file: '%s' could not be written in full.";
constexpr char16_t kPathTooLongError[] = u"Can't open file: %s\n\nThe path is too long.";

constexpr vv::RewriteMessages kMessages = {kReadOnlyError, kIsTempError, kOpenError, kChangedError, kTempError,
                                           kIncompleteError, kCopyError,  kMemoryError};

using vv::WithPath;

std::vector<uint8_t> ComSegment(std::string_view text) {
    const size_t length = text.size() + 3;
    std::vector<uint8_t> segment(length + 2, 0);  // the last byte stays the terminating NUL
    segment[0] = 0xFF;
    segment[1] = 0xFE;
    segment[2] = static_cast<uint8_t>(length >> 8);
    segment[3] = static_cast<uint8_t>(length);
    std::copy(text.begin(), text.end(), segment.begin() + 4);
    return segment;
}

// The text of one file as it will be written: placeholders expanded for
// it, then trimmed (unless its old comment is kept in front).
std::u16string PrepareText(std::u16string_view fileName, const CommentJob& job, int counter, bool append) {
    std::u16string text(job.text);
    if (text.find(u'$') != std::u16string::npos) {
        PlaceholderContext context;
        context.filePath = fileName;
        context.settingsPath = job.settingsPath;
        context.counter = counter;
        text = ExpandPlaceholders(text, context, kCommentChars);
    }
    if (append) {
        std::unique_ptr<char[]> old(new (std::nothrow) char[kOldCommentBytes]());
        if (old && ReadJpegComments(fileName, old.get(), kOldCommentBytes))
            text = AppendComment(ConvertCommentText(old.get(), job.settings.conversion), text);
        if (text.size() >= kCommentChars) text.resize(kCommentChars - 1);
    } else if (job.settings.clearSpaces) {
        TrimBlanks(text);
    }
    return text;
}

int WriteOne(std::u16string_view fileName, const CommentJob& job, int counter, bool append,
             const CommentErrorSink& onError) {
    std::u16string error;
    int result = 0;
    try {
        uint32_t oldOffset = 0, oldLength = 0;
        LocateComment(fileName, oldOffset, oldLength);
        const std::string utf8 = CommentToUtf8(PrepareText(fileName, job, counter, append));
        result = WriteJpegComment(fileName, oldOffset, oldLength, utf8, job.settings.keepOrgDate, error);
    } catch (const std::bad_alloc&) {
        error = kMemoryError;
    }
    if (!result && onError) onError(error);
    return result;
}

}  // namespace

void LocateComment(std::u16string_view fileName, uint32_t& oldOffset, uint32_t& oldLength) {
    oldOffset = oldLength = 0;
    if (auto file = platform::Input::Open(fileName)) LocateComment(*file, oldOffset, oldLength);
}

void LocateComment(platform::File& input, uint32_t& oldOffset, uint32_t& oldLength) {
    oldOffset = oldLength = 0;
    // A file that starts with a TIFF byte order has no comment segment.
    uint8_t start[2];
    if (!platform::Cursor(input, platform::ByteOrder::kBig).Bytes(start, 2)) return;
    if ((start[0] == 'I' && start[1] == 'I') || (start[0] == 'M' && start[1] == 'M')) return;
    jpeg::MarkerWalk walk(input, 2, jpeg::WalkRules{3, true});
    jpeg::Segment segment;
    if (!jpeg::FindSegment(walk, jpeg::kComment, segment) ||
        segment.offset > 0xFFFFFFFF)
        return;
    oldOffset = static_cast<uint32_t>(segment.offset);
    oldLength = segment.length;
}

int WriteJpegComment(std::u16string_view fileName, uint32_t oldOffset, uint32_t oldLength,
                     std::string_view textUtf8, bool keepDate, std::u16string& errorText) {
    errorText.clear();
    if (textUtf8.empty() && oldLength == 0) return 1;
    if (platform::IsReadOnly(fileName)) {
        errorText = WithPath(kReadOnlyError, fileName);
        return 0;
    }
    if (textUtf8.size() > kMaxSegmentText) {
        errorText = kTooLongError;
        return 0;
    }
    int64_t size = -1;
    {
        auto file = platform::OpenFile(fileName, platform::FileMode::kRead);
        uint8_t soi[2] = {};
        if (!file || (size = file->Size()) < 0) {
            errorText = WithPath(kOpenError, fileName);
            return 0;
        }
        if (!file->ReadExact(soi, 2) || soi[0] != 0xFF || soi[1] != 0xD8) {
            errorText = WithPath(kNotJpegError, fileName);
            return 0;
        }
    }

    try {
        const std::vector<uint8_t> segment = ComSegment(textUtf8);
        // The tail keeps the writer's long-standing byte count, exact when the
        // comment follows the start marker; where it reaches beyond the end it
        // adds zeros behind the end-of-image marker, which decoders ignore.
        const int64_t tail = oldLength != 0 ? std::max<int64_t>(size - int64_t{oldLength} - 4, 0) : -1;
        return vv::ReplaceJpegSegment(fileName, oldOffset, oldLength, segment, keepDate, tail,
                                      kMessages, errorText);
    } catch (const std::bad_alloc&) {
        errorText = kMemoryError;
    }
    return 0;
}

std::string CommentToUtf8(std::u16string_view text) {
    std::string utf8 = platform::Utf16ToUtf8(text);
    utf8.resize(platform::Utf8CutLength(utf8, kWrittenCommentBytes - 1));  // no character split
    return utf8;
}

std::u16string AppendComment(std::u16string_view oldText, std::u16string_view newText) {
    if (oldText.empty()) return std::u16string(newText);
    if (newText.empty()) return std::u16string(oldText);
    std::u16string joined(oldText);
    joined += u"\r\n";
    joined += newText;
    return joined;
}

std::vector<std::u16string> SplitFileList(std::u16string_view fileNames) {
    std::vector<std::u16string> paths;
    size_t start = 0;
    while (start <= fileNames.size()) {
        size_t bar = fileNames.find(u'|', start);
        if (bar == std::u16string_view::npos) bar = fileNames.size();
        if (bar > start) paths.emplace_back(fileNames.substr(start, bar - start));
        start = bar + 1;
    }
    return paths;
}

int WriteCommentToFile(std::u16string_view fileName, const CommentJob& job, const CommentErrorSink& onError) {
    return WriteOne(fileName, job, 1, false, onError);
}

BatchResult WriteCommentBatch(std::u16string_view fileNames, const CommentJob& job,
                              const CommentErrorSink& onError) {
    BatchResult result;
    int counter = 0;
    for (const std::u16string& path : SplitFileList(fileNames)) {
        ++counter;
        if (path.size() >= kBatchPathChars) {
            ++result.failed;
            if (onError) onError(WithPath(kPathTooLongError, path));
            continue;
        }
        if (WriteOne(path, job, counter, job.settings.append, onError)) ++result.written;
        else ++result.failed;
    }
    return result;
}

}  // namespace comment
