#pragma once

#include "ui/zt_dialog.h"

#include <functional>

#include <QColor>
#include <QStringList>

/// A choice of mark icons and colours, shown as they will look.
class CDlg_icon : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(QStringList icons READ icons CONSTANT)
    Q_PROPERTY(QString iconName MEMBER icon_name NOTIFY changed)
    Q_PROPERTY(QColor colour MEMBER colour NOTIFY changed)
public:
    static constexpr const char* dialog_url = "qrc:/dlg_icon.qml";
    using Chosen = std::function<void(const QString& icon_name, const QColor& colour)>;
    using CZTDialog::CZTDialog;

    /// Shows the dialog; `chosen` is called when it is accepted.
    static void Choose(ZT_HWND parent, const QString& icon_name, const QColor& colour, Chosen chosen);

    /// The names of all icons, in the order of the alphabet.
    QStringList icons() const;
    Q_INVOKABLE void accept();

signals:
    void changed();

private:
    QString icon_name;
    QColor colour;
    Chosen chosen_function;
};
