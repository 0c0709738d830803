// The IPTC record: one flat structure holding every IPTC-IIM text field of
// one image, plus the session header the IPTC sheet keeps beside it. The
// readers fill it, the sheet edits it, the writer writes it back.
//
// The record is plain data with fixed text fields so it can be cleared with
// one memset and its fields handed to Windows controls directly. It is large
// (about 290 KB): allocate it on the heap or statically, never on a stack.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace iptc {

constexpr size_t kFieldChars = 4096;        // every text field, terminator included
constexpr size_t kPathChars = 520;          // path members, terminator included
// The viewer's paths hold at most this many characters: a longer one was
// cut somewhere and may name another file, so it is never written.
constexpr size_t kViewerPathChars = 260;
constexpr int kFieldCount = 34;             // the record-2 fields (Object Name .. Caption Writer)

struct IptcData {
    // Session header (the IPTC sheet's state and settings).
    int32_t state;                          // sheet state word
    char16_t settingsPath[kPathChars];
    char16_t fileName[kPathChars];
    int32_t isTiff;
    int32_t keepOrgDate;                    // the writer keeps the file's times
    int32_t loadXmp;
    int32_t replaceEmpty;
    int32_t skipEmpty;
    int32_t append;
    int32_t batchMode;
    uint32_t app13Length;                   // stored length field of the file's APP13, 0 for none
    uint32_t app13Offset;                   // file offset of its 0xFF marker byte
    uint32_t xmpLength;                     // the same for the XMP APP1 that filled the record
    uint32_t xmpOffset;
    int32_t saveTab;
    int32_t lastTab;
    int32_t pagesInitialised;

    // The texts.
    char16_t recordVersion[kFieldChars];    // dataset 2:00 as read
    char16_t fields[kFieldCount][kFieldChars];  // in IptcDatasetTable order, rows 1..34
    char codedCharacterSet[kFieldChars];    // dataset 1:90 as read (bytes)
    int32_t utf8;                           // 1: record-2 bytes are UTF-8, 0: the ANSI code page
};

// Clears the whole record (header included).
void ClearIptcData(IptcData& data);

// ----------------------------------------------------------- the table

struct IptcDatasetRow {
    int dataset;            // record-2 dataset number
    const char* name;       // display name
};

// Row 0 is the record version (dataset 0, no field of its own); rows 1..34
// own fields[row - 1]. Dataset numbers rise strictly from row to row.
inline constexpr IptcDatasetRow IptcDatasetTable[kFieldCount + 1] = {
    {0, "Record Version"},
    {5, "Object Name"},
    {7, "Edit Status"},
    {10, "Priority"},
    {15, "Category"},
    {20, "Supplemental Category"},
    {22, "Fixture Identifier"},
    {25, "Keywords"},
    {30, "Release Date"},
    {35, "Release Time"},
    {40, "Special Instructions"},
    {45, "Reference Service"},
    {47, "Reference Date"},
    {50, "Reference Number"},
    {55, "Created Date"},
    {60, "Created Time"},
    {65, "Originating Program"},
    {70, "Program Version"},
    {75, "Object Cycle"},
    {80, "Byline (Author)"},
    {85, "Byline Title"},
    {90, "City"},
    {92, "Sub Location"},
    {95, "Province State"},
    {100, "Country Code"},
    {101, "Country"},
    {103, "Original Transmission Reference"},
    {105, "Headline"},
    {110, "Credit"},
    {115, "Source"},
    {116, "Copyright"},
    {118, "Contact"},
    {120, "Caption"},
    {121, "Local Caption"},
    {122, "Caption Writer"},
};

// Record-2 dataset numbers the code names.
enum Dataset : int {
    kRecordVersion = 0,
    kObjectName = 5,
    kEditStatus = 7,
    kPriority = 10,
    kCategory = 15,
    kSupplementalCategory = 20,
    kKeywords = 25,
    kReleaseDate = 30,
    kSpecialInstructions = 40,
    kReferenceNumber = 50,
    kCreatedDate = 55,
    kCreatedTime = 60,
    kByline = 80,
    kBylineTitle = 85,
    kCity = 90,
    kSubLocation = 92,
    kProvinceState = 95,
    kCountryCode = 100,
    kCountry = 101,
    kTransmissionReference = 103,
    kHeadline = 105,
    kCredit = 110,
    kSource = 115,
    kCopyright = 116,
    kContact = 118,
    kCaption = 120,
    kLocalCaption = 121,
    kCaptionWriter = 122,
};

// The table row of a dataset number, or -1 when the table does not list it.
int IptcTableRow(int dataset);

// The text field of a dataset (the record version for 0), or null when the
// table does not list it. Always kFieldChars characters.
char16_t* IptcField(IptcData& data, int dataset);
const char16_t* IptcField(const IptcData& data, int dataset);

// ------------------------------------------- fixed-field text helpers

// The terminated text of a fixed field (never reads past `capacity`).
std::u16string_view FieldView(const char16_t* field, size_t capacity = kFieldChars);
// Replaces a field's text, cut to capacity - 1 characters (never in the
// middle of a surrogate pair), and terminates it.
void SetField(char16_t* field, std::u16string_view text, size_t capacity = kFieldChars);
// Appends to a field, cut the same way.
void AppendField(char16_t* field, std::u16string_view text, size_t capacity = kFieldChars);

}  // namespace iptc
