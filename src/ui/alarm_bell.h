#pragma once

#include "core/heartbeat.h"
#include "ui/user_notification_manager.h"

#include <set>
#include <string>

/// What makes the sound of an alarm.
struct IAlarmSound {
    virtual ~IAlarmSound() = default;
    virtual void Play() = 0;
};

/// Rings for every alarm that the user has not acknowledged, again and again until he does. Main thread only.
class CAlarmBell : public UserNotificationManager::UserInterface, protected CHeartbeat::Counter {
public:
    static constexpr int kEvery = 40; ///< ticks between two rings
    static bool sound_on;             ///< setting
    /// Stores the setting.
    static void SetSoundOn(bool on);

    CAlarmBell(UserNotificationManager& with_manager, IAlarmSound& with_sound);
    CAlarmBell(const CAlarmBell&) = delete;
    CAlarmBell& operator=(const CAlarmBell&) = delete;
    ~CAlarmBell() override;

    void ShowNotification(int id, const std::string& title, const std::string& message) override;
    void CancelNotification(int id) override;
    void AcknowledgeAll() override;
    void OnHeartbeat() override;

private:
    void Ring();

    UserNotificationManager& manager;
    IAlarmSound& sound;
    std::set<int> ringing;
};

/// Plays the program's bell with the desktop's own player (PipeWire's, PulseAudio's or ALSA's, whichever is installed);
/// without one there is no sound. Never blocks.
class CDesktopBell : public IAlarmSound {
public:
    void Play() override;

private:
    bool Prepare();

    std::string file;
    std::string player;
    bool prepared = false;
};

/// Two seconds of a bell, as the bytes of a WAV file: 16 bits, one channel.
std::string AlarmBellWav();
