#include "ui/alarm_bell.h"

#include "core/persistant_data.h"

bool CAlarmBell::sound_on = true;

namespace {

class CAlarmBellSettings : public PersistantData {
public:
    CAlarmBellSettings() : PersistantData("CAlarmBell") {}
    void DeclareData() override { Declare("sound_on", CAlarmBell::sound_on); }
} settings;

} // namespace

void CAlarmBell::SetSoundOn(bool on)
{
    if (sound_on == on) return;
    sound_on = on;
    settings.SetModified();
}

CAlarmBell::CAlarmBell(UserNotificationManager& with_manager, IAlarmSound& with_sound)
    : Counter(kEvery), manager(with_manager), sound(with_sound)
{
    manager.AddInterface(this);
}

CAlarmBell::~CAlarmBell()
{
    manager.RemoveInterface(this);
}

void CAlarmBell::ShowNotification(int id, const std::string&, const std::string&)
{
    if (manager.IsAcknowledged(id) || !ringing.insert(id).second) return;
    countdown = kEvery;
    Ring();
}

void CAlarmBell::CancelNotification(int id)
{
    ringing.erase(id);
}

void CAlarmBell::AcknowledgeAll()
{
    ringing.clear();
}

void CAlarmBell::OnHeartbeat()
{
    std::erase_if(ringing, [this](int id) { return manager.IsAcknowledged(id); });
    if (!ringing.empty()) Ring();
}

void CAlarmBell::Ring()
{
    if (sound_on) sound.Play();
}
