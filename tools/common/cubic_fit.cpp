#include "tools/common/cubic_fit.h"

#include "tools/common/cubic.h"
#include "tools/common/linear_solver.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

namespace {

/// The control points in coordinates of -1 to 1.
struct CScaledPoints {
    CAxisScale x, y, lat, lon;
    std::vector<CControlPoint> points;
};

/// Both pairs of cubics in scaled coordinates.
struct CCubicPairs {
    CCubic to_x{}, to_y{};     ///< from (lat, lon)
    CCubic to_lat{}, to_lon{}; ///< from (x, y)
};

CAxisScale AxisOf(const std::vector<CControlPoint>& points, double CControlPoint::*field)
{
    double low = points.front().*field;
    double high = low;
    for (const CControlPoint& point : points) {
        low = std::min(low, point.*field);
        high = std::max(high, point.*field);
    }
    return CAxisScale::Over(low, high);
}

CScaledPoints Scale(const std::vector<CControlPoint>& points)
{
    CScaledPoints scaled{AxisOf(points, &CControlPoint::x), AxisOf(points, &CControlPoint::y),
                         AxisOf(points, &CControlPoint::lat), AxisOf(points, &CControlPoint::lon), points};
    for (CControlPoint& p : scaled.points) {
        p = {scaled.x.To(p.x), scaled.y.To(p.y), scaled.lat.To(p.lat), scaled.lon.To(p.lon)};
    }
    return scaled;
}

using CField = double CControlPoint::*;

/// The least-squares cubic in the fields `a` and `b` for the field `value`.
bool LeastSquares(const std::vector<CControlPoint>& points, CField a, CField b, CField value, CCubic& out)
{
    std::vector<double> matrix(100, 0.0);
    std::vector<double> right(10, 0.0);
    for (const CControlPoint& point : points) {
        const CCubic terms = CubicTerms(point.*a, point.*b);
        for (std::size_t i = 0; i < 10; ++i) {
            for (std::size_t j = 0; j < 10; ++j) matrix[i * 10 + j] += terms[i] * terms[j];
            right[i] += terms[i] * point.*value;
        }
    }
    if (!SolveLinear(matrix, right)) return false;
    std::copy(right.begin(), right.end(), out.begin());
    return true;
}

/// The reader's way from pixel to position: inverse, forward, and the inverse of the corrected pixel.
DblPoint CorrectedInverse(const CCubicPairs& cubics, double x, double y)
{
    const double lat = EvaluateCubic(cubics.to_lat, x, y);
    const double lon = EvaluateCubic(cubics.to_lon, x, y);
    const double x1 = 2 * x - EvaluateCubic(cubics.to_x, lat, lon);
    const double y1 = 2 * y - EvaluateCubic(cubics.to_y, lat, lon);
    return {EvaluateCubic(cubics.to_lat, x1, y1), EvaluateCubic(cubics.to_lon, x1, y1)};
}

/// How far, in pixels, the corrected inverse of a control point's pixel lies from its position.
DblPoint InverseError(const CScaledPoints& scaled, const CCubicPairs& cubics, const CControlPoint& point)
{
    const DblPoint found = CorrectedInverse(cubics, point.x, point.y);
    const DblPoint by_x = SlopesOfCubic(cubics.to_x, point.lat, point.lon);
    const DblPoint by_y = SlopesOfCubic(cubics.to_y, point.lat, point.lon);
    const double dlat = found.x - point.lat;
    const double dlon = found.y - point.lon;
    return {(by_x.x * dlat + by_x.y * dlon) * scaled.x.half, (by_y.x * dlat + by_y.y * dlon) * scaled.y.half};
}

double GreatestInverseError(const CScaledPoints& scaled, const CCubicPairs& cubics)
{
    double greatest = 0.0;
    for (const CControlPoint& point : scaled.points) {
        const DblPoint error = InverseError(scaled, cubics, point);
        greatest = std::max(greatest, std::hypot(error.x, error.y));
    }
    return greatest;
}

double GreatestForwardError(const CScaledPoints& scaled, const CCubicPairs& cubics)
{
    double greatest = 0.0;
    for (const CControlPoint& p : scaled.points) {
        const double dx = (EvaluateCubic(cubics.to_x, p.lat, p.lon) - p.x) * scaled.x.half;
        const double dy = (EvaluateCubic(cubics.to_y, p.lat, p.lon) - p.y) * scaled.y.half;
        greatest = std::max(greatest, std::hypot(dx, dy));
    }
    return greatest;
}

constexpr std::size_t kUnknowns = 20; // the coefficients of the inverse pair
constexpr double kStep = 1e-6;        // for numeric derivatives; coefficients are of the order of 1
constexpr int kRounds = 24;

double& Unknown(CCubicPairs& cubics, std::size_t index)
{
    return index < 10 ? cubics.to_lat[index] : cubics.to_lon[index - 10];
}

/// One Gauss-Newton step of the inverse pair under the given weights; false when it cannot be taken.
bool RefineOnce(const CScaledPoints& scaled, CCubicPairs& cubics, const std::vector<double>& weights)
{
    const std::size_t count = scaled.points.size();
    std::vector<DblPoint> errors(count);
    for (std::size_t i = 0; i < count; ++i) errors[i] = InverseError(scaled, cubics, scaled.points[i]);
    std::vector<std::vector<DblPoint>> slopes(kUnknowns, std::vector<DblPoint>(count));
    for (std::size_t k = 0; k < kUnknowns; ++k) {
        CCubicPairs moved = cubics;
        Unknown(moved, k) += kStep;
        for (std::size_t i = 0; i < count; ++i) {
            const DblPoint error = InverseError(scaled, moved, scaled.points[i]);
            slopes[k][i] = {(error.x - errors[i].x) / kStep, (error.y - errors[i].y) / kStep};
        }
    }
    std::vector<double> matrix(kUnknowns * kUnknowns, 0.0);
    std::vector<double> right(kUnknowns, 0.0);
    for (std::size_t k = 0; k < kUnknowns; ++k) {
        for (std::size_t i = 0; i < count; ++i) {
            const DblPoint slope = slopes[k][i];
            right[k] -= weights[i] * (slope.x * errors[i].x + slope.y * errors[i].y);
            for (std::size_t m = 0; m < kUnknowns; ++m) {
                matrix[k * kUnknowns + m] += weights[i] * (slope.x * slopes[m][i].x + slope.y * slopes[m][i].y);
            }
        }
    }
    // The corrected result hardly depends on some of the coefficients: damping keeps those where they are.
    for (std::size_t k = 0; k < kUnknowns; ++k) matrix[k * kUnknowns + k] = matrix[k * kUnknowns + k] * 1.02 + 1e-3;
    if (!SolveLinear(matrix, right)) return false;
    for (std::size_t k = 0; k < kUnknowns; ++k) Unknown(cubics, k) += right[k];
    return true;
}

/// Lawson's weights: a point counts the more the greater its error was, which leads towards the smallest maximum.
void UpdateWeights(const CScaledPoints& scaled, const CCubicPairs& cubics, std::vector<double>& weights)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const DblPoint error = InverseError(scaled, cubics, scaled.points[i]);
        weights[i] *= std::hypot(error.x, error.y);
        sum += weights[i];
    }
    if (!(sum > 0.0)) return;
    for (double& weight : weights) weight = weight / sum * static_cast<double>(weights.size()) + 1e-6;
}

