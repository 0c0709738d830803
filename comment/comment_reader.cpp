#include "comment_reader.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "comment_limits.h"
#include "comment_settings.h"
#include "jpeg/marker_walk.h"
#include "platform/platform.h"
#include "platform/input.h"
#include "jpeg/png_chunks.h"

namespace comment {
namespace {

// Appends to a zero-filled text of fixed capacity, always leaving a terminator.
class TextSink {
public:
    TextSink(char* text, size_t capacity) : text_(text), capacity_(capacity) {}
    void Put(const uint8_t* bytes, size_t n) {
        const size_t room = capacity_ > used_ + 1 ? capacity_ - used_ - 1 : 0;
        n = std::min(n, room);
        std::memcpy(text_ + used_, bytes, n);
        used_ += n;
    }
    void Put(const char* text) { Put(reinterpret_cast<const uint8_t*>(text), std::strlen(text)); }

private:
    char* text_;
    size_t capacity_;
    size_t used_ = 0;
};

// One tEXt / iTXt chunk as the walk found it.
struct PngTextChunk {
    int64_t position;  // file offset of the chunk data
    uint32_t length;
};

bool UsablePngChunk(const PngTextChunk& c) {
    return c.position > 4 && c.length >= 1 && c.length <= kPngTextTotalMax;
}

// One line of chunk data: "keyword: text", or the text alone without a keyword.
//
//   tEXt   keyword NUL text
//   iTXt   keyword NUL flag method language NUL translated-keyword NUL text
//
// The NUL run after the keyword is skipped, so an uncompressed iTXt with empty
// language and translated keyword reads like tEXt; a language tag, when
// present, stands where the text would.
void AppendPngLine(const uint8_t* data, size_t n, TextSink& sink) {
    size_t keyword = 0;
    while (keyword < n && data[keyword] != 0) ++keyword;
    if (keyword > 0) {
        sink.Put(data, std::min(keyword, kPngKeywordShown));
        sink.Put(": ");
    }
    size_t start = keyword;
    while (start < n && data[start] == 0) ++start;
    size_t end = start;
    while (end < n && data[end] != 0) ++end;
    sink.Put(data + start, end - start);
}

}  // namespace

void AppendWithCrLf(const char* source, char* target, size_t targetCapacity, size_t count) {
    if (!source || !target || count < 2 || targetCapacity < 3) return;
    size_t length = strnlen(target, targetCapacity);
    if (length == targetCapacity) return;
    const size_t limit = targetCapacity - 2;
    bool afterCr = false;
    for (size_t i = 0; i < count && length < limit; ++i) {
        const char c = source[i];
        if (c == '\r') {
            target[length++] = '\r';
            target[length++] = '\n';
        } else if (c == '\n') {
            if (!afterCr) {
                target[length++] = '\r';
                target[length++] = '\n';
            }
        } else if (c != '\0') {
            target[length++] = c;
        }
        afterCr = c == '\r';
    }
    target[length] = '\0';
}

int ReadJpegComments(std::u16string_view fileName, char* out, size_t capacity) {
    if (out && capacity > 0) std::memset(out, 0, capacity);
    auto file = platform::Input::Open(fileName);
    return file ? ReadJpegComments(*file, out, capacity) : 0;
}

int ReadJpegComments(platform::File& input, char* out, size_t capacity) {
    if (out && capacity > 0) std::memset(out, 0, capacity);
    if (!out || capacity == 0) return 1;

    // An empty comment segment is read like any other.
    jpeg::MarkerWalk walk(input, 2, jpeg::WalkRules{2, true});
    const platform::Cursor whole(input, platform::ByteOrder::kBig);
    jpeg::Segment segment;
    int comments = 0;
    while (walk.Next(segment)) {
        if (segment.marker != jpeg::kComment) continue;
        if (comments > 0) AppendWithCrLf("\r\n", out, capacity, 2);
        ++comments;
        // The two spare bytes stay zero and add nothing to the text.
        std::unique_ptr<char[]> data(new (std::nothrow) char[segment.length]());
        if (!data) {
            walk.ResumeAt(segment.payload());  // read on from the segment's data
            continue;
        }
        whole.ChildAt(segment.payload(), segment.length - 2u).Some(data.get(), segment.length - 2u);
        AppendWithCrLf(data.get(), out, capacity, segment.length);
    }
    return 1;
}

unsigned ClassifyTextEncoding(const char* text, size_t length) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(text);
    size_t ascii = 0, invalid = 0, sequences = 0;
    auto continuation = [&](size_t at) { return (bytes[at] & 0xC0) == 0x80; };
    size_t i = 0;
    while (bytes && i < length) {
        const uint8_t b = bytes[i];
        size_t size = 0;
        if ((b & 0xE0) == 0xC0) size = 2;
        else if ((b & 0xF0) == 0xE0) size = 3;
        else if ((b & 0xF8) == 0xF0) size = 4;
        bool sequence = size > 0 && size <= length - i;
        for (size_t k = 1; sequence && k < size; ++k) sequence = continuation(i + k);
        if (sequence) {
            ++sequences;
            i += size;
            continue;
        }
        (b < 0x80 ? ascii : invalid) += 1;
        ++i;
    }
    const size_t total = ascii + invalid + sequences;
    if (total == 0) return kTextEmpty;
    if (ascii == total) return kTextAscii;
    if (invalid == invalid + sequences) return kTextNotUtf8;
    return kTextUtf8;
}

