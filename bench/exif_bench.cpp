// The viewer reads a file's EXIF for every image it shows (information lines,
// slide shows): one ReadExifTags and one LoadData_EXIF_W per file.
#include <benchmark/benchmark.h>

#include "exif/exif_fixtures.h"
#include "exif/exif_reader.h"
#include "makernotes/makernote_rules.h"
#include "plugin/plugin_api.h"

static void BM_ReadExifTags(benchmark::State& state) {
    fixture::TempDir dir;
    const std::u16string path = dir.Write("sample.jpg", exiftest::Sample(fixture::ByteOrder::kBig).File());
    for (auto _ : state) {
        exif::TagRecordTable* table = exif::AllocateTagRecordTable();
        uint32_t rows = 0;
        int bigEndian = 0;
        benchmark::DoNotOptimize(exif::ReadExifTags(path, *table, &rows, &bigEndian, makernotes::StandardMakerNoteRules()));
        exif::FreeTagRecordTable(table, 1);
    }
}
BENCHMARK(BM_ReadExifTags);

static void BM_LoadDataExif(benchmark::State& state) {
    fixture::TempDir dir;
    const std::u16string path = dir.Write("sample.jpg", exiftest::Sample(fixture::ByteOrder::kLittle).File());
    std::u16string out(65536, u'\0');
    for (auto _ : state) benchmark::DoNotOptimize(vv::LoadData_EXIF_W(path.c_str(), out.data(), 65536, 3));
}
BENCHMARK(BM_LoadDataExif);
