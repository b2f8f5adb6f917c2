#pragma once

#include "core/zt_hwnd.h"

class CZentaraAppModel;

/// The menu behind the button at the top left: settings, lock, help, quit.
void ShowMainMenu(CZentaraAppModel& app, ZT_HWND hwnd);
