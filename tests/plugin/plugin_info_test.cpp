#include "plugin/plugin_api.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(PluginInfo, CopiesVersionAndDescriptionWithTerminators) {
    char version[16], description[64];
    std::memset(version, 'x', sizeof version);
    std::memset(description, 'x', sizeof description);
    EXPECT_EQ(vv::GetPlugInInfo(version, description), 0);
    EXPECT_STREQ(version, "4.76");
    EXPECT_STREQ(description, "EXIF/IPTC/Comment image information");
    EXPECT_EQ(version[5], 'x');  // nothing written past the terminator
}
