#include <Studio/StudioQuitSignals.h>

#include <QSocketNotifier>

#if defined(Q_OS_UNIX)

#include <array>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::array<int, 3> kSignals{SIGINT, SIGTERM, SIGHUP};

std::array<int, 2> s_sockets{-1, -1};

/** A signal handler may do next to nothing: it passes the number on. */
void passOn(int signalNumber)
{
    const auto number = static_cast<unsigned char>(signalNumber);
    const ssize_t written = ::write(s_sockets[0], &number, 1);
    static_cast<void>(written);
}

void setHandlers(void (*handler)(int))
{
    for (const int number : kSignals) {
        struct sigaction action = {};
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        sigaction(number, &action, nullptr);
    }
}

} // namespace

StudioQuitSignals::StudioQuitSignals(QObject* parent) : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, s_sockets.data()) != 0) {
        return;
    }
    m_pNotifier = new QSocketNotifier(s_sockets[1], QSocketNotifier::Read, this);
    connect(m_pNotifier, &QSocketNotifier::activated, this, &StudioQuitSignals::read);
    setHandlers(passOn);
}

StudioQuitSignals::~StudioQuitSignals()
{
    if (m_pNotifier) {
        setHandlers(SIG_DFL);
        ::close(s_sockets[0]);
        ::close(s_sockets[1]);
        s_sockets = {-1, -1};
    }
}

void StudioQuitSignals::read()
{
    unsigned char number = 0;
    if (::read(s_sockets[1], &number, 1) == 1) {
        Q_EMIT quitRequested(number);
    }
}

#else

StudioQuitSignals::StudioQuitSignals(QObject* parent) : QObject(parent) {}

StudioQuitSignals::~StudioQuitSignals() = default;

void StudioQuitSignals::read() {}

#endif
