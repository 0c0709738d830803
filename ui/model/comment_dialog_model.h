// The comment dialog without a window: what it shows for the file(s) the
// viewer passes, what its conversion choice shows and remembers, and the
// write run after "&Write". The Win32 half (ui/comment_dialog) moves these
// values in and out of controls.
#pragma once

#include <string>
#include <string_view>

#include "comment/comment_settings.h"
#include "comment/comment_writer.h"

namespace vv {

// The whole state of one call: set up by PrepareCommentDialog, edited by the
// dialog, consumed by RunCommentWrite.
struct CommentDialogState {
    std::u16string fileNames;     // as the viewer passed them: one path, or paths each followed by "|"
    std::u16string workingFile;   // the path shown (the first one in a batch)
    std::u16string caption;       // "File: %s" or "First file: %s"
    std::u16string settingsPath;  // at most 260 characters
    bool batch = false;
    bool png = false;             // the format list names PNG: text shown read-only
    bool readOnly = false;        // the working file has the read-only attribute
    std::string oldBytes;         // the old comment as stored (at most 4079 bytes)
    std::u16string oldText;       // as shown: converted, trimmed when clearSpaces
    std::u16string newText;       // the edit field's text after "&Write"
    comment::CommentSettings settings;

    bool HasOldComment() const { return !oldBytes.empty(); }
};

// Reads the settings and the working file's old comment: for a PNG (the
// format list holds ";PNG;") its text chunks, always through the ANSI code
// page; for a JPEG its COM segments through the conversion setting. A null
// or empty list gives a state with no working file.
CommentDialogState PrepareCommentDialog(std::u16string_view fileNames, std::u16string_view settingsPath,
                                        std::u16string_view formats);

// The user picked a conversion (0 automatic, 1 ANSI, 2 UTF-8): the setting
// is stored at once ("JPGComConversion") and the old comment is returned as
// that choice reads it (not trimmed).
std::u16string ChooseConversion(CommentDialogState& state, int conversion);

// "&Write" was pressed with this text and these check boxes: they go into
// the state, and the three option settings are stored.
void AcceptCommentEdit(CommentDialogState& state, std::u16string_view text, bool keepOrgDate, bool clearSpaces,
                       bool append);

// Writes the accepted text: one path with its own placeholders; a batch file
// by file, going on after a failure. Each failure's text goes to `onError`.
// Returns 1 when every file was written, else 0.
int RunCommentWrite(const CommentDialogState& state, const comment::CommentErrorSink& onError);

}  // namespace vv
