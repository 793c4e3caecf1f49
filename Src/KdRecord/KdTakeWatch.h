#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QObject>
#include <QTimer>

#include <functional>

/**
 * Notices that the engine has ended a take by itself, because the disk is full say: engines have no
 * callback for it, only a status. GUI thread.
 */
class KdTakeWatch : public QObject
{
    Q_OBJECT

public:
    static constexpr int kIntervalMs = 500;

    /**
     * @param status asks the engine; called only between start() and stop()
     * @param intervalMs between two questions
     */
    KdTakeWatch(std::function<KdVBLMODEL::_KdCaptureStatus()> status, QObject* parent,
                int intervalMs = kIntervalMs);

    /** A take runs from now on. */
    void start() { m_timer.start(); }
    void stop() { m_timer.stop(); }

Q_SIGNALS:
    /** Repeated until stop(): whoever is asked for something else at the moment hears it again. */
    void sigTakeEnded();

private:
    void look();

    std::function<KdVBLMODEL::_KdCaptureStatus()> m_status;
    QTimer m_timer;
};
