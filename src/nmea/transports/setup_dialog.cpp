#include "nmea/transports/setup_dialog.h"

#include <utility>

void CConnectionSetupDialog::onDismiss(int code)
{
    const std::function<void(bool)> answer = std::exchange(done, nullptr);
    if (answer) answer(code == kAccepted);
}
