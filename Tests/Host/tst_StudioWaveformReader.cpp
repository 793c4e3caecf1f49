#include "Support/KdTestCase.h"
#include "Support/TestFiles.h"

#include <Studio/StudioSpeech.h>
#include <Studio/StudioWaveformReader.h>

#include <algorithm>

class tst_StudioWaveformReader : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void pausesAndSyllablesAreSeenWhereTheyAre();
    void damagedFileGivesWhatThereIs();
    void whatCannotBeDecodedHasNoWaveform_data();
    void whatCannotBeDecodedHasNoWaveform();
    void cancellingEndsTheReading();
};

void tst_StudioWaveformReader::pausesAndSyllablesAreSeenWhereTheyAre()
{
    const QString path = temporaryPath(QStringLiteral("a.wav"));
    TestFiles::write(path, StudioSpeech::synthesise(9.0));
    const StudioPeaks columns = foldPeaks(readWaveform(path, std::atomic<bool>(false)), 36);
    QCOMPARE(columns.size(), 36);
    // Four syllables a second, every ninth one silent.
    for (int i = 0; i < columns.size(); ++i) {
        QVERIFY2((i % 9 == 8) == (columns.at(i).rms < 0.01F), qPrintable(QString::number(i)));
    }
}

void tst_StudioWaveformReader::damagedFileGivesWhatThereIs()
{
    const QByteArray whole = StudioSpeech::synthesise(4.0);
    const QString path = temporaryPath(QStringLiteral("a.wav"));
    TestFiles::write(path, whole.left(whole.size() / 2));
    const StudioPeaks peaks = readWaveform(path, std::atomic<bool>(false));
    QVERIFY(!peaks.isEmpty());
    QVERIFY(std::any_of(peaks.cbegin(), peaks.cend(),
                        [](const StudioPeak& p) { return p.peak > 0.1F; }));
}

void tst_StudioWaveformReader::whatCannotBeDecodedHasNoWaveform_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("text") << QByteArray("no sound ").repeated(500);
    QTest::newRow("zeroes") << QByteArray(50000, '\0');
}

void tst_StudioWaveformReader::whatCannotBeDecodedHasNoWaveform()
{
    QFETCH(QByteArray, content);
    const QString path = temporaryPath(QStringLiteral("a.m4a"));
    TestFiles::write(path, content);
    QVERIFY(readWaveform(path, std::atomic<bool>(false)).isEmpty());
    QVERIFY(
        readWaveform(temporaryPath(QStringLiteral("missing")), std::atomic<bool>(false)).isEmpty());
}

void tst_StudioWaveformReader::cancellingEndsTheReading()
{
    const QString path = temporaryPath(QStringLiteral("a.wav"));
    TestFiles::write(path, StudioSpeech::synthesise(1.0));
    QVERIFY(readWaveform(path, std::atomic<bool>(true)).isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioWaveformReader>(argc, argv);
}

#include "tst_StudioWaveformReader.moc"
