// Canon maker notes: a headerless directory whose offsets count from the
// TIFF header (in a CR3 file, from the embedded TIFF header that holds the
// note). The plain tags are named in the entry loop; most of what a Canon
// camera records sits in records of numbers (camera settings, shot info, file
// info, AF info, processing...), one setting per element, and those are read
// in a second pass over the directory, one row per setting. A setting the
// camera marks as unused (a sentinel value) gives no row.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "canon_tables.h"
#include "exif/exif_limits.h"
#include "exif/exif_reader.h"
#include "makernote_decoders.h"
#include "makernote_texts.h"

namespace makernotes {
namespace {

// ------------------------------------------------------------ plain tags

void FileNumber(const MakerEntry& e) {
    // The camera counts folder and frame: 1181861 is folder 118, frame 1861.
    const uint32_t v = e.entry().valueField;
    SetValuef(e.row(), "%u-%04u", v / 10000, v % 10000);
}

void ModelName(const MakerEntry& e) {
    const uint32_t id = e.entry().valueField;
    if (const char* name = CanonModelName(id)) return exif::SetRowValue(e.row(), name);
    SetValuef(e.row(), "%u", id);
}

void SerialNumberFormat(const MakerEntry& e) {
    switch (e.entry().valueField) {
        case 0x90000000: return exif::SetRowValue(e.row(), "Format 1");
        case 0xA0000000: return exif::SetRowValue(e.row(), "Format 2");
        default: SetValuef(e.row(), "0x%08x", e.entry().valueField);
    }
}

void ByteCount(const MakerEntry& e) { SetValuef(e.row(), "%u bytes", e.entry().count); }

constexpr ValueText kColorSpaceTexts[] = {{1, "sRGB"}, {2, "Adobe RGB"}, {65535, "n/a"}};
constexpr Enumeration kColorSpace = Enum(kColorSpaceTexts, Sign::kUnsigned, "%d");

constexpr MakerTag kCanonTags[] = {
    {0x0006, "Image Type", FormatGenericValue},
    {0x0007, "Firmware Version", FormatGenericValue},
    {0x0008, "File Number", FileNumber},
    {0x0009, "Owner Name", FormatGenericValue},
    {0x0010, "Camera Model ID", ModelName},
    {0x0015, "Serial Number Format", SerialNumberFormat},
    {0x0095, "Lens Model", FormatGenericValue},
    {0x0096, "Internal Serial Number", FormatGenericValue},
    {0x0097, "Dust Removal Data", ByteCount},
    {0x00AE, "Color Temperature", FormatGenericValue},
    {0x00B4, "Color Space", kColorSpace},
};
static_assert(TagsAscend(kCanonTags), "tags ascend");
constexpr MakerTable kCanon = Table(kCanonTags, ValueRule::kLeadingShort, /*stopAtRowLimit=*/true);

// ------------------------------------------------------------ records

// What the second pass knows about the note and the camera: the Model text,
// and settings that later records depend on.
struct CanonNote {
    std::string model;
    int bigEndian = 0;
    int64_t focalUnits = 1;
    int64_t focusDistanceUpper = 0;  // of the record being read

    bool ModelHas(const char* word) const { return model.find(word) != std::string::npos; }
    bool IsCompact() const { return ModelHas("PowerShot") || ModelHas("IXUS") || ModelHas("IXY"); }
    // The 20D and 350D record some settings in units of their own.
    bool CountsLike350D() const {
        return ModelHas("20D") || ModelHas("350D") || ModelHas("REBEL XT") || ModelHas("Kiss Digital N");
    }
    bool ModelEnds(const char* word) const {
        const size_t n = std::strlen(word);
        return model.size() >= n && model.compare(model.size() - n, n, word) == 0;
    }
};

// One record as read: each element widened with the record's sign.
struct Record {
    const int64_t* values;
    size_t size;
    CanonNote& note;

