#include "WebcamHelperFixture.h"

#include <limits>

using namespace KdVBLMODEL;

using Responses = QVector<int>;

/** Another webcam, another microphone. */
class tst_KdWebcamRecorderHelperSwitch : public WebcamHelperFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void switchingTheWebcamGoesThroughEveryStepInOrder();
    void switchingTheWebcamStartsThePreviewThreeTimesWithANewIdEach();
    void startsAWebcamInItsDefaultResolution_data();
    void startsAWebcamInItsDefaultResolution();
    void aRefusedWebcamChangesNothing();
    void aWebcamThatIsNotListedBecomesNone_data();
    void aWebcamThatIsNotListedBecomesNone();
    void anIndexWithoutAWebcamIsRefused_data();
    void anIndexWithoutAWebcamIsRefused();
    void switchesTheWebcamWithoutARecorder();

    void switchingTheMicrophoneSendsTheDefaultFormat();
    void aRefusedMicrophoneChangesNothing();
    void aRefusedAudioFormatIsASwitchAllTheSame();
    void aMicrophoneThatIsNotListedBecomesNone();
    void switchesTheMicrophoneWithoutARecorder();

    void logsDeviceNamesAsTheyAre_data();
    void logsDeviceNamesAsTheyAre();
};

void tst_KdWebcamRecorderHelperSwitch::init()
{
    WebcamHelperFixture::init();
    m_engine->script().webcams.append(device(kdtWebcam, 1, QStringLiteral("Second")));
    m_engine->script().microphones.append(device(kdtMicrophone, 1, QStringLiteral("Second")));
}

void tst_KdWebcamRecorderHelperSwitch::switchingTheWebcamGoesThroughEveryStepInOrder()
{
    ReadyHelper helper;
    m_engine->clearCalls();
    helper.slotSetCurrentWebCamDevice(1);
    const QStringList expected{QStringLiteral("setDevice(2, 1)"),
                               QStringLiteral("getResolutions()"),
                               QStringLiteral("setResolution(1280x720)"),
                               QStringLiteral("getFrameRates()"),
                               QStringLiteral("setVideoFormat(fourcc=C264 rate=30)"),
                               QStringLiteral("startPreview()"),
                               QStringLiteral("startPreview()"),
                               QStringLiteral("startPreview()")};
    QCOMPARE(m_engine->calls(), expected);
    QCOMPARE(helper.takeResponses(), Responses({9, 1}));
    const _KdCaptureDevInf current = helper.getCurrentWebCamDeviceInfo();
    QCOMPARE(current.devType, qint32(kdtWebcam));
    QCOMPARE(current.index, 1);
    QCOMPARE(current.name, QStringLiteral("Second"));
    QCOMPARE(current.id, QStringLiteral("Second-id"));
    QCOMPARE(helper.getCurrentResolution(), QSize(1280, 720));
    QCOMPARE(helper.getCurrentFrameRate(), 30.0);
    QCOMPARE(helper.resolutions(), QList<QSize>({{640, 480}, {1280, 720}}));
    QCOMPARE(helper.frameRates(), QList<double>({30.0, 15.0}));
    const QStringList logged{
        QString::fromUtf8(
            "slotSetCurrentWebCamDevice: 【Switch camera device BEGIN】device index = 1"),
        QString::fromUtf8(
            "slotSetCurrentWebCamDevice: 【Switch camera device END】device index = 1"),
        QStringLiteral("slotSetCurrentResolution: set current resolution"),
        QStringLiteral("slotSetCurrentResolution: Set resolution(1280 x 720) to webcam Second"),
        QStringLiteral("slotSetCurrentFrameRate: Set frameRates(30.000000 fps) to webcam Second"),
        QStringLiteral("slotSetCurrentResolution: vbl set framerate")};
    QCOMPARE(messages(KdBaseLog::Info), logged);
}

void tst_KdWebcamRecorderHelperSwitch::switchingTheWebcamStartsThePreviewThreeTimesWithANewIdEach()
{
    ReadyHelper helper;
    QStringList ids = previewIdsOf(helper, [&helper] { helper.slotSetCurrentWebCamDevice(0); });
    QCOMPARE(ids.size(), 1 + 3);
    QCOMPARE(ids.last(), helper.previewId());
    QCOMPARE(ids.removeDuplicates(), 0);
}

void tst_KdWebcamRecorderHelperSwitch::startsAWebcamInItsDefaultResolution_data()
{
    QTest::addColumn<QList<QSize>>("offered");
    QTest::addColumn<QSize>("expected");
    QTest::newRow("nothing") << QList<QSize>() << QSize(640, 480);
    QTest::newRow("large ones") << QList<QSize>{{320, 240}, {1920, 1080}, {1280, 720}}
                                << QSize(1920, 1080);
    QTest::newRow("small ones") << QList<QSize>{{176, 144}, {320, 240}, {352, 288}, {424, 240}}
                                << QSize(320, 240);
}

