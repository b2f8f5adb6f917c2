#include "chart/sliced_file.h"
#include "support/temporary_root.h"

#include "core/files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

constexpr long kSecondSlice = 1L << 32;

std::string ReadAll(CMultiThreadedSlicedFile& file, long position, int length)
{
    std::string text(static_cast<std::size_t>(length), '?');
    const int got = file.LockedRead(position, text.data(), length);
    return got < 0 ? "-1" : text.substr(0, static_cast<std::size_t>(got));
}

TEST(SlicedFile, MissingPathBecomesAFolderOfSlicesUnlessReadOnly)
{
    const CTemporaryRoot root;
    CMultiThreadedSlicedFile file;
    EXPECT_FALSE(file.ReOpen(root.file("a").c_str(), CFile64::read_only));
    EXPECT_FALSE(fs::exists(root.file("a")));
    EXPECT_TRUE(file.ReOpen(root.file("a").c_str(), CFile64::read_write));
    EXPECT_TRUE(fs::is_regular_file(root.file("a/0")));
    EXPECT_TRUE(file.LockedWrite2(10, "abc", 3, "defg", 4));
    EXPECT_TRUE(file.LockedWrite(kSecondSlice + 2, "xyz", 3));
    EXPECT_EQ(fs::file_size(root.file("a/1")), 5U);
    CMultiThreadedSlicedFile reader;
    ASSERT_TRUE(reader.ReOpen(root.file("a").c_str(), CFile64::read_only));
    EXPECT_EQ(ReadAll(reader, 10, 100), "abcdefg") << "a read ends with its slice";
    EXPECT_EQ(ReadAll(reader, kSecondSlice + 2, 2), "xy");
    EXPECT_EQ(ReadAll(reader, 2 * kSecondSlice, 2), "-1");
    EXPECT_EQ(reader.LastError(), ENOENT);
    EXPECT_FALSE(reader.LockedWrite(0, "a", 1));
    EXPECT_EQ(reader.AllocAtEnd2(10, 0), -1);
    EXPECT_FALSE(reader.IsDirty());
}

TEST(SlicedFile, PlainFileTakesThePositionWhole)
{
    const CTemporaryRoot root;
    std::ofstream(root.file("one")) << "0123456789";
    CMultiThreadedSlicedFile file;
    ASSERT_TRUE(file.ReOpen(root.file("one").c_str(), CFile64::read_write));
    EXPECT_EQ(ReadAll(file, 4, 3), "456");
    EXPECT_TRUE(file.LockedWrite(kSecondSlice + 5, "z", 1));
    EXPECT_EQ(fs::file_size(root.file("one")), static_cast<std::uintmax_t>(kSecondSlice) + 6);
    EXPECT_EQ(file.AllocAtEnd2(4, 16), kSecondSlice + 16) << "no limit and no slice number in a single file";
}

TEST(SlicedFile, SliceHundredFailsWithoutTouchingTheDisk)
{
    const CTemporaryRoot root;
    CMultiThreadedSlicedFile file;
    ASSERT_TRUE(file.ReOpen(root.file("f").c_str(), CFile64::read_write));
    for (const long position : {100L << 32, 1L << 62, -1L}) {
        EXPECT_FALSE(file.LockedWrite(position, "a", 1));
        EXPECT_EQ(file.LastError(), EINVAL);
    }
    EXPECT_EQ(listDirectory(root.file("f")), std::vector<std::string>{"0"});
    EXPECT_TRUE(file.LockedWrite(99L << 32, "a", 1));
}

TEST(SlicedFile, SpaceIsAlignedAndMovesToTheNextSliceAtItsLimit)
{
    const CTemporaryRoot root;
    CMultiThreadedSlicedFile file;
    ASSERT_TRUE(file.ReOpen(root.file("f").c_str(), CFile64::read_write));
    EXPECT_EQ(file.AllocAtEnd2(5, 0), 0);
    EXPECT_EQ(file.AllocAtEnd2(8, 16), 16);
    EXPECT_EQ(fs::file_size(root.file("f/0")), 24U);
    EXPECT_EQ(file.AllocAtEnd2(0, 16), 32);
    EXPECT_EQ(fs::file_size(root.file("f/0")), 24U) << "a length of 0 only tells the end";
    EXPECT_TRUE(file.IsDirty());
    fs::resize_file(root.file("f/0"), 0xFFFFFFF0U);
    EXPECT_EQ(file.AllocAtEnd2(0x100, 0), kSecondSlice);
    EXPECT_EQ(fs::file_size(root.file("f/1")), 0x100U);
    // A later opening finds the last slice by its name.
    ASSERT_TRUE(file.ReOpen(root.file("f").c_str(), CFile64::read_write));
    EXPECT_EQ(file.AllocAtEnd2(1, 0), kSecondSlice + 0x100);
}

TEST(SlicedFile, NoSliceBehindTheLast)
{
    const CTemporaryRoot root;
    const std::string folder = root.file("f");
    fs::create_directory(folder);
    for (int i = 0; i < 100; ++i) std::ofstream(folder + "/" + std::to_string(i)) << 'a';
    fs::resize_file(folder + "/99", 0xFFFFFFF0U);
    CMultiThreadedSlicedFile file;
    ASSERT_TRUE(file.ReOpen(folder.c_str(), CFile64::read_write));
    EXPECT_EQ(file.AllocAtEnd2(1, 0), (99L << 32) + 0xFFFFFFF0L);
    EXPECT_EQ(file.AllocAtEnd2(0x100, 0), -1);
    EXPECT_EQ(file.LastError(), EINVAL);
}

TEST(SlicedFile, OnlyRegularFilesAreSlices)
{
    const CTemporaryRoot root;
    fs::create_directories(root.file("f/0"));
    CMultiThreadedSlicedFile file;
    EXPECT_FALSE(file.ReOpen(root.file("f").c_str(), CFile64::read_only));
    EXPECT_FALSE(file.ReOpen(root.file("f").c_str(), CFile64::read_write));
    EXPECT_FALSE(file.ReOpen("/dev/null", CFile64::read_write));
}

} // namespace
