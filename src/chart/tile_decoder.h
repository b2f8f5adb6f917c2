#pragma once

#include "chart/thread_data_for_read.h"

#include <cstdint>
#include <span>

/// One tile to decode: from the coded block to the pixels and what is known of them.
struct TileJob {
    std::span<const std::uint8_t> block; ///< up to the end of what may be read
    unsigned char* out = nullptr;        ///< kTileMargin bytes more than the pixels
    TileNote note = {};
};

/// Decodes `rows` rows of each tile; Huffman-coded ones two at a time. Sets `placeholder` when a block has no picture.
void UnpackBlocks(std::span<TileJob> jobs, int rows, bool& placeholder);
