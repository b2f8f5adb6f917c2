#pragma once

#include "core/zt_hwnd.h"

#include <string>

class QPainter;
class QPixmap;

/// What a page and its items require of a visual element. Sizes and places in logical pixels of the parent.
struct IWindow {
    virtual ~IWindow() = default;
    virtual void Invalidate() {}
    virtual void Move(double x, double y, double width, double height) = 0;
    virtual void Draw(QPainter*) {}
    virtual void addSubview(void*) {}
    virtual void show(bool) {}
    virtual void Detach() = 0;
    virtual void GetSize(double& width, double& height) const = 0;
    virtual void GetXY(double& x, double& y) const = 0;
    virtual void SetSize(double, double) {}
    /// Sets the stacking order to the layer number.
    virtual void SetLayer(int) {}
    virtual void Destroy() = 0;
    /// Takes the window out of use: it forgets its owner.
    virtual void DetachData() {}
    virtual ZT_HWND hWnd() = 0;
};

/// A text read-out. The title shown is title, then " / " and units if units is not empty.
struct ITxtWindow : virtual IWindow {
    virtual void SetTitleUnits(const std::string& title, const std::string& units) = 0;
    virtual void SetValue(const std::string& value) = 0;
};

/// A button.
struct IButtonWindow : virtual IWindow {
    virtual void SetLabel(const std::string& label) = 0;
    virtual void SetLabelColor(unsigned int color) = 0;
    virtual void SetIcon(QPixmap*) {}
    virtual void SetIcon(const std::string&) {}
    virtual void SetEnabled(bool) {}
};

/// What a visual element asks of the item that owns it. The page's item model implements it.
struct IWindowOwner {
    virtual ~IWindowOwner() = default;
    /// Paints a drawn item, `width` x `height` logical pixels.
    virtual void onDraw(QPainter*, double width, double height) = 0;
    /// A click on a button item.
    virtual void OnClick() = 0;
    virtual void onRightClick(int x, int y) = 0;
    virtual bool ExtendsToEdges() const = 0;
    virtual bool HasMenu() const = 0;
};
