// What the IPTC property sheet decides without a window: loading a file into
// the session record, its settings, the text of the file line, the change
// check, the placeholder expansion of the fields before a write, the merge
// of the edited text with a file's own text in a batch, and the batch run
// that writes the first file's text into every file. The Win32 half
// (ui/iptc_sheet*) only moves these values in and out of controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "iptc/iptc_data.h"
#include "xmp/xmp_rows.h"

namespace vv {

// ------------------------------------------------------------ settings

inline constexpr char16_t kIptcSection[] = u"IPTC";

// Reads KeepOrgDate, LoadXMP, ReplaceEmpty, SkipEmpty, Append, SaveTab and
// LastTab into the record (each with its default when missing).
void ReadIptcSheetSettings(iptc::IptcData& data);
// "BatchMode" (default 2).
int ReadIptcBatchMode(std::u16string_view settingsPath);
// Writes one key as "%d"; nothing when there is no settings file.
void WriteIptcSetting(std::u16string_view settingsPath, std::u16string_view key, int value);

// ------------------------------------------------------------ loading

// Clears the record's texts (record version, the 34 fields, the character
// set and the UTF-8 flag) and loads `data.fileName` into them: the file's
// APP13 (or a TIFF's IIM block), and when that yields nothing the XMP
// packet if LoadXMP is set and the file is not a TIFF. Sets the record's
// APP13, XMP and isTiff members. With `xmpRows`, the file's XMP packet
// (none for a TIFF) is kept there, flattened, for the XMP page, from the
// same reading. The file is opened once. Returns the number of fields filled.
int LoadIptcSheetFile(iptc::IptcData& data, xmp::XmpRows* xmpRows = nullptr);

// ------------------------------------------------------------ file line

// The file line of the first page: the name, the read-only warning when it
// applies, and "(File: n / count)".
std::u16string IptcFileLine(std::u16string_view fileName, int index, int count, bool readOnly);

// ------------------------------------------------------------ edits

// Keeps only the first character of the Priority field (urgency is one
// digit; "12" is stored as "1").
void CutPriority(iptc::IptcData& data);

// True when one of the twenty fields the sheet edits differs from the
// snapshot other than in letter case.
bool IptcTextsChanged(const iptc::IptcData& now, const iptc::IptcData& snapshot);

// Expands the placeholders of each of the nineteen free-text fields that
// holds a "$", for the file `fileName`; `counter` is the file's position in
// its batch (1 for a single file).
void ExpandIptcPlaceholders(iptc::IptcData& data, std::u16string_view fileName, int counter);

// Merges a file's own texts (`own`) into the edited record by the record's
// batch options (append; else replace-only-empty and skip-empty). The
// result stays in `edited`.
void MergeBatchTexts(iptc::IptcData& edited, const iptc::IptcData& own);

// ------------------------------------------------------------ writing

// Called with each failing file's message.
using IptcErrorSink = std::function<void(std::u16string_view errorText)>;

// Writes `data` to data.fileName with its APP13 offset and length, the
// placeholders expanded for that file (counter as in
// ExpandIptcPlaceholders) in a copy, so the record keeps what was typed.
// TIFF files are not written (result 1). Returns the writer's result; a
// failure also goes to `onError`.
int WriteIptcSheetFile(const iptc::IptcData& data, int counter, const IptcErrorSink& onError);

// Batch mode 1: the edited record's texts go into every file of `names` in
// order, each with its own placeholder values; with any batch option set
// each file's own texts are read and merged first. A failing file is
// reported to `onError` and the run goes on. TIFF files are skipped, and the
// file right after a TIFF is written without placeholder expansion. The
// record is left as it was given. Returns true when every write succeeded.
bool WriteIptcBatch(const std::vector<std::u16string>& names, const iptc::IptcData& edited,
                    const IptcErrorSink& onError);

}  // namespace vv
