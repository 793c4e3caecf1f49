#include <KdVBLModel/KdTakeTimeline.h>
#include <Support/KdTestCase.h>

namespace {

constexpr qint64 kMs = 1000000;
constexpr int kRate = 48000;
constexpr qint64 kBlock = 480; ///< frames in 10 ms

/** Sound that arrives in blocks of 10 ms from a time on. */
class Sound
{
public:
    Sound(KdTakeTimeline& line, qint64 beginNs)
        : m_line(line), m_nowNs(static_cast<double>(beginNs))
    {
    }

    void give(int blocks, double rate = kRate)
    {
        for (int i = 0; i < blocks; ++i) {
            m_nowNs += static_cast<double>(kBlock) * 1e9 / rate;
            m_line.soundArrived(kBlock, nowNs());
        }
    }
    void skip(qint64 ms) { m_nowNs += static_cast<double>(ms * kMs); }
    qint64 nowNs() const { return static_cast<qint64>(m_nowNs); }

private:
    KdTakeTimeline& m_line;
    double m_nowNs;
};

} // namespace

class tst_KdTakeTimeline : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void picturesAloneFollowTheClock();
    void picturesBelongToTheSoundThatWasCapturedWithThem();
    void aPictureMayBeOlderThanTheLastSound();
    void theMicrophonesClockIsFollowed();
    void pausesAreLeftOutOfBoth();
    void theFileBeginsWhereItIsTold();
    void shortDelaysAreNoGaps();
    void aGapIsTheSoundThatIsMissing();
    void afterSilenceEveryGapIsFilled();
    void soundThatWasOnlyLateIsLeftOut();
    void soundThatComesEarlyIsKeptWithoutSilenceBefore();
};

void tst_KdTakeTimeline::picturesAloneFollowTheClock()
{
    KdTakeTimeline line(0);
    QCOMPARE(line.missingUntil(5000 * kMs), qint64(0));
    const qint64 position = line.capturedAt(1000 * kMs);
    QVERIFY(line.isRecorded(position));
    QVERIFY(!line.hasBegun());
    line.begin(position);
    QVERIFY(line.hasBegun());
    QCOMPARE(line.fileNs(line.capturedAt(1033 * kMs)), 33 * kMs);
    line.pause(1050 * kMs);
    QVERIFY(!line.isRecorded(line.capturedAt(1060 * kMs)));
    QVERIFY(line.isRecorded(line.capturedAt(1040 * kMs)));
    line.resume(3050 * kMs);
    QCOMPARE(line.fileNs(line.capturedAt(3100 * kMs)), 100 * kMs);
}

void tst_KdTakeTimeline::picturesBelongToTheSoundThatWasCapturedWithThem()
{
    KdTakeTimeline line(kRate);
    Sound sound(line, 1000 * kMs);
    sound.give(50);
    line.begin(line.capturedAt(1100 * kMs));
    QCOMPARE(line.capturedAt(1100 * kMs), qint64(4800));
    QCOMPARE(line.fileNs(line.capturedAt(1100 * kMs)), qint64(0));
    QCOMPARE(line.fileNs(line.capturedAt(1350 * kMs)), 250 * kMs);
    // Ahead of the sound, too.
    QCOMPARE(line.fileNs(line.capturedAt(1600 * kMs)), 500 * kMs);
}

void tst_KdTakeTimeline::aPictureMayBeOlderThanTheLastSound()
{
    KdTakeTimeline line(kRate);
    QCOMPARE(line.capturedAt(0), qint64(0)); // nothing is known yet
    Sound sound(line, 1000 * kMs);
    sound.give(1);
    QVERIFY(line.capturedAt(900 * kMs) < 0);
    QVERIFY(!line.isRecorded(line.capturedAt(900 * kMs)));
}

void tst_KdTakeTimeline::theMicrophonesClockIsFollowed()
{
    KdTakeTimeline line(kRate);
    Sound sound(line, 1000 * kMs);
    sound.give(1);
    line.begin(0);
    // An hour with a clock that is slow by 200 parts in a million: 720 ms.
    sound.give(360000, kRate * 0.9998);
    const qint64 captured = line.capturedAt(sound.nowNs());
    QVERIFY2(qAbs(captured - line.soundReceived()) < kRate / 100,
             qPrintable(QString::number(captured - line.soundReceived())));
}

