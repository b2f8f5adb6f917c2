#include "core/attributes.h"

#include "core/files.h"
#include "support/temporary_root.h"

#include <cmath>

#include <gtest/gtest.h>

TEST(Attributes, Unescape)
{
    struct CCase {
        const char* escaped;
        const char* text;
    };
    const CCase cases[] = {
        {"100%", "100"}, {"5%zz", "5%zz"},   {"%41", "A"},     {"a+b", "a b"},
        {"%4", ""},      {"%4g%42", "%4gB"}, {"%%41", "%%41"}, {"x%aFy", "x\xAFy"},
    };
    for (const CCase& c : cases) EXPECT_EQ(unescape_string(c.escaped), c.text) << c.escaped;
    EXPECT_EQ(unescape_multiple("%2541"), "A");
    EXPECT_EQ(unescape_multiple("%252525"), "");
}

TEST(Attributes, EscapeIsReversibleForEveryByte)
{
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    const std::string escaped = escape_string(all);
    EXPECT_EQ(escaped.find_first_of("&=\n\r \""), std::string::npos);
    EXPECT_EQ(unescape_string(escaped), all);
    EXPECT_EQ(escape_string("a b&=\xE9~-_.!*'()$"), "a+b%26%3d%e9%7e-_.!*'()$");
}

TEST(Attributes, StringsOfPairs)
{
    struct CCase {
        const char* text;
        const char* pairs;
    };
    const CCase cases[] = {
        {"a=1&b=2", "a=1&b=2"}, {" a = 1 &\tb=2\r\n", "a=1&b=2"},
        {"a&b=2", "b=2"},       {"a=&b=2&=3", "b=2"},
        {"a=1&a=2", "a=2"},     {"a=b=c", "a=b%3dc"},
        {"&&&a=1&", "a=1"},     {"", ""},
        {"a=x%26y", "a=x%26y"}, {"a=%20", "a=+"},
    };
    for (const CCase& c : cases) {
        CAttributes map;
        map.AddString(c.text);
        EXPECT_EQ(map.ToString(), c.pairs) << c.text;
    }
}

TEST(Attributes, TypedValues)
{
    CAttributes map;
    map.AddString("hex=0x10&oct=010&neg=0xffffffff&bad=x&t=True&f=F&dec=1,5&bytes=0aFFg&empty=");
    EXPECT_EQ(map.GetInt("hex", 0), 16);
    EXPECT_EQ(map.GetInt("oct", 0), 8);
    EXPECT_EQ(map.GetInt("neg", 0), -1);
    EXPECT_EQ(map.GetInt("bad", 42), 42);
    EXPECT_EQ(map.GetInt("absent", 43), 43);
    EXPECT_TRUE(map.GetBool("t"));
    EXPECT_FALSE(map.GetBool("f"));
    EXPECT_FALSE(map.GetBool("absent"));
    EXPECT_FALSE(map.Has("empty"));
    EXPECT_EQ(map.GetDecimal("dec", 0.0), 1.0);
    unsigned char bytes[2] = {};
    EXPECT_EQ(map.GetData("bytes", bytes, 2), 2);
    EXPECT_EQ(bytes[1], 0xFF);
    map.SetDecimal("d", 0.1);
    EXPECT_EQ(map.Get("d"), "0.1000000000");
    map.SetDecimal("d", 5.0);
    EXPECT_EQ(map.Get("d"), "5.000000000");
    map.SetDecimal("d", std::nan(""));
    EXPECT_EQ(map.Get("d"), "5.000000000");
    map.SetInt("i", -1);
    EXPECT_EQ(map.Get("i"), "0xffffffff");
    map.SetNumberedInt("n", 3, 7);
    EXPECT_EQ(map.Get("n[3]"), "0x7");
    std::string out = "old";
    EXPECT_FALSE(map.GetIfPresent("absent", out));
    EXPECT_EQ(out, "");
}

TEST(Attributes, FilesKeepEveryValueAndSkipComments)
{
    const CTemporaryRoot root;
    CAttributes map;
    map.Set("odd", "a=b&c\nd%\xFF e");
    map.Set("empty", "");
    ASSERT_TRUE(map.ToFile(root.file("f.ini")));
    std::string bytes;
    ASSERT_TRUE(read_whole_file(root.file("f.ini"), bytes));
    ASSERT_TRUE(write_to_file(root.file("f.ini"), "# c\n   \n  # d\nkey=\n" + bytes + "last=1"));
    CAttributes back;
    bool damaged = true;
    ASSERT_TRUE(back.AddFile(root.file("f.ini"), &damaged));
    EXPECT_FALSE(damaged);
    EXPECT_EQ(back.Get("odd"), map.Get("odd"));
    EXPECT_EQ(back.Get("last"), "1");
    EXPECT_EQ(back.size(), 2U);
    EXPECT_FALSE(back.AddFile(root.file("none")));
    EXPECT_FALSE(back.AddFile(root.path()));
    EXPECT_EQ(back.size(), 2U);
}
