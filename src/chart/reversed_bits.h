#pragma once

#include <array>
#include <cstdint>

/// Every byte with its bits in the opposite order.
inline constexpr std::array<std::uint8_t, 256> kReversedBits = [] {
    std::array<std::uint8_t, 256> reversed{};
    for (unsigned i = 0; i < reversed.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) reversed[i] |= static_cast<std::uint8_t>((i >> bit & 1) << (7 - bit));
    }
    return reversed;
}();
