#pragma once

#include "ui/zt_dialog.h"

#include <QStringList>

/// The dialog of "Map Settings": how zooming chooses charts, downloads, the scale bar, and which types of charts are
/// shown. Every change holds at once.
class CDlg_map_settings : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(bool changeScaleByZooming READ changeScaleByZooming WRITE setChangeScaleByZooming NOTIFY changed)
    Q_PROPERTY(bool automaticDownload READ automaticDownload WRITE setAutomaticDownload NOTIFY changed)
    Q_PROPERTY(bool scaleBar READ scaleBar WRITE setScaleBar NOTIFY changed)
    Q_PROPERTY(QStringList chartTypes READ chartTypes CONSTANT)

public:
    static constexpr const char* dialog_url = "qrc:/dlg_map_settings.qml";
    using CZTDialog::CZTDialog;

    bool changeScaleByZooming() const;
    void setChangeScaleByZooming(bool on);
    bool automaticDownload() const;
    void setAutomaticDownload(bool on);
    bool scaleBar() const;
    void setScaleBar(bool on);
    /// The types of the catalogue's charts, sorted.
    QStringList chartTypes() const;
    Q_INVOKABLE bool isTypeShown(const QString& type) const;
    /// The last type that is shown cannot be taken away.
    Q_INVOKABLE void showType(const QString& type, bool shown);

signals:
    void changed();

private:
    void Set(bool& setting, bool on);
};
