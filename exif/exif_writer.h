// Giving a JPEG without EXIF data a small EXIF block: the twelve fields the
// creation dialog offers, and the writer that inserts them as a new APP1
// "Exif" segment right after the start-of-image marker.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tag_record.h"

namespace exif {

// Where a row's entry goes; kept in the first byte of the row's name field.
enum CreatorDirectory : uint8_t { kCreatorIfd0 = 0, kCreatorExifIfd = 1 };

struct CreatorField {
    const char* label;  // the text the dialog shows
    uint16_t tag;
    uint16_t type;      // the TIFF type written
    uint8_t directory;
};

// The twelve fields in dialog order, then the Exif-IFD pointer row. Title
// shares 33432 with Copyright on purpose: files made so far carry it there.
inline constexpr CreatorField kCreatorFields[] = {
    {"Image Description", 270, 2, kCreatorIfd0},
    {"Camera maker", 271, 2, kCreatorIfd0},
    {"Camera model", 272, 2, kCreatorIfd0},
    {"Program name", 305, 2, kCreatorIfd0},
    {"Rating (number: 0 - 5)", 18246, 3, kCreatorIfd0},
    {"Copyright", 33432, 2, kCreatorIfd0},
    {"Title *", 33432, 1, kCreatorIfd0},
    {"Comment *", 40092, 1, kCreatorIfd0},
    {"Author *", 40093, 1, kCreatorIfd0},
    {"Tags *", 40094, 1, kCreatorIfd0},
    {"Subject *", 40095, 1, kCreatorIfd0},
    {"Date Taken (YYYY:MM:DD hh:mm:ss)", 36867, 2, kCreatorExifIfd},
    {"", 34665, 4, kCreatorIfd0},  // not shown: the Exif-IFD pointer
};
inline constexpr uint32_t kCreatorRowCount = sizeof(kCreatorFields) / sizeof(kCreatorFields[0]);
inline constexpr uint32_t kCreatorVisibleRows = kCreatorRowCount - 1;
inline constexpr uint32_t kCreatorDateRow = 11;
inline constexpr uint32_t kCreatorRatingRow = 4;
inline constexpr uint32_t kCreatorPointerRow = 12;
inline constexpr uint16_t kCreatorMaxRating = 5;

// Zeroes the rows and sets tag, type and directory byte from kCreatorFields
// (count 1 for the pointer row); the values are left empty.
void InitCreatorRows(TagRecord (&rows)[kCreatorRowCount]);

// The local time as Date Taken shows it by default: "YYYY:MM:DD hh:mm:ss".
std::string DefaultDateTaken();

// Puts `text` (UTF-8) into a row's value, cut to the value capacity at a
// character boundary.
void SetCreatorValue(TagRecord& row, std::string_view text);

// The TIFF directories for the rows with a value (the values are UTF-8 text;
// the BYTE rows are written as UTF-16LE with a NUL character, the Rating as
// a SHORT): everything after the IFD0 entry count, with offsets counted from
// the TIFF header at IFD0 offset 8. Returns false with the reason appended to
// errorText when there is nothing to write or a value is refused.
bool BuildExifBlock(const TagRecord* rows, uint32_t rowCount, std::vector<uint8_t>& block,
                    uint16_t& ifd0Entries, std::u16string& errorText);

// Inserts the rows as a new EXIF segment. Returns non-zero on success; 0
// with "ERROR: " and the reason in errorText, the file untouched.
int WriteExifToJpeg(std::u16string_view path, const TagRecord* rows, uint32_t rowCount, int keepDate,
                    std::u16string& errorText);

}  // namespace exif
