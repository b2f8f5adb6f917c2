#include "chart/square_scaling.h"

#include "chart/dib_square.h"

#include <cstring>

namespace {

constexpr int kSide = DIB_square::kSide;
constexpr int kHalf = kSide / 2;
/// Puts the pixel into both halves of a pair.
constexpr std::uint64_t kBothOfAPair = 0x100000001ULL;

} // namespace

void DoubleStrip(const std::uint32_t* source, std::uint32_t* out)
{
    for (int y = 0; y < kScaledRows / 2; ++y, source += kSide, out += 2 * kSide) {
        for (int x = 0; x < kHalf; ++x) {
            const std::uint64_t pair = source[x] * kBothOfAPair;
            std::memcpy(out + 2 * x, &pair, sizeof(pair));
        }
        std::memcpy(out + kSide, out, kSide * sizeof(*out));
    }
}

void HalveStrip(const std::uint32_t* source, std::uint32_t* out)
{
    for (int y = 0; y < kScaledRows; ++y, source += 2 * kSide, out += kHalf)
        for (int x = 0; x < kHalf; ++x) out[x] = source[2 * x];
}
