#include "DiskStall.h"
#include "WebcamTakeFixture.h"

#include <Support/MediaProbe.h>
#include <Support/Patience.h>
#include <Support/TestFiles.h>

#include <chrono>
#include <cmath>
#include <future>
#include <limits>
#include <thread>

using namespace WebcamTakeTest;

/** How a take begins and ends, what it refuses, and the time that it tells. */
class tst_KdWebcamTake : public WebcamTakeFixture
{
    Q_OBJECT

private Q_SLOTS:
    void theTimeCountsFromTheFirstPictureAndLeavesPausesOut();
    void theFinishedLengthIsTheTimeThatWasTold();
    void aTakeThatIsPausedFromTheStartHasNoFile();
    void impossibleFormatsAreRefused_data();
    void impossibleFormatsAreRefused();
    void theLastTakeIsReplacedOnlyByANewOne();
    void anExistingFileIsRefusedAndKept();
    void aFolderDeletedInMidTakeIsNoSuccess();
    void aDiskThatDoesNotAnswerHoldsNobodyUp();
    void nothingEntersAfterTheClose();
    void waitingForAPictureEndsWithTheFirst();
    void aTakeIsUsedOnce();
};

void tst_KdWebcamTake::theTimeCountsFromTheFirstPictureAndLeavesPausesOut()
{
    for (const bool hasSound : {true, false}) {
        const KdWebcamTakeFormat format = clipFormat(hasSound);
        KdWebcamTake take;
        QVERIFY(take.open(temporaryPath(QStringLiteral("%1.mp4").arg(hasSound)), format, 100));
        ClipFeeder feeder(take, format);
        feeder.hasPictures = false;
        feeder.run(1.0);
        QVERIFY(feeder.times.isEmpty());
        QVERIFY(!take.hasPicture());
        QCOMPARE(take.recordedMs(), qint64(0));
        feeder.hasPictures = true;
        feeder.run(0.55);
        take.pause(feeder.nowNs());
        feeder.run(0.1); // what was taken before the pause comes in
        const QVector<qint64> before = feeder.times;
        QVERIFY(before.size() >= 4 && before.size() <= 6);
        for (int i = 0; i < before.size(); ++i) {
            QCOMPARE(before[i] / 100, qint64(i) + 1);
        }
        feeder.run(1.0);
        QCOMPARE(feeder.times, before);
        take.resume(feeder.nowNs());
        feeder.run(0.3);
        QVERIFY(feeder.times.last() > before.last());
        QVERIFY2(take.recordedMs() >= 750 && take.recordedMs() < 900,
                 qPrintable(QString::number(take.recordedMs())));
        QVERIFY(take.finish());
    }
}

void tst_KdWebcamTake::theFinishedLengthIsTheTimeThatWasTold()
{
    for (const bool hasSound : {true, false}) {
        const QString file = temporaryPath(QStringLiteral("%1.mp4").arg(hasSound));
        const KdWebcamTakeFormat format = clipFormat(hasSound);
        KdWebcamTake take;
        QVERIFY(take.open(file, format, 100));
        ClipFeeder(take, format).run(2.345);
        const qint64 told = take.recordedMs();
        QVERIFY(take.finish());
        const double length = MediaProbe::probe(file).seconds * 1000.0;
        QVERIFY2(std::abs(length - static_cast<double>(take.recordedMs())) < 3.0,
                 qPrintable(QStringLiteral("%1 %2").arg(length).arg(take.recordedMs())));
        QVERIFY2(std::abs(length - static_cast<double>(told)) < 40.0,
                 qPrintable(QStringLiteral("%1 %2").arg(length).arg(told)));
    }
}

void tst_KdWebcamTake::aTakeThatIsPausedFromTheStartHasNoFile()
{
    for (const bool hasSound : {true, false}) {
        const KdWebcamTakeFormat format = clipFormat(hasSound);
        KdWebcamTake take;
        QVERIFY(take.open(path(), format, 100));
        ClipFeeder feeder(take, format);
        take.pause(feeder.nowNs());
        feeder.run(1.0);
        QVERIFY(!take.hasPicture());
        QVERIFY(!take.finish());
        QCOMPARE(files(), QStringList());
    }
}

void tst_KdWebcamTake::impossibleFormatsAreRefused_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("rate");
    const double none = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    QTest::newRow("no size") << QSize() << 30.0;
    QTest::newRow("empty") << QSize(0, 0) << 30.0;
    QTest::newRow("negative") << QSize(-640, 480) << 30.0;
    QTest::newRow("too small") << QSize(14, 480) << 30.0;
    QTest::newRow("too large") << QSize(7680, 4320) << 30.0;
    QTest::newRow("endless") << QSize(2147483647, 2147483647) << 30.0;
    QTest::newRow("rate 0") << QSize(640, 480) << 0.0;
    QTest::newRow("rate below 0") << QSize(640, 480) << -30.0;
    QTest::newRow("rate 1000") << QSize(640, 480) << 1000.0;
    QTest::newRow("no rate") << QSize(640, 480) << none;
    QTest::newRow("endless rate") << QSize(640, 480) << endless;
}

