#pragma once

#include "chart/rastelle.h"

/// A flat chart: every tile lies in the chart file itself.
class CRastelle1 : public CRastelle {
public:
    int ReadBlock(int x, int y, int level, unsigned char* out, ThreadDataForRead* thread) override;
    int ReadBlockRow(int x, int y, int count, int level, ThreadDataForRead* thread) override;
};
