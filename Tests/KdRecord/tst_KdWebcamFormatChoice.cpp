#include <KdRecord/KdWebcamFormatChoice.h>
#include <KdRecord/KdWebcamTakeParams.h>
#include <Support/KdTestCase.h>

using namespace KdVBLMODEL;

/** Sizes and rates as they are read and chosen, and what a take is recorded with. */
class tst_KdWebcamFormatChoice : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void ratesHaveTwoSignificantDigits_data();
    void ratesHaveTwoSignificantDigits();
    void sizesReadAsWidthAndHeight();
    void storedSizeCountsWhereItIsOffered_data();
    void storedSizeCountsWhereItIsOffered();
    void storedRateCountsWhereItIsOne_data();
    void storedRateCountsWhereItIsOne();
    void rowOfARate_data();
    void rowOfARate();
    void takeIsComposed_data();
    void takeIsComposed();
};

void tst_KdWebcamFormatChoice::ratesHaveTwoSignificantDigits_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << 30.0 << QStringLiteral("30 fps");
    QTest::newRow("29.97") << 29.97 << QStringLiteral("30 fps");
    QTest::newRow("23.976") << 23.976 << QStringLiteral("24 fps");
    QTest::newRow("one digit") << 5.0 << QStringLiteral("5 fps");
    QTest::newRow("with a fraction") << 7.5 << QStringLiteral("7.5 fps");
    QTest::newRow("below one") << 0.25 << QStringLiteral("0.25 fps");
}

void tst_KdWebcamFormatChoice::ratesHaveTwoSignificantDigits()
{
    QFETCH(double, rate);
    QTEST(KdWebcamFormatChoice::rateText(rate), "text");
}

void tst_KdWebcamFormatChoice::sizesReadAsWidthAndHeight()
{
    QCOMPARE(KdWebcamFormatChoice::sizeText(QSize(1280, 720)), QStringLiteral("1280x720"));
}

void tst_KdWebcamFormatChoice::storedSizeCountsWhereItIsOffered_data()
{
    QTest::addColumn<QSize>("stored");
    QTest::addColumn<QSize>("chosen");
    const QSize current(1920, 1080);
    QTest::newRow("offered") << QSize(1280, 720) << QSize(1280, 720);
    QTest::newRow("not offered") << QSize(800, 600) << current;
    QTest::newRow("not stored") << QSize(-1, -1) << current;
    QTest::newRow("zero") << QSize(0, 0) << current;
    QTest::newRow("turned") << QSize(720, 1280) << current;
}

void tst_KdWebcamFormatChoice::storedSizeCountsWhereItIsOffered()
{
    QFETCH(QSize, stored);
    const QList<QSize> offered{QSize(640, 480), QSize(1280, 720), QSize(1920, 1080)};
    QTEST(KdWebcamFormatChoice::chosenSize(stored, offered, QSize(1920, 1080)), "chosen");
    QCOMPARE(KdWebcamFormatChoice::chosenSize(stored, {}, QSize(640, 480)), QSize(640, 480));
}

void tst_KdWebcamFormatChoice::storedRateCountsWhereItIsOne_data()
{
    QTest::addColumn<double>("stored");
    QTest::addColumn<double>("chosen");
    QTest::newRow("stored") << 15.0 << 15.0;
    QTest::newRow("not stored") << -1.0 << 30.0;
    QTest::newRow("zero") << 0.0 << 30.0;
}

void tst_KdWebcamFormatChoice::storedRateCountsWhereItIsOne()
{
    QFETCH(double, stored);
    QTEST(KdWebcamFormatChoice::chosenRate(stored, 30.0), "chosen");
}

void tst_KdWebcamFormatChoice::rowOfARate_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("row");
    QTest::newRow("the first of two that read alike") << 30.0 << 1;
    QTest::newRow("the second of them") << 29.97 << 2;
    QTest::newRow("as near as a store keeps it") << 29.9700001 << 2;
    QTest::newRow("one that only reads alike") << 29.6 << 1;
    QTest::newRow("none") << 25.0 << -1;
}

void tst_KdWebcamFormatChoice::rowOfARate()
{
    QFETCH(double, rate);
    QTEST(KdWebcamFormatChoice::rateRow({60.0, 30.0, 29.97}, rate), "row");
    QCOMPARE(KdWebcamFormatChoice::rateRow({}, rate), -1);
}

void tst_KdWebcamFormatChoice::takeIsComposed_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("hasSound");
    QTest::addColumn<int>("index");
    QTest::newRow("with sound") << 2 << true << 2;
    QTest::newRow("without") << -1 << false << -1;
    QTest::newRow("nonsense") << -7 << false << -1;
}

void tst_KdWebcamFormatChoice::takeIsComposed()
{
    QFETCH(int, row);
    QFETCH(bool, hasSound);
    QFETCH(int, index);
    const auto params = KdWebcamTakeParams::compose(QStringLiteral("/clip.mp4"), row, 29.97);
    QCOMPARE(params.recordAudio, hasSound);
    QCOMPARE(params.audioIndex, index);
    QCOMPARE(params.outputName, QStringLiteral("/clip.mp4"));
    QCOMPARE(params.interval, 100);
    QCOMPARE(params.video.fourcc, kFourCcH264);
    QCOMPARE(params.video.frameRate, 29.97);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamFormatChoice>(argc, argv);
}

#include "tst_KdWebcamFormatChoice.moc"
