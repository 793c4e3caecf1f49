#include "VoiceOverStage.h"

#include <Support/KdTestCase.h>

#include <QElapsedTimer>

#include <cmath>

namespace {

constexpr double kFromHertz = 400.0;
constexpr double kToHertz = 2400.0;
constexpr double kSweepSeconds = 40.0;
constexpr double kHertzPerSecond = (kToHertz - kFromHertz) / kSweepSeconds;
constexpr int kPauses = 10;

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

    const QString pause = QStringLiteral("KAudioCapture_ButtonPause");
    QElapsedTimer paused;
    double pausedSeconds = 0.0;
    QVERIFY(stage.waitForElapsed(500));
    QElapsedTimer whole;
    whole.start();
    const double elapsedAtWhole = static_cast<double>(stage.lastElapsed()) / 1000.0;
    for (int number = 1; number <= kPauses; ++number) {
        stage.press(pause);
        paused.start();
        QTRY_VERIFY_WITH_TIMEOUT(paused.elapsed() >= 300, 2000);
        stage.press(pause);
        pausedSeconds += static_cast<double>(paused.nsecsElapsed()) * 1e-9;
        QVERIFY(stage.waitForElapsed(500 + number * 400));
    }
    const double unpaused =
        elapsedAtWhole + static_cast<double>(whole.nsecsElapsed()) * 1e-9 - pausedSeconds;
    QVERIFY(stage.stopTake());

    const MediaInfo media = MediaProbe::probe(stage.lastReport().path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY2(
        std::abs(media.seconds - unpaused) <= 0.100,
        qPrintable(
            QStringLiteral("%1 s in the file, %2 s not paused").arg(media.seconds).arg(unpaused)));

    const QVector<float> samples = MediaProbe::samples(stage.lastReport().path);
    const double first = MediaProbe::pitchAt(samples, 48000, 0.15);
    const double last = MediaProbe::pitchAt(samples, 48000, media.seconds - 0.15);
    const double played = (last - first) / kHertzPerSecond;
    const double leftOut = played - (media.seconds - 0.30);
    QVERIFY2(
        std::abs(leftOut - pausedSeconds) <= 0.25,
        qPrintable(QStringLiteral("%1 s left out, %2 s paused").arg(leftOut).arg(pausedSeconds)));
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
