#pragma once

#include "chart/rastelle.h"

/// A chunked chart: header, palette and georeferencing lie in the chart file, the pixels in a chunk file (".RL3" or
/// ".rl3") beside it. The reading of chunks is not built: OnOpen refuses every such chart, without a message.
class CRastelle3 : public CRastelle {
public:
    int ReadBlock(int x, int y, int level, unsigned char* out, ThreadDataForRead* thread) override;
    bool OnOpen() override;
    bool appearsFullyDownloadedWithin(const CBounds&) override { return false; }

    /// The chunk file of a chart: a file or a folder of slices. Empty when there is none.
    static std::string ChunkPath(const std::string& chart_path);
};
