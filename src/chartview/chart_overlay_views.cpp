#include "chartview/chart_overlay_views.h"

#include "chartview/rastelle_view.h"
#include "chartview/selection_tool.h"
#include "chartview/track_tool.h"
#include "core/display_metrics.h"
#include "overlays/track_section.h"

CChartOverlayViews::CChartOverlayViews()
{
    SetOverlayViews(this);
}

CChartOverlayViews::~CChartOverlayViews()
{
    COverlayTool::DeselectTool();
    SetOverlayViews(nullptr);
}

bool CChartOverlayViews::PositionOf(const CRastelleView& view, const DblPoint& place, double& lat, double& lon) const
{
    return view.PositionOf(place, lat, lon);
}

ZT_HWND CChartOverlayViews::HandleAt(const CRastelleView& view, const FPoint& screen) const
{
    ZT_HWND handle = view.hWnd();
    handle.x = static_cast<double>(screen.x) / graphicsResolution;
    handle.y = static_cast<double>(screen.y) / graphicsResolution;
    return handle;
}

double CChartOverlayViews::DisplayedScale() const
{
    return CRastelleView::LastUsed() != nullptr ? CRastelleView::LastUsed()->getDisplayedScale() : 0.0;
}

void CChartOverlayViews::Select(CRastelleView& view, COverlayObject& object, const FPoint&, const DblPoint& place)
{
    COverlayTool::Select(view, object, place);
}

void CChartOverlayViews::Deselect()
{
    COverlayTool::DeselectTool();
}

bool CChartOverlayViews::IsSelected(const COverlayObject& object) const
{
    return COverlayTool::The() != nullptr && COverlayTool::The()->Selected() == &object;
}

bool CChartOverlayViews::IsSelected(const COverlayTrack& track) const
{
    const COverlayTool* tool = COverlayTool::The();
    const CTrackSection* section = tool != nullptr ? tool->GetSelectedTrackSection() : nullptr;
    return section != nullptr && section->track == &track;
}

int CChartOverlayViews::SelectedPoint(const CTrackSection& section) const
{
    const COverlayTool* tool = COverlayTool::The();
    if (tool == nullptr || tool->GetSelectedTrackSection() != &section) return -1;
    return static_cast<const CTrackTool*>(tool)->Index();
}
