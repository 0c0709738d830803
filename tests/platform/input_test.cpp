// The input every reader reads through: a file seen through a read-ahead
// window must give the bytes the file holds, wherever the reads fall against
// the window's edges, and end where the file ends.
#include <gtest/gtest.h>

#include <vector>

#include "fixture/fixture.h"
#include "platform/input.h"

namespace {

TEST(Input, FileThroughTheWindowReadsAsTheBytesInMemory) {
    fixture::Bytes bytes(3 * platform::Input::kWindowSize + 100);
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 7 + i / 251);
    fixture::TempDir dir;
    auto file = platform::Input::Open(dir.Write("big.bin", bytes));
    auto memory = platform::Input::FromMemory(bytes.data(), bytes.size());
    ASSERT_TRUE(file && memory);

    const int64_t w = platform::Input::kWindowSize, end = static_cast<int64_t>(bytes.size());
    // Across an edge, backwards into an earlier window, larger than a window,
    // running over the end, and wholly past it.
    const std::pair<int64_t, size_t> reads[] = {{w - 3, 8}, {5, 4},          {w + 1, size_t(w) + 9},
                                                {2 * w - 1, 2}, {end - 6, 16}, {end + 40, 4}};
    for (const auto& [at, n] : reads) {
        std::vector<uint8_t> a(n), b(n);
        ASSERT_TRUE(file->Seek(at));
        ASSERT_TRUE(memory->Seek(at));
        const size_t got = file->Read(a.data(), n);
        EXPECT_EQ(got, memory->Read(b.data(), n)) << at;
        EXPECT_EQ(a, b) << at;
        EXPECT_EQ(file->Tell(), std::min(at + static_cast<int64_t>(n), std::max(at, end))) << at;
    }
    EXPECT_FALSE(file->Seek(-1));
    EXPECT_EQ(file->Size(), end);
    // The file under the window allows a seek past its end, and reads nothing there.
    auto raw = platform::OpenFile(dir.Path("big.bin"), platform::FileMode::kRead);
    ASSERT_TRUE(raw && raw->Seek(end + 1));
    EXPECT_EQ(raw->Read(bytes.data(), 1), 0u);
}

TEST(Cursor, FailureStaysSetAndChildrenKeepInsideTheirParent) {
    const uint8_t bytes[] = {'M', 'M', 0, 42, 0, 0, 0, 8, 0xAB, 0xCD};
    auto input = platform::Input::FromMemory(bytes, sizeof bytes);
    platform::Cursor in(*input, platform::ByteOrder::kBig);
    EXPECT_EQ(in.U16(), 0x4D4D);
    EXPECT_EQ(in.U16(), 42);
    EXPECT_EQ(in.U32(), 8u);
    platform::Cursor child = in.Child(100);  // declared larger than what is left
    EXPECT_EQ(child.end(), sizeof bytes);
    child.SetOrder(platform::ByteOrder::kLittle);
    EXPECT_EQ(child.U16(), 0xCDAB);
    EXPECT_EQ(child.U8(), 0);  // past the end: zero, and the flag is set
    EXPECT_FALSE(child.ok());
    EXPECT_TRUE(child.Seek(child.begin()));
    EXPECT_FALSE(child.ok());  // ...and stays set
    EXPECT_FALSE(child.Child(1).ok());  // ...and a child of a failed cursor starts failed
    EXPECT_FALSE(child.ChildAt(child.begin(), 1).ok());
    EXPECT_TRUE(in.ok());
    EXPECT_FALSE(in.ChildAt(sizeof bytes + 1, 1).ok());
}

TEST(Cursor, SomeKeepsWhatARangeCutShortHolds) {
    const uint8_t bytes[] = {1, 2, 3, 4, 5, 6};
    auto input = platform::Input::FromMemory(bytes, sizeof bytes);
    platform::Cursor in(*input, platform::ByteOrder::kLittle);
    uint8_t out[4] = {9, 9, 9, 9};
    platform::Cursor cut = in.ChildAt(3, 100);  // the input ends first
    EXPECT_EQ(cut.Some(out, sizeof out), 3u);
    EXPECT_EQ(out[0], 4);
    EXPECT_EQ(out[2], 6);
    EXPECT_EQ(out[3], 9);  // not written
    EXPECT_EQ(cut.Some(out, sizeof out), 0u);
    EXPECT_TRUE(cut.ok());  // a short read is no failure
    platform::Cursor two = in.ChildAt(1, 2);  // the range ends first
    EXPECT_EQ(two.Some(out, sizeof out), 2u);
    EXPECT_EQ(out[1], 3);
    EXPECT_EQ(in.ChildAt(sizeof bytes + 1, 4).Some(out, sizeof out), 0u);  // wholly past the end
}

}  // namespace
