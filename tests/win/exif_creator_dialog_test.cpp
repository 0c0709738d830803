// The EXIF creation dialog, built from Metadata.dll's own template: the list
// it shows, the in-place editor, OK writing the file (or showing why not),
// and the export running it modally.
#include "ui/exif_creator_dialog.h"
#include "ui/dialog_kit.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "exif/exif_reader.h"
#include "fixture/fixture.h"
#include "harness.h"
#include "platform/platform.h"
#include "platform/win32/wide_text.h"
#include "plugin_dll.h"
#include "screenshot.h"
#include "ui/resource_ids.h"
#include "ui/theme.h"

namespace {

using fixture::Bytes;

std::vector<std::pair<std::wstring, std::wstring>> g_boxes;  // text, caption

int WINAPI CaptureBox(HWND, const wchar_t* text, const wchar_t* caption, UINT) {
    g_boxes.emplace_back(text, caption);
    return IDOK;
}

using wintest::ListCell;

// Tag -> value text of every row the reader finds in the file.
std::map<uint32_t, std::string> ReadBack(const std::u16string& path) {
    std::map<uint32_t, std::string> tags;
    exif::TagRecordTable* table = exif::AllocateTagRecordTable();
    uint32_t rows = 0;
    int big = 0;
    if (exif::ReadExifTags(path, *table, &rows, &big, exif::NoMakerNotes()))
        for (uint32_t i = 0; i < rows; ++i)
            tags.emplace(table->rows[i].tag, table->rows[i].value);
    exif::FreeTagRecordTable(table, 1);
    return tags;
}

const Bytes kPlainJpeg = fixture::JpegBuilder().Soi().Com("scan").ScanAndEoi().Build();

class CreatorDialog : public ::testing::Test {
protected:
    void SetUp() override {
        g_boxes.clear();
        vv::SetMessageBoxHook(CaptureBox);
    }
    void TearDown() override {
        if (dialog)
            DestroyWindow(dialog);
        vv::SetMessageBoxHook(nullptr);
    }
    void Prepare(const Bytes& jpeg) {
        path = dir.Write("a.jpg", jpeg);
        exif::PrepareExifCreator(path, settings, state);
    }
    void Open() {
        dialog = vv::CreateExifCreatorDialog(windll::Plugin(), nullptr, state);
        ASSERT_NE(dialog, nullptr) << GetLastError();
        ShowWindow(dialog, SW_SHOW);
    }
    HWND List() const { return GetDlgItem(dialog, IDC_CREATOR_LIST); }
    HWND Editor() const { return GetDlgItem(dialog, IDC_CREATOR_EDIT); }
    void PressF2(int row) {
        const UINT both = LVIS_SELECTED | LVIS_FOCUSED;
        ListView_SetItemState(List(), row, both, both);
        SendMessageW(List(), WM_KEYDOWN, VK_F2, 0);
    }
    void Click(int row) {
        NMITEMACTIVATE click = {};
        click.hdr = {List(), IDC_CREATOR_LIST, static_cast<UINT>(NM_CLICK)};
        click.iItem = row;
        click.iSubItem = 1;
        SendMessageW(dialog, WM_NOTIFY, IDC_CREATOR_LIST, reinterpret_cast<LPARAM>(&click));
    }
    void Type(const std::wstring& text, WPARAM key) {
        ASSERT_NE(Editor(), nullptr);
        SetWindowTextW(Editor(), text.c_str());
        SendMessageW(Editor(), WM_KEYDOWN, key, 0);
    }
    void PressOk() { SendMessageW(dialog, WM_COMMAND, IDOK, 0); }

