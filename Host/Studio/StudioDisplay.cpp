#include <Studio/StudioDisplay.h>

#include <cstdio>
#include <cstdlib>

namespace StudioDisplay {

namespace {

int s_exitStatus = EXIT_FAILURE;
QtMessageHandler s_previous = nullptr;

[[noreturn]] void endProcess(const QString& message)
{
    std::fprintf(stderr, "studio: the display cannot be opened. %s\n", qPrintable(message));
    std::fflush(stderr);
    std::_Exit(s_exitStatus);
}

void handle(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtFatalMsg) {
        endProcess(message.section(QLatin1Char('\n'), 0, 0));
    }
    if (s_previous) {
        s_previous(type, context, message);
    }
}

} // namespace

QString missingText(const QProcessEnvironment& environment)
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    const QString platform = environment.value(QStringLiteral("QT_QPA_PLATFORM"));
    const bool needsDisplay = platform.isEmpty() || platform.startsWith(QLatin1String("xcb")) ||
                              platform.startsWith(QLatin1String("wayland"));
    const bool hasDisplay = !environment.value(QStringLiteral("DISPLAY")).isEmpty() ||
                            !environment.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty();
    if (needsDisplay && !hasDisplay) {
        return QStringLiteral(
            "There is no display: neither DISPLAY nor WAYLAND_DISPLAY is set. Studio needs an X11 "
            "or Wayland session; \"./dev run --demo\" brings one of its own.");
    }
#else
    Q_UNUSED(environment)
#endif
    return {};
}

FailureGuard::FailureGuard(int exitStatus)
{
    s_exitStatus = exitStatus;
    m_previous = qInstallMessageHandler(handle);
    s_previous = m_previous;
}

FailureGuard::~FailureGuard()
{
    qInstallMessageHandler(m_previous);
    s_previous = nullptr;
}

} // namespace StudioDisplay
