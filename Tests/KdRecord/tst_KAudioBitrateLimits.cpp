#include <KdRecord/KAudioBitrateLimits.h>

#include <Support/KdTestCase.h>

class tst_KAudioBitrateLimits : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyBitrateStandsInAscendingOrder();
    void limitsBySampleRateAndChannels_data();
    void limitsBySampleRateAndChannels();
    void otherCombinationsHaveNoLimitOfTheirOwn_data();
    void otherCombinationsHaveNoLimitOfTheirOwn();
    void offersWhatDoesNotExceedTheLimit_data();
    void offersWhatDoesNotExceedTheLimit();
};

void tst_KAudioBitrateLimits::everyBitrateStandsInAscendingOrder()
{
    QCOMPARE(KAudioBitrateLimits::all(), QVector<int>({96, 128, 160, 192, 256, 320, 512}));
}

void tst_KAudioBitrateLimits::limitsBySampleRateAndChannels_data()
{
    QTest::addColumn<int>("sampleRate");
    QTest::addColumn<int>("mono");
    QTest::addColumn<int>("stereo");

    QTest::newRow("22050") << 22050 << 132 << 265;
    QTest::newRow("24000, stereo lower than at 22050") << 24000 << 144 << 244;
    QTest::newRow("32000") << 32000 << 192 << 384;
    QTest::newRow("44100") << 44100 << 265 << 512;
    QTest::newRow("48000, mono as stereo") << 48000 << 512 << 512;
    QTest::newRow("96000, mono as stereo") << 96000 << 512 << 512;
}

void tst_KAudioBitrateLimits::limitsBySampleRateAndChannels()
{
    QFETCH(int, sampleRate);
    QFETCH(int, mono);
    QFETCH(int, stereo);
    QCOMPARE(KAudioBitrateLimits::limit(sampleRate, 1), std::optional<int>(mono));
    QCOMPARE(KAudioBitrateLimits::limit(sampleRate, 2), std::optional<int>(stereo));
}

void tst_KAudioBitrateLimits::otherCombinationsHaveNoLimitOfTheirOwn_data()
{
    QTest::addColumn<int>("sampleRate");
    QTest::addColumn<int>("channels");

    QTest::newRow("sample rate not offered") << 16000 << 2;
    QTest::newRow("sample rate 0") << 0 << 1;
    QTest::newRow("negative sample rate") << -44100 << 1;
    QTest::newRow("three channels") << 44100 << 3;
    QTest::newRow("no channel") << 44100 << 0;
    QTest::newRow("negative channels") << 44100 << -1;
    QTest::newRow("channels beyond everything") << 48000 << std::numeric_limits<int>::max();
}

void tst_KAudioBitrateLimits::otherCombinationsHaveNoLimitOfTheirOwn()
{
    QFETCH(int, sampleRate);
    QFETCH(int, channels);
    QVERIFY(!KAudioBitrateLimits::limit(sampleRate, channels));
}

void tst_KAudioBitrateLimits::offersWhatDoesNotExceedTheLimit_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<QVector<int>>("offered");

    QTest::newRow("132") << 132 << QVector<int>{96, 128};
    QTest::newRow("144") << 144 << QVector<int>{96, 128};
    QTest::newRow("192, the limit itself") << 192 << QVector<int>{96, 128, 160, 192};
    QTest::newRow("244") << 244 << QVector<int>{96, 128, 160, 192};
    QTest::newRow("265") << 265 << QVector<int>{96, 128, 160, 192, 256};
    QTest::newRow("384") << 384 << QVector<int>{96, 128, 160, 192, 256, 320};
    QTest::newRow("512") << 512 << KAudioBitrateLimits::all();
    QTest::newRow("unlimited") << KAudioBitrateLimits::Unlimited << KAudioBitrateLimits::all();
    QTest::newRow("below the lowest") << 95 << QVector<int>{};
}

void tst_KAudioBitrateLimits::offersWhatDoesNotExceedTheLimit()
{
    QFETCH(int, limit);
    QFETCH(QVector<int>, offered);
    QCOMPARE(KAudioBitrateLimits::offered(limit), offered);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KAudioBitrateLimits>(argc, argv);
}

#include "tst_KAudioBitrateLimits.moc"
