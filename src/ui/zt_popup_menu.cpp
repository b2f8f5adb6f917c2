#include "ui/zt_popup_menu.h"

#include "ui/ui_context.h"
#include "ui/zt_dialog.h"

#include <QDebug>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QStyleHints>

namespace {

constexpr const char* kMenuUrl = "qrc:/ZTPopupMenu.qml";
constexpr const char* kEntryProperty = "isMenuEntry"; ///< what the declarative entries are known by

void LogMenuErrors(const QQmlComponent& component)
{
    for (const QQmlError& error : component.errors()) qDebug().noquote() << error.toString();
}

QQuickItem* DeepestEntry(QQuickItem* item, QPointF point)
{
    if (!item->isVisible()) return nullptr;
    const auto below = item->childItems();
    for (auto child = below.rbegin(); child != below.rend(); ++child) {
        if (QQuickItem* found = DeepestEntry(*child, item->mapToItem(*child, point))) return found;
    }
    return item->contains(point) && item->property(kEntryProperty).isValid() ? item : nullptr;
}

} // namespace

CZTPopupMenu::CZTPopupMenu(QQuickItem* parent) : QQuickItem(parent) {}

CZTPopupMenu::~CZTPopupMenu()
{
    m_controls.Release();
}

CZTPopupMenu* CZTPopupMenu::Show(ZT_HWND parent, const std::string& title, std::unique_ptr<TreeViewNode> tree)
{
    QQmlEngine* engine = TheUiContext() != nullptr ? TheUiContext()->Engine() : nullptr;
    QQuickItem* layer = DialogLayer(parent);
    if (engine == nullptr || layer == nullptr) {
        qDebug() << "No window to show a menu in";
        return nullptr;
    }
    QQmlComponent component(engine, QUrl(QString::fromUtf8(kMenuUrl)));
    std::unique_ptr<QObject> object(component.beginCreate(engine->rootContext()));
    auto* menu = qobject_cast<CZTPopupMenu*>(object.get());
    if (menu == nullptr) {
        LogMenuErrors(component);
        if (object != nullptr) component.completeCreate();
        return nullptr;
    }
    menu->setParent(layer);
    menu->setParentItem(layer);
    menu->m_title = QString::fromStdString(title);
    menu->m_origin = parent.empty() ? QPointF(layer->width() / 2.0, layer->height() / 2.0)
                                    : layer->mapFromItem(parent.item, QPointF(parent.x, parent.y));
    menu->m_model.setRoot(std::move(tree));
    menu->FollowHeldButton();
    menu->m_controls.Take();
    object.release();
    component.completeCreate();
    return menu;
}

bool CZTPopupMenu::usingTouch() const
{
    return TheUiContext() != nullptr && TheUiContext()->UsingTouch();
}

void CZTPopupMenu::itemTriggered(const QModelIndex& index)
{
    if (index.isValid()) m_model.getNode(index)->itemClicked();
}

void CZTPopupMenu::menuClosed()
{
    if (m_closed) return;
    m_closed = true;
    StopFollowing();
    m_controls.Release();
    setParentItem(nullptr);
    setParent(nullptr);
    deleteLater();
}

void CZTPopupMenu::FollowHeldButton()
{
    if (window() == nullptr || QGuiApplication::mouseButtons() == Qt::NoButton || usingTouch()) return;
    // Whoever took the press would get its moves and release, though the menu lies over it now.
    if (QQuickItem* grabber = window()->mouseGrabberItem()) grabber->ungrabMouse();
    m_followed = window();
    m_followed->installEventFilter(this);
    m_drag_started = false;
    m_pressed = mapToScene(m_origin);
}

void CZTPopupMenu::StopFollowing()
{
    if (m_followed) m_followed->removeEventFilter(this);
    m_followed = nullptr;
}

bool CZTPopupMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_followed) return false;
    if (event->type() == QEvent::MouseMove) {
        const QPointF place = static_cast<QMouseEvent*>(event)->position();
        const int slack = QGuiApplication::styleHints()->startDragDistance();
        m_drag_started = m_drag_started || (place - m_pressed).manhattanLength() > slack;
        emit dragged(DeepestEntry(m_followed->contentItem(), place));
    } else if (event->type() == QEvent::MouseButtonRelease) {
        const QPointF place = static_cast<QMouseEvent*>(event)->position();
        QQuickItem* entry = m_drag_started ? DeepestEntry(m_followed->contentItem(), place) : nullptr;
        StopFollowing();
        if (entry != nullptr && entry->isEnabled()) QMetaObject::invokeMethod(entry, "clicked", Qt::QueuedConnection);
    }
    return false;
}
