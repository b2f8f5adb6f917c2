#pragma once

/// Makes the chart catalogue and loads marks, routes, tracks and the odometer. A missing file leaves defaults and is no
/// failure.
void load_app_data();

/// Writes what changed: marks, routes, tracks, odometer, settings, and the view of each open map. Always true.
bool save_all_app_data();
