#include "Support/KdTestCase.h"
#include "Support/TestClip.h"
#include "Support/TestFiles.h"

#include <Studio/StudioSpeech.h>
#include <Studio/StudioTakeAnalyser.h>

#include <QSignalSpy>

#include <memory>

class tst_StudioTakeAnalyser : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void goodFileIsProbedThenRead();
    void badFileIsOnlyProbed();
    void sameFileIsLookedIntoOnceAtATime();
    void signalsComeOnTheGuiThreadInOrder();
    void clipHasAThumbnailAndAPoster();
    void clipWithoutSoundHasAnEmptyWaveform();
    void nothingIsBegunWhileHeld();
    void goingInMidWorkIsSafe();
    void goingWhileHeldIsSafe();

private:
    QString makeSound(const QString& name, double seconds) const
    {
        QString path = temporaryPath(name);
        TestFiles::write(path, StudioSpeech::synthesise(seconds));
        return path;
    }
};

void tst_StudioTakeAnalyser::goodFileIsProbedThenRead()
{
    const QString path = makeSound(QStringLiteral("a.wav"), 1.0);
    StudioTakeAnalyser analyser;
    QSignalSpy probed(&analyser, &StudioTakeAnalyser::probed);
    QSignalSpy read(&analyser, &StudioTakeAnalyser::waveformRead);
    analyser.analyse(path);
    QVERIFY(probed.isEmpty());
    QTRY_COMPARE(read.count(), 1);
    QCOMPARE(probed.count(), 1);
    QCOMPARE(probed.at(0).at(1).value<StudioMediaInfo>().durationMs, 1000);
    QVERIFY(!read.at(0).at(1).value<StudioPeaks>().isEmpty());
    QTRY_VERIFY(!analyser.isBusy());
}

void tst_StudioTakeAnalyser::badFileIsOnlyProbed()
{
    StudioTakeAnalyser analyser;
    QSignalSpy probed(&analyser, &StudioTakeAnalyser::probed);
    QSignalSpy read(&analyser, &StudioTakeAnalyser::waveformRead);
    analyser.analyse(temporaryPath(QStringLiteral("missing")));
    QTRY_VERIFY(!analyser.isBusy());
    QCOMPARE(probed.count(), 1);
    QVERIFY(!probed.at(0).at(1).value<StudioMediaInfo>().readable);
    QVERIFY(read.isEmpty());
}

void tst_StudioTakeAnalyser::sameFileIsLookedIntoOnceAtATime()
{
    const QString path = makeSound(QStringLiteral("a.wav"), 0.5);
    StudioTakeAnalyser analyser;
    QSignalSpy probed(&analyser, &StudioTakeAnalyser::probed);
    analyser.analyse(path);
    analyser.analyse(path);
    QTRY_VERIFY(!analyser.isBusy());
    QCOMPARE(probed.count(), 1);
    analyser.analyse(path);
    QTRY_VERIFY(!analyser.isBusy());
    QCOMPARE(probed.count(), 2);
}

void tst_StudioTakeAnalyser::signalsComeOnTheGuiThreadInOrder()
{
    StudioTakeAnalyser analyser;
    QStringList order;
    bool elsewhere = false;
    connect(&analyser, &StudioTakeAnalyser::probed, &analyser, [&](const QString& path) {
        order.append(path);
        elsewhere = elsewhere || QThread::currentThread() != thread();
    });
    QStringList expected;
    for (int i = 0; i < 5; ++i) {
        expected.append(makeSound(QStringLiteral("%1.wav").arg(i), 0.2));
        analyser.analyse(expected.last());
    }
    QTRY_VERIFY(!analyser.isBusy());
    QCOMPARE(order, expected);
    QVERIFY(!elsewhere);
}

