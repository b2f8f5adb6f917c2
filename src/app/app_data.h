#pragma once

/// Makes the chart catalogue. A missing file leaves defaults and is no failure.
void load_app_data();

/// Writes what changed: the settings and the view of each open map. Always true.
bool save_all_app_data();
