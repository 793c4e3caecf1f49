#include "VoiceOverStage.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdVBLModel/KdProject.h>
#include <KdWidgets/KdOpenFileLineEdit.h>
#include <KdZentraCore/KdConfigEngine.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QLocale>

#include <cmath>

/** A take from the red button to the file in the host's hands. */
class tst_VoiceOverTake : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void takeIsRecordedAsChosenAndReported_data();
    void takeIsRecordedAsChosenAndReported();
    void durationIsForwardedInProjectFrames();
    void choicesAreStoredWithTheTake();
    void folderMayHaveAnyName_data();
    void folderMayHaveAnyName();
    void filesOfTheTakesNameAreLeftAlone();
};

void tst_VoiceOverTake::takeIsRecordedAsChosenAndReported_data()
{
    QTest::addColumn<int>("samplerate");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("mode");
    QTest::newRow("48 kHz stereo, variable") << 48000 << 2 << 1;
    QTest::newRow("44.1 kHz mono, constant") << 44100 << 1 << 2;
}

void tst_VoiceOverTake::takeIsRecordedAsChosenAndReported()
{
    QFETCH(int, samplerate);
    QFETCH(int, channels);
    QFETCH(int, mode);
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    KAudioAdvanceSettings* const format =
        KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings();
    format->SetSampleRate(samplerate);
    format->SetChannels(channels);
    format->SetBitrateMode(static_cast<quint32>(mode));
    const QString speech = temporaryPath(QStringLiteral("speech.wav"));
    QVERIFY(TestSound::writeSpeech(
        speech, QStringLiteral("The quick brown fox jumps over the lazy dog and does it again."),
        30.0));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QCOMPARE(stage.deviceText(), stage.microphone().description());
    QVERIFY(stage.microphone().play(speech));

    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(5000));
    QVERIFY(stage.stopTake());

    const VoiceOverStage::Report report = stage.lastReport();
    QCOMPARE(stage.reports().size(), 1);
    QCOMPARE(QFileInfo(report.path).absolutePath(), temporaryPath(QStringLiteral("takes")));
    QVERIFY(QRegularExpression(QStringLiteral("^REC_\\d{8}_\\d{6}\\.m4a$"))
                .match(QFileInfo(report.path).fileName())
                .hasMatch());
    QCOMPARE(report.fileInfo.keys(),
             (QStringList{QStringLiteral("audio_channels"), QStringLiteral("device_name"),
                          QStringLiteral("file_duration"), QStringLiteral("sampling_rate")}));
    QCOMPARE(report.fileInfo.value(QLatin1String("device_name")).toString(),
             stage.microphone().description());
    QCOMPARE(report.fileInfo.value(QLatin1String("sampling_rate")).toInt(), 16);
    QCOMPARE(report.fileInfo.value(QLatin1String("file_duration")).toInt(), 5);
    QCOMPARE(report.fileExportInfo, QStringLiteral("{\n}\n"));

    const MediaInfo media = MediaProbe::probe(report.path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QCOMPARE(media.audioCodec, QStringLiteral("aac"));
    QVERIFY(media.videoCodec.isEmpty());
    QCOMPARE(media.samplerate, samplerate);
    QCOMPARE(media.channels, channels);
    const double elapsed = static_cast<double>(stage.lastElapsed()) / 1000.0;
    QVERIFY2(
        std::abs(media.seconds - elapsed) <= 0.150,
        qPrintable(
            QStringLiteral("%1 s in the file, %2 s reported").arg(media.seconds).arg(elapsed)));
    const double played = MediaProbe::meanDecibel(speech, 0.5, 4.0);
    const double recorded = MediaProbe::meanDecibel(report.path, 0.5, 4.0);
    QVERIFY2(std::abs(played - recorded) <= 2.0,
             qPrintable(QStringLiteral("%1 dB recorded, %2 dB played").arg(recorded).arg(played)));
    QCOMPARE(QDir(temporaryPath(QStringLiteral("takes"))).entryList(QDir::Files | QDir::Hidden),
             QStringList(QFileInfo(report.path).fileName()));
}

