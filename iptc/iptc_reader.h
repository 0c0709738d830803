// Reading IPTC-IIM datasets into an IptcData record, and the text the two
// IPTC data exports make of it.
//
// An IIM dataset: 0x1C, record number, dataset number, 16-bit big-endian
// length, value. Extended-length datasets (bit 15 set) are not supported:
// their length is taken literally and the value clipped to what is present.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "iptc_data.h"
#include "platform/platform.h"
#include "iptc_limits.h"

namespace iptc {

// Reads the dataset whose header starts at block[position]; `end` is the
// block's length. Accepts a header of record 2 or 1 (only 1 with
// recordOneOnly). Writes the dataset number and its cleaned text: NUL ->
// space, CR and LF -> CR LF each, TAB -> four spaces, at most 4095 bytes,
// trailing spaces removed, always terminated.
// Returns the declared length (the caller advances by 5 + it, even when the
// value was clipped), 0 for an empty dataset, -1 when the header is not
// accepted or the value has no byte before `end`.
int32_t ReadIptcDataset(const uint8_t* block, size_t position, size_t end, int& dataset,
                        char (&text)[kDatasetTextBytes], bool recordOneOnly);

// Fills the record's texts from an APP13 segment (searchResource: the IIM
// datasets are found behind the "8BIM" 0x04 0x04 resource) or from raw IIM
// bytes (a TIFF's block). Decides the character set from dataset 1:90 (or,
// failing that, the first dataset numbered 90 of either record). Returns the
// number of non-empty record-2 datasets stored into a field (the record
// version not counted); 0 when no record-2 dataset was found.
int ParseIptcBlock(const uint8_t* buffer, size_t length, IptcData& data, bool searchResource);

// Every non-empty record-2 dataset of such a block, in order, with its text
// as ParseIptcBlock decodes and cleans it (the UTF-8 switch of a dataset 90
// is applied, not listed).
struct IptcOccurrence {
    int dataset;
    std::u16string text;
};
std::vector<IptcOccurrence> ListIptcDatasets(const uint8_t* buffer, size_t length, bool searchResource);

// The load behind both exports: the IIM block of the file (a JPEG's APP13, a
// TIFF's tag 33723, a Photoshop document's resource, a PNG's raw profile),
// else, unless the file is a TIFF, the fields its XMP packet fills. `data` must be cleared
// by the caller; its isTiff, APP13 and XMP members are set as found.
// Returns 0 only when the file has neither source.
int LoadIptcData(std::u16string_view fileName, IptcData& data);
// The same on an open input.
int LoadIptcData(platform::File& file, IptcData& data);

// Appends one entry of LoadData_IPTC_W's output. Works on `fieldText` in
// place (trims spaces, CRs become spaces, trailing LFs go). `counter` is
// shared by all entries of one output; once an entry does not fit, every
// later one is refused too. Modes:
//   0  value "\n"                     (no counter; refused only when it
//                                       would overflow the output)
//   1  value "\n"                     counter += value length + 2
//   2  "<dataset>=" value "\n"        counter += value length + 7
//   3  name " - " value "\n"          counter += name + value length + 5
// Returns 1 when appended, 0 otherwise. `output` holds `capacity` characters
// and stays terminated.
int AppendIptcLine(char16_t* output, char16_t* fieldText, int32_t capacity, int32_t& counter,
                   const char* displayName, int dataset, int mode);

// The record version as LoadData_IPTC_W prints it ("%d.%d" of the codes of
// its second and third characters), or "" when it is shorter than 2.
std::u16string RecordVersionText(const IptcData& data);

// The text LoadTag_IPTC_W answers for a dataset, before the capacity cut:
// keywords joined by ", ", dates as YYYY:MM:DD, the raw record version for
// 0, "" for numbers the table does not list.
std::u16string IptcTagText(const IptcData& data, int dataset);

}  // namespace iptc
