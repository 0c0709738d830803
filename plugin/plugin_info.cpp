#include <cstring>

#include "plugin_api.h"

namespace vv {

int32_t GetPlugInInfo(char* version, char* description) {
    if (version) std::memcpy(version, kPluginVersion, sizeof kPluginVersion);
    if (description) std::memcpy(description, kPluginDescription, sizeof kPluginDescription);
    return 0;
}

}  // namespace vv
