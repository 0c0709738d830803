// IPTC and XMP of real files against exiftool, and exiftool both ways
// round our writer: what it writes we read, what we write it reads.
#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <vector>

#include "corpus.h"
#include "fixture/fixture.h"
#include "iptc/iptc_reader.h"
#include "iptc/iptc_writer.h"
#include "iptc/metadata_segment.h"
#include "iptc/xmp_import.h"
#include "platform/platform.h"
#include "plugin/plugin_api.h"

namespace {

using namespace iptc;
using Tags = std::map<std::string, std::string>;

// exiftool's names for our datasets, from iptc/names.tsv: "iptc" rows for
// the IPTC record, "xmp" rows for the properties the XMP import maps.
const std::vector<std::pair<std::string, int>>& Names(const std::string& kind) {
    static const std::map<std::string, std::vector<std::pair<std::string, int>>> names = [] {
        std::map<std::string, std::vector<std::pair<std::string, int>>> out;
        for (const std::vector<std::string>& f : corpus::ReadTable(std::string(VV_TESTS_DIR) + "/corpus/iptc/names.tsv"))
            out[f.at(0)].emplace_back(f.at(1), f.size() > 2 ? std::stoi(f.at(2)) : 0);
        return out;
    }();
    static const std::vector<std::pair<std::string, int>> none;
    EXPECT_TRUE(names.count(kind)) << kind << " names not read";
    return names.count(kind) ? names.at(kind) : none;
}

constexpr char kSep[] = "##";  // exiftool's list separator in these tests

Tags Exiftool(const std::string& file, const std::string& groups) {
    return corpus::Exiftool(file, std::string("-n -sep ") + corpus::Quote(kSep) + " " + groups);
}

std::string Replace(std::string s, const std::string& from, const std::string& to) {
    for (size_t at = s.find(from); at != std::string::npos; at = s.find(from, at + to.size()))
        s.replace(at, from.size(), to);
    return s;
}

// One field as exiftool would list it: lines of accumulated fields become
// list items, keywords come from LoadTag_IPTC_W's ", " form.
std::string Ours(const IptcData& data, int dataset) {
    std::string text = platform::Utf16ToUtf8(IptcTagText(data, dataset));
    if (dataset == kKeywords) return Replace(text, ", ", kSep);
    if (dataset == kCreatedTime || dataset == 35) return Replace(text, ":", "");
    return Replace(text, "\r\n", kSep);
}

// exiftool's value reduced to what one field holds: the last of repeated
// datasets (the caption: all of them joined), times without colons.
std::string Theirs(const std::string& value, int dataset) {
    if (dataset == kKeywords || dataset == kSupplementalCategory) return value;
    if (dataset == kCaption) return Replace(value, kSep, "");
    const size_t last = value.rfind(kSep);
    std::string v = last == std::string::npos ? value : value.substr(last + 2);
    return dataset == kCreatedTime || dataset == 35 ? Replace(v, ":", "") : v;
}

std::unique_ptr<IptcData> Load(const std::string& path) {
    auto data = std::make_unique<IptcData>();
    ClearIptcData(*data);
    LoadIptcData(platform::Utf8ToUtf16(path), *data);
    return data;
}

void ExpectSameIptc(const std::string& path) {
    const Tags tags = Exiftool(path, "-IPTC:all");
    const auto data = Load(path);
    for (const auto& [name, dataset] : Names("iptc")) {
        auto it = tags.find(std::string("IPTC:") + name);
        EXPECT_EQ(Ours(*data, dataset), it == tags.end() ? "" : Theirs(it->second, dataset)) << path << " " << name;
    }
    auto version = tags.find("IPTC:ApplicationRecordVersion");
    if (version != tags.end()) {
        EXPECT_EQ(std::to_string(data->recordVersion[1]), version->second) << path;
    }
}

void ExpectXmpImportMatches(const std::string& path, const IptcData& data) {
    const Tags tags = Exiftool(path, "-XMP:all");
    for (const auto& [name, dataset] : Names("xmp")) {
        auto it = tags.find(name);
        std::string theirs = it == tags.end() ? "" : it->second;
        if (dataset == kCreatedDate) theirs = theirs.substr(0, 10);
        EXPECT_EQ(Ours(data, dataset), theirs) << path << " " << name;
    }
}

TEST(IptcCorpus, ReadsWhatExiftoolReads) {
    VV_REQUIRE_CORPUS();
    for (const char* name : {"IPTC.jpg", "ExifTool.jpg", "PhotoMechanic.jpg", "MWG.jpg", "GPS.jpg", "ExifTool.tif"})
        ExpectSameIptc(corpus::Path(name));
    for (const auto& [name, unused] : Names("iim file")) ExpectSameIptc(corpus::Path(name));
    // FotoStation keeps its IPTC in a trailer behind the image, not in APP13: not ours to read.
    char16_t out[64];
    EXPECT_EQ(vv::LoadData_IPTC_W(platform::Utf8ToUtf16(corpus::Path("FotoStation.jpg")).c_str(), out, 64, 3), 0);
}

TEST(IptcCorpus, XmpImportMatchesExiftoolsXmp) {
    VV_REQUIRE_CORPUS();
    // XMP.jpg has no APP13, so the exports read its (UTF-16) XMP packet.
    ExpectXmpImportMatches(corpus::Path("XMP.jpg"), *Load(corpus::Path("XMP.jpg")));
    // So have the other containers without an IIM record.
    for (const auto& [name, unused] : Names("xmp file")) ExpectXmpImportMatches(corpus::Path(name), *Load(corpus::Path(name)));
    for (const char* name : {"PhotoMechanic.jpg", "MWG.jpg", "ExifTool.jpg"}) {
        const std::string path = corpus::Path(name);
        auto data = std::make_unique<IptcData>();
        ClearIptcData(*data);
        ImportXmpIntoIptc(platform::Utf8ToUtf16(path), *data, 1, 0);
        ExpectXmpImportMatches(path, *data);
    }
    // A file with extended XMP: the main packet's rows are exiftool's values; the
    // extended part (its pdf: properties) is not joined to it.
    uint32_t length = 0, offset = 0;
    const auto segment = LoadMetadataSegment(platform::Utf8ToUtf16(corpus::Path("ExtendedXMP.jpg")), length,
                                             offset, kApp1Marker, false, nullptr, true);
    xmp::XmpRows rows;
    ASSERT_GT(xmp::FillListViews_From_XMP_Buffer(segment.data(), length, rows), 0);
    auto row = [&](const char* name) {
        for (const auto& r : rows)
            if (platform::Utf16ToUtf8(r.name) == name) return platform::Utf16ToUtf8(r.value);
        return std::string("(none)");
    };
    Tags tags = Exiftool(corpus::Path("ExtendedXMP.jpg"), "-XMP:all");
    EXPECT_EQ(row("x:xmptk"), tags["XMP-x:XMPToolkit"]);
    EXPECT_EQ(row("xmpNote:HasExtendedXMP"), tags["XMP-xmpNote:HasExtendedXMP"]);
    EXPECT_EQ(row("pdf:Author"), "(none)");
}

// A small JPEG of our own for exiftool to write into.
std::string FreshJpeg(const fixture::TempDir& dir, const char* name) {
    dir.Write(name, fixture::JpegBuilder().Soi().Segment(0xE0, fixture::ToBytes(std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14)))
                        .ScanAndEoi().Build());
    return dir.Utf8Path(name);
}

