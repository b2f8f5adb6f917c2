#pragma once

#include "core/geometry.h"

#include <vector>

using CPixelLine = std::vector<DblPoint>; ///< vertices in chart pixels

/// The part of a closed ring inside `rect` (Sutherland and Hodgman 1974). Where the ring leaves the rectangle the
/// result runs along its edge; the turning direction is kept. Empty when nothing is inside.
CPixelLine ClipRing(const CPixelLine& ring, const FRect& rect);
/// Appends the runs of an open line whose segments touch `rect`, each cut after at most `longest` segments (the next
/// begins at the last vertex), so that a band can pass over those that do not touch it.
void ClipLine(const CPixelLine& line, const FRect& rect, std::size_t longest, std::vector<CPixelLine>& out);
/// Drops vertices nearer than `distance` to the last one kept; the ends stay.
void ThinOut(CPixelLine& line, double distance);
/// The vertices' rectangle.
FRect BoundsOf(const CPixelLine& line);
