// The Olympus code tables, as data. Camera codes cover the interchangeable-
// lens bodies and the compacts seen most; lenses the Olympus Four Thirds and
// Micro Four Thirds lines.
#include "olympus_tables.h"

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