    fixture::TempDir dir;
    const std::u16string settings = dir.Path("viewer.ini");
    std::u16string path;
    exif::ExifCreatorState state;
    HWND dialog = nullptr;
};

TEST_F(CreatorDialog, ListShowsTheFieldsAndFollowsTheSettings) {
    platform::WriteSettingString(settings, u"Viewing", u"DarkMode", u"1");
    platform::WriteSettingString(settings, u"EXIF", u"CreatorKeepOrgDate", u"0");
    Prepare(kPlainJpeg);
    exif::SetCreatorValue(state.rows[1], "Vantaview");
    Open();
    HWND list = List();
    wchar_t header[64] = {};
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT;
    column.pszText = header;
    column.cchTextMax = 64;
    ASSERT_TRUE(ListView_GetColumn(list, 0, &column));
    EXPECT_STREQ(header, L"EXIF Tag");
    ASSERT_TRUE(ListView_GetColumn(list, 1, &column));
    EXPECT_STREQ(header, L"Value (edit with click or F2)");
    const DWORD style = LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES;
    EXPECT_EQ(ListView_GetExtendedListViewStyle(list) & style, style);

    ASSERT_EQ(ListView_GetItemCount(list), 12);
    EXPECT_EQ(ListCell(list, 0, 0), u"Image Description");
    EXPECT_EQ(ListCell(list, 11, 0), u"Date Taken (YYYY:MM:DD hh:mm:ss)");
    for (int row = 0; row < 12; ++row) {
        const std::u16string label = ListCell(list, row, 0);
        EXPECT_GT(ListView_GetColumnWidth(list, 0), ListView_GetStringWidth(list, platform::AsWchar(label))) << row;
    }
    EXPECT_EQ(ListCell(list, 1, 1), u"Vantaview");
    const std::string date = state.rows[exif::kCreatorDateRow].value;
    ASSERT_EQ(date.size(), 19u) << "the local time fills an empty Date Taken";
    EXPECT_EQ(ListCell(list, exif::kCreatorDateRow, 1), platform::Utf8ToUtf16(date));
    EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_CREATOR_KEEP_DATE), UINT(BST_UNCHECKED));

    EXPECT_EQ(ListView_GetTextColor(list), vv::kDarkTextColour);
    // The editor's colour request must reach the dialog, where the theme answers it.
    PressF2(0);
    ASSERT_NE(Editor(), nullptr);
    // The label cell of the row being edited and the grid between the empty
    // Value cells below it: dark.
    RECT label, value;
    ListView_GetSubItemRect(list, 0, 0, LVIR_LABEL, &label);
    EXPECT_TRUE(wintest::DarkOnScreen(list, {{label.right - 3, (label.top + label.bottom) / 2}}));
    ListView_GetSubItemRect(list, 3, 1, LVIR_BOUNDS, &value);
    std::vector<POINT> grid;
    for (int y = value.top - 2; y < value.bottom + 2 * (value.bottom - value.top); ++y)
        grid.push_back({value.right - 8, y});
    for (int x = label.right - 3; x < label.right + 3; ++x)
        grid.push_back({x, value.top + 3});
    EXPECT_TRUE(wintest::DarkOnScreen(list, grid));
    wintest::SaveScreenshot(dialog, "exif_creator_editing_dark");
    HDC dc = GetDC(Editor());
    EXPECT_NE(SendMessageW(GetParent(Editor()), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc),
                           reinterpret_cast<LPARAM>(Editor())),
              0);
    EXPECT_EQ(GetTextColor(dc), vv::kDarkTextColour);
    ReleaseDC(Editor(), dc);
}

