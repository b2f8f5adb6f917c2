#pragma once

class QQuickItem;

/// Where a dialog or menu comes from: the item that caused it and the point of the click in that item's coordinates.
/// Passed by value through every interface call; without an item it means the main window.
struct ZT_HWND {
    QQuickItem* item = nullptr;
    double x = 0.0;
    double y = 0.0;

    ZT_HWND() = default;
    explicit ZT_HWND(QQuickItem* parent, double origin_x = 0.0, double origin_y = 0.0)
        : item(parent), x(origin_x), y(origin_y)
    {}
    bool empty() const { return item == nullptr; }
};
