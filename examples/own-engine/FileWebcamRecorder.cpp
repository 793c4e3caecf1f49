#include "FileWebcamRecorder.h"

#include <QBuffer>
#include <QPainter>
#include <QPainterPath>
#include <QtDebug>

using namespace KdVBLMODEL;

namespace {

constexpr double kFrameRate = 10.0;

QImage circleOf(const QImage& picture)
{
    const int side = qMin(picture.width(), picture.height());
    QRect square(0, 0, side, side);
    square.moveCenter(picture.rect().center());
    QImage result(picture.size(), QImage::Format_RGB32);
    result.fill(Qt::black);
    QPainterPath circle;
    circle.addEllipse(square);
    QPainter painter(&result);
    painter.setClipPath(circle);
    painter.drawImage(0, 0, picture);
    return result;
}

} // namespace

QImage FileWebcamRecorder::picture() const
{
    return FileDevices::picture(m_take.device(kdtWebcam));
}

QByteArray FileWebcamRecorder::content() const
{
    const QImage seen = picture().mirrored(m_flip, false);
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    // A picture that cannot be read leaves nothing, and nothing is no take.
    (m_shape == fcrsCircle && !seen.isNull() ? circleOf(seen) : seen).save(&buffer, "JPEG");
    return jpeg;
}

bool FileWebcamRecorder::start()
{
    const bool lacksSound = m_recordsAudio && !FileDevices::isThere(m_take.device(kdtMicrophone));
    return m_take.start(lacksSound ? QByteArray() : content());
}

bool FileWebcamRecorder::setResolution(QSize resolution)
{
    return !resolution.isEmpty() && resolution == picture().size();
}

bool FileWebcamRecorder::setVideoFormat(const KdVideoFormat* format)
{
    return format && format->fourcc == kFourCcH264 && qFuzzyCompare(format->frameRate, kFrameRate);
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
    if (!devices) {
        return false;
    }
    *devices = m_take.listDevices(type);
    return type == kdtWebcam || type == kdtMicrophone;
}

bool FileWebcamRecorder::setDevice(_KdDevType type, int index)
{
    const bool isChosen = m_take.select(type, index);
    if (isChosen && m_isPreviewing) {
        m_take.setPreview(picture());
    }
    return isChosen;
}

bool FileWebcamRecorder::startPreview()
{
    const QImage shown = picture();
    m_isPreviewing = !shown.isNull();
    m_take.setPreview(shown);
    return m_isPreviewing;
}

bool FileWebcamRecorder::stopPreview()
{
    m_isPreviewing = false;
    m_take.setPreview({});
    return true;
}

bool FileWebcamRecorder::setRecordDisplayShape(_KdCaptureRecordShape shape)
{
    if (shape != fcrsCircle && shape != fcrsSquare) {
        return false;
    }
    m_shape = shape;
    m_take.setContent(content());
    return true;
}

void FileWebcamRecorder::setBackgroundMode(_KdCaptureRecordBackgroundMode mode)
{
    if (mode == fcbmRemove || mode == fcbmBlur) {
        qInfo("FileWebcamRecorder: backgrounds stay as they are");
    }
}

void FileWebcamRecorder::setRecordFlip(bool on)
{
    m_flip = on;
    m_take.setContent(content());
}
