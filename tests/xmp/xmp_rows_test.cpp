// Flattening XMP packets into rows: which nodes make rows, how item texts
// join, and the packet's delimitation.
#include <gtest/gtest.h>

#include "fixture/fixture.h"
#include "platform/platform.h"
#include "xmp/xmp_rows.h"

using xmp::XmpRows;

namespace {

// An APP1 segment buffer as the segment locator returns it: length field,
// namespace identifier, packet.
fixture::Bytes Segment(std::string_view packet) {
    fixture::Bytes b = fixture::JpegBuilder().App1Xmp(packet).Build();
    return fixture::Bytes(b.begin() + 2, b.end());
}

std::string Rows(const fixture::Bytes& segment) {
    XmpRows rows;
    const int n = xmp::FillListViews_From_XMP_Buffer(segment.data(), segment.size(), rows);
    EXPECT_EQ(n, static_cast<int>(rows.size()));
    std::string out;
    for (const auto& row : rows) out += platform::Utf16ToUtf8(row.name + u"=" + row.value + u"\n");
    return out;
}

const std::string kPacket =
    "<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
    "<x:xmpmeta xmlns:x='adobe:ns:meta/'>\n"
    " <rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>\n"
    "  <rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/' xmp:Rating='3'>\n"
    "   <dc:subject>\n    <rdf:Bag>\n     <rdf:li>red</rdf:li>\n     <rdf:li>gr&amp;een</rdf:li>\n"
    "    </rdf:Bag>\n   </dc:subject>\n"
    "   <dc:title><rdf:Alt><rdf:li xml:lang='x-default'> Caf\xC3\xA9 </rdf:li></rdf:Alt></dc:title>\n"
    "   <!-- edited -->\n"
    "   <dc:creator><rdf:Seq><rdf:li>A</rdf:li></rdf:Seq></dc:creator>\n"
    "  </rdf:Description>\n"
    " </rdf:RDF>\n"
    "</x:xmpmeta>\n";

const std::string kRows =
    "xmlns:x=adobe:ns:meta/\n"
    "xmlns:rdf=http://www.w3.org/1999/02/22-rdf-syntax-ns#\n"
    "xmlns:dc=http://purl.org/dc/elements/1.1/\n"
    "xmp:Rating=3\n"
    "dc:subject=red|gr&een\n"
    "dc:title=Caf\xC3\xA9\n"
    "#comment=edited\n"
    "dc:creator=A\n";

TEST(XmpRows, ElementsAttributesItemsAndCommentsAndWhatFollowsThePacketIsCutAway) {
    EXPECT_EQ(Rows(Segment(kPacket)), kRows);
    EXPECT_EQ(Rows(Segment(kPacket + std::string(100, ' ') + "<?xpacket end='w'?>\x01<<garbage")), kRows);
}

TEST(XmpRows, MalformedOrMissingXmlGivesNoRows) {
    EXPECT_EQ(Rows(Segment("<x:xmpmeta xmlns:x='adobe:ns:meta/'><a></b></x:xmpmeta>")), "");
    EXPECT_EQ(Rows(Segment("no packet here")), "");
    EXPECT_EQ(Rows({}), "");
}

TEST(XmpRows, Utf16PacketsReadLikeUtf8) {
    for (bool bigEndian : {true, false}) {
        const std::u16string wide = platform::Utf8ToUtf16(kPacket);
        std::string bytes;
        for (char16_t c : wide) {
            const char hi = static_cast<char>(c >> 8), lo = static_cast<char>(c & 0xFF);
            bytes += bigEndian ? std::string{hi, lo} : std::string{lo, hi};
        }
        EXPECT_EQ(Rows(Segment(bytes)), kRows) << bigEndian;
    }
}

TEST(XmpRows, ValueOnlyRowsFillThePreviousRow) {
    XmpRows rows;
    xmp::AddXmpRow(rows, u"", u"lost");  // no row yet to take it
    xmp::AddXmpRow(rows, u" rdf:description ", u"");
    xmp::AddXmpRow(rows, u"X:XMPMETA", u"");
    EXPECT_TRUE(rows.empty());
    xmp::AddXmpRow(rows, u"rdf:Description", u"kept: it has a value");
    xmp::AddXmpRow(rows, u"a:b", u"");
    xmp::AddXmpRow(rows, u"", u"  v  ");
    xmp::AddXmpRow(rows, u"", u" ");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1].name, u"a:b");
    EXPECT_EQ(rows[1].value, u"v");
    // A text before any element row, as the line walk meets it.
    rows.clear();
    xmp::RowsFromXmpLines({u"*text*:early|", u"*element*:a:b", u"*text*:1|", u"*text*:2|"}, rows);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].value, u"1|2");
}

}  // namespace
