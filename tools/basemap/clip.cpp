#include "tools/basemap/clip.h"

#include <algorithm>
#include <cmath>

namespace {

/// One side of the rectangle: `inside` is positive inside.
template <class Inside>
CPixelLine ClipSide(const CPixelLine& ring, Inside inside)
{
    CPixelLine out;
    out.reserve(ring.size() + 4);
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const DblPoint& from = ring[i];
        const DblPoint& to = ring[i + 1 < ring.size() ? i + 1 : 0];
        const double a = inside(from);
        const double b = inside(to);
        if (a >= 0) out.push_back(from);
        if ((a < 0) != (b < 0)) {
            const double t = a / (a - b);
            out.push_back({from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t});
        }
    }
    return out;
}

bool SegmentMayTouch(const DblPoint& a, const DblPoint& b, const FRect& rect)
{
    return std::max(a.x, b.x) >= rect.left && std::min(a.x, b.x) <= rect.right && std::max(a.y, b.y) >= rect.top &&
           std::min(a.y, b.y) <= rect.bottom;
}

} // namespace

CPixelLine ClipRing(const CPixelLine& ring, const FRect& rect)
{
    const FRect bounds = BoundsOf(ring);
    if (!bounds.overlaps(rect)) return {};
    CPixelLine out = ring;
    if (bounds.left < rect.left) out = ClipSide(out, [&](const DblPoint& p) { return p.x - rect.left; });
    if (bounds.right > rect.right) out = ClipSide(out, [&](const DblPoint& p) { return rect.right - p.x; });
    if (bounds.top < rect.top) out = ClipSide(out, [&](const DblPoint& p) { return p.y - rect.top; });
    if (bounds.bottom > rect.bottom) out = ClipSide(out, [&](const DblPoint& p) { return rect.bottom - p.y; });
    return out;
}

void ClipLine(const CPixelLine& line, const FRect& rect, std::size_t longest, std::vector<CPixelLine>& out)
{
    CPixelLine run;
    const auto finish = [&] {
        if (run.size() > 1) out.push_back(std::move(run));
        run.clear();
    };
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        if (!SegmentMayTouch(line[i], line[i + 1], rect)) {
            finish();
            continue;
        }
        if (run.size() > longest) finish();
        if (run.empty()) run.push_back(line[i]);
        run.push_back(line[i + 1]);
    }
    finish();
}

void ThinOut(CPixelLine& line, double distance)
{
    if (line.size() < 3) return;
    std::size_t kept = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const bool last = i + 1 == line.size();
        if (last || std::hypot(line[i].x - line[kept].x, line[i].y - line[kept].y) >= distance) line[++kept] = line[i];
    }
    line.resize(kept + 1);
}

FRect BoundsOf(const CPixelLine& line)
{
    FRect bounds{1e300, 1e300, -1e300, -1e300};
    for (const DblPoint& p : line) {
        bounds.left = std::min(bounds.left, p.x);
        bounds.right = std::max(bounds.right, p.x);
        bounds.top = std::min(bounds.top, p.y);
        bounds.bottom = std::max(bounds.bottom, p.y);
    }
    return bounds;
}
