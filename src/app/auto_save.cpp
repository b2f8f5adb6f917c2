#include "app/auto_save.h"

#include "app/app_data.h"
#include "core/user_data_changed.h"

CAutoSave::CAutoSave(int delay_ms, int longest_delay_ms)
{
    for (QTimer* timer : {&quiet, &latest}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, &CAutoSave::Save);
    }
    quiet.setInterval(delay_ms);
    latest.setInterval(longest_delay_ms);
    SetUserDataChangedCallback([this] { NoteChange(); });
}

CAutoSave::~CAutoSave()
{
    SetUserDataChangedCallback({});
}

void CAutoSave::NoteChange()
{
    quiet.start();
    if (!latest.isActive()) latest.start();
}

void CAutoSave::Save()
{
    quiet.stop();
    latest.stop();
    save_all_app_data();
}
