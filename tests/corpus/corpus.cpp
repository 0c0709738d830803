#include "corpus.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <sys/wait.h>

#include "exif/exif_reader.h"
#include "makernotes/makernote_rules.h"
#include "platform/platform.h"

namespace fs = std::filesystem;

namespace corpus {

std::string Dir() {
    static const std::string dir = [] {
        std::error_code ec;
        fs::path p = fs::weakly_canonical(fs::path(VV_CORPUS_DIR), ec);
        return !ec && fs::is_directory(p) ? p.string() : std::string();
    }();
    return dir;
}

std::string Path(const std::string& name) { return (fs::path(Dir()) / name).string(); }

std::vector<std::string> Files(const std::vector<std::string>& extensions) {
    std::vector<std::string> out;
    if (Dir().empty()) return out;
    for (const auto& entry : fs::directory_iterator(Dir())) {
        std::string ext = entry.path().extension().string();
        std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
        for (const std::string& want : extensions)
            if (ext == want) out.push_back(entry.path().filename().string());
    }
    std::sort(out.begin(), out.end());
    return out;
}

std::vector<std::vector<std::string>> ReadTable(const std::string& path) {
    std::vector<std::vector<std::string>> lines;
    std::ifstream in(path);
    EXPECT_TRUE(in.is_open()) << path;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::vector<std::string>& fields = lines.emplace_back();
        for (size_t at = 0, tab; at <= line.size(); at = tab + 1)
            fields.push_back(line.substr(at, (tab = std::min(line.find('\t', at), line.size())) - at));
    }
    return lines;
}

std::string Quote(const std::string& text) {
    std::string out = "'";
    for (char c : text) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

std::string Run(const std::string& command, int* exitCode) {
    std::string out;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) {
        if (exitCode) *exitCode = -1;
        return out;
    }
    std::array<char, 4096> buffer;
    size_t n;
    while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) out.append(buffer.data(), n);
    int status = pclose(pipe);
    if (exitCode) *exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return out;
}

bool HaveExiftool() {
    static const bool have = [] {
        int rc = 0;
        Run("exiftool -ver 2>/dev/null", &rc);
        return rc == 0;
    }();
    return have;
}

std::map<std::string, std::string> Exiftool(const std::string& file, const std::string& options) {
    std::map<std::string, std::string> tags;
    std::istringstream lines(Run("exiftool -args -a -G1 " + options + " " + Quote(file) + " 2>/dev/null"));
    std::string line;
    while (std::getline(lines, line)) {
        // -Group:Tag=value
        if (line.size() < 2 || line[0] != '-') continue;
        size_t eq = line.find('=');
        if (eq == std::string::npos) continue;
        tags.emplace(line.substr(1, eq - 1), line.substr(eq + 1));
    }
    return tags;
}

std::map<std::string, std::string> ExiftoolByTagId(const std::string& file, const std::string& options) {
    std::map<std::string, std::string> tags;
    std::istringstream lines(Run("exiftool -a -G1 -s -H " + options + " " + Quote(file) + " 2>/dev/null"));
    std::string line;
    while (std::getline(lines, line)) {
        // [Group]   0x0101 Name   : value
        const size_t close = line.find(']'), colon = line.find(" : ");
        if (line.empty() || line[0] != '[' || close == std::string::npos || colon == std::string::npos) continue;
        std::istringstream head(line.substr(close + 1, colon - close - 1));
        std::string id, name;
        if (!(head >> id >> name)) continue;
        tags.emplace(line.substr(1, close - 1) + ":" + id + " " + name, line.substr(colon + 3));
    }
    return tags;
}

std::vector<Row> Rows(const std::string& file) {
    auto table = std::make_unique<exif::TagRecordTable>();
    uint32_t count = 0;
    int bigEndian = 0;
    std::vector<Row> rows;
    if (exif::ReadExifTags(platform::Utf8ToUtf16(file), *table, &count, &bigEndian,
                           makernotes::StandardMakerNoteRules()))
        for (uint32_t i = 0; i < count; ++i) rows.push_back({table->rows[i].tag, table->rows[i].name, table->rows[i].value});
    exif::FreeTagRecordTable(table.get(), 0);
    return rows;
}

std::vector<Row> MakerRows(const std::string& file) {
    std::vector<Row> rows;
    bool inNote = false;
    for (Row& row : Rows(file)) {
        if (row.name == "Maker Note (Vendor):") {
            inNote = true;
        } else if (inNote) {
            if (row.name.empty() || row.name.back() == ':') break;
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

}  // namespace corpus
