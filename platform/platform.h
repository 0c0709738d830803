// The operating-system services the portable core uses, behind one header.
//
// Two implementations exist: platform/win32 (the DLL and vvmeta.exe) and
// platform/posix (the native host, the native tests, fuzzers and benchmarks).
// Nothing in this header includes <windows.h>. Wide text is UTF-16 in char16_t.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

// ---------------------------------------------------------------- files

// Only regular files are opened: a folder, a device or a pipe is refused at
// once (never waited on). No mode writes through a symbolic link at the
// path's last component.
enum class FileMode {
    kRead,        // existing file, binary reading ("rb")
    kWrite,       // create or truncate, binary writing ("wb")
    kReadWrite,   // existing file, binary reading and writing ("r+b")
    kCreateNew,   // a new file for binary writing, readable and writable by
                  // its owner only, that no other program has open for
                  // writing; fails when anything (a link too) has the name
};

enum class SeekFrom { kBegin, kCurrent, kEnd };

// A binary file stream opened by wide path. Like a C stream: seeking past the
// end succeeds and the next read comes back short; a negative position fails.
class File {
public:
    virtual ~File() = default;
    virtual bool Seek(int64_t offset, SeekFrom from = SeekFrom::kBegin) = 0;
    virtual int64_t Tell() = 0;
    virtual int64_t Size() = 0;
    // Reads up to n bytes; returns how many were read (short at end of file).
    virtual size_t Read(void* buffer, size_t n) = 0;
    virtual size_t Write(const void* buffer, size_t n) = 0;
    // Flushes buffered writes; false when the data could not be written.
    virtual bool Flush() = 0;
    // Flushes and has the system put the data on the disk, so that a file
    // about to replace another is complete; false when it could not.
    virtual bool Sync() { return Flush(); }

    // Reads exactly n bytes or reports false (the position is then unspecified).
    bool ReadExact(void* buffer, size_t n) { return Read(buffer, n) == n; }
    bool WriteAll(const void* buffer, size_t n) { return Write(buffer, n) == n; }
};

// Opens a file; null when it cannot be opened in that mode.
std::unique_ptr<File> OpenFile(std::u16string_view path, FileMode mode);

bool FileExists(std::u16string_view path);

// What a path names, links followed: nothing, a regular file, or something
// else (a folder, a device, a pipe, a socket).
enum class PathKind { kMissing, kRegularFile, kOther };
PathKind KindOf(std::u16string_view path);
bool RemoveFile(std::u16string_view path);

// Puts the file `source` in the place of `target` in one step: afterwards
// `target` names either the old file or the whole of `source`, never a part
// (rename on POSIX; MoveFileExW with MOVEFILE_REPLACE_EXISTING |
// MOVEFILE_WRITE_THROUGH on Windows). Both must be on the same volume. Before
// the move `source` takes over the target's permission bits and, where
// allowed, its owner (POSIX), or its attributes and creation time (Windows).
// False on failure, and then `target` is as it was.
bool MoveFileOver(std::u16string_view source, std::u16string_view target);

// The absolute form of a path: on Windows GetFullPathNameW, with short 8.3
// names made long where the file exists; on POSIX the real path with
// symbolic links resolved, or the path unchanged when it does not exist.
std::u16string FullPath(std::u16string_view path);

// Whether two paths name one file. Windows: their full paths are equal
// ignoring case (the way its file systems compare names). POSIX: both exist
// and have the same device and inode, which also sees through symbolic and
// hard links, "." and "..", and file systems that ignore case.
bool IsSameFile(std::u16string_view a, std::u16string_view b);

// The read-only attribute (Windows) or the absence of write permission (POSIX).
bool IsReadOnly(std::u16string_view path);
bool SetReadOnly(std::u16string_view path, bool readOnly);

// File times as Windows FILETIME ticks: 100 ns since 1601-01-01 UTC.
struct FileTimes {
    uint64_t creation = 0;
    uint64_t lastAccess = 0;
    uint64_t lastWrite = 0;
};
bool GetFileTimes(std::u16string_view path, FileTimes& times);
// Sets all three times. POSIX has no settable creation time: it is ignored there.
bool SetFileTimes(std::u16string_view path, const FileTimes& times);

// The system temporary folder, ending in the path separator.
std::u16string TempFolder();
constexpr char16_t kPathSeparator =
#ifdef _WIN32
    u'\\';
#else
    u'/';
#endif

// ---------------------------------------------------------- code pages

// UTF-8 <-> UTF-16. Malformed input becomes U+FFFD, as on Windows.
std::u16string Utf8ToUtf16(std::string_view text);
// The same, appended to out (a caller that makes many lines reuses one buffer).
void AppendUtf8AsUtf16(std::u16string& out, std::string_view text);
std::string Utf16ToUtf8(std::u16string_view text);
// The ANSI code page <-> UTF-16: the system's ANSI code page on Windows,
// Windows-1252 on POSIX. Characters the code page lacks become '?'.
std::u16string AnsiToUtf16(std::string_view text);
std::string Utf16ToAnsi(std::u16string_view text);

// ------------------------------------------------ private-profile settings

// Sections and keys are matched without regard to ASCII case. A missing file,
// section or key gives the default. Values are returned without surrounding
// blanks; a value in matching quotes loses the quotes.
std::u16string ReadSettingString(std::u16string_view file, std::u16string_view section,
                                std::u16string_view key, std::u16string_view defaultValue);
// The leading decimal number of the value (an optional '-' allowed); the default
// when the key is missing, 0 when the value does not start with a number.
int ReadSettingInt(std::u16string_view file, std::u16string_view section,
                  std::u16string_view key, int defaultValue);
// Writes (or replaces) one key, creating the file and the section when needed.
bool WriteSettingString(std::u16string_view file, std::u16string_view section,
                        std::u16string_view key, std::u16string_view value);

// ------------------------------------------------------ time and shell

struct LocalTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    int dayOfWeek = 0;  // 0 = Sunday
    int millisecond = 0;
};
LocalTime GetLocalTime();
// A file time (FileTimes ticks) in local time; the day of week is filled,
// the milliseconds too.
LocalTime FileTimeToLocalTime(uint64_t ticks);
// The name of the user running the program (the login name); "" when unknown.
std::u16string UserName();
void SleepMilliseconds(unsigned milliseconds);

// Opens a file or URL with the system's handler ("open" verb). Returns true
// when the request was handed over. Tests observe it through the hook below,
// which, when set, replaces the real call.
bool ShellOpen(std::u16string_view target);
using ShellOpenHook = std::function<bool(std::u16string_view target)>;
void SetShellOpenHook(ShellOpenHook hook);

}  // namespace platform
