#include "FileDevices.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace KdVBLMODEL;

namespace {

constexpr int kWavHeader = 44;

QString patternFor(_KdDevType type)
{
    switch (type) {
    case kdtMicrophone:
        return QStringLiteral("*.wav");
    case kdtWebcam:
        return QStringLiteral("*.png");
    default:
        return QString();
    }
}

} // namespace

QList<_KdCaptureDevInf> FileDevices::list(_KdDevType type)
{
    const QString pattern = patternFor(type);
    const QDir folder(qEnvironmentVariable("FILE_ENGINE_DEVICES"));
    QList<_KdCaptureDevInf> devices;
    if (pattern.isEmpty()) {
        return devices;
    }
    const QFileInfoList files = folder.entryInfoList({pattern}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        _KdCaptureDevInf device;
        device.devType = type;
        device.index = static_cast<qint32>(devices.size());
        device.name = file.completeBaseName();
        device.id = file.absoluteFilePath();
        devices.append(device);
    }
    return devices;
}

bool FileDevices::isThere(const _KdCaptureDevInf& device)
{
    return !device.id.isEmpty() && QFileInfo::exists(device.id);
}

QByteArray FileDevices::sound(const _KdCaptureDevInf& device)
{
    QFile file(device.id);
    return file.open(QIODevice::ReadOnly) ? file.readAll().mid(kWavHeader) : QByteArray();
}

QImage FileDevices::picture(const _KdCaptureDevInf& device)
{
    return QImage(device.id).convertToFormat(QImage::Format_ARGB32);
}
