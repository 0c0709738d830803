// Resource and control identifiers shared by Metadata.rc and the dialog code.
// Plain macros: the resource compiler reads this file too.
#pragma once

// EXIF creation dialog.
#define IDD_EXIF_CREATOR 275
#define IDC_CREATOR_LIST 1001
#define IDC_CREATOR_KEEP_DATE 1002
#define IDC_CREATOR_EDIT 1003  // the in-place editor, made while a cell is edited

// EXIF information window and its tag chooser.
#include "model/exif_window_ids.h"

// The size grip drawn in dark dialogs.
#define IDI_SIZE_GRIP 1478
