// The pieces of the Olympus decoder that its files share: the value formats
// every directory uses, the enumerations more than one directory names, and
// the sub-directories' tables. The main directory, the header forms and the
// pass over the sub-directories are in olympus_makernote.cpp; each
// sub-directory has a file of its own (olympus_equipment.cpp,
// olympus_camera_settings.cpp, olympus_raw_development.cpp,
// olympus_image_processing.cpp, olympus_focus_info.cpp).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "makernote_array.h"
#include "makernote_decoders.h"

namespace makernotes {
namespace olympus {

enum : uint16_t { kAsciiType = 2, kLongType = 4, kRationalType = 5, kUndefinedType = 7, kIfdType = 13 };

// ------------------------------------------------------------ value formats

// Elements of a value read per element; more would not fit a row's text.
constexpr size_t kElementsLimit = 64;

// Up to `max` elements of the entry in the note's byte order, each widened
// with its type's sign (or as signed 16-bit numbers when `signed16` is set,
// for the tables whose SHORTs hold negative numbers). BYTE and UNDEFINED
// read as bytes. Returns how many were read.
size_t ReadElements(const MakerEntry& e, int64_t* out, size_t max, bool signed16 = false);

// The first element through an enumeration.
template <const Enumeration& E>
void Enumerated(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) FormatEnumeratedElement(E, v, e.row());
}

// Every element as a signed number, separated by spaces.
void SignedNumbers(const MakerEntry& e);

// One RATIONAL or SRATIONAL as its quotient; false when there is none.
bool ReadQuotient(const MakerEntry& e, double& out);

template <const char* Format>
void Quotient(const MakerEntry& e) {
    double v = 0;
    if (ReadQuotient(e, v)) SetValuef(e.row(), Format, v);
}
inline constexpr char kPlain[] = "%g";
inline constexpr char kMillimetres[] = "%g mm";

// A set of flags: the names of the bits set, or `none`.
struct BitName {
    int bit;
    const char* name;
};
struct BitSet {
    const BitName* names;
    size_t size;
    const char* none;
};
std::string FlagNames(const BitSet& set, uint32_t value);
template <const BitSet& B>
void Flags(const MakerEntry& e) {
    int64_t v = 0;
    if (ReadElements(e, &v, 1) == 1) exif::SetRowValue(e.row(), FlagNames(B, static_cast<uint32_t>(v)));
}

template <size_t N>
const char* TextOf(const ValueText (&texts)[N], int64_t value) {
    for (const ValueText& t : texts)
        if (t.value == value) return t.text;
    return nullptr;
}

// A firmware version as a LONG, whose hexadecimal digits read as the
// version: 0x1300 is 1.300 (the last three digits are the minor part).
// Older notes store the version as text instead.
void FirmwareVersion(const MakerEntry& e);

// A camera type code, shown as the model it stands for when known.
void CameraType(const MakerEntry& e);

// A setting with its range: three signed SHORTs, the value, its minimum
// and its maximum.
void SettingWithRange(const MakerEntry& e);

// ------------------------------------------------------------ shared enumerations

// Defined with the main directory.
extern const Enumeration kNoYes;
extern const Enumeration kOffOn;
extern const Enumeration kMacro;
// Defined with the camera settings; the raw development names them too.
extern const Enumeration kColorSpace;
extern const Enumeration kPictureMode;
extern const Enumeration kArtFilter;
extern const BitSet kNoiseReductionBits;

// ------------------------------------------------------------ sub-directories

extern const MakerTable kEquipment;        // tag 2010
extern const MakerTable kCameraSettings;   // tag 2020
extern const MakerTable kRawDevelopment;   // tag 2030
extern const MakerTable kRawDevelopment2;  // tag 2031, the later layout
extern const MakerTable kImageProcessing;  // tag 2040
extern const MakerTable kFocusInfo;        // tag 2050

}  // namespace olympus
}  // namespace makernotes
