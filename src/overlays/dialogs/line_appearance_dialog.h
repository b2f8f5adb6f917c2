#pragma once

#include "overlays/dialogs/edit_syncable_dialog.h"
#include "overlays/line_appearance.h"

/// How a line looks, being edited; shown as it will look.
class CDlg_line_appearance : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(QColor colour MEMBER colour NOTIFY changed)
    Q_PROPERTY(double lineWidth MEMBER line_width NOTIFY changed)
    Q_PROPERTY(int lineStyle MEMBER line_style NOTIFY changed)
    Q_PROPERTY(double widest READ widest CONSTANT)
public:
    static constexpr const char* dialog_url = "qrc:/dlg_line_appearance.qml";
    using Chosen = std::function<void(const CLineAppearance& line)>;
    using CZTDialog::CZTDialog;

    /// Shows the dialog; `chosen` is called when it is accepted.
    static void Choose(ZT_HWND parent, const CLineAppearance& line, Chosen chosen);

    double widest() const { return 12.0; } ///< logical pixels
    Q_INVOKABLE void accept();

signals:
    void changed();

private:
    QColor colour;
    double line_width = 2.0; ///< logical pixels
    int line_style = 0;
    Chosen chosen_function;
};
