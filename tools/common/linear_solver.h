#pragma once

#include <vector>

/// Solves the square system `matrix` * x = `right` (row-major, as many rows as `right` has numbers) by elimination with
/// row pivoting. The answer replaces `right`; false when the system is singular to working precision.
bool SolveLinear(std::vector<double>& matrix, std::vector<double>& right);
