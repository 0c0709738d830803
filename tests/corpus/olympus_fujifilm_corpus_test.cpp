// The Olympus and Fujifilm maker rows of the corpus files, read end to end,
// each row stated here with exiftool's number for the same tag (-n) and our
// text for it. The test checks both sides: that exiftool still reads the
// file as stated, and that our row says the same.
#include <memory>
#include <string>
#include <vector>

#include "corpus.h"
#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "platform/platform.h"

namespace {

using Sample = corpus::MakerSample;

// Where our text is not exiftool's printed one:
// - Camera Type: exiftool names the camera for the code ("SR951" is the
//   C2000Z); we show the code as stored, the model being in the Model row.
// - Lens Type: exiftool names the lens from its list; we show the code that
//   exiftool -n gives, having no Olympus lens list (the Lens Model row names
//   the lens where the camera stores it).
// - Body Firmware Version: the hexadecimal digits of the number as a version,
//   as exiftool prints it (4097 = 0x1001 is 1.001).
const Sample kSamples[] = {
    // The older 8-byte header, no sub-directories.
    {"Olympus.jpg",
     {{"Special Mode", "Olympus:SpecialMode", "0 0 0", "Normal, sequence 0"},
      {"Quality", "Olympus:Quality", "1", "SQ (low)"},
      {"Macro", "Olympus:Macro", "0", "Off"},
      {"Digital Zoom", "Olympus:DigitalZoom", "0", "0"},
      {"Camera Type", "Olympus:CameraType", "SR951", "SR951"},
      {"Camera ID", "Olympus:CameraID", "OLYMPUS DIGITAL CAMERA", "OLYMPUS DIGITAL CAMERA"}}},
    // "OLYMPUS\0II": offsets from the note; sub-directories of type IFD.
    {"Olympus2.jpg",
     {{"Special Mode", "Olympus:SpecialMode", "0 0 0", "Normal, sequence 0"},
      {"Quality", "Olympus:Quality", "3", "SHQ (fine)"},
      {"Macro", "Olympus:Macro", "0", "Off"},
      {"Digital Zoom", "Olympus:DigitalZoom", "1", "1"},
      {"Camera Type", "Olympus:CameraType", "D4328", "D4328"},
      {"Camera ID", "Olympus:CameraID", "OLYMPUS DIGITAL CAMERA", "OLYMPUS DIGITAL CAMERA"},
      {"Serial Number", "Olympus:SerialNumber", "C90500055", "C90500055"},
      {"Body Firmware Version", "Olympus:BodyFirmwareVersion", "4097", "1.001"},
      {"Focus Mode", "Olympus:FocusMode", "0", "Single AF"},
      {"White Balance", "Olympus:WhiteBalance2", "0", "Auto"}}},
    // The older header with sub-directories as UNDEFINED blocks.
    {"OlympusE1.jpg",
     {{"Special Mode", "Olympus:SpecialMode", "2 2 0", "Fast, sequence 2"},
      {"Quality", "Olympus:Quality", "3", "SHQ (fine)"},
      {"Macro", "Olympus:Macro", "0", "Off"},
      {"Digital Zoom", "Olympus:DigitalZoom", "0", "0"},
      {"Camera Type", "Olympus:CameraType", "D4040", "D4040"},
      {"Camera ID", "Olympus:CameraID", "OLYMPUS DIGITAL CAMERA", "OLYMPUS DIGITAL CAMERA"},
      {"Serial Number", "Olympus:SerialNumber", "143008611", "143008611"},
      {"Body Firmware Version", "Olympus:BodyFirmwareVersion", "4864", "1.300"},
      {"Lens Type", "Olympus:LensType", "0 05 00", "0 05 00"},
      {"Lens Serial Number", "Olympus:LensSerialNumber", "050105886", "050105886"},
      {"Focus Mode", "Olympus:FocusMode", "0", "Single AF"},
      {"White Balance", "Olympus:WhiteBalance2", "0", "Auto"}}},
    {"FujiFilm.jpg",
     {{"Version", "FujiFilm:Version", "0130", "0130"},
      {"Quality", "FujiFilm:Quality", "NORMAL", "NORMAL"},
      {"Sharpness", "FujiFilm:Sharpness", "3", "Normal"},
      {"White Balance", "FujiFilm:WhiteBalance", "0", "Auto"},
      {"Flash Mode", "FujiFilm:FujiFlashMode", "3", "Red-eye reduction"},
      {"Macro", "FujiFilm:Macro", "0", "Off"},
      {"Focus Mode", "FujiFilm:FocusMode", "0", "Auto"},
      {"Slow Sync", "FujiFilm:SlowSync", "0", "Off"},
      {"Picture Mode", "FujiFilm:PictureMode", "0", "Auto"},
      {"Blur Warning", "FujiFilm:BlurWarning", "0", "None"},
      {"Focus Warning", "FujiFilm:FocusWarning", "0", "Good"},
      {"Exposure Warning", "FujiFilm:ExposureWarning", "0", "Good"}}},
    // The reader finds the EXIF block of the JPEG inside the RAF container.
    {"FujiFilm.raf",
     {{"Version", "FujiFilm:Version", "0130", "0130"},
      {"Serial Number", "FujiFilm:InternalSerialNumber", "FPX20582698 592D313134360702198C0020100A84",
       "FPX20582698 592D313134360702198C0020100A84"},
      {"Quality", "FujiFilm:Quality", "NORMAL", "NORMAL"},
      {"Sharpness", "FujiFilm:Sharpness", "3", "Normal"},
      {"White Balance", "FujiFilm:WhiteBalance", "0", "Auto"},
      {"Color Saturation", "FujiFilm:Saturation", "0", "Normal"},
      {"Tone", "FujiFilm:Contrast", "0", "Normal"},
      {"Flash Mode", "FujiFilm:FujiFlashMode", "2", "Off"},
      {"Focus Mode", "FujiFilm:FocusMode", "0", "Auto"},
      {"Slow Sync", "FujiFilm:SlowSync", "0", "Off"},
      {"Picture Mode", "FujiFilm:PictureMode", "768", "Manual"},
      {"Dynamic Range", "FujiFilm:DynamicRange", "3", "Wide"},
      {"Film Mode", "FujiFilm:FilmMode", "0", "F0/Standard (Provia)"},
      {"Dynamic Range Setting", "FujiFilm:DynamicRangeSetting", "0", "Auto"}}},
};

TEST(OlympusFujifilmCorpus, MakerRowsAreTheStatedRowsAndAgreeWithExiftool) {
    VV_REQUIRE_CORPUS();
    for (const Sample& sample : kSamples) {
        SCOPED_TRACE(sample.file);
        const std::string path = corpus::Path(sample.file);
        corpus::ExpectMakerRows(path, sample.rows, corpus::Exiftool(path, "-n"));
    }
}

}  // namespace
