#include <KdVBLModel/KdDeviceRegistry.h>
#include <KdVBLModel/KdGst.h>

#include <Support/Command.h>
#include <Support/KdTestCase.h>
#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <QElapsedTimer>

#include <mutex>

using namespace KdVBLMODEL;

namespace {

constexpr std::chrono::seconds kPatience{10};
constexpr char kEndAtOnce[] = "--end-at-once";

class Listener : public IKdDeviceListener
{
public:
    Listener() { KdDeviceRegistry::instance().addListener(this); }
    ~Listener() { KdDeviceRegistry::instance().removeListener(this); }

    void onDeviceAdded(const KdCaptureDevice& device) override
    {
        note(QStringLiteral("+") + device.id);
    }
    void onDeviceRemoved(const KdCaptureDevice& device) override
    {
        note(QStringLiteral("-") + device.id);
    }
    void onDevicesListed(_KdDevType) override {}

    QStringList events() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_events;
    }
    int count(const char* event) const { return events().count(QLatin1String(event)); }

private:
    void note(const QString& event)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_events.append(event);
    }

    mutable std::mutex m_mutex;
    QStringList m_events;
};

QStringList names(_KdDevType kind = kdtMicrophone)
{
    QStringList names;
    for (const KdCaptureDevice& device : KdDeviceRegistry::instance().devices(kind)) {
        names.append(device.name);
    }
    return names;
}

/** A program of its own, which ends when the first list is complete. */
int endAtOnce(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto kind = static_cast<_KdDevType>(QCoreApplication::arguments().value(2).toInt());
    const bool isListed = KdDeviceRegistry::instance().waitUntilListed(kind, kPatience);
    return isListed && !KdDeviceRegistry::instance().devices(kind).isEmpty() ? EXIT_SUCCESS
                                                                             : EXIT_FAILURE;
}

} // namespace

class tst_KdDeviceRegistry : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aMicrophoneIsListedOnceAndAnnouncedOnce();
    void anOutputsMonitorIsNotListed();
    void aMicrophoneThatComesBackHasItsFormerId();
    void aStrangeNameIsListedAsPlainText();
    void aSourceIsMadeForADeviceThatIsThereOnly();
    void fastPluggingEndsInTheRightList();
    void aCameraIsListedOnceAndAnnouncedOnce();
    void aCameraSaysWhatItCanGive();
    void aMicrophoneIsNotAmongTheCamerasNorTheOtherWayRound();
    void manyCamerasThatComeAndGoEndInTheRightList();
    void aProgramMayEndWhileItsDevicesAreStillTold_data();
    void aProgramMayEndWhileItsDevicesAreStillTold();
};

void tst_KdDeviceRegistry::initTestCase()
{
    QElapsedTimer timer;
    timer.start();
    KdDeviceRegistry::instance().start(kdtMicrophone, std::chrono::hours(1));
    QVERIFY2(timer.elapsed() < 100, qPrintable(QString::number(timer.elapsed())));
    // Whoever waits does not wait for the delay.
    QVERIFY(KdDeviceRegistry::instance().waitUntilListed(kdtMicrophone, kPatience));
    QVERIFY(names().isEmpty());
}

void tst_KdDeviceRegistry::aMicrophoneIsListedOnceAndAnnouncedOnce()
{
    const Listener listener;
    VirtualMicrophone microphone;
    QVERIFY(microphone.plug());
    QTRY_COMPARE(listener.events(), QStringList({QStringLiteral("+usb_mic")}));
    QCOMPARE(names(), QStringList({QStringLiteral("USB Microphone")}));
    QVERIFY(microphone.unplug());
    QTRY_COMPARE(listener.events(),
                 QStringList({QStringLiteral("+usb_mic"), QStringLiteral("-usb_mic")}));
    QVERIFY(names().isEmpty());
}

