// Every standard and GPS row the reader makes for the corpus's JPEG,
// TIFF-based and container files, against exiftool's value for the same tag:
// texts equal, numbers equal to the precision we print, enumerations as their
// meaning; how each tag compares, and where we differ and why, stand in
// exif/standard.tsv. And the offsets GetExifInfos answers for each container
// listed there hold a TIFF header.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
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

// What tests/corpus/exif/standard.tsv states: how each tag compares, what
// exiftool's numbers mean, where we knowingly differ, which containers to locate.
struct Disagreement {
    std::string file;
    uint32_t tag;
    std::string ours, reason;
};
struct Container {
    std::string name;
    int32_t code;
    bool written, atFileStart;
};
struct Expectations {
    std::map<uint32_t, std::string> how;  // unlisted: "numbers"
    std::map<std::pair<uint32_t, std::string>, std::string> meanings;
    std::vector<Disagreement> disagreements;
    std::vector<Container> containers;
    std::vector<std::string> files;           // of the extra folder, read beside the corpus's own
    std::set<std::string> blockOffsets;       // files whose offsets exiftool counts from the TIFF header
    std::map<std::string, std::set<uint32_t>> elsewhere;  // IFD0 tags exiftool takes from another block
};

std::string Unescaped(const std::string& s) {
    std::string out;
    for (size_t i = 0; i < s.size(); ++i) {
        const char* at = i + 1 < s.size() && s[i] == '\\' ? std::strchr("b\bt\tn\nv\v", s[i + 1]) : nullptr;
        out += at ? (++i, at[1]) : s[i];
    }
    return out;
}

const Expectations& Expected() {
    static const Expectations e = [] {
        Expectations e;
        for (const std::vector<std::string>& f : corpus::ReadTable(std::string(VV_TESTS_DIR) + "/corpus/exif/standard.tsv")) {
            const auto n = [&](size_t i) { return static_cast<uint32_t>(std::stoul(f[i])); };
            if (f[0] == "compare" && f.size() == 3) {
                std::istringstream tags(f[2]);
                for (uint32_t tag; tags >> tag;) e.how[tag] = f[1];
            } else if (f[0] == "meaning" && f.size() == 4) {
                e.meanings[{n(1), f[2]}] = f[3];
            } else if (f[0] == "differs" && f.size() == 5) {
                e.disagreements.push_back({f[1], n(2), Unescaped(f[3]), f[4]});
            } else if (f[0] == "container" && f.size() == 5) {
                e.containers.push_back({f[1], static_cast<int32_t>(n(2)), f[3] == "1", f[4] == "1"});
            } else if (f[0] == "file" && f.size() == 2) {
                e.files.push_back(f[1]);
            } else if (f[0] == "block offsets" && f.size() == 3) {
                e.blockOffsets.insert(f[1]);
            } else if (f[0] == "elsewhere" && f.size() == 4) {
                std::istringstream tags(f[2]);
                for (uint32_t tag; tags >> tag;) e.elsewhere[f[1]].insert(tag);
            } else {
                ADD_FAILURE() << "bad line: " << f[0];
            }
        }
        EXPECT_FALSE(e.how.empty() || e.containers.empty()) << "standard.tsv not read";
        return e;
    }();
    return e;
}

std::string HowToCompare(uint32_t tag) {
    const auto it = Expected().how.find(tag);
    return it == Expected().how.end() ? "numbers" : it->second;
}

std::string Trimmed(std::string s) {
    while (!s.empty() && s.back() == ' ') s.pop_back();
    return s;
}

const Disagreement* KnownDisagreement(const std::string& file, uint32_t tag, const std::string& ours) {
    for (const Disagreement& d : Expected().disagreements)
        if (file == d.file && tag == d.tag && Trimmed(ours) == d.ours) return &d;
    return nullptr;
}

constexpr int32_t kCr3Code = 118;

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
    const std::string how = HowToCompare(tag);
    if (how == "none") return true;
    if (how == "text") return Trimmed(ours) == Trimmed(theirs);
    if (how == "enum") {
        const auto meaning = Expected().meanings.find({tag, theirs});
        return meaning != Expected().meanings.end() && meaning->second == ours;
    }
    if (how == "seconds") {
        if (a.empty() || b.empty() || b[0] <= 0) return false;
        return ours.rfind("1/", 0) == 0 ? Near(a[1], 1 / b[0], 0.51) : Near(a[0], b[0], 0.51);
    }
    if (how == "apex") return !a.empty() && !b.empty() && Near(a[0], 2 * std::log2(b[0]), 0.0051);
    if (how == "coordinate") return !a.empty() && !b.empty() && Near(a.back(), b[0], 0.0000051);
    if (how == "offset") return !a.empty() && !b.empty() && a[0] + base == b[0];
    if (how == "version") {
        std::string spaced = ours;
        std::replace(spaced.begin(), spaced.end(), '.', ' ');
        return Numbers(spaced) == b;
    }
    if (a.empty() || a.size() > b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (!Near(a[i], b[i], 0.0051)) return false;
    return true;
}

TEST(ExifCorpus, StandardAndGpsRowsAgreeWithExiftool) {
    VV_REQUIRE_CORPUS();
    std::vector<std::string> paths;
    for (const std::string& name : corpus::Files({".jpg", ".tif", ".cr2", ".cr3", ".dng", ".nef", ".rw2", ".raf",
                                                  ".mrw", ".webp"}))
        paths.push_back(corpus::Path(name));
    ASSERT_GE(paths.size(), 40u);
    for (const std::string& name : Expected().files) paths.push_back(corpus::Path(name));
    for (const Container& c : Expected().containers)
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
        const uint32_t base = Expected().blockOffsets.count(name)
                                  ? 0
                                  : static_cast<uint32_t>(vv::GetExifInfos(wide.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 0));
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
            if (HowToCompare(row.tag) == "none") continue;
            ++compared;
            const bool agrees = it != theirs.end() && Agrees(row.tag, value, it->second, base);
            if (const Disagreement* known = KnownDisagreement(name, row.tag, value)) {
                EXPECT_FALSE(agrees) << name << " tag " << row.tag << " now agrees; drop it from standard.tsv";
                std::printf("%s tag %u differs from exiftool: %s\n", name.c_str(), row.tag, known->reason.c_str());
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
            const auto other = Expected().elsewhere.find(name);
            if (key.first == "IFD0" && other != Expected().elsewhere.end() && other->second.count(key.second)) continue;
            if (named && ourGroup) {
                EXPECT_TRUE(seen.count(key)) << name << ": no row for " << key.first << " " << key.second;
            }
        }
        exif::FreeTagRecordTable(table, 1);
    }
    EXPECT_GT(compared, 1000);
    EXPECT_EQ(listed, static_cast<int>(Expected().disagreements.size())) << "a listed disagreement no longer occurs";
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
    for (const Container& c : Expected().containers) {
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
