#include <Studio/StudioTakeAnalyser.h>

#include <Studio/StudioPictureReader.h>
#include <Studio/StudioWaveformReader.h>

#include <QThread>

namespace {

/** Sharp in the take list and on the timeline on a screen of twice the density. */
constexpr QSize kThumbnailBound(256, 144);
constexpr QSize kPosterBound(1280, 720);
/** Cameras begin dark; a third into the clip there is something to recognise. */
constexpr int kThumbnailPart = 3;

} // namespace

StudioTakeAnalyser::StudioTakeAnalyser(QObject* parent) : QObject(parent) {}

StudioTakeAnalyser::~StudioTakeAnalyser()
{
    m_gate.cancel();
    m_worker.stop();
}

void StudioTakeAnalyser::hold()
{
    m_gate.hold();
}

void StudioTakeAnalyser::release()
{
    m_gate.release();
}

void StudioTakeAnalyser::analyse(const QString& path)
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (m_pending.contains(path)) {
        return;
    }
    m_pending.insert(path);
    start([this, path] { work(path); });
}

void StudioTakeAnalyser::start(const std::function<void()>& job)
{
    ++m_jobs;
    m_worker.start([this, job] {
        job();
        m_worker.report([this] { finishJob(); });
    });
}

void StudioTakeAnalyser::finishJob()
{
    if (--m_jobs == 0) {
        Q_EMIT idle();
    }
}

void StudioTakeAnalyser::readPoster(const QString& path)
{
    Q_ASSERT(QThread::currentThread() == thread());
    start([this, path] {
        const QImage poster = m_gate.pass() ? readPicture(path, 0, kPosterBound, m_gate) : QImage();
        m_worker.report([this, path, poster] { Q_EMIT posterRead(path, poster); });
    });
}

void StudioTakeAnalyser::work(const QString& path)
{
    if (!m_gate.pass()) {
        return;
    }
    const StudioMediaInfo info = probeMedia(path);
    m_worker.report([this, path, info] {
        if (!info.readable) {
            m_pending.remove(path);
        }
        Q_EMIT probed(path, info);
    });
    if (info.readable && m_gate.pass()) {
        workOnContent(path, info);
    }
}

void StudioTakeAnalyser::workOnContent(const QString& path, const StudioMediaInfo& info)
{
    if (info.picture.isValid()) {
        const QImage thumbnail =
            readPicture(path, info.durationMs / kThumbnailPart, kThumbnailBound, m_gate);
        if (!thumbnail.isNull()) {
            m_worker.report([this, path, thumbnail] { Q_EMIT thumbnailRead(path, thumbnail); });
        }
    }
    const StudioPeaks peaks = info.channels > 0 ? readWaveform(path, m_gate) : StudioPeaks();
    m_worker.report([this, path, peaks] {
        m_pending.remove(path);
        Q_EMIT waveformRead(path, peaks);
    });
}