void RunExiftool(const std::string& arguments, const std::string& file) {
    int rc = -1;
    corpus::Run("exiftool -q -overwrite_original " + arguments + " " + corpus::Quote(file), &rc);
    ASSERT_EQ(rc, 0) << arguments;
}

TEST(IptcOracle, WeReadWhatExiftoolWrites) {
    VV_REQUIRE_CORPUS();
    fixture::TempDir dir;
    const std::string latin = FreshJpeg(dir, "latin.jpg"), utf8 = FreshJpeg(dir, "utf8.jpg"), xmp = FreshJpeg(dir, "x.jpg");
    RunExiftool("-IPTC:City=Z\xC3\xBCrich -IPTC:Keywords=\xC3\xA9\xC3\xA9n -IPTC:Keywords=twee "
                "-IPTC:Caption-Abstract='Gr\xC3\xBC\xC3\x9F" "e aus K\xC3\xB6ln'", latin);
    RunExiftool("-IPTC:CodedCharacterSet=UTF8 -IPTC:City=\xE6\x9D\xB1\xE4\xBA\xAC -IPTC:By-line='\xC5\x81\xC3\xB3" "d\xC5\xBA'", utf8);
    RunExiftool("-XMP-dc:Subject=a -XMP-dc:Subject='b c' -XMP-dc:Title=T\xC3\xAFtle "
                "'-XMP-photoshop:DateCreated=2023:07:14 10:22:05' -XMP-photoshop:Urgency=2", xmp);
    for (const std::string& file : {latin, utf8}) ExpectSameIptc(file);
    EXPECT_EQ(Load(latin)->utf8, 0);  // exiftool writes Latin-1 when no character set is named
    EXPECT_EQ(platform::Utf16ToUtf8(IptcTagText(*Load(latin), kCity)), "Z\xC3\xBCrich");
    EXPECT_EQ(platform::Utf16ToUtf8(IptcTagText(*Load(utf8), kCity)), "\xE6\x9D\xB1\xE4\xBA\xAC");
    auto data = Load(xmp);
    ExpectXmpImportMatches(xmp, *data);
    EXPECT_EQ(platform::Utf16ToUtf8(IptcTagText(*data, kCreatedTime)).substr(0, 8), "10:22:05");
}

