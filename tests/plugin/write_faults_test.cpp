// The three writers (comment, IPTC, EXIF creation) under failure: whatever
// goes wrong, the original stays byte for byte or is replaced by the whole
// new file, the writer names the failure in its own words, and neither the
// temporary file nor the new file beside the original is left behind.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#ifdef _WIN32
#include <windows.h>
#endif

#include <algorithm>
#include <atomic>
#include <chrono>
#include <random>
#include <set>
#include <string>
#include <thread>

#include "comment/comment_writer.h"
#include "exif/exif_creation.h"
#include "exif/exif_writer.h"
#include "fixture/container_fixture.h"
#include "iptc/iptc_writer.h"
#include "iptc/metadata_segment.h"
#include "platform/platform.h"
#include "jpeg/file_rewrite.h"
#include "plugin/plugin_api.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#endif

namespace {

namespace fs = std::filesystem;
using fixture::Bytes;
using fixture::Join;

// What a writer says for each failure; "%s" stands for the path named.
struct Texts {
    std::u16string notAFile;    // the original
    std::u16string readOnly;    // the original
    std::u16string empty;       // the original
    std::u16string notJpeg;     // the original
    std::u16string changed;     // the original
    std::u16string temp;        // the temporary file
    std::u16string incomplete;  // the temporary file
    std::u16string replace;
};

// The comment and IPTC writers' texts differ in the data they name.
Texts DataTexts(const std::u16string& data) {
    const std::u16string head = u"Can't write " + data + u" data!\n\n";
    return {head + u"The file: '%s' is not a file but a folder, a device or a pipe.",
            head + u"The file: '%s' is read only.",
            head + u"The file: '%s' is empty.",
            head + u"The file: '%s' is not a JPEG file.",
            head + u"The file: '%s' has changed since it was read.",
            u"Can't open file for writing: %s",
            head + u"The temporary file: '%s' could not be written in full.",
            u"Can't write to input file (read only)!"};
}

struct Writer {
    const char* name;
    uint8_t marker;  // of the segment it puts right after the start-of-image marker
    std::function<int(const std::u16string& path, std::u16string& error)> write;
    Texts texts;
};

std::u16string Fill(const std::u16string& format, const std::u16string& path) {
    std::u16string text(format);
    if (const size_t at = text.find(u"%s"); at != std::u16string::npos) text.replace(at, 2, path);
    return text;
}

const Writer kWriters[] = {
    {"comment", 0xFE,
     [](const std::u16string& path, std::u16string& error) {
         uint32_t offset = 0, length = 0;
         comment::LocateComment(path, offset, length);
         return comment::WriteJpegComment(path, offset, length, "new comment", true, error);
     },
     DataTexts(u"Comment")},
    {"IPTC", 0xED,
     [](const std::u16string& path, std::u16string& error) {
         auto data = std::make_unique<iptc::IptcData>();
         iptc::ClearIptcData(*data);
         iptc::SetField(iptc::IptcField(*data, iptc::kObjectName), u"title");
         data->keepOrgDate = 1;
         uint32_t offset = 0, length = 0;
         iptc::LoadMetadataSegment(path, length, offset, 0xED, true, nullptr, false);
         return iptc::WriteIptcToJpeg(path, offset, length, *data, error);
     },
     DataTexts(u"IPTC")},
    {"EXIF", 0xE1,
     [](const std::u16string& path, std::u16string& error) {
         exif::TagRecord rows[exif::kCreatorRowCount];
         exif::InitCreatorRows(rows);
         exif::SetCreatorValue(rows[1], "Maker");
         exif::SetCreatorValue(rows[11], "2024:05:06 07:08:09");
         return exif::WriteExifToJpeg(path, rows, exif::kCreatorRowCount, 1, error);
     },
     {u"ERROR: Can't write EXIF data. The file is not a file but a folder, a device or a pipe.",
      u"ERROR: Can't write EXIF data. The file is read only.",
      u"ERROR: Can't write EXIF data. The file is empty.",
      u"ERROR: Can't write EXIF data. The file is not a JPEG file.",
      u"ERROR: Can't write EXIF data. The file has changed since it was read.",
      u"ERROR: Can't open file for writing: %s",
      u"ERROR: Can't write EXIF data. The temporary file: '%s' could not be written in full.",
      u"ERROR: Can't write to input file (read only)!"}},
};

// A JPEG without comment, IPTC or EXIF: every writer puts its segment right
// after the start-of-image marker and keeps the rest as it is. Its size, 28
// KB, is a whole number of 4 KB pages, so on a volume with no room left not
// even the smallest insertion fits.
const Bytes& Original() {
    static const Bytes bytes = [] {
        const Bytes app0 = fixture::JpegBuilder()
                               .Segment(0xE0, fixture::ToBytes(std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14)))
                               .Build();
        const Bytes scan = fixture::JpegBuilder().ScanAndEoi().Build();
        const size_t filler = 28 * 1024 - 2 - app0.size() - scan.size() - 4;
        return Join({{0xFF, 0xD8}, app0, fixture::JpegBuilder().Segment(0xE2, Bytes(filler, 0x5A)).Build(), scan});
    }();
    return bytes;
}

