#include "comment_settings.h"

#include <string>

#include "platform/platform.h"

namespace comment {
namespace {

bool WriteNumber(std::u16string_view settingsPath, std::u16string_view key, int value) {
    const std::string text = std::to_string(value);
    return platform::WriteSettingString(settingsPath, kSettingsSection, key,
                                        std::u16string(text.begin(), text.end()));
}

}  // namespace

CommentSettings ReadCommentSettings(std::u16string_view settingsPath) {
    CommentSettings s;
    s.conversion = platform::ReadSettingInt(settingsPath, kSettingsSection, kConversionKey, 0);
    s.keepOrgDate = platform::ReadSettingInt(settingsPath, kSettingsSection, kKeepOrgDateKey, 1) != 0;
    s.clearSpaces = platform::ReadSettingInt(settingsPath, kSettingsSection, kClearSpacesKey, 0) != 0;
    s.append = platform::ReadSettingInt(settingsPath, kSettingsSection, kAppendKey, 0) != 0;
    return s;
}

bool WriteConversionSetting(std::u16string_view settingsPath, int conversion) {
    return WriteNumber(settingsPath, kConversionKey, conversion);
}

bool WriteOptionSettings(std::u16string_view settingsPath, const CommentSettings& settings) {
    const bool a = WriteNumber(settingsPath, kKeepOrgDateKey, settings.keepOrgDate ? 1 : 0);
    const bool b = WriteNumber(settingsPath, kClearSpacesKey, settings.clearSpaces ? 1 : 0);
    const bool c = WriteNumber(settingsPath, kAppendKey, settings.append ? 1 : 0);
    return a && b && c;
}

}  // namespace comment
