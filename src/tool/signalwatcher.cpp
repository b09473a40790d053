#include "tool/signalwatcher.h"

#include <QtCore/QPointer>
#include <QtCore/QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace Vantle::Tool {

namespace {

constexpr std::array watchedSignals{SIGINT, SIGTERM, SIGQUIT, SIGHUP};

// A handler may only write to a descriptor; the event loop reads the other end.
std::array<int, 2> pipeEnds{-1, -1};
std::array<struct sigaction, watchedSignals.size()> previousActions;

extern "C" void forwardSignal(int)
{
    const int savedError = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(pipeEnds[1], &byte, 1);
    errno = savedError;
}

} // namespace

SignalWatcher::SignalWatcher(QObject *parent) : QObject(parent)
{
    if (::pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &SignalWatcher::readPipe);

    struct sigaction action = {};
    action.sa_handler = forwardSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (size_t i = 0; i < watchedSignals.size(); ++i) {
        ::sigaction(watchedSignals.at(i), nullptr, &previousActions.at(i));
        // `nohup` means it. A shell's script, though, starts all its background
        // jobs with SIGINT ignored, and still sends it to end a recording.
        const bool isIgnored = previousActions.at(i).sa_handler == SIG_IGN;
        if (watchedSignals.at(i) != SIGHUP || !isIgnored)
            ::sigaction(watchedSignals.at(i), &action, nullptr);
    }
}

SignalWatcher::~SignalWatcher()
{
    if (pipeEnds[0] < 0)
        return;
    for (size_t i = 0; i < watchedSignals.size(); ++i)
        ::sigaction(watchedSignals.at(i), &previousActions.at(i), nullptr);
    delete findChild<QSocketNotifier *>();
    ::close(pipeEnds[0]);
    ::close(pipeEnds[1]);
    pipeEnds = {-1, -1};
}

void SignalWatcher::readPipe()
{
    const QPointer<SignalWatcher> self(this);
    char byte = 0;
    while (self && ::read(pipeEnds[0], &byte, 1) == 1)
        Q_EMIT stopRequested();
}

} // namespace Vantle::Tool
