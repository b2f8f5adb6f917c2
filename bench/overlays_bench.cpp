#include "chart/polynomial_projection.h"
#include "overlays/mark_manager.h"
#include "ratio.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include <QImage>
#include <QPainter>

namespace {

constexpr int kWaypoints = 1000;

/// A winding route, and a boat half way along it.
struct CLongRoute {
    CLongRoute()
    {
        const COverlayMark::CCreatingRoute as_waypoints;
        for (int i = 0; i < kWaypoints; ++i) {
            auto* const waypoint = new COverlayMark;
            waypoint->lat = 50.0 + 0.01 * i;
            waypoint->lon = -4.0 + 0.2 * std::sin(0.1 * i);
            route.InsertWaypoint(waypoint, nullptr);
        }
        boat_lat = 50.0 + 0.01 * (kWaypoints / 2);
        route.InitSegments();
    }

    /// The plainest thing that can be done with them: which waypoint is nearest.
    double NearestWaypoint() const
    {
        CSimpleGrid plane;
        plane.SetOrigin(boat_lat, boat_lon);
        double best = 1e300;
        for (const COverlayMark* waypoint : route.waypoints)
            best = std::min(best, plane.distance_squared(waypoint->lat, waypoint->lon));
        return best;
    }

    COverlayRoute route;
    double boat_lat = 0.0;
    double boat_lon = -4.0;
};

CLongRoute& LongRoute()
{
    static CLongRoute route;
    return route;
}

constexpr int kMarks = 20'000;

/// A window of 3840 x 2160 pixels, with 20,000 marks in it.
class CManyMarks {
public:
    CManyMarks()
    {
        CPolynomialProjection chart;
        double forward[2][10] = {};
        double inverse[2][10] = {};
        forward[0][2] = forward[1][1] = 1000.0;
        inverse[0][2] = inverse[1][1] = 0.001;
        chart.init(forward, inverse, 3840, 2160, 0.0, 0.0);
        frame.fill(Qt::lightGray);
        params.view_rect = {0.0, 0.0, 3840.0, 2160.0};
        for (int i = 0; i < kMarks; ++i) {
            marks.push_back(std::make_unique<COverlayMark>());
            marks.back()->lat = 0.001 * (20 + i / 200 * 21);
            marks.back()->lon = 0.001 * (20 + i % 200 * 19);
            mappings.emplace_back();
            marks.back()->Map(mappings.back(), chart);
        }
    }
    void Paint()
    {
        QPainter painter(&window);
        painter.drawImage(0, 0, frame);
    }
    /// One step of a pan: the chart, and every mark at its new place.
    void Pan()
    {
        params.offset_x = params.offset_x == 0.0 ? 8.0 : 0.0;
        QPainter painter(&window);
        painter.drawImage(0, 0, frame);
        int drawn = 0;
        for (std::size_t i = 0; i < marks.size(); ++i) {
            mappings[i].move_screen();
            if (!mappings[i].map_to_screen(params)) continue;
            marks[i]->Draw(&painter, params, mappings[i]);
            ++drawn;
        }
        if (drawn != kMarks) std::abort();
    }

private:
    std::vector<std::unique_ptr<COverlayMark>> marks;
    std::vector<CMapping> mappings;
    CViewParams params;
    QImage frame{3840, 2160, QImage::Format_RGB32};
    QImage window{3840, 2160, QImage::Format_RGB32};
};

CManyMarks& ManyMarks()
{
    static CManyMarks marks;
    return marks;
}

const bool registered = [] {
    RegisterRatio(
        "overlays/pan_3840x2160_with_20000_marks", [] { ManyMarks().Pan(); }, "frame without them",
        [] { ManyMarks().Paint(); });
    RegisterRatio(
        "routes/find_nearest_leg_of_1000",
        [] {
            COverlayRoute::CLeg leg;
            LongRoute().route.FindNearestLeg(LongRoute().boat_lat, LongRoute().boat_lon, leg);
            asm volatile("" ::"x"(leg.remaining) : "memory");
        },
        "distance to each waypoint",
        [] {
            const double nearest = LongRoute().NearestWaypoint();
            asm volatile("" ::"x"(nearest) : "memory");
        });
    return true;
}();

} // namespace
