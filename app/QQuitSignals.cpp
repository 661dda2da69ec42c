#include "QQuitSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int sockets[2] = {-1, -1};
const int handled[] = {SIGTERM, SIGINT, SIGHUP};

void onSignal(int)
{
    const char byte = 1;
    // Only async-signal-safe calls here; a full pipe drops the byte, which is harmless.
    [[maybe_unused]] const ssize_t written = ::write(sockets[0], &byte, 1);
}

} // namespace

QQuitSignals::QQuitSignals(std::function<void()> close, QObject* parent)
    : QObject(parent), closer(std::move(close))
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, sockets) != 0) return;
    notifier = new QSocketNotifier(sockets[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &QQuitSignals::received);
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int number : handled)
        sigaction(number, &action, nullptr);
}

QQuitSignals::~QQuitSignals()
{
    if (!notifier) return;
    for (const int number : handled)
        std::signal(number, SIG_DFL);
    ::close(sockets[0]);
    ::close(sockets[1]);
    sockets[0] = sockets[1] = -1;
}

void QQuitSignals::received()
{
    char byte = 0;
    [[maybe_unused]] const ssize_t read = ::read(sockets[1], &byte, 1);
    if (closer) closer();
}
