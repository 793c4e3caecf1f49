#include "VoiceOverStage.h"

#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdToolButton.h>
#include <Support/KdTestCase.h>
#include <Support/WindowAnswers.h>

#include <cmath>

namespace {

/** The loudest sample in 20 ms around a position. */
float peakAround(const QVector<float>& samples, double second)
{
    const int centre = static_cast<int>(second * 48000.0);
    float peak = 0.0F;
    for (int at = qMax(0, centre - 480); at < qMin(samples.size(), centre + 480); ++at) {
        peak = qMax(peak, std::abs(samples.at(at)));
    }
    return peak;
}

} // namespace

/** Microphones that come and go. */
class tst_VoiceOverDeviceLoss : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void lostMicrophoneEndsTheTakeAndKeepsIt();
    void returningMicrophoneIsListedAndSelected();
    void anotherMicrophoneIsNeverRecordedInstead();
    void otherMicrophonesComeAndGoUnderARunningTake();

private:
    QStringList rows(const VoiceOverStage& stage) const
    {
        auto* const box = stage.control<KdComboBox>(QStringLiteral("KAudioCapture_DeviceBox"));
        QStringList texts;
        for (int row = 0; row < box->count(); ++row) {
            texts.append(box->itemText(row));
        }
        return texts;
    }

    /** Everything that the take's end on a lost device may log. */
    void allowLossInLog()
    {
        allowLog(QStringLiteral("(?i)disconnected|lost|gone|killed|removed|no longer|"
                                "no such entity"));
    }
};

void tst_VoiceOverDeviceLoss::lostMicrophoneEndsTheTakeAndKeepsIt()
{
    allowLossInLog();
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    const QString tone = temporaryPath(QStringLiteral("tone.wav"));
    QVERIFY(TestSound::writeTone(tone, 1000.0, -12.0, 60.0));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.microphone().play(tone));
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(3000));

    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    QVERIFY(stage.microphone().unplug());
    const qint64 recorded = stage.lastElapsed();
    QVERIFY(stage.waitForReports(1));

    QTRY_COMPARE_WITH_TIMEOUT(
        answers.messages(),
        QStringList(QStringLiteral("Audio device USB Microphone connection lost.")), 5000);
    const MediaInfo media = MediaProbe::probe(stage.lastReport().path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY2(media.seconds * 1000.0 >= static_cast<double>(recorded) - 150.0,
             qPrintable(QStringLiteral("%1 s kept of %2 ms").arg(media.seconds).arg(recorded)));
    QTRY_COMPARE_WITH_TIMEOUT(rows(stage), QStringList(QStringLiteral("No Device")), 5000);
    QVERIFY(
        !stage.control<KdToolButton>(QStringLiteral("KAudioCapture_RecorderButton"))->isEnabled());

    QVERIFY(stage.microphone().plug());
    QTRY_COMPARE_WITH_TIMEOUT(rows(stage), QStringList(QStringLiteral("USB Microphone")), 8000);
    QCOMPARE(stage.deviceText(), QStringLiteral("USB Microphone"));
    QTRY_VERIFY(
        stage.control<KdToolButton>(QStringLiteral("KAudioCapture_RecorderButton"))->isEnabled());
}

void tst_VoiceOverDeviceLoss::returningMicrophoneIsListedAndSelected()
{
    allowLossInLog();
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    for (int round = 0; round < 3; ++round) {
        QVERIFY(stage.microphone().unplug());
        QTRY_COMPARE_WITH_TIMEOUT(rows(stage), QStringList(QStringLiteral("No Device")), 8000);
        QVERIFY(stage.microphone().plug());
        QTRY_COMPARE_WITH_TIMEOUT(rows(stage), QStringList(QStringLiteral("USB Microphone")), 8000);
    }
    QCOMPARE(stage.deviceText(), QStringLiteral("USB Microphone"));
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1500));
    QVERIFY(stage.stopTake());
    QVERIFY(MediaProbe::probe(stage.lastReport().path).isReadable);
}

