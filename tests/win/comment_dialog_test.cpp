// The comment dialog through Metadata.dll's Show_JPG_Comment_W, called as
// the viewer calls it. The modal dialog (and any message box after it) is
// driven from a thread timer, which every modal loop of this thread
// dispatches.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "fixture/container_fixture.h"
#include "platform/platform.h"
#include "plugin_dll.h"
#include "harness.h"
#include "screenshot.h"
#include "ui/comment_dialog_ids.h"

namespace {

using fixture::Bytes;
using fixture::Join;
using namespace std::string_literals;

const wchar_t* W(const std::u16string& s) { return reinterpret_cast<const wchar_t*>(s.c_str()); }
std::u16string U(const std::wstring& s) { return std::u16string(s.begin(), s.end()); }

Bytes Com(std::string_view payload) { return fixture::JpegBuilder().Com(payload).Build(); }
const Bytes kSoi = {0xFF, 0xD8};
const Bytes kApp0 = fixture::JpegBuilder().Segment(0xE0, fixture::ToBytes("JFIF")).Build();
const Bytes kScan = fixture::JpegBuilder().ScanAndEoi().Build();
const Bytes kPlain = Join({kSoi, kApp0, kScan});

// ------------------------------------------------------------ the driver

// What the user does in the dialog once it is up; then the driver presses
// `finish`. Message boxes are recorded and answered with OK.
std::function<void(HWND)> g_user;
int g_finish = IDOK;
int g_dialogsSeen = 0;
std::vector<std::pair<std::wstring, std::wstring>> g_boxes;  // text, caption
HWND g_handled = nullptr;
int g_ticksSinceHandled = 0;
bool g_inTick = false;

std::wstring Text(HWND window) {
    wchar_t text[4200] = {};
    GetWindowTextW(window, text, 4200);
    return text;
}
std::wstring ItemText(HWND dialog, int id) { return Text(GetDlgItem(dialog, id)); }

BOOL CALLBACK DriveWindow(HWND window, LPARAM) {
    wchar_t className[16] = {};
    GetClassNameW(window, className, 16);
    if (std::wstring(className) != L"#32770" || !IsWindowVisible(window))
        return TRUE;
    if (GetDlgItem(window, IDC_COMMENT_TEXT)) {
        if (window != g_handled) {
            g_handled = window;
            g_ticksSinceHandled = 0;
            ++g_dialogsSeen;
            if (g_user)
                g_user(window);
            PostMessageW(window, WM_COMMAND, MAKEWPARAM(g_finish, BN_CLICKED), 0);
        } else if (++g_ticksSinceHandled > 40) {
            EndDialog(window, IDCANCEL);  // a stuck dialog fails the test instead of hanging it
        }
        return TRUE;
    }
    // A message box: its text stands in a static of id 0xFFFF (100 under Wine).
    std::wstring text = ItemText(window, 0xFFFF);
    if (text.empty())
        text = ItemText(window, 100);
    g_boxes.emplace_back(text, Text(window));
    EndDialog(window, IDOK);
    return TRUE;
}

void CALLBACK DriveTick(HWND, UINT, UINT_PTR, DWORD) {
    if (g_inTick)
        return;  // a screenshot pumps messages inside the user's step
    g_inTick = true;
    EnumThreadWindows(GetCurrentThreadId(), DriveWindow, 0);
    g_inTick = false;
}

void Click(HWND dialog, int id) { SendMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0); }
bool Checked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }
void Shot(HWND dialog, const char* name) { EXPECT_TRUE(wintest::SaveScreenshot(dialog, name)) << name; }

// ------------------------------------------------------------ the oracle

// exiftool's Comment of a file, read on the host.
std::string ExiftoolComment(const std::u16string& path) {
    return wintest::RunOnHost("exiftool -b -Comment '" + wintest::UnixPath(path) + "'");
}

class CommentDialog : public ::testing::Test {
protected:
    void SetUp() override {
        g_boxes.clear();
        g_user = nullptr;
        g_finish = IDOK;
        g_dialogsSeen = 0;
        g_handled = nullptr;
    }
    void TearDown() override { wintest::PumpMessages(); }
    // Show_JPG_Comment_W through the DLL, `user` acting once the dialog is up.
    int Show(const std::u16string& files, std::function<void(HWND)> user, int finish = IDOK,
             const wchar_t* formats = L";JPG;") {
        g_user = std::move(user);
        g_finish = finish;
        g_handled = nullptr;
        const auto show = windll::Export<windll::ShowJpgCommentFn>("Show_JPG_Comment_W");
        EXPECT_NE(show, nullptr);
        const UINT_PTR timer = SetTimer(nullptr, 0, 50, DriveTick);
        const int answer = show ? show(W(files), viewer, 0, W(settings), 0, formats) : -99;
        KillTimer(nullptr, timer);
        return answer;
    }
    void Setting(const char16_t* section, const char16_t* key, const char16_t* value) {
        platform::WriteSettingString(settings, section, key, value);
    }
    std::u16string Setting(const char16_t* key) { return platform::ReadSettingString(settings, u"IPTC", key, u"-"); }

