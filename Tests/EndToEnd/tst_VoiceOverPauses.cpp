#include "PauseSpans.h"
#include "VoiceOverStage.h"

#include <Support/KdTestCase.h>

#include <QElapsedTimer>

namespace {

constexpr double kFromHertz = 400.0;
constexpr double kToHertz = 2400.0;
constexpr double kSweepSeconds = 40.0;
constexpr double kHertzPerSecond = (kToHertz - kFromHertz) / kSweepSeconds;
constexpr int kPauses = 10;
constexpr double kMostOff = 0.100;

} // namespace

/** Paused time is not in the file. */
class tst_VoiceOverPauses : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void tenPausesLeaveExactlyWhatWasNotPaused();
};

// The microphone hears a tone whose pitch tells the time at which it was played: where the file's
// pitch rises faster than played, something was left out, and how much of it.
void tst_VoiceOverPauses::tenPausesLeaveExactlyWhatWasNotPaused()
{
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    const QString sweep = temporaryPath(QStringLiteral("sweep.wav"));
    QVERIFY(TestSound::writeSweep(sweep, kFromHertz, kToHertz, kSweepSeconds));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.microphone().play(sweep));
    QVERIFY(stage.startTake());

    const auto pressPause = [&stage] { stage.press(QStringLiteral("KAudioCapture_ButtonPause")); };
    PauseSpans paused;
    QVERIFY(stage.waitForElapsed(500));
    QElapsedTimer whole;
    whole.start();
    const double elapsedAtWhole = static_cast<double>(stage.lastElapsed()) / 1000.0;
    for (int number = 1; number <= kPauses; ++number) {
        paused.pause(pressPause);
        QTRY_VERIFY_WITH_TIMEOUT(paused.milliseconds() >= 300, 2000);
        paused.resume(pressPause);
        QVERIFY(stage.waitForElapsed(500 + number * 400));
    }
    const double recorded = elapsedAtWhole + PauseSpans::secondsSince(whole);
    QVERIFY(stage.stopTake());

    const MediaInfo media = MediaProbe::probe(stage.lastReport().path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    const double missing = recorded - media.seconds;
    QVERIFY2(missing >= paused.least() - kMostOff && missing <= paused.most() + kMostOff,
             qPrintable(QStringLiteral("%1 s are missing, %2 to %3 s paused")
                            .arg(missing)
                            .arg(paused.least())
                            .arg(paused.most())));

    const QVector<float> samples = MediaProbe::samples(stage.lastReport().path);
    const double first = MediaProbe::pitchAt(samples, 48000, 0.15);
    const double last = MediaProbe::pitchAt(samples, 48000, media.seconds - 0.15);
    const double played = (last - first) / kHertzPerSecond;
    const double leftOut = played - (media.seconds - 0.30);
    QVERIFY2(leftOut >= paused.least() - 0.25 && leftOut <= paused.most() + 0.25,
             qPrintable(QStringLiteral("%1 s left out, %2 to %3 s paused")
                            .arg(leftOut)
                            .arg(paused.least())
                            .arg(paused.most())));
    int jumps = 0;
    for (const double at : MediaProbe::moments(0.1, media.seconds - 0.2, 0.05)) {
        const double rise = MediaProbe::pitchAt(samples, 48000, at + 0.05) -
                            MediaProbe::pitchAt(samples, 48000, at);
        jumps += rise > 0.2 * kHertzPerSecond ? 1 : 0;
    }
    QVERIFY2(jumps >= kPauses, qPrintable(QStringLiteral("%1 jumps of the pitch").arg(jumps)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_VoiceOverPauses>(argc, argv);
}

#include "tst_VoiceOverPauses.moc"
