#include "core/type_serializer.h"

#include "core/files.h"
#include "support/temporary_root.h"

#include <gtest/gtest.h>

namespace {

std::string FileBytes(const std::string& path)
{
    std::string bytes;
    read_whole_file(path, bytes);
    return bytes;
}

std::span<const std::uint8_t> View(const std::string& bytes)
{
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

} // namespace

TEST(FlatFile, RoundTripAndByteCount)
{
    const CTemporaryRoot root;
    const std::string latin("caf\xE9", 4);
    int number = 7;
    std::string text = latin;
    std::string narrow = "ab";
    char block[3] = {1, 2, 3};
    int block_size = 3;
    CTypeFileOut out(root.file("f"));
    EXPECT_TRUE(out.declaremagic(0x31));
    EXPECT_TRUE(out.declare(number));
    EXPECT_TRUE(out.declare(text));
    out.wide_strings = false;
    EXPECT_TRUE(out.declare(narrow));
    EXPECT_TRUE(out.declaresize(block, block_size));
    EXPECT_EQ(out.byte_count, 4 + 4 + 12 + 6 + 7);
    EXPECT_TRUE(out.Close());
    EXPECT_EQ(FileBytes(root.file("f")).substr(12, 8), std::string("c\0a\0f\0\xE9\xFF", 8));

    CTypeFileIn in(root.file("f"));
    number = block_size = 0;
    char buffer[8] = {};
    EXPECT_TRUE(in.declaremagic(0x31));
    in.declare(number);
    in.declare(text);
    in.wide_strings = false;
    in.getstr(buffer, 2);
    block_size = 8;
    in.declaresize(buffer + 2, block_size);
    EXPECT_TRUE(in.ok);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(text, latin);
    EXPECT_STREQ(buffer, "a");
    EXPECT_EQ(block_size, 3);
    EXPECT_EQ(in.byte_count, 33);
}

TEST(FlatFile, SizesAndFailures)
{
    const auto u32 = [](std::uint32_t value) { return std::string(reinterpret_cast<const char*>(&value), 4); };
    struct CCase {
        const char* name;
        std::string bytes;
        bool ok;
        int size; ///< after reading into 4 bytes
    };
    const CCase sizes[] = {
        {"fits", u32(4) + "abcd" + u32(9), true, 4},
        {"shorter", u32(1) + "a" + u32(9), true, 1},
        {"longer is thrown away", u32(5000) + std::string(5000, 'x') + u32(9), true, 4},
        {"too long", u32(1'000'001) + std::string(1'000'001, 'x') + u32(9), false, 4},
        {"cut", u32(3) + "ab", false, 4},
    };
    for (const CCase& c : sizes) {
        CTypeMemoryIn in(View(c.bytes));
        char buffer[4] = {};
        int size = 4;
        int behind = 0;
        in.declaresize(buffer, size);
        in.declare(behind);
        EXPECT_EQ(in.ok, c.ok) << c.name;
        EXPECT_EQ(behind, c.ok ? 9 : 0) << c.name;
        if (c.ok) {
            EXPECT_EQ(size, c.size) << c.name;
        }
    }
    const CCase texts[] = {
        {"longest", u32(100'000) + std::string(200'000, 'x'), true, 0},
        {"too long", u32(100'001) + std::string(200'002, 'x'), false, 0},
        {"cut", u32(10) + "x", false, 0},
    };
    for (const CCase& c : texts) {
        CTypeMemoryIn in(View(c.bytes));
        std::string text;
        EXPECT_EQ(in.declare(text), c.ok) << c.name;
    }
    CTypeFileIn missing("/nowhere/at/all");
    int untouched = 5;
    EXPECT_FALSE(missing.declare(untouched));
    EXPECT_EQ(untouched, 5);
}
