#pragma once

#include "core/zt_hwnd.h"

class CRastelleView;
class CZentaraAppModel;

/// The menu behind the button at the top right.
void ShowOverlaysMenu(CZentaraAppModel& app, ZT_HWND hwnd);
/// The menu of a place on the chart where no overlay lies (device pixels): a right press, a long press of a finger.
void ShowMapMenu(CRastelleView& view, double x, double y);
/// Makes a mark in the middle of the view and selects it; where the boat is, while the view follows it.
void AddMarkInView(CRastelleView& view);
