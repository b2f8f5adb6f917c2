#include "chart/colour_tile.h"

#include "chart/plain_decoder.h"

void ColourTile(const unsigned char* tile, const TileNote&, const std::uint32_t* palette, std::uint32_t* dest,
                int stride)
{
    PlainColourTile(tile, palette, dest, stride);
}
