// The Win32 implementation of the platform layer (Metadata.dll, vvmeta.exe).

#include <windows.h>
#include <shellapi.h>

#include "../platform.h"
#include "wide_text.h"

namespace platform {
namespace {


class Win32File final : public File {
public:
    explicit Win32File(HANDLE h) : h_(h) {}
    ~Win32File() override { CloseHandle(h_); }
    bool Seek(int64_t offset, SeekFrom from) override {
        LARGE_INTEGER li;
        li.QuadPart = offset;
        DWORD method = from == SeekFrom::kBegin ? FILE_BEGIN : from == SeekFrom::kCurrent ? FILE_CURRENT : FILE_END;
        LARGE_INTEGER target;
        LARGE_INTEGER zero{};
        // Refuse negative targets the way fseek does.
        if (from == SeekFrom::kBegin && offset < 0) return false;
        if (from != SeekFrom::kBegin) {
            LARGE_INTEGER cur;
            if (from == SeekFrom::kCurrent) SetFilePointerEx(h_, zero, &cur, FILE_CURRENT);
            else GetFileSizeEx(h_, &cur);
            if (cur.QuadPart + offset < 0) return false;
        }
        return SetFilePointerEx(h_, li, &target, method) != 0;
    }
    int64_t Tell() override {
        LARGE_INTEGER zero{}, cur;
        if (!SetFilePointerEx(h_, zero, &cur, FILE_CURRENT)) return -1;
        return cur.QuadPart;
    }
    int64_t Size() override {
        LARGE_INTEGER size;
        return GetFileSizeEx(h_, &size) ? size.QuadPart : -1;
    }
    size_t Read(void* buffer, size_t n) override {
        size_t total = 0;
        auto* p = static_cast<char*>(buffer);
        while (total < n) {
            DWORD chunk = static_cast<DWORD>(std::min<size_t>(n - total, 1u << 30));
            DWORD got = 0;
            if (!ReadFile(h_, p + total, chunk, &got, nullptr) || got == 0) break;
            total += got;
        }
        return total;
    }
    size_t Write(const void* buffer, size_t n) override {
        size_t total = 0;
        auto* p = static_cast<const char*>(buffer);
        while (total < n) {
            DWORD chunk = static_cast<DWORD>(std::min<size_t>(n - total, 1u << 30));
            DWORD put = 0;
            if (!WriteFile(h_, p + total, chunk, &put, nullptr) || put == 0) break;
            total += put;
        }
        return total;
    }
    bool Flush() override { return FlushFileBuffers(h_) != 0; }

private:
    HANDLE h_;
};

uint64_t Ticks(const FILETIME& ft) {
    return (static_cast<uint64_t>(ft.dwHighDateTime) << 32) | ft.dwLowDateTime;
}
FILETIME FromTicks(uint64_t t) {
    FILETIME ft;
    ft.dwLowDateTime = static_cast<DWORD>(t);
    ft.dwHighDateTime = static_cast<DWORD>(t >> 32);
    return ft;
}

std::u16string FromCodePage(UINT cp, std::string_view text) {
    if (text.empty()) return {};
    int n = MultiByteToWideChar(cp, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring w(static_cast<size_t>(n), L'\0');
    MultiByteToWideChar(cp, 0, text.data(), static_cast<int>(text.size()), w.data(), n);
    return ToU16string(w);
}

std::string ToCodePage(UINT cp, std::u16string_view text) {
    if (text.empty()) return {};
    std::wstring w = ToWstring(text);
    int n = WideCharToMultiByte(cp, 0, w.data(), static_cast<int>(w.size()), nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<size_t>(n), '\0');
    WideCharToMultiByte(cp, 0, w.data(), static_cast<int>(w.size()), out.data(), n, nullptr, nullptr);
    return out;
}

}  // namespace

std::unique_ptr<File> OpenFile(std::u16string_view path, FileMode mode) {
    DWORD access = mode == FileMode::kRead ? GENERIC_READ
                 : mode == FileMode::kReadWrite ? GENERIC_READ | GENERIC_WRITE : GENERIC_WRITE;
    DWORD disposition = mode == FileMode::kWrite ? CREATE_ALWAYS : mode == FileMode::kCreateNew ? CREATE_NEW
                      : OPEN_EXISTING;
    // A new file is shared for reading only, so no other program writes
    // into it while it is built; CREATE_NEW fails on any existing name,
    // links and other reparse points included.
    DWORD share = mode == FileMode::kCreateNew ? FILE_SHARE_READ : FILE_SHARE_READ | FILE_SHARE_WRITE;
    DWORD flags = FILE_ATTRIBUTE_NORMAL;
    if (mode == FileMode::kCreateNew) flags |= FILE_FLAG_OPEN_REPARSE_POINT;
    HANDLE h = CreateFileW(ToWstring(path).c_str(), access, share, nullptr, disposition, flags, nullptr);
    if (h == INVALID_HANDLE_VALUE) return nullptr;
    // Devices and pipes ("CON", "\\.\pipe\...") are not files to read or rewrite.
    if (GetFileType(h) != FILE_TYPE_DISK) {
        CloseHandle(h);
        return nullptr;
    }
    return std::make_unique<Win32File>(h);
}

// Whether a path names one of the devices every folder has ("NUL",
// "CON.txt", "COM1"...) or lies in the device namespace ("\\.\pipe\x").
static bool IsDevicePath(std::u16string_view path) {
    if (path.rfind(u"\\\\.\\", 0) == 0) return true;
    const size_t slash = path.find_last_of(u"\\/:");
    std::u16string name(path.substr(slash == std::u16string_view::npos ? 0 : slash + 1));
    name = name.substr(0, name.find(u'.'));
    while (!name.empty() && (name.back() == u' ')) name.pop_back();
    for (char16_t& c : name) c = c >= u'a' && c <= u'z' ? char16_t(c - u'a' + u'A') : c;
    static constexpr const char16_t* kDevices[] = {u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
    for (const char16_t* device : kDevices)
        if (name == device) return true;
    return name.size() == 4 && (name.rfind(u"COM", 0) == 0 || name.rfind(u"LPT", 0) == 0) && name[3] >= u'0' &&
           name[3] <= u'9';
}

PathKind KindOf(std::u16string_view path) {
    // Told from the name and the attributes alone: opening a file to ask
    // would count as an access to it on some systems.
    if (IsDevicePath(path)) return PathKind::kOther;
    const DWORD attributes = GetFileAttributesW(ToWstring(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return PathKind::kMissing;
    if (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) return PathKind::kOther;
    return PathKind::kRegularFile;
}

bool FileExists(std::u16string_view path) {
    DWORD a = GetFileAttributesW(ToWstring(path).c_str());
    return a != INVALID_FILE_ATTRIBUTES && !(a & FILE_ATTRIBUTE_DIRECTORY);
}

bool MoveFileOver(std::u16string_view source, std::u16string_view target) {
    const std::wstring from = ToWstring(source), to = ToWstring(target);
    const DWORD attributes = GetFileAttributesW(to.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        // The moved file is a new one: it takes the old one's attributes and
        // creation time, as a copy over the old file would have kept them.
        HANDLE old = CreateFileW(to.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                 nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        FILETIME created;
        const bool haveCreated = old != INVALID_HANDLE_VALUE && GetFileTime(old, &created, nullptr, nullptr);
        if (old != INVALID_HANDLE_VALUE) CloseHandle(old);
        if (haveCreated) {
            HANDLE h = CreateFileW(from.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
            if (h == INVALID_HANDLE_VALUE) return false;
            const BOOL set = SetFileTime(h, &created, nullptr, nullptr);
            CloseHandle(h);
            if (!set) return false;
        }
        const DWORD keep = attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY);
        if (!SetFileAttributesW(from.c_str(), keep ? keep : FILE_ATTRIBUTE_NORMAL)) return false;
    }
    return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

std::u16string FullPath(std::u16string_view path) {
    const std::wstring p = ToWstring(path);
    DWORD n = GetFullPathNameW(p.c_str(), 0, nullptr, nullptr);
    if (n == 0) return std::u16string(path);
    std::wstring full(n, L'\0');
    DWORD m = GetFullPathNameW(p.c_str(), n, full.data(), nullptr);
    if (m == 0 || m >= n) return std::u16string(path);
    full.resize(m);
    // Short 8.3 names (GetTempPathW may answer with them) become long ones
    // where the file exists, so that one file has one full path.
    n = GetLongPathNameW(full.c_str(), nullptr, 0);
    if (n == 0) return ToU16string(full);
    std::wstring longPath(n, L'\0');
    m = GetLongPathNameW(full.c_str(), longPath.data(), n);
    if (m == 0 || m >= n) return ToU16string(full);
    return ToU16string({longPath.data(), m});
}

bool IsSameFile(std::u16string_view a, std::u16string_view b) {
    const std::wstring fa = ToWstring(FullPath(a)), fb = ToWstring(FullPath(b));
    return CompareStringOrdinal(fa.c_str(), static_cast<int>(fa.size()), fb.c_str(), static_cast<int>(fb.size()),
                                TRUE) == CSTR_EQUAL;
}

bool RemoveFile(std::u16string_view path) { return DeleteFileW(ToWstring(path).c_str()) != 0; }

bool IsReadOnly(std::u16string_view path) {
    DWORD a = GetFileAttributesW(ToWstring(path).c_str());
    return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_READONLY);
}

bool SetReadOnly(std::u16string_view path, bool readOnly) {
    std::wstring p = ToWstring(path);
    DWORD a = GetFileAttributesW(p.c_str());
    if (a == INVALID_FILE_ATTRIBUTES) return false;
    a = readOnly ? (a | FILE_ATTRIBUTE_READONLY) : (a & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    return SetFileAttributesW(p.c_str(), a) != 0;
}

bool GetFileTimes(std::u16string_view path, FileTimes& times) {
    HANDLE h = CreateFileW(ToWstring(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) return false;
    FILETIME c, a, w;
    BOOL ok = GetFileTime(h, &c, &a, &w);
    CloseHandle(h);
    if (!ok) return false;
    times.creation = Ticks(c);
    times.lastAccess = Ticks(a);
    times.lastWrite = Ticks(w);
    return true;
}

bool SetFileTimes(std::u16string_view path, const FileTimes& times) {
    HANDLE h = CreateFileW(ToWstring(path).c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                           nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) return false;
    FILETIME c = FromTicks(times.creation), a = FromTicks(times.lastAccess), w = FromTicks(times.lastWrite);
    BOOL ok = SetFileTime(h, &c, &a, &w);
    CloseHandle(h);
    return ok != 0;
}

std::u16string TempFolder() {
    wchar_t buffer[MAX_PATH + 1];
    DWORD n = GetTempPathW(MAX_PATH + 1, buffer);
    if (n == 0 || n > MAX_PATH) return u".\\";
    return ToU16string({buffer, n});
}

std::u16string AnsiToUtf16(std::string_view text) { return FromCodePage(CP_ACP, text); }
std::string Utf16ToAnsi(std::u16string_view text) { return ToCodePage(CP_ACP, text); }

std::u16string ReadSettingString(std::u16string_view file, std::u16string_view section,
                                std::u16string_view key, std::u16string_view defaultValue) {
    wchar_t buffer[4096];
    DWORD n = GetPrivateProfileStringW(ToWstring(section).c_str(), ToWstring(key).c_str(),
                                       ToWstring(defaultValue).c_str(), buffer, 4096, ToWstring(file).c_str());
    return ToU16string({buffer, n});
}

int ReadSettingInt(std::u16string_view file, std::u16string_view section, std::u16string_view key,
                  int defaultValue) {
    return static_cast<int>(GetPrivateProfileIntW(ToWstring(section).c_str(), ToWstring(key).c_str(), defaultValue,
                                                  ToWstring(file).c_str()));
}

bool WriteSettingString(std::u16string_view file, std::u16string_view section,
                        std::u16string_view key, std::u16string_view value) {
    return WritePrivateProfileStringW(ToWstring(section).c_str(), ToWstring(key).c_str(), ToWstring(value).c_str(),
                                      ToWstring(file).c_str()) != 0;
}

LocalTime GetLocalTime() {
    SYSTEMTIME st;
    ::GetLocalTime(&st);
    return {st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond, st.wDayOfWeek, st.wMilliseconds};
}

LocalTime FileTimeToLocalTime(uint64_t ticks) {
    const FILETIME utc = FromTicks(ticks);
    FILETIME local;
    SYSTEMTIME st{};
    if (!FileTimeToLocalFileTime(&utc, &local) || !FileTimeToSystemTime(&local, &st)) return {};
    return {st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond, st.wDayOfWeek, st.wMilliseconds};
}

std::u16string UserName() {
    wchar_t buffer[257];  // UNLEN + 1
    DWORD n = 257;
    if (!GetUserNameW(buffer, &n) || n == 0) return {};
    return ToU16string({buffer, n - 1});  // n counts the terminator
}

void SleepMilliseconds(unsigned milliseconds) { ::Sleep(milliseconds); }

bool ShellOpenNative(std::u16string_view target) {
    // Owned by the active window and restored if minimised, as the viewer's
    // other shell calls are.
    auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(GetActiveWindow(), L"open", ToWstring(target).c_str(), nullptr, L"", SW_RESTORE));
    return result > 32;
}

}  // namespace platform
