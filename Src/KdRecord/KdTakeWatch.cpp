#include <KdRecord/KdTakeWatch.h>

#include <utility>

KdTakeWatch::KdTakeWatch(std::function<KdVBLMODEL::_KdCaptureStatus()> status, QObject* parent,
                         int intervalMs)
    : QObject(parent), m_status(std::move(status))
{
    m_timer.setInterval(intervalMs);
    connect(&m_timer, &QTimer::timeout, this, &KdTakeWatch::look);
}

void KdTakeWatch::look()
{
    if (m_status() == KdVBLMODEL::fcsEnded) {
        Q_EMIT sigTakeEnded();
    }
}
