#pragma once

#include <cstdint>
#include <span>
#include <string>

/// What is wrong with a tile's coded block, which reaches at most to the end of `block`; empty when nothing is. The
/// program shows index 0 from such a place on.
std::string FaultOfBlock(std::span<const std::uint8_t> block);
