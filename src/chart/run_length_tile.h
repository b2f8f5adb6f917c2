#pragma once

#include "chart/tile_decoder.h"

/// Decodes a run-length tile (tags 0x01 to 0x7F) of `count` pixels: the same pixels as PlainRunLength.
void DecodeRunLengthTile(TileJob& job, int count);
