#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>

/** What showing a camera costs, in seconds of processor time per second. */
struct PreviewCost
{
    bool ok = false;
    double program = 0.0;
    double displayServer = 0.0;
    double camera = 0.0;
    double picturesPerSecond = 0.0; ///< shown
    double perPicture = 0.0;        ///< the program's seconds for one of them
};

/** A program that shows a camera, and prints "rendered: COUNT" now and then while it does. */
class PreviewProgram
{
public:
    explicit PreviewProgram(const QStringList& command);
    /** Ends it. */
    ~PreviewProgram();

    /** Waits until it shows pictures and has come to rest, then looks on for some seconds. */
    PreviewCost watch(double seconds, qint64 cameraProcess);

private:
    Q_DISABLE_COPY(PreviewProgram)

    void read();

    QProcess m_process;
    QElapsedTimer m_clock;
    QByteArray m_line; ///< what of it has come
    int m_count = 0;
    qint64 m_countedNs = 0; ///< when that was printed
};
