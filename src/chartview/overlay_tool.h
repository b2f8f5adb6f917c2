#pragma once

class COverlayObject;
class CMapping;
class CRastelleView;
class QPainter;
struct CViewParams;

/// The tool that edits overlays on a view: it holds the selected object. None exists until one is set. Main thread
/// only.
struct IOverlayTool {
    virtual ~IOverlayTool() = default;
    virtual bool IsActiveIn(const CRastelleView& view) const = 0;
    /// Null when nothing is selected.
    virtual COverlayObject* Selected() const = 0;
    /// The finger or mouse moved the object it holds by a screen delta, device pixels.
    virtual void Move(CRastelleView& view, double dx, double dy) = 0;
    /// Draws over everything; the mapping is that of the selected object.
    virtual void DrawOver(QPainter* painter, const CViewParams& params, CMapping& mapping) = 0;
    /// The view's chart has moved on the screen.
    virtual void OnViewMoved(CRastelleView& view) = 0;
    /// The Delete key, with an object selected.
    virtual void OnDelete() = 0;
    virtual void Deselect() = 0;
};

/// The tool in force, or null.
IOverlayTool* TheOverlayTool();
void SetOverlayTool(IOverlayTool* tool);
