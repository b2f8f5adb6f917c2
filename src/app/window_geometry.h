#pragma once

#include <QRect>
#include <QSize>

/// Where the window goes, in logical pixels: the saved place when the screen's available size is the same as when it
/// was saved, otherwise centred. A width below 640 becomes 1024 and a height below 480 becomes 768; neither exceeds
/// what is available.
QRect WindowGeometry(const QRect& saved, const QSize& saved_available, const QSize& available);
