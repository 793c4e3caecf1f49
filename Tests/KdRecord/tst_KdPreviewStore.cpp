#include <KdRecord/KdPreviewStore.h>

#include <Support/KdTestCase.h>

#include <atomic>
#include <limits>
#include <thread>
#include <vector>

namespace {

const KdPreviewLook kLook{QSize(160, 90), 1.0, false, false};

/** Pixels of one colour. */
class Plain
{
public:
    Plain(int width, int height, QRgb color)
        : m_pixels(std::size_t(width) * std::size_t(height), color)
        , m_width(width)
        , m_height(height)
    {
    }
    KdPreviewFrame frame() const
    {
        return {reinterpret_cast<const uchar*>(m_pixels.data()), m_width, m_height};
    }

private:
    std::vector<QRgb> m_pixels;
    int m_width;
    int m_height;
};

constexpr QRgb kRed = 0xffff0000U;
constexpr QRgb kBlue = 0xff0000ffU;

QRgb middleOf(const KdPreviewPicture* picture)
{
    return picture ? picture->image.pixel(picture->image.rect().center()) : 0;
}

} // namespace

class tst_KdPreviewStore : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void hasNothingToShowAtFirst();
    void showsTheLatestFrame();
    void aTakenLockDropsTheFrame();
    void framesAreKeptButNotShownBeforeRendering();
    void theNextPictureAfterAStopFreesTheFrame();
    void aFrameOfAnotherSizeReplacesTheBuffer();
    void oneBufferServesFramesOfOneSize();
    void badFramesLeaveTheStoredOne_data();
    void badFramesLeaveTheStoredOne();
    void anotherLookShowsTheStoredFrame();
    void restingShowsTheFrameThatCameMeanwhile();
    void framesOfTwoBringersAreFine();
    void aPictureIsOfOneFrameWhateverTheThreadsDo();
};

void tst_KdPreviewStore::hasNothingToShowAtFirst()
{
    KdPreviewStore store;
    QVERIFY(!store.isRendering());
    QCOMPARE(store.bufferSize(), qint64(0));
    QVERIFY(!store.picture(kLook));
    store.setRendering(true);
    QVERIFY(!store.picture(kLook));
}

void tst_KdPreviewStore::showsTheLatestFrame()
{
    KdPreviewStore store;
    store.setRendering(true);
    const Plain red(64, 36, kRed);
    const Plain blue(64, 36, kBlue);
    QVERIFY(store.put(red.frame()));
    QCOMPARE(middleOf(store.picture(kLook)), kRed);
    QVERIFY(store.put(red.frame()));
    QVERIFY(store.put(blue.frame()));
    QCOMPARE(middleOf(store.picture(kLook)), kBlue);
    QCOMPARE(middleOf(store.picture(kLook)), kBlue);
}

void tst_KdPreviewStore::aTakenLockDropsTheFrame()
{
    KdPreviewStore store;
    store.setRendering(true);
    const Plain red(64, 36, kRed);
    const Plain blue(32, 32, kBlue);
    QVERIFY(store.put(red.frame()));
    {
        const std::lock_guard<std::mutex> lock(store.lock());
        bool isKept = true;
        std::thread([&] { isKept = store.put(blue.frame()); }).join();
        QVERIFY(!isKept);
    }
    QCOMPARE(store.bufferSize(), qint64(64 * 36 * 4));
    QCOMPARE(middleOf(store.picture(kLook)), kRed);
}

void tst_KdPreviewStore::framesAreKeptButNotShownBeforeRendering()
{
    KdPreviewStore store;
    const Plain red(64, 36, kRed);
    QVERIFY(store.put(red.frame()));
    QCOMPARE(store.bufferSize(), qint64(64 * 36 * 4));
    store.setRendering(true);
    QCOMPARE(middleOf(store.picture(kLook)), kRed);
}

void tst_KdPreviewStore::theNextPictureAfterAStopFreesTheFrame()
{
    KdPreviewStore store;
    store.setRendering(true);
    const Plain red(64, 36, kRed);
    QVERIFY(store.put(red.frame()));
    QVERIFY(store.picture(kLook));
    store.setRendering(false);
    store.clear();
    QCOMPARE(store.bufferSize(), qint64(0));
    QVERIFY(store.put(red.frame()));
    QCOMPARE(store.bufferSize(), qint64(64 * 36 * 4));
    QVERIFY(!store.picture(kLook));
    QCOMPARE(store.bufferSize(), qint64(0));
    store.setRendering(true);
    QVERIFY(!store.picture(kLook));
}

void tst_KdPreviewStore::aFrameOfAnotherSizeReplacesTheBuffer()
{
    KdPreviewStore store;
    store.setRendering(true);
    const Plain wide(64, 16, kRed);
    const Plain high(10, 20, kBlue);
    QVERIFY(store.put(wide.frame()));
    QCOMPARE(store.picture(kLook)->image.size(), QSize(160, 40));
    QVERIFY(store.put(high.frame()));
    QCOMPARE(store.bufferSize(), qint64(10 * 20 * 4));
    QCOMPARE(store.picture(kLook)->image.size(), QSize(45, 90));
    // As many bytes, another shape.
    const Plain low(20, 10, kRed);
    QVERIFY(store.put(low.frame()));
    QCOMPARE(store.picture(kLook)->image.size(), QSize(160, 80));
}

void tst_KdPreviewStore::oneBufferServesFramesOfOneSize()
{
    KdPreviewStore store;
    store.setRendering(true);
    const Plain red(64, 36, kRed);
    std::vector<const uchar*> pictures;
    for (int i = 0; i < 12; ++i) {
        QVERIFY(store.put(red.frame()));
        pictures.push_back(store.picture(kLook)->image.constBits());
    }
    // Two images take turns.
    for (std::size_t i = 4; i < pictures.size(); ++i) {
        QVERIFY(pictures.at(i) == pictures.at(i - 2));
    }
    QCOMPARE(store.bufferSize(), qint64(64 * 36 * 4));
}

