// vvmeta's native backend: the portable core, linked in.
#include <cstdio>

#include "../comment/comment_limits.h"
#include "../comment/comment_reader.h"
#include "../comment/comment_settings.h"
#include "../comment/comment_writer.h"
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
