#include "iptc_sheet.h"

#include <commctrl.h>
#include <prsht.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "dialog_kit.h"
#include "exif_window.h"
#include "guarded.h"
#include "iptc/metadata_segment.h"
#include "iptc/xmp_import.h"
#include "iptc_sheet_ids.h"
#include "model/iptc_sheet_model.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "theme.h"
#include "xmp/xmp_rows.h"

namespace vv {
namespace {

// PSM_QUERYSIBLINGS parameters every field page answers.
constexpr WPARAM kRefreshPages = 0;    // copy the record into the controls
constexpr WPARAM kStorePages = 101;    // copy the controls into the record

// The record's state word.
constexpr int32_t kSheetOpen = 5;
constexpr int32_t kSheetConfirmed = 3;  // a page received the apply notification

// The viewer's help request.
constexpr UINT kHelpMessage = 0x06A3;
constexpr WPARAM kHelpParameter = 0x05000001;

constexpr size_t kMaxPathChars = 260;
constexpr wchar_t kSheetCaption[] = L"Vantaview - IPTC information";

// The session: the record being edited and its last loaded or saved state,
// the batch's names (a hidden sorted list box, as the viewer's list order
// is not the user's), and the sheet. Static: the records are far too large
// for a stack.
struct Session {
    iptc::IptcData record;
    xmp::XmpRows xmpRows;  // the current file's XMP packet, read with its IPTC
    iptc::IptcData snapshot;
    HINSTANCE instance = nullptr;
    HWND viewer = nullptr;
    HWND names = nullptr;
    int index = 0;
    HWND sheet = nullptr;
    int darkMode = 0;
};
Session g_session;

iptc::IptcData& Record() { return g_session.record; }
std::u16string_view SettingsFile() { return iptc::FieldView(g_session.record.settingsPath, iptc::kPathChars); }
std::u16string_view CurrentFile() { return iptc::FieldView(g_session.record.fileName, iptc::kPathChars); }

int NameCount() {
    if (!g_session.names) return 1;
    return static_cast<int>(SendMessageW(g_session.names, LB_GETCOUNT, 0, 0));
}

std::u16string NameAt(int index) {
    const LRESULT length = SendMessageW(g_session.names, LB_GETTEXTLEN, static_cast<WPARAM>(index), 0);
    if (length <= 0) return {};
    std::u16string name(static_cast<size_t>(length) + 1, u'\0');
    SendMessageW(g_session.names, LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&name[0]));
    name.resize(static_cast<size_t>(length));
    return name;
}

std::vector<std::u16string> AllNames() {
    std::vector<std::u16string> names;
    for (int i = 0; i < NameCount(); ++i) names.push_back(NameAt(i));
    return names;
}

void ShowError(HWND owner, std::u16string_view text) { ShowMessage(owner, text, MB_OK | MB_ICONERROR); }

struct WaitCursor {
    WaitCursor() { SetCursor(LoadCursorW(nullptr, IDC_WAIT)); }
    ~WaitCursor() { SetCursor(LoadCursorW(nullptr, IDC_ARROW)); }
};

void RefreshPages() {
    if (g_session.sheet) PropSheet_QuerySiblings(g_session.sheet, kRefreshPages, 0);
}

void StorePages() {
    if (g_session.sheet) PropSheet_QuerySiblings(g_session.sheet, kStorePages, 0);
}

// ------------------------------------------------------------ sheet frame

// "&Previous", "&Next" and "&Save" show only while batch mode 2 walks the
// files (OK is hidden then); a TIFF cannot be written at all.
void UpdateSheetButtons() {
    HWND sheet = g_session.sheet;
    if (!sheet) return;
    HWND ok = GetDlgItem(sheet, IDOK);
    const bool walking = g_session.record.batchMode == 2;
    const bool tiff = g_session.record.isTiff != 0;
    RECT okRect = {}, tabRect = {};
    GetWindowRect(ok, &okRect);
    MapWindowPoints(nullptr, sheet, reinterpret_cast<POINT*>(&okRect), 2);
    GetWindowRect(PropSheet_GetTabControl(sheet), &tabRect);
    MapWindowPoints(nullptr, sheet, reinterpret_cast<POINT*>(&tabRect), 2);
    const int width = okRect.right - okRect.left;
    const int height = okRect.bottom - okRect.top;
    // In the row of OK, from the left edge of the pages: Previous and Next
    // side by side, Save set apart.
    const int offsets[] = {0, width + ScaleForWindow(sheet, 10), 2 * width + ScaleForWindow(sheet, 40)};
    const int ids[] = {IDC_IPTC_PREVIOUS, IDC_IPTC_NEXT, IDC_IPTC_SAVE};
    for (int i = 0; i < 3; ++i) {
        HWND button = GetDlgItem(sheet, ids[i]);
        SetWindowPos(button, nullptr, tabRect.left + offsets[i], okRect.top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
        ShowWindow(button, walking ? SW_SHOWNA : SW_HIDE);
    }
    EnableWindow(GetDlgItem(sheet, IDC_IPTC_SAVE), !tiff);
    ShowWindow(ok, walking ? SW_HIDE : SW_SHOWNA);
    EnableWindow(ok, !tiff);
}

// Writes the current file from the sheet ("&Save", or "Yes" when leaving
// an edited file); the snapshot follows a successful write.
void SaveCurrentFile() {
    WaitCursor wait;
    iptc::IptcData& record = Record();
    if (record.isTiff) return;
    StorePages();
    if (!WriteIptcSheetFile(record, g_session.index + 1,
                            [](std::u16string_view error) { ShowError(g_session.sheet, error); }))
        return;
    // The file's APP13 now stands elsewhere or has another length: the next
    // write of this file replaces the new one.
    iptc::LoadMetadataSegment(CurrentFile(), record.app13Length, record.app13Offset, iptc::kApp13Marker, true,
                              &record.isTiff, false);
    g_session.snapshot = record;
}

// The change check before leaving a file: false when the user chose Cancel.
bool MayLeaveFile() {
    if (Record().isTiff) return true;
    StorePages();
    if (!IptcTextsChanged(Record(), g_session.snapshot)) return true;
    switch (ShowMessage(g_session.sheet, u"Save IPTC changes?", MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES: SaveCurrentFile(); return true;
    case IDNO: return true;
    default: return false;
    }
}

// Asks the viewer to show the file (copy-data type 9, the name with its
// terminator).
void AskViewerToShow(const std::u16string& name) {
    if (!g_session.viewer) return;
    const std::u16string shown = name.substr(0, kMaxPathChars);
    COPYDATASTRUCT data = {};
    data.dwData = kShowFileCopyDataType;
    data.cbData = static_cast<DWORD>((shown.size() + 1) * sizeof(char16_t));
    data.lpData = const_cast<char16_t*>(shown.c_str());
    SendMessageW(g_session.viewer, WM_COPYDATA, reinterpret_cast<WPARAM>(g_session.sheet),
                 reinterpret_cast<LPARAM>(&data));
}

void MoveToFile(int step) {
    if (!MayLeaveFile()) return;
    const int target = g_session.index + step;
    if (target < 0 || target >= NameCount()) {
        MessageBeep(MB_ICONEXCLAMATION);
        return;
    }
    g_session.index = target;
    const std::u16string name = NameAt(target);
    AskViewerToShow(name);
    iptc::SetField(Record().fileName, name, iptc::kPathChars);
    LoadIptcSheetFile(Record(), &g_session.xmpRows);
    RefreshPages();
    UpdateSheetButtons();
    g_session.snapshot = Record();
}

LRESULT SheetMessage(HWND sheet, UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (HandleDarkModeMessage(sheet, message, wParam, lParam, g_session.darkMode, -1, &result))
        return result;
    if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED) {
        switch (LOWORD(wParam)) {
        case IDC_IPTC_SAVE: SaveCurrentFile(); return 0;
        case IDC_IPTC_NEXT: MoveToFile(1); return 0;
        case IDC_IPTC_PREVIOUS: MoveToFile(-1); return 0;
        case IDOK:
            if (g_session.record.batchMode == 2) return 0;  // files are written with "&Save" here
            break;
        default: break;
        }
    }
    return DefaultSubclassProc(sheet, message, wParam, lParam);
}

LRESULT CALLBACK SheetProc(HWND sheet, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
    if (message == WM_NCDESTROY) RemoveSubclass(sheet, SheetProc, id);
    return Guarded<LRESULT>(0, [&] { return SheetMessage(sheet, message, wParam, lParam); });
}

HWND AddSheetButton(HWND sheet, int id, const wchar_t* text) {
    HWND button = CreateWindowExW(0, WC_BUTTONW, text, WS_CHILD | WS_TABSTOP | BS_PUSHBUTTON, 0, 0, 10, 10, sheet,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), g_session.instance, nullptr);
    SendMessageW(button, WM_SETFONT, SendMessageW(sheet, WM_GETFONT, 0, 0), FALSE);
    return button;
}

// The one-time set-up of the sheet, run by the first page made: the sheet
// is subclassed for the batch buttons, OK becomes "&Write", and the frame
// takes the theme.
void SetUpSheet(HWND sheet) {
    iptc::IptcData& record = Record();
    if (record.pagesInitialised) return;
    record.pagesInitialised = 1;
    g_session.sheet = sheet;
    SubclassWindow(sheet, SheetProc, 0, 0);
    SetDlgItemTextW(sheet, IDOK, L"&Write");
    AddSheetButton(sheet, IDC_IPTC_PREVIOUS, L"&Previous");
    AddSheetButton(sheet, IDC_IPTC_NEXT, L"&Next");
    AddSheetButton(sheet, IDC_IPTC_SAVE, L"&Save");
    ApplyDarkModeToDialog(sheet, 0, g_session.darkMode);
    UpdateSheetButtons();
}

// The sheet opens at the viewer's client origin; a viewer low on the desktop
// would leave its buttons below the screen's edge.
int CALLBACK SheetCallback(HWND sheet, UINT message, LPARAM) {
    return Guarded(0, [&] {
        if (message == PSCB_INITIALIZED) {
            g_session.snapshot = g_session.record;
            KeepOnWorkArea(sheet);
        }
        return 0;
    });
}

// ------------------------------------------------------------ pages

// Every page of the sheet works on the session record.
struct SheetPage : DialogBase {
    explicit SheetPage(int tab) : tabIndex(tab) {}
    int tabIndex;  // remembered as LastTab when shown; -1: not remembered

