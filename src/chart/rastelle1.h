#pragma once

#include "chart/rastelle.h"

/// A flat chart: every tile lies in the chart file itself. A tile outside the chart is all index 1, one whose block
/// cannot be reached all index 0.
class CRastelle1 : public CRastelle {
public:
    int ReadBlock(int x, int y, int level, unsigned char* out, ThreadDataForRead* thread) override;
    int ReadBlockRow(int x, int y, int count, int level, ThreadDataForRead* thread) override;

private:
    bool IsOnChart(int x, int y) const;
    std::span<const std::uint8_t> BlockOfTile(BlockReader& reader, int x, int y) const;
};
