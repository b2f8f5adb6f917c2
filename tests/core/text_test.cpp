#include "core/text.h"

#include "core/file_names.h"
#include "core/graphics_color.h"
#include "core/lines.h"
#include "core/numbers.h"
#include "support/temporary_root.h"

#include <clocale>
#include <cmath>
#include <ctime>

#include <gtest/gtest.h>

TEST(FileNames, Parts)
{
    struct CCase {
        const char* path;
        const char* folder;
        const char* base;
        const char* file;
        const char* ext;
    };
    const CCase cases[] = {
        {"/maps/a.rlt", "/maps", "a", "a.rlt", "rlt"},
        {"a.rlt", ".", "a", "a.rlt", "rlt"},
        {"/v1.2/chart", "/v1.2", "chart", "chart", ""},
        {"/a/b.tar.gz", "/a", "b.tar", "b.tar.gz", "gz"},
        {"/a", "", "a", "a", ""},
        {"/a/", "/a", "", "", ""},
        {"", ".", "", "", ""},
        {"x.", ".", "x", "x.", ""},
    };
    for (const CCase& c : cases) {
        EXPECT_EQ(dirname(c.path), c.folder) << c.path;
        EXPECT_EQ(basename(std::string(c.path)), c.base) << c.path;
        EXPECT_EQ(filename(c.path), c.file) << c.path;
        EXPECT_EQ(extension(c.path), c.ext) << c.path;
    }
    EXPECT_EQ(filename_with_extension("/v1.2/chart", "rlt"), "/v1.2/chart.rlt");
    EXPECT_EQ(filename_with_extension("/v1/chart.qed", "rlt"), "/v1/chart.rlt");
    EXPECT_TRUE(filename_has_extension("A.RLTxxx", 5, "rlt"));
    EXPECT_FALSE(filename_has_extension("rlt", 3, "rlt"));
    std::string path = "/A.B/C.RLT";
    make_extension_lower_case(path);
    EXPECT_EQ(path, "/A.B/C.rlt");
}

TEST(Text, NaturalOrder)
{
    const char* ascending[] = {"",
                               "1",
                               "2",
                               "10",
                               "a",
                               "A1",
                               "a2",
                               "a10",
                               "a10b",
                               "B",
                               "chart 9",
                               "chart 0010",
                               "chart 99999999999999999999999"};
    for (std::size_t i = 1; i < std::size(ascending); ++i) {
        EXPECT_LT(alnumcmp(ascending[i - 1], ascending[i]), 0) << ascending[i - 1] << " | " << ascending[i];
        EXPECT_GT(alnumcmp(ascending[i], ascending[i - 1]), 0);
    }
    EXPECT_EQ(alnumcmp("a007", "A7"), 0);
}

TEST(Text, Urls)
{
    struct CCase {
        const char* url;
        bool splits;
        const char* host;
        int port;
        const char* path;
    };
    const CCase cases[] = {
        {"https://h.example/a/b", true, "h.example", 0, "/a/b"},
        {"http://h.example:8080", true, "h.example", 8080, ""},
        {"http://[::1]:81/x", true, "[::1]", 81, "/x"},
        {"http://[::1]/x", true, "[::1]", 0, "/x"},
        {"/just/a/path", false, "", 0, ""},
        {"://h/", false, "", 0, ""},
        {"http:///path", false, "", 0, ""},
        {"http://h:99999/", false, "", 0, ""},
        {"http://h:8x/", false, "", 0, ""},
        {"http://h:-1/", false, "", 0, ""},
    };
    for (const CCase& c : cases) {
        std::string scheme;
        std::string host;
        std::string path;
        int port = 0;
        EXPECT_EQ(MParseURL(c.url, scheme, host, port, path), c.splits) << c.url;
        EXPECT_EQ(host, c.host) << c.url;
        EXPECT_EQ(port, c.port) << c.url;
        EXPECT_EQ(path, c.path) << c.url;
    }
}

TEST(Text, SearchesAndSplits)
{
    const char* text = "Harbour Chart";
    EXPECT_EQ(stristr_upper(text, "CHART"), text + 8);
    EXPECT_EQ(stristr_upper(text, ""), text);
    EXPECT_EQ(stristr_upper(text, "CHARTS"), nullptr);
    EXPECT_LT(_tcsicmp("abc", "ABD"), 0);
    std::vector<std::string> pieces = {"kept"};
    break_string_args("  a b  c", ' ', pieces);
    EXPECT_EQ(pieces, (std::vector<std::string>{"kept", "a", "b", "c"}));
    EXPECT_EQ(Latin1ToUtf8("K\xF8"
                           "benhavn"),
              "København");
    EXPECT_EQ(stringprintf("%s", std::string(1000, 'x').c_str()).size(), 1000U);
}

TEST(Text, DateFieldsInTemplates)
{
    std::tm noon{};
    noon.tm_year = 126;
    noon.tm_mon = 6;
    noon.tm_mday = 4;
    noon.tm_hour = 12;
    noon.tm_isdst = -1;
    const auto time = static_cast<double>(std::mktime(&noon));
    EXPECT_EQ(ExpandDateAndTime("T %Y-%m-%d %H #", time), "T 2026-07-04 12 #");
    EXPECT_EQ(ExpandDateAndTime("%RP# 100% %Q %", time), "%RP# 100% %Q %");
    EXPECT_FALSE(ExpandDateAndTime("%Y", std::nan("")).empty());
}

