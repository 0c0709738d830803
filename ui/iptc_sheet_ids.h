// Resource and control identifiers of the IPTC property sheet, shared by
// iptc_sheet.rc and the sheet's code. Plain macros: the resource compiler
// reads this file too. Controls are unique within their page only.
#pragma once

// Pages.
#define IDD_IPTC_DESCRIPTION 102
#define IDD_IPTC_KEYWORDS 103
#define IDD_IPTC_CREDITS 106
#define IDD_IPTC_XMP 274
#define IDD_IPTC_OPTIONS 276

// Field editors (pages 1 to 3).
#define IDC_IPTC_BYLINE 1002
#define IDC_IPTC_BYLINE_TITLE 1003
#define IDC_IPTC_CREDIT 1004
#define IDC_IPTC_SOURCE 1005
#define IDC_IPTC_CAPTION 1006
#define IDC_IPTC_CAPTION_WRITER 1007
#define IDC_IPTC_HEADLINE 1008
#define IDC_IPTC_INSTRUCTIONS 1009
#define IDC_IPTC_OBJECT_NAME 1010
#define IDC_IPTC_CREATED_DATE 1011
#define IDC_IPTC_CITY 1012
#define IDC_IPTC_PROVINCE_STATE 1013
#define IDC_IPTC_COUNTRY 1014
#define IDC_IPTC_TRANSMISSION_REF 1015
#define IDC_IPTC_CATEGORY 1017
#define IDC_IPTC_SUB_LOCATION 1019
#define IDC_IPTC_COPYRIGHT 1020
#define IDC_IPTC_KEYWORDS 1401
#define IDC_IPTC_SUPPLEMENTAL 1403
#define IDC_IPTC_URGENCY 1405

// Other controls of the field pages.
#define IDC_IPTC_TODAY 1406
#define IDC_IPTC_FILE_LINE 1410
#define IDC_IPTC_TIFF_NOTE 1414
#define IDC_IPTC_READ_ONLY 1424
#define IDC_IPTC_UTF8_NOTE 1426
#define IDC_IPTC_HELP 3083

// The XMP page.
#define IDC_IPTC_XMP_COPY 1400
#define IDC_IPTC_XMP_LIST 1428
#define IDC_IPTC_XMP_INFO 1430
#define IDC_IPTC_XMP_IMPORT 3084

// The options page.
#define IDC_IPTC_KEEP_DATE 1411
#define IDC_IPTC_REPLACE_EMPTY 1412
#define IDC_IPTC_SKIP_EMPTY 1413
#define IDC_IPTC_SAVE_TAB 1414
#define IDC_IPTC_LOAD_XMP 1415
#define IDC_IPTC_REPLACE 1416
#define IDC_IPTC_APPEND 1417
#define IDC_IPTC_EDIT_EACH 1420
#define IDC_IPTC_FIRST_ONLY 1421

// Buttons the sheet adds for editing a batch file by file.
#define IDC_IPTC_PREVIOUS 2111
#define IDC_IPTC_NEXT 2112
#define IDC_IPTC_SAVE 2113