TEST_F(CreatorDialog, EditorCommitsOnEnterAndFocusLossAndCancelsOnEsc) {
    Prepare(kPlainJpeg);
    exif::SetCreatorValue(state.rows[2], "VV-1");
    Open();
    PressF2(2);
    ASSERT_NE(Editor(), nullptr) << "F2 opens the editor";
    wintest::SaveScreenshot(dialog, "exif_creator_editing_light");
    wchar_t text[64] = {};
    GetWindowTextW(Editor(), text, 64);
    EXPECT_STREQ(text, L"VV-1");
    EXPECT_TRUE(SendMessageW(Editor(), WM_GETDLGCODE, 0, 0) & DLGC_WANTALLKEYS) << "Enter/Esc stay in the editor";
    RECT cell, editor;
    ListView_GetSubItemRect(List(), 2, 1, LVIR_BOUNDS, &cell);
    MapWindowPoints(List(), nullptr, reinterpret_cast<POINT*>(&cell), 2);
    GetWindowRect(Editor(), &editor);
    EXPECT_EQ(std::make_pair(editor.left, editor.top), std::make_pair(cell.left, cell.top)) << "over the Value cell";

    Type(L"VV-2 \u00dcber", VK_RETURN);
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_STREQ(state.rows[2].value, "VV-2 \xc3\x9c" "ber");
    EXPECT_EQ(ListCell(List(), 2, 1), u"VV-2 \u00dcber");
    PressF2(2);
    Type(L"junk", VK_ESCAPE);
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_STREQ(state.rows[2].value, "VV-2 \xc3\x9c" "ber");
    EXPECT_EQ(ListCell(List(), 2, 1), u"VV-2 \u00dcber");

    Click(7);
    ASSERT_NE(Editor(), nullptr) << "a click opens it too";
    SetWindowTextW(Editor(), L"note");
    ASSERT_EQ(GetFocus(), Editor());
    SetFocus(List());
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_STREQ(state.rows[7].value, "note");
    EXPECT_EQ(ListCell(List(), 7, 1), u"note");
    EXPECT_FALSE(vv::CommitCreatorEdit(state, exif::kCreatorPointerRow, u"1")) << "the pointer row is not editable";

    // Memory running out as Enter commits: the editor goes, the row keeps
    // its value, and no exception leaves the editor's procedure.
    PressF2(7);
    SetWindowTextW(Editor(), L"a note longer than a short string");
    try {
        wintest::FailingAllocations failing;
        SendMessageW(Editor(), WM_KEYDOWN, VK_RETURN, 0);
    } catch (...) {
        ADD_FAILURE() << "an exception left the editor's procedure";
    }
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_STREQ(state.rows[7].value, "note");
}

// The writer's refusals (this one, a read-only file, ...) reach the user the same way.
TEST_F(CreatorDialog, RefusedWriteShowsTheReasonAndStaysOpen) {
    const Bytes withExif =
        fixture::JpegBuilder().Soi().App1Exif(fixture::TiffBuilder().Ascii(0, 271, "A").Build()).ScanAndEoi().Build();
    Prepare(withExif);
    Open();
    PressOk();
    ASSERT_EQ(g_boxes.size(), 1u);
    EXPECT_EQ(g_boxes[0].first, L"ERROR: The file already contains EXIF data!The file already contains EXIF data.");
    EXPECT_EQ(g_boxes[0].second, L"Vantaview");
    EXPECT_TRUE(IsWindowVisible(dialog));
    EXPECT_EQ(fixture::ReadAll(path), withExif);
    SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(IsWindowVisible(dialog));
}

// Through the export, which runs the dialog modally.
TEST_F(CreatorDialog, OkWritesTheEditedFieldsAndTheDefaultDateAndRemembersKeepDate) {
    path = dir.Write("a.jpg", kPlainJpeg);
    int rows = -1, answer = -99;
    const auto driven = wintest::DriveModal([] { return FindWindowW(nullptr, L"Create EXIF data"); },
                                            {[&](HWND d) {
                                                dialog = d;
                                                rows = ListView_GetItemCount(List());
                                                PressF2(0);
                                                Type(L"Harbour at dawn", VK_RETURN);
                                                CheckDlgButton(dialog, IDC_CREATOR_KEEP_DATE, BST_UNCHECKED);
                                                PressF2(8);
                                                SetWindowTextW(Editor(), L"Ana M\u00fcller");  // still open on OK
                                                PostMessageW(d, WM_COMMAND, IDOK, 0);
                                            }},
                                            [&] {
                                                answer = windll::Export<windll::CreateExifDataFn>("Create_EXIF_Data_W")(
                                                    platform::AsWchar(path), nullptr, platform::AsWchar(settings));
                                            });
    dialog = nullptr;
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(rows, 12);
    EXPECT_TRUE(driven.boxes.empty());
    auto tags = ReadBack(path);
    EXPECT_EQ(tags[270], "Harbour at dawn");
    EXPECT_EQ(tags[40093], "Ana M\xc3\xbcller");
    EXPECT_EQ(tags[36867].size(), 19u) << "the default date is written";
    EXPECT_EQ(tags.count(271), 0u) << "an empty field is not";
    EXPECT_EQ(platform::ReadSettingString(settings, u"EXIF", u"CreatorKeepOrgDate", u"missing"), u"0");
}

}  // namespace
