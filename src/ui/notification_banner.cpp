#include "ui/notification_banner.h"

#include "ui/ui_context.h"

#include <memory>

#include <QDebug>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

void CNotificationDlg::SetTexts(const QString& title, const QString& message)
{
    if (m_title == title && m_message == message) return;
    const bool first = m_title.isEmpty();
    m_title = title;
    m_message = message;
    if (first) {
        emit changed();
    } else if (!telling) {
        // Many alarms may come at once: the long text is laid out for the last of them alone.
        telling = true;
        QMetaObject::invokeMethod(this, &CNotificationDlg::TellChanged, Qt::QueuedConnection);
    }
}

void CNotificationDlg::TellChanged()
{
    telling = false;
    emit changed();
}

void CNotificationDlg::onButtonClicked()
{
    if (manager != nullptr) manager->AcknowledgeAll();
}

void CNotificationDlg::TakeFocus()
{
    const bool dialog_open = parentItem() != nullptr && parentItem()->childItems().size() > 1;
    if (dialog_open || window() == nullptr) return;
    focus_before = window()->activeFocusItem();
    emit focusWanted();
}

void CNotificationDlg::GiveFocusBack()
{
    if (focus_before != nullptr) focus_before->forceActiveFocus();
    focus_before = nullptr;
}

MyNotificationUI::MyNotificationUI(UserNotificationManager& with_manager) : manager(with_manager)
{
    manager.AddInterface(this);
}

MyNotificationUI::~MyNotificationUI()
{
    manager.RemoveInterface(this);
    Close();
}

void MyNotificationUI::ShowNotification(int id, const std::string& title, const std::string& message)
{
    if (manager.IsAcknowledged(id)) return;
    if (dialog == nullptr) showNotificationDlg();
    Alarm& alarm = alarms[id];
    Alarm shown{title, message};
    if (alarm == shown) return;
    alarm = std::move(shown);
    Rebuild();
}

void MyNotificationUI::CancelNotification(int id)
{
    if (alarms.erase(id) == 0) return;
    if (alarms.empty()) {
        Close();
    } else {
        Rebuild();
    }
}

void MyNotificationUI::AcknowledgeAll()
{
    alarms.clear();
    Close();
}

void MyNotificationUI::showNotificationDlg()
{
    IUiContext* context = TheUiContext();
    if (context == nullptr || context->Engine() == nullptr || context->DialogParent() == nullptr) return;
    QQmlEngine* engine = context->Engine();
    QQmlComponent component(engine, QUrl(QStringLiteral("qrc:/Notification.qml")));
    std::unique_ptr<QObject> object(component.beginCreate(engine->rootContext()));
    dialog = qobject_cast<CNotificationDlg*>(object.get());
    if (dialog == nullptr) {
        for (const QQmlError& error : component.errors()) qDebug().noquote() << error.toString();
        if (object != nullptr) component.completeCreate();
        return;
    }
    dialog->SetManager(manager);
    dialog->setParent(context->DialogParent());
    dialog->setParentItem(context->DialogParent());
    object.release();
    component.completeCreate();
    dialog->TakeFocus();
}

void MyNotificationUI::Close()
{
    if (dialog == nullptr) return;
    dialog->GiveFocusBack();
    dialog->setParentItem(nullptr);
    dialog->deleteLater();
    dialog = nullptr;
}

void MyNotificationUI::Rebuild()
{
    if (dialog == nullptr || alarms.empty()) return;
    if (alarms.size() == 1) {
        const Alarm& only = alarms.begin()->second;
        dialog->SetTexts(QString::fromStdString(only.title), QString::fromStdString(only.message));
        return;
    }
    std::string lines;
    for (const auto& [id, alarm] : alarms) {
        if (!lines.empty()) lines += '\n';
        lines += alarm.title + ": " + alarm.message;
    }
    dialog->SetTexts(QStringLiteral("%1 Alerts").arg(alarms.size()), QString::fromStdString(lines));
}
