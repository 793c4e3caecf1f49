#include "Support/KdTestCase.h"
#include "Support/TestClip.h"
#include "Support/TestFiles.h"

#include <Studio/StudioSpeech.h>
#include <Studio/StudioWaveformReader.h>
#include <Studio/StudioWorkGate.h>

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
    void soundOfAClipIsRead();

private:
    StudioWorkGate m_gate;
};

void tst_StudioWaveformReader::pausesAndSyllablesAreSeenWhereTheyAre()
{
    const QString path = temporaryPath(QStringLiteral("a.wav"));
    TestFiles::write(path, StudioSpeech::synthesise(9.0));
    const StudioPeaks columns = foldPeaks(readWaveform(path, m_gate), 36);
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
    const StudioPeaks peaks = readWaveform(path, m_gate);
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
    QVERIFY(readWaveform(path, m_gate).isEmpty());
    QVERIFY(readWaveform(temporaryPath(QStringLiteral("missing")), m_gate).isEmpty());
}

void tst_StudioWaveformReader::cancellingEndsTheReading()
{
    const QString path = temporaryPath(QStringLiteral("a.wav"));
    TestFiles::write(path, StudioSpeech::synthesise(1.0));
    StudioWorkGate gate;
    gate.cancel();
    QVERIFY(readWaveform(path, gate).isEmpty());
}

void tst_StudioWaveformReader::soundOfAClipIsRead()
{
    const QString path = temporaryPath(QStringLiteral("a.mp4"));
    TestClip::write(path, {{Qt::red, 1.0}});
    QVERIFY(!readWaveform(path, m_gate).isEmpty());
    TestClip::write(path, {{Qt::red, 1.0}}, false);
    QVERIFY(readWaveform(path, m_gate).isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioWaveformReader>(argc, argv);
}

#include "tst_StudioWaveformReader.moc"
