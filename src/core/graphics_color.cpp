#include "core/graphics_color.h"

#include "core/text.h"

#include <algorithm>
#include <charconv>

namespace {

std::uint32_t ToByte(float part)
{
    // A NaN compares false with everything and ends at 0.
    const float limited = part > 0.0F ? std::min(part, 1.0F) : 0.0F;
    return static_cast<std::uint32_t>(limited * 255.0F + 0.5F);
}

} // namespace

bool GraphicsColor::SetHash(std::string_view text)
{
    if ((text.size() != 7 && text.size() != 9) || text.front() != '#') return false;
    std::uint32_t value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data() + 1, end, value, 16);
    if (result.ec != std::errc{} || result.ptr != end) return false;
    if (text.size() == 7) value |= 0xFF000000U;
    const auto part = [value](int shift) { return static_cast<float>(value >> shift & 0xFFU) / 255.0F; };
    *this = GraphicsColor(part(16), part(8), part(0), part(24));
    return true;
}

std::string GraphicsColor::Hash() const
{
    return stringprintf("#%08X", argb());
}

std::uint32_t GraphicsColor::argb() const
{
    return ToByte(alpha) << 24 | ToByte(red) << 16 | ToByte(green) << 8 | ToByte(blue);
}
