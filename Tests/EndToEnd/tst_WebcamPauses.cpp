#include "WebcamStage.h"

#include <Support/FlashBeepCheck.h>
#include <Support/FlashBeepSource.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>

#include <cmath>

/** Paused time is not in the clip, and sound and picture stay together over pauses. */
class tst_WebcamPauses : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void tenPausesPartNothing();
};

// The camera flashes when the microphone beeps.
void tst_WebcamPauses::tenPausesPartNothing()
{
    FlashBeepSource source;
    QVERIFY(source.plug());
    WebcamStage stage(temporaryPath(QStringLiteral("clips")));
    QVERIFY(stage.open());
    stage.choose(WebcamStage::kMicrophone, source.microphoneDescription());
    QVERIFY(stage.waitForPicture());
    QVERIFY(stage.startTake());
    QVector<double> cuts;
    for (int number = 1; number <= 10; ++number) {
        QVERIFY(stage.waitForElapsed(qint64(number) * 1500));
        stage.press(WebcamStage::kPause);
        cuts.append(static_cast<double>(stage.lastElapsed()) / 1000.0);
        QVERIFY(stage.waitForPicture());
        stage.press(WebcamStage::kPause);
    }
    QVERIFY(stage.waitForElapsed(18500));
    QVERIFY(stage.stopTake());
    const QString path = stage.lastReport().path;
    const MediaInfo media = MediaProbe::probe(path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    const double elapsed = static_cast<double>(stage.lastElapsed()) / 1000.0;
    QVERIFY2(std::abs(media.seconds - elapsed) <= 0.3,
             qPrintable(QStringLiteral("%1 s of %2 s").arg(media.seconds).arg(elapsed)));
    FlashBeepCheck::verifyTogether(path, 4, cuts);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamPauses>(argc, argv);
}

#include "tst_WebcamPauses.moc"