    int64_t At(size_t i) const { return i < size ? values[i] : 0; }
    uint16_t U16(size_t i) const { return static_cast<uint16_t>(At(i)); }
};

// Writes the setting's text; false when the setting gives no row.
using FieldFormat = bool (*)(const Record&, size_t index, exif::TagRecord&);

struct Field {
    uint16_t index;
    const char* name;
    FieldFormat format;
};

bool Text(exif::TagRecord& row, const char* text) {
    exif::SetRowValue(row, text);
    return true;
}

bool Number(exif::TagRecord& row, double v) {
    SetValuef(row, "%.15g", v);
    return true;
}

// Canon's exposure steps: 32 to a stop, with 12 and 20 standing for a third
// and two thirds.
double CanonEv(int64_t raw) {
    const int64_t sign = raw < 0 ? -1 : 1;
    const int64_t v = raw < 0 ? -raw : raw;
    double fraction = static_cast<double>(v & 0x1F);
    if (fraction == 12) fraction = 32.0 / 3;
    else if (fraction == 20) fraction = 64.0 / 3;
    return static_cast<double>(sign) * (static_cast<double>(v - (v & 0x1F)) + fraction) / 32;
}

// An exposure time: "1/n" up to a quarter second, else seconds with one
// decimal (".0" left off).
bool ExposureTime(exif::TagRecord& row, double seconds) {
    if (seconds > 0 && seconds < 0.25001) {
        // The shortest times a hostile code gives do not fit an int.
        SetValuef(row, "1/%.0f", std::floor(0.5 + 1 / seconds));
        return true;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", seconds);
    const size_t n = std::strlen(text);
    if (n > 2 && std::strcmp(text + n - 2, ".0") == 0) text[n - 2] = '\0';
    return Text(row, text);
}

// A step in EV as a signed fraction in halves or thirds where it is one.
bool Fraction(exif::TagRecord& row, double v) {
    v *= 1.00001;  // round-off
    if (v == 0) return Text(row, "0");
    const double halves = v * 2, thirds = v * 3;
    if (std::trunc(v) / v > 0.999) SetValuef(row, "%+d", static_cast<int>(v));
    else if (std::trunc(halves) / halves > 0.999) SetValuef(row, "%+d/2", static_cast<int>(halves));
    else if (std::trunc(thirds) / thirds > 0.999) SetValuef(row, "%+d/3", static_cast<int>(thirds));
    else SetValuef(row, "%+.3g", v);
    return true;
}

// ---- element formats

bool Plain(const Record& r, size_t i, exif::TagRecord& row) { return Number(row, static_cast<double>(r.At(i))); }
bool PlainU16(const Record& r, size_t i, exif::TagRecord& row) { return Number(row, r.U16(i)); }

// The element through an enumeration, else its number; no row when it holds
// the sentinel `Unused`.
template <const Enumeration& E, int64_t Unused = INT64_MIN>
bool Enumerated(const Record& r, size_t i, exif::TagRecord& row) {
    if (r.At(i) == Unused) return false;
    if (const char* text = EnumerationText(E, r.At(i))) return Text(row, text);
    return Number(row, static_cast<double>(r.At(i)));
}

// Signed settings around a normal of 0, with 0x7FFF for "not recorded".
bool Parameter(const Record& r, size_t i, exif::TagRecord& row) {
    const int64_t v = r.At(i);
    if (v == 0x7FFF) return false;
    if (v == 0) return Text(row, "Normal");
    SetValuef(row, v > 0 ? "+%lld" : "%lld", static_cast<long long>(v));
    return true;
}

bool Sharpness(const Record& r, size_t i, exif::TagRecord& row) {
    const int64_t v = r.At(i);
    if (v == 0x7FFF) return false;
    SetValuef(row, v > 0 ? "+%lld" : "%lld", static_cast<long long>(v));
    return true;
}

bool NotMinusOne(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) != -1 && Plain(r, i, row); }

bool Aperture(const Record& r, size_t i, exif::TagRecord& row) {
    if (r.At(i) <= 0) return false;
    SetValuef(row, "%.2g", std::exp2(CanonEv(r.At(i)) / 2));
    return true;
}

bool Tenths(const Record& r, size_t i, exif::TagRecord& row) { return Number(row, static_cast<double>(r.At(i)) / 10); }

bool Distance(const Record& r, size_t i, exif::TagRecord& row) {
    const double metres = r.U16(i) / 100.0;
    if (metres > 655.345) return Text(row, "inf");
    SetValuef(row, "%.15g m", metres);
    return true;
}

// The upper focus distance opens a pair: 0 means neither is known.
bool DistanceUpper(const Record& r, size_t i, exif::TagRecord& row) {
    r.note.focusDistanceUpper = r.U16(i);
    return r.U16(i) != 0 && Distance(r, i, row);
}
bool DistanceLower(const Record& r, size_t i, exif::TagRecord& row) {
    return r.note.focusDistanceUpper != 0 && Distance(r, i, row);
}

// ---- camera settings (tag 0x0001)

constexpr ValueText kMacroModeTexts[] = {{1, "Macro"}, {2, "Normal"}};
constexpr ValueText kQualityTexts[] = {
    {-1, "n/a"}, {1, "Economy"}, {2, "Normal"}, {3, "Fine"}, {4, "RAW"}, {5, "Superfine"},
    {7, "CRAW"}, {130, "Light (RAW)"}, {131, "Standard (RAW)"},
};
constexpr ValueText kFlashModeTexts[] = {
    {-1, "n/a"}, {0, "Off"}, {1, "Auto"}, {2, "On"}, {3, "Red-eye reduction"}, {4, "Slow-sync"},
    {5, "Red-eye reduction (Auto)"}, {6, "Red-eye reduction (On)"}, {16, "External flash"},
};
constexpr ValueText kDriveModeTexts[] = {
    {0, "Single"}, {1, "Continuous"}, {2, "Movie"}, {3, "Continuous, Speed Priority"},
    {4, "Continuous, Low"}, {5, "Continuous, High"}, {6, "Silent Single"}, {8, "Continuous, High+"},
    {9, "Single, Silent"}, {10, "Continuous, Silent"},
};
constexpr ValueText kFocusModeTexts[] = {
    {0, "One-shot AF"}, {1, "AI Servo AF"}, {2, "AI Focus AF"}, {3, "Manual Focus (3)"},
    {4, "Single"}, {5, "Continuous"}, {6, "Manual Focus (6)"}, {16, "Pan Focus"},
    {256, "AF + MF"}, {257, "Live View"},
    {512, "Movie Snap Focus"}, {519, "Movie Servo AF"},
};
constexpr ValueText kRecordModeTexts[] = {
    {1, "JPEG"}, {2, "CRW+THM"}, {3, "AVI+THM"}, {4, "TIF"}, {5, "TIF+JPEG"}, {6, "CR2"},
    {7, "CR2+JPEG"}, {9, "MOV"}, {10, "MP4"}, {11, "CRM"}, {12, "CR3"}, {13, "CR3+JPEG"},
    {14, "HIF"}, {15, "CR3+HIF"},
};
constexpr ValueText kImageSizeTexts[] = {
    {-1, "n/a"}, {0, "Large"}, {1, "Medium"}, {2, "Small"}, {5, "Medium 1"}, {6, "Medium 2"},
    {7, "Medium 3"}, {8, "Postcard"}, {9, "Widescreen"}, {10, "Medium Widescreen"},
    {14, "Small 1"}, {15, "Small 2"}, {16, "Small 3"}, {128, "640x480 Movie"},
    {129, "Medium Movie"}, {130, "Small Movie"}, {137, "1280x720 Movie"}, {142, "1920x1080 Movie"},
    {143, "4096x2160 Movie"},
};
constexpr ValueText kEasyModeTexts[] = {
    {0, "Full auto"}, {1, "Manual"}, {2, "Landscape"}, {3, "Fast shutter"}, {4, "Slow shutter"},
    {5, "Night"}, {6, "Gray Scale"}, {7, "Sepia"}, {8, "Portrait"}, {9, "Sports"}, {10, "Macro"},
    {11, "Black & White"}, {12, "Pan focus"}, {13, "Vivid"}, {14, "Neutral"}, {15, "Flash Off"},
    {16, "Long Shutter"}, {17, "Super Macro"}, {18, "Foliage"}, {19, "Indoor"}, {20, "Fireworks"},
    {21, "Beach"}, {22, "Underwater"}, {23, "Snow"}, {24, "Kids & Pets"}, {25, "Night Snapshot"},
    {26, "Digital Macro"}, {27, "My Colors"}, {28, "Movie Snap"}, {29, "Super Macro 2"},
    {30, "Color Accent"}, {31, "Color Swap"}, {32, "Aquarium"}, {33, "ISO 3200"}, {34, "ISO 6400"},
    {35, "Creative Light Effect"}, {36, "Easy"}, {37, "Quick Shot"}, {38, "Creative Auto"},
    {39, "Zoom Blur"}, {40, "Low Light"}, {41, "Nostalgic"}, {42, "Super Vivid"},
    {43, "Poster Effect"}, {44, "Face Self-timer"}, {45, "Smile"}, {46, "Wink Self-timer"},
    {47, "Fisheye Effect"}, {48, "Miniature Effect"}, {49, "High-speed Burst"},
    {50, "Best Image Selection"}, {51, "High Dynamic Range"}, {52, "Handheld Night Scene"},
    {53, "Movie Digest"}, {54, "Live View Control"}, {55, "Discreet"}, {56, "Blur Reduction"},
    {57, "Monochrome"}, {58, "Toy Camera Effect"}, {59, "Scene Intelligent Auto"},
    {60, "High-speed Burst HQ"}, {61, "Smooth Skin"}, {62, "Soft Focus"}, {68, "Food"},
};
constexpr ValueText kDigitalZoomTexts[] = {{0, "None"}, {1, "2x"}, {2, "4x"}, {3, "Other"}};
constexpr ValueText kMeteringTexts[] = {
    {0, "Default"}, {1, "Spot"}, {2, "Average"}, {3, "Evaluative"}, {4, "Partial"},
    {5, "Center-weighted average"},
};
constexpr ValueText kFocusRangeTexts[] = {
    {0, "Manual"}, {1, "Auto"}, {2, "Not Known"}, {3, "Macro"}, {4, "Very Close"}, {5, "Close"},
    {6, "Middle Range"}, {7, "Far Range"}, {8, "Pan Focus"}, {9, "Super Macro"}, {10, "Infinity"},
};
constexpr ValueText kAfPointTexts[] = {
    {0x2005, "Manual AF point selection"}, {0x3000, "None (MF)"}, {0x3001, "Auto AF point selection"},
    {0x3002, "Right"}, {0x3003, "Center"}, {0x3004, "Left"}, {0x4001, "Auto AF point selection"},
    {0x4006, "Face Detect"},
};
constexpr ValueText kExposureModeTexts[] = {
    {0, "Easy"}, {1, "Program AE"}, {2, "Shutter speed priority AE"}, {3, "Aperture-priority AE"},
    {4, "Manual"}, {5, "Depth-of-field AE"}, {6, "M-Dep"}, {7, "Bulb"}, {8, "Flexible-priority AE"},
};
constexpr ValueText kFocusContinuousTexts[] = {{0, "Single"}, {1, "Continuous"}, {8, "Manual"}};
constexpr ValueText kAeSettingTexts[] = {
    {0, "Normal AE"}, {1, "Exposure Compensation"}, {2, "AE Lock"}, {3, "AE Lock + Exposure Comp."},
    {4, "No AE"},
};
constexpr ValueText kStabilizationTexts[] = {
    {0, "Off"}, {1, "On"}, {2, "Shoot Only"}, {3, "Panning"}, {4, "Dynamic"}, {256, "Off (2)"},
    {257, "On (2)"}, {258, "Shoot Only (2)"}, {259, "Panning (2)"}, {260, "Dynamic (2)"},
};
constexpr ValueText kSpotMeteringTexts[] = {{0, "Center"}, {1, "AF Point"}};
constexpr ValueText kPhotoEffectTexts[] = {
    {0, "Off"}, {1, "Vivid"}, {2, "Neutral"}, {3, "Smooth"}, {4, "Sepia"}, {5, "B&W"},
    {6, "Custom"}, {100, "My Color Data"},
};
constexpr ValueText kManualFlashTexts[] = {
    {0, "n/a"}, {0x500, "Full"}, {0x502, "Medium"}, {0x504, "Low"}, {0x7FFF, "n/a"},
};
constexpr ValueText kSrawTexts[] = {{0, "n/a"}, {1, "sRAW1 (mRAW)"}, {2, "sRAW2 (sRAW)"}};

static_assert(ValuesUnique(kEasyModeTexts) && ValuesUnique(kImageSizeTexts) && ValuesUnique(kFocusModeTexts),
              "each value once");

constexpr Enumeration kMacroMode = Enum(kMacroModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kQuality = Enum(kQualityTexts, Sign::kSigned, "%d");
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kDriveMode = Enum(kDriveModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kRecordMode = Enum(kRecordModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kImageSize = Enum(kImageSizeTexts, Sign::kSigned, "%d");
constexpr Enumeration kEasyMode = Enum(kEasyModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kDigitalZoom = Enum(kDigitalZoomTexts, Sign::kSigned, "%d");
constexpr Enumeration kMetering = Enum(kMeteringTexts, Sign::kSigned, "%d");
constexpr Enumeration kFocusRange = Enum(kFocusRangeTexts, Sign::kSigned, "%d");
constexpr Enumeration kAfPoint = Enum(kAfPointTexts, Sign::kSigned, "%d");
constexpr Enumeration kExposureMode = Enum(kExposureModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kFocusContinuous = Enum(kFocusContinuousTexts, Sign::kSigned, "%d");
constexpr Enumeration kAeSetting = Enum(kAeSettingTexts, Sign::kSigned, "%d");
constexpr Enumeration kStabilization = Enum(kStabilizationTexts, Sign::kSigned, "%d");
constexpr Enumeration kSpotMetering = Enum(kSpotMeteringTexts, Sign::kSigned, "%d");
constexpr Enumeration kPhotoEffect = Enum(kPhotoEffectTexts, Sign::kSigned, "%d");
constexpr Enumeration kManualFlash = Enum(kManualFlashTexts, Sign::kSigned, "%d");
constexpr Enumeration kSraw = Enum(kSrawTexts, Sign::kSigned, "%d");

bool SelfTimer(const Record& r, size_t i, exif::TagRecord& row) {
    const int64_t v = r.At(i);
    if (v <= 0) return Text(row, "Off");
    // Tenths of a second in the low 12 bits; bit 14 marks the custom delay.
    SetValuef(row, "%.15g s%s", static_cast<double>(v & 0xFFF) / 10, (v & 0x4000) ? ", Custom" : "");
    return true;
}

constexpr ValueText kIsoCodeTexts[] = {
    {0, "n/a"}, {14, "Auto High"}, {15, "Auto"}, {16, "50"}, {17, "100"}, {18, "200"}, {19, "400"}, {20, "800"},
};
constexpr Enumeration kIsoCode = Enum(kIsoCodeTexts, Sign::kSigned, "%d");

bool CameraIso(const Record& r, size_t i, exif::TagRecord& row) {
    const int64_t v = r.At(i);
    if (v == 0x7FFF) return false;
    // Bit 14 marks a speed given as such; otherwise a code.
    if (v & 0x4000) return Number(row, static_cast<double>(v & 0x3FFF));
    return Enumerated<kIsoCode>(r, i, row);
}

bool LensType(const Record& r, size_t i, exif::TagRecord& row) {
    if (r.U16(i) == 0) return false;
    if (const char* name = CanonLensName(r.U16(i))) return Text(row, name);
    return PlainU16(r, i, row);
}

bool FocalLength(const Record& r, size_t i, exif::TagRecord& row) {
    SetValuef(row, "%.15g mm", static_cast<double>(r.U16(i)) / static_cast<double>(r.note.focalUnits));
    return true;
}

bool FocalUnits(const Record& r, size_t i, exif::TagRecord& row) {
    // Read first of the settings that need it (see DecodeCameraSettings).
    SetValuef(row, "%lld/mm", static_cast<long long>(r.At(i)));
    return true;
}

constexpr const char* kFlashBitNames[16] = {
    "Manual", "TTL", "A-TTL", "E-TTL", "FP sync enabled", nullptr, nullptr, "2nd-curtain sync used",
    nullptr, nullptr, nullptr, "FP sync used", nullptr, "Built-in", "External", nullptr,
};

bool FlashBits(const Record& r, size_t i, exif::TagRecord& row) {
    const uint16_t v = r.U16(i);
    if (v == 0) return Text(row, "(none)");
    std::string text;
    for (int bit = 0; bit < 16; ++bit) {
        if (!(v & (1u << bit))) continue;
        if (!text.empty()) text += ", ";
        text += kFlashBitNames[bit] ? kFlashBitNames[bit] : "[" + std::to_string(bit) + "]";
    }
    return Text(row, text.c_str());
}

bool DisplayAperture(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) != 0 && Tenths(r, i, row); }

constexpr Field kCameraSettings[] = {
    {1, "Macro Mode", Enumerated<kMacroMode>},
    {2, "Self Timer", SelfTimer},
    {3, "Quality", Enumerated<kQuality>},
    {4, "Flash Mode", Enumerated<kFlashMode>},
    {5, "Drive Mode", Enumerated<kDriveMode>},
    {7, "Focus Mode", Enumerated<kFocusMode>},
    {9, "Record Mode", Enumerated<kRecordMode, -1>},
    {10, "Image Size", Enumerated<kImageSize>},
    {11, "Easy Mode", Enumerated<kEasyMode>},
    {12, "Digital Zoom", Enumerated<kDigitalZoom>},
    {13, "Contrast", Parameter},
    {14, "Saturation", Parameter},
    {15, "Sharpness", Sharpness},
    {16, "Camera ISO", CameraIso},
    {17, "Metering Mode", Enumerated<kMetering>},
    {18, "Focus Range", Enumerated<kFocusRange>},
    {19, "AF Point", Enumerated<kAfPoint, 0>},
    {20, "Exposure Mode", Enumerated<kExposureMode>},
    {22, "Lens Type", LensType},
    {23, "Max Focal Length", FocalLength},
    {24, "Min Focal Length", FocalLength},
    {25, "Focal Units", FocalUnits},
    {26, "Max Aperture", Aperture},
    {27, "Min Aperture", Aperture},
    {28, "Flash Activity", NotMinusOne},
    {29, "Flash Details", FlashBits},
    {32, "Focus Continuous", Enumerated<kFocusContinuous, -1>},
    {33, "AE Setting", Enumerated<kAeSetting, -1>},
    {34, "Image Stabilization", Enumerated<kStabilization, -1>},
    {35, "Display Aperture", DisplayAperture},
    {36, "Zoom Source Width", Plain},
    {37, "Zoom Target Width", Plain},
    {39, "Spot Metering Mode", Enumerated<kSpotMetering, -1>},
    {40, "Photo Effect", Enumerated<kPhotoEffect, -1>},
    {41, "Manual Flash Output", Enumerated<kManualFlash>},
    {42, "Color Tone", Parameter},
    {46, "SRAW Quality", Enumerated<kSraw, -1>},
};

// ---- focal length (tag 0x0002)

constexpr ValueText kFocalTypeTexts[] = {{1, "Fixed"}, {2, "Zoom"}};
constexpr Enumeration kFocalType = Enum(kFocalTypeTexts, Sign::kUnsigned, "%d");

bool FocalType(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) != 0 && Enumerated<kFocalType>(r, i, row); }
bool CurrentFocalLength(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) != 0 && FocalLength(r, i, row); }

// The focal plane size is right only for the bodies that record it so.
bool FocalPlaneSize(const Record& r, size_t i, exif::TagRecord& row) {
    const CanonNote& n = r.note;
    const bool recorded = !n.ModelHas("EOS") || n.ModelEnds("1D") || n.ModelEnds("1DS") || n.ModelEnds("5D") ||
                          n.ModelEnds("D30") || n.ModelEnds("D60") || n.ModelEnds("10D") || n.ModelEnds("20D") ||
                          n.ModelEnds("30D") || n.ModelHas("300D DIGITAL") || n.ModelHas("350D DIGITAL") ||
                          n.ModelHas("400D DIGITAL");
    if (!recorded || r.U16(i) < 40) return false;
    SetValuef(row, "%.2f mm", r.U16(i) * 25.4 / 1000);
    return true;
}

constexpr Field kFocalLength[] = {
    {0, "Focal Type", FocalType},
    {1, "Focal Length", CurrentFocalLength},
    {2, "Focal Plane X Size", FocalPlaneSize},
    {3, "Focal Plane Y Size", FocalPlaneSize},
};

// ---- shot info (tag 0x0004)

constexpr ValueText kWhiteBalanceTexts[] = {
    {0, "Auto"}, {1, "Daylight"}, {2, "Cloudy"}, {3, "Tungsten"}, {4, "Fluorescent"}, {5, "Flash"},
    {6, "Custom"}, {7, "Black & White"}, {8, "Shade"}, {9, "Manual Temperature (Kelvin)"},
    {10, "PC Set1"}, {11, "PC Set2"}, {12, "PC Set3"}, {14, "Daylight Fluorescent"},
    {15, "Custom 1"}, {16, "Custom 2"}, {17, "Underwater"}, {18, "Custom 3"}, {19, "Custom 4"},
    {20, "PC Set4"}, {21, "PC Set5"}, {23, "Auto (ambience priority)"},
};
constexpr ValueText kSlowShutterTexts[] = {{-1, "n/a"}, {0, "Off"}, {1, "Night Scene"}, {2, "On"}, {3, "None"}};
constexpr ValueText kAfPointsInFocusTexts[] = {
    {0x3000, "None (MF)"}, {0x3001, "Right"}, {0x3002, "Center"}, {0x3003, "Center+Right"},
    {0x3004, "Left"}, {0x3005, "Left+Right"}, {0x3006, "Left+Center"}, {0x3007, "All"},
};
constexpr ValueText kBracketingTexts[] = {
    {-1, "On"}, {0, "Off"}, {1, "On (shot 1)"}, {2, "On (shot 2)"}, {3, "On (shot 3)"},
};
constexpr ValueText kControlModeTexts[] = {{0, "n/a"}, {1, "Camera Local Control"}, {3, "Computer Remote Control"}};
constexpr ValueText kCameraTypeTexts[] = {
    {0, "n/a"}, {248, "EOS High-end"}, {250, "Compact"}, {252, "EOS Mid-range"}, {255, "DV Camera"},
};
constexpr ValueText kAutoRotateTexts[] = {{0, "None"}, {1, "Rotate 90 CW"}, {2, "Rotate 180"}, {3, "Rotate 270 CW"}};
constexpr ValueText kNdFilterTexts[] = {{-1, "n/a"}, {0, "Off"}, {1, "On"}};

constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kSigned, "%d");
constexpr Enumeration kSlowShutter = Enum(kSlowShutterTexts, Sign::kSigned, "%d");
constexpr Enumeration kAfPointsInFocus = Enum(kAfPointsInFocusTexts, Sign::kSigned, "%d");
constexpr Enumeration kBracketing = Enum(kBracketingTexts, Sign::kSigned, "%d");
constexpr Enumeration kControlMode = Enum(kControlModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kCameraType = Enum(kCameraTypeTexts, Sign::kSigned, "%d");
constexpr Enumeration kAutoRotate = Enum(kAutoRotateTexts, Sign::kSigned, "%d");
constexpr Enumeration kNdFilter = Enum(kNdFilterTexts, Sign::kSigned, "%d");

bool AutoIso(const Record& r, size_t i, exif::TagRecord& row) {
    SetValuef(row, "%.0f", std::exp2(static_cast<double>(r.At(i)) / 32) * 100);
    return true;
}

bool BaseIso(const Record& r, size_t i, exif::TagRecord& row) {
    // 32 steps per stop: 100 x 2^(v/32) / 32.
    if (r.At(i) == 0) return false;
    SetValuef(row, "%.0f", std::exp2(static_cast<double>(r.At(i)) / 32) * 100 / 32);
    return true;
}

bool MeasuredEv(const Record& r, size_t i, exif::TagRecord& row) {
    SetValuef(row, "%.2f", static_cast<double>(r.At(i)) / 32 + 5);
    return true;
}

bool TargetExposureTime(const Record& r, size_t i, exif::TagRecord& row) {
    const int64_t v = r.At(i);
    const bool camera = r.note.ModelHas("EOS") || r.note.IsCompact();
    if (v <= -1000 || (v == 0 && !camera)) return false;
    return ExposureTime(row, std::exp2(-CanonEv(v)));
}

bool EvStep(const Record& r, size_t i, exif::TagRecord& row) { return Fraction(row, CanonEv(r.At(i))); }

bool OpticalZoom(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) == 8 ? Text(row, "n/a") : Plain(r, i, row); }

bool CameraTemperature(const Record& r, size_t i, exif::TagRecord& row) {
    const CanonNote& n = r.note;
    if (!n.ModelHas("EOS") || n.ModelEnds("EOS-1D") || n.ModelEnds("EOS-1DS") || r.At(i) == 0) return false;
    SetValuef(row, "%lld C", static_cast<long long>(r.At(i) - 128));
    return true;
}

bool GuideNumber(const Record& r, size_t i, exif::TagRecord& row) {
    return r.At(i) != -1 && Number(row, static_cast<double>(r.At(i)) / 32);
}

bool ShotExposureTime(const Record& r, size_t i, exif::TagRecord& row) {
    if (r.At(i) == 0) return false;
    double seconds = std::exp2(-CanonEv(r.At(i)));
    // These bodies count in other units.
    if (r.note.CountsLike350D())
        seconds = seconds * 1000 / 32;
    return ExposureTime(row, seconds);
}

bool MeasuredEv2(const Record& r, size_t i, exif::TagRecord& row) {
    return r.At(i) != 0 && Number(row, static_cast<double>(r.At(i)) / 8 - 6);
}

bool NonNegativeTenths(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) >= 0 && Tenths(r, i, row); }

bool AutoRotate(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) >= 0 && Enumerated<kAutoRotate>(r, i, row); }

bool FlashOutput(const Record& r, size_t i, exif::TagRecord& row) {
    return (r.note.IsCompact() || r.At(i) != 0) && Plain(r, i, row);
}

constexpr Field kShotInfo[] = {
    {1, "Auto ISO", AutoIso},
    {2, "Base ISO", BaseIso},
    {3, "Measured EV", MeasuredEv},
    {4, "Target Aperture", Aperture},
    {5, "Target Exposure Time", TargetExposureTime},
    {6, "Exposure Compensation", EvStep},
    {7, "White Balance", Enumerated<kWhiteBalance>},
    {8, "Slow Shutter", Enumerated<kSlowShutter>},
    {9, "Sequence Number", Plain},
    {10, "Optical Zoom Code", OpticalZoom},
    {12, "Camera Temperature", CameraTemperature},
    {13, "Flash Guide Number", GuideNumber},
    {14, "AF Points In Focus", Enumerated<kAfPointsInFocus, 0>},
    {15, "Flash Exposure Compensation", EvStep},
    {16, "Auto Exposure Bracketing", Enumerated<kBracketing>},
    {17, "AEB Bracket Value", EvStep},
    {18, "Control Mode", Enumerated<kControlMode>},
    {19, "Focus Distance Upper", DistanceUpper},
    {20, "Focus Distance Lower", DistanceLower},
    {21, "F Number", Aperture},
    {22, "Exposure Time", ShotExposureTime},
    {23, "Measured EV 2", MeasuredEv2},
    {24, "Bulb Duration", Tenths},
    {26, "Camera Type", Enumerated<kCameraType>},
    {27, "Auto Rotate", AutoRotate},
    {28, "ND Filter", Enumerated<kNdFilter>},
    {29, "Self Timer 2", NonNegativeTenths},
    {33, "Flash Output", FlashOutput},
};

// ---- panorama (tag 0x0005)

constexpr ValueText kPanoramaTexts[] = {
    {0, "Left to Right"}, {1, "Right to Left"}, {2, "Bottom to Top"}, {3, "Top to Bottom"},
    {4, "2x2 Matrix (Clockwise)"},
};
constexpr Enumeration kPanorama = Enum(kPanoramaTexts, Sign::kSigned, "%d");

constexpr Field kPanoramaFields[] = {
    {2, "Panorama Frame Number", Plain},
    {5, "Panorama Direction", Enumerated<kPanorama>},
};

// ---- file info (tag 0x0093)

// The folder and frame number, packed differently by two families of bodies.
bool PackedFileNumber(const Record& r, size_t, exif::TagRecord& row) {
    const CanonNote& n = r.note;
    // Elements 1 and 2 as one 32-bit number in the note's order.
    const uint32_t first = r.U16(1), second = r.U16(2);
    const uint32_t v = n.bigEndian ? first << 16 | second : second << 16 | first;
    uint32_t folder, frame;
    if (n.CountsLike350D()) {
        folder = (v & 0xFFC0) >> 6;
        frame = ((v >> 16) & 0xFF) + ((v & 0x3F) << 8);
    } else if (n.ModelHas("30D") || n.ModelHas("400D") || n.ModelHas("REBEL XTi") || n.ModelHas("Kiss Digital X")) {
        folder = (v & 0xFFC00) >> 10;
        while (folder < 100) folder += 0x40;  // the top bits are not recorded
        frame = ((v & 0x3FF) << 4) + ((v >> 20) & 0x0F);
    } else {
        return false;
    }
    SetValuef(row, "%u-%04u", folder + frame / 10000, frame % 10000);
    return true;
}

constexpr ValueText kBracketModeTexts[] = {{0, "Off"}, {1, "AEB"}, {2, "FEB"}, {3, "ISO"}, {4, "WB"}};
constexpr ValueText kNoiseReductionTexts[] = {{0, "Off"}, {1, "On (1D)"}, {3, "On"}, {4, "Auto"}};
constexpr ValueText kWbBracketTexts[] = {{0, "Off"}, {1, "On (shift AB)"}, {2, "On (shift GM)"}};
constexpr ValueText kFilterTexts[] = {{0, "None"}, {1, "Yellow"}, {2, "Orange"}, {3, "Red"}, {4, "Green"}};
constexpr ValueText kToningTexts[] = {{0, "None"}, {1, "Sepia"}, {2, "Blue"}, {3, "Purple"}, {4, "Green"}};
constexpr ValueText kShutterModeTexts[] = {{0, "Mechanical"}, {1, "Electronic First Curtain"}, {2, "Electronic"}};

constexpr Enumeration kBracketMode = Enum(kBracketModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kNoiseReduction = Enum(kNoiseReductionTexts, Sign::kSigned, "%d");
constexpr Enumeration kWbBracket = Enum(kWbBracketTexts, Sign::kSigned, "%d");
constexpr Enumeration kFilter = Enum(kFilterTexts, Sign::kSigned, "%d");
constexpr Enumeration kToning = Enum(kToningTexts, Sign::kSigned, "%d");
constexpr Enumeration kOffOn = Enum(kOffOnTexts, Sign::kSigned, "%d");
constexpr Enumeration kShutterMode = Enum(kShutterModeTexts, Sign::kSigned, "%d");

bool RawJpgQuality(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) > 0 && Enumerated<kQuality>(r, i, row); }
bool RawJpgSize(const Record& r, size_t i, exif::TagRecord& row) { return r.At(i) >= 0 && Enumerated<kImageSize>(r, i, row); }
bool NoiseReduction(const Record& r, size_t i, exif::TagRecord& row) {
    return r.At(i) >= 0 && Enumerated<kNoiseReduction>(r, i, row);
}

constexpr Field kFileInfo[] = {
    {2, "File Number", PackedFileNumber},
    {3, "Bracket Mode", Enumerated<kBracketMode>},
    {4, "Bracket Value", Plain},
    {5, "Bracket Shot Number", Plain},
    {6, "Raw JPEG Quality", RawJpgQuality},
    {7, "Raw JPEG Size", RawJpgSize},
    {8, "Long Exposure Noise Reduction", NoiseReduction},
    {9, "WB Bracket Mode", Enumerated<kWbBracket>},
    {12, "WB Bracket Value AB", Plain},
    {13, "WB Bracket Value GM", Plain},
    {14, "Filter Effect", Enumerated<kFilter, -1>},
    {15, "Toning Effect", Enumerated<kToning, -1>},
    {19, "Live View Shooting", Enumerated<kOffOn>},
    {20, "Focus Distance Upper", DistanceUpper},
    {21, "Focus Distance Lower", DistanceLower},
    {23, "Shutter Mode", Enumerated<kShutterMode>},
    {25, "Flash Exposure Lock", Enumerated<kOffOn>},
};

// ---- processing (tag 0x00A0)

constexpr ValueText kToneCurveTexts[] = {{0, "Standard"}, {1, "Manual"}, {2, "Custom"}};
constexpr ValueText kSharpnessFrequencyTexts[] = {
    {0, "n/a"}, {1, "Lowest"}, {2, "Low"}, {3, "Standard"}, {4, "High"}, {5, "Highest"},
};
constexpr ValueText kPictureStyleTexts[] = {
    {0x00, "None"}, {0x01, "Standard"}, {0x02, "Portrait"}, {0x03, "High Saturation"},
    {0x04, "Adobe RGB"}, {0x05, "Low Saturation"}, {0x06, "CM Set 1"}, {0x07, "CM Set 2"},
    {0x21, "User Def. 1"}, {0x22, "User Def. 2"}, {0x23, "User Def. 3"},
    {0x41, "PC 1"}, {0x42, "PC 2"}, {0x43, "PC 3"},
    {0x81, "Standard"}, {0x82, "Portrait"}, {0x83, "Landscape"}, {0x84, "Neutral"},
    {0x85, "Faithful"}, {0x86, "Monochrome"}, {0x87, "Auto"}, {0x88, "Fine Detail"},
    {0xFF, "n/a"}, {0xFFFF, "n/a"},
};
static_assert(ValuesUnique(kPictureStyleTexts) && ValuesUnique(kWhiteBalanceTexts), "each value once");
constexpr Enumeration kToneCurve = Enum(kToneCurveTexts, Sign::kSigned, "%d");
constexpr Enumeration kSharpnessFrequency = Enum(kSharpnessFrequencyTexts, Sign::kSigned, "%d");
constexpr Enumeration kPictureStyle = Enum(kPictureStyleTexts, Sign::kUnsigned, "%d");

bool ProcessingSharpness(const Record& r, size_t i, exif::TagRecord& row) {
    // Not what these bodies record here.
    const CanonNote& n = r.note;
    if (n.CountsLike350D()) return false;
    return Plain(r, i, row);
}

bool PictureStyle(const Record& r, size_t i, exif::TagRecord& row) {
    if (const char* text = EnumerationText(kPictureStyle, r.U16(i))) return Text(row, text);
    SetValuef(row, "0x%x", r.U16(i));
    return true;
}

bool NonNegativeWhiteBalance(const Record& r, size_t i, exif::TagRecord& row) {
    return r.At(i) >= 0 && Enumerated<kWhiteBalance>(r, i, row);
}

constexpr Field kProcessing[] = {
    {1, "Tone Curve", Enumerated<kToneCurve>},
    {2, "Sharpness", ProcessingSharpness},
    {3, "Sharpness Frequency", Enumerated<kSharpnessFrequency>},
    {4, "Sensor Red Level", Plain},
    {5, "Sensor Blue Level", Plain},
    {6, "White Balance Red", Plain},
    {7, "White Balance Blue", Plain},
    {8, "White Balance", NonNegativeWhiteBalance},
    {9, "Color Temperature", Plain},
    {10, "Picture Style", PictureStyle},
    {11, "Digital Gain", Tenths},
    {12, "WB Shift AB", Plain},
    {13, "WB Shift GM", Plain},
};

// ---- smaller records

constexpr Field kSensorInfo[] = {
    {1, "Sensor Width", Plain},
    {2, "Sensor Height", Plain},
    {5, "Sensor Left Border", Plain},
    {6, "Sensor Top Border", Plain},
    {7, "Sensor Right Border", Plain},
    {8, "Sensor Bottom Border", Plain},
    {9, "Black Mask Left Border", Plain},
    {10, "Black Mask Top Border", Plain},
    {11, "Black Mask Right Border", Plain},
    {12, "Black Mask Bottom Border", Plain},
};

constexpr Field kCropInfo[] = {
    {0, "Crop Left Margin", Plain},
    {1, "Crop Right Margin", Plain},
    {2, "Crop Top Margin", Plain},
    {3, "Crop Bottom Margin", Plain},
};

constexpr ValueText kAspectTexts[] = {
    {0, "3:2"}, {1, "1:1"}, {2, "4:3"}, {7, "16:9"}, {8, "4:5"}, {12, "3:2 (APS-H crop)"},
    {13, "3:2 (APS-C crop)"}, {258, "4:3 crop"},
};
constexpr Enumeration kAspect = Enum(kAspectTexts, Sign::kUnsigned, "%d");

constexpr Field kAspectInfo[] = {
    {0, "Aspect Ratio", Enumerated<kAspect>},
    {1, "Cropped Image Width", Plain},
    {2, "Cropped Image Height", Plain},
    {3, "Cropped Image Left", Plain},
    {4, "Cropped Image Top", Plain},
};

bool Rggb(const Record& r, size_t i, exif::TagRecord& row) {
    SetValuef(row, "%u %u %u %u", r.U16(i), r.U16(i + 1), r.U16(i + 2), r.U16(i + 3));
    return true;
}

constexpr Field kMeasuredColor[] = {{1, "Measured RGGB", Rggb}};

// Three picture styles in one entry, each named.
bool PictureStyles(const Record& r, size_t, exif::TagRecord& row) {
    std::string text;
    for (size_t i = 0; i < 3; ++i) {
        exif::TagRecord one{};
        PictureStyle(r, i, one);
        if (i) text += "; ";
        text += one.value;
    }
    return Text(row, text.c_str());
}

constexpr Field kUserDefStyles[] = {{2, "Picture Style User Def", PictureStyles}};
constexpr Field kPcStyles[] = {{2, "Picture Style PC", PictureStyles}};

constexpr ValueText kMicroAdjTexts[] = {{0, "Disable"}, {1, "Adjust all by the same amount"}, {2, "Adjust by lens"}};
constexpr Enumeration kMicroAdj = Enum(kMicroAdjTexts, Sign::kSigned, "%d");

bool MicroAdjValue(const Record& r, size_t i, exif::TagRecord& row) {
    // A signed rational in elements 2 and 3.
    const int64_t denominator = r.At(i + 1);
    if (denominator == 0) return Plain(r, i, row);
    return Number(row, static_cast<double>(r.At(i)) / static_cast<double>(denominator));
}

constexpr Field kAfMicroAdj[] = {
    {1, "AF Micro Adjustment Mode", Enumerated<kMicroAdj>},
    {2, "AF Micro Adjustment Value", MicroAdjValue},
};

// ---- time (tag 0x0035)

bool TimeZone(const Record& r, size_t i, exif::TagRecord& row) {
    const int64_t minutes = r.At(i) < 0 ? -r.At(i) : r.At(i);
    SetValuef(row, "%c%02lld:%02lld", r.At(i) < 0 ? '-' : '+', static_cast<long long>(minutes / 60),
              static_cast<long long>(minutes % 60));
    return true;
}

// The home city the body is set to, by its number in the camera's list.
constexpr ValueText kCityTexts[] = {
    {0, "n/a"}, {1, "Chatham Islands"}, {2, "Wellington"}, {3, "Solomon Islands"}, {4, "Sydney"},
    {5, "Adelaide"}, {6, "Tokyo"}, {7, "Hong Kong"}, {8, "Bangkok"}, {9, "Yangon"}, {10, "Dhaka"},
    {11, "Kathmandu"}, {12, "Delhi"}, {13, "Karachi"}, {14, "Kabul"}, {15, "Dubai"}, {16, "Tehran"},
    {17, "Moscow"}, {18, "Cairo"}, {19, "Paris"}, {20, "London"}, {21, "Azores"},
    {22, "Fernando de Noronha"}, {23, "Sao Paulo"}, {24, "Newfoundland"}, {25, "Santiago"},
    {26, "Caracas"}, {27, "New York"}, {28, "Chicago"}, {29, "Denver"}, {30, "Los Angeles"},
    {31, "Anchorage"}, {32, "Honolulu"}, {33, "Samoa"}, {32766, "(not set)"},
};
constexpr ValueText kDaylightTexts[] = {{0, "Off"}, {60, "On"}};
static_assert(ValuesUnique(kCityTexts), "each value once");
constexpr Enumeration kCity = Enum(kCityTexts, Sign::kSigned, "%d");
constexpr Enumeration kDaylight = Enum(kDaylightTexts, Sign::kSigned, "%d");

constexpr Field kTimeInfo[] = {
    {1, "Time Zone", TimeZone},
    {2, "Time Zone City", Enumerated<kCity>},
    {3, "Daylight Savings", Enumerated<kDaylight>},
};

// ------------------------------------------------------------ record tags

enum : uint16_t { kShortType = 3, kLongType = 4, kSLongType = 9, kUndefinedType = 7 };

// How a record's elements are stored: 2 or 4 bytes, signed or not. An entry
// of another size is not read.
struct RecordTag {
    uint16_t tag;
    uint32_t elementSize;
    bool isSigned;
    const Field* fields;
    size_t size;
};

template <size_t N>
constexpr RecordTag Fields(uint16_t tag, uint32_t elementSize, bool isSigned, const Field (&fields)[N]) {
    return {tag, elementSize, isSigned, fields, N};
}

constexpr RecordTag kRecords[] = {
    Fields(0x0001, 2, true, kCameraSettings),
    Fields(0x0002, 2, false, kFocalLength),
    Fields(0x0004, 2, true, kShotInfo),
    Fields(0x0005, 2, true, kPanoramaFields),
    Fields(0x0035, 4, true, kTimeInfo),
    Fields(0x0093, 2, true, kFileInfo),
    Fields(0x0098, 2, false, kCropInfo),
    Fields(0x009A, 4, false, kAspectInfo),
    Fields(0x00A0, 2, true, kProcessing),
    Fields(0x00AA, 2, false, kMeasuredColor),
    Fields(0x00E0, 2, true, kSensorInfo),
    Fields(0x4008, 2, false, kUserDefStyles),
    Fields(0x4009, 2, false, kPcStyles),
    Fields(0x4013, 4, true, kAfMicroAdj),
};

// Hands out the rows of one entry, each carrying the entry's tag; none at or
// beyond the row limit.
class RowWriter {
public:
    RowWriter(exif::TagRecordTable& table, uint32_t* rowCount, const tiff::Entry& entry)
        : table_(table), rowCount_(rowCount), entry_(entry) {}

