#include "ui/rename_dialog.h"

void CDlg_Rename::Ask(ZT_HWND parent, const QString& title, const QString& hint, const QString& name, Renamed renamed)
{
    ShowDialog<CDlg_Rename>(parent, [&](CDlg_Rename* dialog) {
        dialog->title = title;
        dialog->hint = hint;
        dialog->name = name;
        dialog->renamed_function = std::move(renamed);
    });
}

void CDlg_Rename::accept(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) {
        problem_text = QStringLiteral("Please enter a name.");
        emit problemChanged();
        return;
    }
    if (renamed_function) renamed_function(trimmed);
    closeDialog(0);
}
