#include "ui/zt_dialog.h"

#include "ui/screen_insets.h"
#include "ui/ui_context.h"

#include <QDebug>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWindow>

namespace {

void LogErrors(const QQmlComponent& component, const char* url)
{
    qDebug() << "Dialog does not load:" << url;
    for (const QQmlError& error : component.errors()) qDebug().noquote() << error.toString();
}

bool IsInside(const QQuickItem* ancestor, const QQuickItem* item)
{
    return item != nullptr && (item == ancestor || ancestor->isAncestorOf(item));
}

/// The next item inside `scope` in the order of the Tab key, round its end; null when there is none.
QQuickItem* NextInside(const QQuickItem* scope, QQuickItem* from, bool forward)
{
    QQuickItem* item = from;
    do {
        item = item->nextItemInFocusChain(forward);
        if (item == nullptr) return nullptr;
        if (item != from && item->activeFocusOnTab() && scope->isAncestorOf(item)) return item;
    } while (item != from);
    return nullptr;
}

/// The newest dialog that is open in `layer`.
CZTDialog* NewestDialog(const QQuickItem* layer)
{
    const auto items = layer->childItems();
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        auto* dialog = qobject_cast<CZTDialog*>(*item);
        if (dialog != nullptr && !dialog->IsClosing()) return dialog;
    }
    return nullptr;
}

} // namespace

QQuickItem* DialogLayer(ZT_HWND parent)
{
    QQuickItem* layer = TheUiContext() != nullptr ? TheUiContext()->DialogParent() : nullptr;
    QQuickWindow* window = parent.empty() ? nullptr : parent.item->window();
    if (window == nullptr || (layer != nullptr && layer->window() == window)) return layer;
    return window->contentItem();
}

CZTDialog::CZTDialog(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemIsFocusScope);
}

CZTDialog::~CZTDialog()
{
    m_controls.Release();
}

double CZTDialog::safeAreaLeft() const
{
    return getInsets().left;
}

double CZTDialog::safeAreaTop() const
{
    return getInsets().top;
}

double CZTDialog::safeAreaRight() const
{
    return getInsets().right;
}

double CZTDialog::safeAreaBottom() const
{
    return getInsets().bottom;
}

void CZTDialog::setOrigin(QPointF origin)
{
    if (m_origin == origin) return;
    m_origin = origin;
    emit originChanged();
}

CZTDialog* CZTDialog::Show(const char* url, const QMetaObject& type, ZT_HWND parent,
                           const std::function<void(CZTDialog*)>& init)
{
    QQmlEngine* engine = TheUiContext() != nullptr ? TheUiContext()->Engine() : nullptr;
    QQuickItem* layer = DialogLayer(parent);
    if (engine == nullptr || layer == nullptr) {
        qDebug() << "No window to show a dialog in:" << url;
        return nullptr;
    }
    QQmlComponent component(engine, QUrl(QString::fromUtf8(url)));
    if (!component.isReady()) {
        LogErrors(component, url);
        return nullptr;
    }
    auto context = std::make_unique<QQmlContext>(engine->rootContext());
    context->setContextProperty(QStringLiteral("dlgParent"), layer);
    std::unique_ptr<QObject> object(component.beginCreate(context.get()));
    auto* dialog = static_cast<CZTDialog*>(type.cast(object.get()));
    if (dialog == nullptr) {
        LogErrors(component, url);
        component.completeCreate();
        object.reset(); // before the context that its bindings live in
        return nullptr;
    }
    context.release()->setParent(dialog);
    dialog->Place(layer, parent);
    init(dialog);
    component.completeCreate();
    if (component.isError()) {
        LogErrors(component, url);
        return nullptr;
    }
    object.release();
    dialog->m_controls.Take();
    dialog->forceActiveFocus(Qt::PopupFocusReason);
    return dialog;
}

void CZTDialog::Place(QQuickItem* layer, ZT_HWND cause)
{
    if (layer->window() != nullptr) m_focus_before = layer->window()->activeFocusItem();
    setParent(layer);
    setParentItem(layer);
    setOrigin(cause.empty() ? QPointF(layer->width() / 2.0, layer->height() / 2.0)
                            : layer->mapFromItem(cause.item, QPointF(cause.x, cause.y)));
    connect(layer, &QQuickItem::widthChanged, this, &CZTDialog::FitToParent);
    connect(layer, &QQuickItem::heightChanged, this, &CZTDialog::FitToParent);
    FitToParent();
}

void CZTDialog::FitToParent()
{
    if (parentItem() != nullptr) setSize(parentItem()->size());
}

void CZTDialog::closeDialog(int code)
{
    if (m_closing) return;
    m_closing = true;
    const QPointer<CZTDialog> alive(this);
    onDismiss(code);
    if (!alive) return;
    m_controls.Release();
    static const QMetaMethod frame_signal = QMetaMethod::fromSignal(&CZTDialog::removeDialog);
    if (isSignalConnected(frame_signal)) {
        emit removeDialog();
    } else {
        destroyDialog();
    }
}

void CZTDialog::destroyDialog()
{
    GiveFocusBack();
    setParentItem(nullptr);
    setParent(nullptr);
    deleteLater();
}

void CZTDialog::GiveFocusBack()
{
    if (!hasActiveFocus() || parentItem() == nullptr) return;
    CZTDialog* below = nullptr;
    m_closing = true;
    below = NewestDialog(parentItem());
    const bool usable = m_focus_before && m_focus_before->isVisible() && m_focus_before->isEnabled() &&
                        m_focus_before->window() == window() && !IsInside(this, m_focus_before);
    if (usable && (below == nullptr || IsInside(below, m_focus_before))) {
        m_focus_before->forceActiveFocus(Qt::PopupFocusReason);
    } else if (below != nullptr) {
        below->forceActiveFocus(Qt::PopupFocusReason);
    }
}

void CZTDialog::onHelp(const QString& tag)
{
    if (IUiContext* context = TheUiContext()) context->showHelpForTag(tag);
}

void CZTDialog::onDismiss(int) {}

void CZTDialog::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        if (m_window) m_window->removeEventFilter(this);
        m_window = data.window;
        if (m_window) m_window->installEventFilter(this);
    }
    QQuickItem::itemChange(change, data);
}

bool CZTDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || watched != m_window || m_closing) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Tab && key != Qt::Key_Backtab) return false;
    QQuickItem* focused = m_window->activeFocusItem();
    if (!IsInside(this, focused)) return false;
    QQuickItem* next = NextInside(this, focused, key == Qt::Key_Tab);
    if (next != nullptr) next->forceActiveFocus(key == Qt::Key_Tab ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}
