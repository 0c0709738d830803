// The comment settings, kept by the viewer in section "IPTC" of its settings
// file beside the IPTC sheet's keys.
#pragma once

#include <string_view>

namespace comment {

inline constexpr char16_t kSettingsSection[] = u"IPTC";
inline constexpr char16_t kConversionKey[] = u"JPGComConversion";
inline constexpr char16_t kKeepOrgDateKey[] = u"JPGComKeepOrgDate";
inline constexpr char16_t kClearSpacesKey[] = u"JPGComClearSpaces";
inline constexpr char16_t kAppendKey[] = u"JPGComAppend";

struct CommentSettings {
    int conversion = 0;    // CommentConversion: 0 automatic, 1 ANSI, 2 UTF-8
    bool keepOrgDate = true;   // the rewritten file keeps its three time stamps
    bool clearSpaces = false;  // blanks at both ends of the text are removed
    bool append = false;       // batch: the text is added to each file's comment
};

// The four keys, each with its default when missing.
CommentSettings ReadCommentSettings(std::u16string_view settingsPath);
// Writes the conversion alone (the dialog stores it when a radio is chosen).
bool WriteConversionSetting(std::u16string_view settingsPath, int conversion);
// Writes the three option flags as "%d" (the dialog stores them on "&Write").
bool WriteOptionSettings(std::u16string_view settingsPath, const CommentSettings& settings);

}  // namespace comment
