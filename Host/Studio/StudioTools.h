#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>

/** Command-line tools that a demonstration is made of. GUI thread; calls block shortly. */
namespace StudioTools {

/** A tool that does not outlive the process, however that ends: its device would stay for ever. */
class BoundProcess : public QProcess
{
    Q_OBJECT

public:
    using QProcess::QProcess;
    ~BoundProcess() override;

protected:
    void setupChildProcess() override;
};

struct Result
{
    bool done = false; ///< ran to its end in time, with the status 0
    QByteArray output;
    QByteArray errors;
};

/** Runs a tool and waits for it, for 3 s at most. */
Result run(const QString& program, const QStringList& arguments);

/** What the video and sound server knows, for StudioPipeWire; empty when it does not answer. */
QByteArray pipeWireDump();

/** @return a sentence that names the first of these programs that is not installed; empty: none */
QString whatIsMissing(const QStringList& programs, const QString& package);

/** Asks again and again; each asking should take its time. @return whether it came true in time */
bool until(int timeoutMs, const std::function<bool()>& condition);

} // namespace StudioTools
