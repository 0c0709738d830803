// The EXIF window's decisions without a window: which rows it lists, how the
// hidden-tags list is edited, the saved placement and the layout.
#include "ui/model/exif_window_model.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>

namespace {

using vv::TagChoice;

struct Table {
    exif::TagRecordTable* table = exif::AllocateTagRecordTable();
    uint32_t count = 0;
    ~Table() { exif::FreeTagRecordTable(table, 1); }
    exif::TagRecord& Add(uint32_t tag, const char* name, const char* value) {
        exif::TagRecord& r = table->rows[count++];
        r.tag = tag;
        std::strcpy(r.name, name);
        std::strcpy(r.value, value);
        return r;
    }
};

// A pseudo "Filename" row, a heading, Make, Model, a description with a long
// value, and a complete GPS position.
void FillSample(Table& t) {
    t.Add(0, "Filename", "a.jpg");
    t.Add(271, "Make", "Canon");
    t.Add(272, "Model", "EOS");
    exif::TagRecord& description = t.Add(270, "ImageDescription", "short");
    std::strcpy(exif::MakeLongValue(description), "the whole long description");
    t.Add(0, "GPS:", "");
    t.Add(401, "GPSLatitudeRef", "S");
    t.Add(402, "GPSLatitude", "33 51 35.9 (33.859972)");
    t.Add(403, "GPSLongitudeRef", "W");
    t.Add(404, "GPSLongitude", "70 39 0 (70.650000)");
}

TEST(ExifListRows, ListsEveryRowNotHiddenWithNumbersValuesAndTheLongDescription) {
    Table t;
    FillSample(t);
    vv::ExifListModel model = vv::BuildExifListRows(*t.table, t.count, u"");
    ASSERT_EQ(model.rows.size(), 9u);
    EXPECT_EQ(model.rows[0].number, u"");  // tag 0 has no number
    EXPECT_EQ(model.rows[0].name, u"Filename");
    EXPECT_EQ(model.rows[1].number, u"271");
    EXPECT_EQ(model.rows[1].value, u"Canon");
    EXPECT_EQ(model.rows[3].value, u"the whole long description");
    EXPECT_EQ(model.rows[4].name, u"GPS:");
    EXPECT_TRUE(model.HasGps());

    // Hidden tags go, but tag 0 stays, and hiding a position half hides the maps.
    model = vv::BuildExifListRows(*t.table, t.count, u"271,272,270,401,402,403,404,0,");
    ASSERT_EQ(model.rows.size(), 2u);  // "Filename" and the heading: tag 0 is never hidden
    EXPECT_EQ(model.rows[0].name, u"Filename");
    EXPECT_FALSE(model.HasGps());

    model = vv::BuildExifListRows(*t.table, t.count, u"404,");
    EXPECT_EQ(model.gpsScore, 2);
    EXPECT_FALSE(model.HasGps());
    model = vv::BuildExifListRows(*t.table, t.count, u"402,");
    EXPECT_FALSE(model.HasGps());
}

TEST(HideTags, TokensMatchWholeAndIgnoreCaseAndEmptyTokens) {
    EXPECT_TRUE(vv::IsTagInList(u"271,272,", u"272"));
    EXPECT_FALSE(vv::IsTagInList(u"271,272,", u"27"));
    EXPECT_FALSE(vv::IsTagInList(u"271,", u"71"));
    EXPECT_FALSE(vv::IsTagInList(u",,", u""));
    EXPECT_TRUE(vv::IsTagInList(u"ab,", u"AB"));
    EXPECT_TRUE(vv::IsTagInList(u"5", u"5"));  // the last token needs no comma
}

TEST(HideTags, ChoicesStartFromTheListAndOkEditsItByWholeNumbers) {
    Table t;
    FillSample(t);
    std::vector<TagChoice> choices = vv::BuildTagChoices(*t.table, t.count, u"272,");
    ASSERT_EQ(choices.size(), 7u);  // tag-0 rows are not offered
    EXPECT_TRUE(choices[0].shown);
    EXPECT_FALSE(choices[1].shown);

    // Hiding appends "number,"; an unchanged choice leaves the list alone.
    choices[0].shown = false;
    EXPECT_EQ(vv::UpdateHideTags(u"272,", choices), u"272,271,");

    // Showing removes that number's entries and nothing of a longer number;
    // a list without its last comma keeps its numbers apart.
    const auto choice = [](const char16_t* number, bool shown) { return TagChoice{0, number, u"x", shown}; };
    const struct {
        const char16_t* before;
        std::vector<TagChoice> choices;
        const char16_t* after;
    } kEdits[] = {
        {u"272,2,", {choice(u"2", true)}, u"272,"},
        {u"272,", {choice(u"305", false)}, u"272,305,"},
        {u"71,271,5,71,", {choice(u"71", true)}, u"271,5,"},
        {u"9,,71,", {choice(u"71", true)}, u"9,,"},  // what the text rule handled right stays as it made it
        {u"271,272", {choice(u"272", true)}, u"271,"},
        {u"271", {choice(u"272", false)}, u"271,272,"},
        {u"13,1312129,", {choice(u"13", false), choice(u"1312129", true)}, u"13,"},
    };
    for (const auto& edit : kEdits)
        EXPECT_EQ(vv::UpdateHideTags(edit.before, edit.choices), edit.after);

    // Appending stops at the list's limit.
    const std::u16string full(1020, u'9');
    EXPECT_EQ(vv::UpdateHideTags(full, choices), full);
}

TEST(Clipboard, LinesJoinNameAndValueAndNamelessRowsAreBareLineEnds) {
    const std::u16string longValue(4000, u'v');
    const std::u16string text = vv::FormatClipboardText({{u"Make", u"Canon"}, {u"", u"ignored"}, {u"Long", longValue}});
    EXPECT_EQ(text.substr(0, 16), u"Make - Canon\r\n\r\n");
    EXPECT_EQ(text.size(), 16 + 7 + 3072 + 2u);  // the value is cut to 3072 characters
}

// Positions are compared in their saved form.
std::u16string Parsed(std::u16string_view text, bool withDpi = true) {
    return vv::FormatWinPosition(vv::ParseWinPosition(text, withDpi));
}

TEST(WinPosition, ParsesTheSixNumbersAndKeepsTheNumbersBeforeAFault) {
    const struct {
        const char16_t* text;
        const char16_t* parsed;
    } kCases[] = {
        {u"-1920,40,800,600,1,144;", u"-1920,40,800,600,1,144;"},
        {u"10, 20,x,400,0,96;", u"10,20,0,0,0,0;"},  // scanf skips the blank before a number
        {u"", u"0,0,0,0,0,0;"},
        {u"10;20,30", u"10,0,0,0,0,0;"},
        {u"99999999999,-99999999999,1,1,0,0;", u"2147483647,-2147483648,1,1,0,0;"},
    };
    for (const auto& c : kCases) EXPECT_EQ(Parsed(c.text), c.parsed) << std::string(c.text, c.text + 3);
    EXPECT_EQ(Parsed(u"1,2,3,4,5;", false), u"1,2,3,4,5,0;");
}

TEST(WinPosition, OffScreenCornersComeBackToTheWorkArea) {
    const vv::WinRect work{0, 0, 1280, 984};
    const struct {
        vv::WinPosition saved;
        int monitors;
        vv::WinRect nearest;
        const char16_t* placed;
    } kCases[] = {
        {{5000, -300, 800, 600, 0, 96}, 1, work, u"0,0,800,600,0,96;"},
        {{1279, 983, 800, 600, 0, 96}, 1, work, u"1279,983,800,600,0,96;"},  // the last pixel is still inside
        // With several monitors only the left edge is raised to the nearest work area.
        {{-5000, -300, 800, 600, 0, 96}, 2, {-1920, 0, 0, 1040}, u"-1920,-300,800,600,0,96;"},
    };
    for (auto c : kCases) {
        vv::ClampWinPosition(c.saved, c.monitors, c.nearest);
        EXPECT_EQ(vv::FormatWinPosition(c.saved), c.placed);
    }
}

TEST(WinPosition, WindowsAreKeptWhollyOnTheWorkArea) {
    const auto fit = [](vv::WinRect r, vv::WinRect work, bool mayShrink) {
        const vv::WinRect f = vv::FitToWorkArea(r, work, mayShrink);
        return std::array<int, 4>{f.left, f.top, f.right, f.bottom};
    };
    const vv::WinRect screen{0, 0, 1280, 900};
    // Saved at 96 DPI and scaled to 144: taller than the screen.
    EXPECT_EQ(fit({100, 120, 881, 1034}, screen, true), (std::array<int, 4>{100, 0, 881, 900}));
    EXPECT_EQ(fit({1000, 700, 1400, 1000}, screen, false), (std::array<int, 4>{880, 600, 1280, 900}));
    EXPECT_EQ(fit({-10, -20, 90, 80}, screen, false), (std::array<int, 4>{0, 0, 100, 100}));
    EXPECT_EQ(fit({-50, -50, 2000, 1500}, screen, false), (std::array<int, 4>{0, 0, 2050, 1550}));
    EXPECT_EQ(fit({-300, 500, -100, 700}, {-1920, 0, 0, 1040}, false), (std::array<int, 4>{-300, 500, -100, 700}));
}

TEST(WinPosition, SizeFollowsTheDpiRatio) {
    int w = 0, h = 0;
    vv::SizeForDpi({0, 0, 400, 300, 0, 96}, 144, &w, &h);
    EXPECT_EQ(w, 600);
    EXPECT_EQ(h, 450);
    vv::SizeForDpi({0, 0, 400, 300, 0, 0}, 144, &w, &h);  // no DPI stored: as stored
    EXPECT_EQ(w, 400);
}

TEST(Layout, ColumnsShareTheListWidth) {
    vv::ColumnWidths c = vv::ExifColumnWidths(500, 96);
    EXPECT_EQ(c.number, 5);
    EXPECT_EQ(c.name, 15 + 166);
    EXPECT_EQ(c.value, 2 * 166 - 40);
    c = vv::ExifColumnWidths(500, 144);
    EXPECT_EQ(c.number, 8);  // MulDiv rounds 7.5 up
    EXPECT_EQ(c.value, 2 * 166 - 60);
}

TEST(Layout, ButtonsKeepTheirBottomDistanceListsFillAndOthersScale) {
    EXPECT_EQ(vv::ClassifyChild(u"Button"), vv::ChildKind::kButton);
    EXPECT_EQ(vv::ClassifyChild(u"SysListView32"), vv::ChildKind::kListView);
    EXPECT_EQ(vv::ClassifyChild(u"Static"), vv::ChildKind::kGeneric);
    const struct {
        vv::ChildKind kind;
        vv::WinRect before;
        int newHeight;
        std::array<int, 4> after;
    } kCases[] = {
        {vv::ChildKind::kButton, {10, 470, 110, 490}, 700, {15, 670, 165, 690}},
        {vv::ChildKind::kListView, {5, 5, 395, 440}, 700, {1, 5, 600, 5 + 700 - 3 * 19 - 9}},
        {vv::ChildKind::kGeneric, {3, 7, 13, 17}, 750, {5, 7, 20, 22}},  // 4.5 rounds up
    };
    for (const auto& c : kCases) {
        const vv::WinRect r = vv::LayoutChild(c.kind, c.before, 400, 500, 600, c.newHeight, vv::LayoutMetrics{1, 19});
        EXPECT_EQ((std::array<int, 4>{r.left, r.top, r.right, r.bottom}), c.after) << int(c.kind);
    }
}

}  // namespace