    std::u16string_view SettingsPath() const override { return SettingsFile(); }
    INT_PTR OnInit(LPARAM) override {
        SetUpSheet(GetParent(window));
        Init();
        return TRUE;
    }
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_ERASEBKGND:
            // A page is painted with the tab's light texture; dark pages
            // take the dark background the controls are drawn on.
            if (!darkMode) return FALSE;
            return PaintDarkBackground(reinterpret_cast<HDC>(wParam));
        case PSM_QUERYSIBLINGS:
            if (wParam == kRefreshPages) Refresh();
            if (wParam == kStorePages) Store();
            return Reply(0);  // 0: the sheet goes on to the next page
        case WM_NOTIFY: {
            const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
            if (header.code == PSN_SETACTIVE) {
                if (tabIndex >= 0) Record().lastTab = tabIndex;
                UpdateSheetButtons();
                return Reply(0);
            }
            if (header.code == PSN_APPLY) {
                Apply();
                Record().state = kSheetConfirmed;
                return Reply(PSNRET_NOERROR);
            }
            return Notify(header);
        }
        case WM_COMMAND:
            if (LOWORD(wParam) == IDCANCEL) {
                PostMessageW(GetParent(window), WM_COMMAND, IDCANCEL, 0);
                return TRUE;
            }
            return Command(LOWORD(wParam), HIWORD(wParam));
        default: return FALSE;
        }
    }

    virtual void Init() { Refresh(); }
    virtual void Refresh() {}
    virtual void Store() {}
    virtual void Apply() { Store(); }
    virtual INT_PTR Notify(const NMHDR&) { return FALSE; }
    virtual INT_PTR Command(int, int) { return FALSE; }

    INT_PTR PaintDarkBackground(HDC dc) {
        RECT client;
        GetClientRect(window, &client);
        SetDCBrushColor(dc, kDarkBackgroundColour);
        FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        return Reply(TRUE);
    }
    bool Checked(int id) const { return IsDlgButtonChecked(window, id) == BST_CHECKED; }
    void Check(int id, bool on) { CheckDlgButton(window, id, on ? BST_CHECKED : BST_UNCHECKED); }
    void Enable(int id, bool on) { EnableWindow(GetDlgItem(window, id), on); }
    void Show(int id, bool on) { ShowWindow(GetDlgItem(window, id), on ? SW_SHOWNA : SW_HIDE); }
};

