// The Olympus code tables, as data. Camera codes cover the interchangeable-
// lens bodies and the compacts seen most; lenses the Olympus Four Thirds and
// Micro Four Thirds lines and the Panasonic and Leica lenses for them.
#include "olympus_tables.h"

#include <cstddef>
#include <cstring>

namespace makernotes {
namespace {

struct CameraCode {
    const char* code;
    const char* model;
};
constexpr CameraCode kCameraCodes[] = {
    {"D4028", "X-2,C-50Z"}, {"D4029", "E-20,E-20N,E-20P"}, {"D4034", "C720UZ"}, {"D4040", "E-1"},
    {"D4041", "E-300"}, {"D4193", "C-5000Z"}, {"D4328", "u760,S760"}, {"D4401", "XZ-1"}, {"D4531", "XZ-2"},
    {"D4512", "TG-1"}, {"S0003", "E-330"}, {"S0004", "E-500"}, {"S0009", "E-400"}, {"S0010", "E-510"},
    {"S0011", "E-3"}, {"S0013", "E-410"}, {"S0016", "E-420"}, {"S0017", "E-30"}, {"S0018", "E-520"},
    {"S0019", "E-P1"}, {"S0023", "E-620"}, {"S0026", "E-P2"}, {"S0027", "E-PL1"}, {"S0029", "E-450"},
    {"S0030", "E-600"}, {"S0032", "E-P3"}, {"S0033", "E-5"}, {"S0034", "E-PL2"}, {"S0036", "E-M5"},
    {"S0038", "E-PL3"}, {"S0039", "E-PM1"}, {"S0040", "E-PL1s"}, {"S0042", "E-PL5"}, {"S0043", "E-PM2"},
    {"S0044", "E-P5"}, {"S0045", "E-PL6"}, {"S0046", "E-PL7"}, {"S0047", "E-M1"}, {"S0051", "E-M10"},
    {"S0052", "E-M5MarkII"}, {"S0059", "E-M10MarkII"}, {"S0061", "PEN-F"}, {"S0065", "E-PL8"},
    {"S0067", "E-M1MarkII"}, {"S0068", "E-M10MarkIII"}, {"S0076", "E-PL9"}, {"S0080", "E-M1X"},
    {"S0085", "E-PL10"}, {"S0089", "E-M5MarkIII"}, {"S0092", "E-M1MarkIII"}, {"S0093", "E-P7"},
    {"S0095", "OM-1"}, {"S0101", "OM-5"}, {"SR951", "C2000Z"}, {"SR952", "C21"}, {"SR954", "C2020Z"},
    {"SR955", "C990Z,D490Z"}, {"SR95A", "C2100UZ"},
};

// Key: make, model and sub-model bytes.
constexpr uint32_t Key(uint32_t make, uint32_t model, uint32_t subModel) { return make << 16 | model << 8 | subModel; }

struct LensCode {
    uint32_t key;
    const char* name;
};
constexpr LensCode kLenses[] = {
    {Key(0, 0x00, 0x00), "None"},
    {Key(0, 0x01, 0x00), "Olympus Zuiko Digital ED 50mm F2.0 Macro"},
    {Key(0, 0x01, 0x01), "Olympus Zuiko Digital 40-150mm F3.5-4.5"},
    {Key(0, 0x01, 0x10), "Olympus M.Zuiko Digital ED 14-42mm F3.5-5.6"},
    {Key(0, 0x02, 0x00), "Olympus Zuiko Digital ED 150mm F2.0"},
    {Key(0, 0x02, 0x10), "Olympus M.Zuiko Digital 17mm F2.8 Pancake"},
    {Key(0, 0x03, 0x00), "Olympus Zuiko Digital ED 300mm F2.8"},
    {Key(0, 0x04, 0x10), "Olympus M.Zuiko Digital ED 9-18mm F4.0-5.6"},
    {Key(0, 0x05, 0x00), "Olympus Zuiko Digital 14-54mm F2.8-3.5"},
    {Key(0, 0x05, 0x01), "Olympus Zuiko Digital Pro ED 90-250mm F2.8"},
    {Key(0, 0x06, 0x00), "Olympus Zuiko Digital ED 50-200mm F2.8-3.5"},
    {Key(0, 0x06, 0x01), "Olympus Zuiko Digital ED 8mm F3.5 Fisheye"},
    {Key(0, 0x07, 0x00), "Olympus Zuiko Digital 11-22mm F2.8-3.5"},
    {Key(0, 0x07, 0x01), "Olympus Zuiko Digital 18-180mm F3.5-6.3"},
    {Key(0, 0x07, 0x10), "Olympus M.Zuiko Digital ED 12mm F2.0"},
    {Key(0, 0x08, 0x01), "Olympus Zuiko Digital 70-300mm F4.0-5.6"},
    {Key(0, 0x11, 0x10), "Olympus M.Zuiko Digital 45mm F1.8"},
    {Key(0, 0x12, 0x10), "Olympus M.Zuiko Digital ED 60mm F2.8 Macro"},
    {Key(0, 0x15, 0x00), "Olympus Zuiko Digital ED 7-14mm F4.0"},
    {Key(0, 0x15, 0x10), "Olympus M.Zuiko Digital ED 75mm F1.8"},
    {Key(0, 0x16, 0x10), "Olympus M.Zuiko Digital 17mm F1.8"},
    {Key(0, 0x17, 0x00), "Olympus Zuiko Digital Pro ED 35-100mm F2.0"},
    {Key(0, 0x18, 0x00), "Olympus Zuiko Digital 14-45mm F3.5-5.6"},
    {Key(0, 0x19, 0x10), "Olympus M.Zuiko Digital ED 12-40mm F2.8 Pro"},
    {Key(0, 0x20, 0x00), "Olympus Zuiko Digital 35mm F3.5 Macro"},
    {Key(0, 0x20, 0x10), "Olympus M.Zuiko Digital ED 40-150mm F2.8 Pro"},
    {Key(0, 0x22, 0x00), "Olympus Zuiko Digital 17.5-45mm F3.5-5.6"},
    {Key(0, 0x22, 0x10), "Olympus M.Zuiko Digital 25mm F1.8"},
    {Key(0, 0x23, 0x00), "Olympus Zuiko Digital ED 14-42mm F3.5-5.6"},
    {Key(0, 0x23, 0x10), "Olympus M.Zuiko Digital ED 7-14mm F2.8 Pro"},
    {Key(0, 0x24, 0x00), "Olympus Zuiko Digital ED 40-150mm F4.0-5.6"},
    {Key(0, 0x24, 0x10), "Olympus M.Zuiko Digital ED 300mm F4.0 IS Pro"},
    {Key(0, 0x26, 0x10), "Olympus M.Zuiko Digital ED 12-100mm F4.0 IS Pro"},
    {Key(0, 0x30, 0x00), "Olympus Zuiko Digital ED 50-200mm F2.8-3.5 SWD"},
    {Key(0, 0x31, 0x00), "Olympus Zuiko Digital ED 12-60mm F2.8-4.0 SWD"},
    {Key(0, 0x32, 0x00), "Olympus Zuiko Digital ED 14-35mm F2.0 SWD"},
    {Key(0, 0x33, 0x00), "Olympus Zuiko Digital 25mm F2.8"},
    {Key(0, 0x34, 0x00), "Olympus Zuiko Digital ED 9-18mm F4.0-5.6"},
    {Key(0, 0x35, 0x00), "Olympus Zuiko Digital 14-54mm F2.8-3.5 II"},
    {Key(0, 0x05, 0x10), "Olympus M.Zuiko Digital ED 14-42mm F3.5-5.6 L"},
    {Key(0, 0x06, 0x10), "Olympus M.Zuiko Digital ED 40-150mm F4.0-5.6"},
    {Key(0, 0x08, 0x10), "Olympus M.Zuiko Digital ED 75-300mm F4.8-6.7"},
    {Key(0, 0x09, 0x10), "Olympus M.Zuiko Digital 14-42mm F3.5-5.6 II"},
    {Key(0, 0x10, 0x01), "Kenko Tokina Reflex 300mm F6.3 MF Macro"},
    {Key(0, 0x10, 0x10), "Olympus M.Zuiko Digital ED 12-50mm F3.5-6.3 EZ"},
    {Key(0, 0x13, 0x10), "Olympus M.Zuiko Digital 14-42mm F3.5-5.6 II R"},
    {Key(0, 0x14, 0x10), "Olympus M.Zuiko Digital ED 40-150mm F4.0-5.6 R"},
    {Key(0, 0x18, 0x10), "Olympus M.Zuiko Digital ED 75-300mm F4.8-6.7 II"},
    {Key(0, 0x21, 0x10), "Olympus M.Zuiko Digital ED 14-42mm F3.5-5.6 EZ"},
    {Key(0, 0x25, 0x10), "Olympus M.Zuiko Digital ED 8mm F1.8 Fisheye Pro"},
    {Key(0, 0x27, 0x10), "Olympus M.Zuiko Digital ED 30mm F3.5 Macro"},
    {Key(0, 0x28, 0x10), "Olympus M.Zuiko Digital ED 25mm F1.2 Pro"},
    {Key(0, 0x29, 0x10), "Olympus M.Zuiko Digital ED 17mm F1.2 Pro"},
    {Key(0, 0x30, 0x10), "Olympus M.Zuiko Digital ED 45mm F1.2 Pro"},
    {Key(0, 0x32, 0x10), "Olympus M.Zuiko Digital ED 12-200mm F3.5-6.3"},
    {Key(0, 0x33, 0x10), "Olympus M.Zuiko Digital 150-400mm F4.5 TC1.25x IS Pro"},
    {Key(0, 0x34, 0x10), "Olympus M.Zuiko Digital ED 12-45mm F4.0 Pro"},
    {Key(0, 0x35, 0x10), "Olympus M.Zuiko 100-400mm F5.0-6.3"},
    {Key(0, 0x36, 0x10), "Olympus M.Zuiko Digital ED 8-25mm F4 Pro"},
    {Key(0, 0x37, 0x10), "Olympus M.Zuiko Digital ED 40-150mm F4.0 Pro"},
    {Key(0, 0x39, 0x10), "Olympus M.Zuiko Digital ED 90mm F3.5 Macro IS Pro"},
    {Key(0x2, 0x01, 0x00), "Leica D Vario Elmarit 14-50mm F2.8-3.5 Asph."},
    {Key(0x2, 0x01, 0x10), "Lumix G Vario 14-45mm F3.5-5.6 Asph. Mega OIS"},
    {Key(0x2, 0x02, 0x00), "Leica D Summilux 25mm F1.4 Asph."},
    {Key(0x2, 0x02, 0x10), "Lumix G Vario 45-200mm F4.0-5.6 Mega OIS"},
    {Key(0x2, 0x03, 0x00), "Leica D Vario Elmar 14-50mm F3.8-5.6 Asph. Mega OIS"},
    {Key(0x2, 0x03, 0x01), "Leica D Vario Elmar 14-50mm F3.8-5.6 Asph."},
    {Key(0x2, 0x03, 0x10), "Lumix G Vario HD 14-140mm F4.0-5.8 Asph. Mega OIS"},
    {Key(0x2, 0x04, 0x00), "Leica D Vario Elmar 14-150mm F3.5-5.6"},
    {Key(0x2, 0x04, 0x10), "Lumix G Vario 7-14mm F4.0 Asph."},
    {Key(0x2, 0x05, 0x10), "Lumix G 20mm F1.7 Asph."},
    {Key(0x2, 0x06, 0x10), "Leica DG Macro-Elmarit 45mm F2.8 Asph. Mega OIS"},
    {Key(0x2, 0x07, 0x10), "Lumix G Vario 14-42mm F3.5-5.6 Asph. Mega OIS"},
    {Key(0x2, 0x08, 0x10), "Lumix G Fisheye 8mm F3.5"},
    {Key(0x2, 0x09, 0x10), "Lumix G Vario 100-300mm F4.0-5.6 Mega OIS"},
    {Key(0x2, 0x10, 0x10), "Lumix G 14mm F2.5 Asph."},
    {Key(0x2, 0x11, 0x10), "Lumix G 12.5mm F12 3D"},
    {Key(0x2, 0x12, 0x10), "Leica DG Summilux 25mm F1.4 Asph."},
    {Key(0x2, 0x13, 0x10), "Lumix G X Vario PZ 45-175mm F4.0-5.6 Asph. Power OIS"},
    {Key(0x2, 0x14, 0x10), "Lumix G X Vario PZ 14-42mm F3.5-5.6 Asph. Power OIS"},
    {Key(0x2, 0x15, 0x10), "Lumix G X Vario 12-35mm F2.8 Asph. Power OIS"},
    {Key(0x2, 0x16, 0x10), "Lumix G Vario 45-150mm F4.0-5.6 Asph. Mega OIS"},
    {Key(0x2, 0x17, 0x10), "Lumix G X Vario 35-100mm F2.8 Power OIS"},
    {Key(0x2, 0x18, 0x10), "Lumix G Vario 14-42mm F3.5-5.6 II Asph. Mega OIS"},
    {Key(0x2, 0x19, 0x10), "Lumix G Vario 14-140mm F3.5-5.6 Asph. Power OIS"},
    {Key(0x2, 0x20, 0x10), "Lumix G Vario 12-32mm F3.5-5.6 Asph. Mega OIS"},
    {Key(0x2, 0x21, 0x10), "Leica DG Nocticron 42.5mm F1.2 Asph. Power OIS"},
    {Key(0x2, 0x22, 0x10), "Leica DG Summilux 15mm F1.7 Asph."},
    {Key(0x2, 0x23, 0x10), "Lumix G Vario 35-100mm F4.0-5.6 Asph. Mega OIS"},
    {Key(0x2, 0x24, 0x10), "Lumix G Macro 30mm F2.8 Asph. Mega OIS"},
    {Key(0x2, 0x25, 0x10), "Lumix G 42.5mm F1.7 Asph. Power OIS"},
    {Key(0x2, 0x26, 0x10), "Lumix G 25mm F1.7 Asph."},
    {Key(0x2, 0x27, 0x10), "Leica DG Vario-Elmar 100-400mm F4.0-6.3 Asph. Power OIS"},
    {Key(0x2, 0x28, 0x10), "Lumix G Vario 12-60mm F3.5-5.6 Asph. Power OIS"},
    {Key(0x2, 0x29, 0x10), "Leica DG Summilux 12mm F1.4 Asph."},
    {Key(0x2, 0x30, 0x10), "Leica DG Vario-Elmarit 12-60mm F2.8-4 Asph. Power OIS"},
    {Key(0x2, 0x31, 0x10), "Lumix G Vario 45-200mm F4.0-5.6 II"},
    {Key(0x2, 0x32, 0x10), "Lumix G Vario 100-300mm F4.0-5.6 II"},
    {Key(0x2, 0x33, 0x10), "Lumix G X Vario 12-35mm F2.8 II Asph. Power OIS"},
    {Key(0x2, 0x34, 0x10), "Lumix G Vario 35-100mm F2.8 II"},
    {Key(0x2, 0x35, 0x10), "Leica DG Vario-Elmarit 8-18mm F2.8-4 Asph."},
    {Key(0x2, 0x36, 0x10), "Leica DG Elmarit 200mm F2.8 Power OIS"},
    {Key(0x2, 0x37, 0x10), "Leica DG Vario-Elmarit 50-200mm F2.8-4 Asph. Power OIS"},
    {Key(0x2, 0x38, 0x10), "Leica DG Vario-Summilux 10-25mm F1.7 Asph."},
    {Key(0x2, 0x40, 0x10), "Leica DG Vario-Summilux 25-50mm F1.7 Asph."},
};

struct ExtenderCode {
    uint16_t key;  // make, model
    const char* name;
};
constexpr ExtenderCode kExtenders[] = {
    {0x0000, "None"},
    {0x0004, "Olympus Zuiko Digital EC-14 1.4x Teleconverter"},
    {0x0008, "Olympus EX-25 Extension Tube"},
    {0x0010, "Olympus Zuiko Digital EC-20 2.0x Teleconverter"},
};

template <typename Row, size_t N, typename Key>
constexpr bool KeysUnique(const Row (&rows)[N], Key key) {
    for (size_t i = 0; i < N; ++i)
        for (size_t j = i + 1; j < N; ++j)
            if (key(rows[i]) == key(rows[j])) return false;
    return true;
}
static_assert(KeysUnique(kLenses, [](const LensCode& l) { return l.key; }), "one name per lens code");
static_assert(KeysUnique(kExtenders, [](const ExtenderCode& x) { return x.key; }), "one name per extender code");

}  // namespace

const char* OlympusCameraName(const char* code) {
    for (const CameraCode& c : kCameraCodes)
        if (std::strcmp(c.code, code) == 0) return c.model;
    return nullptr;
}

const char* OlympusLensName(uint8_t make, uint8_t model, uint8_t subModel) {
    const uint32_t key = Key(make, model, subModel);
    for (const LensCode& l : kLenses)
        if (l.key == key) return l.name;
    return nullptr;
}

const char* OlympusExtenderName(uint8_t make, uint8_t model) {
    const uint16_t key = static_cast<uint16_t>(make << 8 | model);
    for (const ExtenderCode& x : kExtenders)
        if (x.key == key) return x.name;
    return nullptr;
}

}  // namespace makernotes
