// Apple maker notes (iPhone and iPad cameras): a 14-byte header and a
// directory whose offsets count from the note's first byte.
//
//   +0  "Apple iOS\0"   +10 version (2)   +12 "MM" (or "II")   +14 entry count
//
// Most values are SLONGs and SRATIONALs. The run-time record (tag 0003) is
// a binary property list, read in a pass of its own after the entry loop.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "makernote_decoders.h"
#include "makernote_numbers.h"
#include "makernote_texts.h"

namespace makernotes {
namespace {

constexpr char kAppleSignature[] = "Apple iOS";  // with its NUL: 10 bytes
constexpr size_t kAppleHeaderSize = 14;
constexpr size_t kAppleMarkAt = 12;

// ------------------------------------------------------------ main directory

constexpr Enumeration kNumber = Number(Sign::kSigned, "%d");
constexpr Enumeration kNoYes = Enum(kNoYesTexts, Sign::kSigned, "%d");

constexpr ValueText kHdrImageTypeTexts[] = {{3, "HDR Image"}, {4, "Original Image"}};
constexpr Enumeration kHdrImageType = Enum(kHdrImageTypeTexts, Sign::kSigned, "%d");

constexpr ValueText kImageCaptureTypeTexts[] = {
    {1, "ProRAW"}, {2, "Portrait"}, {10, "Photo"}, {11, "Manual Focus"}, {12, "Scene"},
};
constexpr Enumeration kImageCaptureType = Enum(kImageCaptureTypeTexts, Sign::kSigned, "%d");

static_assert(ValuesUnique(kHdrImageTypeTexts) && ValuesUnique(kImageCaptureTypeTexts), "values listed once");

// The nearest and farthest distance in focus, in metres, nearest first.
void FocusDistanceRange(const MakerEntry& e) {
    double range[2];
    if (ReadQuotients(e, range, 2) != 2) return;
    if (range[0] > range[1]) std::swap(range[0], range[1]);
    SetValuef(e.row(), "%.2f - %.2f m", range[0], range[1]);
}

constexpr MakerTag kAppleTags[] = {
    {0x0001, "Maker Note Version", FirstInteger<kNumber>},
    {0x0004, "AE Stable", FirstInteger<kNoYes>},
    {0x0005, "AE Target", FirstInteger<kNumber>},
    {0x0006, "AE Average", FirstInteger<kNumber>},
    {0x0007, "AF Stable", FirstInteger<kNoYes>},
    {0x0008, "Acceleration Vector", FormatQuotients},  // in g: x to the left, y down, z into the screen
    {0x000a, "HDR Image Type", FirstInteger<kHdrImageType>},
    {0x000b, "Burst UUID", FormatGenericValue},
    {0x000c, "Focus Distance Range", FocusDistanceRange},
    {0x000f, "OIS Mode", FirstInteger<kNumber>},
    {0x0011, "Content Identifier", FormatGenericValue},  // pairs a Live Photo's still and video
    {0x0014, "Image Capture Type", FirstInteger<kImageCaptureType>},
    {0x0015, "Image Unique ID", FormatGenericValue},
    {0x0017, "Live Photo Video Index", FirstInteger<kNumber>},
    {0x0019, "Image Processing Flags", FirstInteger<kNumber>},
    {0x001a, "Quality Hint", FormatGenericValue},
    {0x001d, "Luminance Noise Amplitude", FormatQuotients},
    {0x001f, "Photos App Feature Flags", FirstInteger<kNumber>},
    {0x0020, "Image Capture Request ID", FormatGenericValue},
    {0x0021, "HDR Headroom", FormatQuotients},
    {0x0023, "AF Performance", FormatGenericValue},
    {0x0025, "Scene Flags", FirstInteger<kNumber>},
    {0x0026, "Signal To Noise Ratio Type", FirstInteger<kNumber>},
    {0x0027, "Signal To Noise Ratio", FormatQuotients},
    {0x002f, "Focus Position", FirstInteger<kNumber>},
    {0x0030, "HDR Gain", FormatQuotients},
    {0x0038, "AF Measured Depth", FirstInteger<kNumber>},
    {0x003d, "AF Confidence", FirstInteger<kNumber>},
    {0x003f, "Green Ghost Mitigation Status", FirstInteger<kNumber>},
    {0x0045, "Front Facing Camera", FirstInteger<kNoYes>},
};
static_assert(TagsAscend(kAppleTags) && TagsNamed(kAppleTags), "tags ascend, each named");
// Values are read in their own types; the rule only matters to 16-bit enumerations, which Apple has none of.
constexpr MakerTable kApple = Table(kAppleTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// ------------------------------------------------------------ run-time record

// A binary property list ("bplist00"): objects, a table of their positions
// and a 32-byte trailer at the end:
//
//   +6 size of a position (1)   +7 size of an object reference (1)
//   +8 object count (8)   +16 top object (8)   +24 position of the table (8)
//
// Objects begin with a marker byte: 0x1n an integer of 2^n bytes, 0x5n an
// ASCII text of n bytes, 0xDn a dictionary of n keys then n values (as
// references); n = 15 means the length follows as an integer object. All
// numbers are big-endian.
class PropertyList {
public:
    PropertyList(const uint8_t* bytes, size_t size) : bytes_(bytes), size_(size) {}

    bool Open() {
        constexpr size_t kHeader = 8, kTrailer = 32;
        if (size_ < kHeader + kTrailer || std::memcmp(bytes_, "bplist00", kHeader) != 0) return false;
        const uint8_t* trailer = bytes_ + size_ - kTrailer;
        positionSize_ = trailer[6];
        referenceSize_ = trailer[7];
        objects_ = Big(trailer + 8, 8);
        top_ = Big(trailer + 16, 8);
        table_ = Big(trailer + 24, 8);
        const uint64_t tableRoom = size_ - kTrailer;
        return positionSize_ >= 1 && positionSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8 &&
               table_ < tableRoom && objects_ <= (tableRoom - table_) / positionSize_;
    }

    // Calls visit(key, value) for each text key of the top dictionary whose
    // value is an integer.
    template <typename Visit>
    void ForEachInteger(Visit&& visit) const {
        size_t at = 0;
        uint64_t count = 0;
        if (!ObjectAt(top_, at) || bytes_[at] >> 4 != 0xD || !Length(at, count)) return;
        count = std::min<uint64_t>(count, kApplePlistEntriesLimit);
        if (2 * count * referenceSize_ > size_ - at) return;
        for (uint64_t i = 0; i < count; ++i) {
            std::string key;
            int64_t value = 0;
            size_t keyAt = 0, valueAt = 0;
            if (ObjectAt(Big(bytes_ + at + i * referenceSize_, referenceSize_), keyAt) &&
                ObjectAt(Big(bytes_ + at + (count + i) * referenceSize_, referenceSize_), valueAt) &&
                Text(keyAt, key) && Integer(valueAt, value))
                visit(key, value);
        }
    }

private:
    static uint64_t Big(const uint8_t* p, size_t n) {
        uint64_t v = 0;
        for (size_t i = 0; i < n; ++i) v = v << 8 | p[i];
        return v;
    }

    // The position of object `index`; false when it lies outside the list.
    bool ObjectAt(uint64_t index, size_t& at) const {
        if (index >= objects_) return false;
        const uint64_t position = Big(bytes_ + table_ + index * positionSize_, positionSize_);
        if (position >= size_) return false;
        at = static_cast<size_t>(position);
        return true;
    }

    // The integer object at `at`.
    bool Integer(size_t at, int64_t& out) const {
        if (bytes_[at] >> 4 != 0x1) return false;
        const size_t n = size_t{1} << (bytes_[at] & 0x0F);
        if (n > 8 || n > size_ - at - 1) return false;
        out = static_cast<int64_t>(Big(bytes_ + at + 1, n));
        return true;
    }

    // The length in a marker's low half, or in the integer object after it;
    // moves `at` past both.
    bool Length(size_t& at, uint64_t& length) const {
        const uint8_t inMarker = bytes_[at] & 0x0F;
        ++at;
        if (inMarker != 0x0F) {
            length = inMarker;
            return true;
        }
        int64_t value = 0;
        if (at >= size_ || !Integer(at, value) || value < 0) return false;
        length = static_cast<uint64_t>(value);
        at += 1 + (size_t{1} << (bytes_[at] & 0x0F));
        return true;
    }

    bool Text(size_t at, std::string& out) const {
        uint64_t length = 0;
        if (bytes_[at] >> 4 != 0x5 || !Length(at, length) || length > size_ - at) return false;
        out.assign(reinterpret_cast<const char*>(bytes_ + at), static_cast<size_t>(length));
        return true;
    }

    const uint8_t* bytes_;
    size_t size_;
    size_t positionSize_ = 0, referenceSize_ = 0;
    uint64_t objects_ = 0, top_ = 0, table_ = 0;
};

// The time the phone had run since it was started (standby not counted),
// as a CMTime: value / timescale seconds, valid when flag bit 0 is set.
struct RunTime {
    bool hasFlags = false, hasValue = false, hasEpoch = false, hasScale = false;
    int64_t flags = 0, value = 0, epoch = 0, scale = 0;
};

constexpr ValueText kRunTimeFlagTexts[] = {
    {1, "Valid"}, {2, "Has been rounded"}, {4, "Positive infinity"}, {8, "Negative infinity"}, {16, "Indefinite"},
};

std::string RunTimeFlags(int64_t flags) {
    std::string text;
    for (const ValueText& bit : kRunTimeFlagTexts) {
        if (!(flags & bit.value)) continue;
        if (!text.empty()) text += ", ";
        text += bit.text;
    }
    return text.empty() ? "(none)" : text;
}

// Seconds as "h:mm:ss", with "N days " in front past a day; under half a
// minute as "12.34 s".
std::string Duration(double seconds) {
    if (seconds == 0) return "0 s";
    const char* sign = seconds < 0 ? "-" : "";
    seconds = std::abs(seconds);
    char text[64];
    if (seconds < 30) {
        std::snprintf(text, sizeof text, "%s%.2f s", sign, seconds);
        return text;
    }
    if (seconds > 1e15) return "";
    auto whole = static_cast<int64_t>(seconds + 0.5);
    int64_t hours = whole / 3600;
    whole -= hours * 3600;
    const int64_t minutes = whole / 60;
    whole -= minutes * 60;
    std::string days;
    if (hours > 24) {
        days = std::to_string(hours / 24) + " days ";
        hours %= 24;
    }
    std::snprintf(text, sizeof text, "%s%s%lld:%02lld:%02lld", sign, days.c_str(), static_cast<long long>(hours),
                  static_cast<long long>(minutes), static_cast<long long>(whole));
    return text;
}

void AppendRunTimeRows(const RunTime& t, const tiff::Entry& entry, exif::TagRecordTable& table, uint32_t* rowCount) {
    const auto add = [&](bool has, const char* name, const std::string& text) {
        if (!has) return;
        if (exif::TagRecord* row = AppendEntryRow(table, rowCount, entry, name)) exif::SetRowValue(*row, text);
    };
    add(t.hasFlags, "Run Time Flags", RunTimeFlags(t.flags));
    add(t.hasValue, "Run Time Value", std::to_string(t.value));
    add(t.hasEpoch, "Run Time Epoch", std::to_string(t.epoch));
    add(t.hasScale, "Run Time Scale", std::to_string(t.scale));
    const bool valid = t.hasFlags && (t.flags & 1) && t.hasValue && t.hasScale && t.scale > 0;
    add(valid, "Run Time Since Power Up", valid ? Duration(static_cast<double>(t.value) / t.scale) : "");
}

void DecodeRunTime(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                   uint32_t rowsBefore, uint32_t* rowCount) {
    const platform::Cursor input = directory.Whole();
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        if (entry.tag != 0x0003 || entry.type != tiff::kUndefined) return;
        uint8_t bytes[kApplePlistReadLimit];
        exif::TagRecord scratch = {};
        const exif::EntryContext context{input, offsetBase, entry, scratch};
        const size_t size = exif::ReadRawBlock(context, bytes, std::min<size_t>(entry.count, sizeof bytes));
        PropertyList list(bytes, size);
        if (!list.Open()) return;
        RunTime t;
        list.ForEachInteger([&](const std::string& key, int64_t value) {
            if (key == "flags") t.hasFlags = true, t.flags = value;
            else if (key == "value") t.hasValue = true, t.value = value;
            else if (key == "epoch") t.hasEpoch = true, t.epoch = value;
            else if (key == "timescale") t.hasScale = true, t.scale = value;
        });
        AppendRunTimeRows(t, entry, table, rowCount);
    });
}

}  // namespace

bool CheckAppleHeader(platform::Cursor& at) {
    uint8_t header[kAppleHeaderSize] = {};
    platform::Cursor in = at;
    if (!in.Bytes(header, sizeof header) || std::memcmp(header, kAppleSignature, sizeof kAppleSignature) != 0)
        return false;
    const bool little = header[kAppleMarkAt] == 'I' && header[kAppleMarkAt + 1] == 'I';
    at = in.ChildAt(in.position(), in.end());
    at.SetOrder(little ? platform::ByteOrder::kLittle : platform::ByteOrder::kBig);
    return true;
}

void DecodeAppleMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    platform::Cursor in = directory;
    const uint32_t rowsBefore = *rowCount;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kApple);
    DecodeRunTime(directory, offsetBase, table, rowsBefore, rowCount);
}

}  // namespace makernotes
