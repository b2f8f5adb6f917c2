#include "tools/basemap/chart_palette.h"

#include "tools/common/colour_distance.h"

namespace {

using namespace chart_colours;

struct CRamp {
    QRgb from;
    QRgb to;
    int steps; ///< colours between the two
};

// What lies over what: antialiased edges are mixtures of these pairs.
constexpr CRamp kRamps[] = {
    {kSea, kShore, 3},         {kLand, kShore, 3},     {kIceLand, kShore, 2},  {kSea, kHalo, 1},
    {kLand, kHalo, 1},         {kHalo, kText, 4},      {kSea, kSeaText, 3},    {kLand, kSeaText, 2},
    {kLand, kCountryText, 3},  {kHalo, kSeaText, 0},   {kHalo, kCapeText, 3},  {kSea, kGraticule, 0},
    {kSea, kGraticuleText, 3}, {kLand, kRiver, 2},     {kLand, kLakeShore, 1}, {kLake, kLakeShore, 1},
    {kLand, kBorder, 2},       {kSea, kRose, 3},       {kIceLand, kHalo, 0},   {kIceShelf, kIceLand, 0},
    {kSea, kIceShelf, 0},      {kLand, kGraticule, 1}, {kHalo, kFrame, 3},     {kHalo, kRose, 2},
};

QRgb Between(QRgb from, QRgb to, int part, int parts)
{
    const auto mix = [&](int a, int b) { return a + (b - a) * part / parts; };
    return qRgb(mix(qRed(from), qRed(to)), mix(qGreen(from), qGreen(to)), mix(qBlue(from), qBlue(to)));
}

} // namespace

CChartPalette::CChartPalette() : table(1U << 18)
{
    for (const QRgb first : {kSea, kOutside}) AddRamp(first, first, 0);
    for (const CRamp& ramp : kRamps) {
        for (const QRgb end : {ramp.from, ramp.to}) AddRamp(end, end, 0);
    }
    for (const CRamp& ramp : kRamps) AddRamp(ramp.from, ramp.to, ramp.steps);
    for (std::uint32_t slot = 0; slot < table.size(); ++slot) {
        const std::uint32_t middle = ((slot << 6) & 0xFC0000U) | ((slot << 4) & 0xFC00U) | ((slot << 2) & 0xFCU);
        table[slot] = static_cast<unsigned char>(NearestColour(colours, middle | 0x020202U));
    }
    for (std::size_t i = colours.size(); i-- > 0;) table[Slot(colours[i])] = static_cast<unsigned char>(i);
}

void CChartPalette::AddRamp(QRgb from, QRgb to, int steps)
{
    constexpr int kTooClose = 60; // nobody tells two such colours apart, and each costs compression
    for (int step = 0; step <= steps; ++step) {
        const QRgb colour = Between(from, to, step, steps + 1) & 0xFFFFFFU;
        const bool full = colours.size() == 128;
        const bool known = !colours.empty() && ColourDistance(colours[NearestColour(colours, colour)], colour) <
                                                   (steps == 0 ? 1 : kTooClose);
        if (!full && !known) colours.push_back(colour);
    }
}

void CChartPalette::Indices(std::span<const QRgb> pixels, unsigned char* out) const
{
    QRgb last = 0;
    unsigned char index = Index(last);
    for (const QRgb pixel : pixels) {
        if (pixel != last) {
            last = pixel;
            index = Index(pixel);
        }
        *out++ = index;
    }
}
