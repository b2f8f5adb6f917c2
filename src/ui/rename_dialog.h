#pragma once

#include "ui/zt_dialog.h"

#include <functional>

#include <QString>

/// Asks for one name.
class CDlg_Rename : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString hint MEMBER hint CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
public:
    static constexpr const char* dialog_url = "qrc:/dlg_rename.qml";
    using Renamed = std::function<void(const QString& name)>;
    using CZTDialog::CZTDialog;

    /// Shows the dialog with the present name; `renamed` is called with a new one, never empty, when it is accepted.
    /// `hint` says what is special about the name, may be empty.
    static void Ask(ZT_HWND parent, const QString& title, const QString& hint, const QString& name, Renamed renamed);

    /// What keeps the dialog from being accepted; empty when nothing does.
    QString problem() const { return problem_text; }
    /// Takes the text without blanks around it and closes; an empty one is refused, and the dialog stays.
    Q_INVOKABLE void accept(const QString& text);

signals:
    void problemChanged();

private:
    QString title;
    QString hint;
    QString name;
    QString problem_text;
    Renamed renamed_function;
};
