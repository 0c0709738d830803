// The theming layer on a real dialog of the plug-in's own kind: a
// DialogBase run by the shared dialog procedure (which reads the viewer's
// dark-mode setting and offers every message to the theme), built from an
// in-memory template.
#include "ui/theme.h"

#include <commctrl.h>
#include <uxtheme.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fixture/fixture.h"
#include "harness.h"
#include "platform/platform.h"
#include "ui/dialog_kit.h"

namespace {

using namespace vv;

// (Not 100: the harness takes a dialog with a static 100 for a message box.)
enum ControlId { kStatic = 1100, kEdit, kCheckBox, kButton, kIconButton, kList, kCombo };

struct TestDialog : DialogBase {
    explicit TestDialog(std::u16string_view s) : settings(s) {}
    std::u16string settings;
    std::u16string_view SettingsPath() const override { return settings; }
    INT_PTR OnInit(LPARAM) override { return TRUE; }
    INT_PTR OnMessage(UINT, WPARAM, LPARAM) override { return FALSE; }
};

class ThemeTest : public ::testing::Test {
protected:
    void SetUp() override {
        INITCOMMONCONTROLSEX init = {sizeof init, ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
        InitCommonControlsEx(&init);
        Open(1);
    }
    void TearDown() override { DestroyWindow(dialog_); }
    // An empty dialog with "Viewing"/"DarkMode" = darkMode; its controls are
    // added as children, one below the other.
    void Open(int darkMode) {
        if (dialog_)
            DestroyWindow(dialog_);
        platform::WriteSettingString(settings_, u"Viewing", u"DarkMode", darkMode ? u"1" : u"0");
        struct alignas(4) {
            DLGTEMPLATE dialog;
            WORD menu, windowClass, title;
        } const empty = {{WS_POPUP | WS_CAPTION, 0, 0, 0, 0, 200, 200}, 0, 0, 0};
        std::unique_ptr<DialogBase> state = std::make_unique<TestDialog>(settings_);
        dialog_ = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &empty.dialog, nullptr, DialogProc,
                                             reinterpret_cast<LPARAM>(&state));
        ASSERT_NE(dialog_, nullptr) << GetLastError();
        const std::pair<const wchar_t*, DWORD> kControls[] = {
            {L"Static", SS_LEFT},           {L"Edit", ES_AUTOHSCROLL | WS_BORDER},
            {L"Button", BS_AUTOCHECKBOX},   {L"Button", BS_PUSHBUTTON},
            {L"Button", BS_PUSHBUTTON | BS_ICON}, {WC_LISTVIEWW, LVS_REPORT},
            {L"ComboBox", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS}};
        for (int i = 0; i < 7; ++i)
            CreateWindowExW(0, kControls[i].first, L"Text", WS_CHILD | WS_VISIBLE | kControls[i].second, 8, 8 + 30 * i,
                            120, 23, dialog_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kStatic + i)),
                            GetModuleHandleW(nullptr), nullptr);
        for (int id = kStatic; id <= kCombo; ++id)
            procs_[id] = GetWindowLongPtrW(Item(id), GWLP_WNDPROC);
    }
    HWND Item(int id) const { return GetDlgItem(dialog_, id); }
    bool Subclassed(int id) { return GetWindowLongPtrW(Item(id), GWLP_WNDPROC) != procs_[id]; }

    fixture::TempDir dir_;
    const std::u16string settings_ = dir_.Path("viewer.ini");
    HWND dialog_ = nullptr;
    std::map<int, LONG_PTR> procs_;
};

// A memory DC with a 64x32 bitmap, for reading back what was painted.
struct Canvas {
    Canvas()
        : dc(CreateCompatibleDC(nullptr)),
          bitmap(CreateBitmap(64, 32, 1, 32, nullptr)),
          old(SelectObject(dc, bitmap)) {}
    ~Canvas() { SelectObject(dc, old), DeleteObject(bitmap), DeleteDC(dc); }
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ old;
};

// Light mode subclasses and answers nothing; dark mode answers every colour
// message with one brush, returned as the message's result itself.
TEST_F(ThemeTest, ColourMessagesAreAnsweredWithTheOneDarkBrushInDarkModeOnly) {
    HBRUSH first = nullptr;
    for (int darkMode : {1, 0}) {  // light mode answers nothing, even with the brush made
        Open(darkMode);
        if (!darkMode) {
            const COLORREF listText = ListView_GetTextColor(Item(kList));
            ApplyDarkModeToDialog(dialog_, -1, 0);
            for (int id = kStatic; id <= kCombo; ++id)
                EXPECT_FALSE(Subclassed(id)) << id;
            EXPECT_EQ(ListView_GetTextColor(Item(kList)), listText);
        }
        for (int id : {kStatic, kEdit}) {
            HDC dc = GetDC(Item(id));
            const UINT message = id == kEdit ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC;
            const auto brush = reinterpret_cast<HBRUSH>(
                SendMessageW(dialog_, message, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(Item(id))));
            if (!darkMode) {
                EXPECT_NE(brush, first);
                EXPECT_NE(GetTextColor(dc), 0xDCDCDCu);
                ReleaseDC(Item(id), dc);
                continue;
            }
            EXPECT_EQ(GetTextColor(dc), 0xDCDCDCu);
            EXPECT_EQ(GetBkColor(dc), 0x202020u);
            EXPECT_EQ(GetBkMode(dc), id == kEdit ? OPAQUE : TRANSPARENT);
            ReleaseDC(Item(id), dc);

            LOGBRUSH colour = {};
            ASSERT_EQ(GetObjectW(brush, sizeof colour, &colour), int(sizeof colour));
            EXPECT_EQ(colour.lbStyle, UINT(BS_SOLID));
            EXPECT_EQ(colour.lbColor, 0x202020u);
            if (!first)
                first = brush;
            EXPECT_EQ(brush, first) << "one brush for every control";
        }
    }
}

