#pragma once

#include "ui/user_notification_manager.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

#include <QObject>

/// Shows alarms as notifications of the desktop (org.freedesktop.Notifications on the session bus) while the program's
/// own window is not the active one. Without a session bus it does nothing. Never blocks. Main thread only.
class CDesktopNotifications : public QObject, public UserNotificationManager::UserInterface {
    Q_OBJECT
public:
    /// `window_active` tells whether the user is looking at the program.
    CDesktopNotifications(UserNotificationManager& with_manager, std::function<bool()> window_active);
    ~CDesktopNotifications() override;

    /// An alarm is told once, and again only after it was cancelled.
    void ShowNotification(int id, const std::string& title, const std::string& message) override;
    void CancelNotification(int id) override;
    void AcknowledgeAll() override;

private:
    void Notify(int id, const std::string& title, const std::string& message);
    void CloseOnDesktop(quint32 desktop_id);

    UserNotificationManager& manager;
    std::function<bool()> window_active;
    std::map<int, quint32> shown; ///< alarm to the desktop's number; 0 until the desktop has answered
};
