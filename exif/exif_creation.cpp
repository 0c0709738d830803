#include "exif_creation.h"

#include "platform/platform.h"

namespace exif {

void PrepareExifCreator(std::u16string_view path, std::u16string_view settingsPath, ExifCreatorState& state) {
    state.path = path;
    state.settingsPath = settingsPath.substr(0, kCreatorPathLimit);
    state.readOnly = platform::IsReadOnly(state.path);
    state.keepDate = platform::ReadSettingInt(state.settingsPath, u"EXIF", u"CreatorKeepOrgDate", 1);
    InitCreatorRows(state.rows);
}

void FillDefaultDateTaken(ExifCreatorState& state) {
    TagRecord& date = state.rows[kCreatorDateRow];
    if (date.value[0] == '\0') SetCreatorValue(date, DefaultDateTaken());
}

int WriteExifCreator(const ExifCreatorState& state, std::u16string& errorText) {
    if (state.path.size() > kCreatorPathLimit) {
        errorText = u"ERROR: Can't write EXIF data. The path is longer than 260 characters.";
        return 0;
    }
    return WriteExifToJpeg(state.path, state.rows, kCreatorRowCount, state.keepDate, errorText);
}

}  // namespace exif
