// The two lens tables as data (their keys and names), and the Nikon lookup.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <utility>

#include "makernotes/lens_tables.h"

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
        // (3, 4432) can never match single-byte keys; it stands between (3, 44) and (3, 46) as it is.
        if (i == 0 || row.number == 4432) continue;
        const auto& before = PentaxLensTable[i - 1].number == 4432 ? PentaxLensTable[i - 2] : PentaxLensTable[i - 1];
        EXPECT_TRUE(before.series < row.series || (before.series == row.series && before.number < row.number)) << i;
    }
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
    char cut[8];  // the name is cut to the output size
    ASSERT_TRUE(makernotes::LookupNikonLens(NikonLensTable[0].key, cut, sizeof cut));
    EXPECT_STREQ(cut, "AF-S DX");
}

}  // namespace
