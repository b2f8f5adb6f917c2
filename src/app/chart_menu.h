#pragma once

#include "core/zt_hwnd.h"

class CActionSheetMenu;
class CRastelleView;

/// Adds the catalogue's charts that contain the middle of the view, the most detailed first; choosing one opens it.
/// The chart in use is highlighted. Without any a disabled entry says so.
void AddChartsHere(CActionSheetMenu& menu, const CRastelleView& view);
/// The menu of those charts.
void ShowChartMenu(const CRastelleView& view, ZT_HWND hwnd);
