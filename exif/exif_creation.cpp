#include "exif_creation.h"

#include "platform/platform.h"

namespace exif {

void PrepareExifCreator(std::u16string_view path, std::u16string_view settingsPath, ExifCreatorState& state) {
    state.path = path.substr(0, kCreatorPathLimit);
    state.settingsPath = settingsPath.substr(0, kCreatorPathLimit);
    state.readOnly = platform::IsReadOnly(state.path);
    state.keepDate = platform::ReadSettingInt(state.settingsPath, u"EXIF", u"CreatorKeepOrgDate", 1);
    InitCreatorRows(state.rows);
}

void FillDefaultDateTaken(ExifCreatorState& state) {
    TagRecord& date = state.rows[kCreatorDateRow];
    if (date.value[0] == '\0') SetCreatorValue(date, DefaultDateTaken());
}

}  // namespace exif
