#pragma once

#include <functional>
#include <list>
#include <map>
#include <set>
#include <string>

/// Which alarms are active and which the user has acknowledged. An alarm's id is chosen by whoever raises it and stays
/// the same for as long as its condition lasts. Main thread only.
class UserNotificationManager {
public:
    /// Something that shows alarms to the user.
    class UserInterface {
    public:
        virtual ~UserInterface() = default;
        virtual void ShowNotification(int id, const std::string& title, const std::string& message) = 0;
        virtual void CancelNotification(int) {}
        virtual void AcknowledgeAll() = 0;
    };

    UserNotificationManager() = default;
    UserNotificationManager(const UserNotificationManager&) = delete;
    UserNotificationManager& operator=(const UserNotificationManager&) = delete;

    /// Tells every interface, each time; an id that is neither active nor acknowledged becomes active.
    void ShowNotification(int id, const std::string& title, const std::string& message);
    /// The condition has ended: if it comes back, it alarms afresh.
    void CancelNotification(int id);
    void Acknowledge(int id);
    /// Acknowledges what is active, here alone.
    void AcknowledgeHere();
    /// The same, and tells the other devices of the network.
    void AcknowledgeAll();
    /// Called once when the active id is acknowledged.
    void SetAcknowledgeCallback(int id, void (*function)(void*), void* user);
    bool IsActive(int id) const { return active.count(id) != 0; }
    bool IsAcknowledged(int id) const { return acknowledged.count(id) != 0; }
    bool IsNew(int id) const { return !IsActive(id) && !IsAcknowledged(id); }
    int GetActiveCount() const { return static_cast<int>(active.size()); }
    void AddInterface(UserInterface* interface);
    void RemoveInterface(UserInterface* interface);
    /// What tells the other devices; empty tells nobody.
    void SetBroadcast(std::function<void()> tell_others) { broadcast = std::move(tell_others); }

private:
    struct Callback {
        void (*function)(void*) = nullptr;
        void* user = nullptr;
    };

    std::map<int, Callback> active;
    std::set<int> acknowledged;
    std::list<UserInterface*> interfaces;
    std::function<void()> broadcast;
};

extern UserNotificationManager g_user_notification_manager;

void ShowSystemNotification(int id, const std::string& title, const std::string& text);
void CancelSystemNotification(int id);
