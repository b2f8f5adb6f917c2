#pragma once

#include "ui/zt_dialog.h"

/// How the program looks and sounds: theme, dimming, full screen, scale bar, alarm bell. Every change shows at once.
class CDlg_display_settings : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(int theme READ theme WRITE setTheme NOTIFY changed)
    Q_PROPERTY(double dimmer READ dimmer WRITE setDimmer NOTIFY changed)
    Q_PROPERTY(double darkest READ darkest CONSTANT)
    Q_PROPERTY(bool fullScreen READ fullScreen WRITE setFullScreen NOTIFY changed)
    Q_PROPERTY(bool scaleBar READ scaleBar WRITE setScaleBar NOTIFY changed)
    Q_PROPERTY(bool alarmSound READ alarmSound WRITE setAlarmSound NOTIFY changed)
public:
    static constexpr const char* dialog_url = "qrc:/dlg_display_settings.qml";
    using CZTDialog::CZTDialog;

    /// 0 light, 1 dark, 2 as the system has it.
    int theme() const;
    void setTheme(int theme);
    /// 0 is no dimming.
    double dimmer() const;
    void setDimmer(double opacity);
    double darkest() const;
    bool fullScreen() const;
    void setFullScreen(bool on);
    bool scaleBar() const;
    void setScaleBar(bool on);
    bool alarmSound() const;
    void setAlarmSound(bool on);

signals:
    void changed();
};