    fixture::TempDir dir;
    const std::u16string settings = dir.Path("viewer.ini");
    wintest::StandInViewer stand{L"Viewer", 900};
    HWND viewer = stand.Window();
};

TEST_F(CommentDialog, SingleFileShowsEditsAndWritesTheComment) {
    const Bytes head = Join({kSoi, kApp0});
    const auto path = dir.Write("one.jpg", Join({head, Com("old text"), kScan}));
    const int answer = Show(path, [&](HWND d) {
        EXPECT_EQ(U(ItemText(d, IDC_COMMENT_FILE)), u"File: " + path);
        EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), L"old text");
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(d, IDC_COMMENT_READ_ONLY)));
        EXPECT_TRUE(Checked(d, IDC_COMMENT_KEEP_DATE) && Checked(d, IDC_COMMENT_AUTOMATIC)) << "the defaults";
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(d, IDC_COMMENT_APPEND))) << "there is a comment to append to";
        SetDlgItemTextW(d, IDC_COMMENT_TEXT, L"  Harbour at dawn\r\nZ\u00fcrich  ");
        Shot(d, "comment_dialog_single_light");
        Click(d, IDC_COMMENT_KEEP_DATE);
        Click(d, IDC_COMMENT_CLEAR_SPACES);
        EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), L"Harbour at dawn\r\nZ\u00fcrich") << "trimmed when checked";
    });
    EXPECT_EQ(answer, 1);
    EXPECT_TRUE(g_boxes.empty());
    // The segment takes the old one's place and everything after it stays;
    // the writer's fixed tail count adds as many zeros as the head before the
    // old comment held beyond the start marker.
    EXPECT_EQ(fixture::ReadAll(path),
              Join({head, Com("Harbour at dawn\r\nZ\xC3\xBCrich\0"s), kScan, Bytes(kApp0.size(), 0)}));
    EXPECT_EQ(ExiftoolComment(path), "Harbour at dawn\r\nZ\xC3\xBCrich");
    EXPECT_EQ(Setting(u"JPGComKeepOrgDate"), u"0");
    EXPECT_EQ(Setting(u"JPGComClearSpaces"), u"1");
    EXPECT_EQ(Setting(u"JPGComAppend"), u"0");
}

TEST_F(CommentDialog, FileWithoutCommentGetsOneBehindTheStartAndKeepsItsTimes) {
    const auto path = dir.Write("plain.jpg", kPlain);
    platform::FileTimes set, before, after;
    set.creation = 131000000000000000ULL;  // 2016
    set.lastWrite = 131200000000000000ULL;
    // The dialog reads the file before writing it; an access time ahead of
    // the clock is one that reading does not move (a relatime mount under Wine).
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    set.lastAccess = (uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime) + 36000000000ULL;
    // As the file system keeps them (a Linux one under Wine has no creation time of its own).
    ASSERT_TRUE(platform::SetFileTimes(path, set) && platform::GetFileTimes(path, before));
    EXPECT_EQ(Show(path, [](HWND d) {
                  EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), L"");
                  EXPECT_FALSE(IsWindowEnabled(GetDlgItem(d, IDC_COMMENT_APPEND)));
                  SetDlgItemTextW(d, IDC_COMMENT_TEXT, L"first");
              }),
              1);
    ASSERT_TRUE(platform::GetFileTimes(path, after));
    EXPECT_EQ(after.creation, before.creation);
    EXPECT_EQ(after.lastAccess, set.lastAccess);
    EXPECT_EQ(after.lastWrite, set.lastWrite);
    EXPECT_EQ(fixture::ReadAll(path), Join({kSoi, Com("first\0"s), kApp0, kScan}));
}

TEST_F(CommentDialog, BatchGivesEachFileItsOwnTextAndRefusesTheReadOnlyOne) {
    const Bytes withComment = Join({kSoi, Com("was here"), kScan});
    const auto a = dir.Write("a.jpg", withComment), locked = dir.Write("locked.jpg", kPlain),
               b = dir.Write("b.jpg", kPlain), c = dir.Write("c.jpg", withComment);
    platform::SetReadOnly(locked, true);
    const int answer = Show(a + u"|" + locked + u"|" + b + u"|" + c + u"|", [&](HWND d) {
        EXPECT_EQ(U(ItemText(d, IDC_COMMENT_FILE)), u"First file: " + a);
        EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), L"was here");
        SetDlgItemTextW(d, IDC_COMMENT_TEXT, L"Photo $N");
        Shot(d, "comment_dialog_batch_light");
    });
    platform::SetReadOnly(locked, false);
    EXPECT_EQ(answer, 0) << "a file was refused";
    ASSERT_EQ(g_boxes.size(), 1u);
    EXPECT_EQ(U(g_boxes[0].first), u"Can't write Comment data!\n\nThe file: '" + locked + u"' is read only.");
    EXPECT_EQ(g_boxes[0].second, L"Vantaview");
    EXPECT_EQ(fixture::ReadAll(locked), kPlain);
    EXPECT_EQ(fixture::ReadAll(a), Join({kSoi, Com("Photo a\0"s), kScan}));
    EXPECT_EQ(fixture::ReadAll(b), Join({kSoi, Com("Photo b\0"s), kApp0, kScan}));
    EXPECT_EQ(ExiftoolComment(c), "Photo c");
}

