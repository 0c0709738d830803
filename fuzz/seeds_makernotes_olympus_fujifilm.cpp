// Seeds for fuzz_makernotes: Olympus notes in each header form (the older
// 8-byte one with UNDEFINED sub-directories, "OLYMPUS\0II"/"MM" and
// "OM SYSTEM" with IFD sub-directories), and notes carrying every
// sub-directory the decoder reads (equipment, camera settings, both raw
// development layouts, image processing, focus info) with the values that
// have formats of their own; Fujifilm notes inside little- and big-endian
// EXIF blocks, one with its longer values (rationals, signed pairs, SHORT
// triples).
#include <string>
#include <utility>
#include <vector>

#include "fixture/makernote_fixture.h"
#include "makernote_seed.h"
#include "seeds.h"

namespace {

using fixture::ByteOrder;
using fixture::Bytes;
using fixture::MakerNoteBuilder;
using fuzzseeds::Longs;
using fuzzseeds::MakerNoteSeed;
using fuzzseeds::Shorts;

// ------------------------------------------------------------ header forms

void MainEntries(MakerNoteBuilder& n) {
    const ByteOrder o = n.order();
    n.OutOfLine(0x0200, fixture::kLong, 3, Longs(o, {3, 5, 2})).Short(0x0201, 2).Short(0x0202, 1);
    n.OutOfLine(0x0204, fixture::kRational, 1, Longs(o, {150, 100})).Ascii(0x0207, "SX558").Ascii(0x0209, "OLYMPUS DIGITAL CAMERA");
}

Bytes FormEquipment(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    n.Ascii(0x0101, "143008611").Long(0x0104, 0x1300).OutOfLine(0x0201, fixture::kByte, 6, {0, 0, 5, 0, 0, 0});
    n.Ascii(0x0202, "050105886").Ascii(0x0203, "OLYMPUS M.12-40mm F2.8");
    return n.Build(at);
}

Bytes FormSettings(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    n.Field(0x0301, fixture::kShort, 2, Shorts(o, {2, 0x24})).Short(0x0500, 18);
    n.OutOfLine(0x0529, fixture::kShort, 4, Shorts(o, {2, 0, 0, 0}));
    return n.Build(at);
}

// The main directory with both sub-directories appended after it. origin:
// the note's offset from the base its offsets count from.
Bytes FormNote(ByteOrder o, const std::string& header, int64_t origin, uint16_t subType) {
    auto build = [&](uint32_t equipment, uint32_t settings, uint32_t equipmentSize, uint32_t settingsSize) {
        MakerNoteBuilder n(o);
        n.Header(header);
        MainEntries(n);
        const bool block = subType == fixture::kUndefined;
        n.Field(0x2010, subType, block ? equipmentSize : 1, Longs(o, {equipment}));
        n.Field(0x2020, subType, block ? settingsSize : 1, Longs(o, {settings}));
        return n.Build(origin);
    };
    const auto end = static_cast<uint32_t>(origin + static_cast<int64_t>(build(0, 0, 0, 0).size()));
    const Bytes equipment = FormEquipment(o, end);
    const auto next = end + static_cast<uint32_t>(equipment.size());
    const Bytes settings = FormSettings(o, next);
    Bytes note = build(end, next, static_cast<uint32_t>(equipment.size()), static_cast<uint32_t>(settings.size()));
    fixture::Append(note, equipment);
    fixture::Append(note, settings);
    return note;
}

// ------------------------------------------------------------ every sub-directory

using Directory = Bytes (*)(ByteOrder, uint32_t);

Bytes Equipment(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    n.Field(0x0000, fixture::kUndefined, 4, fixture::ToBytes("0100")).Ascii(0x0100, "S0047");
    n.OutOfLine(0x0103, fixture::kRational, 1, Longs(o, {2163, 100})).Long(0x0104, 0x1300);
    n.OutOfLine(0x0201, fixture::kByte, 6, {0, 0, 0x19, 0x10, 0, 0}).Long(0x0204, 0x1100);
    n.Short(0x0205, 0x2f3).Short(0x0206, 0x39d).Short(0x0207, 12).Short(0x0208, 40).Short(0x020a, 0x2f3);
    n.Short(0x020b, 0xc043).OutOfLine(0x0301, fixture::kByte, 6, {0, 0, 4, 0, 0, 0}).Long(0x0304, 0x1000);
    n.Short(0x1000, 3).Short(0x1001, 11).Long(0x1002, 0x2000);
    return n.Build(at);
}

Bytes CameraSettings(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    n.Long(0x0100, 1).Long(0x0102, 4096).Short(0x0200, 3).Short(0x0202, 1027);
    n.OutOfLine(0x0203, fixture::kSRational, 1, Longs(o, {0xFFFFFFFD, 3}));
    n.Field(0x0301, fixture::kShort, 2, Shorts(o, {2, 0x24}));
    n.OutOfLine(0x0304, fixture::kLong, 3, Longs(o, {0x79798585, 0x10203040, 0}));
    n.OutOfLine(0x0305, fixture::kSRational, 5, Longs(o, {0, 0, 1, 2, 1, 4, 3, 4, 0xFFFFFFFF, 2}));
    n.Short(0x0400, 0x15).Short(0x0403, 18).Short(0x0501, 5300);
    n.OutOfLine(0x0503, fixture::kShort, 3, Shorts(o, {0xFFFF, 0xFFFE, 2}));
    n.OutOfLine(0x050a, fixture::kShort, 1, Shorts(o, {0xF})).OutOfLine(0x050f, fixture::kShort, 4, Shorts(o, {1, 0xFFFF, 1, 1}));
    n.Short(0x0520, 7).OutOfLine(0x0529, fixture::kShort, 4, Shorts(o, {27, 0, 0, 0}));
    n.OutOfLine(0x0600, fixture::kShort, 5, Shorts(o, {2, 3, 0, 0, 0})).Field(0x0601, fixture::kShort, 2, Shorts(o, {3, 4}));
    n.Long(0x0604, 3).Short(0x0900, 1013).OutOfLine(0x0901, fixture::kSLong, 2, Longs(o, {0xFFFFFFF6, 0xFFFFFFE0}));
    return n.Build(at);
}

Bytes RawDevelopment(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    n.OutOfLine(0x0100, fixture::kSRational, 1, Longs(o, {1, 3})).Short(0x0108, 1).Short(0x010a, 6).Short(0x010c, 0xFF);
    return n.Build(at);
}

Bytes RawDevelopment2(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    n.Short(0x0101, 2).OutOfLine(0x0105, fixture::kShort, 3, Shorts(o, {1, 0xFFFE, 2})).Short(0x010c, 256);
    return n.Build(at);
}

Bytes ImageProcessing(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    n.OutOfLine(0x0200, fixture::kShort, 9, Shorts(o, {348, 65482, 65494, 65480, 422, 65422, 65534, 65404, 388}));
    n.Field(0x1112, fixture::kByte, 2, {3, 3, 0, 0}).Field(0x1900, fixture::kByte, 2, {0, 1, 0, 0}).Short(0x1901, 1);
    return n.Build(at);
}

Bytes FocusInfo(ByteOrder o, uint32_t at) {
    MakerNoteBuilder n(o);
    n.OutOfLine(0x0305, fixture::kRational, 1, Longs(o, {705, 1})).Short(0x0308, 3);
    n.Field(0x1201, fixture::kShort, 2, Shorts(o, {1, 0})).Field(0x1209, fixture::kShort, 2, Shorts(o, {1, 4}));
    n.Short(0x1500, 0xFFF6).OutOfLine(0x1600, fixture::kUndefined, 48, Bytes(48, 1));
    return n.Build(at);
}

constexpr std::pair<uint16_t, Directory> kSubDirectories[] = {
    {0x2010, Equipment}, {0x2020, CameraSettings}, {0x2030, RawDevelopment},
    {0x2031, RawDevelopment2}, {0x2040, ImageProcessing}, {0x2050, FocusInfo},
};

// The main directory with every sub-directory after it. origin: the note's
// offset from the base its offsets count from.
Bytes DepthNote(ByteOrder o, const std::string& header, int64_t origin, uint16_t subType) {
    const bool block = subType == fixture::kUndefined;
    auto build = [&](const std::vector<std::pair<uint32_t, uint32_t>>& placed) {
        MakerNoteBuilder n(o);
        n.Header(header).Ascii(0x0207, "D4040").Short(0x0203, 6);
        n.OutOfLine(0x0205, fixture::kRational, 1, Longs(o, {2160, 100})).Short(0x1017, 412);
        for (size_t i = 0; i < placed.size(); ++i)
            n.Field(kSubDirectories[i].first, subType, block ? placed[i].second : 1, Longs(o, {placed[i].first}));
        return n.Build(origin);
    };
    std::vector<std::pair<uint32_t, uint32_t>> placed(std::size(kSubDirectories), {0, 0});
    auto at = static_cast<uint32_t>(origin + static_cast<int64_t>(build(placed).size()));
    std::vector<Bytes> parts;
    for (size_t i = 0; i < placed.size(); ++i) {
        parts.push_back(kSubDirectories[i].second(o, at));
        placed[i] = {at, static_cast<uint32_t>(parts.back().size())};
        at += placed[i].second;
    }
    Bytes note = build(placed);
    for (const Bytes& part : parts) fixture::Append(note, part);
    return note;
}

// ------------------------------------------------------------ Fujifilm

Bytes FujifilmNote() {
    MakerNoteBuilder n(ByteOrder::kLittle);
    n.Header(std::string("FUJIFILM\x0C\0\0\0", 12));
    n.Field(0x0000, fixture::kUndefined, 4, fixture::ToBytes("0130")).Ascii(0x0010, "FPX20582698 592D3131");
    n.Ascii(0x1000, "NORMAL ").Short(0x1001, 3).Short(0x1002, 0x100).Short(0x1003, 0x80).Short(0x1004, 0x100);
    n.Short(0x1010, 3).Short(0x1020, 1).Short(0x1021, 0).Short(0x1030, 1).Short(0x1031, 0x100);
    n.Short(0x1300, 1).Short(0x1301, 0).Short(0x1302, 1).Short(0x1400, 3).Short(0x1401, 0x200).Short(0x1402, 0x100);
    return n.Build(0);
}

Bytes FujifilmValuesNote() {
    const ByteOrder le = ByteOrder::kLittle;
    MakerNoteBuilder n(le);
    n.Header(std::string("FUJIFILM\x0C\0\0\0", 12));
    n.Short(0x1005, 5600).OutOfLine(0x100a, fixture::kSLong, 2, Longs(le, {40, 0xFFFFFFEC})).Short(0x100e, 0x2E0);
    n.OutOfLine(0x1011, fixture::kSRational, 1, Longs(le, {0xFFFFFFFD, 3})).Short(0x1022, 0x200);
    n.Field(0x1023, fixture::kShort, 2, Shorts(le, {12, 34})).Short(0x1034, 0x300).Long(0x1040, 0xFFFFFFF0);
    n.Short(0x1050, 3).OutOfLine(0x1404, fixture::kRational, 1, Longs(le, {1800, 100}));
    n.OutOfLine(0x1422, fixture::kShort, 3, Shorts(le, {0x102, 2, 0})).Short(0x1425, 0x105).Short(0x1438, 0x8123);
    return n.Build(0);
}

std::vector<Bytes> OlympusFujifilmSeeds() {
    const ByteOrder le = ByteOrder::kLittle, be = ByteOrder::kBig;
    const std::string oldForm("OLYMP\0\x01\0", 8);
    const std::string fullNameII("OLYMPUS\0II\x03\0", 12), fullNameMM("OLYMPUS\0MM\x03\0", 12);
    const std::string omSystem("OM SYSTEM\0\0\0II\x04\0", 16);
    const Bytes fujifilm = FujifilmNote(), fujifilmValues = FujifilmValuesNote();
    return {
        MakerNoteSeed(le, "OLYMPUS CORPORATION", fixture::MakerNoteTiff(le, FormNote(le, oldForm, fixture::kNoteOffset, fixture::kUndefined))),
        MakerNoteSeed(be, "OLYMPUS CORPORATION", fixture::MakerNoteTiff(be, FormNote(be, oldForm, fixture::kNoteOffset, fixture::kLong))),
        MakerNoteSeed(be, "OLYMPUS IMAGING CORP.", fixture::MakerNoteTiff(be, FormNote(le, fullNameII, 0, 13))),
        MakerNoteSeed(be, "OLYMPUS IMAGING CORP.", fixture::MakerNoteTiff(be, FormNote(be, fullNameMM, 0, 13))),
        MakerNoteSeed(le, "OM Digital Solutions", fixture::MakerNoteTiff(le, FormNote(le, omSystem, 0, 13))),
        MakerNoteSeed(le, "FUJIFILM", fixture::MakerNoteTiff(le, fujifilm)),
        MakerNoteSeed(be, "FUJIFILM", fixture::MakerNoteTiff(be, fujifilm)),
        MakerNoteSeed(le, "OLYMPUS CORPORATION",
                      fixture::MakerNoteTiff(le, DepthNote(le, oldForm, fixture::kNoteOffset, fixture::kUndefined))),
        MakerNoteSeed(be, "OLYMPUS IMAGING CORP.", fixture::MakerNoteTiff(be, DepthNote(be, fullNameMM, 0, 13))),
        MakerNoteSeed(be, "FUJIFILM", fixture::MakerNoteTiff(be, fujifilmValues)),
    };
}

}  // namespace

static const fuzzseeds::Register kOlympusFujifilmSeeds("makernotes", OlympusFujifilmSeeds);