// Visual styles draw check-box text in the theme's colour, whatever
// WM_CTLCOLORSTATIC says; so check boxes are painted flat exactly then.
TEST_F(ThemeTest, DarkModeDarkensTheListAndPaintsPushButtonsAndThemedCheckBoxesFlat) {
    HTHEME theme = OpenThemeData(dialog_, L"BUTTON");
    const bool themed = theme != nullptr;
    if (theme)
        CloseThemeData(theme);
    ApplyDarkModeToDialog(dialog_, 0, 1);
    EXPECT_EQ(ListView_GetTextColor(Item(kList)), 0xDCDCDCu);
    const std::pair<int, bool> kSubclassed[] = {{kList, true},  {kButton, true}, {kIconButton, false},
                                                {kStatic, false}, {kEdit, false},  {kCheckBox, themed}};
    for (const auto& [id, subclassed] : kSubclassed)
        EXPECT_EQ(Subclassed(id), subclassed) << id << " (icon buttons stay unless flag is -1)";

    Canvas button;
    SendMessageW(Item(kButton), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(button.dc), PRF_CLIENT);
    EXPECT_EQ(GetPixel(button.dc, 4, 4), 0x202020u) << "the face";
    EXPECT_NE(GetPixel(button.dc, 0, 4), 0x202020u) << "the frame";
    if (themed) {
        SendMessageW(Item(kCheckBox), BM_SETCHECK, BST_CHECKED, 0);
        RECT client;
        GetClientRect(Item(kCheckBox), &client);
        Canvas checkBox;
        SendMessageW(Item(kCheckBox), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(checkBox.dc), PRF_CLIENT);
        EXPECT_EQ(GetPixel(checkBox.dc, 0, client.bottom / 2), 0xDCDCDCu) << "the box's edge";
        EXPECT_EQ(GetPixel(checkBox.dc, 63, 0), 0x202020u) << "the background";
    }

    ApplyDarkModeToDialog(dialog_, -1, 1);
    EXPECT_TRUE(Subclassed(kIconButton));
}

TEST_F(ThemeTest, MenuItemsMeasureByTheMenuFont) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0));
    HFONT font = CreateFontIndirectW(&metrics.lfMenuFont);
    HDC dc = GetDC(dialog_);
    HGDIOBJ old = SelectObject(dc, font);
    SIZE text = {};
    GetTextExtentPoint32W(dc, L"Copy all", 8, &text);  // the '&' is not drawn
    SelectObject(dc, old), ReleaseDC(dialog_, dc), DeleteObject(font);

    MEASUREITEMSTRUCT item = {ODT_MENU, 0, 1, 0, 0, reinterpret_cast<ULONG_PTR>(L"Copy &all")};
    EXPECT_EQ(SendMessageW(dialog_, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item)), TRUE);
    EXPECT_EQ(int(item.itemWidth), text.cx + 2 * (GetSystemMetrics(SM_CXMENUCHECK) + GetSystemMetrics(SM_CXEDGE)));
    EXPECT_EQ(int(item.itemHeight), text.cy);
    MEASUREITEMSTRUCT separator = {ODT_MENU, 0, 2, 0, 0, 0};
    SendMessageW(dialog_, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&separator));
    EXPECT_EQ(int(separator.itemWidth), GetSystemMetrics(SM_CXMENUCHECK));
    EXPECT_EQ(int(separator.itemHeight), GetSystemMetrics(SM_CYMENU) / 4);
    LRESULT result = 0;
    MEASUREITEMSTRUCT comboItem = {ODT_COMBOBOX, kCombo, 0, 0, 0, 0};
    EXPECT_FALSE(
        HandleDarkModeMessage(dialog_, WM_MEASUREITEM, kCombo, reinterpret_cast<LPARAM>(&comboItem), 1, -1, &result));

    Open(0);
    MEASUREITEMSTRUCT light = {ODT_MENU, 0, 1, 0, 0, reinterpret_cast<ULONG_PTR>(L"Copy &all")};
    SendMessageW(dialog_, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&light));
    EXPECT_EQ(light.itemWidth, 0u) << "light mode measures nothing";
}

