// What vvmeta needs from the plug-in: the data exports, reached either
// through Metadata.dll (Windows, loaded by name as the viewer does) or by
// calling the portable core directly (native build).
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vvmeta {

struct PluginApi {
    int32_t (*GetPlugInInfo)(char*, char*) = nullptr;
    uint64_t (*GetExifInfos)(const char16_t*, uint32_t*, uint32_t*, uint32_t*, uint32_t*, uint32_t*,
                             int32_t) = nullptr;
    int32_t (*LoadData_EXIF_W)(const char16_t*, char16_t*, int32_t, int32_t) = nullptr;
    int32_t (*LoadTag_EXIF_W)(const char16_t*, int32_t, char16_t*, int32_t) = nullptr;
    int32_t (*LoadData_IPTC_W)(const char16_t*, char16_t*, int32_t, int32_t) = nullptr;
    int32_t (*LoadTag_IPTC_W)(const char16_t*, int32_t, char16_t*, int32_t) = nullptr;
    int32_t (*Load_Comment_W)(const char16_t*, char16_t*, int32_t, int32_t, const char16_t*) = nullptr;
    // The comment reader and writer behind the comment dialog. Metadata.dll
    // has no export for them, so they are set in the native build only.
    // Read: the JPEG comment or PNG text of a file; 0 when it cannot be read.
    int (*ReadComment)(const std::u16string& file, const std::u16string& settings, std::u16string& text) = nullptr;
    // Write: one file, or every file of a "|"-list; the number of files that
    // failed (their messages appended to `errors`, one per line).
    int (*WriteComment)(const std::u16string& files, const std::u16string& text, const std::u16string& settings,
                        std::string& errors) = nullptr;
    // The IPTC writer: sets the given record-2 datasets (the same number
    // given twice: one line each, as keywords are kept) over the file's own
    // IPTC and rewrites the file. 1, or 0 with the writer's message.
    int (*WriteIptc)(const std::u16string& file, const std::vector<std::pair<int, std::u16string>>& fields,
                     std::string& error) = nullptr;
    // The EXIF creation writer: a new EXIF block from the creation fields
    // (row number in the dialog's order, text) in a JPEG that has none. The
    // fields start as the dialog shows them, Date Taken set to now; `settings`
    // gives the keep-date option. 1, or 0 with the writer's message.
    int (*CreateExif)(const std::u16string& file, const std::u16string& settings,
                      const std::vector<std::pair<int, std::u16string>>& fields, std::string& error) = nullptr;
    // The dialogs, opened as the viewer opens them: `dialog` is "window" (the
    // EXIF window, run until it closes), "iptcsheet" or "editcomment" (modal;
    // `files` may be a "|"-list). Returns the export's answer. Windows only.
    int (*OpenDialog)(const std::string& dialog, const std::u16string& files, const std::u16string& settings) = nullptr;
};

// The thirteen export names, in the order of the export table.
extern const char* const kExportNames[13];

// Loads the plug-in. On failure returns false with a reason in `error`.
bool LoadPlugin(PluginApi& api, std::string& error);
// For each of kExportNames: whether the plug-in provides it.
std::vector<bool> FindExports();
// Where the plug-in comes from, for messages ("Metadata.dll" or "built in").
const char* PluginOrigin();

// The program's arguments as UTF-16 (the wide command line on Windows).
std::vector<std::u16string> Arguments(int argc, char** argv);
// Writes UTF-8 bytes to standard output unchanged (no newline translation).
void WriteOut(const std::string& utf8);
void WriteErr(const std::string& utf8);

}  // namespace vvmeta
