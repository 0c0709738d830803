// The working state behind the EXIF creation dialog, filled from the
// export's arguments before the dialog opens.
#pragma once

#include <string>
#include <string_view>

#include "exif_writer.h"

namespace exif {

inline constexpr size_t kCreatorPathLimit = 260;  // the viewer's path capacity

struct ExifCreatorState {
    std::u16string path;          // as given: a path longer than kCreatorPathLimit is
                                  // not cut (the cut would name another file) but refused
    std::u16string settingsPath;  // cut to kCreatorPathLimit characters
    bool readOnly = false;
    int keepDate = 1;             // "EXIF"/"CreatorKeepOrgDate"
    TagRecord rows[kCreatorRowCount];
};

// Copies the paths, reads the file's read-only attribute and the keep-date
// setting, and sets the rows up empty (InitCreatorRows).
void PrepareExifCreator(std::u16string_view path, std::u16string_view settingsPath, ExifCreatorState& state);

// Before the rows are shown: an empty Date Taken gets the local time.
void FillDefaultDateTaken(ExifCreatorState& state);

// OK: writes the rows into the file (WriteExifToJpeg); a path longer than
// the viewer's kCreatorPathLimit characters is refused with its message.
int WriteExifCreator(const ExifCreatorState& state, std::u16string& errorText);

}  // namespace exif