void tst_KdWebcamRecorderHelperSwitch::startsAWebcamInItsDefaultResolution()
{
    QFETCH(QList<QSize>, offered);
    QFETCH(QSize, expected);
    m_engine->script().resolutionsOf[QStringLiteral("Second-id")] = offered;
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(1);
    QCOMPARE(helper.getCurrentResolution(), expected);
    QCOMPARE(m_engine->lastCall("setResolution").argument<QSize>(0), expected);
    QCOMPARE(helper.resolutions(), offered);
}

void tst_KdWebcamRecorderHelperSwitch::aRefusedWebcamChangesNothing()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.slotSetCurrentFrameRate(15.0);
    helper.takeResponses();
    const QString id = helper.previewId();
    m_engine->clearCalls();
    m_engine->fail("setDevice");
    expectLog(QStringLiteral("Failed to switch camera"));
    helper.slotSetCurrentWebCamDevice(1);
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("setDevice(2, 1)")));
    QVERIFY(helper.takeResponses().isEmpty());
    QCOMPARE(helper.getCurrentWebCamDeviceInfo().index, 0);
    QCOMPARE(helper.getCurrentResolution(), QSize(1280, 720));
    QCOMPARE(helper.getCurrentFrameRate(), 15.0);
    QCOMPARE(helper.resolutions(), m_engine->script().resolutions);
    QCOMPARE(helper.frameRates(), m_engine->script().frameRates);
    QCOMPARE(helper.previewId(), id);
    QCOMPARE(messages(KdBaseLog::Warning),
             QStringList(QStringLiteral("slotSetCurrentWebCamDevice: "
                                        "Failed to switch camera device, device index = 1")));
}

void tst_KdWebcamRecorderHelperSwitch::aWebcamThatIsNotListedBecomesNone_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("first") << 0;
    QTest::newRow("second") << 1;
}

/** The engine knows the list that it handed out last, the adapter's may be empty meanwhile. */
void tst_KdWebcamRecorderHelperSwitch::aWebcamThatIsNotListedBecomesNone()
{
    QFETCH(int, index);
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    m_engine->fail("getDevices");
    expectLog(QStringLiteral("Failed to get webcam devicesInfo"));
    expectLog(QStringLiteral("Failed to get audioinput devicesInfo"));
    helper.order(KdWebcamOrder::Init);
    helper.takeResponses();
    expectLog(QStringLiteral("No device has the index %1, there are 0").arg(index));
    helper.slotSetCurrentWebCamDevice(index);
    QCOMPARE(helper.getCurrentWebCamDeviceInfo().devType, 0);
    QCOMPARE(helper.getCurrentWebCamDeviceInfo().index, -1);
    QCOMPARE(helper.takeResponses(), Responses({9, 1}));
    QVERIFY(m_engine->isPreviewing());
}

void tst_KdWebcamRecorderHelperSwitch::anIndexWithoutAWebcamIsRefused_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("none") << -1;
    QTest::newRow("one past the end") << 2;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
}

void tst_KdWebcamRecorderHelperSwitch::anIndexWithoutAWebcamIsRefused()
{
    QFETCH(int, index);
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.slotSetCurrentAudioDevice(0);
    helper.takeResponses();
    expectLog(QStringLiteral("Failed to switch camera device, device index = %1$").arg(index));
    expectLog(QStringLiteral("Failed to switch audio device, device index = %1$").arg(index));
    helper.slotSetCurrentWebCamDevice(index);
    helper.slotSetCurrentAudioDevice(index);
    QVERIFY(helper.takeResponses().isEmpty());
    QCOMPARE(helper.getCurrentWebCamDeviceInfo().index, 0);
    QCOMPARE(helper.getCurrentAudioDeviceInfo().index, 0);
}

void tst_KdWebcamRecorderHelperSwitch::switchesTheWebcamWithoutARecorder()
{
    KdWebcamRecorderHelper helper(nullptr);
    Responses responses;
    connect(&helper, &KdWebcamRecorderHelper::sigRecorderResponeType,
            [&responses](int code) { responses.append(code); });
    expectLog(QStringLiteral("No device has the index 0, there are 0"));
    helper.slotSetCurrentWebCamDevice(0);
    QCOMPARE(responses, Responses({9, 1}));
    QCOMPARE(helper.getCurrentResolution(), QSize(640, 480));
    QCOMPARE(helper.getCurrentWebCamDeviceInfo().devType, 0);
}