// The written file is the original with one whole segment of the writer's
// marker after the start-of-image marker.
void ExpectWritten(const Writer& writer, const std::u16string& path, const Bytes& original) {
    const Bytes out = fixture::ReadAll(path);
    ASSERT_GT(out.size(), original.size() + 4) << writer.name;
    const size_t inserted = out.size() - original.size();
    EXPECT_EQ(Bytes(out.begin(), out.begin() + 3), (Bytes{0xFF, 0xD8, 0xFF})) << writer.name;
    EXPECT_EQ(out[3], writer.marker) << writer.name;
    EXPECT_EQ(size_t(out[4]) << 8 | out[5], inserted - 2) << writer.name;
    EXPECT_TRUE(std::equal(original.begin() + 2, original.end(), out.begin() + 2 + inserted)) << writer.name;
}

// The names in a folder.
#ifdef _WIN32
// The C runtime's directory search stops at MAX_PATH; the system's own, in
// its long-path form, does not.
std::set<std::string> Listing(const std::string& folder) {
    std::u16string pattern = platform::Utf8ToUtf16(folder);
    std::replace(pattern.begin(), pattern.end(), u'/', u'\\');
    if (pattern.size() >= 248 && pattern.rfind(u"\\\\?\\", 0) != 0) pattern = u"\\\\?\\" + pattern;
    pattern += u"\\*";
    std::set<std::string> names;
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileW(reinterpret_cast<const wchar_t*>(pattern.c_str()), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        const std::u16string name(reinterpret_cast<const char16_t*>(found.cFileName));
        if (name != u"." && name != u"..") names.insert(platform::Utf16ToUtf8(name));
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return names;
}
#else
std::set<std::string> Listing(const std::string& folder) {
    std::set<std::string> names;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(fs::u8path(folder), ec))
        names.insert(entry.path().filename().u8string());
    return names;
}
#endif

#ifndef _WIN32
// A tmpfs of a few kilobytes mounted on a fresh folder, to run out of space
// at a chosen moment; unmounted at the end. Mounting needs root (or
// CAP_SYS_ADMIN); why() says why there is none.
class SmallVolume {
public:
    SmallVolume(const fixture::TempDir& parent, std::string_view name, size_t bytes, bool readOnly = false)
        : parent_(parent), name_(name), folder_(parent.Utf8Path(name)) {
        fs::create_directory(fs::u8path(folder_));
        const std::string options = "size=" + std::to_string(bytes);
        if (mount("tmpfs", folder_.c_str(), "tmpfs", readOnly ? MS_RDONLY : 0, options.c_str()) == 0)
            mounted_ = true;
        else
            why_ = std::string("cannot mount a small tmpfs here (needs root or CAP_SYS_ADMIN): ") +
                   std::strerror(errno);
    }
    ~SmallVolume() {
        if (mounted_) umount2(folder_.c_str(), MNT_DETACH);
    }
    bool mounted() const { return mounted_; }
    const std::string& why() const { return why_; }
    const std::string& folder() const { return folder_; }
    std::u16string Write(std::string_view name, const Bytes& bytes) const {
        return parent_.Write(name_ + "/" + std::string(name), bytes);
    }

