#include <KdVBLModel/KdFrameRate.h>
#include <Support/KdTestCase.h>

#include <limits>

class tst_KdFrameRate : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void ratesAreTakenAsTheyAreMeant_data();
    void ratesAreTakenAsTheyAreMeant();
    void impossibleRatesAreNone_data();
    void impossibleRatesAreNone();
};

void tst_KdFrameRate::ratesAreTakenAsTheyAreMeant_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("numerator");
    QTest::addColumn<int>("denominator");
    QTest::newRow("30") << 30.0 << 30 << 1;
    QTest::newRow("29.97") << 29.97 << 30000 << 1001;
    QTest::newRow("29.97, exactly") << 30000.0 / 1001.0 << 30000 << 1001;
    QTest::newRow("59.94") << 59.94 << 60000 << 1001;
    QTest::newRow("23.976") << 23.976 << 24000 << 1001;
    QTest::newRow("14.985") << 14.985 << 15000 << 1001;
    QTest::newRow("25") << 25.0 << 25 << 1;
    QTest::newRow("7.5") << 7.5 << 7500 << 1000;
    QTest::newRow("least") << 1.0 << 1 << 1;
    QTest::newRow("most") << 240.0 << 240 << 1;
    QTest::newRow("rounded from 30") << 30.000030000030001 << 30 << 1;
}

void tst_KdFrameRate::ratesAreTakenAsTheyAreMeant()
{
    QFETCH(double, value);
    const std::optional<KdFrameRate> rate = KdFrameRate::of(value);
    QVERIFY(rate);
    QTEST(rate->numerator, "numerator");
    QTEST(rate->denominator, "denominator");
    QVERIFY(qAbs(rate->value() - value) < 0.006);
}

void tst_KdFrameRate::impossibleRatesAreNone_data()
{
    QTest::addColumn<double>("value");
    QTest::newRow("0") << 0.0;
    QTest::newRow("below 0") << -30.0;
    QTest::newRow("below 1") << 0.99;
    QTest::newRow("1000") << 1000.0;
    QTest::newRow("endless") << std::numeric_limits<double>::infinity();
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
}

void tst_KdFrameRate::impossibleRatesAreNone()
{
    QFETCH(double, value);
    QVERIFY(!KdFrameRate::of(value));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdFrameRate>(argc, argv);
}

#include "tst_KdFrameRate.moc"
