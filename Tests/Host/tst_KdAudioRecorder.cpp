#include "MicrophoneFixture.h"
#include "RecorderFixture.h"

#include <Support/FileFaults.h>
#include <Support/MediaProbe.h>
#include <Support/TestFiles.h>

#include <QElapsedTimer>
#include <QFile>

#include <cmath>

using namespace KdVBLMODEL;

/** How a recorder answers its calls, in and out of order. */
class tst_KdAudioRecorder : public MicrophoneFixture
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAMicrophoneThereIsNoTake();
    void makingARecorderTakesNoTime();
    void aMicrophoneIsListedWithItsKindNameAndIdentity();
    void aSecondStartEndsTheTakeAndBeginsAnother();
    void whatIsSetInMidTakeCountsFromTheNextStart();
    void theOutputFileIsThatOfTheRunningTakeThenOfTheLast();
    void callsOutOfOrderAreHarmless();
    void anUnknownDeviceIsNotRecorded_data();
    void anUnknownDeviceIsNotRecorded();
    void anUnusableOutputFileIsRefused_data();
    void anUnusableOutputFileIsRefused();
    void releasingARecorderFinishesItsTake();
    void twoRecordersShareAMicrophone();
    void removingTheObserverInMidTakeIsABarrier();
};

void tst_KdAudioRecorder::withoutAMicrophoneThereIsNoTake()
{
    expectLog(QStringLiteral("no audio input is chosen"));
    RecorderFixture recorder;
    QCOMPARE(recorder.deviceNames(), QStringList());
    QVERIFY(!recorder.record(takePath()));
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(!QFile::exists(takePath()));
    QVERIFY(recorder->stop());
}

void tst_KdAudioRecorder::makingARecorderTakesNoTime()
{
    // The best of some: a busy machine may take the processor away at any moment.
    qint64 fastest = 1000;
    for (int i = 0; i < 10; ++i) {
        QElapsedTimer timer;
        timer.start();
        IKdAudioRecorder* recorder = createAudioRecorder(this);
        fastest = qMin(fastest, timer.elapsed());
        recorder->release();
    }
    QVERIFY2(fastest < 10, qPrintable(QString::number(fastest)));
}

void tst_KdAudioRecorder::aMicrophoneIsListedWithItsKindNameAndIdentity()
{
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QList<_KdCaptureDevInf> devices;
    devices.append(_KdCaptureDevInf());
    recorder->getDevices(&devices);
    QCOMPARE(devices.size(), 1);
    QCOMPARE(devices[0].devType, int(kdtMicrophone));
    QCOMPARE(devices[0].index, 0);
    QCOMPARE(devices[0].name, QStringLiteral("USB Microphone"));
    QCOMPARE(devices[0].id, QStringLiteral("usb_mic"));
}

void tst_KdAudioRecorder::aSecondStartEndsTheTakeAndBeginsAnother()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    const QString first = takePath(QStringLiteral("first.m4a"));
    const QString second = takePath(QStringLiteral("second.m4a"));
    QVERIFY(recorder.record(first));
    QVERIFY(recorder.waitForTime(1000));
    QVERIFY(recorder.record(second));
    QVERIFY2(MediaProbe::probe(first).isReadable, "The first take must be whole by now");
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder.events().times().first() <= 100);
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::probe(second).isReadable);
    QVERIFY(std::abs(MediaProbe::probe(first).seconds - 1.0) < 0.25);

    // A name that is taken ends the running take all the same, and begins none.
    expectLog(QStringLiteral("exists already"));
    const QString third = takePath(QStringLiteral("third.m4a"));
    QVERIFY(recorder.record(third));
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(!recorder.record(third));
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(MediaProbe::probe(third).isReadable);
}

void tst_KdAudioRecorder::whatIsSetInMidTakeCountsFromTheNextStart()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    VirtualMicrophone silent(QStringLiteral("silent_mic"), QStringLiteral("Silent"));
    QVERIFY(silent.plug());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    const QString first = takePath(QStringLiteral("first.m4a"));
    const QString second = takePath(QStringLiteral("second.m4a"));
    QVERIFY(recorder.record(first, RecorderFixture::format(48000)));
    QVERIFY(recorder.waitForTime(500));

    QVERIFY(recorder.choose(QStringLiteral("Silent")));
    KdAudioFormat other = RecorderFixture::format(22050, 1);
    other.volume = 0.1;
    recorder->setAudioFormat(&other);
    recorder->setOutputFile(second);
    recorder->setInterval(500);
    recorder.events().clear();
    QVERIFY(recorder.waitForTime(1500));
    QVERIFY(recorder.events().times().size() >= 10);
    QVERIFY(recorder->stop());
    const MediaInfo info = MediaProbe::probe(first);
    QCOMPARE(info.samplerate, 48000);
    QCOMPARE(info.channels, 2);
    QVERIFY(std::abs(toneDecibel(first) + 12.0) < 1.0);

    QVERIFY(recorder->start());
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder->stop());
    QCOMPARE(MediaProbe::probe(second).samplerate, 22050);
    QVERIFY(MediaProbe::peakDecibel(second) < -80.0);
}

void tst_KdAudioRecorder::theOutputFileIsThatOfTheRunningTakeThenOfTheLast()
{
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QCOMPARE(recorder->getOutputFile(), QString());
    recorder->setOutputFile(QStringLiteral("/set/before.m4a"));
    QCOMPARE(recorder->getOutputFile(), QStringLiteral("/set/before.m4a"));
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.record(takePath()));
    recorder->setOutputFile(QStringLiteral("/set/in/mid/take.m4a"));
    QCOMPARE(recorder->getOutputFile(), takePath());
    QVERIFY(recorder.waitForTime(200));
    QVERIFY(recorder->stop());
    QCOMPARE(recorder->getOutputFile(), takePath());
}

