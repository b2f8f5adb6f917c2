#include "app/catalogue_scan.h"

#include "chart/chart_list.h"

namespace {

constexpr std::chrono::microseconds kSlice{5000};
constexpr int kPause_ms = 0;
constexpr int kIdle_ms = 500; ///< between looks for a scan that somebody has begun

} // namespace

CCatalogueScan::CCatalogueScan()
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &CCatalogueScan::Slice);
    timer.start(kPause_ms);
}

void CCatalogueScan::Slice()
{
    const bool more = p_chart_list != nullptr && p_chart_list->IsScanning() && p_chart_list->ScanSlice(kSlice);
    timer.start(more ? kPause_ms : kIdle_ms);
}
