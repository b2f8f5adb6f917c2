#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// A colour with straight alpha, each part 0.0 to 1.0.
struct GraphicsColor {
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
    float alpha = 1.0F;

    GraphicsColor() = default;
    GraphicsColor(float r, float g, float b, float a = 1.0F) : red(r), green(g), blue(b), alpha(a) {}
    /// Reads "#AARRGGBB" or "#RRGGBB"; anything else leaves the colour and answers false.
    bool SetHash(std::string_view text);
    /// "#AARRGGBB", upper case.
    std::string Hash() const;
    /// 0xAARRGGBB.
    std::uint32_t argb() const;
    friend bool operator==(const GraphicsColor&, const GraphicsColor&) = default;
};
