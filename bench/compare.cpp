// vv_compare: our EXIF export against libexif, exiv2 and the cost of merely
// touching the file, in one process, interleaved file by file so that every
// contender sees the same cache and the same load on the machine.
//
//   vv_compare [--rounds N] [DIR]      DIR defaults to the shared corpus
//
// Per file and contender the median of N rounds is taken; the ratios are
// ours / theirs per file, and their medians over the files are printed with
// the median times. Then: the same JPEG with 50 MB of APP2 segments put
// before its EXIF against the file without them, and the peak heap of one
// export call. Figures, not a test: nothing here fails on a number.
#include <libexif/exif-data.h>
#include <libexif/exif-mnote-data.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exiv2/exiv2.hpp>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "plugin/plugin_api.h"

// ------------------------------------------------------------ heap peak
//
// Every allocation of the process goes through these while counting is on;
// glibc's own entry points do the work.
extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void __libc_free(void*);
}

namespace {
bool g_counting = false;
size_t g_current = 0, g_peak = 0;

void Count(void* p, ptrdiff_t sign) {
    if (!g_counting || !p) return;
    g_current += sign * static_cast<ptrdiff_t>(malloc_usable_size(p));
    g_peak = std::max(g_peak, g_current);
}
}  // namespace

extern "C" {
void* malloc(size_t n) {
    void* p = __libc_malloc(n);
    Count(p, 1);
    return p;
}
void* calloc(size_t n, size_t size) {
    void* p = __libc_calloc(n, size);
    Count(p, 1);
    return p;
}
void* realloc(void* old, size_t n) {
    Count(old, -1);
    void* p = __libc_realloc(old, n);
    Count(p ? p : old, 1);
    return p;
}
void free(void* p) {
    Count(p, -1);
    __libc_free(p);
}
}

namespace {

using Clock = std::chrono::steady_clock;
constexpr int32_t kCapacity = 16384;
constexpr size_t kFloorBytes = 64 * 1024;

std::u16string Wide(const std::string& path) { return platform::Utf8ToUtf16(path); }

size_t g_sink = 0;  // keeps every contender's work observable
bool g_libexifRead = false;  // whether libexif found EXIF data in the last file

void Ours(const std::string& path) {
    static std::u16string out(kCapacity, u'\0');
    g_sink += static_cast<size_t>(vv::LoadData_EXIF_W(Wide(path).c_str(), out.data(), kCapacity, 3));
    g_sink += out[0];
}

void RenderEntry(ExifEntry* entry, void*) {
    char value[1024];
    if (exif_entry_get_value(entry, value, sizeof value)) g_sink += std::strlen(value);
}

void RenderContent(ExifContent* content, void*) { exif_content_foreach_entry(content, RenderEntry, nullptr); }

void Libexif(const std::string& path) {
    ExifData* data = exif_data_new_from_file(path.c_str());
    g_libexifRead = data != nullptr;
    if (!data) return;
    exif_data_foreach_content(data, RenderContent, nullptr);
    if (ExifMnoteData* note = exif_data_get_mnote_data(data)) {
        char value[1024];
        const unsigned n = exif_mnote_data_count(note);
        for (unsigned i = 0; i < n; ++i)
            if (exif_mnote_data_get_value(note, i, value, sizeof value)) g_sink += std::strlen(value);
    }
    exif_data_unref(data);
}

void Exiv2(const std::string& path) {
    try {
        auto image = Exiv2::ImageFactory::open(path);
        image->readMetadata();
        std::ostringstream os;
        const Exiv2::ExifData& exif = image->exifData();
        for (const auto& datum : exif) os << datum.key() << " - " << datum.print(&exif) << '\n';
        g_sink += os.str().size();
    } catch (const std::exception&) {
    }
}

void Floor(const std::string& path) {
    static std::vector<uint8_t> buffer(kFloorBytes);
    auto file = platform::OpenFile(Wide(path), platform::FileMode::kRead);
    if (!file) return;
    g_sink += file->Read(buffer.data(), buffer.size());
}

struct Contender {
    const char* name;
    void (*run)(const std::string&);
};
constexpr Contender kContenders[] = {{"ours", Ours}, {"libexif", Libexif}, {"exiv2", Exiv2}, {"floor", Floor}};
constexpr size_t kCount = sizeof kContenders / sizeof kContenders[0];

double Seconds(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double Median(std::vector<double> v) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    const size_t n = v.size();
    return n % 2 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
}

// The file with `extra` bytes of APP2 segments right after its SOI.
bool WritePadded(const std::string& from, const std::string& to, size_t extra) {
    std::ifstream in(from, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (bytes.size() < 2 || static_cast<uint8_t>(bytes[0]) != 0xFF || static_cast<uint8_t>(bytes[1]) != 0xD8)
        return false;
    std::ofstream out(to, std::ios::binary);
    out.write(bytes.data(), 2);
    std::vector<char> segment(65535 + 2, 'x');
    segment[0] = static_cast<char>(0xFF);
    segment[1] = static_cast<char>(0xE2);
    for (size_t written = 0; written < extra;) {
        const size_t body = std::min<size_t>(65533, extra - written);
        const size_t length = body + 2;
        segment[2] = static_cast<char>(length >> 8);
        segment[3] = static_cast<char>(length & 0xFF);
        out.write(segment.data(), static_cast<std::streamsize>(length + 2));
        written += body;
    }
    out.write(bytes.data() + 2, static_cast<std::streamsize>(bytes.size() - 2));
    return static_cast<bool>(out);
}

}  // namespace

int main(int argc, char** argv) {
    int rounds = 21;
    std::string dir = VV_CORPUS_DIR;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--rounds") == 0 && i + 1 < argc) rounds = std::max(1, std::atoi(argv[++i]));
        else dir = argv[i];
    }
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    std::vector<std::string> files;
    for (const auto& e : std::filesystem::directory_iterator(dir))
        if (e.is_regular_file()) files.push_back(e.path().string());
    std::sort(files.begin(), files.end());
    if (files.empty()) {
        std::fprintf(stderr, "vv_compare: no files in %s\n", dir.c_str());
        return 1;
    }

