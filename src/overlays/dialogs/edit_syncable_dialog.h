#pragma once

#include "core/graphics_color.h"
#include "ui/zt_dialog.h"

#include <QColor>
#include <QString>

class CSyncable;

GraphicsColor ToGraphicsColor(const QColor& colour);
QColor ToQColor(const GraphicsColor& colour);

/// What marks, routes and tracks have in common, being edited: name, description, folder, lock. The properties are the
/// dialog's own until accept() gives them to the object. An object that goes while its dialog is open closes it.
class CDlg_edit_syncable : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString name MEMBER name NOTIFY changed)
    Q_PROPERTY(QString comment MEMBER comment NOTIFY changed)
    Q_PROPERTY(QString category MEMBER category NOTIFY changed)
    Q_PROPERTY(bool locked MEMBER locked NOTIFY changed)
    Q_PROPERTY(bool keepHere MEMBER keep_here NOTIFY changed)
    Q_PROPERTY(bool isTemplate READ isTemplate CONSTANT)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
public:
    using CZTDialog::CZTDialog;

    QString title() const { return title_text; }
    /// The look of new objects is edited, not an object: it has no description and no folder.
    bool isTemplate() const { return is_template; }
    /// What keeps the dialog from being accepted; empty when nothing does.
    QString problem() const { return problem_text; }

    /// Gives the properties to the object and closes; what cannot be used is said, and the dialog stays.
    Q_INVOKABLE void accept();

signals:
    void changed();
    void problemChanged();

protected:
    void TakeFrom(const CSyncable& object, const QString& with_title, bool of_template);
    /// Gives what is common to the object; true when that changed it.
    bool GiveTo(CSyncable& object) const;
    /// Whether the object is still there to be edited.
    virtual bool IsAlive() const = 0;
    /// Checks and gives; false after Refuse.
    virtual bool Apply() = 0;
    void Refuse(const QString& text);

    QString name;
    QString comment;
    QString category;
    bool locked = false;
    bool keep_here = false;

private:
    QString title_text;
    QString problem_text;
    bool is_template = false;
};
