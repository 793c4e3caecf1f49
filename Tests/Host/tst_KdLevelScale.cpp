#include <KdVBLModel/KdLevelScale.h>

#include <Support/KdTestCase.h>

#include <limits>

class tst_KdLevelScale : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theMeterShowsDecibelsEvenly_data();
    void theMeterShowsDecibelsEvenly();
    void aLouderSoundIsNeverShownLower();
};

void tst_KdLevelScale::theMeterShowsDecibelsEvenly_data()
{
    QTest::addColumn<double>("decibel");
    QTest::addColumn<int>("level");

    QTest::newRow("full scale") << 0.0 << 100;
    QTest::newRow("over full scale") << 6.0 << 100;
    QTest::newRow("amber begins at -6 dB") << -6.0 << 90;
    QTest::newRow("green ends at -18 dB") << -18.0 << 70;
    QTest::newRow("half way") << -30.0 << 50;
    QTest::newRow("just audible") << -59.0 << 2;
    QTest::newRow("the floor") << -60.0 << 0;
    QTest::newRow("below the floor") << -91.0 << 0;
    QTest::newRow("digital silence") << -std::numeric_limits<double>::infinity() << 0;
    QTest::newRow("infinitely loud") << std::numeric_limits<double>::infinity() << 100;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0;
}

void tst_KdLevelScale::theMeterShowsDecibelsEvenly()
{
    QFETCH(double, decibel);
    QTEST(KdLevelScale::fromDecibel(decibel), "level");
}

void tst_KdLevelScale::aLouderSoundIsNeverShownLower()
{
    int former = 0;
    for (int step = 0; step <= 1460; ++step) {
        const double decibel = -70.0 + 0.05 * step;
        const int level = KdLevelScale::fromDecibel(decibel);
        QVERIFY2(level >= former, qPrintable(QString::number(decibel)));
        former = level;
    }
    QCOMPARE(former, 100);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdLevelScale>(argc, argv);
}

#include "tst_KdLevelScale.moc"
