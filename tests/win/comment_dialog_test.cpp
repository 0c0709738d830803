// The comment dialog through Metadata.dll's Show_JPG_Comment_W, called as
// the viewer calls it, with the harness's driver acting in the modal dialog.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fixture/container_fixture.h"
#include "platform/platform.h"
#include "platform/win32/wide_text.h"
#include "plugin_dll.h"
#include "harness.h"
#include "screenshot.h"
#include "ui/comment_dialog_ids.h"

namespace {

using fixture::Bytes;
using fixture::Join;
using namespace std::string_literals;

using platform::AsWchar;
using wintest::Click;
using wintest::ItemText;

Bytes Com(std::string_view payload) { return fixture::JpegBuilder().Com(payload).Build(); }
const Bytes kSoi = {0xFF, 0xD8};
const Bytes kApp0 = fixture::JpegBuilder().Segment(0xE0, fixture::ToBytes("JFIF")).Build();
const Bytes kScan = fixture::JpegBuilder().ScanAndEoi().Build();
const Bytes kPlain = Join({kSoi, kApp0, kScan});

bool Checked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }
void Shot(HWND dialog, const char* name) { EXPECT_TRUE(wintest::SaveScreenshot(dialog, name)) << name; }

class CommentDialog : public ::testing::Test {
protected:
    void TearDown() override { wintest::PumpMessages(); }
    // Show_JPG_Comment_W through the DLL, `user` acting once the dialog is up;
    // then `finish` is pressed. Message boxes land in `boxes`.
    int Show(const std::u16string& files, wintest::Step user, int finish = IDOK, const wchar_t* formats = L";JPG;") {
        const auto show = windll::Export<windll::ShowJpgCommentFn>("Show_JPG_Comment_W");
        EXPECT_NE(show, nullptr);
        int answer = -99;
        const auto driven = wintest::DriveModal(
            [] {
                HWND edit = FindWindowW(nullptr, L"Edit JPG comment");
                return edit ? edit : FindWindowW(nullptr, L"Show PNG comment/text");
            },
            {user ? user : [](HWND) {},
             [finish](HWND d) { PostMessageW(d, WM_COMMAND, MAKEWPARAM(finish, BN_CLICKED), 0); }},
            [&] { answer = show ? show(AsWchar(files), viewer, 0, AsWchar(settings), 0, formats) : -99; });
        boxes = driven.boxes;
        dialogsSeen += driven.stepsRun > 0;
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
    std::vector<std::pair<std::wstring, std::wstring>> boxes;  // text, caption
    int dialogsSeen = 0;
};

TEST_F(CommentDialog, SingleFileShowsEditsAndWritesTheComment) {
    const Bytes head = Join({kSoi, kApp0});
    const auto path = dir.Write("one.jpg", Join({head, Com("old text"), kScan}));
    const int answer = Show(path, [&](HWND d) {
        EXPECT_EQ(ItemText(d, IDC_COMMENT_FILE), u"File: " + path);
        EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), u"old text");
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(d, IDC_COMMENT_READ_ONLY)));
        EXPECT_TRUE(Checked(d, IDC_COMMENT_KEEP_DATE) && Checked(d, IDC_COMMENT_AUTOMATIC)) << "the defaults";
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(d, IDC_COMMENT_APPEND))) << "there is a comment to append to";
        SetDlgItemTextW(d, IDC_COMMENT_TEXT, L"  Harbour at dawn\r\nZ\u00fcrich  ");
        Shot(d, "comment_dialog_single_light");
        Click(d, IDC_COMMENT_KEEP_DATE);
        Click(d, IDC_COMMENT_CLEAR_SPACES);
        EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), u"Harbour at dawn\r\nZ\u00fcrich") << "trimmed when checked";
    });
    EXPECT_EQ(answer, 1);
    EXPECT_TRUE(boxes.empty());
    // The segment takes the old one's place and everything after it stays.
    EXPECT_EQ(fixture::ReadAll(path), Join({head, Com("Harbour at dawn\r\nZ\xC3\xBCrich\0"s), kScan}));
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
                  EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), u"");
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