    // Fills the volume with a file "filler" until `bytes` stay free.
    bool LeaveFree(size_t bytes) {
        struct statvfs st {};
        if (statvfs(folder_.c_str(), &st) != 0) return false;
        const size_t free = size_t(st.f_bavail) * st.f_frsize;
        if (free < bytes) return false;
        std::ofstream out(folder_ + "/filler", std::ios::binary);
        const std::string block(free - bytes, '\0');
        out.write(block.data(), static_cast<std::streamsize>(block.size()));
        return static_cast<bool>(out.flush());
    }

private:
    const fixture::TempDir& parent_;  // outlives the mount
    std::string name_, folder_;
    bool mounted_ = false;
    std::string why_;
};
#endif

// Another program's change to the original between the writer's reading
// and its replacing the file, made from the rewrite's hook.
class ScopedRewriteHook {
public:
    explicit ScopedRewriteHook(std::function<void()> hook) { vv::SetRewriteHook(std::move(hook)); }
    ~ScopedRewriteHook() { vv::SetRewriteHook({}); }
};

class WriteFaults : public ::testing::Test {
protected:
    // Made in the real temporary folder, before it is pointed at temp_:
    // dir_ for the originals, volumes_ for other temporary folders.
    fixture::TempDir dir_, temp_, volumes_;
    fixture::ScopedTempFolder tempFolder_{temp_.Utf8Path("")};

    // A failed write: the writer's text for it, the original as it was, and
    // nothing else in its folder or in the temporary folder.
    void ExpectRefused(const Writer& writer, const std::u16string& path, const std::u16string& text,
                       const Bytes& original, const std::string& folder) {
        std::u16string error;
        EXPECT_EQ(writer.write(path, error), 0) << writer.name;
        EXPECT_EQ(error, text) << writer.name;
        EXPECT_EQ(fixture::ReadAll(path), original) << writer.name;
        EXPECT_EQ(Listing(folder).size(), 1u) << writer.name << ": something beside the original ";
        EXPECT_TRUE(Listing(temp_.Utf8Path("")).empty()) << writer.name << ": the temporary file is left";
    }
};

// The message names a temporary file of the writer's own in `folder`:
// "VantaviewTemp-", eight hexadecimal digits, ".jpg".
::testing::AssertionResult NamesATemporaryFile(const std::u16string& error, const std::u16string& format,
                                               const std::string& folder) {
    const size_t at = format.find(u"%s");
    const std::u16string dir = platform::Utf8ToUtf16(folder) + platform::kPathSeparator + vv::kRewriteTempPrefix;
    const std::u16string head = format.substr(0, at) + dir, tail = u".jpg" + format.substr(at + 2);
    const size_t digits = error.size() - head.size() - tail.size();
    if (error.size() < head.size() + tail.size() || error.compare(0, head.size(), head) != 0 ||
        error.compare(error.size() - tail.size(), tail.size(), tail) != 0 || digits != 8 ||
        error.find_first_not_of(u"0123456789abcdef", head.size()) != head.size() + 8)
        return ::testing::AssertionFailure() << platform::Utf16ToUtf8(error);
    return ::testing::AssertionSuccess();
}

TEST_F(WriteFaults, ReadOnlyFileIsRefusedUntouched) {
    const std::u16string path = dir_.Write("f.jpg", Original());
    ASSERT_TRUE(platform::SetReadOnly(path, true));
    for (const Writer& writer : kWriters)
        ExpectRefused(writer, path, Fill(writer.texts.readOnly, path), Original(), dir_.Utf8Path(""));
}

TEST_F(WriteFaults, EmptyFileOrNotAJpegIsRefusedAndACutOneKeepsEveryByteItHas) {
    const Bytes png = fixture::PngFile({});
    const Bytes oneByte = {0xFF};
    const Bytes cut(Original().begin(), Original().begin() + 1000);  // inside the APP2 segment
    for (const Writer& writer : kWriters) {
        const std::u16string empty = dir_.Write("f.jpg", {});
        ExpectRefused(writer, empty, Fill(writer.texts.empty, empty), {}, dir_.Utf8Path(""));
        for (const Bytes* bad : {&png, &oneByte}) {
            const std::u16string path = dir_.Write("f.jpg", *bad);
            ExpectRefused(writer, path, Fill(writer.texts.notJpeg, path), *bad, dir_.Utf8Path(""));
        }
        const std::u16string path = dir_.Write("f.jpg", cut);
        std::u16string error;
        EXPECT_EQ(writer.write(path, error), 1) << writer.name << ": " << platform::Utf16ToUtf8(error);
        ExpectWritten(writer, path, cut);
        EXPECT_EQ(Listing(dir_.Utf8Path("")).size(), 1u) << writer.name << ": something beside the original ";
        EXPECT_TRUE(Listing(temp_.Utf8Path("")).empty()) << writer.name << ": the temporary file is left";
    }
}

