// The tag tables' own promises, checked from the tables themselves.
#include <gtest/gtest.h>

#include <cstring>

#include "exif/tag_record.h"
#include "exif/tag_table.h"

namespace {

void ExpectSortedAndNamed(const exif::TagInfo* tags, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        EXPECT_TRUE(tags[i].name && *tags[i].name) << tags[i].tag;
        EXPECT_LT(std::strlen(tags[i].name), exif::kTagNameSize) << tags[i].tag;
        EXPECT_NE(tags[i].name[std::strlen(tags[i].name) - 1], ':') << "a name ending in ':' reads as a heading";
        EXPECT_NE(tags[i].format, nullptr) << tags[i].tag;
        if (i > 0) {
            EXPECT_LT(tags[i - 1].tag, tags[i].tag) << "sorted, each tag once";
        }
    }
}

TEST(TagTables, SortedUniqueAndNamed) {
    size_t count = 0;
    const exif::TagInfo* standard = exif::StandardTags(count);
    ExpectSortedAndNamed(standard, count);
    for (size_t i = 0; i < count; ++i) EXPECT_EQ(exif::FindStandardTag(standard[i].tag), &standard[i]);
    EXPECT_EQ(exif::FindStandardTag(0), nullptr);
    EXPECT_EQ(exif::FindStandardTag(65535), nullptr);

    const exif::TagInfo* gps = exif::GpsTags(count);
    ExpectSortedAndNamed(gps, count);
    // GPS rows (400 + tag) must stay clear of the pseudo tag 499.
    EXPECT_LT(exif::kGpsTagBase + gps[count - 1].tag, exif::kGpsPositionPseudoTag);
}

}  // namespace
