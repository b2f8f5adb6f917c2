#pragma once

#include "chart/polynomial_projection.h"
#include "core/heartbeat.h"
#include "overlays/gps_position.h"

#include <cmath>

/// Own ships that sail in tests, on a settings state of their own.
struct CSettingsKeeper {
    CSettingsKeeper() { Restore(); }
    ~CSettingsKeeper() { Restore(); }
    static void Restore()
    {
        COverlayGPSPosition::averaging_time = 30.1;
        COverlayGPSPosition::use_averaged_direction = false;
        COverlayGPSPosition::compass_cal = {};
        COverlayMovingTarget::gc_color = {1.0F, 0.0F, 0.0F};
        COverlayMovingTarget::velocity_vector_scale = 5.0F;
        COverlayMovingTarget::show_vector = true;
        COverlayMovingTarget::range_ring_radius = 0.0F;
        COverlayMovingTarget::num_range_rings = 0;
    }
};

/// Steps a ship along a course, one fix a second.
class CVoyage {
public:
    CVoyage(COverlayGPSPosition& sailing, double lat, double lon) : ship(sailing)
    {
        ship.set_latlon(lat, lon);
        ship.status = CDataGPSPosition::kFix;
    }
    /// `report` tells the receiver's own course and speed too.
    void Sail(float course, float knots, int seconds, bool report = true)
    {
        for (int i = 0; i < seconds; ++i) {
            double x = 0.0;
            double y = 0.0;
            CSimpleGrid::polar_to_xy(static_cast<double>(knots) * 1852.0 / 3600.0, static_cast<double>(course), x, y);
            double lat = 0.0;
            double lon = 0.0;
            ship.grid.xy_to_latlon(x, y, lat, lon);
            ship.set_latlon(lat, lon);
            if (report) ship.set_course(course, knots);
            ship.time = now += 1.0;
            ship.DispatchPositionUpdate();
        }
    }
    double now = 1.7e9;

private:
    COverlayGPSPosition& ship;
};

/// A chart of one image pixel per 0.0001 degree with its origin at (lat, lon), turned so that north lies
/// `clockwise` degrees to the right of up.
inline CPolynomialProjection FlatChart(double lat, double lon, double clockwise = 0.0)
{
    constexpr double kPixels = 10000.0;
    const double c = std::cos(clockwise * M_PI / 180.0);
    const double s = std::sin(clockwise * M_PI / 180.0);
    double forward[2][10] = {};
    double inverse[2][10] = {};
    // East is (c, s) on the image and north (s, -c).
    forward[0][0] = -kPixels * (c * lon + s * lat);
    forward[0][1] = kPixels * s;
    forward[0][2] = kPixels * c;
    forward[1][0] = -kPixels * (s * lon - c * lat);
    forward[1][1] = -kPixels * c;
    forward[1][2] = kPixels * s;
    inverse[0][0] = lat;
    inverse[0][1] = s / kPixels;
    inverse[0][2] = -c / kPixels;
    inverse[1][0] = lon;
    inverse[1][1] = c / kPixels;
    inverse[1][2] = s / kPixels;
    CPolynomialProjection projection;
    projection.init(forward, inverse, 1000, 1000, 0.0, 0.0);
    return projection;
}
