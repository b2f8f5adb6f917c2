#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// How different two colours (0xRRGGBB) look: squared, red, green and blue weighted 2 : 4 : 3.
int ColourDistance(std::uint32_t a, std::uint32_t b);
/// The index of the nearest colour, the lowest of equals; 0 for an empty palette.
std::size_t NearestColour(std::span<const std::uint32_t> palette, std::uint32_t colour);