/// Replaces the inverse pair by the best one found.
void RefineInverse(const CScaledPoints& scaled, CCubicPairs& cubics)
{
    constexpr double kGoodEnough = 0.02; // pixels
    double best = GreatestInverseError(scaled, cubics);
    CCubicPairs trial = cubics;
    std::vector<double> weights(scaled.points.size(), 1.0);
    for (int round = 0; round < kRounds && best > kGoodEnough; ++round) {
        if (!RefineOnce(scaled, trial, weights)) return;
        const double error = GreatestInverseError(scaled, trial);
        if (!std::isfinite(error)) return;
        if (error < best) {
            best = error;
            cubics = trial;
        }
        UpdateWeights(scaled, trial, weights);
    }
}

Geo_ref_coeff_t Unscale(const CScaledPoints& scaled, const CCubicPairs& cubics)
{
    const CCubic raw[4] = {UnscaleCubic(cubics.to_x, scaled.lat, scaled.lon, scaled.x),
                           UnscaleCubic(cubics.to_y, scaled.lat, scaled.lon, scaled.y),
                           UnscaleCubic(cubics.to_lat, scaled.x, scaled.y, scaled.lat),
                           UnscaleCubic(cubics.to_lon, scaled.x, scaled.y, scaled.lon)};
    Geo_ref_coeff_t coefficients{};
    static_assert(sizeof coefficients == sizeof raw);
    std::memcpy(static_cast<void*>(&coefficients), raw, sizeof raw);
    return coefficients;
}

bool AllFinite(const std::vector<CControlPoint>& points)
{
    return std::all_of(points.begin(), points.end(), [](const CControlPoint& p) {
        return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.lat) && std::isfinite(p.lon);
    });
}

} // namespace

std::vector<CControlPoint> ControlGrid(double width, double height, const pixel_to_position& position, int steps)
{
    std::vector<CControlPoint> points;
    for (int row = 0; row <= steps; ++row) {
        for (int column = 0; column <= steps; ++column) {
            const double x = width * (1 - std::cos(std::numbers::pi * column / steps)) / 2;
            const double y = height * (1 - std::cos(std::numbers::pi * row / steps)) / 2;
            if (const auto point = position(x, y)) points.push_back(*point);
        }
    }
    return points;
}

std::optional<CGeoFit> FitGeoReference(const std::vector<CControlPoint>& points)
{
    if (points.size() < 10 || !AllFinite(points)) return std::nullopt;
    const CScaledPoints scaled = Scale(points);
    using P = CControlPoint;
    CCubicPairs cubics;
    if (!LeastSquares(scaled.points, &P::lat, &P::lon, &P::x, cubics.to_x) ||
        !LeastSquares(scaled.points, &P::lat, &P::lon, &P::y, cubics.to_y) ||
        !LeastSquares(scaled.points, &P::x, &P::y, &P::lat, cubics.to_lat) ||
        !LeastSquares(scaled.points, &P::x, &P::y, &P::lon, cubics.to_lon))
        return std::nullopt;
    RefineInverse(scaled, cubics);
    return CGeoFit{Unscale(scaled, cubics), GreatestForwardError(scaled, cubics), GreatestInverseError(scaled, cubics)};
}