struct FieldControl {
    int control;
    int dataset;
};

constexpr FieldControl kDescriptionFields[] = {
    {IDC_IPTC_OBJECT_NAME, iptc::kObjectName}, {IDC_IPTC_BYLINE, iptc::kByline},
    {IDC_IPTC_BYLINE_TITLE, iptc::kBylineTitle}, {IDC_IPTC_COPYRIGHT, iptc::kCopyright},
    {IDC_IPTC_CAPTION, iptc::kCaption}, {IDC_IPTC_CAPTION_WRITER, iptc::kCaptionWriter},
    {IDC_IPTC_HEADLINE, iptc::kHeadline}, {IDC_IPTC_INSTRUCTIONS, iptc::kSpecialInstructions},
};
constexpr FieldControl kKeywordFields[] = {
    {IDC_IPTC_KEYWORDS, iptc::kKeywords}, {IDC_IPTC_CATEGORY, iptc::kCategory},
    {IDC_IPTC_SUPPLEMENTAL, iptc::kSupplementalCategory}, {IDC_IPTC_URGENCY, iptc::kPriority},
};
constexpr FieldControl kCreditFields[] = {
    {IDC_IPTC_CREDIT, iptc::kCredit}, {IDC_IPTC_SOURCE, iptc::kSource},
    {IDC_IPTC_CREATED_DATE, iptc::kCreatedDate}, {IDC_IPTC_CITY, iptc::kCity},
    {IDC_IPTC_SUB_LOCATION, iptc::kSubLocation}, {IDC_IPTC_PROVINCE_STATE, iptc::kProvinceState},
    {IDC_IPTC_COUNTRY, iptc::kCountry}, {IDC_IPTC_TRANSMISSION_REF, iptc::kTransmissionReference},
};

