// The IPTC property sheet through Metadata.dll's Show_IPTC_Info_W, as the
// viewer calls it; the harness's driver takes the steps inside its modal loop.
#include <windows.h>
#include <commctrl.h>
#include <prsht.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "fixture/iptc_fixture.h"
#include "platform/platform.h"
#include "platform/win32/wide_text.h"
#include "plugin_dll.h"
#include "harness.h"
#include "screenshot.h"
#include "ui/iptc_sheet_ids.h"

namespace {

using windll::Export;

const wchar_t kSheetCaption[] = L"Vantaview - IPTC information";
using platform::AsWchar;
using platform::ToWstring;
using wintest::Click;
using wintest::ItemText;

// ------------------------------------------------------------ inputs

const char kXmp[] =
    "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
    "<rdf:Description xmlns:dc='http://purl.org/dc/elements/1.1/' "
    "xmlns:photoshop='http://ns.adobe.com/photoshop/1.0/'>"
    "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>Harbour at dawn</rdf:li></rdf:Alt></dc:title>"
    "<dc:subject><rdf:Bag><rdf:li>harbour</rdf:li><rdf:li>boats</rdf:li><rdf:li>dawn</rdf:li></rdf:Bag></dc:subject>"
    "<photoshop:City>Bergen</photoshop:City>"
    "</rdf:Description></rdf:RDF></x:xmpmeta>";

// UTF-8 IPTC with the datasets the sheet writes back, an XMP packet, and an
// APP0 ahead of the APP13.
fixture::Bytes WithIptc() {
    const fixture::Bytes iim = fixture::IimBuilder()
                                   .Dataset(1, 90, "\x1B%G")
                                   .Dataset(1, 0, std::string("\0\x04", 2))
                                   .Dataset(2, 5, "Title")
                                   .Dataset(2, 80, "Ann Berg")
                                   .Dataset(2, 116, "(c) Ann")
                                   .Dataset(2, 120, "Caf\xC3\xA9 by the sea")
                                   .Dataset(2, 25, "sea")
                                   .Dataset(2, 25, "boats")
                                   .Dataset(2, 10, "5")
                                   .Dataset(2, 90, "Oslo")
                                   .Dataset(2, 110, "Agency")
                                   .Build();
    return fixture::JpegBuilder()
        .Soi()
        .Segment(0xE0, fixture::ToBytes(std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14)))
        .Segment(0xED, fixture::IptcApp13(iim))
        .App1Xmp(kXmp)
        .ScanAndEoi()
        .Build();
}

fixture::Bytes XmpOnly() { return fixture::JpegBuilder().Soi().App1Xmp(kXmp).ScanAndEoi().Build(); }

// The bytes behind the first APP13 segment.
fixture::Bytes AfterApp13(const fixture::Bytes& jpeg) {
    for (size_t at = 2; at + 4 <= jpeg.size() && jpeg[at] == 0xFF;) {
        const size_t end = at + 2 + (size_t{jpeg[at + 2]} << 8 | jpeg[at + 3]);
        if (jpeg[at + 1] == 0xED) return fixture::Bytes(jpeg.begin() + static_cast<long>(end), jpeg.end());
        at = end;
    }
    return {};
}

// ------------------------------------------------------------ the steps

using wintest::Step;

HWND Page(HWND sheet, int index) {
    PropSheet_SetCurSel(sheet, nullptr, index);
    wintest::PumpMessages();
    return PropSheet_GetCurrentPageHwnd(sheet);
}

bool Shown(HWND window, int id) { return IsWindowVisible(GetDlgItem(window, id)) != FALSE; }

class IptcSheet : public ::testing::Test {
protected:
    void TearDown() override { wintest::PumpMessages(); }
    // Runs the sheet on `files` while the driver takes the steps.
    int Run(const std::u16string& files, std::vector<Step> steps) {
        int answer = -99;
        messages.clear();
        const wintest::Driven driven = wintest::DriveModal([] { return FindWindowW(nullptr, kSheetCaption); },
                                                           std::move(steps), [&] {
            answer = Export<windll::ShowIptcInfoFn>("Show_IPTC_Info_W")(AsWchar(files), viewer, AsWchar(settings));
        });
        for (const auto& [text, caption] : driven.boxes) messages.push_back(caption + L": " + text);
        return answer;
    }
    void Setting(const char16_t* section, const char16_t* key, const char16_t* value) {
        platform::WriteSettingString(settings, section, key, value);
    }
    std::u16string Setting(const char16_t* key) { return platform::ReadSettingString(settings, u"IPTC", key, u"<none>"); }
    std::u16string Tag(const std::u16string& file, int dataset) {
        wchar_t out[4096] = {};
        Export<windll::LoadTagFn>("LoadTag_IPTC_W")(AsWchar(file), dataset, out, 4096);
        return std::u16string(out, out + wcslen(out));
    }

