// The Olympus equipment directory (tag 2010): the body, the lens, the
// extender and the flash.
#include <cmath>
#include <cstdint>

#include "olympus_makernote.h"
#include "olympus_tables.h"

namespace makernotes {
namespace olympus {
namespace {

// Six bytes: make, unknown, model, sub-model, two unknown. The make, model
// and sub-model name the lens; an unknown lens shows as its code ("0 05 00").
void LensType(const MakerEntry& e) {
    uint8_t b[6] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) < 4) return;
    if (const char* name = OlympusLensName(b[0], b[2], b[3])) return exif::SetRowValue(e.row(), name);
    SetValuef(e.row(), "%x %02x %02x", b[0], b[2], b[3]);
}

// Six bytes, of which the first and third name the extender.
void Extender(const MakerEntry& e) {
    uint8_t b[6] = {};
    if (exif::ReadRawBlock(e.context, b, sizeof b) < 3) return;
    if (const char* name = OlympusExtenderName(b[0], b[2])) return exif::SetRowValue(e.row(), name);
    SetValuef(e.row(), "%x %02x", b[0], b[2]);
}

// An aperture stored as 256 times its APEX value, shown as the f-number.
void Aperture(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) SetValuef(e.row(), "%.1f", std::pow(2.0, static_cast<double>(v) / 512.0));
}

void Hexadecimal(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) SetValuef(e.row(), "0x%llx", static_cast<unsigned long long>(v));
}

constexpr ValueText kFlashTypeTexts[] = {{0, "None"}, {2, "Simple E-System"}, {3, "E-System"}, {4, "E-System (body powered)"}};
constexpr Enumeration kFlashType = Enum(kFlashTypeTexts, Sign::kUnsigned, "%d");
constexpr ValueText kFlashModelTexts[] = {
    {0, "None"}, {1, "FL-20"}, {2, "FL-50"}, {3, "RF-11"}, {4, "TF-22"}, {5, "FL-36"}, {6, "FL-50R"},
    {7, "FL-36R"}, {9, "FL-14"}, {11, "FL-600R"}, {13, "FL-LM3"}, {15, "FL-900R"},
};
constexpr Enumeration kFlashModel = Enum(kFlashModelTexts, Sign::kUnsigned, "%d");

constexpr MakerTag kEquipmentTags[] = {
    {0x0000, "Equipment Version", FormatGenericValue},
    {0x0100, "Camera Type", CameraType},
    {0x0101, "Serial Number", FormatGenericValue},
    {0x0102, "Internal Serial Number", FormatGenericValue},
    {0x0103, "Focal Plane Diagonal", Quotient<kMillimetres>},
    {0x0104, "Body Firmware Version", FirmwareVersion},
    {0x0201, "Lens Type", LensType},
    {0x0202, "Lens Serial Number", FormatGenericValue},
    {0x0203, "Lens Model", FormatGenericValue},
    {0x0204, "Lens Firmware Version", FirmwareVersion},
    {0x0205, "Max Aperture At Min Focal", Aperture},
    {0x0206, "Max Aperture At Max Focal", Aperture},
    {0x0207, "Min Focal Length", FormatGenericValue},
    {0x0208, "Max Focal Length", FormatGenericValue},
    {0x020a, "Max Aperture", Aperture},
    {0x020b, "Lens Properties", Hexadecimal},
    {0x0301, "Extender", Extender},
    {0x0302, "Extender Serial Number", FormatGenericValue},
    {0x0303, "Extender Model", FormatGenericValue},
    {0x0304, "Extender Firmware Version", FirmwareVersion},
    {0x0403, "Conversion Lens", FormatGenericValue},
    {0x1000, "Flash Type", Enumerated<kFlashType>},
    {0x1001, "Flash Model", Enumerated<kFlashModel>},
    {0x1002, "Flash Firmware Version", FirmwareVersion},
    {0x1003, "Flash Serial Number", FormatGenericValue},
};

static_assert(TagsAscend(kEquipmentTags) && TagsNamed(kEquipmentTags) && ValuesUnique(kFlashModelTexts),
              "tag order, each value once");

}  // namespace

constexpr MakerTable kEquipment = Table(kEquipmentTags, ValueRule::kLeadingShort);

}  // namespace olympus
}  // namespace makernotes
