// The two IPTC data exports on files, and the XMP import that serves them
// when a JPEG has no APP13.
#include <gtest/gtest.h>

#include <memory>

#include "fixture/iptc_fixture.h"
#include "iptc/xmp_import.h"
#include "plugin/plugin_api.h"

using namespace fixture;
using namespace iptc;

namespace {

const Bytes kIim = IimBuilder()
                       .Dataset(1, 90, "\x1B%G")
                       .Dataset(2, 0, std::string("\0\x02", 2))
                       .Dataset(2, 25, "a").Dataset(2, 25, "b").Dataset(2, 25, "c")
                       .Dataset(2, 55, "20040226").Dataset(2, 30, "200")
                       .Dataset(2, 5, "   ").Dataset(2, 40, "x\ty")
                       .Dataset(2, 120, "Gr\xC3\xBC\xC3\x9F" "e ")
                       .Build();

std::u16string LoadData(const std::u16string& path, int mode, int capacity, int* entries = nullptr) {
    std::u16string out(static_cast<size_t>(capacity), u'#');
    const int n = vv::LoadData_IPTC_W(path.c_str(), out.data(), capacity, mode);
    if (entries) *entries = n;
    return out.substr(0, out.find(u'\0'));
}

std::u16string LoadTag(const std::u16string& path, int dataset, int capacity = 300) {
    std::u16string out(static_cast<size_t>(capacity), u'#');
    EXPECT_EQ(vv::LoadTag_IPTC_W(path.c_str(), dataset, out.data(), capacity), 1);
    return out.substr(0, out.find(u'\0'));
}

class IptcExports : public ::testing::Test {
protected:
    TempDir dir;
    const std::u16string path = dir.Write("a.jpg", JpegWithIptc(kIim));
};

TEST_F(IptcExports, LinesInEachModeAndOneRefusedEntryRefusesEveryLaterOne) {
    int entries = 0;
    EXPECT_EQ(LoadData(path, 3, 1000, &entries),
              u"Record Version - 2.0\nKeywords - a \nb \nc\nRelease Date - 200\n"
              u"Special Instructions - x    y\nCreated Date - 20040226\nCaption - Gr\u00FC\u00DFe\n");
    EXPECT_EQ(entries, 6);
    EXPECT_EQ(LoadData(path, 2, 1000), u"0=2.0\n25=a \nb \nc\n30=200\n40=x    y\n55=20040226\n120=Gr\u00FC\u00DFe\n");
    EXPECT_EQ(LoadData(path, 0, 1000), u"2.0\na \nb \nc\n200\nx    y\n20040226\nGr\u00FC\u00DFe\n");
    // Mode 1 counts "2.0" as 5 and the keywords as 9: at 12 the keywords are refused, and
    // "200" after them too, although 5 + 5 would have fitted.
    EXPECT_EQ(LoadData(path, 1, 12, &entries), u"2.0\n");
    EXPECT_EQ(entries, 1);
    EXPECT_EQ(LoadData(path, 1, 5, &entries), u"");
    EXPECT_EQ(entries, 0);
}

TEST_F(IptcExports, OneDataset) {
    EXPECT_EQ(LoadTag(path, 25), u"a, b, c");
    EXPECT_EQ(LoadTag(path, 55), u"2004:02:26");
    EXPECT_EQ(LoadTag(path, 55, 6), u"2004:");
    EXPECT_EQ(LoadTag(path, 30), u"");  // three characters are no date
    EXPECT_EQ(LoadTag(path, 0), u" \x02");
    EXPECT_EQ(LoadTag(path, 120, 4), u"Gr\u00FC");
    EXPECT_EQ(LoadTag(path, 123), u"");
    EXPECT_EQ(LoadTag(path, 0x10000 + 25), u"");
    char16_t out[8] = {u'#'};
    EXPECT_EQ(vv::LoadTag_IPTC_W(dir.Path("none.jpg").c_str(), 25, out, 8), 0);
    EXPECT_EQ(out[0], 0);
    EXPECT_EQ(vv::LoadData_IPTC_W(dir.Path("none.jpg").c_str(), out, 8, 3), 0);
}

const char kPacket[] =
    "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>"
    "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
    "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'"
    " xmlns:photoshop='http://ns.adobe.com/photoshop/1.0/' photoshop:City='K\xC3\xB6ln'>"
    "<dc:subject><rdf:Bag><rdf:li>one</rdf:li><rdf:li>two</rdf:li></rdf:Bag></dc:subject>"
    "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>Title</rdf:li></rdf:Alt></dc:title>"
    "<photoshop:DateCreated>2023-07-14T10:22:05</photoshop:DateCreated>"
    "</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end='w'?>";

TEST(XmpImport, JpegWithoutApp13ReadsItsXmp) {
    TempDir dir;
    const auto path = dir.Write("x.jpg", JpegBuilder().Soi().App1Xmp(kPacket).ScanAndEoi().Build());
    EXPECT_EQ(LoadTag(path, 25), u"one, two");
    EXPECT_EQ(LoadTag(path, 5), u"Title");
    EXPECT_EQ(LoadTag(path, 90), u"K\u00F6ln");
    EXPECT_EQ(LoadTag(path, 55), u"2023:07:14");
    EXPECT_EQ(LoadTag(path, 60), u"10:22:05");
    // An APP13, even one without the IPTC resource, keeps the XMP out.
    const auto both = dir.Write("y.jpg", JpegBuilder().Soi().App1Xmp(kPacket)
                                             .Segment(0xED, PhotoshopApp13({})).ScanAndEoi().Build());
    EXPECT_EQ(LoadTag(both, 25), u"");

    auto data = std::make_unique<IptcData>();
    ClearIptcData(*data);
    EXPECT_EQ(ImportXmpIntoIptc(path, *data, 0, 0), 0);
    EXPECT_EQ(ImportXmpIntoIptc(path, *data, 1, 1), 0);
    EXPECT_EQ(data->utf8, 0);
    EXPECT_EQ(ImportXmpIntoIptc(path, *data, 1, 0), 4);
    EXPECT_EQ(data->utf8, 1);
    EXPECT_EQ(FieldView(data->fields[IptcTableRow(kKeywords) - 1]), u"one\r\ntwo");
}

TEST(XmpImport, TakesTheFirstNonEmptyRowAndSplitsDateCreated) {
    auto data = std::make_unique<IptcData>();
    ClearIptcData(*data);
    const xmp::XmpRows rows = {{u"DC:Creator", u""}, {u"dc:creator", u"A|B"}, {u"dc:creator", u"C"},
                               {u"photoshop:DateCreated", u"2023"}, {u"dc:rights", u"(c)"}};
    EXPECT_EQ(ImportXmpRows(rows, *data), 3);
    EXPECT_EQ(FieldView(IptcField(*data, kByline)), u"A\r\nB");
    EXPECT_EQ(FieldView(IptcField(*data, kCreatedDate)), u"20230101");
    EXPECT_EQ(FieldView(IptcField(*data, kCreatedTime)), u"");
    EXPECT_EQ(FieldView(IptcField(*data, kCopyright)), u"(c)");
    ImportXmpRows({{u"photoshop:datecreated", u"2023-7-4T1"}}, *data);
    EXPECT_EQ(FieldView(IptcField(*data, kCreatedDate)), u"20230704");
    EXPECT_EQ(FieldView(IptcField(*data, kCreatedTime)), u"");  // one character after the T is no time
}

}  // namespace
