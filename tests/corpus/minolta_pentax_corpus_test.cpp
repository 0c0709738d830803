// The Minolta and Pentax / Ricoh maker rows of the corpus files, read end to
// end. Each row is stated with exiftool's number for the same tag (exiftool
// -n, keyed by tag ID and name, as Minolta's settings and plain tags share
// names) and our text for it; the test checks both sides. Files of these
// makers whose note we show nothing of are listed with the reason.
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "corpus.h"
#include "exif/exif_reader.h"
#include "exif/tag_record.h"
#include "platform/platform.h"

namespace {

using corpus::MakerExpect;

struct Sample {
    const char* file;
    const char* group;         // exiftool's group of the maker rows
    std::vector<MakerExpect> rows;  // every maker row, in order
};

const Sample kSamples[] = {
    // A DiMAGE 7i: no plain tags beyond the version; the settings in tag 0003.
    {"Minolta.jpg", "Minolta",
     {{"Version", "0x0000 MakerNoteVersion", "MLT0", "MLT0"},
      {"Exposure Mode", "0x0001 ExposureMode", "0", "Program"},
      {"Flash Mode", "0x0002 FlashMode", "0", "Fill flash"},
      {"White Balance", "0x0003 WhiteBalance", "0", "Auto"},
      {"Image Size", "0x0004 MinoltaImageSize", "0", "Full"},
      {"Quality", "0x0005 MinoltaQuality", "2", "Fine"},
      {"Drive Mode", "0x0006 DriveMode", "0", "Single"},
      {"Metering Mode", "0x0007 MeteringMode", "0", "Multi-segment"},
      {"ISO", "0x0008 ISO", "100", "100"},
      {"Exposure Time", "0x0009 ExposureTime", "0.0055242717280199", "1/181"},
      {"F Number", "0x000a FNumber", "5.65685424949238", "F 5.7"},
      {"Macro Mode", "0x000b MacroMode", "0", "Off"},
      {"Digital Zoom", "0x000c DigitalZoom", "0", "Off"},
      {"Exposure Compensation", "0x000d ExposureCompensation", "0", "0 EV"},
      {"Focal Length", "0x0012 FocalLength", "41.3671875", "41.4 mm"},
      {"Focus Distance", "0x0013 FocusDistance", "2", "2.00 m"},
      {"Flash Fired", "0x0014 FlashFired", "0", "No"},
      {"Date", "0x0015 MinoltaDate", "2002:06:01", "2002:06:01"},
      {"Time", "0x0016 MinoltaTime", "12:37:27", "12:37:27"},
      {"Max Aperture", "0x0017 MaxAperture", "3.36358566101486", "F 3.4"},
      {"Sharpness", "0x0021 Sharpness", "1", "Normal"},
      {"ISO Setting", "0x0024 ISOSetting", "0", "100"},
      {"Color Mode", "0x0028 ColorMode", "0", "Natural color"},
      {"Focus Mode", "0x0030 FocusMode", "0", "AF"},
      {"Focus Area", "0x0031 FocusArea", "0", "Wide focus"}}},
    // A DiMAGE A2 raw file: its EXIF sits in the MRW "TTW" block, which the
    // container logic finds. Its white balance is the A2's shifted form.
    {"Minolta.mrw", "Minolta",
     {{"Version", "0x0000 MakerNoteVersion", "MLT0", "MLT0"},
      {"Scene Mode", "0x0100 SceneMode", "0", "Standard"},
      {"Color Mode", "0x0101 ColorMode", "9", "Natural"},
      {"Image Quality", "0x0102 MinoltaQuality", "0", "RAW"},
      {"Exposure Mode", "0x0001 ExposureMode", "3", "Manual"},
      {"Flash Mode", "0x0002 FlashMode", "0", "Fill flash"},
      {"White Balance", "0x0003 WhiteBalance", "8388608", "Auto"},
      {"Image Size", "0x0004 MinoltaImageSize", "3", "640x480"},
      {"Quality", "0x0005 MinoltaQuality", "0", "RAW"},
      {"Drive Mode", "0x0006 DriveMode", "0", "Single"},
      {"Metering Mode", "0x0007 MeteringMode", "0", "Multi-segment"},
      {"ISO", "0x0008 ISO", "70.7106781186548", "71"},
      {"Exposure Time", "0x0009 ExposureTime", "0.192776353175993", "1/5"},
      {"F Number", "0x000a FNumber", "2.70851109387379", "F 2.7"},
      {"Macro Mode", "0x000b MacroMode", "0", "Off"},
      {"Digital Zoom", "0x000c DigitalZoom", "0", "Off"},
      {"Exposure Compensation", "0x000d ExposureCompensation", "0", "0 EV"},
      {"Focal Length", "0x0012 FocalLength", "7.37890625", "7.4 mm"},
      {"Focus Distance", "0x0013 FocusDistance", "0", "Infinity"},
      {"Flash Fired", "0x0014 FlashFired", "0", "No"},
      {"Date", "0x0015 MinoltaDate", "2004:11:18", "2004:11:18"},
      {"Time", "0x0016 MinoltaTime", "23:14:58", "23:14:58"},
      {"Max Aperture", "0x0017 MaxAperture", "2.70851109387379", "F 2.7"},
      {"Sharpness", "0x0021 Sharpness", "1", "Normal"},
      {"ISO Setting", "0x0024 ISOSetting", "5", "64"},
      {"Color Mode", "0x0028 ColorMode", "0", "Natural color"},
      {"Focus Mode", "0x0030 FocusMode", "0", "AF"},
      {"Focus Area", "0x0031 FocusArea", "1", "Spot focus"}}},
    // A K10D, "AOC" header. Its lens (3, 44) is named from our lens table,
    // where exiftool says "Sigma or Tamron Lens (3 44)".
    {"Pentax.jpg", "Pentax",
     {{"Quality", "0x0008 Quality", "1", "Better"},
      {"Flash Mode", "0x000c FlashMode", "1 63", "Off, not fired; internal"},
      {"Focus Mode", "0x000d FocusMode", "16", "AF-S (focus priority)"},
      {"AF Point", "0x000e AFPointSelected", "6", "Center"},
      {"ISO", "0x0014 ISO", "6", "100"},
      {"White Balance", "0x0019 WhiteBalance", "0", "Auto"},
      {"Saturation", "0x001f Saturation", "1", "Normal"},
      {"Contrast", "0x0020 Contrast", "1", "Normal"},
      {"Sharpness", "0x0021 Sharpness", "1", "Normal"},
      {"World Time Location", "0x0022 WorldTimeLocation", "0", "Hometown"},
      {"Home Town City", "0x0023 HometownCity", "11", "Toronto"},
      {"Destination City", "0x0024 DestinationCity", "12", "New York"},
      {"Picture Mode", "0x0033 PictureMode", "5 0 1", "Aperture Priority, 1/3 EV steps"},
      {"Lens Type", "0x0000 LensType", "3 44", "Sigma AF 10-20mm F4-5.6 EX DC"}}},
};

// Ricoh files whose note is not in the Pentax form: the dispatch still runs
// the Pentax decoder at note + 6, and we show no maker rows. The exiftool tag
// confirms the note's form.
struct Silent {
    const char* file;
    const char* exiftool;  // "Group:0xNNNN Name"
    const char* number;
    const char* why;
};

const Silent kSilent[] = {
    {"Ricoh.jpg", "Ricoh:0x0001 MakerNoteType", "RDC",
     "Ricoh's own directory after \"RICOH\\0\\0\\0\": the word at note + 6 is 0, an empty directory"},
    {"Ricoh2.jpg", "Ricoh:0x0001 MakerNoteType", "Rdc",
     "Ricoh's own directory after \"Ricoh\\xCF\\0\\0\": the word at note + 6 is 0, an empty directory"},
};

TEST(MinoltaPentaxCorpus, MakerRowsAreTheStatedRowsAndAgreeWithExiftool) {
    VV_REQUIRE_CORPUS();
    for (const Sample& sample : kSamples) {
        SCOPED_TRACE(sample.file);
        const std::string path = corpus::Path(sample.file);
        corpus::ExpectMakerRows(path, sample.rows, corpus::ExiftoolByTagId(path), std::string(sample.group) + ":");
    }
}

TEST(MinoltaPentaxCorpus, RicohNotesOfTheirOwnFormShowNoRows) {
    VV_REQUIRE_CORPUS();
    for (const Silent& s : kSilent) {
        SCOPED_TRACE(std::string(s.file) + ": " + s.why);
        const std::string path = corpus::Path(s.file);
        const auto exiftool = corpus::ExiftoolByTagId(path);
        const auto it = exiftool.find(s.exiftool);
        EXPECT_EQ(it == exiftool.end() ? std::string("<none>") : it->second, s.number);
        EXPECT_TRUE(corpus::HasMakerHeading(path)) << "the note is reached";
        EXPECT_TRUE(corpus::MakerRows(path).empty());
    }
}

TEST(MinoltaPentaxCorpus, GpsSampleIsAFujifilmFile) {
    // GPS.jpg is named among the files to check; its camera is a Fujifilm,
    // whose note neither decoder here reads.
    VV_REQUIRE_CORPUS();
    const auto exiftool = corpus::ExiftoolByTagId(corpus::Path("GPS.jpg"));
    const auto make = exiftool.find("IFD0:0x010f Make");
    EXPECT_EQ(make == exiftool.end() ? std::string("<none>") : make->second, "FUJIFILM");
    for (const auto& tag : exiftool)
        for (const char* group : {"Minolta:", "Pentax:", "Ricoh:"})
            EXPECT_NE(tag.first.rfind(group, 0), 0u) << tag.first;
}

}  // namespace
