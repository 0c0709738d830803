#include "placeholders.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "iptc/iptc_data.h"
#include "iptc/iptc_reader.h"
#include "platform/input.h"
#include "platform/text.h"

namespace placeholder {
namespace {

constexpr uint32_t kTagDateTimeOriginal = 36867;
constexpr uint32_t kTagImageDescription = 270;
constexpr uint32_t kTagUserComment = 37510;
constexpr int64_t kBytesPerKb = 1024;
constexpr int64_t kBytesPerMb = 1024 * 1024;

std::u16string Ascii(const char* text) { return std::u16string(text, text + std::char_traits<char>::length(text)); }

std::u16string FormatDate(const platform::LocalTime& t) {
    char text[48];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", t.year, t.month, t.day);
    return Ascii(text);
}

std::u16string FormatTime(const platform::LocalTime& t) {
    char text[48];
    std::snprintf(text, sizeof text, "%.2d:%.2d:%.2d", t.hour, t.minute, t.second);
    return Ascii(text);
}

std::u16string FormatDateTime(const platform::LocalTime& t) {
    char text[96];
    std::snprintf(text, sizeof text, "%s / %.2d:%.2d:%.2d", platform::Utf16ToUtf8(FormatDate(t)).c_str(), t.hour,
                  t.minute, t.second);
    return Ascii(text);
}

// The position behind the last path separator (either kind: a Windows path
// may use both).
size_t NameStart(std::u16string_view path) {
    const size_t slash = path.find_last_of(u"\\/");
    return slash == std::u16string_view::npos ? 0 : slash + 1;
}

std::u16string_view FileName(std::u16string_view path) { return path.substr(NameStart(path)); }

std::u16string_view NameWithoutExtension(std::u16string_view path) {
    const std::u16string_view name = FileName(path);
    const size_t dot = name.find_last_of(u'.');
    return dot == std::u16string_view::npos || dot == 0 ? name : name.substr(0, dot);
}

std::u16string_view FolderName(std::u16string_view path) {
    const size_t start = NameStart(path);
    if (start == 0) return {};
    return FileName(path.substr(0, start - 1));
}

std::u16string FormatSize(platform::File* file) {
    const int64_t size = file ? file->Size() : -1;
    if (size < 0) return {};
    char text[64];
    if (size < kBytesPerMb)
        std::snprintf(text, sizeof text, "%.2f KB", static_cast<double>(size) / kBytesPerKb);
    else
        std::snprintf(text, sizeof text, "%.2f MB", static_cast<double>(size) / kBytesPerMb);
    return Ascii(text);
}

struct TableDeleter {
    void operator()(exif::TagRecordTable* t) const { exif::FreeTagRecordTable(t, 1); }
};

// Builds the output, keeping it within its limit and never ending it in half
// of a surrogate pair.
class Output {
public:
    explicit Output(size_t capacity) : limit_(capacity > 0 ? capacity - 1 : 0) {}
    void Put(std::u16string_view text) {
        const size_t room = limit_ - out_.size();
        out_.append(text.substr(0, platform::Utf16CutLength(text, room)));
    }
    void Put(char16_t c) { Put(std::u16string_view(&c, 1)); }
    std::u16string Take() { return std::move(out_); }

private:
    size_t limit_;
    std::u16string out_;
};

}  // namespace

// What the placeholders of one file read, each at most once: the file (opened
// at the first placeholder that needs it), its EXIF rows, its IPTC record and
// the clock.
struct PlaceholderSession::Values {
    explicit Values(const PlaceholderContext& c) : context(c) {}

    std::u16string Exif(uint32_t tag) {
        if (!LoadExif()) return {};
        const exif::TagRecord* row = exif::FindTagRecord(*exif, exifRows, tag);
        if (!row) return {};
        const bool useLong = (tag == kTagImageDescription || tag == kTagUserComment) && row->longValue;
        const char* text = useLong ? row->longValue : row->value;
        const size_t size = useLong ? exif::kLongValueSize : exif::kTagValueSize;
        return platform::Utf8ToUtf16(std::string_view(text, strnlen(text, size)));
    }

    std::u16string Iptc(int dataset) {
        if (!iptcLoaded) {
            iptcLoaded = true;
            if (platform::File* file = Input()) {
                iptc.reset(new (std::nothrow) iptc::IptcData);
                if (iptc) {
                    iptc::ClearIptcData(*iptc);
                    iptc::LoadIptcData(*file, *iptc);
                }
            }
        }
        return iptc ? iptc::IptcTagText(*iptc, dataset) : std::u16string();
    }

    // The picture's own date when EXIF has one, else the file's last change.
    std::u16string PictureDate() {
        int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
        const std::string taken = platform::Utf16ToUtf8(Exif(kTagDateTimeOriginal));
        if (std::sscanf(taken.c_str(), "%d:%d:%d %d:%d:%d", &y, &mo, &d, &h, &mi, &s) == 6 && y > 0 && mo > 0 &&
            d > 0) {
            platform::LocalTime t;
            t.year = y, t.month = mo, t.day = d, t.hour = h, t.minute = mi, t.second = s;
            return FormatDateTime(t);
        }
        platform::FileTimes times;
        if (!platform::GetFileTimes(context.filePath, times)) return {};
        return FormatDateTime(platform::FileTimeToLocalTime(times.lastWrite));
    }

