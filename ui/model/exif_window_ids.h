// Control and command identifiers of the EXIF information window, its tag
// chooser and its context menu: the one list the window's template, its code
// and its window-free model use. Plain macros: the resource compiler reads
// this file too (through ui/resource_ids.h). The context menu is the named
// resource "IDR_EXIF_CONTEXT_MENU".
#pragma once

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