TEST_F(CommentDialog, CancelLeavesEveryFileAndSettingAsItWas) {
    Setting(u"Viewing", u"DarkMode", u"1");
    const Bytes withComment = Join({kSoi, Com("keep me"), kScan});
    const auto a = dir.Write("a.jpg", withComment), b = dir.Write("b.jpg", kPlain);
    platform::SetReadOnly(a, true);
    const int answer = Show(a + u"|" + b + u"|", [](HWND d) {
        EXPECT_TRUE(IsWindowVisible(GetDlgItem(d, IDC_COMMENT_READ_ONLY))) << "the first file is read-only";
        SetDlgItemTextW(d, IDC_COMMENT_TEXT, L"never written");
        Click(d, IDC_COMMENT_APPEND);
        Shot(d, "comment_dialog_batch_dark");
    }, IDCANCEL);
    platform::SetReadOnly(a, false);
    EXPECT_EQ(answer, 1);
    EXPECT_TRUE(g_boxes.empty());
    EXPECT_EQ(fixture::ReadAll(a), withComment);
    EXPECT_EQ(fixture::ReadAll(b), kPlain);
    EXPECT_EQ(Setting(u"JPGComAppend"), u"-");
}

TEST_F(CommentDialog, RadiosRereadTheOldCommentAndHelpAsksTheViewer) {
    Setting(u"Viewing", u"DarkMode", u"1");
    Setting(u"IPTC", u"JPGComConversion", u"1");
    const Bytes original = Join({kSoi, Com("Caf\xC3\xA9"), kScan});
    const auto path = dir.Write("cafe.jpg", original);
    wchar_t asAnsi[8] = {};
    ASSERT_EQ(MultiByteToWideChar(CP_ACP, 0, "Caf\xC3\xA9", 5, asAnsi, 7), 5);
    EXPECT_EQ(Show(path, [&](HWND d) {
                  EXPECT_TRUE(Checked(d, IDC_COMMENT_ANSI));
                  EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), asAnsi);
                  Shot(d, "comment_dialog_single_dark");
                  const struct {
                      int radio;
                      const wchar_t* shown;
                      const char16_t* stored;
                  } radios[] = {{IDC_COMMENT_UNICODE, L"Caf\u00e9", u"2"},
                                {IDC_COMMENT_ANSI, asAnsi, u"1"},
                                {IDC_COMMENT_AUTOMATIC, L"Caf\u00e9", u"0"}};
                  for (const auto& r : radios) {
                      Click(d, r.radio);
                      EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), r.shown) << r.radio;
                      EXPECT_EQ(Setting(u"JPGComConversion"), r.stored) << r.radio;
                  }
                  Click(d, IDC_COMMENT_HELP);
                  HELPINFO help = {};
                  help.cbSize = sizeof help;
                  SendMessageW(d, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));  // F1
              }, IDCANCEL),
              1);
    const auto help = stand.Received(0x06A3);
    ASSERT_EQ(help.size(), 2u);
    for (const wintest::ViewerMessage& r : help) {
        EXPECT_EQ(r.wParam, WPARAM{0x05000001});
        EXPECT_EQ(r.lParam, 0);
    }
    EXPECT_EQ(fixture::ReadAll(path), original);
}

TEST_F(CommentDialog, PngTextIsShownReadOnlyAndAPngWithoutTextOpensNothing) {
    const Bytes text = fixture::PngChunk("tEXt", Join({fixture::ToBytes("Comment"), {0}, fixture::ToBytes("Hello")}));
    const Bytes png = fixture::PngFile({text, fixture::PngChunk("tEXt", Join({fixture::ToBytes("Author"), {0},
                                                                              fixture::ToBytes("Ana")}))});
    const auto path = dir.Write("p.png", png);
    for (const char* shot : {"png_text_light", "png_text_dark"}) {
        EXPECT_EQ(Show(path, [&](HWND d) {
                      EXPECT_EQ(U(ItemText(d, IDC_COMMENT_FILE)), u"File: " + path);
                      EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), L"Comment: Hello\r\nAuthor: Ana");
                      EXPECT_TRUE(GetWindowLongW(GetDlgItem(d, IDC_COMMENT_TEXT), GWL_STYLE) & ES_READONLY);
                      EXPECT_EQ(GetDlgItem(d, IDOK), nullptr) << "nothing to write";
                      Shot(d, shot);
                  }, IDCANCEL, L";JPG;PNG;"),
                  1);
        Setting(u"Viewing", u"DarkMode", u"1");
    }
    EXPECT_EQ(fixture::ReadAll(path), png);
    EXPECT_EQ(g_dialogsSeen, 2);

    EXPECT_EQ(Show(dir.Write("empty.png", fixture::PngFile({})), nullptr, IDCANCEL, L";PNG;"), 1);
    EXPECT_EQ(g_dialogsSeen, 2) << "no dialog for a PNG without text";
}

}  // namespace