// Pages 1 to 3: edit controls bound to record fields, and the file's state.
struct FieldPage : SheetPage {
    FieldPage(int tab, const FieldControl* f, size_t n) : SheetPage(tab), fields(f), count(n) {}
    const FieldControl* fields;
    size_t count;

    void Init() override {
        for (size_t i = 0; i < count; ++i)
            SendDlgItemMessageW(window, fields[i].control, EM_LIMITTEXT, iptc::kFieldChars - 1, 0);
        Refresh();
    }
    void Refresh() override {
        const iptc::IptcData& record = Record();
        for (size_t i = 0; i < count; ++i)
            SetItemText(window, fields[i].control, iptc::FieldView(iptc::IptcField(record, fields[i].dataset)));
        const bool readOnly = platform::IsReadOnly(CurrentFile());
        if (GetDlgItem(window, IDC_IPTC_FILE_LINE)) {
            SetItemText(window, IDC_IPTC_FILE_LINE, IptcFileLine(CurrentFile(), g_session.index, NameCount(), readOnly));
            Show(IDC_IPTC_TIFF_NOTE, record.isTiff != 0);
            Show(IDC_IPTC_UTF8_NOTE, record.utf8 == 1);
        }
        Show(IDC_IPTC_READ_ONLY, readOnly);
    }
    void Store() override {
        iptc::IptcData& record = Record();
        for (size_t i = 0; i < count; ++i)
            iptc::SetField(iptc::IptcField(record, fields[i].dataset), ItemText(window, fields[i].control));
        CutPriority(record);
    }
    INT_PTR Command(int id, int code) override {
        if (code != BN_CLICKED) return FALSE;
        if (id == IDC_IPTC_TODAY) {
            const platform::LocalTime now = platform::GetLocalTime();
            char date[32];
            std::snprintf(date, sizeof date, "%04d%02d%02d", now.year, now.month, now.day);
            SetItemText(window, IDC_IPTC_CREATED_DATE, platform::Utf8ToUtf16(date));
            return TRUE;
        }
        if (id == IDC_IPTC_HELP) {
            if (g_session.viewer) SendMessageW(g_session.viewer, kHelpMessage, kHelpParameter, 0);
            return TRUE;
        }
        return FALSE;
    }
};