    bool Full() const { return *rowCount_ >= kMakerNoteRowLimit; }
    // A cleared row named `name`, or null when the table is full.
    exif::TagRecord* Begin(const char* name) {
        if (Full()) return nullptr;
        exif::TagRecord& row = exif::TakeRow(table_, *rowCount_);
        exif::BeginRow(row, entry_.tag, entry_);
        exif::SetRowName(row, name);
        return &row;
    }
    void Keep() { ++*rowCount_; }
    // A row with a ready text.
    void Add(const char* name, const std::string& text) {
        if (exif::TagRecord* row = Begin(name)) {
            exif::SetRowValue(*row, text);
            Keep();
        }
    }

private:
    exif::TagRecordTable& table_;
    uint32_t* rowCount_;
    const tiff::Entry& entry_;
};

// An entry's value bytes (at most `limit`) as elements of `elementSize`
// bytes in the note's order, widened with their sign. Returns the count.
size_t ReadElements(const platform::Cursor& input, uint32_t offsetBase, const tiff::Entry& entry,
                    exif::TagRecordTable& table, uint32_t rowCount, uint32_t elementSize, bool isSigned,
                    int64_t* out, size_t limit) {
    uint8_t bytes[kCanonRecordElementsLimit * 4];
    const uint32_t typeSize = tiff::TypeSize(entry.type);
    if (typeSize == 0 || (elementSize != 2 && elementSize != 4)) return 0;
    const uint64_t declared = uint64_t{entry.count} * typeSize;
    const size_t want = static_cast<size_t>(std::min<uint64_t>(declared, uint64_t{limit} * elementSize));
    // The reader wants a row for its context; it writes none.
    const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, rowCount)};
    const size_t got = exif::ReadRawBlock(context, bytes, want);
    const size_t n = got / elementSize;
    const int bigEndian = input.bigEndian();
    for (size_t i = 0; i < n; ++i) {
        const uint8_t* b = bytes + i * elementSize;
        if (elementSize == 2) {
            const uint16_t v = platform::GetU16(b, bigEndian);
            out[i] = isSigned ? int64_t{static_cast<int16_t>(v)} : int64_t{v};
        } else {
            const uint32_t v = platform::GetU32(b, bigEndian);
            out[i] = isSigned ? int64_t{static_cast<int32_t>(v)} : int64_t{v};
        }
    }
    return n;
}

