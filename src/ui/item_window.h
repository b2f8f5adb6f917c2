#pragma once

#include "ui/screen_insets.h"
#include "ui/window_interfaces.h"

class QQuickItem;

/// The window operations of a visual element, for the painted and the declarative elements alike. Main thread only.
class CItemWindow : public virtual IWindow {
public:
    explicit CItemWindow(QQuickItem& element) : item(element) {}

    void Move(double x, double y, double width, double height) override;
    void show(bool shown) override;
    /// Takes the element off the screen; it stays alive.
    void Detach() override;
    void GetSize(double& width, double& height) const override;
    void GetXY(double& x, double& y) const override;
    void SetSize(double width, double height) override;
    void SetLayer(int layer) override;
    /// Takes the element off the screen; it goes at the next turn of the event loop.
    void Destroy() override;
    void DetachData() override { owner = nullptr; }
    ZT_HWND hWnd() override;

    /// Null when the element serves no item.
    IWindowOwner* Owner() const { return owner; }
    virtual void SetOwner(IWindowOwner* new_owner) { owner = new_owner; }
    const ScreenInsets& Insets() const { return insets; }

protected:
    virtual void InsetsChanged() {}

    IWindowOwner* owner = nullptr;

private:
    QQuickItem& item;
    ScreenInsets insets;
};
