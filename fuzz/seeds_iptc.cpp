#include "fixture/iptc_fixture.h"
#include "seeds.h"

static const fuzzseeds::Register kSeeds("iptc", [] {
    using fixture::IimBuilder;
    const fixture::Bytes iim = IimBuilder()
                                   .Dataset(1, 90, "\x1B%G").Dataset(2, 0, std::string("\0\x02", 2))
                                   .Dataset(2, 25, "a").Dataset(2, 25, "b").Dataset(2, 120, "c\r\nd\te")
                                   .Dataset(2, 55, "20240229").Dataset(2, 90, "utf").Build();
    return std::vector<fixture::Bytes>{
        fixture::IptcApp13(iim),
        iim,
        fixture::IptcApp13(IimBuilder().DatasetWithLength(2, 5, 0x8004, "extended").Build()),
        fixture::PhotoshopApp13({fixture::PhotoshopResource(0x040C, {1, 2, 3}),
                                 fixture::PhotoshopResource(0x0404, IimBuilder().Dataset(1, 1, "").Dataset(2, 20, "x").Build())}),
    };
});
