// Rewriting an image file with one byte range replaced, the way every writer
// of the plug-in changes a file (the IPTC, comment and EXIF writers).
//
// The new file is built as "VantaviewTemp.jpg" in the system temporary
// folder. Only when it was written in full (its size on disk is the number of
// bytes written) is it copied to a new file beside the original, under a name
// no other file has; only when that copy is complete and on the disk does it
// take the original's place, in one rename. So on every failure, a full disk
// included, the original is untouched, byte for byte, and neither the
// temporary file nor the copy beside the original is left behind.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vv {

inline constexpr char16_t kRewriteTempName[] = u"VantaviewTemp.jpg";
// The new file beside the original is this, eight hexadecimal digits and ".tmp".
inline constexpr char16_t kBesidePrefix[] = u"~Vantaview";

// Bytes the original must hold at an offset for the rewrite to go ahead: the
// writer's proof that the positions it measured earlier still describe the
// file (it may have changed since it was read).
struct ExpectedBytes {
    uint64_t offset = 0;
    std::vector<uint8_t> bytes;
};

struct FileRewrite {
    std::u16string_view path;
    uint64_t headLength = 0;                 // bytes copied from the start of the original
    const uint8_t* insert = nullptr;         // then these bytes
    size_t insertLength = 0;
    uint64_t tailOffset = 0;                 // then the original from here to its end (nothing
                                             // when at or past the end)
    int64_t tailLength = -1;                 // 0 or more: exactly this many tail bytes instead,
                                             // zeros standing for any beyond the original's end
    std::vector<ExpectedBytes> expect;
    bool keepDate = false;                   // the result keeps the original's three file times
};

enum class RewriteStatus {
    kDone,
    kReadOnly,        // the original has the read-only attribute; nothing was opened
    kIsTempFile,      // the original is the temporary file itself; nothing was opened
    kCantOpenSource,  // the original cannot be opened for reading (gone, locked)
    kSourceChanged,   // the original is shorter than headLength, an expectation failed,
                      // or its size or last-write time changed while it was rewritten
    kCantOpenTemp,    // the temporary file cannot be created
    kTempIncomplete,  // writing the temporary file failed or it came out short
    kCopyFailed,      // the copy beside the original could not be made in full, or it
                      // could not take the original's place
    kNoMemory,
};

// Performs the rewrite. `tempPath` receives the temporary file's full path
// (for messages). Whether the original is the temporary file is decided by
// platform::IsSameFile: full paths ignoring case on Windows, the same device
// and inode on POSIX (so a link to it counts too). The temporary file and the
// copy beside the original are removed on every outcome once created. With
// keepDate the original's creation, last-access and last-write times (as they
// were before this call read the file) are put on the result.
RewriteStatus RewriteFile(const FileRewrite& rewrite, std::u16string& tempPath);

// "%s" in a message replaced by a path (the first one only).
std::u16string WithPath(std::u16string_view format, std::u16string_view path);

// The texts a writer shows for each way a segment replacement can fail; each
// may hold "%s" for the path named in the comment.
struct RewriteMessages {
    const char16_t* readOnly;    // the original's path
    const char16_t* isTemp;      // the original's path
    const char16_t* open;        // the original's path
    const char16_t* changed;     // the original's path
    const char16_t* temp;        // the temporary file's path
    const char16_t* incomplete;  // the temporary file's path
    const char16_t* copy;
    const char16_t* memory;
};

// Puts `segment` (marker, length and payload) into a JPEG in place of the
// marker segment whose length field holds oldLength at oldOffset, or right
// after the start-of-image marker when oldLength is 0. The start marker and
// the old segment's marker and length must still stand where they were
// measured. tailLength is passed on as FileRewrite::tailLength. Returns 1, or
// 0 with the matching message in errorText.
int ReplaceJpegSegment(std::u16string_view path, uint32_t oldOffset, uint32_t oldLength,
                       const std::vector<uint8_t>& segment, bool keepDate, int64_t tailLength,
                       const RewriteMessages& messages, std::u16string& errorText);

// The temporary file's path: the temporary folder (a separator added when it
// lacks one) and kRewriteTempName.
std::u16string RewriteTempPath();

// For tests: called once the temporary file is complete and closed, before
// anything is done to the original (to change the original meanwhile, fill
// its disk...). An empty function removes it.
void SetRewriteHook(std::function<void()> hook);

}  // namespace vv