void tst_KdDeviceRegistry::anOutputsMonitorIsNotListed()
{
    const Listener listener;
    QVERIFY(VirtualMicrophone::createOutput(QStringLiteral("speaker"), QStringLiteral("Speaker")));
    VirtualMicrophone microphone;
    QVERIFY(microphone.plug());
    QTRY_COMPARE(listener.events(), QStringList({QStringLiteral("+usb_mic")}));
    QCOMPARE(names(), QStringList({QStringLiteral("USB Microphone")}));
    QVERIFY(VirtualMicrophone::destroyNode(QStringLiteral("speaker")));
    QVERIFY(microphone.unplug());
    QTRY_VERIFY(names().isEmpty());
    QCOMPARE(listener.events().size(), 2);
}

void tst_KdDeviceRegistry::aMicrophoneThatComesBackHasItsFormerId()
{
    VirtualMicrophone stranger(QStringLiteral("other_mic"), QStringLiteral("Other"));
    VirtualMicrophone microphone;
    QVERIFY(microphone.plug() && stranger.plug());
    QTRY_COMPARE(names().size(), 2);
    QVERIFY(microphone.unplug());
    QTRY_COMPARE(names(), QStringList({QStringLiteral("Other")}));
    QVERIFY(microphone.plug());
    QTRY_COMPARE(names().size(), 2);
    const QVector<KdCaptureDevice> devices = KdDeviceRegistry::instance().devices(kdtMicrophone);
    const bool isBack = std::any_of(devices.begin(), devices.end(), [](const auto& device) {
        return device.id == QLatin1String("usb_mic");
    });
    QVERIFY(isBack);
}

void tst_KdDeviceRegistry::aStrangeNameIsListedAsPlainText()
{
    const QString strange = QStringLiteral("<b>\"%1\"</b> ! fakesink \\ מיק");
    VirtualMicrophone microphone(QStringLiteral("strange_mic"), strange);
    QVERIFY(microphone.plug());
    QTRY_COMPARE(names(), QStringList({strange}));
}

void tst_KdDeviceRegistry::aSourceIsMadeForADeviceThatIsThereOnly()
{
    KdDeviceRegistry& registry = KdDeviceRegistry::instance();
    KdCaptureDevice device{kdtMicrophone, QStringLiteral("usb_mic"), QString()};
    QCOMPARE(registry.createSource(device), nullptr);
    QCOMPARE(registry.createSource(KdCaptureDevice()), nullptr);
}

void tst_KdDeviceRegistry::fastPluggingEndsInTheRightList()
{
    const Listener listener;
    VirtualMicrophone microphone(QStringLiteral("flapping_mic"), QStringLiteral("Flapping"));
    constexpr int kRounds = 10;
    for (int i = 0; i < kRounds; ++i) {
        QVERIFY(microphone.plug());
        QVERIFY(microphone.unplug());
    }
    QVERIFY(microphone.plug());
    QTRY_COMPARE(listener.count("+flapping_mic"), kRounds + 1);
    QCOMPARE(listener.count("-flapping_mic"), kRounds);
    QCOMPARE(names(), QStringList({QStringLiteral("Flapping")}));
}

void tst_KdDeviceRegistry::aCameraIsListedOnceAndAnnouncedOnce()
{
    QVERIFY(KdDeviceRegistry::instance().waitUntilListed(kdtWebcam, kPatience));
    QVERIFY(names(kdtWebcam).isEmpty());
    const Listener listener;
    VirtualCamera camera;
    const KdCaptureDevice device{kdtWebcam, QStringLiteral("hd_webcam"), QString()};
    for (int round = 1; round <= 2; ++round) {
        QVERIFY(camera.plug());
        QTRY_COMPARE(listener.count("+hd_webcam"), round);
        QCOMPARE(names(kdtWebcam), QStringList({QStringLiteral("HD Webcam")}));
        QVERIFY(KdDeviceRegistry::instance().has(device));
        QVERIFY(camera.unplug());
        QTRY_COMPARE(listener.count("-hd_webcam"), round);
        QVERIFY(names(kdtWebcam).isEmpty());
        QVERIFY(!KdDeviceRegistry::instance().has(device));
    }
    QCOMPARE(listener.events().size(), 4);
}

