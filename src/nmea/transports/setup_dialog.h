#pragma once

#include "ui/zt_dialog.h"

#include <functional>

/// What the set-up dialogs of the connections share: one answer, true when the user accepted. The connection that is
/// set up outlives the dialog.
class CConnectionSetupDialog : public CZTDialog {
    Q_OBJECT

public:
    using CZTDialog::CZTDialog;

    void onDismiss(int code) override;

    std::function<void(bool)> done;

protected:
    /// Closing codes.
    enum Code : int { kAccepted = 0, kRejected = 1 };
};

/// Shows the dialog T for `connection`; `done` gets false when it cannot be shown.
template <class T, class Connection>
void ShowSetupDialog(ZT_HWND view, Connection* connection, const std::function<void(bool)>& done)
{
    const T* dialog = CZTDialog::ShowDialog<T>(view, [&](T* shown) {
        shown->done = done;
        shown->Init(connection);
    });
    if (dialog == nullptr) done(false);
}
