#include "app/desktop_notifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace {

constexpr const char* kService = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";

QDBusMessage Call(const char* method)
{
    return QDBusMessage::createMethodCall(QString::fromLatin1(kService), QString::fromLatin1(kPath),
                                          QString::fromLatin1(kService), QString::fromLatin1(method));
}

} // namespace

CDesktopNotifications::CDesktopNotifications(UserNotificationManager& with_manager, std::function<bool()> active)
    : manager(with_manager), window_active(std::move(active))
{
    manager.AddInterface(this);
}

CDesktopNotifications::~CDesktopNotifications()
{
    manager.RemoveInterface(this);
    AcknowledgeAll();
}

void CDesktopNotifications::ShowNotification(int id, const std::string& title, const std::string& message)
{
    if (manager.IsAcknowledged(id) || shown.count(id) != 0 || window_active()) return;
    if (!QDBusConnection::sessionBus().isConnected()) return;
    shown.emplace(id, 0);
    Notify(id, title, message);
}

void CDesktopNotifications::Notify(int id, const std::string& title, const std::string& message)
{
    QVariantMap hints;
    hints[QStringLiteral("urgency")] = QVariant::fromValue<uchar>(2); // critical: stays until it is dismissed
    hints[QStringLiteral("desktop-entry")] = QStringLiteral("com.zentara.zt");
    QDBusMessage call = Call("Notify");
    // The body may be taken as markup.
    call << QStringLiteral("Zentara") << quint32(0) << QStringLiteral("com.zentara.zt") << QString::fromStdString(title)
         << QString::fromStdString(message).toHtmlEscaped() << QStringList() << hints << 0;
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, id](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<quint32> reply = *finished;
        if (reply.isError()) return;
        const auto found = shown.find(id);
        if (found != shown.end()) {
            found->second = reply.value();
        } else {
            CloseOnDesktop(reply.value());
        }
    });
}

void CDesktopNotifications::CancelNotification(int id)
{
    const auto found = shown.find(id);
    if (found == shown.end()) return;
    const quint32 desktop_id = found->second;
    shown.erase(found);
    if (desktop_id != 0) CloseOnDesktop(desktop_id);
}

void CDesktopNotifications::AcknowledgeAll()
{
    while (!shown.empty()) CancelNotification(shown.begin()->first);
}

void CDesktopNotifications::CloseOnDesktop(quint32 desktop_id)
{
    QDBusMessage call = Call("CloseNotification");
    call << desktop_id;
    QDBusConnection::sessionBus().asyncCall(call);
}
