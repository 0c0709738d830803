#include "exif/exif_fixtures.h"
#include "seeds.h"

using namespace fixture;

static const fuzzseeds::Register kSeeds("exif", [] {
    std::vector<Bytes> seeds = {exiftest::Sample(ByteOrder::kLittle).File(),
                                exiftest::Sample(ByteOrder::kBig).tiff.Build()};

    // Text forms: a character-coded comment, a long description, UTF-16 XP text.
    TiffBuilder texts(ByteOrder::kBig);
    const int exif = texts.AddIfd();
    texts.Ascii(0, 270, std::string(300, 'd')).Byte(0, 40091, {'T', 0, 'i', 0, 0, 0}).Pointer(0, 34665, exif);
    Bytes comment = ToBytes(std::string("UNICODE\0", 8));
    Append(comment, {0, 'H', 0, 'i', 0, 0});
    texts.Undefined(exif, 37510, comment).Undefined(exif, 37500, ToBytes("Nikon\0\2\0\0\0MM\0*\0\0\0\x08"));
    seeds.push_back(exiftest::Jpeg(texts.Build()));

    // A raw file whose IFD0 points at an embedded JPEG.
    TiffBuilder raw;
    const int rawExif = raw.AddIfd();
    raw.RawEntry(0, 46, kUndefined, 1, 64).Pointer(0, 34665, rawExif).Rational(rawExif, 33437, {{28, 10}});
    Bytes file = raw.Build();
    file.resize(64, 0);
    Append(file, exiftest::Sample(ByteOrder::kBig).File());
    seeds.push_back(file);

    // Lies: counts of 2^32-1, offsets past the end, a directory that is its own child.
    TiffBuilder lies;
    lies.RawEntry(0, 270, kAscii, 0xFFFFFFFF, 0xFFFFFF00).RawEntry(0, 34665, kLong, 1, 8)
        .RawEntry(0, 34853, kLong, 1, 8).RawEntry(0, 318, kRational, 0xFFFFFFFF, 8).Next(0, 0);
    seeds.push_back(exiftest::Jpeg(lies.Build()));
    return seeds;
});
