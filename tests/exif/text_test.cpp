// Text values: UserComment's character codes, long values, padding, and the
// UTF-16 XP tags.
#include <gtest/gtest.h>

#include "exif_reading.h"
#include "fixture/container_fixture.h"

namespace exiftest {
namespace {

using fixture::Join;
using fixture::ToBytes;

Bytes Utf16(const std::u16string& text, ByteOrder order) {
    Bytes out;
    for (char16_t c : text) fixture::PutU16(out, c, order);
    fixture::PutU16(out, 0, order);
    return out;
}

Reading WithUserComment(const Bytes& value, ByteOrder order) {
    TiffBuilder tiff(order);
    const int exif = tiff.AddIfd();
    tiff.Pointer(0, 34665, exif).Undefined(exif, 37510, value);
    return ReadBytes(Jpeg(tiff.Build()));
}

TEST(TextValues, UserCommentCharacterCodes) {
    const Bytes ascii = ToBytes(std::string("ASCII\0\0\0", 8));
    const Bytes unicode = ToBytes(std::string("UNICODE\0", 8));
    struct Case {
        const char* what;
        Bytes value;
        ByteOrder order;
        std::string expected;
    } const cases[] = {
        {"ASCII", Join({ascii, ToBytes("Hello world")}), ByteOrder::kBig, "Hello world"},
        {"ascii in lower case", Join({ToBytes(std::string("ascii\0\0\0", 8)), ToBytes("Hello")}),
         ByteOrder::kLittle, "Hello"},
        {"UNICODE, little-endian file", Join({unicode, Utf16(u"Gr\u00FC\u00DFe", ByteOrder::kLittle)}),
         ByteOrder::kLittle, "Gr\xC3\xBC\xC3\x9F" "e"},
        {"UNICODE, big-endian file", Join({unicode, Utf16(u"Gr\u00FC\u00DFe", ByteOrder::kBig)}), ByteOrder::kBig,
         "Gr\xC3\xBC\xC3\x9F" "e"},
        {"UTF-16 under an ASCII header", Join({ascii, Utf16(u"Hi", ByteOrder::kLittle)}), ByteOrder::kLittle,
         "Hi"},
        // Unknown codes are part of the text; the NUL after "JIS" ends it.
        {"JIS", ToBytes(std::string("JIS\0\0\0\0\0abc", 11)), ByteOrder::kLittle, "JIS"},
        {"undefined (all zeros)", Join({Bytes(8, 0), ToBytes("Hello")}), ByteOrder::kBig, "Hello"},
        {"only zeros", Bytes(20, 0), ByteOrder::kLittle, ""},
    };
    for (const Case& c : cases) EXPECT_EQ(WithUserComment(c.value, c.order).Value(37510), c.expected) << c.what;
}

TEST(TextValues, LongValueFromAStoredCountOf257) {
    struct Case {
        size_t chars;  // the stored count is one more (the NUL)
        size_t inValue, inLongValue;
    } const cases[] = {{255, 255, 0}, {256, 255, 256}, {4000, 255, 3071}};
    for (const Case& c : cases) {
        TiffBuilder tiff;
        tiff.Ascii(0, 270, std::string(c.chars, 'd'));
        const Row row = ReadBytes(Jpeg(tiff.Build())).rows.at(0);
        EXPECT_EQ(row.value, std::string(c.inValue, 'd')) << c.chars;
        EXPECT_EQ(row.longValue, std::string(c.inLongValue, 'd')) << c.chars;
    }
    // UserComment counts its 8 header bytes too.
    const Bytes comment = Join({ToBytes(std::string("ASCII\0\0\0", 8)), Bytes(249, 'c')});
    EXPECT_EQ(WithUserComment(comment, ByteOrder::kLittle).rows.back().longValue, std::string(249, 'c'));
    // Other text tags never get one.
    TiffBuilder tiff;
    tiff.Ascii(0, 305, std::string(400, 's'));
    EXPECT_EQ(ReadBytes(Jpeg(tiff.Build())).rows.at(0).longValue, "");
}

TEST(TextValues, PaddingIsRemovedExceptFromMakeAndModel) {
    TiffBuilder tiff(ByteOrder::kBig);
    tiff.Ascii(0, 271, "Canon  ")
        .Ascii(0, 272, "EOS  ")
        .Ascii(0, 305, "Ver 1.0   ")
        .Entry(0, 315, fixture::kAscii, 5, ToBytes(std::string("\0\0Bob", 5)))
        .Ascii(0, 33432, "AB ");  // stored in the entry
    const Reading r = ReadBytes(Jpeg(tiff.Build()));
    EXPECT_EQ(r.Value(271), "Canon  ");
    EXPECT_EQ(r.Value(272), "EOS  ");
    EXPECT_EQ(r.Value(305), "Ver 1.0");
    EXPECT_EQ(r.Value(315), "Bob");
    EXPECT_EQ(r.Value(33432), "AB");
}

TEST(TextValues, XpTagsAreLittleEndianUtf16InEitherFile) {
    for (ByteOrder order : {ByteOrder::kLittle, ByteOrder::kBig}) {
        TiffBuilder tiff(order);
        tiff.Byte(0, 40091, Utf16(u"T\u00EFtle", ByteOrder::kLittle)).Byte(0, 40093, ToBytes(std::string("A\0B\0", 4)));
        const Reading r = ReadBytes(Jpeg(tiff.Build()));
        EXPECT_EQ(r.Value(40091), "T\xC3\xAFtle");
        EXPECT_EQ(r.Value(40093), "AB");
    }
}

}  // namespace
}  // namespace exiftest
