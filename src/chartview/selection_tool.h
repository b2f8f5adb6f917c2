#pragma once

#include "chartview/overlay_tool.h"
#include "chartview/overlay_tool_item.h"
#include "core/listener.h"
#include "core/simple_grid.h"
#include "navdata/data_gps_position.h"
#include "navdata/units.h"
#include "overlays/overlay_object.h"

#include <memory>
#include <string>

#include <QPointer>

class COverlayMark;
class CRastelleView;
class CSyncable;
class CTrackSection;

/// The tool that holds the one selected overlay object: it floats a label and a button at it, follows it, and lets the
/// user drag it. At most one exists. Main thread only.
class COverlayTool : public IOverlayTool, protected Listener<COverlayObject>, Listener<CUnits> {
public:
    ~COverlayTool() override;

    /// Replaces the present tool. The view and the object are told.
    static void Select(CRastelleView& view, COverlayObject& object, const DblPoint& place);
    static COverlayTool* The() { return the_tool.get(); }
    static void DeselectTool();
    /// A view closes.
    static void OnViewClosed(const CRastelleView& view);

    bool IsActiveIn(const CRastelleView& with_view) const override { return &view == &with_view; }
    COverlayObject* Selected() const override { return object; }
    void DrawOver(QPainter* painter, const CViewParams& params, CMapping& mapping) override;
    void OnViewMoved(CRastelleView&) override { Place(); }
    void OnDelete() override;
    void Deselect() override { DeselectTool(); }

    virtual COverlayMark* GetSelectedMark() const { return nullptr; }
    virtual CTrackSection* GetSelectedTrackSection() const { return nullptr; }
    std::string Label() const;
    /// The popup button or a right click: the menu of the object.
    void OnMenu(ZT_HWND parent) { object->onMenuDown(parent); }

protected:
    COverlayTool(CRastelleView& with_view, COverlayObject& with_object);

    virtual std::string MakeLabel() const = 0;
    /// The place that is selected, degrees.
    virtual void Position(double& lat, double& lon) const = 0;
    virtual bool IsLocked() const = 0;
    virtual void DeleteObject(ZT_HWND parent) = 0;
    virtual void DrawMarker(QPainter* painter, double x, double y) const = 0;
    void OnUpdate(COverlayObject& changed) override;
    void OnUpdate(CUnits&) override { SetLabel(); }
    /// To be called once the derived tool stands, and whenever the label may say something else.
    void SetLabel();
    /// Moves label and button to where the object is on the screen.
    void Place();

    CRastelleView& view;
    COverlayObject* object;
    CSimpleGrid grid; ///< origin where distances are counted from
    double x = 0.0;   ///< of the selected place on the screen, device pixels
    double y = 0.0;

private:
    static std::unique_ptr<COverlayTool> the_tool;
    QPointer<COverlayToolItem> item;
};
