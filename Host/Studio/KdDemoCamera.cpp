#include <Studio/KdDemoCamera.h>

#include <Studio/StudioPictureCheck.h>
#include <Studio/StudioPipeWire.h>
#include <Studio/StudioTools.h>
#include <Studio/StudioVideoDevices.h>

#include <QCoreApplication>
#include <QDir>

namespace {

constexpr int kDeviceTimeoutMs = 5000;
constexpr int kPictureTimeoutMs = 6000;

/** It is built beside Studio. */
QString program()
{
    return QDir(QCoreApplication::applicationDirPath())
        .filePath(QStringLiteral("kd_virtual_camera"));
}

/** Like a usual webcam, the best first. */
QStringList modes()
{
    return {QStringLiteral("YUY2:1280x720@30"), QStringLiteral("YUY2:640x480@30"),
            QStringLiteral("YUY2:640x480@15"), QStringLiteral("YUY2:320x240@30")};
}

} // namespace

KdDemoCamera::KdDemoCamera(QObject* parent) : QObject(parent) {}

KdDemoCamera::~KdDemoCamera() = default;

QString KdDemoCamera::nodeName()
{
    return QStringLiteral("kdrecord_demo_camera");
}

QString KdDemoCamera::displayName()
{
    return QStringLiteral("Demo Camera");
}

bool KdDemoCamera::isCameraThere()
{
    return StudioPipeWire::hasCamera(StudioTools::pipeWireDump()) ||
           StudioVideoDevices::hasCamera();
}

QString KdDemoCamera::start()
{
    QString error =
        StudioTools::whatIsMissing({QStringLiteral("pw-dump")}, QStringLiteral("pipewire-bin"));
    if (error.isEmpty()) {
        error = makeDevice();
    }
    if (!error.isEmpty()) {
        return error;
    }
    const QString darkness = StudioPictureCheck::look(nodeName(), kPictureTimeoutMs);
    return darkness.isEmpty()
               ? QString()
               : QStringLiteral("The demonstration camera does not work. %1").arg(darkness);
}

QString KdDemoCamera::makeDevice()
{
    m_device = std::make_unique<StudioTools::BoundProcess>();
    m_device->setStandardOutputFile(QProcess::nullDevice());
    m_device->setStandardErrorFile(QProcess::nullDevice());
    m_device->start(program(), QStringList{nodeName(), displayName()} + modes());
    if (!m_device->waitForStarted()) {
        return QStringLiteral("The demonstration camera could not be made: %1 does not start.")
            .arg(QDir::toNativeSeparators(program()));
    }
    const bool made = StudioTools::until(kDeviceTimeoutMs, [this] {
        // Its end is only noticed while somebody waits for it.
        const bool ended =
            m_device->waitForFinished(0) || m_device->state() == QProcess::NotRunning;
        return ended || StudioPipeWire::hasNode(StudioTools::pipeWireDump(), nodeName());
    });
    if (!made || m_device->state() == QProcess::NotRunning) {
        return QStringLiteral(
            "The demonstration camera could not be made: no PipeWire server answers.");
    }
    return {};
}
