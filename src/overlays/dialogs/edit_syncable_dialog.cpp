#include "overlays/dialogs/edit_syncable_dialog.h"

#include "overlays/syncable.h"

GraphicsColor ToGraphicsColor(const QColor& colour)
{
    const auto part = [](int value) { return static_cast<float>(value) / 255.0F; };
    return {part(colour.red()), part(colour.green()), part(colour.blue()), part(colour.alpha())};
}

QColor ToQColor(const GraphicsColor& colour)
{
    return QColor::fromRgba(colour.argb());
}

void CDlg_edit_syncable::TakeFrom(const CSyncable& object, const QString& with_title, bool of_template)
{
    title_text = with_title;
    is_template = of_template;
    name = QString::fromStdString(object.name);
    comment = QString::fromStdString(object.comment);
    category = QString::fromStdString(object.category);
    locked = object.locked;
    keep_here = object.do_not_sync;
}

bool CDlg_edit_syncable::GiveTo(CSyncable& object) const
{
    const std::string new_name = name.trimmed().toStdString();
    const std::string new_comment = comment.trimmed().toStdString();
    const std::string new_category = category.trimmed().toStdString();
    const bool differs = object.name != new_name || object.comment != new_comment || object.category != new_category ||
                         object.locked != locked || object.do_not_sync != keep_here;
    if (!differs) return false;
    object.name = new_name;
    object.comment = new_comment;
    object.category = new_category;
    object.locked = locked;
    object.do_not_sync = keep_here;
    return true;
}

void CDlg_edit_syncable::accept()
{
    if (IsAlive() && !Apply()) return;
    closeDialog(0);
}

void CDlg_edit_syncable::Refuse(const QString& text)
{
    problem_text = text;
    emit problemChanged();
}
