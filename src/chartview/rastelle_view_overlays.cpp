#include "chartview/overlay_tool.h"
#include "chartview/rastelle_view.h"
#include "chartview/view_services.h"
#include "core/display_metrics.h"

#include <algorithm>
#include <cmath>
#include <limits>

// The overlay objects of the view: mapping, hits, and who gets an event.

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr FRect kEverywhere{-kInfinite, -kInfinite, kInfinite, kInfinite};
constexpr FRect kNowhere{kInfinite, kInfinite, -kInfinite, -kInfinite};

FRect Union(const FRect& a, const FRect& b)
{
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

} // namespace

void CRastelleView::OnUpdate(COverlayObject& object)
{
    const auto known = mapped.find(object.ViewKey());
    FRect area = known != mapped.end() ? DrawnArea(object, known->second.mapping) : kNowhere;
    if (object.action == COverlayObject::kAllGone) {
        mapped.clear();
        drag_object = nullptr;
        area = kEverywhere;
    } else if (object.action == COverlayObject::kDeleted || !object.isVisible()) {
        if (drag_object == &object) drag_object = nullptr;
        if (known != mapped.end()) mapped.erase(known);
    } else if (object.action == COverlayObject::kChanged) {
        Mapped& entry = known != mapped.end() ? known->second : mapped[object.ViewKey()];
        MapObject(object, entry);
        area = Union(area, DrawnArea(object, entry.mapping));
    }
    RepaintArea(area);
}

FRect CRastelleView::DrawnArea(const COverlayObject& object, const CMapping& mapping) const
{
    const bool selected = ToolIsActive() && TheOverlayTool()->Selected() == &object;
    const bool known = mapping.drawn_around >= 0.0 && !selected && !wrap.active() && smooth_scale == 1.0;
    if (!known) return kEverywhere;
    if (mapping.image_points.empty()) return kNowhere;
    const FRect on_screen = params.ImageToScreen(mapping.bounds);
    const double around = mapping.drawn_around;
    return {on_screen.left - around, on_screen.top - around, on_screen.right + around, on_screen.bottom + around};
}

void CRastelleView::MapObject(const COverlayObject& object, Mapped& entry)
{
    entry.generation = projection_generation;
    entry.mapping.clear();
    entry.mapping.wrap_width = wrap.Width();
    if (projection.valid) object.Map(entry.mapping, projection);
}

CMapping* CRastelleView::FindMapping(const COverlayObject* object)
{
    if (object == nullptr) return nullptr;
    const auto found = mapped.find(object->ViewKey());
    return found != mapped.end() ? &found->second.mapping : nullptr;
}

DblPoint CRastelleView::ImagePoint(double x, double y) const
{
    DblPoint image;
    params.ScreenToImage(x, y, image.x, image.y);
    image.x = wrap.Normalise(image.x);
    return image;
}

bool CRastelleView::HitTest(CMapping& mapping, double x, double y, double precision_sq) const
{
    const auto at_x = static_cast<float>(x);
    const auto at_y = static_cast<float>(y);
    if (mapping.kind == CMapping::kAlways) return true;
    const auto [first, last] = wrap.CopiesInView(mapping.bounds, params.view_rect);
    for (int copy = first; copy <= last; ++copy) {
        const CViewParams of_copy = wrap.ParamsOf(params, copy);
        if (!mapping.MayBeHit(of_copy, at_x, at_y, precision_sq)) continue;
        mapping.move_screen();
        if (mapping.map_to_screen(of_copy) && mapping.HitTest_mapped(at_x, at_y, precision_sq)) {
            if (first != last) mapping.move_screen();
            return true;
        }
    }
    if (first != last) mapping.move_screen();
    return false;
}

bool CRastelleView::IsHit(const COverlayObject* object, double x, double y, double precision_sq)
{
    CMapping* const mapping = FindMapping(object);
    return mapping != nullptr && HitTest(*mapping, x, y, precision_sq);
}

COverlayObject* CRastelleView::AskObjectsFromTop(double x, double y, double precision_sq,
                                                 const std::function<int(COverlayObject&)>& handler)
{
    auto at = mapped.end();
    while (at != mapped.begin()) {
        --at;
        if (!HitTest(at->second.mapping, x, y, precision_sq)) continue;
        const COverlayObject::Key key = at->first;
        auto* const object = const_cast<COverlayObject*>(key.object);
        if (handler(*object) != 0) return mapped.contains(key) ? object : nullptr;
        at = mapped.lower_bound(key); // the handler may have changed the list
    }
    return nullptr;
}

void CRastelleView::onTap(double x, double y, double precision_sq)
{
    const FPoint at{static_cast<float>(x), static_cast<float>(y)};
    const DblPoint image = ImagePoint(x, y);
    IOverlayTool* const tool = TheOverlayTool();
    COverlayObject* const selected = ToolIsActive() ? tool->Selected() : nullptr;
    if (IsHit(selected, x, y, precision_sq) && selected->onTap(this, at, image) != 0) return;

    bool taken = false;
    AskObjectsFromTop(x, y, precision_sq, [&](COverlayObject& object) {
        const int result = &object != selected ? object.onTap(this, at, image) : 0;
        taken = taken || result != 0;
        return result;
    });
    if (!taken && ToolIsActive()) TheOverlayTool()->Deselect();
}

void CRastelleView::rightMouseDown(double x, double y)
{
    touch_moved = true; // the release is no tap
    const FPoint at{static_cast<float>(x), static_cast<float>(y)};
    const DblPoint image = ImagePoint(x, y);
    bool taken = false;
    AskObjectsFromTop(x, y, graphicsClickPrecisionSq, [&](COverlayObject& object) {
        const int result = object.onRightClick(this, at, image);
        taken = taken || result != 0;
        return result;
    });
    if (!taken) TheViewServices().ShowContextMenu(*this, x, y);
}
