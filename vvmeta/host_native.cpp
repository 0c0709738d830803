// vvmeta's native backend: the portable core, linked in.
#include <cstdio>

#include "../platform/platform.h"
#include "../plugin/plugin_api.h"
#include "plugin_host.h"

namespace vvmeta {

bool LoadPlugin(PluginApi& api, std::string&) {
    api.GetPlugInInfo = vv::GetPlugInInfo;
    api.GetExifInfos = vv::GetExifInfos;
    api.LoadData_EXIF_W = vv::LoadData_EXIF_W;
    api.LoadTag_EXIF_W = vv::LoadTag_EXIF_W;
    api.LoadData_IPTC_W = vv::LoadData_IPTC_W;
    api.LoadTag_IPTC_W = vv::LoadTag_IPTC_W;
    api.Load_Comment_W = vv::Load_Comment_W;
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
