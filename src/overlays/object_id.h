#pragma once

#include <cstdint>

/// A new 64-bit object id, made of a random number, the device number and the time.
std::uint64_t GenerateUniqueID();

/// Where the ids' random part (31 bits) and device number come from. Null members mean the real ones.
struct CObjectIdSource {
    std::uint32_t (*random)() = nullptr;
    std::uint32_t (*device_number)() = nullptr;
};
void SetObjectIdSource(CObjectIdSource source);
