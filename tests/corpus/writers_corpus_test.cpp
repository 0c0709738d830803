// The three writers on every real JPEG of the corpus (and its extra folder),
// as a user runs them, checked with exiftool as the independent reader: the
// written value reads back, every other tag stays as it was (but those the
// writer is meant to drop), the image data and whatever follows it keep
// every byte, and a second identical write changes nothing.
#include <filesystem>
#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <sstream>

#include "comment/comment_writer.h"
#include "corpus.h"
#include "exif/exif_creation.h"
#include "exif/exif_writer.h"
#include "fixture/fixture.h"
#include "iptc/iptc_reader.h"
#include "iptc/iptc_writer.h"
#include "iptc/metadata_segment.h"
#include "jpeg/marker_walk.h"
#include "platform/input.h"
#include "platform/platform.h"

namespace fs = std::filesystem;

namespace {

using Tags = std::multimap<std::string, std::string>;  // "Group1:Tag" -> value, duplicates kept

// exiftool's tags of many files in one run (-args -a -G1 -n), in the order given.
std::vector<Tags> ExiftoolAll(const std::vector<std::string>& files) {
    std::string command = "exiftool -args -a -G1 -n";
    for (const std::string& f : files) command += " " + corpus::Quote(f);
    std::istringstream lines(corpus::Run(command + " 2>/dev/null"));
    std::vector<Tags> all;
    for (std::string line; std::getline(lines, line);) {
        const size_t eq = line.find('=');
        if (line.size() < 2 || line[0] != '-' || eq == std::string::npos) continue;
        const std::string key = line.substr(1, eq - 1);
        if (key == "ExifTool:ExifToolVersion") all.emplace_back();  // each file's first line
        if (!all.empty()) all.back().emplace(key, line.substr(eq + 1));
    }
    return all;
}

// The offset of the start-of-scan marker: the image data from there on.
uint64_t ScanOffset(const fixture::Bytes& file) {
    auto input = platform::Input::FromMemory(file.data(), file.size());
    jpeg::MarkerWalk walk(*input, 2, jpeg::WalkRules{2, false});
    jpeg::Segment segment;
    while (walk.Next(segment))
        if (segment.marker == jpeg::kStartOfScan) return segment.offset;
    return file.size();
}

struct Writer {
    const char* name;
    // Writes the value into the file as the dialog does; false when the
    // writer refuses the file by design (EXIF creation on a file with EXIF).
    std::function<bool(const std::u16string& path)> write;
    // The tags it writes (their new values are checked) and the groups or
    // tags it may drop or change, by prefix.
    std::vector<std::pair<std::string, std::string>> written;
    std::vector<std::string> mayChange;
    std::vector<const char*> rewritten = {};  // IPTC datasets read and written back unchanged
};


const Writer kWriters[] = {
    {"comment",
     [](const std::u16string& path) {
         uint32_t offset = 0, length = 0;
         comment::LocateComment(path, offset, length);
         std::u16string error;
         const int result = comment::WriteJpegComment(path, offset, length, "Neuer Kommentar \xC3\xA4", true, error);
         EXPECT_EQ(result, 1) << platform::Utf16ToUtf8(error);
         return true;
     },
     {{"File:Comment", "Neuer Kommentar \xC3\xA4"}},
     {"File:Comment"}},
    {"IPTC",
     [](const std::u16string& path) {
         // The sheet loads every field, the user edits one, OK writes them all.
         auto data = std::make_unique<iptc::IptcData>();
         iptc::ClearIptcData(*data);
         iptc::LoadIptcData(path, *data);
         iptc::SetField(iptc::IptcField(*data, iptc::kObjectName), u"Titel \u00E4");
         data->keepOrgDate = 1;
         std::u16string error;
         const int result = iptc::WriteIptcToJpeg(path, data->app13Offset, data->app13Length, *data, error);
         EXPECT_EQ(result, 1) << platform::Utf16ToUtf8(error);
         return true;
     },
     {{"IPTC:ObjectName", "Titel \xC3\xA4"}},
     // The datasets the writer does not write, the character set it declares,
     // and the other Photoshop resources of the replaced APP13 go.
     {"IPTC:", "Photoshop:", "File:CurrentIPTCDigest", "Composite:DateTimeCreated",
      "Composite:DigitalCreationDateTime"},
     {"Caption-Abstract", "Writer-Editor", "Headline", "SpecialInstructions", "By-line", "By-lineTitle", "Credit",
      "Source", "ReferenceNumber", "DateCreated", "City", "Sub-location", "Province-State",
      "Country-PrimaryLocationCode", "Country-PrimaryLocationName", "OriginalTransmissionReference", "Category",
      "SupplementalCategories", "Urgency", "Keywords", "CopyrightNotice", "Contact"}},
    {"EXIF",
     [](const std::u16string& path) {
         auto state = std::make_unique<exif::ExifCreatorState>();
         exif::PrepareExifCreator(path, u"", *state);
         exif::SetCreatorValue(state->rows[1], "Maker \xC3\xA4");
         exif::SetCreatorValue(state->rows[exif::kCreatorDateRow], "2024:05:06 07:08:09");
         std::u16string error;
         const int result = exif::WriteExifCreator(*state, error);
         if (error.find(u"already contains EXIF data") != std::u16string::npos) return false;
         EXPECT_EQ(result, 1) << platform::Utf16ToUtf8(error);
         return true;
     },
     {{"IFD0:Make", "Maker \xC3\xA4"}, {"ExifIFD:DateTimeOriginal", "2024:05:06 07:08:09"}},
     {"IFD0:", "ExifIFD:", "Composite:", "File:ExifByteOrder"}},
};

bool MayChange(const Writer& writer, const std::string& key) {
    if (key.rfind("System:", 0) == 0 || key.rfind("ExifTool:", 0) == 0) return true;  // file size, times, name
    for (const std::string& prefix : writer.mayChange)
        if (key.rfind(prefix, 0) == 0) return true;
    return false;
}

bool EndsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// The files' tags but those the writer may change. What exiftool reports as
// a place in the file (a preview's start, the thumbnail's offset) moves with
// the bytes before it: such a tag must still be there, its number may differ.
std::multimap<std::string, std::string> Kept(const Writer& writer, const Tags& tags) {
    std::multimap<std::string, std::string> kept;
    for (const auto& [key, value] : tags) {
        if (MayChange(writer, key)) continue;
        const bool place = EndsWith(key, "Offset") || EndsWith(key, "Offsets") || EndsWith(key, "Start");
        kept.emplace(key, place ? "(a place in the file)" : value);
    }
    return kept;
}

// The tags one side has and the other has not (or not as often), one a line.
std::string Difference(const std::multimap<std::string, std::string>& was,
                       const std::multimap<std::string, std::string>& now) {
    std::string out;
    std::vector<std::pair<std::string, std::string>> gone, added;
    std::set_difference(was.begin(), was.end(), now.begin(), now.end(), std::back_inserter(gone));
    std::set_difference(now.begin(), now.end(), was.begin(), was.end(), std::back_inserter(added));
    for (const auto& [key, value] : gone) out += "- " + key + "=" + value.substr(0, 80) + "\n";
    for (const auto& [key, value] : added) out += "+ " + key + "=" + value.substr(0, 80) + "\n";
    return out;
}

TEST(WritersOnRealFiles, KeepEverythingButWhatTheyWriteAndDoNotGrowOnASecondWrite) {
    VV_REQUIRE_CORPUS();
    std::vector<std::string> originals;
    for (const std::string& name : corpus::Files({".jpg", ".jpeg"})) originals.push_back(corpus::Path(name));
    const std::string extra = corpus::Path("extra");
    if (fs::is_directory(extra))
        for (const auto& entry : fs::directory_iterator(extra))
            if (entry.path().extension() == ".jpg") originals.push_back(entry.path().string());
    ASSERT_FALSE(originals.empty());
    const std::vector<Tags> before = ExiftoolAll(originals);
    ASSERT_EQ(before.size(), originals.size());

    fixture::TempDir dir, temp;
    fixture::ScopedTempFolder tempFolder(temp.Utf8Path(""));
    for (const Writer& writer : kWriters) {
        std::vector<std::string> written;
        std::vector<size_t> source;  // index into originals
        std::vector<fixture::Bytes> once;
        for (size_t i = 0; i < originals.size(); ++i) {
            SCOPED_TRACE(std::string(writer.name) + ": " + originals[i]);
            const fixture::Bytes original = fixture::ReadAll(platform::Utf8ToUtf16(originals[i]));
            const std::string copy = dir.Utf8Path(std::string(writer.name) + "-" + fs::path(originals[i]).filename().string());
            const std::u16string path = dir.Write(fs::path(copy).filename().string(), original);
            if (!writer.write(path)) {
                EXPECT_EQ(fixture::ReadAll(path), original) << "a refused file changed";
                continue;
            }
            const fixture::Bytes out = fixture::ReadAll(path);
            const uint64_t scan = ScanOffset(original), scanAfter = ScanOffset(out);
            ASSERT_LE(scan, original.size());
            EXPECT_EQ(out.size() - scanAfter, original.size() - scan) << "the image data or what follows it changed";
            EXPECT_TRUE(out.size() - scanAfter == original.size() - scan &&
                        std::equal(original.begin() + long(scan), original.end(), out.begin() + long(scanAfter)))
                << "the image data or what follows it changed";
            // The same write once more: not one byte more, not one changed.
            writer.write(path);
            EXPECT_EQ(fixture::ReadAll(path), out) << "a second identical write changed the file";
            written.push_back(copy);
            source.push_back(i);
        }
        const std::vector<Tags> after = ExiftoolAll(written);
        ASSERT_EQ(after.size(), written.size()) << writer.name;
        for (size_t k = 0; k < written.size(); ++k) {
            SCOPED_TRACE(std::string(writer.name) + ": " + originals[source[k]]);
            for (const auto& [key, value] : writer.written) {  // one of the tags of the name
                const auto [from, to] = after[k].equal_range(key);
                EXPECT_TRUE(std::any_of(from, to, [&](const auto& tag) { return tag.second == value; })) << key;
            }
            const std::string changed = Difference(Kept(writer, before[source[k]]), Kept(writer, after[k]));
            EXPECT_TRUE(changed.empty()) << changed;
            // The datasets the sheet read and wrote back keep their values
            // (an empty one is not written; one the file did not have may
            // come from its XMP).
            for (const char* dataset : writer.rewritten) {
                const std::string key = std::string("IPTC:") + dataset;
                std::multimap<std::string, std::string> was, now;
                for (auto [at, to] = before[source[k]].equal_range(key); at != to; ++at)
                    if (!at->second.empty()) was.insert(*at);
                if (was.empty()) continue;
                const auto [from, to] = after[k].equal_range(key);
                now.insert(from, to);
                EXPECT_EQ(now, was) << key;
            }
            EXPECT_EQ(after[k].count("ExifTool:Error"), 0u);
        }
        EXPECT_TRUE(fs::is_empty(fs::u8path(temp.Utf8Path("")))) << "a temporary file was left";
    }
}

}  // namespace
