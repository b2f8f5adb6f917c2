#pragma once

#include "ui/zt_dialog.h"

#include <QString>

/// What the program is: version, licences, sources of its data, and that it is not for navigation.
class CDlg_settings_about : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString notice READ notice CONSTANT)
    Q_PROPERTY(QString licence READ licence CONSTANT)
    Q_PROPERTY(QString sources READ sources CONSTANT)
public:
    static constexpr const char* dialog_url = "qrc:/dlg_settings_about.qml";
    using CZTDialog::CZTDialog;

    QString version() const;
    QString notice() const;
    QString licence() const;
    QString sources() const;
};
