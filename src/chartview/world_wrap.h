#pragma once

#include "core/geometry.h"
#include "overlays/view_params.h"

class CPolynomialProjection;

/// A chart of the whole world repeats sideways, so that the view never comes to its left or right edge. This says how
/// wide one repetition is and keeps the view on the chart itself: whenever the middle of the screen passes an edge, the
/// offset is moved by one width, which changes nothing on the screen.
class CWorldWrap {
public:
    /// Takes the width from the chart's georeferencing; none when it spans less than 360 degrees.
    void Init(const CPolynomialProjection& projection);
    void Clear() { *this = CWorldWrap(); }

    bool active() const { return width > 0; }
    /// Chart pixels for 360 degrees; 0 when the chart does not repeat. A multiple of 8, so that a move by it keeps
    /// image pixels on whole screen pixels at every level.
    double Width() const { return width; }
    /// The image coordinate moved into 0 to below the width.
    double Normalise(double x) const;
    /// The number of the repetition that holds the image coordinate; 0 is the chart itself.
    int CopyOf(double x) const;
    /// Moves the offset so that image coordinate `middle` lies on the chart itself. With `same_squares` one set of
    /// squares shows all repetitions, and IsOdd goes on to answer the same.
    void NormaliseOffset(CViewParams& params, double middle, bool same_squares);
    /// The repetitions first to last on which something with these bounds (chart pixels) meets the view; none when
    /// last < first.
    struct Copies {
        int first = 0;
        int last = 0;
    };
    Copies CopiesInView(const FRect& bounds, const FRect& view) const;
    /// The mapping of repetition `copy`.
    CViewParams ParamsOf(const CViewParams& params, int copy) const;

    /// Which of two sets of squares shows repetition `copy`: neighbours never share one, and a set keeps its part of
    /// the picture while the offset is moved. Where the whole world is on the screen, one set shows all repetitions.
    bool IsOdd(int copy) const { return ((copy + copies_passed) & 1) != 0; }

private:
    double width = 0.0;
    int copies_passed = 0;
};
