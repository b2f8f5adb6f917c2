#pragma once

#include "ui/item_window.h"

#include <QQuickItem>

/// The base of the elements that a declarative file draws. `interactive` tells whether a right press or long press
/// opens the item's menu.
class CViewAdaptor_q : public QQuickItem, public CItemWindow {
    Q_OBJECT
    Q_PROPERTY(bool interactive READ interactive WRITE setInteractive NOTIFY interactiveChanged)
    Q_PROPERTY(double safeAreaLeft READ safeAreaLeft NOTIFY safeAreaInsetsChanged)
    Q_PROPERTY(double safeAreaTop READ safeAreaTop NOTIFY safeAreaInsetsChanged)
    Q_PROPERTY(double safeAreaRight READ safeAreaRight NOTIFY safeAreaInsetsChanged)
    Q_PROPERTY(double safeAreaBottom READ safeAreaBottom NOTIFY safeAreaInsetsChanged)

public:
    explicit CViewAdaptor_q(QQuickItem* parent = nullptr);

    /// Takes `interactive` from the owner too.
    void SetOwner(IWindowOwner* new_owner) override;
    void Invalidate() override { update(); }
    /// Hands a right press or long press at logical x, y to the owner.
    Q_INVOKABLE virtual void onRightClick(double x, double y);

    bool interactive() const { return m_interactive; }
    void setInteractive(bool interactive);
    double safeAreaLeft() const { return Insets().left; }
    double safeAreaTop() const { return Insets().top; }
    double safeAreaRight() const { return Insets().right; }
    double safeAreaBottom() const { return Insets().bottom; }

signals:
    void interactiveChanged();
    void safeAreaInsetsChanged();

protected:
    void InsetsChanged() override { emit safeAreaInsetsChanged(); }

private:
    bool m_interactive = false;
};
