#include "core/numbers.h"

#include "core/word_bytes.h"

#include <bit>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

std::uint64_t BitsOf(double number)
{
    return std::bit_cast<std::uint64_t>(number);
}

/// Parsed where it lies in memory of exactly its size, with a NUL behind it and without.
double Parsed(const std::string& text)
{
    const auto tight = std::make_unique<char[]>(text.size());
    std::memcpy(tight.get(), text.data(), text.size());
    const double number = ParseDoubleOrNaN(std::string_view(tight.get(), text.size()));
    const auto ended = std::make_unique<char[]>(text.size() + 1);
    std::memcpy(ended.get(), text.c_str(), text.size() + 1);
    EXPECT_EQ(BitsOf(ParseDoubleOrNaN(ended.get())), BitsOf(number)) << text;
    return number;
}

std::string RandomDigits(std::mt19937& random, std::size_t most)
{
    std::string digits;
    for (std::size_t count = random() % (most + 1); count != 0; --count)
        digits += static_cast<char>('0' + random() % 10);
    return digits;
}

} // namespace

TEST(Numbers, EveryDecimalIsTheDoubleThatStrtodGives)
{
    std::mt19937 random(11);
    const char* const tails[] = {"", "", "", "", " x", ",1", "e3", "E-7", "e", ".5", "-"};
    for (int i = 0; i < 400'000; ++i) {
        const std::string whole = RandomDigits(random, i % 4 == 0 ? 17 : 8);
        const std::string fraction = RandomDigits(random, i % 5 == 0 ? 17 : 6);
        if (whole.empty() && fraction.empty()) continue;
        std::string text = random() % 4 == 0 ? "-" : "";
        text += whole;
        if (random() % 6 != 0 || whole.empty()) text += "." + fraction;
        text += tails[random() % std::size(tails)];
        if (text == ".") continue;
        const double expected = std::strtod(text.c_str(), nullptr);
        ASSERT_EQ(BitsOf(Parsed(text)), BitsOf(expected)) << text;
    }
}

TEST(Numbers, WhatIsNoNumberOrNotFinite)
{
    for (const char* text : {"", ".", "-", "+", "-.", "x1", "..1", "--1", "-+1", ".e5", "e5", "nan", "-inf", "1e400",
                             "abcdefgh", "........", "\x80\x81", ":;<=>?@A"}) {
        EXPECT_TRUE(std::isnan(Parsed(text))) << text;
        EXPECT_FALSE(ParseDouble(text)) << text;
    }
    EXPECT_TRUE(std::isnan(ParseDoubleOrNaN(std::string_view())));
}

TEST(Numbers, WhatElseBeginsWithANumber)
{
    struct CCase {
        const char* text;
        double number;
    };
    const CCase cases[] = {{"  12.5", 12.5},         {"+3", 3},     {" -4.", -4},
                           {"1.2.3", 1.2},           {"12:30", 12}, {"1,5", 1},
                           {"1e-400", 0.},           {"0x10", 0},   {"12345678.", 12345678},
                           {".12345678", .12345678}, {"1/", 1},     {"5\xFF", 5},
                           {"123456789", 123456789}};
    for (const CCase& c : cases) EXPECT_EQ(Parsed(c.text), c.number) << c.text;
    EXPECT_TRUE(std::signbit(Parsed("-0.0")));
}

TEST(WordBytes, PartsOfAWord)
{
    const std::string text = "a,\xAC*,.zY";
    for (std::size_t count = 0; count <= text.size(); ++count) {
        std::uint64_t expected = 0;
        std::memcpy(&expected, text.data(), count);
        EXPECT_EQ(LoadBytes(text.data(), count), expected) << count;
    }
    EXPECT_EQ(HighestBits(std::uint64_t{0x7F7FFF807F7F807F}), 0b00110010U);
    const auto both = text + text;
    EXPECT_EQ(HighestBits(CSixteenBytes(LoadSixteenBytes(both.data()) == ',')), 0b00010010'00010010U);
}