void tst_KdAudioRecorder::callsOutOfOrderAreHarmless()
{
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    recorder->pause();
    recorder->resume();
    QVERIFY(recorder->stop());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    recorder->setAudioFormat(nullptr);
    recorder->getDevices(nullptr);
    recorder->addEventObserver(nullptr);
    recorder->removeEventObserver(nullptr);
    recorder->setInterval(-5);
    recorder->reserved6();
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.record(takePath()));
    recorder->resume();
    QCOMPARE(recorder->curStatus(), fcsRecording);
    recorder->pause();
    recorder->pause();
    QCOMPARE(recorder->curStatus(), fcsPaused);
    recorder->resume();
    QVERIFY(recorder.waitForTime(300));
    QVERIFY(recorder->stop());
    QVERIFY(recorder->stop());
    recorder->pause();
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void tst_KdAudioRecorder::anUnknownDeviceIsNotRecorded_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("one too many") << 1;
    QTest::newRow("huge") << 2147483647;
    QTest::newRow("smallest") << -2147483647 - 1;
}

void tst_KdAudioRecorder::anUnknownDeviceIsNotRecorded()
{
    QFETCH(int, index);
    expectLog(QStringLiteral("no audio input is chosen"));
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    recorder->setOutputFile(takePath());
    recorder->setDevice(index);
    QVERIFY(!recorder->start());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(!QFile::exists(takePath()));
}

void tst_KdAudioRecorder::anUnusableOutputFileIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("empty") << QString();
    QTest::newRow("relative") << QStringLiteral("take.m4a");
    QTest::newRow("missing folder") << QStringLiteral("%1/missing/take.m4a");
    QTest::newRow("folder is a file") << QStringLiteral("%1/file/take.m4a");
    QTest::newRow("is a folder") << QStringLiteral("%1/folder");
    QTest::newRow("exists") << QStringLiteral("%1/file");
    QTest::newRow("unwritable folder") << QStringLiteral("%1/locked/take.m4a");
    QTest::newRow("name too long") << QStringLiteral("%1/") + QString(300, QLatin1Char('x'));
}

void tst_KdAudioRecorder::anUnusableOutputFileIsRefused()
{
    QFETCH(QString, path);
    expectLog(QStringLiteral("^KdTakeWriter::open: "));
    const QDir folder(temporaryPath(QStringLiteral("bad")));
    QVERIFY(folder.mkpath(QStringLiteral("folder")) && folder.mkpath(QStringLiteral("locked")));
    TestFiles::write(folder.filePath(QStringLiteral("file")), QByteArray("precious"));
    QVERIFY(QFile::setPermissions(folder.filePath(QStringLiteral("locked")),
                                  QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    {
        const FileFaults::WithoutPrivileges nobody;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!recorder.record(path.contains(QLatin1Char('%')) ? path.arg(folder.path()) : path));
        QVERIFY2(timer.elapsed() < 300, qPrintable(QString::number(timer.elapsed())));
    }
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(recorder->stop());
    QFile::setPermissions(folder.filePath(QStringLiteral("locked")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(
        folder.entryList(all, QDir::Name),
        QStringList({QStringLiteral("file"), QStringLiteral("folder"), QStringLiteral("locked")}));
    QVERIFY(QDir(folder.filePath(QStringLiteral("locked"))).isEmpty(all));
    QCOMPARE(TestFiles::read(folder.filePath(QStringLiteral("file"))), QByteArray("precious"));
}

void tst_KdAudioRecorder::releasingARecorderFinishesItsTake()
{
    QVERIFY(plugMicrophone());
    {
        RecorderFixture recorder;
        QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
        QVERIFY(recorder.record(takePath()));
        QVERIFY(recorder.waitForTime(1000));
    }
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY(info.seconds > 0.95);
}

void tst_KdAudioRecorder::twoRecordersShareAMicrophone()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture first;
    RecorderFixture second;
    QVERIFY(first.choose(QStringLiteral("USB Microphone")));
    QVERIFY(second.choose(QStringLiteral("USB Microphone")));
    QVERIFY(first.record(takePath(QStringLiteral("first.m4a"))));
    QVERIFY(second.record(takePath(QStringLiteral("second.m4a"))));
    QVERIFY(first.waitForTime(700));
    QVERIFY(second.waitForTime(700));
    QVERIFY(first->stop());
    QVERIFY(second->stop());
    for (const char* name : {"first.m4a", "second.m4a"}) {
        const QString path = takePath(QLatin1String(name));
        QVERIFY(MediaProbe::probe(path).isReadable);
        QVERIFY(std::abs(toneDecibel(path) + 12.0) < 1.0);
    }
}

void tst_KdAudioRecorder::removingTheObserverInMidTakeIsABarrier()
{
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.record(takePath()));
    for (int i = 0; i < 20; ++i) {
        auto events = std::make_unique<RecorderEvents>();
        recorder->addEventObserver(events.get());
        QTRY_VERIFY(!events->levels().isEmpty());
        recorder->removeEventObserver(events.get());
        events.reset();
    }
    QVERIFY(recorder->stop());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecorder>(argc, argv);
}

#include "tst_KdAudioRecorder.moc"
