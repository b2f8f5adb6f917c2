#include "nmea/transports/setup_dialog.h"

#include "nmea/transports/network_name.h"

#include <utility>

void CConnectionSetupDialog::onDismiss(int code)
{
    const std::function<void(bool)> answer = std::exchange(done, nullptr);
    if (answer) answer(code == kAccepted);
}

QString CNetworkSetupDialog::network()
{
    return QString::fromStdString(getCurrentNetworkName());
}

bool CNetworkSetupDialog::Refuse(const QString& problem)
{
    m_problem = problem;
    emit problemChanged();
    return !problem.isEmpty();
}
