#include "Support/KdTestCase.h"
#include "Support/TestFiles.h"

#include <Studio/StudioMediaProbe.h>
#include <Studio/StudioPeaks.h>
#include <Studio/StudioSpeech.h>
#include <Studio/StudioWaveformReader.h>
#include <Studio/StudioWorkGate.h>

#include <algorithm>

class tst_StudioSpeech : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void synthesisedSoundIsAPlayableFile();
    void synthesisedSoundIsLoudWithPausesAndNeverClips();
    void speechIsWrittenWhateverIsInstalled_data();
    void speechIsWrittenWhateverIsInstalled();
    void folderThatIsNotThereIsAFailure();
};

void tst_StudioSpeech::synthesisedSoundIsAPlayableFile()
{
    const QString path = temporaryPath(QStringLiteral("speech.wav"));
    TestFiles::write(path, StudioSpeech::synthesise(2.0));
    const StudioMediaInfo info = probeMedia(path);
    QVERIFY2(info.readable, qPrintable(info.problem));
    QCOMPARE(info.durationMs, 2000);
    QCOMPARE(info.channels, 1);
    QCOMPARE(info.sampleRate, 24000);
}

void tst_StudioSpeech::synthesisedSoundIsLoudWithPausesAndNeverClips()
{
    const QString path = temporaryPath(QStringLiteral("speech.wav"));
    TestFiles::write(path, StudioSpeech::synthesise(5.0));
    StudioWorkGate gate;
    const StudioPeaks peaks = readWaveform(path, gate);
    const auto [quietest, loudest] = std::minmax_element(
        peaks.cbegin(), peaks.cend(),
        [](const StudioPeak& a, const StudioPeak& b) { return a.peak < b.peak; });
    QVERIFY(quietest != peaks.cend());
    QVERIFY(quietest->peak < 0.001F);
    QVERIFY(loudest->peak > 0.2F);
    QVERIFY(loudest->peak < 0.95F);
}

void tst_StudioSpeech::speechIsWrittenWhateverIsInstalled_data()
{
    QTest::addColumn<QByteArray>("searchPath");
    QTest::newRow("as installed") << qgetenv("PATH");
    QTest::newRow("nothing installed") << QByteArray("/nowhere");
}

void tst_StudioSpeech::speechIsWrittenWhateverIsInstalled()
{
    QFETCH(QByteArray, searchPath);
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", searchPath);
    const QString path = temporaryPath(QStringLiteral("speech.wav"));
    const bool written = StudioSpeech::write(path);
    qputenv("PATH", before);
    QVERIFY(written);
    const StudioMediaInfo info = probeMedia(path);
    QVERIFY2(info.readable, qPrintable(info.problem));
    QVERIFY(info.durationMs > 5000);
    QCOMPARE(info.channels, 1);
}

void tst_StudioSpeech::folderThatIsNotThereIsAFailure()
{
    QVERIFY(!StudioSpeech::write(temporaryPath(QStringLiteral("no/such/folder/speech.wav"))));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioSpeech>(argc, argv);
}

#include "tst_StudioSpeech.moc"
