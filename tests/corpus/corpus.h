// The corpus runner: real camera files in VV_CORPUS_DIR, with exiftool as
// the independent oracle. Tests skip with a clear message when the folder or
// exiftool is absent (as on a user's machine).
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace corpus {

// The corpus folder, or "" when it is absent.
std::string Dir();
// Full path of a corpus file.
std::string Path(const std::string& name);
// Corpus files whose names end in one of the extensions (case-insensitive), sorted.
std::vector<std::string> Files(const std::vector<std::string>& extensions);

bool HaveExiftool();
// exiftool's tags for a file, keyed "Group1:Tag" (e.g. "IFD0:Make", "ExifIFD:FNumber",
// "GPS:GPSLatitude"). `options` is passed through (default: numeric values).
// With duplicates (-a) the first occurrence is kept.
std::map<std::string, std::string> Exiftool(const std::string& file, const std::string& options = "-n");
// exiftool's values keyed "Group1:0xID Name" (e.g. "Minolta:0x0101
// ColorMode"), for makers that use one name for two tags.
std::map<std::string, std::string> ExiftoolByTagId(const std::string& file, const std::string& options = "-n");

// Our rows of a file's EXIF block (none when it cannot be read), and those
// under the "Maker Note (Vendor):" heading, up to the next separator or heading.
struct Row {
    uint32_t tag;
    std::string name, value;
};
std::vector<Row> Rows(const std::string& file);
std::vector<Row> MakerRows(const std::string& file);

// The lines of a tab-separated table, split at its tabs; blank lines and
// lines that start with '#' are left out.
std::vector<std::vector<std::string>> ReadTable(const std::string& path);

// Runs a shell command; returns its standard output and sets exitCode.
std::string Run(const std::string& command, int* exitCode = nullptr);
// Quotes a path for the shell.
std::string Quote(const std::string& text);

}  // namespace corpus

// Skips the current test when the corpus or exiftool is missing.
#define VV_REQUIRE_CORPUS()                                                                  \
    do {                                                                                     \
        if (corpus::Dir().empty())                                                           \
            GTEST_SKIP() << "no corpus folder " VV_CORPUS_DIR ": corpus tests skipped";       \
        if (!corpus::HaveExiftool())                                                         \
            GTEST_SKIP() << "exiftool not installed (libimage-exiftool-perl): corpus tests skipped"; \
    } while (0)