    fixture::TempDir dir;
    std::u16string settings = dir.Path("viewer.ini");
    wintest::StandInViewer stand{L"Viewer", 0};
    HWND viewer = stand.Window();
    std::vector<std::wstring> messages;  // "caption: text" of each message box, in order
};

const Step kCancel = [](HWND sheet) { PostMessageW(sheet, WM_COMMAND, IDCANCEL, 0); };
const Step kWrite = [](HWND sheet) { Click(sheet, IDOK); };

struct FieldOnPage {
    int page, control, dataset;
};
// The plain text fields, each compared with what LoadTag_IPTC_W reads.
constexpr FieldOnPage kPlainFields[] = {
    {0, IDC_IPTC_OBJECT_NAME, 5}, {0, IDC_IPTC_BYLINE, 80}, {0, IDC_IPTC_COPYRIGHT, 116},
    {0, IDC_IPTC_CAPTION, 120},   {1, IDC_IPTC_URGENCY, 10}, {2, IDC_IPTC_CITY, 90},
    {2, IDC_IPTC_CREDIT, 110},    {2, IDC_IPTC_SOURCE, 115},
};

TEST_F(IptcSheet, OpensWithTheFileAsTheReaderReadsItAndShowsEveryPageLightAndDark) {
    const std::u16string file = dir.Write("iptc.jpg", WithIptc());
    const fixture::Bytes original = fixture::ReadAll(file);
    std::vector<std::u16string> read;
    for (const FieldOnPage& f : kPlainFields) read.push_back(Tag(file, f.dataset));
    EXPECT_EQ(read[3], u"Caf\u00E9 by the sea");
    // The sheet opens at the viewer's client area; this viewer sits low.
    RECT work, placed = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    SetWindowPos(viewer, nullptr, 0, work.bottom - 150, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    for (const std::string mode : {"light", "dark"}) {
        Setting(u"Viewing", u"DarkMode", mode == "dark" ? u"1" : u"0");
        std::vector<std::u16string> shown;
        std::u16string keywords, fileLine, xmpCopy;
        bool utf8Note = false;
        const auto shoot = [&](HWND sheet, int page, const std::string& name) {
            HWND window = Page(sheet, page);
            for (const FieldOnPage& f : kPlainFields)
                if (f.page == page) shown.push_back(ItemText(window, f.control));
            EXPECT_TRUE(wintest::SaveScreenshot(sheet, ("iptc_" + name + "_" + mode).c_str()));
            return window;
        };
        const int answer = Run(file, {
            [&](HWND sheet) {
                GetWindowRect(sheet, &placed);
                HWND page = shoot(sheet, 0, "description");
                fileLine = ItemText(page, IDC_IPTC_FILE_LINE);
                utf8Note = Shown(page, IDC_IPTC_UTF8_NOTE);
            },
            [&](HWND sheet) { keywords = ItemText(shoot(sheet, 1, "keywords"), IDC_IPTC_KEYWORDS); },
            [&](HWND sheet) { shoot(sheet, 2, "credits"); },
            [&](HWND sheet) {
                Click(shoot(sheet, 3, "xmp"), IDC_IPTC_XMP_COPY);
                xmpCopy = wintest::ClipboardText();
            },
            [&](HWND sheet) { shoot(sheet, 4, "options"); },
            kCancel,
        });
        EXPECT_EQ(answer, 1) << mode;
        EXPECT_EQ(shown, read) << mode;
        EXPECT_EQ(keywords, u"sea\r\nboats");
        EXPECT_EQ(fileLine, file + u"\r\n(File: 1 / 1)");
        EXPECT_TRUE(utf8Note);
        EXPECT_TRUE(placed.top >= work.top && placed.bottom <= work.bottom && placed.right <= work.right) << mode;
        EXPECT_NE(xmpCopy.find(u"\r\ndc:subject - harbour|boats|dawn\r\nphotoshop:City - Bergen\r\n"),
                  std::u16string::npos) << "the XMP page copies its own two columns";
    }
    EXPECT_EQ(fixture::ReadAll(file), original) << "Cancel writes nothing";
}

TEST_F(IptcSheet, AnXmpOnlyFileFillsTheFieldsWhenLoadXmpIsSetOrOnDemandFromOneReading) {
    const std::u16string file = dir.Write("xmp.jpg", XmpOnly());
    for (const bool loadXmp : {true, false}) {
        Setting(u"IPTC", u"LoadXMP", loadXmp ? u"1" : u"0");
        std::u16string before, info, title, keywords;
        Run(file, {[&](HWND sheet) {
                       before = ItemText(Page(sheet, 0), IDC_IPTC_OBJECT_NAME);
                       if (!loadXmp) {
                           // The packet was read with the file's IPTC: the XMP
                           // page shows it without reading the file again.
                           dir.Write("xmp.jpg", fixture::JpegBuilder().Soi().ScanAndEoi().Build());
                           HWND xmp = Page(sheet, 3);
                           Click(xmp, IDC_IPTC_XMP_IMPORT);
                           info = ItemText(xmp, IDC_IPTC_XMP_INFO);
                       }
                       title = ItemText(Page(sheet, 0), IDC_IPTC_OBJECT_NAME);
                       keywords = ItemText(Page(sheet, 1), IDC_IPTC_KEYWORDS);
                   },
                   kCancel});
        EXPECT_EQ(before, loadXmp ? u"Harbour at dawn" : u"");
        EXPECT_EQ(info, loadXmp ? u"" : u"Info: 3 IPTC-IIM tags found/updated");
        EXPECT_EQ(title, u"Harbour at dawn") << loadXmp;
        EXPECT_EQ(keywords, u"harbour\r\nboats\r\ndawn") << loadXmp;
    }
}

// Read-only, the file is marked and refused untouched; writable, only the
// edited field changes.
TEST_F(IptcSheet, AReadOnlyFileIsRefusedUntouchedAndAWritableOneGetsItsEditedFieldAlone) {
    const std::u16string file = dir.Write("edit.jpg", WithIptc());
    const fixture::Bytes original = fixture::ReadAll(file);
    std::vector<std::u16string> expected, after;
    for (int dataset : {5, 10, 25, 80, 90, 105, 110, 116, 120})
        expected.push_back(dataset == 105 ? u"Storm warning" : Tag(file, dataset));
    ASSERT_TRUE(platform::SetReadOnly(file, true));
    std::u16string fileLine;
    bool warned = false;
    int answer = Run(file, {[&](HWND sheet) {
                                HWND description = Page(sheet, 0);
                                fileLine = ItemText(description, IDC_IPTC_FILE_LINE);
                                SetDlgItemTextW(description, IDC_IPTC_CAPTION, L"new caption");
                                warned = Shown(Page(sheet, 1), IDC_IPTC_READ_ONLY);
                            },
                            kWrite});
    platform::SetReadOnly(file, false);
    EXPECT_EQ(answer, 0);
    EXPECT_NE(fileLine.find(u"\r\nWarning: This file is set as READ ONLY!\r\n(File: 1 / 1)"), std::u16string::npos);
    EXPECT_TRUE(warned);
    EXPECT_EQ(messages, std::vector<std::wstring>{L"Vantaview: Can't write IPTC data!\n\nThe file: '" + ToWstring(file) +
                                                         L"' is read only."});
    EXPECT_EQ(fixture::ReadAll(file), original);

    answer = Run(file, {[](HWND sheet) {
                            SetDlgItemTextW(Page(sheet, 0), IDC_IPTC_HEADLINE, L"Storm warning");
                            Page(sheet, 4);  // the options page stores its settings on OK
                        },
                        kWrite});
    EXPECT_EQ(answer, 1);
    EXPECT_TRUE(messages.empty());
    for (int dataset : {5, 10, 25, 80, 90, 105, 110, 116, 120}) after.push_back(Tag(file, dataset));
    EXPECT_EQ(after, expected);
    const fixture::Bytes tail = AfterApp13(original);
    ASSERT_FALSE(tail.empty());
    EXPECT_EQ(AfterApp13(fixture::ReadAll(file)), tail);
    for (const char16_t* key : {u"KeepOrgDate", u"ReplaceEmpty", u"SkipEmpty", u"Append", u"SaveTab"})
        EXPECT_EQ(Setting(key), key == std::u16string(u"KeepOrgDate") ? u"1" : u"0") << ToWstring(key).c_str();
}

TEST_F(IptcSheet, BatchModeOneWritesEveryFileButTheReadOnlyOneAndReportsIt) {
    Setting(u"IPTC", u"BatchMode", u"1");
    const std::u16string a = dir.Write("a.jpg", WithIptc()), b = dir.Write("b.jpg", WithIptc()),
                         c = dir.Write("c.jpg", WithIptc());
    const fixture::Bytes bBefore = fixture::ReadAll(b);
    ASSERT_TRUE(platform::SetReadOnly(b, true));
    static bool okShown, nextShown;
    const int answer = Run(a + u"|" + b + u"|" + c, {[](HWND sheet) {
                                                           okShown = Shown(sheet, IDOK);
                                                           nextShown = Shown(sheet, IDC_IPTC_NEXT);
                                                           SetDlgItemTextW(Page(sheet, 0), IDC_IPTC_CAPTION, L"Shot $N");
                                                       },
                                                       kWrite});
    platform::SetReadOnly(b, false);
    EXPECT_EQ(answer, 0);
    EXPECT_TRUE(okShown);
    EXPECT_FALSE(nextShown);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find(L"b.jpg' is read only."), std::wstring::npos);
    EXPECT_EQ(Tag(a, 120), u"Shot a");
    EXPECT_EQ(Tag(c, 120), u"Shot c");
    EXPECT_EQ(fixture::ReadAll(b), bBefore);
}

