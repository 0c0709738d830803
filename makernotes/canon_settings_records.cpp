// The Canon records of the camera settings (tag 0001), focal length (0002),
// shot info (0004) and panorama (0005).
#include <cmath>
#include <string>

#include "canon_makernote.h"
#include "canon_tables.h"

namespace makernotes {
namespace canon {
namespace {

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
constexpr Enumeration kFlashMode = Enum(kFlashModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kDriveMode = Enum(kDriveModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kFocusMode = Enum(kFocusModeTexts, Sign::kSigned, "%d");
constexpr Enumeration kRecordMode = Enum(kRecordModeTexts, Sign::kSigned, "%d");
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
static_assert(ValuesUnique(kWhiteBalanceTexts), "each value once");

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

constexpr RecordTag kSettingsRecordList[] = {
    Fields(0x0001, 2, true, kCameraSettings),
    Fields(0x0002, 2, false, kFocalLength),
    Fields(0x0004, 2, true, kShotInfo),
    Fields(0x0005, 2, true, kPanoramaFields),
};

}  // namespace

constexpr Enumeration kQuality = Enum(kQualityTexts, Sign::kSigned, "%d");
constexpr Enumeration kImageSize = Enum(kImageSizeTexts, Sign::kSigned, "%d");
constexpr Enumeration kWhiteBalance = Enum(kWhiteBalanceTexts, Sign::kSigned, "%d");
constexpr RecordTags kSettingsRecords = ListOf(kSettingsRecordList);

}  // namespace canon
}  // namespace makernotes
