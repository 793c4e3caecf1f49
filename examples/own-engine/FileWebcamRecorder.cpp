#include "FileWebcamRecorder.h"

#include <QBuffer>

using namespace KdVBLMODEL;

namespace {

constexpr double kFrameRate = 10.0;

} // namespace

QImage FileWebcamRecorder::picture() const
{
    return FileDevices::picture(m_take.device(kdtWebcam));
}

bool FileWebcamRecorder::start()
{
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    // A picture that cannot be read leaves nothing, and nothing is no take.
    picture().mirrored(m_flip, false).save(&buffer, "JPEG");
    return m_take.start({}, jpeg);
}

bool FileWebcamRecorder::pause()
{
    m_take.pause();
    return m_take.status() == fcsPaused;
}

bool FileWebcamRecorder::resume()
{
    m_take.resume();
    return m_take.status() == fcsRecording;
}

bool FileWebcamRecorder::setResolution(QSize resolution)
{
    return resolution == picture().size();
}

void FileWebcamRecorder::getResolutions(QList<QSize>* resolutions)
{
    const QSize size = picture().size();
    if (resolutions) {
        *resolutions = size.isEmpty() ? QList<QSize>() : QList<QSize>{size};
    }
}

void FileWebcamRecorder::getFrameRates(QList<double>* frameRates)
{
    if (frameRates) {
        *frameRates = {kFrameRate};
    }
}

bool FileWebcamRecorder::getDevices(_KdDevType type, QList<_KdCaptureDevInf>* devices)
{
    const QList<_KdCaptureDevInf> listed = m_take.listDevices(type);
    if (devices) {
        *devices = listed;
    }
    return type == kdtWebcam || type == kdtMicrophone;
}

bool FileWebcamRecorder::startPreview()
{
    const QImage shown = picture();
    m_take.setPreview(shown);
    return !shown.isNull();
}

bool FileWebcamRecorder::stopPreview()
{
    m_take.setPreview({});
    return true;
}

bool FileWebcamRecorder::setRecordDisplayShape(_KdCaptureRecordShape shape)
{
    m_shape = shape;
    return true;
}

bool FileWebcamRecorder::setOnlyWebcam(bool on)
{
    Q_UNUSED(on)
    return true;
}
