#pragma once

#include "chart/thread_data_for_read.h"

#include <cstdint>

/// Turns a whole tile (rows in stored order) into pixels of `dest`, rows `stride` pixels apart.
void ColourTile(const unsigned char* tile, const TileNote& note, const std::uint32_t* palette, std::uint32_t* dest,
                int stride);
