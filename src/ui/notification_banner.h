#pragma once

#include "ui/user_notification_manager.h"

#include <map>
#include <string>

#include <QPointer>
#include <QQuickItem>

/// The root of Notification.qml: the banner that tells of alarms. Main thread only.
class CNotificationDlg : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
public:
    using QQuickItem::QQuickItem;

    QString title() const { return m_title; }
    QString message() const { return m_message; }
    /// The manager whose alarms are shown; it outlives the banner.
    void SetManager(UserNotificationManager& of) { manager = &of; }
    /// The window shows further texts when the event loop is reached again.
    void SetTexts(const QString& title, const QString& message);
    /// Takes the keyboard, unless the user is busy in a dialog, and gives it back.
    void TakeFocus();
    void GiveFocusBack();
    /// The press of "OK": acknowledges every alarm.
    Q_INVOKABLE void onButtonClicked();

signals:
    void changed();
    void focusWanted();

private:
    void TellChanged();

    UserNotificationManager* manager = nullptr;
    bool telling = false; ///< TellChanged is on its way
    QPointer<QQuickItem> focus_before;
    QString m_title;
    QString m_message;
};

/// Shows all alarms that wait for the user in one banner over the window. Main thread only.
class MyNotificationUI : public UserNotificationManager::UserInterface {
public:
    explicit MyNotificationUI(UserNotificationManager& with_manager);
    MyNotificationUI(const MyNotificationUI&) = delete;
    MyNotificationUI& operator=(const MyNotificationUI&) = delete;
    ~MyNotificationUI() override;

    /// An acknowledged id is ignored. One that is shown already changes its text.
    void ShowNotification(int id, const std::string& title, const std::string& message) override;
    void CancelNotification(int id) override;
    void AcknowledgeAll() override;

    /// The banner; null while there is nothing to tell, or no window to tell it in.
    CNotificationDlg* Banner() const { return dialog; }

private:
    struct Alarm {
        std::string title;
        std::string message;
        bool operator==(const Alarm&) const = default;
    };

    void showNotificationDlg();
    void Close();
    void Rebuild();

    UserNotificationManager& manager;
    QPointer<CNotificationDlg> dialog;
    std::map<int, Alarm> alarms;
};
