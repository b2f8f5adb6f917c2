#pragma once

#include "chart/rastelle.h"

#include <memory>
#include <string>

/// A chart opened for inspection, with what the program would say when it does not open. The file is only read, also
/// where the program would delete it.
struct COpenedChart {
    /// `header` takes a chunked chart whose pixels are not to be had, too: it opens, and `error` is set all the same.
    enum class Need { pixels, header };
    explicit COpenedChart(const std::string& path, Need need = Need::pixels);

    std::unique_ptr<CRastelle> chart; ///< open; null when there was an error, but for Need::header
    std::string error;                ///< empty when the program opens the chart
};
