#include "ChildRun.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryFile>
#include <QVector>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

[[noreturn]] void becomeProgram(const QVector<QByteArray>& words, const QByteArray& outputPath)
{
    const int output = open(outputPath.constData(), O_WRONLY | O_TRUNC);
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    QVector<char*> arguments;
    for (const QByteArray& word : words) {
        arguments.append(const_cast<char*>(word.constData()));
    }
    arguments.append(nullptr);
    execvp(arguments.first(), arguments.data());
    _exit(127);
}

} // namespace

ChildCost runChild(const QStringList& command, double interruptAfterSeconds)
{
    ChildCost cost;
    QTemporaryFile outputFile;
    if (!outputFile.open()) {
        return cost;
    }
    QVector<QByteArray> words;
    for (const QString& word : command) {
        words.append(word.toLocal8Bit());
    }
    const QByteArray outputPath = QFile::encodeName(outputFile.fileName());

    QElapsedTimer wall;
    wall.start();
    const pid_t child = fork();
    if (child == 0) {
        becomeProgram(words, outputPath);
    }
    QElapsedTimer sinceInterrupt;
    if (interruptAfterSeconds > 0.0) {
        // How long the child records is what is measured, not something to wait for.
        std::this_thread::sleep_for(std::chrono::duration<double>(interruptAfterSeconds));
        sinceInterrupt.start();
        kill(child, SIGINT);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    cost.wallSeconds = static_cast<double>(wall.nsecsElapsed()) * 1e-9;
    if (sinceInterrupt.isValid()) {
        cost.stopMilliseconds = static_cast<double>(sinceInterrupt.nsecsElapsed()) * 1e-6;
    }
    cost.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    cost.cpuSeconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    cost.peakMegabytes = static_cast<double>(usage.ru_maxrss) / 1024.0;
    cost.output = QString::fromUtf8(outputFile.readAll());
    return cost;
}

QHash<QString, double> printedValues(const ChildCost& cost)
{
    QHash<QString, double> values;
    const QStringList lines = cost.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        values.insert(line.section(QLatin1Char(' '), 0, 0),
                      line.section(QLatin1Char(' '), 1, 1).toDouble());
    }
    return values;
}
