#include "PauseSpans.h"
#include "WebcamStage.h"

#include <Support/FlashBeepCheck.h>
#include <Support/FlashBeepSource.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>

#include <QElapsedTimer>

namespace {

constexpr int kPauses = 10;
constexpr qint64 kPauseMs = 300;
constexpr double kMostOff = 0.150;

} // namespace

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
    QVERIFY(stage.waitForElapsed(500));
    QElapsedTimer whole;
    whole.start();
    const double elapsedAtWhole = static_cast<double>(stage.lastElapsed()) / 1000.0;
    QVector<double> cuts;
    const auto pressPause = [&stage] { stage.press(WebcamStage::kPause); };
    PauseSpans paused;
    for (int number = 1; number <= kPauses; ++number) {
        QVERIFY(stage.waitForElapsed(qint64(number) * 1500));
        paused.pause(pressPause);
        cuts.append(static_cast<double>(stage.lastElapsed()) / 1000.0);
        QVERIFY(stage.waitForPicture());
        QTRY_VERIFY_WITH_TIMEOUT(paused.milliseconds() >= kPauseMs, 2000);
        paused.resume(pressPause);
    }
    QVERIFY(stage.waitForElapsed(18500));
    const double recorded = elapsedAtWhole + PauseSpans::secondsSince(whole);
    QVERIFY(stage.stopTake());
    const QString path = stage.lastReport().path;
    const MediaInfo media = MediaProbe::probe(path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    const double leftOut = recorded - media.seconds;
    QVERIFY2(leftOut >= paused.least() - kMostOff && leftOut <= paused.most() + kMostOff,
             qPrintable(QStringLiteral("%1 s left out, %2 to %3 s paused")
                            .arg(leftOut)
                            .arg(paused.least())
                            .arg(paused.most())));
    FlashBeepCheck::verifyTogether(path, 4, cuts);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamPauses>(argc, argv);
}

#include "tst_WebcamPauses.moc"
