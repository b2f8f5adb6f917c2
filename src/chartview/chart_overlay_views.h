#pragma once

#include "overlays/overlay_views.h"

/// What overlay objects ask of the views and of the selection, answered by them. Made by the application.
class CChartOverlayViews : public IOverlayViews {
public:
    CChartOverlayViews();
    ~CChartOverlayViews() override;

    bool PositionOf(const CRastelleView& view, const DblPoint& place, double& lat, double& lon) const override;
    ZT_HWND HandleAt(const CRastelleView& view, const FPoint& screen) const override;
    double DisplayedScale() const override;
    void Select(CRastelleView& view, COverlayObject& object, const FPoint& screen, const DblPoint& place) override;
    void Deselect() override;
    bool IsSelected(const COverlayObject& object) const override;
    bool IsSelected(const COverlayTrack& track) const override;
    int SelectedPoint(const CTrackSection& section) const override;
};
