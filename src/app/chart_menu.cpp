#include "app/chart_menu.h"

#include "chart/chart_list.h"
#include "chartview/rastelle_view.h"
#include "ui/action_sheet.h"

#include <list>

namespace {

constexpr std::size_t kMostEntries = 30; ///< what a finger still scrolls through

std::list<const CChartOutline*> ChartsInTheMiddle(const CRastelleView& view)
{
    std::list<const CChartOutline*> charts;
    double lat = 0.0;
    double lon = 0.0;
    if (p_chart_list != nullptr && view.GetCenterLatLon(lat, lon)) p_chart_list->ChartsAt(lat, lon, charts);
    if (charts.size() > kMostEntries) charts.resize(kMostEntries);
    return charts;
}

} // namespace

void AddChartsHere(CActionSheetMenu& menu, const CRastelleView& view)
{
    for (const CChartOutline* chart : ChartsInTheMiddle(view)) {
        const auto open = [path = chart->path] {
            if (CRastelleView* shown = CRastelleView::LastUsed()) shown->onOpen(shown->hWnd(), path.c_str(), true, {});
        };
        const bool in_use = chart == p_chart_list->current;
        menu.AddPlain({}, chart->title, open, "qrc:/map.svg", in_use ? Appearance::kCurrent : Appearance::kNormal);
    }
    if (menu.empty()) menu.Add("No charts here", {}, {}, Appearance::kDisabled);
}

void ShowChartMenu(const CRastelleView& view, ZT_HWND hwnd)
{
    CActionSheetMenu menu("Charts here");
    AddChartsHere(menu, view);
    menu.ShowMenu(hwnd);
}
