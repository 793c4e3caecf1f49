#include "AudioHelperFixture.h"

#include <functional>
#include <limits>

using namespace KdVBLMODEL;

namespace {

using Setter = std::function<void(KdAudioRecorderHelper&)>;

bool isEmptyRecord(const _KdCaptureDevInf& device)
{
    return device.devType == 0 && device.index == -1 && device.name.isEmpty() &&
           device.id.isEmpty();
}

} // namespace

Q_DECLARE_METATYPE(Setter)

/** The devices, formats and whole parameters that the adapter hands to the engine. */
class tst_KdAudioRecorderHelperParams : public AudioHelperFixture
{
    Q_OBJECT

private Q_SLOTS:
    void answersTheDefaultsBeforeTheFirstDevice();
    void readsTheDevicesAnewEachTime();
    void passesDeviceNamesUnchanged_data();
    void passesDeviceNamesUnchanged();
    void selectingADeviceTellsTheEngineAndResetsTheFormat();
    void anIndexWithoutADeviceClearsTheCurrentOne_data();
    void anIndexWithoutADeviceClearsTheCurrentOne();

    void singleFieldSettersLeaveTheGettersAlone_data();
    void singleFieldSettersLeaveTheGettersAlone();
    void singleFieldSettersDoNotAddUp();
    void selectingADeviceUndoesWhatASetterSet();

    void handsOverWholeParametersInOrder();
    void parametersLeaveDeviceAndFormatAlone();
    void logsPathsAsTheyAre_data();
    void logsPathsAsTheyAre();
};

void tst_KdAudioRecorderHelperParams::answersTheDefaultsBeforeTheFirstDevice()
{
    const KdAudioRecorderHelper helper(nullptr);
    QVERIFY(hasDefaultFormat(helper));
    QVERIFY(isEmptyRecord(currentDevice(helper)));
    QCOMPARE(helper.curStatus(), fcsNoStart);
    QCOMPARE(helper.getOutPutFile(), QString());
}

void tst_KdAudioRecorderHelperParams::readsTheDevicesAnewEachTime()
{
    KdAudioRecorderHelper helper(nullptr);
    QList<_KdCaptureDevInf> devices{
        {kdtWebcam, 7, QStringLiteral("stale"), QStringLiteral("stale")}};
    helper.getValidAudioDevices(devices);
    QCOMPARE(devices.size(), 1);
    QCOMPARE(devices.first().id, m_engine->script().microphones.first().id);

    m_engine->script().microphones.append(
        microphone(1, QStringLiteral("Second"), QStringLiteral("second-id")));
    helper.getValidAudioDevices(devices);
    QCOMPARE(devices.size(), 2);
    QCOMPARE(devices.at(1).name, QStringLiteral("Second"));

    m_engine->script().microphones.clear();
    helper.getValidAudioDevices(devices);
    QVERIFY(devices.isEmpty());
    QCOMPARE(m_engine->count("getDevices"), 3);
}

void tst_KdAudioRecorderHelperParams::passesDeviceNamesUnchanged_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("long") << QString(4096, QLatin1Char('m'));
    QTest::newRow("right to left") << QString::fromUtf8("\u05de\u05d9\u05e7\u202e\u05e8\u05d5");
    QTest::newRow("placeholders") << QStringLiteral("Mic %1 %2 %s %n");
    QTest::newRow("quotes") << QStringLiteral("\"Mic\" 'two' \\");
    QTest::newRow("markup") << QStringLiteral("<b>Mic</b> &amp; <img src=x>");
    QTest::newRow("line breaks") << QStringLiteral("Mic\r\nsecond\tline");
}

void tst_KdAudioRecorderHelperParams::passesDeviceNamesUnchanged()
{
    QFETCH(QString, name);
    m_engine->script().microphones = {microphone(0, name, name)};
    KdAudioRecorderHelper helper(nullptr);
    QList<_KdCaptureDevInf> devices;
    helper.getValidAudioDevices(devices);
    helper.setCurrentDevice(0);
    QCOMPARE(devices.first().name, name);
    QCOMPARE(currentDevice(helper).name, name);
    QCOMPARE(currentDevice(helper).id, name);
}