void tst_KdTakeTimeline::pausesAreLeftOutOfBoth()
{
    KdTakeTimeline line(kRate);
    Sound sound(line, 0);
    sound.give(100);
    line.begin(line.capturedAt(500 * kMs));
    line.pause(sound.nowNs());
    sound.give(200);
    line.resume(sound.nowNs());
    sound.give(100);
    QCOMPARE(line.fileNs(line.capturedAt(3500 * kMs)), 1000 * kMs);
    QVERIFY(!line.isRecorded(line.capturedAt(2000 * kMs)));
    const auto spans = line.recorded(0, qint64(4) * kRate);
    QCOMPARE(int(spans.size()), 2);
    QVERIFY(spans[0] == (KdPauseClock::Span{kRate / 2, kRate, 0}));
    QVERIFY(spans[1] == (KdPauseClock::Span{qint64(3) * kRate, qint64(4) * kRate, kRate / 2}));
}

void tst_KdTakeTimeline::theFileBeginsWhereItIsTold()
{
    KdTakeTimeline line(kRate);
    Sound sound(line, 0);
    line.pause(0);
    sound.give(100);
    QVERIFY(!line.isRecorded(line.capturedAt(900 * kMs)));
    line.resume(sound.nowNs());
    sound.give(100);
    line.begin(line.capturedAt(1300 * kMs));
    const auto spans = line.recorded(0, qint64(2) * kRate);
    QCOMPARE(int(spans.size()), 1);
    QVERIFY(spans[0] == (KdPauseClock::Span{62400, qint64(2) * kRate, 0}));
}

void tst_KdTakeTimeline::shortDelaysAreNoGaps()
{
    KdTakeTimeline line(kRate);
    QCOMPARE(line.missingBefore(kBlock, 70000 * kMs), qint64(0)); // the first is never late
    Sound sound(line, 0);
    sound.give(100);
    QCOMPARE(line.missingBefore(kBlock, sound.nowNs() + 300 * kMs), qint64(0));
    QCOMPARE(line.missingUntil(sound.nowNs() + 300 * kMs), qint64(0));
}

void tst_KdTakeTimeline::aGapIsTheSoundThatIsMissing()
{
    KdTakeTimeline line(kRate);
    Sound sound(line, 0);
    sound.give(100);
    QCOMPARE(line.missingUntil(sound.nowNs() + 400 * kMs), qint64(19200));
    QCOMPARE(line.missingBefore(kBlock, sound.nowNs() + 410 * kMs), qint64(19200));
}

void tst_KdTakeTimeline::afterSilenceEveryGapIsFilled()
{
    KdTakeTimeline line(kRate);
    Sound sound(line, 0);
    sound.give(100);
    QCOMPARE(line.silenceArrived(19200, sound.nowNs() + 400 * kMs), qint64(48000));
    QCOMPARE(line.missingUntil(sound.nowNs() + 500 * kMs), qint64(0));
    QCOMPARE(line.missingBefore(kBlock, sound.nowNs() + 510 * kMs), qint64(4800));
    QCOMPARE(line.capturedAt(sound.nowNs() + 400 * kMs), qint64(67200));
}

void tst_KdTakeTimeline::soundThatWasOnlyLateIsLeftOut()
{
    KdTakeTimeline line(kRate);
    Sound sound(line, 0);
    sound.give(100);
    sound.skip(400);
    line.silenceArrived(19200, sound.nowNs());
    // Now all of it comes at once: 400 ms that are in the file as silence.
    int left = 0;
    for (int i = 0; i < 60; ++i) {
        const qint64 now = sound.nowNs() + qint64(qMax(0, i - 39)) * 10 * kMs;
        if (line.isSurplus(kBlock, now)) {
            ++left;
        } else {
            line.soundArrived(kBlock, now);
        }
    }
    QVERIFY2(left >= 38 && left <= 40, qPrintable(QString::number(left)));
}

void tst_KdTakeTimeline::soundThatComesEarlyIsKeptWithoutSilenceBefore()
{
    KdTakeTimeline line(kRate);
    Sound sound(line, 0);
    sound.give(100);
    QVERIFY(!line.isSurplus(kBlock, sound.nowNs() - 200 * kMs));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeTimeline>(argc, argv);
}

#include "tst_KdTakeTimeline.moc"
