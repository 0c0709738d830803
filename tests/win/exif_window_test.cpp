// The EXIF information window. Opening, refilling, re-parenting, closing and
// placement go through Metadata.dll's exports, as the viewer calls them. The
// commands and keys run the same window code compiled into this suite (with
// the DLL's templates), so that the shell-open hook can observe map links
// instead of launching a browser.
#include "ui/exif_window.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "exif/exif_fixtures.h"
#include "exif/map_links.h"
#include "exif/tag_record.h"
#include "fixture/fixture.h"
#include "harness.h"
#include "platform/platform.h"
#include "platform/win32/wide_text.h"
#include "plugin_dll.h"
#include "screenshot.h"
#include "ui/model/exif_window_model.h"
#include "ui/resource_ids.h"

namespace {

using windll::Export;

using platform::AsWchar;
using wintest::ClipboardText;
using wintest::ListCell;

int FindRow(HWND list, std::u16string_view name) {
    for (int i = 0; i < ListView_GetItemCount(list); ++i)
        if (ListCell(list, i, 1) == name)
            return i;
    return -1;
}

// A file with Make and Model but no position.
fixture::Bytes PlainFile() {
    fixture::TiffBuilder tiff(fixture::ByteOrder::kBig);
    tiff.Ascii(0, 271, "Other").Ascii(0, 272, "VV-1");
    return exiftest::Jpeg(tiff.Build());
}

class ExifWindow : public ::testing::Test {
protected:
    void SetUp() override {
        gps = dir.Write("gps.jpg", exiftest::Sample(fixture::ByteOrder::kLittle).File());
        plain = dir.Write("plain.jpg", PlainFile());
        none = dir.Write("none.jpg", fixture::JpegBuilder().Soi().Com("no exif").ScanAndEoi().Build());
        opened.clear();
        platform::SetShellOpenHook([this](std::u16string_view target) {
            opened.emplace_back(target);
            return true;
        });
    }
    void TearDown() override {
        Export<windll::ClosePluginFn>("ClosePlugin")();
        vv::CloseExifWindow();
        platform::SetShellOpenHook(nullptr);
        wintest::PumpMessages();
    }
    // Through the DLL, as the viewer calls it.
    int Show(const std::u16string& file, HWND parent, int mode = 1) {
        const int answer =
            Export<windll::ShowExifInfoFn>("Show_EXIF_Info_W")(AsWchar(file), parent, AsWchar(settings), mode);
        wintest::PumpMessages();
        return answer;
    }
    HWND DllWindow() { return Export<windll::GetExifWindowFn>("Get_EXIF_Window")(); }
    // The same window from this suite's copy of the code.
    HWND ShowHere(const std::u16string& file) {
        EXPECT_EQ(vv::ShowExifInfo(windll::Plugin(), file.c_str(), viewer, settings.c_str(), 1), 0);
        wintest::PumpMessages();
        return vv::ExifWindowHandle();
    }
    void Setting(const char16_t* section, const char16_t* key, const char16_t* value) {
        platform::WriteSettingString(settings, section, key, value);
    }
    std::u16string Setting(const char16_t* section, const char16_t* key) {
        return platform::ReadSettingString(settings, section, key, u"<none>");
    }
    void Command(HWND window, int id) {
        SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
        wintest::PumpMessages();
    }
    void Key(HWND window, UINT key) {
        SendMessageW(GetDlgItem(window, IDC_EXIF_LIST), WM_KEYDOWN, key, 0);
        wintest::PumpMessages();
    }
    std::u16string LastOpened() { return opened.empty() ? u"<nothing>" : opened.back(); }
    // Runs `open` and, once the menu it opens is up, `inspect` on the menu; then closes it.
    void WithMenu(const std::function<void(HMENU items, HWND menu)>& inspect, const std::function<void()>& open) {
        const auto driven = wintest::DriveModal([] { return FindWindowW(L"#32768", nullptr); },
                                                {[&](HWND menu) {
                                                    inspect(reinterpret_cast<HMENU>(SendMessageW(menu, MN_GETHMENU, 0, 0)), menu);
                                                    EndMenu();
                                                }},
                                                open);
        EXPECT_EQ(driven.stepsRun, 1u) << "no menu shown";
    }
    // Opens the tag chooser, where `step` acts.
    void Choose(HWND window, wintest::Step step) {
        wintest::DriveModal([] { return FindWindowW(nullptr, L"Choose EXIF tags for the display"); }, {std::move(step)},
                            [&] { Command(window, IDM_CHOOSE_TAGS); });
    }

