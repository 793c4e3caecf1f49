#include <KdVBLModel/KdFrameGrid.h>
#include <Support/KdTestCase.h>

#include <QVector>

#include <cmath>

namespace {

constexpr qint64 kSecond = 1000000000;

/** When a camera of this rate takes a picture, wrong by up to the jitter. */
qint64 taken(int index, double rate, qint64 jitterNs)
{
    const auto exact = static_cast<qint64>(std::llround(index * 1e9 / rate));
    // Known beforehand, and without a pattern that fits the pictures.
    const quint32 mixed = static_cast<quint32>(index) * 2654435761U;
    const qint64 random = mixed;
    const qint64 error = jitterNs == 0 ? 0 : random % (2 * jitterNs + 1) - jitterNs;
    return kSecond + exact + error;
}

} // namespace

class tst_KdFrameGrid : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void anEvenCameraIsPlacedEvenly_data();
    void anEvenCameraIsPlacedEvenly();
    void everyPictureIsNearItsTime_data();
    void everyPictureIsNearItsTime();
    void aFirstPictureThatCameLateDelaysNoOthers();
    void picturesNeverStandStillOrGoBack();
    void aGapStaysAGap();
    void dayLongTakesDoNotOverflow();
};

void tst_KdFrameGrid::anEvenCameraIsPlacedEvenly_data()
{
    QTest::addColumn<int>("numerator");
    QTest::addColumn<int>("denominator");
    QTest::addColumn<qint64>("jitterNs");
    QTest::newRow("30") << 30 << 1 << qint64(0);
    QTest::newRow("30, swinging by 5 ms") << 30 << 1 << qint64(5000000);
    QTest::newRow("29.97, swinging by 5 ms") << 30000 << 1001 << qint64(5000000);
    QTest::newRow("5, swinging by 6 ms") << 5 << 1 << qint64(6000000);
    QTest::newRow("120, swinging by 1 ms") << 120 << 1 << qint64(1000000);
}

void tst_KdFrameGrid::anEvenCameraIsPlacedEvenly()
{
    QFETCH(int, numerator);
    QFETCH(int, denominator);
    QFETCH(qint64, jitterNs);
    const double rate = static_cast<double>(numerator) / denominator;
    KdFrameGrid grid(numerator, denominator);
    const qint64 first = grid.place(taken(0, rate, jitterNs));
    for (int i = 1; i < 5000; ++i) {
        const qint64 shown = grid.place(taken(i, rate, jitterNs));
        const qint64 even = first + static_cast<qint64>(std::llround(i * 1e9 / rate));
        QVERIFY2(qAbs(shown - even) <= 1, qPrintable(QString::number(i)));
    }
}

void tst_KdFrameGrid::everyPictureIsNearItsTime_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<qint64>("jitterNs");
    QTest::newRow("as asked") << 30.0 << qint64(2000000);
    QTest::newRow("a little slow") << 29.9 << qint64(2000000);
    QTest::newRow("a little fast") << 30.1 << qint64(2000000);
    QTest::newRow("24") << 24.0 << qint64(0);
    QTest::newRow("20") << 20.0 << qint64(3000000);
    QTest::newRow("15") << 15.0 << qint64(3000000);
    QTest::newRow("7.3") << 7.3 << qint64(3000000);
    QTest::newRow("60") << 60.0 << qint64(0);
}

void tst_KdFrameGrid::everyPictureIsNearItsTime()
{
    QFETCH(double, rate);
    QFETCH(qint64, jitterNs);
    KdFrameGrid grid(30, 1);
    for (int i = 0; i < 3000; ++i) {
        const qint64 at = taken(i, rate, jitterNs);
        QVERIFY2(qAbs(grid.place(at) - at) <= grid.toleranceNs(), qPrintable(QString::number(i)));
    }
}

void tst_KdFrameGrid::aFirstPictureThatCameLateDelaysNoOthers()
{
    KdFrameGrid grid(30, 1);
    grid.place(taken(0, 30.0, 0) + 12000000);
    qint64 shown = 0;
    for (int i = 1; i < 40; ++i) {
        shown = grid.place(taken(i, 30.0, 0));
    }
    QVERIFY2(qAbs(shown - taken(39, 30.0, 0)) < 100000, qPrintable(QString::number(shown)));
    for (int i = 40; i < 1000; ++i) {
        const qint64 next = grid.place(taken(i, 30.0, 0));
        QVERIFY(qAbs(next - shown - grid.frameNs()) <= 1);
        shown = next;
    }
}

void tst_KdFrameGrid::picturesNeverStandStillOrGoBack()
{
    KdFrameGrid grid(30, 1);
    qint64 last = grid.place(kSecond);
    // The same time again, times that go back, and a burst.
    for (const qint64 at : {kSecond, kSecond - 500000000, qint64(0), -kSecond, kSecond + 1,
                            kSecond + 2, kSecond + 3}) {
        const qint64 shown = grid.place(at);
        QVERIFY(shown > last);
        QVERIFY(shown - last >= grid.frameNs() / 4);
        last = shown;
    }
    // And back to where they belong.
    const qint64 later = 3 * kSecond;
    QVERIFY(qAbs(grid.place(later) - later) <= grid.toleranceNs());
}

void tst_KdFrameGrid::aGapStaysAGap()
{
    KdFrameGrid grid(30, 1);
    grid.place(0);
    const qint64 at = 10 * kSecond + 7000000;
    QVERIFY(qAbs(grid.place(at) - at) <= grid.toleranceNs());
}

void tst_KdFrameGrid::dayLongTakesDoNotOverflow()
{
    KdFrameGrid grid(30000, 1001);
    const qint64 week = qint64(7) * 24 * 3600 * kSecond;
    grid.place(0);
    qint64 last = grid.place(week);
    QVERIFY(qAbs(last - week) <= grid.toleranceNs());
    for (int i = 1; i < 100; ++i) {
        const qint64 shown = grid.place(week + i * grid.frameNs());
        QVERIFY(qAbs(shown - last - grid.frameNs()) <= 1);
        last = shown;
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdFrameGrid>(argc, argv);
}

#include "tst_KdFrameGrid.moc"
