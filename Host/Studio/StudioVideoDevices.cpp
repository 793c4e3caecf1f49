#include <Studio/StudioVideoDevices.h>

#include <QDir>
#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

bool takesPictures(const QString& path)
{
    const int device = ::open(QFile::encodeName(path).constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (device < 0) {
        return false;
    }
    v4l2_capability answer{};
    const bool isAnswered = ::ioctl(device, VIDIOC_QUERYCAP, &answer) == 0;
    ::close(device);
    const bool tellsEach = (answer.capabilities & V4L2_CAP_DEVICE_CAPS) != 0;
    const __u32 capabilities = tellsEach ? answer.device_caps : answer.capabilities;
    return isAnswered &&
           (capabilities & (V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_VIDEO_CAPTURE_MPLANE)) != 0;
}

} // namespace

bool StudioVideoDevices::hasCamera(const QString& folder)
{
    const QDir devices(folder);
    const QStringList names = devices.entryList({QStringLiteral("video*")}, QDir::System);
    return std::any_of(names.begin(), names.end(), [&devices](const QString& name) {
        return takesPictures(devices.filePath(name));
    });
}
