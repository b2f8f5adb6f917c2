#include "chart/mix_tables.h"

#include "chart/plain_decoder.h"

CMixTables::CMixTables(const std::uint8_t* matrix, const std::uint32_t* palette) : indices(matrix), colours(palette) {}

void CMixTables::ReduceTile(const unsigned char* tile, const TileNote&, int level, std::uint32_t* dest,
                            int stride) const
{
    PlainReduceTile(tile, level, indices, colours, dest, stride);
}
