#include <Studio/StudioSoundServer.h>

#include <QLocalSocket>

#include <algorithm>

namespace StudioSoundServer {

namespace {

constexpr int kConnectTimeoutMs = 1000;

#if defined(Q_OS_LINUX)
bool answers(const QString& path)
{
    QLocalSocket socket;
    socket.connectToServer(path);
    return socket.waitForConnected(kConnectTimeoutMs);
}
#endif

} // namespace

QStringList socketPaths(const QProcessEnvironment& environment)
{
    const QString runtime = environment.value(QStringLiteral("XDG_RUNTIME_DIR"));
    const QString unixPrefix = QStringLiteral("unix:");
    QStringList paths;
    const QString named = environment.value(QStringLiteral("PULSE_SERVER"));
    if (named.startsWith(unixPrefix)) {
        paths.append(named.mid(unixPrefix.size()));
    } else if (named.startsWith(QLatin1Char('/'))) {
        paths.append(named);
    }
    if (runtime.isEmpty()) {
        return paths;
    }
    const QString remote =
        environment.value(QStringLiteral("PIPEWIRE_REMOTE"), QStringLiteral("pipewire-0"));
    paths.append(remote.startsWith(QLatin1Char('/')) ? remote
                                                     : runtime + QLatin1Char('/') + remote);
    paths.append(runtime + QStringLiteral("/pulse/native"));
    return paths;
}

bool isReachable(const QProcessEnvironment& environment)
{
#if defined(Q_OS_LINUX)
    const QString named = environment.value(QStringLiteral("PULSE_SERVER"));
    if (!named.isEmpty() && !named.startsWith(QLatin1String("unix:")) &&
        !named.startsWith(QLatin1Char('/'))) {
        return true;
    }
    const QStringList paths = socketPaths(environment);
    return std::any_of(paths.cbegin(), paths.cend(), answers);
#else
    Q_UNUSED(environment)
    return true;
#endif
}

} // namespace StudioSoundServer
