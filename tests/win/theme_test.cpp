// The theming layer on a real dialog built from an in-memory template.
#include "ui/theme.h"

#include <commctrl.h>
#include <uxtheme.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using namespace vv;

enum ControlId { kStatic = 100, kEdit, kCheckBox, kButton, kIconButton, kList, kCombo };

int g_darkMode = 0;
std::vector<std::wstring> g_measuredMenuTexts;

INT_PTR CALLBACK TestDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (message == WM_MEASUREITEM && reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemData)
        g_measuredMenuTexts.push_back(
            reinterpret_cast<const wchar_t*>(reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemData));
    if (HandleDarkModeMessage(dialog, message, wParam, lParam, g_darkMode, kList, &result)) {
        SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
        return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC ? static_cast<INT_PTR>(result) : TRUE;
    }
    return FALSE;
}

class ThemeTest : public ::testing::Test {
protected:
    void SetUp() override {
        INITCOMMONCONTROLSEX init = {sizeof init, ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
        InitCommonControlsEx(&init);
        // An empty dialog; its controls are added as children, one below the other.
        struct alignas(4) {
            DLGTEMPLATE dialog;
            WORD menu, windowClass, title;
        } const empty = {{WS_POPUP | WS_CAPTION, 0, 0, 0, 0, 200, 200}, 0, 0, 0};
        dialog_ = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &empty.dialog, nullptr, TestDialogProc, 0);
        const std::pair<const wchar_t*, DWORD> kControls[] = {
            {L"Static", SS_LEFT},           {L"Edit", ES_AUTOHSCROLL | WS_BORDER},
            {L"Button", BS_AUTOCHECKBOX},   {L"Button", BS_PUSHBUTTON},
            {L"Button", BS_PUSHBUTTON | BS_ICON}, {WC_LISTVIEWW, LVS_REPORT},
            {L"ComboBox", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS}};
        for (int i = 0; i < 7; ++i)
            CreateWindowExW(0, kControls[i].first, L"Text", WS_CHILD | WS_VISIBLE | kControls[i].second, 8, 8 + 30 * i,
                            120, 23, dialog_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kStatic + i)),
                            GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(dialog_, nullptr) << GetLastError();
        for (int id = kStatic; id <= kCombo; ++id)
            procs_[id] = GetWindowLongPtrW(Item(id), GWLP_WNDPROC);
    }
    void TearDown() override {
        DestroyWindow(dialog_);
        g_darkMode = 0;
    }
    HWND Item(int id) const { return GetDlgItem(dialog_, id); }
    bool Subclassed(int id) { return GetWindowLongPtrW(Item(id), GWLP_WNDPROC) != procs_[id]; }

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
// message with one brush.
TEST_F(ThemeTest, ColourMessagesAreAnsweredWithTheOneDarkBrushInDarkModeOnly) {
    const COLORREF listText = ListView_GetTextColor(Item(kList));
    ApplyDarkModeToDialog(dialog_, -1, 0);
    for (int id = kStatic; id <= kCombo; ++id)
        EXPECT_FALSE(Subclassed(id)) << id;
    EXPECT_EQ(ListView_GetTextColor(Item(kList)), listText);
    HBRUSH first = nullptr;
    ApplyDarkModeToDialog(dialog_, 0, 1);
    for (int darkMode : {1, 0}) {  // light mode answers nothing, even with the brush made
        for (int id : {kStatic, kEdit}) {
            HDC dc = GetDC(Item(id));
            LRESULT result = 12345;
            const UINT message = id == kEdit ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC;
            EXPECT_EQ(HandleDarkModeMessage(dialog_, message, reinterpret_cast<WPARAM>(dc),
                                            reinterpret_cast<LPARAM>(Item(id)), darkMode, -1, &result),
                      darkMode);
            if (!darkMode) {
                EXPECT_EQ(result, 12345);
                ReleaseDC(Item(id), dc);
                continue;
            }
            EXPECT_EQ(GetTextColor(dc), 0xDCDCDCu);
            EXPECT_EQ(GetBkColor(dc), 0x202020u);
            EXPECT_EQ(GetBkMode(dc), id == kEdit ? OPAQUE : TRANSPARENT);
            ReleaseDC(Item(id), dc);

            LOGBRUSH brush = {};
            ASSERT_EQ(GetObjectW(reinterpret_cast<HBRUSH>(result), sizeof brush, &brush), int(sizeof brush));
            EXPECT_EQ(brush.lbStyle, UINT(BS_SOLID));
            EXPECT_EQ(brush.lbColor, 0x202020u);
            if (!first)
                first = reinterpret_cast<HBRUSH>(result);
            EXPECT_EQ(reinterpret_cast<HBRUSH>(result), first) << "one brush for every control";
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
    ApplyDarkModeToDialog(dialog_, 0, 1);
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
    LRESULT result = 0;
    EXPECT_FALSE(HandleDarkModeMessage(dialog_, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item), 0, -1, &result));
    EXPECT_EQ(item.itemWidth, 0u) << "light mode measures nothing";
    ASSERT_TRUE(HandleDarkModeMessage(dialog_, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item), 1, -1, &result));
    EXPECT_EQ(result, 1);
    EXPECT_EQ(int(item.itemWidth), text.cx + 2 * (GetSystemMetrics(SM_CXMENUCHECK) + GetSystemMetrics(SM_CXEDGE)));
    EXPECT_EQ(int(item.itemHeight), text.cy);

    MEASUREITEMSTRUCT separator = {ODT_MENU, 0, 2, 0, 0, 0};
    ASSERT_TRUE(
        HandleDarkModeMessage(dialog_, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&separator), 1, -1, &result));
    EXPECT_EQ(int(separator.itemWidth), GetSystemMetrics(SM_CXMENUCHECK));
    EXPECT_EQ(int(separator.itemHeight), GetSystemMetrics(SM_CYMENU) / 4);

    MEASUREITEMSTRUCT comboItem = {ODT_COMBOBOX, kCombo, 0, 0, 0, 0};
    EXPECT_FALSE(
        HandleDarkModeMessage(dialog_, WM_MEASUREITEM, kCombo, reinterpret_cast<LPARAM>(&comboItem), 1, -1, &result));
}