TEST_F(WriteFaults, MissingOrUnwritableTemporaryFolderIsReported) {
    const std::u16string path = dir_.Write("f.jpg", Original());
    const std::string missing = volumes_.Utf8Path("missing");
    for (const Writer& writer : kWriters) {
        fixture::ScopedTempFolder gone(missing);
        std::u16string error;
        EXPECT_EQ(writer.write(path, error), 0) << writer.name;
        EXPECT_TRUE(NamesATemporaryFile(error, writer.texts.temp, missing)) << writer.name;
        EXPECT_EQ(fixture::ReadAll(path), Original()) << writer.name;
        EXPECT_EQ(Listing(dir_.Utf8Path("")).size(), 1u) << writer.name;
    }
#ifndef _WIN32  // an unwritable folder needs a security descriptor there; the native suite runs this part
    // Root writes into any folder: it gets a read-only volume instead.
    std::unique_ptr<SmallVolume> volume;
    std::string locked = volumes_.Utf8Path("locked");
    if (geteuid() == 0) {
        volume = std::make_unique<SmallVolume>(volumes_, "locked", 64 * 1024, true);
        if (!volume->mounted()) GTEST_SKIP() << volume->why();
    } else {
        fs::create_directory(fs::u8path(locked));
        fs::permissions(fs::u8path(locked), fs::perms::owner_read | fs::perms::owner_exec);
    }
    for (const Writer& writer : kWriters) {
        fixture::ScopedTempFolder tempFolder(locked);
        std::u16string error;
        EXPECT_EQ(writer.write(path, error), 0) << writer.name;
        EXPECT_TRUE(NamesATemporaryFile(error, writer.texts.temp, locked)) << writer.name;
        EXPECT_EQ(fixture::ReadAll(path), Original()) << writer.name;
        EXPECT_EQ(Listing(dir_.Utf8Path("")).size(), 1u) << writer.name;
    }
#endif
}

// Out of space while writing the temporary file, and while replacing the
// original with it. The measured fault of the second: the copy back over the
// original truncated it first, ran out of space, and then the complete
// temporary file was deleted. No small volume can be made under Windows.
#ifndef _WIN32
TEST_F(WriteFaults, DiskFullKeepsTheOriginal) {
    const std::u16string path = dir_.Write("f.jpg", Original());
    for (const Writer& writer : kWriters) {
        SmallVolume temp(volumes_, writer.name + std::string(" temp"), 64 * 1024);
        SmallVolume full(volumes_, writer.name, 64 * 1024);
        if (!temp.mounted() || !full.mounted()) GTEST_SKIP() << temp.why();
        ASSERT_TRUE(temp.LeaveFree(4096));
        {
            fixture::ScopedTempFolder tempFolder(temp.folder());
            std::u16string error;
            EXPECT_EQ(writer.write(path, error), 0) << writer.name;
            EXPECT_TRUE(NamesATemporaryFile(error, writer.texts.incomplete, temp.folder())) << writer.name;
            EXPECT_EQ(fixture::ReadAll(path), Original()) << writer.name;
            EXPECT_EQ(Listing(temp.folder()), std::set<std::string>{"filler"}) << writer.name;
        }
        const std::u16string onFull = full.Write("full.jpg", Original());
        ASSERT_TRUE(full.LeaveFree(0));
        std::u16string error;
        EXPECT_EQ(writer.write(onFull, error), 0) << writer.name;
        EXPECT_EQ(error, writer.texts.replace) << writer.name;
        EXPECT_EQ(fixture::ReadAll(onFull), Original()) << writer.name;
        EXPECT_EQ(Listing(full.folder()), (std::set<std::string>{"filler", "full.jpg"})) << writer.name;
        EXPECT_TRUE(Listing(temp_.Utf8Path("")).empty()) << writer.name;
    }
    EXPECT_EQ(Listing(dir_.Utf8Path("")), std::set<std::string>{"f.jpg"});
}
#endif