void tst_StudioTakeAnalyser::clipHasAThumbnailAndAPoster()
{
    const QString path = temporaryPath(QStringLiteral("a.mp4"));
    TestClip::write(path, {{Qt::black, 0.4}, {Qt::green, 2.0}}, true, QSize(640, 360));
    StudioTakeAnalyser analyser;
    QSignalSpy thumbnail(&analyser, &StudioTakeAnalyser::thumbnailRead);
    QSignalSpy waveform(&analyser, &StudioTakeAnalyser::waveformRead);
    QSignalSpy poster(&analyser, &StudioTakeAnalyser::posterRead);
    analyser.analyse(path);
    QTRY_COMPARE(waveform.count(), 1);
    QVERIFY(!waveform.at(0).at(1).value<StudioPeaks>().isEmpty());
    QCOMPARE(thumbnail.count(), 1);
    // Not the dark beginning.
    const auto small = thumbnail.at(0).at(1).value<QImage>();
    QCOMPARE(small.size(), QSize(256, 144));
    QVERIFY(TestClip::isLike(small.pixelColor(128, 72), QColor(Qt::green)));
    analyser.readPoster(path);
    QTRY_COMPARE(poster.count(), 1);
    const auto large = poster.at(0).at(1).value<QImage>();
    QCOMPARE(large.size(), QSize(640, 360));
    QVERIFY(TestClip::isLike(large.pixelColor(320, 180), QColor(Qt::black)));
}

void tst_StudioTakeAnalyser::clipWithoutSoundHasAnEmptyWaveform()
{
    const QString path = temporaryPath(QStringLiteral("a.mp4"));
    TestClip::write(path, {{Qt::red, 0.5}}, false);
    StudioTakeAnalyser analyser;
    QSignalSpy waveform(&analyser, &StudioTakeAnalyser::waveformRead);
    analyser.analyse(path);
    QTRY_COMPARE(waveform.count(), 1);
    QVERIFY(waveform.at(0).at(1).value<StudioPeaks>().isEmpty());
    QTRY_VERIFY(!analyser.isBusy());
}

void tst_StudioTakeAnalyser::nothingIsBegunWhileHeld()
{
    StudioTakeAnalyser held;
    StudioTakeAnalyser free;
    QSignalSpy probed(&held, &StudioTakeAnalyser::probed);
    QSignalSpy poster(&held, &StudioTakeAnalyser::posterRead);
    QSignalSpy idle(&held, &StudioTakeAnalyser::idle);
    QSignalSpy elsewhere(&free, &StudioTakeAnalyser::waveformRead);
    const QString path = makeSound(QStringLiteral("a.wav"), 0.3);
    held.hold();
    QVERIFY(held.isHeld());
    held.analyse(path);
    held.readPoster(path);
    // What is not held has long done the same.
    free.analyse(path);
    QTRY_COMPARE(elsewhere.count(), 1);
    QVERIFY(held.isBusy());
    QVERIFY(probed.isEmpty());
    held.release();
    QTRY_COMPARE(poster.count(), 1);
    QCOMPARE(probed.count(), 1);
    QTRY_VERIFY(!held.isBusy());
    QCOMPARE(idle.count(), 1);
}

void tst_StudioTakeAnalyser::goingWhileHeldIsSafe()
{
    StudioTakeAnalyser analyser;
    analyser.hold();
    analyser.analyse(makeSound(QStringLiteral("a.wav"), 0.3));
    analyser.readPoster(temporaryPath(QStringLiteral("a.wav")));
    QVERIFY(analyser.isBusy());
}

void tst_StudioTakeAnalyser::goingInMidWorkIsSafe()
{
    auto analyser = std::make_unique<StudioTakeAnalyser>();
    for (int i = 0; i < 20; ++i) {
        analyser->analyse(makeSound(QStringLiteral("%1.wav").arg(i), 0.5));
    }
    QSignalSpy probed(analyser.get(), &StudioTakeAnalyser::probed);
    QTRY_VERIFY(!probed.isEmpty());
    analyser.reset();
    QCoreApplication::processEvents();
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioTakeAnalyser>(argc, argv);
}

#include "tst_StudioTakeAnalyser.moc"
