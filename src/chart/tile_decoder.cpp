#include "chart/tile_decoder.h"

#include "chart/plain_decoder.h"
#include "chart/rastelle.h"

void UnpackBlocks(std::span<TileJob> jobs, int rows, bool& placeholder)
{
    for (TileJob& job : jobs) PlainUnpackBlock(job.block, job.out, rows, placeholder);
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
