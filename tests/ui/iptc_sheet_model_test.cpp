// The IPTC sheet's decisions without a window: how a batch merges the
// edited text with each file's own, when a file counts as edited, and that
// each file of a batch gets its own placeholder values.
#include "ui/model/iptc_sheet_model.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fixture/container_fixture.h"
#include "fixture/iptc_fixture.h"
#include "iptc/iptc_reader.h"
#include "platform/platform.h"

namespace {

using iptc::IptcData;

std::unique_ptr<IptcData> NewRecord() {
    auto data = std::make_unique<IptcData>();
    iptc::ClearIptcData(*data);
    return data;
}

void Set(IptcData& data, int dataset, std::u16string_view text) { iptc::SetField(iptc::IptcField(data, dataset), text); }
std::u16string Get(const IptcData& data, int dataset) {
    return std::u16string(iptc::FieldView(iptc::IptcField(data, dataset)));
}

struct MergeCase {
    const char* what;
    int dataset;
    const char16_t* old;
    const char16_t* edited;
    const char16_t* merged;
};

TEST(IptcBatchMerge, AppendJoinsListsAndKeepsAFilesOwnSingleValues) {
    const MergeCase kCases[] = {
        {"a keyword is added on a line of its own", iptc::kKeywords, u"a", u"b", u"a\r\nb"},
        {"a caption likewise", iptc::kCaption, u"first", u"second", u"first\r\nsecond"},
        {"a name list gets a comma", iptc::kByline, u"Ann", u"Bob", u"Ann,Bob"},
        {"no second comma after one already there", iptc::kObjectName, u"x,", u"y", u"x,y"},
        {"nothing old: the new text alone", iptc::kCity, u"", u"Oslo", u"Oslo"},
        {"nothing new: the old text and its separator", iptc::kSource, u"Agency", u"", u"Agency,"},
        {"a file's own date stays", iptc::kCreatedDate, u"20200101", u"20240505", u"20200101"},
        {"a file's own urgency stays", iptc::kPriority, u"1", u"5", u"1"},
        {"an empty one takes the new", iptc::kCountryCode, u"", u"NOR", u"NOR"},
        {"contact is never merged", iptc::kContact, u"me", u"you", u"you"},
    };
    auto edited = NewRecord(), own = NewRecord();
    edited->append = 1;
    edited->replaceEmpty = edited->skipEmpty = 1;  // ignored while appending
    for (const MergeCase& c : kCases) {
        Set(*own, c.dataset, c.old);
        Set(*edited, c.dataset, c.edited);
    }
    vv::MergeBatchTexts(*edited, *own);
    for (const MergeCase& c : kCases) EXPECT_EQ(Get(*edited, c.dataset), c.merged) << c.what;

    // Too long together: the edited text is written as it is.
    auto longOwn = NewRecord(), longEdited = NewRecord();
    longEdited->append = 1;
    Set(*longOwn, iptc::kKeywords, std::u16string(4000, u'k'));
    Set(*longEdited, iptc::kKeywords, std::u16string(95, u'n'));
    vv::MergeBatchTexts(*longEdited, *longOwn);
    EXPECT_EQ(Get(*longEdited, iptc::kKeywords), std::u16string(95, u'n'));
}

TEST(IptcBatchMerge, ReplaceOptionsKeepOldTextsAsChosen) {
    struct Options {
        int replaceEmpty, skipEmpty;
        const char16_t* caption;   // old "old", edited ""
        const char16_t* headline;  // old "old", edited "new"
        const char16_t* city;      // old "",    edited "new"
    } kOptions[] = {
        {0, 0, u"", u"new", u"new"},
        {1, 0, u"old", u"old", u"new"},
        {0, 1, u"old", u"new", u"new"},
    };
    for (const Options& o : kOptions) {
        auto edited = NewRecord(), own = NewRecord();
        edited->replaceEmpty = o.replaceEmpty;
        edited->skipEmpty = o.skipEmpty;
        Set(*own, iptc::kCaption, u"old");
        Set(*own, iptc::kHeadline, u"old");
        Set(*edited, iptc::kHeadline, u"new");
        Set(*edited, iptc::kCity, u"new");
        vv::MergeBatchTexts(*edited, *own);
        EXPECT_EQ(Get(*edited, iptc::kCaption), o.caption) << o.replaceEmpty << o.skipEmpty;
        EXPECT_EQ(Get(*edited, iptc::kHeadline), o.headline) << o.replaceEmpty << o.skipEmpty;
        EXPECT_EQ(Get(*edited, iptc::kCity), o.city) << o.replaceEmpty << o.skipEmpty;
    }
}

TEST(IptcChangeCheck, CaseAloneIsNoChangeAndOnlyTheEditedFieldsCount) {
    auto snapshot = NewRecord();
    Set(*snapshot, iptc::kKeywords, u"Berlin\r\n\u00C9t\u00E9");
    Set(*snapshot, iptc::kCaption, u"A caption");
    auto now = std::make_unique<IptcData>(*snapshot);
    EXPECT_FALSE(vv::IptcTextsChanged(*now, *snapshot));
    Set(*now, iptc::kKeywords, u"BERLIN\r\n\u00E9T\u00C9");
    Set(*now, iptc::kEditStatus, u"not edited in the sheet");
    EXPECT_FALSE(vv::IptcTextsChanged(*now, *snapshot)) << "an unchanged file must not be rewritten";
    for (int dataset : {int(iptc::kKeywords), int(iptc::kCaptionWriter), int(iptc::kPriority)}) {
        auto edited = std::make_unique<IptcData>(*snapshot);
        Set(*edited, dataset, u"Berlin\r\nSommer");
        EXPECT_TRUE(vv::IptcTextsChanged(*edited, *snapshot)) << dataset;
    }
}

TEST(IptcUrgency, IsOneDigit) {
    auto data = NewRecord();
    Set(*data, iptc::kPriority, u"12");
    vv::CutPriority(*data);
    EXPECT_EQ(Get(*data, iptc::kPriority), u"1");
}

// Two files, each with its own City; the batch text refers to the file's
// name, its City and its position in the batch.
class IptcBatchRun : public ::testing::Test {
protected:
    std::u16string File(const char* name, const char* city) {
        return dir.Write(name, fixture::JpegWithIptc(fixture::IimBuilder()
                                                         .Dataset(2, 90, city)
                                                         .Dataset(2, 25, "own")
                                                         .Dataset(2, 118, "contact")
                                                         .Build()));
    }
    std::unique_ptr<IptcData> Read(const std::u16string& path) {
        auto data = NewRecord();
        iptc::LoadIptcData(path, *data);
        return data;
    }
    fixture::TempDir dir, temp;
    fixture::ScopedTempFolder tempFolder{temp.Utf8Path("")};
};

TEST_F(IptcBatchRun, EachFileGetsItsOwnPlaceholderValuesAndKeywordsAreAppended) {
    const std::vector<std::u16string> names = {File("one.jpg", "Oslo"), File("two.jpg", "Rome")};
    auto edited = NewRecord();
    Set(*edited, iptc::kCaption, u"$F in $I90$C");
    Set(*edited, iptc::kKeywords, u"trip");
    edited->append = 1;
    std::vector<std::u16string> errors;
    EXPECT_TRUE(vv::WriteIptcBatch(names, *edited, [&](std::u16string_view e) { errors.emplace_back(e); }));
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(Get(*edited, iptc::kCaption), u"$F in $I90$C") << "the edited record stays as typed";

    auto one = Read(names[0]), two = Read(names[1]);
    EXPECT_EQ(Get(*one, iptc::kCaption), u"one.jpg in Oslo_001");
    EXPECT_EQ(Get(*two, iptc::kCaption), u"two.jpg in Rome_002");
    EXPECT_EQ(Get(*one, iptc::kKeywords), u"own\r\ntrip") << "a keyword lost on append";
    EXPECT_EQ(Get(*two, iptc::kContact), u"") << "contact comes from the edited text, which has none";
}

TEST_F(IptcBatchRun, TheFileAfterATiffKeepsTheTypedText) {
    fixture::TiffBuilder tiff(fixture::ByteOrder::kLittle);
    tiff.Ascii(0, 271, "Scanner");
    const std::u16string scan = dir.Write("scan.tif", tiff.Build());
    const fixture::Bytes scanBytes = fixture::ReadAll(scan);
    const std::vector<std::u16string> names = {File("one.jpg", "Oslo"), scan, File("two.jpg", "Rome")};
    auto edited = NewRecord();
    Set(*edited, iptc::kCaption, u"$F");
    EXPECT_TRUE(vv::WriteIptcBatch(names, *edited, nullptr));
    EXPECT_EQ(Get(*Read(names[0]), iptc::kCaption), u"one.jpg");
    EXPECT_EQ(fixture::ReadAll(scan), scanBytes) << "a TIFF is never written";
    EXPECT_EQ(Get(*Read(names[2]), iptc::kCaption), u"$F");
}

// A name longer than the viewer's 260 characters is refused, for one file
// and in a batch, and the batch goes on; the sheet keeps names whole, so a
// refused name never stands for the file its first 260 characters name.
TEST_F(IptcBatchRun, ANameLongerThanTheViewerGivesIsRefused) {
    const size_t folder = dir.Path("").size();
    const std::u16string cut = File(std::string(iptc::kViewerPathChars - folder, 'n').c_str(), "Oslo");
    ASSERT_EQ(cut.size(), iptc::kViewerPathChars);
    const fixture::Bytes before = fixture::ReadAll(cut);
    const std::u16string named = cut + u".jpg";
    const std::u16string refusal = u"Can't open file: " + named + u"\n\nThe path is too long.";
    auto edited = NewRecord();
    Set(*edited, iptc::kCaption, u"text");
    iptc::SetField(edited->fileName, named, iptc::kPathChars);
    std::vector<std::u16string> errors;
    const auto sink = [&](std::u16string_view e) { errors.emplace_back(e); };
    EXPECT_EQ(vv::WriteIptcSheetFile(*edited, 1, sink), 0);
    const std::u16string other = File("other.jpg", "Rome");
    EXPECT_FALSE(vv::WriteIptcBatch({named, other}, *edited, sink));
    EXPECT_EQ(errors, (std::vector<std::u16string>{refusal, refusal}));
    EXPECT_EQ(fixture::ReadAll(cut), before);
    EXPECT_EQ(Get(*Read(other), iptc::kCaption), u"text");
}

// The sheet reads other containers through the readers' own sources: a
// document's IIM record, a PNG's XMP when LoadXMP is set, a TIFF's XMP never.
TEST(IptcSheetLoad, OtherContainersThroughTheReadersSources) {
    fixture::TempDir dir;
    const fixture::Bytes iim = fixture::IimBuilder().Dataset(2, 80, "Ann").Build();
    const std::string packet =
        "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
        "<rdf:Description xmlns:photoshop='http://ns.adobe.com/photoshop/1.0/' photoshop:Headline='H'/>"
        "</rdf:RDF></x:xmpmeta>";
    fixture::TiffBuilder tiff;
    tiff.Undefined(0, 700, fixture::ToBytes(packet));
    const struct {
        const char* name;
        fixture::Bytes bytes;
        int loadXmp, count, dataset;
        const char16_t* text;
    } cases[] = {
        {"a.psd", fixture::PsdFile({fixture::PhotoshopResource(0x0404, iim)}), 0, 1, iptc::kByline, u"Ann"},
        {"b.png", fixture::PngFile({fixture::PngInternationalText("XML:com.adobe.xmp", fixture::ToBytes(packet), true)}),
         1, 1, iptc::kHeadline, u"H"},
        {"c.png", fixture::PngFile({fixture::PngInternationalText("XML:com.adobe.xmp", fixture::ToBytes(packet), true)}),
         0, 0, iptc::kHeadline, u""},
        {"d.tif", tiff.Build(), 1, 0, iptc::kHeadline, u""},
    };
    for (const auto& c : cases) {
        auto data = NewRecord();
        iptc::SetField(data->fileName, dir.Write(c.name, c.bytes), iptc::kPathChars);
        data->loadXmp = c.loadXmp;
        EXPECT_EQ(vv::LoadIptcSheetFile(*data), c.count) << c.name;
        EXPECT_EQ(Get(*data, c.dataset), c.text) << c.name;
    }
}

}  // namespace