void tst_KdAudioRecorderHelperParams::selectingADeviceTellsTheEngineAndResetsTheFormat()
{
    m_engine->script().microphones.append(
        microphone(1, QStringLiteral("Second"), QStringLiteral("second-id")));
    KdAudioRecorderHelper helper(nullptr);
    QList<_KdCaptureDevInf> devices;
    helper.getValidAudioDevices(devices);
    m_engine->clearCalls();
    helper.setCurrentDevice(1);
    const QStringList expected{
        QStringLiteral("setDevice(1)"),
        QStringLiteral("setAudioFormat(mode=1 fourcc=AAC  bitrate=128000 channels=2 bits=16 "
                       "rate=44100 volume=-1)")};
    QCOMPARE(m_engine->calls(), expected);
    QVERIFY(hasDefaultFormat(helper));
    const _KdCaptureDevInf device = currentDevice(helper);
    QCOMPARE(device.devType, qint32(kdtMicrophone));
    QCOMPARE(device.index, 1);
    QCOMPARE(device.name, QStringLiteral("Second"));
    QCOMPARE(device.id, QStringLiteral("second-id"));
}

void tst_KdAudioRecorderHelperParams::anIndexWithoutADeviceClearsTheCurrentOne_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("none") << -1;
    QTest::newRow("one past the end") << 1;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
}

void tst_KdAudioRecorderHelperParams::anIndexWithoutADeviceClearsTheCurrentOne()
{
    QFETCH(int, index);
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    QVERIFY(!isEmptyRecord(currentDevice(helper)));
    expectLog(QStringLiteral("^KdAudioRecorderHelper::setCurrentDevice: "
                             "No audio input has the index %1, there are 1$")
                  .arg(index));
    helper.setCurrentDevice(index);
    QVERIFY(isEmptyRecord(currentDevice(helper)));
    QCOMPARE(m_engine->callsOf("setDevice").last(), QStringLiteral("setDevice(%1)").arg(index));
    QVERIFY(hasDefaultFormat(helper));
    QVERIFY(!helper.start());
}

void tst_KdAudioRecorderHelperParams::singleFieldSettersLeaveTheGettersAlone_data()
{
    QTest::addColumn<Setter>("set");
    QTest::addColumn<QString>("sent");
    QTest::newRow("volume") << Setter([](auto& helper) { helper.setAudioVolume(0.5); })
                            << QStringLiteral(
                                   "mode=1 fourcc=AAC  bitrate=128000 channels=2 bits=16 "
                                   "rate=44100 volume=0.5");
    QTest::newRow("bit rate") << Setter([](auto& helper) { helper.setBitRate(64000); })
                              << QStringLiteral(
                                     "mode=1 fourcc=AAC  bitrate=64000 channels=2 bits=16 "
                                     "rate=44100 volume=-1");
    QTest::newRow("bits per sample")
        << Setter([](auto& helper) { helper.setBitsPerSample(24); })
        << QStringLiteral("mode=1 fourcc=AAC  bitrate=128000 channels=2 "
                          "bits=24 rate=44100 volume=-1");
    QTest::newRow("channels") << Setter([](auto& helper) { helper.setChannels(1); })
                              << QStringLiteral(
                                     "mode=1 fourcc=AAC  bitrate=128000 channels=1 bits=16 "
                                     "rate=44100 volume=-1");
    QTest::newRow("codec") << Setter([](auto& helper) { helper.setFourCC(0x2033504d); })
                           << QStringLiteral("mode=1 fourcc=MP3  bitrate=128000 channels=2 bits=16 "
                                             "rate=44100 volume=-1");
    QTest::newRow("sample rate") << Setter([](auto& helper) { helper.SetSampleRate(96000); })
                                 << QStringLiteral("mode=1 fourcc=AAC  bitrate=128000 channels=2 "
                                                   "bits=16 rate=96000 volume=-1");
}

void tst_KdAudioRecorderHelperParams::singleFieldSettersLeaveTheGettersAlone()
{
    QFETCH(Setter, set);
    QFETCH(QString, sent);
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    m_engine->clearCalls();
    set(helper);
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("setAudioFormat(%1)").arg(sent)));
    QVERIFY(hasDefaultFormat(helper));
}

