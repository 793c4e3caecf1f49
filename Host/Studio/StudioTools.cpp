#include <Studio/StudioTools.h>

#include <QDeadlineTimer>
#include <QStandardPaths>

#if defined(Q_OS_LINUX)
#include <csignal>
#include <sys/prctl.h>
#endif

namespace StudioTools {

namespace {

constexpr int kCommandTimeoutMs = 3000;
constexpr int kEndTimeoutMs = 500;

} // namespace

BoundProcess::~BoundProcess()
{
    if (state() != QProcess::NotRunning) {
        terminate();
        if (!waitForFinished(kEndTimeoutMs)) {
            kill();
            waitForFinished(kEndTimeoutMs);
        }
    }
}

void BoundProcess::setupChildProcess()
{
#if defined(Q_OS_LINUX)
    prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
}

Result run(const QString& program, const QStringList& arguments)
{
    BoundProcess process;
    process.start(program, arguments);
    Result result;
    if (process.waitForFinished(kCommandTimeoutMs)) {
        result.done = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        result.output = process.readAllStandardOutput();
        result.errors = process.readAllStandardError();
    }
    return result;
}

QByteArray pipeWireDump()
{
    return run(QStringLiteral("pw-dump"), {}).output;
}

QString whatIsMissing(const QStringList& programs, const QString& package)
{
    for (const QString& program : programs) {
        if (QStandardPaths::findExecutable(program).isEmpty()) {
            return QStringLiteral("A demonstration needs the program \"%1\" (package %2).")
                .arg(program, package);
        }
    }
    return {};
}

bool until(int timeoutMs, const std::function<bool()>& condition)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
    }
    return true;
}

} // namespace StudioTools