    // times[file][contender][round]
    std::vector<std::vector<std::vector<double>>> times(files.size(), std::vector<std::vector<double>>(kCount));
    for (const std::string& f : files)  // one warm-up pass
        for (const auto& c : kContenders) c.run(f);
    for (int r = 0; r < rounds; ++r)
        for (size_t f = 0; f < files.size(); ++f)
            for (size_t c = 0; c < kCount; ++c) {
                // The order of the contenders turns with the round.
                const size_t k = (c + static_cast<size_t>(r)) % kCount;
                times[f][k].push_back(Seconds([&] { kContenders[k].run(files[f]); }));
            }

    std::printf("%-28s %9s %9s %9s %9s   %7s %7s %7s\n", "file (median us)", "ours", "libexif", "exiv2", "floor",
                "/libexif", "/exiv2", "/floor");
    std::vector<double> medians[kCount], ratios[3], readByLibexif;
    for (size_t f = 0; f < files.size(); ++f) {
        Libexif(files[f]);
        if (g_libexifRead) readByLibexif.push_back(Median(times[f][0]) / Median(times[f][1]));
        double m[kCount];
        for (size_t c = 0; c < kCount; ++c) medians[c].push_back(m[c] = Median(times[f][c]) * 1e6);
        for (size_t c = 1; c < kCount; ++c) ratios[c - 1].push_back(m[0] / m[c]);
        std::printf("%-28.28s %9.1f %9.1f %9.1f %9.1f   %7.2f %7.2f %7.2f\n",
                    std::filesystem::path(files[f]).filename().string().c_str(), m[0], m[1], m[2], m[3],
                    m[0] / m[1], m[0] / m[2], m[0] / m[3]);
    }
    std::printf("\n%zu files, %d rounds. Median time per file (us):", files.size(), rounds);
    for (size_t c = 0; c < kCount; ++c) std::printf(" %s %.1f", kContenders[c].name, Median(medians[c]));
    std::printf("\nMedian over files of ours / theirs: libexif %.3f, exiv2 %.3f, floor %.3f\n", Median(ratios[0]),
                Median(ratios[1]), Median(ratios[2]));
    std::printf("Over the %zu files libexif reads: ours / libexif %.3f\n", readByLibexif.size(),
                Median(readByLibexif));

    // 50 MB of APP2 before the EXIF.
    const std::string plain = dir + "/Canon.jpg";
    const std::string padded = (std::filesystem::temp_directory_path() / "vv_compare_app2.jpg").string();
    if (WritePadded(plain, padded, 50u * 1000 * 1000)) {
        std::vector<double> a, b;
        for (int r = 0; r < rounds; ++r) {
            a.push_back(Seconds([&] { Ours(plain); }));
            b.push_back(Seconds([&] { Ours(padded); }));
        }
        std::printf("Canon.jpg with 50 MB of APP2 before its EXIF: %.1f us against %.1f us without (%.2fx)\n",
                    Median(b) * 1e6, Median(a) * 1e6, Median(b) / Median(a));
        std::remove(padded.c_str());
    }

    // Peak heap of one call, over every file.
    size_t peak = 0;
    std::string peakFile;
    for (const std::string& f : files) {
        g_current = g_peak = 0;
        g_counting = true;
        Ours(f);
        g_counting = false;
        if (g_peak > peak) {
            peak = g_peak;
            peakFile = std::filesystem::path(f).filename().string();
        }
    }
    std::printf("Peak heap of one LoadData_EXIF_W call: %zu bytes (%s)\n", peak, peakFile.c_str());
    return g_sink == 0;  // never 0 in practice; keeps the work from being optimised away
}