TEST(IptcOracle, ExiftoolReadsWhatWeWrite) {
    VV_REQUIRE_CORPUS();
    fixture::TempDir dir, temp;
    fixture::ScopedTempFolder tempFolder(temp.Utf8Path(""));
    std::filesystem::copy_file(corpus::Path("IPTC.jpg"), dir.Utf8Path("IPTC.jpg"));
    std::filesystem::permissions(dir.Utf8Path("IPTC.jpg"), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
    auto record = std::make_unique<IptcData>();
    ClearIptcData(*record);
    Tags expected = {{"IPTC:CodedCharacterSet", ".%G"}, {"IPTC:EnvelopeRecordVersion", "4"}};
    for (const auto& [name, dataset] : Names("iptc")) {
        const std::string text = std::string("\xC3\xA9t\xC3\xA9 ") + name;  // "été <name>"
        SetField(IptcField(*record, dataset), platform::Utf8ToUtf16(text));
        expected[std::string("IPTC:") + name] = text;
    }
    SetField(IptcField(*record, kKeywords), u"eins\r\nzw\u00F6lf\r\n\u6771\u4EAC\r\n");
    expected["IPTC:Keywords"] = "eins##zw\xC3\xB6lf##\xE6\x9D\xB1\xE4\xBA\xAC";
    SetField(IptcField(*record, kPriority), u"5");
    expected["IPTC:Urgency"] = "5";
    SetField(IptcField(*record, kCreatedDate), u"20240229");
    expected["IPTC:DateCreated"] = "2024:02:29";
    for (const char* unwritten : {"EditStatus", "FixtureIdentifier", "ReleaseDate", "ReleaseTime", "ReferenceService",
                                  "ReferenceDate", "TimeCreated", "OriginatingProgram", "ProgramVersion",
                                  "ObjectCycle", "LocalCaption"})
        expected.erase(std::string("IPTC:") + unwritten);

    for (const std::string& file : {dir.Utf8Path("IPTC.jpg"), FreshJpeg(dir, "fresh.jpg")}) {
        const std::u16string path = platform::Utf8ToUtf16(file);
        const fixture::Bytes before = fixture::ReadAll(path);
        uint32_t length = 0, offset = 0;
        LoadMetadataSegment(path, length, offset, kApp13Marker, true, nullptr, false);
        const size_t head = length ? offset : 2, tail = before.size() - (length ? offset + 2 + length : 2);
        std::u16string error;
        ASSERT_EQ(WriteIptcToJpeg(path, offset, length, *record, error), 1) << platform::Utf16ToUtf8(error);

        Tags tags = Exiftool(file, "-IPTC:all -Warning");
        EXPECT_EQ(tags, expected) << file;
        const fixture::Bytes after = fixture::ReadAll(path);
        ASSERT_GT(after.size(), head + tail);
        EXPECT_TRUE(std::equal(before.begin(), before.begin() + head, after.begin())) << file;
        EXPECT_TRUE(std::equal(before.end() - tail, before.end(), after.end() - tail)) << file;
        EXPECT_EQ(after.size() - head - tail, 4 + (size_t{after[head + 2]} << 8 | after[head + 3]) - 2) << file;
    }
}

}  // namespace
