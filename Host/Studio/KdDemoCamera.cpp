#include <Studio/KdDemoCamera.h>

#include <Studio/StudioPictureCheck.h>
#include <Studio/StudioPipeWire.h>
#include <Studio/StudioTools.h>

#include <QDir>

namespace {

constexpr int kDeviceTimeoutMs = 5000;
constexpr int kPictureTimeoutMs = 6000;

/** What gst-launch-1.0 is asked for: a ball that swings through the picture, at the size and rate
 * of a usual webcam. */
QStringList pipeline()
{
    const QString properties =
        QStringLiteral("stream-properties=p,media.class=(string)Video/Source,"
                       "media.role=(string)Camera,node.name=(string)%1,"
                       "node.description=(string)\"%2\"")
            .arg(KdDemoCamera::nodeName(),
                 KdDemoCamera::displayName().replace(QLatin1Char(' '), QStringLiteral("\\ ")));
    return {QStringLiteral("-q"),
            QStringLiteral("videotestsrc"),
            QStringLiteral("is-live=true"),
            QStringLiteral("pattern=ball"),
            QStringLiteral("motion=wavy"),
            QStringLiteral("animation-mode=frames"),
            QStringLiteral("background-color=0xff24405c"),
            QStringLiteral("foreground-color=0xffffc857"),
            QStringLiteral("!"),
            QStringLiteral("video/x-raw,format=YUY2,width=1280,height=720,framerate=30/1"),
            QStringLiteral("!"),
            QStringLiteral("pipewiresink"),
            QStringLiteral("mode=provide"),
            properties};
}

bool hasVideoDevice()
{
    return !QDir(QStringLiteral("/dev"))
                .entryList({QStringLiteral("video*")}, QDir::System)
                .isEmpty();
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
    return StudioPipeWire::hasCamera(StudioTools::pipeWireDump()) || hasVideoDevice();
}

QString KdDemoCamera::start()
{
    QString error =
        StudioTools::whatIsMissing({QStringLiteral("pw-dump")}, QStringLiteral("pipewire-bin"));
    if (error.isEmpty()) {
        error = StudioTools::whatIsMissing({QStringLiteral("gst-launch-1.0")},
                                           QStringLiteral("gstreamer1.0-tools"));
    }
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
    m_device->start(QStringLiteral("gst-launch-1.0"), pipeline());
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
