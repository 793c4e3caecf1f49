#include <KdVBLModel/KdPictureShaper.h>
#include <Support/KdTestCase.h>

#include <cmath>
#include <vector>

using namespace KdVBLMODEL;

namespace {

constexpr uint8_t kBlack = 16;

/** A picture with padded lines, which must stay as they are. */
class Picture
{
public:
    explicit Picture(QSize size, uint8_t value = 0xEE) : m_size(size)
    {
        for (size_t i = 0; i < m_planes.size(); ++i) {
            m_planes[i].assign(static_cast<size_t>(stride(i)) * static_cast<size_t>(height(i)),
                               value);
        }
    }

    int width(size_t plane) const { return plane == 0 ? m_size.width() : m_size.width() / 2; }
    int height(size_t plane) const { return plane == 0 ? m_size.height() : m_size.height() / 2; }
    int stride(size_t plane) const { return width(plane) + 5; }
    uint8_t& at(size_t plane, int x, int y)
    {
        return m_planes[plane][static_cast<size_t>(y) * static_cast<size_t>(stride(plane)) +
                               static_cast<size_t>(x)];
    }

    KdPicturePlanes<uint8_t> planes()
    {
        return {{m_planes[0].data(), m_planes[1].data(), m_planes[2].data()},
                {stride(0), stride(1), stride(2)}};
    }
    KdPicturePlanes<const uint8_t> constPlanes() const
    {
        return {{m_planes[0].data(), m_planes[1].data(), m_planes[2].data()},
                {stride(0), stride(1), stride(2)}};
    }

private:
    QSize m_size;
    std::array<std::vector<uint8_t>, 3> m_planes;
};

uint8_t value(size_t plane, int x, int y)
{
    return static_cast<uint8_t>(x * 31 + y * 17 + static_cast<int>(plane) * 101);
}

Picture source(QSize size)
{
    Picture picture(size);
    for (size_t plane = 0; plane < 3; ++plane) {
        for (int y = 0; y < picture.height(plane); ++y) {
            for (int x = 0; x < picture.width(plane); ++x) {
                picture.at(plane, x, y) = value(plane, x, y);
            }
        }
    }
    return picture;
}

} // namespace

class tst_KdPictureShaper : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyPixelIsWhereItBelongs_data();
    void everyPixelIsWhereItBelongs();
    void theRimIsSmooth();
    void blackIsBlackInFullRangeToo();
};

void tst_KdPictureShaper::everyPixelIsWhereItBelongs_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("isFlipped");
    QTest::addColumn<bool>("isCircle");
    for (const QSize size : {QSize(64, 48), QSize(48, 64), QSize(32, 32), QSize(2, 2), QSize(16, 2),
                             QSize(38, 22), QSize(642, 482)}) {
        for (int look = 0; look < 4; ++look) {
            QTest::addRow("%dx%d%s%s", size.width(), size.height(), look & 1 ? ", flipped" : "",
                          look & 2 ? ", circle" : "")
                << size << bool(look & 1) << bool(look & 2);
        }
    }
}

// The plain way, pixel by pixel.
void tst_KdPictureShaper::everyPixelIsWhereItBelongs()
{
    QFETCH(QSize, size);
    QFETCH(bool, isFlipped);
    QFETCH(bool, isCircle);
    Picture result(size);
    const KdPictureShaper shaper(size, kBlack);
    shaper.shape(source(size).constPlanes(), result.planes(), isFlipped,
                 isCircle ? fcrsCircle : fcrsSquare);
    for (size_t plane = 0; plane < 3; ++plane) {
        const int width = result.width(plane);
        const int height = result.height(plane);
        const int black = plane == 0 ? kBlack : 128;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const double distance = std::hypot(x + 0.5 - width / 2.0, y + 0.5 - height / 2.0);
                const double inside =
                    isCircle ? std::min(width, height) / 2.0 - distance + 0.5 : 1.0;
                const double share = std::min(1.0, std::max(0.0, inside));
                const int from = value(plane, isFlipped ? width - 1 - x : x, y);
                const double expected = black + (from - black) * share;
                QVERIFY2(std::abs(result.at(plane, x, y) - expected) <= 1.5,
                         qPrintable(QStringLiteral("%1: %2,%3").arg(plane).arg(x).arg(y)));
            }
            QCOMPARE(int(result.at(plane, width, y)), 0xEE);
        }
    }
}

void tst_KdPictureShaper::theRimIsSmooth()
{
    const QSize size(200, 100);
    Picture white(size, 235);
    Picture result(size);
    KdPictureShaper(size, kBlack).shape(white.constPlanes(), result.planes(), false, fcrsCircle);
    int between = 0;
    for (int y = 0; y < 100; ++y) {
        int grey = 0;
        for (int x = 1; x < 100; ++x) {
            const int step = result.at(0, x, y) - result.at(0, x - 1, y);
            QVERIFY(step >= 0); // brighter towards the middle
            grey += result.at(0, x, y) > kBlack && result.at(0, x, y) < 235 ? 1 : 0;
        }
        between += grey > 0 ? 1 : 0;
    }
    QVERIFY2(between > 90, qPrintable(QString::number(between)));
    QCOMPARE(int(result.at(0, 100, 50)), 235);
    QCOMPARE(int(result.at(0, 10, 50)), int(kBlack));
}

void tst_KdPictureShaper::blackIsBlackInFullRangeToo()
{
    const QSize size(64, 32);
    Picture result(size);
    KdPictureShaper(size, 0).shape(source(size).constPlanes(), result.planes(), true, fcrsCircle);
    QCOMPARE(int(result.at(0, 0, 0)), 0);
    QCOMPARE(int(result.at(1, 0, 0)), 128);
    QCOMPARE(int(result.at(2, 31, 15)), 128);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPictureShaper>(argc, argv);
}

#include "tst_KdPictureShaper.moc"