TEST_F(ThemeTest, ComboItemsDrawDarkUnlessTheControlIsSkipped) {
    SendMessageW(Item(kCombo), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"Alpha"));
    Canvas canvas;
    DRAWITEMSTRUCT item = {ODT_COMBOBOX, kCombo, 0, ODA_DRAWENTIRE, 0, Item(kCombo), canvas.dc, {0, 0, 64, 32}, 0};
    LRESULT result = 0;
    EXPECT_FALSE(
        HandleDarkModeMessage(dialog_, WM_DRAWITEM, kCombo, reinterpret_cast<LPARAM>(&item), 1, kCombo, &result));
    ASSERT_EQ(SendMessageW(dialog_, WM_DRAWITEM, kCombo, reinterpret_cast<LPARAM>(&item)), TRUE);
    EXPECT_EQ(GetPixel(canvas.dc, 0, 0), 0x202020u);
    bool lightText = false;
    for (int x = 0; x < 64; ++x)
        for (int y = 0; y < 32; ++y)
            lightText |= GetPixel(canvas.dc, x, y) == 0xDCDCDCu;
    EXPECT_TRUE(lightText) << "the item text in the light colour";
    item.itemState = ODS_SELECTED;
    SendMessageW(dialog_, WM_DRAWITEM, kCombo, reinterpret_cast<LPARAM>(&item));
    EXPECT_NE(GetPixel(canvas.dc, 0, 0), 0x202020u) << "a selected item stands out";
}

// The items of a popup menu, as they stand: owner-drawn ones by the text
// they carry, the others as "-".
std::vector<std::wstring> OwnerDrawnTexts(HMENU menu) {
    std::vector<std::wstring> texts;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_DATA;
        GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info);
        const auto* text = reinterpret_cast<const wchar_t*>(info.dwItemData);
        texts.push_back(!(info.fType & MFT_OWNERDRAW) ? (text ? L"data left behind" : L"-") : text ? text : L"");
    }
    return texts;
}

HMENU SampleMenu() {
    HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, 1, L"&Copy all lines\tCtrl+C");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, 2, L"Export as placemark");
    return menu;
}

// Runs the themed menu until the driver has looked at it (and closed it).
std::vector<std::wstring> TrackAndLook(HWND owner, HMENU menu) {
    std::vector<std::wstring> shown;
    wintest::DriveModal([] { return FindWindowW(L"#32768", nullptr); },
                        {[&](HWND window) {
                            shown = OwnerDrawnTexts(reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0)));
                            EndMenu();
                        }},
                        [&] { TrackThemedPopupMenu(owner, menu, TPM_RETURNCMD, 10, 10, 1); });
    return shown;
}

TEST_F(ThemeTest, ThemedPopupMenuIsOwnerDrawnOnlyWhileShown) {
    HMENU menu = SampleMenu();
    EXPECT_FALSE(TrackThemedPopupMenu(dialog_, CreatePopupMenu(), -1, 0, 0, 1)) << "nothing to show";
    ShowWindow(dialog_, SW_SHOW);
    SetForegroundWindow(dialog_);
    EXPECT_EQ(TrackAndLook(dialog_, menu),
              (std::vector<std::wstring>{L"&Copy all lines\tCtrl+C", L"", L"Export as placemark"}));
    EXPECT_EQ(OwnerDrawnTexts(menu), (std::vector<std::wstring>{L"-", L"-", L"-"}));
    wchar_t text[32] = {};
    GetMenuStringW(menu, 0, text, 32, MF_BYPOSITION);
    EXPECT_STREQ(text, L"&Copy all lines\tCtrl+C");
    DestroyMenu(menu);
}

// Memory running out in the flat painting or in preparing the dark menu:
// no exception leaves the procedure the system called, and the menu is
// shown as the platform draws it and left as it was.
TEST_F(ThemeTest, AFailedAllocationLeavesNoProcedureAndLeavesTheMenuAsItWas) {
    ApplyDarkModeToDialog(dialog_, 0, 1);
    SetWindowTextW(Item(kButton), L"A caption longer than a short string");
    Canvas canvas;
    try {
        wintest::FailingAllocations failing;
        SendMessageW(Item(kButton), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.dc), PRF_CLIENT);
    } catch (...) {
        ADD_FAILURE() << "an exception left the flat control's procedure";
    }

    HMENU menu = SampleMenu();
    ShowWindow(dialog_, SW_SHOW);
    SetForegroundWindow(dialog_);
    for (long failing = 1; failing <= 8; ++failing) {
        PostMessageW(dialog_, WM_KEYDOWN, VK_ESCAPE, 0);  // read by the menu's loop once it is shown
        try {
            wintest::FailingAllocations failure(failing);
            TrackThemedPopupMenu(dialog_, menu, TPM_RETURNCMD, 10, 10, 1);
        } catch (...) {
            ADD_FAILURE() << "allocation " << failing << ": an exception left the menu";
        }
        EXPECT_EQ(OwnerDrawnTexts(menu), (std::vector<std::wstring>{L"-", L"-", L"-"})) << failing;
    }
    DestroyMenu(menu);
}

}  // namespace
