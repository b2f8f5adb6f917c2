#include "chart/dib_square.h"

#include "chart/rastelle.h"

#include <cmath>
#include <cstdlib>

namespace {

/// Squares begin on a cache line, which is what the widest stores like best.
constexpr std::size_t kBitsAlignment = 64;
/// Chart pixels along a block of one key, as a power of two.
constexpr int kKeyBlockShift = 10;

} // namespace

void DIB_square::AlignedFree::operator()(std::uint32_t* memory) const
{
    std::free(memory);
}

DIB_square::~DIB_square() = default;

void DIB_square::Claim(double to_x, double to_y, int to_level)
{
    pixmap.reset();
    x = to_x;
    y = to_y;
    level = to_level;
}

void DIB_square::Read(CRastelle& chart, ThreadDataForRead* thread)
{
    if (!bits) {
        bits.reset(static_cast<std::uint32_t*>(std::aligned_alloc(kBitsAlignment, kBytes)));
        if (!bits) return;
        image = QImage(reinterpret_cast<unsigned char*>(bits.get()), kSide, kSide, kSide * 4, QImage::Format_RGB32);
    }
    thread->placeholder = false;
    thread->level_shortfall = 0;
    chart.ReadRectRGB(static_cast<int>(std::ldexp(x, level)), static_cast<int>(std::ldexp(y, level)), kSide, kSide,
                      kSide, level, bits.get(), thread);
    placeholder = thread->placeholder;
    shortfall = thread->level_shortfall;
}

const QPixmap& DIB_square::Pixmap()
{
    if (!pixmap) pixmap = QPixmap::fromImage(image);
    return *pixmap;
}

std::int32_t DIB_square::ChunkKey() const
{
    const auto cx = static_cast<std::int64_t>(std::ldexp(x, level)) >> kKeyBlockShift;
    const auto cy = static_cast<std::int64_t>(std::ldexp(y, level)) >> kKeyBlockShift;
    return static_cast<std::int32_t>(cx + cy * 0x10000);
}
