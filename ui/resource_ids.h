// Resource and control identifiers shared by Metadata.rc and the dialog code.
// Plain macros: the resource compiler reads this file too.
#pragma once

// EXIF creation dialog.
#define IDD_EXIF_CREATOR 275
#define IDC_CREATOR_LIST 1001
#define IDC_CREATOR_KEEP_DATE 1002
#define IDC_CREATOR_EDIT 1003  // the in-place editor, made while a cell is edited

// EXIF information window and its tag chooser. The context menu is the
// named resource "IDR_EXIF_CONTEXT_MENU".
#define IDD_EXIF_INFO 271
#define IDD_CHOOSE_TAGS 282
#define IDC_EXIF_LIST 1397
#define IDC_EXIF_COPY 1400
#define IDC_EXIF_GOOGLE_EARTH 1402
#define IDC_EXIF_MORE 1404
#define IDC_EXIF_GOOGLE_MAPS 1405
#define IDC_EXIF_OPENSTREETMAP 1406
#define IDC_CHOOSE_LIST 1432
#define IDC_CHOOSE_SELECT_ALL 1402
#define IDC_CHOOSE_UNSELECT_ALL 1405
#define IDM_COPY_SELECTED 40205
#define IDM_COPY_ALL 40206
#define IDM_KAKAOMAP 40207
#define IDM_NAVERMAP 40208
#define IDM_BINGMAPS 40209
#define IDM_BINGMAPS_APP 40210
#define IDM_GEOHACK 40211
#define IDM_SATELLITE 40213
#define IDM_CHOOSE_TAGS 40214

// The size grip drawn in dark dialogs.
#define IDI_SIZE_GRIP 1478
