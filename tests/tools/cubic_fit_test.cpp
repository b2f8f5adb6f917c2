#include "tools/common/cubic_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

struct CFitCase {
    const char* name;
    double width;
    double height;
    pixel_to_position position;
    double most_px; ///< the fit must be at least this good
};

std::optional<CControlPoint> Sheared(double x, double y)
{
    return CControlPoint{x, y, 48.0 - 0.0007 * y + 0.0002 * x, -5.0 + 0.0011 * x + 0.0003 * y};
}

std::optional<CControlPoint> MercatorRow(double x, double y)
{
    return CControlPoint{x, y, std::atan(std::sinh(1.0 - y / 5000.0)) * 57.29577951308232, 150.0 + x / 50.0};
}

std::optional<CControlPoint> QuarterTurn(double x, double y)
{
    return CControlPoint{x, y, 10.0 + x * 0.001, 20.0 + y * 0.001};
}

std::optional<CControlPoint> Conic(double x, double y)
{
    const double rho = 9000.0 + y;
    const double theta = (x - 1500.0) / rho;
    return CControlPoint{x, y, 60.0 - (rho * std::cos(theta) - 9000.0) * 0.004, 10.0 + theta * 40.0};
}

const CFitCase kFits[] = {{"affine_is_exact", 3000, 2000, Sheared, 1e-6},
                          {"turned_by_90_degrees", 1000, 4000, QuarterTurn, 1e-6},
                          {"mercator_over_the_date_line", 4096, 2500, MercatorRow, 1.0},
                          {"conic", 3000, 2000, Conic, 0.5}};

} // namespace

// What counts is what the program makes of the coefficients, between the control points too.
TEST(CubicFit, ProgramReadsTheFitWithinItsResidual)
{
    for (const CFitCase& row : kFits) {
        SCOPED_TRACE(row.name);
        const auto fit = FitGeoReference(ControlGrid(row.width, row.height, row.position));
        ASSERT_TRUE(fit);
        EXPECT_LE(fit->forward_px, row.most_px);
        EXPECT_LE(fit->inverse_px, row.most_px);
        double forward = 0.0;
        double inverse = 0.0;
        for (double y = 3.0; y < row.height; y += row.height / 37) {
            for (double x = 3.0; x < row.width; x += row.width / 41) {
                const CControlPoint point = *row.position(x, y);
                double x_found = 0.0;
                double y_found = 0.0;
                fit->coefficients.latlong_to_xy(point.lat, point.lon, x_found, y_found, point.lon);
                forward = std::max(forward, std::hypot(x_found - x, y_found - y));
                double lat = 0.0;
                double lon = 0.0;
                fit->coefficients.xy_to_latlong(x, y, lat, lon);
                fit->coefficients.latlong_to_xy(lat, lon, x_found, y_found, point.lon);
                double x_true = 0.0;
                double y_true = 0.0;
                fit->coefficients.latlong_to_xy(point.lat, point.lon, x_true, y_true, point.lon);
                inverse = std::max(inverse, std::hypot(x_found - x_true, y_found - y_true));
            }
        }
        EXPECT_LE(forward, fit->forward_px * 1.05 + 1e-6);
        EXPECT_LE(inverse, fit->inverse_px * 1.05 + 1e-6);
    }
}

TEST(CubicFit, RefusesWhatSettlesNoCubic)
{
    const auto grid = ControlGrid(1000, 1000, Sheared, 8);
    auto not_a_number = grid;
    not_a_number[5].lat = std::numeric_limits<double>::quiet_NaN();
    auto one_line = grid;
    for (CControlPoint& point : one_line) point.y = point.lat = point.x;
    std::vector<CControlPoint> too_few(grid.begin(), grid.begin() + 9);
    for (const auto& points : {not_a_number, one_line, too_few}) EXPECT_FALSE(FitGeoReference(points));
}
