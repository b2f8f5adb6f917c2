#pragma once

#include "core/geometry.h"
#include "core/zt_hwnd.h"

class COverlayObject;
class COverlayTrack;
class CRastelleView;
class CTrackSection;

/// What overlay objects ask of the views that they lie on and of the tool that holds the selected one. A base operation
/// does nothing, which is also what happens when nobody has set one. Main thread only.
struct IOverlayViews {
    virtual ~IOverlayViews() = default;
    /// The position (degrees) of a place on the view's chart (chart pixels); false when there is none.
    virtual bool PositionOf(const CRastelleView&, const DblPoint& /*place*/, double& /*lat*/, double& /*lon*/) const
    {
        return false;
    }
    /// Where a menu for a place on the screen (device pixels) of the view opens.
    virtual ZT_HWND HandleAt(const CRastelleView&, const FPoint& /*screen*/) const { return {}; }
    /// Nautical miles per screen pixel in the view that was used last; 0 without one.
    virtual double DisplayedScale() const { return 0.0; }
    /// Makes the object the selected one, with its label and button in that view.
    virtual void Select(CRastelleView&, COverlayObject&, const FPoint& /*screen*/, const DblPoint& /*place*/) {}
    virtual void Deselect() {}
    virtual bool IsSelected(const COverlayObject&) const { return false; }
    virtual bool IsSelected(const COverlayTrack&) const { return false; }
    /// The point of the section at which the selected place of the track lies; -1 when it lies on no point of it.
    virtual int SelectedPoint(const CTrackSection&) const { return -1; }
};

/// The one in force. Never null.
IOverlayViews& TheOverlayViews();
/// Null brings back the one that does nothing.
void SetOverlayViews(IOverlayViews* views);

/// Metres on the ground, at the scale that is shown, within which the ends of two routes or tracks can be joined.
double JoinDistance();