TEST_F(WriteFaults, FileChangedBetweenReadingAndReplacingIsLeftAsTheOtherWriterLeftIt) {
    const std::u16string path = dir_.Write("f.jpg", Original());
    const Bytes changed = Join({Original(), {0x00}});
    ScopedRewriteHook hook([&] { dir_.Write("f.jpg", changed); });
    for (const Writer& writer : kWriters) {
        dir_.Write("f.jpg", Original());
        ExpectRefused(writer, path, Fill(writer.texts.changed, path), changed, dir_.Utf8Path(""));
    }
}

TEST_F(WriteFaults, LongAndNonAsciiPathsAreWritten) {
    // Folders and file of 300 characters and more, both for the original and
    // for the temporary folder; then names in four scripts.
    const std::string deep = std::string(70, 'd') + "/" + std::string(70, 'e') + "/" + std::string(70, 'f') + "/" +
                             std::string(70, 'g');
    const std::string other = "Ordner \xC3\xA9\xE4\xB8\xAD \xF0\x9F\x98\x80";
    const struct {
        std::string folder, name, temp;
    } cases[] = {{deep, std::string(40, 'n') + ".jpg", deep + "/t"},
                 {other, "Bild \xC3\xBC \xD0\x96 \xF0\x9F\x98\x80.jpg", other + "/Temp \xC3\xA4"}};
    for (const auto& c : cases) {
        std::error_code ec;
        fs::create_directories(fs::u8path(dir_.Utf8Path(c.temp)), ec);
        if (ec) GTEST_SKIP() << "the system refuses the folder " << c.folder << ": " << ec.message();
        fixture::ScopedTempFolder tempFolder(dir_.Utf8Path(c.temp));
        for (const Writer& writer : kWriters) {
            const std::u16string path = dir_.Write(c.folder + "/" + c.name, Original());
            std::u16string error;
            EXPECT_EQ(writer.write(path, error), 1) << writer.name << ": " << platform::Utf16ToUtf8(error);
            ExpectWritten(writer, path, Original());
            const auto names = Listing(dir_.Utf8Path(c.folder));
            EXPECT_EQ(names.size(), 2u) << writer.name << ": " << ::testing::PrintToString(names);  // the file and the temp folder
            EXPECT_TRUE(Listing(dir_.Utf8Path(c.temp)).empty()) << writer.name;
        }
    }
}

// A file or a link planted at the temporary file's old fixed name, or any
// other name in the temporary folder, is never written through: each writer
// makes a new file of its own there. Before, a link "VantaviewTemp.jpg" to
// another file had that file overwritten with the new JPEG.
TEST_F(WriteFaults, NothingPlantedInTheTemporaryFolderIsWrittenThrough) {
    const Bytes victim = fixture::ToBytes("another program's file, not to be touched");
    const std::u16string target = volumes_.Write("victim.dat", victim);
    const std::string planted = temp_.Utf8Path("VantaviewTemp.jpg");
    std::error_code ec;
    for (const std::string& kind : {std::string("hard link"), std::string("symbolic link")}) {
        fs::remove(fs::u8path(planted), ec);
        if (kind == "hard link") fs::create_hard_link(fs::path(target), fs::u8path(planted), ec);
        else fs::create_symlink(fs::path(target), fs::u8path(planted), ec);
        if (ec) {
            // Wine before 9 makes no symbolic links: the hard link shows the same.
            std::cout << "[  NOTE    ] no " << kind << " can be made here: " << ec.message() << "\n";
            continue;
        }
        for (const Writer& writer : kWriters) {
            const std::u16string path = dir_.Write("f.jpg", Original());
            std::u16string error;
            EXPECT_EQ(writer.write(path, error), 1) << kind << ", " << writer.name << ": " << platform::Utf16ToUtf8(error);
            ExpectWritten(writer, path, Original());
            EXPECT_EQ(fixture::ReadAll(target), victim) << kind << ", " << writer.name;
            EXPECT_EQ(Listing(temp_.Utf8Path("")), std::set<std::string>{"VantaviewTemp.jpg"}) << writer.name;
        }
    }
    // A file of the user's under that name is an ordinary file to write.
    fs::remove(fs::u8path(planted), ec);
    for (const Writer& writer : kWriters) {
        const std::u16string own = temp_.Write("VantaviewTemp.jpg", Original());
        std::u16string error;
        EXPECT_EQ(writer.write(own, error), 1) << writer.name << ": " << platform::Utf16ToUtf8(error);
        ExpectWritten(writer, own, Original());
        EXPECT_EQ(Listing(temp_.Utf8Path("")), std::set<std::string>{"VantaviewTemp.jpg"}) << writer.name;
    }
}

