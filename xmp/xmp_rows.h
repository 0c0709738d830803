// Flattening an XMP packet into two-column rows (property name, value), the
// form in which the XMP page lists a packet and from which the IPTC import
// picks its properties.
//
// The XML is parsed by tinyxml2 and walked by a visitor that writes one line
// per element, attribute, text and comment:
//   "*element*:"   name
//   "*attribute*:" name "|" value      (not for xml:lang and rdf:about)
//   "*text*:"      text "|"
//   "*comment*:"   "|" text
// rdf:Bag, rdf:Seq and rdf:Alt write nothing; rdf:RDF and rdf:li write only
// their attributes. The lines then become rows: an element makes a name-only
// row, the texts that follow it are joined into one value that goes into the
// last row (so a bag's items read "a|b|c"), an attribute makes a row of its
// own, and a comment a row named "#comment".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace xmp {

struct XmpRow {
    std::u16string name;
    std::u16string value;
};
using XmpRows = std::vector<XmpRow>;

constexpr size_t kXmpTextChars = 4096;  // names, texts, lines and values, terminator included

// Fills `rows` (cleared first) from an XMP APP1 segment as LoadMetadataSegment
// returns it (or from any buffer holding a packet): the packet runs from the
// first "<x" to the last ":xmpmeta>" (padding and anything else after it is
// ignored). A UTF-16 packet (as the XMP standard allows) is read as its UTF-8
// equivalent. Returns the number of rows; 0 (and no rows) for an empty
// buffer or XML that does not parse.
int FillListViews_From_XMP_Buffer(const uint8_t* buffer, size_t length, XmpRows& rows);

// Adds one row; name and value are trimmed of blanks (space, TAB, CR, LF).
// An empty name adds no row: a non-empty value replaces the value of the
// last row (and is lost when there is none). A name with an empty value is
// skipped when it is "rdf:Description" or "x:xmpmeta" (in any case).
void AddXmpRow(XmpRows& rows, std::u16string_view name, std::u16string_view value);

// The visitor's lines for the packet in `xml` (already delimited), in
// document order; false when the XML does not parse.
bool CollectXmpLines(std::string_view xml, std::vector<std::u16string>& lines);

// Turns the visitor's lines into rows (appended to `rows`).
void RowsFromXmpLines(const std::vector<std::u16string>& lines, XmpRows& rows);

}  // namespace xmp
