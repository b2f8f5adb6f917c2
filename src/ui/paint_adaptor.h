#pragma once

#include "ui/item_window.h"

#include <QBasicTimer>
#include <QPointF>
#include <QQuickPaintedItem>

/// The element of a drawn item, made directly, without a declarative file. Painting calls the owner's onDraw; where
/// the scene graph paints in its own thread the main thread waits for it.
class CPaintAdaptor_q : public QQuickPaintedItem, public CItemWindow {
    Q_OBJECT
    Q_PROPERTY(bool interactive READ interactive WRITE setInteractive NOTIFY interactiveChanged)

public:
    explicit CPaintAdaptor_q(QQuickItem* parent = nullptr);

    void SetOwner(IWindowOwner* new_owner) override;
    /// Asks for a new painting of the whole element.
    void Invalidate() override { update(); }
    void paint(QPainter* painter) override;

    bool interactive() const { return m_interactive; }
    void setInteractive(bool interactive);

    /// `button` is a Qt::MouseButton: a right press opens the item's menu. True when the press was taken.
    Q_INVOKABLE virtual bool onPressed(int button, double x, double y);
    /// A finger that rests opens it too.
    Q_INVOKABLE virtual void onPressAndHold(int button, double x, double y);

signals:
    void interactiveChanged();
    void safeAreaInsetsChanged();

protected:
    void InsetsChanged() override { emit safeAreaInsetsChanged(); }
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override { m_hold.stop(); }
    void timerEvent(QTimerEvent* event) override;

private:
    QBasicTimer m_hold;
    QPointF m_pressed;
    bool m_interactive = false;
};
