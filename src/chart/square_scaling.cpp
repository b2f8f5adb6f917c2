#include "chart/square_scaling.h"

#include "chart/dib_square.h"

#include <cstring>

namespace {

constexpr int kSide = DIB_square::kSide;
constexpr int kHalf = kSide / 2;

typedef std::uint32_t four_pixels __attribute__((vector_size(16)));

four_pixels Load(const std::uint32_t* from)
{
    four_pixels pixels;
    std::memcpy(&pixels, from, sizeof(pixels));
    return pixels;
}

void Store(std::uint32_t* to, four_pixels pixels)
{
    std::memcpy(to, &pixels, sizeof(pixels));
}

} // namespace

void DoubleRows(const std::uint32_t* source, int width, int rows, std::uint32_t* out)
{
    for (int y = 0; y < rows; ++y, source += kSide, out += 4 * width) {
        std::uint32_t* const below = out + 2 * width;
        for (int x = 0; x < width; x += 4) {
            const four_pixels pixels = Load(source + x);
            const four_pixels left = __builtin_shufflevector(pixels, pixels, 0, 0, 1, 1);
            const four_pixels right = __builtin_shufflevector(pixels, pixels, 2, 2, 3, 3);
            Store(out + 2 * x, left);
            Store(out + 2 * x + 4, right);
            Store(below + 2 * x, left);
            Store(below + 2 * x + 4, right);
        }
    }
}

void HalveRows(const std::uint32_t* source, int rows, std::uint32_t* out)
{
    for (int y = 0; y < rows; ++y, source += 2 * kSide, out += kHalf) {
        for (int x = 0; x < kHalf; x += 4)
            Store(out + x, __builtin_shufflevector(Load(source + 2 * x), Load(source + 2 * x + 4), 0, 2, 4, 6));
    }
}
