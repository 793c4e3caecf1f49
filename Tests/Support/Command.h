#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/** Runs command-line tools for tests and waits for them. */
namespace Command {

struct Result
{
    bool ok = false; ///< ran, in time, and exited with 0
    QByteArray output;
    QByteArray errors;
};

/** Fails quietly: the caller decides what a failure means. */
Result run(const QString& program, const QStringList& arguments, int timeoutMs = 20000);

} // namespace Command
