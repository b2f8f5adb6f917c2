#include "support/chart_samples.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <map>
#include <random>

namespace {

constexpr std::array<std::uint32_t, 19> kColours = {
    0xCFE8F7, 0xB4D9F0, 0x9CCBEA, 0x86BEE3, 0xF3E5B5, 0xE8D69A, 0xC9DDA8, 0x202020, 0x5C5C5C, 0x2E5E8C,
    0xA04A8C, 0xC0392B, 0x2E8B57, 0xF1C40F, 0xFFFFFF, 0x8C6D3F, 0x7A9BB5, 0xD7A9C9, 0x444477,
};

/// Smooth noise in -1 to 1: bilinear between hashed lattice values.
class Relief {
public:
    double At(double x, double y) const
    {
        double sum = 0.0, weight = 1.0;
        for (int octave = 0; octave < 4; ++octave) {
            sum += weight * Lattice(x, y, static_cast<std::uint32_t>(octave));
            x *= 2.1;
            y *= 2.1;
            weight *= 0.5;
        }
        return sum;
    }

private:
    static double Hash(std::int64_t x, std::int64_t y, std::uint32_t seed)
    {
        auto h = static_cast<std::uint32_t>(x * 374761393 + y * 668265263) + seed * 2246822519U;
        h = (h ^ h >> 13) * 1274126177U;
        return static_cast<double>((h ^ h >> 16) & 0xFFFF) / 32767.5 - 1.0;
    }
    static double Lattice(double x, double y, std::uint32_t seed)
    {
        const auto cell_x = static_cast<std::int64_t>(std::floor(x)), cell_y = static_cast<std::int64_t>(std::floor(y));
        const double u = x - std::floor(x), v = y - std::floor(y);
        const double top = Hash(cell_x, cell_y, seed) * (1 - u) + Hash(cell_x + 1, cell_y, seed) * u;
        const double bottom = Hash(cell_x, cell_y + 1, seed) * (1 - u) + Hash(cell_x + 1, cell_y + 1, seed) * u;
        return top * (1 - v) + bottom * v;
    }
};

/// Draws the clean picture at any resolution.
class Drawing {
public:
    explicit Drawing(int pixels)
        : side(pixels), ink(static_cast<std::size_t>(pixels) * static_cast<std::size_t>(pixels), kNoInk)
    {
        std::mt19937 random(7);
        const int glyphs = side / 8 * (side / 8) / 24;
        for (int i = 0; i < glyphs; ++i) Glyph(random, 1 + side / 2048);
    }
    unsigned char At(int x, int y) const
    {
        const unsigned char drawn =
            ink[static_cast<std::size_t>(y) * static_cast<std::size_t>(side) + static_cast<std::size_t>(x)];
        if (drawn != kNoInk) return drawn;
        constexpr double kFeature = 1.0 / 190.0;
        const double here = relief.At(x * kFeature, y * kFeature);
        const double slope = std::hypot(relief.At((x + 1) * kFeature, y * kFeature) - here,
                                        relief.At(x * kFeature, (y + 1) * kFeature) - here);
        if (std::fabs(here) < slope) return 7; // coastline
        if (here < 0 && std::fabs(std::remainder(here, 0.25)) < slope * 0.6) return 9;
        if (x % 509 == 0 || y % 509 == 0) return 8; // graticule
        if (here < 0) return static_cast<unsigned char>(std::min(3, static_cast<int>(-here * 4.0)));
        return static_cast<unsigned char>(4 + std::min(2, static_cast<int>(here * 3.0)));
    }

private:
    static constexpr unsigned char kNoInk = 255;

    void Glyph(std::mt19937& random, int size)
    {
        const auto left = static_cast<int>(random() % static_cast<unsigned>(side)),
                   top = static_cast<int>(random() % static_cast<unsigned>(side));
        const auto colour = static_cast<unsigned char>(random() % 3 != 0 ? 7 : 8 + random() % 11);
        const unsigned bits = random();
        for (int y = 0; y < 7 * size; ++y) {
            for (int x = 0; x < 5 * size; ++x) {
                const bool stroke = x / size == 0 || (bits >> (x / size + y / size * 3) % 31 & 1) != 0;
                if (stroke && left + x < side && top + y < side)
                    ink[static_cast<std::size_t>(top + y) * static_cast<std::size_t>(side) +
                        static_cast<std::size_t>(left + x)] = colour;
            }
        }
    }

