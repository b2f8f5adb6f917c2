#include "chartview/overlay_tool_item.h"

#include "chartview/rastelle_view.h"
#include "core/display_metrics.h"
#include "ui/ui_context.h"

#include <memory>

#include <QDebug>
#include <QQmlComponent>
#include <QQmlEngine>

COverlayToolItem* COverlayToolItem::Make(CRastelleView& view, std::function<void(COverlayToolItem&)> on_popup)
{
    IUiContext* context = TheUiContext();
    QQuickItem* parent = view.hWnd().item;
    if (context == nullptr || context->Engine() == nullptr || parent == nullptr) return nullptr;
    QQmlComponent component(context->Engine(), QUrl(QStringLiteral("qrc:/OverlayTool.qml")));
    std::unique_ptr<QObject> object(component.beginCreate(context->Engine()->rootContext()));
    auto* item = qobject_cast<COverlayToolItem*>(object.get());
    if (item == nullptr) {
        for (const QQmlError& error : component.errors()) qDebug().noquote() << error.toString();
        if (object != nullptr) component.completeCreate();
        return nullptr;
    }
    item->setParent(parent);
    item->setParentItem(parent);
    item->m_touch = context->UsingTouch();
    item->popup = std::move(on_popup);
    object.release();
    component.completeCreate();
    return item;
}

void COverlayToolItem::setLabel(const std::string& text)
{
    const QString now = QString::fromStdString(text);
    if (now == m_label) return;
    m_label = now;
    emit changed();
}

void COverlayToolItem::setCenterPoint(const FPoint& point)
{
    setPosition({static_cast<double>(point.x) / graphicsResolution - width() / 2.0,
                 static_cast<double>(point.y) / graphicsResolution - height() / 2.0});
}

void COverlayToolItem::onClickPopup()
{
    if (popup) popup(*this);
}
