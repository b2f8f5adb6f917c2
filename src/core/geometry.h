#pragma once

/// A position on the screen, device pixels.
struct FPoint {
    float x = 0.0F;
    float y = 0.0F;
    friend bool operator==(const FPoint&, const FPoint&) = default;
};

/// A position on a chart image (pixels) or on a plane (metres); the comment at each use says which.
struct DblPoint {
    double x = 0.0;
    double y = 0.0;
    friend bool operator==(const DblPoint&, const DblPoint&) = default;
};

/// A position in whole pixels.
struct POINT {
    int x = 0;
    int y = 0;
    friend bool operator==(const POINT&, const POINT&) = default;
};

/// A rectangle, y downwards. Doubles, since a chart image can be wider than a float counts exactly.
struct FRect {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool contains(double x, double y) const { return x >= left && x < right && y >= top && y < bottom; }
    bool overlaps(const FRect& other) const
    {
        return left <= other.right && other.left <= right && top <= other.bottom && other.top <= bottom;
    }
    friend bool operator==(const FRect&, const FRect&) = default;
};
