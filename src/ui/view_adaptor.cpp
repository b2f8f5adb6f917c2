#include "ui/view_adaptor.h"

CViewAdaptor_q::CViewAdaptor_q(QQuickItem* parent) : QQuickItem(parent), CItemWindow(static_cast<QQuickItem&>(*this)) {}

void CViewAdaptor_q::SetOwner(IWindowOwner* new_owner)
{
    CItemWindow::SetOwner(new_owner);
    setInteractive(new_owner != nullptr && new_owner->HasMenu());
}

void CViewAdaptor_q::onRightClick(double x, double y)
{
    if (m_interactive && Owner() != nullptr) Owner()->onRightClick(static_cast<int>(x), static_cast<int>(y));
}

void CViewAdaptor_q::setInteractive(bool interactive)
{
    if (m_interactive == interactive) return;
    m_interactive = interactive;
    emit interactiveChanged();
}
