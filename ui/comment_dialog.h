// The comment dialog behind Show_JPG_Comment_W: the comment of one JPEG, or
// of a batch of JPEGs, edited in template IDD_COMMENT_EDIT and written on
// "&Write"; or the text chunks of a PNG shown read-only in IDD_PNG_TEXT.
//
// The conversion radio buttons re-read the old comment at once and store
// "JPGComConversion"; "&Write" stores "JPGComKeepOrgDate",
// "JPGComClearSpaces" and "JPGComAppend" before anything is written. "&Help"
// (and F1) ask the viewer for its help page. Every file the writer refuses is
// reported in its own message box captioned "Vantaview"; a batch goes on
// with the next file.
#pragma once

#include <windows.h>

#include <string_view>

namespace vv {

// The viewer's help request: sent to the dialog's parent with this wParam
// and lParam 0.
inline constexpr UINT kViewerHelpMessage = 0x06A3;
inline constexpr WPARAM kCommentHelpTopic = 0x05000001;

// `fileNames` is one path, or paths each followed by "|" (a batch); a format
// list holding ";PNG;" shows the PNG text instead. Runs modally, owned by
// `parent`. Returns 1 (also after Cancel, and at once for a PNG without
// text), or 0 when a write failed or no file was given.
int ShowJpgComment(HINSTANCE instance, std::u16string_view fileNames, HWND parent, std::u16string_view settingsPath,
                   std::u16string_view formats);

}  // namespace vv
