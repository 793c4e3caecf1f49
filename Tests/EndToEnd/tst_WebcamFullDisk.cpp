#include "WebcamStage.h"

#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/SmallDisk.h>

/** A disk that fills up in mid-take. */
class tst_WebcamFullDisk : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void fullDiskInMidTakeKeepsWhatFittedAndSaysSo();
};

void tst_WebcamFullDisk::fullDiskInMidTakeKeepsWhatFittedAndSaysSo()
{
    allowLog(QStringLiteral("(?i)space|full|write|multiplex|stream|not be|Failed to stop"));
    const QString folder = temporaryPath(QStringLiteral("clips"));
    WebcamStage stage(folder);
    SmallDisk disk(folder, 8192);
    QVERIFY2(disk.isMounted(), "The test may not mount a small disk");
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    stage.answers().answerMessage(QDialogButtonBox::No);
    QVERIFY(stage.startTake());
    QVERIFY(stage.answers().messages().first().contains(
        QStringLiteral("MB space in the specified output directory")));

    QVERIFY(stage.waitForElapsed(2500));
    // The user is told, and need not press anything to keep what fitted.
    stage.answers().answerMessage(QDialogButtonBox::Ok);
    QVERIFY(disk.fillUpTo(qint64(200) * 1024));
    QTRY_COMPARE_WITH_TIMEOUT(stage.answers().pending(), 0, 30000);
    QVERIFY2(stage.answers().messages().last().contains(QStringLiteral("the disk is full")),
             qPrintable(stage.answers().messages().last()));
    QVERIFY(stage.waitForReports(1));
    const qint64 elapsed = stage.lastElapsed();
    const MediaInfo media = MediaProbe::probe(stage.lastReport().path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY2(media.seconds * 1000.0 >= static_cast<double>(elapsed) - 1000.0,
             qPrintable(QStringLiteral("%1 s kept of %2 ms").arg(media.seconds).arg(elapsed)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamFullDisk>(argc, argv);
}

#include "tst_WebcamFullDisk.moc"
