// The IIM block walk on arbitrary bytes, as an APP13 payload and as a TIFF's
// raw block, then the exports' text and the writer's block from what it read;
// then the exports on the bytes as a whole file in memory, and the APP13
// blocks and EXIF file offsets a writer would plan its rewrite with.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "iptc/iptc_reader.h"
#include "iptc/iptc_writer.h"
#include "iptc/photoshop_blocks.h"
#include "jpeg/exif_file_pointers.h"
#include "plugin/export_inputs.h"
#include "platform/input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::unique_ptr<iptc::IptcData> record = std::make_unique<iptc::IptcData>();
    static char16_t output[512];
    for (bool searchResource : {true, false}) {
        iptc::ClearIptcData(*record);
        const int count = iptc::ParseIptcBlock(data, size, *record, searchResource);
        if (count < 0 || count > static_cast<int>(size / 5)) __builtin_trap();
        int32_t counter = 0;
        output[0] = 0;
        for (int row = 0; row <= iptc::kFieldCount; ++row) {
            const auto& r = iptc::IptcDatasetTable[row];
            iptc::IptcTagText(*record, r.dataset);
            if (row > 0) iptc::AppendIptcLine(output, record->fields[row - 1], 512, counter, r.name, r.dataset, 3);
        }
        uint32_t length = 0;
        const auto block = iptc::BuildIptcBlock(*record, length);
        if (block.size() != size_t{length} + 1) __builtin_trap();
    }
    const auto input = platform::Input::FromMemory(data, size);
    vv::LoadIptcText(*input, *record, output, 512, 3);
    if (output[511] != 0) __builtin_trap();
    for (const iptc::PhotoshopBlock& block : iptc::FindPhotoshopBlocks(*input)) {
        if (block.segments.empty() || block.segments.back().end() > size + 0x10000) __builtin_trap();
        const auto bytes = iptc::ReadPhotoshopBlock(*input, block, 0);
        iptc::KeptOccurrences(bytes.data(), bytes.size(), *record);
    }
    for (const jpeg::FilePointer& pointer : jpeg::FindFilePointers(*input))
        if (pointer.at + 4 > size) __builtin_trap();
    return 0;
}
