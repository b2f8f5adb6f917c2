#include "app/quit_on_signals.h"

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
volatile std::sig_atomic_t quit_signal_handle = -1;

void OnQuitSignal(int)
{
    const char byte = 1;
    // Nothing more than this is allowed in a signal handler.
    [[maybe_unused]] const ssize_t written = ::write(quit_signal_handle, &byte, 1);
}

void HandleSignals(void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (int signal : kSignals) ::sigaction(signal, &action, nullptr);
}

} // namespace

CQuitOnSignals::CQuitOnSignals()
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, handles) != 0) return;
    notifier = std::make_unique<QSocketNotifier>(handles[1], QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        [[maybe_unused]] const ssize_t count = ::read(handles[1], bytes, sizeof(bytes));
        QCoreApplication::quit();
    });
    quit_signal_handle = handles[0];
    HandleSignals(OnQuitSignal);
}

CQuitOnSignals::~CQuitOnSignals()
{
    if (handles[0] < 0) return;
    HandleSignals(SIG_DFL);
    notifier.reset();
    ::close(handles[0]);
    ::close(handles[1]);
}
