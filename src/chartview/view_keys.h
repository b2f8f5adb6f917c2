#pragma once

class CRastelleView;

/// Does what a key (Qt::Key) does on a map view: scrolls, zooms, changes the chart, presses "Done". True when it does
/// something.
bool HandleViewKey(CRastelleView& view, int key);
