#pragma once

#include <cstdint>

/// ColourTile for InstructionSet::avx512, whatever indices the tile has; only called where that set is in use.
void ColourByPermute(const unsigned char* tile, const std::uint32_t* palette, std::uint32_t* dest, int stride);