void tst_KdAudioRecorderHelperParams::singleFieldSettersDoNotAddUp()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    helper.setBitRate(64000);
    helper.setChannels(1);
    const auto sent = m_engine->lastCall("setAudioFormat").argument<KdAudioFormat>(0);
    QCOMPARE(sent.channels, 1);
    QCOMPARE(sent.bitrate, 128000);
}

void tst_KdAudioRecorderHelperParams::selectingADeviceUndoesWhatASetterSet()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    helper.setBitRate(64000);
    helper.setAudioVolume(0.25);
    helper.setCurrentDevice(0);
    const auto sent = m_engine->lastCall("setAudioFormat").argument<KdAudioFormat>(0);
    QCOMPARE(sent.bitrate, 128000);
    QCOMPARE(sent.volume, -1.0);
}

void tst_KdAudioRecorderHelperParams::handsOverWholeParametersInOrder()
{
    KdAudioRecorderHelper helper(nullptr);
    m_engine->clearCalls();
    _KdAudioRecordParams params;
    params.index = 2;
    params.interval = 50;
    params.outputName = QStringLiteral("/takes/a b.m4a");
    params.format = {fbmConstant, kFourCcAac, 96000, 1, 24, 22050, 0.75};
    helper.setAudioRecordParams(params);
    const QStringList expected{
        QStringLiteral("setOutputFile(/takes/a b.m4a)"), QStringLiteral("setDevice(2)"),
        QStringLiteral("setInterval(50)"),
        QStringLiteral("setAudioFormat(mode=2 fourcc=AAC  bitrate=96000 channels=1 bits=24 "
                       "rate=22050 volume=0.75)")};
    QCOMPARE(m_engine->calls(), expected);
    const QStringList logged{QStringLiteral(
        "KdAudioRecorderHelper::setAudioRecordParams: outputName: /takes/a b.m4a, index: 2, "
        "interval: 50, volum: 0.750000, bitrate: 96000, bitPerSample: 24, channels: 1, "
        "fourcc: 541278529, samplerate: 22050")};
    QCOMPARE(messages(KdBaseLog::Info), logged);
}

void tst_KdAudioRecorderHelperParams::parametersLeaveDeviceAndFormatAlone()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    const _KdCaptureDevInf before = currentDevice(helper);
    _KdAudioRecordParams params;
    params.index = 5;
    params.format = {fbmConstant, 1, 2, 3, 4, 5, 0.5};
    helper.setAudioRecordParams(params);
    QVERIFY(hasDefaultFormat(helper));
    QCOMPARE(currentDevice(helper).index, before.index);
    QCOMPARE(currentDevice(helper).id, before.id);
}

void tst_KdAudioRecorderHelperParams::logsPathsAsTheyAre_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("not Latin") << QString::fromUtf8(
        "/\u5f55\u97f3/\u00c4\u00f6/\u05e7\u05d5\u05dc.m4a");
    QTest::newRow("placeholders") << QStringLiteral("/100%/%1 %s %n %d.m4a");
    QTest::newRow("quotes and spaces") << QStringLiteral("/a \"b\" 'c'/d.m4a");
    QTest::newRow("empty") << QString();
    QTest::newRow("long") << QStringLiteral("/") + QString(255, QLatin1Char('n'));
}

void tst_KdAudioRecorderHelperParams::logsPathsAsTheyAre()
{
    QFETCH(QString, path);
    KdAudioRecorderHelper helper(nullptr);
    _KdAudioRecordParams params;
    params.outputName = path;
    helper.setAudioRecordParams(params);
    QCOMPARE(m_engine->lastCall("setOutputFile").argument<QString>(0), path);
    QCOMPARE(helper.getOutPutFile(), path);
    const QString logged = messages(KdBaseLog::Info).value(0);
    QVERIFY2(
        logged.contains(QStringLiteral("outputName: ") + path + QStringLiteral(", index: -1,")),
        qPrintable(logged));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecorderHelperParams>(argc, argv);
}

#include "tst_KdAudioRecorderHelperParams.moc"
