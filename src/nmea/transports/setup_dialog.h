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

/// The set-up of a connection over a network.
class CNetworkSetupDialog : public CConnectionSetupDialog {
    Q_OBJECT
    Q_PROPERTY(QString network READ network CONSTANT)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    using CConnectionSetupDialog::CConnectionSetupDialog;

    /// The network that the computer has joined.
    static QString network();
    /// Why the last acceptance was refused; empty: it was not.
    QString problem() const { return m_problem; }

signals:
    void problemChanged();

protected:
    /// Shows the problem, under which the dialog stays open; an empty one takes that of before away. True for a
    /// problem.
    bool Refuse(const QString& problem);

private:
    QString m_problem;
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
