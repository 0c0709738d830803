// Every standard and GPS row the reader makes for the corpus's JPEG,
// TIFF-based and container files, against exiftool's value for the same tag:
// texts equal, numbers equal to the precision we print, enumerations as their
// meaning. Where we differ, the reason stands in kDisagreements below. PNG,
// JPEG XL and HEIF samples come without EXIF; exiftool writes it into a copy,
// where real writers put it (eXIf chunk, Exif box, HEIF Exif item). And the
// offsets GetExifInfos answers for each container hold a TIFF header.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "corpus.h"
#include "exif/container.h"
#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "makernotes/makernote_rules.h"
#include "exif/tag_table.h"
#include "fixture/fixture.h"
#include "platform/platform.h"
#include "plugin/plugin_api.h"

namespace {

enum class Compare {
    kNone,         // exiftool shows a sub-directory or binary data, not a value
    kText,
    kNumbers,      // every number of the value, to the precision printed
    kEnum,         // our text for exiftool's number (kMeanings)
    kSeconds,      // "1/n" or "n" against seconds
    kApex,         // APEX aperture against exiftool's f-number
    kCoordinate,   // the degrees in parentheses
    kOffset,       // thumbnail offset from the TIFF header against exiftool's file offset
    kVersion,      // "2.2.0.0" against "2 2 0 0"
};

Compare HowToCompare(uint32_t tag) {
    switch (tag) {
        case 46: case 33723: case 34665: case 34675: case 34853: case 34856: case 37500: case 40965:
        case 41484: case 41995:
            return Compare::kNone;
        case 270: case 271: case 272: case 305: case 306: case 315: case 33432: case 34852: case 36864:
        case 36867: case 36868: case 36880: case 36881: case 36882: case 37510: case 37520: case 37521:
        case 37522: case 40091: case 40092: case 40093: case 40094: case 40095: case 40960: case 42032:
        case 42033: case 42035: case 42036: case 42037: case 401: case 403: case 429:
            return Compare::kText;
        case 274: case 296: case 34850: case 37383: case 37384: case 37385: case 40961: case 41488: case 41495:
        case 41728: case 41729: case 41985: case 41986: case 41987: case 41990: case 41991: case 41992:
        case 41993: case 41994: case 41996: case 405: case 416:
            return Compare::kEnum;
        case 33434: case 37377: return Compare::kSeconds;
        case 37378: case 37381: return Compare::kApex;
        case 402: case 404: return Compare::kCoordinate;
        case 513: return Compare::kOffset;
        case 400: return Compare::kVersion;
        default: return Compare::kNumbers;
    }
}

std::string Trimmed(std::string s) {
    while (!s.empty() && s.back() == ' ') s.pop_back();
    return s;
}

// What exiftool's numbers mean, for the values the corpus holds (GPS rows as 400 + tag).
const std::map<std::pair<uint32_t, std::string>, std::string> kMeanings = {
    {{274, "1"}, "Top left"}, {{274, "6"}, "Right top"}, {{274, "8"}, "Left bottom"},
    {{296, "2"}, "Inches"}, {{41488, "2"}, "Inches"}, {{41488, "3"}, "Centimeters"},
    {{34850, "1"}, "Manual control"}, {{34850, "2"}, "Normal program"},
    {{34850, "3"}, "Aperture priority"}, {{34850, "4"}, "Shutter priority"},
    {{37383, "0"}, "Unknown"}, {{37383, "1"}, "Average"}, {{37383, "2"}, "Center weighted average"},
    {{37383, "3"}, "Spot"}, {{37383, "4"}, "Multi-spot"}, {{37383, "5"}, "Multi-segment"},
    {{37384, "0"}, "Auto"}, {{37384, "1"}, "Daylight"}, {{37384, "9"}, "Fine weather"}, {{37384, "255"}, "255"},
    {{37385, "0"}, "Not fired"}, {{37385, "1"}, "Fired"}, {{37385, "9"}, "Fired, compulsory flash mode"},
    {{37385, "16"}, "Not fired, flash suppressed"}, {{37385, "24"}, "Not fired, auto mode"},
    {{37385, "31"}, "Fired, auto mode, return light detected"}, {{37385, "32"}, "No flash function"},
    {{40961, "0"}, "Uncalibrated/Unknown (0)"}, {{40961, "1"}, "sRGB"}, {{40961, "65535"}, "Uncalibrated/Unknown (65535)"},
    {{41495, "2"}, "One-chip color area sensor"},
    {{41728, "0"}, "0"}, {{41728, "3"}, "Digital still camera"},
    {{41729, "0"}, "0"}, {{41729, "1"}, "Directly photographed"},
    {{41985, "0"}, "Normal process"}, {{41985, "1"}, "Custom process"},
    {{41986, "0"}, "Auto"}, {{41986, "1"}, "Manual"}, {{41986, "2"}, "Auto bracket"},
    {{41987, "0"}, "Auto"}, {{41987, "1"}, "Manual"},
    {{41990, "0"}, "Standard"}, {{41990, "1"}, "Landscape"},
    {{41991, "0"}, "None"}, {{41991, "1"}, "Low gain up"}, {{41991, "2"}, "High gain up"},
    {{41992, "0"}, "Normal"}, {{41993, "0"}, "Normal"}, {{41993, "1"}, "Soft"}, {{41993, "2"}, "Hard"},
    {{41994, "0"}, "Normal"}, {{41994, "1"}, "Soft"}, {{41994, "2"}, "Hard"},
    {{41996, "0"}, "Unknown"}, {{41996, "2"}, "Close view"}, {{41996, "3"}, "Distant view"},
    {{405, "0"}, "Above Sea Level"}, {{405, "1"}, "Below Sea Level (Sea level reference)"},
    {{416, "T"}, "True direction"}, {{416, "M"}, "Magnetic direction"},
};

// Rows where we knowingly differ from exiftool, and why: file, tag, our value.
struct Disagreement {
    const char* file;
    uint32_t tag;
    const char* ours;
    const char* reason;
};
const Disagreement kDisagreements[] = {
    {"Canon.jpg", 37377, "", "Tv stored as -2^31/1 gives no sensible time and is left empty; exiftool prints 0"},
    {"Casio2.jpg", 41988, "0", "0/0: a zero denominator shows the numerator; exiftool prints undef"},
    {"GoPro.jpg", 40960, "\b\t\n\v", "control bytes are kept as stored; exiftool shows dots"},
    {"Ricoh2.jpg", 37510, "GCM_TAG Information Roundabout No Good E",
     "NULs inside a comment with an undefined code read as spaces; exiftool stops at the first NUL"},
    {"Sigma.jpg", 41728, "Digital still camera",
     "stored as 4 bytes: we read the first, exiftool shows the raw bytes"},
    {"Panasonic.rw2", 282, "1", "the raw IFD0 uses 282 for a SHORT of its own; exiftool's XResolution is the "
                                "embedded JPEG's"},
    {"Panasonic.rw2", 513, "10428",
     "counts from the embedded JPEG's TIFF header, which GetExifInfos does not report for RW2"},
};

const Disagreement* KnownDisagreement(const std::string& file, uint32_t tag, const std::string& ours) {
    for (const Disagreement& d : kDisagreements)
        if (file == d.file && tag == d.tag && Trimmed(ours) == d.ours) return &d;
    return nullptr;
}

constexpr int32_t kHeifCode = 115, kPngCode = 3, kCr3Code = 118, kOtherCode = 0;

struct Container {
    const char* name;
    int32_t code;
    bool written;      // a copy with EXIF written by exiftool
    bool atFileStart;  // GetExifInfos answers 0: the file is the TIFF header's own, which it cannot tell from "none"
};
const Container kContainers[] = {
    {"CanonRaw.cr3", kCr3Code, false, false}, {"FujiFilm.raf", kOtherCode, false, false},
    {"Minolta.mrw", kOtherCode, false, false}, {"RIFF.webp", kOtherCode, false, false},
    {"CanonRaw.cr2", kOtherCode, false, true}, {"DNG.dng", kOtherCode, false, true},
    {"Nikon.nef", kOtherCode, false, true},   {"Panasonic.rw2", kOtherCode, false, true},
    {"PNG.png", kPngCode, true, false},       {"JXL2.jxl", kOtherCode, true, false},
    {"QuickTime.heic", kHeifCode, true, false},
};

// The path of a corpus file, or of its copy with EXIF written by exiftool (made once).
std::string PathOf(const Container& c) {
    static const fixture::TempDir dir;
    const std::string copy = dir.Utf8Path(c.name);
    if (!c.written) return corpus::Path(c.name);
    if (std::filesystem::exists(copy)) return copy;
    std::filesystem::copy_file(corpus::Path(c.name), copy);
    std::filesystem::permissions(copy, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    int rc = -1;
    corpus::Run("exiftool -q -overwrite_original -Make=Vantaview -Model=Test -ExposureTime=0.004 -FNumber=5.6 "
                "-ISO=200 -DateTimeOriginal='2024:05:06 07:08:09' -GPSLatitude=48.85 -GPSLatitudeRef=N " +
                    corpus::Quote(copy) + " 2>/dev/null",
                &rc);
    EXPECT_EQ(rc, 0) << c.name;
    return copy;
}

// exiftool's EXIF values of all files in one run: file name -> (group, tag id) -> value.
using Values = std::map<std::pair<std::string, uint32_t>, std::string>;
std::map<std::string, Values> RunExiftool(const std::vector<std::string>& paths) {
    std::string command = "exiftool -a -G1 -n -D -s -EXIF:all";
    for (const std::string& f : paths) command += " " + corpus::Quote(f);
    std::istringstream lines(corpus::Run(command + " 2>/dev/null"));
    std::map<std::string, Values> out;
    std::string line, current;
    while (std::getline(lines, line)) {
        if (line.rfind("======== ", 0) == 0) {
            current = line.substr(line.find_last_of('/') + 1);
            continue;
        }
        // "[Group]   306 ModifyDate   : 2002:07:19 13:28:10"
        char group[64];
        unsigned id;
        const size_t colon = line.find(" : ");
        if (colon == std::string::npos || std::sscanf(line.c_str(), "[%63[^]]] %u", group, &id) != 2) continue;
        out[current].emplace(std::make_pair(std::string(group), id), line.substr(colon + 3));
    }
    return out;
}

std::vector<double> Numbers(std::string text) {
    for (char& c : text)
        if (c == ':' || c == '(' || c == ')' || c == '/') c = ' ';
    std::vector<double> out;
    std::istringstream in(text);
    std::string word;
    while (in >> word) {
        char* end = nullptr;
        const double v = std::strtod(word.c_str(), &end);
        if (end != word.c_str()) out.push_back(v);
    }
    return out;
}

bool Near(double ours, double theirs, double tolerance) {
    return std::fabs(ours - theirs) <= tolerance + 1e-6 * std::fabs(theirs);
}

// Whether our row agrees with exiftool's value; `base` is the TIFF header's file offset.
bool Agrees(uint32_t tag, const std::string& ours, const std::string& theirs, uint32_t base) {
    const std::vector<double> a = Numbers(ours), b = Numbers(theirs);
    switch (HowToCompare(tag)) {
        case Compare::kNone: return true;
        case Compare::kText: return Trimmed(ours) == Trimmed(theirs);
        case Compare::kEnum: {
            auto meaning = kMeanings.find({tag, theirs});
            return meaning != kMeanings.end() && meaning->second == ours;
        }
        case Compare::kSeconds:
            if (a.empty() || b.empty() || b[0] <= 0) return false;
            return ours.rfind("1/", 0) == 0 ? Near(a[1], 1 / b[0], 0.51) : Near(a[0], b[0], 0.51);
        case Compare::kApex:
            return !a.empty() && !b.empty() && Near(a[0], 2 * std::log2(b[0]), 0.0051);
        case Compare::kCoordinate:
            return !a.empty() && !b.empty() && Near(a.back(), b[0], 0.0000051);
        case Compare::kOffset:
            return !a.empty() && !b.empty() && a[0] + base == b[0];
        case Compare::kVersion: {
            std::string spaced = ours;
            for (char& c : spaced)
                if (c == '.') c = ' ';
            return Numbers(spaced) == b;
        }
        case Compare::kNumbers:
            if (a.empty() || a.size() > b.size()) return false;
            for (size_t i = 0; i < a.size(); ++i)
                if (!Near(a[i], b[i], 0.0051)) return false;
            return true;
    }
    return false;
}

TEST(ExifCorpus, StandardAndGpsRowsAgreeWithExiftool) {
    VV_REQUIRE_CORPUS();
    std::vector<std::string> paths;
    for (const std::string& name : corpus::Files({".jpg", ".tif", ".cr2", ".cr3", ".dng", ".nef", ".rw2", ".raf",
                                                  ".mrw", ".webp"}))
        paths.push_back(corpus::Path(name));
    ASSERT_GE(paths.size(), 40u);
    for (const Container& c : kContainers)
        if (c.written) paths.push_back(PathOf(c));
    std::map<std::string, Values> oracle = RunExiftool(paths);
    int compared = 0, listed = 0;
    for (const std::string& path : paths) {
        const std::string name = path.substr(path.find_last_of('/') + 1);
        const std::u16string wide = platform::Utf8ToUtf16(path);
        exif::TagRecordTable* table = exif::AllocateTagRecordTable();
        uint32_t count = 0;
        int bigEndian = 0;
        exif::ReadExifTags(wide, *table, &count, &bigEndian, makernotes::StandardMakerNoteRules());
        uint32_t size = 0;
        const uint32_t base =
            static_cast<uint32_t>(vv::GetExifInfos(wide.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 0));
        const Values& theirs = oracle[name];
        EXPECT_EQ(count == 0, theirs.empty()) << name << ": rows only on one side";

        // Our rows by section: the main directories, GPS, the maker note (not ours to check), the thumbnail.
        std::set<std::pair<std::string, uint32_t>> seen;
        std::vector<std::string> groups = {"IFD0", "ExifIFD"};
        for (uint32_t i = 0; i < count; ++i) {
            const exif::TagRecord& row = table->rows[i];
            const std::string rowName = row.name;
            if (rowName == "GPS information:") groups = {"GPS"};
            if (rowName == "Maker Note (Vendor):") groups = {};
            if (rowName == "Thumbnail:") groups = {"IFD1"};
            if (rowName.empty() || rowName.back() == ':' || groups.empty()) continue;
            const uint32_t id = groups[0] == "GPS" ? row.tag - exif::kGpsTagBase : row.tag;
            auto it = theirs.end();
            for (const std::string& g : groups) {
                seen.insert({g, id});
                if (it == theirs.end()) it = theirs.find({g, id});
            }
            const std::string value = row.longValue ? row.longValue : row.value;
            if (HowToCompare(row.tag) == Compare::kNone) continue;
            ++compared;
            const bool agrees = it != theirs.end() && Agrees(row.tag, value, it->second, base);
            if (const Disagreement* known = KnownDisagreement(name, row.tag, value)) {
                EXPECT_FALSE(agrees) << name << " tag " << row.tag << " now agrees; drop it from kDisagreements";
                std::printf("%s tag %u differs from exiftool: %s\n", name.c_str(), row.tag, known->reason);
                ++listed;
                continue;
            }
            EXPECT_TRUE(agrees) << name << " tag " << row.tag << " (" << rowName << "): ours \"" << value
                                << "\", exiftool \"" << (it == theirs.end() ? "<none>" : it->second) << "\"";
        }
        // And every tag exiftool found in these directories that we name has a row.
        for (const auto& [key, value] : theirs) {
            const bool gps = key.first == "GPS";
            const bool named = gps ? exif::FindGpsTag(static_cast<uint16_t>(key.second)) != nullptr
                                   : key.second < 65536 && exif::FindStandardTag(static_cast<uint16_t>(key.second));
            const bool ourGroup = gps || key.first == "IFD0" || key.first == "ExifIFD" || key.first == "IFD1";
            if (named && ourGroup) {
                EXPECT_TRUE(seen.count(key)) << name << ": no row for " << key.first << " " << key.second;
            }
        }
        exif::FreeTagRecordTable(table, 1);
    }
    EXPECT_GT(compared, 1000);
    EXPECT_EQ(listed, static_cast<int>(std::size(kDisagreements))) << "a listed disagreement no longer occurs";
}

std::string Head(const std::string& path, uint32_t offset) {
    char bytes[4] = {};
    if (FILE* f = std::fopen(path.c_str(), "rb")) {
        if (std::fseek(f, static_cast<long>(offset), SEEK_SET) == 0) std::fread(bytes, 1, sizeof bytes, f);
        std::fclose(f);
    }
    return std::string(bytes, sizeof bytes);
}

::testing::AssertionResult HoldsTiffHeader(const std::string& path, uint32_t offset) {
    const std::string head = Head(path, offset);
    if (head == std::string("II*\0", 4) || head == std::string("MM\0*", 4)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << path << " at " << offset << " holds no TIFF header";
}

TEST(ExifCorpus, GetExifInfosAndTheWalkersLocatorPointAtTiffHeaders) {
    VV_REQUIRE_CORPUS();
    for (const Container& c : kContainers) {
        SCOPED_TRACE(c.name);
        const std::string path = PathOf(c);
        const std::u16string wide = platform::Utf8ToUtf16(path);
        uint32_t size = 0, outs[4] = {};
        const uint32_t offset = static_cast<uint32_t>(
            vv::GetExifInfos(wide.c_str(), &size, &outs[0], &outs[1], &outs[2], &outs[3], c.code));
        if (c.atFileStart) {
            // Panasonic's raw files use their own magic number after "II".
            EXPECT_EQ(offset, 0u);
            EXPECT_TRUE(Head(path, 0).rfind("II", 0) == 0 || Head(path, 0).rfind("MM", 0) == 0);
            continue;
        }
        EXPECT_TRUE(HoldsTiffHeader(path, offset));
        for (int i = 0; c.code == kCr3Code && i < 3; ++i) EXPECT_TRUE(HoldsTiffHeader(path, outs[i])) << "CMT" << i + 2;
        exif::ContainerPointers pointers;
        EXPECT_TRUE(HoldsTiffHeader(path, exif::LocateTiffHeaderInContainer(wide, pointers)));
    }
}

}  // namespace
