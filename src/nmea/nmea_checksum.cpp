#include "core/word_bytes.h"
#include "nmea/nmea_sentence.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace {

/// All bytes from `at` to `end` by exclusive or, 16 at a time.
unsigned XorOf(const char* at, const char* end)
{
    std::uint64_t sum = 0;
    for (; end - at >= 16; at += 16) sum ^= LoadEightBytes(at) ^ LoadEightBytes(at + 8);
    if (end - at >= 8) {
        sum ^= LoadEightBytes(at);
        at += 8;
    }
    sum ^= LoadBytes(at, static_cast<std::size_t>(end - at));
    sum ^= sum >> 32;
    sum ^= sum >> 16;
    sum ^= sum >> 8;
    return static_cast<unsigned>(sum & 0xFF);
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

} // namespace

bool CNMEASentence::check_checksum(const char* text)
{
    if (*text == 0) return false;
    const char* body = text + 1;
    const char* star = std::strchr(body, '*');
    if (star == nullptr) return false;
    const unsigned told = Nibble(star[1]) << 4 | (star[1] != 0 ? Nibble(star[2]) : 0);
    return XorOf(body, star) == told;
}

void CNMEASentence::compute_checksum(char* text)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    const char* body = *text != 0 ? text + 1 : text;
    char* end = text + std::strlen(text);
    const unsigned sum = XorOf(body, end);
    *end++ = '*';
    *end++ = kDigits[sum >> 4];
    *end++ = kDigits[sum & 0xF];
    *end = 0;
}
