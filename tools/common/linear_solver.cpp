#include "tools/common/linear_solver.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr double kSingular = 1e-13; // against the largest element

bool EliminateColumn(std::vector<double>& matrix, std::vector<double>& right, std::size_t column, double smallest)
{
    const std::size_t n = right.size();
    std::size_t pivot = column;
    for (std::size_t row = column + 1; row < n; ++row) {
        if (std::abs(matrix[row * n + column]) > std::abs(matrix[pivot * n + column])) pivot = row;
    }
    if (!(std::abs(matrix[pivot * n + column]) > smallest)) return false;
    if (pivot != column) {
        for (std::size_t i = 0; i < n; ++i) std::swap(matrix[pivot * n + i], matrix[column * n + i]);
        std::swap(right[pivot], right[column]);
    }
    for (std::size_t row = column + 1; row < n; ++row) {
        const double factor = matrix[row * n + column] / matrix[column * n + column];
        for (std::size_t i = column; i < n; ++i) matrix[row * n + i] -= factor * matrix[column * n + i];
        right[row] -= factor * right[column];
    }
    return true;
}

} // namespace

bool SolveLinear(std::vector<double>& matrix, std::vector<double>& right)
{
    const std::size_t n = right.size();
    double largest = 0.0;
    for (const double value : matrix) largest = std::max(largest, std::abs(value));
    for (std::size_t column = 0; column < n; ++column) {
        if (!EliminateColumn(matrix, right, column, largest * kSingular)) return false;
    }
    for (std::size_t row = n; row-- > 0;) {
        for (std::size_t i = row + 1; i < n; ++i) right[row] -= matrix[row * n + i] * right[i];
        right[row] /= matrix[row * n + row];
    }
    return true;
}
