#include "chartview/selection_tool.h"

#include "chartview/mark_tool.h"
#include "chartview/rastelle_view.h"
#include "chartview/track_tool.h"
#include "core/heartbeat.h"
#include "overlays/overlay_mark.h"
#include "overlays/track_section.h"

std::unique_ptr<COverlayTool> COverlayTool::the_tool;

COverlayTool::COverlayTool(CRastelleView& with_view, COverlayObject& with_object)
    : view(with_view), object(&with_object), item(COverlayToolItem::Make(with_view, [this](COverlayToolItem& over) {
        OnMenu(ZT_HWND(&over, over.width() / 2.0, over.height() / 2.0));
    }))
{
    Listener<COverlayObject>::Connect();
    Listener<CUnits>::Connect();
}

COverlayTool::~COverlayTool()
{
    Listener<CUnits>::Disconnect();
    Listener<COverlayObject>::Disconnect();
    if (item != nullptr) item->deleteLater();
}

void COverlayTool::Select(CRastelleView& view, COverlayObject& object, const DblPoint& place)
{
    if (the_tool != nullptr && the_tool->Selected() == &object && &the_tool->view == &view) return;
    DeselectTool();
    switch (object.type) {
    case COverlayObject::kMark:
    case COverlayObject::kWaypoint:
        the_tool = std::make_unique<CMarkTool>(view, static_cast<COverlayMark&>(object));
        break;
    case COverlayObject::kTrackSection:
        the_tool = std::make_unique<CTrackTool>(view, static_cast<CTrackSection&>(object), place);
        break;
    default:
        return;
    }
    SetOverlayTool(the_tool.get());
    double lat = 0.0;
    double lon = 0.0;
    the_tool->Position(lat, lon);
    CUnits::Default->SetBearingLocation(lat, lon, CHeartbeat::TheHeartbeat.Timestamp());
    the_tool->SetLabel();
    the_tool->Place();
    object.Dispatch(COverlayObject::kLookChanged);
}

void COverlayTool::DeselectTool()
{
    if (the_tool == nullptr) return;
    const std::unique_ptr<COverlayTool> gone = std::move(the_tool);
    SetOverlayTool(nullptr);
    if (gone->object != nullptr) gone->object->Dispatch(COverlayObject::kLookChanged);
}

void COverlayTool::OnViewClosed(const CRastelleView& view)
{
    if (the_tool != nullptr && the_tool->IsActiveIn(view)) DeselectTool();
}

void COverlayTool::OnUpdate(COverlayObject& changed)
{
    const bool all_gone = changed.action == COverlayObject::kAllGone;
    if (!all_gone && &changed != object) return;
    if (all_gone || changed.action == COverlayObject::kDeleted || !changed.isVisible()) {
        object = nullptr; // it is dying, or hidden: nothing is published for it any more
        DeselectTool();
    } else if (changed.action == COverlayObject::kChanged) {
        Place();
        SetLabel();
    }
}

void COverlayTool::OnDelete()
{
    if (!IsLocked()) DeleteObject(view.hWnd());
}

std::string COverlayTool::Label() const
{
    return item != nullptr ? item->label().toStdString() : MakeLabel();
}

void COverlayTool::SetLabel()
{
    if (item != nullptr) item->setLabel(MakeLabel());
}

void COverlayTool::Place()
{
    double lat = 0.0;
    double lon = 0.0;
    Position(lat, lon);
    const bool shown = view.LatLongToScreen(lat, lon, x, y);
    if (item == nullptr) return;
    item->setVisible(shown);
    if (shown) item->setCenterPoint({static_cast<float>(x), static_cast<float>(y)});
}

void COverlayTool::DrawOver(QPainter* painter, const CViewParams&, CMapping&)
{
    double lat = 0.0;
    double lon = 0.0;
    Position(lat, lon);
    double at_x = 0.0;
    double at_y = 0.0;
    if (view.LatLongToScreen(lat, lon, at_x, at_y)) DrawMarker(painter, at_x, at_y);
}
