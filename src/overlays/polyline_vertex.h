#pragma once

#include <vector>

/// A vertex of a line on a plane, with its place in what the line was made of. Metres.
struct Vertex {
    double x = 0.0;
    double y = 0.0;
    int index = 0;

    /// Whether the vertex may be left out between `a` and `b`: it lies within the tolerance (squared metres) of `a`,
    /// or beside the line from `a` to `b` and within the tolerance of it.
    bool IsOnLine(const Vertex& a, const Vertex& b, double tolerance_squared) const;
};

/// Drops vertices that lie on the line between their neighbours, every second one at most in each pass, until a pass
/// drops nothing. The first and the last stay. True when any was dropped.
bool ThinVertices(std::vector<Vertex>& vertices, double tolerance_squared);
