#include "app/display_settings_dialog.h"

#include "app/settings_entry.h"
#include "app/zentara_app_model.h"
#include "chartview/view_settings.h"
#include "ui/alarm_bell.h"

namespace {

constexpr int kDisplayOrder = 3;
const CSettingsEntry<CDlg_display_settings> display_settings_entry("Display", kDisplayOrder, "qrc:/display.svg");

} // namespace

int CDlg_display_settings::theme() const
{
    return theApp != nullptr ? theApp->theme() : 2;
}

void CDlg_display_settings::setTheme(int theme)
{
    if (theApp != nullptr) theApp->setTheme(theme);
    emit changed();
}

double CDlg_display_settings::dimmer() const
{
    return theApp != nullptr ? theApp->screenDimmer() : 0.0;
}

void CDlg_display_settings::setDimmer(double opacity)
{
    if (theApp != nullptr) theApp->setScreenDimmer(opacity);
    emit changed();
}

double CDlg_display_settings::darkest() const
{
    return CZentaraAppModel::kDarkestDimmer;
}

bool CDlg_display_settings::fullScreen() const
{
    return TheViewSettings().full_screen;
}

void CDlg_display_settings::setFullScreen(bool on)
{
    if (theApp != nullptr) theApp->set_fullScreen(on);
    emit changed();
}

bool CDlg_display_settings::scaleBar() const
{
    return TheViewSettings().show_scale_bar;
}

void CDlg_display_settings::setScaleBar(bool on)
{
    if (scaleBar() == on) return;
    TheViewSettings().show_scale_bar = on;
    ViewSettingsChanged();
    emit changed();
}

bool CDlg_display_settings::alarmSound() const
{
    return CAlarmBell::sound_on;
}

void CDlg_display_settings::setAlarmSound(bool on)
{
    CAlarmBell::SetSoundOn(on);
    emit changed();
}
