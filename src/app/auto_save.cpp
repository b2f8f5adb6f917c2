#include "app/auto_save.h"

#include "app/app_data.h"
#include "core/user_data_changed.h"

CAutoSave::CAutoSave()
{
    for (QTimer* timer : {&quiet, &latest}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, &CAutoSave::Save);
    }
    quiet.setInterval(kDelay_ms);
    latest.setInterval(kLongestDelay_ms);
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
