#include <KdVBLModel/KdAacFormat.h>
#include <Support/KdTestCase.h>

#include <limits>

Q_DECLARE_METATYPE(KdVBLMODEL::KdAudioFormat)

using KdVBLMODEL::KdAudioFormat;

class tst_KdAacFormat : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void whatAacHasIsTakenAsItIs_data();
    void whatAacHasIsTakenAsItIs();
    void nearestIsTakenAndNamed_data();
    void nearestIsTakenAndNamed();
    void everyFieldMayHoldAnything_data();
    void everyFieldMayHoldAnything();
    void everyOfferedChoiceStaysWithinAac();
    void textNamesEverything();

private:
    static KdAudioFormat format(int mode, int rate, int channels, int kilobits);
};

KdAudioFormat tst_KdAacFormat::format(int mode, int rate, int channels, int kilobits)
{
    KdAudioFormat asked;
    asked.bitrateMode = mode;
    asked.samplerate = rate;
    asked.channels = channels;
    asked.bitrate = kilobits * 1000;
    return asked;
}

void tst_KdAacFormat::whatAacHasIsTakenAsItIs_data()
{
    QTest::addColumn<KdAudioFormat>("asked");
    using KdVBLMODEL::fbmConstant;
    using KdVBLMODEL::fbmVariable;
    QTest::newRow("default") << KdAudioFormat();
    QTest::newRow("variable mono") << format(fbmVariable, 22050, 1, 128);
    QTest::newRow("variable, highest") << format(fbmVariable, 44100, 2, 512);
    QTest::newRow("constant mono, most of 22050 Hz") << format(fbmConstant, 22050, 1, 128);
    QTest::newRow("constant stereo, most of 22050 Hz") << format(fbmConstant, 22050, 2, 256);
    QTest::newRow("constant mono, most") << format(fbmConstant, 48000, 1, 160);
    QTest::newRow("constant stereo, most") << format(fbmConstant, 48000, 2, 320);
}

void tst_KdAacFormat::whatAacHasIsTakenAsItIs()
{
    QFETCH(KdAudioFormat, asked);
    const KdAacFormat given = nearestAacFormat(asked);
    QCOMPARE(given.samplerate, asked.samplerate);
    QCOMPARE(given.channels, asked.channels);
    QCOMPARE(given.bitrate, asked.bitrate);
    QCOMPARE(given.isConstant, asked.bitrateMode == KdVBLMODEL::fbmConstant);
    QCOMPARE(given.note, QString());
}

void tst_KdAacFormat::nearestIsTakenAndNamed_data()
{
    QTest::addColumn<KdAudioFormat>("asked");
    QTest::addColumn<int>("bitrate");
    QTest::addColumn<bool>("isConstant");
    QTest::addColumn<QString>("difference");
    using KdVBLMODEL::fbmConstant;
    using KdVBLMODEL::fbmVariable;
    QTest::newRow("more than AAC holds, mono")
        << format(fbmVariable, 22050, 1, 512) << 132300 << false
        << QStringLiteral("132300 bit/s instead of 512000");
    QTest::newRow("more than AAC holds, stereo")
        << format(fbmVariable, 24000, 2, 512) << 288000 << false
        << QStringLiteral("288000 bit/s instead of 512000");
    QTest::newRow("more than AAC holds, constant")
        << format(fbmConstant, 22050, 2, 512) << 264600 << true
        << QStringLiteral("264600 bit/s instead of 512000");
    QTest::newRow("more than a constant one holds, stereo")
        << format(fbmConstant, 44100, 2, 512) << 512000 << false
        << QStringLiteral("a variable bit rate, since constant ones end at 320000 bit/s");
    QTest::newRow("more than a constant one holds, mono")
        << format(fbmConstant, 96000, 1, 192) << 192000 << false
        << QStringLiteral("a variable bit rate, since constant ones end at 160000 bit/s");
}

void tst_KdAacFormat::nearestIsTakenAndNamed()
{
    QFETCH(KdAudioFormat, asked);
    QFETCH(int, bitrate);
    QFETCH(bool, isConstant);
    QFETCH(QString, difference);
    const KdAacFormat given = nearestAacFormat(asked);
    QCOMPARE(given.samplerate, asked.samplerate);
    QCOMPARE(given.channels, asked.channels);
    QCOMPARE(given.bitrate, bitrate);
    QCOMPARE(given.isConstant, isConstant);
    QCOMPARE(given.note,
             QStringLiteral("The nearest that AAC has is recorded: %1.").arg(difference));
}

void tst_KdAacFormat::everyFieldMayHoldAnything_data()
{
    QTest::addColumn<int>("value");
    for (const int value :
         {std::numeric_limits<int>::min(), -1, 0, 1, 7, std::numeric_limits<int>::max()}) {
        QTest::newRow(qPrintable(QString::number(value))) << value;
    }
}

void tst_KdAacFormat::everyFieldMayHoldAnything()
{
    QFETCH(int, value);
    KdAudioFormat asked;
    asked.bitrateMode = asked.fourcc = asked.bitrate = value;
    asked.channels = asked.samplerate = asked.bitPerSample = value;
    const KdAacFormat given = nearestAacFormat(asked);
    QVERIFY(given.channels == 1 || given.channels == 2);
    QVERIFY(given.samplerate >= 8000 && given.samplerate <= 96000);
    QVERIFY(given.bitrate >= 16000 * given.channels);
    QVERIFY(given.bitrate <= aacMaxBitrate(given.samplerate, given.channels));
    QVERIFY(!given.note.isEmpty());
}

void tst_KdAacFormat::everyOfferedChoiceStaysWithinAac()
{
    for (const int rate : {22050, 24000, 32000, 44100, 48000, 96000}) {
        for (const int kilobits : {96, 128, 160, 192, 256, 320, 512}) {
            for (const int channels : {1, 2}) {
                for (const int mode : {1, 2}) {
                    const KdAudioFormat asked = format(mode, rate, channels, kilobits);
                    const KdAacFormat given = nearestAacFormat(asked);
                    QCOMPARE(given.samplerate, rate);
                    QCOMPARE(given.channels, channels);
                    QCOMPARE(given.bitrate, qMin(kilobits * 1000, 6 * rate * channels));
                }
            }
        }
    }
}

void tst_KdAacFormat::textNamesEverything()
{
    QCOMPARE(aacFormatText(nearestAacFormat(format(2, 48000, 1, 96))),
             QStringLiteral("AAC, 48000 Hz, 1 channels, 96 kbit/s constant"));
    QCOMPARE(aacFormatText(nearestAacFormat(KdAudioFormat())),
             QStringLiteral("AAC, 44100 Hz, 2 channels, 128 kbit/s variable"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAacFormat>(argc, argv);
}

#include "tst_KdAacFormat.moc"