    fixture::TempDir dir;
    std::u16string settings = dir.Path("viewer.ini");
    std::u16string gps, plain, none;
    wintest::StandInViewer stand;
    HWND viewer = stand.Window();
    std::vector<std::u16string> opened;
};

bool Visible(HWND window, int id) { return IsWindowVisible(GetDlgItem(window, id)) != FALSE; }

// Types `keys` on the keyboard, each held until the last is pressed.
void Type(const std::vector<WORD>& keys) {
    std::vector<INPUT> input(2 * keys.size());
    for (size_t i = 0; i < keys.size(); ++i) {
        input[i].type = input[input.size() - 1 - i].type = INPUT_KEYBOARD;
        input[i].ki.wVk = input[input.size() - 1 - i].ki.wVk = keys[i];
        input[input.size() - 1 - i].ki.dwFlags = KEYEVENTF_KEYUP;
    }
    SendInput(static_cast<UINT>(input.size()), input.data(), sizeof(INPUT));
}

// A viewer's loop until it has been idle a while: the modeless window's
// messages go through IsDialogMessage.
void RunViewerLoop(HWND window) {
    for (DWORD idleSince = GetTickCount(); GetTickCount() - idleSince < 80; Sleep(10)) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            idleSince = GetTickCount();
            if (!IsDialogMessageW(window, &message)) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
    }
}

void EmptyTheClipboard() {
    if (OpenClipboard(nullptr)) {
        EmptyClipboard();
        CloseClipboard();
    }
}

TEST_F(ExifWindow, FollowsTheViewerFromFileToFileAndClosesWithThePluginLightAndDark) {
    for (const std::string mode : {"light", "dark"}) {
        Setting(u"Viewing", u"DarkMode", mode == "dark" ? u"1" : u"0");
        ASSERT_EQ(Show(gps, viewer), 0);
        HWND window = DllWindow();
        ASSERT_NE(window, nullptr);
        HWND list = GetDlgItem(window, IDC_EXIF_LIST);
        EXPECT_EQ(ListView_GetBkColor(list) == 0x202020u, mode == "dark");
        EXPECT_EQ(ListView_GetItemCount(list), 1 + exiftest::kSampleRows);
        EXPECT_EQ(ListCell(list, 0, 1), u"Filename");
        EXPECT_EQ(ListCell(list, 0, 2), u"gps.jpg");
        EXPECT_EQ(ListCell(list, 1, 0), u"271");
        wchar_t caption[64] = {};
        GetWindowTextW(window, caption, 64);
        EXPECT_STREQ(caption, L"gps.jpg - EXIF Info");
        for (int id : {IDC_EXIF_GOOGLE_EARTH, IDC_EXIF_GOOGLE_MAPS, IDC_EXIF_OPENSTREETMAP, IDC_EXIF_COPY})
            EXPECT_TRUE(Visible(window, id)) << id;
        EXPECT_TRUE(wintest::SaveScreenshot(window, ("exif_window_gps_" + mode).c_str()));

        const int model = FindRow(list, u"Model");
        ListView_SetItemState(list, model, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);

        // Another file refills the same window and selects the same tag again.
        ASSERT_EQ(Show(plain, viewer), 0);
        EXPECT_EQ(DllWindow(), window);
        EXPECT_EQ(ListView_GetItemCount(list), 3);
        const int selected = ListView_GetNextItem(list, -1, LVNI_SELECTED);
        ASSERT_GE(selected, 0);
        EXPECT_EQ(ListCell(list, selected, 1), u"Model");
        EXPECT_FALSE(Visible(window, IDC_EXIF_GOOGLE_EARTH));
        EXPECT_FALSE(Visible(window, IDC_EXIF_GOOGLE_MAPS));
        EXPECT_TRUE(Visible(window, IDC_EXIF_MORE));
        EXPECT_TRUE(wintest::SaveScreenshot(window, ("exif_window_nogps_" + mode).c_str()));
        // The selection of the list without the focus: dark in dark mode.
        SetFocus(GetDlgItem(window, IDCANCEL));
        RECT row;
        ListView_GetItemRect(list, selected, &row, LVIR_BOUNDS);
        if (mode == "dark") {
            EXPECT_TRUE(wintest::DarkOnScreen(list, {{row.right - 4, (row.top + row.bottom) / 2}}));
        }
        EXPECT_TRUE(wintest::SaveScreenshot(window, ("exif_window_inactive_selection_" + mode).c_str()));

        // A file without EXIF: no rows at all, and nothing to copy.
        ASSERT_EQ(Show(none, viewer), 0);
        EXPECT_EQ(ListView_GetItemCount(list), 0);
        EXPECT_FALSE(Visible(window, IDC_EXIF_COPY));

        EXPECT_EQ(Export<windll::ClosePluginFn>("ClosePlugin")(), 0);
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(DllWindow(), nullptr);
        // Mode 2 only refreshes an open window.
        EXPECT_EQ(Show(gps, viewer, 2), 0);
        EXPECT_EQ(DllWindow(), nullptr);
    }
}

