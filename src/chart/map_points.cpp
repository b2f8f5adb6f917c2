#include "chart/map_points.h"

#include "chart/geo_ref_coeff.h"
#include "chart/instruction_set.h"
#include "chart/target_attributes.h"

#include <cstddef>
#ifdef ZT_AVX2
#include <immintrin.h>
#endif

namespace {

void MapOneByOne(const CPolynomialProjection& projection, std::span<const GeoPoint> positions, DblPoint* out)
{
    for (const GeoPoint& position : positions) {
        projection.latlong_to_xy(position.lat, position.lon, out->x, out->y);
        ++out;
    }
}

#ifdef ZT_AVX2

/// The terms of EvaluateCubic in its order, for four points. Multiplication and addition stay apart: a fused one would
/// round differently.
ZT_AVX2 inline __m256d CubicOfFour(const double (&c)[10], __m256d a, __m256d b)
{
    const auto coefficient = [&c](int i) ZT_AVX2 { return _mm256_broadcast_sd(&c[i]); };
    __m256d sum = coefficient(0);
    sum = _mm256_add_pd(sum, _mm256_mul_pd(coefficient(1), a));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(coefficient(2), b));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(_mm256_mul_pd(coefficient(3), a), a));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(_mm256_mul_pd(coefficient(4), a), b));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(_mm256_mul_pd(coefficient(5), b), b));
    const __m256d c6a2 = _mm256_mul_pd(_mm256_mul_pd(coefficient(6), a), a);
    const __m256d c7a2 = _mm256_mul_pd(_mm256_mul_pd(coefficient(7), a), a);
    const __m256d c8ab = _mm256_mul_pd(_mm256_mul_pd(coefficient(8), a), b);
    const __m256d c9b2 = _mm256_mul_pd(_mm256_mul_pd(coefficient(9), b), b);
    sum = _mm256_add_pd(sum, _mm256_mul_pd(c6a2, a));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(c7a2, b));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(c8ab, b));
    return _mm256_add_pd(sum, _mm256_mul_pd(c9b2, b));
}

/// LongitudeNear for four.
ZT_AVX2 inline __m256d FourLongitudesNear(__m256d lon, double centre_lon)
{
    const __m256d full_turn = _mm256_set1_pd(360.0);
    const __m256d d = _mm256_sub_pd(lon, _mm256_set1_pd(centre_lon));
    const __m256d far = _mm256_cmp_pd(_mm256_mul_pd(d, d), _mm256_set1_pd(180.0 * 180.0), _CMP_GT_OQ);
    const __m256d other_side = _mm256_blendv_pd(_mm256_sub_pd(lon, full_turn), _mm256_add_pd(lon, full_turn), d);
    return _mm256_blendv_pd(lon, other_side, far);
}

ZT_AVX2 void MapInFours(const CPolynomialProjection& projection, std::span<const GeoPoint> positions, DblPoint* out)
{
    const std::size_t fours = positions.size() / 4;
    for (std::size_t i = 0; i < fours; ++i) {
        const double* from = &positions[4 * i].lat;
        const __m256d first = _mm256_loadu_pd(from);      // lat0 lon0 lat1 lon1
        const __m256d second = _mm256_loadu_pd(from + 4); // lat2 lon2 lat3 lon3
        __m256d lat = _mm256_unpacklo_pd(first, second);  // 0 2 1 3, undone by the unpacking below
        __m256d lon = _mm256_unpackhi_pd(first, second);
        lat = _mm256_sub_pd(lat, _mm256_set1_pd(projection.lat_shift));
        lon = _mm256_sub_pd(lon, _mm256_set1_pd(projection.lon_shift));
        lon = FourLongitudesNear(lon, projection.centre_lon);
        const __m256d x = CubicOfFour(projection.forward[0], lat, lon);
        const __m256d y = CubicOfFour(projection.forward[1], lat, lon);
        double* to = &out[4 * i].x;
        _mm256_storeu_pd(to, _mm256_unpacklo_pd(x, y));
        _mm256_storeu_pd(to + 4, _mm256_unpackhi_pd(x, y));
    }
    MapOneByOne(projection, positions.subspan(4 * fours), out + 4 * fours);
}
#endif

} // namespace

void MapPoints(const CPolynomialProjection& projection, std::span<const GeoPoint> positions, DblPoint* out)
{
#ifdef ZT_AVX2
    if (TheInstructionSet() == InstructionSet::avx2) return MapInFours(projection, positions, out);
#endif
    MapOneByOne(projection, positions, out);
}
