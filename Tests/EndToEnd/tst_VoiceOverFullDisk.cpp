#include "VoiceOverStage.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdWidgets/KdToolButton.h>
#include <Support/KdTestCase.h>
#include <Support/SmallDisk.h>
#include <Support/WindowAnswers.h>

#include <QDir>
#include <QFileInfo>

/** Small disks that fill up, or are nearly full before a take. */
class tst_VoiceOverFullDisk : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void fullDiskInMidTakeKeepsWhatFittedAndSaysSo();
    void littleSpaceAsksAndYesRecordsNothing();

private:
    std::unique_ptr<VoiceOverStage> m_stage;
    QString m_folder;
};

void tst_VoiceOverFullDisk::init()
{
    KdTestCase::init();
    m_folder = temporaryPath(QStringLiteral("takes"));
    m_stage = std::make_unique<VoiceOverStage>(m_folder);
    QVERIFY(m_stage->microphone().plug());
}

void tst_VoiceOverFullDisk::cleanup()
{
    m_stage.reset();
    KdTestCase::cleanup();
}

void tst_VoiceOverFullDisk::fullDiskInMidTakeKeepsWhatFittedAndSaysSo()
{
    allowLog(QStringLiteral("(?i)space|full|write|multiplex|stream|not be"));
    const QString sound = temporaryPath(QStringLiteral("tone.wav"));
    QVERIFY(TestSound::writeTone(sound, 1000.0, -12.0, 60.0));
    const SmallDisk disk(m_folder, 512);
    QVERIFY2(disk.isMounted(), "The test may not mount a small disk");
    KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings()->SetBitrate(320);
    KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings()->SetBitrateMode(2);
    KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings()->SetSampleRate(48000);
    QVERIFY(m_stage->open());
    QVERIFY(m_stage->microphone().play(sound));
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::No);
    QVERIFY(m_stage->startTake());
    QCOMPARE(answers.messages().size(), 1);
    QVERIFY(answers.messages().first().contains(
        QStringLiteral("MB space in the specified output directory")));

    // The user is told, and need not press anything to keep what fitted.
    answers.answerMessage(QDialogButtonBox::Ok);
    QTRY_COMPARE_WITH_TIMEOUT(answers.messages().size(), 2, 60000);
    QVERIFY(answers.messages().last().contains(QStringLiteral("the disk is full")));
    const qint64 elapsed = m_stage->lastElapsed();
    QVERIFY(elapsed > 2000);

    const VoiceOverStage::Report report = m_stage->lastReport();
    QVERIFY(!report.path.isEmpty());
    const MediaInfo media = MediaProbe::probe(report.path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY2(media.seconds * 1000.0 >= static_cast<double>(elapsed) - 150.0,
             qPrintable(QStringLiteral("%1 s kept of %2 ms").arg(media.seconds).arg(elapsed)));
}

void tst_VoiceOverFullDisk::littleSpaceAsksAndYesRecordsNothing()
{
    const SmallDisk disk(m_folder, 512);
    QVERIFY2(disk.isMounted(), "The test may not mount a small disk");
    QVERIFY(m_stage->open());
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Yes);
    m_stage->pressRecord();
    QTRY_COMPARE_WITH_TIMEOUT(answers.messages().size(), 1, 5000);
    QVERIFY(QRegularExpression(
                QStringLiteral(
                    "^There is only [01]MB space in the specified output directory, Would you "
                    "choose another directory\\?$"))
                .match(answers.messages().first())
                .hasMatch());
    QTRY_VERIFY(!m_stage->control<KdToolButton>(QStringLiteral("KAudioCapture_RecorderButton"))
                     ->isChecked());
    QCOMPARE(m_stage->starts(), 0);
    QVERIFY(QDir(m_folder).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_VoiceOverFullDisk>(argc, argv);
}

#include "tst_VoiceOverFullDisk.moc"
