#include <Studio/StudioTakeAnalyser.h>

#include <Studio/StudioWaveformReader.h>

#include <QThread>

StudioTakeAnalyser::StudioTakeAnalyser(QObject* parent) : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
}

StudioTakeAnalyser::~StudioTakeAnalyser()
{
    m_cancelled = true;
    m_pool.clear();
    m_pool.waitForDone();
}

void StudioTakeAnalyser::analyse(const QString& path)
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (m_pending.contains(path)) {
        return;
    }
    m_pending.insert(path);
    m_pool.start([this, path] { work(path); });
}

void StudioTakeAnalyser::work(const QString& path)
{
    const StudioMediaInfo info = probeMedia(path);
    QMetaObject::invokeMethod(
        this, [this, path, info] { Q_EMIT probed(path, info); }, Qt::QueuedConnection);
    const StudioPeaks peaks =
        info.readable && !m_cancelled ? readWaveform(path, m_cancelled) : StudioPeaks();
    QMetaObject::invokeMethod(
        this,
        [this, path, peaks, readable = info.readable] {
            m_pending.remove(path);
            if (readable) {
                Q_EMIT waveformRead(path, peaks);
            }
        },
        Qt::QueuedConnection);
}
