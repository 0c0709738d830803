// Writes every registered seed set to <dir>/<target>/seed-N.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>

#include "seeds.h"

namespace fuzzseeds {
namespace {
std::map<std::string, std::vector<Maker>>& Registry() {
    static std::map<std::string, std::vector<Maker>> registry;
    return registry;
}
}  // namespace

Register::Register(const char* target, Maker maker) { Registry()[target].push_back(std::move(maker)); }

}  // namespace fuzzseeds

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_seeds DIR\n");
        return 2;
    }
    namespace fs = std::filesystem;
    for (auto& [target, makers] : fuzzseeds::Registry()) {
        fs::path dir = fs::path(argv[1]) / target;
        fs::create_directories(dir);
        int n = 0;
        for (auto& make : makers) {
            for (const fixture::Bytes& seed : make()) {
                std::ofstream out(dir / ("seed-" + std::to_string(n++)), std::ios::binary);
                out.write(reinterpret_cast<const char*>(seed.data()), static_cast<std::streamsize>(seed.size()));
            }
        }
        std::printf("%s: %d seeds\n", target.c_str(), n);
    }
    return 0;
}
