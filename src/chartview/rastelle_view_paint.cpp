#include "chartview/overlay_tool.h"
#include "chartview/rastelle_view.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

namespace {

/// A shrunk picture is painted on beyond the window down to this stretch, so that a zoom step shows no border.
constexpr double kShrinkFilled = 0.75;

QRectF ToQRect(const FRect& rect)
{
    return {rect.left, rect.top, rect.width(), rect.height()};
}

} // namespace

bool CRastelleView::onDraw(QPainter* painter, double x, double y, double w, double h)
{
    placeholders = false;
    if (!IsOpen() || opening) return false;
    const FRect rect = DrawnRect({x, y, x + w, y + h});
    const bool stretched = smooth_scale != 1.0;
    if (stretched) {
        painter->save();
        painter->translate(pointer_x, pointer_y);
        painter->scale(smooth_scale, smooth_scale);
        painter->translate(-pointer_x, -pointer_y);
    }
    params.view_rect = ViewRect(rect);
    DrawChart(painter, rect);
    DrawOverlays(painter);
    DrawTool(painter);
    if (stretched) painter->restore();
    return true;
}

bool CRastelleView::IsLoading()
{
    return isLoading() || (odd_copy != nullptr && odd_copy->isLoading());
}

FRect CRastelleView::DrawnRect(const FRect& window) const
{
    if (smooth_scale >= 1.0) return window;
    const double grow = 1.0 / std::max(smooth_scale, kShrinkFilled);
    return {std::floor(pointer_x + (window.left - pointer_x) * grow),
            std::floor(pointer_y + (window.top - pointer_y) * grow),
            std::ceil(pointer_x + (window.right - pointer_x) * grow),
            std::ceil(pointer_y + (window.bottom - pointer_y) * grow)};
}

void CRastelleView::DrawChart(QPainter* painter, const FRect& rect)
{
    if (wrap.active()) {
        DrawWorld(painter, rect);
        return;
    }
    DblPoint origin;
    params.ScreenToImage(rect.left, rect.top, origin.x, origin.y);
    Draw(painter, rect, origin, params.level, placeholders);
}

CCachedRastelle& CRastelleView::CacheOfCopy(int copy)
{
    return wrap.IsOdd(copy) && odd_copy != nullptr ? *odd_copy : *this;
}

void CRastelleView::DrawWorld(QPainter* painter, const FRect& rect)
{
    const FRect image = params.ScreenToImage(rect);
    const double copy_width = wrap.Width() * params.scale;
    const bool whole_world = copy_width <= rect.width();
    const int last = wrap.CopyOf(image.right);
    for (int copy = wrap.CopyOf(image.left); copy <= last; ++copy) {
        const CViewParams of_copy = wrap.ParamsOf(params, copy);
        FRect all = rect;
        all.left = -of_copy.offset_x * params.scale;
        all.right = all.left + copy_width;
        FRect seen = all;
        seen.left = std::max(all.left, rect.left);
        seen.right = std::min(all.right, rect.right);
        if (!(seen.width() > 0.0)) continue;
        // One set of squares serves every repetition as long as each is drawn with the same, whole grid.
        const FRect& drawn = whole_world ? all : seen;
        DblPoint origin;
        of_copy.ScreenToImage(drawn.left, drawn.top, origin.x, origin.y);
        painter->save();
        painter->setClipRect(ToQRect(seen), Qt::IntersectClip);
        bool missing = false;
        CacheOfCopy(whole_world ? 0 : copy).Draw(painter, drawn, origin, params.level, missing);
        placeholders = placeholders || missing;
        painter->restore();
    }
}

void CRastelleView::DrawOverlays(QPainter* painter)
{
    int drawn = 0;
    for (auto& [key, entry] : mapped) {
        CMapping& mapping = entry.mapping;
        const auto copies = wrap.CopiesInView(mapping.bounds, params.view_rect);
        if (copies.last < copies.first && mapping.kind != CMapping::kAlways) continue;
        if (++drawn > kMaxObjectsDrawn) break;
        DrawObject(painter, *key.object, mapping);
    }
}

void CRastelleView::DrawObject(QPainter* painter, const COverlayObject& object, CMapping& mapping)
{
    const auto [first, last] = wrap.CopiesInView(mapping.bounds, params.view_rect);
    if (last < first) { // drawn wherever it lies
        mapping.map_to_screen(params);
        object.Draw(painter, params, mapping);
        return;
    }
    for (int copy = first; copy <= last; ++copy) {
        if (first != last) mapping.move_screen();
        const CViewParams of_copy = wrap.ParamsOf(params, copy);
        mapping.map_to_screen(of_copy);
        object.Draw(painter, of_copy, mapping);
    }
    if (first != last) mapping.move_screen(); // the points are those of one repetition
}

void CRastelleView::DrawTool(QPainter* painter)
{
    if (!ToolIsActive() || TheOverlayTool()->Selected() == nullptr) return;
    CMapping* const mapping = FindMapping(TheOverlayTool()->Selected());
    if (mapping == nullptr) {
        TheOverlayTool()->Deselect();
        return;
    }
    mapping->map_to_screen(params);
    TheOverlayTool()->DrawOver(painter, params, *mapping);
}
