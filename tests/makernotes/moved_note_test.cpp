// Maker notes read somewhere else than where they were written: Canon notes
// that editing software moved without changing the offsets inside them, and
// notes a DNG keeps in its private data (tag 50740). Each file goes through
// the whole walker, which hands the note over with its length.
#include <string>
#include <vector>

#include "exif/exif_reader.h"
#include "note_harness.h"

namespace {

using namespace notetest;
using fixture::JpegBuilder;
using fixture::TiffBuilder;

// "name=value" of the rows under the maker-note heading.
Texts MakerRowTexts(const Bytes& file) {
    auto table = std::make_unique<exif::TagRecordTable>();
    uint32_t count = 0;
    int bigEndian = 0;
    const auto input = platform::Input::FromMemory(file.data(), file.size());
    exif::ReadExifTags(*input, *table, &count, &bigEndian, makernotes::StandardMakerNoteRules());
    Texts out;
    bool inNote = false;
    for (uint32_t i = 0; i < count; ++i) {
        const std::string name = table->rows[i].name;
        if (name == "Maker Note (Vendor):") {
            inNote = true;
            out.push_back(name);
        } else if (inNote && !name.empty() && name.back() != ':') {
            out.push_back(name + "=" + table->rows[i].value);
        } else {
            inNote = false;
        }
    }
    exif::FreeTagRecordTable(table.get(), 0);
    return out;
}

// ------------------------------------------------------------ Canon

// A compact camera's note: its settings, shot info and texts lie after the
// directory; `origin` is where the note was written, from the TIFF header.
Bytes CanonNote(ByteOrder o, int64_t origin) {
    MakerNoteBuilder n(o);
    n.OutOfLine(1, fixture::kShort, 46,
                Shorts(o, {92, 2, 0, 3, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0x4000 | 100, 3, 2, 0x3001, 1, 0, 0,
                           2300, 460, 100, 96, 192, 0, 0, 0, 0, 0, 0, 1, 28, 4608, 4608, 0, 0, 0, 0, 0, 0, 0, 0}));
    n.OutOfLine(4, fixture::kShort, 34,
                Shorts(o, {68, 0, 160, 256, 96, 224, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                           0, 0, 0, 0, 0, 0, 0, 0}));
    n.Ascii(6, "IMG:PowerShot S95 JPEG").Ascii(7, "Firmware Version 1.00");
    return n.Build(origin);
}

// The note with the camera's record of where it wrote it as its last eight
// bytes: the note's byte order and its offset.
Bytes WithRecord(Bytes note, ByteOrder o, uint32_t offset) {
    fixture::Append(note, fixture::ToBytes(o == kLE ? std::string("II*\0", 4) : std::string("MM\0*", 4)));
    fixture::PutU32(note, offset, o);
    return note;
}

// A JPEG whose Exif directory holds `note`, placed after `padding` bytes of
// padding (tag 0xEA1C, which editing software adds) in IFD0.
Bytes CanonJpeg(ByteOrder o, const Bytes& note, size_t padding) {
    TiffBuilder t(o);
    const int exif = t.AddIfd();
    t.Ascii(0, 271, "Canon").Ascii(0, 272, "Canon PowerShot S95").Pointer(0, 34665, exif);
    if (padding) t.Blob(0, 0xEA1C, Bytes(padding, 0));
    t.Blob(exif, 37500, note);
    return JpegBuilder().Soi().App1Exif(t.Build()).ScanAndEoi().Build();
}

// Where the note lands in CanonJpeg, from the TIFF header.
uint32_t NoteOffset(size_t padding) { return 8 + static_cast<uint32_t>(padding + padding % 2); }

// What exiftool 12.57 prints for each of these rows of the files below (run
// on the bytes written to a file): the moved notes read as the unmoved one,
// exiftool saying it adjusted the base by 400 and by -1000.
const Texts kCanonRows{
    "Maker Note (Vendor):",
    "Image Type=IMG:PowerShot S95 JPEG", "Firmware Version=Firmware Version 1.00",
    "Macro Mode=Normal", "Self Timer=Off", "Quality=Fine", "Flash Mode=Off", "Drive Mode=Single",
    "Focus Mode=One-shot AF", "Record Mode=JPEG", "Image Size=Large", "Easy Mode=Manual", "Digital Zoom=None",
    "Contrast=Normal", "Saturation=Normal", "Sharpness=0", "Camera ISO=100", "Metering Mode=Evaluative",
    "Focus Range=Not Known", "AF Point=Auto AF point selection", "Exposure Mode=Program AE",
    "Max Focal Length=23 mm", "Min Focal Length=4.6 mm", "Focal Units=100/mm", "Max Aperture=2.8",
    "Min Aperture=8", "Flash Activity=0", "Flash Details=(none)", "Focus Continuous=Single",
    "AE Setting=Normal AE", "Image Stabilization=On", "Display Aperture=2.8", "Zoom Source Width=4608",
    "Zoom Target Width=4608", "Spot Metering Mode=Center", "Photo Effect=Off", "Manual Flash Output=n/a",
    "Color Tone=Normal", "Auto ISO=100", "Base ISO=100", "Measured EV=13.00", "Target Aperture=2.8",
    "Target Exposure Time=1/128", "Exposure Compensation=0", "White Balance=Daylight", "Slow Shutter=Off",
    "Sequence Number=0", "Optical Zoom Code=0", "Flash Guide Number=0", "Flash Exposure Compensation=0",
    "Auto Exposure Bracketing=Off", "AEB Bracket Value=0", "Control Mode=n/a", "Bulb Duration=0",
    "Camera Type=n/a", "Auto Rotate=None", "ND Filter=Off", "Self Timer 2=0", "Flash Output=0",
};

TEST(MovedNote, CanonNoteReadWhereItWasWritten) {
    for (ByteOrder o : {kLE, kBE}) {
        SCOPED_TRACE(o == kLE ? "II" : "MM");
        // Unmoved, moved 400 bytes on by padding put before it, and moved
        // 1000 bytes back (its offsets then count from before the file).
        const Bytes unmoved = CanonNote(o, NoteOffset(0)), written1000On = CanonNote(o, NoteOffset(1000));
        EXPECT_EQ(MakerRowTexts(CanonJpeg(o, WithRecord(unmoved, o, NoteOffset(0)), 0)), kCanonRows);
        EXPECT_EQ(MakerRowTexts(CanonJpeg(o, WithRecord(unmoved, o, NoteOffset(0)), 400)), kCanonRows);
        EXPECT_EQ(MakerRowTexts(CanonJpeg(o, WithRecord(written1000On, o, NoteOffset(1000)), 0)), kCanonRows);
        // Older bodies keep no record: the values, which end where the note
        // ends, show the move (exiftool only suggests these two fixes).
        EXPECT_EQ(MakerRowTexts(CanonJpeg(o, unmoved, 400)), kCanonRows);
        EXPECT_EQ(MakerRowTexts(CanonJpeg(o, written1000On, 0)), kCanonRows);
    }
}

TEST(MovedNote, CanonNoteWhoseOffsetsFitItIsReadAsItStands) {
    for (ByteOrder o : {kLE, kBE}) {
        SCOPED_TRACE(o == kLE ? "II" : "MM");
        // Software that moved the note 400 bytes on and changed its offsets
        // but not the record.
        EXPECT_EQ(MakerRowTexts(CanonJpeg(o, WithRecord(CanonNote(o, NoteOffset(400)), o, NoteOffset(0)), 400)),
                  kCanonRows);
        // A record naming another place, and one offset pointing far out:
        // no distance brings every value into the note, so none is applied
        // and the other values read where they stand.
        MakerNoteBuilder n(o);
        n.Ascii(6, "IMG:PowerShot S95 JPEG").Ascii(7, "Firmware Version 1.00");
        n.Field(9, fixture::kAscii, 32, Longs(o, {0x7FFFFFF0}));
        EXPECT_EQ(MakerRowTexts(CanonJpeg(o, WithRecord(n.Build(NoteOffset(0)), o, NoteOffset(0) + 64), 0)),
                  (Texts{"Maker Note (Vendor):", "Image Type=IMG:PowerShot S95 JPEG",
                         "Firmware Version=Firmware Version 1.00", "Owner Name="}));
    }
}

// ------------------------------------------------------------ DNG private data

// A DNG's IFD0 with Make, Model and the private data (tag 50740).
Bytes Dng(ByteOrder o, const char* make, const char* model, const Bytes& privateData) {
    return TiffBuilder(o).Ascii(0, 271, make).Ascii(0, 272, model).Blob(0, 50740, privateData).Build();
}

// Adobe's private data: a block before the note's, then the "MakN" block
// with the note's byte order and its offset in the file it came from.
Bytes AdobePrivateData(ByteOrder noteOrder, uint32_t original, const Bytes& note) {
    Bytes out = fixture::ToBytes(std::string("Adobe\0" "CRW ", 10));
    fixture::PutU32(out, 4, kBE);
    fixture::Append(out, Bytes{1, 2, 3, 4});
    fixture::Append(out, fixture::ToBytes("MakN"));
    fixture::PutU32(out, static_cast<uint32_t>(6 + note.size()), kBE);
    fixture::Append(out, fixture::ToBytes(noteOrder == kLE ? "II" : "MM"));
    fixture::PutU32(out, original, kBE);
    fixture::Append(out, note);
    return out;
}
// Where the note starts in AdobePrivateData.
constexpr uint32_t kAdobeNote = 10 + 4 + 4 + 4 + 4 + 6;

// What exiftool 12.57 prints for the camera's notes below (the bytes written
// to a file).
const Texts kPentaxRows{
    "Maker Note (Vendor):", "Pentax Model ID=K-30", "Quality=RAW", "Pentax Model ID=K-30",
    "Manufacture Date=2012:06:20", "Production Code=2.1", "Internal Serial Number=7034155",
};

// A Pentax note with its camera information after the directory; `header`
// is "AOC\0" + mark or "PENTAX \0" + mark.
Bytes PentaxNote(ByteOrder o, const std::string& header, int64_t origin) {
    MakerNoteBuilder n(o);
    n.Header(header).Long(5, 77650).Short(8, 4);
    n.OutOfLine(0x215, fixture::kLong, 5, Longs(o, {77650, 20120620, 2, 1, 7034155}));
    return n.Build(origin);
}

TEST(DngPrivateData, ConvertersNoteReadAsInTheFileItCameFrom) {
    for (ByteOrder dng : {kLE, kBE}) {
        for (ByteOrder o : {kLE, kBE}) {
            SCOPED_TRACE(std::string(dng == kLE ? "II" : "MM") + " file, " + (o == kLE ? "II" : "MM") + " note");
            // The note came from further on in its file, or from nearer its start.
            for (uint32_t original : {uint32_t{2000}, uint32_t{12}}) {
                const Bytes note = WithRecord(CanonNote(o, original), o, original);
                EXPECT_EQ(MakerRowTexts(Dng(dng, "Canon", "Canon PowerShot S95", AdobePrivateData(o, original, note))),
                          kCanonRows);
                // A note that carries no record of its own, in the order the block gives.
                const Bytes pentax = PentaxNote(o, std::string(o == kLE ? "AOC\0II" : "AOC\0MM", 6), original);
                EXPECT_EQ(MakerRowTexts(Dng(dng, "PENTAX Corporation", "PENTAX K-30",
                                            AdobePrivateData(o, original, pentax))),
                          kPentaxRows);
            }
        }
    }
}

TEST(DngPrivateData, CamerasOwnNoteCountsFromItsStart) {
    for (ByteOrder o : {kLE, kBE}) {
        SCOPED_TRACE(o == kLE ? "II" : "MM");
        // The mark says "MM" whatever the order, as the cameras write it.
        const Bytes note = PentaxNote(o, std::string("PENTAX \0MM", 10), 0);
        EXPECT_EQ(MakerRowTexts(Dng(o, "RICOH IMAGING COMPANY, LTD.", "PENTAX K-30", note)), kPentaxRows);
    }
}

TEST(DngPrivateData, OtherPrivateDataHoldsNoNote) {
    const Bytes adobe = AdobePrivateData(kLE, 100, CanonNote(kLE, 100));
    Bytes cut(adobe.begin(), adobe.begin() + kAdobeNote - 2);  // the record's head cut short
    Bytes otherBlock = adobe;
    otherBlock[kAdobeNote - 11] = 'X';  // "MakX": a block of another kind
    Bytes unmarked = adobe;
    unmarked[kAdobeNote - 6] = 'X';     // neither "II" nor "MM"
    for (const Bytes& data : {fixture::ToBytes("Leica maker data"), cut, otherBlock, unmarked})
        EXPECT_EQ(MakerRowTexts(Dng(kLE, "Canon", "Canon PowerShot S95", data)), Texts{});
}

}  // namespace
