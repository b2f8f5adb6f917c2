#pragma once

#include "ui/zt_dialog.h"

/// A dialog higher than any small window.
class CDlg_form : public CZTDialog {
    Q_OBJECT

public:
    static constexpr const char* dialog_url = "file://" ZT_SOURCE_DIR "/tests/ui/dlg_test_form.qml";
    using CZTDialog::CZTDialog;
};

/// A dialog around a list.
class CDlg_list : public CZTDialog {
    Q_OBJECT

public:
    static constexpr const char* dialog_url = "file://" ZT_SOURCE_DIR "/tests/ui/dlg_test_list.qml";
    using CZTDialog::CZTDialog;
};
