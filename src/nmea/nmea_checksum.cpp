#include "core/word_bytes.h"
#include "nmea/nmea_sentence.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace {

/// What a text adds up to, and whether it is one without an end in it.
struct CSum {
    unsigned value; ///< all bytes by exclusive or
    bool is_body;   ///< neither "*" nor NUL is among them
};

CSum Fold(CSixteenBytes sum, CSixteenBytes ends)
{
    const CTwoWords sums = WordsOf(sum);
    std::uint64_t word = sums.first ^ sums.last;
    word ^= word >> 32;
    word ^= word >> 16;
    word ^= word >> 8;
    return {static_cast<unsigned>(word & 0xFF), HighestBits(ends) == 0};
}

constexpr std::ptrdiff_t kBlock = sizeof(CSixteenBytes);

/// From each place of it on: so many bytes of 0, and 0xFF behind them.
constexpr auto kKeptBytes = [] {
    std::array<unsigned char, 2 * kBlock> bytes{};
    for (std::size_t i = kBlock; i < bytes.size(); ++i) bytes[i] = 0xFF;
    return bytes;
}();

/// Sixteen bytes at a time; the last of them once more with what is left over.
inline CSum SumOfLong(const char* at, const char* end)
{
    CSixteenBytes sum{};
    CSixteenBytes ends{};
    const auto look_at = [&ends](CSixteenBytes bytes) {
        ends |= CSixteenBytes(bytes == '*') | CSixteenBytes(bytes == 0);
        return bytes;
    };
    for (; end - at >= kBlock; at += kBlock) sum ^= look_at(LoadSixteenBytes(at));
    sum ^= look_at(LoadSixteenBytes(end - kBlock)) & LoadSixteenBytes(&kKeptBytes[static_cast<std::size_t>(end - at)]);
    return Fold(sum, ends);
}

CSum SumOf(const char* at, const char* end)
{
    if (end - at >= kBlock) return SumOfLong(at, end);
    CSum sum{0, true};
    for (; at != end; ++at) {
        sum.value ^= static_cast<unsigned char>(*at);
        sum.is_body &= *at != '*' && *at != 0;
    }
    return sum;
}

/// The values of the upper-case hexadecimal digits; every other character counts as 0.
constexpr auto kNibbles = [] {
    std::array<unsigned char, 256> values{};
    for (unsigned char i = 0; i < 10; ++i) values['0' + i] = i;
    for (unsigned char i = 0; i < 6; ++i) values['A' + i] = 10 + i;
    return values;
}();

unsigned Nibble(char digit)
{
    return kNibbles[static_cast<unsigned char>(digit)];
}

unsigned ValueOfDigits(const char* digits)
{
    return Nibble(digits[0]) << 4 | Nibble(digits[1]);
}

constexpr std::ptrdiff_t kTail = 3; // "*" and the digits

/// The same of any text: something stands behind the digits, or one is missing, or it is short.
[[gnu::noinline]] const char* FindRightChecksumAnywhere(const char* body, const char* end)
{
    const char* const star = std::find(body, end, '*');
    if (star == end) return nullptr;
    const CSum sum = SumOf(body, star);
    const unsigned high = end - star > 1 ? Nibble(star[1]) : 0;
    const unsigned low = end - star > 2 ? Nibble(star[2]) : 0;
    return sum.is_body && sum.value == (high << 4 | low) ? star : nullptr;
}

} // namespace

const char* CNMEASentence::FindRightChecksum(std::string_view text)
{
    if (text.empty()) return nullptr;
    const char* const body = text.data() + 1;
    const char* const end = text.data() + text.size();
    if (end - body >= kBlock + kTail && end[-kTail] == '*') {
        const char* const star = end - kTail;
        const CSum sum = SumOfLong(body, star);
        if (sum.is_body) return sum.value == ValueOfDigits(star + 1) ? star : nullptr;
    }
    return FindRightChecksumAnywhere(body, end);
}

void CNMEASentence::compute_checksum(char* text)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    const char* body = *text != 0 ? text + 1 : text;
    char* end = text + std::strlen(text);
    const unsigned sum = SumOf(body, end).value;
    *end++ = '*';
    *end++ = kDigits[sum >> 4];
    *end++ = kDigits[sum & 0xF];
    *end = 0;
}
