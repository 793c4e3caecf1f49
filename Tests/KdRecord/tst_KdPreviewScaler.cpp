#include <KdRecord/KdPreviewScaler.h>

#include <Support/KdTestCase.h>

#include <QRgb>

#include <cstring>
#include <vector>

using namespace KdPreviewScaler;

namespace {

std::vector<QRgb> noise(int count, quint32 seed, bool isOpaque)
{
    std::vector<QRgb> pixels;
    for (int i = 0; i < count; ++i) {
        seed = seed * 1664525U + 1013904223U;
        pixels.push_back(isOpaque ? (seed >> 8U) | 0xff000000U : seed);
    }
    return pixels;
}

const uchar* bytesOf(const std::vector<QRgb>& pixels)
{
    return reinterpret_cast<const uchar*>(pixels.data());
}

} // namespace

class tst_KdPreviewScaler : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void mixesInProportion_data();
    void mixesInProportion();
    void transparentPixelsCountByTheirOpacity();
    void aStretchIsFilledWithMixedPixels_data();
    void aStretchIsFilledWithMixedPixels();
    void onePixelIsItsOwnNeighbour();
    void stopsTryingAtTheFirstTransparentPixel();
    void pixelsOfAnyAlignmentAreRead();
};

void tst_KdPreviewScaler::mixesInProportion_data()
{
    QTest::addColumn<quint32>("columnPart");
    QTest::addColumn<quint32>("rowPart");
    QTest::addColumn<QRgb>("pixel");

    QTest::newRow("upper left") << 0U << 0U << qRgb(200, 0, 0);
    QTest::newRow("upper right") << 256U << 0U << qRgb(0, 200, 0);
    QTest::newRow("lower left") << 0U << 256U << qRgb(0, 0, 200);
    QTest::newRow("lower right") << 256U << 256U << qRgb(200, 200, 200);
    QTest::newRow("between columns") << 128U << 0U << qRgb(100, 100, 0);
    QTest::newRow("between rows") << 0U << 64U << qRgb(150, 0, 50);
    QTest::newRow("the middle") << 128U << 128U << qRgb(100, 100, 100);
}

void tst_KdPreviewScaler::mixesInProportion()
{
    QFETCH(quint32, columnPart);
    QFETCH(quint32, rowPart);
    QFETCH(QRgb, pixel);
    const std::vector<QRgb> upper{qRgb(200, 0, 0), qRgb(0, 200, 0)};
    const std::vector<QRgb> lower{qRgb(0, 0, 200), qRgb(200, 200, 200)};
    const Rows rows{bytesOf(upper), bytesOf(lower), rowPart, 2};
    QCOMPARE(mixed(rows, {0, columnPart}), pixel);
}

void tst_KdPreviewScaler::transparentPixelsCountByTheirOpacity()
{
    const std::vector<QRgb> row{qRgba(200, 100, 50, 255), qRgba(255, 255, 255, 0)};
    const Rows rows{bytesOf(row), bytesOf(row), 0, 2};
    QCOMPARE(mixed(rows, {0, 0}), qRgb(200, 100, 50));
    QCOMPARE(mixed(rows, {0, 128}), qRgb(100, 50, 25));
    QCOMPARE(mixed(rows, {0, 256}), qRgb(0, 0, 0));
}

void tst_KdPreviewScaler::aStretchIsFilledWithMixedPixels_data()
{
    QTest::addColumn<bool>("isOpaque");
    QTest::newRow("opaque") << true;
    QTest::newRow("transparent") << false;
}

/** Whichever way the processor takes, to the last bit. */
void tst_KdPreviewScaler::aStretchIsFilledWithMixedPixels()
{
    QFETCH(bool, isOpaque);
    constexpr int width = 97;
    const std::vector<QRgb> upper = noise(width, 1, isOpaque);
    const std::vector<QRgb> lower = noise(width, 2, isOpaque);
    std::vector<Neighbours> columns;
    columns.reserve(300);
    for (int i = 0; i < 300; ++i) {
        columns.push_back({i * 7 % (width - 1), quint32(i * 37 % 257)});
    }
    for (quint32 rowPart = 0; rowPart <= kWhole; ++rowPart) {
        const Rows rows{bytesOf(upper), bytesOf(lower), rowPart, width};
        std::vector<quint32> out(columns.size(), 0x12345678U);
        bool hasBeenOpaque = true;
        fill(out.data(), rows, columns, 3, 299, &hasBeenOpaque);
        QCOMPARE(hasBeenOpaque, isOpaque);
        QCOMPARE(out.at(2), 0x12345678U);
        QCOMPARE(out.at(299), 0x12345678U);
        for (std::size_t x = 3; x < 299; ++x) {
            QCOMPARE(out.at(x), mixed(rows, columns.at(x)));
        }
    }
}

void tst_KdPreviewScaler::onePixelIsItsOwnNeighbour()
{
    const std::vector<QRgb> one{qRgb(10, 20, 30)};
    const Rows rows{bytesOf(one), bytesOf(one), 100, 1};
    std::vector<quint32> out(3);
    bool isOpaque = true;
    fill(out.data(), rows, {{0, 0}, {0, 128}, {0, 256}}, 0, 3, &isOpaque);
    QCOMPARE(out, std::vector<quint32>(3, qRgb(10, 20, 30)));
}

void tst_KdPreviewScaler::stopsTryingAtTheFirstTransparentPixel()
{
    std::vector<QRgb> row(8, qRgb(90, 90, 90));
    row.at(6) = qRgba(90, 90, 90, 254);
    const Rows rows{bytesOf(row), bytesOf(row), 0, 8};
    std::vector<quint32> out(2);
    bool isOpaque = true;
    fill(out.data(), rows, {{0, 0}, {4, 10}}, 0, 2, &isOpaque);
    QVERIFY(isOpaque);
    fill(out.data(), rows, {{0, 0}, {5, 0}}, 0, 2, &isOpaque);
    QVERIFY(!isOpaque);
    fill(out.data(), rows, {{0, 0}, {0, 0}}, 0, 2, &isOpaque);
    QVERIFY(!isOpaque);
    QCOMPARE(out, std::vector<quint32>(2, qRgb(90, 90, 90)));
}

void tst_KdPreviewScaler::pixelsOfAnyAlignmentAreRead()
{
    const std::vector<QRgb> aligned = noise(20, 3, true);
    std::vector<uchar> shifted(aligned.size() * 4 + 1);
    std::memcpy(shifted.data() + 1, aligned.data(), aligned.size() * 4);
    const std::vector<Neighbours> columns{{0, 3}, {5, 200}, {18, 256}};
    std::vector<quint32> expected(3);
    std::vector<quint32> out(3);
    bool isOpaque = true;
    fill(expected.data(), {bytesOf(aligned), bytesOf(aligned), 0, 20}, columns, 0, 3, &isOpaque);
    fill(out.data(), {shifted.data() + 1, shifted.data() + 1, 0, 20}, columns, 0, 3, &isOpaque);
    QCOMPARE(out, expected);
    QVERIFY(isOpaque);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPreviewScaler>(argc, argv);
}

#include "tst_KdPreviewScaler.moc"