void tst_KdWebcamRecorderHelperSwitch::switchingTheMicrophoneSendsTheDefaultFormat()
{
    ReadyHelper helper;
    m_engine->clearCalls();
    helper.slotSetCurrentAudioDevice(1);
    const QStringList expected{
        QStringLiteral("setDevice(8, 1)"),
        QStringLiteral("setAudioFormat(mode=1 fourcc=AAC  bitrate=128000 channels=2 bits=16 "
                       "rate=44100 volume=-1)")};
    QCOMPARE(m_engine->calls(), expected); // and no preview
    QCOMPARE(helper.takeResponses(), Responses{2});
    const _KdCaptureDevInf current = helper.getCurrentAudioDeviceInfo();
    QCOMPARE(current.devType, qint32(kdtMicrophone));
    QCOMPARE(current.index, 1);
    QCOMPARE(current.id, QStringLiteral("Second-id"));
    const QStringList logged{
        QString::fromUtf8(
            "slotSetCurrentAudioDevice: 【Switch audio device BEGIN】device index = 1"),
        QString::fromUtf8(
            "slotSetCurrentAudioDevice: 【Switch audio device END】device index = 1")};
    QCOMPARE(messages(KdBaseLog::Info), logged);
}

void tst_KdWebcamRecorderHelperSwitch::aRefusedMicrophoneChangesNothing()
{
    ReadyHelper helper;
    helper.slotSetCurrentAudioDevice(0);
    helper.takeResponses();
    m_engine->clearCalls();
    m_engine->fail("setDevice");
    expectLog(QStringLiteral("Failed to switch audio"));
    helper.slotSetCurrentAudioDevice(1);
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("setDevice(8, 1)")));
    QVERIFY(helper.takeResponses().isEmpty());
    QCOMPARE(helper.getCurrentAudioDeviceInfo().index, 0);
    QCOMPARE(messages(KdBaseLog::Warning),
             QStringList(QStringLiteral("slotSetCurrentAudioDevice: "
                                        "Failed to switch audio device, device index = 1")));
}

void tst_KdWebcamRecorderHelperSwitch::aRefusedAudioFormatIsASwitchAllTheSame()
{
    ReadyHelper helper;
    m_engine->fail("setAudioFormat");
    expectLog(QStringLiteral("Failed to setparam"));
    helper.slotSetCurrentAudioDevice(1);
    QCOMPARE(helper.takeResponses(), Responses{2});
    QCOMPARE(helper.getCurrentAudioDeviceInfo().index, 1);
    QCOMPARE(
        messages(KdBaseLog::Warning),
        QStringList(QStringLiteral("slotSetCurrentAudioDevice: "
                                   "Failed to setparam when switchDevice to AudioDevice Second")));
}

void tst_KdWebcamRecorderHelperSwitch::aMicrophoneThatIsNotListedBecomesNone()
{
    ReadyHelper helper;
    helper.slotSetCurrentAudioDevice(0);
    m_engine->fail("getDevices");
    expectLog(QStringLiteral("Failed to get webcam devicesInfo"));
    expectLog(QStringLiteral("Failed to get audioinput devicesInfo"));
    helper.order(KdWebcamOrder::Init);
    helper.takeResponses();
    expectLog(QStringLiteral("No device has the index 1, there are 0"));
    helper.slotSetCurrentAudioDevice(1);
    QCOMPARE(helper.getCurrentAudioDeviceInfo().devType, 0);
    QCOMPARE(helper.takeResponses(), Responses{2});
}

void tst_KdWebcamRecorderHelperSwitch::switchesTheMicrophoneWithoutARecorder()
{
    KdWebcamRecorderHelper helper(nullptr);
    Responses responses;
    connect(&helper, &KdWebcamRecorderHelper::sigRecorderResponeType,
            [&responses](int code) { responses.append(code); });
    expectLog(QStringLiteral("No device has the index 0, there are 0"));
    helper.slotSetCurrentAudioDevice(0);
    QCOMPARE(responses, Responses{2});
}

void tst_KdWebcamRecorderHelperSwitch::logsDeviceNamesAsTheyAre_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("not Latin") << QString::fromUtf8("\u6444\u50cf\u5934 \u05de\u05e6");
    QTest::newRow("placeholders") << QStringLiteral("Cam %1 %2 %s %n %d");
    QTest::newRow("long") << QString(4096, QLatin1Char('c'));
}

void tst_KdWebcamRecorderHelperSwitch::logsDeviceNamesAsTheyAre()
{
    QFETCH(QString, name);
    m_engine->script().webcams = {{kdtWebcam, 0, name, QStringLiteral("id")}};
    m_engine->script().microphones = {{kdtMicrophone, 0, name, QStringLiteral("id")}};
    ReadyHelper helper;
    m_engine->fail("setAudioFormat");
    expectLog(QStringLiteral("Failed to setparam"));
    helper.slotSetCurrentWebCamDevice(0);
    helper.slotSetCurrentAudioDevice(0);
    QCOMPARE(helper.getCurrentWebCamDeviceInfo().name, name);
    QVERIFY(messages(KdBaseLog::Info)
                .contains(QStringLiteral(
                              "slotSetCurrentResolution: Set resolution(1280 x 720) to webcam ") +
                          name));
    QVERIFY(messages(KdBaseLog::Warning).first().endsWith(QStringLiteral("AudioDevice ") + name));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorderHelperSwitch>(argc, argv);
}

#include "tst_KdWebcamRecorderHelperSwitch.moc"