TEST_F(ExifWindow, MovesToANewParentOrToADialogsParent) {
    ASSERT_EQ(Show(gps, viewer), 0);
    HWND window = DllWindow();
    wintest::StandInViewer secondViewer(L"Second viewer", 400);
    HWND second = secondViewer.Window();
    ASSERT_EQ(Show(plain, second), 0);
    EXPECT_EQ(GetAncestor(window, GA_PARENT), second);

    // A dialog inside the first viewer hands the window to that viewer.
    HWND dialog = CreateWindowExW(0, MAKEINTATOM(32770), L"", WS_CHILD, 0, 0, 10, 10, viewer, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(dialog, nullptr);
    ASSERT_EQ(Show(gps, dialog), 0);
    EXPECT_EQ(GetAncestor(window, GA_PARENT), viewer);
    EXPECT_EQ(DllWindow(), window);
    DestroyWindow(dialog);
    Export<windll::ClosePluginFn>("ClosePlugin")();
}

TEST_F(ExifWindow, PlacementIsSavedOnCloseAndRestoredOnScreen) {
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    const auto save = [&](int left, int top, int width, int height, int savedDpi) {
        char text[96];
        std::snprintf(text, sizeof text, "%d,%d,%d,%d,0,%d;", left, top, width, height, savedDpi);
        Setting(u"WinPosition", u"EXIF", platform::Utf8ToUtf16(text).c_str());
    };
    save(100, 120, 500, 600, dpi);
    ASSERT_EQ(Show(gps, viewer), 0);
    HWND window = DllWindow();
    RECT r;
    GetWindowRect(window, &r);
    EXPECT_EQ(r.left, 100);
    EXPECT_EQ(r.top, 120);
    EXPECT_EQ(r.right - r.left, 500);
    EXPECT_EQ(r.bottom - r.top, 600);
    SetWindowPos(window, nullptr, 80, 90, 520, 610, SWP_NOZORDER);
    Export<windll::ClosePluginFn>("ClosePlugin")();
    EXPECT_EQ(Setting(u"WinPosition", u"EXIF"), u"80,90,520,610,0," + platform::Utf8ToUtf16(std::to_string(dpi)) + u";");

    // Off every monitor: back to the work area. Saved at twice the DPI: half the size.
    save(5000, -4000, 600, 700, 2 * dpi);
    ASSERT_EQ(Show(gps, viewer), 0);
    window = DllWindow();
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    GetWindowRect(window, &r);
    EXPECT_EQ(r.left, work.left);
    EXPECT_EQ(r.top, work.top);
    EXPECT_EQ(r.right - r.left, 300);
    EXPECT_EQ(r.bottom - r.top, 350);
    Export<windll::ClosePluginFn>("ClosePlugin")();

    // Saved low at 96 DPI, or taller than the screen once scaled to this
    // DPI: wholly on the work area, and saved back so.
    const int workHeight = work.bottom - work.top;
    for (const int height : {workHeight / 3, workHeight * 96 / dpi + 200}) {
        save(40, work.bottom - 100, 500, height, 96);
        ASSERT_EQ(Show(gps, viewer), 0);
        window = DllWindow();
        GetWindowRect(window, &r);
        EXPECT_GE(r.top, work.top) << height;
        EXPECT_LE(r.bottom, work.bottom) << height;
        EXPECT_EQ(r.left, 40);
        EXPECT_EQ(r.bottom - r.top, std::min(height * dpi / 96, workHeight));
        // A re-show pulls it back after the viewer left it hanging off the edge.
        SetWindowPos(window, nullptr, 40, work.bottom - 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        ASSERT_EQ(Show(plain, viewer), 0);
        GetWindowRect(window, &r);
        EXPECT_LE(r.bottom, work.bottom) << height;
        Export<windll::ClosePluginFn>("ClosePlugin")();
        const vv::WinPosition back = vv::ParseWinPosition(Setting(u"WinPosition", u"EXIF"));
        EXPECT_LE(back.top + back.height, work.bottom) << height;
    }
}

// Memory running out: no window and -1 rather than an exception into the
// viewer; only the table failing: the caption names the rows' size.
TEST_F(ExifWindow, OutOfMemoryOpensNoWindowOrNamesTheTablesSizeInTheCaption) {
    int answer = 0;
    try {
        wintest::FailingAllocations failing;
        answer = vv::ShowExifInfo(windll::Plugin(), gps.c_str(), viewer, settings.c_str(), 1);
    } catch (...) {
        ADD_FAILURE() << "an exception left ShowExifInfo";
    }
    EXPECT_EQ(answer, -1);
    EXPECT_EQ(vv::ExifWindowHandle(), nullptr);

    HWND window = nullptr;
    {
        wintest::FailingAllocations failing(1, sizeof(exif::TagRecordTable));
        window = ShowHere(gps);
    }
    ASSERT_NE(window, nullptr);
    wchar_t caption[96] = {};
    GetWindowTextW(window, caption, 96);
    EXPECT_EQ(platform::ToU16string(caption), u"Error - Out of memory! (" +
                                                  platform::Utf8ToUtf16(std::to_string(exif::kTagTableRows *
                                                                                       sizeof(exif::TagRecord))) +
                                                  u" bytes required)");
    EXPECT_EQ(ListView_GetItemCount(GetDlgItem(window, IDC_EXIF_LIST)), 0);
}

// The links themselves are the map module's; here each key (it posts its
// command) must reach its service with this file's position.
TEST_F(ExifWindow, EveryKeyReachesItsActionAndEveryMapItsSouthWesternPosition) {
    HWND window = ShowHere(gps);
    ASSERT_NE(window, nullptr);
    HWND list = GetDlgItem(window, IDC_EXIF_LIST);
    const struct {
        UINT key;
        const char16_t* linkStart;
    } kMaps[] = {
        {'M', u"https://www.google.com/maps/place/-33.450000,-70.670000/"},
        {'O', u"https://www.openstreetmap.org/?mlat=-33.450000&mlon=-70.670000"},
        {'B', u"https://www.bing.com/maps/?v=2&cp=-33.450000~-70.670000"},
        {'A', u"bingmaps:?collection=point.-33.450000_-70.670000"},
        {'N', u"https://map.naver.com/v5/?lat=-33.450000&lng=-70.670000"},
        {'K', u"https://map.kakao.com/link/map/%F0%9F%93%B7,-33.450000,-70.670000"},
        {'H', u"https://geohack.toolforge.org/geohack/geohack.php?language=en&params=-33.450000;-70.670000"},
    };
    for (const auto& map : kMaps) {
        opened.clear();
        Key(window, map.key);
        ASSERT_EQ(opened.size(), 1u) << char(map.key);
        EXPECT_EQ(opened[0].rfind(map.linkStart, 0), 0u) << char(map.key);
    }
    // The satellite choice is read when the link is made.
    Setting(u"EXIF", u"Satellite", u"1");
    Command(window, IDC_EXIF_GOOGLE_MAPS);
    EXPECT_EQ(LastOpened().substr(LastOpened().size() - 14), u"/data=!3m1!1e3");

    // G writes the placemark; the next file deletes it.
    Key(window, 'G');
    const std::u16string kml = LastOpened();
    ASSERT_EQ(kml.substr(kml.size() - 4), u".kml");
    const std::string bytes(reinterpret_cast<const char*>(fixture::ReadAll(kml).data()), fixture::ReadAll(kml).size());
    EXPECT_EQ(bytes, exif::FormatKml(gps, -70.67, -33.45, 90.0));
    EXPECT_NE(bytes.find("<coordinates>-70.670000,-33.450000,0</coordinates>\r\n"), std::string::npos);

    Key(window, 'C');
    const std::u16string all = ClipboardText();
    EXPECT_EQ(all.rfind(u"Filename - gps.jpg\r\nMake - Vantaview\r\nModel - VV-1\r\n", 0), 0u);
    EXPECT_NE(all.find(u"\r\n\r\nGPS information: - \r\n"), std::u16string::npos) << "separator, then heading";
    ListView_SetItemState(list, FindRow(list, u"Model"), LVIS_SELECTED, LVIS_SELECTED);
    Key(window, 'S');
    EXPECT_EQ(ClipboardText(), u"Model - VV-1\r\n");

    for (UINT key : {VK_BACK, VK_SPACE, VK_LEFT, VK_RIGHT})
        Key(window, key);
    std::vector<WPARAM> keys;
    for (const wintest::ViewerMessage& m : stand.Received(WM_KEYDOWN))
        keys.push_back(m.wParam);
    EXPECT_EQ(keys, (std::vector<WPARAM>{VK_BACK, VK_SPACE, VK_LEFT, VK_RIGHT}));
    Key(window, VK_TAB);
    EXPECT_EQ(GetFocus(), viewer);
    Key(window, 'X');  // not in the table: nothing happens
    EXPECT_TRUE(IsWindow(window));

    // T shows the context menu at the button: the map items are enabled.
    UINT geoHack = MF_GRAYED;
    WithMenu(
        [&](HMENU items, HWND menu) {
            geoHack = GetMenuState(items, IDM_GEOHACK, MF_BYCOMMAND);
            wintest::SaveScreenshot(vv::ExifWindowHandle(), "exif_window_menu_gps", menu);
        },
        [&] { Key(window, 'T'); });
    EXPECT_FALSE(geoHack & MF_GRAYED);

    ShowHere(plain);
    EXPECT_FALSE(platform::FileExists(kml)) << "the next file deletes the placemark";
    Key(window, 'E');
    EXPECT_FALSE(IsWindow(window));
    window = ShowHere(gps);
    Key(window, VK_ESCAPE);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(vv::ExifWindowHandle(), nullptr);
}

// The shortcuts are the ones the context menu's texts show ("\tAlt+S").
TEST_F(ExifWindow, EveryAltShortcutTheMenuShowsWorksUnlessItsItemIsGreyed) {
    HMENU menus = LoadMenuW(windll::Plugin(), L"IDR_EXIF_CONTEXT_MENU");
    HMENU menu = GetSubMenu(menus, 0);
    std::vector<std::pair<WORD, int>> shortcuts;  // key, command
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t text[160] = {};
        GetMenuStringW(menu, static_cast<UINT>(i), text, 160, MF_BYPOSITION);
        if (const char16_t key = vv::AltShortcutKey(platform::ToU16string(text)))
            shortcuts.emplace_back(key, static_cast<int>(GetMenuItemID(menu, i)));
    }
    DestroyMenu(menus);
    EXPECT_EQ(shortcuts.size(), 10u);
    for (const auto& file : {gps, plain}) {
        HWND window = ShowHere(file);
        ListView_SetItemState(GetDlgItem(window, IDC_EXIF_LIST), 1, LVIS_SELECTED, LVIS_SELECTED);
        SetForegroundWindow(window);
        for (const auto& [key, command] : shortcuts) {
            opened.clear();
            EmptyTheClipboard();
            Type({VK_MENU, key});
            RunViewerLoop(window);
            const bool done = !opened.empty() || !ClipboardText().empty();
            EXPECT_EQ(done, file == gps || !vv::NeedsPosition(command)) << "Alt+" << char(key);
        }
    }
    // With the menu open: Alt+A, which its text names but its item has no
    // mnemonic for; the menu itself answers A alone.
    HWND window = ShowHere(gps);
    for (const auto& keys : {std::vector<WORD>{VK_MENU, 'A'}, std::vector<WORD>{'A'}}) {
        opened.clear();
        const auto driven = wintest::DriveModal([] { return FindWindowW(L"#32768", nullptr); },
                                                {[&](HWND) { Type(keys); }}, [&] { Key(window, 'T'); });
        EXPECT_EQ(driven.stepsRun, 1u) << "no menu shown";
        RunViewerLoop(window);
        EXPECT_EQ(LastOpened().substr(0, 9), u"bingmaps:") << keys.size();
    }
}

TEST_F(ExifWindow, ContextMenuGreysTheMapsWithoutAPositionAndKeepsTheSatelliteChoice) {
    Setting(u"Viewing", u"DarkMode", u"1");
    HWND window = ShowHere(plain);
    bool greyed = false;
    WithMenu(
        [&](HMENU items, HWND menu) {
            greyed = items;
            for (int id : {IDC_EXIF_GOOGLE_MAPS, IDM_GEOHACK, IDC_EXIF_OPENSTREETMAP, IDC_EXIF_GOOGLE_EARTH,
                           IDM_KAKAOMAP, IDM_NAVERMAP, IDM_BINGMAPS, IDM_BINGMAPS_APP})
                greyed = greyed && (GetMenuState(items, static_cast<UINT>(id), MF_BYCOMMAND) & MF_GRAYED);
            wintest::SaveScreenshot(vv::ExifWindowHandle(), "exif_window_menu_nogps_dark", menu);
        },
        [&] { Command(window, IDC_EXIF_MORE); });
    EXPECT_TRUE(greyed);

    // The satellite item flips and is saved; the next menu shows it checked.
    Command(window, IDM_SATELLITE);
    EXPECT_EQ(Setting(u"EXIF", u"Satellite"), u"1");
    UINT satellite = 0;
    WithMenu([&](HMENU items, HWND) { satellite = GetMenuState(items, IDM_SATELLITE, MF_BYCOMMAND); },
             [&] { Command(window, IDC_EXIF_MORE); });
    EXPECT_TRUE(satellite & MF_CHECKED);
    Command(window, IDM_SATELLITE);
    EXPECT_EQ(Setting(u"EXIF", u"Satellite"), u"0");
}

TEST_F(ExifWindow, ChooseTagsHidesATagAndItsPositionHalfAndKeepsTheSelection) {
    HWND window = ShowHere(gps);
    HWND list = GetDlgItem(window, IDC_EXIF_LIST);
    ListView_SetItemState(list, FindRow(list, u"Make"), LVIS_SELECTED, LVIS_SELECTED);
    for (const char* shot : {"choose_tags_light", "choose_tags_dark"}) {
        Setting(u"Viewing", u"DarkMode", shot[12] == 'd' ? u"1" : u"0");
        Choose(window, [shot](HWND chooser) {
            HWND list = GetDlgItem(chooser, IDC_CHOOSE_LIST);
            for (int i = 0; i < ListView_GetItemCount(list); ++i)
                if (ListCell(list, i, 0) == u"272" || ListCell(list, i, 0) == u"404")
                    ListView_SetCheckState(list, i, FALSE);
            wintest::SaveScreenshot(chooser, shot);
            SendMessageW(chooser, WM_COMMAND, IDOK, 0);
        });
    }
    EXPECT_EQ(Setting(u"EXIF", u"HideTags"), u"272,404,");
    EXPECT_EQ(FindRow(list, u"Model"), -1);
    EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_SELECTED), FindRow(list, u"Make"));
    wintest::SaveScreenshot(window, "exif_window_after_choose_tags");
    EXPECT_FALSE(Visible(window, IDC_EXIF_GOOGLE_EARTH)) << "hiding the longitude hides the maps";

    // Select all, then OK: everything shows again.
    Choose(window, [](HWND chooser) {
        SendMessageW(chooser, WM_COMMAND, IDC_CHOOSE_SELECT_ALL, 0);
        SendMessageW(chooser, WM_COMMAND, IDOK, 0);
    });
    EXPECT_EQ(Setting(u"EXIF", u"HideTags"), u"");
    EXPECT_TRUE(Visible(window, IDC_EXIF_GOOGLE_EARTH));
}

}  // namespace
