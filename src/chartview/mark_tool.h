#pragma once

#include "chartview/selection_tool.h"

/// Holds a mark or waypoint. Distances count from the waypoint before it (for the first one, behind it), for a free
/// mark from the boat.
class CMarkTool : public COverlayTool, Listener<CDataGPSPosition> {
public:
    CMarkTool(CRastelleView& with_view, COverlayMark& with_mark);

    COverlayMark* GetSelectedMark() const override { return &mark; }
    /// A locked mark, or one of a locked route, stays where it is.
    void Move(CRastelleView& in, double dx, double dy) override;

protected:
    std::string MakeLabel() const override;
    void Position(double& lat, double& lon) const override;
    bool IsLocked() const override;
    void DeleteObject(ZT_HWND parent) override;
    void DrawMarker(QPainter* painter, double at_x, double at_y) const override;
    void OnUpdate(CDataGPSPosition& position) override;
    void OnUpdate(COverlayObject& changed) override;
    using COverlayTool::OnUpdate;

private:
    void FindOrigin();

    COverlayMark& mark;
    bool is_first = false; ///< of its route
};
