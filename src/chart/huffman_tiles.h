#pragma once

#include "chart/tile_decoder.h"

#include <span>

/// Decodes Huffman-coded tiles (tag 0x00) of `count` pixels each: the same pixels as PlainHuffman, by table and two
/// tiles in step. May write kTileMargin bytes behind the pixels.
void DecodeHuffmanTiles(std::span<TileJob* const> jobs, int count);
