#include "ui/user_notification_manager.h"

UserNotificationManager g_user_notification_manager;

void UserNotificationManager::ShowNotification(int id, const std::string& title, const std::string& message)
{
    const std::list<UserInterface*> told = interfaces;
    for (UserInterface* interface : told) interface->ShowNotification(id, title, message);
    if (IsNew(id)) active.emplace(id, Callback());
}

void UserNotificationManager::CancelNotification(int id)
{
    const std::list<UserInterface*> told = interfaces;
    for (UserInterface* interface : told) interface->CancelNotification(id);
    active.erase(id);
    acknowledged.erase(id);
}

void UserNotificationManager::Acknowledge(int id)
{
    const auto found = active.find(id);
    if (found == active.end()) return;
    const Callback callback = found->second;
    active.erase(found);
    acknowledged.insert(id);
    if (callback.function != nullptr) callback.function(callback.user);
}

void UserNotificationManager::AcknowledgeHere()
{
    const std::list<UserInterface*> told = interfaces;
    for (UserInterface* interface : told) interface->AcknowledgeAll();
    while (!active.empty()) Acknowledge(active.begin()->first);
}

void UserNotificationManager::AcknowledgeAll()
{
    AcknowledgeHere();
    if (broadcast) broadcast();
}

void UserNotificationManager::SetAcknowledgeCallback(int id, void (*function)(void*), void* user)
{
    const auto found = active.find(id);
    if (found != active.end()) found->second = {function, user};
}

void UserNotificationManager::AddInterface(UserInterface* interface)
{
    interfaces.push_back(interface);
}

void UserNotificationManager::RemoveInterface(UserInterface* interface)
{
    interfaces.remove(interface);
}

void ShowSystemNotification(int id, const std::string& title, const std::string& text)
{
    g_user_notification_manager.ShowNotification(id, title, text);
}

void CancelSystemNotification(int id)
{
    g_user_notification_manager.CancelNotification(id);
}
