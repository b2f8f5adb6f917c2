// The catalogue's reading of a chart file: record, outline, and what is asked of them. The input is a file without its
// palette and matrix, which the catalogue never reads: the scalar fields, then what stands from the tile pointers on.

#include "built_seeds.h"
#include "chart/bounds_index.h"
#include "chart/chart_bytes.h"
#include "chart/chart_outline.h"
#include "chart/chart_writer.h"
#include "chart/folder_number.h"

#include <cmath>

namespace {

constexpr std::size_t kHead = CRastelleHeader::kScalarBytes;
constexpr std::size_t kRest = CRastelleHeader::kTilePointers;

class FoldedFile : public IChartBytes {
public:
    explicit FoldedFile(std::span<const std::uint8_t> input)
        : head(input.first(std::min(input.size(), kHead))), rest(input.subspan(head.size()))
    {}
    std::size_t Read(std::uint64_t position, std::span<std::uint8_t> out) override
    {
        if (position >= Size()) return 0;
        const std::size_t count = std::min<std::uint64_t>(out.size(), Size() - position);
        for (std::size_t i = 0; i < count; ++i) out[i] = At(position + i);
        return count;
    }
    std::uint64_t Size() const override { return std::max(kRest + rest.size(), CRastelleHeader::kFixedBytes); }

private:
    std::uint8_t At(std::uint64_t position) const
    {
        if (position < head.size()) return head[position];
        return position >= kRest && position - kRest < rest.size() ? rest[position - kRest] : 0;
    }
    std::span<const std::uint8_t> head;
    std::span<const std::uint8_t> rest;
};

std::string Folded(const CChartWriter& writer)
{
    const std::vector<std::uint8_t> file = writer.Bytes(writer.Plain(1));
    return std::string(file.begin(), file.begin() + kHead) + std::string(file.begin() + kRest, file.end());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    Geo_ref_coeff_t geo = {};
    geo.inverse[0][2] = -0.01;
    geo.inverse[1][0] = 170.0;
    geo.inverse[1][1] = 0.01;
    geo.forward[0][2] = geo.forward[1][1] = 100.0;
    CChartWriter writer;
    writer.Size(2, 1).Georeferencing(geo).Title("Harbour").Edition("12 March 2004").Revision("1/2/2003").Type("Topo");
    CChartWriter outlined = writer;
    outlined.Outline({{0, 170}, {0, -179}, {-1, -179}, {-1, 170}}).DatumShift(0.1, -0.1);
    CChartWriter chunked = outlined;
    chunked.Version(0x01000005);
    AddBuiltSeeds(argc, argv, {Folded(writer), Folded(outlined), Folded(chunked)});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FoldedFile file({data, size});
    CChartOutline chart;
    if (!chart.ReadFrom(file, "")) {
        if (chart.scale != 0.0) __builtin_trap();
        return 0;
    }
    if (!(chart.scale >= 0.0) || std::isinf(chart.scale)) __builtin_trap(); // would break the catalogue's order
    if (chart.polygon.empty() && !chart.ReadPolygonFrom(file)) return 0;
    CBoundsIndex index;
    index.Reset(1);
    index.Add(&chart, chart.bounds);
    const double lat = (chart.bounds.lat_min + chart.bounds.lat_max) / 2.0;
    const double lon = (chart.bounds.lon_min + chart.bounds.lon_max) / 2.0;
    for (const double turn : {0.0, 360.0, -360.0}) {
        bool found = false;
        index.Ascending(lat, lon + turn, 0, [&found](const CChartOutline*) { return found = true; });
        const bool sane = std::abs(lon) < 1e6;
        if (sane && !chart.polygon.empty() && chart.doesContain(lat, lon + turn) && !found) __builtin_trap();
    }
    (void)get_folder_number(chart.title);
    return 0;
}