    platform::LocalTime Now() {
        if (context.now) return *context.now;
        if (!haveNow) now = platform::GetLocalTime(), haveNow = true;
        return now;
    }

    std::u16string Size() { return FormatSize(Input()); }

    bool LoadExif() {
        if (!exifLoaded) {
            exifLoaded = true;
            if (platform::File* file = Input()) {
                exif.reset(exif::AllocateTagRecordTable());
                int bigEndian = 0;
                if (exif) exif::ReadExifTags(*file, *exif, &exifRows, &bigEndian, exif::NoMakerNotes());
            }
        }
        return exif != nullptr;
    }

    // The file, opened once for all its values; null when it cannot be
    // opened (then nothing is allocated for its values).
    platform::File* Input() {
        if (!inputOpened) {
            inputOpened = true;
            input = platform::Input::Open(context.filePath);
        }
        return input.get();
    }

    PlaceholderContext context;
    bool exifLoaded = false, iptcLoaded = false, haveNow = false, inputOpened = false;
    std::unique_ptr<platform::Input> input;
    std::unique_ptr<exif::TagRecordTable, TableDeleter> exif;
    uint32_t exifRows = 0;
    std::unique_ptr<iptc::IptcData> iptc;
    platform::LocalTime now;
};

namespace {

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

}  // namespace

PlaceholderSession::PlaceholderSession(const PlaceholderContext& context)
    : values_(std::make_unique<Values>(context)) {}

PlaceholderSession::~PlaceholderSession() = default;

std::u16string PlaceholderSession::Expand(std::u16string_view text, size_t capacity) {
    Values& v = *values_;
    const PlaceholderContext& context = v.context;
    Output e(capacity);
    for (size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == u'|') {
            e.Put(u"\r\n");
            continue;
        }
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size()) {
            e.Put(text.substr(i++, 2));  // a surrogate pair goes in whole or not at all
            continue;
        }
        if (c != u'$' || i + 1 == text.size()) {
            e.Put(c);
            continue;
        }
        const char16_t code = text[i + 1];
        size_t end = i + 2;  // behind the placeholder
        std::u16string value;
        bool known = true;
        switch (code) {
            case u'D': value = v.PictureDate(); break;
            case u'd': value = FormatDate(v.Now()); break;
            case u'T': value = FormatTime(v.Now()); break;
            case u'F': value = FileName(context.filePath); break;
            case u'N': value = NameWithoutExtension(context.filePath); break;
            case u'O': value = FolderName(context.filePath); break;
            case u'U': value = platform::UserName(); break;
            case u'S': value = v.Size(); break;
            case u'C': {
                char number[24];
                std::snprintf(number, sizeof number, "_%.3d", context.counter);
                value = Ascii(number);
                break;
            }
            case u'$': value = u"$"; break;
            case u'|': value = u"|"; break;
            case u'E':
            case u'I': {
                uint32_t number = 0;
                while (end < text.size() && end - (i + 2) < size_t{kPlaceholderNumberDigits} && IsDigit(text[end]))
                    number = number * 10 + (text[end++] - u'0');
                known = end > i + 2;
                if (known) value = code == u'E' ? v.Exif(number) : v.Iptc(static_cast<int>(number));
                break;
            }
            default: known = false; break;
        }
        if (!known) {
            e.Put(c);  // the letter after it follows as an ordinary character
            continue;
        }
        e.Put(value);
        i = end - 1;
    }
    return e.Take();
}

size_t PlaceholderSession::Expand(std::u16string_view text, char16_t* out, size_t capacity) {
    if (!out || capacity == 0) return 0;
    try {
        const std::u16string expanded = Expand(text, capacity);
        expanded.copy(out, expanded.size());
        out[expanded.size()] = u'\0';
        return expanded.size();
    } catch (const std::bad_alloc&) {
        out[0] = u'\0';  // called from dialogs: no exception may leave
        return 0;
    }
}

std::u16string ExpandPlaceholders(std::u16string_view text, const PlaceholderContext& context, size_t capacity) {
    return PlaceholderSession(context).Expand(text, capacity);
}

size_t ExpandPlaceholders(std::u16string_view text, char16_t* out, size_t capacity, std::u16string_view filePath,
                          std::u16string_view settingsPath, int counter) {
    PlaceholderContext context;
    context.filePath = filePath;
    context.settingsPath = settingsPath;
    context.counter = counter;
    try {
        return PlaceholderSession(context).Expand(text, out, capacity);
    } catch (const std::bad_alloc&) {
        if (out && capacity > 0) out[0] = u'\0';  // called from dialogs: no exception may leave
        return 0;
    }
}

}  // namespace placeholder
