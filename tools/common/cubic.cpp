#include "tools/common/cubic.h"

namespace {

/// Coefficients by powers: power[i][j] belongs to a^i b^j.
using CPowers = std::array<std::array<double, 4>, 4>;

constexpr int kTermPowers[10][2] = {{0, 0}, {1, 0}, {0, 1}, {2, 0}, {1, 1}, {0, 2}, {3, 0}, {2, 1}, {1, 2}, {0, 3}};

/// (slope * t + offset)^power as coefficients of t.
std::array<double, 4> LinearPower(double slope, double offset, int power)
{
    std::array<double, 4> result{1.0, 0.0, 0.0, 0.0};
    for (int step = 0; step < power; ++step) {
        for (int i = 3; i >= 0; --i) {
            const auto at = static_cast<std::size_t>(i);
            result[at] = result[at] * offset + (i > 0 ? result[at - 1] * slope : 0.0);
        }
    }
    return result;
}

} // namespace

CCubic CubicTerms(double a, double b)
{
    return {1.0, a, b, a * a, a * b, b * b, a * a * a, a * a * b, a * b * b, b * b * b};
}

double EvaluateCubic(const CCubic& cubic, double a, double b)
{
    const CCubic terms = CubicTerms(a, b);
    double sum = 0.0;
    for (std::size_t i = 0; i < terms.size(); ++i) sum += cubic[i] * terms[i];
    return sum;
}

DblPoint SlopesOfCubic(const CCubic& c, double a, double b)
{
    return {c[1] + 2 * c[3] * a + c[4] * b + 3 * c[6] * a * a + 2 * c[7] * a * b + c[8] * b * b,
            c[2] + c[4] * a + 2 * c[5] * b + c[7] * a * a + 2 * c[8] * a * b + 3 * c[9] * b * b};
}

CCubic UnscaleCubic(const CCubic& scaled, const CAxisScale& a, const CAxisScale& b, const CAxisScale& value)
{
    CPowers powers{};
    for (std::size_t term = 0; term < scaled.size(); ++term) {
        const auto in_a = LinearPower(1 / a.half, -a.middle / a.half, kTermPowers[term][0]);
        const auto in_b = LinearPower(1 / b.half, -b.middle / b.half, kTermPowers[term][1]);
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t j = 0; j < 4; ++j) powers[i][j] += scaled[term] * in_a[i] * in_b[j];
        }
    }
    CCubic raw{};
    for (std::size_t term = 0; term < raw.size(); ++term) {
        const auto i = static_cast<std::size_t>(kTermPowers[term][0]);
        const auto j = static_cast<std::size_t>(kTermPowers[term][1]);
        raw[term] = powers[i][j] * value.half;
    }
    raw[0] += value.middle;
    return raw;
}