void tst_KdWebcamTake::impossibleFormatsAreRefused()
{
    QFETCH(QSize, size);
    QFETCH(double, rate);
    expectLog(QStringLiteral("^KdWebcamTake::open: .* cannot be recorded"));
    KdWebcamTakeFormat format = clipFormat(true, size);
    format.frameRate = rate;
    KdWebcamTake take;
    QVERIFY(!take.open(path(), format, 100));
    // Whoever does not look loses nothing by it.
    take.pause(1);
    take.resume(2);
    take.setFlip(true);
    QVERIFY(!take.feedPicture(TestPicture::plain(QSize(16, 16), 16).get(), 1));
    QVERIFY(!take.feedSound(nullptr, 1));
    QVERIFY(!take.hasPicture());
    QVERIFY(!take.mustEnd());
    QVERIFY(!take.finish());
    QCOMPARE(files(), QStringList());
}

void tst_KdWebcamTake::theLastTakeIsReplacedOnlyByANewOne()
{
    TestFiles::write(path(), "the old take");
    KdWebcamTakeFormat format = clipFormat(true);
    format.takeAgain = true;
    {
        KdWebcamTake unused;
        QVERIFY(unused.open(path(), format, 100));
        QVERIFY(!unused.finish());
    }
    QCOMPARE(TestFiles::read(path()), QByteArray("the old take"));
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder(take, format).run(1.0);
    QVERIFY(take.finish());
    QVERIFY(MediaProbe::probe(path()).isReadable);
    QCOMPARE(files(), QStringList(QStringLiteral("take.mp4")));
}

void tst_KdWebcamTake::anExistingFileIsRefusedAndKept()
{
    expectLog(QStringLiteral("take\\.mp4"));
    TestFiles::write(path(), "precious");
    KdWebcamTake take;
    QVERIFY(!take.open(path(), clipFormat(true), 100));
    QVERIFY(!take.finish());
    QCOMPARE(TestFiles::read(path()), QByteArray("precious"));
    QCOMPARE(files(), QStringList(QStringLiteral("take.mp4")));
}

void tst_KdWebcamTake::aFolderDeletedInMidTakeIsNoSuccess()
{
    expectLog(QStringLiteral("did not end well"));
    const QString folder = temporaryPath(QStringLiteral("folder"));
    QVERIFY(QDir().mkdir(folder));
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(folder + QStringLiteral("/take.mp4"), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(1.0);
    QVERIFY(QDir(folder).removeRecursively());
    feeder.run(1.0);
    QVERIFY(!take.finish());
}

void tst_KdWebcamTake::aDiskThatDoesNotAnswerHoldsNobodyUp()
{
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(0.5);
    const KdGstBufferPtr picture = TestPicture::plain(format.size, 100);
    DiskStall stall;
    std::future<bool> asking = std::async(std::launch::async, [&take] { return take.mustEnd(); });
    QTRY_VERIFY(stall.isAsked());
    std::future<void> others = std::async(std::launch::async, [&] {
        take.feedPicture(picture.get(), feeder.nowNs());
        take.pause(feeder.nowNs());
        take.resume(feeder.nowNs());
    });
    const bool wentOn = others.wait_for(std::chrono::milliseconds(KdTest::patience(10000))) ==
                        std::future_status::ready;
    const bool wasAsked = stall.isAsked();
    stall.letGo();
    others.wait();
    QVERIFY(!asking.get());
    QVERIFY(wasAsked && wentOn);
    QVERIFY(take.finish());
}

void tst_KdWebcamTake::nothingEntersAfterTheClose()
{
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(1.0);
    take.close();
    const qint64 length = take.recordedMs();
    feeder.times.clear();
    feeder.run(1.0);
    QCOMPARE(take.recordedMs(), length);
    QVERIFY(feeder.times.isEmpty());
    QVERIFY(take.finish());
    QVERIFY(take.finish());
    QVERIFY(std::abs(MediaProbe::probe(path()).seconds - 1.0) < 0.06);
}

void tst_KdWebcamTake::waitingForAPictureEndsWithTheFirst()
{
    const KdWebcamTakeFormat format = clipFormat(false);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    QVERIFY(!take.waitForPicture(std::chrono::milliseconds(10)));
    std::thread camera([&] { ClipFeeder(take, format).run(0.1); });
    QVERIFY(take.waitForPicture(std::chrono::seconds(10)));
    camera.join();
}

void tst_KdWebcamTake::aTakeIsUsedOnce()
{
    expectLog(QStringLiteral("^KdWebcamTake::open: The take was used before"));
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    QVERIFY(!take.open(temporaryPath(QStringLiteral("other.mp4")), format, 100));
    ClipFeeder(take, format).run(0.5);
    QVERIFY(take.finish());
    QCOMPARE(files(), QStringList(QStringLiteral("take.mp4")));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamTake>(argc, argv);
}

#include "tst_KdWebcamTake.moc"
