#include "chart/tile_decoder.h"

#include "chart/bit_packed_tile.h"
#include "chart/huffman_tiles.h"
#include "chart/plain_decoder.h"
#include "chart/rastelle.h"
#include "chart/run_length_tile.h"

#include <array>
#include <cstring>

namespace {

void FillTile(TileJob& job, std::uint8_t index, int count)
{
    std::memset(job.out, index, static_cast<std::size_t>(count));
    job.note = {index + 1, index};
}

/// Decodes any block but a Huffman-coded one.
void UnpackOther(TileJob& job, int count, bool& placeholder)
{
    const std::uint8_t tag = job.block.empty() ? 0xFF : job.block[0];
    if (tag < 0x80) {
        DecodeRunLengthTile(job, count);
    } else if (tag == 0x80) {
        placeholder = true;
        FillTile(job, FillIndex(job.block, 3), count);
    } else if (tag == 0xFF) {
        FillTile(job, FillIndex(job.block, 1), count);
    } else {
        DecodeBitPackedTile(job, count);
    }
}

} // namespace

void UnpackBlocks(std::span<TileJob> jobs, int rows, bool& placeholder)
{
    const int count = rows * kTileSide;
    std::array<TileJob*, ThreadDataForRead::kTilesInStep> huffman;
    std::size_t waiting = 0;
    for (TileJob& job : jobs) {
        if (job.block.empty() || job.block[0] != 0x00) {
            UnpackOther(job, count, placeholder);
            continue;
        }
        huffman[waiting++] = &job;
        if (waiting < huffman.size()) continue;
        DecodeHuffmanTiles({huffman.data(), waiting}, count);
        waiting = 0;
    }
    DecodeHuffmanTiles({huffman.data(), waiting}, count);
}

TileNote CRastelle::UnpackBlock(std::span<const std::uint8_t> block, unsigned char* out, int rows, bool& placeholder)
{
    TileJob job{block, out, {}};
    UnpackBlocks({&job, 1}, rows, placeholder);
    return job.note;
}

int CRastelle::ReadBlock_bitmap(std::span<const std::uint8_t> block, int rows, unsigned char* out)
{
    bool placeholder = false;
    UnpackBlock(block, out, rows, placeholder);
    return rows * kTileSide;
}
