#pragma once

/// The georeferencing of a chart as it lies in the file: two pairs of full cubics in two variables, which are only
/// approximate inverses of each other. Positions are degrees, north and east positive; pixels have their origin at the
/// chart's top left corner, y downwards.
///
/// Ten coefficients of a cubic in (a, b):
/// c0 + c1 a + c2 b + c3 a² + c4 ab + c5 b² + c6 a³ + c7 a²b + c8 ab² + c9 b³.
struct Geo_ref_coeff_t {
    double forward[2][10]; ///< (latitude, longitude) to x, to y
    double inverse[2][10]; ///< (x, y) to latitude, to longitude

    /// Evaluates both cubics of a pair.
    static void polynomial(double a, double b, double& out1, double& out2, const double (*c)[10]);
    /// Pixel to position, with one correction step through the forward pair.
    void xy_to_latlong(double x, double y, double& lat, double& lon) const;
    /// Position to pixel. A longitude more than 180 degrees from `centre_lon` is first taken once round the world.
    void latlong_to_xy(double lat, double lon, double& x, double& y, double centre_lon) const;
    /// Nautical miles per pixel at a pixel; 0 when the coefficients give no finite scale.
    double get_scale(double x, double y) const;
};

static_assert(sizeof(Geo_ref_coeff_t) == 320);

/// The gradient of the first cubic of a pair at (a, b).
struct CubicGradient {
    double by_a = 0.0;
    double by_b = 0.0;
};
CubicGradient GradientOfCubic(const double (&c)[10], double a, double b);
/// The length of the gradient of latitude in minutes: nautical miles per pixel; 0 when it is not finite.
double ScaleOfGradient(const CubicGradient& latitude_by_pixel);

/// One cubic at (a, b), which are numbers or vectors of numbers; so may the coefficients be. The order of the
/// operations is part of the contract: all ways of mapping a point agree to the last bit.
template <class Coefficient, class Number>
[[gnu::always_inline]] inline void EvaluateCubic(const Coefficient (&c)[10], const Number& a, const Number& b,
                                                 Number& result)
{
    result = c[0] + c[1] * a + c[2] * b + c[3] * a * a + c[4] * a * b + c[5] * b * b + c[6] * a * a * a +
             c[7] * a * a * b + c[8] * a * b * b + c[9] * b * b * b;
}
/// Takes a longitude (or a vector of them) to the side of the antimeridian that `centre_lon` is on.
template <class Number>
[[gnu::always_inline]] inline void BringNear(Number& lon, double centre_lon)
{
    const Number d = lon - centre_lon;
    const Number other_side = d < 0.0 ? lon + 360.0 : lon - 360.0;
    lon = d * d > 180.0 * 180.0 ? other_side : lon;
}
