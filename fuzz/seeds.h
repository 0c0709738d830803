// Seed inputs for the fuzz targets, made with the fixture builder. Each
// seeds_<target>.cpp registers the seeds of fuzz_<target>.cpp:
//
//   static const fuzzseeds::Register kSeeds("exif", [] { return std::vector<fixture::Bytes>{...}; });
//
// make_seeds writes them to <dir>/<target>/seed-N before the fuzz smoke runs.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fixture/fixture.h"

namespace fuzzseeds {

using Maker = std::function<std::vector<fixture::Bytes>()>;

struct Register {
    Register(const char* target, Maker maker);
};

}  // namespace fuzzseeds
