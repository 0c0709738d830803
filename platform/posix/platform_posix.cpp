// The POSIX implementation of the platform layer (native host, tests, fuzzers).
#include <fcntl.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <sstream>
#include <thread>

#include "../ini.h"
#include "../platform.h"

extern char** environ;

namespace platform {
namespace {

std::string NarrowPath(std::u16string_view path) { return Utf16ToUtf8(path); }

class PosixFile final : public File {
public:
    explicit PosixFile(FILE* f) : f_(f) {}
    ~PosixFile() override { std::fclose(f_); }
    bool Seek(int64_t offset, SeekFrom from) override {
        int whence = from == SeekFrom::kBegin ? SEEK_SET : from == SeekFrom::kCurrent ? SEEK_CUR : SEEK_END;
        return fseeko(f_, static_cast<off_t>(offset), whence) == 0;
    }
    int64_t Tell() override { return ftello(f_); }
    int64_t Size() override {
        struct stat st {};
        if (fstat(fileno(f_), &st) != 0) return -1;
        return st.st_size;
    }
    size_t Read(void* buffer, size_t n) override { return n ? std::fread(buffer, 1, n, f_) : 0; }
    size_t Write(const void* buffer, size_t n) override { return n ? std::fwrite(buffer, 1, n, f_) : 0; }
    bool Flush() override { return std::fflush(f_) == 0; }
    bool Sync() override { return std::fflush(f_) == 0 && fsync(fileno(f_)) == 0; }

private:
    FILE* f_;
};

// A file opened for reading: the descriptor itself, read at a position of
// our own, so that a seek costs no system call and a read one. The size is
// the one found when the file was opened.
class PosixReadFile final : public File {
public:
    PosixReadFile(int fd, int64_t size) : fd_(fd), size_(size) {}
    ~PosixReadFile() override { close(fd_); }
    bool Seek(int64_t offset, SeekFrom from) override {
        const int64_t origin = from == SeekFrom::kBegin ? 0 : from == SeekFrom::kCurrent ? position_ : size_;
        // A negative position fails, as it does for a C stream.
        if (offset < 0 ? offset < -origin : offset > INT64_MAX - origin) return false;
        position_ = origin + offset;
        return true;
    }
    int64_t Tell() override { return position_; }
    int64_t Size() override { return size_; }
    size_t Read(void* buffer, size_t n) override {
        auto* out = static_cast<char*>(buffer);
        size_t total = 0;
        while (total < n) {
            const ssize_t got = pread(fd_, out + total, n - total, static_cast<off_t>(position_));
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) break;
            total += static_cast<size_t>(got);
            position_ += got;
            // A regular file reads short only at its end: no second call to learn it.
            if (position_ >= size_) break;
        }
        return total;
    }
    size_t Write(const void*, size_t) override { return 0; }
    bool Flush() override { return true; }
    bool Sync() override { return fsync(fd_) == 0; }

private:
    int fd_;
    int64_t size_;
    int64_t position_ = 0;
};

// Windows FILETIME ticks <-> timespec.
constexpr uint64_t kEpochDelta = 116444736000000000ULL;  // 1601 -> 1970 in 100 ns
uint64_t ToTicks(const struct timespec& ts) {
    return kEpochDelta + static_cast<uint64_t>(ts.tv_sec) * 10000000ULL +
           static_cast<uint64_t>(ts.tv_nsec) / 100;
}
struct timespec FromTicks(uint64_t ticks) {
    struct timespec ts {};
    uint64_t t = ticks > kEpochDelta ? ticks - kEpochDelta : 0;
    ts.tv_sec = static_cast<time_t>(t / 10000000ULL);
    ts.tv_nsec = static_cast<long>((t % 10000000ULL) * 100);
    return ts;
}

// Windows-1252: 0x80..0x9F differ from Latin-1; 0 marks the five unassigned bytes.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

std::string ReadWhole(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

}  // namespace

std::unique_ptr<File> OpenFile(std::u16string_view path, FileMode mode) {
    std::string narrow = NarrowPath(path);
    if (narrow.empty()) return nullptr;
    // O_NONBLOCK: opening a pipe or a device must not wait for a peer; the
    // flag is dropped again for the regular file that passes.
    int flags = O_CLOEXEC | O_NONBLOCK;
    switch (mode) {
        case FileMode::kRead: flags |= O_RDONLY; break;
        case FileMode::kReadWrite: flags |= O_RDWR; break;
        case FileMode::kWrite: flags |= O_WRONLY | O_CREAT | O_NOFOLLOW; break;
        case FileMode::kCreateNew: flags |= O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW; break;
    }
    const int fd = open(narrow.c_str(), flags, mode == FileMode::kCreateNew ? 0600 : 0666);
    if (fd < 0) return nullptr;
    struct stat st {};
    if (fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || fcntl(fd, F_SETFL, flags & O_ACCMODE) != 0) {
        close(fd);
        return nullptr;
    }
    // Truncated only once it is known to be a regular file.
    if (mode == FileMode::kWrite && ftruncate(fd, 0) != 0) {
        close(fd);
        return nullptr;
    }
    if (mode == FileMode::kRead) return std::make_unique<PosixReadFile>(fd, static_cast<int64_t>(st.st_size));
    FILE* f = fdopen(fd, mode == FileMode::kReadWrite ? "r+b" : "wb");
    if (!f) {
        close(fd);
        if (mode == FileMode::kCreateNew) unlink(narrow.c_str());
        return nullptr;
    }
    return std::make_unique<PosixFile>(f);
}

bool FileExists(std::u16string_view path) {
    struct stat st {};
    return stat(NarrowPath(path).c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

PathKind KindOf(std::u16string_view path) {
    struct stat st {};
    if (stat(NarrowPath(path).c_str(), &st) != 0) return PathKind::kMissing;
    return S_ISREG(st.st_mode) ? PathKind::kRegularFile : PathKind::kOther;
}

bool MoveFileOver(std::u16string_view source, std::u16string_view target) {
    const std::string from = NarrowPath(source), to = NarrowPath(target);
    struct stat st {};
    if (stat(to.c_str(), &st) == 0) {
        if (chmod(from.c_str(), st.st_mode & 07777) != 0) return false;
        // Only a privileged user may give a file away; others keep their own.
        if (chown(from.c_str(), st.st_uid, st.st_gid) != 0 && errno != EPERM) return false;
    }
    return rename(from.c_str(), to.c_str()) == 0;
}

std::u16string FullPath(std::u16string_view path) {
    char* real = realpath(NarrowPath(path).c_str(), nullptr);
    if (!real) return std::u16string(path);
    std::u16string full = Utf8ToUtf16(real);
    std::free(real);
    return full;
}

bool IsSameFile(std::u16string_view a, std::u16string_view b) {
    struct stat sa {}, sb {};
    return stat(NarrowPath(a).c_str(), &sa) == 0 && stat(NarrowPath(b).c_str(), &sb) == 0 &&
           sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

bool RemoveFile(std::u16string_view path) { return unlink(NarrowPath(path).c_str()) == 0; }

bool IsReadOnly(std::u16string_view path) {
    struct stat st {};
    if (stat(NarrowPath(path).c_str(), &st) != 0) return false;
    return (st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

bool SetReadOnly(std::u16string_view path, bool readOnly) {
    std::string p = NarrowPath(path);
    struct stat st {};
    if (stat(p.c_str(), &st) != 0) return false;
    mode_t mode = st.st_mode & 07777;
    mode = readOnly ? (mode & ~(S_IWUSR | S_IWGRP | S_IWOTH)) : (mode | S_IWUSR);
    return chmod(p.c_str(), mode) == 0;
}

bool GetFileTimes(std::u16string_view path, FileTimes& times) {
    struct stat st {};
    if (stat(NarrowPath(path).c_str(), &st) != 0) return false;
    times.lastAccess = ToTicks(st.st_atim);
    times.lastWrite = ToTicks(st.st_mtim);
    times.creation = ToTicks(st.st_ctim);  // the nearest POSIX has
    return true;
}

bool SetFileTimes(std::u16string_view path, const FileTimes& times) {
    struct timespec ts[2] = {FromTicks(times.lastAccess), FromTicks(times.lastWrite)};
    return utimensat(AT_FDCWD, NarrowPath(path).c_str(), ts, 0) == 0;
}

std::u16string TempFolder() {
    const char* dir = std::getenv("TMPDIR");
    std::string d = dir && *dir ? dir : "/tmp";
    if (d.back() != '/') d.push_back('/');
    return Utf8ToUtf16(d);
}

std::u16string AnsiToUtf16(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (char c : text) {
        auto b = static_cast<unsigned char>(c);
        if (b >= 0x80 && b <= 0x9F) {
            char16_t w = kCp1252High[b - 0x80];
            out.push_back(w ? w : static_cast<char16_t>(b));  // unassigned: as Windows maps them
        } else {
            out.push_back(b);
        }
    }
    return out;
}

std::string Utf16ToAnsi(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        char16_t w = text[i];
        if (w < 0x80 || (w >= 0xA0 && w <= 0xFF)) { out.push_back(static_cast<char>(w)); continue; }
        char mapped = '?';
        for (int k = 0; k < 32; ++k) {
            if (kCp1252High[k] == w || (kCp1252High[k] == 0 && w == 0x80 + k)) {
                mapped = static_cast<char>(0x80 + k);
                break;
            }
        }
        // As on Windows, each half of a surrogate pair becomes its own '?'.
        out.push_back(mapped);
    }
    return out;
}

std::u16string ReadSettingString(std::u16string_view file, std::u16string_view section,
                                std::u16string_view key, std::u16string_view defaultValue) {
    auto v = ini::Find(ReadWhole(NarrowPath(file)), Utf16ToUtf8(section), Utf16ToUtf8(key));
    if (!v) return std::u16string(defaultValue);
    return Utf8ToUtf16(*v);
}

int ReadSettingInt(std::u16string_view file, std::u16string_view section, std::u16string_view key,
                  int defaultValue) {
    auto v = ini::Find(ReadWhole(NarrowPath(file)), Utf16ToUtf8(section), Utf16ToUtf8(key));
    if (!v) return defaultValue;
    const std::string& s = *v;
    size_t i = 0;
    bool negative = false;
    if (i < s.size() && s[i] == '-') { negative = true; ++i; }
    uint32_t n = 0;
    for (; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) n = n * 10 + static_cast<uint32_t>(s[i] - '0');
    return static_cast<int>(negative ? 0u - n : n);
}

bool WriteSettingString(std::u16string_view file, std::u16string_view section,
                        std::u16string_view key, std::u16string_view value) {
    const std::string path = NarrowPath(file);
    std::string text = ini::Set(ReadWhole(path), Utf16ToUtf8(section), Utf16ToUtf8(key),
                                Utf16ToUtf8(value));
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    return static_cast<bool>(out);
}

LocalTime GetLocalTime() {
    struct timespec ts {};
    clock_gettime(CLOCK_REALTIME, &ts);
    struct tm t {};
    localtime_r(&ts.tv_sec, &t);
    return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour,      t.tm_min,
            t.tm_sec,         t.tm_wday,    static_cast<int>(ts.tv_nsec / 1000000)};
}

LocalTime FileTimeToLocalTime(uint64_t ticks) {
    const struct timespec ts = FromTicks(ticks);
    struct tm t {};
    localtime_r(&ts.tv_sec, &t);
    return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour,      t.tm_min,
            t.tm_sec,         t.tm_wday,    static_cast<int>(ts.tv_nsec / 1000000)};
}

std::u16string UserName() {
    if (const struct passwd* pw = getpwuid(geteuid()); pw && pw->pw_name) return Utf8ToUtf16(pw->pw_name);
    const char* user = std::getenv("USER");
    return user ? Utf8ToUtf16(user) : std::u16string();
}

void SleepMilliseconds(unsigned milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

// Without a hook the native host hands the target to xdg-open, or, when
// VV_SHELL_OPEN_LOG names a file, appends the target to it as one line
// (the scripts use this to see what would have been opened).
bool ShellOpenNative(std::u16string_view target) {
    std::string t = Utf16ToUtf8(target);
    if (const char* log = std::getenv("VV_SHELL_OPEN_LOG"); log && *log) {
        std::ofstream out(log, std::ios::app);
        out << t << '\n';
        return static_cast<bool>(out);
    }
    pid_t pid;
    char arg0[] = "xdg-open";
    char* argv[] = {arg0, t.data(), nullptr};
    return posix_spawnp(&pid, "xdg-open", nullptr, nullptr, argv, environ) == 0;
}

}  // namespace platform