TEST_F(ThemeTest, ComboItemsDrawDarkUnlessTheControlIsSkipped) {
    ApplyDarkModeToDialog(dialog_, 0, 1);
    SendMessageW(Item(kCombo), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"Alpha"));
    Canvas canvas;
    DRAWITEMSTRUCT item = {ODT_COMBOBOX, kCombo, 0, ODA_DRAWENTIRE, 0, Item(kCombo), canvas.dc, {0, 0, 64, 32}, 0};
    LRESULT result = 0;
    EXPECT_FALSE(
        HandleDarkModeMessage(dialog_, WM_DRAWITEM, kCombo, reinterpret_cast<LPARAM>(&item), 1, kCombo, &result));
    ASSERT_TRUE(HandleDarkModeMessage(dialog_, WM_DRAWITEM, kCombo, reinterpret_cast<LPARAM>(&item), 1, -1, &result));
    EXPECT_EQ(GetPixel(canvas.dc, 0, 0), 0x202020u);
    bool lightText = false;
    for (int x = 0; x < 64; ++x)
        for (int y = 0; y < 32; ++y)
            lightText |= GetPixel(canvas.dc, x, y) == 0xDCDCDCu;
    EXPECT_TRUE(lightText) << "the item text in the light colour";
    item.itemState = ODS_SELECTED;
    HandleDarkModeMessage(dialog_, WM_DRAWITEM, kCombo, reinterpret_cast<LPARAM>(&item), 1, -1, &result);
    EXPECT_NE(GetPixel(canvas.dc, 0, 0), 0x202020u) << "a selected item stands out";
}

TEST_F(ThemeTest, ThemedPopupMenuIsOwnerDrawnOnlyWhileShown) {
    ApplyDarkModeToDialog(dialog_, 0, 1);
    g_darkMode = 1;
    HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, 1, L"&Copy\tCtrl+C");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, 2, L"Export");
    EXPECT_FALSE(TrackThemedPopupMenu(dialog_, CreatePopupMenu(), -1, 0, 0, 1)) << "nothing to show";

    ShowWindow(dialog_, SW_SHOW);
    SetForegroundWindow(dialog_);
    g_measuredMenuTexts.clear();
    PostMessageW(dialog_, WM_KEYDOWN, VK_ESCAPE, 0);  // read by the menu's loop once it is shown
    TrackThemedPopupMenu(dialog_, menu, TPM_RETURNCMD, 10, 10, 1);
    EXPECT_EQ(g_measuredMenuTexts, (std::vector<std::wstring>{L"&Copy\tCtrl+C", L"Export"}));

    for (UINT i = 0; i < 3; ++i) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_DATA;
        ASSERT_TRUE(GetMenuItemInfoW(menu, i, TRUE, &info));
        EXPECT_FALSE(info.fType & MFT_OWNERDRAW) << i;
        EXPECT_EQ(info.dwItemData, 0u) << i;
    }
    wchar_t text[32] = {};
    GetMenuStringW(menu, 0, text, 32, MF_BYPOSITION);
    EXPECT_STREQ(text, L"&Copy\tCtrl+C");
    DestroyMenu(menu);
}

}  // namespace
