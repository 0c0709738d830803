#include "fixture/container_fixture.h"
#include "seeds.h"

namespace {

fixture::Bytes Chunk(std::string_view type, std::string_view data) {
    return fixture::PngChunk(type, fixture::ToBytes(data));
}

}  // namespace

static const fuzzseeds::Register kSeeds("comment", [] {
    using fixture::JpegBuilder;
    using namespace std::string_literals;
    return std::vector<fixture::Bytes>{
        JpegBuilder().Soi().Segment(0xE0, fixture::ToBytes("JFIF\0\1\2"s)).Com("first\r\nline").Com("second\n")
            .ScanAndEoi().Build(),
        JpegBuilder().Soi().Com("$F $E271 $I120 | $S").Raw({0xFF, 0xFE, 0x00, 0x01}).Build(),
        fixture::PngFile({Chunk("tEXt", "Comment\0Hello"s), Chunk("iTXt", "Title\0\0\0en\0\0Sunset"s),
                          Chunk("tEXt", "\0no keyword"s)}),
        fixture::Join({fixture::PngSignature(), fixture::PngChunkWithLength(70000, "tEXt", fixture::ToBytes("k\0v"s))}),
    };
});
