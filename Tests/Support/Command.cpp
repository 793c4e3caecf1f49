#include "Command.h"

#include <QProcess>

Command::Result Command::run(const QString& program, const QStringList& arguments, int timeoutMs)
{
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
    Result result;
    const bool ended = process.waitForFinished(timeoutMs);
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }
    result.ok = ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}
