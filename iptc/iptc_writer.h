// Writing an IptcData record into a JPEG as a new APP13 segment that holds
// one Photoshop image resource, 0x0404 (IPTC-NAA), with the IIM datasets:
//
//   FF ED                 APP13
//   L (16 bits)           IIM length + 28, + 1 when that is odd
//   "Photoshop 3.0" 00    14 bytes
//   "8BIM" 04 04          resource 0x0404
//   00 00                 empty resource name
//   IIM length (32 bits)
//   IIM datasets          1:90 ESC % G, 1:00 version 4, then record 2
//   [00]                  pad to an even resource size
//
// Every text is written as UTF-8. Only the fields the IPTC sheet edits are
// written; the others (Edit Status, Release Date, ...) are dropped from the
// file, together with every other Photoshop resource of the old APP13.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "iptc_data.h"
#include "iptc_reader.h"

namespace iptc {

// Appends dataset 2:<dataset> with the text as UTF-8 (cut at a character
// boundary to kWrittenTextBytes bytes) and adds its size to `length`; an
// empty text appends nothing.
void AppendIptcDataset(std::vector<uint8_t>& buffer, int dataset, uint32_t& length, std::u16string_view text);

// The IIM datasets of the record: the result holds the low 16 bits of the
// IIM length (big-endian), the datasets, and one zero byte; `length` is the
// IIM length + 2. Each field written as one dataset comes behind the
// `earlier` occurrences of its dataset number, in their order.
std::vector<uint8_t> BuildIptcBlock(const IptcData& data, uint32_t& length,
                                    const std::vector<IptcOccurrence>& earlier = {});

// The occurrences of a dataset that the record keeps one field of (By-line,
// Contact...) which a rewrite would lose: all but the last, of each dataset
// that the old block (an APP13 buffer) holds several times and whose field
// still holds what the reader made of the last. A field the user changed
// replaces them all.
std::vector<IptcOccurrence> KeptOccurrences(const uint8_t* oldBlock, size_t length, const IptcData& data);

// Rewrites the file with the record's APP13 in place of the Photoshop block
// that LoadMetadataSegment found at app13Offset with app13Length (length 0:
// none; the new segment then goes right behind the start-of-image marker).
// All segments of that block go, and so does any other Photoshop block that
// holds IPTC datasets, so the file is left with one IPTC block; APP13
// segments of other kinds and Photoshop blocks without IPTC stay as they
// are. The block must still be where it was found. Keeps the file's times
// when the record's keepOrgDate is set. Returns 1, or 0 with `errorText`
// set; on failure the file is unchanged.
int WriteIptcToJpeg(std::u16string_view fileName, uint32_t app13Offset, uint32_t app13Length,
                    const IptcData& data, std::u16string& errorText);

}  // namespace iptc