// Cancel first (dark), then the same batch written (light).
TEST_F(CommentDialog, BatchCancelsUntouchedOrGivesEachFileItsOwnTextAndRefusesTheReadOnlyOne) {
    const Bytes withComment = Join({kSoi, Com("was here"), kScan});
    const auto locked = dir.Write("locked.jpg", withComment), b = dir.Write("b.jpg", kPlain),
               c = dir.Write("c.jpg", withComment);
    const std::u16string batch = locked + u"|" + b + u"|" + c + u"|";
    platform::SetReadOnly(locked, true);
    Setting(u"Viewing", u"DarkMode", u"1");
    EXPECT_EQ(Show(batch, [](HWND d) {
        EXPECT_TRUE(IsWindowVisible(GetDlgItem(d, IDC_COMMENT_READ_ONLY))) << "the first file is read-only";
        SetDlgItemTextW(d, IDC_COMMENT_TEXT, L"never written");
        Click(d, IDC_COMMENT_APPEND);
        Shot(d, "comment_dialog_batch_dark");
    }, IDCANCEL), 1);
    EXPECT_TRUE(boxes.empty());
    EXPECT_EQ(fixture::ReadAll(b), kPlain);
    EXPECT_EQ(Setting(u"JPGComAppend"), u"-");

    Setting(u"Viewing", u"DarkMode", u"0");
    const int answer = Show(batch, [&](HWND d) {
        EXPECT_EQ(ItemText(d, IDC_COMMENT_FILE), u"First file: " + locked);
        EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), u"was here");
        SetDlgItemTextW(d, IDC_COMMENT_TEXT, L"Photo $N");
        Shot(d, "comment_dialog_batch_light");
    });
    platform::SetReadOnly(locked, false);
    EXPECT_EQ(answer, 0) << "a file was refused";
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(platform::ToU16string(boxes[0].first), u"Can't write Comment data!\n\nThe file: '" + locked + u"' is read only.");
    EXPECT_EQ(boxes[0].second, L"Vantaview");
    EXPECT_EQ(fixture::ReadAll(locked), withComment);
    EXPECT_EQ(fixture::ReadAll(b), Join({kSoi, Com("Photo b\0"s), kApp0, kScan}));
    EXPECT_EQ(fixture::ReadAll(c), Join({kSoi, Com("Photo c\0"s), kScan}));
}

TEST_F(CommentDialog, RadiosRereadTheOldCommentAndHelpAsksTheViewer) {
    Setting(u"Viewing", u"DarkMode", u"1");
    Setting(u"IPTC", u"JPGComConversion", u"1");
    const Bytes original = Join({kSoi, Com("Caf\xC3\xA9"), kScan});
    const auto path = dir.Write("cafe.jpg", original);
    wchar_t ansiChars[8] = {};
    ASSERT_EQ(MultiByteToWideChar(CP_ACP, 0, "Caf\xC3\xA9", 5, ansiChars, 7), 5);
    const std::u16string asAnsi = platform::ToU16string(ansiChars);
    EXPECT_EQ(Show(path, [&](HWND d) {
                  EXPECT_TRUE(Checked(d, IDC_COMMENT_ANSI));
                  EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), asAnsi);
                  Shot(d, "comment_dialog_single_dark");
                  const struct {
                      int radio;
                      std::u16string shown;
                      const char16_t* stored;
                  } radios[] = {{IDC_COMMENT_UNICODE, u"Caf\u00e9", u"2"},
                                {IDC_COMMENT_ANSI, asAnsi, u"1"},
                                {IDC_COMMENT_AUTOMATIC, u"Caf\u00e9", u"0"}};
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
                      EXPECT_EQ(ItemText(d, IDC_COMMENT_FILE), u"File: " + path);
                      EXPECT_EQ(ItemText(d, IDC_COMMENT_TEXT), u"Comment: Hello\r\nAuthor: Ana");
                      EXPECT_TRUE(GetWindowLongW(GetDlgItem(d, IDC_COMMENT_TEXT), GWL_STYLE) & ES_READONLY);
                      EXPECT_EQ(GetDlgItem(d, IDOK), nullptr) << "nothing to write";
                      Shot(d, shot);
                  }, IDCANCEL, L";JPG;PNG;"),
                  1);
        Setting(u"Viewing", u"DarkMode", u"1");
    }
    EXPECT_EQ(fixture::ReadAll(path), png);
    EXPECT_EQ(dialogsSeen, 2);

    EXPECT_EQ(Show(dir.Write("empty.png", fixture::PngFile({})), nullptr, IDCANCEL, L";PNG;"), 1);
    EXPECT_EQ(dialogsSeen, 2) << "no dialog for a PNG without text";
}

}  // namespace