void DecodeFields(const Record& r, const RecordTag& record, RowWriter& rows) {
    for (size_t f = 0; f < record.size; ++f) {
        const Field& field = record.fields[f];
        if (field.index >= r.size) continue;
        exif::TagRecord* row = rows.Begin(field.name);
        if (!row) return;
        if (field.format(r, field.index, *row)) rows.Keep();
    }
}

// ---- AF records: sequences whose later parts are as long as the AF point count

// The elements [from, from + n) as numbers, or nothing when they do not all
// lie in the record or would not fit the row's text.
bool NumberList(const Record& r, size_t from, size_t n, std::string& text) {
    if (n == 0 || from + n > r.size) return false;
    text.clear();
    for (size_t i = 0; i < n; ++i) {
        if (i) text += ' ';
        text += std::to_string(static_cast<int16_t>(r.U16(from + i)));
    }
    return text.size() <= exif::kValueTextLimit;
}

// The AF points a bit mask marks, numbered from 0 across 16-bit words.
bool PointList(const Record& r, size_t from, size_t words, std::string& text) {
    if (words == 0 || from + words > r.size) return false;
    text.clear();
    for (size_t w = 0; w < words; ++w)
        for (int bit = 0; bit < 16; ++bit) {
            if (!(r.U16(from + w) & (1u << bit))) continue;
            if (!text.empty()) text += ',';
            text += std::to_string(w * 16 + bit);
        }
    if (text.empty()) text = "(none)";
    return text.size() <= exif::kValueTextLimit;
}

