// Seeds for fuzz_makernotes: Olympus notes in each header form (the older
// 8-byte one with UNDEFINED sub-directories, "OLYMPUS\0II"/"MM" and
// "OM SYSTEM" with IFD sub-directories) and Fujifilm notes inside little-
// and big-endian EXIF blocks.
#include <string>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::MakerNoteSeed;

Bytes U32(ByteOrder order, uint32_t v) {
    Bytes out;
    fixture::PutU32(out, v, order);
    return out;
}

void MainEntries(MakerNoteBuilder& n) {
    const ByteOrder o = n.order();
    Bytes mode, zoom;
    for (uint32_t v : {3u, 5u, 2u}) fixture::PutU32(mode, v, o);
    for (uint32_t v : {150u, 100u}) fixture::PutU32(zoom, v, o);
    n.OutOfLine(0x0200, fixture::kLong, 3, mode).Short(0x0201, 2).Short(0x0202, 1);
    n.OutOfLine(0x0204, fixture::kRational, 1, zoom).Ascii(0x0207, "SX558").Ascii(0x0209, "OLYMPUS DIGITAL CAMERA");
}

Bytes Equipment(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    n.Ascii(0x0101, "143008611").Long(0x0104, 0x1300).OutOfLine(0x0201, fixture::kByte, 6, {0, 0, 5, 0, 0, 0});
    n.Ascii(0x0202, "050105886").Ascii(0x0203, "OLYMPUS M.12-40mm F2.8");
    return n.Build(at);
}

Bytes CameraSettings(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    Bytes focus, filter;
    for (uint16_t v : {2, 0x24}) fixture::PutU16(focus, v, o);
    for (uint16_t v : {2, 0, 0, 0}) fixture::PutU16(filter, v, o);
    n.Field(0x0301, fixture::kShort, 2, focus).Short(0x0500, 18).OutOfLine(0x0529, fixture::kShort, 4, filter);
    return n.Build(at);
}

// The main directory with both sub-directories appended after it. origin:
// the note's offset from the base its offsets count from.
Bytes OlympusNote(ByteOrder o, const std::string& header, int64_t origin, uint16_t subType) {
    auto build = [&](uint32_t equipment, uint32_t settings, uint32_t equipmentSize, uint32_t settingsSize) {
        MakerNoteBuilder n(o);
        n.Header(header);
        MainEntries(n);
        const bool block = subType == fixture::kUndefined;
        n.Field(0x2010, subType, block ? equipmentSize : 1, U32(o, equipment));
        n.Field(0x2020, subType, block ? settingsSize : 1, U32(o, settings));
        return n.Build(origin);
    };
    const auto end = static_cast<uint32_t>(origin + static_cast<int64_t>(build(0, 0, 0, 0).size()));
    const Bytes equipment = Equipment(o, end);
    const auto next = end + static_cast<uint32_t>(equipment.size());
    const Bytes settings = CameraSettings(o, next);
    Bytes note = build(end, next, static_cast<uint32_t>(equipment.size()), static_cast<uint32_t>(settings.size()));
    fixture::Append(note, equipment);
    fixture::Append(note, settings);
    return note;
}

Bytes FujifilmNote() {
    MakerNoteBuilder n(ByteOrder::kLittle);
    n.Header(std::string("FUJIFILM\x0C\0\0\0", 12));
    n.Field(0x0000, fixture::kUndefined, 4, fixture::ToBytes("0130")).Ascii(0x0010, "FPX20582698 592D3131");
    n.Ascii(0x1000, "NORMAL ").Short(0x1001, 3).Short(0x1002, 0x100).Short(0x1003, 0x80).Short(0x1004, 0x100);
    n.Short(0x1010, 3).Short(0x1020, 1).Short(0x1021, 0).Short(0x1030, 1).Short(0x1031, 0x100);
    n.Short(0x1300, 1).Short(0x1301, 0).Short(0x1302, 1).Short(0x1400, 3).Short(0x1401, 0x200).Short(0x1402, 0x100);
    return n.Build(0);
}

std::vector<Bytes> OlympusFujifilmSeeds() {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    const std::string oldForm("OLYMP\0\x01\0", 8);
    const std::string fullNameII("OLYMPUS\0II\x03\0", 12), fullNameMM("OLYMPUS\0MM\x03\0", 12);
    const std::string omSystem("OM SYSTEM\0\0\0II\x04\0", 16);
    const Bytes fujifilm = FujifilmNote();
    return {
        MakerNoteSeed(le, "OLYMPUS CORPORATION", fixture::MakerNoteTiff(le, OlympusNote(le, oldForm, fixture::kNoteOffset, fixture::kUndefined))),
        MakerNoteSeed(be, "OLYMPUS CORPORATION", fixture::MakerNoteTiff(be, OlympusNote(be, oldForm, fixture::kNoteOffset, fixture::kLong))),
        MakerNoteSeed(be, "OLYMPUS IMAGING CORP.", fixture::MakerNoteTiff(be, OlympusNote(le, fullNameII, 0, 13))),
        MakerNoteSeed(be, "OLYMPUS IMAGING CORP.", fixture::MakerNoteTiff(be, OlympusNote(be, fullNameMM, 0, 13))),
        MakerNoteSeed(le, "OM Digital Solutions", fixture::MakerNoteTiff(le, OlympusNote(le, omSystem, 0, 13))),
        MakerNoteSeed(le, "FUJIFILM", fixture::MakerNoteTiff(le, fujifilm)),
        MakerNoteSeed(be, "FUJIFILM", fixture::MakerNoteTiff(be, fujifilm)),
    };
}

}  // namespace

static const fuzzseeds::Register kOlympusFujifilmSeeds("makernotes", OlympusFujifilmSeeds);
