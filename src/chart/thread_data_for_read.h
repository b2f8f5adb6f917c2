#pragma once

#include "chart/rastelle_header.h"

#include <array>
#include <cstdint>
#include <vector>

/// Bytes behind the pixels of a tile buffer that a decoder may overwrite.
inline constexpr int kTileMargin = 512;

/// What a decoder knows about the tile it has just written.
struct TileNote {
    int index_limit = kPaletteSize; ///< every index is below this
    int solid = -1;                 ///< the one index of the whole tile, or -1
};

/// Scratch and results of reading, one per reading thread, carried through every read; what lives here spares the read
/// path every allocation.
struct ThreadDataForRead {
    /// Tiles that are decoded together.
    static constexpr int kTilesInStep = 4;
    using tile_buffer = std::array<unsigned char, kTilePixels + kTileMargin>;

    /// Called by a chunked chart when data is not there at the wanted level; null for none.
    void (*missing_data_callback)(void* context, void* chunks, int chunk_y, int chunk_x, int got, int wanted) = nullptr;
    void* callback_context = nullptr;
    bool placeholder = false;               ///< a tile of the read came from a substitute fill
    int level_shortfall = 0;                ///< largest difference between the level obtained and the level wanted
    std::vector<std::uint32_t> word_buffer; ///< a chunk's coded words
    /// Tile buffers: kTileSide >> level rows of kTileSide indices, rows in stored order (see CRastelle::bitrev).
    alignas(64) std::array<tile_buffer, kTilesInStep> tiles;
    std::array<TileNote, kTilesInStep> notes; ///< of `tiles`, by the last ReadBlockRow
};