TEST(Numbers, Doubles)
{
    struct CCase {
        const char* text;
        std::optional<double> value;
    };
    const CCase cases[] = {
        {"1.5", 1.5},
        {" \t-2.25 knots", -2.25},
        {"+3", 3.0},
        {"1,5", 1.0},
        {".5", 0.5},
        {"1e-400", 0.0},
        {"1e400", {}},
        {"inf", {}},
        {"nan", {}},
        {"", {}},
        {"-", {}},
        {"+-1", {}},
        {"--1", {}},
        {"knots", {}},
        {"5130.123", 5130.123},
    };
    for (const CCase& c : cases) EXPECT_EQ(ParseDouble(c.text), c.value) << c.text;
}

TEST(Numbers, IntegersAre32BitPatterns)
{
    struct CCase {
        const char* text;
        std::optional<int> value;
    };
    const CCase cases[] = {
        {"10", 10},
        {"0x10", 16},
        {"010", 8},
        {"0xffffffff", -1},
        {"0x80000000", -2147483647 - 1},
        {"4294967295", -1},
        {"4294967296", {}},
        {"-2147483648", -2147483647 - 1},
        {"-2147483649", {}},
        {"0", 0},
        {" -7x", -7},
        {"99999999999999999999999", {}},
        {"x", {}},
        {"", {}},
        {"0x", {}},
        {"T", {}},
    };
    for (const CCase& c : cases) EXPECT_EQ(ParseInt(c.text), c.value) << c.text;
}

TEST(Numbers, DoNotFollowTheLocale)
{
    const CTemporaryRoot root;
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
        const std::string make = "localedef -i de_DE -f UTF-8 '" + root.file("de_DE.UTF-8") + "' 2>/dev/null";
        setenv("LOCPATH", root.path().c_str(), 1);
        if (std::system(make.c_str()) != 0 || std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
            GTEST_SKIP() << "no locale with a decimal comma can be had here";
    }
    char comma[8];
    std::snprintf(comma, sizeof comma, "%.1f", 1.5);
    EXPECT_STREQ(comma, "1,5") << "else the test tells nothing";
    const std::string written = stringprintf("%.2f", 1.25);
    const auto read = ParseDouble("5130.123");
    std::setlocale(LC_ALL, before.c_str());
    unsetenv("LOCPATH");
    EXPECT_EQ(written, "1.25");
    EXPECT_EQ(read, 5130.123);
}

TEST(Colors, Hash)
{
    GraphicsColor color;
    ASSERT_TRUE(color.SetHash("#80FF0010"));
    EXPECT_EQ(color.Hash(), "#80FF0010");
    EXPECT_TRUE(color.SetHash("#0080ff"));
    EXPECT_EQ(color.Hash(), "#FF0080FF");
    for (const char* bad : {"", "#", "#12345", "#1234567", "#GGGGGG", "0080ff0", "#-12345", "#123 45"}) {
        EXPECT_FALSE(color.SetHash(bad)) << bad;
        EXPECT_EQ(color.Hash(), "#FF0080FF");
    }
    EXPECT_EQ(GraphicsColor(NAN, 2.0F, -1.0F).argb(), 0xFF00FF00U);
}

namespace {

FILE* FileWith(const std::string& bytes)
{
    FILE* file = std::tmpfile();
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::rewind(file);
    return file;
}

std::vector<std::string> ReadLines(const std::string& bytes, bool (*read)(FILE*, std::string&))
{
    FILE* file = FileWith(bytes);
    std::vector<std::string> lines;
    std::string line;
    while (read(file, line)) lines.push_back(line);
    std::fclose(file);
    return lines;
}

} // namespace

TEST(Lines, WhatIsKept)
{
    using CLines = std::vector<std::string>;
    const std::string longest(1'000'000, 'x');
    EXPECT_EQ(ReadLines("a\r\n\nb", &read_line), (CLines{"a", "", "b"}));
    EXPECT_EQ(ReadLines(std::string("a\0b\n", 4), &read_line), (CLines{"ab"}));
    EXPECT_EQ(ReadLines("a\nb\xFFzzz\nc\n", &read_line), (CLines{"a", "b"}));
    EXPECT_EQ(ReadLines(longest + "\n", &read_line), (CLines{longest}));
    EXPECT_EQ(ReadLines(" \t\n  # x\n#\n a=1\n" + longest + "xy\nb=2", &read_line_noncomment), (CLines{" a=1", "b=2"}));
}

TEST(Lines, OverlongLineIsNotTheEnd)
{
    FILE* file = FileWith(std::string(1'000'001, 'x') + "\nnext\n");
    std::string line;
    EXPECT_FALSE(read_line(file, line));
    EXPECT_FALSE(at_text_end(file));
    EXPECT_TRUE(read_line(file, line));
    EXPECT_EQ(line, "next");
    EXPECT_TRUE(at_text_end(file));
    std::fclose(file);
}
