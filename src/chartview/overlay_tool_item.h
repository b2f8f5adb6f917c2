#pragma once

#include "core/geometry.h"

#include <functional>

#include <QQuickItem>

class CRastelleView;

/// The root of OverlayTool.qml: the label and the popup button that float at the selected object. Main thread only.
class COverlayToolItem : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString label READ label NOTIFY changed)
    Q_PROPERTY(bool touchInterface READ touchInterface NOTIFY changed)
public:
    using QQuickItem::QQuickItem;

    /// A new item over the view's; null when the view has no item, or the declarative file does not load.
    static COverlayToolItem* Make(CRastelleView& view, std::function<void(COverlayToolItem&)> on_popup);

    QString label() const { return m_label; }
    void setLabel(const std::string& text);
    /// Fingers get the button; a mouse has its right one.
    bool touchInterface() const { return m_touch; }
    /// Puts the item's middle at a point of its parent, device pixels.
    void setCenterPoint(const FPoint& point);
    Q_INVOKABLE void onClickPopup();

signals:
    void changed();

private:
    QString m_label;
    bool m_touch = false;
    std::function<void(COverlayToolItem&)> popup;
};
