#include "Support/KdTestCase.h"

#include <Studio/StudioTimecode.h>

#include <algorithm>

class tst_StudioTimecode : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void ratesAreThoseOfTheRecorder_data();
    void ratesAreThoseOfTheRecorder();
    void framesRoundHalvesUp_data();
    void framesRoundHalvesUp();
    void framesComeBackAsTime();
    void texts_data();
    void texts();
    void pixelsAndFramesAgree();
    void scaleShowsTenSecondsAtLeast();
    void scaleSurvivesExtremes_data();
    void scaleSurvivesExtremes();
    void marksKeepTheirDistance_data();
    void marksKeepTheirDistance();
};

void tst_StudioTimecode::ratesAreThoseOfTheRecorder_data()
{
    QTest::addColumn<qint64>("numerator");
    QTest::addColumn<qint64>("denominator");
    QTest::addColumn<double>("rate");
    QTest::newRow("film on NTSC") << qint64(24000) << qint64(1001) << 23.97;
    QTest::newRow("NTSC") << qint64(30000) << qint64(1001) << 30000.0 / 1001.0;
    QTest::newRow("PAL") << qint64(25) << qint64(1) << 25.0;
    QTest::newRow("above the most") << qint64(120) << qint64(1) << 60.0;
    QTest::newRow("unknown") << qint64(0) << qint64(0) << 0.0;
    QTest::newRow("negative") << qint64(-25) << qint64(1) << 0.0;
}

void tst_StudioTimecode::ratesAreThoseOfTheRecorder()
{
    QFETCH(qint64, numerator);
    QFETCH(qint64, denominator);
    QFETCH(double, rate);
    QCOMPARE(StudioTimecode::framesPerSecond(numerator, denominator), rate);
}

void tst_StudioTimecode::framesRoundHalvesUp_data()
{
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<double>("rate");
    QTest::addColumn<qint64>("frames");
    QTest::newRow("10 s at 23.97") << qint64(10000) << 23.97 << qint64(240);
    QTest::newRow("half a frame") << qint64(20) << 25.0 << qint64(1);
    QTest::newRow("less than half") << qint64(19) << 25.0 << qint64(0);
    QTest::newRow("no rate") << qint64(10000) << 0.0 << qint64(0);
    QTest::newRow("negative time") << qint64(-10) << 25.0 << qint64(0);
}

void tst_StudioTimecode::framesRoundHalvesUp()
{
    QFETCH(qint64, ms);
    QFETCH(double, rate);
    QFETCH(qint64, frames);
    QCOMPARE(StudioTimecode::framesFromMs(ms, rate), frames);
}

void tst_StudioTimecode::framesComeBackAsTime()
{
    QCOMPARE(StudioTimecode::msFromFrames(250, 25.0), 10000);
    QCOMPARE(StudioTimecode::msFromFrames(1, 30.0), 33);
    QCOMPARE(StudioTimecode::msFromFrames(250, 0.0), 0);
}

void tst_StudioTimecode::texts_data()
{
    QTest::addColumn<qint64>("frames");
    QTest::addColumn<double>("rate");
    QTest::addColumn<QString>("text");
    QTest::newRow("start") << qint64(0) << 30.0 << QStringLiteral("00:00:00:00");
    QTest::newRow("frames") << qint64(29) << 30.0 << QStringLiteral("00:00:00:29");
    QTest::newRow("a second") << qint64(30) << 30.0 << QStringLiteral("00:00:01:00");
    QTest::newRow("fractional rate counts at the next whole one")
        << qint64(24) << 23.97 << QStringLiteral("00:00:01:00");
    QTest::newRow("an hour and more")
        << qint64(25 * 3723 + 4) << 25.0 << QStringLiteral("01:02:03:04");
    QTest::newRow("negative") << qint64(-4) << 25.0 << QStringLiteral("00:00:00:00");
    QTest::newRow("no rate") << qint64(2) << 0.0 << QStringLiteral("00:00:02:00");
}

void tst_StudioTimecode::texts()
{
    QFETCH(qint64, frames);
    QFETCH(double, rate);
    QFETCH(QString, text);
    QCOMPARE(StudioTimecode::text(frames, rate), text);
}

void tst_StudioTimecode::pixelsAndFramesAgree()
{
    const StudioTimelineScale scale = StudioTimelineScale::fit(3000, 30.0, 16, 600);
    QCOMPARE(scale.toPixel(0), 16);
    QCOMPARE(scale.toPixel(3000), 616);
    QCOMPARE(scale.toPixel(1500), 316);
    for (int pixel = 16; pixel <= 616; ++pixel) {
        QCOMPARE(scale.toPixel(scale.toFrame(pixel)), pixel);
    }
    QCOMPARE(scale.toFrame(0), 0);
}

void tst_StudioTimecode::scaleShowsTenSecondsAtLeast()
{
    const StudioTimelineScale scale = StudioTimelineScale::fit(1, 25.0, 0, 500);
    QCOMPARE(scale.toPixel(250), 500);
}

void tst_StudioTimecode::scaleSurvivesExtremes_data()
{
    QTest::addColumn<qint64>("frames");
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("width");
    QTest::newRow("no width") << qint64(100) << 25.0 << 0;
    QTest::newRow("negative width") << qint64(100) << 25.0 << -40;
    QTest::newRow("no rate") << qint64(0) << 0.0 << 300;
    QTest::newRow("a year") << qint64(60) * 86400 * 365 << 60.0 << 800;
}

void tst_StudioTimecode::scaleSurvivesExtremes()
{
    QFETCH(qint64, frames);
    QFETCH(double, rate);
    QFETCH(int, width);
    const StudioTimelineScale scale = StudioTimelineScale::fit(frames, rate, 0, width);
    QVERIFY(scale.pixelsPerFrame > 0.0);
    QVERIFY(scale.markStep(rate, 96) >= 1);
    QVERIFY(scale.toPixel(frames) <= std::max(1, width));
}

void tst_StudioTimecode::marksKeepTheirDistance_data()
{
    QTest::addColumn<qint64>("seconds");
    for (const qint64 seconds : {10, 30, 60, 600, 7200, 86400, 864000}) {
        QTest::newRow(qPrintable(QString::number(seconds))) << seconds;
    }
}

void tst_StudioTimecode::marksKeepTheirDistance()
{
    QFETCH(qint64, seconds);
    const StudioTimelineScale scale = StudioTimelineScale::fit(seconds * 25, 25.0, 0, 960);
    const qint64 step = scale.markStep(25.0, 96);
    QVERIFY(scale.toPixel(step) >= 95);
    QCOMPARE(step % 25, 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioTimecode>(argc, argv);
}

#include "tst_StudioTimecode.moc"