void tst_KdDeviceRegistry::aCameraSaysWhatItCanGive()
{
    const KdCaptureDevice device{kdtWebcam, QStringLiteral("hd_webcam"), QString()};
    KdDeviceRegistry& registry = KdDeviceRegistry::instance();
    QCOMPARE(registry.createCaps(device), nullptr);
    VirtualCamera camera(device.id, QStringLiteral("HD Webcam"),
                         {QStringLiteral("YUY2:640x480@30"), QStringLiteral("MJPG:1280x720@15")});
    QVERIFY(camera.plug());
    QTRY_VERIFY(registry.has(device));
    const KdGstCapsPtr caps(registry.createCaps(device));
    const KdGstCapsPtr expected(
        gst_caps_from_string("video/x-raw, format=YUY2, width=640, height=480, framerate=30/1;"
                             "image/jpeg, width=1280, height=720, framerate=15/1"));
    QVERIFY2(gst_caps_is_equal(caps.get(), expected.get()),
             KdGCharPtr(gst_caps_to_string(caps.get())).get());
}

void tst_KdDeviceRegistry::aMicrophoneIsNotAmongTheCamerasNorTheOtherWayRound()
{
    VirtualMicrophone microphone;
    VirtualCamera camera;
    QVERIFY(microphone.plug() && camera.plug());
    QTRY_COMPARE(names(kdtMicrophone), QStringList({QStringLiteral("USB Microphone")}));
    QTRY_COMPARE(names(kdtWebcam), QStringList({QStringLiteral("HD Webcam")}));
    QVERIFY(KdDeviceRegistry::instance().devices(kdtSpeaker).isEmpty());
}

void tst_KdDeviceRegistry::manyCamerasThatComeAndGoEndInTheRightList()
{
    const Listener listener;
    VirtualCamera first(QStringLiteral("cam_1"), QStringLiteral("Camera"));
    VirtualCamera second(QStringLiteral("cam_2"), QStringLiteral("Camera"));
    constexpr int kRounds = 10;
    for (int i = 0; i < kRounds; ++i) {
        QVERIFY(first.plug() && second.plug());
        QVERIFY(first.unplug() && second.unplug());
    }
    QVERIFY(second.plug() && first.plug());
    QTRY_COMPARE(listener.count("+cam_1"), kRounds + 1);
    QTRY_COMPARE(listener.count("+cam_2"), kRounds + 1);
    QCOMPARE(listener.count("-cam_1"), kRounds);
    QCOMPARE(names(kdtWebcam),
             QStringList({QStringLiteral("Camera"), QStringLiteral("Camera (2)")}));
}

void tst_KdDeviceRegistry::aProgramMayEndWhileItsDevicesAreStillTold_data()
{
    QTest::addColumn<QString>("kind");

    QTest::newRow("microphones") << QString::number(kdtMicrophone);
    QTest::newRow("cameras") << QString::number(kdtWebcam);
}

void tst_KdDeviceRegistry::aProgramMayEndWhileItsDevicesAreStillTold()
{
    QFETCH(QString, kind);
    VirtualMicrophone microphone;
    VirtualCamera camera;
    QVERIFY(microphone.plug() && camera.plug());
    constexpr int kRounds = 10;
    for (int round = 0; round < kRounds; ++round) {
        const auto ended = Command::run(QCoreApplication::applicationFilePath(),
                                        {QLatin1String(kEndAtOnce), kind});
        QVERIFY2(ended.ok, ended.errors.constData());
    }
}

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[1], kEndAtOnce) == 0) {
        return endAtOnce(argc, argv);
    }
    return KdTest::run<tst_KdDeviceRegistry>(argc, argv);
}

#include "tst_KdDeviceRegistry.moc"
