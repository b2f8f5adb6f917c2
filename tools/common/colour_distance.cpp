#include "tools/common/colour_distance.h"

#include <climits>

namespace {

int PartOf(std::uint32_t colour, int shift)
{
    return static_cast<int>((colour >> shift) & 0xFF);
}

} // namespace

int ColourDistance(std::uint32_t a, std::uint32_t b)
{
    const int red = PartOf(a, 16) - PartOf(b, 16);
    const int green = PartOf(a, 8) - PartOf(b, 8);
    const int blue = PartOf(a, 0) - PartOf(b, 0);
    return 2 * red * red + 4 * green * green + 3 * blue * blue;
}

std::size_t NearestColour(std::span<const std::uint32_t> palette, std::uint32_t colour)
{
    std::size_t nearest = 0;
    int smallest = INT_MAX;
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const int distance = ColourDistance(palette[i], colour);
        if (distance < smallest) {
            smallest = distance;
            nearest = i;
        }
    }
    return nearest;
}
