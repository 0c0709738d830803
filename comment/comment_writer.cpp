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

constexpr char16_t kTooLongError[] =
    u"Can't write Comment data!\n\nThe comment is too long for a JPEG segment (more than 65532 bytes).";
constexpr char16_t kPathTooLongError[] = u"Can't open file: %s\n\nThe path is too long.";

const vv::RewriteMessages& Messages() {
    static const vv::RewriteMessages messages = vv::DataWriterMessages(u"Comment");
    return messages;
}

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
        error = Messages().memory;
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
    if (vv::RefusedUnread(fileName, Messages(), errorText)) return 0;
    if (textUtf8.size() > kMaxSegmentText) {
        errorText = kTooLongError;
        return 0;
    }
    try {
        // The rest of the file follows the new segment as it stands, to its
        // last byte: whatever lies behind the image stays too.
        return vv::ReplaceJpegSegment(fileName, oldOffset, oldLength, ComSegment(textUtf8), keepDate, Messages(),
                                      errorText);
    } catch (const std::bad_alloc&) {
        errorText = Messages().memory;
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

int WriteCommentToFile(std::u16string_view fileName, const CommentJob& job, const CommentErrorSink& onError) {
    return WriteOne(fileName, job, 1, false, onError);
}

BatchResult WriteCommentBatch(std::u16string_view fileNames, const CommentJob& job,
                              const CommentErrorSink& onError) {
    BatchResult result;
    int counter = 0;
    for (const std::u16string& path : platform::SplitFileList(fileNames)) {
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