// The file's XMP packet as rows, and the import of its properties into the
// fields on demand.
struct XmpPage : SheetPage {
    XmpPage() : SheetPage(-1) {}
    const xmp::XmpRows& rows = g_session.xmpRows;  // read with the file's IPTC, not again
    HWND list = nullptr;

    void Init() override {
        list = GetDlgItem(window, IDC_IPTC_XMP_LIST);
        ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
        InsertListColumn(list, 0, L"XMP Tag", ScaleForWindow(window, 150));
        InsertListColumn(list, 1, L"Value", ScaleForWindow(window, 250));
        Refresh();
    }
    void Refresh() override {
        SendMessageW(list, WM_SETREDRAW, FALSE, 0);
        ListView_DeleteAllItems(list);
        for (const xmp::XmpRow& row : rows) {
            const int item = AppendListRow(list, row.name);
            if (!row.value.empty()) SetListCell(list, item, 1, row.value);
        }
        if (!rows.empty()) ListView_SetColumnWidth(list, 0, LVSCW_AUTOSIZE);
        ListView_SetColumnWidth(list, 1, LVSCW_AUTOSIZE_USEHEADER);
        SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        Enable(IDC_IPTC_XMP_IMPORT, !rows.empty());
        Enable(IDC_IPTC_XMP_COPY, !rows.empty());
        SetItemText(window, IDC_IPTC_XMP_INFO, u"Info:");
    }
    void Apply() override {}
    INT_PTR Command(int id, int code) override {
        if (code != BN_CLICKED) return FALSE;
        if (id == IDC_IPTC_XMP_COPY) {
            CopyListToClipboard(window, list, false, 0);  // "XMP Tag", "Value"
            return TRUE;
        }
        if (id != IDC_IPTC_XMP_IMPORT) return FALSE;
        StorePages();  // what the user typed elsewhere stays where no property fills it
        const int filled = iptc::ImportXmpRows(rows, Record());
        if (filled > 0) Record().utf8 = 1;
        RefreshPages();
        char info[64];
        if (filled > 0)
            std::snprintf(info, sizeof info, "Info: %d IPTC-IIM tags found/updated", filled);
        else
            std::snprintf(info, sizeof info, "Error: no compatible IPTC-IIM tags found");
        SetItemText(window, IDC_IPTC_XMP_INFO, platform::Utf8ToUtf16(info));
        return TRUE;
    }
};

struct OptionsPage : SheetPage {
    OptionsPage() : SheetPage(4) {}

