#include "overlays/dialogs/line_appearance_dialog.h"

void CDlg_line_appearance::Choose(ZT_HWND parent, const CLineAppearance& line, Chosen chosen)
{
    ShowDialog<CDlg_line_appearance>(parent, [&](CDlg_line_appearance* dialog) {
        dialog->colour = ToQColor(line.colour);
        dialog->line_width = static_cast<double>(line.line_width);
        dialog->line_style = line.line_style;
        dialog->chosen_function = std::move(chosen);
    });
}

void CDlg_line_appearance::accept()
{
    CLineAppearance line;
    line.colour = ToGraphicsColor(colour);
    line.line_width = static_cast<float>(line_width);
    line.line_style = line_style;
    line.KeepInBounds();
    if (chosen_function) chosen_function(line);
    closeDialog(0);
}