constexpr ValueText kAfAreaModeTexts[] = {
    {0, "Off (Manual Focus)"}, {1, "AF Point Expansion (surround)"}, {2, "Single-point AF"}, {4, "Auto"},
    {5, "Face Detect AF"}, {6, "Face + Tracking"}, {7, "Zone AF"}, {8, "AF Point Expansion (4 point)"},
    {9, "Spot AF"}, {10, "AF Point Expansion (8 point)"}, {11, "Flexizone Multi (49 point)"},
    {12, "Flexizone Multi (9 point)"}, {13, "Flexizone Single"}, {14, "Large Zone AF"},
};
constexpr Enumeration kAfAreaMode = Enum(kAfAreaModeTexts, Sign::kUnsigned, "%d");

// The older AF record (tag 0x0012): the point count first, one area size for
// all points. The newer (tag 0x0026): its size and the area mode first, an
// area size per point, and the points selected after those in focus.
void DecodeAfInfo(const Record& r, bool newer, RowWriter& rows) {
    const size_t head = newer ? 2 : 0;
    const size_t points = r.U16(head);
    std::string text;
    if (newer && r.size > 1) {
        const char* mode = EnumerationText(kAfAreaMode, r.U16(1));
        rows.Add("AF Area Mode", mode ? mode : std::to_string(r.U16(1)));
    }
    static const char* const kHead[] = {"Number of AF Points", "Valid AF Points",  "Canon Image Width",
                                        "Canon Image Height",  "AF Image Width",   "AF Image Height"};
    for (size_t i = 0; i < 6 && head + i < r.size; ++i) rows.Add(kHead[i], std::to_string(r.U16(head + i)));
    size_t at = head + 6;
    if (!newer) {
        if (r.size > at) rows.Add("AF Area Width", std::to_string(r.U16(at)));
        if (r.size > at + 1) rows.Add("AF Area Height", std::to_string(r.U16(at + 1)));
        at += 2;
    }
    static const char* const kPerPoint[] = {"AF Area Widths", "AF Area Heights", "AF Area X Positions",
                                            "AF Area Y Positions"};
    for (size_t k = newer ? 0 : 2; k < 4; ++k, at += points)
        if (NumberList(r, at, points, text)) rows.Add(kPerPoint[k], text);
    const size_t words = (points + 15) / 16;
    if (PointList(r, at, words, text)) rows.Add("AF Points In Focus", text);
    if (newer && r.note.ModelHas("EOS") && PointList(r, at + words, words, text)) rows.Add("AF Points Selected", text);
}

