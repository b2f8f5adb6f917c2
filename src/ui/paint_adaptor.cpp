#include "ui/paint_adaptor.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>

namespace {

/// A press of a finger reaches an item as one of a mouse, but with the touch screen as its device. Such an event is
/// not an object of QMouseEvent, whose own members must not be asked.
bool IsFinger(const QSinglePointEvent& event)
{
    return event.device() != nullptr && event.device()->type() == QInputDevice::DeviceType::TouchScreen;
}

} // namespace

CPaintAdaptor_q::CPaintAdaptor_q(QQuickItem* parent)
    : QQuickPaintedItem(parent), CItemWindow(static_cast<QQuickItem&>(*this))
{}

void CPaintAdaptor_q::SetOwner(IWindowOwner* new_owner)
{
    CItemWindow::SetOwner(new_owner);
    setInteractive(new_owner != nullptr && new_owner->HasMenu());
}

void CPaintAdaptor_q::paint(QPainter* painter)
{
    if (Owner() != nullptr) Owner()->onDraw(painter, width(), height());
}

void CPaintAdaptor_q::setInteractive(bool interactive)
{
    if (m_interactive == interactive) return;
    m_interactive = interactive;
    setAcceptedMouseButtons(interactive ? Qt::LeftButton | Qt::RightButton : Qt::NoButton);
    emit interactiveChanged();
}

bool CPaintAdaptor_q::onPressed(int button, double x, double y)
{
    if (button != Qt::RightButton || !m_interactive || Owner() == nullptr) return false;
    Owner()->onRightClick(static_cast<int>(x), static_cast<int>(y));
    return true;
}

void CPaintAdaptor_q::onPressAndHold(int, double x, double y)
{
    if (m_interactive && Owner() != nullptr) Owner()->onRightClick(static_cast<int>(x), static_cast<int>(y));
}

void CPaintAdaptor_q::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->position();
    const bool holding = event->button() == Qt::LeftButton && IsFinger(*event);
    if (holding) m_hold.start(QGuiApplication::styleHints()->mousePressAndHoldInterval(), this);
    event->setAccepted(onPressed(event->button(), m_pressed.x(), m_pressed.y()) || holding);
}

void CPaintAdaptor_q::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF moved = event->position() - m_pressed;
    if (moved.manhattanLength() > QGuiApplication::styleHints()->startDragDistance()) m_hold.stop();
}

void CPaintAdaptor_q::mouseReleaseEvent(QMouseEvent*)
{
    m_hold.stop();
}

void CPaintAdaptor_q::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_hold.timerId()) {
        QQuickPaintedItem::timerEvent(event);
        return;
    }
    m_hold.stop();
    onPressAndHold(Qt::LeftButton, m_pressed.x(), m_pressed.y());
}
