#include "tools/zt_chart/block_check.h"
#include "tools/zt_chart/cli.h"
#include "tools/zt_chart/opened_chart.h"

#include "core/text.h"

#include <cstdio>
#include <cstring>

namespace {

std::uint32_t PointerOfTile(CRastelle& chart, std::uint64_t tile)
{
    std::uint32_t pointer = 0;
    CRastelle::BlockReader reader(chart);
    const auto bytes = reader.Bytes(CRastelleHeader::kTilePointers + 4 * tile);
    if (bytes.size() >= sizeof pointer) std::memcpy(&pointer, bytes.data(), sizeof pointer);
    return pointer;
}

/// The first fault of a chart that has opened; empty when there is none.
std::string FirstFault(CRastelle& chart)
{
    const std::uint32_t across = chart.header->width;
    const std::uint64_t tiles = std::uint64_t{across} * chart.header->height;
    for (std::uint64_t tile = 0; tile < tiles; ++tile) {
        const std::uint32_t pointer = PointerOfTile(chart, tile);
        CRastelle::BlockReader reader(chart);
        const std::string fault = pointer == 0 ? "has no block" : FaultOfBlock(reader.Bytes(pointer));
        if (fault.empty()) continue;
        return stringprintf("tile %llu,%llu (block at 0x%X): %s", static_cast<unsigned long long>(tile % across),
                            static_cast<unsigned long long>(tile / across), pointer, fault.c_str());
    }
    for (std::size_t i = 0; i < sizeof chart.header->interpolation_matrix; ++i) {
        const int index = chart.header->interpolation_matrix[i];
        if (index >= kPaletteSize) return stringprintf("interpolation matrix entry %zu is %d", i, index);
    }
    return {};
}

} // namespace

int VerifyCommand(const QStringList& arguments)
{
    QCommandLineParser parser;
    if (!ParseArguments(parser, arguments, 1, 1000000)) return kWrongUse;
    int result = kDone;
    for (const QString& name : parser.positionalArguments()) {
        const std::string path = name.toStdString();
        const COpenedChart opened(path);
        std::string fault = opened.error;
        if (opened.chart) fault = FirstFault(*opened.chart);
        std::printf("%s: %s\n", path.c_str(), fault.empty() ? "good" : fault.c_str());
        if (!fault.empty()) result = kFailed;
    }
    return result;
}
