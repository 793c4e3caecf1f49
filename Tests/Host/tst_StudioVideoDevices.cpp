#include <Studio/StudioVideoDevices.h>
#include <Support/KdTestCase.h>

#include <QDir>
#include <QFile>

#include <cstdarg>
#include <dlfcn.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

namespace {

/** What the devices of the test say; nothing: they are no video devices. */
const v4l2_capability* g_answer = nullptr;

} // namespace

extern "C" __attribute__((visibility("default"))) int ioctl(int descriptor, unsigned long request,
                                                            ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    if (request == VIDIOC_QUERYCAP && g_answer) {
        *static_cast<v4l2_capability*>(argument) = *g_answer;
        return 0;
    }
    using Function = int (*)(int, unsigned long, void*);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "ioctl"));
    return real(descriptor, request, argument);
}

class tst_StudioVideoDevices : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aFolderWithoutDevicesHasNoCamera();
    void whatIsNoVideoDeviceIsNoCamera();
    void onlyWhatTakesPicturesIsACamera_data();
    void onlyWhatTakesPicturesIsACamera();
    void cleanup();

private:
    QString m_folder;
};

void tst_StudioVideoDevices::init()
{
    KdTestCase::init();
    m_folder = temporaryPath(QStringLiteral("dev"));
    QVERIFY(QDir().mkpath(m_folder));
    const QString device = QDir(m_folder).filePath(QStringLiteral("video0"));
    // Neither file nor folder, as devices are, and anybody may make it.
    QCOMPARE(mkfifo(QFile::encodeName(device).constData(), 0600), 0);
}

void tst_StudioVideoDevices::cleanup()
{
    g_answer = nullptr;
    KdTestCase::cleanup();
}

void tst_StudioVideoDevices::aFolderWithoutDevicesHasNoCamera()
{
    v4l2_capability camera{};
    camera.capabilities = V4L2_CAP_VIDEO_CAPTURE;
    g_answer = &camera;
    QVERIFY(!StudioVideoDevices::hasCamera(temporaryPath(QStringLiteral("missing"))));
    QVERIFY(StudioVideoDevices::hasCamera(m_folder));
    QVERIFY(QFile::remove(QDir(m_folder).filePath(QStringLiteral("video0"))));
    QVERIFY(!StudioVideoDevices::hasCamera(m_folder));
}

void tst_StudioVideoDevices::whatIsNoVideoDeviceIsNoCamera()
{
    QVERIFY(!StudioVideoDevices::hasCamera(m_folder));
}

void tst_StudioVideoDevices::onlyWhatTakesPicturesIsACamera_data()
{
    QTest::addColumn<uint>("capabilities");
    QTest::addColumn<uint>("ofThisDevice");
    QTest::addColumn<bool>("isCamera");
    constexpr uint kEach = V4L2_CAP_DEVICE_CAPS;
    QTest::newRow("camera") << kEach << uint(V4L2_CAP_VIDEO_CAPTURE) << true;
    QTest::newRow("camera of several planes")
        << kEach << uint(V4L2_CAP_VIDEO_CAPTURE_MPLANE) << true;
    QTest::newRow("old camera") << uint(V4L2_CAP_VIDEO_CAPTURE) << 0U << true;
    QTest::newRow("output") << kEach << uint(V4L2_CAP_VIDEO_OUTPUT) << false;
    QTest::newRow("decoder") << kEach << uint(V4L2_CAP_VIDEO_M2M_MPLANE) << false;
    QTest::newRow("what a camera says beside its pictures")
        << (kEach | V4L2_CAP_VIDEO_CAPTURE) << uint(V4L2_CAP_META_CAPTURE) << false;
}

void tst_StudioVideoDevices::onlyWhatTakesPicturesIsACamera()
{
    QFETCH(uint, capabilities);
    QFETCH(uint, ofThisDevice);
    QFETCH(bool, isCamera);
    v4l2_capability answer{};
    answer.capabilities = capabilities;
    answer.device_caps = ofThisDevice;
    g_answer = &answer;
    QCOMPARE(StudioVideoDevices::hasCamera(m_folder), isCamera);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioVideoDevices>(argc, argv);
}

#include "tst_StudioVideoDevices.moc"
