#include "overlays/dialogs/icon_dialog.h"

#include "overlays/icon_manager.h"

void CDlg_icon::Choose(ZT_HWND parent, const QString& icon_name, const QColor& colour, Chosen chosen)
{
    ShowDialog<CDlg_icon>(parent, [&](CDlg_icon* dialog) {
        dialog->icon_name = icon_name;
        dialog->colour = colour;
        dialog->chosen_function = std::move(chosen);
    });
}

QStringList CDlg_icon::icons() const
{
    QStringList names;
    for (const std::string& name : CIconManager::IconNames()) names << QString::fromStdString(name);
    return names;
}

void CDlg_icon::accept()
{
    if (chosen_function) chosen_function(icon_name, colour);
    closeDialog(0);
}