void tst_VoiceOverDeviceLoss::anotherMicrophoneIsNeverRecordedInstead()
{
    allowLossInLog();
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    const QString low = temporaryPath(QStringLiteral("low.wav"));
    const QString high = temporaryPath(QStringLiteral("high.wav"));
    QVERIFY(TestSound::writeTone(low, 500.0, -12.0, 60.0));
    QVERIFY(TestSound::writeTone(high, 3000.0, -6.0, 60.0));
    VirtualMicrophone other(QStringLiteral("other_mic"), QStringLiteral("Other Microphone"));
    QVERIFY(stage.microphone().plug());
    QVERIFY(other.plug());
    QVERIFY(stage.open());
    QTRY_COMPARE_WITH_TIMEOUT(rows(stage).size(), 2, 8000);
    auto* const box = stage.control<KdComboBox>(QStringLiteral("KAudioCapture_DeviceBox"));
    box->setCurrentIndex(box->findText(QStringLiteral("USB Microphone")));
    QVERIFY(stage.microphone().play(low));
    QVERIFY(other.play(high));
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(2500));

    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    QVERIFY(stage.microphone().unplug());
    QVERIFY(stage.waitForReports(1));

    const QVector<float> samples = MediaProbe::samples(stage.lastReport().path);
    const double seconds = static_cast<double>(samples.size()) / 48000.0;
    QVERIFY(seconds >= 2.3);
    // The other one is twice as loud: what is not louder than the lost one's own tone is no sound
    // of it, whatever pitch the noise of a dying stream may have.
    int foreign = 0;
    for (const double at : MediaProbe::moments(0.2, seconds - 0.1, 0.05)) {
        const bool isHigh = std::abs(MediaProbe::pitchAt(samples, 48000, at) - 3000.0) < 500.0;
        foreign += isHigh && peakAround(samples, at) > 0.35F ? 1 : 0;
    }
    QCOMPARE(foreign, 0);
    QTRY_COMPARE_WITH_TIMEOUT(rows(stage), QStringList(QStringLiteral("Other Microphone")), 8000);
}

void tst_VoiceOverDeviceLoss::otherMicrophonesComeAndGoUnderARunningTake()
{
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    const QString tone = temporaryPath(QStringLiteral("tone.wav"));
    QVERIFY(TestSound::writeTone(tone, 1000.0, -12.0, 60.0));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.microphone().play(tone));
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1000));

    VirtualMicrophone other(QStringLiteral("other_mic"), QStringLiteral("Other Microphone"));
    QVERIFY(other.plug());
    QTRY_COMPARE_WITH_TIMEOUT(rows(stage).size(), 2, 8000);
    QCOMPARE(stage.deviceText(), QStringLiteral("USB Microphone"));
    const qint64 afterPlug = stage.lastElapsed();
    QVERIFY(stage.waitForElapsed(afterPlug + 500));
    QVERIFY(other.unplug());
    QTRY_COMPARE_WITH_TIMEOUT(rows(stage).size(), 1, 8000);
    const qint64 afterUnplug = stage.lastElapsed();
    QVERIFY(stage.waitForElapsed(afterUnplug + 500));
    QCOMPARE(stage.reports().size(), 0);
    QVERIFY(stage.stopTake());

    const MediaInfo media = MediaProbe::probe(stage.lastReport().path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY(std::abs(media.seconds - static_cast<double>(stage.lastElapsed()) / 1000.0) <= 0.150);
    const QVector<float> samples = MediaProbe::samples(stage.lastReport().path);
    // A busy sound server may leave a click of its own when devices change; a gap would be many.
    int disturbed = 0;
    for (const double at : MediaProbe::moments(0.2, media.seconds - 0.1, 0.02)) {
        disturbed += std::abs(MediaProbe::pitchAt(samples, 48000, at) - 1000.0) < 30.0 ? 0 : 1;
    }
    QVERIFY2(disturbed <= 4, qPrintable(QStringLiteral("%1 disturbed spots").arg(disturbed)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_VoiceOverDeviceLoss>(argc, argv);
}

#include "tst_VoiceOverDeviceLoss.moc"
