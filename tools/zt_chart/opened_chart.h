#pragma once

#include "chart/rastelle.h"

#include <memory>
#include <string>

/// A chart opened for inspection, with what the program would say when it does not open. The file is only read, also
/// where the program would delete it.
struct COpenedChart {
    explicit COpenedChart(const std::string& path);

    std::unique_ptr<CRastelle> chart; ///< open; null when there was an error
    std::string error;                ///< empty when the chart is open
};
