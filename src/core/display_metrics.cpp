#include "core/display_metrics.h"

namespace {
constexpr double kClickPixelsSq = 81.0;
constexpr double kTouchPixelsSq = 225.0;
} // namespace

double graphicsResolution = 1.0;
double graphicsClickPrecisionSq = kClickPixelsSq;
double graphicsTouchPrecisionSq = kTouchPixelsSq;

void SetGraphicsResolution(double resolution)
{
    graphicsResolution = resolution;
    graphicsClickPrecisionSq = kClickPixelsSq * resolution * resolution;
    graphicsTouchPrecisionSq = kTouchPixelsSq * resolution * resolution;
}