std::u16string ConvertCommentText(std::string_view bytes, int conversion) {
    const bool utf8 = conversion == kConvertUtf8 ||
                      (conversion != kConvertAnsi &&
                       ClassifyTextEncoding(bytes.data(), bytes.size()) == kTextUtf8);
    return utf8 ? platform::Utf8ToUtf16(bytes) : platform::AnsiToUtf16(bytes);
}

int LoadCommentText(std::u16string_view fileName, char16_t* outWide, size_t capacityChars,
                    std::u16string_view settingsPath) {
    if (!outWide || capacityChars == 0) return 0;
    std::fill(outWide, outWide + capacityChars, u'\0');
    std::unique_ptr<char[]> narrow(new (std::nothrow) char[capacityChars]());
    if (!narrow) return 0;
    if (!ReadJpegComments(fileName, narrow.get(), capacityChars)) return 0;
    const int conversion =
        platform::ReadSettingInt(settingsPath, kSettingsSection, kConversionKey, kConvertAutomatic);
    const std::u16string wide =
        ConvertCommentText(std::string_view(narrow.get(), strnlen(narrow.get(), capacityChars)), conversion);
    std::copy_n(wide.begin(), std::min(wide.size(), capacityChars - 1), outWide);
    return 1;
}

std::unique_ptr<char[]> ReadPngTextChunks(std::u16string_view fileName, size_t* outLength,
                                          int64_t* lastChunkPos, int unused) {
    if (outLength) *outLength = 0;
    if (lastChunkPos) *lastChunkPos = 0;
    auto file = platform::Input::Open(fileName);
    return file ? ReadPngTextChunks(*file, outLength, lastChunkPos, unused) : nullptr;
}

std::unique_ptr<char[]> ReadPngTextChunks(platform::File& input, size_t* outLength, int64_t* lastChunkPos,
                                          int) {
    if (outLength) *outLength = 0;
    if (lastChunkPos) *lastChunkPos = 0;
    jpeg::PngChunkWalk walk(input);
    if (!walk.isPng()) return nullptr;

    // The walk ends at the first empty chunk (IEND at the latest).
    PngTextChunk chunks[kPngTextChunkLimit];
    int count = 0;
    jpeg::PngChunk chunk;
    while (walk.Next(chunk) && chunk.length >= 1) {
        if (chunk.type == jpeg::PngChunkType("tEXt") || chunk.type == jpeg::PngChunkType("iTXt")) {
            if (count == kPngTextChunkLimit) break;
            chunks[count++] = {static_cast<int64_t>(chunk.data), chunk.length};
        }
    }

    uint64_t sum = 0;
    int usable = 0;
    for (int i = 0; i < count; ++i) {
        if (!UsablePngChunk(chunks[i])) continue;
        sum += chunks[i].length + 8;
        ++usable;
    }
    if (sum < 2 || sum > kPngTextTotalMax) return nullptr;

    const size_t capacity = static_cast<size_t>(sum) + kPngTextSlack;
    std::unique_ptr<char[]> text(new (std::nothrow) char[capacity]());
    if (!text) return nullptr;
    if (outLength) *outLength = static_cast<size_t>(sum) + 1;
    if (chunks[0].position < 5) return text;

    std::unique_ptr<uint8_t[]> data(new (std::nothrow) uint8_t[kPngTextTotalMax]);
    if (!data) return text;
    TextSink sink(text.get(), capacity);
    const platform::Cursor whole(input, platform::ByteOrder::kBig);
    int written = 0;
    for (int i = 0; i < count; ++i) {
        if (!UsablePngChunk(chunks[i])) continue;
        if (lastChunkPos) *lastChunkPos = chunks[i].position;
        platform::Cursor chunk = whole.ChildAt(static_cast<uint64_t>(chunks[i].position), chunks[i].length);
        const size_t n = chunk.Some(data.get(), chunks[i].length);
        AppendPngLine(data.get(), n, sink);
        if (usable >= 2 && ++written < usable) sink.Put("\r\n");
    }
    return text;
}

int ReadPngComment(std::u16string_view fileName, char* out, size_t capacity, int unused) {
    if (!out || capacity == 0) return 0;
    std::memset(out, 0, capacity);
    auto file = platform::Input::Open(fileName);
    return file ? ReadPngComment(*file, out, capacity, unused) : 0;
}

int ReadPngComment(platform::File& input, char* out, size_t capacity, int unused) {
    if (!out || capacity == 0) return 0;
    std::memset(out, 0, capacity);
    size_t length = 0;
    std::unique_ptr<char[]> text = ReadPngTextChunks(input, &length, nullptr, unused);
    if (!text) return 0;
    const size_t n = std::min(strnlen(text.get(), length), capacity - 1);
    std::memcpy(out, text.get(), n);
    TrimBlanks(out);
    return static_cast<int>(n);
}

void TrimBlanks(char* text) {
    if (!text) return;
    size_t n = std::strlen(text);
    while (n > 0 && text[n - 1] == ' ') text[--n] = '\0';
    size_t lead = 0;
    while (lead < n && text[lead] == ' ') ++lead;
    if (lead > 0) std::memmove(text, text + lead, n - lead + 1);
}

void TrimBlanks(std::u16string& text) {
    const size_t end = text.find_last_not_of(u' ');
    text.erase(end == std::u16string::npos ? 0 : end + 1);
    text.erase(0, text.find_first_not_of(u' '));
}

}  // namespace comment