    void Init() override {
        const iptc::IptcData& record = Record();
        Check(IDC_IPTC_KEEP_DATE, record.keepOrgDate != 0);
        Check(IDC_IPTC_SAVE_TAB, record.saveTab != 0);
        Check(IDC_IPTC_LOAD_XMP, record.loadXmp != 0);
        const int mode = ReadIptcBatchMode(SettingsFile());
        CheckRadioButton(window, IDC_IPTC_EDIT_EACH, IDC_IPTC_FIRST_ONLY,
                         mode == 2 ? IDC_IPTC_EDIT_EACH : IDC_IPTC_FIRST_ONLY);
        CheckRadioButton(window, IDC_IPTC_REPLACE, IDC_IPTC_APPEND, record.append ? IDC_IPTC_APPEND : IDC_IPTC_REPLACE);
        Check(IDC_IPTC_REPLACE_EMPTY, record.replaceEmpty != 0);
        Check(IDC_IPTC_SKIP_EMPTY, record.skipEmpty != 0);
        EnableBatchOptions();
    }
    void EnableBatchOptions() {
        const bool firstOnly = Checked(IDC_IPTC_FIRST_ONLY);
        const bool append = Checked(IDC_IPTC_APPEND);
        Enable(IDC_IPTC_REPLACE, firstOnly);
        Enable(IDC_IPTC_APPEND, firstOnly);
        Enable(IDC_IPTC_REPLACE_EMPTY, firstOnly && !append);
        Enable(IDC_IPTC_SKIP_EMPTY, firstOnly && !append);
    }
    void Apply() override {
        iptc::IptcData& record = Record();
        record.keepOrgDate = Checked(IDC_IPTC_KEEP_DATE);
        record.replaceEmpty = Checked(IDC_IPTC_REPLACE_EMPTY);
        record.skipEmpty = Checked(IDC_IPTC_SKIP_EMPTY);
        record.append = Checked(IDC_IPTC_APPEND);
        record.saveTab = Checked(IDC_IPTC_SAVE_TAB);
        WriteIptcSetting(SettingsFile(), u"KeepOrgDate", record.keepOrgDate);
        WriteIptcSetting(SettingsFile(), u"ReplaceEmpty", record.replaceEmpty);
        WriteIptcSetting(SettingsFile(), u"SkipEmpty", record.skipEmpty);
        WriteIptcSetting(SettingsFile(), u"Append", record.append);
        WriteIptcSetting(SettingsFile(), u"SaveTab", record.saveTab);
    }
    INT_PTR Command(int id, int code) override {
        if (code != BN_CLICKED) return FALSE;
        switch (id) {
        case IDC_IPTC_EDIT_EACH:
        case IDC_IPTC_FIRST_ONLY: {
            const int mode = id == IDC_IPTC_EDIT_EACH ? 2 : 1;
            WriteIptcSetting(SettingsFile(), u"BatchMode", mode);
            if (g_session.names) {  // a batch switches at once
                Record().batchMode = mode;
                UpdateSheetButtons();
            }
            EnableBatchOptions();
            return TRUE;
        }
        case IDC_IPTC_REPLACE:
        case IDC_IPTC_APPEND: EnableBatchOptions(); return TRUE;
        case IDC_IPTC_LOAD_XMP:
            Record().loadXmp = Checked(IDC_IPTC_LOAD_XMP);
            WriteIptcSetting(SettingsFile(), u"LoadXMP", Record().loadXmp);
            return TRUE;
        case IDC_IPTC_SAVE_TAB: Record().saveTab = Checked(IDC_IPTC_SAVE_TAB); return TRUE;
        default: return FALSE;
        }
    }
};

// ------------------------------------------------------------ opening

std::u16string_view Cut(std::u16string_view text, size_t n) { return text.substr(0, std::min(text.size(), n)); }