// What a copy over the original kept, the new file that replaces it keeps
// too: the file times (keep-date is set), on POSIX the permission bits and
// a symbolic link, which stays a link to the rewritten file.
TEST_F(WriteFaults, ReplacedFileKeepsTimesPermissionsAndLinks) {
    platform::FileTimes old;
    old.creation = old.lastAccess = old.lastWrite = 132000000000000000ULL;  // 2019
    for (const Writer& writer : kWriters) {
        const std::string folder = dir_.Utf8Path(writer.name);
        fs::create_directory(fs::u8path(folder));
        const std::u16string path = dir_.Write(std::string(writer.name) + "/f.jpg", Original());
        ASSERT_TRUE(platform::SetFileTimes(path, old));
        std::u16string target = path;
#ifndef _WIN32
        fs::permissions(fs::path(path), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
        target = dir_.Path(std::string(writer.name) + "/link.jpg");
        fs::create_symlink(fs::path(path), fs::path(target));
#endif
        std::u16string error;
        EXPECT_EQ(writer.write(target, error), 1) << writer.name << ": " << platform::Utf16ToUtf8(error);
        ExpectWritten(writer, path, Original());
        platform::FileTimes now;
        ASSERT_TRUE(platform::GetFileTimes(path, now));
        EXPECT_EQ(now.lastWrite, old.lastWrite) << writer.name;
#ifdef _WIN32
        EXPECT_EQ(now.creation, old.creation) << writer.name;
#else
        EXPECT_TRUE(fs::is_symlink(fs::path(target))) << writer.name;
        EXPECT_EQ(fs::status(fs::path(path)).permissions(),
                  fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
        EXPECT_EQ(Listing(folder), (std::set<std::string>{"f.jpg", "link.jpg"})) << writer.name;
#endif
    }
}

// What names no regular file (a folder, a device, a pipe) is refused by
// every writer before anything is made, and every reader finds nothing in
// it, without waiting: a pipe with no program at its other end used to hold
// every reader and writer forever.
TEST_F(WriteFaults, FoldersDevicesAndPipesAreRefusedAtOnce) {
    std::vector<std::u16string> targets = {dir_.Path("folder.jpg")};
    fs::create_directory(fs::path(targets[0]));
#ifdef _WIN32
    targets.push_back(u"NUL");
#else
    targets.push_back(u"/dev/null");
    const std::string pipe = dir_.Utf8Path("pipe.jpg");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    targets.push_back(platform::Utf8ToUtf16(pipe));
    // Should anything wait on the pipe, a writer at its other end lets it go
    // after a while, so the test fails instead of hanging.
    std::atomic<bool> done{false}, waited{false};
    std::thread watchdog([&] {
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (!done && std::chrono::steady_clock::now() < until) std::this_thread::sleep_for(std::chrono::milliseconds(20));
        while (!done) {
            const int fd = open(pipe.c_str(), O_WRONLY | O_NONBLOCK);
            if (fd >= 0) {
                waited = true;
                close(fd);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    });
#endif
    for (const std::u16string& target : targets) {
        SCOPED_TRACE(platform::Utf16ToUtf8(target));
        for (const Writer& writer : kWriters) {
            std::u16string error;
            EXPECT_EQ(writer.write(target, error), 0) << writer.name;
            EXPECT_EQ(error, Fill(writer.texts.notAFile, target)) << writer.name;
            EXPECT_TRUE(Listing(temp_.Utf8Path("")).empty()) << writer.name;
        }
        std::u16string out(4096, u'#');
        uint32_t size = 7;
        EXPECT_EQ(vv::GetExifInfos(target.c_str(), &size, nullptr, nullptr, nullptr, nullptr, 0), 0u);
        EXPECT_EQ(vv::LoadData_EXIF_W(target.c_str(), out.data(), 4096, 3), 0);
        vv::LoadTag_EXIF_W(target.c_str(), 271, out.data(), 4096);  // answers 1 and no text for a file without EXIF
        EXPECT_EQ(out[0], u'\0');
        EXPECT_EQ(vv::LoadData_IPTC_W(target.c_str(), out.data(), 4096, 3), 0);
        EXPECT_EQ(vv::LoadTag_IPTC_W(target.c_str(), 120, out.data(), 4096), 0);
        EXPECT_EQ(vv::Load_Comment_W(target.c_str(), out.data(), 4096, 0, u";PNG;"), 0);
        EXPECT_EQ(out[0], u'\0');
    }
#ifndef _WIN32
    done = true;
    watchdog.join();
    EXPECT_FALSE(waited) << "a reader or writer waited on the pipe";
#endif
#ifdef _WIN32
    EXPECT_EQ(Listing(dir_.Utf8Path("")), std::set<std::string>{"folder.jpg"});
#else
    EXPECT_EQ(Listing(dir_.Utf8Path("")), (std::set<std::string>{"folder.jpg", "pipe.jpg"}));
#endif
}

// Writers running side by side (two viewer windows, or the viewer and a
// batch) on different files, many rounds: every file comes out exactly as a
// writer alone makes it. With one fixed temporary name, one writer's file
// took the other's photo, and both reported success.
TEST_F(WriteFaults, WritersSideBySideNeverMixTheirFiles) {
    constexpr int kThreads = 4, kFilesEach = 6, kRounds = 3;
    // Files of different sizes and contents, so that any mix shows.
    auto original = [](int thread, int file) {
        std::mt19937 random(static_cast<unsigned>(thread * 1000 + file));
        Bytes filler(12000 + static_cast<size_t>(random() % 40000));
        for (uint8_t& b : filler) b = static_cast<uint8_t>(random());
        return fixture::JpegBuilder().Soi().Segment(0xE2, filler).ScanAndEoi().Build();
    };
    // What each file must become: the writers run one after the other, alone.
    std::vector<Bytes> expected;
    for (int t = 0; t < kThreads; ++t)
        for (int f = 0; f < kFilesEach; ++f) {
            const std::u16string path = dir_.Write("alone.jpg", original(t, f));
            std::u16string error;
            for (const Writer& writer : kWriters) ASSERT_EQ(writer.write(path, error), 1) << platform::Utf16ToUtf8(error);
            expected.push_back(fixture::ReadAll(path));
        }
    for (int round = 0; round < kRounds; ++round) {
        std::vector<std::u16string> paths;
        for (int t = 0; t < kThreads; ++t)
            for (int f = 0; f < kFilesEach; ++f)
                paths.push_back(dir_.Write("r" + std::to_string(round) + "t" + std::to_string(t) + "f" +
                                               std::to_string(f) + ".jpg",
                                           original(t, f)));
        std::atomic<int> failures{0};
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back([&, t] {
                for (const Writer& writer : kWriters)
                    for (int f = 0; f < kFilesEach; ++f) {
                        std::u16string error;
                        if (writer.write(paths[size_t(t * kFilesEach + f)], error) != 1) ++failures;
                    }
            });
        for (std::thread& thread : threads) thread.join();
        EXPECT_EQ(failures, 0) << "round " << round;
        int wrong = 0;
        for (size_t i = 0; i < paths.size(); ++i) wrong += fixture::ReadAll(paths[i]) != expected[i];
        EXPECT_EQ(wrong, 0) << "round " << round << ": " << wrong << " of " << paths.size() << " files are not what a writer alone makes";
        EXPECT_TRUE(Listing(temp_.Utf8Path("")).empty()) << "round " << round;
    }
}

}  // namespace