// ---- camera info (tag 0x000D): a block of bytes laid out per body

enum class InfoKind { kOrientation, kLensBigEndian, kCountPlusOne, kCountMinusOne };

struct InfoField {
    uint16_t offset;
    InfoKind kind;
    const char* name;
};

struct BodyInfo {
    const char* modelEnd;  // the Model text ends so
    const InfoField* fields;
    size_t size;
};

constexpr InfoField k1DMark3Info[] = {
    {0x030, InfoKind::kOrientation, "Camera Orientation"},
    {0x111, InfoKind::kLensBigEndian, "Lens Type"},
    {0x172, InfoKind::kCountPlusOne, "File Index"},
    {0x176, InfoKind::kCountPlusOne, "Shutter Count"},
    {0x17E, InfoKind::kCountMinusOne, "Directory Index"},
};

constexpr BodyInfo kBodyInfos[] = {
    {"1D Mark III", k1DMark3Info, sizeof k1DMark3Info / sizeof k1DMark3Info[0]},
    {"1Ds Mark III", k1DMark3Info, sizeof k1DMark3Info / sizeof k1DMark3Info[0]},
};

constexpr ValueText kOrientationTexts[] = {{0, "Horizontal (normal)"}, {1, "Rotate 90 CW"}, {2, "Rotate 270 CW"}};
constexpr Enumeration kOrientation = Enum(kOrientationTexts, Sign::kUnsigned, "%d");