void tst_VoiceOverTake::durationIsForwardedInProjectFrames()
{
    IKdProjectManager::getInstance()->setFrameRate(KdVBLMODEL::KdFrameRate::Fps25);
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(2000));
    QVERIFY(stage.stopTake());

    const QList<qint64> frames = stage.frames();
    QVERIFY(frames.size() >= 20);
    QVERIFY(std::is_sorted(frames.constBegin(), frames.constEnd()));
    const double expected = std::floor(static_cast<double>(stage.lastElapsed()) * 0.025 + 0.5);
    QVERIFY(std::abs(static_cast<double>(frames.last()) - expected) <= 1.0);
}

void tst_VoiceOverTake::choicesAreStoredWithTheTake()
{
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    stage.setCountdown(1);
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1200));
    QVERIFY(stage.stopTake());
    delete stage.view();

    const QByteArray stored = TestFiles::read(documentDir() + QStringLiteral("/Settingdatas.xml"));
    QVERIFY2(
        stored.contains("<m_sSelectedAudioDeviceName>USB Microphone</m_sSelectedAudioDeviceName>"),
        stored.constData());
    QVERIFY2(stored.contains("<RecordScreenCountdown>1</RecordScreenCountdown>"),
             stored.constData());
    QVERIFY2(stored.contains("<WebRecordRecordPreview>true</WebRecordRecordPreview>"),
             stored.constData());
}

void tst_VoiceOverTake::folderMayHaveAnyName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("spaces") << QStringLiteral("my own  takes");
    QTest::newRow("a place marker") << QStringLiteral("take %1 of %2");
    QTest::newRow("other scripts") << QString::fromUtf8(
        "Aufnahmen-\xc3\xa4\xc3\xb6\xc3\xbc \xe5\xbd\x95\xe9\x9f\xb3 \xd8\xb5\xd9\x88\xd8\xaa");
    QTest::newRow("quotes and pipeline syntax") << QStringLiteral("a\" ! filesink 'b");
    QTest::newRow("255 bytes") << QString(255, QLatin1Char('n'));
}

void tst_VoiceOverTake::folderMayHaveAnyName()
{
    QFETCH(QString, name);
    const QString folder = temporaryPath(name);
    VoiceOverStage stage(folder);
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1200));
    QVERIFY(stage.stopTake());
    QCOMPARE(QFileInfo(stage.lastReport().path).absolutePath(), folder);
    QVERIFY(MediaProbe::probe(stage.lastReport().path).isReadable);
}

void tst_VoiceOverTake::filesOfTheTakesNameAreLeftAlone()
{
    const QDir folder(temporaryPath(QStringLiteral("takes")));
    const QDateTime now = QDateTime::currentDateTime();
    const auto nameAt = [&now](int second) {
        return QLocale::c().toString(now.addSecs(second),
                                     QStringLiteral("'REC_'yyyyMMdd_hhmmss'.m4a'"));
    };
    constexpr int kSeconds = 120;
    for (int second = 0; second < kSeconds; ++second) {
        TestFiles::write(folder.filePath(nameAt(second)), nameAt(second).toUtf8());
    }
    VoiceOverStage stage(folder.path());
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1200));
    QVERIFY(stage.stopTake());

    QCOMPARE(QFileInfo(stage.lastReport().path).fileName(), nameAt(kSeconds));
    QVERIFY(MediaProbe::probe(stage.lastReport().path).isReadable);
    QCOMPARE(folder.entryList(QDir::Files | QDir::Hidden).size(), kSeconds + 1);
    for (int second = 0; second < kSeconds; ++second) {
        QCOMPARE(TestFiles::read(folder.filePath(nameAt(second))), nameAt(second).toUtf8());
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_VoiceOverTake>(argc, argv);
}

#include "tst_VoiceOverTake.moc"