TEST_F(IptcSheet, BatchModeTwoWalksTheFilesAsksBeforeLeavingAnEditedOneAndTellsTheViewer) {
    Setting(u"IPTC", u"BatchMode", u"2");
    const std::u16string a = dir.Write("a.jpg", WithIptc()), b = dir.Write("b.jpg", WithIptc()),
                         c = dir.Write("c.jpg", WithIptc());
    const fixture::Bytes bBefore = fixture::ReadAll(b), cBefore = fixture::ReadAll(c);
    static bool okShown, nextShown;
    static std::u16string line;
    // The names are sorted; the sheet opens on the first one given, c.
    const int answer = Run(c + u"|" + a + u"|" + b, {
        [](HWND sheet) {
            okShown = Shown(sheet, IDOK);
            nextShown = Shown(sheet, IDC_IPTC_NEXT);
            Page(sheet, 0);
            EXPECT_TRUE(wintest::SaveScreenshot(sheet, "iptc_batch_light"));
            Click(sheet, IDC_IPTC_PREVIOUS);
            Click(sheet, IDC_IPTC_PREVIOUS);
            Click(sheet, IDC_IPTC_PREVIOUS);  // a is the first: a beep, no move
            line = ItemText(Page(sheet, 0), IDC_IPTC_FILE_LINE);
        },
        [](HWND sheet) {
            SetDlgItemTextW(Page(sheet, 0), IDC_IPTC_CAPTION, L"changed");
            Click(sheet, IDC_IPTC_NEXT);  // asks, and Yes writes a
        },
        [](HWND sheet) {
            SetDlgItemTextW(Page(sheet, 1), IDC_IPTC_KEYWORDS, L"SEA\r\nBOATS");  // case only: no question
            Click(sheet, IDC_IPTC_NEXT);
            Click(sheet, IDC_IPTC_NEXT);  // c is the last: a beep, no move
            Click(sheet, IDC_IPTC_PREVIOUS);
        },
        kCancel,
    });
    EXPECT_EQ(answer, 1);
    EXPECT_FALSE(okShown);
    EXPECT_TRUE(nextShown);
    EXPECT_EQ(line, a + u"\r\n(File: 1 / 3)");
    std::vector<std::pair<ULONG_PTR, std::u16string>> copies;
    for (const wintest::ViewerMessage& m : stand.Received(WM_COPYDATA))
        copies.emplace_back(m.copyType, m.copyText);
    EXPECT_EQ(copies, (std::vector<std::pair<ULONG_PTR, std::u16string>>{{9, b}, {9, a}, {9, b}, {9, c}, {9, b}}));
    EXPECT_EQ(messages, std::vector<std::wstring>{L"Vantaview: Save IPTC changes?"});
    EXPECT_EQ(Tag(a, 120), u"changed");
    EXPECT_EQ(fixture::ReadAll(b), bBefore) << "a change of case alone is no change";
    EXPECT_EQ(fixture::ReadAll(c), cBefore);
}

}  // namespace
