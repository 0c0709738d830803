// Rewriting an image file with byte ranges replaced, the way every writer of
// the plug-in changes a file (the IPTC, comment and EXIF writers).
//
// The new file is built in the system temporary folder under a name of its
// own ("VantaviewTemp-" eight hexadecimal digits ".jpg"), created there
// exclusively: never through a link, never a file another writer has, so
// writers running side by side cannot write into each other's files. Only
// when it holds exactly what was meant (read back and compared by checksum
// and size) is it copied to a new file beside the original, under a name no
// other file has; only when that copy too is complete, checked the same way
// and on the disk does it take the original's place, in one rename. So on
// every failure, a full disk included, the original is untouched, byte for
// byte, and neither the temporary file nor the copy beside the original is
// left behind.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "jpeg/marker_walk.h"
#include "platform/platform.h"

namespace vv {

// The temporary file's name: this, eight hexadecimal digits and ".jpg".
inline constexpr char16_t kRewriteTempPrefix[] = u"VantaviewTemp-";
// The new file beside the original is this, eight hexadecimal digits and ".tmp".
inline constexpr char16_t kBesidePrefix[] = u"~Vantaview";

// One piece of the new file: a range of the original, or new bytes.
struct RewritePiece {
    uint64_t offset = 0;             // the original from here,
    int64_t length = -1;             // this many bytes (the original must hold them all),
                                     // or, with -1, to its end (nothing when at or past it)
    const uint8_t* bytes = nullptr;  // when not null: these bytes instead
    size_t byteCount = 0;

    static RewritePiece Original(uint64_t offset, int64_t length) { return {offset, length, nullptr, 0}; }
    static RewritePiece New(const uint8_t* bytes, size_t count) { return {0, 0, bytes, count}; }
};

// Decides the new file on the original, which the rewrite opens once and
// reads through for everything it does: fills `pieces` (the new file, in
// order), or answers false when the original is not the file the writer
// measured earlier (then nothing is made).
using RewritePlan = std::function<bool(platform::File& original, std::vector<RewritePiece>& pieces)>;

struct FileRewrite {
    std::u16string_view path;
    std::vector<uint8_t> signature;  // the bytes every file of its type starts with
    RewritePlan plan;                // called once the signature was found
    bool keepDate = false;           // the result keeps the original's three file times
};

enum class RewriteStatus {
    kDone,
    kNotAFile,        // the path names a folder, a device or a pipe; nothing was opened
    kReadOnly,        // the original has the read-only attribute; nothing was opened
    kCantOpenSource,  // the original cannot be opened for reading (gone, locked)
    kEmpty,           // the original holds no byte
    kWrongType,       // the original does not start with the signature
    kSourceChanged,   // the plan refused the original, it no longer holds a range
                      // a piece takes, or its size or last-write time changed
                      // while it was rewritten
    kCantOpenTemp,    // the temporary file cannot be created
    kTempIncomplete,  // writing the temporary file failed, or it does not hold what was written
    kCopyFailed,      // the copy beside the original could not be made in full, or it
                      // could not take the original's place
    kNoMemory,
};

// Performs the rewrite. `tempPath` receives the temporary file's full path
// (for messages; the first name tried when none could be created). The
// temporary file and the copy beside the original are removed on every
// outcome once created. With keepDate the original's creation, last-access
// and last-write times (as they were before this call read the file) are put
// on the result.
RewriteStatus RewriteFile(const FileRewrite& rewrite, std::u16string& tempPath);

// "%s" in a message replaced by a path (the first one only).
std::u16string WithPath(std::u16string_view format, std::u16string_view path);

// The texts a writer shows for each way a rewrite can fail; each may hold
// "%s" for the path named in the comment.
struct RewriteMessages {
    std::u16string notAFile;    // the original's path
    std::u16string readOnly;    // the original's path
    std::u16string open;        // the original's path
    std::u16string empty;       // the original's path
    std::u16string notJpeg;     // the original's path
    std::u16string changed;     // the original's path
    std::u16string temp;        // the temporary file's path
    std::u16string incomplete;  // the temporary file's path
    std::u16string copy;
    std::u16string memory;
};
// A writer's texts: `head` opens each sentence of its own ("Can't write
// IPTC data!\n\n"), `theFile` names the original in them ("The file: '%s'"),
// `prefix` goes before the texts every writer shares ("Can't open file: %s",
// "Can't open file for writing: %s", "Can't write to input file (read
// only)!", "Can't allocate memory").
RewriteMessages WriterMessages(std::u16string_view head, std::u16string_view theFile, std::u16string_view prefix);
// The texts of the writers that name their data ("Comment", "IPTC") in the
// words "Can't write <data> data!".
RewriteMessages DataWriterMessages(std::u16string_view data);

// What every writer refuses before it reads anything: a path that names a
// folder, a device or a pipe, and a read-only file. True when refused, with
// the message in errorText.
bool RefusedUnread(std::u16string_view path, const RewriteMessages& messages, std::u16string& errorText);

// The new segment of a JPEG, which segments go and where the new one goes,
// decided on the original as the rewrite opened it: fills `segment`
// (marker, length and payload), `remove` (in file order, none overlapping)
// and `insertAt` (the offset of the first removed segment, or 2: right after
// the start-of-image marker, where it stands when the plan leaves it);
// false when the original is not the file that was measured.
using SegmentPlan = std::function<bool(platform::File& original, std::vector<uint8_t>& segment,
                                       std::vector<jpeg::Segment>& remove, uint64_t& insertAt)>;

// Puts the planned segment into a JPEG and leaves out the segments the plan
// names; every other byte of the file, to its end, stays as it was, except
// that the file offsets the EXIF block keeps (exif_file_pointers.h) follow
// the bytes they point at. Each removed segment's marker and length must
// stand where the plan measured them. An empty file and one that does not
// start with the start-of-image marker are refused. Returns 1, or 0 with the
// matching message in errorText.
int ReplaceJpegSegments(std::u16string_view path, const SegmentPlan& plan, bool keepDate,
                        const RewriteMessages& messages, std::u16string& errorText);
// The same for one segment, measured before: the one whose length field
// holds oldLength at oldOffset (it must still be there), or none (right after
// the start-of-image marker) when oldLength is 0.
int ReplaceJpegSegment(std::u16string_view path, uint32_t oldOffset, uint32_t oldLength,
                       const std::vector<uint8_t>& segment, bool keepDate, const RewriteMessages& messages,
                       std::u16string& errorText);

// The folder the temporary files go to: the temporary folder, with a
// separator added when it lacks one.
std::u16string RewriteTempFolder();

// For tests: called once the temporary file is complete and closed, before
// anything is done to the original (to change the original meanwhile, fill
// its disk...). An empty function removes it.
void SetRewriteHook(std::function<void()> hook);

}  // namespace vv