void DecodeCameraInfo(const uint8_t* bytes, size_t got, const CanonNote& note, RowWriter& rows) {
    for (const BodyInfo& body : kBodyInfos) {
        if (!note.ModelEnds(body.modelEnd)) continue;
        for (size_t f = 0; f < body.size; ++f) {
            const InfoField& field = body.fields[f];
            const uint8_t* at = bytes + field.offset;
            const uint32_t size =
                field.kind == InfoKind::kOrientation ? 1 : field.kind == InfoKind::kLensBigEndian ? 2 : 4;
            if (field.offset + size > got) continue;
            switch (field.kind) {
                case InfoKind::kOrientation: {
                    const char* text = EnumerationText(kOrientation, at[0]);
                    rows.Add(field.name, text ? text : std::to_string(at[0]));
                    break;
                }
                case InfoKind::kLensBigEndian: {
                    // Big-endian whatever the note's order.
                    const uint16_t lens = platform::GetU16(at, 1);
                    const char* name = CanonLensName(lens);
                    if (lens) rows.Add(field.name, name ? name : std::to_string(lens));
                    break;
                }
                case InfoKind::kCountPlusOne:
                    rows.Add(field.name, std::to_string(uint64_t{platform::GetU32(at, note.bigEndian)} + 1));
                    break;
                case InfoKind::kCountMinusOne:
                    rows.Add(field.name, std::to_string(int64_t{platform::GetU32(at, note.bigEndian)} - 1));
                    break;
            }
        }
        return;
    }
}

