#include "chart/map_points.h"

#include "chart/geo_ref_coeff.h"
#include "chart/instruction_set.h"
#include "chart/target_attributes.h"

#include <cstddef>
#include <cstring>
#ifdef ZT_AVX2
#include <immintrin.h>
#endif

namespace {

/// Maps in pairs; how many points that were.
std::size_t MapInTwos(const CPolynomialProjection& projection, std::span<const GeoPoint> positions, DblPoint* out)
{
    typedef double vector __attribute__((vector_size(16)));
    vector forward[2][10]; // each coefficient for both points: spread once, not at every pair
    for (int i = 0; i < 20; ++i)
        forward[i / 10][i % 10] = vector{projection.forward[i / 10][i % 10], projection.forward[i / 10][i % 10]};
    const std::size_t paired = positions.size() / 2 * 2;
    for (std::size_t i = 0; i < paired; i += 2) {
        vector points[2], x, y;
        std::memcpy(points, &positions[i], sizeof(points));
        vector lat = __builtin_shufflevector(points[0], points[1], 0, 2) - projection.lat_shift;
        vector lon = __builtin_shufflevector(points[0], points[1], 1, 3) - projection.lon_shift;
        BringNear(lon, projection.centre_lon);
        EvaluateCubic(forward[0], lat, lon, x);
        EvaluateCubic(forward[1], lat, lon, y);
        points[0] = __builtin_shufflevector(x, y, 0, 2);
        points[1] = __builtin_shufflevector(x, y, 1, 3);
        std::memcpy(static_cast<void*>(&out[i]), points, sizeof(points));
    }
    return paired;
}

#ifdef ZT_AVX2

/// The terms of EvaluateCubic in its order, for four points. Multiplication and addition stay apart: a fused one would
/// round differently.
ZT_AVX2 inline __m256d CubicOfFour(const __m256d (&c)[10], __m256d a, __m256d b)
{
    __m256d sum = c[0];
    sum = _mm256_add_pd(sum, _mm256_mul_pd(c[1], a));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(c[2], b));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(_mm256_mul_pd(c[3], a), a));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(_mm256_mul_pd(c[4], a), b));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(_mm256_mul_pd(c[5], b), b));
    const __m256d c6a2 = _mm256_mul_pd(_mm256_mul_pd(c[6], a), a);
    const __m256d c7a2 = _mm256_mul_pd(_mm256_mul_pd(c[7], a), a);
    const __m256d c8ab = _mm256_mul_pd(_mm256_mul_pd(c[8], a), b);
    const __m256d c9b2 = _mm256_mul_pd(_mm256_mul_pd(c[9], b), b);
    sum = _mm256_add_pd(sum, _mm256_mul_pd(c6a2, a));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(c7a2, b));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(c8ab, b));
    return _mm256_add_pd(sum, _mm256_mul_pd(c9b2, b));
}

/// BringNear for four.
ZT_AVX2 inline __m256d FourBroughtNear(__m256d lon, double centre_lon)
{
    const __m256d full_turn = _mm256_set1_pd(360.0);
    const __m256d d = _mm256_sub_pd(lon, _mm256_set1_pd(centre_lon));
    const __m256d far = _mm256_cmp_pd(_mm256_mul_pd(d, d), _mm256_set1_pd(180.0 * 180.0), _CMP_GT_OQ);
    const __m256d other_side = _mm256_blendv_pd(_mm256_sub_pd(lon, full_turn), _mm256_add_pd(lon, full_turn), d);
    return _mm256_blendv_pd(lon, other_side, far);
}

/// Maps in fours, by hand: the compiler would split vectors of this width in what both sets share.
ZT_AVX2 std::size_t MapInFours(const CPolynomialProjection& projection, std::span<const GeoPoint> positions,
                               DblPoint* out)
{
    __m256d forward[2][10];
    for (int i = 0; i < 20; ++i) forward[i / 10][i % 10] = _mm256_set1_pd(projection.forward[i / 10][i % 10]);
    const std::size_t fours = positions.size() / 4;
    for (std::size_t i = 0; i < fours; ++i) {
        const double* from = &positions[4 * i].lat;
        const __m256d first = _mm256_loadu_pd(from);      // lat0 lon0 lat1 lon1
        const __m256d second = _mm256_loadu_pd(from + 4); // lat2 lon2 lat3 lon3
        __m256d lat = _mm256_unpacklo_pd(first, second);  // 0 2 1 3, undone by the unpacking below
        __m256d lon = _mm256_unpackhi_pd(first, second);
        lat = _mm256_sub_pd(lat, _mm256_set1_pd(projection.lat_shift));
        lon = _mm256_sub_pd(lon, _mm256_set1_pd(projection.lon_shift));
        lon = FourBroughtNear(lon, projection.centre_lon);
        const __m256d x = CubicOfFour(forward[0], lat, lon);
        const __m256d y = CubicOfFour(forward[1], lat, lon);
        double* to = &out[4 * i].x;
        _mm256_storeu_pd(to, _mm256_unpacklo_pd(x, y));
        _mm256_storeu_pd(to + 4, _mm256_unpackhi_pd(x, y));
    }
    return 4 * fours;
}
#endif

} // namespace

void MapPoints(const CPolynomialProjection& projection, std::span<const GeoPoint> positions, DblPoint* out)
{
#ifdef ZT_AVX2
    const auto map = TheInstructionSet() >= InstructionSet::avx2 ? MapInFours : MapInTwos;
#else
    const auto map = MapInTwos;
#endif
    for (std::size_t i = map(projection, positions, out); i < positions.size(); ++i) {
        projection.latlong_to_xy(positions[i].lat, positions[i].lon, out[i].x, out[i].y);
    }
}
