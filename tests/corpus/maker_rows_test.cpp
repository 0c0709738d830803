// Every maker row of every corpus file, against the tables in makers/*.tsv
// (the format is described at the top of each table). For each row the
// runner checks our name and text, and that the note is honest: no note
// means our text is exiftool's printed value, a note means it is not. The
// -n column records exiftool's number for the reader of the table.
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "corpus.h"

namespace {

struct Expected {
    std::string row, key, number, ours, note;
};
struct Block {
    std::string file;
    std::vector<Expected> rows;
};

std::vector<Block> ReadBlocks(const std::string& path) {
    std::vector<Block> blocks;
    for (std::vector<std::string>& f : corpus::ReadTable(path)) {
        if (f.size() == 1) {
            blocks.push_back({f[0], {}});
            continue;
        }
        if (blocks.empty() || f.size() < 4 || f.size() > 5) {
            ADD_FAILURE() << path << ": bad line \"" << f[0] << "\"";
            continue;
        }
        f.resize(5);
        blocks.back().rows.push_back({f[0], f[1], f[2], f[3], f[4]});
    }
    return blocks;
}

std::string Normalised(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (std::isspace(static_cast<unsigned char>(c))) {
            if (!out.empty() && out.back() != ' ') out += ' ';
        } else {
            out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    if (!out.empty() && out.back() == ' ') out.pop_back();
    return out;
}

// "Group:0x0101 Name" keys come from exiftool's listing by tag ID.
bool ById(const std::string& key) { return key.find(":0x") != std::string::npos; }

std::string Find(const std::map<std::string, std::string>& tags, const std::string& key) {
    const auto it = tags.find(key);
    return it == tags.end() ? std::string() : it->second;
}

// Checks one table; returns {rows, rows marked as disagreeing}.
std::pair<size_t, size_t> CheckTable(const std::string& path) {
    size_t rows = 0, disagree = 0;
    for (const Block& block : ReadBlocks(path)) {
        SCOPED_TRACE(block.file);
        const std::string file = corpus::Path(block.file);
        const auto printed = corpus::Exiftool(file, ""), printedById = corpus::ExiftoolByTagId(file, "");
        const std::vector<corpus::Row> ours = corpus::MakerRows(file);
        EXPECT_EQ(ours.size(), block.rows.size()) << "maker rows of " << block.file;
        for (size_t i = 0; i < ours.size() && i < block.rows.size(); ++i) {
            const Expected& want = block.rows[i];
            SCOPED_TRACE(want.row);
            const std::string theirs = Find(ById(want.key) ? printedById : printed, want.key);
            EXPECT_EQ(ours[i].name, want.row);
            EXPECT_EQ(ours[i].value, want.ours);
            const bool same = Normalised(theirs) == Normalised(ours[i].value);
            if (want.note.empty()) {
                EXPECT_TRUE(same) << "exiftool prints \"" << theirs << "\"";
            } else {
                EXPECT_FALSE(same) << "exiftool now prints our text: drop the note";
                EXPECT_TRUE(want.note[0] == '~' || want.note[0] == '!') << "a note starts with ~ or !";
                if (want.note[0] == '!') ++disagree;
            }
        }
        rows += block.rows.size();
    }
    return {rows, disagree};
}

// The makers whose notes we decode in depth: at most one row in twenty may
// disagree with exiftool. (Casio's deliberate big-endian rule is the reason
// its table falls below.)
constexpr const char* kInDepth[] = {"canon", "nikon",     "olympus", "fujifilm", "minolta",
                                    "pentax", "panasonic", "kodak",   "sigma",    "sony"};

TEST(MakerRows, EveryCorpusFileShowsTheTabledRows) {
    VV_REQUIRE_CORPUS();
    const std::filesystem::path folder = std::filesystem::path(VV_TESTS_DIR) / "corpus" / "makers";
    size_t tables = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".tsv") continue;
        ++tables;
        SCOPED_TRACE(entry.path().filename().string());
        const auto [rows, disagree] = CheckTable(entry.path().string());
        const std::string maker = entry.path().stem().string();
        for (const char* deep : kInDepth) {
            if (maker == deep) {
                EXPECT_LE(disagree * 20, rows) << maker;
            }
        }
        std::printf("%-12s %4zu rows, %3zu disagree with exiftool (%.1f%% agree)\n",
                    entry.path().stem().string().c_str(), rows, disagree,
                    rows ? 100.0 * static_cast<double>(rows - disagree) / static_cast<double>(rows) : 100.0);
    }
    EXPECT_GT(tables, 0u);
}

}  // namespace
