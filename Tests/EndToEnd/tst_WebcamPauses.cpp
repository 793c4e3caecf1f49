#include "WebcamStage.h"

#include <Support/FlashBeepCheck.h>
#include <Support/FlashBeepSource.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>

#include <QElapsedTimer>

#include <cmath>

namespace {

constexpr int kPauses = 10;
constexpr qint64 kPauseMs = 300;

double secondsOf(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
}

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
    QElapsedTimer paused;
    double pausedSeconds = 0.0;
    for (int number = 1; number <= kPauses; ++number) {
        QVERIFY(stage.waitForElapsed(qint64(number) * 1500));
        stage.press(WebcamStage::kPause);
        paused.start();
        cuts.append(static_cast<double>(stage.lastElapsed()) / 1000.0);
        QVERIFY(stage.waitForPicture());
        QTRY_VERIFY_WITH_TIMEOUT(paused.elapsed() >= kPauseMs, 2000);
        stage.press(WebcamStage::kPause);
        pausedSeconds += secondsOf(paused);
    }
    QVERIFY(stage.waitForElapsed(18500));
    const double unpaused = elapsedAtWhole + secondsOf(whole) - pausedSeconds;
    QVERIFY(stage.stopTake());
    const QString path = stage.lastReport().path;
    const MediaInfo media = MediaProbe::probe(path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY2(
        std::abs(media.seconds - unpaused) <= 0.150,
        qPrintable(
            QStringLiteral("%1 s in the file, %2 s not paused").arg(media.seconds).arg(unpaused)));
    FlashBeepCheck::verifyTogether(path, 4, cuts);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamPauses>(argc, argv);
}

#include "tst_WebcamPauses.moc"
