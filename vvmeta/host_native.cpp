// vvmeta's native backend: the portable core, linked in.
#include <algorithm>
#include <cstdio>
#include <memory>

#include "../comment/comment_limits.h"
#include "../comment/comment_reader.h"
#include "../comment/comment_settings.h"
#include "../comment/comment_writer.h"
#include "../exif/exif_creation.h"
#include "../exif/exif_writer.h"
#include "../iptc/iptc_data.h"
#include "../iptc/iptc_reader.h"
#include "../iptc/iptc_writer.h"
#include "../platform/platform.h"
#include "../plugin/plugin_api.h"
#include "plugin_host.h"

namespace vvmeta {
namespace {

// What the comment dialog shows: a PNG's text (ANSI), else the JPEG comment
// converted by the settings' conversion mode.
int ReadComment(const std::u16string& file, const std::u16string& settings, std::u16string& text) {
    char bytes[comment::kOldCommentBytes];
    if (comment::ReadPngComment(file, bytes, sizeof bytes, 0) > 0) {
        text = platform::AnsiToUtf16(bytes);
        return 1;
    }
    if (!comment::ReadJpegComments(file, bytes, sizeof bytes)) return 0;
    text = comment::ConvertCommentText(bytes, comment::ReadCommentSettings(settings).conversion);
    return 1;
}

int WriteComment(const std::u16string& files, const std::u16string& text, const std::u16string& settings,
                 std::string& errors) {
    comment::CommentJob job;
    job.text = text;
    job.settingsPath = settings;
    job.settings = comment::ReadCommentSettings(settings);
    auto collect = [&errors](std::u16string_view e) { errors += platform::Utf16ToUtf8(e) + "\n"; };
    if (files.find(u'|') == std::u16string::npos)
        return comment::WriteCommentToFile(files, job, collect) ? 0 : 1;
    return comment::WriteCommentBatch(files, job, collect).failed;
}

int WriteIptc(const std::u16string& file, const std::vector<std::pair<int, std::u16string>>& fields,
              std::string& error) {
    auto data = std::make_unique<iptc::IptcData>();
    iptc::ClearIptcData(*data);
    iptc::LoadIptcData(file, *data);
    std::vector<int> seen;
    for (const auto& [dataset, text] : fields) {
        char16_t* field = iptc::IptcField(*data, dataset);
        if (!field) {
            error = "no IPTC field for dataset " + std::to_string(dataset);
            return 0;
        }
        if (std::find(seen.begin(), seen.end(), dataset) == seen.end()) {
            iptc::SetField(field, text);
            seen.push_back(dataset);
        } else {
            iptc::AppendField(field, u"\r\n" + text);
        }
    }
    data->keepOrgDate = 1;
    std::u16string message;
    if (iptc::WriteIptcToJpeg(file, data->app13Offset, data->app13Length, *data, message)) return 1;
    error = platform::Utf16ToUtf8(message);
    return 0;
}

int CreateExif(const std::u16string& file, const std::u16string& settings,
               const std::vector<std::pair<int, std::u16string>>& fields, std::string& error) {
    auto state = std::make_unique<exif::ExifCreatorState>();
    exif::PrepareExifCreator(file, settings, *state);
    exif::FillDefaultDateTaken(*state);
    for (const auto& [row, text] : fields)
        if (row >= 0 && static_cast<uint32_t>(row) < exif::kCreatorVisibleRows)
            exif::SetCreatorValue(state->rows[row], platform::Utf16ToUtf8(text));
    std::u16string message;
    if (exif::WriteExifCreator(*state, message)) return 1;
    error = platform::Utf16ToUtf8(message);
    return 0;
}

}  // namespace

bool LoadPlugin(PluginApi& api, std::string&) {
    api.GetPlugInInfo = vv::GetPlugInInfo;
    api.GetExifInfos = vv::GetExifInfos;
    api.LoadData_EXIF_W = vv::LoadData_EXIF_W;
    api.LoadTag_EXIF_W = vv::LoadTag_EXIF_W;
    api.LoadData_IPTC_W = vv::LoadData_IPTC_W;
    api.LoadTag_IPTC_W = vv::LoadTag_IPTC_W;
    api.Load_Comment_W = vv::Load_Comment_W;
    api.ReadComment = ReadComment;
    api.WriteComment = WriteComment;
    api.WriteIptc = WriteIptc;
    api.CreateExif = CreateExif;
    return true;
}

// The dialog exports exist only in the DLL; the native core has the data ones.
std::vector<bool> FindExports() {
    std::vector<bool> found;
    for (const char* name : kExportNames) {
        std::string n = name;
        found.push_back(n.rfind("Load", 0) == 0 || n == "GetPlugInInfo" || n == "GetExifInfos");
    }
    return found;
}

const char* PluginOrigin() { return "built in"; }

std::vector<std::u16string> Arguments(int argc, char** argv) {
    std::vector<std::u16string> args;
    for (int i = 1; i < argc; ++i) args.push_back(platform::Utf8ToUtf16(argv[i]));
    return args;
}

void WriteOut(const std::string& utf8) { std::fwrite(utf8.data(), 1, utf8.size(), stdout); }
void WriteErr(const std::string& utf8) { std::fwrite(utf8.data(), 1, utf8.size(), stderr); }

}  // namespace vvmeta