void tst_KdPreviewStore::badFramesLeaveTheStoredOne_data()
{
    QTest::addColumn<bool>("hasBits");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");

    constexpr int most = std::numeric_limits<int>::max();
    QTest::newRow("null") << false << 64 << 36;
    QTest::newRow("no width") << true << 0 << 36;
    QTest::newRow("no height") << true << 64 << 0;
    QTest::newRow("negative width") << true << -64 << 36;
    QTest::newRow("negative height") << true << 64 << -36;
    QTest::newRow("both negative") << true << -64 << -36;
    QTest::newRow("absurd") << true << most << most;
    QTest::newRow("wraps") << true << 65536 << 65537;
}

void tst_KdPreviewStore::badFramesLeaveTheStoredOne()
{
    QFETCH(bool, hasBits);
    QFETCH(int, width);
    QFETCH(int, height);
    KdPreviewStore store;
    store.setRendering(true);
    const Plain red(64, 36, kRed);
    QVERIFY(store.put(red.frame()));
    QVERIFY(!store.put({hasBits ? red.frame().bits : nullptr, width, height}));
    QCOMPARE(store.bufferSize(), qint64(64 * 36 * 4));
    QCOMPARE(middleOf(store.picture(kLook)), kRed);
}

void tst_KdPreviewStore::anotherLookShowsTheStoredFrame()
{
    KdPreviewStore store;
    store.setRendering(true);
    const Plain red(64, 36, kRed);
    QVERIFY(store.put(red.frame()));
    QCOMPARE(store.picture(kLook)->image.pixel(0, 0), kRed);
    KdPreviewLook round = kLook;
    round.isRound = true;
    QCOMPARE(store.picture(round)->image.pixel(0, 0), 0xff000000U);
    KdPreviewLook large = kLook;
    large.area = QSize(640, 360);
    QCOMPARE(store.picture(large)->image.size(), QSize(640, 360));
    large.ratio = 2.0;
    QCOMPARE(store.picture(large)->image.size(), QSize(1280, 720));
    QCOMPARE(store.bufferSize(), qint64(64 * 36 * 4));
}

void tst_KdPreviewStore::restingShowsTheFrameThatCameMeanwhile()
{
    KdPreviewStore store;
    store.setRendering(true);
    const Plain red(64, 36, kRed);
    const Plain blue(64, 36, kBlue);
    for (int i = 0; i < 3; ++i) {
        QVERIFY(store.put(red.frame()));
        QCOMPARE(middleOf(store.picture(kLook)), kRed);
    }
    store.rest();
    QVERIFY(store.put(blue.frame()));
    QCOMPARE(middleOf(store.picture(kLook)), kBlue);
}

void tst_KdPreviewStore::framesOfTwoBringersAreFine()
{
    KdPreviewStore store;
    store.setRendering(true);
    const Plain red(320, 180, kRed);
    const Plain blue(200, 200, kBlue);
    QVERIFY(store.put(red.frame()));
    QVERIFY(store.picture(kLook));
    std::atomic<bool> goesOn{true};
    std::thread one([&] {
        while (goesOn) {
            store.put(red.frame());
        }
    });
    std::thread other([&] {
        while (goesOn) {
            store.put(blue.frame());
        }
    });
    bool isFine = true;
    for (int i = 0; i < 300; ++i) {
        const KdPreviewPicture* const picture = store.picture(kLook);
        const QRgb expected = picture->image.width() == 160 ? kRed : kBlue;
        isFine = isFine && middleOf(picture) == expected;
    }
    goesOn = false;
    one.join();
    other.join();
    QVERIFY(isFine);
}

/** Frames of changing colour and size come at full speed while looks change: a picture with two
 * colours would be of two frames. */
void tst_KdPreviewStore::aPictureIsOfOneFrameWhateverTheThreadsDo()
{
    KdPreviewStore store;
    store.setRendering(true);
    std::vector<Plain> frames;
    frames.reserve(6);
    for (int i = 0; i < 6; ++i) {
        frames.emplace_back(160 + 32 * (i / 2), 90 + 18 * (i / 2), 0xff000000U | QRgb(40 * i + 20));
    }
    std::atomic<bool> goesOn{true};
    std::atomic<int> kept{0};
    std::thread bringer([&] {
        for (std::size_t i = 0; goesOn; ++i) {
            kept += store.put(frames.at(i % frames.size()).frame()) ? 1 : 0;
        }
    });
    int mixed = 0;
    int seen = 0;
    for (int i = 0; i < 2000 || seen < 100; ++i) {
        const KdPreviewLook look{QSize(120 + i / 50 % 7 * 16, 90), 1.0, false, i / 30 % 2 == 0};
        if (i % 100 == 99) {
            store.setRendering(false);
            store.clear();
            store.setRendering(true);
        }
        const KdPreviewPicture* const picture = store.picture(look);
        if (!picture) {
            continue;
        }
        ++seen;
        const QImage& image = picture->image;
        const QRgb corner = image.pixel(0, 0);
        mixed += image.pixel(image.width() - 1, image.height() - 1) != corner ? 1 : 0;
        mixed += image.pixel(image.width() / 2, image.height() / 2) != corner ? 1 : 0;
    }
    goesOn = false;
    bringer.join();
    QCOMPARE(mixed, 0);
    QVERIFY(kept > 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPreviewStore>(argc, argv);
}

#include "tst_KdPreviewStore.moc"