    int side;
    std::vector<unsigned char> ink;
    Relief relief;
};

int Channel(std::uint32_t colour, int shift)
{
    return static_cast<int>(colour >> shift & 0xFF);
}

std::uint32_t Rgb(int red, int green, int blue)
{
    const auto clip = [](int value) { return static_cast<std::uint32_t>(std::clamp(value, 0, 255)); };
    return clip(red) << 16 | clip(green) << 8 | clip(blue);
}

/// The index of the nearest colour, remembered by the five high bits of each channel.
class Quantiser {
public:
    explicit Quantiser(const std::vector<std::uint32_t>& colours) : palette(colours), known(32768, -1) {}
    unsigned char Index(std::uint32_t colour)
    {
        int& index = known[(colour >> 9 & 0x7C00) | (colour >> 6 & 0x3E0) | (colour >> 3 & 0x1F)];
        if (index < 0) index = Nearest(colour);
        return static_cast<unsigned char>(index);
    }

private:
    int Nearest(std::uint32_t colour) const
    {
        const auto distance = [colour](std::uint32_t other) {
            int sum = 0;
            for (int shift = 0; shift < 24; shift += 8)
                sum +=
                    (Channel(colour, shift) - Channel(other, shift)) * (Channel(colour, shift) - Channel(other, shift));
            return sum;
        };
        return static_cast<int>(std::min_element(palette.begin(), palette.end(),
                                                 [&](auto a, auto b) { return distance(a) < distance(b); }) -
                                palette.begin());
    }

    const std::vector<std::uint32_t>& palette;
    std::vector<int> known;
};

/// The drawing at half its size, each pixel the mean of four.
std::vector<std::uint32_t> Smoothed(const Drawing& fine, int side)
{
    std::vector<std::uint32_t> picture;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            int sum[3] = {2, 2, 2};
            for (int i = 0; i < 4; ++i) {
                const std::uint32_t colour = kColours[fine.At(2 * x + i % 2, 2 * y + i / 2)];
                for (int c = 0; c < 3; ++c) sum[c] += Channel(colour, 16 - 8 * c);
            }
            picture.push_back(Rgb(sum[0] / 4, sum[1] / 4, sum[2] / 4));
        }
    }
    return picture;
}

/// The flat colours and the mixes that occur most, 127 in all.
std::vector<std::uint32_t> BusyPalette(const std::vector<std::uint32_t>& picture)
{
    constexpr std::size_t kColoursInAll = 127;
    std::map<std::uint32_t, int> counts;
    for (const std::uint32_t colour : picture) ++counts[colour];
    for (const std::uint32_t colour : kColours) counts.erase(colour);
    std::vector<std::pair<int, std::uint32_t>> order;
    for (const auto& [colour, count] : counts) order.emplace_back(-count, colour);
    std::sort(order.begin(), order.end());
    std::vector<std::uint32_t> palette(kColours.begin(), kColours.end());
    for (const auto& [count, colour] : order) {
        if (palette.size() < kColoursInAll) palette.push_back(colour);
    }
    return palette;
}

} // namespace

const char* ChartKindName(ChartKind kind)
{
    return kind == ChartKind::clean ? "C" : kind == ChartKind::antialiased ? "A" : "S";
}

ChartSample MakeChartSample(ChartKind kind, int tiles)
{
    ChartSample sample;
    sample.tiles = tiles;
    const int side = sample.side();
    if (kind == ChartKind::clean) {
        const Drawing drawing(side);
        sample.palette.assign(kColours.begin(), kColours.end());
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) sample.indices.push_back(drawing.At(x, y));
        }
        return sample;
    }
    const auto picture = Smoothed(Drawing(2 * side), side);
    sample.palette = BusyPalette(picture);
    Quantiser quantiser(sample.palette);
    std::mt19937 random(11);
    for (const std::uint32_t colour : picture) {
        int noise[3] = {0, 0, 0};
        if (kind == ChartKind::scanned) {
            // The sum of three dice is near enough to a bell.
            const int common = static_cast<int>(random() % 9 + random() % 9 + random() % 9) - 12;
            for (int& part : noise) part = common + static_cast<int>(random() % 5) - 2;
        }
        sample.indices.push_back(quantiser.Index(
            Rgb(Channel(colour, 16) + noise[0], Channel(colour, 8) + noise[1], Channel(colour, 0) + noise[2])));
    }
    return sample;
}

std::vector<unsigned char> ChartSample::Tile(int x, int y) const
{
    std::vector<unsigned char> tile;
    for (int row = 0; row < kTileSide; ++row) {
        const auto begin = indices.begin() + static_cast<std::ptrdiff_t>(y * kTileSide + row) * side() + x * kTileSide;
        tile.insert(tile.end(), begin, begin + kTileSide);
    }
    return tile;
}

Geo_ref_coeff_t AffineGeoreferencing(double width, double height, double top_lat, double left_lon, double bottom_lat,
                                     double right_lon)
{
    const double by_x = (right_lon - left_lon) / width;
    const double by_y = (bottom_lat - top_lat) / height;
    Geo_ref_coeff_t geo = {};
    geo.inverse[0][0] = top_lat;
    geo.inverse[0][2] = by_y;
    geo.inverse[1][0] = left_lon;
    geo.inverse[1][1] = by_x;
    geo.forward[0][0] = -left_lon / by_x;
    geo.forward[0][2] = 1.0 / by_x;
    geo.forward[1][0] = -top_lat / by_y;
    geo.forward[1][1] = 1.0 / by_y;
    return geo;
}
