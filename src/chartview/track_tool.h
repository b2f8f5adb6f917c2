#pragma once

#include "chartview/selection_tool.h"

class COverlayTrack;

/// Holds a place on a track, always one of its points. Distances count along the track.
class CTrackTool : public COverlayTool {
public:
    /// `place` is where it was tapped, chart pixels.
    CTrackTool(CRastelleView& with_view, CTrackSection& with_section, const DblPoint& place);

    CTrackSection* GetSelectedTrackSection() const override;
    const COverlayTrack& Track() const { return track; }
    int Index() const { return index; }
    /// Slides the marker to the point of the track that is nearest to the finger.
    void Move(CRastelleView& in, double dx, double dy) override;

protected:
    std::string MakeLabel() const override;
    void Position(double& lat, double& lon) const override;
    bool IsLocked() const override;
    void DeleteObject(ZT_HWND parent) override;
    void DrawMarker(QPainter* painter, double at_x, double at_y) const override;

private:
    CTrackSection& Section() const;
    void SlideTo(double lat, double lon);

    COverlayTrack& track;
    int index = 0;
    double finger_x = 0.0; ///< where the drag has come to, device pixels
    double finger_y = 0.0;
};