// Fills the hidden names list from the "|"-separated names; false when the
// list cannot be made.
bool MakeNamesList(std::u16string_view fileNames) {
    g_session.names = CreateWindowExW(0, WC_LISTBOXW, nullptr, WS_CHILD | LBS_SORT | LBS_HASSTRINGS, 0, 0, 200, 100,
                                      g_session.viewer, nullptr, g_session.instance, nullptr);
    if (!g_session.names) return false;
    for (const std::u16string& path : platform::SplitFileList(fileNames)) {
        // Names are kept whole (a cut one would name another file); a name
        // too long for the viewer is refused when written.
        const std::u16string name(Cut(path, iptc::kPathChars - 1));
        SendMessageW(g_session.names, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    }
    return true;
}

void DestroyNamesList() {
    if (g_session.names) DestroyWindow(g_session.names);
    g_session.names = nullptr;
}

void RunSheet() {
    FieldPage description(0, kDescriptionFields, std::size(kDescriptionFields));
    FieldPage keywords(1, kKeywordFields, std::size(kKeywordFields));
    FieldPage credits(2, kCreditFields, std::size(kCreditFields));
    XmpPage xmpPage;
    OptionsPage options;
    const struct {
        int templateId;
        DialogBase* page;
    } kPages[] = {{IDD_IPTC_DESCRIPTION, &description}, {IDD_IPTC_KEYWORDS, &keywords},
                  {IDD_IPTC_CREDITS, &credits},         {IDD_IPTC_XMP, &xmpPage},
                  {IDD_IPTC_OPTIONS, &options}};
    PROPSHEETPAGEW pages[std::size(kPages)] = {};
    for (size_t i = 0; i < std::size(kPages); ++i) {
        pages[i].dwSize = sizeof pages[i];
        pages[i].hInstance = g_session.instance;
        pages[i].pszTemplate = MAKEINTRESOURCEW(kPages[i].templateId);
        pages[i].pfnDlgProc = PageProc;
        pages[i].lParam = reinterpret_cast<LPARAM>(kPages[i].page);
    }
    const iptc::IptcData& record = Record();
    PROPSHEETHEADERW header = {};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW | PSH_USECALLBACK | PSH_NOCONTEXTHELP;
    header.hwndParent = g_session.viewer;
    header.hInstance = g_session.instance;
    header.pszCaption = kSheetCaption;
    header.nPages = static_cast<UINT>(std::size(pages));
    header.nStartPage = record.saveTab && record.lastTab >= 0 && record.lastTab < static_cast<int>(std::size(pages))
                            ? static_cast<UINT>(record.lastTab)
                            : 0;
    header.ppsp = pages;
    header.pfnCallback = SheetCallback;
    InitDialogControls();
    PropertySheetW(&header);
    g_session.sheet = nullptr;
}

int ShowSheet(HINSTANCE instance, std::u16string_view fileNames, HWND parent, std::u16string_view settingsPath) {
    Session& s = g_session;
    iptc::IptcData& record = s.record;
    iptc::ClearIptcData(record);
    s.instance = instance;
    s.viewer = parent;
    s.index = 0;
    iptc::SetField(record.settingsPath, Cut(settingsPath, kMaxPathChars), iptc::kPathChars);
    ReadIptcSheetSettings(record);
    s.darkMode = settingsPath.empty() ? 0 : platform::ReadSettingInt(settingsPath, u"Viewing", u"DarkMode", 0);

    const size_t bar = fileNames.find(u'|');
    std::u16string current(Cut(fileNames.substr(0, bar), iptc::kPathChars - 1));
    if (bar != std::u16string_view::npos) {
        record.batchMode = ReadIptcBatchMode(settingsPath) == 1 ? 1 : 2;
        if (!MakeNamesList(fileNames)) {
            ShowError(parent, u"Can't create names list.");
            return 0;
        }
        if (NameCount() < 2) {
            current = NameAt(0);
            record.batchMode = 0;
            DestroyNamesList();
        } else {
            const LRESULT at = SendMessageW(s.names, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                            reinterpret_cast<LPARAM>(current.c_str()));
            s.index = at == LB_ERR ? 0 : static_cast<int>(at);
        }
    }
    iptc::SetField(record.fileName, current, iptc::kPathChars);
    LoadIptcSheetFile(record, &s.xmpRows);
    record.state = kSheetOpen;

    RunSheet();

    if (record.saveTab) WriteIptcSetting(settingsPath, u"LastTab", record.lastTab);
    WriteIptcSetting(settingsPath, u"SaveTab", record.saveTab);

    int result = 1;
    if (record.state == kSheetConfirmed && !record.isTiff) {
        const IptcErrorSink showError = [parent](std::u16string_view error) { ShowError(parent, error); };
        WaitCursor wait;
        if (record.batchMode == 0)
            result = WriteIptcSheetFile(record, 1, showError);
        else if (record.batchMode == 1)
            result = WriteIptcBatch(AllNames(), record, showError) ? 1 : 0;
    }
    DestroyNamesList();
    return result;
}

}  // namespace

int ShowIptcInfo(HINSTANCE instance, const char16_t* fileNames, HWND parent, const char16_t* settingsPath) {
    if (g_session.sheet && IsWindow(g_session.sheet)) DestroyWindow(g_session.sheet);
    g_session.sheet = nullptr;
    DestroyNamesList();
    return ShowSheet(instance, fileNames ? fileNames : u"", parent, settingsPath ? settingsPath : u"");
}

}  // namespace vv
