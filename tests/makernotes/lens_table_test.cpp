// The two lens tables as data (their order, keys and names) and their lookups.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <utility>

#include "makernotes/lens_tables.h"
#include "makernotes/makernote_limits.h"

namespace {

using makernotes::NikonLensTable;
using makernotes::PentaxLensTable;

TEST(PentaxLensTable, KeysAreUniqueAndAscendExceptTheOneWideNumber) {
    std::set<std::pair<uint32_t, uint32_t>> keys;
    for (size_t i = 0; i < makernotes::kPentaxLensRows; ++i) {
        const auto& row = PentaxLensTable[i];
        EXPECT_TRUE(keys.insert({row.series, row.number}).second) << row.series << "," << row.number;
        const size_t length = std::strlen(row.name);
        EXPECT_TRUE(length > 0 && length <= 127) << i;
        if (i == 0 || row.number == 4432) continue;
        const auto& before = PentaxLensTable[i - 1].number == 4432 ? PentaxLensTable[i - 2] : PentaxLensTable[i - 1];
        EXPECT_TRUE(before.series < row.series || (before.series == row.series && before.number < row.number)) << i;
    }
    // (3, 4432) stands between (3, 44) and (3, 46); the table ends with the two unscanned rows.
    const auto at = [](size_t i) { return std::make_pair(PentaxLensTable[i].series, PentaxLensTable[i].number); };
    size_t wide = 0;
    while (PentaxLensTable[wide].number != 4432) ++wide;
    EXPECT_EQ(at(wide - 1), std::make_pair(3u, 44u));
    EXPECT_EQ(at(wide + 1), std::make_pair(3u, 46u));
    EXPECT_EQ(at(147), std::make_pair(8u, 242u));
    EXPECT_EQ(at(148), std::make_pair(8u, 255u));
}

TEST(PentaxLensTable, LookupScansOnlyTheFirst147Rows) {
    char out[128] = "untouched";
    EXPECT_TRUE(makernotes::LookupPentaxLens(8, 241, out, sizeof out));
    EXPECT_STREQ(out, "smc PENTAX-DA* 50-135mm F2.8 ED [IF] SDM");
    std::strcpy(out, "untouched");
    EXPECT_FALSE(makernotes::LookupPentaxLens(8, 242, out, sizeof out));
    EXPECT_FALSE(makernotes::LookupPentaxLens(8, 255, out, sizeof out));
    EXPECT_STREQ(out, "untouched");
    EXPECT_TRUE(makernotes::LookupPentaxLens(0, 0, out, sizeof out));
    EXPECT_STREQ(out, "M-42 or No Lens");
}

TEST(NikonLensTable, EveryKeyFindsItsRowAndAnyOneByteOffFindsNothing) {
    for (const auto& row : NikonLensTable) {
        char out[128] = "";
        EXPECT_TRUE(makernotes::LookupNikonLens(row.key, out, sizeof out));
        EXPECT_STREQ(out, row.name);
        for (size_t b = 0; b < sizeof row.key; ++b) {
            uint8_t key[8];
            std::memcpy(key, row.key, sizeof key);
            key[b] ^= 0x01;
            char other[128] = "untouched";
            EXPECT_FALSE(makernotes::LookupNikonLens(key, other, sizeof other)) << row.name << " byte " << b;
            EXPECT_STREQ(other, "untouched");
        }
    }
}

TEST(NikonLensTable, NameIsCutToTheOutputSize) {
    char out[8];
    ASSERT_TRUE(makernotes::LookupNikonLens(NikonLensTable[0].key, out, sizeof out));
    EXPECT_STREQ(out, "AF-S DX");
}

}  // namespace
