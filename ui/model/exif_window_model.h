// What the EXIF information window shows and decides, without a window: the
// list rows, the hidden-tags list, the saved placement, the layout, and the
// tables that map keys and commands to actions. The Win32 half (ui/) only
// moves these values in and out of controls; the native tests use them as
// they are.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "exif/tag_record.h"
#include "exif_window_ids.h"
#include "window_placement.h"

namespace vv {

// ------------------------------------------------------------ rows

struct ExifListRow {
    uint32_t tag = 0;
    std::u16string number;  // column 0: decimal tag, empty for tag 0 or a nameless row
    std::u16string name;    // column 1
    std::u16string value;   // column 2
};

struct ExifListModel {
    std::vector<ExifListRow> rows;
    // +2 for each shown latitude row (402), +4 for each longitude row (404):
    // a position is offered only at 6 or more, so hiding either hides the maps.
    int gpsScore = 0;
    bool HasGps() const { return gpsScore >= 6; }
};

// The rows of the list for the first `count` records: every record in table
// order except those with a tag, a name and a number in `hideTags`. Names
// come from the system code page, values from UTF-8 (the long value of tags
// 270 and 37510 when it has one).
ExifListModel BuildExifListRows(const exif::TagRecordTable& table, uint32_t count, std::u16string_view hideTags);

// True when the comma-separated `list` holds a non-empty token equal to
// `numberText` (ignoring case; tokens longer than 128 characters are cut).
bool IsTagInList(std::u16string_view list, std::u16string_view numberText);

// One row of the choose-tags list: every record with a tag and a name.
struct TagChoice {
    uint32_t tag = 0;
    std::u16string number;
    std::u16string name;
    bool shown = true;  // the check box: unchecked rows are hidden
};
std::vector<TagChoice> BuildTagChoices(const exif::TagRecordTable& table, uint32_t count,
                                       std::u16string_view hideTags);

// The "HideTags" text after OK in the choose-tags dialog, edited by whole
// numbers: an unchecked number not yet listed is appended with a "," (while
// the list stays within 1022 characters); a checked number that is listed
// loses exactly its own entries (the token and the comma after it), so "71"
// never takes characters from "271". A list typed without its last comma
// gets one before a new number. Everything else stays byte for byte.
std::u16string UpdateHideTags(std::u16string list, const std::vector<TagChoice>& choices);

// ------------------------------------------------------------ clipboard

// One line per row: the name, " - " and the value when the name is not
// empty (name cut to 256 characters, value to 3072), then CR LF always.
struct ListLine {
    std::u16string name;
    std::u16string value;
};
std::u16string FormatClipboardText(const std::vector<ListLine>& lines);

// ------------------------------------------------------------ placement

// "WinPosition"/"EXIF": left, top, width, height, maximised (0/1) and the
// DPI when it was saved.
struct WinPosition {
    int left = 0, top = 0, width = 0, height = 0, maximized = 0, dpi = 0;
};
std::u16string FormatWinPosition(const WinPosition& position);
// Reads "%d,%d,%d,%d,%d,%d;" (or the five-number form without the DPI) as
// the C library's scanf would: numbers up to the first mismatch are taken,
// the rest stay 0.
WinPosition ParseWinPosition(std::u16string_view text, bool withDpi = true);

// Pulls a stored top-left corner back onto the desktop. With one monitor
// (monitorCount < 2) a left outside [work.left, work.right) becomes
// work.left and a top outside [work.top, work.bottom) becomes work.top, the
// work area being the primary one; with several, the left becomes at least
// the left of the work area of the monitor nearest to the corner.
void ClampWinPosition(WinPosition& position, int monitorCount, const WinRect& workArea);

// The stored size at the current DPI: scaled by current/stored when the
// stored DPI is known and differs.
void SizeForDpi(const WinPosition& position, int currentDpi, int* width, int* height);

// ------------------------------------------------------------ layout

struct ColumnWidths {
    int number = 0, name = 0, value = 0;
};
// For a list `listWidth` pixels wide at `dpi`: S(5), S(15) + W/3, 2(W/3) - S(40).
ColumnWidths ExifColumnWidths(int listWidth, int dpi);

enum class ChildKind { kGeneric, kListView, kButton };
// By window class: a name containing "SysListView32" is a list view, "button"
// (any case) a button.
ChildKind ClassifyChild(std::u16string_view className);

// System metrics the list's size depends on.
struct LayoutMetrics {
    int borderWidth = 1;  // SM_CXBORDER
    int menuSize = 18;    // SM_CYMENUSIZE
};
// A child's new rectangle (client coordinates) when the client area goes
// from oldWidth x oldHeight to newWidth x newHeight.
WinRect LayoutChild(ChildKind kind, const WinRect& child, int oldWidth, int oldHeight, int newWidth, int newHeight,
                    const LayoutMetrics& metrics);

// ------------------------------------------------------------ keys and commands

enum class ExifAction {
    kNone,
    kToParent,      // the key goes to the viewer (it changes image)
    kFocusParent,
    kDestroy,
    kCommand,       // a WM_COMMAND posted to the window
};
struct KeyBinding {
    int key;
    ExifAction action;
    int command;  // for kCommand
};
// The list's keys (virtual-key codes); {key, kNone, 0} for any other key.
KeyBinding ExifKeyBinding(int virtualKey);

// The context-menu items that need a position: enabled only while the map
// buttons are shown.
inline constexpr int kGpsMenuItems[] = {IDC_EXIF_GOOGLE_MAPS, IDM_GEOHACK,  IDC_EXIF_OPENSTREETMAP,
                                        IDC_EXIF_GOOGLE_EARTH, IDM_KAKAOMAP, IDM_NAVERMAP,
                                        IDM_BINGMAPS,          IDM_BINGMAPS_APP};
bool NeedsPosition(int command);

// The key of the Alt shortcut a menu item's text shows after its tab
// ("...\tAlt+S" gives 'S', upper case), 0 for none. The menu's texts are the
// one list of the window's Alt shortcuts.
char16_t AltShortcutKey(std::u16string_view menuText);

}  // namespace vv
