#pragma once

#include "chart/rastelle.h"

/// A flat chart: every tile lies in the chart file itself. A tile outside the chart is all index 1, one whose block
/// cannot be reached all index 0.
class CRastelle1 : public CRastelle {
public:
    int ReadBlock(int x, int y, int level, unsigned char* out, ThreadDataForRead* thread) override;
    int ReadBlockRow(int x, int y, int count, int level, ThreadDataForRead* thread) override;
    /// Refuses another family: only a flat one's tile pointers have been found whole.
    bool OnOpen() override { return header->Family() == Header::kFamilyFlat; }

private:
    bool IsOnChart(int x, int y) const;
    std::span<const std::uint8_t> BlockOfTile(BlockReader& reader, int x, int y) const;
};
