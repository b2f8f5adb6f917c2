#include "ui/item_window.h"

#include <QQuickItem>

void CItemWindow::Move(double x, double y, double width, double height)
{
    item.setPosition(QPointF(x, y));
    item.setSize(QSizeF(width, height));
    ScreenInsets now;
    const QQuickItem* parent = item.parentItem();
    if (owner != nullptr && owner->ExtendsToEdges() && parent != nullptr) {
        now.adjust(x, y, width, height, getInsets(), parent->width(), parent->height());
    }
    if (insets.isEqual(now)) return;
    insets = now;
    InsetsChanged();
}

void CItemWindow::show(bool shown)
{
    item.setVisible(shown);
}

void CItemWindow::Detach()
{
    item.setParentItem(nullptr);
}

void CItemWindow::GetSize(double& width, double& height) const
{
    width = item.width();
    height = item.height();
}

void CItemWindow::GetXY(double& x, double& y) const
{
    x = item.x();
    y = item.y();
}

void CItemWindow::SetSize(double width, double height)
{
    item.setSize(QSizeF(width, height));
}

void CItemWindow::SetLayer(int layer)
{
    item.setZ(layer);
}

void CItemWindow::Destroy()
{
    owner = nullptr;
    item.setParentItem(nullptr);
    item.setParent(nullptr);
    item.deleteLater();
}

ZT_HWND CItemWindow::hWnd()
{
    return ZT_HWND(&item);
}
