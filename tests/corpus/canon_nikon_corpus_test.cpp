// The Canon and Nikon maker rows of the corpus files, read end to end, each
// row stated here with exiftool's value for the same tag (its number, or
// its text where the camera stores text). The test checks both sides: that
// exiftool still reads the file as stated, and that our row says the same.
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "corpus.h"
#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "platform/platform.h"

namespace {

using Sample = corpus::MakerSample;

const Sample kSamples[] = {
    {"Canon.jpg",
     {{"Image Type", "Canon:CanonImageType", "CRW:EOS DIGITAL REBEL CMOS RAW", "CRW:EOS DIGITAL REBEL CMOS RAW"},
      {"Firmware Version", "Canon:CanonFirmwareVersion", "Firmware Version 1.1.1", "Firmware Version 1.1.1"},
      {"Serial Number", "Canon:SerialNumber", "560018150", "560018150"},
      {"File Number", "Canon:FileNumber", "1181861", "118-1861"},
      {"Owner Name", "Canon:OwnerName", "Phil Harvey", "Phil Harvey"},
      {"Camera Model ID", "Canon:CanonModelID", "2147484016", "2147484016"},
      {"Macro Mode", "Canon:MacroMode", "0", "0"},  // exiftool: "Unknown (0)"
      {"Self Timer", "Canon:SelfTimer", "0", "Off"},
      {"Quality", "Canon:Quality", "4", "RAW"},
      {"Flash Mode", "Canon:CanonFlashMode", "0", "Off"},
      {"Drive Mode", "Canon:ContinuousDrive", "1", "Continuous"},
      {"Focus Mode", "Canon:FocusMode", "3", "Manual Focus (3)"},
      {"Metering Mode", "Canon:MeteringMode", "5", "Center-weighted average"},
      {"Exposure Mode", "Canon:CanonExposureMode", "4", "Manual"},
      {"Lens Focal Range", "Canon:MinFocalLength", "18", "18 - 55 mm"},
      {"Base ISO", "Canon:BaseISO", "100", "100"},
      {"White Balance", "Canon:WhiteBalance", "0", "Auto"},
      {"Sequence Number", "Canon:SequenceNumber", "0", "0"}}},
    {"Canon1DmkIII.jpg",
     {{"Image Type", "Canon:CanonImageType", "Canon EOS-1D Mark III", "Canon EOS-1D Mark III"},
      {"Firmware Version", "Canon:CanonFirmwareVersion", "Firmware Version 5.3.1", "Firmware Version 5.3.1"},
      {"Owner Name", "Canon:OwnerName", "", ""},
      {"Serial Number", "Canon:SerialNumber", "500292", "500292"},
      {"Camera Model ID", "Canon:CanonModelID", "2147484009", "2147484009"},
      {"Lens Model", "Canon:LensModel", "EF16-35mm f/2.8L II USM", "EF16-35mm f/2.8L II USM"},
      {"Macro Mode", "Canon:MacroMode", "2", "Normal"},
      {"Self Timer", "Canon:SelfTimer", "0", "Off"},
      {"Quality", "Canon:Quality", "3", "Fine"},
      {"Flash Mode", "Canon:CanonFlashMode", "16", "External flash"},
      {"Drive Mode", "Canon:ContinuousDrive", "5", "Continuous, High"},
      {"Focus Mode", "Canon:FocusMode", "1", "AI Servo AF"},
      {"Metering Mode", "Canon:MeteringMode", "3", "Evaluative"},
      {"Exposure Mode", "Canon:CanonExposureMode", "1", "Program AE"},
      {"Lens Focal Range", "Canon:MaxFocalLength", "35", "16 - 35 mm"},
      {"Base ISO", "Canon:BaseISO", "3200", "3200"},
      {"White Balance", "Canon:WhiteBalance", "0", "Auto"},
      {"Sequence Number", "Canon:SequenceNumber", "0", "0"}}},
    // Its Canon data sits in a CIFF block, not in an EXIF maker note.
    {"ExifTool.jpg", {}},
    {"CanonRaw.cr2",
     {{"Image Type", "Canon:CanonImageType", "Canon EOS 350D DIGITAL", "Canon EOS 350D DIGITAL"},
      {"Firmware Version", "Canon:CanonFirmwareVersion", "Firmware 1.0.2", "Firmware 1.0.2"},
      {"Owner Name", "Canon:OwnerName", "unknown", "unknown"},
      {"Serial Number", "Canon:SerialNumber", "123456789", "123456789"},
      {"Camera Model ID", "Canon:CanonModelID", "2147484041", "2147484041"},
      {"Macro Mode", "Canon:MacroMode", "2", "Normal"},
      {"Self Timer", "Canon:SelfTimer", "0", "Off"},
      {"Quality", "Canon:Quality", "4", "RAW"},
      {"Flash Mode", "Canon:CanonFlashMode", "0", "Off"},
      {"Drive Mode", "Canon:ContinuousDrive", "0", "Single"},
      {"Focus Mode", "Canon:FocusMode", "0", "One-shot AF"},
      {"Metering Mode", "Canon:MeteringMode", "5", "Center-weighted average"},
      {"Exposure Mode", "Canon:CanonExposureMode", "3", "Aperture-priority AE"},
      {"Lens Focal Range", "Canon:MinFocalLength", "18", "18 - 55 mm"},
      {"Base ISO", "Canon:BaseISO", "400", "400"},
      {"White Balance", "Canon:WhiteBalance", "0", "Auto"},
      {"Sequence Number", "Canon:SequenceNumber", "0", "0"}}},
    {"CanonRaw.cr3",
     {{"Image Type", "Canon:CanonImageType", "Canon EOS M50", "Canon EOS M50"},
      {"Firmware Version", "Canon:CanonFirmwareVersion", "Firmware Version 1.0.0", "Firmware Version 1.0.0"},
      {"Owner Name", "Canon:OwnerName", "", ""},
      {"Camera Model ID", "Canon:CanonModelID", "1042", "1042"},
      {"Lens Model", "Canon:LensModel", "EF-M15-45mm f/3.5-6.3 IS STM", "EF-M15-45mm f/3.5-6.3 IS STM"},
      {"Macro Mode", "Canon:MacroMode", "2", "Normal"},
      {"Self Timer", "Canon:SelfTimer", "0", "Off"},
      {"Quality", "Canon:Quality", "4", "RAW"},
      {"Flash Mode", "Canon:CanonFlashMode", "0", "Off"},
      {"Drive Mode", "Canon:ContinuousDrive", "0", "Single"},
      {"Focus Mode", "Canon:FocusMode", "256", "AF + MF"},
      {"Metering Mode", "Canon:MeteringMode", "3", "Evaluative"},
      {"Exposure Mode", "Canon:CanonExposureMode", "3", "Aperture-priority AE"},
      {"Lens Focal Range", "Canon:MaxFocalLength", "45", "15 - 45 mm"},
      {"Base ISO", "Canon:BaseISO", "12800", "12800"},
      {"White Balance", "Canon:WhiteBalance", "0", "Auto"},
      {"Sequence Number", "Canon:SequenceNumber", "0", "0"}}},
    // A Coolpix note without header; the version digits are stored as bytes.
    {"Nikon.jpg",
     {{"Version", "Nikon:MakerNoteVersion", "0100", "0100"},
      {"ISO Setting", "Nikon:ISO", "0 0", "0"},
      {"Color Mode", "Nikon:ColorMode", "COLOR", "COLOR"},
      {"Quality", "Nikon:Quality", "FINE", "FINE"},
      {"White Balance", "Nikon:WhiteBalance", "AUTO", "AUTO"},
      {"Sharpening", "Nikon:Sharpness", "AUTO", "AUTO"},
      {"Focus Mode", "Nikon:FocusMode", "AF-C", "AF-C"},
      {"Flash Setting", "Nikon:FlashSetting", "", ""},
      {"ISO Selection", "Nikon:ISOSelection", "AUTO", "AUTO"}}},
    // Lens data 0201 is enciphered: no lens name.
    {"NikonD2Hs.jpg",
     {{"Version", "Nikon:MakerNoteVersion", "0210", "0210"},
      {"ISO Setting", "Nikon:ISO", "0 800", "800"},
      {"Quality", "Nikon:Quality", "FINE", "FINE"},
      {"White Balance", "Nikon:WhiteBalance", "PRESET0", "PRESET0"},
      {"Sharpening", "Nikon:Sharpness", "AUTO", "AUTO"},
      {"Focus Mode", "Nikon:FocusMode", "AF-C", "AF-C"},
      {"Flash Setting", "Nikon:FlashSetting", "NORMAL", "NORMAL"},
      {"Serial Number", "Nikon:SerialNumber", "3001006", "3001006"},
      {"Lens Type", "Nikon:LensType", "2", "D"},
      {"Lens", "Nikon:Lens", "50 50 1.8 1.8", "50mm f/1.8"},
      {"Flash Mode", "Nikon:FlashMode", "0", "Did Not Fire"},
      {"Shooting Mode", "Nikon:ShootingMode", "2", "Delay"},
      {"Lens Name", "Nikon:LensDataVersion", "0201", "unknown (lens data 0201)"},
      {"Shutter Count", "Nikon:ShutterCount", "2", "2"}}},
    // Lens data 0101 is in the clear; the lens is not one the table names, so
    // the key shows, as exiftool's lens ID gives it.
    {"NikonD70.jpg",
     {{"Version", "Nikon:MakerNoteVersion", "0210", "0210"},
      {"ISO Setting", "Nikon:ISO", "0 200", "200"},
      {"Quality", "Nikon:Quality", "FINE", "FINE"},
      {"White Balance", "Nikon:WhiteBalance", "AUTO", "AUTO"},
      {"Sharpening", "Nikon:Sharpness", "MED.H", "MED.H"},
      {"Focus Mode", "Nikon:FocusMode", "AF-S", "AF-S"},
      {"Flash Setting", "Nikon:FlashSetting", "NORMAL", "NORMAL"},
      {"Lens Type", "Nikon:LensType", "6", "G"},
      {"Lens", "Nikon:Lens", "18 70 3.5 4.5", "18-70mm f/3.5-4.5"},
      {"Flash Mode", "Nikon:FlashMode", "9", "Fired, TTL Mode"},
      {"Shooting Mode", "Nikon:ShootingMode", "1", "Continuous"},
      {"Lens Name", "Composite:LensID", "7F 40 2D 5C 2C 34 84 06", "unknown (7F 40 2D 5C 2C 34 84 06)"},
      {"Serial Number", "Nikon:SerialNumber", "NO= 20025585", "NO= 20025585"},
      {"Shutter Count", "Nikon:ShutterCount", "526", "526"}}},
    {"Nikon.nef",
     {{"Version", "Nikon:MakerNoteVersion", "0210", "0210"},
      {"ISO Setting", "Nikon:ISO", "0 200", "200"},
      {"Quality", "Nikon:Quality", "RAW", "RAW"},
      {"White Balance", "Nikon:WhiteBalance", "AUTO", "AUTO"},
      {"Sharpening", "Nikon:Sharpness", "NONE", "NONE"},
      {"Focus Mode", "Nikon:FocusMode", "AF-S", "AF-S"},
      {"Lens Type", "Nikon:LensType", "6", "G"},
      {"Lens", "Nikon:Lens", "18 70 3.5 4.5", "18-70mm f/3.5-4.5"},
      {"Flash Mode", "Nikon:FlashMode", "0", "Did Not Fire"},
      {"Shooting Mode", "Nikon:ShootingMode", "0", "Single-Frame"},
      {"Lens Name", "Composite:LensID", "7F 40 2D 5C 2C 34 84 06", "unknown (7F 40 2D 5C 2C 34 84 06)"},
      {"Serial Number", "Nikon:SerialNumber", "12345678", "12345678"},
      {"Shutter Count", "Nikon:ShutterCount", "3619", "3619"}}},
};

TEST(CanonNikonCorpus, MakerRowsAreTheStatedRowsAndAgreeWithExiftool) {
    VV_REQUIRE_CORPUS();
    for (const Sample& sample : kSamples) {
        SCOPED_TRACE(sample.file);
        const std::string path = corpus::Path(sample.file);
        corpus::ExpectMakerRows(path, sample.rows, corpus::Exiftool(path, "-n"));
    }
}

TEST(CanonNikonCorpus, ExiftoolSeesNoCanonNoteInTheCiffFile) {
    VV_REQUIRE_CORPUS();
    for (const auto& tag : corpus::Exiftool(corpus::Path("ExifTool.jpg"), "-n"))
        EXPECT_NE(tag.first.rfind("Canon:", 0), 0u) << tag.first;
}

}  // namespace
