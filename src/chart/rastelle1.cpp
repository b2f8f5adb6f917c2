#include "chart/rastelle1.h"

#include "chart/tile_decoder.h"

#include <cstring>

int CRastelle1::ReadBlock(int x, int y, int level, unsigned char* out, ThreadDataForRead* thread)
{
    BlockReader reader(*this);
    TileJob job{BlockOfTile(reader, x, y), out, {}};
    UnpackBlocks({&job, 1}, kTileSide >> level, thread->placeholder);
    return 0;
}

int CRastelle1::ReadBlockRow(int x, int y, int count, int level, ThreadDataForRead* thread)
{
    BlockReader reader(*this);
    std::array<TileJob, ThreadDataForRead::kTilesInStep> jobs;
    std::size_t begin = 0;
    const auto decode_until = [&](std::size_t end) {
        UnpackBlocks({&jobs[begin], end - begin}, kTileSide >> level, thread->placeholder);
        begin = end;
    };
    const auto tiles = static_cast<std::size_t>(count);
    for (std::size_t i = 0; i < tiles; ++i) {
        const int column = x + static_cast<int>(i);
        // Blocks that one view shows are decoded together, before it moves.
        if (IsOnChart(column, y) && reader.MovesView(TilePointer(column, y))) decode_until(i);
        jobs[i] = {BlockOfTile(reader, column, y), thread->tiles[i].data(), {}};
    }
    decode_until(tiles);
    for (std::size_t i = 0; i < tiles; ++i) thread->notes[i] = jobs[i].note;
    return 0;
}

bool CRastelle1::IsOnChart(int x, int y) const
{
    return x >= 0 && y >= 0 && header != nullptr && x < static_cast<int>(header->width) &&
           y < static_cast<int>(header->height) && TilePointer(0, 0) != 0;
}

std::span<const std::uint8_t> CRastelle1::BlockOfTile(BlockReader& reader, int x, int y) const
{
    static constexpr std::uint8_t kOutside[] = {0xFF, 1};
    static constexpr std::uint8_t kUnreachable[] = {0xFF, 0};
    if (!IsOnChart(x, y)) return kOutside;
    const std::uint32_t pointer = TilePointer(x, y);
    if (pointer == 0) return kUnreachable;
    const auto block = reader.Bytes(pointer);
    return block.empty() ? kUnreachable : block;
}
