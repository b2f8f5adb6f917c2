#pragma once

#include "chart/tile_decoder.h"

/// Decodes a bit-packed tile (tags 0x81 to 0xFE) of `count` pixels: the same pixels as PlainBitPacked.
void DecodeBitPackedTile(TileJob& job, int count);
