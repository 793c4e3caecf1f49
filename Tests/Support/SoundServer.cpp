#include "SoundServer.h"

#include "Command.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <csignal>

namespace {
constexpr int kTimeoutMs = 20000;
}

SoundServer::SoundServer()
{
    QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
    // The server and its first client would both make it; the server ends when it comes second.
    const QString pulse = m_folder.filePath(QStringLiteral("pulse"));
    QDir().mkdir(pulse);
    QFile::setPermissions(pulse, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_STATE_HOME", QFile::encodeName(m_folder.filePath(QStringLiteral("state"))));
    for (const char* name :
         {"PULSE_SERVER", "PULSE_RUNTIME_PATH", "PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR"}) {
        qunsetenv(name);
    }
}

SoundServer::~SoundServer()
{
    letGo();
    kill();
}

bool SoundServer::start()
{
    const auto answers = [](const char* program, const QStringList& arguments) {
        return QTest::qWaitFor(
            [&] { return Command::run(QLatin1String(program), arguments, 5000).ok; }, kTimeoutMs);
    };
    return startDaemon(QStringLiteral("pipewire")) &&
           answers("pw-cli", {QStringLiteral("info"), QStringLiteral("0")}) &&
           startDaemon(QStringLiteral("wireplumber")) &&
           startDaemon(QStringLiteral("pipewire-pulse")) &&
           answers("pactl", {QStringLiteral("info")});
}

bool SoundServer::startDaemon(const QString& program)
{
    auto process = std::make_unique<QProcess>();
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, QStringList());
    const bool isStarted = process->waitForStarted(kTimeoutMs);
    m_daemons.push_back(std::move(process));
    return isStarted;
}

void SoundServer::kill()
{
    for (const auto& daemon : m_daemons) {
        daemon->kill();
    }
    for (const auto& daemon : m_daemons) {
        daemon->waitForFinished(kTimeoutMs);
    }
    m_daemons.clear();
}

void SoundServer::hold()
{
    signalAll(SIGSTOP);
}

void SoundServer::letGo()
{
    signalAll(SIGCONT);
}

void SoundServer::signalAll(int number)
{
    for (const auto& daemon : m_daemons) {
        if (daemon->state() == QProcess::Running) {
            ::kill(static_cast<pid_t>(daemon->processId()), number);
        }
    }
}
