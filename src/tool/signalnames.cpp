#include "tool/signalnames.h"

#include <csignal>

namespace Vantle::Tool {

namespace {

const char *signalName(int number)
{
    switch (number) {
    case SIGHUP: return "SIGHUP";
    case SIGINT: return "SIGINT";
    case SIGQUIT: return "SIGQUIT";
    case SIGILL: return "SIGILL";
    case SIGTRAP: return "SIGTRAP";
    case SIGABRT: return "SIGABRT";
    case SIGBUS: return "SIGBUS";
    case SIGFPE: return "SIGFPE";
    case SIGKILL: return "SIGKILL";
    case SIGUSR1: return "SIGUSR1";
    case SIGSEGV: return "SIGSEGV";
    case SIGUSR2: return "SIGUSR2";
    case SIGPIPE: return "SIGPIPE";
    case SIGALRM: return "SIGALRM";
    case SIGTERM: return "SIGTERM";
    case SIGXCPU: return "SIGXCPU";
    case SIGXFSZ: return "SIGXFSZ";
    case SIGSYS: return "SIGSYS";
    default: return nullptr;
    }
}

} // namespace

QString signalText(int number)
{
    const char *name = signalName(number);
    return name ? QStringLiteral("signal %1 (%2)").arg(number).arg(QLatin1String(name))
                : QStringLiteral("signal %1").arg(number);
}

} // namespace Vantle::Tool
