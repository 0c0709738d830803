// Resource and control identifiers of the comment dialogs (comment_dialog.rc
// and comment_dialog.cpp). Plain macros: the resource compiler reads this
// file too.
#pragma once

// Editing a JPEG's comment; showing a PNG's text.
#define IDD_COMMENT_EDIT 273
#define IDD_PNG_TEXT 277

#define IDC_COMMENT_TEXT 1407
#define IDC_COMMENT_FILE 1408
#define IDC_COMMENT_KEEP_DATE 1411
#define IDC_COMMENT_CLEAR_SPACES 1412
#define IDC_COMMENT_APPEND 1415
#define IDC_COMMENT_READ_ONLY 1424
#define IDC_COMMENT_AUTOMATIC 1427
#define IDC_COMMENT_ANSI 1428
#define IDC_COMMENT_UNICODE 1429
#define IDC_COMMENT_HELP 3083
