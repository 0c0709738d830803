#include "platform/platform.h"
#include "platform/ini.h"

#include <gtest/gtest.h>

#include "fixture/fixture.h"

namespace {

using platform::AnsiToUtf16;
using platform::Utf16ToAnsi;
using platform::Utf16ToUtf8;
using platform::Utf8ToUtf16;

TEST(CodePages, Utf8RoundTripsEveryPlaneIncludingSurrogatePairs) {
    // A, e-acute, euro, CJK, and U+1F600 (outside the BMP: a surrogate pair).
    const std::string utf8 = "A\xC3\xA9\xE2\x82\xAC\xE4\xB8\xAD\xF0\x9F\x98\x80";
    const std::u16string utf16 = u"A\u00E9\u20AC\u4E2D\U0001F600";
    EXPECT_EQ(Utf8ToUtf16(utf8), utf16);
    EXPECT_EQ(utf16.size(), 6u);
    EXPECT_EQ(Utf16ToUtf8(utf16), utf8);
    EXPECT_EQ(Utf16ToUtf8(Utf8ToUtf16("")), "");
}

TEST(CodePages, MalformedUtf8BecomesReplacementCharacters) {
    EXPECT_EQ(Utf8ToUtf16("a\xFF" "b"), u"a\uFFFDb");
    EXPECT_EQ(Utf8ToUtf16("\xC3"), u"\uFFFD");                  // cut short at the end
    EXPECT_EQ(Utf8ToUtf16("\xC0\xAF"), u"\uFFFD\uFFFD");        // overlong
    EXPECT_EQ(Utf8ToUtf16("\xED\xA0\x80").find(u'\xD800'), std::u16string::npos);  // no surrogates
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");   // lone surrogate
}

TEST(CodePages, AnsiIsWindows1252) {
    // 0x80 euro, 0x93/0x94 curly quotes, 0xE9 e-acute (Latin-1 range).
    EXPECT_EQ(AnsiToUtf16("\x80\x93x\x94\xE9"), u"\u20AC\u201Cx\u201D\u00E9");
    EXPECT_EQ(Utf16ToAnsi(u"\u20AC\u201Cx\u201D\u00E9"), "\x80\x93x\x94\xE9");
    // Characters the code page lacks become '?', each half of a surrogate pair one.
    EXPECT_EQ(Utf16ToAnsi(u"a\u4E2Db\U0001F600c"), "a?b??c");
    for (int b = 0x20; b < 0x100; ++b) {
        if (b >= 0x80 && b < 0xA0) continue;  // the remapped block is checked above
        std::string one(1, static_cast<char>(b));
        EXPECT_EQ(Utf16ToAnsi(AnsiToUtf16(one)), one) << b;
    }
}

TEST(Profile, KeysIgnoreCaseWritesReplaceInPlaceAndIntegersReadTheLeadingNumber) {
    fixture::TempDir dir;
    const std::u16string ini = dir.Path("settings.ini");
    EXPECT_EQ(platform::ReadSettingString(ini, u"EXIF", u"HideTags", u"dflt"), u"dflt") << "no file";
    EXPECT_EQ(platform::ReadSettingInt(ini, u"EXIF", u"CreatorKeepOrgDate", 1), 1);
    const char16_t* kWrites[][3] = {{u"EXIF", u"HideTags", u"1"},        {u"WinPosition", u"EXIF", u"10 20"},
                                    {u"exif", u"HIDETAGS", u"2"},        {u"EXIF", u"Satellite", u"1"},
                                    {u"IPTC", u"City", u"Z\u00FCrich"}, {u"S", u"A", u"42abc"},
                                    {u"S", u"B", u"-3"},                 {u"S", u"C", u"abc"}};
    for (const auto& w : kWrites) ASSERT_TRUE(platform::WriteSettingString(ini, w[0], w[1], w[2]));
    EXPECT_EQ(platform::ReadSettingString(ini, u"Exif", u"hidetags", u""), u"2");
    EXPECT_EQ(platform::ReadSettingString(ini, u"Viewing", u"HideTags", u"none"), u"none") << "other section";
    EXPECT_EQ(platform::ReadSettingString(ini, u"WINPOSITION", u"exif", u""), u"10 20");
    EXPECT_EQ(platform::ReadSettingString(ini, u"IPTC", u"City", u""), u"Z\u00FCrich");
    const std::pair<const char16_t*, int> kInts[] = {{u"A", 42}, {u"B", -3}, {u"C", 0}, {u"Other", -7}};
    for (const auto& [key, value] : kInts) EXPECT_EQ(platform::ReadSettingInt(ini, u"S", key, -7), value);
    EXPECT_EQ(platform::ReadSettingInt(ini, u"EXIF", u"Satellite", 0), 1);
}

#ifndef _WIN32
// The POSIX engine's text model, on strings (Windows uses the system's).
TEST(IniText, KeepsOtherSectionsAndAddsAfterTheSectionsLastKey) {
    std::string text = "[A]\r\nx=1\r\n\r\n[B]\r\ny = \"quoted\" \r\n";
    text = platform::ini::Set(text, "a", "z", "2");
    EXPECT_EQ(text, "[A]\r\nx=1\r\nz=2\r\n\r\n[B]\r\ny = \"quoted\" \r\n");
    EXPECT_EQ(platform::ini::Find(text, "B", "Y"), "quoted");
    EXPECT_EQ(platform::ini::Find(text, "A", "y"), std::nullopt);
    EXPECT_EQ(platform::ini::Set("[C]\r\nk=v", "C", "n", "w"), "[C]\r\nk=v\r\nn=w\r\n");
    // A byte-order mark before the first section neither hides it nor is lost
    // (found by fuzzing: the key was added in a second [C] section).
    EXPECT_EQ(platform::ini::Set("\xEF\xBB\xBF[C]\r\nk=v\r\n", "c", "K", "w"), "\xEF\xBB\xBF[C]\r\nK=w\r\n");
}
#endif

TEST(Files, NonAsciiPathsMoveOverAndDelete) {
    fixture::TempDir dir;
    auto source = dir.Write("Bild \xC3\xBC \xE4\xB8\xAD.jpg", {9, 8, 7});
    EXPECT_TRUE(platform::FileExists(source));
    auto target = dir.Path("\xC3\xA9t\xC3\xA9.jpg");
    dir.Write("\xC3\xA9t\xC3\xA9.jpg", {1});
    EXPECT_FALSE(platform::OpenFile(target, platform::FileMode::kCreateNew));
    ASSERT_TRUE(platform::MoveFileOver(source, target));
    EXPECT_FALSE(platform::FileExists(source));
    EXPECT_EQ(fixture::ReadAll(target), (fixture::Bytes{9, 8, 7}));
    EXPECT_TRUE(platform::RemoveFile(target));
    EXPECT_FALSE(platform::FileExists(target));
    EXPECT_FALSE(platform::RemoveFile(target));
}

// The folder the system names (TMPDIR; TMP on Windows), with one separator
// at its end whether the setting has one or not.
TEST(System, TempFolderIsTheSystemsFolderEndingInOneSeparator) {
    fixture::TempDir dir;
    const std::string folder = dir.Utf8Path("temp");
    for (const std::string& setting : {folder, folder + static_cast<char>(platform::kPathSeparator)}) {
        fixture::ScopedTempFolder temp(setting);
        EXPECT_EQ(platform::TempFolder(), Utf8ToUtf16(folder) + platform::kPathSeparator) << setting;
    }
}

}  // namespace