// ---- tags read whole

// The serial number, shown as the body shows it: six digits on the EOS-1D
// bodies, ten on the others.
void SerialNumber(const tiff::Entry& entry, const CanonNote& note, RowWriter& rows) {
    char text[16];
    std::snprintf(text, sizeof text, note.ModelHas("EOS-1D") ? "%06u" : "%010u", entry.valueField);
    rows.Add("Serial Number", text);
}

// Sixteen bytes as hexadecimal; none when all are zero.
void ImageUniqueId(const uint8_t* bytes, size_t got, RowWriter& rows) {
    std::string text;
    bool any = false;
    for (size_t i = 0; i < got; ++i) {
        char hex[3];
        std::snprintf(hex, sizeof hex, "%02x", bytes[i]);
        text += hex;
        any = any || bytes[i] != 0;
    }
    if (any) rows.Add("Image Unique ID", text);
}

// A 76-byte record whose text starts at byte 4.
void BatteryType(const uint8_t* bytes, size_t got, RowWriter& rows) {
    if (got != 76) return;
    std::string text;
    for (size_t i = 4; i < got && bytes[i] != 0; ++i) text += static_cast<char>(bytes[i]);
    if (!text.empty()) rows.Add("Battery Type", text);
}

std::string ModelText(const exif::TagRecordTable& table, uint32_t rowCount) {
    std::string model;
    for (uint32_t i = 0; i < rowCount && i < kMakerNoteRowLimit; ++i)
        if (table.rows[i].tag == 272) model = table.rows[i].value;
    return model;
}

void DecodeSecondPass(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                      uint32_t rowsBefore, uint32_t* rowCount) {
    CanonNote note;
    note.model = ModelText(table, rowsBefore);
    note.bigEndian = directory.bigEndian();
    int64_t values[kCanonRecordElementsLimit];
    const platform::Cursor input = directory.Whole();
    RevisitDirectory(directory, rowsBefore, rowCount, [&](const tiff::Entry& entry, uint32_t) {
        RowWriter rows(table, rowCount, entry);
        if (entry.tag == 0x000C && entry.type == kLongType) return SerialNumber(entry, note, rows);
        if (entry.tag == 0x0028 || entry.tag == 0x0038) {
            uint8_t bytes[76] = {};
            const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
            const size_t want = std::min<uint32_t>(entry.count, entry.tag == 0x0028 ? 16 : 76);
            if (tiff::TypeSize(entry.type) != 1) return;
            const size_t got = exif::ReadRawBlock(context, bytes, want);
            if (entry.tag == 0x0028) return ImageUniqueId(bytes, got, rows);
            return BatteryType(bytes, entry.count == 76 ? got : 0, rows);
        }
        if (entry.tag == 0x000D) {
            if (tiff::TypeSize(entry.type) != 1) return;
            uint8_t bytes[kCanonCameraInfoReadLimit] = {};
            const exif::EntryContext context{input, offsetBase, entry, exif::TakeRow(table, *rowCount)};
            const size_t got = exif::ReadRawBlock(context, bytes, std::min<size_t>(entry.count, sizeof bytes));
            return DecodeCameraInfo(bytes, got, note, rows);
        }
        if (entry.tag == 0x0012 || entry.tag == 0x0026) {
            if (entry.type != kShortType) return;
            const size_t n = ReadElements(input, offsetBase, entry, table, *rowCount, 2, false, values,
                                          kCanonRecordElementsLimit);
            return DecodeAfInfo(Record{values, n, note}, entry.tag == 0x0026, rows);
        }
        for (const RecordTag& record : kRecords) {
            if (record.tag != entry.tag) continue;
            const uint32_t typeSize = tiff::TypeSize(entry.type);
            if (typeSize != record.elementSize && entry.type != kUndefinedType) return;
            const size_t n = ReadElements(input, offsetBase, entry, table, *rowCount, record.elementSize,
                                          record.isSigned, values, kCanonRecordElementsLimit);
            const Record r{values, n, note};
            // The focal lengths count in the units the settings give; 0 means 1.
            if (entry.tag == 0x0001 && n > 25 && r.At(25) > 0) note.focalUnits = r.At(25);
            note.focusDistanceUpper = 0;
            return DecodeFields(r, record, rows);
        }
    });
}

}  // namespace

void DecodeCanonMakerNote(const platform::Cursor& directory, uint32_t offsetBase, exif::TagRecordTable& table,
                          uint32_t* rowCount) {
    const uint32_t rowsBefore = *rowCount;
    platform::Cursor in = directory;
    DecodeMakerDirectory(in, offsetBase, table, rowCount, kCanon);
    DecodeSecondPass(directory, offsetBase, table, rowsBefore, rowCount);
}

}  // namespace makernotes
