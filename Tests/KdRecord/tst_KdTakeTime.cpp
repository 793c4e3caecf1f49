#include "Support/KdTestCase.h"

#include <KdRecord/KdTakeTime.h>

#include <limits>

class tst_KdTakeTime : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void secondsAreTruncated_data();
    void secondsAreTruncated();
    void textHasTwoDigitsEach_data();
    void textHasTwoDigitsEach();
    void projectRateComesFromTheFraction_data();
    void projectRateComesFromTheFraction();
    void framesAreRoundedHalvesUp_data();
    void framesAreRoundedHalvesUp();
};

void tst_KdTakeTime::secondsAreTruncated_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<int>("seconds");
    QTest::newRow("nothing") << qint64(0) << 0;
    QTest::newRow("just under a second") << qint64(999) << 0;
    QTest::newRow("a second") << qint64(1000) << 1;
    QTest::newRow("under ten") << qint64(9999) << 9;
    QTest::newRow("an hour") << qint64(3600000) << 3600;
    QTest::newRow("negative") << qint64(-5000) << 0;
    QTest::newRow("longest") << std::numeric_limits<qint64>::max() << 2147483520;
}

void tst_KdTakeTime::secondsAreTruncated()
{
    QFETCH(qint64, milliseconds);
    QFETCH(int, seconds);
    QCOMPARE(KdTakeTime::toWholeSeconds(milliseconds), seconds);
}

void tst_KdTakeTime::textHasTwoDigitsEach_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("idle") << 0 << QStringLiteral(" 00:00:00");
    QTest::newRow("seconds") << 9 << QStringLiteral(" 00:00:09");
    QTest::newRow("a minute") << 60 << QStringLiteral(" 00:01:00");
    QTest::newRow("under an hour") << 3599 << QStringLiteral(" 00:59:59");
    QTest::newRow("hours") << 3661 << QStringLiteral(" 01:01:01");
    QTest::newRow("more than two digits of hours") << 360000 << QStringLiteral(" 100:00:00");
    QTest::newRow("negative") << -1 << QStringLiteral(" 00:00:00");
}

void tst_KdTakeTime::textHasTwoDigitsEach()
{
    QFETCH(int, seconds);
    QFETCH(QString, text);
    QCOMPARE(KdTakeTime::toText(seconds), text);
}

void tst_KdTakeTime::projectRateComesFromTheFraction_data()
{
    QTest::addColumn<qint64>("numerator");
    QTest::addColumn<qint64>("denominator");
    QTest::addColumn<float>("rate");
    const auto row = [](const char* name, qint64 numerator, qint64 denominator, double rate) {
        QTest::newRow(name) << numerator << denominator << static_cast<float>(rate);
    };
    row("film for television is 23.97, not the quotient", 24000, 1001, 23.97);
    row("the same rate in other terms is the quotient", 48000, 2002, 48000.0 / 2002.0);
    row("film", 24, 1, 24.0);
    row("television", 30000, 1001, 30000.0 / 1001.0);
    row("at most 60", 120, 1, 60.0);
    row("exactly 60", 60, 1, 60.0);
    row("no project", 0, 0, 0.0);
    row("no denominator", 24, 0, 0.0);
    row("negative", -24, 1, 0.0);
    row("both negative", -24, -1, 0.0);
}

void tst_KdTakeTime::projectRateComesFromTheFraction()
{
    QFETCH(qint64, numerator);
    QFETCH(qint64, denominator);
    QFETCH(float, rate);
    QCOMPARE(KdTakeTime::framesPerSecond(numerator, denominator), rate);
}

void tst_KdTakeTime::framesAreRoundedHalvesUp_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<float>("rate");
    QTest::addColumn<qint64>("frames");
    QTest::newRow("ten seconds of 23.97") << qint64(10000) << 23.97F << qint64(240);
    QTest::newRow("a half goes up") << qint64(500) << 25.0F << qint64(13);
    QTest::newRow("under a half goes down") << qint64(490) << 25.0F << qint64(12);
    QTest::newRow("part of a second counts") << qint64(1500) << 30.0F << qint64(45);
    QTest::newRow("nothing") << qint64(0) << 30.0F << qint64(0);
    QTest::newRow("no project") << qint64(10000) << 0.0F << qint64(0);
}

void tst_KdTakeTime::framesAreRoundedHalvesUp()
{
    QFETCH(qint64, milliseconds);
    QFETCH(float, rate);
    QFETCH(qint64, frames);
    QCOMPARE(KdTakeTime::toFrames(milliseconds, rate), frames);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeTime>(argc, argv);
}

#include "tst_KdTakeTime.moc"
