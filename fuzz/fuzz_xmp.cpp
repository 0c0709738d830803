// The XMP flattening on arbitrary bytes, and the IPTC import of its rows.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "iptc/xmp_import.h"
#include "xmp/xmp_rows.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::unique_ptr<iptc::IptcData> record = std::make_unique<iptc::IptcData>();
    xmp::XmpRows rows;
    const int n = xmp::FillListViews_From_XMP_Buffer(data, size, rows);
    if (n != static_cast<int>(rows.size())) __builtin_trap();
    for (const xmp::XmpRow& row : rows)
        if (row.name.empty()) __builtin_trap();  // a value-only row never stands alone
    iptc::ClearIptcData(*record);
    if (iptc::ImportXmpRows(rows, *record) > n) __builtin_trap();
    return 0;
}
