#include "nmea/nmea_sentence.h"

#include <cstdint>
#include <cstring>

namespace {

std::uint64_t Eight(const char* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// All bytes from `at` to `end` by exclusive or, 16 at a time.
unsigned XorOf(const char* at, const char* end)
{
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    for (; end - at >= 16; at += 16) {
        first ^= Eight(at);
        second ^= Eight(at + 8);
    }
    first ^= second;
    if (end - at >= 8) {
        first ^= Eight(at);
        at += 8;
    }
    first ^= first >> 32;
    first ^= first >> 16;
    auto sum = static_cast<unsigned>(first ^ first >> 8);
    for (; at != end; ++at) sum ^= static_cast<unsigned char>(*at);
    return sum & 0xFF;
}

/// Upper-case digits only; every other character counts as 0.
unsigned Nibble(char digit)
{
    if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
    if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A' + 10);
    return 0;
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
