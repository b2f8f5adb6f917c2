#include "tools/common/quantiser.h"

#include "tools/common/colour_distance.h"

#include <algorithm>
#include <unordered_map>

#include <QPainter>

namespace {

struct CCountedColour {
    std::uint32_t colour;
    std::uint32_t count;
};

int ColourPart(std::uint32_t colour, int shift)
{
    return static_cast<int>((colour >> shift) & 0xFF);
}

/// A range of the colours that will share one palette entry.
struct CBox {
    std::span<CCountedColour> colours;
    std::uint64_t population = 0;
    int longest_shift = 0; ///< of the part with the greatest spread
    int spread = 0;

    explicit CBox(std::span<CCountedColour> range) : colours(range)
    {
        for (const CCountedColour& c : colours) population += c.count;
        for (const int shift : {16, 8, 0}) {
            const auto by_part = [shift](const CCountedColour& a, const CCountedColour& b) {
                return ColourPart(a.colour, shift) < ColourPart(b.colour, shift);
            };
            const auto [low, high] = std::minmax_element(colours.begin(), colours.end(), by_part);
            const int width = ColourPart(high->colour, shift) - ColourPart(low->colour, shift);
            if (width > spread) {
                spread = width;
                longest_shift = shift;
            }
        }
    }

    std::uint64_t Weight() const { return population * static_cast<std::uint64_t>(spread); }

    /// Sorts along the longest part and returns how many colours the lower half takes; never none or all.
    std::size_t Halve()
    {
        std::sort(colours.begin(), colours.end(), [this](const CCountedColour& a, const CCountedColour& b) {
            const int part_a = ColourPart(a.colour, longest_shift);
            const int part_b = ColourPart(b.colour, longest_shift);
            return part_a != part_b ? part_a < part_b : a.colour < b.colour;
        });
        std::uint64_t below = 0;
        std::size_t split = 0;
        while (split + 1 < colours.size() && below * 2 < population) below += colours[split++].count;
        return split;
    }

    std::uint32_t Mean() const
    {
        std::uint32_t mean = 0;
        for (const int shift : {16, 8, 0}) {
            std::uint64_t sum = 0;
            for (const CCountedColour& c : colours) sum += std::uint64_t{c.count} * ((c.colour >> shift) & 0xFF);
            mean |= static_cast<std::uint32_t>((sum + population / 2) / population) << shift;
        }
        return mean;
    }
};

std::vector<CCountedColour> CountColours(std::span<const std::uint32_t> pixels)
{
    std::unordered_map<std::uint32_t, std::uint32_t> counts;
    for (const std::uint32_t pixel : pixels) ++counts[pixel & 0xFFFFFFU];
    std::vector<CCountedColour> colours;
    colours.reserve(counts.size());
    for (const auto& [colour, count] : counts) colours.push_back({colour, count});
    std::sort(colours.begin(), colours.end(), [](auto& a, auto& b) { return a.colour < b.colour; });
    return colours;
}

/// An index picture whose palette fits and needs no change; false for any other.
bool KeepIndices(const QImage& image, int colours, CIndexImage& out)
{
    if (image.format() != QImage::Format_Indexed8 || image.hasAlphaChannel()) return false;
    const auto table = image.colorTable();
    if (table.isEmpty()) return false;
    int highest = 0;
    for (int y = 0; y < out.height; ++y) {
        const unsigned char* row = image.constScanLine(y);
        std::copy(row, row + out.width, out.indices.begin() + std::ptrdiff_t{y} * out.width);
        highest = std::max<int>(highest, *std::max_element(row, row + out.width));
    }
    if (highest >= colours || highest >= table.size()) return false;
    const auto kept = std::min<qsizetype>(table.size(), colours);
    for (qsizetype i = 0; i < kept; ++i) out.palette.push_back(table[i] & 0xFFFFFFU);
    return true;
}

std::vector<std::uint32_t> OpaquePixels(const QImage& image)
{
    QImage opaque(image.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(0, 0, image);
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < opaque.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(opaque.constScanLine(y));
        for (int x = 0; x < opaque.width(); ++x) pixels.push_back(row[x] & 0xFFFFFFU);
    }
    return pixels;
}

} // namespace

std::vector<std::uint32_t> MedianCutPalette(std::span<const std::uint32_t> pixels, int colours)
{
    std::vector<CCountedColour> counted = CountColours(pixels);
    std::vector<std::uint32_t> palette;
    if (counted.size() <= static_cast<std::size_t>(colours)) {
        for (const CCountedColour& c : counted) palette.push_back(c.colour);
        return palette;
    }
    std::vector<CBox> boxes{CBox(counted)};
    while (boxes.size() < static_cast<std::size_t>(colours)) {
        auto heaviest = std::max_element(boxes.begin(), boxes.end(),
                                         [](const CBox& a, const CBox& b) { return a.Weight() < b.Weight(); });
        if (heaviest->spread == 0) break;
        const std::size_t split = heaviest->Halve();
        const auto range = heaviest->colours;
        *heaviest = CBox(range.first(split));
        boxes.emplace_back(range.subspan(split));
    }
    for (const CBox& box : boxes) palette.push_back(box.Mean());
    return palette;
}

CIndexImage QuantiseImage(const QImage& image, int colours)
{
    CIndexImage out{image.width(), image.height(), {}, {}};
    out.indices.resize(static_cast<std::size_t>(out.width) * static_cast<std::size_t>(out.height));
    if (KeepIndices(image, colours, out)) return out;
    const std::vector<std::uint32_t> pixels = OpaquePixels(image);
    out.palette = MedianCutPalette(pixels, colours);
    if (out.palette.size() > 1) std::swap(out.palette[1], out.palette[NearestColour(out.palette, 0xFFFFFF)]);
    std::unordered_map<std::uint32_t, unsigned char> known;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const auto [entry, is_new] = known.try_emplace(pixels[i], 0);
        if (is_new) entry->second = static_cast<unsigned char>(NearestColour(out.palette, pixels[i]));
        out.indices[i] = entry->second;
    }
    return out;
}
